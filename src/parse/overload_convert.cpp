// overload_convert.cpp - conversions by constructors and conversion functions.
// Entry:   conversion_from_class_possible, conversion_to_class_possible,
//          user_defined_conversion_possible, user_convert_operand,
//          try_to_convert_class_operand_to_builtin_type, conditional_operator_conversion_possible.
// See:     C++98 12.3, 13.3.1.3 to 13.3.1.6.
#include "driver/flags.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/il_entities.h"
#include "il/types.h"
#include "parse/expr_class.h"
#include "parse/overload.h"
#include "parse/overload_private.h"
#include "parse/symbol_links.h"
#include "parse/symbol_tbl.h"

// -------------------------------------------------------------------------------------------------
// Conversion functions of a class and its bases

// What a conversion function is asked for: a type, or a category of built-in types.
struct a_conversion_wish {
  a_type *target; // null: by mask
  unsigned mask;
  unsigned flags; // ucf_...
  a_type *source_type;
  an_operand *operand;
  bool is_reference_target;
};

static bool type_fits_mask(a_type *type, unsigned mask, a_std_conv_descr *conv)
{
  if (is_bool_type(type) && (mask & cvm_bool)) return true;
  if (is_enum_type(type)) {
    if (mask & cvm_enum) return true;
    if (!(mask & cvm_integral)) return false;
    conv->is_conversion = true;
    return true;
  }
  if (is_integral_or_enum_type(type)) return (mask & (cvm_integral | cvm_ptrdiff)) != 0;
  if (is_floating_type(type)) return (mask & cvm_floating) != 0;
  if (is_ptr_to_member_type(type)) return (mask & cvm_member_pointer) != 0;
  if (!is_pointer_type(type)) return false;
  if (mask & cvm_pointer) return true;
  bool to_function = is_function_type(type_pointed_to(type));
  return (mask & (to_function ? cvm_function_pointer : cvm_object_pointer)) != 0;
}

static bool result_fits_class(const a_conversion_wish *wish, a_type *result, a_conv_descr *conv)
{
  a_type *result_class = skip_typerefs(result), *target_class = skip_typerefs(wish->target);
  if (!is_class_struct_union_type(result_class)) return false;
  if (!identical_types(result_class, target_class)) {
    if (!(wish->flags & ucf_derived_result_ok)) return false;
    a_base_class *base = find_base_class_of(result_class, target_class);
    if (base == nullptr) return false;
    conv->std_conv.base_class = base;
    conv->std_conv.is_conversion = true;
    conv->class_adjustment_needed = true;
  }
  a_type_qualifier_set have = get_type_qualifiers(result), want = get_type_qualifiers(wish->target);
  if (!(wish->flags & ucf_direct_binding)) return true;
  return (have & ~want) == 0;
}

static bool result_fits_type(const a_conversion_wish *wish, a_type *result, bool is_lvalue,
                             a_conv_descr *conv)
{
  if (is_class_struct_union_type(wish->target)) return result_fits_class(wish, result, conv);
  a_type_qualifier_set lost = get_type_qualifiers(result) & ~get_type_qualifiers(wish->target);
  if (f_identical_types(result, wish->target, ido_ignore_top_qualifiers)) {
    conv->std_conv.is_conversion = false;
    return !(wish->flags & ucf_direct_binding) || (lost & (tq_const | tq_volatile)) == 0;
  }
  if (wish->flags & ucf_direct_binding) return false;
  if (is_array_type(result)) result = type_after_array_to_pointer_transformation(result);
  if (is_function_type(result)) result = make_pointer_type(result);
  if (is_class_struct_union_type(result)) return false;
  a_conversion_source source = {};
  source.type = rvalue_type(result);
  source.is_lvalue = is_lvalue;
  return impl_conversion_possible(&source, rvalue_type(wish->target), &conv->std_conv);
}

