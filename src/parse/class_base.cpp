// class_base.cpp - base classes: the base clause, and the tree of all bases with every way that leads to
// each of them.
// Rule:    a class has one record for each base class subobject; a virtual base has one record however
//          many ways lead to it.  The steps of a way belong to the classes that it passes, so that ways
//          through a direct base continue with that base's own steps.
// Entry:   scan_base_clause, corresp_base_class, preferred_virtual_derivation_of.
// See:     C++ 10, 10.1, 11.2.
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/token_cache.h"
#include "parse/attribute.h"
#include "parse/class_private.h"
#include "parse/exprutil.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"
#include "parse/symbol_ref.h"

//---------------------------------------------------------------------------------------------
// Records.

static a_base_class *append_base(a_type *class_type, a_type *type,
                                 const a_source_position *position)
{
  a_base_class *base = alloc_base_class();
  base->type = type;
  base->derived_class = class_type;
  base->position = *position;
  a_base_class **link = &class_supplement_of(class_type)->base_classes;
  while (*link != nullptr)
    link = &(*link)->next;
  *link = base;
  return base;
}

static void append_virtual_base(a_type *class_type, a_base_class *base)
{
  base->is_virtual = true;
  a_base_class **link = &class_supplement_of(class_type)->virtual_bases;
  while (*link != nullptr)
    link = &(*link)->next_virtual_base;
  *link = base;
  as_class(class_type).has_virtual_bases = true;
}

static a_derivation_step *make_step(a_base_class *base, a_derivation_step *rest)
{
  a_derivation_step *step = alloc_derivation_step();
  step->base = base;
  step->next = rest;
  return step;
}

static void add_derivation(a_base_class *base, a_derivation_step *path, an_access_specifier access)
{
  a_base_class_derivation *derivation = alloc_base_class_derivation();
  derivation->path = path;
  derivation->access = access;
  derivation->is_public_path = access == as_public;
  a_base_class_derivation **link = &base->derivations;
  while (*link != nullptr)
    link = &(*link)->next;
  *link = derivation;
}

static a_base_class *find_virtual_base(a_type *class_type, a_type *type)
{
  a_base_class *base = class_supplement_of(class_type)->virtual_bases;
  while (base != nullptr && !identical_types(base->type, type))
    base = base->next_virtual_base;
  return base;
}

static a_base_class *find_direct_base(a_type *class_type, a_type *type)
{
  a_base_class *base = class_supplement_of(class_type)->base_classes;
  while (base != nullptr && !(base->is_direct && identical_types(base->type, type)))
    base = base->next;
  return base;
}

// The part of a path behind its last virtual base; null when it passes none.
static a_derivation_step *rest_behind_virtual_base(a_derivation_step *path, a_base_class **base)
{
  a_derivation_step *rest = nullptr;
  *base = nullptr;
  for (; path != nullptr; path = path->next) {
    if (!path->base->is_virtual) continue;
    *base = path->base;
    rest = path->next;
  }
  return rest;
}

// Whether two paths lead to the same subobject of one virtual base.
static bool same_way_from_virtual_base(a_derivation_step *a, a_derivation_step *b)
{
  a_base_class *base_of_a, *base_of_b;
  a_derivation_step *rest_of_a = rest_behind_virtual_base(a, &base_of_a);
  a_derivation_step *rest_of_b = rest_behind_virtual_base(b, &base_of_b);
  if (base_of_a == nullptr || base_of_b == nullptr) return false;
  if (!identical_types(base_of_a->type, base_of_b->type)) return false;
  for (; rest_of_a && rest_of_b; rest_of_a = rest_of_a->next, rest_of_b = rest_of_b->next) {
    if (rest_of_a->base != rest_of_b->base) return false;
  }
  return rest_of_a == rest_of_b;
}

