// decls_special.cpp - declarations that don't declare objects, functions or types: static_assert,
// asm, linkage specifications, namespaces, using.
#include <cstring>

#include "consts/folding.h"
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/token_cache.h"
#include "mem/mem_manage.h"
#include "parse/attribute.h"
#include "parse/decls_private.h"
#include "parse/expr.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"
#include "parse/statements.h"
#include "parse/symbol_ref.h"

//---------------------------------------------------------------------------------------------
// static_assert.

// The text with every character that a message can't show replaced by `?`.
static const char *printable_text(const a_constant_string &string)
{
  size_t length = string.length ? string.length - 1 : 0;
  char *text = (char *)alloc_in_region(0, length + 1);
  for (size_t i = 0; i < length; ++i) {
    char c = string.text[i];
    text[i] = (unsigned char)c > 127 || is_nonstandard_character(c) ? '?' : c;
  }
  text[length] = '\0';
  return text;
}

void static_assert_declaration(bool in_class)
{
  a_source_position position = pos_curr_token;
  get_token();
  required_token(tok_lparen, ec_exp_lparen);
  add_stop_token(tok_rparen);
  add_stop_token(tok_comma);
  a_constant condition;
  scan_integral_constant_expression(&condition);
  remove_stop_token(tok_comma);
  required_token(tok_comma, ec_exp_comma);
  if (curr_token == tok_string_literal) {
    if (condition.kind == ck_integer && is_false_constant(&condition)) {
      pos_st_error(ec_static_assert, position, printable_text(string_of(&const_for_curr_token)));
    }
    get_token();
  } else {
    syntax_error(ec_exp_string_literal);
  }
  remove_stop_token(tok_rparen);
  required_token(tok_rparen, ec_exp_rparen);
  if (!in_class) required_token(tok_semicolon, ec_exp_semicolon);
}

//---------------------------------------------------------------------------------------------
// asm.

static void asm_qualifiers(bool *is_volatile)
{
  for (;;) {
    if (curr_token == tok_volatile && (gcc_mode || gpp_mode)) {
      if (report_gnu_extensions) pos_warning(ec_volatile_asm_is_gnu_extension, pos_curr_token);
      *is_volatile = true;
    } else if (curr_token == tok_const) {
      pos_warning(ec_const_ignored, pos_curr_token);
    } else if (curr_token == tok_volatile || curr_token == tok_restrict || curr_token == tok_goto ||
               curr_token == tok_inline) {
      pos_error(ec_invalid_asm_qualifiers, pos_curr_token);
    } else {
      return;
    }
    get_token();
  }
}

static a_constant *asm_string()
{
  if (curr_token != tok_string_literal) {
    syntax_error(ec_exp_asm_string);
    return nullptr;
  }
  a_constant *constant = alloc_unshared_constant(&const_for_curr_token);
  get_token();
  return constant;
}

// The current token is `asm`; ends behind the `)`, the caller takes the `;`.
void asm_declaration(bool in_block, bool allowed, an_attribute **attributes)
{
  a_source_position position = pos_curr_token;
  if (!allowed) pos_error(ec_asm_decl_not_allowed, position);
  if (attributes && *attributes) {
    pos_error(ec_invalid_attribute_location, (*attributes)->position);
  }
  get_token();
  bool is_volatile = false;
  asm_qualifiers(&is_volatile);
  required_token(tok_lparen, ec_exp_lparen);
  add_stop_token(tok_rparen);
  a_constant *string = asm_string();
  remove_stop_token(tok_rparen);
  required_token(tok_rparen, ec_exp_rparen);
  if (string == nullptr) return;
  an_asm_entry *entry = alloc_asm_entry();
  entry->asm_string = string;
  entry->is_volatile = is_volatile;
  entry->is_simple = true;
  entry->source_corresp.decl_position = position;
  if (in_block) {
    if (curr_routine()) curr_routine()->contains_asm = true;
    a_statement *statement = add_statement_at_stmt_pos(stmk_asm, &position);
    asm_entry_of(statement) = entry;
  } else {
    add_to_asm_entries_list(entry, 0);
  }
}

//---------------------------------------------------------------------------------------------
// Linkage specifications (C++).

static a_name_linkage_kind linkage_of_string()
{
  const a_constant_string &string = string_of(&const_for_curr_token);
  if (string.length == 4 && memcmp(string.text, "C++", 3) == 0) return nlk_cplusplus;
  if (string.length == 2 && string.text[0] == 'C') return nlk_c;
  pos_error(ec_bad_linkage_specifier, pos_curr_token);
  return (a_name_linkage_kind)top_scope()->name_linkage;
}

