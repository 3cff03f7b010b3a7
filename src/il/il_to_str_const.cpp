// il_to_str_const.cpp - text of constants: integers, floats, strings, addresses, aggregates,
// parameters.
// Uses:  exact hexadecimal text of floats (float_pt.h), decimal text of integers (const_ints.h).
// Rule:  what is written into generated code means the same value of the same type to a C compiler.
// Entry: form_constant, form_integer_constant, form_char.
#include <cstdio>
#include <cstring>
#include "driver/flags.h"
#include "driver/target.h"
#include "il/il.h"
#include "il/il_to_str_private.h"

// Output characters after which a string in generated code is cut.
static constexpr unsigned max_string_piece = 128;
// In messages: longer strings stop early.
static constexpr uint64_t max_message_string = 25;
static constexpr uint64_t shown_message_string = 20;

// --- Characters and strings ----------------------------------------------------------------------

// The escaped form of one character; returns its length.
static unsigned escape_char(unsigned character, char *text,
                            const an_il_to_str_output_control_block *block)
{
  char letter = 0;
  switch (character) {
  case '"':
  case '\'':
  case '\\': letter = char(character); break;
  case '?':
    // No trigraph may arise in text that a C compiler reads.
    if (block->generated_code && !block->old_style_c) letter = '?';
    break;
  case '\a':
    if (!block->c_forms && !block->old_style_c) letter = 'a';
    break;
  case '\b': letter = 'b'; break;
  case '\f': letter = 'f'; break;
  case '\n': letter = 'n'; break;
  case '\r': letter = 'r'; break;
  case '\t':
    if (!block->tab_literal) letter = 't';
    break;
  case '\v': letter = 'v'; break;
  default: break;
  }
  if (letter != 0) return unsigned(sprintf(text, "\\%c", letter));
  if ((character >= ' ' && character <= '~') || (character == '\t' && block->tab_literal)) {
    text[0] = char(character);
    text[1] = '\0';
    return 1;
  }
  return unsigned(sprintf(text, "\\%03o", character & ((1u << targ_host_string_char_bit) - 1)));
}

unsigned form_char(unsigned character, an_il_to_str_output_control_block *block)
{
  char text[16];
  unsigned length = escape_char(character, text, block);
  put_no_break(text, block);
  return length;
}

void put_quoted(const char *text, an_il_to_str_output_control_block *block)
{
  put("\"", block);
  for (; *text != '\0'; text++)
    form_char(static_cast<unsigned char>(*text), block);
  put_no_break("\"", block);
}

static const char *char_kind_prefix(a_char_kind kind)
{
  switch (kind) {
  case chk_wchar_t: return "L";
  case chk_char16_t: return "u";
  case chk_char32_t: return "U";
  case chk_char:
  case chk_last: break;
  }
  return "";
}

// Collects characters so that the callback runs once for many.
namespace {
struct a_string_writer {
  an_il_to_str_output_control_block *block;
  const char *prefix;
  unsigned used;  // of buffer
  unsigned piece; // output characters since the opening quote
  char buffer[256];
};
} // namespace

static void flush_string(a_string_writer *writer)
{
  writer->buffer[writer->used] = '\0';
  if (writer->used != 0) put_no_break(writer->buffer, writer->block);
  writer->used = 0;
}

static void write_string_char(a_string_writer *writer, const char *text, unsigned length)
{
  if (writer->used + length + 8 > sizeof writer->buffer) flush_string(writer);
  memcpy(writer->buffer + writer->used, text, length);
  writer->used += length;
  writer->piece += length;
}

// Closes the literal and opens a further one, which the reader joins to it.
static void cut_string(a_string_writer *writer)
{
  write_string_char(writer, "\"", 1);
  flush_string(writer);
  put(" ", writer->block);
  put(writer->prefix, writer->block);
  put_no_break("\"", writer->block);
  writer->piece = 0;
}

