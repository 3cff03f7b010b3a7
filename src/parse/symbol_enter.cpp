// symbol_enter.cpp - making symbols and linking them: the scope's list and table, the header's chain.
// Rule:    an active chain is ordered by scope, innermost first, also when a symbol is entered into an
//          outer scope; keywords and macros hang on the header and stand on no chain.
// Entry:   enter_symbol, add_symbol_to_symbol_table, unlink_symbol_from_symbol_table, remove_symbol.
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"
#include "parse/symbol_links.h"
#include "parse/symbol_tbl.h"

//---------------------------------------------------------------------------------------------
// The scope's own table

static uint32_t hash_of_header(const void *key)
{
  return ((const a_symbol_header *)key)->hash;
}

static bool symbol_has_header(const void *value, const void *key)
{
  return ((const a_symbol *)value)->header == key;
}

// Minimum size of the table of a scope of that kind; 0: the scope has none.  C looks no name up in the
// file scope alone: the chain of the header does.
static uint32_t table_size_for_scope_kind(a_scope_kind kind)
{
  switch (kind) {
  case sck_file: return C_dialect == 2 ? 100 : 0;
  case sck_namespace:
  case sck_namespace_extension: return 100;
  case sck_class: return 30;
  case sck_class_reactivation: return 5;
  case sck_function_prototype:
  case sck_block:
  case sck_namespace_reactivation:
  case sck_template_declaration:
  case sck_template_instantiation:
  case sck_instantiation_context:
  case sck_pragma_rescan:
  case sck_function_access:
  case sck_condition:
  case sck_enum:
  case sck_function: return 0;
  }
  unexpected_kind("scope kind");
}

static void add_to_scope_table(a_symbol *symbol, a_scope_pointers_block *block, uint32_t size)
{
  if (block->symbol_hash_table == nullptr) {
    block->symbol_hash_table = alloc_hash_table(0, size, hash_of_header, symbol_has_header);
  }
  a_symbol **place = (a_symbol **)hash_find(block->symbol_hash_table, symbol->header, true);
  symbol->next_in_bucket = *place;
  *place = symbol;
}

a_symbol *find_symbol_list_in_table(a_scope_pointers_block *block, a_symbol_header *header)
{
  if (block->symbol_hash_table == nullptr) return nullptr;
  void **place = hash_find(block->symbol_hash_table, header, false);
  return place != nullptr ? (a_symbol *)*place : nullptr;
}

void remove_symbol_from_lookup_table(a_symbol *symbol, a_scope_pointers_block *block)
{
  if (block->symbol_hash_table == nullptr) return;
  a_symbol **link = (a_symbol **)hash_find(block->symbol_hash_table, symbol->header, false);
  if (link == nullptr) return;
  a_symbol **first = link;
  while (*link != nullptr && *link != symbol)
    link = &(*link)->next_in_bucket;
  if (*link == nullptr) return;
  // An entry needs a symbol to tell its name: an emptied one keeps none and must not be found.
  if (link == first && symbol->next_in_bucket == nullptr) {
    hash_remove(block->symbol_hash_table, symbol->header);
  } else {
    *link = symbol->next_in_bucket;
  }
  symbol->next_in_bucket = nullptr;
}

//---------------------------------------------------------------------------------------------
// Step 1: the scope's list

static void append_to_block(a_symbol *symbol, a_scope_pointers_block *block)
{
  symbol->prev_in_scope = block->last_symbol;
  symbol->next_in_scope = nullptr;
  if (block->last_symbol != nullptr)
    block->last_symbol->next_in_scope = symbol;
  else
    block->symbols = symbol;
  block->last_symbol = symbol;
}

// C++: a member named as its class (12.1, 9.2p13).  Returns true after an error.
static bool check_member_named_as_class(a_symbol *symbol, a_scope_stack_entry *entry,
                                        bool no_errors)
{
  if (C_dialect != 2 || entry->kind != sck_class || entry->assoc_type == nullptr) return false;
  a_symbol *class_symbol = entry->assoc_type->source_corresp.assoc_symbol;
  if (class_symbol == nullptr || class_symbol->header != symbol->header) return false;
  if (symbol->kind == sk_type && symbol->variant.type.is_tag_typedef) return false;
  if (symbol_kind_is_class(symbol->kind) || symbol->kind == sk_projection) return false;
  bool is_function = is_routine_symbol(symbol) || symbol->kind == sk_overloaded_function;
  if (!no_errors) {
    pos_sy_error(is_function ? ec_class_and_member_function_name_conflict
                             : ec_class_and_member_name_conflict,
                 symbol->position, symbol);
  }
  symbol->not_entered = true;
  return true;
}