static bool conversion_function_fits(const a_conversion_wish *wish, a_routine *routine,
                                     a_conv_descr *conv)
{
  clear_conv_descr(conv);
  if (routine->is_explicit && !(wish->flags & ucf_explicit_ok)) return false;
  a_type *result = return_type_of(skip_typerefs(routine->type));
  bool is_lvalue = is_any_lvalue_reference_type(result);
  if ((wish->flags & ucf_lvalue_only) && !is_lvalue) return false;
  if (is_any_reference_type(result)) result = type_pointed_to(result);
  conv->result_is_lvalue = is_lvalue;
  if (wish->target != nullptr) return result_fits_type(wish, result, is_lvalue, conv);
  if ((wish->flags & ucf_lvalue_only) && is_const_qualified(result)) return false;
  return type_fits_mask(result, wish->mask, &conv->std_conv);
}

static void add_conversion_candidate(const a_conversion_wish *wish, a_symbol *symbol,
                                     a_candidate_function **list)
{
  symbol = symbol_behind(symbol);
  if (!is_routine_symbol(symbol)) return;
  a_routine *routine = routine_of_symbol(symbol);
  a_conv_descr conv;
  if (!conversion_function_fits(wish, routine, &conv)) return;
  an_arg_match_summary *summary = alloc_arg_match_summary();
  selector_match_with_this_param(wish->operand, wish->source_type, routine, summary);
  if (summary->level == aml_no_match) {
    free_arg_match_summary_list(summary);
    return;
  }
  a_candidate_function *candidate = alloc_candidate_function();
  candidate->symbol = symbol;
  candidate->is_conversion_candidate = true;
  candidate->arg_summaries = summary;
  conv.routine = routine;
  conv.symbol = symbol;
  candidate->conv = conv;
  candidate->next = *list;
  *list = candidate;
}

static void add_conversions_of_class(const a_conversion_wish *wish, a_type *class_type,
                                     a_candidate_function **list)
{
  a_class_symbol_supplement *supplement = class_supplement_of_type(class_type);
  if (supplement == nullptr) return;
  a_symbol_list_entry *entry = supplement->conversion_functions;
  for (; entry != nullptr; entry = entry->next)
    add_conversion_candidate(wish, entry->symbol, list);
}

// A conversion function of the derived class hides the one to the same type in a base.
static bool is_hidden_by(const a_candidate_function *list, const a_candidate_function *inherited)
{
  a_type *type = return_type_of(skip_typerefs(inherited->conv.routine->type));
  for (; list != nullptr; list = list->next) {
    a_routine *routine = list->conv.routine;
    if (routine == inherited->conv.routine) return true;
    if (identical_types(return_type_of(skip_typerefs(routine->type)), type)) return true;
  }
  return false;
}

static a_candidate_function *conversion_candidates(const a_conversion_wish *wish)
{
  a_candidate_function *list = nullptr;
  a_type *class_type = skip_typerefs(wish->source_type);
  add_conversions_of_class(wish, class_type, &list);
  for (a_base_class *base = class_supplement_of(class_type)->base_classes; base != nullptr;
       base = base->next) {
    a_candidate_function *inherited = nullptr;
    add_conversions_of_class(wish, base->type, &inherited);
    while (inherited != nullptr) {
      a_candidate_function *candidate = inherited;
      inherited = inherited->next;
      candidate->next = nullptr;
      if (is_hidden_by(list, candidate)) {
        free_candidate_function_list(candidate);
      } else {
        candidate->next = list;
        list = candidate;
      }
    }
  }
  return list;
}

// The outcome of a selection: one conversion, or the tying candidates for the caller.
static bool take_selection(a_selection selection, bool is_constructor, a_conv_descr *conv,
                           a_candidate_function **candidates)
{
  if (selection.candidates == nullptr) return false;
  if (selection.is_ambiguous) {
    conv->is_ambiguous = true;
    if (candidates != nullptr)
      *candidates = selection.candidates;
    else
      free_candidate_function_list(selection.candidates);
    return false;
  }
  a_candidate_function *winner = selection.candidates;
  if (is_constructor && !winner->is_conversion_candidate) {
    conv->symbol = winner->symbol;
    conv->routine = routine_of_symbol(winner->symbol);
    an_arg_match_summary *arg = winner->arg_summaries->next;
    if (arg != nullptr) conv->std_conv = arg->conv.std_conv;
  } else {
    *conv = winner->conv;
  }
  free_candidate_function_list(winner);
  return true;
}

