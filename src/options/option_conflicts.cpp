// option_conflicts.cpp - what an option does to those set before it, in this set or another.
// Uses:    the matrices conflicts and merge_conflicts.
// Entry:   do_conflicts, do_merge_conflicts.
#include "options/option_diag.h"
#include "options/option_obj.h"

// A persistent option stays, and whoever wanted it cleared hears of it.
void option_obj::clear_other(option_id other)
{
  if (option_definitions[other].persistent) {
    report_optgen<DIAG::optgen_persistent_option>({option_name(other)});
  }
  clearopt(other);
}

static void report_conflict(int kind, char const *name, char const *other_name)
{
  switch (kind) {
  case conflict_clears:
    report_optgen<DIAG::optgen_conflict_quiet_option>({name, other_name});
    return;
  case conflict_overrides:
    report_optgen<DIAG::optgen_conflict_override_option>({name, other_name});
    return;
  case conflict_refuses: report_optgen<DIAG::optgen_conflict_option>({name, other_name}); return;
  default: report_optgen<DIAG::optgen_corruption>();
  }
}

void option_obj::do_conflicts(option_id id)
{
  if (!is_option(id)) return;
  for (int i = 0; i < option_count; i++) {
    option_id const other = option_id(i);
    if (other == id || state[other] == 0 || conflicts[id][other] == no_conflict) continue;
    report_conflict(conflicts[id][other], option_name(id), option_name(other));
    clear_other(other);
  }
}

// What was here first stays: the other set's option isn't merged then, and if its turn came before,
// it is taken back.
void option_obj::do_merge_conflicts(option_id id, option_obj &other)
{
  if (!is_option(id)) return;
  for (int i = 0; i < option_count; i++) {
    option_id const theirs = option_id(i);
    if (other.state[theirs] == 0 || merge_conflicts[id][theirs] == no_conflict) continue;
    report_optgen<DIAG::optgen_merge_conflict_option>(
        {other.option_name(theirs), other.current_file, option_name(id)});
    other.clear_other(theirs);
    if (state[theirs]) clearopt(theirs);
  }
}
