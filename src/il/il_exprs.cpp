// il_exprs.cpp - expression nodes: the properties of operators, building, casts, copies.
// Rule:    a node keeps its address when it is rewritten (overwrite_node), since its parents hold
//          it.
// Entry:   make_operator_node, add_cast, var_rvalue_expr, copy_expr_tree, overwrite_node.
#include "il/il.h"

#include "driver/flags.h"
#include "driver/target.h"
#include "mem/stack_limit.h"

// --- Properties of operators ---------------------------------------------------------------------

enum : unsigned char {
  opp_bool = 1, // returns bool
  opp_cast = 2,
  opp_lvalue_operand = 4, // the first operand is taken as an lvalue
  opp_lvalue_result = 8,  // in all cases
  opp_compound = 16       // compound assignment
};

// One entry for each operator; built from the ranges that the operators' numbers form.
struct an_operator_property_table {
  unsigned char of[eok_last + 1];
  constexpr void add(int first, int last, unsigned char properties)
  {
    for (int op = first; op <= last; op++)
      of[op] |= properties;
  }
  constexpr an_operator_property_table() : of{}
  {
    add(eok_cast_to_bool, eok_cast_to_bool, opp_bool);
    add(eok_not, eok_not, opp_bool);
    add(eok_eq, eok_le, opp_bool);
    add(eok_land, eok_lor, opp_bool);

    add(eok_cast, eok_cast_to_lvalue, opp_cast);
    add(10, 10, opp_cast);
    add(12, 12, opp_cast);
    add(eok_derived_to_base, eok_cast_to_bool, opp_cast);

    add(eok_address_of, eok_address_of, opp_lvalue_operand);
    add(eok_lvalue_cast, eok_cast_to_lvalue, opp_lvalue_operand);
    add(13, 13, opp_lvalue_operand);
    add(eok_dynamic_cast_lvalue, eok_dynamic_cast_lvalue, opp_lvalue_operand);
    add(eok_pre_incr, eok_post_decr, opp_lvalue_operand);
    add(eok_assign, eok_struct_assign, opp_lvalue_operand);
    add(eok_va_start, eok_varargs_start, opp_lvalue_operand);

    constexpr int always_lvalue[] = {eok_indirection,
                                     eok_ref_indirection,
                                     eok_reference_cast,
                                     eok_cast_to_lvalue,
                                     eok_dynamic_cast_lvalue,
                                     eok_real,
                                     eok_imag,
                                     eok_subscript,
                                     eok_arrow_field,
                                     eok_arrow_member,
                                     96,
                                     eok_va_arg,
                                     eok_cl_vector_literal,
                                     eok_cl_select};
    for (int op : always_lvalue)
      add(op, op, opp_lvalue_result);

    add(eok_add_assign, eok_pointer_subtract_assign, opp_compound);
  }
};
static constexpr an_operator_property_table operator_properties;

bool is_operator_returning_bool(an_expr_operator_kind op)
{
  return (operator_properties.of[op] & opp_bool) != 0;
}

bool is_cast_operation_node(const an_expr_node *expr)
{
  return expr->kind == enk_operation && (operator_properties.of[op_of(expr)] & opp_cast) != 0;
}

bool operator_takes_lvalue_operand(an_expr_operator_kind op)
{
  return (operator_properties.of[op] & opp_lvalue_operand) != 0;
}

bool operator_result_is_always_lvalue(an_expr_operator_kind op)
{
  return (operator_properties.of[op] & opp_lvalue_result) != 0;
}

bool is_compound_assignment_operator(an_expr_operator_kind op)
{
  return (operator_properties.of[op] & opp_compound) != 0;
}

