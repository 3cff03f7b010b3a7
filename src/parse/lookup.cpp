// lookup.cpp - ordinary lookup: the fast walk along a header's chain, the slow walk down the stack.
// Rule:    the fast path allocates nothing and reads only the chain.
// Entry:   normal_id_lookup, curr_scope_id_lookup, file_scope_id_lookup.
#include "parse/lookup.h"

#include "driver/flags.h"
#include "driver/trans_unit.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "parse/lookup_parts.h"
#include "parse/scope_stk.h"
#include "parse/symbol_ref.h"

a_symbol *(*redeclare_external_symbol_hook)(a_symbol *extern_symbol, a_symbol_locator *locator);

//---------------------------------------------------------------------------------------------
// Options

// The symbol that a chain member stands for.
a_symbol *target_of_symbol(a_symbol *symbol)
{
  if (symbol->kind == sk_projection) return projected_symbol_of(symbol);
  if (symbol->kind == sk_namespace_projection) return symbol->variant.projected_namespace;
  return symbol;
}

static bool type_symbol_is_class(a_symbol *symbol)
{
  if (symbol_kind_is_class(symbol->kind)) return true;
  if (symbol->kind != sk_type) return false;
  a_type *type = type_of_symbol(symbol);
  return type != nullptr && (is_class_struct_union_type(type) || is_template_param_type(type));
}

static bool matches_nested_name_qualifier(a_symbol *symbol)
{
  if (symbol->kind == sk_namespace || symbol->kind == sk_class_template) return true;
  if (type_symbol_is_class(symbol)) return true;
  bool enums_count = !(gpp_mode && gnu_version >= 30400 && !enum_qualifiers_enabled);
  if (!enums_count) return false;
  return symbol->kind == sk_enum_tag || (symbol->kind == sk_type && type_of_symbol(symbol) &&
                                         is_enum_type(type_of_symbol(symbol)));
}

static bool matches_tag(a_symbol *symbol)
{
  if (is_tag_symbol(symbol) || symbol->kind == sk_class_template) return true;
  return symbol->kind == sk_type &&
         (elab_type_lookup_finds_typedefs || symbol->variant.type.is_tag_typedef ||
          symbol->is_template_param_name);
}

bool sym_matches_lookup_options(a_symbol *symbol, unsigned options)
{
  symbol = target_of_symbol(symbol);
  if ((options & lo_nested_name_qualifier) && !matches_nested_name_qualifier(symbol)) return false;
  if ((options & lo_tag) && !matches_tag(symbol)) return false;
  if ((options & lo_class_only) && !type_symbol_is_class(symbol) &&
      symbol->kind != sk_class_template) {
    return false;
  }
  return !(options & lo_namespace_only) || symbol->kind == sk_namespace;
}

static a_name_space_kind searched_name_space(unsigned options)
{
  return C_dialect != 2 && (options & lo_tag) ? nsk_tag : nsk_ordinary;
}

static bool is_hidden_symbol(a_symbol *symbol, unsigned options)
{
  if (options & (lo_find_hidden | lo_friend_decl)) return false;
  return symbol->is_invisible || target_of_symbol(symbol)->is_invisible;
}

//---------------------------------------------------------------------------------------------
// Sequence limits

uint32_t f_get_effective_decl_seq()
{
  // A limit is in force only inside an instantiation; its record gives it.
  if (depth_innermost_instantiation_scope < 0 || !do_dependent_name_processing) return 0;
  return instantiation_decl_seq_hook != nullptr ? instantiation_decl_seq_hook() : 0;
}

uint32_t (*instantiation_decl_seq_hook)();

static bool beyond_seq_limit(a_symbol *symbol, uint32_t seq_limit)
{
  return seq_limit != 0 && symbol->decl_seq > seq_limit;
}

//---------------------------------------------------------------------------------------------
// Fast path

// The first symbol of the chain that passes.  With lo_tag a typedef gives way to a tag of its own scope.
static a_symbol *fast_lookup(a_symbol *chain, unsigned options, a_name_space_kind space,
                             uint32_t seq_limit)
{
  a_symbol *remembered = nullptr;
  for (a_symbol *symbol = chain; symbol != nullptr; symbol = symbol->next_same_name) {
    if (remembered != nullptr && symbol->scope_number != remembered->scope_number) break;
    if (name_space_for_symbol_kind[symbol->kind] != space) continue;
    if (is_hidden_symbol(symbol, options)) continue;
    if (options != 0 && !sym_matches_lookup_options(symbol, options)) continue;
    if (beyond_seq_limit(symbol, seq_limit)) continue;
    if (!(options & lo_tag) || target_of_symbol(symbol)->kind != sk_type) return symbol;
    if (remembered == nullptr) remembered = symbol;
  }
  return remembered;
}

