// exprutil_check.cpp - tests on operands before an operator is applied.
// Rule:    a test that fails reports (unless errors are suppressed), makes the operand an error and
//          returns false;
//          an operand that is an error already fails silently.
// Entry:   check_*_operand, check_modifiable_lvalue_operand, check_boolean_controlling_expr.
#include <cstring>

#include "consts/folding.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "parse/expr_class.h"
#include "parse/exprutil.h"
#include "parse/lookup.h"
#include "parse/symbol_tbl.h"

// -------------------------------------------------------------------------------------------------
// Which message: with enum_type_is_integral enumerations aren't named, in C++11 scoped ones are
// excluded.

static an_error_code code_by_mode(an_error_code plain, an_error_code unscoped,
                                  an_error_code or_enum)
{
  if (enum_type_is_integral) return plain;
  return cpp11_mode ? unscoped : or_enum;
}

an_error_code expr_not_integral_code()
{
  return code_by_mode(ec_expr_not_integral, ec_expr_not_integral_or_unscoped_enum,
                      ec_expr_not_integral_or_enum);
}

an_error_code expr_not_arithmetic_code()
{
  return code_by_mode(ec_expr_not_arithmetic, ec_expr_not_arithmetic_or_unscoped_enum,
                      ec_expr_not_arithmetic_or_enum);
}

an_error_code expr_not_arithmetic_or_pointer_code()
{
  return code_by_mode(ec_expr_not_scalar, ec_expr_not_arithmetic_or_unscoped_enum_or_pointer,
                      ec_expr_not_arithmetic_or_enum_or_pointer);
}

an_error_code expr_not_integral_or_any_enum_code()
{
  return enum_type_is_integral ? ec_expr_not_integral : ec_expr_not_integral_or_enum;
}

static bool fail(an_operand *operand, an_error_code code)
{
  if (operand->kind != ok_error && !is_error_type(operand->type))
    expr_pos_error(code, operand->position);
  conv_to_error_operand(operand);
  return false;
}

static bool is_hopeless(an_operand *operand)
{
  return operand->kind == ok_error || is_error_type(operand->type);
}

// -------------------------------------------------------------------------------------------------
// Types of operands

bool check_scalar_operand(an_operand *operand)
{
  if (!is_hopeless(operand) && is_scalar_type(operand->type)) return true;
  return fail(operand, expr_not_arithmetic_or_pointer_code());
}

bool check_arithmetic_or_enum_operand(an_operand *operand)
{
  if (!is_hopeless(operand) && is_arithmetic_or_enum_type(operand->type)) return true;
  return fail(operand, expr_not_arithmetic_code());
}

bool check_integral_or_enum_operand(an_operand *operand)
{
  if (!is_hopeless(operand) && is_integral_or_enum_type(operand->type)) return true;
  return fail(operand, expr_not_integral_code());
}

bool check_integral_or_enum_or_fixed_point_operand(an_operand *operand)
{
  return check_integral_or_enum_operand(operand);
}

bool check_pointer_operand(an_operand *operand)
{
  if (!is_hopeless(operand) && is_pointer_type(operand->type)) return true;
  return fail(operand, ec_expr_not_pointer);
}

// A pointer on which arithmetic is possible.  GNU C gives void and functions the size 1.
bool check_object_pointer_operand(an_operand *operand)
{
  if (is_hopeless(operand)) return fail(operand, ec_expr_not_object_pointer);
  if (!is_pointer_type(operand->type)) return fail(operand, ec_expr_not_object_pointer);
  a_type *object = type_pointed_to(operand->type);
  bool is_void_or_function = is_void_type(object) || is_function_type(object);
  if (is_void_or_function && (gcc_mode || gpp_mode)) {
    if (strict_ansi_mode || C_dialect == 2) {
      expr_pos_warning(ec_nonobject_pointer_arithmetic, operand->position);
    }
    return true;
  }
  if (is_void_or_function || is_incomplete_type(object))
    return fail(operand, ec_expr_not_object_pointer);
  return true;
}

