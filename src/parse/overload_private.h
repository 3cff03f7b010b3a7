// overload_private.h - what the files of overload share.
#pragma once
#include "parse/overload.h"

// What templates add; null until that module installs it.
struct a_candidate_search;
struct a_set_of_overload_hooks {
  // 1 when the first template is more specialized, -1 when the second is, else 0.
  int (*compare_function_templates)(a_symbol *a, a_symbol *b, int first, int count);
  void (*free_template_arg_list)(a_template_arg *list);
  // Deduces, and adds the template to the search's list if it fits.
  void (*add_template_candidate)(a_candidate_search *search, a_symbol *symbol,
                                 a_symbol *overload_symbol);
  // The one template of the set that gives a function of the type.
  a_symbol *(*find_matching_template_function)(a_symbol *first, bool is_set, a_template_arg *args,
                                               a_type *wanted, bool *is_ambiguous);
  // The specialization that a chosen template candidate stands for.
  a_symbol *(*instantiate_candidate)(a_candidate_function *candidate);
};
extern a_set_of_overload_hooks overload_hooks;

// The function, set or template that a using declaration or an inherited name stands for.
inline a_symbol *symbol_behind(a_symbol *symbol)
{
  while (symbol != nullptr && symbol->kind == sk_projection)
    symbol = projected_symbol_of(symbol);
  return symbol;
}

// 1, -1 or 0 as the first or second is better.
int compare_std_conversions(const a_conv_descr *a, const a_conv_descr *b, bool compare_ranks,
                            bool is_conversion_result);
bool candidates_are_the_same_function(const a_candidate_function *a, const a_candidate_function *b);

// overload_candidates.cpp
// Adds the functions of a set (or the one function) that the arguments fit, at the head of *list.
struct a_candidate_search {
  an_arg_operand *args;
  an_operand *object;             // null: none
  a_type *object_type;            // class of the object with its qualifiers, null without object
  bool has_explicit_args;
  a_template_arg *explicit_args;
  bool no_explicit_constructors;
  bool is_copy_like;              // the call copies an object: no copy constructor test again
  bool no_user_conversions;       // one user-defined conversion is under way already
  bool found_by_dependent_lookup;
  // Results.
  a_candidate_function *list;
  bool object_needed;             // a member function failed for want of an object
  bool object_qualifiers_failed;
  bool explicit_constructor_skipped;
};
void add_candidates(a_candidate_search *search, a_symbol *symbol);

// overload_operators.cpp: the note of a built-in candidate.
void list_builtin_candidate(a_candidate_function *candidate);
// "argument types are: (...)" for the message that is open.
void add_types_of_arguments_to_message(an_arg_operand *args);

// overload_convert.cpp.  A conversion function of a class operand whose result falls in the mask.
bool builtin_conversion_possible(an_operand *operand, unsigned mask, bool needs_lvalue,
                                 a_conv_descr *conv);
// The result types of a class's conversion functions, own and inherited; returns their number.
int result_types_of_conversion_functions(a_type *class_type, a_type **results, int room);
