// overload_operators.cpp - operators on classes and enums: functions and built-in candidates.
// Entry:   check_for_operator_overloading, list_builtin_candidate.
// See:     C++98 13.3.1.2, 13.6.
#include <cstdio>
#include <cstring>

#include "driver/flags.h"
#include "il/il.h"
#include "il/il_entities.h"
#include "il/types.h"
#include "lex/source_position.h"
#include "lex/tokens.h"
#include "parse/expr_class.h"
#include "parse/lookup.h"
#include "parse/overload.h"
#include "parse/overload_private.h"
#include "parse/symbol_tbl.h"

struct a_builtin_signature {
  const char *unary, *binary; // null: none
};
static a_builtin_signature builtin_signatures[num_opname_kinds];

static void fill_builtin_signatures()
{
#define BUILTIN_CANDIDATES(opname, unary, binary) builtin_signatures[opname] = {unary, binary};
#include "parse/builtin_candidates.def"
}

// -------------------------------------------------------------------------------------------------
// Letters

static unsigned mask_of_letter(char letter)
{
  switch (letter) {
  case 'A':
  case 'a': return cvm_integral | cvm_floating;
  case 'I':
  case 'i': return cvm_integral;
  case 'B':
    return bool_is_keyword
               ? unsigned{cvm_bool}
               : cvm_integral | cvm_floating | cvm_pointer | cvm_member_pointer | cvm_enum;
  case 'D': return cvm_ptrdiff;
  case 'E': return cvm_enum;
  case 'F': return cvm_function_pointer;
  case 'M': return cvm_member_pointer;
  case 'O': return cvm_object_pointer;
  case 'P': return cvm_pointer;
  }
  return 0;
}

static bool is_object_pointer(a_type *type)
{
  return is_pointer_type(type) && !is_function_type(type_pointed_to(type));
}

// The type of a built-in operand after array and function decay.
static a_type *decayed_type(const an_operand *operand)
{
  a_type *type = operand->type;
  if (is_array_type(type)) return type_after_array_to_pointer_transformation(type);
  if (is_function_type(type)) return make_pointer_type(type);
  return rvalue_type(type);
}

static bool builtin_type_fits_letter(a_type *type, char letter)
{
  switch (letter) {
  case 'A':
  case 'a': return is_arithmetic_or_unscoped_enum_type(type);
  case 'I':
  case 'i':
  case 'D': return is_integral_or_unscoped_enum_type(type);
  case 'B':
    return is_arithmetic_or_unscoped_enum_type(type) || is_pointer_type(type) ||
           is_ptr_to_member_type(type);
  case 'E': return is_enum_type(type);
  case 'F': return is_pointer_type(type) && !is_object_pointer(type);
  case 'M': return is_ptr_to_member_type(type);
  case 'O': return is_object_pointer(type);
  case 'P': return is_pointer_type(type);
  }
  return false;
}

static void rank_builtin_operand(a_type *type, char letter, unsigned opname,
                                 an_arg_match_summary *summary)
{
  a_std_conv_descr *conv = &summary->conv.std_conv;
  summary->level = aml_exact;
  conv->is_conversion = false;
  if (cfront_2_1_mode) {
    summary->level = aml_standard;
  } else if (letter == 'B') {
    if (is_bool_type(type)) return;
    summary->level = aml_standard;
    conv->is_to_bool = is_pointer_type(type) || is_ptr_to_member_type(type);
  } else if (letter == 'D') {
    if (special_subscript_cost && opname == onk_subscript) {
      summary->level = aml_standard;
    } else if (!is_ptrdiff_t_type(type)) {
      bool promotes = is_ptrdiff_t_type(type_after_integral_promotion(type));
      summary->level = promotes ? aml_promotion : aml_standard;
    }
  } else if (strchr("AaIi", letter) != nullptr && is_integral_or_enum_type(type)) {
    bool cfront = cfront_3_0_mode;
    if (is_enum_type(type))
      summary->level = cfront ? aml_exact : aml_promotion;
    else if (letter == 'A' || letter == 'I')
      summary->level =
          identical_types(type_after_integral_promotion(type), type) ? aml_exact : aml_promotion;
  }
}

// -------------------------------------------------------------------------------------------------
// Built-in candidates

struct an_operator_search {
  const an_operator_request *request;
  an_operand *operands[2];
  int count;
  a_candidate_function *list;
};

// A class operand against a letter: the conversion function that gives it; ambiguity counts as a
// match that fails later.
static bool rank_class_operand(an_operand *operand, char letter, a_type *concrete,
                               bool needs_lvalue, an_arg_match_summary *summary)
{
  a_conv_descr conv;
  bool found =
      concrete != nullptr
          ? conversion_from_class_possible(operand, operand->type, concrete, 0, &conv, nullptr)
          : builtin_conversion_possible(operand, mask_of_letter(letter), needs_lvalue, &conv);
  if (!found && !conv.is_ambiguous) return false;
  summary->level = aml_user;
  summary->conv = conv;
  return true;
}