// Whether the node stands for an object whose value a rvalue use would read.
bool is_rvalueable_node(const an_expr_node *expr)
{
  switch (expr->kind) {
  case enk_variable:
  case enk_temp_ref: return true;
  case enk_constant: return constant_of(expr)->kind == ck_string;
  case enk_operation:
    switch (op_of(expr)) {
    case eok_dot_field:
    case eok_dot_member:
    case eok_cl_vector_element: return is_rvalueable_node(first_operand_of(expr));
    default: return operator_result_is_always_lvalue(op_of(expr));
    }
  default: return expr->is_lvalue;
  }
}

static bool is_error_operand_type(a_type *type)
{
  return type->kind == tk_error;
}

static a_type_kind kind_with_imaginary(an_expr_operator_kind op, a_type *left, a_type *right)
{
  bool left_is_imaginary = left->kind == tk_imaginary;
  bool right_is_imaginary = right->kind == tk_imaginary;
  if (left_is_imaginary && right_is_imaginary) {
    return op == eok_multiply ? tk_imaginary : tk_float;
  }
  a_type *other = left_is_imaginary ? right : left;
  bool makes_complex = op >= eok_add_complex_1 && op <= eok_subtract_complex_2;
  if (other->kind == tk_complex || makes_complex) return tk_complex;
  bool divides = op == eok_divide || op == eok_divide_assign;
  return right_is_imaginary && divides ? tk_imaginary : tk_float;
}

a_type_kind binary_operation_type_kind(an_expr_operator_kind op, a_type *left, a_type *right)
{
  if (op == eok_land || op == eok_lor) return tk_integer;
  left = skip_typerefs(left);
  right = skip_typerefs(right);
  if (is_error_operand_type(left) || is_error_operand_type(right)) return tk_error;
  bool is_dependent = left->kind == tk_template_param || right->kind == tk_template_param ||
                      left->kind == tk_unknown || right->kind == tk_unknown;
  if (is_dependent) return tk_template_param;
  if (left->kind == tk_pointer || right->kind == tk_pointer) return tk_pointer;
  if (left->kind == tk_ptr_to_member || right->kind == tk_ptr_to_member) return tk_ptr_to_member;
  if (left->kind == tk_imaginary || right->kind == tk_imaginary) {
    return kind_with_imaginary(op, left, right);
  }
  if (left->kind == tk_complex || right->kind == tk_complex) return tk_complex;
  if (left->kind == tk_float || right->kind == tk_float) return tk_float;
  return kind_has_class_part(left->kind) ? tk_struct : left->kind;
}

static a_type_kind operand_kind_of(const an_expr_node *operands, an_expr_operator_kind op)
{
  if (operands == nullptr || operands->type == nullptr) return tk_error;
  const an_expr_node *second = operands->next;
  if (second != nullptr && second->type != nullptr) {
    return binary_operation_type_kind(op, operands->type, second->type);
  }
  a_type_kind kind = skip_typerefs(operands->type)->kind;
  return kind_has_class_part(kind) ? tk_struct : kind;
}

// --- Building ------------------------------------------------------------------------------------

an_expr_node *error_node()
{
  an_expr_node *expr = alloc_expr_node(enk_error);
  expr->type = error_type();
  return expr;
}

an_expr_node *fs_error_node()
{
  int saved;
  switch_to_file_scope_region(&saved);
  an_expr_node *expr = error_node();
  switch_back_to_original_region(saved);
  return expr;
}

an_expr_node *make_operator_node(an_expr_operator_kind op, a_type *type,
                                 an_expr_node *first_operand)
{
  an_expr_node *expr = alloc_expr_node(enk_operation);
  an_expr_operation &operation = operation_of(expr);
  operation.op = op;
  operation.first_operand = first_operand;
  operation.operand_kind = operand_kind_of(first_operand, op);
  expr->type = type;
  if (op == eok_comma) set_expr_result_not_used(first_operand);
  return expr;
}

an_expr_node *make_lvalue_operator_node(an_expr_operator_kind op, a_type *type,
                                        an_expr_node *first_operand)
{
  an_expr_node *expr = make_operator_node(op, type, first_operand);
  expr->is_lvalue = true;
  operation_of(expr).is_lvalue_valued = true;
  return expr;
}

