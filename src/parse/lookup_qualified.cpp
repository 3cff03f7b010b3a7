// lookup_qualified.cpp - lookup in one class, namespace or enumeration; bases, using directives,
// ambiguity.
// Entry:   class_qualified_id_lookup, namespace_qualified_id_lookup, find_projected_symbol,
//          f_check_for_ambiguity.
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "mem/mem_manage.h"
#include "parse/lookup.h"
#include "parse/lookup_parts.h"
#include "parse/scope_stk.h"
#include "parse/symbol_links.h"

//---------------------------------------------------------------------------------------------
// Equivalence

bool symbols_are_lookup_equivalent(a_symbol *a, a_symbol *b, bool extern_c_equal, unsigned options)
{
  a = target_of_symbol(a);
  b = target_of_symbol(b);
  if (a == b) return true;
  an_il_entry_kind a_kind, b_kind;
  void *x = il_entry_for_symbol_null_okay(a, &a_kind);
  void *y = il_entry_for_symbol_null_okay(b, &b_kind);
  if (x != nullptr && x == y) return true;
  bool typedefs_count = !(options & lo_strict_typedefs) || equiv_typedefs_are_lookup_equivalent;
  if (is_type_symbol(a) && is_type_symbol(b)) {
    return typedefs_count && identical_types(type_of_symbol(a), type_of_symbol(b));
  }
  if (!extern_c_equal || a->kind != sk_routine || b->kind != sk_routine) return false;
  a_routine *p = routine_of_symbol(a), *q = routine_of_symbol(b);
  return p->source_corresp.name_linkage == nlk_c && q->source_corresp.name_linkage == nlk_c &&
         identical_types(p->type, q->type);
}

//---------------------------------------------------------------------------------------------
// Sets of results: of several namespaces or bases

struct a_result_set {
  a_symbol *first;
  bool ambiguous;
  a_symbol *functions; // synthesized overload set
};

static bool is_function_symbol(a_symbol *symbol)
{
  symbol = target_of_symbol(symbol);
  return is_routine_symbol(symbol) || symbol->kind == sk_function_template ||
         symbol->kind == sk_overloaded_function;
}

static bool set_contains(a_symbol *list, a_symbol *symbol)
{
  for (; list != nullptr; list = list->next_same_name) {
    if (symbols_are_lookup_equivalent(list, symbol, true, 0)) return true;
  }
  return false;
}

// Functions enter through synthesized projections, so that the real ones stay as they are linked.
void append_projection_to_set(a_symbol *set, a_symbol *symbol)
{
  if (symbol->kind == sk_overloaded_function) {
    a_symbol *member = overloads_of_symbol(symbol);
    for (; member != nullptr; member = member->next_same_name)
      append_projection_to_set(set, member);
    return;
  }
  if (set_contains(overloads_of_symbol(set), symbol)) return;
  a_symbol *projection = alloc_symbol(sk_projection, symbol->header, symbol->position);
  projected_symbol_of(projection) = target_of_symbol(symbol);
  projection->is_synthesized_namespace_symbol = true;
  a_symbol **link = &overloads_of_symbol(set);
  while (*link != nullptr)
    link = &(*link)->next_same_name;
  *link = projection;
}

static void add_result(a_result_set *results, a_symbol *symbol)
{
  if (results->first == nullptr) {
    results->first = symbol;
    return;
  }
  if (symbols_are_lookup_equivalent(results->first, symbol, true, 0)) return;
  if (!is_function_symbol(symbol) || !is_function_symbol(results->first)) {
    // A tag gives way to another kind of name.
    bool first_is_tag = is_tag_symbol(target_of_symbol(results->first));
    bool new_is_tag = is_tag_symbol(target_of_symbol(symbol));
    if (first_is_tag && !new_is_tag)
      results->first = symbol;
    else if (first_is_tag == new_is_tag)
      results->ambiguous = true;
    return;
  }
  if (results->functions == nullptr) {
    results->functions = alloc_symbol(sk_overloaded_function, symbol->header, symbol->position);
    results->functions->is_synthesized_namespace_symbol = true;
    append_projection_to_set(results->functions, target_of_symbol(results->first));
  }
  append_projection_to_set(results->functions, target_of_symbol(symbol));
}

