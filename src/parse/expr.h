// expr.h - the expression scanner's entries: one for each kind of place where an expression can
// stand.
// Each cuts the expression stack, scans from the current token, restores the stack and leaves
// curr_construct_end_position behind the expression.
#pragma once
#include "errors/error.h"
#include "il/il_fwd.h"
#include "lex/source_position.h"

struct an_init_pos_state;
struct a_rescan_control_block;

// Flags of scan_expression.
enum : unsigned {
  se_stop_at_comma = 1,
  se_float_cast_operand = 2,
  se_paren_consumed = 8,
  se_allow_bound_function = 16,
  se_in_parens = 32,
  se_extension_seen = 64,
  se_cfront_parens = 128,
  se_address_operand = 0x200
};

// Precedence levels; higher binds tighter.
enum a_precedence : int {
  prec_lowest = 0,
  prec_comma = 1,
  prec_assignment = 2,
  prec_question = 3,
  prec_logical_or = 4,
  prec_logical_and = 5,
  prec_bit_or = 6,
  prec_bit_xor = 7,
  prec_bit_and = 8,
  prec_min_max = 9,
  prec_equality = 10,
  prec_relational = 11,
  prec_shift = 12,
  prec_additive = 13,
  prec_multiplicative = 14,
  prec_ptr_to_member = 15,
  prec_cast_operand = 16,
  prec_unary = 17,
  prec_postfix = 18
};

// The core: scans an expression whose operators bind tighter than min_precedence.
// `selector` (may be null) receives the object of a bound member function under
// se_allow_bound_function.
void scan_expression(an_operand *result, an_operand *selector, int min_precedence, unsigned flags);

// Integral constant expressions: array bounds, case labels, enumerators, bit-field widths.
// The result is integral, of enumeration or of template parameter type, or the error constant (159
// was reported).
void scan_integral_constant_expression(a_constant *constant);
void scan_fs_integral_constant_expression(a_constant *constant);
void scan_member_constant_initializer_expression(a_type *type, a_constant *constant);

// Initializers.  `constant` receives the value converted to `type`; error code 145 otherwise.
void scan_constant_initializer_expression(a_type *type, an_init_pos_state *state,
                                          a_constant *constant);
// Initializer of an object of `type`, constant or not: *out_expr receives the node, or null when
// `constant` holds the
// value (an error constant after an error).
void scan_initializer_expression(a_type *type, a_decl_parse_state *state, bool is_static,
                                 bool no_lifetime, an_expr_node **out_expr, a_constant *constant);
void scan_aggregate_initializer_expression(a_type *type, a_decl_parse_state *state, bool is_static,
                                           an_expr_node **out_expr, a_constant *constant);
void scan_and_discard_initializer_expression();
// One value of an initializer list, for an element of `type`, as scan_initializer_expression;
// is_static asks for a
// constant.  Where `type` is a class and the value is of another type, *not_whole is set, nothing
// is converted, and
// the next call takes the same value again (or drop_kept_initializer_element, true: one waited). 
// With is_whole_object
// a value of another class is an error (145) at once.
bool drop_kept_initializer_element();
// favor_constant: a constant form is looked for, but nothing is wrong without one.
void scan_initializer_element(a_type *type, bool is_static, bool favor_constant,
                              bool is_whole_object, bool *not_whole, an_expr_node **out_expr,
                              a_constant *constant);

// An expression converted to `type` as if by initialization; `code` names the failure.
an_expr_node *scan_typed_expression(a_type *type, an_error_code code);
// The operand of return; an error node after an error.
an_expr_node *scan_return_expression(a_type *return_type, an_error_code code,
                                     a_dynamic_init **out_init);
// Bound of a variable-length array: the value as an expression of integral type, or null with the
// constant filled.
an_expr_node *scan_nonconstant_dimension_expression(bool *is_constant, a_constant *constant);
// Default argument of a parameter of `type` (C++).
an_expr_node *scan_default_arg_expr(a_type *type);

// Statements.
// Condition of if, while, do, for.  Never null: an error node after an error.
an_expr_node *scan_boolean_controlling_expression();
// C++: the value of a variable that a condition declares, as that of a boolean condition or, with is_integer,
// of a switch.
an_expr_node *condition_value_expression(a_symbol *symbol, bool is_integer);
// Operand of switch; flags as for scan_expression.
an_expr_node *scan_integer_expression(unsigned flags);
// An expression statement, or a clause of for.  Reports 176 and 1490 unless it is the value of a
// statement expression.
an_expr_node *scan_void_expression(bool force_own_lifetime, bool extension_seen,
                                   bool in_statement_expression);
// Operand of an asm statement: an lvalue where is_output.
an_expr_node *scan_asm_operand_expression(bool is_output, bool allows_memory);
// Operand of "goto *": a pointer to void (GNU).
an_expr_node *scan_computed_goto_expression();

// Types that are written as expressions.  The current token is the keyword; on return it is the one
// behind ")".
a_type *scan_typeof_operator();
a_type *scan_decltype_operator(a_rescan_control_block *control_block, a_decl_pos_block *pos_block);
a_type *scan_underlying_type_operator();

// The message that forbids an operator in the constant context at hand: 59, 61, 531 or 58.
an_error_code not_allowed_in_constant_code();

// C++: the global operator new and delete, at the start of each unit.
void enter_predeclared_operator_new_and_delete();

void expr_one_time_init();
void expr_init();
void expr_trans_unit_init();
