// cmd_line_modes.h - tools of the reconciliation rules; included by cmd_line_modes and
// cmd_line_gnu only.
#pragma once
#include <initializer_list>
#include "driver/cmd_line.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "errors/error.h"

// Addresses of flags are no constants under the sanitizers.
#ifdef __SANITIZE_ADDRESS__
#define AT_COMPILE_TIME inline
#define CONSTANT const
#else
#define AT_COMPILE_TIME consteval
#define CONSTANT constexpr
#endif

// The option whose rows set or clear the flag; opt_none if there is none.
AT_COMPILE_TIME an_option_id option_that_sets(const bool *flag)
{
#define OPTION(id, name, letter, value, argument, pch, action, help)                               \
  if (flag == (action)) return opt_##id;
#define OPTION_ALSO(id, name, letter, value, argument, pch, action, help)
#define SETS(f) &f
#define CLEARS(f) &f
#define NAMES(f) nullptr
#define CALLS(f) nullptr
#define NOT_OFFERED nullptr
#include "driver/options.def"
  return opt_none;
}

// A mode implies the value unless an option for the flag was used.
#define UNLESS_SEEN(flag, value)                                                                   \
  do {                                                                                             \
    CONSTANT an_option_id option = option_that_sets(&flag);                                       \
    if (!option_seen[option]) flag = (value);                                                      \
  } while (0)

inline void set_flags(std::initializer_list<bool *> flags)
{
  for (bool *flag : flags)
    *flag = true;
}

inline void clear_flags(std::initializer_list<bool *> flags)
{
  for (bool *flag : flags)
    *flag = false;
}

// The rules of the GNU modes, and of options that need one.
void apply_gnu_modes();
