// decl_spec_type.cpp - names that stand for types, and the type that the specifiers add up to.
// Rule:    a bad combination is one error 85 and the error type; nothing later reports it again.
// See:     C99 6.7.2.
#include "driver/flags.h"
#include "driver/target.h"
#include "errors/error.h"
#include "errors/misra_hooks.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "lex/token_cache.h"
#include "parse/attribute.h"
#include "parse/decl_spec_scan.h"
#include "parse/decls.h"
#include "parse/exprutil.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"
#include "parse/symbol_ref.h"

//---------------------------------------------------------------------------------------------
// Names.

// Size words in front of a typedef name: an extension of old compilers, `unsigned T x`.
static bool words_may_modify_typedef(const a_specifier_scan *scan)
{
  if (C_dialect == 1) return true;
  return (gcc_mode || gpp_mode) && (gnu_version <= 30399 || (scan->options & dso_secondary));
}

// Only what those words can be applied to: integers, enums, and floating types for `long`.
static bool words_fit_typedef(const a_specifier_scan *scan, a_type *type)
{
  if (is_integral_or_enum_type(type)) return true;
  return scan->size_word == size_long && scan->sign_word == sign_none &&
         is_real_floating_type(type);
}

// The identifier that can't be a declarator's name stands for a type by mistake.
static void bad_type_name(a_specifier_scan *scan)
{
  a_symbol *symbol = normal_id_lookup(&locator_for_curr_id, lo_type_only);
  if (symbol) {
    pos_sy_error(ec_sym_not_a_type_name, pos_curr_token, symbol);
  } else {
    pos_st_error(ec_undefined_identifier, pos_curr_token, locator_for_curr_id.header->identifier);
  }
  scan->kind = spk_type_name;
  scan->type = error_type();
  scan->state->bad_declaration = true;
  scan->error_seen = true;
  get_token();
}

// Whether the identifier at hand can't be the name of a declarator, by what follows it.
static bool identifier_cannot_be_declarator()
{
  switch (next_token()) {
  case tok_identifier:
  case tok_star: return true;
  case tok_const:
  case tok_volatile:
  case tok_int:
  case tok_char:
  case tok_long:
  case tok_short:
  case tok_unsigned:
  case tok_signed:
  case tok_float:
  case tok_double:
  case tok_static:
  case tok_extern:
  case tok_register:
  case tok_restrict:
  case tok_gnu_restrict: return C_dialect != 1;
  default: return false;
  }
}

// No type symbol was found at an identifier.
static bool non_type_identifier(a_specifier_scan *scan)
{
  if (any_type_specifier(scan)) return false;
  if (scan->options & dso_in_condition_or_param_template) {
    syntax_error(ec_exp_type_specifier);
    scan->kind = spk_error;
    scan->error_seen = true;
    return false;
  }
  if (!identifier_cannot_be_declarator()) return false;
  bad_type_name(scan);
  return true;
}

// Only what may stand in front of a constructor, destructor or conversion function came so far.
static bool special_member_may_follow(const a_specifier_scan *scan)
{
  return C_dialect == 2 && !any_type_specifier(scan) &&
         !(scan->options & (dso_parameter | dso_qualifiers_only | dso_secondary));
}

// `A::A`, `A::~A`, `A::operator T`: the list of specifiers ends, and no type is missing.
static bool qualified_special_member(a_specifier_scan *scan)
{
  const a_symbol_locator *locator = &locator_for_curr_id;
  if (!special_member_may_follow(scan) || !locator->qualifier_is_class) return false;
  a_type *class_type = skip_typerefs(locator->qualifier.class_type);
  a_symbol *class_symbol = class_type->source_corresp.assoc_symbol;
  bool is_constructor =
      locator->header != nullptr && class_symbol != nullptr &&
      (locator->header->is_constructor_name || locator->header == class_symbol->header) &&
      next_token() == tok_lparen;
  if (is_constructor) {
    scan->state->specifier_flags |= sf_is_constructor_name;
  } else if (locator->is_destructor_name || locator->is_conversion_name) {
    scan->state->specifier_flags |= sf_is_destructor_or_conversion;
  } else {
    return false;
  }
  scan->kind = spk_unknown;
  return true;
}