// The record of a subobject that a virtual base shares among several ways, or null.
static a_base_class *find_shared_subobject(a_type *class_type, a_type *type,
                                           a_derivation_step *path)
{
  a_base_class *base = class_supplement_of(class_type)->base_classes;
  for (; base != nullptr; base = base->next) {
    if (base->is_virtual || !identical_types(base->type, type)) continue;
    a_base_class_derivation *derivation = base->derivations;
    for (; derivation != nullptr; derivation = derivation->next) {
      if (same_way_from_virtual_base(derivation->path, path)) return base;
    }
  }
  return nullptr;
}

//---------------------------------------------------------------------------------------------
// The tree.

// One base of the direct base, with all the ways to it.
static void copy_base(a_type *class_type, a_base_class *direct, a_base_class *inner,
                      an_access_specifier direct_access)
{
  a_base_class *base = nullptr;
  a_base_class_derivation *derivation = inner->derivations;
  if (inner->is_virtual) {
    base = find_virtual_base(class_type, inner->type);
  } else if (derivation != nullptr) {
    a_derivation_step path = {derivation->path, direct};
    base = find_shared_subobject(class_type, inner->type, &path);
  }
  if (base == nullptr) {
    base = append_base(class_type, inner->type, &direct->position);
    if (inner->is_virtual) append_virtual_base(class_type, base);
  }
  for (; derivation != nullptr; derivation = derivation->next) {
    an_access_specifier access = compute_access(derivation->access, direct_access);
    add_derivation(base, make_step(direct, derivation->path), access);
  }
}

// A class of which there are two subobjects can't be named without saying which.
static void mark_ambiguous_bases(a_type *class_type)
{
  a_base_class *first = class_supplement_of(class_type)->base_classes;
  for (a_base_class *base = first; base != nullptr; base = base->next) {
    for (a_base_class *other = base->next; other != nullptr; other = other->next) {
      if (!identical_types(base->type, other->type)) continue;
      base->is_ambiguous = other->is_ambiguous = true;
    }
  }
}

static bool has_indirect_steps(const a_base_class_derivation *derivation)
{
  for (a_derivation_step *step = derivation->path; step->next != nullptr; step = step->next) {
    if (step->base->is_virtual) return true;
  }
  return false;
}

// Of the ways to a base the one with the widest access; among those the first that is direct or passes
// no other virtual base.
static void mark_preferred_derivation(a_base_class *base)
{
  a_base_class_derivation *best = base->derivations;
  for (a_base_class_derivation *d = base->derivations; d != nullptr; d = d->next) {
    if (d->access < best->access ||
        (d->access == best->access && has_indirect_steps(best) && !has_indirect_steps(d))) {
      best = d;
    }
  }
  if (best != nullptr) best->is_preferred = true;
}

a_derivation_step *preferred_virtual_derivation_of(a_base_class *base)
{
  a_base_class_derivation *derivation = base->derivations;
  while (derivation != nullptr && !derivation->is_preferred)
    derivation = derivation->next;
  return derivation != nullptr ? derivation->path : nullptr;
}

// Whether the way goes through `base` by one of its own ways and on by `rest`.
static bool way_goes_through(a_derivation_step *way, a_derivation_step *to_base,
                             a_derivation_step *rest)
{
  for (; to_base != nullptr; to_base = to_base->next, way = way->next) {
    if (way == nullptr || way->base != to_base->base) return false;
  }
  for (; rest != nullptr; rest = rest->next, way = way->next) {
    if (way == nullptr || way->base != rest->base) return false;
  }
  return way == nullptr;
}

static bool is_base_of_base(a_base_class *candidate, a_base_class *base, a_base_class *inner)
{
  for (a_base_class_derivation *d = candidate->derivations; d != nullptr; d = d->next) {
    for (a_base_class_derivation *b = base->derivations; b != nullptr; b = b->next) {
      for (a_base_class_derivation *i = inner->derivations; i != nullptr; i = i->next) {
        if (way_goes_through(d->path, b->path, i->path)) return true;
      }
    }
  }
  return false;
}

