// source_input_files.cpp - the stack of open files, include histories, preinclude files.
// Owns:    input_stack, the table of include histories, the blocks in which files are read.
// Rule:    at most max_include_files_open_at_once outer files stay open; those above are closed while
//          a file that they include is read.
// Entry:   open_file_and_push_input_stack, push_input_stack, pop_input_stack.
#include <unistd.h>
#include <cstring>
#include "driver/flags.h"
#include "driver/host_envir.h"
#include "errors/error.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/macro.h"
#include "lex/preproc.h"
#include "lex/source_input_internal.h"
#include "mem/mem_manage.h"
#include "mem/registered_vars.h"
#include "parse/symbol_tbl.h"

an_input_stack_entry *input_stack;
int input_stack_depth = -1;
an_input_stack_entry *curr_ise;
a_preinclude_file *preinclude_file_list, *end_preinclude_file_list;
a_preinclude_file *macro_preinclude_file_list, *end_macro_preinclude_file_list;
a_preinclude_file *next_preinclude_file;
bool processing_macro_preincludes;

static constexpr int input_stack_increment = 30;
static constexpr int max_include_files_open_at_once = 8;
static constexpr unsigned max_times_on_stack = 10;
static constexpr unsigned long block_slack = 64;
static constexpr unsigned history_table_size = 1024;

static int input_stack_capacity;
static char *free_input_blocks; // chained through their first bytes
static an_include_file_history *include_history_table[history_table_size];

//---------------------------------------------------------------------------------------------
// Blocks.

char *alloc_input_block()
{
  char *block = free_input_blocks;
  if (block == nullptr) {
    block = (char *)alloc_general(input_block_size + block_slack);
    memset(block + input_block_size, 0, block_slack);
  } else {
    memcpy(&free_input_blocks, block, sizeof(char *));
  }
  return block;
}

static void release_input_block(an_input_stack_entry *ise)
{
  if (ise->buffer != nullptr) {
    memcpy(ise->buffer, &free_input_blocks, sizeof(char *));
    free_input_blocks = ise->buffer;
  }
  ise->buffer = ise->next_char = ise->buffer_end = nullptr;
}

static void close_input_file(an_input_stack_entry *ise)
{
  release_input_block(ise);
  if (ise->file != nullptr && ise->file != stdin) fclose(ise->file);
  ise->file = nullptr;
}

//---------------------------------------------------------------------------------------------
// Include histories.

void find_include_history(const char *name, an_include_file_history **history, bool create, bool)
{
  unsigned hash = hash_source_string(name) % history_table_size;
  for (an_include_file_history *h = include_history_table[hash]; h != nullptr; h = h->next) {
    if (strcmp(h->name, name) == 0) {
      *history = h;
      return;
    }
  }
  *history = nullptr;
  if (!create) return;
  an_include_file_history *h =
      (an_include_file_history *)alloc_in_region(0, sizeof(an_include_file_history));
  memset((void *)h, 0, sizeof(*h));
  char *copy = (char *)alloc_in_region(0, strlen(name) + 1);
  strcpy(copy, name);
  h->name = copy;
  h->next = include_history_table[hash];
  include_history_table[hash] = h;
  *history = h;
}

bool suppress_subsequent_include_of_file(const char *name, an_include_file_history **history,
                                         bool create, bool is_system)
{
  an_include_file_history *h;
  find_include_history(name, &h, create, is_system);
  if (history != nullptr) *history = h;
  if (h == nullptr) return false;
  if (h->pragma_once_seen) return true;
  if (!h->can_be_skipped || h->guard_kind == guard_none) return false;
  bool is_defined = macro_is_defined(h->guard_macro_name, h->guard_name_length);
  return is_defined == (h->guard_kind == guard_is_ifndef);
}

//---------------------------------------------------------------------------------------------
// Queries about the current file.

bool processing_primary_source_file()
{
  return input_stack_depth == 0;
}

bool in_included_file()
{
  return input_stack_depth > 0 && curr_ise->is_include_file;
}

unsigned char get_ifg_state()
{
  return curr_ise->ifg_state;
}

void set_ifg_state(unsigned char state)
{
  curr_ise->ifg_state = state;
}

