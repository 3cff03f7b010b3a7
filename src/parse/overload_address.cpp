// overload_address.cpp - an overload set whose function the context's type chooses.
// Entry:   find_addr_of_overloaded_function_match, overloaded_function_catch_up.
// See:     C++98 13.4.
#include "driver/flags.h"
#include "il/il.h"
#include "il/il_entities.h"
#include "il/types.h"
#include "parse/expr_internal.h"
#include "parse/exprutil.h"
#include "parse/overload.h"
#include "parse/overload_private.h"
#include "parse/symbol_tbl.h"

// The function type that a context asks for, and the class of a pointer to member.
static a_type *wanted_function_type(a_type *target, a_type **member_of)
{
  *member_of = nullptr;
  if (is_any_reference_type(target)) target = type_pointed_to(target);
  if (is_ptr_to_member_type(target)) {
    *member_of = skip_typerefs(pm_class_type(target));
    target = pm_member_type(target);
  } else if (is_pointer_type(target)) {
    target = type_pointed_to(target);
  }
  target = skip_typerefs(target);
  return target->kind == tk_routine ? target : nullptr;
}

static bool fits_member_class(const a_symbol *function, a_type *member_of)
{
  a_type *routine_type = skip_typerefs(routine_of_symbol((a_symbol *)function)->type);
  a_type *this_class = routine_supplement_of(routine_type)->this_class;
  if (member_of == nullptr) return this_class == nullptr;
  return this_class != nullptr && is_same_class_or_base_class_thereof(this_class, member_of);
}

// Member functions of the same type may belong to a class and its base.
static bool is_function_of_type(a_type *type, a_type *wanted)
{
  bool same_object = routine_supplement_of(type)->this_qualifiers ==
                     routine_supplement_of(wanted)->this_qualifiers;
  return same_object &&
         f_types_are_compatible(routine_type_without_this_class(type),
                                routine_type_without_this_class(wanted), tco_ignore_linkage);
}

static a_symbol *exact_match(a_symbol *first, bool is_set, a_type *wanted, a_type *member_of,
                             bool *is_ambiguous)
{
  a_symbol *match = nullptr;
  for (a_symbol *entry = first; entry != nullptr;
       entry = is_set ? entry->next_same_name : nullptr) {
    a_symbol *function = symbol_behind(entry);
    if (!is_routine_symbol(function) || !fits_member_class(function, member_of)) continue;
    if (!is_function_of_type(skip_typerefs(routine_of_symbol(function)->type), wanted)) continue;
    if (match != nullptr && routine_of_symbol(match) != routine_of_symbol(function)) {
      *is_ambiguous = true;
      return nullptr;
    }
    match = function;
  }
  return match;
}

// A pointer that isn't of the function's type: what converts to it implicitly.
static a_symbol *converting_match(a_symbol *first, bool is_set, a_type *target,
                                  a_std_conv_descr *std_conv, bool *is_ambiguous)
{
  a_symbol *match = nullptr;
  for (a_symbol *entry = first; entry != nullptr;
       entry = is_set ? entry->next_same_name : nullptr) {
    a_symbol *function = symbol_behind(entry);
    if (!is_routine_symbol(function)) continue;
    a_conversion_source source = {};
    source.type = make_pointer_type(routine_of_symbol(function)->type);
    a_std_conv_descr conv;
    clear_std_conv_descr(&conv);
    if (!impl_conversion_possible(&source, rvalue_type(target), &conv)) continue;
    if (match != nullptr) {
      *is_ambiguous = true;
      return nullptr;
    }
    match = function;
    *std_conv = conv;
  }
  return match;
}

static void note_differences(a_symbol *function, a_type *wanted, a_type *target,
                             a_std_conv_descr *std_conv)
{
  a_type *type = skip_typerefs(routine_of_symbol(function)->type);
  std_conv->is_conversion = false;
  if (!exception_spec_conversion_possible(type, wanted)) std_conv->exception_spec_mismatch = true;
  if (is_any_reference_type(target) && get_type_qualifiers(type_pointed_to(target)) != 0)
    std_conv->ref_qualification_added = true;
}

a_symbol *find_addr_of_overloaded_function_match(a_symbol *symbol, bool has_explicit_args,
                                                 a_template_arg *args, bool is_address_of,
                                                 a_type *target_type, bool is_static_cast,
                                                 bool *is_ambiguous, an_arg_match_level *level,
                                                 a_std_conv_descr *std_conv)
{
  (void)is_address_of;
  (void)is_static_cast;
  *is_ambiguous = false;
  a_symbol *set = symbol_behind(symbol);
  bool is_set = set->kind == sk_overloaded_function;
  a_symbol *first = is_set ? overloads_of_symbol(set) : set;
  a_type *member_of;
  a_type *wanted = wanted_function_type(target_type, &member_of);
  a_symbol *match = nullptr;
  if (wanted != nullptr && !has_explicit_args)
    match = exact_match(first, is_set, wanted, member_of, is_ambiguous);
  if (match == nullptr && !*is_ambiguous && wanted != nullptr &&
      overload_hooks.find_matching_template_function != nullptr)
    match =
        overload_hooks.find_matching_template_function(first, is_set, args, wanted, is_ambiguous);
  if (match != nullptr) {
    if (level != nullptr) *level = aml_exact;
    if (std_conv != nullptr) note_differences(match, wanted, target_type, std_conv);
    return match;
  }
  if (*is_ambiguous || std_conv == nullptr || has_explicit_args ||
      is_any_reference_type(target_type))
    return nullptr;
  match = converting_match(first, is_set, target_type, std_conv, is_ambiguous);
  if (match != nullptr && level != nullptr)
    *level = std_conv->is_conversion ? aml_standard : aml_exact;
  return match;
}

void overloaded_function_catch_up(an_operand *operand, a_symbol *function)
{
  if (operand->kind != ok_indefinite_function) return;
  an_operand saved = *operand;
  a_source_position position = saved.position, end = saved.end_position;
  bool is_member = function->is_class_member && !routine_of_symbol(function)->is_static_member;
  if (is_member) {
    make_sym_for_member_operand(function, operand);
    operand->position = saved.pending_address_of ? saved.address_position : position;
    operand->end_position = end;
    add_ref_entry_to_operand(ref_entry(function, position), operand);
    if (saved.pending_address_of) make_ptr_to_member_constant_operand(operand);
    return;
  }
  make_function_designator_operand(function, &position, &end, operand,
                                   ref_entry(function, position));
  operand->pending_address_of = false;
  if (!saved.pending_address_of) return;
  conv_function_designator_to_ptr_to_function(operand);
  operand->position = saved.address_position;
}
