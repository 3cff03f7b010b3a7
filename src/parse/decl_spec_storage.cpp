// decl_spec_storage.cpp - storage classes, function specifiers and target modifiers.
// Rule:    every breach is reported at the specifier, which is then left out.
// See:     C99 6.7.1, 6.7.4.
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "lex/token_cache.h"
#include "parse/attribute.h"
#include "parse/decl_spec_scan.h"
#include "parse/scope_stk.h"

//---------------------------------------------------------------------------------------------
// Storage classes.

static bool decl_at_file_scope()
{
  a_scope_kind kind = scope_stack[decl_scope_level].kind;
  return kind == sck_file || kind == sck_namespace || kind == sck_namespace_extension;
}

// Whether the place takes storage classes at all, and no other came before.
static bool storage_class_may_appear(a_specifier_scan *scan, a_storage_class storage)
{
  a_decl_parse_state *state = scan->state;
  if (!(scan->options & dso_storage_class_ok)) {
    bool is_cpp_typedef = C_dialect == 2 && storage == sc_typedef;
    pos_error(is_cpp_typedef ? ec_typedef_not_allowed : ec_storage_class_not_allowed,
              pos_curr_token);
    return false;
  }
  if (scan->storage_seen || (state->specifier_flags & sf_is_mutable)) {
    a_source_position position = pos_curr_token;
    // `auto` may have been meant as a type: the other one is the storage class then.
    if (storage != sc_auto && state->storage_class == sc_auto && auto_type_specifier_enabled) {
      position = state->auto_position;
    }
    pos_error(ec_mult_storage_classes, position);
    return false;
  }
  if ((state->specifier_flags & sf_is_inline) && C_dialect == 2 && storage != sc_static &&
      !(extern_inline_allowed && storage == sc_extern)) {
    pos_error(ec_bad_storage_class_with_inline, pos_curr_token);
    return false;
  }
  return true;
}

static bool parameter_storage_class_ok(a_specifier_scan *scan, a_storage_class storage)
{
  if (storage == sc_register || (storage == sc_auto && C_dialect == 2)) return true;
  if (storage == sc_typedef) {
    if (scan->options & dso_typedef_ok_in_param) return true;
    pos_error(ec_typedef_not_allowed, pos_curr_token);
    return false;
  }
  pos_error(ec_bad_param_storage_class, pos_curr_token);
  return false;
}

static void mutable_specifier(a_specifier_scan *scan)
{
  a_decl_parse_state *state = scan->state;
  if (!(scan->options & dso_member) || (state->specifier_flags & sf_is_friend)) {
    pos_error(ec_mutable_not_allowed, pos_curr_token);
    return;
  }
  state->specifier_flags |= sf_is_mutable;
  state->mutable_position = pos_curr_token;
  if (report_embedded_cplusplus_noncompliance) {
    embedded_cplusplus_noncompliance_diagnostic(pos_curr_token, ec_mutable_in_embedded_cplusplus);
  }
}

// Members, templates and the restricted contexts.
static bool context_allows_storage_class(a_specifier_scan *scan, a_storage_class storage)
{
  a_source_position position = pos_curr_token;
  uint32_t options = scan->options;
  an_error_code refused = C_dialect == 2 && storage == sc_typedef ? ec_typedef_not_allowed
                                                                  : ec_storage_class_not_allowed;
  if ((options & dso_member) && storage != sc_static && storage != sc_typedef) {
    pos_error(ec_bad_member_storage_class, position);
    return false;
  }
  if ((options & dso_storage_refused) && storage != sc_static && storage != sc_extern) {
    pos_error(refused, position);
    return false;
  }
  if ((options & dso_storage_refused_in_c) && !gpp_mode) {
    pos_error(ec_storage_class_not_allowed, position);
    return false;
  }
  if ((options & dso_template) && storage != sc_extern && storage != sc_static) {
    pos_error(storage == sc_typedef ? ec_typedef_not_allowed
                                    : ec_bad_storage_class_on_template_decl,
              position);
    return false;
  }
  if (options & dso_restricted_storage) {
    if (storage != sc_auto && storage != sc_register) {
      pos_error(ec_storage_class_not_allowed, position);
      return false;
    }
    if (strict_ansi_mode) {
      pos_diagnostic(strict_ansi_error_severity, ec_storage_class_not_allowed, position);
    }
  }
  return true;
}

// C99 6.9p2: no auto and register at file scope.  `register` there is the target's "global".
static bool file_scope_storage_class_ok(a_specifier_scan *scan, a_storage_class storage)
{
  if ((scan->options & (dso_parameter | dso_member)) || !decl_at_file_scope()) return true;
  if (storage == sc_register) {
    scan->state->decl_modifiers |= dm_global;
    // A register name may follow, which needs the storage class (GNU).
    return gcc_mode || gpp_mode;
  }
  if (C_dialect != 2 && storage == sc_auto) {
    if (gcc_mode) {
      pos_warning(ec_auto_ignored, pos_curr_token);
    } else {
      pos_error(ec_bad_file_scope_storage_class, pos_curr_token);
    }
    return false;
  }
  return true;
}