static void form_string_constant(const a_constant *constant,
                                 an_il_to_str_output_control_block *block)
{
  uint64_t count = string_of(constant).length / char_size_of_string(constant);
  if (count > 0 && string_character_at(constant, count - 1) == 0) count--;
  if (!block->generated_code && count > max_message_string) count = shown_message_string;
  bool may_cut = block->generated_code && !block->old_style_c && !block->no_string_split;
  a_string_writer writer = {block, char_kind_prefix(constant->char_kind), 0, 0, {0}};
  put(writer.prefix, block);
  write_string_char(&writer, "\"", 1);
  writer.piece = 0;
  const unsigned char *narrow =
      constant->char_kind == chk_char
          ? reinterpret_cast<const unsigned char *>(string_of(constant).text)
          : nullptr;
  for (uint64_t i = 0; i < count; i++) {
    char text[24];
    unsigned length;
    if (narrow != nullptr)
      length = escape_char(narrow[i], text, block);
    else
      length = unsigned(sprintf(text, "\\x%lx", (unsigned long)string_character_at(constant, i)));
    if (may_cut && writer.piece >= max_string_piece) cut_string(&writer);
    write_string_char(&writer, text, length);
  }
  write_string_char(&writer, "\"", 1);
  flush_string(&writer);
}

// --- Integers ------------------------------------------------------------------------------------

static const char *integer_suffix(an_integer_kind kind)
{
  switch (kind) {
  case ik_long:
  case ik_unsigned_long: return "L";
  case ik_int40:
  case ik_unsigned_int40: return "i40";
  case ik_long_long:
  case ik_unsigned_long_long: return "LL";
  default: return "";
  }
}

// The value less one, when it is the minimum of its kind: such a value has no literal.
static bool is_minimum_of_kind(const a_constant *constant, an_integer_kind kind)
{
  return int_kind_is_signed[kind] && kind >= ik_int &&
         cmp_integer_values(&integer_of(constant), true, &min_integer_value_of_kind[kind], true) ==
             0;
}

static void form_integer_digits(const a_constant *constant, an_integer_kind kind,
                                an_il_to_str_output_control_block *block)
{
  bool is_minimum = block->generated_code && is_minimum_of_kind(constant, kind);
  an_integer_value value = integer_of(constant);
  if (is_minimum) incr_integer_value(&value);
  char text[48];
  char *at = stpcpy(text, str_for_integer_value(&value, int_kind_is_signed[kind]));
  if (!int_kind_is_signed[kind] && kind > ik_int && !block->old_style_c) *at++ = 'U';
  at = stpcpy(at, integer_suffix(kind));
  if (is_minimum) stpcpy(at, "-1");
  put(text, block);
}

// The kind whose form prints the value: that of an integer type; a pointer prints as an unsigned
// number.
static an_integer_kind kind_of_constant(const a_constant *constant)
{
  if (constant->type == nullptr) return ik_long_long;
  a_type *type = skip_typerefs(constant->type);
  return type->kind == tk_integer ? as_integer(type).int_kind : targ_size_t_int_kind;
}

void form_integer_constant(const a_constant *constant, bool no_cast, bool parenthesize,
                           an_il_to_str_output_control_block *block)
{
  if (constant->is_gnu_null && !block->generated_code) {
    put("__null", block);
    return;
  }
  if (constant->is_nullptr && !block->generated_code) {
    put("nullptr", block);
    return;
  }
  an_integer_kind kind = kind_of_constant(constant);
  bool is_small = kind < ik_int && !block->no_small_int_casts;
  bool is_old_unsigned = block->old_style_c && !int_kind_is_signed[kind];
  bool has_cast = !no_cast && constant->type != nullptr && (is_small || is_old_unsigned);
  bool is_negative = int_constant_is_signed(constant) && cmplit_integer_constant(constant, 0) < 0;
  bool is_minimum = block->generated_code && is_minimum_of_kind(constant, kind);
  if (has_cast) {
    if (parenthesize) put("(", block);
    put_cast(constant->type, block);
  }
  // Behind a cast the sign would be read as an operator on the cast's result.
  bool inner = is_negative && (parenthesize || has_cast || is_minimum);
  if (inner) put("(", block);
  form_integer_digits(constant, kind, block);
  if (inner) put(")", block);
  if (has_cast && parenthesize) put(")", block);
}

// An integer constant of pointer type.
static void form_pointer_value(const a_constant *constant, bool in_context,
                               an_il_to_str_output_control_block *block)
{
  if (in_context) put("(", block);
  bool is_zero = cmplit_integer_constant(constant, 0) == 0;
  if (is_zero && !block->generated_code && source_is_c() && !block->old_style_c)
    put("(void *)", block);
  else
    put_cast(constant->type, block);
  if (is_zero)
    put("0", block);
  else
    form_integer_digits(constant, targ_size_t_int_kind, block);
  if (in_context) put(")", block);
}

