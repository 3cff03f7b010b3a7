// class_member.cpp - members of structures and unions: fields, bit-fields, anonymous members.
// Rule:    a bad member keeps its place with the error type, which takes no space.
// See:     C99 6.7.2.1; anonymous members are GNU.
#include "consts/const_ints.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/token_cache.h"
#include "parse/attribute.h"
#include "parse/class_private.h"
#include "parse/decls.h"
#include "parse/expr.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"
#include "parse/symbol_ref.h"

//---------------------------------------------------------------------------------------------
// Fields.

static a_field *add_field(a_class_scan_state *scan, a_type *type)
{
  a_field *field = alloc_field();
  field->type = type;
  field->declared_type = type;
  if (scan->last_field) {
    scan->last_field->next = field;
  } else {
    as_class(scan->class_type).first_field = field;
  }
  scan->last_field = field;
  return field;
}

static a_symbol *symbol_for_field(a_class_scan_state *scan, a_symbol_locator *locator,
                                  a_field *field)
{
  a_symbol *symbol;
  if (locator->header == nullptr) {
    symbol = unnamed_field_symbol(&locator->position);
  } else {
    symbol = enter_symbol(sk_field, locator, depth_scope_stack, false);
    scan->any_named_member = true;
  }
  field_of_symbol(symbol) = field;
  set_source_corresp(&field->source_corresp, symbol);
  if (locator->header == nullptr) field->source_corresp.name = nullptr;
  set_class_membership(&field->source_corresp, scan->class_type);
  field->source_corresp.decl_position = locator->position;
  return symbol;
}

// The types that no member can have.
static void check_field_type(a_class_scan_state *scan, a_decl_parse_state *state,
                             a_symbol_locator *locator, bool *is_flexible)
{
  a_type *type = state->declared_type;
  a_source_position position = locator->position;
  *is_flexible = false;
  if (is_error_type(type)) return;
  if (is_function_type(type)) {
    pos_error(ec_function_type_not_allowed, position);
    state->declared_type = error_type();
  } else if (il_header.vla_used && is_variably_modified_type(type)) {
    pos_error(ec_field_cannot_involve_vla_type, position);
    state->declared_type = error_type();
  } else if (is_incomplete_array_type(type)) {
    // Whether it is the last one is known at the end.
    *is_flexible = true;
  } else if (is_incomplete_type(type) || is_void_type(type)) {
    pos_error(ec_incomplete_type_not_allowed, position);
    state->declared_type = error_type();
  } else if (strict_ansi_mode && is_class_struct_union_type(type) &&
             skip_typerefs(scan->class_type)->kind != tk_union &&
             as_class(skip_typerefs(type)).has_flexible_array) {
    // C99 6.7.2.1p2; a union may hold it, but is no member then either.
    pos_diagnostic(strict_ansi_discretionary_severity, ec_flexible_array_member_not_allowed,
                   position);
  }
}

static void check_field_specifiers(a_decl_parse_state *state, a_symbol_locator *locator)
{
  bool missing_type = !(state->specifier_flags & sf_has_type_specifier);
  if (missing_type && !state->bad_declaration && !state->is_implicit_int) {
    state->is_implicit_int = true;
    a_type *type;
    report_missing_type_specifier(&locator->position, &type, false, false, true, true);
  }
  if (state->decl_modifiers & dm_thread) {
    pos_error(ec_cannot_use_thread_local_storage, locator->position);
  }
  if (state->asm_name) {
    pos_error(ec_field_with_asm_name_not_allowed, state->asm_name_position);
    state->asm_name = nullptr;
  }
}

void record_member(a_decl_parse_state *state, a_symbol *symbol)
{
  state->symbol = symbol;
  attach_decl_attributes(state, false);
  record_symbol_declaration(rdf_definition, symbol, &symbol->position, nullptr);
}

