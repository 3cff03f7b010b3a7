// cmd_line.h - the command line: option table, reader, reconciliation of the flags.
#pragma once
#include <cstdio>
#include "lex/source_position.h"

struct a_source_correspondence;
struct a_def_from_cmd_line; // lex/macro.h

enum an_option_id : unsigned short {
  opt_none,
#define OPTION(id, name, letter, value, argument, pch, action, help) opt_##id,
#define OPTION_ALSO(id, name, letter, value, argument, pch, action, help)
#include "driver/options.def"
  opt_last
};

struct an_option_kind;
typedef void an_option_handler(const an_option_kind &option, const char *argument);

// What using an option does, apart from being seen.
enum an_option_action : unsigned char { oa_set_flag, oa_clear_flag, oa_store_name, oa_call };

// One spelling of an option.  Two spellings of an on/off pair share an id.
struct an_option_kind {
  an_option_id id;
  const char *name;    // behind "--"
  char short_name;     // behind "-"; 0 if there's none
  unsigned char value; // what this spelling stands for
  bool takes_argument;
  bool enabled;         // a row that isn't is an invalid option
  bool is_pch_relevant; // a precompiled header must have been made with the same
  unsigned name_length;
  an_option_action action;
  union {
    bool *flag;        // oa_set_flag, oa_clear_flag
    const char **text; // oa_store_name
    an_option_handler *handler;
  } target;
  const char *help; // for the man page; empty: the opposite of the row before
};

extern const an_option_kind option_table[];
extern const unsigned option_table_length;
extern bool option_seen[]; // by id; written by the option reader only

// Per-key options that the shell handed on: "-" for all code, a file, a function.
struct OPT_OVERRIDE {
  const char *ansi_options;
  const char *opt_options;
  const char *cg_options;
  const char *reserved;
};

// Saves and restores what an override changes.  The front end's own does nothing.
class OPTION_STATE {
public:
  virtual void save_state();
  virtual void restore_state();
  virtual void reset_state();
};

extern const char *primary_source_file_argument;
extern char **shell_opts; // null-terminated; null if the shell sent none

// Sets every flag to its default.
void cmd_line_early_init();
// Reads the options, reconciles the flags and opens the files of the options.  Faults of the
// command line end the run through command_line_error.
void proc_command_line(int argc, char **argv);
// The title in a field of 40 characters, the version, a newline.
void print_banner(FILE *stream);
void dump_configuration(FILE *stream);

// Override options in force for a function; null name: for all code.  Null if there are none.
OPT_OVERRIDE *get_opt_override(const char *name, const a_source_position *pos);
OPT_OVERRIDE *get_opt_override(const a_source_correspondence *entity);
// Applies them; returns the state to restore, or null.
OPTION_STATE *process_opt_override(const char *name, const a_source_position *pos);
OPTION_STATE *process_opt_override(const a_source_correspondence *entity);
OPT_OVERRIDE *lookup_opt_override(const char *key, bool create);

// Appends a -D or -U text to a list of them (defs_from_cmd_line).
void add_to_def_undef_list(const char *text, a_def_from_cmd_line **head, a_def_from_cmd_line **tail,
                           bool is_undef);

// Installed by the precompiled-header module: called for each relevant option.
extern void (*pch_option_hook)(an_option_id id, int value, const char *argument);
// Installed by the checkers: read the rule lists of their options; false for a bad list.
extern bool (*check_ulp_hook)(const char *argument);
extern bool (*ulp_severity_hook)(const char *argument);
extern bool (*ulp_standalone_mode_hook)(const char *argument);