static a_symbol *symbol_of_results(a_result_set *results)
{
  if (results->ambiguous) {
    a_symbol *symbol = enter_synthesized_projection_symbol(results->first, nullptr);
    symbol->is_ambiguous = true;
    return symbol;
  }
  return results->functions != nullptr ? results->functions : results->first;
}

//---------------------------------------------------------------------------------------------
// Namespaces

static bool counts_in_namespace(a_symbol *symbol, unsigned options)
{
  if (name_space_for_symbol_kind[symbol->kind] != nsk_ordinary) return false;
  bool finds_hidden = (options & (lo_find_hidden | lo_friend_decl)) ||
                      ((options & lo_gnu_hidden_friends) && gpp_mode && gnu_version < 40300);
  if (target_of_symbol(symbol)->is_invisible && !finds_hidden) return false;
  uint32_t limit = f_get_effective_decl_seq();
  return (limit == 0 || symbol->decl_seq <= limit) && sym_matches_lookup_options(symbol, options);
}

static void search_namespace_table(a_namespace_symbol_supplement *supplement,
                                   a_symbol_header *header, unsigned options, a_result_set *results)
{
  a_symbol *symbol = find_symbol_list_in_table(&supplement->pointers_block, header);
  for (; symbol != nullptr; symbol = symbol->next_in_bucket) {
    if (counts_in_namespace(symbol, options)) add_result(results, symbol);
  }
}

a_symbol *add_using_directive_results(a_scope_stack_entry *entry, a_symbol_locator *locator,
                                      unsigned options, a_symbol *own)
{
  if (entry->applying_using_directives == nullptr) return own;
  a_result_set results = {};
  if (own != nullptr) add_result(&results, own);
  an_active_using_directive *directive = entry->applying_using_directives;
  for (; directive != nullptr; directive = directive->next_applying) {
    search_namespace_table(directive->nominated, locator->header, options, &results);
  }
  return symbol_of_results(&results);
}

static a_namespace_symbol_supplement *supplement_of_namespace(a_namespace *name_space)
{
  a_symbol *symbol = skip_namespace_aliases(name_space)->source_corresp.assoc_symbol;
  return symbol->variant.name_space.supplement;
}

// The namespace itself ends the search; else those that it nominates, each once.
static void search_namespace(a_namespace *name_space, a_symbol_locator *locator, unsigned options,
                             a_result_set *results)
{
  a_namespace_symbol_supplement *supplement = supplement_of_namespace(name_space);
  if (supplement->searched) return;
  supplement->searched = true;
  a_symbol *before = results->first;
  search_namespace_table(supplement, locator->header, options, results);
  bool through = !(options & (lo_find_hidden | lo_friend_decl | lo_no_seq_limit));
  if (results->first == before && through) {
    a_scope *scope = scope_of_namespace(name_space);
    a_using_decl *directive = scope != nullptr ? scope->using_decls : nullptr;
    for (; directive != nullptr; directive = directive->next) {
      if (directive->is_using_directive) {
        search_namespace((a_namespace *)directive->entity, locator, options, results);
      }
    }
  }
  supplement->searched = false;
}

a_symbol *namespace_qualified_id_lookup(a_symbol_locator *locator, a_namespace *name_space,
                                        unsigned options)
{
  if (locator->symbol != nullptr) return target_of_symbol(locator->symbol);
  if (locator->header == nullptr) return nullptr;
  a_namespace_symbol_supplement *supplement = supplement_of_namespace(name_space);
  if (ignore_std_namespace && supplement->is_std) {
    return file_scope_id_lookup(il_header.primary_scope, locator, options);
  }
  a_result_set results = {};
  search_namespace(name_space, locator, options, &results);
  return finish_lookup(symbol_of_results(&results), locator, options);
}

