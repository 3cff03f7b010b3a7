// option_merge.cpp - merging the option sets of several files into one.
// Uses:    merge_policy_functions, mutex_merge_override_functions, the classes.
// Rule:    an option is taken over as its exported text, which is parsed as the user's would be.
// Entry:   merge_init, merge_options, the policies and the overrides.
#include "options/option_diag.h"
#include "options/option_obj.h"

// Takes an option of another set with all its arguments.
void option_obj::take_option(option_id id, option_obj &other)
{
  int const times = parm_type[id] == parm_none ? 1 : other.arg_count[id];
  for (int i = 0; i < times; i++) {
    char const *rest;
    if (!process_option(other.export_option(id, i) + 1, &rest)) {
      report_optgen<DIAG::optgen_corruption>(); // what one set exports another must take
    }
  }
}

void option_obj::merge_init(option_obj &first)
{
  bool const was_merging = merging;
  merging = true;
  for (int i = 0; i < option_count; i++) {
    option_id const id = option_id(i);
    a_merge_policy const policy = merge_policy_functions[id];
    if (policy == nullptr || policy == &option_obj::merge_policy_none) continue;
    if (first.state[id]) take_option(id, first);
  }
  merging = was_merging;
}

void option_obj::merge_options(option_obj &other)
{
  bool const was_merging = merging;
  merging = true;
  for (int i = 0; i < option_count; i++) {
    option_id const id = option_id(i);
    if (state[id]) do_merge_conflicts(id, other);
    a_mutex_override const override_function = mutex_merge_override_functions[id];
    if (override_function != nullptr && (this->*override_function)(id, other)) continue;
    a_merge_policy const policy = merge_policy_functions[id];
    if (policy != nullptr) (this->*policy)(id, other);
  }
  merging = was_merging;
}

//-------------------------------------------------------------------------------------------------
// Policies.

void option_obj::merge_policy_none(option_id, option_obj &)
{
}

// The value of the main set stays.
void option_obj::merge_policy_main(option_id, option_obj &)
{
  merge_main_count++;
}

void option_obj::merge_policy_or(option_id id, option_obj &other)
{
  if (other.state[id]) take_option(id, other);
}

void option_obj::merge_policy_and(option_id id, option_obj &other)
{
  if (state[id] && !other.state[id]) clearopt(id);
}

// Which of two different values of a list of words stands first in it: -1 the first, 1 the second.
static int order_in_list(an_item const *list, long first, long second)
{
  for (; list->text != nullptr; list++) {
    if (list->value == first) return -1;
    if (list->value == second) return 1;
  }
  return 0;
}

// Below 0: this set's argument is the lower one.  0 too if one of the sets has none.
int option_obj::compare_with(option_id id, option_obj const &other) const
{
  if (arg_count[id] == 0 || other.arg_count[id] == 0) return 0;
  an_argument_t const &mine = args[id].back(), &theirs = other.args[id].back();
  if (mine == theirs) return 0;
  if (parm_type[id] == parm_word) {
    return order_in_list(option_definitions[id].item_list, mine.value.number, theirs.value.number);
  }
  return mine > theirs ? 1 : -1;
}

void option_obj::merge_policy_min(option_id id, option_obj &other)
{
  if (!other.state[id]) return;
  if (!state[id] || compare_with(id, other) > 0) take_option(id, other);
}

void option_obj::merge_policy_max(option_id id, option_obj &other)
{
  if (!other.state[id]) return;
  if (!state[id] || compare_with(id, other) < 0) take_option(id, other);
}

static bool same_arguments(std::vector<an_argument_t> const &a, std::vector<an_argument_t> const &b)
{
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); i++) {
    if (!(a[i] == b[i])) return false;
  }
  return true;
}

void option_obj::merge_exact(option_id id, option_obj &other, bool unset_agrees)
{
  if (state[id] && other.state[id]) {
    if (same_arguments(args[id], other.args[id])) return;
    // With the arguments, since they are all that differs.
    report_optgen<DIAG::optgen_exact_args_incompatible>(
        {other.export_option(id, 0), other.current_file, export_option(id, 0)});
  } else if (unset_agrees) {
    return;
  } else if (state[id]) {
    report_optgen<DIAG::optgen_exact_not_in_file>({option_name(id), other.current_file});
  } else if (other.state[id]) {
    report_optgen<DIAG::optgen_exact_only_in_file>({other.option_name(id), other.current_file});
  }
}

void option_obj::merge_policy_exact(option_id id, option_obj &other)
{
  merge_exact(id, other, false);
}

void option_obj::merge_policy_exact_notset(option_id id, option_obj &other)
{
  merge_exact(id, other, true);
}

//-------------------------------------------------------------------------------------------------
// Groups of options that exclude each other.

static option_id other_member_set(class_id group, option_id id, option_obj const &set)
{
  for (int i = 0; i < option_count; i++) {
    if (i != id && set.state[i] && option_obj::isclass(option_id(i), group)) return option_id(i);
  }
  return option_id(option_count);
}

// The later set's choice wins.  Another choice that this set has made is replaced when its own turn
// comes, so the option that replaces it is left alone here.
bool option_obj::mutex_merge_override(class_id group, option_id id, option_obj &other)
{
  if (other.state[id]) return !state[id] && is_option(other_member_set(group, id, *this));
  option_id const theirs = other_member_set(group, id, other);
  if (!state[id] || !is_option(theirs)) return false;
  clearopt(id);
  take_option(theirs, other);
  return true;
}

#define POLICY(policy, option)
#define MUTEX(group)                                                                               \
  bool option_obj::mutex_merge_override_##group(option_id id, option_obj &other)                   \
  {                                                                                                \
    return mutex_merge_override(class_##group, id, other);                                         \
  }
#include "options/option_merging.def"
