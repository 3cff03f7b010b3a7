// decl_spec.cpp - the loop over declaration specifiers.
// Owns:    the empty parse state, the free lists of parameter ids and end-of-parse actions.
// Uses:    storage classes (decl_spec_storage.cpp), type names and the final type
//          (decl_spec_type.cpp), enums (decl_spec_enum.cpp), classes (class_decl.h).
// Rule:    each token has one handler that knows its own messages; what depends on the whole list
//          is decided behind the loop.
// Entry:   decl_specifiers.
// See:     C99 6.7; GNU differences are marked "GNU".
#include "parse/decl_spec.h"

#include <cstring>

#include "driver/flags.h"
#include "errors/error.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "lex/token_cache.h"
#include "mem/mem_manage.h"
#include "parse/attribute.h"
#include "parse/class_decl.h"
#include "parse/decl_spec_scan.h"
#include "parse/decls.h"
#include "parse/expr.h"
#include "parse/scope_stk.h"

const char *const decl_modifier_names[] = {
    "dllimport", "dllexport", "notshared", "thread",        "interrupt",  "NMI interrupt",
    "near",      "far",       "reentrant", "port",          "shared",     "sharedpp",
    "trap",      "cregister", "global",    "DATA_MEM_BANK", "DATA_ALIGN", "last"};

static a_decl_parse_state make_null_decl_parse_state()
{
  a_decl_parse_state state;
  memset((void *)&state, 0, sizeof state);
  state.storage_class = sc_unspecified;
  state.effective_storage_class = sc_unspecified;
  return state;
}

const a_decl_parse_state null_decl_parse_state = make_null_decl_parse_state();

static an_end_of_parse_action *free_end_of_parse_actions;
static a_param_id *free_param_ids;

//---------------------------------------------------------------------------------------------
// Records.

void clear_decl_pos_block(a_decl_pos_block *block)
{
  memset((void *)block, 0, sizeof *block);
}

void clear_func_info(a_func_info_block *block)
{
  memset((void *)block, 0, sizeof *block);
  block->prototype_scope_number = -1;
}

a_param_id *alloc_param_id()
{
  a_param_id *id = free_param_ids;
  if (id) {
    free_param_ids = id->next;
  } else {
    id = (a_param_id *)alloc_in_region(0, sizeof(a_param_id));
  }
  memset((void *)id, 0, sizeof *id);
  id->storage_class = sc_unspecified;
  return id;
}

void free_param_id_list(a_func_info_block *block)
{
  if (block->param_ids) {
    block->ids_tail->next = free_param_ids;
    free_param_ids = block->param_ids;
  }
  block->param_ids = nullptr;
  block->ids_tail = nullptr;
  block->ids_by_name = nullptr;
  block->param_count = 0;
}

// Names of a list that are searched one by one; with more of them a table pays.
static constexpr unsigned longest_list_without_table = 16;

static uint32_t hash_of_param_name(const void *key)
{
  return ((const a_symbol_header *)key)->hash;
}

static bool param_id_has_name(const void *value, const void *key)
{
  return ((const a_param_id *)value)->locator.header == key;
}

static a_param_id *search_param_ids(a_param_id *id, const a_symbol_header *header)
{
  while (id != nullptr && id->locator.header != header)
    id = id->next;
  return id;
}

a_param_id *find_param_id(const a_func_info_block *block, const a_symbol_header *header)
{
  if (block->ids_by_name == nullptr) return search_param_ids(block->param_ids, header);
  void **place = hash_find(block->ids_by_name, header, false);
  return place == nullptr ? nullptr : (a_param_id *)*place;
}

a_param_id *find_earlier_param_id(a_func_info_block *block, a_param_id *id)
{
  if (block->param_count <= longest_list_without_table) {
    a_param_id *first = search_param_ids(block->param_ids, id->locator.header);
    return first == id ? nullptr : first;
  }
  if (block->ids_by_name == nullptr) {
    block->ids_by_name =
        alloc_hash_table(0, block->param_count, hash_of_param_name, param_id_has_name);
  }
  void **place = hash_find(block->ids_by_name, id->locator.header, true);
  if (*place != nullptr) return (a_param_id *)*place;
  *place = id;
  return nullptr;
}