bool check_call_function_pointer_operand(an_operand *operand)
{
  if (!is_hopeless(operand)) {
    if (is_function_type(operand->type)) return true;
    if (is_pointer_type(operand->type) && is_function_type(type_pointed_to(operand->type)))
      return true;
    if (is_ptr_to_member_type(operand->type) && is_function_type(pm_member_type(operand->type)))
      return true;
  }
  return fail(operand, ec_expr_not_ptr_to_function);
}

// -------------------------------------------------------------------------------------------------
// GNU: casts, conditionals and commas as lvalues

// The lvalue that an rvalue operand was made from, when every step can be undone; else null.
static an_expr_node *lvalue_below_casts(an_expr_node *node, bool *casts_seen)
{
  while (is_operation(node, eok_cast)) {
    *casts_seen = true;
    node = first_operand_of(node);
  }
  return is_rvalueable_node(node) ? node : nullptr;
}

static bool same_class_of_conversion(a_type *from, a_type *to)
{
  if (is_integral_or_enum_type(from) && is_integral_or_enum_type(to)) return true;
  if (is_pointer_type(from) && is_pointer_type(to)) return true;
  return is_floating_type(from) && is_floating_type(to);
}

static bool is_bit_field_node(an_expr_node *node)
{
  if (!is_operation(node, eok_dot_field) && !is_operation(node, eok_arrow_field)) return false;
  return field_of(second_operand_of(node))->is_bit_field;
}

// Old GNU C: `(c ? a : b) = x` stores in *(c ? &a : &b).
static bool revert_conditional_to_lvalue(an_operand *operand)
{
  an_expr_node *node = operand->value.expr;
  if (!is_operation(node, eok_question) || !gcc_mode || gnu_version >= 40000) return false;
  an_expr_node *arms[] = {second_operand_of(node), second_operand_of(node)->next};
  for (an_expr_node *arm : arms) {
    if (!is_rvalueable_node(arm) || is_bit_field_node(arm) ||
        !identical_types(arm->type, node->type))
      return false;
  }
  an_expr_node *condition = first_operand_of(node);
  for (an_expr_node *&arm : arms) {
    arm->next = nullptr;
    arm->is_lvalue = true;
    arm = add_address_of_to_node(arm);
  }
  condition->next = arms[0];
  arms[0]->next = arms[1];
  an_operand saved = *operand;
  an_expr_node *address = make_operator_node(eok_question, arms[0]->type, condition);
  make_lvalue_expression_operand(add_indirection_to_node(address), operand);
  restore_operand_details_incl_ref(operand, &saved);
  return true;
}

void revert_gcc_rvalue_to_lvalue_if_possible(an_operand *operand, bool report)
{
  if (operand->kind != ok_expression || operand->state != os_rvalue || !(gcc_mode || gpp_mode))
    return;
  if (revert_conditional_to_lvalue(operand)) return;
  an_operand saved = *operand;
  an_expr_node *node = operand->value.expr;
  if (!is_operation(node, eok_cast)) return;
  a_type *cast_type = node->type;
  bool casts_seen = false;
  an_expr_node *below = lvalue_below_casts(node, &casts_seen);
  if (below == nullptr || !casts_seen) return;
  if (gnu_version > 39999) {
    bool same_size = is_integral_type(cast_type) && is_integral_type(below->type) &&
                     size_of_type(cast_type) == size_of_type(below->type);
    if (!same_size) return;
  }
  if (gpp_mode && gnu_version <= 30399 && !same_class_of_conversion(below->type, cast_type)) {
    if (report) expr_pos_error(ec_gcc_use_of_cast_as_lvalue, operand->position);
    conv_to_error_operand(operand);
    return;
  }
  below->is_lvalue = true;
  if (size_of_type(cast_type) == size_of_type(below->type)) {
    if (report && gnu_version > 30399)
      expr_pos_warning(ec_gcc_use_of_cast_as_lvalue, operand->position);
    an_expr_node *lvalue = make_lvalue_operator_node(eok_lvalue_cast, cast_type, below);
    make_lvalue_expression_operand(lvalue, operand);
  } else {
    if (report) expr_pos_warning(ec_gcc_lvalue_cast_ignored, operand->position);
    make_lvalue_expression_operand(below, operand);
  }
  restore_operand_details_incl_ref(operand, &saved);
}