static void linkage_body()
{
  get_token();
  add_stop_token(tok_rbrace);
  while (token_loop_continues(tok_rbrace))
    declaration(true, false, true, false, nullptr, nullptr);
  remove_stop_token(tok_rbrace);
  required_token(tok_rbrace, ec_exp_rbrace);
}

// `extern "C"`; the current token is `extern`, the next one a string.
bool linkage_specification()
{
  a_source_position position = pos_curr_token;
  a_scope_kind kind = scope_stack[decl_scope_level].kind;
  bool allowed = kind == sck_file || kind == sck_namespace || kind == sck_namespace_extension;
  if (!allowed) pos_error(ec_linkage_specifier_not_allowed, position);
  get_token();
  a_name_linkage_kind linkage = linkage_of_string();
  get_token();
  push_name_linkage(linkage);
  if (curr_token == tok_lbrace) {
    linkage_body();
  } else if (curr_token == tok_end_of_source) {
    pos_error(ec_exp_declaration, pos_curr_token);
  } else {
    declaration(true, false, true, false, nullptr, nullptr);
  }
  pop_name_linkage();
  return true;
}

//---------------------------------------------------------------------------------------------
// Namespaces (C++).

static bool at_namespace_level()
{
  a_scope_kind kind = scope_stack[decl_scope_level].kind;
  return kind == sck_file || kind == sck_namespace || kind == sck_namespace_extension;
}

static void namespace_alias(a_symbol_locator *locator)
{
  get_token();
  bool error_found = false;
  a_symbol *target = coalesce_and_lookup_generalized_identifier(0, lo_namespace_only, &error_found);
  if (target == nullptr || target->kind != sk_namespace) {
    pos_error(ec_missing_namespace_name, pos_curr_token);
  } else {
    a_symbol *symbol = enter_local_symbol(sk_namespace, locator);
    a_namespace *alias = alloc_namespace(true);
    alias->variant.alias_target = namespace_of_symbol(target);
    namespace_of_symbol(symbol) = alias;
    symbol->variant.name_space.supplement = target->variant.name_space.supplement;
    set_source_corresp(&alias->source_corresp, symbol);
    add_to_namespaces_list(alias, decl_scope_level);
  }
  if (curr_token == tok_identifier) get_token();
  required_token(tok_semicolon, ec_exp_semicolon);
}

// A namespace that the compiler declares itself (std) has no scope before the source opens it.
static bool is_first_definition(a_namespace *name_space)
{
  if (name_space->is_alias || name_space->variant.scope != nullptr) return false;
  add_to_namespaces_list(name_space, decl_scope_level);
  return true;
}

static a_symbol *find_or_enter_namespace(a_symbol_locator *locator, bool *is_extension)
{
  a_symbol *prior = nullptr;
  if (locator->header) prior = curr_scope_id_lookup(locator, lo_none);
  if (prior && prior->kind == sk_namespace) {
    *is_extension = !is_first_definition(namespace_of_symbol(prior));
    return prior;
  }
  a_source_position position = locator->position;
  a_symbol *symbol = locator->header ? enter_local_symbol(sk_namespace, locator)
                                     : make_unnamed_namespace_symbol(&position);
  if (namespace_of_symbol(symbol) == nullptr) {
    a_namespace *name_space = alloc_namespace(false);
    namespace_of_symbol(symbol) = name_space;
    set_source_corresp(&name_space->source_corresp, symbol);
    add_to_namespaces_list(name_space, decl_scope_level);
  } else {
    *is_extension = !is_first_definition(namespace_of_symbol(symbol));
  }
  return symbol;
}

static void namespace_definition()
{
  a_source_position position = pos_curr_token;
  get_token();
  a_symbol_locator locator = cleared_locator;
  locator.position = position;
  if (curr_token == tok_identifier) {
    locator = locator_for_curr_id;
    locator.symbol = nullptr;
    get_token();
  }
  if (curr_token == tok_attribute) scan_attributes(al_tag);
  bool is_alias = curr_token == tok_assign;
  if (!at_namespace_level()) {
    pos_error(is_alias ? ec_namespace_alias_def_not_allowed : ec_namespace_def_not_allowed,
              position);
  }
  if (is_alias) {
    namespace_alias(&locator);
    return;
  }
  bool is_extension = false;
  a_symbol *symbol = find_or_enter_namespace(&locator, &is_extension);
  if (!required_token(tok_lbrace, ec_exp_lbrace)) return;
  a_namespace *name_space = namespace_of_symbol(symbol);
  if (is_extension) {
    f_push_namespace_extension_scope(name_space, false);
  } else {
    push_namespace_scope(sck_namespace, name_space);
  }
  add_stop_token(tok_rbrace);
  while (token_loop_continues(tok_rbrace))
    declaration(true, false, false, false, nullptr, nullptr);
  remove_stop_token(tok_rbrace);
  if (is_extension) {
    pop_namespace_extension_scope();
  } else {
    pop_namespace_scope();
  }
  required_token(tok_rbrace, ec_exp_rbrace);
  if (locator.header == nullptr && !is_extension) {
    make_using_directive(name_space, decl_scope_level, &position, true, nullptr);
  }
}