static void ordinary_field(a_class_scan_state *scan, a_decl_parse_state *state,
                           a_symbol_locator *locator)
{
  bool is_flexible = false;
  check_field_specifiers(state, locator);
  check_field_type(scan, state, locator, &is_flexible);
  a_field *field = add_field(scan, state->declared_type);
  field->is_flexible_array = is_flexible;
  field->is_mutable = (state->specifier_flags & sf_is_mutable) != 0;
  if (is_flexible) scan->has_flexible_array_member = true;
  a_symbol *symbol = symbol_for_field(scan, locator, field);
  record_member(state, symbol);
  if (C_dialect == 2) note_field_facts(scan, field);
  if (curr_token == tok_assign) {
    pos_error(ec_bad_data_member_initialization, pos_curr_token);
    get_token();
    scan_and_discard_initializer_expression();
  }
}

//---------------------------------------------------------------------------------------------
// Bit-fields.

// C99 6.7.2.1p4: _Bool, int, unsigned int; other integers are an extension.
static bool bit_field_type_ok(a_type *type, a_source_position position)
{
  type = skip_typerefs(type);
  if (type->kind == tk_error) return false;
  if (type->kind != tk_integer || (type->is_incomplete && as_integer(type).is_enum)) {
    pos_error(ec_bad_bit_field_type, position);
    return false;
  }
  an_integer_kind kind = as_integer(type).int_kind;
  bool standard = kind == ik_int || kind == ik_unsigned_int || as_integer(type).is_bool;
  if (!standard && strict_ansi_mode && C_dialect == 0) {
    pos_diagnostic(strict_ansi_discretionary_severity, ec_nonstd_bit_field_type, position);
  }
  return true;
}

static unsigned bits_of_type(a_type *type)
{
  type = skip_typerefs(type);
  if (as_integer(type).is_bool) return 1;
  if (type->precision) return (unsigned)type->precision;
  return (unsigned)(type->size * targ_char_bit);
}

// Whether values of the bit-field are signed.
static bool bit_field_is_signed(a_type *type, bool written_signed)
{
  type = skip_typerefs(type);
  const an_integer_type_part &part = as_integer(type);
  if (part.is_bool) return false;
  if (part.is_enum) {
    if (targ_enum_bit_fields_are_always_unsigned) return false;
    bool negative = false;
    for (a_constant *c = part.enum_is_scoped ? nullptr : part.first_enumerator; c; c = c->next) {
      if (c->kind == ck_integer && cmplit_integer_constant(c, 0) < 0) negative = true;
    }
    if (!negative && targ_nonnegative_enum_bit_field_is_unsigned) return false;
    return int_kind_is_signed[part.int_kind];
  }
  if (targ_plain_int_bit_field_is_unsigned && !written_signed) return false;
  return int_kind_is_signed[part.int_kind];
}

// The bits that the enumerators need (C99 leaves the width to the writer).
static unsigned bits_for_enum(a_type *type, bool is_signed)
{
  unsigned needed = 1;
  for (a_constant *c = as_integer(type).first_enumerator; c; c = c->next) {
    if (c->kind != ck_integer) continue;
    unsigned bits = (unsigned)bits_required_to_represent_integer_constant(c);
    bool negative = cmplit_integer_constant(c, 0) < 0;
    if (is_signed && !negative) ++bits;
    if (bits > needed) needed = bits;
  }
  return needed;
}

static void check_enum_bit_field(a_type *type, unsigned width, bool is_signed,
                                 a_source_position position)
{
  type = skip_typerefs(type);
  if (!as_integer(type).is_enum || as_integer(type).enum_is_scoped || width == 0) return;
  bool any_negative = false;
  for (a_constant *c = as_integer(type).first_enumerator; c; c = c->next) {
    if (c->kind == ck_integer && cmplit_integer_constant(c, 0) < 0) any_negative = true;
  }
  if (any_negative && !is_signed) {
    pos_remark(ec_unsigned_enum_bit_field_with_signed_enumerator, position);
  } else if (bits_for_enum(type, any_negative) > width) {
    pos_warning(ec_enum_bit_field_too_small, position);
  }
}