// -------------------------------------------------------------------------------------------------
// Modifiable lvalues (C99 6.3.2.1)

static bool class_has_const_member(a_type *type)
{
  type = skip_typerefs(type);
  return kind_has_class_part(type->kind) && as_class(type).has_const_field;
}

// System V: a cast that changes nothing but the type leaves an lvalue.
static void make_lvalue_of_cast(an_operand *operand)
{
  if (operand->kind != ok_expression || operand->state != os_rvalue) return;
  an_expr_node *node = operand->value.expr;
  bool casts_seen = false;
  an_expr_node *below = lvalue_below_casts(node, &casts_seen);
  if (below == nullptr || !casts_seen || size_of_type(below->type) != size_of_type(node->type))
    return;
  an_operand saved = *operand;
  below->is_lvalue = true;
  make_lvalue_expression_operand(make_lvalue_operator_node(eok_lvalue_cast, node->type, below),
                                 operand);
  restore_operand_details_incl_ref(operand, &saved);
}

bool check_modifiable_lvalue_operand(an_operand *operand)
{
  if (is_hopeless(operand)) {
    conv_to_error_operand(operand);
    return false;
  }
  revert_gcc_rvalue_to_lvalue_if_possible(operand, true);
  if (operand->kind == ok_error) return false;
  if (SVR4_C_mode && !gcc_mode) make_lvalue_of_cast(operand);
  bool is_lvalue = is_lvalue_operand(operand) && operand->kind == ok_expression;
  if (!is_lvalue || is_array_type(operand->type))
    return fail(operand, ec_expr_not_a_modifiable_lvalue);
  if (is_void_type(operand->type) || is_incomplete_type(operand->type)) {
    expr_pos_ty_diagnostic(es_error, ec_incomplete_type_not_allowed, operand->position,
                           operand->type);
    conv_to_error_operand(operand);
    return false;
  }
  if (is_const_qualified(operand->type) || class_has_const_member(operand->type)) {
    if (!gcc_mode) return fail(operand, ec_expr_not_a_modifiable_lvalue);
    expr_pos_diagnostic(es_discretionary_error, ec_expr_not_a_modifiable_lvalue, operand->position);
  }
  if (SVR4_C_mode && is_operation(operand->value.expr, eok_lvalue_cast)) {
    expr_pos_warning(ec_expr_not_a_modifiable_lvalue, operand->position);
  }
  return true;
}

bool is_a_cplusplus_lvalue(an_operand *operand)
{
  return is_lvalue_operand(operand) && !is_function_type(operand->type);
}

bool operand_has_uncertain_lvalueness(an_operand *operand)
{
  return C_dialect == 2 && is_template_dependent_type(operand->type);
}

// -------------------------------------------------------------------------------------------------
// Conditions

static bool is_assignment_of_constant(an_operand *operand)
{
  if (operand->kind != ok_expression || operand->parenthesized) return false;
  an_expr_node *node = operand->value.expr;
  while (is_operation(node, eok_cast) && operation_of(node).is_implicit_cast)
    node = first_operand_of(node);
  return is_operation(node, eok_assign) && second_operand_of(node)->kind == enk_constant;
}

// The address of a function or variable is never null, unless the entity is weak.
static bool is_non_null_address(an_operand *operand)
{
  a_constant constant;
  if (operand->kind == ok_constant) {
    constant = operand->value.constant;
  } else {
    bool is_dependent = false;
    if (operand->kind != ok_expression) return false;
    if (!constant_rvalue_pointer(operand->value.expr, &constant, false, &is_dependent))
      return false;
  }
  if (constant.kind != ck_address) return false;
  const a_constant_address &address = address_of(&constant);
  if (address.kind == ack_routine) return routine_has_non_null_address((a_routine *)address.entity);
  if (address.kind == ack_variable)
    return variable_has_non_null_address((a_variable *)address.entity);
  return false;
}