a_symbol *enum_qualified_id_lookup(a_symbol_locator *locator, a_type *enum_type)
{
  if (locator->symbol != nullptr) return target_of_symbol(locator->symbol);
  a_type *type = skip_typerefs(enum_type);
  a_constant *enumerator = nullptr;
  if (as_integer(type).enum_is_scoped) {
    if (as_integer(type).enum_scope != nullptr) enumerator = as_integer(type).enum_scope->constants;
  } else {
    enumerator = as_integer(type).first_enumerator;
  }
  for (; enumerator != nullptr; enumerator = enumerator->next) {
    a_symbol *symbol = enumerator->source_corresp.assoc_symbol;
    if (symbol != nullptr && symbol->header == locator->header) {
      return finish_lookup(symbol, locator, 0);
    }
  }
  locator->is_qualified = true;
  return nullptr;
}

//---------------------------------------------------------------------------------------------
// Classes

// A tag typedef of the class itself isn't the injected name where that is not asked for.
static bool tag_typedef_counts(a_symbol *symbol, a_type *class_type, unsigned options)
{
  if (symbol->kind != sk_type || !symbol->variant.type.is_tag_typedef) return true;
  if (!identical_types(skip_typerefs(type_of_symbol(symbol)), class_type)) return true;
  if (options & (lo_nested_name_qualifier | lo_tag | lo_class_only | lo_tag_typedef_counts))
    return true;
  if (!gpp_mode) return false;
  if (options & lo_type_expected) return true;
  if (options & lo_no_conversion_search) return false;
  return gnu_version < 30400 ||
         (options & (lo_type_only | lo_tag_typedef_as_type | lo_dependent_conversions));
}

static a_symbol *search_class_table(a_type *class_type, a_class_symbol_supplement *supplement,
                                    a_symbol_header *header, unsigned options)
{
  a_symbol *remembered = nullptr;
  a_symbol *symbol = find_symbol_list_in_table(&supplement->pointers_block, header);
  for (; symbol != nullptr; symbol = symbol->next_in_bucket) {
    if (symbol->is_invisible || !sym_matches_lookup_options(symbol, options)) continue;
    if (C_dialect != 2) {
      // A tag declared inside a C struct belongs to the scope around it.
      if (symbol->kind == sk_field) return symbol;
      continue;
    }
    if (!tag_typedef_counts(symbol, class_type, options)) continue;
    bool preferred = options & lo_tag ? target_of_symbol(symbol)->kind != sk_type
                                      : !is_tag_symbol(target_of_symbol(symbol));
    if (preferred) return symbol;
    if (remembered == nullptr) remembered = symbol;
  }
  return remembered;
}

// C: the members of anonymous structs and unions are members of the one around them.
static a_symbol *search_anonymous_members(a_type *class_type, a_symbol_header *header)
{
  for (a_field *field = as_class(class_type).first_field; field; field = field->next) {
    if (field->source_corresp.name != nullptr || !is_class_struct_union_type(field->type)) continue;
    a_type *inner = skip_typerefs(field->type);
    a_class_symbol_supplement *supplement = class_supplement_of_type(inner);
    a_symbol *symbol =
        supplement != nullptr ? search_class_table(inner, supplement, header, 0) : nullptr;
    if (symbol == nullptr) symbol = search_anonymous_members(inner, header);
    if (symbol != nullptr) return symbol;
  }
  return nullptr;
}

static a_symbol *special_member(a_symbol_locator *locator, a_type *class_type,
                                a_class_symbol_supplement *supplement)
{
  if (C_dialect != 2) return nullptr;
  a_symbol *class_symbol = class_type->source_corresp.assoc_symbol;
  if (locator->is_destructor_name) return supplement->destructor;
  if (locator->header != class_symbol->header) return nullptr;
  a_symbol_locator constructor = *locator;
  change_class_locator_into_constructor_locator(&constructor, class_symbol);
  a_symbol *symbol =
      constructor.symbol != nullptr ? constructor.symbol : supplement->trivial_default_constructor;
  if (symbol != nullptr) locator->header = constructor.header;
  return symbol;
}