void special_member_specifier(a_specifier_scan *scan)
{
  if (!special_member_may_follow(scan)) return;
  if (curr_token == tok_operator) f_is_generalized_identifier_start(gid_in_declaration, nullptr);
  bool is_conversion = curr_token == tok_identifier && locator_for_curr_id.is_conversion_name;
  if (curr_token != tok_compl && !is_conversion) return;
  scan->state->specifier_flags |= sf_is_destructor_or_conversion;
  scan->kind = spk_unknown;
}

bool type_name_specifier(a_specifier_scan *scan)
{
  if (scan->kind != spk_none || scan->complex_word != complex_none) return false;
  if (C_dialect == 2 && (scan->options & dso_member)) {
    a_type *class_type = top_scope()->assoc_type;
    if (top_scope()->kind == sck_class && is_constructor_decl(class_type, scan->state)) {
      scan->kind = spk_unknown;
      scan->state->specifier_flags |= sf_is_constructor_name | sf_no_specifiers;
      return false;
    }
  }
  if (any_type_word(scan) && !words_may_modify_typedef(scan)) return false;
  a_symbol *symbol = curr_type_symbol();
  if (C_dialect == 2 && qualified_special_member(scan)) return false;
  if (symbol == nullptr) return non_type_identifier(scan);
  if (C_dialect == 2) {
    bool failed = false;
    f_check_ambiguity_and_verify_access(&locator_for_curr_id, false, nullptr, &failed);
  }
  a_type *type = type_of_symbol(symbol);
  if (any_type_word(scan) && !words_fit_typedef(scan, type)) return false;
  if (!type_specifier_allowed(scan)) {
    get_token();
    return true;
  }
  record_symbol_reference(rk_plain, symbol, &pos_curr_token);
  if (check_misra_c_2004) {
    misra_hooks.check_for_invalid_identifier(symbol->header->identifier, &pos_curr_token,
                                             ansi_c_type);
  }
  scan->kind = spk_type_name;
  scan->type = type;
  scan->state->typedef_type_was_used = true;
  get_token();
  return true;
}

void typename_specifier(a_type **type, a_symbol **symbol, bool, a_decl_pos_block *)
{
  get_token();
  bool error_found = false;
  *type = error_type();
  *symbol = coalesce_and_lookup_generalized_identifier(0, lo_type_expected, &error_found);
  if (*symbol && is_type_symbol(*symbol)) {
    *type = type_of_symbol(*symbol);
  } else if (!error_found) {
    pos_diagnostic(es_error, ec_invalid_typename_specifier, pos_curr_token);
  }
  if (curr_token == tok_identifier) get_token();
}

// A class's own name followed by `(` declares its constructor, unless a declarator in parentheses
// follows.
bool is_constructor_decl(a_type *class_type, a_decl_parse_state *)
{
  if (curr_token != tok_identifier || class_type == nullptr) return false;
  a_symbol *symbol = locator_for_curr_id.symbol;
  if (symbol == nullptr) symbol = normal_id_lookup(&locator_for_curr_id, lo_type_only);
  if (symbol == nullptr || !is_type_symbol(symbol)) return false;
  if (!identical_types(type_of_symbol(symbol), class_type)) return false;
  a_token_kind second = tok_error;
  if (next_two_tokens(tok_lparen, &second) != tok_lparen) return false;
  return second != tok_star && second != tok_ampersand;
}

//---------------------------------------------------------------------------------------------
// The type that the words name.

// A typedef's plain type as the words that would name it (old C and GNU: `unsigned T`).
static void take_typedef_apart(a_specifier_scan *scan)
{
  if (report_gnu_extensions) {
    pos_warning(ec_typedef_modification_is_nonstandard, scan->words_position);
  }
  a_type *type = skip_typerefs(scan->type);
  if (type->kind == tk_float) {
    if (as_float(type).float_kind == fk_float) scan->kind = spk_float;
    if (as_float(type).float_kind == fk_double) scan->kind = spk_double;
    return;
  }
  if (type->kind != tk_integer || as_integer(type).is_enum || as_integer(type).is_bool) return;
  a_size_word size = size_none;
  a_specifier_kind kind = spk_int;
  switch (as_integer(type).int_kind) {
  case ik_char:
  case ik_signed_char:
  case ik_unsigned_char: kind = spk_char; break;
  case ik_short:
  case ik_unsigned_short: size = size_short; break;
  case ik_int:
  case ik_unsigned_int: break;
  case ik_long:
  case ik_unsigned_long: size = size_long; break;
  case ik_int40:
  case ik_unsigned_int40: size = size_int40; break;
  case ik_long_long:
  case ik_unsigned_long_long: size = size_long_long; break;
  case ik_none: return;
  }
  bool is_unsigned = unsigned_int_kind_of[as_integer(type).int_kind] == as_integer(type).int_kind;
  if (scan->size_word == size_none) {
    scan->size_word = size;
  } else if (size != size_none && size != scan->size_word) {
    return;
  }
  if (scan->sign_word == sign_none && is_unsigned) scan->sign_word = sign_unsigned;
  scan->kind = kind;
}

