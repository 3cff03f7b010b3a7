// class_decl.cpp - heads of classes, structures and unions: tags, what they name or declare.
// Uses:    the body (class_body.cpp).
// Rule:    a tag's type is made at its first appearance and completed in place; a bad definition is
//          read into a type of its own, so that its members are still checked.
// Entry:   class_specifier, find_or_enter_tag.
// See:     C99 6.7.2.1, 6.7.2.3.
#include "parse/class_decl.h"

#include "driver/flags.h"
#include "errors/error.h"
#include "errors/misra_hooks.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/token_cache.h"
#include "parse/attribute.h"
#include "parse/class_private.h"
#include "parse/decls.h"
#include "parse/exprutil.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"
#include "parse/statements.h"
#include "parse/symbol_ref.h"

//---------------------------------------------------------------------------------------------
// Tags.

static a_symbol_kind tag_symbol_kind(a_type_kind kind)
{
  switch (kind) {
  case tk_class:
  case tk_struct: return sk_class_or_struct_tag;
  case tk_union: return sk_union_tag;
  default: return sk_enum_tag;
  }
}

static void init_class_type(a_type *type)
{
  type->is_incomplete = true;
}

static void set_symbol_type(a_symbol *symbol, a_type *type)
{
  type_of_symbol(symbol) = type;
  set_source_corresp(&type->source_corresp, symbol);
  if (scope_stack[decl_scope_level].kind == sck_function_prototype && C_dialect != 2) {
    type->is_prototype_tag = true;
  }
}

static a_type *new_tag(a_symbol_locator *locator, a_symbol_kind kind, a_type_kind type_kind,
                       int depth)
{
  a_symbol *symbol = enter_symbol(kind, locator, depth, false);
  a_type *type = alloc_type(type_kind);
  if (type_kind != tk_integer) init_class_type(type);
  set_symbol_type(symbol, type);
  if (type_kind != tk_integer && may_be_added_to_types_list(type, depth)) {
    add_to_types_list(type, depth);
  }
  if (scope_stack[decl_scope_level].kind == sck_function_prototype && C_dialect != 2) {
    pos_sy_warning(ec_decl_in_prototype_scope, locator->position, symbol);
  }
  if (in_function_scope() && in_statement_context()) record_entity_in_decl_stmt_if_needed(symbol);
  record_symbol_declaration(rdf_declaration, symbol, &locator->position, nullptr);
  return type;
}

static a_type *unnamed_tag(a_type_kind kind, a_source_position position)
{
  a_symbol *symbol = make_unnamed_tag_symbol(tag_symbol_kind(kind), &position);
  a_type *type = alloc_type(kind);
  init_class_type(type);
  set_symbol_type(symbol, type);
  if (may_be_added_to_types_list(type, decl_scope_level)) add_to_types_list(type, decl_scope_level);
  if (in_function_scope() && in_statement_context()) record_entity_in_decl_stmt_if_needed(symbol);
  return type;
}

// class and struct are one kind of tag; everything else has to agree (C99 6.7.2.3p3).
static bool same_tag_kind(a_symbol *symbol, a_symbol_kind kind)
{
  return symbol->kind == kind;
}

// C++: an elaborated specifier that declares its name does so in the nearest block or namespace
// (C++ 3.3.1p5).
static int depth_for_elaborated_name(bool is_friend)
{
  if (is_friend) return depth_innermost_namespace_scope;
  int depth = decl_scope_level;
  while (depth > 0) {
    a_scope_kind kind = scope_stack[depth].kind;
    if (kind != sck_class && kind != sck_function_prototype && kind != sck_template_declaration) {
      break;
    }
    depth = scope_stack[depth].saved_decl_scope_level;
  }
  return depth;
}

static a_symbol *look_up_qualified_tag(a_symbol_locator *locator, bool is_definition)
{
  a_symbol_locator copy = *locator;
  clear_qualifier_from_locator(&copy);
  copy.symbol = nullptr;
  if (locator->qualifier_is_class) {
    unsigned options = lo_tag;
    if (is_definition) options |= lo_no_base_classes;
    return class_qualified_id_lookup(&copy, locator->qualifier.class_type, options);
  }
  if (locator->qualifier.name_space != nullptr) {
    return namespace_qualified_id_lookup(&copy, locator->qualifier.name_space, lo_tag);
  }
  return file_scope_id_lookup(il_header.primary_scope, &copy, lo_tag);
}

