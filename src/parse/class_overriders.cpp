// class_overriders.cpp - a complete class's virtual functions: their numbers, which function of the class
// stands for each function of a base, whether the class is abstract, what is hidden.
// Rule:    a function takes the number of the one that it overrides in the primary base, whose table the
//          class extends; any other virtual function gets a number of its own.
// Entry:   assign_virtual_function_numbers, build_overriders, determine_whether_abstract,
//          final_overrider_of, check_hidden_virtual_functions.
// See:     C++ 10.3, 10.4.
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "parse/class_private.h"
#include "parse/decls.h"

static constexpr unsigned no_virtual_function = 0xffff;
static constexpr unsigned too_many_virtual_functions = 0xfffe;

static a_routine *first_routine_of_class(a_type *class_type)
{
  a_scope *scope = class_supplement_of(class_type)->class_scope;
  return scope != nullptr ? scope->routines : nullptr;
}

//---------------------------------------------------------------------------------------------
// Numbers.

// The number of the overridden function in the table that the class shares, if there is one.
static unsigned number_in_primary_base(a_type *class_type, const a_routine *routine)
{
  a_base_class *primary = class_supplement_of(class_type)->primary_base;
  if (primary == nullptr || !as_class(primary->type).has_virtual_functions) {
    return no_virtual_function;
  }
  a_routine *overridden = overridden_in_class(primary->type, routine);
  if (overridden != nullptr) return overridden->virtual_function_number;
  return number_in_primary_base(primary->type, routine);
}

static void take_next_number(a_type *class_type, a_routine *routine)
{
  a_class_type_supplement *supplement = class_supplement_of(class_type);
  unsigned slots = routine->special_kind == sfk_destructor ? 2 : 1;
  unsigned next = supplement->next_virtual_function_number;
  if (next == no_virtual_function) next = 0;
  if (next + slots > too_many_virtual_functions) {
    if (supplement->next_virtual_function_number != too_many_virtual_functions &&
        !as_class(class_type).is_template_dependent) {
      pos_error(ec_too_many_virtual_functions, routine->source_corresp.decl_position);
    }
    supplement->next_virtual_function_number = too_many_virtual_functions;
    routine->virtual_function_number = 0;
    return;
  }
  routine->virtual_function_number = (uint16_t)next;
  supplement->next_virtual_function_number = (uint16_t)(next + slots);
}

void assign_virtual_function_numbers(a_type *class_type)
{
  for (a_routine *routine = first_routine_of_class(class_type); routine; routine = routine->next) {
    if (!routine->is_virtual) continue;
    unsigned number = number_in_primary_base(class_type, routine);
    if (number == no_virtual_function) {
      take_next_number(class_type, routine);
    } else {
      routine->virtual_function_number = (uint16_t)number;
    }
  }
}

//---------------------------------------------------------------------------------------------
// Overriders.

static an_overriding_virtual_function *find_overrider(a_base_class *base, const a_routine *routine)
{
  an_overriding_virtual_function *entry = base->overriders;
  while (entry != nullptr && entry->overridden != routine)
    entry = entry->next;
  return entry;
}

static void add_overrider(a_base_class *base, a_routine *overridden, a_routine *overrider,
                          a_base_class *place)
{
  an_overriding_virtual_function *entry = alloc_overriding_virtual_function();
  entry->overridden = overridden;
  entry->overrider = overrider;
  entry->base_class = place;
  an_overriding_virtual_function **link = &base->overriders;
  while (*link != nullptr)
    link = &(*link)->next;
  *link = entry;
}

// Two ways to a virtual base bring different functions: the one in the class derived from the other's
// counts (C++ 10.3p9).
static void merge_overrider(a_base_class *base, an_overriding_virtual_function *entry,
                            a_routine *overrider, a_base_class *place)
{
  (void)base;
  if (entry->overrider == overrider) return;
  a_type *old_class = parent_class_of(&entry->overrider->source_corresp);
  a_type *new_class = parent_class_of(&overrider->source_corresp);
  if (find_base_class_of(old_class, new_class) != nullptr) return;
  if (find_base_class_of(new_class, old_class) != nullptr) {
    entry->overrider = overrider;
    entry->base_class = place;
    entry->is_ambiguous = false;
    return;
  }
  entry->is_ambiguous = true;
}

