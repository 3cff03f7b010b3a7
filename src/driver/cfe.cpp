// cfe.cpp - the process: the fixed pipeline from main to the exit, timing lines, exit statuses.
// Owns:    the arguments of the process, the phase flags.
// Rule:    this file is order and nothing else; every phase reads what the earlier ones set.
// Entry:   cfe_main.
#include "driver/cfe.h"
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <sys/resource.h>
#include <unistd.h>
#include "backend/c_gen_be.h"
#include "driver/cmd_line.h"
#include "driver/fe_init.h"
#include "driver/fe_wrapup.h"
#include "driver/flags.h"
#include "driver/host_envir.h"
#include "driver/il_file.h"
#include "driver/signals.h"
#include "driver/trans_unit.h"
#include "errors/error.h"
#include "mem/stack_limit.h"

int sys_argc;
char **sys_argv;
bool end_of_file_scope_needed_flags_phase;
bool function_body_processing_delayed_on_some_func_in_primary_il;

// ---- Timers ----

void get_timer(a_timer *timer)
{
  timer->cpu_milliseconds = long(clock() * 1000LL / CLOCKS_PER_SEC);
  timer->elapsed = time(nullptr);
}

void display_time_used(const char *label, const a_timer *start, const a_timer *end)
{
  fprintf(f_error, "%-30s %10.2f (CPU) %10.2f (elapsed)\n", label,
          double(end->cpu_milliseconds - start->cpu_milliseconds) / 1000.0,
          difftime(end->elapsed, start->elapsed));
}

static void display_time_since(const char *label, const a_timer *start)
{
  a_timer now;
  get_timer(&now);
  display_time_used(label, start, &now);
}

// ---- The end of the process ----

// After a failure: neither half a file nor an earlier run's is left where the generated text was due.
static void delete_outputs()
{
  delete_unfinished_output_files();
  if (!suppress_back_end && !asm_header_mode) delete_stale_generated_file();
}

void exit_compilation(an_error_severity severity)
{
  switch (severity) {
  case es_none:
  case es_remark:
  case es_advisory:
  case es_warning: exit(0);
  case es_error: exit(2);
  case es_catastrophe:
  case es_command_line_error:
    // A wrong command line says nothing for sure about the output's name.
    severity == es_catastrophe ? delete_outputs() : delete_unfinished_output_files();
    fputs("Compilation terminated.\n", f_error);
    exit(4);
  case es_internal_error:
    delete_outputs();
    fputs("Compilation aborted.\n", f_error);
    break;
  case es_default:
  case es_once:
  case es_discretionary_error:
  case num_error_severities: break;
  }
  fflush(f_error);
  abort();
}

// ---- The pipeline ----

// Makes room for deep nesting and tells the parser how much there is.
static void ensure_stack_size()
{
  constexpr rlim_t wanted = 120ul << 20; // the least gap that the kernel leaves below the stack
  rlimit limit;
  if (getrlimit(RLIMIT_STACK, &limit) != 0) return;
  rlim_t size = limit.rlim_max < wanted ? limit.rlim_max : wanted;
  if (limit.rlim_cur < size) {
    limit.rlim_cur = size;
    if (setrlimit(RLIMIT_STACK, &limit) != 0) size = 0;
  }
  if (size != 0) set_stack_limit(size);
}

static void install_error_hooks()
{
  error_hooks.exit_compilation = exit_compilation;
  error_hooks.cancel_il_file = cancel_il_file;
}

void ah_back_end()
{
}

static void run_back_end()
{
  a_timer start = {};
  if (display_compilation_time) get_timer(&start);
  if (asm_header_mode) {
    ah_back_end();
  } else {
    back_end();
  }
  if (display_compilation_time) display_time_since("Back end time", &start);
}

static an_error_severity final_severity()
{
  if (total_errors != 0) return es_error;
  return total_warnings != 0 ? es_warning : es_none;
}

// Standard error is unbuffered by itself: a write for each message.
static void buffer_error_stream()
{
  static char buffer[1 << 16];
  error_output_is_interactive = isatty(STDERR_FILENO) != 0;
  if (!error_output_is_interactive) setvbuf(stderr, buffer, _IOFBF, sizeof buffer);
}

int cfe_main(int argc, char **argv)
{
  install_common_handlers(primary_signal_handler, nullptr);
  sys_argc = argc;
  sys_argv = argv;
  f_error = stderr;
  buffer_error_stream();
  ensure_stack_size();
  install_error_hooks();
  fe_early_init();
  a_timer total_start;
  get_timer(&total_start);
  proc_command_line(argc, argv);
  fe_one_time_init();
  a_timer front_end_start = {};
  if (display_compilation_time) get_timer(&front_end_start);
  trans_unit_init();
  process_translation_unit(primary_source_file_name, true, nullptr);
  fe_wrapup();
  if (display_compilation_time) display_time_since("Front end time", &front_end_start);
  if (total_errors != 0) {
    delete_outputs();
    suppress_back_end = true;
  } else if (!suppress_back_end) {
    run_back_end();
  }
  fe_wrapup_part_2();
  an_error_severity severity = final_severity();
  if (display_compilation_time) display_time_since("Total compilation time", &total_start);
  exit_compilation(severity);
}
