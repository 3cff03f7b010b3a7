// symbol_special.cpp - overload sets, projections, predeclared and unnamed symbols, and the way from a
// symbol to the IL and back.
// Entry:   add_symbol_to_overload_list, make_projection_symbol, enter_keyword, il_entry_for_symbol.
#include "driver/flags.h"
#include "driver/trans_unit.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "lex/macro.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"
#include "parse/symbol_links.h"
#include "parse/symbol_tbl.h"

//---------------------------------------------------------------------------------------------
// Overload sets

static bool replace_on_chain(a_symbol **link, a_symbol *old_symbol, a_symbol *new_symbol)
{
  for (; *link != nullptr; link = &(*link)->next_same_name) {
    if (*link == old_symbol) {
      new_symbol->next_same_name = old_symbol->next_same_name;
      old_symbol->next_same_name = nullptr;
      *link = new_symbol;
      return true;
    }
  }
  return false;
}

static a_scope_pointers_block *block_for_overloads(a_symbol *first, bool at_namespace_level,
                                                   a_namespace *name_space)
{
  bool is_local;
  int depth = scope_depth_of_symbol(first, &is_local);
  if (depth >= 0) return block_of_scope_entry(&scope_stack[depth]);
  if (at_namespace_level && name_space != nullptr) {
    a_symbol *symbol = skip_namespace_aliases(name_space)->source_corresp.assoc_symbol;
    return &symbol->variant.name_space.supplement->pointers_block;
  }
  if (first->is_class_member) {
    a_symbol *symbol = first->parent.class_type->source_corresp.assoc_symbol;
    return &class_supplement_of_symbol(symbol)->pointers_block;
  }
  return curr_translation_unit->scope_pointers;
}

// The set takes the place of `first` on the chain and in the scope's table.
static a_symbol *make_overload_symbol(a_symbol *first, bool at_namespace_level,
                                      a_namespace *name_space)
{
  a_symbol *set = alloc_symbol(sk_overloaded_function, first->header, first->position);
  set->scope_number = first->scope_number;
  set->decl_seq = first->decl_seq;
  set->has_dependent_using = first->has_dependent_using;
  set->is_class_member = first->is_class_member;
  set->parent = first->parent;
  if (!set->is_class_member) {
    set->parent.name_space = skip_namespace_aliases(first->parent.name_space);
  }
  a_symbol_header *header = first->header;
  if (first->is_synthesized_namespace_symbol) {
    replace_on_chain(&header->synthesized_namespace_symbols, first, set);
    set->is_synthesized_namespace_symbol = true;
  } else if (first->on_inactive_chain) {
    replace_on_chain(&header->inactive_symbols, first, set);
    set->on_inactive_chain = true;
  } else if (first->on_active_chain && !first->is_invisible) {
    replace_on_chain(&header->active_symbols, first, set);
    set->on_active_chain = true;
  }
  first->on_inactive_chain = first->on_active_chain = false;
  a_scope_pointers_block *block = block_for_overloads(first, at_namespace_level, name_space);
  if (block->symbol_hash_table != nullptr) {
    void **place = hash_find(block->symbol_hash_table, header, false);
    for (a_symbol **link = (a_symbol **)place; link && *link; link = &(*link)->next_in_bucket) {
      if (*link != first) continue;
      set->next_in_bucket = first->next_in_bucket;
      first->next_in_bucket = nullptr;
      *link = set;
      break;
    }
  }
  overloads_of_symbol(set) = first;
  return set;
}

a_symbol *add_symbol_to_overload_list(a_symbol *first, a_symbol *new_symbol,
                                      bool at_namespace_level, a_namespace *name_space)
{
  a_symbol *set = first->kind == sk_overloaded_function
                      ? first
                      : make_overload_symbol(first, at_namespace_level, name_space);
  a_symbol **link = &overloads_of_symbol(set);
  while (*link != nullptr)
    link = &(*link)->next_same_name;
  *link = new_symbol;
  new_symbol->next_same_name = nullptr;
  return set;
}