static void note_overrider(a_base_class *base, a_routine *overridden, a_routine *overrider,
                           a_base_class *place)
{
  an_overriding_virtual_function *entry = find_overrider(base, overridden);
  if (entry == nullptr) {
    add_overrider(base, overridden, overrider, place);
  } else {
    merge_overrider(base, entry, overrider, place);
  }
}

// The function of the class itself ends every question.
static void note_own_overrider(a_base_class *base, a_routine *overridden, a_routine *overrider)
{
  an_overriding_virtual_function *entry = find_overrider(base, overridden);
  if (entry == nullptr) {
    add_overrider(base, overridden, overrider, nullptr);
    return;
  }
  entry->overrider = overrider;
  entry->base_class = nullptr;
  entry->is_ambiguous = false;
}

// What the direct base found for one of its bases holds for the same subobject of the class.
static void take_over_overriders(a_base_class *direct, a_base_class *inner)
{
  a_base_class *base = corresp_base_class(direct, inner);
  if (base == nullptr) return;
  for (an_overriding_virtual_function *entry = inner->overriders; entry; entry = entry->next) {
    a_base_class *place =
        entry->base_class != nullptr ? corresp_base_class(direct, entry->base_class) : direct;
    note_overrider(base, entry->overridden, entry->overrider, place);
    if (entry->is_ambiguous) find_overrider(base, entry->overridden)->is_ambiguous = true;
  }
}

static void override_by_class(a_type *class_type, a_base_class *base)
{
  for (a_routine *old = first_routine_of_class(base->type); old != nullptr; old = old->next) {
    if (!old->is_virtual) continue;
    a_routine *own = overridden_in_class(class_type, old);
    if (own != nullptr) note_own_overrider(base, old, own);
  }
}

static void report_ambiguous_overriders(a_type *class_type, a_base_class *base)
{
  for (an_overriding_virtual_function *entry = base->overriders; entry; entry = entry->next) {
    if (!entry->is_ambiguous) continue;
    pos_sy_error(ec_ambiguous_virtual_function_override, class_type->source_corresp.decl_position,
                 entry->overridden->source_corresp.assoc_symbol);
  }
}

void build_overriders(a_type *class_type)
{
  a_base_class *first = class_supplement_of(class_type)->base_classes;
  for (a_base_class *direct = first; direct != nullptr; direct = direct->next) {
    if (!direct->is_direct) continue;
    a_base_class *inner = class_supplement_of(direct->type)->base_classes;
    for (; inner != nullptr; inner = inner->next)
      take_over_overriders(direct, inner);
  }
  for (a_base_class *base = first; base != nullptr; base = base->next) {
    if (as_class(base->type).has_virtual_functions) override_by_class(class_type, base);
  }
  if (!as_class(class_type).has_virtual_bases) return;
  for (a_base_class *base = first; base != nullptr; base = base->next)
    report_ambiguous_overriders(class_type, base);
}

a_routine *final_overrider_of(a_base_class *base, a_routine *routine)
{
  an_overriding_virtual_function *entry = find_overrider(base, routine);
  return entry != nullptr ? entry->overrider : routine;
}

//---------------------------------------------------------------------------------------------
// Abstract classes.

a_routine *pure_function_of_class(a_type *class_type, a_routine *behind)
{
  bool wanted = behind == nullptr;
  for (a_routine *routine = first_routine_of_class(class_type); routine; routine = routine->next) {
    if (!routine->is_pure_virtual) continue;
    if (wanted) return routine;
    wanted = routine == behind;
  }
  a_base_class *base = class_supplement_of(class_type)->base_classes;
  for (; base != nullptr; base = base->next) {
    for (a_routine *r = first_routine_of_class(base->type); r != nullptr; r = r->next) {
      if (!r->is_pure_virtual || final_overrider_of(base, r) != r) continue;
      if (wanted) return r;
      wanted = r == behind;
    }
  }
  return nullptr;
}

