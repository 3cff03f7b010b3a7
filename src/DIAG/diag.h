// diag.h - the tool chain's own messages: settings, the message classes, source positions.
// This layer knows nothing of the front end and shares nothing with its error engine.
#pragma once
#include <cstdio>
#include <string>
#include "DIAG/diag_info.h"
#include "DIAG/diag_srcinfo.h"

// One message while it is reported.  A caller makes an object of a subclass with a row of the
// message table and calls print_header, print with the row's text and the arguments, and flush; or
// report, which does all three.
class DIAGNOSTIC {
public:
  DIAG_INFO    *info;
  int           cols_left;       // room left on the current line; diag_cols_m if it is empty
  DIAG_SRCINFO *src;             // owned; null: the message has no position
  char const   *file;            // the tool's own source position, where the object was made
  unsigned      line;
  bool          header_printed;

  explicit DIAGNOSTIC(DIAG_INFO *row, char const *tool_file = "", unsigned tool_line = 0);
  DIAGNOSTIC(DIAGNOSTIC const &other);
  DIAGNOSTIC &operator=(DIAGNOSTIC const &) = delete;

  virtual ~DIAGNOSTIC();
  // A copy on the heap, which the caller owns.  Texts are shared between the copies.
  virtual DIAGNOSTIC *alloc() = 0;
  // Prints the message; returns the number of characters printed, without those of wrapping.
  virtual int report();
  // The text, wrapped for a list, in a buffer of the class that the next call replaces; null in the
  // base class.
  virtual char *get_sp_buffer();
  // Same row, same position.
  virtual bool is_equal(DIAGNOSTIC *other);
  // Frees the texts that the object holds, and with them those of its copies.
  virtual void free_mem();
  // Writes the row and the position to standard output.
  virtual void dump();

  // These return the number of characters printed, without those of wrapping; 0 if suppressed.
  int print_header();
  [[gnu::format(printf, 2, 3)]] int print(char const *format, ...);
  // Ends the open line, counts errors, ends the process if the message or the count is fatal.
  int flush();
  int show_annotated_source();

  // The text wrapped to 79 columns with continuation lines indented by 10, in the buffer that
  // get_sp_buffer tells of.
  [[gnu::format(printf, 2, 3)]] char *sp_print(char const *format, ...);
  void start_new_line();
  // Keeps a copy of *position; null takes the position away.
  void set_src(DIAG_SRCINFO *position);
  char const *sev_str() const;
  // The stream to which the message goes.
  FILE *fp() const;
  bool suppress() const;
  bool is_discretionary() const;
  // `"file", line n (approximate)`; empty without a file name.
  static std::string srcinfo_str(DIAG_SRCINFO *position);
  // Prints text, wrapped; *remaining is the room on the current line, and is kept up to date.  With
  // to_buffer it returns the result in an array that the caller frees with delete[]; else it writes
  // to fp() and returns null.
  char *print_formatted(char const *text, bool to_buffer, int *remaining, int diag_cols,
                        int indent, int wrap_indent);
  // The last character of text that fits into width columns; text itself if none does.
  static char const *last_printable_char(char const *text, int width);

  // The row of a code, null if there is none.
  static DIAG_INFO *get_info(int code);
  // Change severities: of a code, of all rows of a severity, of codes separated by commas.  Rows
  // that aren't discretionary keep theirs, and nothing becomes advice, debug or "no error".
  static void override_severity(int code, dc_SEVERITY severity);
  static void override_severity(dc_SEVERITY from, dc_SEVERITY severity);
  static void override_severity(char const *list, dc_SEVERITY severity);

  // A push saves the value and sets the new one; a pop restores it, or false or 0 if none is saved.
  static void push_debug_mode(bool mode);
  static void pop_debug_mode();
  static void push_indent(int indent);
  static void pop_indent();

  // Settings, for the main function of a tool to write.
  inline static int   diag_cols_m    = 79;     // line width
  inline static int   wrap_indent_m  = 3;      // more blanks ahead of a continuation line
  inline static bool  wrap_enabled_m = true;   // wrap at word boundaries
  inline static bool  wrap_headers_m = false;  // wrap inside the header too
  inline static bool  warnings_m     = true;   // show these severities
  inline static bool  remarks_m      = false;
  inline static bool  advice_m       = false;
  inline static bool  debug_m        = false;
  inline static bool  display_code_m = false;  // show the number
  inline static bool  display_ipos_m = false;  // show the tool's own source position always
  inline static bool  verbose_m      = false;  // show the source line and caret
  inline static bool  debug_mode_m   = false;  // errors aren't counted and nothing ends the process
  inline static int   indent_m       = 0;      // blanks ahead of each line
  inline static int   max_errors_m   = 100;    // error limit
  inline static int   error_count_m  = 0;      // errors so far; flush writes it
  inline static FILE *fp_m           = nullptr;  // the output stream for all severities, when set

private:
  int print_tool_position();
  void end_if_fatal();
};

namespace DIAG {

// The error limit is passed.
class max_errors : public DIAGNOSTIC {
public:
  unsigned long limit;

  max_errors(char const *tool_file, unsigned tool_line, unsigned long error_limit);
  DIAGNOSTIC *alloc() override;
  int report() override;
};

// A message with a free text.
class text_message : public DIAGNOSTIC {
public:
  char *msg;  // from new[]; shared with the copies of alloc, freed by free_mem

  text_message(DIAG_INFO *row, char const *tool_file, unsigned tool_line, char *text);
  int report() override;
  char *get_sp_buffer() override;
  bool is_equal(DIAGNOSTIC *other) override;
  void free_mem() override;
  void dump() override;

private:
  bool in_parentheses() const;
};

#define TEXT_MESSAGE(name, code, parenthesized)                        \
  class name : public text_message {                                   \
  public:                                                              \
    name(char const *tool_file, unsigned tool_line, char *text);       \
    DIAGNOSTIC *alloc() override;                                      \
  };
#include "DIAG/diag_text_messages.def"

}  // namespace DIAG
