// decl_spec_enum.cpp - enum specifiers: head, enumerators, the integer kind of the type.
// Rule:    the value of an enumerator is kept with its sign while the list is read; its final type
//          and the type's kind are chosen at the closing brace.
// See:     C99 6.7.2.2; GNU differences are marked "GNU".
#include "consts/const_ints.h"
#include "consts/folding.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "errors/error.h"
#include "errors/misra_hooks.h"
#include "il/il_alloc.h"
#include "il/il.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "lex/token_cache.h"
#include "parse/attribute.h"
#include "parse/class_decl.h"
#include "parse/decl_spec_scan.h"
#include "parse/decls.h"
#include "parse/expr.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"
#include "parse/symbol_ref.h"

// The list while it is read.
struct an_enum_scan {
  a_type *type;
  an_integer_kind largest_kind; // largest_enum_int_kind: no value may pass it
  a_constant *last_enumerator;
  a_constant next_value; // of an enumerator without `=`
  bool any_enumerator : 1;
  bool next_value_overflows : 1; // the last value was the maximum of largest_kind
  bool any_negative : 1;
  bool dependent : 1;
  bool first_has_value : 1;
  unsigned with_value, total;
  a_source_position value_position; // of the first enumerator with `=` behind the first one
  an_integer_value low, high;       // range of all values; high is unsigned if not any_negative
  bool high_is_unsigned : 1;        // high has the sign bit set and is positive
};

//---------------------------------------------------------------------------------------------
// Values.

static an_integer_kind largest_enum_int_kind()
{
  if (!enum_types_can_be_larger_than_int) return ik_int;
  if (!strict_ansi_mode || long_long_is_standard) return ik_unsigned_long_long;
  return ik_unsigned_long;
}

static bool constant_fits(const a_constant *constant, an_integer_kind kind)
{
  return in_range_for_integer_kind(constant, constant, kind);
}

// Extends the range of values by one.
static void note_value(an_enum_scan *scan, const a_constant *constant)
{
  const an_integer_value &value = integer_of(constant);
  bool is_signed = int_constant_is_signed(constant);
  bool negative = is_signed && (value.digit[0] & 0x8000);
  bool high_bit_positive = !is_signed && (value.digit[0] & 0x8000);
  if (!scan->any_enumerator) {
    scan->low = scan->high = value;
    scan->high_is_unsigned = high_bit_positive;
    scan->any_negative = negative;
    return;
  }
  if (negative && (!scan->any_negative || cmp_integer_values(&value, true, &scan->low, true) < 0)) {
    scan->low = value;
  } else if (!negative && !scan->any_negative &&
             cmp_integer_values(&value, false, &scan->low, false) < 0) {
    scan->low = value;
  }
  bool high_negative =
      scan->any_negative && !scan->high_is_unsigned && (scan->high.digit[0] & 0x8000);
  scan->any_negative |= negative;
  if (cmp_integer_values(&value, is_signed, &scan->high, high_negative) > 0) {
    scan->high = value;
    scan->high_is_unsigned = high_bit_positive;
  }
}

// The constants at the ends of the range, for the tests of kinds.
static void range_constants(an_enum_scan *scan, a_constant *low, a_constant *high)
{
  clear_constant(low, ck_integer);
  clear_constant(high, ck_integer);
  integer_of(low) = scan->low;
  integer_of(high) = scan->high;
  low->type = integer_type(scan->any_negative ? ik_long_long : ik_unsigned_long_long);
  bool high_signed = scan->any_negative && !scan->high_is_unsigned;
  high->type = integer_type(high_signed ? ik_long_long : ik_unsigned_long_long);
}

static bool range_fits(an_enum_scan *scan, an_integer_kind kind)
{
  a_constant low, high;
  range_constants(scan, &low, &high);
  return constant_fits(&low, kind) && constant_fits(&high, kind);
}