bool conversion_from_class_possible(an_operand *operand, a_type *source_type, a_type *target,
                                    unsigned flags, a_conv_descr *conv,
                                    a_candidate_function **candidates)
{
  clear_conv_descr(conv);
  if (!is_class_struct_union_type(source_type) || is_incomplete_type(source_type)) return false;
  a_conversion_wish wish = {};
  wish.target = target;
  wish.flags = flags;
  wish.source_type = source_type;
  wish.operand = operand;
  return take_selection(select_best_candidate(conversion_candidates(&wish)), false, conv,
                        candidates);
}

bool builtin_conversion_possible(an_operand *operand, unsigned mask, bool needs_lvalue,
                                 a_conv_descr *conv)
{
  clear_conv_descr(conv);
  if (is_incomplete_type(operand->type)) return false;
  a_conversion_wish wish = {};
  wish.mask = mask;
  wish.flags = needs_lvalue ? unsigned{ucf_lvalue_only} : 0u;
  wish.source_type = operand->type;
  wish.operand = operand;
  return take_selection(select_best_candidate(conversion_candidates(&wish)), false, conv, nullptr);
}

int result_types_of_conversion_functions(a_type *class_type, a_type **results, int room)
{
  if (is_incomplete_type(class_type)) return 0;
  a_conversion_wish wish = {};
  wish.mask = cvm_integral | cvm_floating | cvm_pointer | cvm_member_pointer | cvm_bool | cvm_enum;
  wish.source_type = class_type;
  a_candidate_function *list = conversion_candidates(&wish);
  int count = 0;
  for (a_candidate_function *c = list; c != nullptr && count < room; c = c->next)
    results[count++] = return_type_of(skip_typerefs(c->conv.routine->type));
  free_candidate_function_list(list);
  return count;
}

// -------------------------------------------------------------------------------------------------
// Constructors

static bool is_same_or_derived(a_type *source, a_type *target, a_base_class **base)
{
  *base = nullptr;
  a_type *source_class = skip_typerefs(source), *target_class = skip_typerefs(target);
  if (!is_class_struct_union_type(source_class)) return false;
  if (identical_types(source_class, target_class)) return true;
  if (is_incomplete_type(source_class)) return false;
  *base = find_base_class_of(source_class, target_class);
  return *base != nullptr;
}

static void add_constructor_candidates(a_type *target, an_operand *operand, a_type *source_type,
                                       unsigned flags, bool is_copy, a_candidate_search *search)
{
  a_class_symbol_supplement *supplement = class_supplement_of_type(target);
  if (supplement == nullptr || supplement->constructors == nullptr) return;
  an_operand stand_in;
  if (operand == nullptr) {
    clear_operand(ok_expression, &stand_in);
    stand_in.type = is_any_reference_type(source_type) ? type_pointed_to(source_type) : source_type;
    stand_in.state = is_any_lvalue_reference_type(source_type) ? os_lvalue : os_rvalue;
    operand = &stand_in;
  }
  an_arg_operand *arg = alloc_arg_operand(operand);
  search->args = arg;
  search->no_explicit_constructors = !(flags & ucf_explicit_ok);
  search->no_user_conversions = true;
  search->is_copy_like = is_copy;
  add_candidates(search, supplement->constructors);
  search->args = nullptr;
  free_arg_operand_list(arg);
}

