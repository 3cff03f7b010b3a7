// lower_il.h - the framework of lowering: contexts, insertion of code, temporaries, rewriting of
// expressions.
// Owns:    the state of the pass below, writers lower_*.cpp.
// Rule:    a node or statement that is rewritten keeps its address, since its parents hold it.
// Entry:   lower_il_memory_region for one region: C++ by this framework, C by lower_c99.h.
#pragma once
#include "il/il.h"
#include "lex/source_position.h"

struct a_temporary_list_entry {
  a_temporary_list_entry *next;
  a_variable *variable;
  bool in_use;
};

// The temporaries of the block outside, while a block without context of its own is lowered.
struct a_block_temps_save {
  a_block_temps_save *next;
  a_statement *block;
  a_temporary_list_entry *reusable_temps;
};

// One frame of the walk; lives on the caller's stack.
struct a_context {
  a_context *parent;
  a_scope *scope; // being lowered
  an_object_lifetime *object_lifetime;
  bool has_own_lifetime; // curr_object_lifetime moves to it
  bool in_function_try;
  an_object_lifetime *pending_expr_lifetime;
  a_dynamic_init *latest_init;   // the latest with a destruction
  a_dynamic_init *cleanup_state; // the one that the running code has last announced
  an_object_lifetime *saved_lifetime;
  a_temporary_list_entry *reusable_temps;
  a_block_temps_save *saved_temps;
};

enum an_insert_location_kind : unsigned char {
  ilk_after_statement,
  ilk_block_start,
  ilk_statement_creation, // takes the first statement
  ilk_before_expr,        // through a comma
  ilk_after_expr,
  ilk_expr_creation // takes the first expression, then is ilk_after_expr
};

struct an_insert_location {
  an_insert_location_kind kind;
  union {
    a_statement *statement;
    an_expr_node *expr;
  } entry;
};

// --- State of the pass ---------------------------------------------------------------------------

extern bool lowering_file_scope;
extern a_context *curr_context;
extern a_source_position code_pos_for_lowering; // of generated statements
extern a_statement *temp_init_statements;       // wait for the next statement boundary
extern a_variable *return_value_pointer_variable;
extern a_statement *curr_gnu_statement; // GNU: the statement being lowered
extern bool typeinfo_uncoupled_when_vtable_is_optional;
extern bool lowering_normalizes_boolean_controlling_expressions;

// Whether the C++ lowering runs for this unit.
bool il_lowering_needed();
// Lowers one region: C++ by this framework, else C by lower_c99_il_memory_region.
void lower_il_memory_region(int region);

void il_lower_init();
void il_lower_one_time_init();
void il_lower_trans_unit_init();

// --- Contexts ------------------------------------------------------------------------------------

void push_context(a_context *context, a_scope *scope, an_object_lifetime *lifetime);
void pop_context();
// The same with temp_init_statements and the positions set aside in `saved`.
struct a_saved_context {
  a_context context;
  a_statement *temp_init_statements;
  a_source_position code_pos;
  a_source_position error_pos;
};
void save_and_push_context(a_saved_context *saved, a_scope *scope, an_object_lifetime *lifetime);
void restore_saved_context(a_saved_context *saved);

// --- Insertion -----------------------------------------------------------------------------------

void set_insert_location(a_statement *statement, an_insert_location *location);
void set_block_start_insert_location(a_statement *block, an_insert_location *location);
void set_statement_creation_insert_location(an_insert_location *location);
void set_expr_insert_location(an_expr_node *expr, an_insert_location *location);
void set_expr_creation_insert_location(an_insert_location *location);
void insert_statement_full(a_statement *statement, an_insert_location *location, bool do_post_pass);
void insert_expr_statement(an_expr_node *expr, an_insert_location *location);
void insert_expr(an_expr_node *expr, an_insert_location *location);
void insert_assignment_statement(an_expr_node *lhs, an_expr_operator_kind op, an_expr_node *rhs,
                                 an_insert_location *location);
void insert_var_assignment_statement(a_variable *variable, an_expr_node *expr,
                                     an_insert_location *location);