// A value that `int` can't hold where enums may not be larger (C99 6.7.2.2p2).
static void check_int_range(an_enum_scan *, a_constant *value, a_source_position position)
{
  if (enum_types_can_be_larger_than_int) return;
  if (constant_fits(value, ik_int)) {
    type_change_constant(value, integer_type(ik_int), true, nullptr, &position);
    return;
  }
  // The same bits as an unsigned int are taken as an int, where the mode says so.
  bool same_size = constant_fits(value, ik_unsigned_int);
  an_error_severity severity =
      same_size && !(strict_ansi_mode && strict_ansi_error_severity == es_error) ? es_warning
                                                                                 : es_error;
  pos_diagnostic(severity, ec_enum_value_out_of_int_range, position);
  a_constant truncated;
  clear_constant(&truncated, ck_integer);
  truncated.type = integer_type(ik_int);
  an_error_code code = ec_no_error;
  an_error_severity ignored = es_none;
  conv_integer_to_integer(value, &truncated, false, &code, &ignored);
  integer_of(value) = integer_of(&truncated);
  value->type = integer_type(ik_int);
}

// The value behind `=`.
static void scan_enumerator_value(an_enum_scan *scan, a_constant *value)
{
  a_source_position position = pos_curr_token;
  scan_fs_integral_constant_expression(value);
  if (value->kind == ck_template_param) {
    scan->dependent = true;
    return;
  }
  if (value->kind != ck_integer) {
    set_integer_constant(value, 0, ik_int);
    return;
  }
  a_type *type = skip_typerefs(value->type);
  if (as_integer(type).is_enum || as_integer(type).is_bool) {
    value->type = integer_type(as_integer(type).int_kind);
  }
  value->expr = nullptr;
  check_int_range(scan, value, position);
}

// The kind that the next value needs, one above the current value.
static void advance_value(an_enum_scan *scan, const a_constant *value)
{
  scan->next_value = *value;
  scan->next_value_overflows = false;
  an_integer_kind kind = as_integer(skip_typerefs(value->type)).int_kind;
  if (!is_max_value_for_integer_kind(value, kind)) {
    incr_integer_value(&integer_of(&scan->next_value));
    return;
  }
  if (kind == scan->largest_kind || is_max_value_for_integer_kind(value, scan->largest_kind) ||
      !enum_types_can_be_larger_than_int) {
    scan->next_value_overflows = true;
    return;
  }
  incr_integer_value(&integer_of(&scan->next_value));
  // The first wider kind holds it: a positive value, so an unsigned one serves too.
  static const an_integer_kind wider[] = {ik_int,           ik_unsigned_int, ik_long,
                                          ik_unsigned_long, ik_long_long,    ik_unsigned_long_long};
  for (an_integer_kind candidate : wider) {
    if (candidate < kind) continue;
    scan->next_value.type = integer_type(ik_unsigned_long_long);
    if (!constant_fits(&scan->next_value, candidate)) continue;
    scan->next_value.type = integer_type(candidate);
    return;
  }
  scan->next_value.type = integer_type(scan->largest_kind);
}

//---------------------------------------------------------------------------------------------
// Enumerators.

static void link_enumerator(an_enum_scan *scan, a_constant *enumerator)
{
  if (scan->last_enumerator) {
    scan->last_enumerator->next = enumerator;
  } else {
    as_integer(scan->type).first_enumerator = enumerator;
  }
  scan->last_enumerator = enumerator;
}

static void enter_enumerator(an_enum_scan *scan, a_symbol_locator *locator, const a_constant *value)
{
  a_constant *enumerator = fs_constant(ck_integer);
  copy_constant(value, enumerator);
  if (check_misra_c_2004) misra_hooks.check_for_misra_20_2(locator);
  a_symbol *symbol = enter_local_symbol(sk_constant, locator);
  constant_of_symbol(symbol) = enumerator;
  if (C_dialect == 2) enumerator->type = scan->type;
  set_source_corresp(&enumerator->source_corresp, symbol);
  link_enumerator(scan, enumerator);
  record_symbol_declaration(rdf_definition, symbol, &locator->position, nullptr);
  scan->any_enumerator = true;
}