a_symbol *enter_overloaded_symbol(a_symbol_kind kind, a_symbol_locator *locator, int depth,
                                  a_symbol *first, a_symbol **overload_symbol)
{
  a_symbol_header *header =
      locator->header != nullptr ? locator->header : header_for_error_symbol();
  a_symbol *symbol = alloc_symbol(kind, header, locator->position);
  symbol->decl_seq = ++decl_seq_counter;
  symbol->scope_number = first->scope_number;
  symbol->is_class_member = first->is_class_member;
  symbol->parent = first->parent;
  if (depth >= 0) {
    a_scope_pointers_block *block = block_of_scope_entry(&scope_stack[depth]);
    symbol->prev_in_scope = block->last_symbol;
    if (block->last_symbol != nullptr)
      block->last_symbol->next_in_scope = symbol;
    else
      block->symbols = symbol;
    block->last_symbol = symbol;
  }
  *overload_symbol =
      add_symbol_to_overload_list(first, symbol, !first->is_class_member,
                                  first->is_class_member ? nullptr : first->parent.name_space);
  locator->symbol = symbol;
  locator->symbol_not_entered = false;
  return symbol;
}

void remove_symbol_from_overload_set(a_symbol *overload_symbol, a_symbol *symbol)
{
  a_symbol **link = &overloads_of_symbol(overload_symbol);
  for (; *link != nullptr; link = &(*link)->next_same_name) {
    if (*link == symbol) {
      *link = symbol->next_same_name;
      symbol->next_same_name = nullptr;
      return;
    }
  }
}

//---------------------------------------------------------------------------------------------
// Projections

// The base of the class that owns the symbol.
static a_base_class *base_that_owns(a_type *class_type, a_symbol *symbol)
{
  return symbol->is_class_member ? find_base_class_of(class_type, symbol->parent.class_type)
                                 : nullptr;
}

a_symbol *make_projection_symbol(a_symbol *symbol, a_type *class_type, a_base_class *base_class,
                                 a_derivation_step *derivation, bool is_ambiguous)
{
  class_type = skip_typerefs(class_type);
  if (class_type->kind == tk_template_param)
    class_type = proxy_class_for_template_param(class_type);
  a_symbol *projection = alloc_symbol(sk_projection, symbol->header, symbol->position);
  projection->is_class_member = true;
  projection->parent.class_type = class_type;
  a_scope *scope = class_supplement_of(class_type)->class_scope;
  if (scope != nullptr) projection->scope_number = scope->number;
  projection->is_ambiguous = is_ambiguous;
  a_symbol *target = symbol->kind == sk_projection ? projected_symbol_of(symbol) : symbol;
  projected_symbol_of(projection) = target;
  projection->variant.projection.base_class =
      base_class != nullptr ? base_class : base_that_owns(class_type, target);
  projection->variant.projection.derivation = derivation;
  return projection;
}

a_symbol *enter_synthesized_projection_symbol(a_symbol *symbol, a_namespace *name_space)
{
  a_symbol *projection = alloc_symbol(sk_projection, symbol->header, symbol->position);
  projected_symbol_of(projection) =
      symbol->kind == sk_projection ? projected_symbol_of(symbol) : symbol;
  projection->parent.name_space = name_space;
  projection->is_synthesized_namespace_symbol = true;
  projection->next_same_name = symbol->header->synthesized_namespace_symbols;
  symbol->header->synthesized_namespace_symbols = projection;
  return projection;
}

void set_namespace_projection_symbol(a_symbol *projection, a_symbol *namespace_symbol)
{
  check(projection->kind == sk_namespace_projection);
  projection->variant.projected_namespace = namespace_symbol->kind == sk_namespace_projection
                                                ? namespace_symbol->variant.projected_namespace
                                                : namespace_symbol;
}

a_symbol *make_namespace_projection_symbol(a_symbol_locator *locator, a_symbol *namespace_symbol)
{
  a_symbol *projection = alloc_symbol(sk_namespace_projection, locator->header, locator->position);
  set_namespace_projection_symbol(projection, namespace_symbol);
  return projection;
}

a_symbol *enter_namespace_projection_symbol(a_symbol_locator *locator, a_symbol *namespace_symbol,
                                            int depth)
{
  a_symbol *projection = make_namespace_projection_symbol(locator, namespace_symbol);
  add_symbol_to_symbol_table(projection, depth, false);
  return projection;
}

//---------------------------------------------------------------------------------------------
// Predeclared and unnamed symbols