bool check_boolean_controlling_expr(an_operand *operand)
{
  if (is_hopeless(operand)) {
    conv_to_error_operand(operand);
    return false;
  }
  if (is_assignment_of_constant(operand))
    expr_pos_warning(ec_assign_where_compare_meant, operand->position);
  do_operand_transformations(operand, 0);
  if (is_hopeless(operand)) {
    conv_to_error_operand(operand);
    return false;
  }
  if (is_pointer_type(operand->type) && is_non_null_address(operand)) {
    expr_pos_warning(ec_boolean_controlling_expr_is_constant, operand->position);
  }
  if (C_dialect == 2 && bool_is_keyword) {
    an_error_code code;
    an_error_severity severity;
    if (!implicit_conversion_possible(operand, bool_type(), &code, &severity)) {
      return fail(operand, ec_expr_not_bool);
    }
    an_operand saved = *operand;
    cast_operand_full(bool_type(), operand, &operand->position, true, true, true, false, false);
    restore_operand_details_incl_ref(operand, &saved);
    return operand->kind != ok_error;
  }
  if (is_scalar_type(operand->type) || is_template_param_type(operand->type)) return true;
  return fail(operand, expr_not_arithmetic_or_pointer_code());
}

// -------------------------------------------------------------------------------------------------
// Pairs of pointers

static bool is_null_operand(an_operand *operand)
{
  return operand->kind == ok_constant && is_null_pointer_constant(&operand->value.constant);
}

static a_type *with_qualifiers_of_both(a_type *type, a_type *left_object, a_type *right_object)
{
  a_type_qualifier_set qualifiers =
      f_get_type_qualifiers(left_object, false) | f_get_type_qualifiers(right_object, false);
  return make_pointer_type(f_make_qualified_type(type, qualifiers));
}

// Comparisons and conditionals (C99 6.5.8, 6.5.9, 6.5.15).  *result_type: the type both convert to.
static bool common_pointer_type(an_operand *left, an_operand *right, bool void_converts,
                                a_type **result_type)
{
  a_type *left_object = type_pointed_to(left->type), *right_object = type_pointed_to(right->type);
  if (f_types_are_compatible(left_object, right_object, tco_ignore_top_qualifiers)) {
    a_type *composite =
        composite_type(make_unqualified_type(left_object), make_unqualified_type(right_object));
    *result_type = with_qualifiers_of_both(composite, left_object, right_object);
    return true;
  }
  if (!void_converts) return false;
  if (is_void_type(left_object) || is_void_type(right_object)) {
    *result_type = with_qualifiers_of_both(void_type(), left_object, right_object);
    bool with_function = is_function_type(left_object) || is_function_type(right_object);
    return !with_function || !strict_ansi_mode;
  }
  return false;
}

bool check_compatibility_of_pointer_operands(an_operand *left, an_operand *right, unsigned token,
                                             a_source_position *pos, a_type **result_type)
{
  (void)token;
  bool left_is_pointer = is_pointer_type(left->type),
       right_is_pointer = is_pointer_type(right->type);
  if (is_null_operand(right) && left_is_pointer) {
    *result_type = rvalue_type(left->type);
    return true;
  }
  if (is_null_operand(left) && right_is_pointer) {
    *result_type = rvalue_type(right->type);
    return true;
  }
  *result_type = rvalue_type(left_is_pointer ? left->type : right->type);
  if (left_is_pointer && right_is_pointer && common_pointer_type(left, right, true, result_type))
    return true;
  bool other_is_integer =
      is_integral_or_enum_type(left->type) || is_integral_or_enum_type(right->type);
  bool doubtful = C_dialect != 2 && ((left_is_pointer && right_is_pointer) || other_is_integer);
  an_error_severity severity = doubtful && !strict_ansi_mode ? es_warning : es_error;
  if (doubtful && strict_ansi_mode) severity = strict_ansi_error_severity;
  expr_pos_ty2_diagnostic(severity, ec_incompatible_operands, *pos, left->type, right->type);
  if (severity < es_error) {
    if (left_is_pointer && right_is_pointer) *result_type = make_pointer_type(void_type());
    return true;
  }
  return false;
}

