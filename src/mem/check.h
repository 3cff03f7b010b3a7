// check.h - tests of what cannot happen.  They cost one compare and stay in the release build.
#pragma once

// Ends the run with an internal error that names the place.  Defined by the error engine.
[[noreturn]] void internal_error_at(const char *text, const char *file, int line);

#define check(condition)                                                                           \
  do {                                                                                             \
    if (__builtin_expect(!(condition), 0))                                                         \
      internal_error_at(#condition, __builtin_FILE(), __LINE__);                                   \
  } while (0)

// Behind a switch over a kind: no row of the kind's table may reach this.
#define unexpected_kind(what) internal_error_at("unexpected " what, __builtin_FILE(), __LINE__)