static bool rank_letter(an_operator_search *search, int index, char letter, a_type *concrete,
                        bool needs_lvalue, an_arg_match_summary *summary)
{
  an_operand *operand = search->operands[index];
  summary->param_number = (uint32_t)index + 1;
  summary->arg_is_constant = operand->kind == ok_constant;
  if (is_error_type(operand->type)) {
    summary->level = aml_error;
    return true;
  }
  if (is_class_struct_union_type(operand->type))
    return rank_class_operand(operand, letter, concrete, needs_lvalue && index == 0, summary);
  a_type *type = decayed_type(operand);
  if (concrete != nullptr) {
    determine_arg_match_level(operand, nullptr, concrete, nullptr, false, false, summary);
    return summary->level != aml_no_match;
  }
  if (needs_lvalue && index == 0 && !is_lvalue_operand(operand)) return false;
  if (!builtin_type_fits_letter(type, letter)) return false;
  rank_builtin_operand(type, letter, search->request->opname_kind, summary);
  return true;
}

static void add_builtin(an_operator_search *search, const char *letters, a_type *concrete,
                        bool needs_lvalue)
{
  a_candidate_function *candidate = alloc_candidate_function();
  candidate->builtin_signature = letters;
  candidate->concrete_type = concrete;
  an_arg_match_summary **tail = &candidate->arg_summaries;
  for (int i = 0; i < search->count; ++i) {
    an_arg_match_summary *summary = alloc_arg_match_summary();
    *tail = summary;
    tail = &summary->next;
    if (!rank_letter(search, i, letters[i], concrete, needs_lvalue, summary)) {
      free_candidate_function_list(candidate);
      return;
    }
  }
  candidate->next = search->list;
  search->list = candidate;
}

// A `=` pattern: once for each type that an operand has, or that one of its conversion functions gives.
struct a_concrete_type_list {
  a_type *types[32];
  int count;
};

static void add_concrete_type(a_concrete_type_list *list, a_type *type, char letter)
{
  if (is_any_reference_type(type)) type = type_pointed_to(type);
  type = rvalue_type(type);
  if (!builtin_type_fits_letter(type, letter)) return;
  for (int i = 0; i < list->count; ++i)
    if (identical_types(list->types[i], type)) return;
  if (list->count < 32) list->types[list->count++] = type;
}

static void add_concrete_builtins(an_operator_search *search, const char *letters)
{
  a_concrete_type_list list = {};
  for (int i = 0; i < search->count; ++i) {
    an_operand *operand = search->operands[i];
    if (!is_class_struct_union_type(operand->type)) {
      add_concrete_type(&list, decayed_type(operand), letters[i]);
      continue;
    }
    a_type *results[32];
    int count = result_types_of_conversion_functions(operand->type, results, 32);
    for (int k = 0; k < count; ++k)
      add_concrete_type(&list, results[k], letters[i]);
  }
  for (int i = 0; i < list.count; ++i)
    add_builtin(search, letters, list.types[i], false);
}

static void add_builtin_candidates(an_operator_search *search)
{
  if (builtin_signatures[onk_plus].unary == nullptr) fill_builtin_signatures();
  const a_builtin_signature *signature = &builtin_signatures[search->request->opname_kind];
  const char *p = search->request->is_unary ? signature->unary : signature->binary;
  if (p == nullptr) return;
  bool needs_lvalue = *p == 'L';
  if (needs_lvalue) {
    an_operand *left = search->operands[0];
    if (!is_lvalue_operand(left) && !is_class_struct_union_type(left->type)) return;
    ++p;
  }
  while (*p != 0) {
    bool concrete = *p == '=';
    if (concrete) ++p;
    bool enums = *p == 'E';
    if (concrete && (!enums || operator_overloading_on_enums_enabled))
      add_concrete_builtins(search, p);
    else if (!concrete)
      add_builtin(search, p, nullptr, needs_lvalue && !cfront_2_1_mode);
    while (*p != 0 && *p != ';')
      ++p;
    if (*p == ';') ++p;
  }
}

static const char *word_of_letter(char letter)
{
  switch (letter) {
  case 'A':
  case 'a': return "arithmetic";
  case 'B': return bool_is_keyword ? "bool" : "bool-equivalent";
  case 'C': return "class";
  case 'D':
  case 'I':
  case 'i': return "integer";
  case 'E': return "enum";
  case 'F': return "pointer-to-function";
  case 'M': return "pointer-to-member";
  case 'O': return "pointer-to-object";
  case 'P': return "pointer";
  }
  return "?";
}

static unsigned listed_opname;