bool check_binary_scoped_enum_operation(an_operand *left, an_operand *right, a_source_position *pos)
{
  bool scoped = is_scoped_enum_type(left->type) || is_scoped_enum_type(right->type);
  if (!scoped || identical_types(rvalue_type(left->type), rvalue_type(right->type))) return true;
  expr_pos_error(ec_scoped_enum_operation_type_mismatch, *pos);
  return false;
}

// -------------------------------------------------------------------------------------------------
// Lifetimes and temporaries: nothing dies at the end of an expression of C.

an_expr_node *wrap_up_full_expression(an_expr_node *node)
{
  if (C_dialect != 2 || expr_stack->previous != nullptr || expr_stack->object_lifetime == nullptr)
    return node;
  if (node->kind == enk_error) {
    mark_object_lifetime_as_useless(expr_stack->object_lifetime);
    return node;
  }
  if (is_useless_object_lifetime(expr_stack->object_lifetime)) return node;
  return add_object_lifetime_to_expr(node, expr_stack->object_lifetime);
}

void wrap_up_dynamic_init_full_expression(a_dynamic_init *dynamic_init)
{
  if (C_dialect != 2 || expr_stack->previous != nullptr || expr_stack->object_lifetime == nullptr)
    return;
  if (!is_useless_object_lifetime(expr_stack->object_lifetime)) {
    bind_object_lifetime(expr_stack->object_lifetime, iek_dynamic_init, dynamic_init);
  }
}

an_expr_node *create_expr_temporary(a_type *type, bool is_lvalue, bool is_static,
                                    bool no_abstract_check, int init_kind, a_source_position *pos,
                                    a_dynamic_init **out_dynamic_init)
{
  if (!no_abstract_check) check_for_abstract_object(type, pos);
  a_dynamic_init *init = alloc_dynamic_init((a_dynamic_init_kind)init_kind);
  init->is_conditional = expr_stack->conditionally_evaluated;
  init->is_static_storage = is_static;
  init->is_temporary = true;
  if (pos != nullptr) init->position = *pos;
  if (out_dynamic_init != nullptr) *out_dynamic_init = init;
  if (C_dialect == 2) set_temp_dynamic_init_lifetime(init, type, pos);
  return alloc_temp_init_node(type, init, is_lvalue);
}

void discard_curr_expr_object_lifetime()
{
  if (expr_stack->object_lifetime != nullptr)
    mark_object_lifetime_as_useless(expr_stack->object_lifetime);
}

// -------------------------------------------------------------------------------------------------
// Relaxed floating point

static const char *const math_functions_map[] = {
    "acos",      "asin",    "atan",     "atan2",  "cos",       "sin",        "tan",   "acosh",
    "asinh",     "atanh",   "cosh",     "sinh",   "tanh",      "exp",        "exp2",  "expm1",
    "frexp",     "ilogb",   "ldexp",    "log",    "log10",     "log1p",      "log2",  "logb",
    "modf",      "scalbln", "scalbn",   "cbrt",   "fabs",      "hypot",      "pow",   "sqrt",
    "__sqrt",    "erf",     "erfc",     "lgamma", "tgamma",    "ceil",       "floor", "nearbyint",
    "rint",      "lrint",   "llrint",   "round",  "lround",    "llround",    "trunc", "fmod",
    "remainder", "remquo",  "copysign", "nan",    "nextafter", "nexttoward", "fdim",  "fmax",
    "fmin",      "fma"};