static a_type *bad_combination(a_specifier_scan *scan)
{
  if (!scan->error_seen) {
    a_source_position position =
        is_null_position(scan->words_position) ? error_position : scan->words_position;
    pos_error(ec_bad_combination_of_type_specifiers, position);
  }
  scan->error_seen = true;
  scan->state->specifier_flags |= sf_is_in_error;
  return error_type();
}

static a_type *integer_type_of_words(a_specifier_scan *scan)
{
  static const an_integer_kind kinds[5][2] = {
      {ik_int, ik_unsigned_int},
      {ik_short, ik_unsigned_short},
      {ik_long, ik_unsigned_long},
      {ik_int40, ik_unsigned_int40},
      {ik_long_long, ik_unsigned_long_long},
  };
  bool is_unsigned = scan->sign_word == sign_unsigned;
  an_integer_kind kind = kinds[scan->size_word][is_unsigned];
  return scan->sign_word == sign_signed ? signed_integer_type(kind) : integer_type(kind);
}

static a_type *char_type_of_words(a_specifier_scan *scan)
{
  if (scan->size_word != size_none) return bad_combination(scan);
  switch (scan->sign_word) {
  case sign_none: return integer_type(plain_char_int_kind);
  case sign_signed: return integer_type(ik_signed_char);
  case sign_unsigned: return integer_type(ik_unsigned_char);
  }
  return error_type();
}

// `long float`: double in old C, and elsewhere with a warning or an error.
static bool long_float_allowed(a_specifier_scan *scan)
{
  a_source_position position = scan->words_position;
  if (C_dialect == 1) return true;
  if (gcc_mode || gpp_mode) {
    pos_diagnostic(es_discretionary_error, ec_bad_combination_of_type_specifiers, position);
  } else if (strict_ansi_mode) {
    pos_diagnostic(strict_ansi_error_severity, ec_bad_combination_of_type_specifiers, position);
  } else {
    pos_warning(ec_nonstandard_long_float, position);
  }
  return true;
}

static a_type *float_type_of_words(a_specifier_scan *scan)
{
  bool is_long = scan->size_word == size_long;
  if (scan->sign_word != sign_none || (scan->size_word != size_none && !is_long)) {
    return bad_combination(scan);
  }
  a_float_kind kind = scan->kind == spk_float ? fk_float : fk_double;
  if (is_long && kind == fk_float) {
    if (!long_float_allowed(scan)) return bad_combination(scan);
    kind = fk_double;
  } else if (is_long) {
    kind = fk_long_double;
  }
  switch (scan->complex_word) {
  case complex_none: return float_type(kind);
  case complex_complex: return complex_type(kind);
  case complex_imaginary: return imaginary_type(kind);
  }
  return error_type();
}

// _Complex and _Imaginary belong to floating types; alone they mean double in GNU C.
static void check_complex_word(a_specifier_scan *scan)
{
  if (scan->complex_word == complex_none) return;
  if (scan->kind == spk_float || scan->kind == spk_double || scan->kind == spk_error) return;
  const char *word = scan->complex_word == complex_complex ? "_Complex" : "_Imaginary";
  if (scan->kind == spk_none && scan->sign_word == sign_none &&
      (scan->size_word == size_none || scan->size_word == size_long)) {
    scan->kind = spk_double;
    if (!gcc_mode && !gpp_mode) {
      pos_error(ec_missing_floating_point_type, scan->complex_position);
    }
    return;
  }
  pos_st_error(ec_only_applies_to_float_types, scan->complex_position, word);
  scan->error_seen = true;
  scan->kind = spk_error;
}