bool conversion_to_class_possible(an_operand *operand, a_type *source_type, a_type *target,
                                  unsigned flags, a_conv_descr *conv,
                                  a_candidate_function **candidates)
{
  clear_conv_descr(conv);
  if (!is_class_struct_union_type(target) || is_incomplete_type(target)) return false;
  a_base_class *base;
  bool is_copy = is_same_or_derived(source_type, target, &base);
  a_class_symbol_supplement *supplement = class_supplement_of_type(target);
  bool any_constructor = supplement != nullptr && supplement->constructors != nullptr;
  // The copy constructor that the class would call does what a copy of the bytes does.
  bool is_trivial = supplement != nullptr && supplement->has_trivial_copy_constructor;
  if (is_copy && (!any_constructor || is_trivial) && !is_volatile_qualified(source_type)) {
    conv->is_trivial_copy = true;
    conv->std_conv.base_class = base;
    return true;
  }
  a_candidate_search search = {};
  add_constructor_candidates(target, operand, source_type, flags, is_copy, &search);
  if (!is_copy && is_class_struct_union_type(source_type) && !is_incomplete_type(source_type) &&
      !(flags & ucf_no_conversion_functions)) {
    a_conversion_wish wish = {};
    wish.target = target;
    wish.flags = flags | ucf_derived_result_ok;
    wish.source_type = source_type;
    wish.operand = operand;
    for (a_candidate_function *c = conversion_candidates(&wish); c != nullptr;) {
      a_candidate_function *next = c->next;
      c->next = search.list;
      search.list = c;
      c = next;
    }
  }
  if (search.list == nullptr && is_copy) {
    conv->is_trivial_copy = true;
    conv->std_conv.base_class = base;
    return supplement == nullptr || supplement->has_trivial_copy_constructor;
  }
  if (!take_selection(select_best_candidate(search.list), true, conv, candidates)) return false;
  conv->copy_like_constructor = is_copy;
  return true;
}

// -------------------------------------------------------------------------------------------------
// With messages

struct a_conversion_failure {
  an_error_code none;
  an_error_code ambiguous;
  bool names_class_only;
};

static a_conversion_failure codes_of_failure(a_type *source, a_type *target)
{
  bool source_is_class = is_class_struct_union_type(source);
  if (!is_class_struct_union_type(target))
    return {ec_no_conversion_function, ec_ambiguous_conversion_function, false};
  if (!source_is_class)
    return {ec_no_constructor_for_conversion, ec_ambiguous_constructor_for_conversion, false};
  if (identical_types(skip_typerefs(source), skip_typerefs(target)))
    return {ec_no_suitable_copy_constructor, ec_ambiguous_copy_constructor, true};
  return {ec_no_user_defined_conversion, ec_ambiguous_user_defined_conversion, false};
}

static void report_failure(const a_conversion_failure *failure, an_operand *operand, a_type *target,
                           bool is_ambiguous, a_candidate_function *tied,
                           a_source_position position)
{
  if (!expr_error_should_be_issued()) return;
  an_error_code code = is_ambiguous ? failure->ambiguous : failure->none;
  if (failure->names_class_only)
    pos_ty_start_error(code, position, target);
  else
    pos_ty2_start_error(code, position, operand->type, target);
  list_candidates(tied);
  end_error();
}

bool user_defined_conversion_possible(an_operand *operand, a_type *target, bool is_direct,
                                      a_conv_descr *conv, a_source_position *position)
{
  a_source_position place = position != nullptr ? *position : operand->position;
  bool to_class = is_class_struct_union_type(target);
  if (to_class && is_incomplete_type(target)) {
    expr_pos_ty_diagnostic(es_error, ec_converting_to_incomplete_class, place, target);
    conv_to_error_operand(operand);
    return false;
  }
  unsigned flags = is_direct ? unsigned{ucf_explicit_ok} : 0u;
  a_candidate_function *tied = nullptr;
  bool found =
      to_class ? conversion_to_class_possible(operand, operand->type, target, flags, conv, &tied)
               : conversion_from_class_possible(operand, operand->type, target, flags, conv, &tied);
  if (found) return true;
  a_conversion_failure failure = codes_of_failure(operand->type, target);
  report_failure(&failure, operand, target, conv->is_ambiguous, tied, place);
  free_candidate_function_list(tied);
  conv_to_error_operand(operand);
  return false;
}