a_symbol *enter_keyword(unsigned token, const char *text)
{
  a_symbol_header *header = find_symbol_header(text, (uint32_t)strlen(text));
  a_symbol *symbol = alloc_symbol(sk_keyword, header, null_source_position);
  check(token <= 255);
  symbol->variant.keyword.token = (unsigned char)token;
  symbol->is_predeclared = true;
  header->keyword_symbol = symbol;
  return symbol;
}

// A symbol at file scope, without a position, that the compiler declares itself.
static a_symbol *make_predeclared_symbol(a_symbol_kind kind, const char *name)
{
  a_symbol_locator locator = cleared_locator;
  locator.header = find_symbol_header(name, (uint32_t)strlen(name));
  a_symbol *symbol = enter_symbol(kind, &locator, depth_scope_stack >= 0 ? 0 : -1, true);
  symbol->is_predeclared = true;
  symbol->declared = true;
  return symbol;
}

a_symbol *make_predeclared_function_symbol(const char *name, a_type *type, unsigned builtin_kind)
{
  a_symbol *symbol = make_predeclared_symbol(sk_routine, name);
  a_routine *routine = alloc_routine();
  routine->type = type;
  routine->storage_class = sc_extern;
  routine->special.builtin_function_kind = (uint16_t)builtin_kind;
  routine->is_builtin = true;
  routine_of_symbol(symbol) = routine;
  set_source_corresp_with_scope_depth(&routine->source_corresp, symbol, 0);
  routine->source_corresp.name_linkage = C_dialect == 2 ? nlk_c : default_routine_name_linkage;
  add_to_routines_list(routine, 0);
  return symbol;
}

bool is_unused_predeclared_function(const a_symbol *symbol)
{
  if (symbol->kind != sk_routine || !symbol->is_predeclared || symbol->referenced) return false;
  const a_routine *routine = symbol->variant.routine.routine;
  return routine->is_builtin && routine->special.builtin_function_kind != 0;
}

a_symbol *make_symbol_for_predeclared_type(const char *name, a_type *type)
{
  a_symbol *symbol = make_predeclared_symbol(sk_type, name);
  a_type *typeref = alloc_type(tk_typeref);
  as_typeref(typeref).referenced_type = type;
  as_typeref(typeref).is_typedef_decl = true;
  as_typeref(typeref).predeclared = true;
  set_source_corresp(&typeref->source_corresp, symbol);
  type_of_symbol(symbol) = typeref;
  return symbol;
}

a_symbol *make_global_operator_new_or_delete_symbol(int which)
{
  // 1 new, 2 delete, 3 new[], 4 delete[]: the name kinds follow each other in this order.
  check(which >= 1 && which <= 4);
  a_symbol_locator locator;
  a_source_position position = null_source_position;
  make_opname_locator((unsigned)which, &locator, &position);
  bool is_new = which & 1;
  a_type *void_pointer = make_pointer_type(void_type());
  a_type *type = is_new ? make_routine_type(void_pointer, size_t_type())
                        : make_routine_type(void_type(), void_pointer);
  a_symbol *symbol = enter_symbol(sk_routine, &locator, 0, true);
  a_routine *routine = alloc_routine();
  routine->type = type;
  routine->storage_class = sc_extern;
  set_routine_special_kind(routine, sfk_operator);
  routine->special.operator_kind = (unsigned char)which;
  routine_of_symbol(symbol) = routine;
  set_source_corresp(&routine->source_corresp, symbol);
  add_to_routines_list(routine, 0);
  symbol->is_predeclared = true;
  return symbol;
}

static a_symbol *make_predeclared_namespace(const char *name)
{
  a_symbol_header *header = find_symbol_header(name, (uint32_t)strlen(name));
  a_symbol *symbol = alloc_symbol(sk_namespace, header, null_source_position);
  a_namespace *name_space = alloc_namespace(false);
  namespace_of_symbol(symbol) = name_space;
  set_source_corresp_with_scope_depth(&name_space->source_corresp, symbol, 0);
  symbol->is_predeclared = true;
  return symbol;
}

a_symbol *make_symbol_for_namespace_std()
{
  symbol_for_namespace_std = make_predeclared_namespace("std");
  symbol_for_namespace_std->variant.name_space.supplement->is_std = true;
  return symbol_for_namespace_std;
}

static a_symbol *symbol_for_namespace_abi;

a_symbol *make_symbol_for_namespace_abi()
{
  symbol_for_namespace_abi = make_predeclared_namespace("__cxxabiv1");
  return symbol_for_namespace_abi;
}

