// exprutil.h - operands: the value layer under the expression scanner.
// Operands, the expression stack, reference entries, implicit conversions, casts, result building,
// temporaries.  Writers of the globals: exprutil*.cpp only, but for `expr_stack`, which each scan
// entry
// of expr*.cpp sets to null and restores.
#pragma once
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il_entities.h"
#include "il/il_fwd.h"
#include "lex/source_position.h"

// -------------------------------------------------------------------------------------------------
// Operands

enum an_operand_kind : unsigned char {
  ok_error,               // silent in every operation; type is the error type
  ok_expression,          // an IL expression
  ok_constant,            // a constant held by value
  ok_indefinite_function, // overload set or function template not yet resolved
  ok_sym_for_member,      // nonstatic member named without object
  ok_undefined_symbol     // undeclared identifier, legal directly before "(" only
};

enum an_operand_state : unsigned char {
  os_none,
  os_lvalue,
  os_lhsref, // lvalue of lhsref type
  os_rvalue,
  os_function_designator
};

// Bits of ruled_out_expr_kinds.
enum : unsigned char { rule_out_integral_constant = 1, rule_out_any_constant = 2 };

struct a_ref_entry;

// The written form of a name: qualifier and template arguments.
struct a_name_reference_form {
  a_name_qualifier *qualifier;
  a_template_arg *template_args;
  a_type *type;
  a_source_position position;
  a_name_reference *allocated;
};

struct an_operand {
  a_type *type; // of an lvalue: the object's type with qualifiers
  an_operand_kind kind;
  an_operand_state state;
  // flags1
  bool is_bound_function : 1;          // nonstatic member function selected through an object
  bool selector_is_object_pointer : 1; // the selector was already turned into an object pointer
  bool names_virtual_function : 1;
  bool is_id_expression : 1; // a bare name; parentheses, casts and decay clear it
  bool suppress_virtual : 1; // the name was qualified
  bool no_member_pointer_check : 1;
  bool pending_address_of : 1;    // "&" on a still indefinite function; see address_position
  bool pending_address_of_id : 1; // is_id_expression at that moment
  // flags2
  bool template_keyword_in_name : 1;
  bool is_string_literal : 1;
  bool cfront_literal : 1;
  bool followed_by_paren : 1; // the name stood directly before "("
  bool is_fake_object : 1;    // dereferenced null pointer that stands for an object
  bool parenthesized : 1;
  bool has_name_reference : 1;
  bool kept_across_restore : 1;
  unsigned char ruled_out_expr_kinds;
  a_name_reference_form name_reference; // only with has_name_reference
  a_source_position position;
  a_source_position end_position;
  a_ref_entry *ref_entries;
  a_ref_entry *last_ref_entry;
  a_template_arg *template_args;
  a_source_position name_position;
  a_source_position address_position;
  void *pack_expansion;
  a_symbol *symbol;
  union {
    an_expr_node *expr;  // ok_expression
    a_constant constant; // ok_constant
  } value;
};

inline bool is_error_operand(const an_operand *operand)
{
  return operand->kind == ok_error;
}
inline bool is_constant_operand(const an_operand *operand)
{
  return operand->kind == ok_constant;
}
inline bool is_lvalue_operand(const an_operand *operand)
{
  return operand->state == os_lvalue || operand->state == os_lhsref;
}
inline an_expr_node *&expr_of_operand(an_operand *operand)
{
  check(operand->kind == ok_expression);
  return operand->value.expr;
}
inline a_constant *constant_of_operand(an_operand *operand)
{
  check(operand->kind == ok_constant);
  return &operand->value.constant;
}

// -------------------------------------------------------------------------------------------------
// References: how a use is classified is known only when its operand is consumed.

enum a_ref_kind : unsigned {
  rk_plain = 4,
  rk_read = 8,
  rk_modified = 16,
  rk_read_modified = 24,
  rk_address_taken = 32,
  rk_error = 64,
  rk_generic = 0x2000,
  rk_implicit_plain = 16388,
  rk_read_folded = 0x10008,
  rk_classification_mask = 0x13078
};

