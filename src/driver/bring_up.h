// bring_up.h - while modules are still being written: is a routine linked in?
#pragma once

template <class F>
inline bool is_there(F *routine)
{
  F *volatile place = routine;
  return place != nullptr;
}
#define call_if_there(routine, ...)                   \
  do {                                                \
    if (is_there(routine)) routine(__VA_ARGS__);      \
  } while (0)

// Interfaces that are on their way.
void il_lower_one_time_init();
void il_lower_init();
void il_lower_trans_unit_init();
void lower_c99_one_time_init();
void lower_c99_init();
void lower_c99_trans_unit_init();
void lower_il_memory_region(int region);
bool il_lowering_needed();
void do_all_name_mangling(bool flag);
void do_final_name_mangling();
void clear_parent_information();
