// statements_parts.h - what the files of the statement scanner share among themselves.
#pragma once
#include "parse/statements.h"
#include "parse/symbol_tbl.h"

// --- Open structured statements ---------------------------------------------------------------------

enum a_struct_stmt_kind : unsigned char {
  ssk_block, ssk_if, ssk_switch, ssk_while, ssk_do, ssk_for, ssk_try
};

struct a_flow_words {
  bool stmt_reachable;
  bool end_reachable;
  bool reported;
};
inline constexpr a_flow_words dead_flow = {false, false, false};
inline constexpr a_flow_words live_flow = {true, true, false};

// One block of the function as the jump tests see it.
struct a_flow_block;

struct a_struct_stmt_stack_entry {
  a_struct_stmt_kind kind;
  bool in_else_part : 1;
  bool do_body_ended : 1;
  bool has_statements : 1;
  bool has_executable_statement : 1;
  bool in_statement_expression_top : 1;
  bool in_statement_expression : 1;
  bool has_case_range_error : 1;     // a case value depends on a template: no test
  bool contains_label : 1;
  bool contains_case : 1;
  bool break_is_live : 1;            // a reachable break leaves the statement
  bool continue_is_live : 1;
  bool was_unreachable : 1;          // a loop in dead code, not yet reported
  bool is_function_body : 1;
  a_statement *statement;
  a_statement **insertion_pointer;   // where the next statement goes
  a_statement *last_statement;       // the one linked last through this entry
  a_statement *decl_statement;       // the open stmk_decl_entities
  a_label *break_label;
  a_label *continue_label;
  a_flow_words saved_flags;
  a_flow_words merged_flags;
  int scope_depth;                   // of a block, else -1
  a_flow_block *flow_block;          // of a block
  a_type *case_type;                 // switch: promoted type of the controlling expression
  a_switch_case_entry *last_case;
  struct a_case_tree *case_tree;     // values seen, to find one that appears again
  unsigned switch_sequence;          // place of the jump to the cases
};

extern a_struct_stmt_stack_entry *struct_stmt_stack;
extern int struct_stmt_stack_base;   // entries below belong to enclosing functions

inline a_struct_stmt_stack_entry *top_stmt_entry()
{
  return &struct_stmt_stack[depth_stmt_stack];
}

a_flow_words curr_flow();
void set_flow(a_flow_words flow);
a_flow_words merged_flow(a_flow_words a, a_flow_words b);

void push_stmt_entry(a_struct_stmt_kind kind, a_statement *statement);
// Merges the flow of the exits; `condition` is that of a loop or if, else null.
void pop_stmt_entry(an_expr_node *condition);
void link_statement(a_statement *statement);
// The innermost open loop, or loop or switch; -1: none in this function.
int find_enclosing_loop(bool switch_too);
int find_enclosing_switch();

void scan_statement();
// The statement that depends on an if, a loop or a switch: becomes *place, a block where it is more than
// one statement or has declarations.
void scan_dependent_statement(a_statement **place);
// The same where the condition in front is constant and lets control pass by: the rule on unreachable code
// is reported unless a label lets control in.
void scan_dead_dependent_statement(a_statement **place);
// True for a constant that the source cannot mean to be false, or true; a conversion to bool and the left
// of a comma are looked through.
bool is_constant_true(an_expr_node *expr);
bool is_constant_false(an_expr_node *expr);

// A construct that is its own block in C99 (6.8.4p3, 6.8.5p5) and C++.
bool push_construct_scope();
void pop_construct_scope(bool pushed, a_statement *statement);

// --- Structured statements (stmt_struct.cpp) ---------------------------------------------------------

void if_statement();
void while_statement();
void do_statement();
void for_statement();
void switch_statement();
void case_label();
void default_label();

// --- Jumps (stmt_jumps.cpp) --------------------------------------------------------------------------

void break_statement();
void continue_statement();
void goto_statement();
void return_statement();
void label_definition();
void local_label_declarations();
void missing_return_check(bool is_explicit, const a_source_position *position);
void implicit_return(const a_source_position *position);
a_label *make_internal_label();
void add_goto(a_label *label, const a_source_position *position);
void place_label(a_label *label, bool is_live, const a_source_position *position);

void open_flow_block(a_struct_stmt_stack_entry *entry);
void close_flow_block(a_struct_stmt_stack_entry *entry);
// A jump from sequence number `from` in this switch to here.
void check_case_jump(a_struct_stmt_stack_entry *switch_entry, const a_source_position *position);
unsigned next_flow_sequence();
a_flow_block *curr_flow_block();
void set_curr_flow_block(a_flow_block *block);
void reset_flow_of_function();
void release_flow_of_function();

// Set while the body of a function is read, for the missing-return messages.
extern bool curr_function_type_was_missing;

// The outermost block of a function that the compiler writes, at pos_curr_token: statements are linked into
// it until it is closed, which adds the return at its end.
a_statement *open_generated_body();
void close_generated_body(a_statement *block);