// --- Floating point ------------------------------------------------------------------------------

static void form_special_float(const simul_fval *value, a_float_kind kind,
                               an_il_to_str_output_control_block *block)
{
  char text[48];
  const char *suffix = kind == fk_float ? "f" : kind == fk_long_double ? "l" : "";
  if (gnu_target_version_number > 30299) {
    if (fp_is_nan(value))
      snprintf(text, sizeof text, "(__builtin_nan%s(\"\"))", suffix);
    else
      snprintf(text, sizeof text, "(%s__builtin_huge_val%s())", value->sign ? "-" : "", suffix);
  } else {
    const char *literal_suffix = kind == fk_float ? "F" : kind == fk_long_double ? "L" : "";
    const char *dividend = fp_is_nan(value) ? "0.0" : value->sign ? "-1.0" : "1.0";
    snprintf(text, sizeof text, "(%s%s/0.0%s)", dividend, literal_suffix, literal_suffix);
  }
  put(text, block);
}

static bool is_finite(const simul_fval *value)
{
  return !fp_is_nan(value) && !fp_is_infinity(value);
}

static void form_float_value(const simul_fval *value, a_float_kind kind, const char *further_suffix,
                             an_il_to_str_output_control_block *block)
{
  if (block->generated_code && !is_finite(value)) {
    form_special_float(value, kind, block);
    return;
  }
  char text[80];
  const char *suffix = block->old_style_c || !is_finite(value) ? ""
                       : kind == fk_float                      ? "F"
                       : kind == fk_long_double                ? "L"
                                                               : "";
  if (block->old_style_c && kind == fk_float) put("(float)", block);
  snprintf(text, sizeof text, "%s%s%s", fp_to_string(kind, value), suffix, further_suffix);
  put(text, block);
}

static void form_float_constant(const a_constant *constant, bool in_context,
                                an_il_to_str_output_control_block *block)
{
  const simul_fval &value = float_of(constant);
  bool parenthesize = in_context && (value.sign || block->old_style_c);
  if (parenthesize) put("(", block);
  form_float_value(&value, float_kind_of_type(constant->type), "", block);
  if (parenthesize) put(")", block);
}

// The imaginary part as a literal of its own: a product with the imaginary unit would turn an
// infinite part into a NaN real part.
static void form_imaginary_value(const simul_fval *value, a_float_kind kind,
                                 an_il_to_str_output_control_block *block)
{
  if (block->generated_code && gcc_is_generated_code_target && is_finite(value)) {
    form_float_value(value, kind, "i", block);
    return;
  }
  form_float_value(value, kind, "", block);
  put(block->generated_code && gcc_is_generated_code_target ? "*1.0i" : "*__I__", block);
}

static void form_complex_constant(const a_constant *constant,
                                  an_il_to_str_output_control_block *block)
{
  a_float_kind kind = float_kind_of_type(constant->type);
  simul_fval real = complex_of(constant)->real, imag = complex_of(constant)->imag;
  // Adding the real zero of the imaginary literal would lose the sign of a negative real zero.
  bool negated = block->generated_code && fp_is_zero_constant(&real) && real.sign;
  if (negated) {
    f_neg(&real, &real);
    f_neg(&imag, &imag);
    put("(-", block);
  }
  put("(", block);
  form_float_value(&real, kind, "", block);
  put(" + ", block);
  form_imaginary_value(&imag, kind, block);
  put(negated ? "))" : ")", block);
}

// --- Addresses -----------------------------------------------------------------------------------

static a_type *type_of_addressed_entity(const a_constant_address &address)
{
  switch (address.kind) {
  case ack_routine: return static_cast<a_routine *>(address.entity)->type;
  case ack_variable: return static_cast<a_variable *>(address.entity)->type;
  case ack_constant: return static_cast<a_constant *>(address.entity)->type;
  case ack_uuidof:
  case ack_typeid:
  case ack_label:
  case ack_last: break;
  }
  return nullptr;
}

