// lower_ptr_to_member.cpp - pointers to members: to data an integer, the offset or -1 for null; to a
// function a struct of its address, or the odd place of its entry in the virtual function table, and
// of what is added to the object's address.
// Rule:    the types stay as they are; their text in the generated C is that of the lowered type.
// Entry:   lower_ptr_to_member_operator, lower_ptr_to_member_constant, lowered_ptr_to_member_type.
#include "driver/target.h"
#include "il/il_alloc.h"
#include "il/il_walk.h"
#include "lower/lower_c99.h"
#include "lower/lower_class.h"

static a_type *mptr_type; // of the current translation unit
static a_field *mptr_function_field;
static a_field *mptr_delta_field;

// --- Types ---------------------------------------------------------------------------------------

bool is_or_was_ptr_to_data_member_type(a_type *type)
{
  type = skip_typerefs(type);
  return type->kind == tk_ptr_to_member && !is_function_type(as_ptr_to_member(type).member_type);
}

bool is_or_was_ptr_to_member_function_type(a_type *type)
{
  type = skip_typerefs(type);
  return type->kind == tk_ptr_to_member && is_function_type(as_ptr_to_member(type).member_type);
}

static a_type *function_field_type()
{
  return make_pointer_type(make_routine_type(void_type()));
}

static void lay_out_mptr_type()
{
  mptr_delta_field->offset = size_of_type(mptr_function_field->type);
  mptr_function_field->layout_done = mptr_delta_field->layout_done = true;
  mptr_type->alignment = f_alignment_of_type(mptr_function_field->type);
  mptr_type->size = mptr_delta_field->offset + size_of_type(mptr_delta_field->type);
  align(&mptr_type->size, mptr_type->alignment);
  mptr_type->is_incomplete = false;
  as_class(mptr_type).layout_done = true;
}

a_type *make_mptr_type()
{
  if (mptr_type != nullptr) return mptr_type;
  int saved;
  switch_to_file_scope_region(&saved);
  mptr_type = make_lowered_class_type(tk_struct);
  assign_internal_name(&mptr_type->source_corresp, "__mptr");
  mptr_type->source_corresp.name_linkage = nlk_none;
  mptr_function_field = make_lowered_field("f", function_field_type(), mptr_type, nullptr);
  mptr_delta_field = make_lowered_field("d", integer_type(targ_ptrdiff_t_int_kind), mptr_type,
                                        mptr_function_field);
  lay_out_mptr_type();
  a_scope *scope = il_header.primary_scope;
  if (scope->types == nullptr) {
    add_to_types_list(mptr_type, 0);
  } else {
    mptr_type->next = scope->types;
    scope->types = mptr_type;
  }
  switch_back_to_original_region(saved);
  return mptr_type;
}

void clear_mptr_type()
{
  mptr_type = nullptr;
}

a_type *lowered_ptr_to_member_type(a_type *type)
{
  return is_or_was_ptr_to_member_function_type(type) ? make_mptr_type() : integer_type(ik_int);
}

// --- Constants -----------------------------------------------------------------------------------

static int64_t base_delta(const a_constant_ptr_to_member &member)
{
  if (member.base_class == nullptr) return 0;
  int64_t offset = (int64_t)member.base_class->offset;
  return member.cast_to_base ? -offset : offset;
}

static void make_data_member_constant(a_constant *constant)
{
  a_constant_ptr_to_member member = ptr_to_member_of(constant);
  a_field *field = (a_field *)member.member;
  long long value = field == nullptr ? -1 : (long long)field->offset + base_delta(member);
  a_constant *next = constant->next;
  set_integer_constant(constant, value, ik_int);
  constant->next = next;
}

static a_constant *function_field_constant(a_routine *routine)
{
  a_constant constant;
  if (routine == nullptr || routine->is_virtual) {
    long long place =
        routine == nullptr
            ? 0
            : (long long)routine->virtual_function_number * (long long)vtbl_entry_size() | 1;
    set_integer_constant(&constant, place, ik_int);
    constant.value_is_punned = routine != nullptr;
  } else {
    set_routine_address_constant(routine, &constant, false);
    mark_as_needed(routine, iek_routine);
  }
  constant.type = function_field_type();
  constant.show_cast = true;
  return alloc_unshared_constant(&constant);
}