static bool one_enumerator(an_enum_scan *scan)
{
  if (curr_token != tok_identifier) {
    syntax_error(ec_exp_identifier);
    return false;
  }
  a_symbol_locator locator = locator_for_curr_id;
  get_token();
  an_attribute *attributes = gnu_attributes_enabled && curr_token == tok_attribute
                                 ? scan_attributes(al_declarator)
                                 : nullptr;
  ++scan->total;
  a_constant value;
  if (curr_token == tok_assign) {
    get_token();
    ++scan->with_value;
    if (scan->total == 1)
      scan->first_has_value = true;
    else if (is_null_position(scan->value_position))
      scan->value_position = locator.position;
    scan_enumerator_value(scan, &value);
  } else {
    if (scan->next_value_overflows) {
      pos_error(ec_enum_value_out_of_int_range, locator.position);
      scan->next_value_overflows = false;
    }
    value = scan->next_value;
  }
  if (value.kind == ck_integer) {
    note_value(scan, &value);
    enter_enumerator(scan, &locator, &value);
    advance_value(scan, &value);
  } else {
    enter_enumerator(scan, &locator, &value);
  }
  if (attributes) attach_attributes(attributes, scan->last_enumerator, iek_constant, nullptr);
  return true;
}

static void check_trailing_comma(a_source_position position)
{
  if (c99_mode || gcc_mode || gpp_mode) return;
  an_error_severity severity = strict_ansi_mode ? strict_ansi_error_severity : es_remark;
  pos_diagnostic(severity, ec_nonstd_extra_comma, position);
}

static void enumerator_list(an_enum_scan *scan)
{
  add_stop_token(tok_rbrace);
  add_stop_token(tok_comma);
  for (;;) {
    if (curr_token == tok_rbrace && scan->total > 0) break;
    bool fine = one_enumerator(scan);
    if (curr_token != tok_comma) {
      if (fine && curr_token != tok_rbrace) {
        remove_stop_token(tok_comma);
        required_token_no_advance(tok_rbrace, ec_exp_rbrace);
        add_stop_token(tok_comma);
      }
      break;
    }
    a_source_position comma = pos_curr_token;
    get_token();
    if (curr_token == tok_rbrace) check_trailing_comma(comma);
  }
  remove_stop_token(tok_comma);
  remove_stop_token(tok_rbrace);
  // Values on the first or on all enumerators only.
  if (check_misra_c_2004 && scan->with_value != 0 && scan->with_value != scan->total &&
      !(scan->with_value == 1 && scan->first_has_value)) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_9_3, scan->value_position);
  }
}

//---------------------------------------------------------------------------------------------
// The kind of the type.

static an_integer_kind smallest_kind(an_enum_scan *scan)
{
  static const an_integer_kind narrow[] = {ik_char, ik_signed_char, ik_unsigned_char, ik_short,
                                           ik_unsigned_short};
  for (an_integer_kind kind : narrow) {
    if (kind == ik_short && targ_sizeof_short >= targ_sizeof_int) break;
    if (range_fits(scan, kind)) return kind;
  }
  return ik_none;
}

// The kind without packing; *fits is false when no kind holds all values.
static an_integer_kind ordinary_kind(an_enum_scan *scan, bool *fits)
{
  static const an_integer_kind wide[] = {ik_int,           ik_unsigned_int, ik_long,
                                         ik_unsigned_long, ik_long_long,    ik_unsigned_long_long};
  *fits = true;
  if (!enum_types_can_be_larger_than_int) return ik_int;
  for (an_integer_kind kind : wide) {
    if (kind >= ik_long_long && strict_ansi_mode && !long_long_is_standard) break;
    if (range_fits(scan, kind)) return kind;
  }
  *fits = false;
  return scan->largest_kind;
}