// The width as a number; false after an error.
static bool bit_field_width(a_field *field, a_constant *width, a_type *type, bool is_named,
                            a_source_position position)
{
  if (width->kind != ck_integer) {
    if (width->kind == ck_template_param) field->bit_size_constant = transfer_constant_to_il(width);
    return false;
  }
  bool overflow = false;
  long long value = value_of_integer_constant(width, &overflow);
  if (overflow || value < 0) {
    pos_error(ec_bad_bit_field_size, position);
    return false;
  }
  if (value == 0 && is_named) {
    pos_error(ec_zero_length_bit_field_must_be_unnamed, position);
    return false;
  }
  unsigned type_bits = bits_of_type(type);
  bool extension = targ_pad_bit_fields_larger_than_base_type && C_dialect == 2;
  if ((unsigned long long)value <= type_bits &&
      (unsigned long long)value <= targ_max_bit_field_size) {
    field->bit_size = (unsigned char)value;
    return true;
  }
  if ((unsigned long long)value <= type_bits || !(extension || gcc_mode)) {
    pos_error(ec_bad_bit_field_size, position);
    return false;
  }
  pos_st_warning(ec_extra_bits_ignored, position, conv_unsigned_long_to_str(type_bits));
  field->bit_size = (unsigned char)type_bits;
  if (extension) field->declared_width = (uint64_t)value;
  return true;
}

// MISRA 6.4: the type is unsigned int or signed int.  A plain `int` doesn't say which it is; a typedef has settled it.
static void check_bit_field_type_for_misra(a_decl_parse_state *state, a_source_position position)
{
  a_type *type = skip_typerefs(state->declared_type);
  const an_integer_type_part &part = as_integer(type);
  bool is_int = !part.is_enum && !part.is_bool && part.int_kind == ik_int;
  bool is_unsigned_int = !part.is_enum && !part.is_bool && part.int_kind == ik_unsigned_int;
  bool is_named_type = skip_typerefs_not_typedefs(state->declared_type)->kind == tk_typeref;
  bool sign_is_known = (state->specifier_flags & sf_written_signed) || is_named_type;
  if (is_unsigned_int || (is_int && sign_is_known)) return;
  pos_diagnostic(misra_required_severity, ec_misra_c_2004_6_4, position);
}

// At the `:`; the locator has no header for an unnamed bit-field.
static void bit_field(a_class_scan_state *scan, a_decl_parse_state *state,
                      a_symbol_locator *locator)
{
  check_field_specifiers(state, locator);
  get_token();
  a_source_position width_position = pos_curr_token;
  a_constant width;
  scan_fs_integral_constant_expression(&width);
  if (curr_token == tok_attribute) {
    *f_last_attribute_link(&state->declarator_attributes) = scan_attributes(al_after_declarator);
  }
  a_type *type = state->declared_type;
  bool is_named = locator->header != nullptr;
  bool fine = bit_field_type_ok(type, locator->position);
  a_field *field = add_field(scan, fine ? type : error_type());
  a_symbol *symbol = symbol_for_field(scan, locator, field);
  if (fine && check_misra_c_2004) check_bit_field_type_for_misra(state, locator->position);
  if (fine) {
    field->is_bit_field = true;
    bool written_signed = state->specifier_flags & sf_written_signed;
    field->bit_field_is_signed = bit_field_is_signed(type, written_signed);
    fine = bit_field_width(field, &width, type, is_named, width_position);
    if (!fine && width.kind != ck_template_param) {
      field->is_bit_field = false;
      field->type = error_type();
    }
  }
  if (fine) {
    if (field->bit_size == 1 && targ_force_one_bit_bit_field_to_be_unsigned) {
      field->bit_field_is_signed = false;
    }
    if (check_misra_c_2004 && field->bit_size == 1 && field->bit_field_is_signed) {
      pos_diagnostic(misra_required_severity, ec_misra_c_2004_6_5, locator->position);
    }
    if (field->bit_size == 1 && field->bit_field_is_signed && is_named) {
      pos_remark(ec_signed_one_bit_field, locator->position);
    }
    check_enum_bit_field(type, field->bit_size, field->bit_field_is_signed, width_position);
    if (C_dialect == 2) note_field_facts(scan, field);
  }
  record_member(state, symbol);
}

//---------------------------------------------------------------------------------------------
// Anonymous members.

