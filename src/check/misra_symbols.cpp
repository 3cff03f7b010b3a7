// misra_symbols.cpp - rules on names: uniqueness of identifiers, headers that declare them, objects that one
// function alone uses.
// Owns:    the record of the functions that use each object.
// Entry:   check_symbol_uniqueness, symbol_in_different_header_file, note_use_of_variable,
//          misra_check_file_scope, variables_in_same_scope, get_pointer_depth.
#include <cstring>

#include "check/misra.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/types.h"
#include "lex/source_input.h"
#include "mem/mem_manage.h"
#include "parse/scope_stk.h"
#include "parse/symbol_tbl.h"

//---------------------------------------------------------------------------------------------
// Uniqueness (5.2, 5.3, 5.4, 5.6, 5.7)

// Bits of what one name does to another, in the order in which the rules are reported.
enum : unsigned {
  clash_hides = 1,
  clash_typedef = 2,
  clash_tag = 4,
  clash_name_space = 8,
  clash_reuse = 16
};

static const struct {
  unsigned clash;
  an_error_code code;
  bool is_required;
} clash_rules[] = {
    {clash_hides, ec_misra_c_2004_5_2, true},  {clash_typedef, ec_misra_c_2004_5_3, true},
    {clash_tag, ec_misra_c_2004_5_4, true},    {clash_name_space, ec_misra_c_2004_5_6, false},
    {clash_reuse, ec_misra_c_2004_5_7, false},
};

// What a block declares extern is remembered by such a symbol, whatever becomes of the block's own.
static bool is_extern_record(const a_symbol *symbol)
{
  return symbol->kind == sk_extern_variable || symbol->kind == sk_extern_routine;
}

// Names of parameters in prototypes that are no definition count for nothing: they repeat by nature.
static bool is_compared(const a_symbol *symbol)
{
  if (is_extern_record(symbol)) return true;
  if (!symbol->declared || symbol->is_anonymous_union_member || symbol->header->is_unnamed) {
    return false;
  }
  switch (name_space_for_symbol_kind[symbol->kind]) {
  case nsk_label:
  case nsk_tag:
  case nsk_member:
  case nsk_extern: return true;
  case nsk_ordinary: return symbol->kind != sk_parameter && symbol->kind != sk_undefined;
  case nsk_macro:
  case nsk_keyword: return false;
  }
  return false;
}

// The object or function that the symbol declares with linkage, or null.
static void *linked_entity(a_symbol *symbol)
{
  if (symbol->kind == sk_extern_variable) return symbol->variant.extern_entity.entity.variable;
  if (symbol->kind == sk_extern_routine) return symbol->variant.extern_entity.entity.routine;
  if (symbol->kind == sk_routine) return routine_of_symbol(symbol);
  if (symbol->kind != sk_variable) return nullptr;
  bool is_of_file =
      symbol->declared_at_block_scope || symbol->scope_number == scope_stack[0].number;
  return is_of_file ? variable_of_symbol(symbol) : nullptr;
}

static bool hides(const a_symbol *symbol, const a_symbol *other)
{
  a_name_space_kind space = name_space_for_symbol_kind[symbol->kind];
  if (space != nsk_ordinary && space != nsk_tag) return false; // labels and members hide nothing
  return other->on_active_chain && name_space_for_symbol_kind[other->kind] == space &&
         other->scope_number != symbol->scope_number;
}

static unsigned clashes_with(a_symbol *symbol, a_symbol *other)
{
  if (other == symbol || !is_compared(other)) return 0;
  void *entity = linked_entity(symbol);
  if (entity != nullptr && entity == linked_entity(other)) return 0;
  unsigned clashes = clash_reuse;
  if (is_extern_record(other)) return clashes;
  if (hides(symbol, other)) clashes |= clash_hides;
  if (symbol->kind == sk_type || other->kind == sk_type) clashes |= clash_typedef;
  if (is_tag_symbol(symbol) || is_tag_symbol(other)) clashes |= clash_tag;
  a_name_space_kind space = name_space_for_symbol_kind[symbol->kind];
  a_name_space_kind other_space = name_space_for_symbol_kind[other->kind];
  if (space != other_space && space != nsk_member && other_space != nsk_member) {
    clashes |= clash_name_space;
  }
  return clashes;
}

static unsigned clashes_on_chain(a_symbol *symbol, a_symbol *chain)
{
  unsigned clashes = 0;
  for (; chain != nullptr; chain = chain->next_same_name)
    clashes |= clashes_with(symbol, chain);
  return clashes;
}

void check_symbol_uniqueness(a_symbol *symbol)
{
  if (symbol->not_entered || !is_compared(symbol)) return;
  a_symbol_header *header = symbol->header;
  unsigned clashes = clashes_on_chain(symbol, header->active_symbols) |
                     clashes_on_chain(symbol, header->inactive_symbols) |
                     clashes_on_chain(symbol, header->removed_symbols);
  if (clashes == 0) return;
  for (auto &rule : clash_rules) {
    an_error_severity severity =
        rule.is_required ? misra_required_severity : misra_advisory_severity;
    if (!(clashes & rule.clash) || !misra_c_2004_generate_diagnostic(rule.code, severity)) continue;
    pos_diagnostic(severity, rule.code, symbol->position);
    return;
  }
}