void storage_class_specifier(a_specifier_scan *scan, a_storage_class storage, bool is_mutable)
{
  a_decl_parse_state *state = scan->state;
  if (storage == sc_auto && !is_mutable) {
    if (scan->auto_seen) {
      bool names_type = auto_type_specifier_enabled && !auto_storage_class_specifier_enabled;
      pos_error(names_type ? ec_bad_combination_of_type_specifiers : ec_mult_storage_classes,
                pos_curr_token);
      return;
    }
    scan->auto_seen = true;
    state->auto_position = pos_curr_token;
    if (auto_type_specifier_enabled) {
      scan->auto_is_undecided = true;
      if (!auto_storage_class_specifier_enabled) return;
      if (!scan->storage_seen) return;
    }
  }
  if (!storage_class_may_appear(scan, storage)) return;
  if (is_mutable) {
    mutable_specifier(scan);
    return;
  }
  if ((scan->options & dso_parameter) && !parameter_storage_class_ok(scan, storage)) return;
  if (state->specifier_flags & sf_is_friend) {
    pos_error(ec_storage_class_in_friend_decl, pos_curr_token);
    return;
  }
  if (!context_allows_storage_class(scan, storage)) return;
  if (!file_scope_storage_class_ok(scan, storage)) return;
  if (c99_mode && state->c99_for_init && storage != sc_auto && storage != sc_register) {
    pos_error(ec_invalid_storage_class_in_for_init, pos_curr_token);
    return;
  }
  if (scan->seen_any && C_dialect == 0 && (any_type_specifier(scan) || state->type_qualifiers)) {
    pos_diagnostic(strict_ansi_mode ? es_warning : es_remark, ec_storage_class_not_first,
                   pos_curr_token);
  }
  scan->storage_seen = true;
  state->storage_class = storage;
  state->storage_class_position = pos_curr_token;
  if (scan->pos_block) scan->pos_block->storage_class_position = pos_curr_token;
}

// The type that `auto` stands for until an initializer gives one.
static a_type *make_auto_placeholder_type()
{
  a_type *type = alloc_type(tk_template_param);
  as_template_param(type).template_param_supplement->level = -1;
  return type;
}

// `auto` with no other type specifier is a type where that reading exists.
void decide_auto(a_specifier_scan *scan)
{
  a_decl_parse_state *state = scan->state;
  if (!any_type_specifier(scan) && !scan->storage_seen) {
    state->auto_type_pending = true;
    scan->kind = spk_type_name;
    scan->type = state->auto_placeholder = make_auto_placeholder_type();
    return;
  }
  if (!auto_storage_class_specifier_enabled) {
    if (any_type_specifier(scan)) {
      pos_error(ec_bad_combination_of_type_specifiers, state->auto_position);
      scan->error_seen = true;
      return;
    }
    state->auto_type_pending = true;
    scan->kind = spk_type_name;
    scan->type = state->auto_placeholder = make_auto_placeholder_type();
    return;
  }
  if (!scan->storage_seen) {
    state->storage_class = sc_auto;
    state->storage_class_position = state->auto_position;
  }
}

//---------------------------------------------------------------------------------------------
// Function specifiers.

void inline_specifier(a_specifier_scan *scan)
{
  a_decl_parse_state *state = scan->state;
  a_source_position position = pos_curr_token;
  if (scan->options & dso_parameter) {
    pos_error(ec_bad_param_specifier, position);
  } else if (!(scan->options & dso_inline_ok)) {
    pos_diagnostic(gcc_mode || gpp_mode ? es_warning : es_error, ec_inline_not_allowed, position);
  } else if (state->specifier_flags & sf_is_inline) {
    pos_diagnostic(c99_mode || gcc_mode ? es_warning : es_error, ec_dupl_decl_specifier, position);
  } else {
    bool bad_storage = C_dialect == 2 && scan->storage_seen && state->storage_class != sc_static &&
                       !(extern_inline_allowed && state->storage_class == sc_extern);
    if (bad_storage) {
      pos_error(ec_bad_storage_class_with_inline, position);
    } else {
      state->specifier_flags |= sf_is_inline;
      state->inline_position = position;
    }
  }
  get_token();
}

// In the cfront modes `friend name;` stands as `friend class name;`.
static void friend_without_class(a_specifier_scan *scan)
{
  if (!(cfront_2_1_mode || cfront_3_0_mode) || scan->seen_any) return;
  a_token_kind second = tok_error;
  if (next_two_tokens(tok_identifier, &second) == tok_identifier && second == tok_semicolon) {
    pos_st_remark(ec_nonstd_friend_decl, pos_curr_token, "class");
  }
}

