// folding_pointer.cpp - addresses: arithmetic, differences, comparisons, and the lvalues that have
// one.
// Rule:  two addresses are only related when their base is the same entity; an integer that was
//        cast to a pointer is an address with no base.
// Entry: fold_pointer_operation and its kin (folding.cpp); constant_lvalue_address,
//        constant_rvalue_pointer.
#include "consts/folding_private.h"

// --- Offsets -------------------------------------------------------------------------------------

bool constant_size_of(a_type *type, uint64_t *size)
{
  a_type *final_type = skip_typerefs(type);
  if (final_type->kind == tk_void || final_type->kind == tk_routine) {
    *size = 1;
    return gcc_mode || gpp_mode;
  }
  if (is_incomplete_type(type) || is_incomplete_array_type(type)) return false;
  for (a_type *array = final_type; array->kind == tk_array;
       array = skip_typerefs(as_array(array).element_type)) {
    if (as_array(array).bound_is_expr || as_array(array).bound_is_constant) return false;
  }
  *size = size_of_type(type);
  return true;
}

static bool is_integer_valued_pointer(const a_constant *constant)
{
  return constant->kind == ck_integer;
}

// The type that a step of one counts in.
static a_type *step_type(const a_constant *pointer)
{
  a_type *type = skip_typerefs(pointer->type);
  return type->kind == tk_pointer ? as_pointer(type).pointed_to_type : nullptr;
}

// The size of the object that an address points into, if it is known.
static bool object_size(const a_constant_address &address, uint64_t *size)
{
  switch (address.kind) {
  case ack_variable: {
    a_variable *variable = static_cast<a_variable *>(address.entity);
    // An initializer may have given a flexible array member more than the type says.
    if (variable->has_flexible_array_init) return false;
    a_type *type = skip_typerefs(variable->type);
    if (kind_has_class_part(type->kind) && as_class(type).has_flexible_array) return false;
    return constant_size_of(variable->type, size);
  }
  case ack_constant: {
    a_constant *string = static_cast<a_constant *>(address.entity);
    if (string->kind != ck_string) return false;
    *size = string_of(string).length;
    return true;
  }
  default: return false;
  }
}

static void check_object_range(const a_constant_address &address, bool is_subscript,
                               a_folding *folding)
{
  uint64_t size;
  if (!object_size(address, &size)) return;
  if (address.offset < 0 || uint64_t(address.offset) > size)
    record_fault(folding, is_subscript ? ec_subscript_out_of_range : ec_pointer_outside_base_object,
                 es_warning);
}

static void integer_as_ptrdiff(an_integer_value *value)
{
  a_target_size size, precision;
  a_target_alignment alignment;
  get_integer_size_and_alignment(targ_ptrdiff_t_int_kind, &size, &precision, &alignment);
  sign_extend_integer_value(value, int(precision));
}

// count elements of the pointed-to type, in bytes.
static bool scaled_count(const a_constant *pointer, const a_constant *count,
                         an_integer_value *scaled, a_folding *folding)
{
  uint64_t size = 1;
  a_type *type = step_type(pointer);
  if (type != nullptr && !constant_size_of(type, &size)) return false;
  an_integer_value factor;
  set_unsigned_integer_value(&factor, size);
  *scaled = integer_of(count);
  // The count counts modulo the address space, as the addition will.
  integer_as_ptrdiff(scaled);
  bool overflow;
  multiply_integer_values(scaled, &factor, true, &overflow);
  if (overflow ||
      cmp_integer_values(scaled, true, &min_integer_value_of_kind[targ_ptrdiff_t_int_kind], true) <
          0 ||
      cmp_integer_values(scaled, true, &max_integer_value_of_kind[targ_ptrdiff_t_int_kind], true) >
          0) {
    record_fault(folding, ec_integer_overflow, es_error);
    return false;
  }
  return true;
}