void enter_symbol_for_namespace_std()
{
  if (symbol_for_namespace_std == nullptr) make_symbol_for_namespace_std();
  add_symbol_to_symbol_table(symbol_for_namespace_std, 0, true);
}

void enter_symbol_for_namespace_abi()
{
  if (symbol_for_namespace_abi == nullptr) make_symbol_for_namespace_abi();
  add_symbol_to_symbol_table(symbol_for_namespace_abi, 0, true);
}

a_symbol *make_unnamed_symbol(a_symbol_kind kind, a_source_position *position)
{
  if (unnamed_symbol_header == nullptr) unnamed_symbol_header = make_unnamed_header();
  return alloc_symbol(kind, unnamed_symbol_header, *position);
}

// Stands in its scope's list (the end-of-scope work wants it) but on no chain.
a_symbol *make_unnamed_tag_symbol(a_symbol_kind kind, a_source_position *position)
{
  a_symbol *symbol = make_unnamed_symbol(kind, position);
  symbol->not_entered = true;
  symbol->decl_seq = ++decl_seq_counter;
  add_symbol_to_symbol_table(symbol, decl_scope_level, true);
  return symbol;
}

a_symbol *make_unnamed_namespace_symbol(a_source_position *position)
{
  a_symbol *symbol = make_unnamed_symbol(sk_namespace, position);
  symbol->not_entered = true;
  add_symbol_to_symbol_table(symbol, depth_scope_stack, true);
  return symbol;
}

a_symbol *unnamed_field_symbol(a_source_position *position)
{
  a_symbol *symbol = make_unnamed_symbol(sk_field, position);
  symbol->scope_number = depth_scope_stack >= 0 ? top_scope()->number : -1;
  return symbol;
}

//---------------------------------------------------------------------------------------------
// Symbols and the IL

void *il_entry_for_symbol_null_okay(a_symbol *symbol, an_il_entry_kind *kind)
{
  static const an_il_entry_kind il_kinds[sk_last] = {
#define SYMBOL_KIND(kind, text, il_kind, cplusplus_space, c_space) il_kind,
#include "parse/symbol_kinds.def"
  };
  check(symbol->kind < sk_last);
  *kind = il_kinds[symbol->kind];
  switch (symbol->kind) {
  case sk_macro: return symbol->variant.macro_def ? symbol->variant.macro_def->il_macro : nullptr;
  case sk_constant: return symbol->variant.constant;
  case sk_type:
  case sk_class_or_struct_tag:
  case sk_union_tag:
  case sk_enum_tag: return symbol->variant.type.type;
  case sk_variable:
  case sk_static_data_member: return symbol->variant.variable.variable;
  case sk_field: return symbol->variant.field.field;
  case sk_member_function:
  case sk_routine: return symbol->variant.routine.routine;
  case sk_label: return symbol->variant.label.label;
  case sk_class_template:
  case sk_function_template: return symbol->variant.template_info.entry;
  case sk_namespace: return symbol->variant.name_space.entry;
  case sk_keyword:
  case sk_undefined:
  case sk_extern_variable:
  case sk_extern_routine:
  case sk_projection:
  case sk_overloaded_function:
  case sk_parameter:
  case sk_namespace_projection:
  case sk_last: break;
  }
  return nullptr;
}

void *il_entry_for_symbol(a_symbol *symbol, an_il_entry_kind *kind)
{
  void *entry = il_entry_for_symbol_null_okay(symbol, kind);
  check(entry != nullptr);
  return entry;
}

a_source_correspondence *source_corresp_entry_for_symbol(a_symbol *symbol)
{
  an_il_entry_kind kind;
  void *entry = il_entry_for_symbol_null_okay(symbol, &kind);
  return entry != nullptr ? source_corresp_for_il_entry(entry, kind) : nullptr;
}