void determine_whether_abstract(a_type *class_type)
{
  a_class_type_part &part = as_class(class_type);
  if (part.is_template_dependent) return;
  part.is_abstract =
      part.has_virtual_functions && pure_function_of_class(class_type, nullptr) != nullptr;
  part.abstract_known = true;
}

//---------------------------------------------------------------------------------------------
// Hiding.

static a_symbol *first_function(a_symbol *symbol)
{
  return symbol->kind == sk_overloaded_function ? overloads_of_symbol(symbol) : symbol;
}

// The functions that the class declares under the name of a base's function; null when there are none.
static a_symbol *own_functions_of_name(a_type *class_type, const a_routine *old)
{
  a_class_symbol_supplement *supplement = class_symbol_supplement_of(class_type);
  a_symbol_header *header = old->source_corresp.assoc_symbol->header;
  a_symbol *symbol = find_symbol_list_in_table(&supplement->pointers_block, header);
  for (; symbol != nullptr; symbol = symbol->next_in_bucket) {
    if (symbol->kind == sk_member_function || symbol->kind == sk_overloaded_function) return symbol;
  }
  return nullptr;
}

static bool set_overrides_something(a_symbol *symbol)
{
  bool is_set = symbol->kind == sk_overloaded_function;
  for (a_symbol *s = first_function(symbol); s != nullptr;
       s = is_set ? s->next_same_name : nullptr) {
    if (s->kind == sk_member_function && routine_of_symbol(s)->overrides_base_function) return true;
  }
  return false;
}

// That one was reported where it is declared.
static bool has_static_of_same_parameters(a_symbol *symbol, const a_routine *old)
{
  bool is_set = symbol->kind == sk_overloaded_function;
  for (a_symbol *s = first_function(symbol); s; s = is_set ? s->next_same_name : nullptr) {
    if (s->kind != sk_member_function || !routine_of_symbol(s)->is_static_member) continue;
    if (same_parameter_types(routine_of_symbol(s)->type, old->type)) return true;
  }
  return false;
}

static bool comes_through_using_declaration(a_symbol *symbol, const a_routine *old)
{
  if (symbol->kind != sk_overloaded_function) return false;
  for (a_symbol *s = overloads_of_symbol(symbol); s != nullptr; s = s->next_same_name) {
    if (s->kind == sk_projection && projected_symbol_of(s) == old->source_corresp.assoc_symbol) {
      return true;
    }
  }
  return false;
}

static void check_hidden_function(a_type *class_type, a_base_class *base, a_routine *old)
{
  if (!old->is_virtual || old->special_kind == sfk_destructor) return;
  if (final_overrider_of(base, old) != old) return;
  a_symbol *own = own_functions_of_name(class_type, old);
  if (own == nullptr || comes_through_using_declaration(own, old)) return;
  a_symbol *symbol = first_function(own);
  if (symbol->kind != sk_member_function || routine_of_symbol(symbol)->is_compiler_generated)
    return;
  if (has_static_of_same_parameters(own, old)) return;
  a_symbol *old_symbol = old->source_corresp.assoc_symbol;
  if (routine_of_symbol(symbol)->is_virtual || set_overrides_something(own)) {
    pos_sy2_warning(ec_partial_override, symbol->position, symbol, old_symbol);
  } else {
    pos_sy2_warning(ec_virtual_function_decl_hidden, symbol->position, old_symbol, symbol);
  }
}

void check_hidden_virtual_functions(a_type *class_type)
{
  a_base_class *base = class_supplement_of(class_type)->base_classes;
  for (; base != nullptr; base = base->next) {
    if (!as_class(base->type).has_virtual_functions) continue;
    for (a_routine *old = first_routine_of_class(base->type); old != nullptr; old = old->next)
      check_hidden_function(class_type, base, old);
  }
}