an_expr_node *make_binary_node(an_expr_operator_kind op, a_type *type, an_expr_node *left,
                               an_expr_node *right)
{
  left->next = right;
  return make_operator_node(op, type, left);
}

void set_node_operator(an_expr_node *expr, an_expr_operator_kind op)
{
  if (expr->kind != enk_operation) set_expr_node_kind(expr, enk_operation);
  operation_of(expr).op = op;
}

an_expr_node *make_comma_node(an_expr_node *left, an_expr_node *right)
{
  left->next = right;
  right->next = nullptr;
  return right->is_lvalue ? make_lvalue_operator_node(eok_comma, right->type, left)
                          : make_operator_node(eok_comma, right->type, left);
}

// The value of a wider use isn't wanted: casts, commas and conditions pass that on.
void set_expr_result_not_used(an_expr_node *expr)
{
  check_recursion();
  while (!expr->result_not_used) {
    expr->result_not_used = true;
    if (expr->kind != enk_operation) return;
    switch (op_of(expr)) {
    case eok_comma: expr = second_operand_of(expr); break;
    case eok_question:
      set_expr_result_not_used(second_operand_of(expr));
      expr = third_operand_of(expr);
      break;
    case eok_cast:
    case eok_lvalue_cast:
    case eok_cast_to_bool: expr = first_operand_of(expr); break;
    default: return;
    }
  }
}

an_expr_node *add_cast(an_expr_node *expr, a_type *type)
{
  expr->next = nullptr;
  return make_operator_node(eok_cast, type, expr);
}

an_expr_node *add_implicit_cast(an_expr_node *expr, a_type *type)
{
  an_expr_node *cast = add_cast(expr, type);
  operation_of(cast).is_implicit_cast = true;
  cast->expr_range = expr->expr_range;
  return cast;
}

an_expr_node *add_cast_if_necessary(an_expr_node *expr, a_type *type)
{
  if (f_identical_types(expr->type, type, ido_ignore_top_qualifiers)) return expr;
  return add_implicit_cast(expr, type);
}

an_expr_node *add_cast_to_lvalue(an_expr_node *expr, a_type *type)
{
  expr->next = nullptr;
  return make_lvalue_operator_node(eok_cast_to_lvalue, type, expr);
}

an_expr_node *add_cast_to_lvalue_if_necessary(an_expr_node *expr, a_type *type)
{
  return identical_types(expr->type, type) ? expr : add_cast_to_lvalue(expr, type);
}

an_expr_node *make_lvalue_cast_node(an_expr_node *expr, a_type *type)
{
  expr->next = nullptr;
  return make_lvalue_operator_node(eok_lvalue_cast, type, expr);
}

an_expr_node *add_indirection_to_node(an_expr_node *expr)
{
  expr->next = nullptr;
  return make_lvalue_operator_node(eok_indirection, type_pointed_to(expr->type), expr);
}

an_expr_node *add_ref_indirection_to_node(an_expr_node *expr)
{
  expr->next = nullptr;
  a_type *type = as_pointer(skip_typerefs(expr->type)).pointed_to_type;
  return make_lvalue_operator_node(eok_ref_indirection, type, expr);
}

// The address of *p is p.
an_expr_node *add_address_of_to_node(an_expr_node *expr)
{
  if (is_operation(expr, eok_indirection)) {
    an_expr_node *pointer = first_operand_of(expr);
    a_type *type = make_pointer_type(expr->type);
    if (identical_types(pointer->type, type)) return pointer;
  }
  set_address_taken_for_variable_or_routine_expr(expr);
  expr->next = nullptr;
  return make_operator_node(eok_address_of, make_pointer_type(expr->type), expr);
}

an_expr_node *add_reference_to_to_node(an_expr_node *expr)
{
  if (is_operation(expr, eok_ref_indirection)) return first_operand_of(expr);
  set_address_taken_for_variable_or_routine_expr(expr);
  expr->next = nullptr;
  return make_operator_node(eok_reference_to, make_reference_type(expr->type), expr);
}

