// qualified_name.cpp - a whole qualified name becomes one identifier token.
// Uses:    lookahead of the token cache, lookup in classes and namespaces.
// Rule:    afterwards the current token is one identifier whose locator carries the qualifier; its
//          position and number are those of the first token.  In C an identifier stays as it is.
// Entry:   f_is_generalized_identifier_start, coalesce_and_lookup_generalized_identifier.
// See:     C++ 3.4.3.  Template-ids are taken over by coalesce_template_class_reference.
#include <cstring>

#include "driver/flags.h"
#include "errors/error.h"
#include "il/il_entities.h"
#include "il/types.h"
#include "lex/cached_token.h"
#include "lex/lexical.h"
#include "lex/token_cache.h"
#include "parse/decls.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"
#include "parse/symbol_tbl.h"

// What the name's first token was: the coalesced token takes it over.
struct a_first_token {
  a_source_position position;
  unsigned sequence_number;
  a_cached_token *handle;
};

// The qualifier scanned so far.
struct a_name_qualification {
  bool is_global; // a leading "::"
  bool is_qualified;
  a_type *class_type; // or
  a_namespace *name_space;
};

//---------------------------------------------------------------------------------------------
// Qualifiers
//---------------------------------------------------------------------------------------------

static void remember_first_token(a_first_token *first)
{
  *first = {pos_curr_token, curr_token_sequence_number, curr_cached_token_handle};
}

static void give_first_token(const a_first_token *first)
{
  pos_curr_token = error_position = first->position;
  curr_token_sequence_number = first->sequence_number;
  curr_cached_token_handle = first->handle;
  locator_for_curr_id.position = first->position;
}

static a_symbol *look_up_in(const a_name_qualification *qualification, unsigned options)
{
  a_symbol_locator *locator = &locator_for_curr_id;
  if (qualification->class_type != nullptr && is_enum_type(qualification->class_type)) {
    return enum_qualified_id_lookup(locator, qualification->class_type);
  }
  if (qualification->class_type != nullptr) {
    return class_qualified_id_lookup(locator, qualification->class_type, options);
  }
  if (qualification->name_space != nullptr) {
    return namespace_qualified_id_lookup(locator, qualification->name_space, options);
  }
  if (qualification->is_global) {
    return file_scope_id_lookup(scope_stack[0].il_scope, locator, options);
  }
  return normal_id_lookup(locator, options);
}

// The current identifier names a class, enum or namespace: it becomes the qualifier.
static bool take_qualifier(a_name_qualification *qualification, a_symbol *symbol)
{
  if (symbol->kind == sk_namespace) {
    qualification->name_space = namespace_of_symbol(symbol);
    qualification->class_type = nullptr;
  } else if (is_type_symbol(symbol)) {
    qualification->class_type = type_of_symbol(symbol);
    qualification->name_space = nullptr;
  } else {
    return false;
  }
  qualification->is_qualified = true;
  return true;
}

static void store_qualification(const a_name_qualification *qualification)
{
  a_symbol_locator *locator = &locator_for_curr_id;
  locator->qualifier_bits = qb_coalesced;
  if (qualification->is_global) locator->qualifier_bits |= qb_global;
  if (!qualification->is_qualified) return;
  locator->qualifier_bits |= qb_qualified;
  locator->is_qualified = true;
  locator->qualifier_is_class = qualification->class_type != nullptr;
  if (locator->qualifier_is_class) {
    locator->qualifier.class_type = qualification->class_type;
  } else {
    locator->qualifier.name_space = qualification->name_space;
  }
}

// The name breaks off behind its qualifier.
static void make_error_identifier(unsigned flags)
{
  if ((flags & gid_no_diagnostics) == 0) pos_error(ec_exp_identifier, pos_curr_token);
  unget_token();
  curr_token = tok_identifier;
  locator_for_curr_id = cleared_locator;
  locator_for_curr_id.position = pos_curr_token;
  locator_for_curr_id.is_qualified = true;
}

// At "::" in front of everything.  Returns false if no name begins there.
static bool scan_global_qualifier(a_name_qualification *qualification)
{
  a_token_kind next = next_token();
  if (next == tok_new || next == tok_delete || next == tok_star) return false;
  qualification->is_global = qualification->is_qualified = true;
  get_token();
  return true;
}

static bool scan_operator_name(unsigned flags);

// Behind a qualifier: the name of an operator function or a destructor.
static bool scan_special_name(const a_name_qualification *qualification, unsigned flags)
{
  if (curr_token == tok_operator) {
    scan_operator_name(flags);
    return true;
  }
  bool is_destructor = curr_token == tok_compl && (flags & gid_destructor_name_allowed) &&
                       qualification->class_type != nullptr;
  return is_destructor && scan_destructor_name(qualification->class_type);
}