a_symbol *class_qualified_id_lookup(a_symbol_locator *locator, a_type *class_type, unsigned options)
{
  if (locator->symbol != nullptr) return target_of_symbol(locator->symbol);
  if (locator->header == nullptr) return nullptr;
  class_type = skip_typerefs(class_type);
  if (class_type->kind == tk_template_param || class_type->kind == tk_unknown) {
    class_type = proxy_class_for_template_param(class_type);
  }
  if (class_type == nullptr || !is_class_struct_union_type(class_type)) return nullptr;
  a_class_symbol_supplement *supplement = class_supplement_of_type(class_type);
  if (supplement == nullptr) return nullptr;
  a_symbol *symbol = search_class_table(class_type, supplement, locator->header, options);
  if (symbol == nullptr && C_dialect != 2) {
    symbol = search_anonymous_members(class_type, locator->header);
  }
  if (symbol == nullptr) symbol = special_member(locator, class_type, supplement);
  if (symbol == nullptr && C_dialect == 2 && !(options & lo_no_base_classes) &&
      !locator->no_base_classes) {
    symbol = find_projected_symbol(class_type, locator, options);
  }
  return finish_lookup(symbol, locator, options);
}

//---------------------------------------------------------------------------------------------
// Base classes

bool in_scope_with_bases()
{
  for (int depth = depth_of_initial_lookup_scope; depth >= 0;
       depth = scope_stack[depth].previous_lookup_depth) {
    a_scope_stack_entry *entry = &scope_stack[depth];
    if ((entry->kind == sck_class || entry->kind == sck_class_reactivation) &&
        (class_supplement_of(entry->assoc_type)->base_classes != nullptr ||
         entry->kind == sck_class_reactivation)) {
      return true;
    }
  }
  return false;
}

struct a_base_candidate {
  a_symbol *symbol;
  a_base_class *base; // of the complete class
  an_access_specifier access;
};

// Names shared by all objects of the class: found twice they are still one.
static bool is_shared_member(a_symbol *symbol)
{
  symbol = target_of_symbol(symbol);
  return is_type_symbol(symbol) || symbol->kind == sk_constant ||
         symbol->kind == sk_static_data_member ||
         (symbol->kind == sk_member_function && routine_of_symbol(symbol)->is_static_member);
}

static bool hides(a_base_class *x, a_base_class *y)
{
  return find_base_class_of(x->type, y->type) != nullptr;
}

// Merges the candidate of one more base; false when the two are ambiguous.
static bool merge_candidate(a_base_candidate *best, a_symbol *symbol, a_base_class *base,
                            an_access_specifier access)
{
  if (best->symbol == nullptr) {
    *best = {symbol, base, access};
    return true;
  }
  bool same = symbols_are_lookup_equivalent(best->symbol, symbol, false, 0);
  if (same && (is_shared_member(symbol) || base == best->base)) {
    if (access < best->access) *best = {symbol, base, access};
    return true;
  }
  if (hides(best->base, base)) return true;
  if (hides(base, best->base)) {
    *best = {symbol, base, access};
    return true;
  }
  return false;
}

static an_access_specifier access_of_base(a_base_class *base)
{
  an_access_specifier access = as_inaccessible;
  a_base_class_derivation *derivation = base->derivations;
  for (; derivation != nullptr; derivation = derivation->next) {
    if (derivation->access < access) access = derivation->access;
  }
  return access;
}