void list_builtin_candidate(a_candidate_function *candidate)
{
  const char *letters = candidate->builtin_signature, *name = opname_texts[listed_opname];
  const char *left = word_of_letter(letters[0]);
  bool is_unary = letters[1] == 0 || letters[1] == ';';
  const char *right = is_unary ? "" : word_of_letter(letters[1]);
  char text[120];
  if (is_unary)
    snprintf(text, sizeof text, "%s %s", name, left);
  else if (listed_opname == onk_subscript)
    snprintf(text, sizeof text, "%s[%s]", left, right);
  else if (listed_opname == onk_question)
    snprintf(text, sizeof text, "expression ? %s : %s", left, right);
  else
    snprintf(text, sizeof text, "%s %s %s", left, name, right);
  str_add_diag_info(ec_builtin_operator, text);
}

// -------------------------------------------------------------------------------------------------
// Functions

static void add_member_candidates(an_operator_search *search, an_operand *left, an_operand *right)
{
  if (!is_class_struct_union_type(left->type)) return;
  a_type *class_type = skip_typerefs(left->type);
  if (is_incomplete_type(class_type)) return;
  a_symbol *symbol = opname_member_function_symbol(search->request->opname_kind, class_type);
  if (symbol == nullptr) return;
  a_candidate_search members = {};
  members.object = left;
  members.object_type = left->type;
  members.args = right != nullptr ? alloc_arg_operand(right) : nullptr;
  members.list = search->list;
  add_candidates(&members, symbol);
  search->list = members.list;
  free_arg_operand_list(members.args);
}

static void add_nonmember_candidates(an_operator_search *search, an_operand *left,
                                     an_operand *right)
{
  a_source_position position = search->request->position;
  a_symbol_locator locator = cleared_locator;
  make_opname_locator(search->request->opname_kind, &locator, &position);
  a_candidate_search functions = {};
  functions.args = alloc_arg_operand(left);
  if (right != nullptr) functions.args->next = alloc_arg_operand(right);
  functions.list = search->list;
  a_symbol *symbol = normal_id_lookup(&locator, lo_skip_class_scopes);
  an_arg_dependent_type_list *types = nullptr;
  for (an_arg_operand *arg = functions.args; arg != nullptr; arg = arg->next)
    add_to_arg_dependent_lookup_list(arg->operand.type, &types);
  if (types != nullptr) symbol = argument_dependent_lookup(symbol, &locator, types);
  if (symbol != nullptr) add_candidates(&functions, symbol);
  search->list = functions.list;
  free_arg_operand_list(functions.args);
}

// -------------------------------------------------------------------------------------------------
// Messages

static void add_operand_types(const an_operator_request *request, an_operand *left,
                              an_operand *right)
{
  char text[1024];
  size_t length;
  const char *name = opname_texts[request->opname_kind];
  if (right == nullptr) {
    snprintf(text, sizeof text, "%s %s", name, format_type_string(left->type, &length));
  } else {
    int n = snprintf(text, sizeof text, "%.400s", format_type_string(left->type, &length));
    const char *between = request->opname_kind == onk_subscript  ? "["
                          : request->opname_kind == onk_question ? ":"
                                                                 : name;
    snprintf(text + n, sizeof text - (size_t)n, " %s %.400s%s", between,
             format_type_string(right->type, &length),
             request->opname_kind == onk_subscript ? " ]" : "");
  }
  str_add_diag_info(ec_operand_types_are, text);
}

static void report_operator(const an_operator_request *request, an_error_code code,
                            a_candidate_function *list, an_operand *left, an_operand *right)
{
  if (!expr_error_should_be_issued()) return;
  listed_opname = request->opname_kind;
  pos_st_start_error(code, request->position, opname_texts[request->opname_kind]);
  list_candidates(list);
  add_operand_types(request, left, right);
  end_error();
}

// -------------------------------------------------------------------------------------------------
// The choice

static bool is_overloadable_operand(const an_operand *operand)
{
  if (operand == nullptr) return false;
  if (is_class_struct_union_type(operand->type)) return true;
  return operator_overloading_on_enums_enabled && is_enum_type(operand->type);
}

// A built-in winner: class operands become what the candidate takes.
static void convert_builtin_operands(a_candidate_function *winner, an_operand *operands[2],
                                     int count)
{
  an_arg_match_summary *summary = winner->arg_summaries;
  for (int i = 0; i < count; ++i, summary = summary->next) {
    if (!is_class_struct_union_type(operands[i]->type)) continue;
    a_type *target = winner->concrete_type;
    if (target == nullptr) {
      if (summary->conv.routine == nullptr) continue;
      target = return_type_of(skip_typerefs(summary->conv.routine->type));
      if (is_any_reference_type(target)) target = type_pointed_to(target);
    }
    if (summary->conv.is_ambiguous) {
      a_conv_descr conv;
      user_defined_conversion_possible(operands[i], rvalue_type(target), false, &conv, nullptr);
      continue;
    }
    if (summary->conv.result_is_lvalue) summary->conv.for_direct_reference_binding = true;
    user_convert_operand(operands[i], target, &summary->conv, true);
  }
}