void add_end_of_parse_action(a_decl_parse_state *state,
                             void (*action)(a_decl_parse_state *state, void *data), void *data)
{
  an_end_of_parse_action *entry = free_end_of_parse_actions;
  if (entry) {
    free_end_of_parse_actions = entry->next;
  } else {
    entry = (an_end_of_parse_action *)alloc_in_region(0, sizeof(an_end_of_parse_action));
  }
  entry->next = nullptr;
  entry->action = action;
  entry->data = data;
  an_end_of_parse_action **link = &state->end_of_parse_actions;
  while (*link)
    link = &(*link)->next;
  *link = entry;
}

void run_end_of_parse_actions(a_decl_parse_state *state)
{
  while (state->end_of_parse_actions) {
    an_end_of_parse_action *entry = state->end_of_parse_actions;
    state->end_of_parse_actions = entry->next;
    entry->action(state, entry->data);
    entry->next = free_end_of_parse_actions;
    free_end_of_parse_actions = entry;
  }
}

//---------------------------------------------------------------------------------------------
// Type specifiers.

bool type_specifier_allowed(a_specifier_scan *scan)
{
  if (scan->options & dso_type_ok) return true;
  pos_error(ec_type_specifier_not_allowed, pos_curr_token);
  scan->error_seen = true;
  return false;
}

// An old GNU version only warns of a repeated type in a typedef (`typedef int bool;` where bool is
// a keyword), which is known at the end of the list.
void bad_type_combination(a_specifier_scan *scan, a_source_position position)
{
  if (gcc_mode && gnu_version <= 39999 && scan->deferred_error == ec_no_error) {
    scan->deferred_error = ec_bad_combination_of_type_specifiers;
    scan->deferred_position = position;
    return;
  }
  if (!scan->error_seen) pos_error(ec_bad_combination_of_type_specifiers, position);
  scan->error_seen = true;
  scan->kind = spk_error;
}

static void note_basic_type_word(a_specifier_scan *scan)
{
  if (is_null_position(scan->basic_type_position)) scan->basic_type_position = pos_curr_token;
}

// MISRA 6.3, once for the specifiers; a typedef is where basic types belong.
static void check_basic_type(const a_specifier_scan *scan)
{
  if (is_null_position(scan->basic_type_position) || (scan->options & dso_no_misra) ||
      scan->state->storage_class == sc_typedef) {
    return;
  }
  pos_diagnostic(misra_advisory_severity, ec_misra_c_2004_6_3, scan->basic_type_position);
}

// A keyword that names a type by itself.
static void simple_type_keyword(a_specifier_scan *scan, a_specifier_kind kind)
{
  bool is_exempt = kind == spk_void || kind == spk_char || kind == spk_wchar_t || kind == spk_bool;
  if (!is_exempt) note_basic_type_word(scan);
  if (!type_specifier_allowed(scan)) return;
  if (scan->kind != spk_none) {
    bad_type_combination(scan, pos_curr_token);
    return;
  }
  scan->kind = kind;
  scan->only_void = kind == spk_void && !scan->seen_any;
}

static void note_type_word(a_specifier_scan *scan)
{
  note_basic_type_word(scan);
  if (is_null_position(scan->words_position)) scan->words_position = pos_curr_token;
}

static void long_specifier(a_specifier_scan *scan)
{
  if (!type_specifier_allowed(scan)) return;
  note_type_word(scan);
  switch (scan->size_word) {
  case size_none: scan->size_word = size_long; break;
  case size_long:
    scan->size_word = size_long_long;
    if (strict_ansi_mode && !long_long_is_standard) {
      pos_diagnostic(strict_ansi_discretionary_severity, ec_nonstd_long_long, pos_curr_token);
    }
    break;
  case size_short:
  case size_int40:
  case size_long_long: bad_type_combination(scan, pos_curr_token); break;
  }
}