a_base_class *corresp_base_class(a_base_class *base, a_base_class *inner)
{
  a_type *class_type = base->derived_class;
  if (inner->is_virtual) return find_virtual_base(class_type, inner->type);
  a_base_class *candidate = class_supplement_of(class_type)->base_classes;
  for (; candidate != nullptr; candidate = candidate->next) {
    if (candidate->is_virtual || !identical_types(candidate->type, inner->type)) continue;
    if (is_base_of_base(candidate, base, inner)) return candidate;
  }
  return nullptr;
}

//---------------------------------------------------------------------------------------------
// What a class takes over from a base.

static void note_base_facts(a_class_scan_state *scan, a_base_class *base)
{
  a_class_symbol_supplement *own = class_symbol_supplement_of(scan->class_type);
  a_class_symbol_supplement *supplement = class_symbol_supplement_of(base->type);
  a_class_type_part &part = as_class(scan->class_type);
  scan->not_aggregate = true;
  if (base->is_virtual) {
    scan->needs_default_constructor = true;
    own->has_trivial_copy_assignment = own->has_trivial_copy_constructor = false;
  }
  if (supplement == nullptr) return;
  part.has_virtual_functions |= as_class(base->type).has_virtual_functions;
  part.has_const_field |= as_class(base->type).has_const_field;
  part.has_volatile_field |= as_class(base->type).has_volatile_field;
  own->has_reference_field |= supplement->has_reference_field;
  if (needs_default_constructor_call(supplement)) scan->needs_default_constructor = true;
  if (supplement->destructor != nullptr && !supplement->has_trivial_destructor) {
    scan->base_has_destructor = true;
  }
  if (!supplement->has_trivial_copy_assignment) own->has_trivial_copy_assignment = false;
  if (!supplement->has_trivial_copy_constructor) own->has_trivial_copy_constructor = false;
}

bool needs_default_constructor_call(const a_class_symbol_supplement *supplement)
{
  return supplement->has_nontrivial_default_constructor ||
         (supplement->constructors != nullptr &&
          supplement->trivial_default_constructor == nullptr);
}

//---------------------------------------------------------------------------------------------
// The clause.

// One entry of the clause.
struct a_base_specifier {
  bool is_virtual;
  bool access_given;
  an_access_specifier access;
  a_source_position position;
  a_type *type; // null after an error
};

static void access_word(a_base_specifier *specifier, an_access_specifier access)
{
  if (specifier->access_given) {
    pos_error(ec_access_already_specified, pos_curr_token);
  } else {
    specifier->access = access;
  }
  specifier->access_given = true;
}

static void specifier_words(a_base_specifier *specifier)
{
  for (;; get_token()) {
    switch (curr_token) {
    case tok_virtual:
      if (specifier->is_virtual) pos_error(ec_dupl_decl_specifier, pos_curr_token);
      specifier->is_virtual = true;
      break;
    case tok_public: access_word(specifier, as_public); break;
    case tok_protected: access_word(specifier, as_protected); break;
    case tok_private: access_word(specifier, as_private); break;
    default: return;
    }
  }
}

static bool has_attribute(a_type *type, an_attribute_kind kind)
{
  return f_find_attribute(kind, type->source_corresp.attributes) != nullptr;
}

// The class may be a base of the one at hand; reports what speaks against it.
static bool check_base_type(a_class_scan_state *scan, a_base_specifier *specifier, a_type *type)
{
  a_source_position position = specifier->position;
  if (is_error_type(type)) return false;
  if (!is_class_struct_type(type)) {
    pos_error(is_union_type(type) ? ec_bad_base_class : ec_not_a_class_or_struct_name, position);
    return false;
  }
  type = skip_typerefs(type);
  if (is_incomplete_type(type)) {
    pos_error(ec_incomplete_type_not_allowed, position);
    return false;
  }
  if (find_direct_base(scan->class_type, type) != nullptr) {
    pos_error(ec_dupl_base_class_name, position);
    return false;
  }
  if (has_attribute(type, ak_final)) pos_error(ec_final_base_class, position);
  return true;
}

