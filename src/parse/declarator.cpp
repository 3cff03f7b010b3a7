// declarator.cpp - declarators: pointers, nesting, the name, and the type that the parts build.
// Owns:    the stack records of parts.
// Rule:    parts are read from the name outward and applied from the specifiers' type inward, so
//          that every part knows the type that it derives from and is checked once.
// Entry:   declarator.
// See:     C99 6.7.5.
#include "parse/declarator.h"

#include <cstring>

#include "driver/flags.h"
#include "errors/error.h"
#include "errors/misra_hooks.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/token_cache.h"
#include "mem/mem_manage.h"
#include "mem/stack_limit.h"
#include "parse/attribute.h"
#include "parse/decls.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"

// One declarator while it is read.
struct a_declarator_scan {
  uint32_t options;
  a_decl_parse_state *state;
  a_symbol_locator *locator;
  a_func_info_block *func_info;
  a_decl_pos_block *pos_block;
  a_declarator_part *last; // the part farthest from the name
  bool name_seen : 1;
  bool abstract : 1; // it is settled that no name comes
};

static a_declarator_part *free_parts;

static a_declarator_part *alloc_part(a_declarator_part_kind kind)
{
  a_declarator_part *part = free_parts;
  if (part) {
    free_parts = part->closer;
  } else {
    part = (a_declarator_part *)alloc_in_region(0, sizeof(a_declarator_part));
  }
  memset((void *)part, 0, sizeof *part);
  part->kind = kind;
  part->position = pos_curr_token;
  return part;
}

static void free_part(a_declarator_part *part)
{
  part->closer = free_parts;
  free_parts = part;
}

static void push_part(a_declarator_scan *scan, a_declarator_part *part)
{
  part->closer = scan->last;
  scan->last = part;
}

//---------------------------------------------------------------------------------------------
// Pointer operators.

// C++: `A::*` becomes one token; so does the qualified name that a declarator may begin with instead.
static bool at_ptr_to_member()
{
  if (C_dialect != 2) return false;
  if (curr_token == tok_identifier || curr_token == tok_colon_colon)
    f_is_generalized_identifier_start(gid_destructor_name_allowed | gid_in_declaration, nullptr);
  return curr_token == tok_ptr_to_member;
}

static bool pointer_operator_kind(a_declarator_part_kind *kind)
{
  at_ptr_to_member();
  switch (curr_token) {
  case tok_star: *kind = dpk_pointer; return true;
  case tok_ampersand: *kind = dpk_reference; return C_dialect == 2;
  case tok_and_and:
    *kind = dpk_rvalue_reference;
    return C_dialect == 2 && rvalue_references_enabled;
  case tok_ptr_to_member: *kind = dpk_ptr_to_member; return C_dialect == 2;
  default: return false;
  }
}

static void consume_memory_words()
{
  while (ulp_standalone_ext &&
         (curr_token == tok_data16 || curr_token == tok_data20 || curr_token == tok_memory_of)) {
    get_token();
  }
}

// Qualifiers and attributes behind a pointer operator.
static void pointer_qualifiers(a_declarator_part *part)
{
  consume_memory_words();
  a_decl_parse_state state = null_decl_parse_state;
  state.start_position = pos_curr_token;
  decl_specifiers(dso_qualifiers_only, &state, nullptr);
  part->qualifiers = state.type_qualifiers;
  part->attributes = state.type_attributes;
  part->restrict_position = state.restrict_position;
  if (part->qualifiers && (part->kind == dpk_reference || part->kind == dpk_rvalue_reference)) {
    unsigned refused = part->qualifiers & ~tq_restrict;
    if (refused) {
      pos_diagnostic(strict_ansi_mode ? strict_ansi_error_severity : es_warning,
                     ec_qualified_reference_type, state.qualified_position);
    }
    part->qualifiers &= tq_restrict;
  }
}

