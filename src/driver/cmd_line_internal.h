// cmd_line_internal.h - what the files of the command line share; nobody else includes it.
#pragma once
#include "driver/cmd_line.h"

// The handlers that options.def names.
#define OPTION(id, name, letter, value, argument, pch, action, help) action
#define OPTION_ALSO(id, name, letter, value, argument, pch, action, help) action
#define SETS(flag)
#define CLEARS(flag)
#define NAMES(flag)
#define CALLS(handler) an_option_handler handler;
#define NOT_OFFERED
#include "driver/options.def"

// State of the reader, written by cmd_line.cpp; handlers of option files and word lists read on in
// it.
extern FILE *opt_cmdfile_stream;     // the open option file, or null
extern const char *curr_option_text; // the option as it was written, for messages

// True once an option has settled the language, so that the source's suffix no longer does.
extern bool dialect_was_given;
// Names given for entry and exit hooks.
extern bool preproc_without_text;

// The next word of the option file or of the arguments; null at the end.
const char *next_option_word();
// Value of an argument that must be a number; anything else is 576.
int number_in_option(const char *text);
// Reads and carries out options to the end of the words.
void read_options();
// Gives the reader other words for a while: an override's.  The second puts the former ones back.
struct a_saved_option_reader {
  int argc;
  char **argv;
  int next;
  const char *rest_of_group;
};
void divert_option_reader(const char *words, a_saved_option_reader *saved);
void resume_option_reader(const a_saved_option_reader &saved);

// All rules that reconcile the flags, in their order, after the last option.
void reconcile_dialect();
// Suppresses lowering, IL file and back end.
void suppress_code_generation();