struct a_ref_entry {
  unsigned ref_kind;
  bool recorded;
  bool is_kept; // belongs to the operand that a flush spares
  a_symbol *symbol;
  a_source_correspondence *source_corresp;
  a_source_position position;
  a_ref_entry *next_in_expression;
  a_ref_entry *next_in_operand;
};

// -------------------------------------------------------------------------------------------------
// The expression stack

enum an_expression_kind : unsigned char {
  ek_preprocessing = 0,
  ek_integral_constant = 1,
  ek_template_argument = 2,
  ek_constant = 3, // static initializers of C89
  ek_normal = 4,
  ek_unevaluated = 5
};

struct an_expr_rescan_info_entry {
  an_operand operand; // as it was just before being turned into a node
  an_expression_kind expression_kind;
  a_source_position operator_position;
  unsigned operator_token;
  a_source_position close_position;
  a_type *cast_type;
};

struct a_rescan_control_block {
  an_expr_node *expr;
  unsigned token;
  an_expr_node *next_selector;
  a_template_param *template_params;
  a_template_arg *template_args;
  unsigned flags;
  void *ctws_state;
  bool failed;
};

struct a_cached_operand {
  a_cached_operand *next;
  an_operand operand;
  an_object_lifetime *object_lifetime;
};

struct an_expression_cache {
  a_cached_operand *first;
  a_cached_operand *last;
};

struct an_expr_stack_entry {
  an_expr_stack_entry *previous;
  an_expression_kind expression_kind;
  a_ref_entry *saved_ref_entries;
  bool value_required : 1;
  bool code_is_generated : 1;
  bool unevaluated : 1;
  bool member_without_object_seen : 1;
  bool in_typeof_or_decltype : 1;
  bool implicit_reference_marks : 1;
  bool angle_bracket_sensitive : 1;
  bool in_array_dimension : 1;
  bool in_return_or_throw : 1;
  bool favor_constant_result : 1;
  bool conditionally_evaluated : 1;
  bool scanner_handles_discard : 1;
  bool sfinae_context : 1;
  bool suppress_errors : 1;
  bool error_was_suppressed : 1;
  bool record_rescan_info : 1;
  bool in_aggregate_constant_prescan : 1;
  bool keep_context_across_push : 1;
  int paren_depth;
  an_object_lifetime *object_lifetime;
  long scope_number;
  an_object_lifetime *enclosing_lifetime;
  an_il_entity_list_entry *scope_list_tail;
  a_source_position member_position;
  an_il_entity_list_entry *entity_list_head;
  an_il_entity_list_entry *entity_list_tail;
  an_expr_rescan_info_entry *curr_rescan_info;
  an_expression_cache *expression_cache;
  a_rescan_control_block *rescan_control_block;
  an_expr_node *type_evaluation; // what the type name being scanned has to evaluate, or null
};

extern an_expr_stack_entry *expr_stack;    // innermost entry, null outside expressions
extern a_ref_entry *curr_expr_ref_entries; // pending references of the current expression
extern a_source_position curr_construct_end_position; // end of the last full expression

inline bool in_constant_context()
{
  return expr_stack->expression_kind < ek_normal;
}

// Whether a folded constant keeps the expression that it came from: only code of functions is looked
// at again (messages, replay); initializers may have a million elements.  `in_expression`: until the
// full expression ends, for the rules that look at all of it.
inline bool constants_keep_their_expression(bool in_expression = true)
{
  if (expr_stack->expression_kind == ek_normal && !expr_stack->favor_constant_result) return true;
  return in_expression && check_misra_c_2004 && expr_stack->expression_kind != ek_preprocessing;
}

// Opens `entry` above expr_stack.  force_own_lifetime and no_lifetime matter in C++ only.
void push_expr_stack(an_expression_kind kind, an_expr_stack_entry *entry, bool force_own_lifetime,
                     bool no_lifetime);
// Closes the innermost entry: flushes its references, restores the list of the enclosing
// expression.
void pop_expr_stack();
void transfer_context_from_enclosing_expr_stack_entry(bool full, an_expr_stack_entry *old_entry,
                                                      an_expr_stack_entry *new_entry);