an_expr_node *add_rvalue_class_adjust_node(an_expr_node *expr)
{
  expr->next = nullptr;
  return make_lvalue_operator_node(eok_rvalue_class_adjust, expr->type, expr);
}

an_expr_node *conv_array_expr_to_pointer(an_expr_node *expr)
{
  set_address_taken_for_variable_or_routine_expr(expr);
  expr->next = nullptr;
  a_type *element = array_element_type(expr->type);
  return make_operator_node(eok_array_to_pointer, make_pointer_type(element), expr);
}

an_expr_node *var_lvalue_expr(a_variable *variable)
{
  an_expr_node *expr = alloc_expr_node(enk_variable);
  variable_of(expr) = variable;
  expr->type = variable->type;
  expr->is_lvalue = true;
  return expr;
}

a_type *rvalue_type(a_type *type)
{
  a_type *bare = skip_typerefs(type);
  if (bare->kind == tk_array || bare->kind == tk_routine) return type;
  return make_unqualified_type(type);
}

an_expr_node *rvalue_expr_for_lvalue(an_expr_node *expr)
{
  expr->is_lvalue = false;
  if (expr->kind == enk_operation) operation_of(expr).is_lvalue_valued = false;
  expr->type = rvalue_type(expr->type);
  return expr;
}

an_expr_node *var_rvalue_expr(a_variable *variable)
{
  return rvalue_expr_for_lvalue(var_lvalue_expr(variable));
}

an_expr_node *var_addr_expr(a_variable *variable)
{
  return add_address_of_to_node(var_lvalue_expr(variable));
}

an_expr_node *function_lvalue_expr(a_routine *routine)
{
  an_expr_node *expr = alloc_expr_node(enk_routine);
  routine_of(expr) = routine;
  expr->type = routine->type;
  expr->is_lvalue = true;
  return expr;
}

an_expr_node *function_addr_expr(a_routine *routine)
{
  return add_address_of_to_node(function_lvalue_expr(routine));
}

an_expr_node *function_rvalue_expr(a_routine *routine)
{
  return function_addr_expr(routine);
}

// --- Members -------------------------------------------------------------------------------------

static an_expr_node *field_node(a_field *field)
{
  an_expr_node *expr = alloc_expr_node(enk_field);
  field_of(expr) = field;
  expr->type = field->type;
  return expr;
}

// The field's type with the qualifiers that the object lends it.
static a_type *type_of_selected_field(a_type *object_type, a_field *field)
{
  a_type_qualifier_set qualifiers = get_type_qualifiers(object_type) & (tq_const | tq_volatile);
  if (field->is_mutable) qualifiers &= ~(a_type_qualifier_set)tq_const;
  return qualifiers == 0 ? field->type : f_make_qualified_type(field->type, qualifiers);
}

// `object` is a class object (for ".") or a pointer to one (for "->").
static an_expr_node *selection_node(an_expr_node *object, a_field *field)
{
  bool through_pointer = is_pointer_type(object->type);
  a_type *object_type = through_pointer ? type_pointed_to(object->type) : object->type;
  object->next = field_node(field);
  a_type *type = type_of_selected_field(object_type, field);
  if (through_pointer) return make_lvalue_operator_node(eok_arrow_field, type, object);
  return object->is_lvalue ? make_lvalue_operator_node(eok_dot_field, type, object)
                           : make_operator_node(eok_dot_field, type, object);
}

an_expr_node *field_lvalue_selection_expr(an_expr_node *object, a_field *field)
{
  an_expr_node *expr = selection_node(object, field);
  expr->is_lvalue = true;
  operation_of(expr).is_lvalue_valued = true;
  return expr;
}

an_expr_node *field_rvalue_selection_expr(an_expr_node *object, a_field *field)
{
  return rvalue_expr_for_lvalue(selection_node(object, field));
}