//---------------------------------------------------------------------------------------------
// Slow path

// The record that a walk carries.
struct a_lookup_state {
  a_symbol_locator *locator;
  unsigned options;
  a_name_space_kind space;
  uint32_t seq_limit;
  bool seq_limit_applies;
  bool dependent_base_seen;
  bool gpp_dependent_base_seen;
  bool stop;
  bool second_pass;
  a_type *dependent_class;
};

static bool passes(a_symbol *symbol, const a_lookup_state *state)
{
  if (name_space_for_symbol_kind[symbol->kind] != state->space) return false;
  if (is_hidden_symbol(symbol, state->options)) return false;
  if (!sym_matches_lookup_options(symbol, state->options)) return false;
  return !(state->seq_limit_applies && beyond_seq_limit(symbol, state->seq_limit));
}

// Preference among several meanings at one entry: with lo_tag a tag before a typedef, else a name
// that isn't a tag before the tag.
static bool is_preferred(a_symbol *symbol, const a_lookup_state *state)
{
  a_symbol *target = target_of_symbol(symbol);
  return state->options & lo_tag ? target->kind != sk_type : !is_tag_symbol(target);
}

static a_symbol *search_chain_for_scope(a_symbol *chain, int number, const a_lookup_state *state)
{
  a_symbol *remembered = nullptr;
  for (a_symbol *symbol = chain; symbol != nullptr; symbol = symbol->next_same_name) {
    if (symbol->scope_number != number || !passes(symbol, state)) continue;
    if (is_preferred(symbol, state)) return symbol;
    if (remembered == nullptr) remembered = symbol;
  }
  return remembered;
}

static a_symbol *search_table(a_scope_pointers_block *block, const a_lookup_state *state)
{
  a_symbol *remembered = nullptr;
  a_symbol *symbol = find_symbol_list_in_table(block, state->locator->header);
  for (; symbol != nullptr; symbol = symbol->next_in_bucket) {
    if (!passes(symbol, state)) continue;
    if (is_preferred(symbol, state)) return symbol;
    if (remembered == nullptr) remembered = symbol;
  }
  return remembered;
}

static a_symbol *search_class_entry(a_scope_stack_entry *entry, a_lookup_state *state)
{
  if (state->options & lo_skip_class_scopes) return nullptr;
  a_type *class_type = entry->assoc_type;
  if (class_supplement_of(class_type)->is_closure) return nullptr;
  a_symbol *symbol = search_table(block_of_scope_entry(entry), state);
  if (symbol != nullptr) return symbol;
  symbol = find_projected_symbol(class_type, state->locator, state->options);
  if (symbol != nullptr && passes(symbol, state)) return symbol;
  a_symbol *class_symbol = class_type->source_corresp.assoc_symbol;
  if (class_symbol != nullptr && class_supplement_of_symbol(class_symbol)->has_dependent_bases) {
    state->dependent_base_seen = true;
    state->dependent_class = class_type;
  }
  return nullptr;
}

// What the entry itself and the using directives that apply there give.
static a_symbol *search_entry(int depth, a_lookup_state *state)
{
  a_scope_stack_entry *entry = &scope_stack[depth];
  a_scope_pointers_block *block = block_of_scope_entry(entry);
  a_symbol_header *header = state->locator->header;
  switch (entry->kind) {
  case sck_class:
  case sck_class_reactivation: return search_class_entry(entry, state);
  case sck_template_instantiation:
    return search_chain_for_scope(header->active_symbols, entry->number, state);
  case sck_file:
  case sck_namespace:
  case sck_namespace_extension:
  case sck_namespace_reactivation: {
    a_symbol *symbol = block->symbol_hash_table != nullptr
                           ? search_table(block, state)
                           : search_chain_for_scope(header->active_symbols, entry->number, state);
    return add_using_directive_results(entry, state->locator, state->options, symbol);
  }
  case sck_pragma_rescan:
  case sck_instantiation_context:
  case sck_function_access: return nullptr;
  case sck_function_prototype:
  case sck_block:
  case sck_template_declaration:
  case sck_condition:
  case sck_enum:
  case sck_function: {
    a_symbol *symbol = search_chain_for_scope(header->active_symbols, entry->number, state);
    return add_using_directive_results(entry, state->locator, state->options, symbol);
  }
  }
  unexpected_kind("scope kind");
}

static bool is_namespace_level(a_scope_kind kind)
{
  return kind == sck_file || kind == sck_namespace || kind == sck_namespace_extension ||
         kind == sck_namespace_reactivation;
}

