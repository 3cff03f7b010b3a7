// class_body.cpp - bodies of classes: the member loop and the wrap-up of a complete class.
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
// The wrap-up.

static bool misra_wants_complete_members()
{
  return check_misra_c_2004 &&
         misra_c_2004_generate_diagnostic(ec_misra_c_2004_18_1, misra_required_severity);
}

// Only the last member of a structure may be without bound, behind a named one (C99 6.7.2.1p2).
static void check_flexible_array(a_class_scan_state *scan)
{
  a_field *first = as_class(scan->class_type).first_field;
  bool is_union = scan->class_type->kind == tk_union;
  for (a_field *field = first; field; field = field->next) {
    if (!field->is_flexible_array) continue;
    a_source_position position = field->source_corresp.decl_position;
    bool well_placed = field->next == nullptr && !is_union && field != first;
    bool gnu_place = (gcc_mode || gpp_mode) && (field->next == nullptr || is_union);
    if (!well_placed && !gnu_place) {
      pos_error(ec_incomplete_type_not_allowed, position);
      field->type = error_type();
      field->is_flexible_array = false;
      continue;
    }
    bool misra_reports = misra_wants_complete_members();
    if (misra_reports) pos_diagnostic(misra_required_severity, ec_misra_c_2004_18_1, position);
    if (!flexible_array_members_allowed && !gcc_mode && !gpp_mode && !c99_mode) {
      an_error_severity severity = strict_ansi_mode ? strict_ansi_error_severity : es_warning;
      if (severity >= es_error || !misra_reports) {
        pos_diagnostic(severity, ec_incomplete_type_not_allowed, position);
      }
    } else if (report_gnu_extensions && !c99_mode) {
      pos_warning(ec_flexible_array_is_nonstandard, position);
    }
    as_class(scan->class_type).has_flexible_array = true;
  }
}

static bool has_no_named_member(const a_class_scan_state *scan)
{
  return C_dialect != 2 && !scan->any_named_member;
}

static void check_members(a_class_scan_state *scan, a_source_position position)
{
  a_class_type_part &part = as_class(scan->class_type);
  if (has_no_named_member(scan) && !part.has_empty_body) {
    pos_diagnostic(strict_ansi_mode ? strict_ansi_discretionary_severity : es_warning,
                   ec_no_named_fields, position);
  }
  check_flexible_array(scan);
}

static void pack_fields(a_type *class_type)
{
  if (!as_class(class_type).is_packed && !pack_all_structs) return;
  for (a_field *field = as_class(class_type).first_field; field; field = field->next) {
    if (is_error_type(field->type)) continue;
    field->is_packed_field = true;
    field->type = f_make_qualified_type(field->type, tq_packed, -1);
  }
}

// Whether an object of the class may be assigned to, and what its members say of it.
static void gather_field_facts(a_type *class_type)
{
  a_class_type_part &part = as_class(class_type);
  for (a_field *field = part.first_field; field; field = field->next) {
    a_type *type = skip_array_types(field->type);
    if (is_const_qualified(field->type)) part.has_const_field = true;
    if (is_volatile_qualified(field->type)) part.has_volatile_field = true;
    type = skip_typerefs(type);
    if (!is_class_struct_union_type(type)) continue;
    part.has_const_field |= as_class(type).has_const_field;
    part.has_volatile_field |= as_class(type).has_volatile_field;
    if (as_class(type).has_flexible_array && field->next == nullptr) part.has_flexible_array = true;
  }
}

static void wrap_up_class(a_class_scan_state *scan)
{
  a_type *class_type = scan->class_type;
  a_symbol *symbol = class_type->source_corresp.assoc_symbol;
  a_class_symbol_supplement *supplement = class_supplement_of_symbol(symbol);
  a_source_position saved_position = error_position;
  error_position = symbol->position;
  supplement->first_member = supplement->pointers_block.symbols;
  supplement->is_aggregate = !scan->not_aggregate;
  supplement->is_pod = !scan->not_aggregate && !scan->not_pod;
  supplement->has_members = scan->any_named_member;
  pack_fields(class_type);
  gather_field_facts(class_type);
  if (may_be_added_to_types_list(class_type, decl_scope_level)) {
    move_to_end_of_types_list(class_type);
  }
  do_class_layout(class_type);
  as_class(class_type).is_incomplete_until_end = false;
  error_position = saved_position;
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