static void set_enum_kind(an_enum_scan *scan)
{
  an_integer_type_part &part = as_integer(scan->type);
  if (part.underlying_is_fixed) {
    if (scan->any_enumerator && !range_fits(scan, part.int_kind)) {
      pos_ty_error(ec_enum_base_type_too_limited, error_position,
                   part.enum_supplement->underlying_type);
    }
    return;
  }
  an_integer_kind kind = ik_none;
  if (part.enum_is_packed) kind = smallest_kind(scan);
  bool narrow = kind != ik_none;
  bool fits = true;
  if (!narrow) kind = ordinary_kind(scan, &fits);
  if (!fits && !in_template_context()) {
    pos_diagnostic(strict_ansi_mode ? es_error : es_warning, ec_insufficient_enum_range,
                   error_position);
  }
  // GNU: unsigned when no value is negative.
  if (gcc_mode && !narrow && !scan->any_negative && enum_types_can_be_larger_than_int &&
      range_fits(scan, unsigned_int_kind_of[kind])) {
    kind = unsigned_int_kind_of[kind];
  }
  part.int_kind = kind;
}

// The constants take their final type: the enum in C++, an integer type in C.
static void set_enumerator_types(an_enum_scan *scan)
{
  a_constant *constant = as_integer(scan->type).first_enumerator;
  bool fits;
  an_integer_kind kind = ordinary_kind(scan, &fits);
  if (gcc_mode && !scan->any_negative) kind = unsigned_int_kind_of[kind];
  for (; constant; constant = constant->next) {
    if (C_dialect == 2) {
      constant->type = scan->type;
    } else if (!constant_fits(constant, ik_int)) {
      // GNU: a value beyond int has the type of the enumeration.
      constant->type = integer_type(kind);
    } else {
      constant->type = integer_type(ik_int);
    }
  }
}

static void finish_enum(an_enum_scan *scan, a_decl_parse_state *state)
{
  a_type *type = scan->type;
  set_enum_kind(scan);
  set_enumerator_types(scan);
  type->is_incomplete = false;
  set_type_size(type);
  if (type->alignment_was_declared) type->alignment_was_declared = false;
  if (may_be_added_to_types_list(type, decl_scope_level)) add_to_types_list(type, decl_scope_level);
  state->specifier_flags |= sf_defines_type;
  state->enum_body_seen = true;
}

//---------------------------------------------------------------------------------------------
// The specifier.

static void init_enum_type(a_type *type)
{
  an_integer_type_part &part = as_integer(type);
  part.int_kind = ik_int;
  part.is_enum = true;
  part.enum_is_packed = enum_types_can_be_smaller_than_int || short_enums;
  type->is_incomplete = true;
}

// `: type` behind the head, where the dialect has it.
static void enum_base(an_enum_scan *scan)
{
  get_token();
  a_source_position position = pos_curr_token;
  a_decl_parse_state state = null_decl_parse_state;
  state.start_position = pos_curr_token;
  decl_specifiers(dso_type_ok, &state, nullptr);
  a_type *base = skip_typerefs(state.type_specifier);
  if (is_error_type(base)) return;
  if (base->kind != tk_integer || as_integer(base).is_enum) {
    pos_error(ec_enum_base_type_must_be_integral, position);
    return;
  }
  an_integer_type_part &part = as_integer(scan->type);
  part.int_kind = as_integer(base).int_kind;
  part.underlying_is_fixed = true;
  part.enum_supplement = alloc_fs_entry<an_enum_type_supplement>();
  part.enum_supplement->underlying_type = base;
}