static void report_missing_tag(a_symbol_locator *locator)
{
  const char *name = locator->header->identifier;
  a_symbol *parent = nullptr;
  if (locator->qualifier_is_class) {
    parent = skip_typerefs(locator->qualifier.class_type)->source_corresp.assoc_symbol;
  } else if (locator->qualifier.name_space != nullptr) {
    parent = skip_namespace_aliases(locator->qualifier.name_space)->source_corresp.assoc_symbol;
  }
  if (parent != nullptr) {
    pos_stsy_error(ec_not_a_tag_member, locator->position, name, parent);
  } else {
    pos_st_error(ec_name_not_tag_in_file_scope, locator->position, name);
  }
}

// A typedef that stands for a class (the injected name among them) leads to the class's own symbol.
static a_symbol *tag_behind_typedef(a_symbol *symbol)
{
  if (symbol == nullptr || symbol->kind != sk_type) return symbol;
  a_symbol *tag = skip_typerefs(type_of_symbol(symbol))->source_corresp.assoc_symbol;
  return tag != nullptr && is_tag_symbol(tag) ? tag : symbol;
}

// What a tag's name stands for before it is declared here.
struct a_tag_search {
  a_symbol *symbol; // null: not declared yet
  int depth;        // where it is to be declared then
  bool failed;      // reported
};

static a_tag_search search_for_tag(a_symbol_locator *locator, bool is_definition, bool is_alone,
                                   bool is_friend)
{
  a_symbol_locator copy = *locator;
  copy.symbol = nullptr;
  a_tag_search result = {nullptr, decl_scope_level, false};
  if (C_dialect == 2 && has_written_qualifier(locator)) {
    result.symbol = look_up_qualified_tag(locator, is_definition);
    result.failed = result.symbol == nullptr;
    if (result.failed) report_missing_tag(locator);
  } else if (is_friend && !is_definition) {
    result.symbol = normal_id_lookup(&copy, lo_tag | lo_friend_decl);
    result.depth = depth_for_elaborated_name(true);
  } else if (is_definition || is_alone) {
    result.symbol = curr_scope_id_lookup(&copy, lo_tag);
  } else {
    result.symbol = normal_id_lookup(&copy, lo_tag);
    if (C_dialect == 2) result.depth = depth_for_elaborated_name(false);
  }
  result.symbol = tag_behind_typedef(result.symbol);
  return result;
}

a_type *find_or_enter_tag(a_symbol_locator *locator, unsigned char kind, a_type_kind type_kind,
                          bool is_definition, bool is_alone, a_decl_parse_state *state)
{
  bool is_friend = (state->specifier_flags & sf_is_friend) && curr_token == tok_semicolon;
  a_tag_search found = search_for_tag(locator, is_definition, is_alone, is_friend);
  if (found.failed) return error_type();
  a_symbol *symbol = found.symbol;
  if (symbol == nullptr) {
    a_type *type = new_tag(locator, (a_symbol_kind)kind, type_kind, found.depth);
    locator->symbol->is_invisible = is_friend;
    return type;
  }
  locator->symbol = symbol;
  if (!is_tag_symbol(symbol) || !same_tag_kind(symbol, (a_symbol_kind)kind)) {
    pos_stsy_error(ec_tag_kind_incompatible_with_declaration, locator->position,
                   locator->header->identifier, symbol);
    return error_type();
  }
  if (is_definition || is_alone) symbol->is_invisible = false;
  if (!is_definition) record_symbol_reference(rk_plain, symbol, &locator->position);
  return type_of_symbol(symbol);
}

void give_typedef_name_to_tag(a_type *type, a_symbol_locator *locator)
{
  type = type->kind == tk_typeref ? nullptr : type;
  if (type == nullptr || type->source_corresp.name != nullptr) return;
  bool is_tag = is_class_struct_union_type(type) || is_enum_type(type);
  if (!is_tag || type->source_corresp.assoc_symbol == nullptr) return;
  // In C the tag stays without a name: the typedef's name stands in another name space.
  if (C_dialect != 2) return;
  relink_unnamed_tag_symbol(type->source_corresp.assoc_symbol, locator);
  set_source_corresp_name(&type->source_corresp, locator->header);
  set_name_linkage_for_type(type);
}