static void form_addressed_entity(const a_constant_address &address, bool decays,
                                  an_il_to_str_output_control_block *block)
{
  switch (address.kind) {
  case ack_routine:
    if (!block->generated_code) put("&", block);
    form_name(address.entity, iek_routine, block);
    return;
  case ack_variable:
    if (!decays) put("&", block);
    form_name(address.entity, iek_variable, block);
    return;
  case ack_constant:
    if (!decays) put("&", block);
    form_constant(static_cast<a_constant *>(address.entity), true, block);
    return;
  case ack_uuidof:
    put("&", block);
    form_uuidof_reference(static_cast<a_type *>(address.entity), block);
    return;
  case ack_typeid:
    put("&", block);
    form_typeid_reference(static_cast<a_type *>(address.entity), block);
    return;
  case ack_label:
    put("&&", block);
    form_name(address.entity, iek_label, block);
    return;
  case ack_last: break;
  }
  put("**BAD-ADDRESS-KIND**", block);
}

static void form_offset(int64_t offset, an_il_to_str_output_control_block *block)
{
  if (offset == 0) return;
  put(offset < 0 ? " - " : " + ", block);
  put_number(offset < 0 ? 0 - uint64_t(offset) : uint64_t(offset), block);
}

// True if a pointer to `from` may stand for a pointer to `to`: the latter may only be const
// besides.
static bool pointee_matches(a_type *from, a_type *to)
{
  unsigned from_qualifiers = get_type_qualifiers(from), to_qualifiers = get_type_qualifiers(to);
  return (from_qualifiers | tq_const) == (to_qualifiers | tq_const) &&
         (from_qualifiers & ~to_qualifiers) == 0 &&
         f_identical_types(from, to, ido_ignore_top_qualifiers);
}

// True if a call through a pointer to `target` passes its arguments as one of the routine itself.
static bool is_same_call(a_type *routine_type, a_type *target)
{
  routine_type = skip_typerefs(routine_type);
  target = skip_typerefs(target);
  return target->kind == tk_routine && types_are_compatible(routine_type, target) &&
         routine_supplement_of(routine_type)->is_prototyped ==
             routine_supplement_of(target)->is_prototyped;
}

// In generated code: the address in the form that has exactly the constant's type.
static void form_generated_address(const a_constant *constant, bool in_context,
                                   an_il_to_str_output_control_block *block)
{
  const a_constant_address &address = address_of(constant);
  a_type *entity_type = type_of_addressed_entity(address);
  a_type *type = constant->type == nullptr ? nullptr : skip_typerefs(constant->type);
  a_type *target =
      type != nullptr && type->kind == tk_pointer ? as_pointer(type).pointed_to_type : nullptr;
  bool is_array = entity_type != nullptr && skip_typerefs(entity_type)->kind == tk_array;
  bool to_element = is_array && target != nullptr &&
                    pointee_matches(as_array(skip_typerefs(entity_type)).element_type, target);
  bool to_entity = entity_type != nullptr && target != nullptr &&
                   (pointee_matches(entity_type, target) ||
                    (address.kind == ack_routine && is_same_call(entity_type, target)));
  bool is_label = address.kind == ack_label && target != nullptr &&
                  skip_typerefs(target)->kind == tk_void && address.offset == 0;
  uint64_t element_size = to_element ? size_of_type(target) : 0;
  if (type == nullptr || is_label || (to_entity && address.offset == 0)) {
    bool parenthesize = in_context && address.kind != ack_routine;
    if (parenthesize) put("(", block);
    form_addressed_entity(address, false, block);
    if (parenthesize) put(")", block);
  } else if (to_element && address.offset == 0) {
    form_addressed_entity(address, true, block);
  } else if (to_element && element_size != 0 && address.offset % int64_t(element_size) == 0) {
    if (in_context) put("(", block);
    form_addressed_entity(address, true, block);
    form_offset(address.offset / int64_t(element_size), block);
    if (in_context) put(")", block);
  } else {
    if (in_context) put("(", block);
    put_cast(constant->type, block);
    if (address.offset != 0) put("((char *)", block);
    form_addressed_entity(address, is_array, block);
    form_offset(address.offset, block);
    if (address.offset != 0) put(")", block);
    if (in_context) put(")", block);
  }
}

void form_lvalue_address_constant(const a_constant *constant, bool in_context,
                                  an_il_to_str_output_control_block *block)
{
  if (block->generated_code) {
    form_generated_address(constant, in_context, block);
    return;
  }
  const a_constant_address &address = address_of(constant);
  bool is_string = address.kind == ack_constant && address.offset == 0;
  if (constant->value_is_punned && constant->type != nullptr) {
    if (source_is_c()) {
      put_cast(constant->type, block);
    } else {
      put("reinterpret_cast<", block);
      form_type(constant->type, block);
      put(">(", block);
    }
  }
  bool parenthesize = in_context && address.offset != 0;
  if (parenthesize) put("(", block);
  form_addressed_entity(address, is_string, block);
  form_offset(address.offset, block);
  if (parenthesize) put(")", block);
  if (constant->value_is_punned && constant->type != nullptr && !source_is_c()) put(")", block);
}