// True when the options end the walk behind this entry.
static bool walk_ends_here(a_scope_kind kind, unsigned options)
{
  if ((options & lo_find_hidden) && is_namespace_level(kind)) return true;
  if (!(options & lo_friend_decl)) return false;
  if (is_namespace_level(kind)) return !((options & lo_tag) && gpp_mode && gnu_version < 40000);
  return (kind == sck_function || kind == sck_block) && !cfront_2_1_mode && !cfront_3_0_mode;
}

static a_symbol *slow_lookup(a_lookup_state *state)
{
  bool skip_entry = state->options & lo_skip_first_scope;
  int next;
  for (int depth = depth_of_initial_lookup_scope; depth >= 0; depth = next) {
    a_scope_stack_entry *entry = &scope_stack[depth];
    next = entry->previous_lookup_depth;
    if (entry->skip_in_lookup) continue;
    if (entry->kind == sck_template_declaration &&
        (state->options & lo_skip_template_decl_scopes)) {
      continue;
    }
    if (skip_entry) {
      skip_entry = false;
      continue;
    }
    state->seq_limit_applies =
        entry->kind != sck_class && entry->kind != sck_class_reactivation &&
        !(state->options & (lo_find_hidden | lo_friend_decl | lo_no_seq_limit));
    a_symbol *symbol = search_entry(depth, state);
    if (symbol != nullptr) return symbol;
    if (walk_ends_here(entry->kind, state->options)) {
      state->stop = true;
      return nullptr;
    }
  }
  return nullptr;
}

static bool needs_slow_path(const a_symbol_locator *locator, unsigned options)
{
  if (C_dialect != 2) return false;
  a_scope_stack_entry *top = top_scope();
  if (top->force_stack_lookup || locator->force_slow_lookup) return true;
  if (options & (lo_skip_first_scope | lo_skip_class_scopes | lo_find_hidden | lo_friend_decl)) {
    return true;
  }
  return top->use_slow_lookup &&
         (locator->header->inactive_symbols != nullptr ||
          top->applying_using_directives != nullptr || in_scope_with_bases());
}

//---------------------------------------------------------------------------------------------
// Steps behind the search

// The nested-type-found-outside-its-class rule of cfront.
static a_symbol *find_by_anachronism(a_symbol_locator *locator, unsigned options)
{
  if (!allow_anachronisms || !locator->header->member_type_seen) return nullptr;
  a_symbol *best = nullptr;
  for (a_symbol *symbol = locator->header->inactive_symbols; symbol;
       symbol = symbol->next_same_name) {
    if (!symbol->is_class_member || !is_type_symbol(symbol)) continue;
    if (!sym_matches_lookup_options(symbol, options)) continue;
    if (parent_namespace_for_symbol(symbol) != nullptr) continue;
    if (best == nullptr || symbol->decl_seq > best->decl_seq) best = symbol;
  }
  if (best != nullptr) locator->found_by_anachronism = true;
  return best;
}

// Standard C: an extern declaration made in a block that is closed by now.  Only a use of the name asks
// for it: lookups that want to know whether the name is a type pass lo_type_only.
static a_symbol *find_out_of_scope_declaration(a_symbol_locator *locator, unsigned options)
{
  if (C_dialect != 0 || strict_ansi_mode || (options & (lo_type_only | lo_tag))) return nullptr;
  a_symbol *symbol = find_external_symbol(locator->header);
  if (symbol == nullptr || redeclare_external_symbol_hook == nullptr) return nullptr;
  a_symbol *declared = symbol->variant.extern_entity.symbol;
  if (declared != nullptr && declared->is_predeclared) return nullptr;
  pos_sy_warning(ec_using_out_of_scope_declaration, locator->position,
                 declared != nullptr ? declared : symbol);
  a_symbol *result = redeclare_external_symbol_hook(symbol, locator);
  if (result != nullptr) record_symbol_reference(4, result, &locator->position);
  return result;
}

static bool class_is_on_lookup_chain(a_type *class_type)
{
  for (int depth = depth_of_initial_lookup_scope; depth >= 0;
       depth = scope_stack[depth].previous_lookup_depth) {
    a_scope_kind kind = scope_stack[depth].kind;
    if ((kind == sck_class || kind == sck_class_reactivation) &&
        scope_stack[depth].assoc_type == class_type) {
      return true;
    }
  }
  return false;
}