// Reads the pointer operators; the first one is applied first, so it ends up deepest in the stack.
static a_declarator_part *pointer_operators()
{
  a_declarator_part *parts = nullptr;
  a_declarator_part_kind kind;
  while (pointer_operator_kind(&kind)) {
    a_declarator_part *part = alloc_part(kind);
    if (kind == dpk_ptr_to_member) part->type = locator_for_curr_id.qualifier.class_type;
    get_token();
    pointer_qualifiers(part);
    part->closer = parts;
    parts = part;
  }
  return parts;
}

//---------------------------------------------------------------------------------------------
// Building the type.

static a_type *pointer_to(a_declarator_part *part, a_type *base)
{
  if (is_any_reference_type(base)) {
    pos_error(ec_pointer_to_reference, part->position);
    return error_type();
  }
  a_type *type = make_pointer_type(base);
  unsigned qualifiers = part->qualifiers;
  if ((qualifiers & tq_restrict) &&
      !restrict_qualifier_is_allowed(type, &part->restrict_position)) {
    qualifiers &= ~tq_restrict;
  }
  return qualifiers ? f_make_qualified_type(type, qualifiers, -1) : type;
}

static a_type *reference_to(a_declarator_part *part, a_type *base)
{
  if (is_any_reference_type(base)) {
    pos_error(ec_reference_to_reference, part->position);
    return error_type();
  }
  if (is_void_type(base)) {
    pos_error(ec_reference_to_void, part->position);
    return error_type();
  }
  a_type *type =
      part->kind == dpk_reference ? make_reference_type(base) : make_rvalue_reference_type(base);
  return part->qualifiers ? f_make_qualified_type(type, part->qualifiers, -1) : type;
}

static a_type *member_pointer_to(a_declarator_part *part, a_type *base)
{
  if (part->type == nullptr || !is_class_struct_union_type(part->type)) {
    pos_error(ec_class_type_required, part->position);
    return error_type();
  }
  if (is_void_type(base) || is_any_reference_type(base)) {
    pos_ty_error(ec_bad_member_type_in_ptr_to_member, part->position, base);
    return error_type();
  }
  a_type *bare = skip_typerefs(base);
  if (bare->kind == tk_routine && routine_supplement_of(bare)->this_class == nullptr) {
    base = copy_type(bare); // of a member function, which has an object
    routine_supplement_of(base)->this_class = skip_typerefs(part->type);
  }
  a_type *type = ptr_to_member_type_full(base, part->type, 0);
  return part->qualifiers ? f_make_qualified_type(type, part->qualifiers, -1) : type;
}

// C99 6.7.5.2p1: elements are complete objects.
static bool element_type_ok(a_type *element, a_source_position position)
{
  a_type *type = skip_typerefs(element);
  switch (type->kind) {
  case tk_routine: pos_error(ec_array_of_function, position); return false;
  case tk_void: pos_error(ec_array_of_void, position); return false;
  case tk_array:
    if (!is_incomplete_array_type(type)) return true;
    pos_error(ec_bad_array_element_type, position);
    return false;
  default: break;
  }
  if (is_any_reference_type(type)) {
    pos_error(ec_array_of_reference, position);
    return false;
  }
  if (!is_class_struct_union_type(type)) return true;
  if (as_class(type).abstract_known && as_class(type).is_abstract) {
    pos_ty_error(ec_array_of_abstract_class, position, element);
    return false;
  }
  if (as_class(type).has_flexible_array && !type->is_incomplete) {
    if (gcc_mode || gpp_mode) {
      pos_warning(ec_nonstandard_array_with_flexible_array_element, position);
    } else {
      pos_error(ec_flexible_array_member_not_allowed, position);
      return false;
    }
  }
  return true;
}

static bool incomplete_element_ok(a_type *element, a_source_position position)
{
  a_type *type = skip_typerefs(element);
  if (type->kind == tk_array || type->kind == tk_template_param || !is_incomplete_type(type)) {
    return true;
  }
  if (C_dialect == 2) {
    pos_error(ec_incomplete_type_not_allowed, position);
    return false;
  }
  if (strict_ansi_mode) {
    pos_diagnostic(strict_ansi_error_severity, ec_array_of_incomplete_type, position);
  }
  return true;
}