void form_typeid_reference(a_type *type, an_il_to_str_output_control_block *block)
{
  put("typeid(", block);
  form_type(type, block);
  put(")", block);
}

void form_uuidof_reference(a_type *type, an_il_to_str_output_control_block *block)
{
  put("__uuidof(", block);
  form_type(type, block);
  put(")", block);
}

void form_pm_constant(const a_constant *constant, an_il_to_str_output_control_block *block)
{
  const a_constant_ptr_to_member &pm = ptr_to_member_of(constant);
  if (pm.member == nullptr) {
    put("0", block);
    return;
  }
  put("&", block);
  form_name(pm.member, pm.is_member_function ? iek_routine : iek_field, block);
}

// --- Template parameters -------------------------------------------------------------------------

void form_unknown_function_constant(const a_constant *constant,
                                    an_il_to_str_output_control_block *block)
{
  const a_constant_template_param &param = template_param_of(constant);
  const a_constant *named =
      param.kind == tpck_unknown_function_with_args ? param.constant : constant;
  if (named->source_corresp.name != nullptr)
    put(named->source_corresp.name, block);
  else
    put("<unnamed>", block);
  if (param.kind == tpck_unknown_function_with_args && !block->no_template_args)
    form_template_args(param.template_args, block);
}

static void form_expression_or_mark(an_expr_node *expr, const char *mark,
                                    an_il_to_str_output_control_block *block)
{
  if (expr != nullptr && block->form_expression != nullptr)
    block->form_expression(expr, false, block);
  else
    put(mark, block);
}

// sizeof and its kin: the keyword, "(", a type or an expression, ")".
static void form_operand_form(const char *keyword, const a_constant_template_param &param,
                              an_il_to_str_output_control_block *block)
{
  put(keyword, block);
  put("(", block);
  if (param.operand_is_type)
    form_type(param.type, block);
  else
    form_expression_or_mark(param.expr, "<expr>", block);
  put(")", block);
}

static void form_template_param_constant(const a_constant *constant, bool in_context,
                                         an_il_to_str_output_control_block *block)
{
  const a_constant_template_param &param = template_param_of(constant);
  switch (param.kind) {
  case tpck_param:
    put(constant->source_corresp.name != nullptr ? constant->source_corresp.name : "<unnamed>",
        block);
    return;
  case tpck_expression: form_expression_or_mark(param.expr, "<expression>", block); return;
  case tpck_unknown_function:
  case tpck_unknown_function_with_args: form_unknown_function_constant(constant, block); return;
  case tpck_address_of_unknown_function:
    put("&", block);
    form_unknown_function_constant(constant, block);
    return;
  case tpck_cast:
    put_cast(constant->type, block);
    form_constant(param.constant, true, block);
    return;
  case tpck_address_of_constant:
    put("&", block);
    form_constant(param.constant, in_context, block);
    return;
  case tpck_sizeof: form_operand_form("sizeof", param, block); return;
  case tpck_alignof:
    form_operand_form(gcc_mode || gpp_mode ? "__alignof__"
                      : microsoft_mode     ? "__alignof"
                                           : "__ALIGNOF__",
                      param, block);
    return;
  case tpck_uuidof: form_operand_form("__uuidof", param, block); return;
  case tpck_typeid: form_operand_form("typeid", param, block); return;
  case tpck_last: break;
  }
  put("**BAD-TEMPLATE-PARAM-CONSTANT-KIND**", block);
}

void form_a_template_arg(const a_template_arg *arg, an_il_to_str_output_control_block *block)
{
  switch (arg->kind) {
  case tak_type: form_type(arg->variant.type, block); return;
  case tak_constant:
    if (arg->is_integer_value) {
      char text[24];
      snprintf(text, sizeof text, "%lld", static_cast<long long>(arg->variant.integer));
      put(text, block);
    } else if (arg->variant.constant == nullptr) {
      put("<expression>", block);
    } else {
      form_constant(arg->variant.constant, false, block);
    }
    return;
  case tak_template: put("<template>", block); return;
  case tak_pack_start: return;
  }
}