bool add_to_pointer_constant(a_constant *pointer, const a_constant *count, bool subtract,
                             bool is_subscript, a_folding *folding)
{
  an_integer_value scaled;
  if (!scaled_count(pointer, count, &scaled, folding)) return false;
  bool ignored;
  if (is_integer_valued_pointer(pointer)) {
    an_integer_value value = integer_of(pointer);
    if (subtract)
      subtract_integer_values(&value, &scaled, true, &ignored);
    else
      add_integer_values(&value, &scaled, true, &ignored);
    trunc_and_set_integer(&value, pointer, false, false, nullptr, nullptr);
    return true;
  }
  if (pointer->kind != ck_address) return false;
  long long bytes = value_of_integer_value(&scaled, true, &ignored);
  address_of(pointer).offset += subtract ? -bytes : bytes;
  check_object_range(address_of(pointer), is_subscript, folding);
  return true;
}

static void copy_operand_to_result(const a_constant *operand, a_constant *result)
{
  a_type *type = result->type;
  copy_constant(operand, result);
  result->type = type;
  result->expr = nullptr;
}

// pointer + integer, integer + pointer, pointer - integer, pointer[integer].
void fold_pointer_operation(a_folding *folding)
{
  const a_constant *pointer = folding->left, *count = folding->right;
  if (!is_pointer_type(pointer->type) && is_pointer_type(count->type)) {
    pointer = folding->right;
    count = folding->left;
  }
  bool is_pointer_value = pointer->kind == ck_address || pointer->kind == ck_integer;
  if (!is_pointer_value || count->kind != ck_integer || !is_integral_or_enum_type(count->type)) {
    folding->not_folded = true;
    return;
  }
  copy_operand_to_result(pointer, folding->result);
  a_type *result_type = folding->result->type;
  folding->result->type = pointer->type;
  bool subtract = folding->op == eok_pointer_subtract || folding->op == eok_subtract;
  if (!add_to_pointer_constant(folding->result, count, subtract, folding->op == eok_subscript,
                               folding))
    folding->not_folded = folding->code == ec_no_error;
  folding->result->type = result_type;
  if (folding->result->kind == ck_integer) folding->result->value_is_punned = true;
}

// --- Two pointers --------------------------------------------------------------------------------

// Equal string literals are one object where literals are shared.
static bool same_base(const a_constant_address &a, const a_constant_address &b)
{
  if (a.kind != b.kind) return false;
  if (a.entity == b.entity) return true;
  return a.kind == ack_constant && string_literals_shared &&
         eq_constants(static_cast<a_constant *>(a.entity), static_cast<a_constant *>(b.entity));
}

// The offsets of two pointers with the same base; false if they have none.
static bool related_offsets(const a_constant *a, const a_constant *b, an_integer_value *a_offset,
                            an_integer_value *b_offset)
{
  if (is_integer_valued_pointer(a) && is_integer_valued_pointer(b)) {
    *a_offset = integer_of(a);
    *b_offset = integer_of(b);
  } else if (a->kind == ck_address && b->kind == ck_address &&
             same_base(address_of(a), address_of(b))) {
    set_integer_value(a_offset, address_of(a).offset);
    set_integer_value(b_offset, address_of(b).offset);
  } else {
    return false;
  }
  integer_as_ptrdiff(a_offset);
  integer_as_ptrdiff(b_offset);
  return true;
}

void fold_pointer_comparison(a_folding *folding)
{
  an_integer_value a, b;
  if (!related_offsets(folding->left, folding->right, &a, &b)) {
    folding->not_folded = true;
    return;
  }
  // Offsets into one object are ordered as signed numbers; plain numbers as addresses.
  bool is_signed = folding->left->kind == ck_address;
  set_result_number(folding->result,
                    order_satisfies(folding->op, cmp_integer_values(&a, is_signed, &b, is_signed)));
}

void fold_pointer_difference(a_folding *folding)
{
  an_integer_value difference, subtrahend, divisor;
  uint64_t size = 1;
  a_type *type = step_type(folding->left);
  if (!related_offsets(folding->left, folding->right, &difference, &subtrahend) ||
      (type != nullptr && !constant_size_of(type, &size)) || size == 0) {
    folding->not_folded = true;
    return;
  }
  bool overflow;
  subtract_integer_values(&difference, &subtrahend, true, &overflow);
  set_unsigned_integer_value(&divisor, size);
  divide_integer_values(&difference, &divisor, true, &overflow);
  trunc_and_set_integer(&difference, folding->result, true, false, &folding->code,
                        &folding->severity);
}