static void make_both_errors(an_operand *left, an_operand *right, an_operand *result)
{
  operand_will_not_be_used_because_of_error(left);
  if (right != nullptr) operand_will_not_be_used_because_of_error(right);
  make_error_operand(result);
}

// An assignment that copies the bytes needs no call.
static bool is_trivial_assignment(a_symbol *symbol, an_operand *left, an_operand *right)
{
  if (!symbol->is_class_member || right == nullptr) return false;
  a_routine *routine = routine_of_symbol(symbol);
  return routine->is_trivial && routine->special_kind == sfk_operator &&
         routine->special.operator_kind == onk_assign && is_lvalue_operand(left) &&
         identical_types(make_unqualified_type(left->type), make_unqualified_type(right->type));
}

bool check_for_operator_overloading(const an_operator_request *request, an_operand *left,
                                    an_operand *right, an_operand *result)
{
  if (C_dialect != 2 || in_constant_context()) return false;
  if (!is_overloadable_operand(left) && !is_overloadable_operand(right)) return false;
  if (left->kind == ok_error || (right != nullptr && right->kind == ok_error)) {
    make_both_errors(left, right, result);
    return true;
  }
  an_operator_search search = {};
  search.request = request;
  search.operands[0] = left;
  search.operands[1] = right;
  search.count = right != nullptr ? 2 : 1;
  add_member_candidates(&search, left, right);
  if (!request->no_builtin) add_nonmember_candidates(&search, left, right);
  if (request->consider_builtin) add_builtin_candidates(&search);
  a_selection selection = select_best_candidate(search.list);
  if (selection.is_undetermined) {
    make_both_errors(left, right, result);
    return true;
  }
  if (selection.candidates == nullptr) {
    if (request->quiet) return false;
    report_operator(request, ec_no_matching_operator_function, nullptr, left, right);
    make_both_errors(left, right, result);
    return true;
  }
  bool handled = true;
  a_candidate_function *winner = selection.candidates;
  if (selection.is_ambiguous) {
    report_operator(request, ec_ambiguous_operator_function, winner, left, right);
    make_both_errors(left, right, result);
  } else if (winner->builtin_signature != nullptr) {
    convert_builtin_operands(winner, search.operands, search.count);
    handled = false;
  } else if (is_trivial_assignment(winner->symbol, left, right)) {
    handled = false;
  } else {
    call_operator_function(request, winner, left, right, result);
  }
  free_candidate_function_list(selection.candidates);
  return handled;
}

// -------------------------------------------------------------------------------------------------
// From tokens

static an_opname_kind opname_of_token(unsigned token)
{
  static const unsigned short tokens[num_opname_kinds] = {
#define OPNAME(kind, text, token) token,
#include "parse/opnames.def"
  };
  for (unsigned kind = onk_plus; kind < num_opname_kinds; ++kind)
    if (tokens[kind] == token) return (an_opname_kind)kind;
  return onk_none;
}

bool do_overloaded_operator_by_name(unsigned opname_kind, a_source_position *pos, an_operand *left,
                                    an_operand *right, an_operand *result)
{
  if (!is_overloadable_operand(left) && !is_overloadable_operand(right)) return false;
  an_operator_request request = {};
  request.opname_kind = opname_kind;
  request.is_unary = right == nullptr;
  // Assignment, call and subscript are members only.
  request.no_builtin = opname_kind == onk_assign || opname_kind == onk_call ||
                       opname_kind == onk_subscript || opname_kind == onk_arrow;
  request.consider_builtin = opname_kind != onk_assign && opname_kind != onk_comma &&
                             opname_kind != onk_call && opname_kind != onk_arrow;
  request.quiet = opname_kind == onk_comma || opname_kind == onk_ampersand ||
                  opname_kind == onk_assign || opname_kind == onk_arrow ||
                  !is_class_struct_union_type(left->type);
  if (right != nullptr && is_class_struct_union_type(right->type) && opname_kind != onk_comma &&
      opname_kind != onk_assign)
    request.quiet = false;
  request.position = *pos;
  if (!check_for_operator_overloading(&request, left, right, result)) return false;
  result->position = left->position;
  return true;
}

bool do_overloaded_operator(unsigned token, a_source_position *pos, an_operand *left,
                            an_operand *right, an_operand *result)
{
  if (!is_overloadable_operand(left) && !is_overloadable_operand(right)) return false;
  an_opname_kind kind = opname_of_token(token);
  return kind != onk_none && do_overloaded_operator_by_name(kind, pos, left, right, result);
}
