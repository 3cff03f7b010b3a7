// lower_name_expr.cpp - template arguments and expressions in mangled names.
// Rule:    an operation without letters of its own is written in the form for vendors' operators.
// Entry:   put_template_args, put_expression, put_constant_expression.
#include <cstdio>

#include "driver/flags.h"
#include "il/il_alloc.h"
#include "lower/lower_name_private.h"
#include "parse/symbol_tbl.h"

static void put_expression_list(a_mangling_control_block *mcb, an_expr_node *list)
{
  for (an_expr_node *expr = list; expr != nullptr; expr = expr->next)
    put_expression(mcb, expr);
}

void put_template_param_number(a_mangling_control_block *mcb, int position)
{
  put(mcb, "T");
  put_ordinal(mcb, position < 1 ? 1 : (uint64_t)position);
  put(mcb, "_");
}

// --- Constants -----------------------------------------------------------------------------------

static void put_integer_value(a_mangling_control_block *mcb, a_constant *constant)
{
  int64_t value = 0;
  bool overflow = false;
  if (int_constant_is_signed(constant)) {
    value = value_of_integer_constant(constant, &overflow);
    put_signed_number(mcb, value);
  } else {
    put_number(mcb, unsigned_value_of_integer_constant(constant, &overflow));
  }
}

static void put_entity_address(a_mangling_control_block *mcb, const a_constant_address &address)
{
  put(mcb, "L_Z");
  if (address.kind == ack_routine)
    put_encoding(mcb, (a_routine *)address.entity);
  else
    put_entity_name(mcb, iek_variable, address.entity);
  put(mcb, "E");
}

// The target's bytes from the most significant one on, as the ABI wants them.
static void put_float_value(a_mangling_control_block *mcb, a_constant *constant)
{
  a_float_kind kind = float_kind_of_type(constant->type);
  trg_fval value = {};
  if (kind == fk_float)
    ieee_cvt_stof(&float_of(constant), &value);
  else
    ieee_cvt_stod(&float_of(constant), &value);
  char text[20];
  unsigned words = size_of_type(constant->type) > 4 ? 2 : 1;
  for (unsigned i = 0; i < words; i++) {
    snprintf(text, sizeof text, "%08x", unsigned(value.word[i]));
    put(mcb, text);
  }
}

static void put_literal(a_mangling_control_block *mcb, a_constant *constant)
{
  put(mcb, "L");
  put_type(mcb, constant->type);
  if (constant->kind == ck_integer) {
    put_integer_value(mcb, constant);
  } else if (constant->kind == ck_float) {
    put_float_value(mcb, constant);
  } else {
    put(mcb, "0");
  }
  put(mcb, "E");
}

static void put_member_constant(a_mangling_control_block *mcb, a_constant *constant)
{
  const a_constant_ptr_to_member &member = ptr_to_member_of(constant);
  if (member.member == nullptr) {
    put_literal(mcb, constant);
    return;
  }
  put(mcb, "L_Z");
  if (member.is_member_function)
    put_encoding(mcb, (a_routine *)member.member);
  else
    put_entity_name(mcb, iek_field, member.member);
  put(mcb, "E");
}

static void put_sizeof_like(a_mangling_control_block *mcb, const a_constant_template_param &param)
{
  static const char *const type_codes[] = {"st", "v17alignof", "v18__uuidof", "v16typeid"};
  static const char *const expr_codes[] = {"sz", "v18alignofe", "v19__uuidofe", "v17typeide"};
  int index = param.kind - tpck_sizeof;
  put(mcb, (param.operand_is_type ? type_codes : expr_codes)[index]);
  if (param.operand_is_type)
    put_type(mcb, param.type);
  else
    put_expression(mcb, param.expr);
}

static void put_template_param_constant(a_mangling_control_block *mcb, a_constant *constant)
{
  const a_constant_template_param &param = template_param_of(constant);
  switch (param.kind) {
  case tpck_param: put_template_param_number(mcb, param.position); break;
  case tpck_expression: put_expression(mcb, param.expr); break;
  case tpck_cast:
    put(mcb, "cv");
    put_type(mcb, constant->type);
    put_constant_expression(mcb, param.constant);
    break;
  case tpck_address_of_constant:
    put(mcb, "ad");
    put_constant_expression(mcb, param.constant);
    break;
  case tpck_address_of_unknown_function: put(mcb, "ad"); [[fallthrough]];
  case tpck_unknown_function:
  case tpck_unknown_function_with_args:
    if (constant->source_corresp.name != nullptr)
      put_source_name(mcb, constant->source_corresp.name);
    else
      put(mcb, "v07unknown");
    if (param.kind == tpck_unknown_function_with_args) put_template_args(mcb, param.template_args);
    break;
  case tpck_sizeof:
  case tpck_alignof:
  case tpck_uuidof:
  case tpck_typeid: put_sizeof_like(mcb, param); break;
  case tpck_last: break;
  }
}