//---------------------------------------------------------------------------------------------
// Headers (8.8)

static const char *full_name_of_file(a_seq_number sequence, bool *is_include_file)
{
  a_line_number line;
  bool at_end = false;
  a_source_file *file = source_file_for_seq(sequence, &line, &at_end, true);
  *is_include_file = file != nullptr && file->is_include_file;
  return file != nullptr && file->full_name != nullptr ? file->full_name : "";
}

bool symbol_in_different_header_file(a_seq_number sequence, a_symbol *symbol)
{
  if (symbol->position.seq == 0) return false; // the compiler's own
  bool is_header, symbol_is_in_header;
  const char *file = full_name_of_file(sequence, &is_header);
  const char *file_of_symbol = full_name_of_file(symbol->position.seq, &symbol_is_in_header);
  // Behind its own definition a name is declared in the header alone.
  if (!symbol_is_in_header && symbol->defined) return false;
  return (is_header || symbol_is_in_header) && strcmp(file, file_of_symbol) != 0;
}

//---------------------------------------------------------------------------------------------
// The end of a unit: objects that one function alone uses (8.7), incomplete types

struct an_object_use {
  a_variable *variable;
  a_routine *routine;     // the last that used it; null outside functions
  unsigned routine_count; // 2 stands for more as well
};

static a_hash_table *object_uses;

static uint32_t hash_of_variable(const void *key)
{
  return (uint32_t)((uintptr_t)key >> 4) * 0x9E3779B1u;
}

static bool is_use_of_variable(const void *value, const void *key)
{
  return ((const an_object_use *)value)->variable == key;
}

static bool is_static_object_of_file(const a_variable *variable)
{
  return variable->storage_class == sc_static && !variable->source_corresp.is_local;
}

// A use outside all functions, in an initializer, keeps the object at file scope as two functions do.
void note_use_of_variable(a_variable *variable)
{
  if (!is_static_object_of_file(variable)) return;
  if (object_uses == nullptr) {
    object_uses = alloc_hash_table(0, 100, hash_of_variable, is_use_of_variable);
  }
  void **place = hash_find(object_uses, variable, true);
  an_object_use *use = (an_object_use *)*place;
  a_routine *routine = curr_routine();
  if (use == nullptr) {
    use = (an_object_use *)alloc_in_region(0, sizeof(*use));
    *use = {variable, routine, routine == nullptr ? 2u : 1u};
    *place = use;
  } else if (use->routine != routine) {
    use->routine = routine;
    use->routine_count = 2;
  }
}

// 18.1: a structure or union that stays without members.
static void check_types_are_complete(a_scope *scope)
{
  for (a_type *type = scope->types; type != nullptr; type = type->next) {
    if (!kind_has_class_part(type->kind) || !type->is_incomplete) continue;
    if (type->source_corresp.assoc_symbol == nullptr) continue;
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_18_1,
                   type->source_corresp.decl_position);
  }
}

void misra_check_file_scope(a_scope *scope)
{
  check_types_are_complete(scope);
  if (object_uses == nullptr) return;
  for (a_variable *variable = scope->variables; variable != nullptr; variable = variable->next) {
    void **place = hash_find(object_uses, variable, false);
    if (place == nullptr || ((an_object_use *)*place)->routine_count != 1) continue;
    a_symbol *symbol = variable->source_corresp.assoc_symbol;
    if (symbol == nullptr) continue;
    pos_sy_diagnostic(misra_required_severity, ec_misra_c_2004_8_7,
                      variable->source_corresp.decl_position, symbol);
  }
}

//---------------------------------------------------------------------------------------------
// Questions

bool variables_in_same_scope(const a_variable *a, const a_variable *b)
{
  const a_symbol *symbol_a = a->source_corresp.assoc_symbol;
  const a_symbol *symbol_b = b->source_corresp.assoc_symbol;
  return symbol_a != nullptr && symbol_b != nullptr &&
         symbol_a->scope_number == symbol_b->scope_number;
}

int get_pointer_depth(a_type *type, bool through_all)
{
  int depth = 0, deepest = 0;
  for (;;) {
    type = skip_typerefs(type);
    if (type->kind == tk_pointer) {
      ++depth;
      type = as_pointer(type).pointed_to_type;
    } else if (through_all && type->kind == tk_array) {
      type = as_array(type).element_type;
    } else if (through_all && type->kind == tk_routine) {
      if (depth > deepest) deepest = depth;
      depth = 0; // the result is an object of its own
      type = as_routine(type).return_type;
    } else {
      return depth > deepest ? depth : deepest;
    }
  }
}