void form_template_args(const a_template_arg *args, an_il_to_str_output_control_block *block)
{
  put("<", block);
  bool first = true;
  for (; args != nullptr; args = args->next) {
    if (args->kind == tak_pack_start) continue;
    if (!first) put(", ", block);
    form_a_template_arg(args, block);
    first = false;
  }
  put(">", block);
}

// --- All kinds -----------------------------------------------------------------------------------

static void form_dynamic_init(const a_dynamic_init *init, an_il_to_str_output_control_block *block)
{
  put("dynamic-init: ", block);
  switch (init->kind) {
  case dik_none: put("<no-init>", block); return;
  case dik_zero: put("<zero-init>", block); return;
  case dik_constant:
  case dik_constant_via_temp: form_constant(constant_of(init), false, block); return;
  case dik_expression: form_expression_or_mark(expr_of(init), "<expr>", block); return;
  case dik_call_returning_class:
    put("call returning class: ", block);
    form_expression_or_mark(expr_of(init), "<expr>", block);
    return;
  case dik_constructor: put("<constructor-call>", block); return;
  case dik_bitwise_copy: put("<bitwise-copy>", block); return;
  case dik_last: break;
  }
  put("**BAD-DYNAMIC-INIT-KIND**", block);
}

static void form_aggregate(const a_constant *constant, an_il_to_str_output_control_block *block)
{
  put("{", block);
  for (const a_constant *element = aggregate_of(constant).first_element; element != nullptr;
       element = element->next) {
    form_constant(element, false, block);
    if (element->next != nullptr && element->kind != ck_designator) put(",", block);
  }
  put("}", block);
}

static void form_designator(const a_constant *constant, an_il_to_str_output_control_block *block)
{
  const a_constant_designator &designator = designator_of(constant);
  if (designator.field != nullptr) {
    put(".", block);
    form_name(designator.field, iek_field, block);
    put(" = ", block);
  } else {
    put("[", block);
    put_number(designator.index, block);
    put("] = ", block);
  }
}

static bool has_pointer_type(const a_constant *constant)
{
  if (constant->type == nullptr) return false;
  a_type_kind kind = skip_typerefs(constant->type)->kind;
  return kind == tk_pointer || kind == tk_nullptr;
}

static void form_address_difference(const a_constant *constant, bool in_context,
                                    an_il_to_str_output_control_block *block)
{
  if (in_context) put("(", block);
  // Addresses of labels are void pointers, which subtract by bytes.
  form_constant(address_difference_of(constant).minuend, true, block);
  put(" - ", block);
  form_constant(address_difference_of(constant).subtrahend, true, block);
  if (in_context) put(")", block);
}

void form_constant(const a_constant *constant, bool in_context,
                   an_il_to_str_output_control_block *block)
{
  switch (constant->kind) {
  case ck_error: put("<error-constant>", block); return;
  case ck_integer:
    if (has_pointer_type(constant) && !constant->is_nullptr)
      form_pointer_value(constant, in_context, block);
    else
      form_integer_constant(constant, false, in_context, block);
    return;
  case ck_string:
    if (block->form_string_name == nullptr || !block->form_string_name(constant, block))
      form_string_constant(constant, block);
    return;
  case ck_float: form_float_constant(constant, in_context, block); return;
  case ck_imaginary:
    if (block->generated_code) {
      form_float_constant(constant, in_context, block);
      return;
    }
    put("(", block);
    form_imaginary_value(&float_of(constant), float_kind_of_type(constant->type), block);
    put(")", block);
    return;
  case ck_complex: form_complex_constant(constant, block); return;
  case ck_address: form_lvalue_address_constant(constant, in_context, block); return;
  case ck_ptr_to_member: form_pm_constant(constant, block); return;
  case ck_address_difference: form_address_difference(constant, in_context, block); return;
  case ck_dynamic_init: form_dynamic_init(dynamic_init_of(constant), block); return;
  case ck_aggregate: form_aggregate(constant, block); return;
  case ck_init_repeat:
    put_number(init_repeat_of(constant).count, block);
    put(" repetitions of ", block);
    form_constant(init_repeat_of(constant).repeated, in_context, block);
    return;
  case ck_template_param: form_template_param_constant(constant, in_context, block); return;
  case ck_designator: form_designator(constant, block); return;
  case ck_last: break;
  }
  put("**BAD-CONSTANT-KIND**", block);
}