// The unnamed member `parent` as a member of the structure that holds `holder`.
static a_symbol *reparented(a_symbol *parent, a_symbol *holder)
{
  if (parent == nullptr) return holder;
  a_symbol *copy = alloc_symbol(sk_field, parent->header, parent->position);
  copy->variant.field.field = parent->variant.field.field;
  copy->variant.field.anonymous_parent = reparented(parent->variant.field.anonymous_parent, holder);
  return copy;
}

// Enters the members of the anonymous member's type into the scope on top.
void check_anonymous_union_symbols(a_symbol *symbol, a_type *type, bool)
{
  type = skip_typerefs(type);
  a_symbol *class_symbol = type->source_corresp.assoc_symbol;
  a_symbol *member = class_supplement_of_symbol(class_symbol)->pointers_block.symbols;
  for (; member; member = member->next_in_scope) {
    if (member->kind != sk_field || member->header->is_unnamed) continue;
    a_symbol *promoted = alloc_symbol(sk_field, member->header, member->position);
    promoted->is_anonymous_union_member = true;
    promoted->variant.field.field = member->variant.field.field;
    promoted->variant.field.anonymous_parent =
        reparented(member->variant.field.anonymous_parent, symbol);
    promoted->declared = promoted->defined = true;
    add_symbol_to_symbol_table(promoted, depth_scope_stack, false);
  }
}

a_symbol *make_anonymous_parent_object_symbol(a_variable *variable, a_source_position *position)
{
  a_symbol *symbol = make_unnamed_symbol(sk_variable, position);
  variable_of_symbol(symbol) = variable;
  variable->is_anonymous_union_object = true;
  return symbol;
}

static bool is_anonymous_member(const a_decl_parse_state *state)
{
  if (!(state->specifier_flags & sf_defines_type)) return false;
  a_type *type = skip_typerefs(state->type_specifier);
  if (!is_class_struct_union_type(type)) return false;
  return type->source_corresp.name == nullptr;
}

static void anonymous_member(a_class_scan_state *scan, a_decl_parse_state *state)
{
  a_source_position position = state->start_position;
  if (!gcc_mode && !gpp_mode && !allow_nonstandard_anonymous_unions && C_dialect != 2) {
    an_error_severity severity = strict_ansi_mode ? strict_ansi_error_severity : es_warning;
    pos_diagnostic(severity, ec_nonstd_unnamed_field, position);
  }
  a_symbol_locator locator = cleared_locator;
  locator.position = position;
  a_field *field = add_field(scan, state->type_specifier);
  field->is_anonymous_union_field = true;
  as_class(skip_typerefs(state->type_specifier)).is_anonymous = true;
  a_symbol *symbol = symbol_for_field(scan, &locator, field);
  check_anonymous_union_symbols(symbol, state->type_specifier, true);
  scan->any_named_member = true;
  if (as_class(skip_typerefs(state->type_specifier)).has_flexible_array) {
    scan->has_flexible_array_member = true;
  }
  if (C_dialect == 2) note_field_facts(scan, field);
  record_member(state, symbol);
}

// C++: the scope of a class holds types as well.
static bool declares_named_type(const a_decl_parse_state *state)
{
  if (C_dialect != 2 || !(state->specifier_flags & sf_is_type_declaration)) return false;
  return skip_typerefs(state->type_specifier)->source_corresp.name != nullptr;
}

void member_without_declarator(a_class_scan_state *scan, a_decl_parse_state *state)
{
  if (state->bad_declaration || (state->specifier_flags & sf_is_in_error)) return;
  if (state->specifier_flags & sf_is_friend) {
    friend_without_declarator(scan, state);
    return;
  }
  if (is_anonymous_member(state)) {
    anonymous_member(scan, state);
    return;
  }
  if (state->enum_body_seen || declares_named_type(state)) return;
  pos_diagnostic(strict_ansi_mode ? strict_ansi_error_severity : es_warning, ec_useless_decl,
                 state->start_position);
}

void field_member(a_class_scan_state *scan, a_decl_parse_state *state, a_symbol_locator *locator)
{
  if (curr_token == tok_colon) {
    bit_field(scan, state, locator);
  } else {
    ordinary_field(scan, state, locator);
  }
}