// Whether a diagnostic of `severity` at this place is to be reported; notes a suppressed one.
bool expr_error_should_be_issued();
bool expr_diagnostic_should_be_issued(an_error_severity severity, an_error_code code);
bool expr_access_checking_should_be_done();
// Reporting through the suppression test; each does nothing but note it under suppress_errors.
void expr_pos_error(an_error_code code, a_source_position pos);
void expr_pos_warning(an_error_code code, a_source_position pos);
void expr_pos_diagnostic(an_error_severity severity, an_error_code code, a_source_position pos);
void expr_pos_ty_diagnostic(an_error_severity severity, an_error_code code, a_source_position pos,
                            a_type *type);
void expr_pos_ty2_diagnostic(an_error_severity severity, an_error_code code, a_source_position pos,
                             a_type *type1, a_type *type2);
void expr_pos_sy_diagnostic(an_error_severity severity, an_error_code code, a_source_position pos,
                            a_symbol *symbol);
void expr_pos_st_diagnostic(an_error_severity severity, an_error_code code, a_source_position pos,
                            const char *text);

// References.
// Makes a pending reference to `symbol`, or records it at once where its class can't change;
// returns it or null.
a_ref_entry *ref_entry(a_symbol *symbol, a_source_position pos);
void add_ref_entry_to_operand(a_ref_entry *entry, an_operand *operand);
void change_ref_kinds(a_ref_entry *entries, unsigned kind);
void change_some_ref_kinds(a_ref_entry *entries, unsigned from_kind, unsigned kind);
void change_operand_refs_to_error(an_operand *operand);
void operand_will_not_be_used_because_of_error(an_operand *operand);
// Records all pending references but those of `result` and `selector` (either may be null).
void flush_ref_entries_except(a_ref_entry *result, a_ref_entry *selector);
void record_entity_defined_in_expression(an_il_entry_kind kind, void *entity);

// -------------------------------------------------------------------------------------------------
// Construction.  All fill the caller's operand, with the positions of the current token.

void clear_operand(an_operand_kind kind, an_operand *operand);
void set_operand_kind(an_operand *operand, an_operand_kind kind);
void make_error_operand(an_operand *operand);
void error_and_make_error_operand(an_error_code code, an_operand *operand);
void make_expression_operand(an_expr_node *node, an_operand *operand);
void make_lvalue_expression_operand(an_expr_node *node, an_operand *operand);
void make_lhsref_expression_operand(an_expr_node *node, an_operand *operand);
void make_lvalue_or_rvalue_expression_operand(an_expr_node *node, an_operand *operand);
void make_constant_operand(a_constant *constant, an_operand *operand);
void make_string_constant_operand(a_constant *constant, an_operand *operand);
void make_integer_constant_operand(long value, a_type *type, an_operand *operand);
void make_sym_constant_operand(a_symbol *symbol, a_source_position *pos, an_operand *operand);
void make_lvalue_variable_operand(a_variable *variable, a_source_position *pos,
                                  a_source_position *end_pos, an_operand *operand,
                                  a_ref_entry *ref);
void make_function_designator_operand(a_symbol *symbol, a_source_position *pos,
                                      a_source_position *end_pos, an_operand *operand,
                                      a_ref_entry *ref);
// `object` . or -> `field`: the object operand is an lvalue, an rvalue of class type, or (is_arrow)
// a pointer.
void make_field_operand(a_field *field, an_operand *object, bool is_arrow,
                        a_source_position *member_pos, an_operand *result);
void make_indefinite_function_operand(a_symbol *symbol, an_operand *operand);
void make_sym_for_member_operand(a_symbol *symbol, an_operand *operand);
void make_undefined_symbol_operand(a_symbol *symbol, an_operand *operand);
void make_imaginary_unit_operand(an_operand *operand);
void make_infinity_operand(an_operand *operand);
void make_nan_operand(an_operand *operand);

// -------------------------------------------------------------------------------------------------
// Transformation

enum : unsigned {
  ot_keep_function_designators = 1,
  ot_keep_arrays = 2,
  ot_keep_lvalues = 4,
  ot_leave_indefinite_functions = 8,
  ot_may_stay_bound = 16,
  ot_keep_sym_for_member = 32
};