static void short_specifier(a_specifier_scan *scan)
{
  if (!type_specifier_allowed(scan)) return;
  note_type_word(scan);
  if (scan->size_word == size_none) {
    scan->size_word = size_short;
  } else if (scan->size_word == size_short) {
    an_error_severity severity = cfront_2_1_mode || cfront_3_0_mode ? es_warning : es_error;
    pos_diagnostic(severity, ec_dupl_decl_specifier, pos_curr_token);
  } else {
    bad_type_combination(scan, pos_curr_token);
  }
}

static void int40_specifier(a_specifier_scan *scan)
{
  if (!type_specifier_allowed(scan)) return;
  if (scan->size_word != size_none || scan->kind != spk_none) {
    bad_type_combination(scan, pos_curr_token);
    return;
  }
  note_type_word(scan);
  scan->size_word = size_int40;
}

static void sign_specifier(a_specifier_scan *scan, a_sign_word word)
{
  if (!type_specifier_allowed(scan)) return;
  note_type_word(scan);
  if (scan->sign_word == sign_none) {
    scan->sign_word = word;
  } else if (scan->sign_word != word) {
    bad_type_combination(scan, pos_curr_token);
  } else {
    bool old_gnu = (gcc_mode || gpp_mode) &&
                   (gnu_version <= 30299 ||
                    (gnu_version <= 39999 && scan->state->storage_class == sc_typedef));
    an_error_severity severity =
        cfront_2_1_mode || cfront_3_0_mode || old_gnu ? es_warning : es_error;
    pos_diagnostic(severity, ec_dupl_decl_specifier, pos_curr_token);
  }
}

static void complex_specifier(a_specifier_scan *scan, a_complex_word word)
{
  if (!type_specifier_allowed(scan)) return;
  if (scan->complex_word != complex_none) {
    pos_error(ec_dupl_decl_specifier, pos_curr_token);
    return;
  }
  scan->complex_word = word;
  scan->complex_position = pos_curr_token;
}

// A type that one of the expression scanner's operators gives: __typeof__, decltype.
static void operator_type_specifier(a_specifier_scan *scan)
{
  a_source_position position = pos_curr_token;
  bool allowed = type_specifier_allowed(scan);
  a_type *type;
  if (curr_token == tok_typeof) {
    type = scan_typeof_operator();
  } else if (curr_token == tok_decltype) {
    type = scan_decltype_operator(nullptr, scan->pos_block);
  } else {
    type = scan_underlying_type_operator();
  }
  if (!allowed) return;
  if (any_type_specifier(scan)) {
    pos_error(ec_bad_combination_of_type_specifiers, position);
    scan->error_seen = true;
    scan->kind = spk_error;
    return;
  }
  scan->kind = spk_type_name;
  scan->type = type;
}

// Records a class or enum specifier that has been parsed; a second type drops it.
static void tag_specifier_type(a_specifier_scan *scan, a_specifier_kind kind, a_type *type,
                               a_source_position position, bool allowed)
{
  if (!allowed) return;
  if (any_type_specifier(scan)) {
    bad_type_combination(scan, position);
    return;
  }
  scan->kind = kind;
  scan->type = type;
  scan->enum_or_class_alone = true;
}

static void class_specifier_token(a_specifier_scan *scan)
{
  a_source_position position = pos_curr_token;
  bool allowed = type_specifier_allowed(scan);
  a_type *type = class_specifier(scan->options, scan->state, scan->pos_block);
  tag_specifier_type(scan, spk_class, type, position, allowed);
}

static void enum_specifier_token(a_specifier_scan *scan)
{
  a_source_position position = pos_curr_token;
  bool allowed = type_specifier_allowed(scan);
  a_type *type = enum_specifier(scan->options, scan->state, scan->pos_block);
  tag_specifier_type(scan, spk_enum, type, position, allowed);
}

