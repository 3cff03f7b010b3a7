// class_body.cpp - bodies of classes: head, base clause, the member loop.
// Rule:    the class is incomplete until its layout is done; whatever fails inside, the loop goes
//          on at the next `;` or `}` and the class ends up complete.
// See:     C99 6.7.2.1; empty structures and flexible arrays in C89 are GNU.
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/pragma.h"
#include "lex/token_cache.h"
#include "mem/stack_limit.h"
#include "parse/attribute.h"
#include "parse/class_private.h"
#include "parse/decls.h"
#include "parse/layout.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"
#include "parse/symbol_ref.h"

//---------------------------------------------------------------------------------------------
// The member loop.

static void extra_semicolon()
{
  a_source_position position = pos_curr_token;
  get_token();
  an_error_severity severity = strict_ansi_mode ? strict_ansi_discretionary_severity : es_warning;
  if (gcc_mode || gpp_mode) severity = es_remark;
  pos_diagnostic(severity, ec_extra_semicolon, position);
}

static void missing_semicolon_before_brace()
{
  if (C_dialect == 1) return;
  an_error_severity severity = es_warning;
  if (C_dialect == 2) severity = es_discretionary_error;
  if (strict_ansi_mode) severity = strict_ansi_discretionary_severity;
  pos_diagnostic(severity, ec_exp_semicolon, pos_curr_token);
}

// Behind a member declaration: its `;`, or what stands in place of it.
static void end_of_member()
{
  if (curr_token == tok_semicolon) {
    get_token();
  } else if (curr_token == tok_rbrace) {
    missing_semicolon_before_brace();
  } else {
    required_token(tok_semicolon, ec_exp_semicolon);
  }
}

// A member function with a body needs no `;` and may have one (C++ 9.2).
static void end_of_member_with_body()
{
  if (curr_token == tok_semicolon) get_token();
}

static bool access_label(a_class_scan_state *scan)
{
  unsigned access;
  switch (curr_token) {
  case tok_public: access = as_public; break;
  case tok_protected: access = as_protected; break;
  case tok_private: access = as_private; break;
  default: return false;
  }
  scan->current_access = access;
  top_scope()->current_access = access;
  get_token();
  required_token(tok_colon, ec_exp_colon);
  return true;
}

static void one_member(a_class_scan_state *scan)
{
  select_curr_construct_pragmas(false);
  if (C_dialect == 2 && access_label(scan)) return;
  switch (curr_token) {
  case tok_semicolon: extra_semicolon(); return;
  case tok_static_assert: static_assert_declaration(false); return;
  case tok_asm:
  case tok_gnu_asm:
    asm_declaration(false, false, nullptr);
    end_of_member();
    return;
  default: break;
  }
  unsigned sequence_number = curr_token_sequence_number;
  if (scan_member_declaration(scan)) {
    end_of_member_with_body();
  } else {
    end_of_member();
  }
  bool stuck = curr_token_sequence_number == sequence_number;
  if (stuck && curr_token != tok_rbrace && curr_token != tok_end_of_source) get_token();
}

static void member_loop(a_class_scan_state *scan)
{
  add_stop_token(tok_semicolon);
  add_stop_token(tok_rbrace);
  while (curr_token != tok_rbrace && curr_token != tok_end_of_source)
    one_member(scan);
  remove_stop_token(tok_rbrace);
  remove_stop_token(tok_semicolon);
}

//---------------------------------------------------------------------------------------------
// The definition.

// C: a dummy member keeps the structure from having none at all.
static void empty_body(a_class_scan_state *scan)
{
  if (gcc_mode || gpp_mode || C_dialect == 2) {
    as_class(scan->class_type).has_empty_body = true;
    return;
  }
  pos_error(ec_exp_declaration, pos_curr_token);
  a_source_position position = pos_curr_token;
  a_field *field = alloc_field();
  field->type = error_type();
  a_symbol *symbol = unnamed_field_symbol(&position);
  field_of_symbol(symbol) = field;
  as_class(scan->class_type).first_field = field;
  scan->last_field = field;
  scan->any_named_member = true;
}

