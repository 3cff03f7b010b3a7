// lower_class.cpp - classes become structs with fields for their bases; casts between classes become
// arithmetic on addresses.
// Rule:    code uses offsets, not the fields of bases, so that a class may be rewritten after the
//          functions that use it.
// Entry:   prelower_class_type, lower_cplusplus_operator.
#include <cstring>

#include "driver/flags.h"
#include "errors/error.h"
#include "il/il_alloc.h"
#include "lower/lower_c99.h"
#include "lower/lower_class.h"
#include "lower/lower_name.h"
#include "parse/symbol_tbl.h"

// --- Fields --------------------------------------------------------------------------------------

// In the order of offsets; what was there first stays in front at the same offset.
static void insert_field(a_type *class_type, a_field *field)
{
  a_field **link = &as_class(class_type).first_field;
  while (*link != nullptr && (*link)->offset < field->offset)
    link = &(*link)->next;
  field->next = *link;
  *link = field;
}

static a_field *make_field(a_type *class_type, const char *name, a_type *type, uint64_t offset)
{
  a_field *field = alloc_field();
  field->type = type;
  field->offset = offset;
  field->is_compiler_generated = true;
  field->layout_done = true;
  field->source_corresp.name = name;
  field->source_corresp.parent_scope = class_supplement_of(class_type)->class_scope;
  field->source_corresp.is_class_member = true;
  insert_field(class_type, field);
  return field;
}

static void add_base_field(a_type *class_type, a_base_class *base)
{
  a_type *type = skip_typerefs(base->type);
  prelower_class_type(type);
  if (base->is_empty || as_class(type).is_empty_class) return;
  const char *base_name = mangled_class_name(type);
  size_t length = strlen(base_name) + 5;
  char *name = alloc_lowered_name_string(length);
  memcpy(name, base->is_virtual ? "__v_" : "__b_", 4);
  memcpy(name + 4, base_name, length - 4);
  base->base_field =
      make_field(class_type, name, class_supplement_of(type)->subobject_type, base->offset);
  base->base_field->is_base_subobject = true;
}

// The class has a pointer of its own, and none that it shares with a base.
static bool has_own_vptr(a_type *class_type)
{
  const a_class_type_part &part = as_class(class_type);
  return (part.has_virtual_functions || part.has_virtual_bases) &&
         class_supplement_of(class_type)->primary_base == nullptr;
}

void prelower_class_type(a_type *class_type)
{
  class_type = skip_typerefs(class_type);
  a_class_type_supplement *supplement = class_supplement_of(class_type);
  if (supplement->subobject_type != nullptr || !as_class(class_type).layout_done) return;
  supplement->subobject_type = class_type;
  if (as_class(class_type).has_virtual_bases)
    pos_st_error(ec_not_supported, class_type->source_corresp.decl_position, "virtual base class");
  int saved;
  switch_to_file_scope_region(&saved);
  for (a_base_class *base = supplement->base_classes; base != nullptr; base = base->next)
    if (base->is_direct && !base->is_virtual) add_base_field(class_type, base);
  if (has_own_vptr(class_type)) {
    a_type *entry = f_make_qualified_type(integer_type(ik_int), tq_const);
    make_field(class_type, "__vptr", make_pointer_type(entry), supplement->vptr_offset)->is_vptr =
        true;
  }
  switch_back_to_original_region(saved);
}

// --- Addresses of class values -------------------------------------------------------------------

// A node whose address the generated C can take.
static bool has_address(const an_expr_node *expr)
{
  switch (expr->kind) {
  case enk_variable:
  case enk_routine: return true;
  case enk_constant: return constant_of(expr)->kind == ck_string;
  case enk_operation: break;
  default: return expr->is_lvalue;
  }
  switch (op_of(expr)) {
  case eok_indirection:
  case eok_ref_indirection:
  case eok_subscript:
  case eok_arrow_field: return true;
  case eok_dot_field: return has_address(first_operand_of(expr));
  case eok_comma:
  case eok_question: return false;
  default: return expr->is_lvalue;
  }
}

