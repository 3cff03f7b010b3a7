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