a_symbol *find_projected_symbol(a_type *class_type, a_symbol_locator *locator, unsigned options)
{
  class_type = skip_typerefs(class_type);
  a_base_candidate best = {};
  bool ambiguous = false;
  for (a_base_class *base = class_supplement_of(class_type)->base_classes; base;
       base = base->next) {
    if (base->is_dependent && (do_dependent_name_processing || gpp_dependent_name_lookup)) continue;
    a_type *base_type = skip_typerefs(base->type);
    a_class_symbol_supplement *supplement = class_supplement_of_type(base_type);
    if (supplement == nullptr) continue;
    a_symbol *symbol = search_class_table(base_type, supplement, locator->header, options);
    if (symbol == nullptr || symbol->kind == sk_undefined) continue;
    if (symbol->kind == sk_projection && !symbol->variant.projection.is_using_declaration) continue;
    an_access_specifier access = compute_access(access_for_symbol(symbol), access_of_base(base));
    if (!merge_candidate(&best, symbol, base, access)) ambiguous = true;
    if (base->is_ambiguous && !is_shared_member(symbol)) ambiguous = true;
  }
  if (best.symbol == nullptr) return nullptr;
  if ((options & lo_type_only) && !is_type_symbol(target_of_symbol(best.symbol))) return nullptr;
  a_base_class_derivation *path = best.base->derivations;
  a_symbol *projection = make_projection_symbol(best.symbol, class_type, best.base,
                                                path != nullptr ? path->path : nullptr, ambiguous);
  projection->variant.projection.access = best.access;
  if (!(options & (lo_strict_typedefs | lo_no_projection))) {
    enter_symbol_into_completed_class(projection, class_type);
  }
  return projection;
}

a_type *proxy_class_for_template_param(a_type *type)
{
  type = skip_typerefs(type);
  if (type->kind != tk_template_param) return type;
  return as_template_param(type).template_param_supplement->proxy_class;
}

//---------------------------------------------------------------------------------------------
// Operator functions

a_symbol *any_opname_function_symbol(unsigned opname_kind)
{
  a_symbol_header *header = opname_symbol_table[opname_kind];
  return header != nullptr ? header->active_symbols : nullptr;
}

a_symbol *opname_function_symbol(unsigned opname_kind)
{
  a_symbol *symbol = any_opname_function_symbol(opname_kind);
  while (symbol != nullptr && (symbol->is_class_member || symbol->is_invisible)) {
    symbol = symbol->next_same_name;
  }
  return symbol;
}

a_symbol *opname_member_function_symbol(unsigned opname_kind, a_type *class_type)
{
  if (opname_symbol_table[opname_kind] == nullptr) return nullptr;
  a_symbol_locator locator;
  a_source_position position = null_source_position;
  make_opname_locator(opname_kind, &locator, &position);
  return class_qualified_id_lookup(&locator, class_type, lo_none);
}

a_symbol *look_up_conversion_function(a_type *class_type, a_type *type, a_source_position *position)
{
  a_symbol_locator locator;
  make_type_conversion_locator(type, &locator, position);
  return class_qualified_id_lookup(&locator, class_type, lo_none);
}

//---------------------------------------------------------------------------------------------
// Ambiguity

bool f_check_for_ambiguity(a_symbol_locator *locator, bool ok_if_overload, bool report)
{
  a_symbol *symbol = locator->symbol;
  if (symbol == nullptr || !symbol->is_ambiguous) return false;
  bool is_using = symbol->kind == sk_projection && symbol->variant.projection.is_using_declaration;
  if (ok_if_overload && is_using) return false;
  if (!report) return true;
  a_source_position position = locator->position;
  pos_sy_error(ec_ambiguous_name, position, symbol);
  *locator = cleared_locator;
  locator->position = position;
  locator->is_qualified = true;
  return true;
}

void f_check_ambiguity_and_verify_access(a_symbol_locator *locator, bool ok_if_overload, a_type *,
                                         bool *failed)
{
  *failed = f_check_for_ambiguity(locator, ok_if_overload, true);
  a_symbol *symbol = locator->symbol;
  if (*failed || symbol == nullptr || C_dialect != 2 || !symbol->is_class_member) return;
  if (have_access_to_symbol(symbol)) return;
  *failed = true;
  if (!locator->access_error_reported)
    pos_sy_error(ec_no_access_to_name, locator->position, symbol);
  locator->access_error_reported = true;
}