a_class_symbol_supplement *class_supplement_of_type(a_type *class_type)
{
  a_symbol *symbol = skip_typerefs(class_type)->source_corresp.assoc_symbol;
  return symbol != nullptr && symbol_kind_is_class(symbol->kind)
             ? class_supplement_of_symbol(symbol)
             : nullptr;
}

// A symbol of no scope on the stack: into its class, its namespace, or the list of homeless ones.
static void link_without_depth(a_symbol *symbol)
{
  a_scope_pointers_block *block = nullptr;
  uint32_t size = 30;
  if (symbol->is_class_member) {
    a_class_symbol_supplement *supplement = class_supplement_of_type(symbol->parent.class_type);
    if (supplement != nullptr) {
      block = &supplement->pointers_block;
      symbol->scope_number = supplement->class_scope_number;
    }
  } else if (symbol->parent.name_space != nullptr) {
    a_symbol *space = symbol->parent.name_space->source_corresp.assoc_symbol;
    if (space != nullptr && space->kind == sk_namespace) {
      block = &space->variant.name_space.supplement->pointers_block;
      symbol->scope_number = space->variant.name_space.supplement->scope_number;
      size = 100;
    }
  }
  if (block != nullptr) {
    append_to_block(symbol, block);
    add_to_scope_table(symbol, block, size);
  } else {
    symbol->scope_number = -1;
    symbol->next_in_scope = symbols_with_no_scope;
    if (symbols_with_no_scope != nullptr) symbols_with_no_scope->prev_in_scope = symbol;
    symbols_with_no_scope = symbol;
  }
}

// C++: what is declared in the scope of a class or namespace is a member of it.
static void set_parent_of_symbol(a_symbol *symbol, const a_scope_stack_entry *entry)
{
  if (symbol->is_class_member || symbol->parent.name_space != nullptr) return;
  if (entry->kind == sck_class) {
    symbol->is_class_member = true;
    symbol->parent.class_type = entry->assoc_type;
  } else if (entry->kind == sck_namespace || entry->kind == sck_namespace_extension) {
    symbol->parent.name_space = entry->assoc_namespace;
  }
}

static void link_into_scope(a_symbol *symbol, int depth, bool *no_errors)
{
  if (depth < 0) {
    link_without_depth(symbol);
    return;
  }
  a_scope_stack_entry *entry = &scope_stack[depth];
  symbol->scope_number = entry->number;
  if (C_dialect == 2) set_parent_of_symbol(symbol, entry);
  if (check_member_named_as_class(symbol, entry, *no_errors)) *no_errors = true;
  a_scope_pointers_block *block = block_of_scope_entry(entry);
  append_to_block(symbol, block);
  uint32_t size = table_size_for_scope_kind(entry->kind);
  if (size != 0 && !symbol->not_entered) add_to_scope_table(symbol, block, size);
}

//---------------------------------------------------------------------------------------------
// Step 2: the header's chain

void add_symbol_to_inactive_list(a_symbol *symbol)
{
  symbol->next_same_name = symbol->header->inactive_symbols;
  symbol->header->inactive_symbols = symbol;
  symbol->on_inactive_chain = true;
  symbol->on_active_chain = false;
}

static bool scope_is_above(int scope_number, int depth)
{
  for (int i = depth_scope_stack; i > depth; --i) {
    if (scope_stack[i].number == scope_number) return true;
  }
  return false;
}

// The place on the chain behind all symbols of scopes above the target.
static a_symbol **place_on_chain(a_symbol_header *header, int depth)
{
  a_symbol **link = &header->active_symbols;
  if (depth == depth_scope_stack) return link;
  while (*link != nullptr && scope_is_above((*link)->scope_number, depth)) {
    link = &(*link)->next_same_name;
  }
  return link;
}

static bool is_type_name_symbol(const a_symbol *symbol)
{
  return is_type_symbol(symbol) || symbol->kind == sk_class_template;
}