// The implicit conversions in their one order (array decay, lvalue to rvalue, resolution, function
// decay).
void do_operand_transformations(an_operand *operand, unsigned flags);
void eliminate_unusual_operand_kinds(an_operand *operand);
void conv_lvalue_to_rvalue(an_operand *operand);
// Folds or strips an lvalue expression.  When it folds, *folded is set and *constant filled.
an_expr_node *conv_lvalue_expr_to_rvalue(an_expr_node *node, bool *folded, a_constant *constant,
                                         a_source_position *pos);
void do_array_to_pointer_conversion(an_operand *operand);
void conv_array_operand_to_pointer_operand(an_operand *operand);
void conv_function_designator_to_ptr_to_function(an_operand *operand);
void add_reference_indirection(an_operand *operand);
void take_reference_to_operand(an_operand *operand);
void conv_class_rvalue_operand_to_lvalue(an_operand *operand);
void conv_object_pointer_to_lvalue(an_operand *operand);
void conv_class_operand_to_object_pointer(an_operand *operand);
void force_operand_to_constant_if_possible(an_operand *operand);
an_expr_node *make_node_from_operand(an_operand *operand);
void extract_constant_from_operand(an_operand *operand, a_constant *constant);
void restore_operand_details(an_operand *operand, const an_operand *saved);
void restore_operand_details_incl_ref(an_operand *operand, const an_operand *saved);
void restore_operand_id_details(an_operand *operand, const an_operand *saved);
void restore_operand_form_of_name_reference(an_operand *operand, const an_operand *saved);
void clone_operand(an_operand *operand, an_operand *copy);
// A variable without name in the innermost block, for a value that is used more than once.
a_variable *make_expression_temporary(a_type *type);
void discard_operand(an_operand *operand);
void conv_to_error_operand(an_operand *operand);
void normalize_error_operand(an_operand *operand);
void rule_out_expr_kinds(unsigned kinds, an_operand *operand);
void preserve_ruled_out_expr_kinds_from_discarded_operand(an_operand *kept, an_operand *discarded);
void prep_generic_operand_full(an_operand *operand, bool keep_lvalue, bool apply_transformations);
// Reads and writes of an lvalue that stays one (compound assignment, ++): range checks and
// references.
void using_lvalue(an_operand *operand);
void modifying_lvalue(an_operand *operand, bool also_read);

// Arithmetic.
a_type *usual_arithmetic_conversions(a_type *left, a_type *right);
a_type *determine_arithmetic_conversions(an_operand *left, an_operand *right);
a_type *type_after_bit_field_integral_promotion(an_expr_node *node);
void promote_operand(an_operand *operand);
void arg_default_promote_operand(an_operand *operand, bool strict);
void change_binary_operand_types(a_type *type, an_operand *left, an_operand *right);
an_expr_operator_kind which_binary_operator(unsigned token, a_type *type);
a_type *determine_imaginary_operation_type(an_expr_operator_kind op, a_type *left, a_type *right,
                                           a_type *common);

// Casts.  The operand is changed in place; errors make it an error operand.
void cast_operand(a_type *type, an_operand *operand, bool is_explicit);
void convert_arithmetic_operand(a_type *type, an_operand *operand);
void cast_operand_special(a_type *type, an_operand *operand, bool is_implicit, bool is_reinterpret);
void cast_operand_full(a_type *type, an_operand *operand, a_source_position *pos, bool check_access,
                       bool check_ambiguity, bool is_implicit, bool is_reinterpret,
                       bool no_hierarchy_adjust);
an_expr_node *cast_node(an_expr_node *node, a_type *type, bool is_implicit);
void cast_operand_for_reference_cast(a_type *type, an_operand *operand, bool is_implicit,
                                     bool is_reinterpret);

// Converts an operand to the type of the object that it initializes, is assigned or passed to.
// context: 1 plain, 513 static initializer.  Reports `code` with both types when that isn't
// possible.
void prep_initializer_operand(an_operand *operand, a_type *type, unsigned context,
                              an_error_code code, a_source_position *pos);
void prep_assignment_operand(an_operand *operand, a_type *type, an_error_code code,
                             a_source_position *pos);