static void make_function_constant(a_constant *constant)
{
  a_constant_ptr_to_member member = ptr_to_member_of(constant);
  a_constant *next = constant->next;
  a_constant delta;
  set_integer_constant(&delta, base_delta(member), targ_ptrdiff_t_int_kind);
  set_constant_kind(constant, ck_aggregate);
  constant->next = next;
  constant->type = make_mptr_type();
  aggregate_of(constant).has_own_braces = true;
  add_to_aggregate(constant, function_field_constant((a_routine *)member.member));
  add_to_aggregate(constant, alloc_unshared_constant(&delta));
}

void lower_ptr_to_member_constant(a_constant *constant)
{
  if (ptr_to_member_of(constant).is_member_function ||
      is_or_was_ptr_to_member_function_type(constant->type))
    make_function_constant(constant);
  else
    make_data_member_constant(constant);
}

// A struct has no constant of its own in C: a static variable holds it.
void lower_ptr_to_member_constant_node(an_expr_node *expr)
{
  int saved;
  switch_to_file_scope_region(&saved);
  a_constant *constant = copy_constant_full(constant_of(expr), true);
  bool is_function = is_or_was_ptr_to_member_function_type(expr->type);
  lower_ptr_to_member_constant(constant);
  a_variable *variable = nullptr;
  if (is_function) {
    variable = make_file_scope_temporary(make_mptr_type());
    variable->init_kind = initk_static;
    constant_initializer_of(variable) = constant;
  }
  switch_back_to_original_region(saved);
  an_expr_node *value =
      is_function ? var_rvalue_expr(variable) : alloc_node_for_allocated_constant(constant);
  overwrite_node(expr, value);
}

void turn_function_constant_into_expr(a_dynamic_init *init)
{
  if (init->kind != dik_constant || constant_of(init)->kind != ck_ptr_to_member) return;
  if (!is_or_was_ptr_to_member_function_type(constant_of(init)->type)) return;
  an_expr_node *expr = alloc_node_for_allocated_constant(constant_of(init));
  set_dynamic_init_kind(init, dik_expression);
  expr_of(init) = expr;
}

// --- Parts ---------------------------------------------------------------------------------------

static an_expr_node *part_of(a_variable *variable, a_field *field)
{
  return field_rvalue_selection_expr(var_lvalue_expr(variable), field);
}

// A variable that holds the value; *save gets the assignment, to be evaluated first.
static a_variable *save_in_variable(an_expr_node *expr, a_type *type, an_expr_node **save)
{
  expr->next = nullptr;
  a_variable *variable = make_lowered_temporary(type);
  an_expr_operator_kind op = assignment_operator_for_type(type);
  *save = make_binary_node(op, type, var_lvalue_expr(variable), expr);
  return variable;
}

static an_expr_node *function_place_as_integer(a_variable *pointer)
{
  return add_cast(part_of(pointer, mptr_function_field), integer_type(ik_int));
}

static an_expr_node *int_node(long long value)
{
  return node_for_integer_constant(value, ik_int);
}

static an_expr_node *displaced(an_expr_node *pointer, an_expr_node *bytes, a_type *type)
{
  a_type *byte_pointer = make_pointer_type(integer_type(ik_char));
  return add_cast(
      make_binary_node(eok_pointer_add, byte_pointer, add_cast(pointer, byte_pointer), bytes),
      type);
}

// --- Operators -----------------------------------------------------------------------------------

// object.*pointer: what stands at the offset.
static void lower_data_selection(an_expr_node *expr)
{
  an_expr_node *object = first_operand_of(expr);
  an_expr_node *offset = object->next;
  object->next = nullptr;
  an_expr_node *address = op_of(expr) == eok_dot_member ? address_of_class_value(object) : object;
  an_expr_node *result =
      add_indirection_to_node(displaced(address, offset, make_pointer_type(expr->type)));
  bool is_lvalue = expr->is_lvalue;
  if (!is_lvalue) result = rvalue_expr_for_lvalue(result);
  overwrite_node(expr, result);
}