static bool is_local_variable_symbol(const a_symbol *symbol)
{
  return symbol->kind == sk_variable;
}

// Declarations of the same function that the new one hides.
static void check_hiding(a_symbol *symbol, a_symbol *first_behind, int depth)
{
  if (!is_local_variable_symbol(symbol) || depth_innermost_function_scope < 0) return;
  for (a_symbol *old = first_behind; old != nullptr; old = old->next_same_name) {
    if (old->scope_number == symbol->scope_number || !is_local_variable_symbol(old)) continue;
    bool is_local;
    int old_depth = scope_depth_of_symbol(old, &is_local);
    if (old_depth < depth_innermost_function_scope) return;
    if (C_dialect == 2 && old->is_condition_decl && old_depth == depth - 1) {
      if (!use_nonstandard_for_init_scope && !gpp_mode) {
        pos_st_error(ec_redeclaration_of_condition_decl_name, symbol->position,
                     symbol->header->identifier);
      }
      return;
    }
    pos_sy_remark(ec_local_variable_hidden, symbol->position, old);
    return;
  }
}

enum a_conflict : unsigned char {
  cf_none,         // both stand
  cf_replace_old,  // a using-declaration or an unused predeclared function gives way
  cf_tag_behind,   // the old one is a tag, it goes behind
  cf_behind_other, // the new one is the tag
  cf_error
};

static a_conflict conflict_of_types(a_symbol *symbol, a_symbol *old)
{
  bool new_is_tag = is_tag_symbol(symbol), old_is_tag = is_tag_symbol(old);
  bool tag_and_other = C_dialect == 2 && new_is_tag != old_is_tag;
  if (tag_and_other && old_is_tag && !is_type_name_symbol(symbol)) return cf_tag_behind;
  if (tag_and_other && new_is_tag && !is_type_name_symbol(old)) return cf_behind_other;
  return cf_error;
}

// What two symbols of one scope and name space mean for each other (in this order).
static a_conflict find_conflict(a_symbol *symbol, a_symbol *old, int depth, bool no_errors)
{
  if (symbol->kind == sk_undefined || old->kind == sk_undefined) return cf_none;
  bool hides_param = symbol->kind == sk_variable && !symbol->is_parameter && old->is_parameter;
  bool old_rule = C_dialect == 1 || cfront_2_1_mode || cfront_3_0_mode ||
                  ((gcc_mode || gpp_mode) && gnu_version <= 30399);
  if (hides_param && old_rule) {
    if (!no_errors) {
      pos_st_warning(ec_decl_hides_function_parameter, symbol->position,
                     symbol->header->identifier);
    }
    return cf_none;
  }
  if (gcc_mode && old->kind == sk_field && symbol->kind == sk_field &&
      (old->is_anonymous_union_member || symbol->is_anonymous_union_member)) {
    a_symbol *anonymous = old->is_anonymous_union_member ? old : symbol;
    a_symbol *other = anonymous == old ? symbol : old;
    if (!no_errors) {
      pos_sy_warning(ec_hidden_anonymous_union_field, anonymous->position, other);
    }
    return cf_none;
  }
  if (gnu_namespace_and_class_in_same_scope &&
      (symbol->kind == sk_namespace) != (old->kind == sk_namespace) &&
      (is_tag_symbol(symbol) || is_tag_symbol(old))) {
    return cf_none;
  }
  if (depth >= 0 && scope_stack[depth].kind == sck_template_instantiation) return cf_none;
  if (gpp_mode && old->is_handler_param) {
    if (!no_errors) {
      pos_st_warning(ec_decl_hides_catch_parameter, symbol->position, symbol->header->identifier);
    }
    return cf_none;
  }
  if (old->kind == sk_projection || old->kind == sk_namespace_projection) {
    return symbol->kind == old->kind ? cf_none : cf_replace_old;
  }
  if (is_unused_predeclared_function(old)) return cf_replace_old;
  return conflict_of_types(symbol, old);
}

static void report_conflict(a_symbol *symbol, a_symbol *old)
{
  if (is_type_name_symbol(symbol) && is_type_name_symbol(old)) {
    pos_sy_error(ec_bad_type_name_redeclaration, symbol->position, old);
  } else {
    pos_st_error(ec_id_already_declared, symbol->position, symbol->header->identifier);
  }
}