// May a conditional be open over the border of an include file?
static inline bool conditionals_span_files()
{
  return C_dialect == 1 || check_misra_c_2004;
}

//---------------------------------------------------------------------------------------------
// Pushing.

static void ensure_input_stack_space()
{
  if (input_stack_depth + 1 < input_stack_capacity) return;
  int capacity = input_stack_capacity + input_stack_increment;
  // Deep include trees grow by more than a step, so that copying stays linear.
  if (capacity < input_stack_capacity * 2) capacity = input_stack_capacity * 2;
  input_stack = (an_input_stack_entry *)realloc_buffer(
      (char *)input_stack, input_stack_capacity * sizeof(an_input_stack_entry),
      capacity * sizeof(an_input_stack_entry));
  input_stack_capacity = capacity;
}

// The descriptor of the file that is left for an included one, if it lies deep.
static void close_includer_if_deep()
{
  if (input_stack_depth < max_include_files_open_at_once || curr_ise->file == stdin) return;
  an_input_stack_entry *ise = curr_ise;
  ise->saved_offset = ise->offset_of_buffer_end - (ise->buffer_end - ise->next_char);
  close_input_file(ise);
}

static void write_start_of_file_to_outputs()
{
  if (generate_pp_output) gen_pp_line_info(' ', true);
  if (f_raw_listing != nullptr) gen_rlisting_line_info(input_stack_depth > 0 ? '1' : ' ');
  if (list_makefile_dependencies) {
    fprintf(f_pp_output, "%s:", object_file_name == nullptr ? "" : object_file_name);
    fprintf(f_pp_output, " %s\n", curr_ise->file_name);
  }
  if (list_included_files && curr_ise->is_include_file) {
    fprintf(f_pp_output, "%*s%s\n", input_stack_depth - 1, "", curr_ise->file_name);
  }
}

static void fill_in_input_stack_entry(an_input_stack_entry *ise, const a_file_to_push &pushed,
                                      bool is_system_header)
{
  memset((void *)ise, 0, sizeof(*ise));
  ise->file = pushed.file;
  ise->file_name = pushed.file_name;
  ise->full_name = pushed.full_name;
  ise->directory = f_directory_of(pushed.full_name, false);
  ise->dir_entry = pushed.dir_entry;
  ise->saved_pp_if_depth = pp_if_stack_depth;
  ise->is_include_file = pushed.is_include;
  ise->is_system_header = is_system_header;
  ise->is_preinclude = pushed.is_preinclude;
  ise->is_macro_preinclude = pushed.is_macro_preinclude;
  ise->saved_any_tokens = any_tokens_fetched_from_curr_input_file;
  ise->ifg_state = ifg_initial;
  ise->unicode_kind = pushed.unicode_kind;
  ise->include_history = pushed.history;
}

static void record_pushed_file(an_input_stack_entry *ise, const a_file_to_push &pushed,
                               a_source_file *parent)
{
  a_source_file_start start = {};
  start.parent = parent;
  start.seq = seq_number_last_read + 1;
  start.line = 1;
  start.file_name = pushed.file_name;
  start.full_name = pushed.full_name;
  start.name_as_written = pushed.name_as_written;
  start.is_include_file = pushed.is_include;
  start.is_angle_bracket_include = pushed.angle_bracket;
  start.is_preinclude = pushed.is_preinclude;
  start.is_macro_preinclude = pushed.is_macro_preinclude;
  start.is_system_header = ise->is_system_header;
  ise->first_source_file = ise->curr_source_file = record_start_of_source_file(start);
  ise->next_index_stop = initialize_file_index(ise->first_source_file);
}