// Puts the statements of a for's initialization behind the location.
void reinsert_for_loop_initialization(a_statement *list, an_insert_location *location);
// Both return the statement at its new place inside the block.
a_statement *turn_statement_into_block(a_statement *statement);
a_statement *turn_branch_into_block(a_statement *statement);
void mark_stmk_inits_as_following_exec_statement(a_statement *statement);
void add_to_end_of_temp_init_statements_list(a_statement *statement);
// The waiting statements go in front of the statement, which becomes a block.
void insert_temp_init_statements(a_statement *statement);
a_statement *insert_temp_label(an_insert_location *location);

// --- Temporaries ---------------------------------------------------------------------------------

// In the scope of the current context; static at file scope.
a_variable *make_lowered_temporary(a_type *type);
// The value of a temporary that was made for `type`.
an_expr_node *lowered_temporary_value(a_variable *variable, a_type *type);
a_variable *make_temporary_in_scope(a_type *type, a_scope *scope, bool is_static, bool promote);
// One that a later full expression may use again.
a_variable *make_local_temporary(a_type *type);
a_variable *make_file_scope_temporary(a_type *type);
a_variable *make_unnamed_local_static_variable(a_type *type, bool local);
void add_temporary_to_scope(a_variable *variable, a_scope *scope, bool promote);
void add_to_reusable_temporaries_list(a_variable *variable);
void release_reusable_temporaries();
// The expression becomes a comma of the assignment to a new temporary and its value.
a_variable *assign_expr_to_temp(an_expr_node *expr);
// The same; returns a further use of the value.
an_expr_node *assign_expr_to_temp_and_make_expr_for_reuse(an_expr_node *expr);
// A second use of the value of `expr`, which is saved in a temporary unless it is invariant.  The
// first use has to be evaluated before it: C's operands have no order.
an_expr_node *make_reusable_copy(an_expr_node *expr, bool side_effects);

// --- Expressions ---------------------------------------------------------------------------------

// A constant 0 or 1 of type int, or a comparison with zero, in place of any other controlling
// expression.
void normalize_boolean_controlling_expr_if_needed(an_expr_node *expr);
// The same on a copy, which is returned.
an_expr_node *boolean_controlling_expr(an_expr_node *expr);
// Bit n: operand n is a controlling expression.
unsigned expr_boolean_controlling_expr_mask(const an_expr_node *expr);
// Folds pairs of address and indirection, pushes operators on lvalues into commas and conditions.
void perform_post_pass_on_lowered_expression(an_expr_node *expr);
// &*p, *&x, (*p).f, (&x)->f, &a[i]: true when the node was rewritten.
bool fold_address_pair(an_expr_node *expr);
void lower_bool_cast(an_expr_node *expr);
void lower_bool_incr_decr(an_expr_node *expr);
void rewrite_compound_assignment(an_expr_node *expr);
void lower_min_max(an_expr_node *expr);
void lower_reuse_value_expr(an_expr_node *expr);
void lower_builtin_operation(an_expr_node *expr);
void lower_asm_statement(a_statement *statement);
void lower_full_expr(an_expr_node *expr, a_statement *statement);
void lower_expr_full(an_expr_node *expr, bool is_address_context);
void lower_statement(a_statement *statement);
void lower_constant(a_constant *constant);
bool is_or_was_ptr_to_data_member_type(a_type *type);
bool is_or_was_ptr_to_member_function_type(a_type *type);

// --- Names ---------------------------------------------------------------------------------------

// Of a virtual function table, in the target's units.
unsigned vtbl_entry_size();

// With canonical_ids_used: each backslash of the names becomes an underscore.
void rewrite_ucns_in_name(a_source_correspondence *corresp);
char *alloc_lowered_name_string(size_t length);
a_field *make_lowered_field(const char *name, a_type *type, a_type *class_type,
                            a_field *last_field);
a_type *make_lowered_class_type(a_type_kind kind);
a_variable *make_lowered_variable(const char *name, bool name_is_allocated, a_type *type,
                                  a_storage_class storage_class);