// Looks at the symbols of the same scope behind *link; may move *link and unlink a projection.
// Returns false when the new symbol must stay off the chain.
static bool scan_for_conflicts(a_symbol *symbol, a_symbol ***link, int depth, bool no_errors)
{
  a_name_space_kind space = name_space_for_symbol_kind[symbol->kind];
  a_symbol *next;
  for (a_symbol *old = **link; old != nullptr && old->scope_number == symbol->scope_number;
       old = next) {
    next = old->next_same_name;
    if (name_space_for_symbol_kind[old->kind] != space) continue;
    switch (find_conflict(symbol, old, depth, no_errors)) {
    case cf_none:
    case cf_tag_behind: break;
    case cf_behind_other: *link = &old->next_same_name; break;
    case cf_replace_old: unlink_symbol_from_symbol_table(old); break;
    case cf_error:
      if (!no_errors) report_conflict(symbol, old);
      return false;
    }
  }
  return true;
}

static bool goes_to_inactive_chain(a_symbol *symbol, int depth)
{
  if (depth < 0) {
    if (symbol->is_class_member) return true;
    return symbol->scope_number >= 0 || file_scope_symbols_are_on_inactive_list;
  }
  a_scope_stack_entry *entry = &scope_stack[depth];
  bool at_namespace_level = entry->kind == sck_file || entry->kind == sck_namespace ||
                            entry->kind == sck_namespace_extension;
  return at_namespace_level && block_of_scope_entry(entry)->inactive_list_after_file_scope;
}

static void link_onto_chain(a_symbol *symbol, int depth, bool no_errors)
{
  if (symbol->not_entered) return;
  if (goes_to_inactive_chain(symbol, depth)) {
    add_symbol_to_inactive_list(symbol);
    return;
  }
  a_symbol **link;
  if (depth < 0) {
    link = &symbol->header->active_symbols; // homeless symbols stand behind all others
    while (*link != nullptr)
      link = &(*link)->next_same_name;
  } else {
    link = place_on_chain(symbol->header, depth);
    if (*link != nullptr) {
      if (!no_errors) check_hiding(symbol, *link, depth);
      if (!scan_for_conflicts(symbol, &link, depth, no_errors)) return;
    }
  }
  symbol->next_same_name = *link;
  *link = symbol;
  symbol->on_active_chain = true;
}

// Keywords and macros: one slot each on the header.
static bool enter_lexical_symbol(a_symbol *symbol)
{
  if (symbol->kind == sk_keyword)
    symbol->header->keyword_symbol = symbol;
  else if (symbol->kind == sk_macro)
    symbol->header->macro_symbol = symbol;
  else
    return false;
  return true;
}

void add_symbol_to_symbol_table(a_symbol *symbol, int depth, bool no_errors)
{
  if (enter_lexical_symbol(symbol)) return;
  link_into_scope(symbol, depth, &no_errors);
  link_onto_chain(symbol, depth, no_errors);
}

//---------------------------------------------------------------------------------------------
// Entering

// The class behind a qualifier: a template parameter stands for its proxy.
static a_type *class_of_qualifier(a_type *type)
{
  type = skip_typerefs(type);
  return type->kind == tk_template_param ? proxy_class_for_template_param(type) : type;
}

static a_symbol *make_symbol_from_locator(a_symbol_kind kind, a_symbol_locator *locator)
{
  a_symbol_header *header =
      locator->header != nullptr ? locator->header : header_for_error_symbol();
  a_symbol *symbol = alloc_symbol(kind, header, locator->position);
  symbol->not_entered = locator->is_qualified;
  if (locator->qualifier_is_class) {
    a_type *class_type = class_of_qualifier(locator->qualifier.class_type);
    symbol->parent.class_type = class_type;
    symbol->is_class_member = class_type != nullptr;
  }
  symbol->decl_seq = ++decl_seq_counter;
  locator->symbol_not_entered = false;
  locator->symbol = symbol;
  return symbol;
}

a_symbol *enter_symbol(a_symbol_kind kind, a_symbol_locator *locator, int depth, bool no_errors)
{
  a_symbol *symbol = make_symbol_from_locator(kind, locator);
  add_symbol_to_symbol_table(symbol, depth, no_errors || locator->header == nullptr);
  return symbol;
}