a_type *type_of_entity_symbol(a_symbol *symbol)
{
  switch (symbol->kind) {
  case sk_constant: return symbol->variant.constant ? symbol->variant.constant->type : nullptr;
  case sk_type:
  case sk_class_or_struct_tag:
  case sk_union_tag:
  case sk_enum_tag: return symbol->variant.type.type;
  case sk_variable:
  case sk_static_data_member:
    return symbol->variant.variable.variable ? symbol->variant.variable.variable->type : nullptr;
  case sk_field: return symbol->variant.field.field ? symbol->variant.field.field->type : nullptr;
  case sk_member_function:
  case sk_routine:
    return symbol->variant.routine.routine ? symbol->variant.routine.routine->type : nullptr;
  case sk_extern_variable:
  case sk_extern_routine: return symbol->variant.extern_entity.type;
  case sk_projection: return type_of_entity_symbol(projected_symbol_of(symbol));
  case sk_parameter: return symbol->variant.param_type ? symbol->variant.param_type->type : nullptr;
  case sk_keyword:
  case sk_macro:
  case sk_label:
  case sk_undefined:
  case sk_overloaded_function:
  case sk_class_template:
  case sk_function_template:
  case sk_namespace:
  case sk_namespace_projection:
  case sk_last: break;
  }
  return nullptr;
}

//---------------------------------------------------------------------------------------------
// Place and membership

int scope_depth_of_symbol(a_symbol *symbol, bool *is_local)
{
  *is_local = symbol->kind == sk_label;
  if (symbol->scope_number < 0) return -1;
  for (int depth = depth_scope_stack; depth >= 0; --depth) {
    if (scope_stack[depth].number != symbol->scope_number) continue;
    *is_local |=
        scope_stack[depth].enclosing_function_depth >= 0 || scope_stack[depth].kind == sck_function;
    return depth;
  }
  return -1;
}

bool is_local_symbol(a_symbol *symbol)
{
  a_source_correspondence *corresp = source_corresp_entry_for_symbol(symbol);
  if (corresp != nullptr && corresp->assoc_symbol == symbol) return corresp->is_local;
  bool is_local;
  scope_depth_of_symbol(symbol, &is_local);
  return is_local;
}

// A variable or routine declared extern in a block.
bool is_block_extern_symbol(a_symbol *symbol)
{
  if (symbol->kind != sk_variable && symbol->kind != sk_routine) return false;
  if (symbol->declared_at_block_scope) return true;
  bool is_local;
  scope_depth_of_symbol(symbol, &is_local);
  if (!is_local) return false;
  if (symbol->kind == sk_routine) return true;
  return variable_of_symbol(symbol) != nullptr &&
         variable_of_symbol(symbol)->storage_class == sc_extern;
}

a_namespace *parent_namespace_for_symbol(a_symbol *symbol)
{
  if (!symbol->is_class_member) return symbol->parent.name_space;
  a_source_correspondence *corresp = source_corresp_entry_for_symbol(symbol);
  return corresp != nullptr ? parent_namespace_of(corresp) : nullptr;
}

void set_class_membership(a_symbol *symbol, a_source_correspondence *corresp, a_type *class_type)
{
  symbol->is_class_member = true;
  symbol->parent.class_type = class_type;
  if (corresp != nullptr) set_class_membership(corresp, class_type);
}

void set_namespace_membership(a_symbol *symbol, a_source_correspondence *corresp,
                              a_namespace *name_space)
{
  symbol->is_class_member = false;
  symbol->parent.name_space = skip_namespace_aliases(name_space);
  if (corresp == nullptr) return;
  an_il_entry_kind kind;
  il_entry_for_symbol_null_okay(symbol, &kind);
  set_namespace_membership(corresp, kind, symbol->parent.name_space);
}

void set_membership_in_source_corresp(a_symbol *symbol, a_source_correspondence *corresp)
{
  if (symbol->is_class_member)
    set_class_membership(symbol, corresp, symbol->parent.class_type);
  else if (symbol->parent.name_space)
    set_namespace_membership(symbol, corresp, symbol->parent.name_space);
}

an_access_specifier access_for_symbol(a_symbol *symbol)
{
  if (symbol->kind == sk_projection) {
    return (an_access_specifier)symbol->variant.projection.access;
  }
  a_source_correspondence *corresp = source_corresp_entry_for_symbol(symbol);
  return corresp != nullptr ? (an_access_specifier)corresp->access : as_public;
}

an_access_specifier compute_access(an_access_specifier member_access,
                                   an_access_specifier inheritance)
{
  if (inheritance == as_inaccessible || member_access > as_protected) return as_inaccessible;
  if (inheritance == as_private) return as_private;
  return member_access != inheritance ? as_protected : inheritance;
}