void push_input_stack(const a_file_to_push &file)
{
  a_file_to_push pushed = file;
  if (pushed.history == nullptr) {
    find_include_history(pushed.full_name, &pushed.history, true, false);
  }
  if (pushed.history->times_on_stack >= max_times_on_stack) {
    str_catastrophe(ec_include_recursion, pushed.file_name);
  }
  if (input_stack_depth >= 0) emit_curr_source_line();
  ensure_input_stack_space();
  bool is_system_header = false;
  a_source_file *parent = nullptr;
  if (input_stack_depth >= 0) {
    curr_ise = &input_stack[input_stack_depth];
    if (pushed.is_include) {
      is_system_header =
          pushed.dir_entry != nullptr ? pushed.dir_entry->is_system : curr_ise->is_system_header;
    }
    parent = curr_ise->curr_source_file;
    close_includer_if_deep();
  }
  curr_ise = &input_stack[++input_stack_depth];
  fill_in_input_stack_entry(curr_ise, pushed, is_system_header);
  curr_ise->is_recursive = pushed.history->times_on_stack > 0;
  ++pushed.history->times_on_stack;
  any_tokens_fetched_from_curr_input_file = false;
  record_pushed_file(curr_ise, pushed, parent);
  at_end_of_source_file = false;
  write_start_of_file_to_outputs();
  if (input_stack_depth > 0) {
    push_primary_include_search_dir(curr_ise->directory, is_system_header);
  }
  if (!conditionals_span_files()) base_pp_if_stack_depth = pp_if_stack_depth;
}

//---------------------------------------------------------------------------------------------
// Popping.

// Rule 19.15, of an included file at its end.  What stands beside a guard doesn't count against it.
static void check_guard_for_misra(const an_input_stack_entry *ise)
{
  an_include_file_history *history = ise->include_history;
  bool is_open_or_once = ise->ifg_state == ifg_in_guard || ise->ifg_state == ifg_once;
  bool is_guarded = history->guard_kind == guard_is_ifndef || history->inner_guard_seen ||
                    ise->ifg_state == ifg_initial;
  if (is_open_or_once || is_guarded || history->reported_as_unguarded) return;
  history->reported_as_unguarded = true;
  pos_diagnostic(misra_required_severity, ec_misra_c_2004_19_15, {seq_number_last_read, 1});
}

// Did the file turn out to be one that need not be read again?
static void settle_include_guard(an_input_stack_entry *ise)
{
  if (!ise->is_include_file) return;
  if (ise->ifg_state <= ifg_after_guard && any_tokens_fetched_from_curr_input_file) {
    ise->ifg_state = ifg_no_guard;
  }
  bool is_guarded = ise->ifg_state <= ifg_after_guard || ise->ifg_state == ifg_once;
  if (is_guarded) ise->include_history->can_be_skipped = true;
  if (check_misra_c_2004) check_guard_for_misra(ise);
}

// Goes on in the file that is now on top.
static void resume_includer()
{
  an_input_stack_entry *ise = curr_ise;
  if (ise->file == nullptr) {
    a_unicode_source_kind_tag kind;
    ise->file = reopen_source_file(ise->full_name, &kind);
    if (ise->file == nullptr || kind != ise->unicode_kind ||
        lseek(fileno(ise->file), ise->saved_offset, SEEK_SET) < 0) {
      an_open_file_result result = {};
      result.bits = off_system_error;
      file_open_error(es_catastrophe, ec_file_kind_source, ise->full_name, &result);
    }
    ise->offset_of_buffer_end = ise->saved_offset;
  }
  record_resumption_of_source_file(ise->curr_source_file, seq_number_last_read + 1,
                                   ise->line_number + 1);
  if (generate_pp_output) gen_pp_line_info(' ', true);
  if (f_raw_listing != nullptr) gen_rlisting_line_info('2');
}

void pop_input_stack()
{
  an_input_stack_entry *ise = curr_ise;
  settle_include_guard(ise);
  any_tokens_fetched_from_curr_input_file = ise->saved_any_tokens;
  record_end_of_source_file(ise->first_source_file, seq_number_last_read);
  if (ise->curr_source_file != ise->first_source_file) {
    record_end_of_source_file(ise->curr_source_file, seq_number_last_read);
  }
  --ise->include_history->times_on_stack;
  close_input_file(ise);
  at_end_of_source_file = false;
  emit_curr_source_line();
  if (input_stack_depth == 0 || !conditionals_span_files()) verify_that_all_pp_ifs_were_closed();
  bool was_preinclude = ise->is_preinclude;
  if (--input_stack_depth < 0) {
    curr_ise = nullptr;
    return;
  }
  curr_ise = &input_stack[input_stack_depth];
  resume_includer();
  pop_primary_include_search_dir(input_stack_depth == 0 ? dir_name_of_primary_source_file
                                                        : curr_ise->directory,
                                 curr_ise->is_system_header);
  if (!conditionals_span_files()) base_pp_if_stack_depth = curr_ise->saved_pp_if_depth;
  if (was_preinclude) push_next_preinclude_file();
}