static void enum_body(an_enum_scan *scan, a_decl_parse_state *state)
{
  a_type *type = scan->type;
  scan->largest_kind =
      as_integer(type).underlying_is_fixed ? as_integer(type).int_kind : largest_enum_int_kind();
  clear_constant(&scan->next_value, ck_integer);
  set_integer_constant(&scan->next_value, 0, ik_int);
  get_token();
  enumerator_list(scan);
  a_source_position end = end_pos_curr_token;
  required_token(tok_rbrace, ec_exp_rbrace);
  state->specifiers_range.end = end;
  if (gnu_attributes_enabled && curr_token == tok_attribute) {
    an_attribute *attributes = scan_attributes(al_after_body);
    attach_tag_attributes(attributes, type, state, true);
  }
  finish_enum(scan, state);
}

static a_type *unnamed_enum(a_source_position position)
{
  a_symbol *symbol = make_unnamed_tag_symbol(sk_enum_tag, &position);
  a_type *type = alloc_type(tk_integer);
  init_enum_type(type);
  type_of_symbol(symbol) = type;
  set_source_corresp(&type->source_corresp, symbol);
  return type;
}

static a_type *named_enum(a_symbol_locator *locator, bool is_definition, a_decl_parse_state *state)
{
  bool is_alone = curr_token == tok_semicolon;
  a_type *type =
      find_or_enter_tag(locator, sk_enum_tag, tk_integer, is_definition, is_alone, state);
  if (is_error_type(type)) return type;
  if (!as_integer(type).is_enum) init_enum_type(type);
  if (is_definition && !type->is_incomplete) {
    pos_sy_error(ec_redefinition, locator->position, locator->symbol);
    return unnamed_enum(locator->position);
  }
  // C99 6.7.2.3p2: `enum x` may not come before the list; by itself it is worth a word in every mode.
  bool is_early = !is_definition && type->is_incomplete && C_dialect != 1;
  if (is_early && (is_alone || strict_ansi_mode)) {
    an_error_severity severity = strict_ansi_mode ? strict_ansi_error_severity
                                 : gcc_mode       ? es_remark
                                                  : es_warning;
    pos_diagnostic(severity, ec_nonstd_forward_decl_enum, locator->position);
  }
  return type;
}

a_type *enum_specifier(uint32_t options, a_decl_parse_state *state, a_decl_pos_block *pos_block)
{
  (void)options;
  a_source_position start = pos_curr_token;
  if (pos_block) pos_block->type_begin = start;
  get_token();
  bool is_scoped = false;
  if (C_dialect == 2 && (curr_token == tok_class || curr_token == tok_struct)) {
    is_scoped = true;
    get_token();
  }
  an_attribute *attributes =
      curr_token == tok_attribute || curr_token == tok_declspec ? scan_attributes(al_tag) : nullptr;
  an_enum_scan scan = {};
  state->tag_locator = cleared_locator;
  if (curr_token == tok_identifier) {
    state->tag_locator = locator_for_curr_id;
    state->tag_locator.symbol = nullptr;
    get_token();
    bool has_base = explicit_enum_base_enabled && curr_token == tok_colon;
    scan.type = named_enum(&state->tag_locator, curr_token == tok_lbrace || has_base, state);
  } else if (curr_token == tok_lbrace) {
    if (is_scoped) pos_error(ec_unnamed_scoped_enum, pos_curr_token);
    scan.type = unnamed_enum(start);
  } else {
    syntax_error(ec_exp_identifier);
    state->specifier_flags |= sf_is_in_error;
    return error_type();
  }
  if (is_error_type(scan.type)) {
    state->specifier_flags |= sf_is_in_error;
    if (curr_token != tok_lbrace) return scan.type;
    scan.type = unnamed_enum(start);
  }
  as_integer(scan.type).enum_is_scoped |= is_scoped;
  if (explicit_enum_base_enabled && curr_token == tok_colon) enum_base(&scan);
  bool has_body = curr_token == tok_lbrace;
  if (attributes) attach_tag_attributes(attributes, scan.type, state, has_body);
  if (has_body) enum_body(&scan, state);
  if (pos_block) pos_block->type_end = pos_curr_token;
  return scan.type;
}