// The type of the function with its parameter for the object.
static a_type *function_pointer_type(a_type *pointer_type)
{
  int saved;
  switch_to_file_scope_region(&saved);
  a_type *type = copy_routine_type_with_param_types(skip_typerefs(pm_member_type(pointer_type)));
  a_routine_type_supplement *supplement = routine_supplement_of(type);
  a_param_type *param = alloc_param_type(f_implicit_this_param_type_of(type));
  param->is_this_param = true;
  param->next = supplement->param_types;
  supplement->param_types = param;
  type->source_corresp.lowered = true;
  a_type *result = make_pointer_type(type);
  switch_back_to_original_region(saved);
  return result;
}

// (P = pointer, T = object + P.d, (P.f is odd ? entry of T's table : P.f)(T, arguments))
static void lower_call(an_expr_node *expr)
{
  an_expr_node *pointer = first_operand_of(expr);
  an_expr_node *object = pointer->next;
  pass_class_arguments(&object->next);
  an_expr_node *arguments = object->next;
  a_type *function_type = function_pointer_type(pointer->type);
  a_type *object_type = object->type;
  object->next = nullptr;
  make_mptr_type();
  an_expr_node *save_pointer, *save_object;
  a_variable *p = save_in_variable(pointer, mptr_type, &save_pointer);
  an_expr_node *adjusted = displaced(object, part_of(p, mptr_delta_field), object_type);
  a_variable *t = save_in_variable(adjusted, object_type, &save_object);
  a_type *table_type = make_pointer_type(make_pointer_type(integer_type(ik_char)));
  an_expr_node *table =
      rvalue_expr_for_lvalue(add_indirection_to_node(add_cast(var_rvalue_expr(t), table_type)));
  an_expr_node *place = make_binary_node(eok_subtract, integer_type(ik_int),
                                         function_place_as_integer(p), int_node(1));
  an_expr_node *entry = rvalue_expr_for_lvalue(
      add_indirection_to_node(displaced(table, place, make_pointer_type(integer_type(ik_int)))));
  an_expr_node *is_odd = make_binary_node(eok_bit_and, integer_type(ik_int),
                                          function_place_as_integer(p), int_node(1));
  is_odd->next = add_cast(entry, function_type);
  is_odd->next->next = add_cast(part_of(p, mptr_function_field), function_type);
  an_expr_node *function = make_operator_node(eok_question, function_type, is_odd);
  function->next = var_rvalue_expr(t);
  function->next->next = arguments;
  an_expr_node *call = make_operator_node(eok_call, expr->type, function);
  overwrite_node(expr, make_comma_node(save_pointer, make_comma_node(save_object, call)));
}

// Equal: the same f, and the same d unless f is null.
static void lower_function_comparison(an_expr_node *expr)
{
  bool is_equal = op_of(expr) == eok_eq;
  an_expr_node *left = first_operand_of(expr), *right = left->next;
  make_mptr_type();
  an_expr_node *save_left, *save_right;
  a_variable *x = save_in_variable(left, mptr_type, &save_left);
  a_variable *y = save_in_variable(right, mptr_type, &save_right);
  a_type *int_type = integer_type(ik_int);
  an_expr_node *same_function =
      make_binary_node(is_equal ? eok_eq : eok_ne, int_type, function_place_as_integer(x),
                       function_place_as_integer(y));
  an_expr_node *null_test = make_binary_node(is_equal ? eok_eq : eok_ne, int_type,
                                             function_place_as_integer(y), int_node(0));
  an_expr_node *same_delta =
      make_binary_node(is_equal ? eok_eq : eok_ne, int_type, part_of(x, mptr_delta_field),
                       part_of(y, mptr_delta_field));
  an_expr_node *inner =
      make_binary_node(is_equal ? eok_lor : eok_land, int_type, null_test, same_delta);
  an_expr_node *test =
      make_binary_node(is_equal ? eok_land : eok_lor, int_type, same_function, inner);
  overwrite_node(expr, make_comma_node(save_left, make_comma_node(save_right, test)));
}