// The address of an operand that is lowered: pushed into commas and conditions; another value is
// kept in a temporary.
an_expr_node *address_of_class_value(an_expr_node *expr)
{
  expr->next = nullptr;
  if (has_address(expr)) return add_address_of_to_node(expr);
  if (is_operation(expr, eok_comma)) {
    an_expr_node *first = first_operand_of(expr);
    an_expr_node *second = first->next;
    first->next = nullptr;
    return make_comma_node(first, address_of_class_value(second));
  }
  if (is_operation(expr, eok_question)) {
    an_expr_node *test = first_operand_of(expr);
    an_expr_node *yes = test->next, *no = yes->next;
    test->next = address_of_class_value(yes);
    test->next->next = address_of_class_value(no);
    return make_operator_node(eok_question, test->next->type, test);
  }
  if (expr->is_lvalue && !kind_has_class_part(skip_typerefs(expr->type)->kind))
    return add_address_of_to_node(expr);
  a_variable *variable = make_lowered_temporary(rvalue_type(expr->type));
  an_expr_operator_kind op = assignment_operator_for_type(variable->type);
  an_expr_node *save = make_binary_node(op, variable->type, var_lvalue_expr(variable), expr);
  return make_comma_node(save, var_addr_expr(variable));
}

static void lower_address_of(an_expr_node *expr)
{
  an_expr_node *operand = first_operand_of(expr);
  if (has_address(operand) || operation_of(expr).is_implicit_cast) return;
  an_expr_node *address = address_of_class_value(operand);
  if (!identical_types(address->type, expr->type)) address = add_cast(address, expr->type);
  overwrite_node(expr, address);
}

static void lower_rvalue_class_adjust(an_expr_node *expr)
{
  an_expr_node *operand = first_operand_of(expr);
  bool is_lvalue = expr->is_lvalue;
  an_expr_node *content =
      has_address(operand) ? operand : add_indirection_to_node(address_of_class_value(operand));
  overwrite_node(expr, content);
  expr->is_lvalue = is_lvalue;
}

// --- Arguments -----------------------------------------------------------------------------------

static bool has_destructor_to_call(const a_class_symbol_supplement *supplement)
{
  if (supplement->destructor == nullptr) return false;
  return !supplement->has_trivial_destructor ||
         !routine_of_symbol(supplement->destructor)->is_compiler_generated;
}

bool class_is_passed_by_address(a_type *type)
{
  type = skip_typerefs(type);
  if (C_dialect != 2 || !kind_has_class_part(type->kind)) return false;
  a_symbol *symbol = type->source_corresp.assoc_symbol;
  if (symbol == nullptr || !symbol_kind_is_class(symbol->kind)) return false;
  const a_class_symbol_supplement *supplement = class_supplement_of_symbol(symbol);
  return !supplement->has_trivial_copy_constructor || has_destructor_to_call(supplement);
}

void pass_class_arguments(an_expr_node **list)
{
  for (an_expr_node **link = list; *link != nullptr; link = &(*link)->next) {
    an_expr_node *argument = *link;
    if (!class_is_passed_by_address(argument->type)) continue;
    an_expr_node *rest = argument->next;
    *link = address_of_class_value(argument);
    (*link)->next = rest;
  }
}

// --- Casts ---------------------------------------------------------------------------------------

an_expr_node *displaced_pointer(an_expr_node *pointer, int64_t delta, a_type *type)
{
  if (delta == 0) return add_cast(pointer, type);
  a_type *bytes = make_pointer_type(integer_type(ik_char));
  an_expr_node *count = node_for_integer_constant(delta < 0 ? -delta : delta, ik_int);
  an_expr_node *sum = make_binary_node(delta < 0 ? eok_pointer_subtract : eok_pointer_add, bytes,
                                       add_cast(pointer, bytes), count);
  return add_cast(sum, type);
}

static bool is_never_null(an_expr_node *pointer)
{
  if (is_operation(pointer, eok_address_of)) return true;
  if (is_operation(pointer, eok_cast)) return is_never_null(first_operand_of(pointer));
  return pointer->kind == enk_variable && variable_of(pointer)->is_this_parameter;
}

static int64_t base_offset(a_type *derived, a_type *base)
{
  a_base_class *entry = find_base_class_of(derived, base);
  return entry == nullptr ? 0 : (int64_t)entry->offset;
}