//---------------------------------------------------------------------------------------------
// Opening.

void open_file_and_push_input_stack(const char *name, bool use_search_path, bool is_include,
                                    bool angle_bracket, bool is_preinclude,
                                    bool is_macro_preinclude, bool search_after_current_dir,
                                    bool failure_is_error)
{
  a_source_file_request request = {};
  request.name = name;
  request.use_search_path = use_search_path;
  request.is_include = is_include;
  request.angle_bracket = angle_bracket;
  request.search_after_current_dir = search_after_current_dir;
  request.failure_is_not_fatal = failure_is_error;
  request.input_is_open = input_stack_depth >= 0;
  request.current_dir_entry = input_stack_depth >= 0 ? curr_ise->dir_entry : nullptr;
  an_opened_source_file opened = {};
  if (!open_file_for_input(request, &opened)) return;
  bool suppressed = opened.suppressed;
  if (!suppressed && is_include) {
    suppressed = suppress_subsequent_include_of_file(opened.full_name, &opened.history, true, true);
  }
  if (suppressed) {
    if (opened.file != nullptr) fclose(opened.file);
    if (list_included_files) {
      fprintf(f_pp_output, "%*s%s\n", input_stack_depth, "", opened.file_name);
    }
    actual_include_was_suppressed = true;
    return;
  }
  a_file_to_push pushed = {};
  pushed.file = opened.file;
  pushed.name_as_written = name;
  pushed.file_name = opened.file_name;
  pushed.full_name = opened.full_name;
  pushed.is_include = is_include;
  pushed.angle_bracket = angle_bracket;
  pushed.is_preinclude = is_preinclude;
  pushed.is_macro_preinclude = is_macro_preinclude;
  pushed.unicode_kind = opened.unicode_kind;
  pushed.dir_entry = opened.dir_entry;
  pushed.history = opened.history;
  push_input_stack(pushed);
}

//---------------------------------------------------------------------------------------------
// Preinclude files.

a_preinclude_file *alloc_preinclude_file()
{
  a_preinclude_file *file = (a_preinclude_file *)alloc_general(sizeof(a_preinclude_file));
  file->next = nullptr;
  file->file_name = nullptr;
  return file;
}

void push_next_preinclude_file()
{
  if (next_preinclude_file == nullptr && processing_macro_preincludes) {
    processing_macro_preincludes = false;
    next_preinclude_file = preinclude_file_list;
  }
  a_preinclude_file *file = next_preinclude_file;
  bool uses_dir_of_file = put_dir_of_each_opened_source_file_on_incl_search_path;
  if (file == nullptr) {
    if (uses_dir_of_file) change_primary_include_search_dir(dir_name_of_primary_source_file);
    return;
  }
  next_preinclude_file = file->next;
  if (uses_dir_of_file) change_primary_include_search_dir(current_directory_name);
  open_file_and_push_input_stack(file->file_name, true, true, false, true,
                                 processing_macro_preincludes, false, false);
}

//---------------------------------------------------------------------------------------------
// Start-up.

void input_files_one_time_init()
{
  suppress_subsequent_include_hook = suppress_subsequent_include_of_file;
  register_trans_unit_variable(input_stack);
  register_trans_unit_variable(input_stack_depth);
  register_trans_unit_variable(input_stack_capacity);
  register_trans_unit_variable(curr_ise);
  register_trans_unit_variable(next_preinclude_file);
  register_trans_unit_variable(processing_macro_preincludes);
}

void input_files_trans_unit_init()
{
  input_stack = nullptr;
  input_stack_capacity = 0;
  input_stack_depth = -1;
  curr_ise = nullptr;
  next_preinclude_file = nullptr;
  processing_macro_preincludes = false;
  memset(include_history_table, 0, sizeof(include_history_table));
  positions_trans_unit_init();
}