// Stores the symbol in the locator and returns the entity behind it.
a_symbol *finish_lookup(a_symbol *symbol, a_symbol_locator *locator, unsigned options)
{
  locator->symbol = symbol;
  if (symbol == nullptr) return nullptr;
  a_symbol *target = target_of_symbol(symbol);
  if (target->real_symbol != nullptr && target->real_symbol != target &&
      !(options & lo_no_real_symbol) && symbol_kind_is_class(target->kind) &&
      !class_is_on_lookup_chain(target->variant.class_struct_union.type)) {
    target = target->real_symbol;
    locator->symbol = target;
  }
  return target;
}

static a_symbol *lookup_slowly(a_symbol_locator *locator, unsigned options, bool *stop)
{
  a_lookup_state state = {};
  state.locator = locator;
  state.options = options;
  state.space = searched_name_space(options);
  state.seq_limit = f_get_effective_decl_seq();
  a_symbol *symbol = slow_lookup(&state);
  *stop = state.stop;
  if (symbol == nullptr && state.dependent_base_seen && !(options & lo_tag)) {
    symbol =
        class_qualified_id_lookup(locator, state.dependent_class, options | lo_no_base_classes);
  }
  return symbol;
}

a_symbol *normal_id_lookup(a_symbol_locator *locator, unsigned options)
{
  if (locator->symbol != nullptr) return target_of_symbol(locator->symbol);
  if (locator->is_qualified || locator->header == nullptr) return nullptr;
  bool stop = false;
  a_symbol *symbol;
  if (needs_slow_path(locator, options)) {
    symbol = lookup_slowly(locator, options, &stop);
  } else {
    uint32_t seq_limit = C_dialect == 2 ? f_get_effective_decl_seq() : 0;
    a_name_space_kind space = searched_name_space(options);
    symbol = fast_lookup(locator->header->active_symbols, options, space, seq_limit);
    if (symbol == nullptr && ulp_standalone_ext && C_dialect != 2) {
      symbol = fast_lookup(locator->header->active_symbols, options, nsk_member, 0);
    }
  }
  if (stop || (options & lo_find_hidden)) return finish_lookup(symbol, locator, options);
  if (symbol == nullptr) {
    if (C_dialect == 2)
      symbol = find_by_anachronism(locator, options);
    else
      symbol = find_out_of_scope_declaration(locator, options);
  }
  return finish_lookup(symbol, locator, options);
}

//---------------------------------------------------------------------------------------------
// The scope that receives declarations

a_symbol *curr_scope_id_lookup(a_symbol_locator *locator, unsigned options)
{
  if (locator->header == nullptr) return nullptr;
  a_scope_stack_entry *entry = decl_scope();
  a_name_space_kind space = searched_name_space(options);
  bool use_table = is_namespace_level(entry->kind) && C_dialect == 2 &&
                   block_of_scope_entry(entry)->symbol_hash_table != nullptr;
  a_symbol *symbol = use_table
                         ? find_symbol_list_in_table(block_of_scope_entry(entry), locator->header)
                         : locator->header->active_symbols;
  a_symbol *remembered = nullptr;
  for (; symbol != nullptr; symbol = use_table ? symbol->next_in_bucket : symbol->next_same_name) {
    if (symbol->scope_number != entry->number) continue;
    if (name_space_for_symbol_kind[symbol->kind] != space) continue;
    bool is_projection = symbol->kind == sk_projection || symbol->kind == sk_namespace_projection;
    if (is_projection && !(options & lo_keep_projections)) continue;
    bool is_tag = is_tag_symbol(target_of_symbol(symbol));
    if ((options & lo_tag) && !is_tag && target_of_symbol(symbol)->kind != sk_class_template)
      continue;
    if (!is_tag || (options & lo_tag)) return finish_lookup(symbol, locator, options);
    if (remembered == nullptr) remembered = symbol;
  }
  return finish_lookup(remembered, locator, options);
}

a_symbol *file_scope_id_lookup(a_scope *scope, a_symbol_locator *locator, unsigned options)
{
  if (locator->symbol != nullptr) return target_of_symbol(locator->symbol);
  if (locator->is_qualified || locator->header == nullptr) return nullptr;
  a_lookup_state state = {};
  state.locator = locator;
  state.options = options;
  state.space = searched_name_space(options);
  state.seq_limit = f_get_effective_decl_seq();
  state.seq_limit_applies = true;
  a_symbol *symbol = search_chain_for_scope(locator->header->active_symbols, scope->number, &state);
  if (symbol == nullptr) {
    a_scope_pointers_block *block = get_pointers_block_for_scope(scope);
    if (block != nullptr) symbol = search_table(block, &state);
  }
  if (C_dialect == 2 && depth_scope_stack >= 0) {
    symbol = add_using_directive_results(&scope_stack[0], locator, options, symbol);
  }
  return finish_lookup(symbol, locator, options);
}

void lookup_one_time_init()
{
}