// p == 0 ? 0 : p moved.
static an_expr_node *displaced_pointer_or_null(an_expr_node *pointer, int64_t delta, a_type *type)
{
  if (delta == 0 || is_never_null(pointer)) return displaced_pointer(pointer, delta, type);
  an_expr_node *again = make_reusable_copy(pointer, false);
  an_expr_node *test = make_binary_node(eok_ne, integer_type(ik_int), pointer,
                                        node_for_zero_of_type(rvalue_type(pointer->type)));
  test->next = displaced_pointer(again, delta, type);
  test->next->next = node_for_zero_of_type(type);
  return make_operator_node(eok_question, type, test);
}

static void lower_class_cast(an_expr_node *expr, bool to_base)
{
  an_expr_node *operand = first_operand_of(expr);
  operand->next = nullptr;
  bool is_pointer = is_pointer_type(expr->type) && is_pointer_type(operand->type);
  a_type *from = skip_typerefs(is_pointer ? type_pointed_to(operand->type) : operand->type);
  a_type *to = skip_typerefs(is_pointer ? type_pointed_to(expr->type) : expr->type);
  int64_t delta = to_base ? base_offset(from, to) : -base_offset(to, from);
  an_expr_node *result;
  if (is_pointer) {
    result = displaced_pointer_or_null(operand, delta, expr->type);
  } else {
    an_expr_node *address = address_of_class_value(operand);
    result =
        add_indirection_to_node(displaced_pointer(address, delta, make_pointer_type(expr->type)));
    result->is_lvalue = expr->is_lvalue;
  }
  overwrite_node(expr, result);
}

// A conversion between pointers to related classes, which moves the address; reinterpret_cast goes
// through a pointer to void.  *to_base tells the direction.
static bool is_class_pointer_conversion(an_expr_node *expr, bool *to_base)
{
  a_type *from = first_operand_of(expr)->type, *to = expr->type;
  if (!is_pointer_type(from) || !is_pointer_type(to)) return false;
  from = skip_typerefs(type_pointed_to(from));
  to = skip_typerefs(type_pointed_to(to));
  if (from == to || !kind_has_class_part(from->kind) || !kind_has_class_part(to->kind))
    return false;
  *to_base = find_base_class_of(from, to) != nullptr;
  return *to_base || find_base_class_of(to, from) != nullptr;
}

// --- Operators -----------------------------------------------------------------------------------

static void lower_cplusplus_call(an_expr_node *expr)
{
  an_expr_node *function = first_operand_of(expr);
  pass_class_arguments(&function->next);
  a_routine *routine = routine_from_function_expr(function);
  if (routine == nullptr) return;
  bool is_special =
      routine->special_kind == sfk_constructor || routine->special_kind == sfk_destructor;
  bool is_virtual = op_of(expr) == eok_virtual_call || operation_of(expr).is_virtual_call;
  if (is_virtual && routine->is_virtual) {
    lower_virtual_function_call(expr, routine);
  } else if (is_special) {
    an_expr_node *entry = function_addr_expr(alternate_entry_point(routine, 1));
    entry->next = function->next;
    first_operand_of(expr) = entry;
  }
  operation_of(expr).op = eok_call;
}

// A static member selected through an object: the object counts only for its side effects.
static void lower_static_selection(an_expr_node *expr)
{
  an_expr_node *object = first_operand_of(expr);
  an_expr_node *member = object->next;
  object->next = nullptr;
  bool counts = node_has_side_effects(object);
  if (counts) set_expr_result_not_used(object);
  overwrite_node(expr, counts ? make_comma_node(object, member) : member);
}

void lower_cplusplus_operator(an_expr_node *expr)
{
  if (lower_ptr_to_member_operator(expr)) return;
  switch (op_of(expr)) {
  case eok_address_of:
  case eok_reference_to: lower_address_of(expr); break;
  case eok_rvalue_class_adjust: lower_rvalue_class_adjust(expr); break;
  case eok_cast:
    if (bool to_base; is_class_pointer_conversion(expr, &to_base)) lower_class_cast(expr, to_base);
    break;
  case eok_derived_to_base: lower_class_cast(expr, true); break;
  case eok_base_to_derived: lower_class_cast(expr, false); break;
  case eok_call:
  case eok_virtual_call: lower_cplusplus_call(expr); break;
  case eok_rvalue_cast:
  case eok_rvalue_qualifier_cast: set_node_operator(expr, eok_cast); break;
  case eok_dot_static:
  case eok_arrow_static: lower_static_selection(expr); break;
  default: break;
  }
}