an_expr_node *test_of_ptr_to_member(an_expr_node *pointer)
{
  a_type *int_type = integer_type(ik_int);
  pointer->next = nullptr;
  if (!is_or_was_ptr_to_member_function_type(pointer->type))
    return make_binary_node(eok_ne, int_type, pointer, int_node(-1));
  make_mptr_type();
  an_expr_node *save;
  a_variable *p = save_in_variable(pointer, mptr_type, &save);
  return make_comma_node(
      save, make_binary_node(eok_ne, int_type, function_place_as_integer(p), int_node(0)));
}

static void lower_bool_conversion(an_expr_node *expr)
{
  overwrite_node(expr, add_cast(test_of_ptr_to_member(first_operand_of(expr)), expr->type));
}

static int64_t cast_delta(a_type *from, a_type *to, bool to_base)
{
  a_type *derived = skip_typerefs(pm_class_type(to_base ? from : to));
  a_type *base_type = skip_typerefs(pm_class_type(to_base ? to : from));
  a_base_class *base = find_base_class_of(derived, base_type);
  int64_t offset = base == nullptr ? 0 : (int64_t)base->offset;
  return to_base ? -offset : offset;
}

static void lower_class_conversion(an_expr_node *expr, bool to_base)
{
  an_expr_node *operand = first_operand_of(expr);
  int64_t delta = cast_delta(operand->type, expr->type, to_base);
  if (delta == 0) {
    overwrite_node(expr, operand);
    return;
  }
  bool is_function = is_or_was_ptr_to_member_function_type(operand->type);
  a_type *int_type = integer_type(ik_int);
  an_expr_node *save;
  a_variable *x = save_in_variable(operand, is_function ? make_mptr_type() : int_type, &save);
  an_expr_node *value = is_function ? part_of(x, mptr_delta_field) : var_rvalue_expr(x);
  an_expr_node *sum = make_binary_node(eok_add, int_type, value, int_node(delta));
  an_expr_node *result;
  if (is_function) {
    an_expr_node *place = field_lvalue_selection_expr(var_lvalue_expr(x), mptr_delta_field);
    an_expr_node *change = make_binary_node(eok_assign, int_type, place, sum);
    an_expr_node *test =
        make_binary_node(eok_ne, int_type, function_place_as_integer(x), int_node(0));
    test->next = add_cast(change, void_type());
    test->next->next = zero_cast_to_void();
    result =
        make_comma_node(make_operator_node(eok_question, void_type(), test), var_rvalue_expr(x));
  } else {
    an_expr_node *test = make_binary_node(eok_ne, int_type, var_rvalue_expr(x), int_node(-1));
    test->next = sum;
    sum->next = int_node(-1);
    result = make_operator_node(eok_question, int_type, test);
  }
  overwrite_node(expr, make_comma_node(save, result));
}

bool lower_ptr_to_member_operator(an_expr_node *expr)
{
  a_type *operand_type = first_operand_of(expr)->type;
  switch (op_of(expr)) {
  case eok_dot_member:
  case eok_arrow_member: lower_data_selection(expr); return true;
  case eok_ptr_to_member_call: lower_call(expr); return true;
  case eok_ptr_to_member_base_cast: lower_class_conversion(expr, true); return true;
  case eok_ptr_to_member_derived_cast: lower_class_conversion(expr, false); return true;
  case eok_eq:
  case eok_ne:
    if (!is_or_was_ptr_to_member_function_type(operand_type)) return false;
    lower_function_comparison(expr);
    return true;
  case eok_cast_to_bool:
    if (!is_ptr_to_member_type(operand_type)) return false;
    lower_bool_conversion(expr);
    return true;
  default: return false;
  }
}