a_class_symbol_supplement *class_symbol_supplement_of(a_type *class_type)
{
  a_symbol *symbol = skip_typerefs(class_type)->source_corresp.assoc_symbol;
  return symbol != nullptr && symbol_kind_is_class(symbol->kind)
             ? class_supplement_of_symbol(symbol)
             : nullptr;
}

static void begin_class(a_type *class_type)
{
  a_class_type_part &part = as_class(class_type);
  part.has_body = true;
  part.being_defined = true;
  part.is_incomplete_until_end = true;
  if (part.max_member_alignment == 0) {
    part.max_member_alignment = current_max_alignment_for_class_members();
  }
  a_symbol *symbol = class_type->source_corresp.assoc_symbol;
  a_class_symbol_supplement *supplement = class_supplement_of_symbol(symbol);
  supplement->is_being_defined = true;
  supplement->position_of_definition = pos_curr_token;
  supplement->has_trivial_copy_assignment = true;
  supplement->has_trivial_copy_constructor = true;
  supplement->has_trivial_destructor = true;
}

static void end_class(a_type *class_type)
{
  as_class(class_type).being_defined = false;
  a_symbol *symbol = class_type->source_corresp.assoc_symbol;
  class_supplement_of_symbol(symbol)->is_being_defined = false;
  record_symbol_declaration(rdf_definition, symbol, &symbol->position, nullptr);
}

// A class that is defined outside of the class or namespace that declares it is read inside.
static void enter_enclosing_scope(a_type *class_type)
{
  if (C_dialect != 2) return;
  a_type *parent = parent_class_of(&class_type->source_corresp);
  a_namespace *name_space = parent_namespace_of(&class_type->source_corresp);
  if (parent != nullptr && decl_scope()->assoc_type != parent) {
    push_class_reactivation_scope(parent, false);
  } else if (parent == nullptr && name_space != nullptr &&
             decl_scope()->assoc_namespace != name_space && !class_type->source_corresp.is_local) {
    f_push_namespace_reactivation_scope(name_space, false);
  }
}

static bool bases_and_body_follow(a_class_scan_state *scan)
{
  bool has_body = curr_token != tok_colon || scan_base_clause(scan);
  if (has_body) return true;
  as_class(scan->class_type).being_defined = false;
  class_symbol_supplement_of(scan->class_type)->is_being_defined = false;
  return false;
}

bool scan_class_definition(a_type *class_type, a_decl_parse_state *state,
                           a_decl_pos_block *pos_block)
{
  check_recursion();
  a_class_scan_state scan = {};
  scan.class_type = class_type;
  scan.current_access = class_type->kind == tk_class ? as_private : as_public;
  int depth = depth_scope_stack;
  enter_enclosing_scope(class_type);
  begin_class(class_type);
  if (!bases_and_body_follow(&scan)) {
    pop_scopes_above(depth);
    return false;
  }
  if (C_dialect == 2) select_primary_base(class_type);
  a_source_position open = pos_curr_token;
  push_scope(sck_class, -1, class_type, nullptr);
  if (C_dialect == 2) begin_class_being_defined();
  class_supplement_of(class_type)->class_scope = top_scope()->il_scope;
  top_scope()->current_access = scan.current_access;
  push_stop_token_stack();
  get_token();
  if (C_dialect == 2 && class_name_injection_enabled &&
      class_type->source_corresp.name != nullptr) {
    enter_injected_class_name_symbol(class_type->source_corresp.assoc_symbol);
  }
  if (curr_token == tok_rbrace) {
    empty_body(&scan);
  } else {
    member_loop(&scan);
  }
  check_members(&scan, open);
  pop_stop_token_stack();
  process_curr_token_pragmas();
  state->specifiers_range.end = end_pos_curr_token;
  required_token(tok_rbrace, ec_exp_rbrace);
  if (gnu_attributes_enabled && curr_token == tok_attribute) {
    attach_tag_attributes(scan_attributes(al_after_body), class_type, state, true);
  }
  wrap_up_class(&scan);
  pop_scopes_above(depth);
  end_class(class_type);
  if (C_dialect == 2) end_class_being_defined(class_type);
  (void)pos_block;
  return true;
}