//---------------------------------------------------------------------------------------------
// The specifier.

static a_type_kind type_kind_of_keyword()
{
  switch (curr_token) {
  case tok_union: return tk_union;
  case tok_class: return tk_class;
  default: return tk_struct;
  }
}

static bool body_begins()
{
  return curr_token == tok_lbrace || (C_dialect == 2 && curr_token == tok_colon);
}

static bool may_be_defined(a_type *type)
{
  return type->is_incomplete && !as_class(type).being_defined;
}

static a_type *named_class(a_symbol_locator *locator, a_type_kind kind, bool is_definition,
                           a_decl_parse_state *state)
{
  bool is_alone = curr_token == tok_semicolon && state->storage_class == sc_unspecified &&
                  state->type_qualifiers == 0 && !(state->specifier_flags & sf_is_friend);
  a_type *type =
      find_or_enter_tag(locator, tag_symbol_kind(kind), kind, is_definition, is_alone, state);
  if (is_error_type(type)) {
    state->specifier_flags |= sf_is_in_error;
    return is_definition ? unnamed_tag(kind, locator->position) : type;
  }
  if (is_definition && !may_be_defined(type)) {
    pos_sy_error(ec_redefinition, locator->position, locator->symbol);
    state->specifier_flags |= sf_is_in_error;
    return unnamed_tag(kind, locator->position);
  }
  return type;
}

static an_attribute *head_attributes()
{
  an_attribute *list = nullptr;
  while (curr_token == tok_attribute || curr_token == tok_declspec) {
    *f_last_attribute_link(&list) = scan_attributes(al_tag);
  }
  return list;
}

static bool scan_tag_name(a_decl_parse_state *state)
{
  state->tag_locator = cleared_locator;
  if (C_dialect == 2 && (curr_token == tok_colon_colon || curr_token == tok_identifier)) {
    f_is_generalized_identifier_start(gid_in_declaration, nullptr);
  }
  if (curr_token != tok_identifier) return false;
  state->tag_locator = locator_for_curr_id;
  state->tag_locator.symbol = nullptr;
  state->tag_locator.position = pos_curr_token;
  if (check_misra_c_2004) {
    misra_hooks.check_for_invalid_identifier(state->tag_locator.header->identifier, &pos_curr_token,
                                             ansi_c_type);
  }
  get_token();
  return true;
}

a_type *class_specifier(uint32_t, a_decl_parse_state *state, a_decl_pos_block *pos_block)
{
  a_source_position start = pos_curr_token;
  a_type_kind kind = type_kind_of_keyword();
  if (pos_block) pos_block->type_begin = start;
  if (check_misra_c_2004 && kind == tk_union) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_18_4, start);
  }
  get_token();
  an_attribute *attributes = head_attributes();
  a_type *type;
  if (scan_tag_name(state)) {
    a_symbol_locator locator = state->tag_locator;
    type = named_class(&locator, kind, body_begins(), state);
    state->tag_locator = locator;
  } else if (body_begins()) {
    type = unnamed_tag(kind, start);
  } else {
    syntax_error(ec_exp_identifier);
    state->specifier_flags |= sf_is_in_error;
    return error_type();
  }
  bool is_definition = body_begins();
  if (is_error_type(type)) return type;
  if (attributes) attach_tag_attributes(attributes, type, state, is_definition);
  if (is_definition && scan_class_definition(type, state, pos_block)) {
    state->specifier_flags |= sf_defines_type;
    if (C_dialect == 2) process_deferred_class_fixups_and_instantiations(type);
  }
  if (pos_block) pos_block->type_end = state->specifiers_range.end;
  return type;
}

//---------------------------------------------------------------------------------------------
// Facts of __declspec (C++).

void update_extended_decl_info_for_class(a_type *class_type, an_extended_decl_info_block *info)
{
  if (info->dll_flags) update_dll_info_for_class(class_type, info->dll_flags, &info->position);
}

void update_dll_info_for_class(a_type *, uint32_t, a_source_position *)
{
}

void update_membership_of_class(a_type *class_type)
{
  a_scope_stack_entry *entry = &scope_stack[decl_scope_level];
  if (C_dialect == 2 && entry->kind == sck_class && entry->assoc_type != class_type) {
    set_class_membership(&class_type->source_corresp, entry->assoc_type);
  }
}