// Finds the member of class_type, itself an anonymous union or struct or holding one, that leads to
// the field; null when the field is a direct member.
static a_field *anonymous_member_leading_to(a_type *class_type, const a_field *field)
{
  for (a_field *member = as_class(class_type).first_field; member != nullptr;
       member = member->next) {
    if (member == field) return nullptr;
  }
  for (a_field *member = as_class(class_type).first_field; member != nullptr;
       member = member->next) {
    bool is_anonymous = member->is_anonymous_union_field ||
                        (member->source_corresp.name == nullptr && !member->is_bit_field);
    if (!is_anonymous) continue;
    a_type *type = skip_typerefs(member->type);
    if (!kind_has_class_part(type->kind)) continue;
    for (a_field *inner = as_class(type).first_field; inner != nullptr; inner = inner->next) {
      if (inner == field) return member;
    }
    if (anonymous_member_leading_to(type, field) != nullptr) return member;
  }
  return nullptr;
}

static a_type *class_of_object(const an_expr_node *object)
{
  a_type *type = object->type;
  if (is_pointer_type(type)) type = type_pointed_to(type);
  return skip_typerefs(type);
}

an_expr_node *fe_field_lvalue_selection_expr(an_expr_node *object, a_field *field)
{
  a_field *step;
  while ((step = anonymous_member_leading_to(class_of_object(object), field)) != nullptr) {
    object = field_lvalue_selection_expr(object, step);
  }
  return field_lvalue_selection_expr(object, field);
}

// A selection straight out of the enclosing class gets its steps through anonymous members.
an_expr_node *adjust_anonymous_union_field_selection(an_expr_node *expr)
{
  an_expr_node *object = first_operand_of(expr);
  an_expr_node *field = object->next;
  if (field->kind != enk_field) return expr;
  a_field *step;
  bool changed = false;
  while ((step = anonymous_member_leading_to(class_of_object(object), field_of(field))) !=
         nullptr) {
    object = selection_node(object, step);
    changed = true;
  }
  if (!changed) return expr;
  object->next = field;
  first_operand_of(expr) = object;
  operation_of(expr).op = eok_dot_field;
  return expr;
}

an_expr_node *base_class_selection_expr(an_expr_node *object, a_base_class *base)
{
  object->next = nullptr;
  a_type_qualifier_set qualifiers = 0;
  a_type *type = base->type;
  if (is_pointer_type(object->type)) {
    qualifiers = get_type_qualifiers(type_pointed_to(object->type));
    if (qualifiers != 0) type = f_make_qualified_type(type, qualifiers);
    return make_operator_node(eok_derived_to_base, make_pointer_type(type), object);
  }
  qualifiers = get_type_qualifiers(object->type);
  if (qualifiers != 0) type = f_make_qualified_type(type, qualifiers);
  return make_lvalue_operator_node(eok_derived_to_base, type, object);
}

// --- Constants as nodes --------------------------------------------------------------------------

an_expr_node *node_for_integer_constant(long long value, an_integer_kind kind)
{
  a_constant constant;
  set_integer_constant(&constant, value, kind);
  return alloc_node_for_constant(&constant);
}

an_expr_node *node_for_host_large_integer(long long value, an_integer_kind kind)
{
  return node_for_integer_constant(value, kind);
}

an_expr_node *node_for_zero_of_type(a_type *type)
{
  a_constant constant;
  make_zero_of_proper_type(type, &constant);
  return alloc_node_for_constant(&constant);
}

an_expr_node *zero_cast_to_void()
{
  an_expr_node *expr = add_cast(node_for_integer_constant(0, ik_int), void_type());
  operation_of(expr).is_implicit_cast = true;
  return expr;
}

an_expr_node *this_param_value_expr()
{
  a_variable *this_param = innermost_function_scope->this_param;
  check(this_param != nullptr);
  return var_rvalue_expr(this_param);
}