void prep_argument_operand(an_operand *operand, a_type *param_type, a_param_type *param,
                           an_error_code code);
// Under the checker: what was pushed while a conversion was formed is reported, or dropped if it failed.
void settle_conversion_for_misra(const an_operand *operand);
// Silent test of the same; *warning receives the code of a warning to report or ec_no_error,
// *severity its severity.
bool implicit_conversion_possible(an_operand *operand, a_type *type, an_error_code *warning,
                                  an_error_severity *severity);

// Operations.
void do_binary_operation(an_expr_operator_kind op, an_operand *left, an_operand *right,
                         a_type *result_type, an_operand *result, a_source_position *pos,
                         unsigned operator_token);
void do_binary_operation_full(an_expr_operator_kind op, an_operand *left, an_operand *right,
                              a_type *result_type, bool is_lvalue_result, an_operand *result,
                              a_source_position *pos, unsigned operator_token,
                              a_source_position *close_pos);
void build_binary_result_operand(an_expr_operator_kind op, an_operand *left, an_operand *right,
                                 a_type *result_type, an_operand *result, a_source_position *pos,
                                 unsigned operator_token);
void do_unary_operation(an_expr_operator_kind op, an_operand *operand, a_type *result_type,
                        an_operand *result, a_source_position *pos, unsigned operator_token);
void build_unary_result_operand(an_expr_operator_kind op, an_operand *operand, a_type *result_type,
                                an_operand *result);
void do_question_operation(an_operand *condition, an_operand *second, an_operand *third,
                           a_type *result_type, bool is_void, bool is_lvalue_result,
                           an_operand *result, a_source_position *pos);

// Checks: true when fine; else they report (honouring suppression) and make the operand an error.
bool check_scalar_operand(an_operand *operand);
bool check_arithmetic_or_enum_operand(an_operand *operand);
bool check_integral_or_enum_operand(an_operand *operand);
bool check_integral_or_enum_or_fixed_point_operand(an_operand *operand);
bool check_pointer_operand(an_operand *operand);
bool check_object_pointer_operand(an_operand *operand);
bool check_call_function_pointer_operand(an_operand *operand);
bool check_modifiable_lvalue_operand(an_operand *operand);
bool check_boolean_controlling_expr(an_operand *operand);
bool check_compatibility_of_pointer_operands(an_operand *left, an_operand *right, unsigned token,
                                             a_source_position *pos, a_type **result_type);
// C++: converts one of two operands, of which one is a pointer to member, to the other's type; silent.
bool check_ptr_to_member_operands_for_compatibility(an_operand *left, an_operand *right);
bool check_binary_scoped_enum_operation(an_operand *left, an_operand *right,
                                        a_source_position *pos);
bool operand_has_uncertain_lvalueness(an_operand *operand);
bool is_a_cplusplus_lvalue(an_operand *operand);
void revert_gcc_rvalue_to_lvalue_if_possible(an_operand *operand, bool report);
an_error_code expr_not_integral_code();
an_error_code expr_not_arithmetic_code();
an_error_code expr_not_arithmetic_or_pointer_code();
an_error_code expr_not_integral_or_any_enum_code();
void check_pointer_range(an_operand *operand, bool is_access);

// Lifetime and temporaries (C++; in C the wrap-ups return the node as it is).
an_expr_node *wrap_up_full_expression(an_expr_node *node);
void wrap_up_dynamic_init_full_expression(a_dynamic_init *dynamic_init);
an_expr_node *create_expr_temporary(a_type *type, bool is_lvalue, bool is_static,
                                    bool no_abstract_check, int init_kind, a_source_position *pos,
                                    a_dynamic_init **out_dynamic_init);
void discard_curr_expr_object_lifetime();

// Expression cache.
void add_operand_to_expression_cache(an_operand *operand, bool at_head, bool take_lifetime,
                                     an_expression_cache *cache);
void fetch_operand_from_expression_cache(an_operand *operand);
void free_expression_cache(an_expression_cache *cache);

// Relaxed floating point: calls of double math functions become calls of the float variants.
void replace_math_funcs(an_expr_node *node, a_type *expected_type);

void exprutil_one_time_init();
void exprutil_init();
void exprutil_trans_unit_init();