// `__cl_vector(type, count, flag)`: returns the count, 0 after an error; the element's kind goes to
// *int_kind or *float_kind, the other stays -1.
static uint64_t scan_cl_vector_builtin(int *int_kind, int *float_kind, bool *flag)
{
  get_token();
  if (!required_token(tok_lparen, ec_exp_lparen)) return 0;
  add_stop_token(tok_rparen);
  a_type *element = nullptr;
  type_name(&element);
  a_constant count, third;
  required_token(tok_comma, ec_exp_comma);
  scan_fs_integral_constant_expression(&count);
  required_token(tok_comma, ec_exp_comma);
  scan_fs_integral_constant_expression(&third);
  remove_stop_token(tok_rparen);
  required_token(tok_rparen, ec_exp_rparen);
  element = skip_typerefs(element);
  if (element->kind == tk_integer) {
    *int_kind = as_integer(element).int_kind;
  } else if (element->kind == tk_float) {
    *float_kind = as_float(element).float_kind;
  } else {
    return 0;
  }
  if (count.kind != ck_integer || third.kind != ck_integer) return 0;
  bool overflow = false;
  *flag = unsigned_value_of_integer_constant(&third, &overflow) != 0;
  return unsigned_value_of_integer_constant(&count, &overflow);
}

static void cl_vector_specifier(a_specifier_scan *scan)
{
  int int_kind = -1, float_kind = -1;
  bool third = false;
  a_source_position position = pos_curr_token;
  bool allowed = type_specifier_allowed(scan);
  uint64_t size = scan_cl_vector_builtin(&int_kind, &float_kind, &third);
  if (!allowed) return;
  if (any_type_specifier(scan)) {
    bad_type_combination(scan, position);
    return;
  }
  scan->kind = spk_cl_vector;
  scan->type = size ? cl_vector_type(size, int_kind, float_kind, third) : nullptr;
}

//---------------------------------------------------------------------------------------------
// Qualifiers and attributes.

// Adds one qualifier; 84 on a repetition (C99 6.7.3p4 allows it).
static void type_qualifier(a_specifier_scan *scan, unsigned qualifier)
{
  a_decl_parse_state *state = scan->state;
  if (state->type_qualifiers & qualifier) {
    an_error_severity severity = es_warning;
    if (strict_ansi_mode && !c99_mode) severity = strict_ansi_error_severity;
    if (c99_mode) severity = es_remark;
    pos_diagnostic(severity, ec_dupl_type_qualifier, pos_curr_token);
  }
  if (curr_token == tok_gnu_restrict && report_gnu_extensions) {
    pos_warning(ec_gnu_restrict_is_nonstandard, pos_curr_token);
  }
  if (qualifier == tq_restrict) {
    state->restrict_position = pos_curr_token;
  } else if (is_null_position(state->const_position)) {
    state->const_position = pos_curr_token;
  }
  if (is_null_position(state->qualified_position)) state->qualified_position = pos_curr_token;
  state->type_qualifiers |= qualifier;
  get_token();
}

static void attribute_specifier(a_specifier_scan *scan)
{
  a_source_position position = pos_curr_token;
  an_attribute *list = scan_attributes(al_specifiers);
  if (scan->options & dso_secondary) {
    pos_warning(ec_secondary_specifier_ignored, position);
    return;
  }
  *f_last_attribute_link(&scan->state->type_attributes) = list;
}

// `[[` at the start of the list or, behind it, an attribute of the type.
static bool std_attribute_specifier(a_specifier_scan *scan)
{
  if (!std_attributes_enabled || next_token() != tok_lbracket) return false;
  if (scan->seen_any) {
    attribute_specifier(scan);
    return true;
  }
  if (!(scan->options & dso_std_attributes_ok)) {
    pos_error(ec_attribute_not_allowed, pos_curr_token);
  }
  attribute_specifier(scan);
  return true;
}

//---------------------------------------------------------------------------------------------
// The loop.