static a_type *array_of(a_declarator_part *part, a_type *element)
{
  if (part->type == nullptr || is_error_type(part->type)) return error_type();
  if (!element_type_ok(element, part->position)) return error_type();
  if (!incomplete_element_ok(element, part->position)) return error_type();
  a_type *array = part->type;
  as_array(array).element_type = element;
  a_source_position saved = error_position;
  error_position = part->position;
  set_array_type_size(array, true);
  error_position = saved;
  return array;
}

a_type *check_return_type(a_type *type, a_decl_parse_state *, a_source_position *position)
{
  if (is_function_type(type)) {
    pos_error(ec_function_returning_function, *position);
    return error_type();
  }
  if (is_array_type(type)) {
    pos_error(ec_function_returning_array, *position);
    return error_type();
  }
  if (is_variably_modified_type(type)) {
    pos_error(ec_vla_in_return_type, *position);
    return error_type();
  }
  return type;
}

// Qualifiers of a returned value mean nothing, but for classes in C++.
void report_bad_return_type_qualifier(a_type *type, a_source_position *position)
{
  if (get_type_qualifiers(type) == 0 || is_class_struct_union_type(type)) return;
  if (is_void_type(type)) return;
  pos_diagnostic(es_remark, ec_useless_type_qualifier_on_return_type, *position);
}

static a_type *function_returning(a_declarator_part *part, a_type *base, a_decl_parse_state *state)
{
  a_type *return_type = check_return_type(base, state, &part->position);
  if (!state->bad_declaration && !is_error_type(return_type)) {
    report_bad_return_type_qualifier(return_type, &part->position);
  }
  as_routine(part->type).return_type = return_type;
  return part->type;
}

a_type *apply_declarator_part(a_declarator_part *part, a_type *base, a_decl_parse_state *state)
{
  a_type *type = base;
  if (is_error_type(base) && part->kind != dpk_function && part->kind != dpk_pointer) {
    return error_type();
  }
  switch (part->kind) {
  case dpk_pointer: type = pointer_to(part, base); break;
  case dpk_reference:
  case dpk_rvalue_reference: type = reference_to(part, base); break;
  case dpk_ptr_to_member: type = member_pointer_to(part, base); break;
  case dpk_array: type = array_of(part, base); break;
  case dpk_function: type = function_returning(part, base, state); break;
  }
  if (part->attributes) attach_type_attributes(&type, part->attributes, state);
  return type;
}

// Builds the type and gives the parts back.
static a_type *build_type(a_declarator_scan *scan, a_type *base)
{
  a_type *type = base;
  while (scan->last) {
    a_declarator_part *part = scan->last;
    scan->last = part->closer;
    if (scan->last == nullptr) {
      if (part->kind == dpk_function) scan->state->declarator_flags |= df_is_function;
      if (part->kind == dpk_ptr_to_member) scan->state->declarator_flags |= df_is_pointer_to_member;
    }
    scan->state->declarator_flags |= df_is_derived;
    type = apply_declarator_part(part, type, scan->state);
    free_part(part);
  }
  return type;
}

//---------------------------------------------------------------------------------------------
// The name.

// The scope that the qualifier names is the one at hand: the qualifier says nothing.
static bool qualifier_names_current_scope(const a_symbol_locator *locator)
{
  a_scope_stack_entry *entry = decl_scope();
  if (locator->qualifier_is_class) {
    return entry->kind == sck_class &&
           identical_types(skip_typerefs(locator->qualifier.class_type), entry->assoc_type);
  }
  a_namespace *name_space = skip_namespace_aliases(locator->qualifier.name_space);
  if (name_space == nullptr) return entry->kind == sck_file;
  return entry->assoc_namespace == name_space;
}