// The float variant of a function of the double family, when it is declared.
static a_routine *float_variant_of(const char *name)
{
  bool known = false;
  for (const char *entry : math_functions_map)
    known = known || strcmp(entry, name) == 0;
  size_t length = strlen(name);
  char variant[24];
  if (!known || length + 2 > sizeof variant) return nullptr;
  memcpy(variant, name, length);
  variant[length] = 'f';
  variant[length + 1] = 0;
  a_symbol_locator locator = cleared_locator;
  a_symbol *symbol = find_symbol(variant, (uint32_t)length + 1, &locator);
  while (symbol != nullptr && symbol->kind != sk_routine)
    symbol = symbol->next_same_name;
  return symbol == nullptr ? nullptr : routine_of_symbol(symbol);
}

static bool is_float_type_of_kind(a_type *type, a_float_kind kind)
{
  return is_real_floating_type(type) && float_kind_of_type(type) == kind;
}

// The argument without the casts between floating types around it, or a float constant's source.
static an_expr_node *argument_below_casts(an_expr_node *argument)
{
  while (is_operation(argument, eok_cast) && is_real_floating_type(argument->type) &&
         is_real_floating_type(first_operand_of(argument)->type)) {
    argument = first_operand_of(argument);
  }
  if (argument->kind == enk_constant && constant_of(argument)->expr != nullptr) {
    an_expr_node *source = constant_of(argument)->expr;
    if (is_operation(source, eok_cast)) return first_operand_of(source);
  }
  return argument;
}

static bool arguments_fit_float_variant(an_expr_node *argument, a_param_type *from,
                                        a_param_type *to)
{
  for (; argument != nullptr && from != nullptr && to != nullptr;
       argument = argument->next, from = from->next, to = to->next) {
    if (types_are_compatible(from->type, to->type)) continue;
    if (!is_float_type_of_kind(from->type, fk_double) || !is_float_type_of_kind(to->type, fk_float))
      return false;
    if (!is_float_type_of_kind(argument_below_casts(argument)->type, fk_float)) return false;
  }
  return argument == nullptr && from == nullptr && to == nullptr;
}

static void replace_math_call(an_expr_node *call, a_type *expected_type)
{
  an_expr_node *function = first_operand_of(call);
  a_routine *routine = routine_from_function_expr(function);
  if (routine == nullptr || routine->source_corresp.name == nullptr) return;
  a_routine *variant = float_variant_of(routine->source_corresp.name);
  if (variant == nullptr) return;
  a_type *from = return_type_of(routine->type), *to = return_type_of(variant->type);
  if (is_float_type_of_kind(from, fk_double) && is_float_type_of_kind(to, fk_float)) {
    if (expected_type == nullptr || !is_float_type_of_kind(expected_type, fk_float)) return;
  } else if (!types_are_compatible(from, to)) {
    return;
  }
  if (!arguments_fit_float_variant(function->next, param_types_of(routine->type),
                                   param_types_of(variant->type))) {
    return;
  }
  an_expr_node *target = function_addr_expr(variant);
  an_expr_node **link = &target->next;
  a_param_type *param = param_types_of(variant->type);
  for (an_expr_node *argument = function->next, *next; argument != nullptr; argument = next) {
    next = argument->next;
    an_expr_node *stripped = copy_node(argument_below_casts(argument));
    if (!is_float_type_of_kind(param->type, fk_float)) stripped = copy_node(argument);
    *link = stripped;
    link = &stripped->next;
    param = param->next;
  }
  first_operand_of(call) = target;
  call->type = to;
}

void replace_math_funcs(an_expr_node *node, a_type *expected_type)
{
  if (!relaxed_fp || C_dialect == 2 || targ_sizeof_float == targ_sizeof_double) return;
  if (node->kind != enk_operation) return;
  if (is_operation(node, eok_cast)) {
    replace_math_funcs(first_operand_of(node), node->type);
    return;
  }
  a_type *inner = nullptr;
  if (op_of(node) == eok_assign || is_compound_assignment_operator(op_of(node))) inner = node->type;
  for (an_expr_node *operand = first_operand_of(node); operand != nullptr;
       operand = operand->next) {
    replace_math_funcs(operand, inner);
  }
  if (is_operation(node, eok_call)) replace_math_call(node, expected_type);
}