void fold_ptr_to_member_comparison(a_folding *folding)
{
  const a_constant *a = folding->left, *b = folding->right;
  if (a->kind != ck_ptr_to_member || b->kind != ck_ptr_to_member ||
      (folding->op != eok_eq && folding->op != eok_ne)) {
    folding->not_folded = true;
    return;
  }
  const a_constant_ptr_to_member &x = ptr_to_member_of(a), &y = ptr_to_member_of(b);
  bool equal = x.member == y.member && x.is_member_function == y.is_member_function &&
               x.base_class == y.base_class && x.cast_to_base == y.cast_to_base;
  set_result_number(folding->result, equal == (folding->op == eok_eq));
}

// --- Addresses of lvalues ------------------------------------------------------------------------

bool variable_has_constant_address(const a_variable *variable)
{
  if (variable->is_thread_local) return false;
  return variable->storage_class == sc_extern || variable->storage_class == sc_static ||
         variable->storage_class == sc_unspecified;
}

// Reports what the arithmetic of an address recorded; the address stays.
static void report_address_fault(const a_folding *folding, const an_expr_node *expr, bool report)
{
  if (folding->code == ec_no_error || !report) return;
  pos_diagnostic(folding->severity, folding->code, expr->operator_position);
}

static bool constant_pointer_sum(an_expr_node *pointer, an_expr_node *count, bool subtract,
                                 bool is_subscript, const an_expr_node *whole, a_constant *constant,
                                 bool report, bool *dependent)
{
  if (!is_pointer_type(pointer->type) && is_pointer_type(count->type)) {
    an_expr_node *other = pointer;
    pointer = count;
    count = other;
  }
  if (count->kind != enk_constant || constant_of(count)->kind != ck_integer) return false;
  if (!constant_rvalue_pointer(pointer, constant, report, dependent)) return false;
  a_folding folding = {eok_pointer_add, constant, constant_of(count), constant};
  if (!add_to_pointer_constant(constant, constant_of(count), subtract, is_subscript, &folding))
    return false;
  report_address_fault(&folding, whole, report);
  return true;
}

static bool address_of_field(an_expr_node *expr, a_constant *constant, bool report, bool *dependent)
{
  an_expr_node *object = first_operand_of(expr), *selector = second_operand_of(expr);
  if (selector->kind != enk_field) return false;
  const a_field *field = field_of(selector);
  if (field->is_bit_field) return false;
  bool known = op_of(expr) == eok_dot_field
                   ? constant_lvalue_address(object, constant, report, dependent)
                   : constant_rvalue_pointer(object, constant, report, dependent);
  if (!known) return false;
  if (constant->kind == ck_address) {
    address_of(constant).offset += int64_t(field->offset);
    return true;
  }
  if (constant->kind != ck_integer) return false;
  an_integer_value offset, value = integer_of(constant);
  bool ignored;
  set_unsigned_integer_value(&offset, field->offset);
  add_integer_values(&value, &offset, true, &ignored);
  trunc_and_set_integer(&value, constant, false, false, nullptr, nullptr);
  return true;
}

static bool address_of_operation(an_expr_node *expr, a_constant *constant, bool report,
                                 bool *dependent)
{
  switch (op_of(expr)) {
  case eok_dot_field:
  case eok_arrow_field: return address_of_field(expr, constant, report, dependent);
  case eok_indirection:
  case eok_ref_indirection:
    return constant_rvalue_pointer(first_operand_of(expr), constant, report, dependent);
  case eok_subscript:
    return constant_pointer_sum(first_operand_of(expr), second_operand_of(expr), false, true, expr,
                                constant, report, dependent);
  case eok_lvalue_cast:
  case eok_cast_to_lvalue:
  case eok_real:
    return constant_lvalue_address(first_operand_of(expr), constant, report, dependent);
  case eok_imag:
    if (!constant_lvalue_address(first_operand_of(expr), constant, report, dependent) ||
        constant->kind != ck_address)
      return false;
    address_of(constant).offset += int64_t(size_of_type(expr->type));
    return true;
  case eok_derived_to_base: {
    an_error_code code;
    return constant_lvalue_address(first_operand_of(expr), constant, report, dependent) &&
           fold_base_class_cast(constant, make_pointer_type(expr->type), false, false,
                                &expr->operator_position, &code);
  }
  default: return false;
  }
}

