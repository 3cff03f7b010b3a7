// diag.cpp - DIAGNOSTIC: one message, its header, its end, its dump.
// Owns:    the stacks of the debug mode and the indentation.
// Uses:    diag_print.cpp for all text that is printed.
// Rule:    flush is the one place that counts errors and ends the process.
#include "DIAG/diag.h"
#include <cstdlib>
#include <iterator>
#include <vector>

DIAGNOSTIC::DIAGNOSTIC(DIAG_INFO *row, char const *tool_file, unsigned tool_line)
    : info(row), cols_left(diag_cols_m), src(nullptr), file(tool_file ? tool_file : ""),
      line(tool_line), header_printed(false)
{
}

DIAGNOSTIC::DIAGNOSTIC(DIAGNOSTIC const &other)
    : info(other.info), cols_left(other.cols_left), src(nullptr), file(other.file),
      line(other.line), header_printed(other.header_printed)
{
  set_src(other.src);
}

DIAGNOSTIC::~DIAGNOSTIC()
{
  delete src;
}

int DIAGNOSTIC::report()
{
  return print_header();
}

char *DIAGNOSTIC::get_sp_buffer()
{
  return nullptr;
}

bool DIAGNOSTIC::is_equal(DIAGNOSTIC *other)
{
  if (!other || info != other->info) return false;
  return src ? src->is_equal(other->src) : !other->src;
}

void DIAGNOSTIC::free_mem()
{
}

static char const *text_or_null(char const *text)
{
  return text ? text : "(null)";
}

void DIAGNOSTIC::dump()
{
  printf("Code : %d\n", info->code);
  printf("std_msg : %s\n", text_or_null(info->std_msg));
  printf("vrb_msg : %s\n", text_or_null(info->vrb_msg));
  if (!src) return;
  printf("File : %s\n", src->file().c_str());
  printf("Line : %d\n", src->line());
  printf("Column: %d\n", src->column());
}

//---------------------------------------------------------------------- what kind of message it is

void DIAGNOSTIC::set_src(DIAG_SRCINFO *position)
{
  DIAG_SRCINFO *copy = position ? new DIAG_SRCINFO_DATA(position) : nullptr;
  delete src;
  src = copy;
}

static char const *const severity_words[] = {
#define SEVERITY(name, word) word,
#include "DIAG/diag_severities.def"
};

char const *DIAGNOSTIC::sev_str() const
{
  unsigned severity = unsigned(info->severity);
  return severity < std::size(severity_words) ? severity_words[severity] : "(unknown)";
}

FILE *DIAGNOSTIC::fp() const
{
  if (fp_m) return fp_m;
  return info->severity >= dc_SUPPRESSED && info->severity <= dc_REMARK ? stdout : stderr;
}

bool DIAGNOSTIC::suppress() const
{
  switch (info->severity) {
  case dc_SUPPRESSED: return true;
  case dc_ADVICE: return !advice_m;
  case dc_DEBUG: return !debug_m;
  case dc_REMARK: return !remarks_m;
  case dc_WARNING: return !warnings_m;
  case dc_NO_ERROR:
  case dc_ERROR:
  case dc_FATAL: break;
  }
  return false;
}

bool DIAGNOSTIC::is_discretionary() const
{
  return !info->fixed && !info->internal && info->severity <= dc_ERROR &&
         info->severity != dc_ADVICE;
}

std::string DIAGNOSTIC::srcinfo_str(DIAG_SRCINFO *position)
{
  if (!position || position->file().empty()) return "";
  std::string text = "\"" + position->file() + "\"";
  if (position->line() != 0) text += ", line " + std::to_string(position->line());
  if (position->approx()) text += " (approximate)";
  return text;
}

//---------------------------------------------------------------------- header and end

// Ahead of the header the tool's own position, for those who look after the tool.
int DIAGNOSTIC::print_tool_position()
{
  return display_ipos_m || info->internal ? print("%s:%u:", file, line) : 0;
}

int DIAGNOSTIC::print_header()
{
  header_printed = true;
  if (suppress()) return 0;
  int printed = flush();
  bool wrap = wrap_enabled_m;
  if (!wrap_headers_m) wrap_enabled_m = false;
  printed += print("%*s", indent_m, "");
  printed += print_tool_position();
  std::string position = srcinfo_str(src);
  if (!position.empty()) printed += print("%s: ", position.c_str());
  if (!display_code_m && !info->internal) {
    printed += print("%s: ", sev_str());
  } else {
    printed += print("%s%s #%u%s: ", info->internal ? "internal " : "", sev_str(),
                     unsigned(info->code), is_discretionary() ? "-D" : "");
  }
  wrap_enabled_m = wrap;
  return printed;
}

// A fatal message ends the process; behind too many errors one is made for the purpose.
void DIAGNOSTIC::end_if_fatal()
{
  if (debug_mode_m) return;
  if (info->severity == dc_FATAL) {
    fflush(nullptr); // abort wouldn't
    if (info->internal) abort();
    exit(1);
  }
  if (error_count_m > max_errors_m) {
    DIAG::max_errors limit_reached("diag", 148, (unsigned long)max_errors_m);
    limit_reached.print_header();
    limit_reached.print(limit_reached.info->std_msg, limit_reached.limit);
    limit_reached.flush();
  }
}

int DIAGNOSTIC::flush()
{
  if (cols_left >= diag_cols_m) return 0;
  cols_left = diag_cols_m;
  fputc('\n', fp());
  int printed = 1;
  if (verbose_m) printed += show_annotated_source();
  bool is_error = info->severity == dc_ERROR || info->severity == dc_FATAL;
  if (is_error && !debug_mode_m) error_count_m++;
  end_if_fatal();
  return printed;
}

// The text of a line with its newline; empty if the file has no such line or can't be read.
static std::string read_source_line(std::string const &name, int wanted)
{
  std::string text;
  FILE *source = fopen(name.c_str(), "r");
  if (!source) return text;
  int line = 1;
  for (int c = getc(source); c != EOF && line <= wanted; c = getc(source)) {
    if (line == wanted) text += char(c);
    if (c == '\n') line++;
  }
  fclose(source);
  return text;
}

int DIAGNOSTIC::show_annotated_source()
{
  if (!src || src->file().empty() || src->line() == 0 || src->approx()) return 0;
  std::string text = read_source_line(src->file(), src->line());
  if (text.empty()) return 0;
  if (text.back() != '\n') text += '\n'; // the file's last line: the caret needs a line of its own
  fwrite(text.data(), 1, text.size(), fp());
  int printed = int(text.size());
  if (src->column() > 0) printed += fprintf(fp(), "%-*s^\n", src->column() - 1, "");
  return printed;
}

//---------------------------------------------------------------------- settings with a stack

static std::vector<bool> saved_debug_modes;
static std::vector<int> saved_indents;

void DIAGNOSTIC::push_debug_mode(bool mode)
{
  saved_debug_modes.push_back(debug_mode_m);
  debug_mode_m = mode;
}

void DIAGNOSTIC::pop_debug_mode()
{
  debug_mode_m = !saved_debug_modes.empty() && saved_debug_modes.back();
  if (!saved_debug_modes.empty()) saved_debug_modes.pop_back();
}

void DIAGNOSTIC::push_indent(int indent)
{
  saved_indents.push_back(indent_m);
  indent_m = indent;
}

void DIAGNOSTIC::pop_indent()
{
  indent_m = saved_indents.empty() ? 0 : saved_indents.back();
  if (!saved_indents.empty()) saved_indents.pop_back();
}