static void drop_redundant_qualifier(a_declarator_scan *scan)
{
  a_symbol_locator *locator = scan->locator;
  an_error_severity severity = strict_ansi_mode       ? es_discretionary_error
                               : gcc_mode || gpp_mode ? es_remark
                                                      : es_warning;
  an_error_code code = ec_nonstd_qualifier_in_namespace_member_decl;
  if (scan->options & dop_friend) {
    code = ec_friend_qualification_ignored;
  } else if (decl_scope()->kind == sck_file) {
    code = ec_nonstd_qualifier_in_global_scope_decl;
  } else if (severity >= es_discretionary_error) {
    code = ec_qualifier_in_namespace_member_decl;
  }
  pos_diagnostic(severity, code, locator->position);
  clear_qualifier_from_locator(locator);
}

// Parameters and the rest of the declaration see the names of the class or namespace.
static void open_scope_of_name(a_declarator_scan *scan)
{
  a_symbol_locator *locator = scan->locator;
  int depth = depth_scope_stack;
  if (locator->qualifier_is_class) {
    a_type *class_type = skip_typerefs(locator->qualifier.class_type);
    if (!is_class_struct_union_type(class_type)) return;
    if (class_supplement_of(class_type)->class_scope == nullptr) return;
    push_class_reactivation_scope(class_type, false);
  } else if (locator->qualifier.name_space != nullptr) {
    f_push_namespace_reactivation_scope(locator->qualifier.name_space, false);
  }
  if (depth_scope_stack > depth) scan->state->depth_above_declarator_scopes = depth + 1;
}

static void qualified_name(a_declarator_scan *scan)
{
  if (qualifier_names_current_scope(scan->locator)) {
    drop_redundant_qualifier(scan);
  } else if (!(scan->options & dop_reactivate_scopes)) {
    pos_error(ec_qualified_name_not_allowed, scan->locator->position);
    scan->locator->header = nullptr;
  } else {
    open_scope_of_name(scan);
  }
}

void close_declarator_scopes(a_decl_parse_state *state)
{
  if (state->depth_above_declarator_scopes == 0) return;
  pop_scopes_above(state->depth_above_declarator_scopes - 1);
  state->depth_above_declarator_scopes = 0;
}

static void take_name(a_declarator_scan *scan)
{
  *scan->locator = locator_for_curr_id;
  scan->locator->symbol = nullptr;
  scan->locator->position = pos_curr_token;
  if (has_written_qualifier(scan->locator)) qualified_name(scan);
  scan->name_seen = true;
  scan->state->declarator_flags |= df_has_name;
  if (scan->state->in_parens) scan->state->declarator_flags |= df_is_declared_in_parens;
  if (scan->locator->is_qualified) scan->state->declarator_flags |= df_is_qualified;
  if (scan->pos_block) scan->pos_block->name_position = pos_curr_token;
  get_token();
}

static bool name_start()
{
  if (curr_token == tok_identifier) return true;
  if (C_dialect != 2) return false;
  return curr_token == tok_operator || curr_token == tok_compl || curr_token == tok_colon_colon;
}

// In C++ a name may be qualified, an operator or a destructor: the scanner makes it one token.
static bool coalesced_name()
{
  if (C_dialect != 2) return true;
  if (curr_token == tok_compl) {
    a_scope_stack_entry *entry = decl_scope();
    return scan_destructor_name(entry->kind == sck_class ? entry->assoc_type : nullptr);
  }
  if (!f_is_generalized_identifier_start(gid_destructor_name_allowed | gid_in_declaration,
                                         nullptr)) {
    return curr_token == tok_identifier;
  }
  return curr_token == tok_identifier;
}

static void missing_name(a_declarator_scan *scan)
{
  if (scan->options & dop_abstract_ok) return;
  error_position = pos_curr_token; // behind specifiers it is theirs
  syntax_error(ec_exp_identifier);
  *scan->locator = cleared_locator;
  scan->locator->position = error_position;
  scan->locator->is_qualified = true;
  scan->state->bad_declaration = true;
}