void friend_specifier(a_specifier_scan *scan)
{
  a_decl_parse_state *state = scan->state;
  a_source_position position = pos_curr_token;
  if (scan->options & dso_parameter) {
    pos_error(ec_bad_param_specifier, position);
  } else if (!(scan->options & dso_member)) {
    pos_error(ec_bad_specifier_outside_class_decl, position);
  } else if (state->specifier_flags & sf_is_friend) {
    pos_error(ec_dupl_decl_specifier, position);
  } else if (scan->storage_seen) {
    pos_error(ec_storage_class_in_friend_decl, position);
  } else if (state->specifier_flags & sf_is_mutable) {
    pos_error(ec_mutable_not_allowed, position);
  } else {
    friend_without_class(scan);
    state->specifier_flags |= sf_is_friend;
  }
  get_token();
}

void virtual_specifier(a_specifier_scan *scan)
{
  a_decl_parse_state *state = scan->state;
  a_source_position position = pos_curr_token;
  if (scan->options & dso_parameter) {
    pos_error(ec_bad_param_specifier, position);
  } else if ((scan->options & dso_template) && !(scan->options & dso_member)) {
    pos_error(ec_virtual_function_template, position);
  } else if (!(scan->options & dso_member)) {
    pos_error(ec_bad_specifier_outside_class_decl, position);
  } else if (state->specifier_flags & sf_is_friend) {
    pos_error(ec_virtual_not_allowed, position);
  } else if (state->specifier_flags & sf_is_virtual) {
    pos_error(ec_dupl_decl_specifier, position);
  } else {
    state->specifier_flags |= sf_is_virtual;
    state->virtual_position = position;
  }
  get_token();
}

void explicit_specifier(a_specifier_scan *scan)
{
  a_decl_parse_state *state = scan->state;
  if (scan->options & dso_parameter) {
    pos_error(ec_bad_param_specifier, pos_curr_token);
  } else if (!(scan->options & dso_member)) {
    pos_error(ec_explicit_not_allowed, pos_curr_token);
  } else if (state->specifier_flags & sf_is_explicit) {
    pos_error(ec_dupl_decl_specifier, pos_curr_token);
  } else {
    state->specifier_flags |= sf_is_explicit;
  }
  get_token();
}

//---------------------------------------------------------------------------------------------
// Target modifiers.

void thread_specifier(a_specifier_scan *scan)
{
  a_decl_parse_state *state = scan->state;
  if (scan->options & dso_parameter) {
    pos_error(ec_cannot_use_thread_local_storage, pos_curr_token);
  } else if (state->decl_modifiers & dm_thread) {
    pos_error(ec_multiple_thread_local_storage_specifiers, pos_curr_token);
  } else {
    state->decl_modifiers |= dm_thread;
  }
  get_token();
}

void target_modifier(a_specifier_scan *scan, uint32_t modifier)
{
  a_source_position position = pos_curr_token;
  if (scan->options & dso_parameter) {
    pos_warning(ec_bad_param_storage_class, position);
  } else if (!(scan->options & dso_storage_class_ok) || (scan->options & dso_restricted_storage)) {
    pos_error(ec_storage_class_not_allowed, position);
  } else {
    scan->state->decl_modifiers |= modifier;
  }
  if (modifier == dm_interrupt && ulp_standalone_ext && next_token() == tok_lparen) {
    // `interrupt(vector)` stands for a function that returns nothing.
    consume_paren_address();
    if (!any_type_specifier(scan)) scan->kind = spk_void;
    return;
  }
  get_token();
}

// `@ address` and `interrupt(address)`: read and dropped.
void consume_paren_address()
{
  get_token();
  if (curr_token == tok_lparen) {
    flush_until_matching_token();
    if (curr_token == tok_rparen) get_token();
  } else if (curr_token == tok_int_constant || curr_token == tok_identifier) {
    get_token();
  }
}

void consume_memory_of_or_data16_20()
{
  bool has_operand = curr_token == tok_memory_of;
  get_token();
  if (has_operand && curr_token == tok_lparen) {
    flush_until_matching_token();
    if (curr_token == tok_rparen) get_token();
  }
}

//---------------------------------------------------------------------------------------------
// dll attributes.

static uint32_t dll_flag_of_attribute(const an_attribute *attribute)
{
  switch (attribute->kind) {
  case ak_dllimport: return dm_dllimport;
  case ak_dllexport: return dm_dllexport;
  case ak_notshared: return dm_notshared;
  default: return 0;
  }
}

void add_flags_from_dll_attributes(uint32_t *flags, an_attribute *attributes)
{
  constexpr uint32_t dll_mask = dm_dllimport | dm_dllexport | dm_notshared;
  for (an_attribute *attribute = attributes; attribute; attribute = attribute->next) {
    uint32_t flag = dll_flag_of_attribute(attribute);
    if (!flag) continue;
    if ((*flags & dll_mask) && !(*flags & flag)) {
      pos_warning(ec_bad_combination_of_dll_attributes, attribute->position);
      continue;
    }
    *flags |= flag;
  }
}

void scan_extended_decl_modifiers(an_extended_decl_info_block *info, an_attribute **attributes,
                                  int where)
{
  while (curr_token == tok_declspec) {
    if (is_null_position(info->position)) info->position = pos_curr_token;
    *f_last_attribute_link(attributes) = scan_attributes((an_attribute_location_tag)where);
  }
  add_flags_from_dll_attributes(&info->dll_flags, *attributes);
}