static bool is_secondary_refused(const a_specifier_scan *scan)
{
  switch (curr_token) {
  case tok_auto:
  case tok_extern:
  case tok_register:
  case tok_static:
  case tok_mutable:
  case tok_typedef:
  case tok_friend:
  case tok_inline:
  case tok_virtual:
  case tok_explicit:
  case tok_thread: return scan->options & dso_secondary;
  default: return false;
  }
}

// Whether a type keyword behind a type definition means that a `;` was forgotten.
static bool missing_semicolon(a_specifier_scan *scan)
{
  if (!(scan->options & dso_check_missing_semicolon)) return false;
  if (!(scan->state->specifier_flags & sf_defines_type) || !scan->enum_or_class_alone) return false;
  if (gcc_mode && scan->state->storage_class == sc_typedef) return false;
  switch (curr_token) {
  case tok_void:
  case tok_char:
  case tok_short:
  case tok_int:
  case tok_long:
  case tok_float:
  case tok_double:
  case tok_signed:
  case tok_unsigned:
  case tok_wchar_t:
  case tok_bool:
  case tok_c99_bool:
  case tok_char16_t:
  case tok_char32_t:
  case tok_int40_t:
  case tok_struct:
  case tok_union:
  case tok_enum:
  case tok_class: break;
  case tok_auto:
    if (auto_storage_class_specifier_enabled) return false;
    break;
  default: return false;
  }
  scan->state->specifier_flags |= sf_missing_semicolon_suspected;
  return true;
}

static void storage_token(a_specifier_scan *scan, a_storage_class storage, bool is_mutable = false)
{
  storage_class_specifier(scan, storage, is_mutable);
  get_token();
}

static void type_keyword(a_specifier_scan *scan, a_specifier_kind kind)
{
  simple_type_keyword(scan, kind);
  get_token();
}

// Handles the specifier at the current token; false when no specifier stands there.
static bool function_or_storage_specifier(a_specifier_scan *scan)
{
  switch (curr_token) {
  case tok_extern:
    if (C_dialect == 2 && next_token() == tok_string_literal) {
      pos_error(ec_linkage_specifier_not_allowed, pos_curr_token);
      get_token();
      get_token();
      return true;
    }
    storage_token(scan, sc_extern);
    return true;
  case tok_static: storage_token(scan, sc_static); return true;
  case tok_register: storage_token(scan, sc_register); return true;
  case tok_typedef: storage_token(scan, sc_typedef); return true;
  case tok_mutable: storage_token(scan, sc_unspecified, true); return true;
  case tok_auto: storage_token(scan, sc_auto); return true;
  case tok_inline: inline_specifier(scan); return true;
  case tok_friend: friend_specifier(scan); return true;
  case tok_virtual: virtual_specifier(scan); return true;
  case tok_explicit: explicit_specifier(scan); return true;
  case tok_thread: thread_specifier(scan); return true;
  case tok_near: target_modifier(scan, dm_near); return true;
  case tok_far: target_modifier(scan, dm_far); return true;
  case tok_shared: target_modifier(scan, dm_shared); return true;
  case tok_sharedpp: target_modifier(scan, dm_sharedpp); return true;
  case tok_trap: target_modifier(scan, dm_trap); return true;
  case tok_interrupt:
  case tok_interrupt_keyword: target_modifier(scan, dm_interrupt); return true;
  case tok_reentrant: target_modifier(scan, dm_reentrant); return true;
  case tok_cregister: target_modifier(scan, dm_cregister); return true;
  case tok_global: target_modifier(scan, dm_global); return true;
  case tok_overload:
    pos_diagnostic(anachronism_error_severity, ec_overload_anachronism, pos_curr_token);
    get_token();
    return true;
  case tok_at_sign: consume_paren_address(); return true;
  case tok_data16:
  case tok_data20:
  case tok_memory_of: consume_memory_of_or_data16_20(); return true;
  case tok_attribute:
  case tok_declspec: attribute_specifier(scan); return true;
  case tok_lbracket: return std_attribute_specifier(scan);
  default: return false;
  }
}