void put_constant_expression(a_mangling_control_block *mcb, a_constant *constant)
{
  if (constant->kind == ck_template_param) {
    put_template_param_constant(mcb, constant);
  } else if (constant->kind == ck_ptr_to_member) {
    put_member_constant(mcb, constant);
  } else if (constant->kind == ck_address && (address_of(constant).kind == ack_routine ||
                                              address_of(constant).kind == ack_variable)) {
    put_entity_address(mcb, address_of(constant));
  } else {
    put_literal(mcb, constant);
  }
}

// --- Template arguments --------------------------------------------------------------------------

// "X", the expression, "E".  Where a literal comes out, the "X" turned out to be wrong.
static void put_expression_argument(a_mangling_control_block *mcb, a_constant *constant)
{
  size_t place = mcb->length;
  put(mcb, "X");
  put_constant_expression(mcb, constant);
  bool keeps_x = emulate_gnu_abi_bugs && gnu_abi_version <= 30399;
  if (mangled_character_at(mcb, place + 1) == 'L' && !keeps_x)
    overwrite_with_blank(mcb, place);
  else
    put(mcb, "E");
}

static a_template *template_of_symbol(a_symbol *symbol)
{
  bool known = symbol != nullptr &&
               (symbol->kind == sk_class_template || symbol->kind == sk_function_template);
  return known ? symbol->variant.template_info.entry : nullptr;
}

static void put_template_argument(a_mangling_control_block *mcb, a_template_arg *arg)
{
  switch (arg->kind) {
  case tak_type: put_type(mcb, arg->variant.type); break;
  case tak_constant:
    if (arg->is_integer_value) {
      put(mcb, "Li");
      put_signed_number(mcb, arg->variant.integer);
      put(mcb, "E");
    } else if (arg->variant.constant->kind == ck_template_param) {
      put_expression_argument(mcb, arg->variant.constant);
    } else {
      put_constant_expression(mcb, arg->variant.constant);
    }
    break;
  case tak_template: {
    a_template *entry = template_of_symbol(arg->variant.template_symbol);
    if (entry != nullptr) put_entity_name(mcb, iek_template, entry);
    break;
  }
  case tak_pack_start: break;
  }
}

void put_template_args(a_mangling_control_block *mcb, a_template_arg *args)
{
  put(mcb, "I");
  bool in_pack = false;
  for (a_template_arg *arg = args; arg != nullptr; arg = arg->next) {
    if (in_pack && !arg->is_pack_element) {
      put(mcb, "E");
      in_pack = false;
    }
    if (arg->kind == tak_pack_start) {
      put(mcb, emulate_gnu_abi_bugs ? "I" : "J");
      in_pack = true;
    } else {
      put_template_argument(mcb, arg);
    }
  }
  put(mcb, in_pack ? "EE" : "E");
}

// --- Expressions ---------------------------------------------------------------------------------

struct an_operation_code {
  an_expr_operator_kind op;
  const char *code;
};
static const an_operation_code operation_codes[] = {
#define EXPR_CODE(operator, code) {operator, code },
#include "lower/operator_codes.def"
};

static const char *code_of_operation(an_expr_operator_kind op)
{
  for (const an_operation_code &row : operation_codes)
    if (row.op == op) return row.code;
  return nullptr;
}

static unsigned operand_count(const an_expr_node *list)
{
  unsigned count = 0;
  for (; list != nullptr && count < 9; list = list->next)
    count++;
  return count;
}

static void put_vendor_operation(a_mangling_control_block *mcb, an_expr_node *operands,
                                 const char *name)
{
  put(mcb, "v");
  put_number(mcb, operand_count(operands));
  put(mcb, name);
  put_expression_list(mcb, operands);
}

static bool is_call(an_expr_operator_kind op)
{
  return op == eok_call || op == eok_virtual_call || op == eok_ptr_to_member_call;
}

// Steps that the source doesn't write.
static bool is_silent_operation(an_expr_operator_kind op)
{
  return op == eok_reference_to || op == eok_ref_indirection || op == eok_rvalue_class_adjust ||
         op == eok_array_to_pointer;
}

static void put_operation(a_mangling_control_block *mcb, an_expr_node *expr)
{
  an_expr_operator_kind op = op_of(expr);
  an_expr_node *operands = first_operand_of(expr);
  const char *code = code_of_operation(op);
  if (is_silent_operation(op) ||
      (is_cast_operation_node(expr) && operation_of(expr).is_implicit_cast)) {
    put_expression(mcb, operands);
  } else if (is_cast_operation_node(expr)) {
    put(mcb, "cv");
    put_type(mcb, expr->type);
    put_expression(mcb, operands);
  } else if (is_call(op)) {
    put(mcb, "cl");
    put_expression_list(mcb, operands);
    put(mcb, "E");
  } else if (code == nullptr) {
    put_vendor_operation(mcb, operands, "7unknown");
  } else {
    put(mcb, code);
    put_expression_list(mcb, operands);
  }
}