// Takes qualifiers "A::" as long as they follow.  Returns false if the chain ends in no identifier.
static bool scan_qualifiers(a_name_qualification *qualification, unsigned flags)
{
  if (scan_special_name(qualification, flags)) return true;
  while (curr_token == tok_identifier) {
    a_token_kind second;
    if (next_two_tokens(tok_colon_colon, &second) != tok_colon_colon) return true;
    a_symbol *symbol = look_up_in(qualification, lo_nested_name_qualifier);
    if (symbol == nullptr || !take_qualifier(qualification, symbol)) return true;
    get_token();
    get_token();
    if (curr_token == tok_star) {
      curr_token = tok_ptr_to_member;
      locator_for_curr_id = cleared_locator;
      return true;
    }
    if (scan_special_name(qualification, flags)) return true;
  }
  return false;
}

//---------------------------------------------------------------------------------------------
// Names of operators, conversions and destructors
//---------------------------------------------------------------------------------------------

static an_opname_kind opname_kind_of_token()
{
  static const a_token_kind tokens[num_opname_kinds] = {
#define OPNAME(kind, text, token) token,
#include "parse/opnames.def"
  };
  for (unsigned kind = onk_plus; kind < num_opname_kinds; ++kind) {
    if (tokens[kind] != tok_error && tokens[kind] == curr_token) return (an_opname_kind)kind;
  }
  return onk_none;
}

// `()` or `[]`; the closing token becomes current.
static an_opname_kind bracketed_opname(an_opname_kind kind, a_token_kind closing,
                                       an_error_code code)
{
  if (next_token() != closing) {
    pos_error(code, pos_curr_token);
    return kind;
  }
  get_token();
  return kind;
}

// `new` or `delete`, with `[]` or without.
static an_opname_kind allocation_opname(an_opname_kind plain, an_opname_kind array)
{
  a_token_kind second = tok_error;
  if (next_two_tokens(tok_lbracket, &second) != tok_lbracket || second != tok_rbracket) {
    return plain;
  }
  get_token();
  get_token();
  return array;
}

// Behind `operator`: the last token of the operator becomes current.
static an_opname_kind scan_opname()
{
  switch (curr_token) {
  case tok_new: return allocation_opname(onk_new, onk_array_new);
  case tok_delete: return allocation_opname(onk_delete, onk_array_delete);
  case tok_lparen: return bracketed_opname(onk_call, tok_rparen, ec_exp_rparen);
  case tok_lbracket: return bracketed_opname(onk_subscript, tok_rbracket, ec_exp_rbracket);
  default: return opname_kind_of_token();
  }
}

// At `operator`: the name becomes one identifier token.  False, with a message, where no operator and
// no type follows.
static bool scan_operator_name(unsigned flags)
{
  a_source_position position = pos_curr_token;
  get_token();
  an_opname_kind kind = scan_opname();
  if (kind != onk_none) {
    curr_token = tok_identifier;
    make_opname_locator(kind, &locator_for_curr_id, &position);
    return true;
  }
  if (!is_type_start(0)) {
    if ((flags & gid_no_diagnostics) == 0) pos_error(ec_exp_operator, pos_curr_token);
    unget_token();
    curr_token = tok_identifier;
    locator_for_curr_id = cleared_locator;
    locator_for_curr_id.position = position;
    locator_for_curr_id.is_qualified = true;
    return false;
  }
  a_type *type = nullptr;
  a_source_position type_position;
  scan_conversion_operator(&type_position, false, nullptr, &type);
  unget_token();
  curr_token = tok_identifier;
  make_type_conversion_locator(type, &locator_for_curr_id, &position);
  return true;
}

bool scan_destructor_name(a_type *class_type)
{
  a_source_position position = pos_curr_token;
  get_token();
  if (curr_token != tok_identifier) {
    syntax_error(ec_exp_identifier);
    return false;
  }
  a_symbol *class_symbol =
      class_type != nullptr ? skip_typerefs(class_type)->source_corresp.assoc_symbol : nullptr;
  bool names_class = class_symbol != nullptr && locator_for_curr_id.header == class_symbol->header;
  if (!names_class && class_symbol != nullptr) {
    a_symbol_locator locator = locator_for_curr_id;
    a_symbol *symbol = normal_id_lookup(&locator, lo_class_only);
    names_class = symbol != nullptr && is_type_symbol(symbol) &&
                  identical_types(skip_typerefs(type_of_symbol(symbol)), skip_typerefs(class_type));
  }
  if (!names_class) {
    pos_error(ec_bad_destructor_decl, pos_curr_token);
    locator_for_curr_id = cleared_locator;
    locator_for_curr_id.position = position;
    locator_for_curr_id.is_qualified = true;
    return true;
  }
  a_symbol_locator locator = cleared_locator;
  change_to_destructor_or_finalizer_locator(&locator, class_symbol);
  locator.position = position;
  locator.symbol = nullptr;
  locator_for_curr_id = locator;
  return true;
}