a_symbol *enter_local_symbol(a_symbol_kind kind, a_symbol_locator *locator, bool no_errors)
{
  // In C a class scope receives its members only; all else goes to the scope around it.
  bool is_c_member = kind == sk_field && top_scope()->kind == sck_class;
  return enter_symbol(kind, locator, is_c_member ? depth_scope_stack : decl_scope_level, no_errors);
}

void reenter_symbol(a_symbol *symbol, int depth, bool no_errors)
{
  symbol->next_same_name = nullptr;
  symbol->next_in_bucket = nullptr;
  symbol->on_inactive_chain = false;
  add_symbol_to_symbol_table(symbol, depth, no_errors);
}

void enter_symbol_into_completed_class(a_symbol *symbol, a_type *class_type)
{
  symbol->is_class_member = true;
  symbol->parent.class_type = skip_typerefs(class_type);
  add_symbol_to_symbol_table(symbol, -1, true);
}

a_symbol *enter_typedef_symbol(a_type *type, a_symbol_locator *locator, int depth, bool no_errors)
{
  a_symbol *symbol = make_symbol_from_locator(sk_type, locator);
  type_of_symbol(symbol) = type;
  // `typedef struct s s;`: the name and the tag mean the same.
  a_symbol *tag = type != nullptr ? skip_typerefs(type)->source_corresp.assoc_symbol : nullptr;
  symbol->variant.type.is_tag_typedef =
      tag != nullptr && is_tag_symbol(tag) && tag->header == symbol->header;
  add_symbol_to_symbol_table(symbol, depth, no_errors);
  return symbol;
}

a_symbol *enter_injected_class_name_symbol(a_symbol *class_symbol)
{
  a_symbol_locator locator;
  make_locator_for_symbol(class_symbol, &locator);
  clear_qualifier_from_locator(&locator);
  a_symbol *symbol = make_symbol_from_locator(sk_type, &locator);
  type_of_symbol(symbol) = class_symbol->variant.class_struct_union.type;
  symbol->variant.type.is_tag_typedef = true;
  symbol->is_class_member = true;
  symbol->parent.class_type = class_symbol->variant.class_struct_union.type;
  symbol->declared = true;
  add_symbol_to_symbol_table(symbol, depth_scope_stack, true);
  return symbol;
}

a_symbol *enter_undefined_symbol(a_symbol_locator *locator)
{
  // In C the message comes once a function: the symbol stands in the function's scope.
  int depth =
      depth_innermost_function_scope >= 0 ? depth_innermost_function_scope : decl_scope_level;
  return enter_symbol(sk_undefined, locator, depth, true);
}

a_symbol *enter_extern_symbol(a_symbol_kind kind, a_symbol_locator *locator)
{
  check(kind == sk_extern_variable || kind == sk_extern_routine);
  a_symbol_locator plain = *locator;
  clear_qualifier_from_locator(&plain);
  return enter_symbol(kind, &plain, -1, true);
}

a_symbol *find_external_symbol(a_symbol_header *header)
{
  a_symbol *const chains[] = {header->active_symbols, header->inactive_symbols};
  for (a_symbol *symbol : chains) {
    for (; symbol != nullptr; symbol = symbol->next_same_name) {
      if (name_space_for_symbol_kind[symbol->kind] == nsk_extern) return symbol;
    }
  }
  return nullptr;
}

a_symbol *enter_copy_of_symbol(a_symbol *symbol, int depth)
{
  a_symbol *copy = alloc_symbol(symbol->kind, symbol->header, symbol->position);
  copy->variant = symbol->variant;
  copy->parent = symbol->parent;
  copy->is_class_member = symbol->is_class_member;
  copy->declared = symbol->declared;
  copy->defined = symbol->defined;
  copy->decl_seq = symbol->decl_seq;
  add_symbol_to_symbol_table(copy, depth, true);
  return copy;
}

// A typedef gives an unnamed tag its name: the tag keeps its place in the scope's list.
void relink_unnamed_tag_symbol(a_symbol *symbol, a_symbol_locator *locator)
{
  symbol->header = locator->header;
  symbol->position = locator->position;
}

//---------------------------------------------------------------------------------------------
// Unlinking