static void template_keyword_in_specifiers(a_specifier_scan *scan)
{
  pos_error(ec_template_not_allowed, pos_curr_token);
  get_token();
  if (curr_token == tok_lt) {
    flush_until_matching_token();
    if (curr_token == tok_gt) get_token();
  }
  scan->error_seen = true;
  scan->kind = spk_error;
}

static void typename_specifier_token(a_specifier_scan *scan)
{
  a_source_position position = pos_curr_token;
  bool allowed = type_specifier_allowed(scan);
  a_type *type = nullptr;
  a_symbol *symbol = nullptr;
  typename_specifier(&type, &symbol, false, scan->pos_block);
  if (!allowed) return;
  if (any_type_specifier(scan)) {
    pos_diagnostic(es_discretionary_error, ec_invalid_typename_specifier, position);
    return;
  }
  scan->kind = spk_typename;
  scan->type = type;
}

static bool type_specifier(a_specifier_scan *scan)
{
  switch (curr_token) {
  case tok_void: type_keyword(scan, spk_void); return true;
  case tok_char: type_keyword(scan, spk_char); return true;
  case tok_wchar_t: type_keyword(scan, spk_wchar_t); return true;
  case tok_char16_t: type_keyword(scan, spk_char16_t); return true;
  case tok_char32_t: type_keyword(scan, spk_char32_t); return true;
  case tok_bool:
  case tok_c99_bool: type_keyword(scan, spk_bool); return true;
  case tok_int: type_keyword(scan, spk_int); return true;
  case tok_float: type_keyword(scan, spk_float); return true;
  case tok_double: type_keyword(scan, spk_double); return true;
  case tok_long:
    long_specifier(scan);
    get_token();
    return true;
  case tok_short:
    short_specifier(scan);
    get_token();
    return true;
  case tok_int40_t:
    int40_specifier(scan);
    get_token();
    return true;
  case tok_signed:
    sign_specifier(scan, sign_signed);
    get_token();
    return true;
  case tok_unsigned:
    sign_specifier(scan, sign_unsigned);
    get_token();
    return true;
  case tok_complex:
    complex_specifier(scan, complex_complex);
    get_token();
    return true;
  case tok_imaginary:
    complex_specifier(scan, complex_imaginary);
    get_token();
    return true;
  case tok_struct:
  case tok_union:
  case tok_class: class_specifier_token(scan); return true;
  case tok_enum: enum_specifier_token(scan); return true;
  case tok_cl_vector: cl_vector_specifier(scan); return true;
  case tok_typeof:
  case tok_decltype:
  case tok_underlying_type: operator_type_specifier(scan); return true;
  case tok_typename: typename_specifier_token(scan); return true;
  case tok_template: template_keyword_in_specifiers(scan); return true;
  case tok_identifier:
  case tok_colon_colon: return type_name_specifier(scan);
  default: return false;
  }
}

static bool one_specifier(a_specifier_scan *scan)
{
  if (curr_token == tok_const) return type_qualifier(scan, tq_const), true;
  if (curr_token == tok_volatile) return type_qualifier(scan, tq_volatile), true;
  if (curr_token == tok_restrict || curr_token == tok_gnu_restrict) {
    return type_qualifier(scan, tq_restrict), true;
  }
  if (scan->options & dso_qualifiers_only) {
    if (curr_token == tok_inline && !(scan->options & dso_secondary)) {
      pos_warning(ec_inline_qualifier_ignored, pos_curr_token);
      get_token();
      return true;
    }
    if (curr_token == tok_attribute && gnu_attributes_enabled)
      return attribute_specifier(scan), true;
    return false;
  }
  if (missing_semicolon(scan)) return false;
  if (is_secondary_refused(scan)) {
    pos_warning(ec_secondary_specifier_ignored, pos_curr_token);
    get_token();
    return true;
  }
  if (function_or_storage_specifier(scan)) return true;
  if (curr_token == tok_ellipsis) {
    if (variadic_templates_enabled && !any_type_specifier(scan) && C_dialect == 2 &&
        !(scan->options & (dso_parameter | dso_type_optional))) {
      pos_error(ec_parameter_pack_decl_not_allowed, pos_curr_token);
    }
    return false;
  }
  return type_specifier(scan);
}