an_expr_node *alloc_temp_init_node(a_type *type, a_dynamic_init *init, bool is_lvalue)
{
  an_expr_node *expr = alloc_expr_node(enk_temp_init);
  dynamic_init_of(expr) = init;
  expr->type = type;
  expr->is_lvalue = is_lvalue;
  return expr;
}

an_expr_node *add_object_lifetime_to_expr(an_expr_node *expr, an_object_lifetime *lifetime)
{
  an_expr_node *wrapper = alloc_expr_node(enk_lifetime_wrapper);
  lifetime_wrapper_of(wrapper).expr = expr;
  lifetime_wrapper_of(wrapper).object_lifetime = lifetime;
  wrapper->type = expr->type;
  wrapper->is_lvalue = expr->is_lvalue;
  wrapper->expr_range = expr->expr_range;
  bind_object_lifetime(lifetime, iek_expr_node, wrapper);
  return wrapper;
}

// --- Nodes as wholes -----------------------------------------------------------------------------

an_expr_node *copy_node(const an_expr_node *expr)
{
  an_expr_node *copy = alloc_curr_entry<an_expr_node>();
  *copy = *expr;
  copy->next = nullptr;
  entry_flags_of(copy).lowered = entry_flags_of(expr).lowered;
  return copy;
}

void overwrite_node(an_expr_node *expr, const an_expr_node *content)
{
  an_expr_node *next = expr->next;
  bool was_implicit_cast = expr->kind == enk_operation && operation_of(expr).is_implicit_cast;
  bool lowered = entry_flags_of(content).lowered;
  *expr = *content;
  expr->next = next;
  if (was_implicit_cast && is_operation(expr, eok_cast)) {
    operation_of(expr).is_implicit_cast = true;
  }
  entry_flags_of(expr).lowered = lowered;
}

// C assigns classes, but no arrays.
an_expr_operator_kind assignment_operator_for_type(a_type *type)
{
  return skip_typerefs(type)->kind == tk_array ? eok_struct_assign : eok_assign;
}

a_routine *routine_from_function_expr(const an_expr_node *expr)
{
  for (;;) {
    if (expr->kind == enk_routine) return routine_of(expr);
    if (expr->kind == enk_constant) {
      const a_constant *constant = constant_of(expr);
      bool is_routine = constant->kind == ck_address && address_of(constant).kind == ack_routine;
      return is_routine ? (a_routine *)address_of(constant).entity : nullptr;
    }
    if (expr->kind != enk_operation) return nullptr;
    switch (op_of(expr)) {
    case eok_address_of:
    case eok_indirection:
    case eok_ref_indirection:
    case eok_reference_to:
    case eok_cast: expr = first_operand_of(expr); break;
    default: return nullptr;
    }
  }
}

void set_variable_address_taken(a_variable *variable)
{
  variable->address_taken = true;
  if (il_lowering_underway && variable->storage_class == sc_register) {
    variable->storage_class = sc_auto;
  }
}

void set_address_taken_for_variable_or_routine_expr(an_expr_node *expr)
{
  for (;;) {
    switch (expr->kind) {
    case enk_variable: set_variable_address_taken(variable_of(expr)); return;
    case enk_routine: routine_of(expr)->address_taken = true; return;
    case enk_operation:
      switch (op_of(expr)) {
      case eok_dot_field:
      case eok_dot_member:
      case eok_lvalue_cast:
      case eok_cast_to_lvalue:
      case eok_reference_cast:
      case eok_array_to_pointer:
      case eok_real:
      case eok_imag: expr = first_operand_of(expr); continue;
      case eok_subscript:
        expr = first_operand_of(expr);
        if (!is_operation(expr, eok_array_to_pointer)) return;
        continue;
      case eok_comma: expr = second_operand_of(expr); continue;
      case eok_question:
        set_address_taken_for_variable_or_routine_expr(second_operand_of(expr));
        expr = third_operand_of(expr);
        continue;
      default: return;
      }
    default: return;
    }
  }
}
