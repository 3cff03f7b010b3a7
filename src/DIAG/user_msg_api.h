// user_msg_api.h - USER_MSG: messages with a free text, reported in one call.
#pragma once
#include <cstdarg>
#include "DIAG/diag_srcinfo.h"

// Each operation formats its text as printf does (a null format counts as the empty string) and
// reports it in the class of DIAG that belongs to it.  The forms with `src` print that position; a
// copy is made, and null is none.  The level of a warning plays no part.  fatal and die end the
// process (unless DIAGNOSTIC::debug_mode_m is set), the first with exit status 1, the second, a
// fault of the tool, with an abort.
class USER_MSG {
public:
  bool warnings_as_errors = false;  // a warning is reported as the error with the same text

  // The one object, made on first use.
  static USER_MSG *get_umsg_obj();

  [[gnu::format(printf, 1, 2)]] static void debug(char const *format, ...);
  [[gnu::format(printf, 1, 2)]] static void remark(char const *format, ...);
  [[gnu::format(printf, 1, 2)]] static void advice(char const *format, ...);
  [[gnu::format(printf, 2, 3)]] static void advice(DIAG_SRCINFO *src, char const *format, ...);
  [[gnu::format(printf, 2, 3)]] static void warning(unsigned level, char const *format, ...);
  [[gnu::format(printf, 3, 4)]] static void warning(DIAG_SRCINFO *src, unsigned level,
                                                    char const *format, ...);
  [[gnu::format(printf, 1, 2)]] static void error(char const *format, ...);
  [[gnu::format(printf, 2, 3)]] static void error(DIAG_SRCINFO *src, char const *format, ...);
  [[gnu::format(printf, 1, 2)]] static void apperror(char const *format, ...);
  [[gnu::format(printf, 1, 2)]] static void fatal(char const *format, ...);
  [[gnu::format(printf, 2, 3)]] static void fatal(DIAG_SRCINFO *src, char const *format, ...);
  // The text is `where`, ": " and what the format gives.
  [[gnu::format(printf, 2, 3)]] static void die(char const *where, char const *format, ...);

  static void emit_warnings_as_errors();
  static int get_error_count();
  // The formatted text in a new array, which the caller frees with delete[].
  [[gnu::format(printf, 1, 0)]] static char *make_msg_str(char const *format, va_list arguments);
};
