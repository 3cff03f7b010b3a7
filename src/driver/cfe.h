// cfe.h - the process: main's fixed pipeline, exit statuses, timing lines.
#pragma once
#include <ctime>
#include "errors/error_codes.h"

struct a_timer {
  long cpu_milliseconds;
  time_t elapsed;
};

// Written by cfe alone.
extern int sys_argc;
extern char **sys_argv;
extern bool end_of_file_scope_needed_flags_phase;
extern bool function_body_processing_delayed_on_some_func_in_primary_il;

// The whole run.  Ends in exit_compilation.
int cfe_main(int argc, char **argv);
// Ends the process with the status that belongs to the severity.
[[noreturn]] void exit_compilation(an_error_severity severity);

void get_timer(a_timer *timer);
void display_time_used(const char *label, const a_timer *start, const a_timer *end);

// The asm-header back end, which does nothing.
void ah_back_end();