bool try_to_convert_class_operand_to_builtin_type(an_operand *operand, unsigned mask,
                                                  an_error_code code)
{
  if (!is_class_struct_union_type(operand->type) || is_incomplete_type(operand->type)) return false;
  a_conversion_wish wish = {};
  wish.mask = mask;
  wish.source_type = operand->type;
  wish.operand = operand;
  a_conv_descr conv;
  clear_conv_descr(&conv);
  a_candidate_function *tied = nullptr;
  a_candidate_function *list = conversion_candidates(&wish);
  if (take_selection(select_best_candidate(list), false, &conv, &tied)) {
    a_type *result = return_type_of(skip_typerefs(conv.routine->type));
    if (is_any_reference_type(result)) result = type_pointed_to(result);
    user_convert_operand(operand, rvalue_type(result), &conv, true);
    return operand->kind != ok_error;
  }
  if (tied != nullptr) {
    if (expr_error_should_be_issued()) {
      pos_ty_start_error(ec_ambiguous_conversion_to_builtin, operand->position, operand->type);
      list_candidates(tied);
      end_error();
    }
    free_candidate_function_list(tied);
  } else if (code != ec_no_error) {
    expr_pos_error(code, operand->position);
  }
  conv_to_error_operand(operand);
  return false;
}

// -------------------------------------------------------------------------------------------------
// Doing it

static void finish_conversion_function_result(an_operand *operand, a_type *target,
                                              const a_conv_descr *conv)
{
  if (operand->kind == ok_error) return;
  if (conv->std_conv.base_class != nullptr && is_class_struct_union_type(target)) {
    an_operand saved = *operand;
    if (!is_lvalue_operand(operand)) conv_class_rvalue_operand_to_lvalue(operand);
    an_expr_node *node = make_node_from_operand(operand);
    make_lvalue_expression_operand(base_class_selection_expr(node, conv->std_conv.base_class),
                                   operand);
    restore_operand_details_incl_ref(operand, &saved);
    return;
  }
  if (is_class_struct_union_type(target) || conv->for_direct_reference_binding) return;
  do_operand_transformations(operand, 0);
  if (!identical_types(rvalue_type(operand->type), rvalue_type(target)))
    cast_operand_full(target, operand, &operand->position, true, true, true, false, false);
}

void user_convert_operand(an_operand *operand, a_type *target, a_conv_descr *conv, bool is_implicit)
{
  (void)is_implicit;
  if (operand->kind == ok_error) return;
  if (conv->routine == nullptr) {
    // A copy without a function; a step to a base class leaves the rest of the object behind.
    if (conv->std_conv.base_class != nullptr)
      finish_conversion_function_result(operand, target, conv);
    return;
  }
  if (conv->routine->special_kind == sfk_constructor) {
    make_constructor_call_operand(conv->routine, target, operand);
    return;
  }
  call_conversion_function(conv->routine, operand);
  finish_conversion_function_result(operand, target, conv);
}

// -------------------------------------------------------------------------------------------------
// The conditional operator

bool conditional_operator_conversion_possible(an_operand *from, an_operand *to, a_conv_descr *conv,
                                              bool *is_ambiguous)
{
  *is_ambiguous = false;
  clear_conv_descr(conv);
  if (to->kind == ok_indefinite_function) return false;
  if (is_lvalue_operand(to)) {
    a_reference_binding binding;
    a_type *reference = make_reference_type(to->type);
    if (is_lvalue_operand(from)) {
      direct_reference_binding_possible(from, nullptr, true, reference, &binding);
      if (binding.is_direct) {
        conv->is_trivial_copy = true;
        conv->std_conv.base_class = binding.base_class;
        return true;
      }
    }
    if (conversion_from_class_possible(from, from->type, to->type,
                                       ucf_lvalue_only | ucf_direct_binding, conv, nullptr))
      return true;
  }
  bool from_class = is_class_struct_union_type(from->type);
  bool to_class = is_class_struct_union_type(to->type);
  a_base_class *base;
  if (from_class && to_class && is_same_or_derived(from->type, to->type, &base)) {
    a_type_qualifier_set lost = get_type_qualifiers(from->type) & ~get_type_qualifiers(to->type);
    conv->is_trivial_copy = true;
    conv->std_conv.base_class = base;
    return lost == 0;
  }
  bool found = to_class ? conversion_to_class_possible(from, from->type, rvalue_type(to->type), 0,
                                                       conv, nullptr)
                        : conversion_from_class_possible(from, from->type, rvalue_type(to->type), 0,
                                                         conv, nullptr);
  *is_ambiguous = conv->is_ambiguous;
  return found;
}