//---------------------------------------------------------------------------------------------
// The core.

static void declarator_core(a_declarator_scan *scan);

static void skip_declarator_attributes(a_declarator_scan *scan)
{
  if (curr_token != tok_attribute && curr_token != tok_declspec) return;
  an_attribute *list = scan_attributes(al_declarator);
  *f_last_attribute_link(&scan->state->declarator_attributes) = list;
}

// Moves the tokens of the attributes at hand into `cache`.
static void cache_attributes(a_token_cache *cache)
{
  unsigned depth = 0;
  while (curr_token != tok_end_of_source) {
    if (depth == 0 && curr_token != tok_attribute && curr_token != tok_lparen) return;
    if (curr_token == tok_lparen) ++depth;
    bool is_last = curr_token == tok_rparen && --depth == 0;
    cache_curr_token(cache);
    get_token();
    if (is_last && curr_token != tok_attribute) return;
  }
}

// Behind a `(` that was just taken: does a parameter list of an abstract declarator begin here?
static bool abstract_parameter_list(const a_declarator_scan *scan)
{
  if (!(scan->options & dop_abstract_ok) || scan->name_seen) return false;
  if (curr_token == tok_rparen) return true;
  if (curr_token == tok_ellipsis && next_token() == tok_rparen) return true;
  if (at_ptr_to_member()) return false;
  if (curr_token != tok_attribute) return is_decl_start(dst_parameter | dst_abstract_declarator);
  // An attribute may open both forms; what counts stands behind it.
  a_token_cache cache;
  clear_token_cache(&cache, false);
  cache_attributes(&cache);
  bool is_parameter = is_decl_start(dst_parameter | dst_abstract_declarator);
  rescan_cached_tokens(&cache);
  return is_parameter;
}

static void function_suffix(a_declarator_scan *scan)
{
  a_declarator_part *part = alloc_part(dpk_function);
  bool is_first = scan->last == nullptr;
  function_declarator(scan->options, scan->state, is_first ? scan->func_info : nullptr, part);
  push_part(scan, part);
}

static void array_suffix(a_declarator_scan *scan)
{
  a_declarator_part *part = alloc_part(dpk_array);
  bool is_first = scan->last == nullptr;
  array_declarator(scan->options, scan->state, is_first, part);
  push_part(scan, part);
}

// `( declarator )`; the `(` is taken already.
static void nested_declarator(a_declarator_scan *scan)
{
  bool saved_in_parens = scan->state->in_parens;
  scan->state->in_parens = true;
  add_stop_token(tok_rparen);
  skip_declarator_attributes(scan);
  declarator_core(scan);
  remove_stop_token(tok_rparen);
  required_token(tok_rparen, ec_exp_rparen);
  scan->state->in_parens = saved_in_parens;
  skip_declarator_attributes(scan);
}

// C++: `T x(1)`: a `(` behind which no parameter can begin opens an initializer.
static bool initializer_paren(const a_declarator_scan *scan)
{
  if (C_dialect != 2 || !scan->name_seen || scan->last != nullptr) return false;
  if (scan->options & (dop_parameter | dop_typedef | dop_type_name)) return false;
  a_token_kind second = next_token();
  if (second == tok_rparen || second == tok_ellipsis) return false;
  a_token_cache cache;
  clear_token_cache(&cache, false);
  cache_curr_token(&cache);
  get_token();
  bool is_parameter = is_decl_start(dst_parameter);
  rescan_cached_tokens(&cache);
  return !is_parameter;
}

static void suffixes(a_declarator_scan *scan)
{
  for (;;) {
    if (curr_token == tok_lbracket && !(scan->options & dop_no_array_or_function)) {
      array_suffix(scan);
    } else if (curr_token == tok_lparen &&
               !(scan->options & (dop_no_function | dop_no_array_or_function))) {
      if (initializer_paren(scan)) {
        scan->state->declarator_flags |= df_is_function_body_paren;
        return;
      }
      get_token();
      function_suffix(scan);
    } else {
      return;
    }
  }
}