a_using_decl *make_using_decl(a_symbol *symbol, a_source_position *position, bool)
{
  a_using_decl *using_decl = alloc_using_decl();
  using_decl->position = *position;
  using_decl->entity = il_entry_for_symbol_null_okay(symbol, &using_decl->entity_kind);
  add_to_using_decls_list(using_decl, decl_scope_level);
  return using_decl;
}

void make_using_directive(a_namespace *name_space, int depth, a_source_position *position, bool,
                          an_attribute *attributes)
{
  a_using_decl *using_decl = alloc_using_decl();
  using_decl->position = *position;
  using_decl->entity_kind = iek_namespace;
  using_decl->entity = name_space;
  using_decl->is_using_directive = true;
  using_decl->attributes = attributes;
  bool at_namespace = at_namespace_level();
  using_decl->decl_seq = at_namespace ? ++decl_seq_counter : 1;
  add_to_using_decls_list(using_decl, depth);
  add_active_using_directive(using_decl, depth, (uint32_t)using_decl->decl_seq);
}

static void using_directive()
{
  a_source_position position = pos_curr_token;
  get_token();
  bool error_found = false;
  a_symbol *symbol = coalesce_and_lookup_generalized_identifier(0, lo_namespace_only, &error_found);
  if (symbol && symbol->kind == sk_namespace) {
    make_using_directive(skip_namespace_aliases(namespace_of_symbol(symbol)), decl_scope_level,
                         &position, false, nullptr);
  } else if (!error_found) {
    pos_error(ec_missing_namespace_name, pos_curr_token);
  }
  if (curr_token == tok_identifier) get_token();
  required_token(tok_semicolon, ec_exp_semicolon);
}

static void using_declaration(a_source_position position)
{
  bool error_found = false;
  a_symbol *symbol = coalesce_and_lookup_generalized_identifier(0, lo_none, &error_found);
  if (curr_token == tok_identifier && !locator_for_curr_id.is_qualified &&
      !nonstandard_using_decl_allowed) {
    pos_error(ec_namespace_qualified_name_required, pos_curr_token);
  } else if (symbol == nullptr) {
    if (!error_found && curr_token == tok_identifier) {
      pos_st_error(ec_undefined_identifier, pos_curr_token, locator_for_curr_id.header->identifier);
    }
  } else if (symbol->kind == sk_namespace) {
    pos_error(ec_namespace_name_not_allowed, pos_curr_token);
  } else {
    a_symbol_locator locator = locator_for_curr_id;
    clear_qualifier_from_locator(&locator);
    locator.symbol = nullptr;
    if (curr_scope_id_lookup(&locator, lo_keep_projections) == nullptr) {
      a_symbol *projection = enter_local_symbol(sk_projection, &locator);
      projected_symbol_of(projection) = symbol;
      projection->variant.projection.is_using_declaration = true;
      make_using_decl(symbol, &position, false);
    }
  }
  if (curr_token == tok_identifier) get_token();
  required_token(tok_semicolon, ec_exp_semicolon);
}

void alias_declaration(a_decl_parse_state *state, a_source_position *position)
{
  a_symbol_locator locator = locator_for_curr_id;
  get_token();
  required_token(tok_assign, ec_exp_assign);
  state->start_position = *position;
  type_name_full(state);
  state->storage_class = sc_typedef;
  decl_typedef(&locator, state, state->declared_type, nullptr);
  if (locator.symbol) as_typeref(type_of_symbol(locator.symbol)).is_alias_decl = true;
  required_token(tok_semicolon, ec_exp_semicolon);
}

bool namespace_or_using_declaration(an_attribute *attributes)
{
  if (curr_token == tok_namespace) {
    namespace_definition();
    return true;
  }
  a_source_position position = pos_curr_token;
  get_token();
  if (attributes) pos_error(ec_invalid_attribute_location, attributes->position);
  if (curr_token == tok_namespace) {
    using_directive();
  } else if (alias_declarations_enabled && curr_token == tok_identifier &&
             next_token() == tok_assign) {
    a_decl_parse_state state = null_decl_parse_state;
    alias_declaration(&state, &position);
  } else {
    using_declaration(position);
  }
  return true;
}