//---------------------------------------------------------------------------------------------
// Behind the loop.

static void report_deferred_error(a_specifier_scan *scan)
{
  if (scan->deferred_error == ec_no_error) return;
  if (scan->state->storage_class == sc_typedef && curr_token == tok_semicolon) {
    pos_warning(scan->deferred_error, scan->deferred_position);
    return;
  }
  if (!scan->error_seen) pos_error(scan->deferred_error, scan->deferred_position);
  scan->error_seen = true;
  scan->kind = spk_error;
}

static void set_result_flags(a_specifier_scan *scan)
{
  a_decl_parse_state *state = scan->state;
  if (any_type_specifier(scan)) state->specifier_flags |= sf_has_type_specifier;
  if (!scan->seen_any) state->specifier_flags |= sf_no_specifiers;
  if (scan->sign_word == sign_signed) state->specifier_flags |= sf_written_signed;
  if (scan->error_seen) state->specifier_flags |= sf_is_in_error;
  bool qualified = state->type_qualifiers != 0;
  if (scan->only_void && !qualified && state->storage_class == sc_unspecified &&
      !any_type_word(scan)) {
    state->specifier_flags |= sf_is_void_only;
  }
  bool friend_alone = (state->specifier_flags & sf_is_friend) && curr_token == tok_semicolon;
  if ((scan->enum_or_class_alone && !scan->error_seen && !any_type_word(scan)) || friend_alone) {
    state->specifier_flags |= sf_is_type_declaration;
  }
  if (scan->kind == spk_typename) state->specifier_flags |= sf_is_typename_declaration;
}

static void set_error_position_to_first_specifier(const a_decl_parse_state *state)
{
  if (!is_null_position(state->start_position)) error_position = state->start_position;
}

void decl_specifiers(uint32_t options, a_decl_parse_state *state, a_decl_pos_block *pos_block)
{
  a_specifier_scan scan = {};
  scan.state = state;
  scan.pos_block = pos_block;
  scan.options = options;
  state->specifiers_options = options;
  if (is_null_position(state->start_position)) state->start_position = pos_curr_token;
  state->specifiers_range.start = pos_curr_token;
  state->specifiers_range.end = pos_curr_token;
  if (pos_block) pos_block->specifier_first = pos_curr_token;
  for (;;) {
    a_source_position end = end_pos_curr_token;
    if (!one_specifier(&scan)) break;
    scan.seen_any = true;
    state->specifiers_range.end = end;
  }
  if (pos_block) pos_block->specifier_last = state->specifiers_range.end;
  if (options & dso_qualifiers_only) return;
  if (scan.auto_is_undecided) decide_auto(&scan);
  if (C_dialect == 2) special_member_specifier(&scan);
  report_deferred_error(&scan);
  if (check_misra_c_2004) check_basic_type(&scan);
  set_result_flags(&scan);
  build_specifier_type(&scan);
  state->effective_storage_class = state->storage_class;
  if (state->specifiers_attributes) {
    add_flags_from_dll_attributes(&state->decl_modifiers, state->specifiers_attributes);
    if ((state->decl_modifiers & dm_dllimport) && state->storage_class == sc_unspecified) {
      state->effective_storage_class = sc_extern;
    }
  }
  state->declared_type = state->type_specifier;
  state->bottom_type = state->type_specifier;
  set_error_position_to_first_specifier(state);
}

void collect_type_qualifiers(a_decl_pos_block *pos_block, unsigned *qualifiers)
{
  a_decl_parse_state state = null_decl_parse_state;
  state.start_position = pos_curr_token;
  decl_specifiers(dso_qualifiers_only, &state, pos_block);
  *qualifiers = state.type_qualifiers;
}

void decl_spec_init()
{
  free_end_of_parse_actions = nullptr;
  free_param_ids = nullptr;
}
