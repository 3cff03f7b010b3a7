// statements.h - statements, and the control flow that is followed while they are read.
#pragma once
#include "errors/error.h"
#include "il/il_enums.h"
#include "il/il_fwd.h"
#include "lex/source_position.h"

// A block in braces; the current token is `{`, on return it is the one behind `}` (for the body of a
// function and for a statement expression it is the `}` itself).  is_function_body: the outermost
// block of a function; dont_push_block: the caller has opened the scope.  Returns the block: that of a
// statement expression is linked nowhere.
a_statement *compound_statement(bool is_function_body, unsigned outer_flags, bool dont_push_block,
                                bool is_statement_expression);

// GNU: the block of a statement expression; the current token is `{`, on return it is the one behind `}`.
// The block is not linked into the enclosing one; the value is that of its last expression statement.
a_statement *statement_expression_block();

// Allocates a statement, links it at the current place and follows the flow.
a_statement *add_statement_at_stmt_pos(a_statement_kind kind, const a_source_position *position);
void warn_if_code_is_unreachable(an_error_code code, const a_source_position *position);
// Whether a statement can be added now: a function body is open.
bool in_statement_context();
bool inside_statement_expression();

// A variable without initializer was declared here: jumps over it are tested.
void record_trivial_init_control_flow(a_variable *variable);
// The same for a typedef whose bounds are evaluated where it stands (C99 6.8.6.1).
void record_dimension_control_flow(const a_source_position *position);
void update_init_statement_control_flow(a_statement *statement);
// Attaches a class, enum or variable to the declaration statement that is open, if one is.
void record_entity_in_decl_stmt_if_needed(a_symbol *symbol);
// The size of a variable-length dimension is evaluated here.
void set_vla_size_statement(a_vla_dimension *dimension, const a_source_position *position);

// The label that the identifier at the current token names in the current function; made when it is new.  GNU:
// the operand of `&&`.
a_label *scan_label_address();

// A nested function body starts a fresh stack.
struct a_struct_stmt_stack_state {
  int base;
  bool curr_stmt_reachable;
  bool end_reachable;
  bool unreachable_reported;
  void *flow_block;
  unsigned flow_context;
  unsigned sequence;
};
void new_struct_stmt_stack(a_struct_stmt_stack_state *state);
void restore_struct_stmt_stack(const a_struct_stmt_stack_state *state);
void wrapup_control_flow_processing(a_scope *scope);

extern int depth_stmt_stack;          // index of the innermost open statement, -1: none
extern bool curr_stmt_reachable;      // the statement about to be added can be reached
extern bool end_reachable;            // control can flow on to the end of the function
extern bool unreachable_reported;     // the message for this unreachable region was given

void statements_one_time_init();
void statements_init();
void statements_trans_unit_init();