static a_type *type_of_words(a_specifier_scan *scan)
{
  bool words = any_type_word(scan);
  switch (scan->kind) {
  case spk_none:
  case spk_int: return integer_type_of_words(scan);
  case spk_void: return words ? bad_combination(scan) : void_type();
  case spk_char: return char_type_of_words(scan);
  case spk_wchar_t: return words ? bad_combination(scan) : wchar_t_type();
  case spk_char16_t: return words ? bad_combination(scan) : char16_t_type();
  case spk_char32_t: return words ? bad_combination(scan) : char32_t_type();
  case spk_bool: return words ? bad_combination(scan) : bool_type();
  case spk_float:
  case spk_double: return float_type_of_words(scan);
  case spk_type_name:
  case spk_class:
  case spk_enum:
  case spk_typename: return words ? bad_combination(scan) : scan->type;
  case spk_cl_vector:
    if (words) return bad_combination(scan);
    return scan->type ? scan->type : error_type();
  case spk_unknown: return unknown_type();
  case spk_error: return error_type();
  }
  unexpected_kind("type specifier");
}

//---------------------------------------------------------------------------------------------
// Qualifiers.

// restrict qualifies pointers to objects only (C99 6.7.3p2).
bool restrict_qualifier_is_allowed(a_type *type, const a_source_position *position)
{
  if (is_error_type(type) || is_template_dependent_type(type)) return true;
  a_type *base = skip_array_types(type);
  if (!is_ptr_or_ref_type(base)) {
    pos_error(ec_restrict_not_allowed, *position);
    return false;
  }
  if (is_function_type(type_pointed_to(base))) {
    pos_error(ec_restrict_pointer_to_function, *position);
    return false;
  }
  return true;
}

// A qualifier that a typedef has already (C89 6.5.3 forbids it, C99 doesn't).
static void check_repeated_qualifier(a_decl_parse_state *state, a_type *type)
{
  if (C_dialect == 2) return;
  if (!(get_type_qualifiers(type) & state->type_qualifiers)) return;
  if (c99_mode) return;
  an_error_severity severity = strict_ansi_mode ? strict_ansi_error_severity : es_remark;
  pos_diagnostic(severity, ec_dupl_type_qualifier, state->qualified_position);
}

static a_type *apply_qualifiers(a_decl_parse_state *state, a_type *type)
{
  unsigned qualifiers = state->type_qualifiers;
  if (qualifiers == 0 || is_error_type(type)) return type;
  check_repeated_qualifier(state, type);
  if ((qualifiers & tq_restrict) &&
      !restrict_qualifier_is_allowed(type, &state->restrict_position)) {
    qualifiers &= ~tq_restrict;
  }
  if (is_function_type(type)) {
    // In C what the declaration declares decides about the message.
    if (C_dialect == 2 && !in_template_context()) {
      pos_warning(ec_cv_qualified_function_type, state->qualified_position);
    }
    return type;
  }
  if (C_dialect == 2 && is_any_reference_type(type)) {
    state->has_pending_qualifiers = (qualifiers & ~tq_restrict) != 0;
    qualifiers &= tq_restrict;
  }
  if (qualifiers == 0) return type;
  return f_make_qualified_type(type, qualifiers, -1);
}

// A local class lives longer than the bounds of the function's arrays.
static a_type *check_nonlocal_vla(a_specifier_scan *scan, a_type *type)
{
  if (!inside_local_class || !is_nonlocal_variably_modified_type(type)) return type;
  pos_error(ec_nonlocal_vla_not_allowed, scan->state->specifiers_range.start);
  return error_type();
}

void build_specifier_type(a_specifier_scan *scan)
{
  a_decl_parse_state *state = scan->state;
  if (scan->kind == spk_type_name && any_type_word(scan)) take_typedef_apart(scan);
  check_complex_word(scan);
  a_type *type = type_of_words(scan);
  if (scan->kind == spk_type_name) type = check_nonlocal_vla(scan, type);
  if (scan->error_seen) state->specifier_flags |= sf_is_in_error;
  separate_decl_attributes(state);
  if (state->type_attributes) {
    an_attribute *list = state->type_attributes;
    state->type_attributes = nullptr;
    attach_type_attributes(&type, list, state);
  }
  type = apply_qualifiers(state, type);
  state->type_specifier = type;
}
