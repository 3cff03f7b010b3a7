// overload.cpp - the lists of overload resolution.
// Owns:    the free lists of candidates, argument summaries and argument operands.
// Entry:   alloc_candidate_function, alloc_arg_match_summary, alloc_arg_operand, overload_init.
#include <cstring>

#include "il/il_alloc.h"
#include "mem/mem_manage.h"
#include "parse/overload.h"
#include "parse/overload_private.h"

a_set_of_overload_hooks overload_hooks;

static a_candidate_function *avail_candidate_functions;
static an_arg_match_summary *avail_arg_match_summaries;
static an_arg_operand *avail_arg_operands;

template <class T> static T *take_record(T **avail)
{
  T *record = *avail;
  if (record != nullptr)
    *avail = record->next;
  else
    record = (T *)alloc_in_region(0, sizeof(T));
  memset((void *)record, 0, sizeof(T));
  return record;
}

void clear_conv_descr(a_conv_descr *conv)
{
  *conv = {};
  clear_std_conv_descr(&conv->std_conv);
}

an_arg_operand *alloc_arg_operand(const an_operand *operand)
{
  an_arg_operand *arg = take_record(&avail_arg_operands);
  arg->operand = *operand;
  return arg;
}

void free_arg_operand_list(an_arg_operand *list)
{
  while (list != nullptr) {
    an_arg_operand *next = list->next;
    list->next = avail_arg_operands;
    avail_arg_operands = list;
    list = next;
  }
}

an_arg_match_summary *alloc_arg_match_summary()
{
  an_arg_match_summary *summary = take_record(&avail_arg_match_summaries);
  summary->level = aml_no_match;
  clear_conv_descr(&summary->conv);
  return summary;
}

void free_arg_match_summary_list(an_arg_match_summary *list)
{
  while (list != nullptr) {
    an_arg_match_summary *next = list->next;
    list->next = avail_arg_match_summaries;
    avail_arg_match_summaries = list;
    list = next;
  }
}

a_candidate_function *alloc_candidate_function()
{
  a_candidate_function *candidate = take_record(&avail_candidate_functions);
  clear_conv_descr(&candidate->conv);
  return candidate;
}

void free_candidate_function_list(a_candidate_function *list)
{
  while (list != nullptr) {
    a_candidate_function *next = list->next;
    free_arg_match_summary_list(list->arg_summaries);
    if (list->template_args != nullptr && overload_hooks.free_template_arg_list != nullptr)
      overload_hooks.free_template_arg_list(list->template_args);
    list->next = avail_candidate_functions;
    avail_candidate_functions = list;
    list = next;
  }
}

void overload_init()
{
  avail_candidate_functions = nullptr;
  avail_arg_match_summaries = nullptr;
  avail_arg_operands = nullptr;
}