// A parameter of the function whose type is being written; position 0 is `this`.
static void put_param_ref(a_mangling_control_block *mcb, an_expr_node *expr)
{
  const an_expr_param_ref &param = param_ref_of(expr);
  if (param.levels_up > 0 && !emulate_gnu_abi_bugs) {
    put(mcb, "fL");
    put_number(mcb, (uint64_t)param.levels_up - 1);
    put(mcb, "p");
  } else {
    put(mcb, "fp");
  }
  if (param.position == 0) {
    put(mcb, "T");
    return;
  }
  if (!emulate_gnu_abi_bugs) put_qualifiers(mcb, f_get_type_qualifiers(expr->type, true));
  put_ordinal(mcb, (uint64_t)param.position);
  put(mcb, "_");
}

static void put_typeid(a_mangling_control_block *mcb, an_expr_node *expr)
{
  const an_expr_typeid &operand = typeid_of(expr);
  put(mcb, operand.expr == nullptr ? "v16typeid" : "v17typeide");
  if (operand.expr == nullptr)
    put_type(mcb, operand.type);
  else
    put_expression(mcb, operand.expr);
}

static void put_sizeof(a_mangling_control_block *mcb, an_expr_node *expr)
{
  const an_expr_sizeof &operand = sizeof_of(expr);
  if (expr->kind == enk_sizeof_pack) {
    put(mcb, "sZ");
    if (operand.is_type) put_type(mcb, operand.type);
  } else if (operand.is_type) {
    put(mcb, "st");
    put_type(mcb, operand.type);
  } else {
    put(mcb, "sz");
    put_expression(mcb, operand.expr);
  }
}

static void put_new_delete(a_mangling_control_block *mcb, an_expr_node *expr)
{
  const a_new_delete_supplement *supplement = new_delete_of(expr);
  if (supplement->is_global) put(mcb, "gs");
  if (!supplement->is_new) {
    put(mcb, supplement->is_array ? "da" : "dl");
    put_expression_list(mcb, supplement->first_arg);
    return;
  }
  put(mcb, supplement->is_array ? "na" : "nw");
  put_expression_list(mcb, supplement->first_arg);
  put(mcb, "_");
  put_type(mcb, supplement->type);
  put(mcb, "E");
}

static void put_throw(a_mangling_control_block *mcb, an_expr_node *expr)
{
  const a_throw_supplement *supplement = throw_of(expr);
  an_expr_node *operand = supplement == nullptr ? nullptr : supplement->expr;
  put(mcb, operand == nullptr ? "tr" : "tw");
  if (operand != nullptr) put_expression(mcb, operand);
}

static void put_temp_init(a_mangling_control_block *mcb, an_expr_node *expr)
{
  const a_dynamic_init *init = dynamic_init_of(expr);
  put(mcb, "cv");
  put_type(mcb, expr->type);
  if (init->kind == dik_constructor) {
    put(mcb, "_");
    put_expression_list(mcb, constructor_of(init).first_arg);
    put(mcb, "E");
  } else if (init->kind == dik_expression || init->kind == dik_call_returning_class) {
    put_expression(mcb, expr_of(init));
  } else if (init->kind == dik_constant) {
    put_constant_expression(mcb, constant_of(init));
  } else {
    put(mcb, "_E");
  }
}

static void put_entity_of_expression(a_mangling_control_block *mcb, an_expr_node *expr)
{
  put(mcb, "L_Z");
  if (expr->kind == enk_routine)
    put_encoding(mcb, routine_of(expr));
  else
    put_entity_name(mcb, iek_variable, variable_of(expr));
  put(mcb, "E");
}

void put_expression(a_mangling_control_block *mcb, an_expr_node *expr)
{
  if (expr->is_pack_expansion) put(mcb, "sp");
  switch (expr->kind) {
  case enk_operation: put_operation(mcb, expr); return;
  case enk_constant: put_constant_expression(mcb, constant_of(expr)); return;
  case enk_variable:
  case enk_variable_marker:
  case enk_routine: put_entity_of_expression(mcb, expr); return;
  case enk_field: {
    const char *name = field_of(expr)->source_corresp.name;
    put_source_name(mcb, name == nullptr ? "" : name);
    return;
  }
  case enk_temp_init:
  case enk_temp_ref: put_temp_init(mcb, expr); return;
  case enk_new_delete: put_new_delete(mcb, expr); return;
  case enk_throw: put_throw(mcb, expr); return;
  case enk_lifetime_wrapper: put_expression(mcb, lifetime_wrapper_of(expr).expr); return;
  case enk_typeid: put_typeid(mcb, expr); return;
  case enk_sizeof:
  case enk_sizeof_pack: put_sizeof(mcb, expr); return;
  case enk_builtin_operation:
    put_vendor_operation(mcb, builtin_operation_of(expr).first_argument, "9builtin");
    return;
  case enk_param_ref: put_param_ref(mcb, expr); return;
  case enk_type_operand: put_type(mcb, type_operand_of(expr)); return;
  case enk_error:
  case enk_lambda:
  case enk_condition:
  case enk_address_of_ellipsis:
  case enk_statement_expr:
  case enk_lowered_eh_construct:
  case enk_wrapper_call:
  case enk_last: put_vendor_operation(mcb, nullptr, "7unknown"); return;
  }
}
