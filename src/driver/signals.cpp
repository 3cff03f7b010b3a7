// signals.cpp - what the process says when a signal ends it.
// Rule:    the state may be damaged and nothing may be allocated: pointers are tested before they
//          are followed, and the handlers run on a stack of their own.
#include "driver/signals.h"
#include <csignal>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include "driver/cfe.h"
#include "driver/host_envir.h"
#include "il/il_entities.h"
#include "lex/source_input.h"
#include "parse/scope_stk.h"

static constexpr uintptr_t lowest_usable_address = 100001;
static constexpr size_t size_of_signal_stack = size_t{64} * 1024;

static void (*common_callback)(int);
static bool handlers_are_installed;
static char signal_stack[size_of_signal_stack];

static bool is_usable(const void *pointer)
{
  return uintptr_t(pointer) >= lowest_usable_address;
}

// ---- The tool chain's part ----

struct a_signal_description {
  int number;
  const char *text;
};

static const a_signal_description signal_descriptions[] = {
    {SIGILL, "executed an illegal instruction"},
    {SIGTRAP, "received a TRAP signal"},
    {SIGABRT, "had an internal inconsistency and aborted"},
    {SIGBUS, "experienced a bus alignment fault"},
    {SIGFPE, "received a floating point exception"},
    {SIGSEGV, "experienced a segmentation fault"},
    {SIGXCPU, "exceeded the CPU time limit"},
    {SIGXFSZ, "exceeded the file size limit"},
    {SIGSYS, "experienced a bad system call"},
};

static const char advice_text[] =
    "This is caused by a defect in the compiler itself. QN Customer\n"
    "Support may be able to suggest a workaround to avoid this.\n\n"
    "Upgrading to the newest version of the compiler may fix this problem.\n\n"
    "Please report the problem to QN Customer Support.  Include this ENTIRE error message and a\n"
    "copy of the .pp file created when option --preproc_with_comment\n"
    "(-ppc) is used.\n\n";

static const char *describe_signal(int signal_number)
{
  for (const a_signal_description &description : signal_descriptions) {
    if (description.number == signal_number) return description.text;
  }
  return "experienced a fatal internal fault";
}

[[noreturn]] static void report_request_to_end(const char *program_name, const char *text)
{
  delete_unfinished_output_files();
  fprintf(stderr, "[%s %s]\n", program_name, text);
  fflush(stderr);
  _Exit(2);
}

void common_signal_handler(int signal_number, const char *program_name, const char *format, ...)
{
  const char *name = is_usable(program_name) ? program_name : "unknown";
  if (signal_number == SIGHUP || signal_number == SIGINT)
    report_request_to_end(name, "forced exit");
  if (signal_number == SIGTERM) report_request_to_end(name, "received a terminate signal");

  static const char *description;
  if (description == nullptr) description = describe_signal(signal_number);
  char context[2048];
  context[0] = '\0';
  if (format != nullptr) {
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(context, sizeof context, format, arguments);
    va_end(arguments);
  }
  delete_unfinished_output_files();
  fprintf(stderr, "\nINTERNAL ERROR: %s %s\n", name, description);
  if (context[0] != '\0') fprintf(stderr, "                  %s\n", context);
  fputs("\n", stderr);
  fflush(nullptr);
  fputs(advice_text, stderr);
  fflush(nullptr);
  if (common_callback != nullptr) common_callback(signal_number);
  exit(2);
}

static void install_handler(int signal_number, void (*handler)(int))
{
  struct sigaction action = {};
  action.sa_handler = handler;
  // A second fault of the same kind while the first is reported ends the process at once.
  action.sa_flags = SA_ONSTACK | int(SA_RESETHAND);
  sigaction(signal_number, &action, nullptr);
}

void install_common_handlers(void (*handler)(int), void (*callback)(int))
{
  static const int handled_signals[] = {SIGILL, SIGABRT, SIGFPE, SIGSEGV, SIGTERM, SIGINT,
                                        SIGHUP, SIGTRAP, SIGBUS, SIGSYS,  SIGXCPU};
  common_callback = callback;
  handlers_are_installed = true;
  stack_t stack = {};
  stack.ss_sp = signal_stack;
  stack.ss_size = sizeof signal_stack;
  sigaltstack(&stack, nullptr);
  for (int signal_number : handled_signals)
    install_handler(signal_number, handler);
  // A full file size limit shows as a write error of the file concerned.
  signal(SIGXFSZ, SIG_IGN);
}

// ---- The front end's part ----

static const char *curr_function_name()
{
  const char *unknown = "(unknown or file scope)";
  if (depth_innermost_function_scope < 0 || !is_usable(scope_stack)) return unknown;
  const a_scope *scope = scope_stack[depth_innermost_function_scope].il_scope;
  if (!is_usable(scope) || scope->kind != sck_function) return unknown;
  const a_routine *routine = scope->owner.routine;
  if (!is_usable(routine) || !is_usable(routine->source_corresp.name)) return unknown;
  return routine->source_corresp.name;
}

void primary_signal_handler(int signal_number)
{
  const char *file_name = "(unknown)";
  long line = 0;
  if (is_usable(curr_ise)) {
    if (is_usable(curr_ise->file_name)) file_name = curr_ise->file_name;
    line = long(curr_ise->line_number);
  }
  const char *program_name = is_usable(sys_argv) ? sys_argv[0] : nullptr;
  common_signal_handler(signal_number, program_name,
                        "while processing function %s file %s line %ld", curr_function_name(),
                        file_name, line);
}

void debug_signal_handler(int signal_number)
{
  install_handler(signal_number, debug_signal_handler);
}

void signal_init()
{
  if (handlers_are_installed) return;
  install_common_handlers(primary_signal_handler, nullptr);
}