static void direct_declarator(a_declarator_scan *scan)
{
  bool name_allowed = scan->options & dop_name_ok;
  if (name_allowed && name_start() && coalesced_name()) {
    take_name(scan);
  } else if (curr_token == tok_lparen &&
             !(scan->options & (dop_no_array_or_function | dop_no_function))) {
    get_token();
    if (abstract_parameter_list(scan)) {
      scan->abstract = true;
      function_suffix(scan);
    } else {
      nested_declarator(scan);
    }
  } else if (curr_token == tok_lbracket && (scan->options & dop_abstract_ok)) {
    scan->abstract = true;
  } else {
    missing_name(scan);
  }
  suffixes(scan);
}

static void declarator_core(a_declarator_scan *scan)
{
  check_recursion();
  a_declarator_part *pointers = pointer_operators();
  skip_declarator_attributes(scan);
  direct_declarator(scan);
  // The pointers stand outside everything that was read since; the last one is nearest to it.
  while (pointers) {
    a_declarator_part *part = pointers;
    pointers = part->closer;
    push_part(scan, part);
  }
}

//---------------------------------------------------------------------------------------------
// Entry.

// What an `auto` that stands for a deduced type can't be part of.
static void check_auto_in_declarator(a_decl_parse_state *state)
{
  if (!state->auto_type_pending) return;
  a_type *type = skip_typerefs(state->declared_type);
  an_error_code code = ec_no_error;
  if (type->kind == tk_array) {
    code = ec_auto_type_in_array_type;
  } else if (type->kind == tk_routine) {
    code = trailing_return_types_enabled ? ec_missing_trailing_return_type
                                         : ec_auto_type_in_function_type;
  }
  if (code == ec_no_error) return;
  pos_error(code, state->auto_position);
  state->auto_type_pending = false;
  state->declared_type = error_type();
}

// MISRA 17.5: no more than two levels of pointers; the brackets of a parameter are one.
static void check_levels_of_pointers(const a_declarator_scan *scan)
{
  a_type *type = scan->state->declared_type;
  int levels = misra_hooks.get_pointer_depth(type, true);
  if ((scan->options & dop_parameter) && is_array_type(type)) ++levels;
  if (levels <= 2) return;
  pos_diagnostic(misra_advisory_severity, ec_misra_c_2004_17_5, scan->locator->position);
}

void declarator(uint32_t options, a_decl_parse_state *state, a_type *bottom_type,
                a_symbol_locator *locator, a_func_info_block *func_info,
                a_decl_pos_block *pos_block)
{
  a_symbol_locator unused_locator;
  a_declarator_scan scan = {};
  scan.options = options;
  scan.state = state;
  scan.locator = locator ? locator : &unused_locator;
  scan.func_info = func_info;
  scan.pos_block = pos_block;
  if (state->storage_class == sc_typedef) scan.options |= dop_typedef;
  if (state->specifier_flags & sf_is_friend) {
    scan.options |= dop_friend;
  } else if (C_dialect == 2 && state->storage_class != sc_static) {
    scan.options |= dop_may_be_qualified;
  }
  *scan.locator = cleared_locator;
  scan.locator->position = pos_curr_token;
  state->declarator_flags = options & (df_option_copy_1 | df_option_copy_2);
  state->declarator_range.start = pos_curr_token;
  if (pos_block) pos_block->declarator_begin = pos_curr_token;
  declarator_core(&scan);
  a_type *base = bottom_type ? bottom_type : state->bottom_type;
  state->declared_type = build_type(&scan, base);
  if (check_misra_c_2004) check_levels_of_pointers(&scan);
  state->declarator_range.end = pos_curr_token;
  if (pos_block) pos_block->declarator_end = pos_curr_token;
  if (state->has_pending_qualifiers) f_check_pending_qualifiers_used(state);
  check_auto_in_declarator(state);
}

void declarator_init()
{
  free_parts = nullptr;
}