static bool remove_from_chain(a_symbol **link, a_symbol *symbol)
{
  for (; *link != nullptr; link = &(*link)->next_same_name) {
    if (*link == symbol) {
      *link = symbol->next_same_name;
      symbol->next_same_name = nullptr;
      return true;
    }
  }
  return false;
}

void unlink_symbol_from_symbol_table(a_symbol *symbol)
{
  a_symbol_header *header = symbol->header;
  if (symbol->on_active_chain) {
    remove_from_chain(&header->active_symbols, symbol);
    symbol->on_active_chain = false;
  } else if (symbol->is_synthesized_namespace_symbol) {
    remove_from_chain(&header->synthesized_namespace_symbols, symbol);
  } else if (symbol->on_inactive_chain) {
    remove_from_chain(&header->inactive_symbols, symbol);
    symbol->on_inactive_chain = false;
  }
}

// The block that lists the symbol, or null for a homeless one.
static a_scope_pointers_block *block_of_symbol(a_symbol *symbol)
{
  bool is_local;
  int depth = scope_depth_of_symbol(symbol, &is_local);
  if (depth >= 0) return block_of_scope_entry(&scope_stack[depth]);
  if (symbol->is_class_member) {
    a_class_symbol_supplement *supplement = class_supplement_of_type(symbol->parent.class_type);
    return supplement != nullptr ? &supplement->pointers_block : nullptr;
  }
  a_namespace *name_space = symbol->parent.name_space;
  a_symbol *space = name_space != nullptr ? name_space->source_corresp.assoc_symbol : nullptr;
  return space != nullptr ? &space->variant.name_space.supplement->pointers_block : nullptr;
}

static void remove_from_scope_list(a_symbol *symbol, a_scope_pointers_block *block)
{
  if (symbol->prev_in_scope != nullptr)
    symbol->prev_in_scope->next_in_scope = symbol->next_in_scope;
  else if (block != nullptr && block->symbols == symbol)
    block->symbols = symbol->next_in_scope;
  else if (symbols_with_no_scope == symbol)
    symbols_with_no_scope = symbol->next_in_scope;
  if (symbol->next_in_scope != nullptr)
    symbol->next_in_scope->prev_in_scope = symbol->prev_in_scope;
  else if (block != nullptr && block->last_symbol == symbol)
    block->last_symbol = symbol->prev_in_scope;
  symbol->next_in_scope = symbol->prev_in_scope = nullptr;
}

// Typedefs, tags, labels and all other names clash with a later name in different ways; a second one of
// a group adds nothing.
static int uniqueness_group(const a_symbol *symbol)
{
  if (symbol->kind == sk_type) return -1;
  return name_space_for_symbol_kind[symbol->kind];
}

void keep_removed_symbol(a_symbol *symbol)
{
  a_name_space_kind space = name_space_for_symbol_kind[symbol->kind];
  if (space == nsk_macro || space == nsk_keyword || space == nsk_extern) return;
  // A declaration in a block stands for an entity of the file, which has a symbol that stays.
  if (!symbol->declared || symbol->declared_at_block_scope || symbol->header->is_unnamed) return;
  a_symbol *kept = symbol->header->removed_symbols;
  for (; kept != nullptr; kept = kept->next_same_name) {
    if (kept == symbol || uniqueness_group(kept) == uniqueness_group(symbol)) return;
  }
  symbol->next_same_name = symbol->header->removed_symbols;
  symbol->header->removed_symbols = symbol;
}

void remove_symbol(a_symbol *symbol)
{
  a_symbol_header *header = symbol->header;
  if (symbol->kind == sk_macro) {
    if (header->macro_symbol == symbol) header->macro_symbol = nullptr;
  } else if (symbol->kind == sk_keyword) {
    if (header->keyword_symbol == symbol) header->keyword_symbol = nullptr;
  } else {
    a_scope_pointers_block *block = block_of_symbol(symbol);
    if (block != nullptr) remove_symbol_from_lookup_table(symbol, block);
    remove_from_scope_list(symbol, block);
    unlink_symbol_from_symbol_table(symbol);
  }
  if (check_misra_c_2004) keep_removed_symbol(symbol);
}

void remove_anonymous_union_member_from_inactive_symbols_list(a_symbol *symbol)
{
  if (symbol->on_inactive_chain) unlink_symbol_from_symbol_table(symbol);
}