//---------------------------------------------------------------------------------------------
// Entries
//---------------------------------------------------------------------------------------------

bool f_is_generalized_identifier_start(unsigned flags, a_type *scope_hint)
{
  if (C_dialect != 2) {
    if (curr_token != tok_identifier) return false;
    clear_qualifier_from_locator(&locator_for_curr_id);
    return true;
  }
  (void)scope_hint;
  if (curr_token == tok_identifier && (locator_for_curr_id.qualifier_bits & qb_coalesced) != 0) {
    return true;
  }
  if (curr_token != tok_identifier && curr_token != tok_colon_colon && curr_token != tok_operator) {
    return false;
  }
  a_first_token first;
  a_name_qualification qualification = {};
  remember_first_token(&first);
  if (curr_token == tok_colon_colon && !scan_global_qualifier(&qualification)) return false;
  if (!scan_qualifiers(&qualification, flags)) {
    if (!qualification.is_qualified) return false;
    make_error_identifier(flags);
  }
  give_first_token(&first);
  store_qualification(&qualification);
  return true;
}

// Restrictions that the caller puts on the form of the name.
static void check_form_of_name(unsigned flags, bool *error_found)
{
  const a_symbol_locator *locator = &locator_for_curr_id;
  an_error_code code = ec_no_error;
  if ((flags & gid_no_global_qualifier) != 0 && (locator->qualifier_bits & qb_global) != 0) {
    code = ec_global_qualifier_not_allowed;
  } else if ((flags & gid_no_qualifier) != 0 && (locator->qualifier_bits & qb_qualified) != 0) {
    code = ec_qualified_name_not_allowed;
  } else if ((flags & gid_no_operator_name) != 0 &&
             (locator->is_opname || locator->is_conversion_name)) {
    code = ec_operator_name_not_allowed;
  }
  if (code == ec_no_error) return;
  *error_found = true;
  if ((flags & gid_no_diagnostics) == 0) pos_error(code, locator->position);
}

a_symbol *coalesce_and_lookup_generalized_identifier(unsigned flags, unsigned lookup_mode,
                                                     bool *error_found)
{
  *error_found = false;
  if (!f_is_generalized_identifier_start(flags, nullptr)) return nullptr;
  if (C_dialect != 2) return normal_id_lookup(&locator_for_curr_id, lookup_mode);
  check_form_of_name(flags, error_found);
  a_symbol_locator *locator = &locator_for_curr_id;
  if (locator->symbol != nullptr || (locator->qualifier_bits & qb_qualified) == 0) {
    return normal_id_lookup(locator, lookup_mode);
  }
  a_name_qualification qualification = {};
  qualification.is_global = (locator->qualifier_bits & qb_global) != 0;
  qualification.is_qualified = true;
  if (locator->qualifier_is_class) {
    qualification.class_type = locator->qualifier.class_type;
  } else {
    qualification.name_space = locator->qualifier.name_space;
  }
  return look_up_in(&qualification, lookup_mode);
}

a_symbol *coalesce_and_lookup_qualified_name(unsigned flags, unsigned lookup_mode,
                                             bool *error_found)
{
  return coalesce_and_lookup_generalized_identifier(flags, lookup_mode, error_found);
}

static bool is_template_name_in_chain(a_symbol_header *header)
{
  for (a_symbol *symbol = header->active_symbols; symbol != nullptr;
       symbol = symbol->next_same_name) {
    if (symbol->kind == sk_class_template || symbol->kind == sk_function_template) return true;
  }
  return false;
}

static void push_pragma_scope()
{
  push_scope(sck_pragma_rescan, -1, nullptr, nullptr);
}

void qualified_name_one_time_init()
{
  token_cache_hooks.is_generalized_identifier_start = f_is_generalized_identifier_start;
  token_cache_hooks.is_template_name = is_template_name_in_chain;
  token_cache_hooks.push_pragma_scope = push_pragma_scope;
  token_cache_hooks.pop_pragma_scope = pop_scope;
}