static bool address_of_constant_node(a_constant *lvalue, a_constant *constant, bool *dependent)
{
  if (lvalue->kind == ck_string) {
    set_constant_address_constant(lvalue, constant, true);
    return true;
  }
  if (lvalue->kind == ck_template_param) {
    *dependent = true;
    clear_constant(constant, ck_template_param);
    set_template_param_constant_kind(constant, tpck_address_of_constant);
    template_param_of(constant).constant = lvalue;
    return true;
  }
  return false;
}

// A compound literal or temporary of static lifetime.
static bool address_of_temporary(an_expr_node *expr, a_constant *constant)
{
  a_dynamic_init *init = dynamic_init_of(expr);
  if (init == nullptr || init->variable == nullptr || !init->is_static_storage ||
      !variable_has_constant_address(init->variable))
    return false;
  set_variable_address_constant(init->variable, constant, true);
  return true;
}

bool constant_lvalue_address(an_expr_node *expr, a_constant *constant, bool report,
                             bool *out_is_dependent)
{
  bool known = false, ignored = false;
  bool *dependent = out_is_dependent != nullptr ? out_is_dependent : &ignored;
  *dependent = false;
  switch (expr->kind) {
  case enk_variable:
    known = variable_has_constant_address(variable_of(expr));
    if (known) set_variable_address_constant(variable_of(expr), constant, true);
    break;
  case enk_routine:
    set_routine_address_constant(routine_of(expr), constant, true);
    known = true;
    break;
  case enk_constant:
    known = address_of_constant_node(constant_of(expr), constant, dependent);
    break;
  case enk_temp_init: known = address_of_temporary(expr, constant); break;
  case enk_operation: known = address_of_operation(expr, constant, report, dependent); break;
  default: break;
  }
  if (known && !*dependent) constant->type = make_pointer_type(expr->type);
  return known;
}

static bool value_of_pointer_cast(an_expr_node *expr, a_constant *constant, bool report,
                                  bool *dependent)
{
  an_expr_node *operand = first_operand_of(expr);
  if (operand->kind == enk_constant)
    copy_constant(constant_of(operand), constant);
  else if (!is_pointer_type(operand->type) ||
           !constant_rvalue_pointer(operand, constant, report, dependent))
    return false;
  constant->expr = nullptr;
  return implicit_cast(constant, expr->type);
}

static bool value_of_pointer_operation(an_expr_node *expr, a_constant *constant, bool report,
                                       bool *dependent)
{
  switch (op_of(expr)) {
  case eok_cast:
  case eok_rvalue_cast:
  case eok_rvalue_qualifier_cast: return value_of_pointer_cast(expr, constant, report, dependent);
  case eok_array_to_pointer:
  case eok_address_of:
    return constant_lvalue_address(first_operand_of(expr), constant, report, dependent);
  case eok_pointer_add:
  case eok_pointer_subtract:
    return constant_pointer_sum(first_operand_of(expr), second_operand_of(expr),
                                op_of(expr) == eok_pointer_subtract, false, expr, constant, report,
                                dependent);
  default: return false;
  }
}

bool constant_rvalue_pointer(an_expr_node *expr, a_constant *constant, bool report,
                             bool *out_is_dependent)
{
  bool known = false, ignored = false;
  bool *dependent = out_is_dependent != nullptr ? out_is_dependent : &ignored;
  *dependent = false;
  switch (expr->kind) {
  case enk_constant: {
    a_constant *value = constant_of(expr);
    known =
        value->kind == ck_address || (value->kind == ck_integer && is_pointer_type(value->type));
    if (known) copy_constant(value, constant);
    break;
  }
  case enk_routine:
    set_routine_address_constant(routine_of(expr), constant, true);
    known = true;
    break;
  case enk_operation: known = value_of_pointer_operation(expr, constant, report, dependent); break;
  default: break;
  }
  if (known && !*dependent && is_pointer_type(expr->type)) constant->type = expr->type;
  return known;
}