static void scan_base_name(a_class_scan_state *scan, a_base_specifier *specifier)
{
  bool error_found = false;
  specifier->position = pos_curr_token;
  a_symbol *symbol =
      coalesce_and_lookup_generalized_identifier(gid_no_diagnostics, lo_class_only, &error_found);
  if (curr_token != tok_identifier) {
    syntax_error(ec_exp_identifier);
    return;
  }
  if (symbol == nullptr || !is_type_symbol(symbol)) {
    pos_error(ec_not_a_class_or_struct_name, pos_curr_token);
    get_token();
    return;
  }
  if (locator_for_curr_id.found_by_anachronism) {
    pos_sy_diagnostic(anachronism_error_severity, ec_nested_class_anachronism, pos_curr_token,
                      skip_typerefs(type_of_symbol(symbol))->source_corresp.assoc_symbol);
  }
  bool failed = false;
  f_check_ambiguity_and_verify_access(&locator_for_curr_id, false, nullptr, &failed);
  record_symbol_reference(rk_plain, symbol, &pos_curr_token);
  a_type *type = type_of_symbol(symbol);
  get_token();
  if (check_base_type(scan, specifier, type)) specifier->type = skip_typerefs(type);
}

static void check_embedded_cplusplus(const a_base_specifier *specifier, unsigned number)
{
  if (!report_embedded_cplusplus_noncompliance) return;
  if (number <= 1 && !specifier->is_virtual) return;
  embedded_cplusplus_noncompliance_diagnostic(specifier->position,
                                              ec_multiple_inheritance_in_embedded_cplusplus);
}

static void add_base(a_class_scan_state *scan, const a_base_specifier *specifier, unsigned number)
{
  a_type *class_type = scan->class_type;
  a_base_class *base = nullptr;
  if (specifier->is_virtual) base = find_virtual_base(class_type, specifier->type);
  if (base == nullptr) {
    base = append_base(class_type, specifier->type, &specifier->position);
    if (specifier->is_virtual) append_virtual_base(class_type, base);
  }
  base->is_direct = true;
  base->order = (uint16_t)number;
  base->position = specifier->position;
  add_derivation(base, make_step(base, nullptr), specifier->access);
  a_base_class *inner = class_supplement_of(specifier->type)->base_classes;
  for (; inner != nullptr; inner = inner->next)
    copy_base(class_type, base, inner, specifier->access);
  if (class_supplement_of(specifier->type)->base_classes != nullptr &&
      as_class(specifier->type).has_virtual_bases) {
    as_class(class_type).has_virtual_bases = true;
  }
  note_base_facts(scan, base);
}

static void base_specifier(a_class_scan_state *scan, unsigned *count)
{
  a_base_specifier specifier = {};
  bool is_class = scan->class_type->kind == tk_class;
  specifier.access = is_class ? as_private : as_public;
  specifier.position = pos_curr_token;
  if (std_attributes_enabled && curr_token == tok_lbracket) scan_attributes(al_base_specifier);
  specifier_words(&specifier);
  scan_base_name(scan, &specifier);
  if (specifier.type == nullptr || scan->class_type->kind == tk_union) return;
  if (!specifier.access_given) {
    pos_st_remark(ec_missing_access_specifier, specifier.position, is_class ? "private" : "public");
  }
  ++*count;
  check_embedded_cplusplus(&specifier, *count);
  add_base(scan, &specifier, *count);
}

bool scan_base_clause(a_class_scan_state *scan)
{
  unsigned count = 0;
  if (scan->class_type->kind == tk_union) {
    pos_error(ec_base_class_not_allowed_for_union, pos_curr_token);
  }
  add_stop_token(tok_lbrace);
  add_stop_token(tok_comma);
  do {
    get_token();
    base_specifier(scan, &count);
  } while (curr_token == tok_comma);
  remove_stop_token(tok_comma);
  remove_stop_token(tok_lbrace);
  mark_ambiguous_bases(scan->class_type);
  a_base_class *base = class_supplement_of(scan->class_type)->base_classes;
  for (; base != nullptr; base = base->next)
    mark_preferred_derivation(base);
  if (curr_token == tok_lbrace) return true;
  syntax_error(ec_missing_class_definition);
  return curr_token == tok_lbrace;
}
