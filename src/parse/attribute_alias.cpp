// attribute_alias.cpp - targets of the alias and weakref attributes.
// Owns:    the list of fixups of the translation unit.
// Rule:    a target may be defined behind its alias, so all are resolved at the end of the file.
#include <cstring>

#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "mem/mem_manage.h"
#include "parse/attribute_private.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"
#include "parse/symbol_ref.h"
#include "parse/symbol_tbl.h"

struct an_alias_fixup {
  an_alias_fixup *next;
  void *entity;
  an_il_entry_kind kind;
  an_attribute *attribute;
};

static an_alias_fixup *alias_fixups;
static an_alias_fixup **last_alias_fixup = &alias_fixups;

void add_alias_fixup(void *entity, an_il_entry_kind kind, an_attribute *attribute)
{
  an_alias_fixup *fixup = (an_alias_fixup *)alloc_in_region(0, sizeof(an_alias_fixup));
  fixup->next = nullptr;
  fixup->entity = entity;
  fixup->kind = kind;
  fixup->attribute = attribute;
  *last_alias_fixup = fixup;
  last_alias_fixup = &fixup->next;
}

//---------------------------------------------------------------------------------------------
// Targets.

static const char *asm_name_of(a_symbol *symbol)
{
  if (is_routine_symbol(symbol)) return routine_of_symbol(symbol)->asm_name;
  if (symbol->kind != sk_variable) return nullptr;
  a_variable *variable = variable_of_symbol(symbol);
  return variable->asm_name_is_text ? variable->asm_name : nullptr;
}

static bool is_entity(a_symbol *symbol)
{
  return is_routine_symbol(symbol) || symbol->kind == sk_variable ||
         symbol->kind == sk_extern_routine || symbol->kind == sk_extern_variable;
}

static bool is_file_level(a_symbol *symbol)
{
  return symbol->scope_number == scope_stack[0].number || symbol->kind == sk_extern_routine ||
         symbol->kind == sk_extern_variable;
}

// The file-level entity of that linker name: its own name, or the asm name that it was given.
static a_symbol *find_target(const char *name)
{
  a_symbol_header *header = find_symbol_header(name, (uint32_t)strlen(name));
  a_symbol *chains[] = {header->active_symbols, header->inactive_symbols};
  for (a_symbol *symbol : chains) {
    for (; symbol; symbol = symbol->next_same_name) {
      if (is_entity(symbol) && is_file_level(symbol) && asm_name_of(symbol) == nullptr)
        return symbol;
    }
  }
  for (a_symbol *symbol = block_of_scope_entry(&scope_stack[0])->symbols; symbol;
       symbol = symbol->next_in_scope) {
    if (!is_routine_symbol(symbol) && symbol->kind != sk_variable) continue;
    const char *asm_name = asm_name_of(symbol);
    if (asm_name && strcmp(asm_name, name) == 0) return symbol;
  }
  return nullptr;
}

static a_routine *target_routine(a_symbol *symbol)
{
  if (is_routine_symbol(symbol)) return routine_of_symbol(symbol);
  if (symbol->kind == sk_extern_routine) return symbol->variant.extern_entity.entity.routine;
  return nullptr;
}

static a_variable *target_variable(a_symbol *symbol)
{
  if (symbol->kind == sk_variable) return variable_of_symbol(symbol);
  if (symbol->kind == sk_extern_variable) return symbol->variant.extern_entity.entity.variable;
  return nullptr;
}

static void resolve_routine(an_alias_fixup *fixup, a_symbol *symbol)
{
  a_routine *routine = (a_routine *)fixup->entity;
  a_routine *target = target_routine(symbol);
  a_source_position position = fixup->attribute->position;
  bool is_weakref = fixup->attribute->kind == ak_weakref;
  if (target == nullptr) {
    pos_sy_error(ec_aliased_name_bad_kind, position, symbol);
    return;
  }
  for (a_routine *step = target; step; step = step->alias_target) {
    if (step != routine) continue;
    pos_error(ec_alias_loop, position);
    return;
  }
  if (!is_weakref && routine->is_defined) {
    if (routine->is_inline) {
      pos_warning(ec_ignoring_inline_definition_because_of_alias, position);
      set_routine_defined(routine, false);
    } else {
      pos_error(ec_alias_cannot_have_definition, position);
      return;
    }
  }
  bool target_is_alias = f_find_attribute(ak_alias, target->source_corresp.attributes) != nullptr;
  if (!is_weakref && !target->is_defined && !target_is_alias) {
    pos_st_error(ec_aliased_name_undeclared, position, string_argument(fixup->attribute));
    return;
  }
  routine->alias_target = target;
  mark_routine_referenced(target);
  symbol->referenced = true;
}

static void resolve_variable(an_alias_fixup *fixup, a_symbol *symbol)
{
  a_variable *variable = (a_variable *)fixup->entity;
  a_variable *target = target_variable(symbol);
  a_source_position position = fixup->attribute->position;
  if (target == nullptr) {
    pos_sy_error(ec_aliased_name_bad_kind, position, symbol);
    return;
  }
  for (a_variable *step = target; step; step = step->alias_target) {
    if (step != variable) continue;
    pos_error(ec_alias_loop, position);
    return;
  }
  if (variable->init_kind != initk_none) {
    pos_error(ec_alias_cannot_have_definition, position);
    return;
  }
  variable->alias_target = target;
  mark_variable_referenced(target);
  symbol->referenced = true;
}

static void resolve(an_alias_fixup *fixup)
{
  const char *name = string_argument(fixup->attribute);
  a_symbol *symbol = find_target(name);
  if (symbol == nullptr) {
    // A weak reference may be to something outside.
    if (fixup->attribute->kind == ak_weakref) return;
    pos_st_error(ec_aliased_name_undeclared, fixup->attribute->position, name);
    return;
  }
  if (fixup->kind == iek_routine) {
    resolve_routine(fixup, symbol);
  } else {
    resolve_variable(fixup, symbol);
  }
}

void process_alias_fixup_list()
{
  an_alias_fixup *list = alias_fixups;
  alias_fixups = nullptr;
  last_alias_fixup = &alias_fixups;
  for (; list; list = list->next)
    resolve(list);
}

void attribute_trans_unit_init()
{
  alias_fixups = nullptr;
  last_alias_fixup = &alias_fixups;
}
