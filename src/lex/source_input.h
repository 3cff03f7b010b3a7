// source_input.h - files become logical lines, and every character has a position.
// One line buffer, curr_source_line, holds the current logical line with splices taken out and trigraphs
// replaced.  The scanner reads it through curr_char_loc and is diverted to replacement text by source
// line modifications, so nothing is ever copied back into the line.
//
// Start-up, in the driver's order: lexical_one_time_init, lexical_init, lexical_trans_unit_init.
#pragma once
#include <cstdio>
#include "il/source_entities.h"
#include "lex/source_position.h"

struct a_concatenation_record; // lex/macro.h
struct a_directory_name_entry; // driver/host_envir.h
struct a_macro_def;            // lex/macro.h
struct a_symbol;

//---------------------------------------------------------------------------------------------
// The line buffer.

// The character 0 is never text: it introduces a line escape of two bytes.  A complete line ends in
// 0 lesc_newline 0 lesc_end_of_buffer.
enum a_line_escape : char {
  lesc_end_of_buffer = 1,     // end of the line's data
  lesc_newline = 2,           // end of the logical line
  lesc_end_of_modif = 3,      // end of a replacement text
  lesc_token_separator = 4,   // two tokens that touch but are not to be joined; no width
  lesc_inert_macro = 5,       // the name that follows is never expanded again
  lesc_null_char = 6,         // a null character of the source
  lesc_comma_from_arg = 7,    // the comma that follows came out of a macro argument
  lesc_temp_inert_macro = 8,  // as lesc_inert_macro, for this expansion only
  lesc_end_of_invocation = 9, // end of a top-level expansion: clears pos_of_macro_invocation
};

// The character that marks where a modification is attached; it is never text either.
inline constexpr char modif_mark = 10;

// Written by this module; the scanner moves curr_char_loc and the token cache swaps curr_source_line
// while it makes tokens of a string.
extern char *curr_source_line;
extern char *after_end_of_curr_source_line; // one past the usable part
extern char *curr_char_loc;                 // the scanner's read pointer

// Locations of the continuation bytes of multibyte characters seen in this line, sorted; written by the
// scanner through add_logical_char_info.
extern char **logical_char_info;
extern unsigned logical_char_info_entries_used;

extern bool at_end_of_source_file; // the current file has no more lines
extern bool no_more_input;         // the input stack is empty
extern bool comment_spanned_lines; // the scanner skipped a comment over the end of this line
extern bool trigraph_ignored_warning_given;

// A position that stands for all characters while tokens are made of a string.
extern bool fixed_position_in_use;
extern a_source_position fixed_position;

extern a_source_position pos_of_macro_invocation; // of the outermost one; null outside expansions

// Where text at the start of the line is attached: 0, or once the current file has ended, when its last line
// is still in the buffer, the offset of that line's lesc_end_of_buffer.
extern unsigned long end_of_line_escape_offset;
extern char *end_of_curr_source_line; // the escape lesc_newline that ends the line

inline bool loc_is_in_curr_source_line(const char *loc)
{
  return loc >= curr_source_line && loc < after_end_of_curr_source_line;
}

// Makes the buffer hold at least `length` bytes, doubling it; all registered pointers follow.
void ensure_min_curr_source_line_length(unsigned long length);

// Notes that the byte at `loc`, in the line buffer, continues a multibyte character.
void add_logical_char_info(char *loc);

// Reads the next logical line and returns true at the end of the source.  With append_to_line, reads
// the next physical line to curr_char_loc instead.  Without pop_at_eof the end of the current file counts
// as the end.  Writes the line that is left behind to the outputs.  Issues 1, 2, 915, 1557, 1680, 2019.
bool read_logical_source_line(bool pop_at_eof, bool append_to_line);

//---------------------------------------------------------------------------------------------
// What was changed while the line was read.

enum an_orig_line_modif_kind : unsigned char {
  olm_trigraph,
  olm_splice,
  olm_newline_in_string, // acts as a splice, but leaves two bytes in the line
  olm_null_char,
};

struct an_orig_line_modif {
  an_orig_line_modif *next; // in ascending order of location
  char *location;
  an_orig_line_modif_kind kind;
  union {
    a_seq_number seq; // splice: number of the continuing line
    char character;   // trigraph: its third character
  } variant;
};

extern an_orig_line_modif *orig_line_modif_list;
extern an_orig_line_modif *end_orig_line_modif_list;

// Appends a record; the caller fills in its variant.
an_orig_line_modif *add_orig_line_modif(char *location, an_orig_line_modif_kind kind);

//---------------------------------------------------------------------------------------------
// Source line modifications: a place where the scanner leaves the text for a replacement text.

struct a_source_line_modif {
  a_source_line_modif *next;         // in source_line_modif_list, newest first
  a_source_line_modif *prev;         // the record added after this one
  a_source_line_modif *next_in_hash; // chain by location
  char *location;                    // where modif_mark stands; null: at the start of the line
  a_source_line_modif *parent;       // whose text holds the location; valid if parent_is_known
  unsigned deletion_count;           // characters replaced, counted from the location
  unsigned sequence_id;              // in the order of attaching
  bool stop_at_end : 1;              // the scanner stops at the end of the text: tok_end_of_source
  bool is_comment : 1;
  bool parent_is_known : 1;
  bool spans_lines : 1;    // survives a new line while a macro call is collected
  bool has_fixed_ends : 1; // each character of the text stands for one of the source, from pos on
  bool text_is_in_expansion_buffer : 1;
  bool is_detached : 1; // stands at no location: the text of an argument, or its line is gone
  char saved_char;      // what modif_mark overwrote
  char inline_text[3];  // room for a blank and its end
  char *first_char;     // the replacement text
  char *last_char;      // its end: where lesc_end_of_modif's escape begins
  a_macro_def *macro;   // being expanded, or null
  a_symbol *macro_symbol;
  a_source_position pos;                  // of the invocation; null if not computed yet
  a_concatenation_record *concatenations; // places where ## joined text
};

// Written by this module and by macro expansion.
extern a_source_line_modif *source_line_modif_list;
extern a_source_line_modif *line_start_source_line_modif;
extern bool no_modifs_in_curr_line; // neither these nor original modifications
extern a_source_line_modif *last_source_line_modif_exited_while_skipping_white_space;

// Attaches a modification at `location` (null: at the start of the line) that replaces `deletion_count`
// characters by the text from `first_char` to the end escape at `last_char`; returns the record.  The
// text is not copied and must stay while the record lives.
a_source_line_modif *add_source_line_modif(char *location, unsigned deletion_count,
                                           char *first_char, char *last_char);
// The same with its own inline text, a blank or nothing.
a_source_line_modif *add_inline_source_line_modif(char *location, unsigned deletion_count,
                                                  bool with_blank);
// A record for a text that no location leads to: the scanner is set into it.  `parent` tells in which
// expansion it takes place.
a_source_line_modif *add_detached_source_line_modif(char *first_char, char *last_char,
                                                    a_source_line_modif *parent);
// Sequence id of the newest modification, and removal of all that are newer.
unsigned newest_source_line_modif();
void rem_source_line_modifs_since(unsigned sequence_id);
// Detaches a modification: the character comes back.
void rem_source_line_modif(a_source_line_modif *modif);
// Puts a detached record with its concatenation records on the free lists; clears the pointer.
void free_source_line_modif(a_source_line_modif **modif);
void add_source_line_modif_to_hash_table(a_source_line_modif *modif);
void rem_source_line_modif_from_hash_table(a_source_line_modif *modif);

// The modification attached at `loc`, where modif_mark stands.
a_source_line_modif *assoc_source_line_modif(const char *loc);
// The modification whose text contains `location`, or null if it isn't in replacement text.
a_source_line_modif *nested_source_line_modif(const char *location);
// The modification whose text holds the location of `modif`, or null for the line.  Cached.
a_source_line_modif *f_parent_source_line_modif(a_source_line_modif *modif);

inline a_source_line_modif *parent_source_line_modif(a_source_line_modif *modif)
{
  return modif->parent_is_known ? modif->parent : f_parent_source_line_modif(modif);
}

// Where reading goes on behind a modification.
inline char *after_source_line_modif(const a_source_line_modif *modif)
{
  char *loc = modif->location;
  if (loc == nullptr) loc = curr_source_line + end_of_line_escape_offset;
  return loc + modif->deletion_count;
}

// Sets curr_char_loc to the start of the replacement text.
void enter_text_of_modif(a_source_line_modif *modif);
// At modif_mark: moves curr_char_loc into the replacement text, or over it if it is empty.  Returns false,
// with nothing moved, at a modification at which the scanner is to stop.
bool enter_source_line_modif();
// At the escape lesc_end_of_modif: moves curr_char_loc back behind the modification.  Returns false, with
// nothing moved, at the end of a text at which the scanner is to stop.
bool leave_source_line_modif();

// While a macro call is collected (delete_source_from_loc): deletes what was read up to `loc`, which is
// the end of the line or where a modification begins or ends.  Called by the two routines above; skipping
// white space calls it at the end of a line.
void delete_collected_source(char *loc);

// Moves everything that points into old_start .. old_end by new_start - old_start; with `modifs_too` the
// modifications' locations and texts as well.  The buffer has been copied already.
void adjust_curr_source_line_structure_after_realloc(char *old_start, char *old_end,
                                                     char *new_start, bool modifs_too);

//---------------------------------------------------------------------------------------------
// Positions.

extern a_seq_number seq_number_last_read; // of the last physical line read
extern a_seq_number curr_seq_number;      // first physical line of the current logical line

int compare_source_positions(const a_source_position *a, const a_source_position *b); // -1, 0, 1

// The position of a location in the line or in replacement text: the full form.
void conv_line_loc_to_source_pos_full(char *location, a_source_position *result);

inline void conv_line_loc_to_source_pos(char *location, a_source_position *result)
{
  if (no_modifs_in_curr_line && logical_char_info_entries_used == 0 && !fixed_position_in_use) {
    result->seq = curr_seq_number;
    result->column = (a_column_number)(location - curr_source_line + 1);
  } else {
    conv_line_loc_to_source_pos_full(location, result);
  }
}

// The file of a sequence number, or null; *line gets the line.  At the number behind a primary file's last
// one *at_end_of_file is set.  With `physical` the physical file and line, without #line's effect.
a_source_file *source_file_for_seq(a_seq_number seq, a_line_number *line, bool *at_end_of_file,
                                   bool physical);
// Names and line of a sequence number; empty strings and 0 if there is no such line.
void conv_seq_to_file_and_line(a_seq_number seq, const char **file_name, const char **full_name,
                               a_line_number *line, bool *at_end_of_file);
void conv_seq_to_physical_file_and_line(a_seq_number seq, a_source_file **file, a_line_number *line,
                                        bool *at_end_of_file);
a_source_file *primary_source_file_for_seq(a_seq_number seq);
a_source_file *eff_primary_source_file();
bool seq_is_in_system_header(a_seq_number seq);
bool seq_is_in_include_file(a_seq_number seq);

// Makes the file's entry under `parent` (null: at the root) and opens its segment.
struct a_source_file_start {
  a_source_file *parent;
  a_seq_number seq;
  a_line_number line;
  const char *file_name;
  const char *full_name;
  const char *name_as_written;
  bool is_include_file;
  bool is_angle_bracket_include;
  bool is_preinclude;
  bool is_macro_preinclude;
  bool is_system_header;
};
a_source_file *record_start_of_source_file(const a_source_file_start &start);
void record_end_of_source_file(a_source_file *file, a_seq_number seq);
void record_resumption_of_source_file(a_source_file *file, a_seq_number seq, a_line_number line);

//---------------------------------------------------------------------------------------------
// The file index: offsets of some lines of each file, for showing earlier lines again.

a_line_number initialize_file_index(a_source_file *file); // returns the first stop
// Notes that the first `line` lines of the file end at `offset`; returns the count at which to call again.
a_line_number update_file_index(a_source_file *file, a_line_number line, long offset);
// The nearest indexed place at or before `line`: its line number (0 for the start) and offset.
void look_up_file_index(a_source_file *file, a_line_number line, a_line_number *indexed_line,
                        long *offset);
void clear_file_index_list();

//---------------------------------------------------------------------------------------------
// The input stack.

typedef unsigned char a_unicode_source_kind_tag; // always 0: only byte sources are read

enum a_guard_kind : unsigned char { guard_none, guard_is_ifdef, guard_is_ifndef };

// What is known of a file that was included, by its full name.
struct an_include_file_history {
  an_include_file_history *next; // in its hash chain
  const char *name;
  const char *guard_macro_name;
  unsigned times_on_stack;
  unsigned guard_name_length;
  a_guard_kind guard_kind;
  bool can_be_skipped : 1; // the file is wholly inside its guard
  bool pragma_once_seen : 1;
  // MISRA-C:2004, rule 19.15:
  bool inner_guard_seen : 1; // a conditional that isn't the file's first one guards a part of it
  bool reported_as_unguarded : 1;
};

struct an_input_stack_entry {
  FILE *file; // null: closed to save descriptors
  const char *file_name;
  const char *full_name; // with which it was opened
  const char *directory;
  a_directory_name_entry *dir_entry; // search path entry through which it was found
  a_line_number line_number;         // physical lines read so far
  long saved_offset;                 // where reading goes on while the file is closed
  a_source_file *first_source_file;
  a_source_file *curr_source_file; // the same, or the entry made by the last line directive
  int saved_pp_if_depth;
  a_line_number lines_counted;   // lines of the physical file
  a_line_number next_index_stop; // count at which the file index wants its next entry
  char *buffer;                  // the block read last; null until the first read
  char *next_char;               // the next character in it
  char *buffer_end;              // a newline stands there as a sentinel
  long offset_of_buffer_end;
  bool is_include_file : 1;
  bool is_system_header : 1;
  bool is_recursive : 1; // the same file is already on the stack
  bool saved_any_tokens : 1;
  bool is_preinclude : 1;
  bool is_macro_preinclude : 1; // its end counts as the end of the source
  bool guard_open_and_empty : 1;
  bool empty_group_before_else : 1;
  bool any_real_token : 1; // a token outside a directive was seen
  unsigned char ifg_state; // an_ifg_state
  a_unicode_source_kind_tag unicode_kind;
  an_include_file_history *include_history;
  a_symbol_header *guard_candidate; // of the last #ifndef at the top level of the file
};

struct a_preinclude_file {
  a_preinclude_file *next;
  const char *file_name;
};

// Written by this module.  Entries move when the stack grows: keep no pointers to them.
extern an_input_stack_entry *input_stack;
extern int input_stack_depth; // index of the top, -1 when empty
extern an_input_stack_entry *curr_ise;

// Filled by the command line, walked by push_next_preinclude_file.
extern a_preinclude_file *preinclude_file_list, *end_preinclude_file_list;
extern a_preinclude_file *macro_preinclude_file_list, *end_macro_preinclude_file_list;
extern a_preinclude_file *next_preinclude_file;
extern bool processing_macro_preincludes;

a_preinclude_file *alloc_preinclude_file();
// Opens the next preinclude file, if there is one.
void push_next_preinclude_file();

// Finds, opens and pushes a file, unless its include guard makes that needless (then
// actual_include_was_suppressed is set).  Issues 1971's family, 184, 3.
void open_file_and_push_input_stack(const char *name, bool use_search_path, bool is_include,
                                    bool angle_bracket, bool is_preinclude,
                                    bool is_macro_preinclude, bool search_after_current_dir,
                                    bool failure_is_error);

struct a_file_to_push {
  FILE *file;
  const char *name_as_written;
  const char *file_name;
  const char *full_name;
  bool is_include;
  bool angle_bracket;
  bool is_preinclude;
  bool is_macro_preinclude;
  a_unicode_source_kind_tag unicode_kind;
  a_directory_name_entry *dir_entry;
  an_include_file_history *history;
};
void push_input_stack(const a_file_to_push &pushed);
void pop_input_stack();

bool processing_primary_source_file();
bool in_included_file();
unsigned char get_ifg_state();
void set_ifg_state(unsigned char state);

// The history of the file of that name; made if `create`.
void find_include_history(const char *name, an_include_file_history **history, bool create,
                          bool is_system);
// Would including the file again have no effect, by its guard or by pragma once?
bool suppress_subsequent_include_of_file(const char *name, an_include_file_history **history,
                                         bool create, bool is_system);

//---------------------------------------------------------------------------------------------
// Preprocessed output and raw listing of the current line.

enum a_pp_lexical_category : unsigned char {
  ppc_never_joins = 1, // blanks, brackets, ",", ";", "?", "~"
  ppc_identifier = 2,  // characters of identifiers and "."
  ppc_other = 3,
};
extern unsigned char pp_lexical_category[256];
extern a_seq_number next_seq_in_pp_output;

// Could the characters on both sides of a text boundary join to one token?  `before` is the character
// in front of `prev`.
bool chars_could_join(char before, char prev, char next);

void gen_pp_output_for_curr_line();
// A line marker; at_new_file: on entering or returning to a file.
void gen_pp_line_info(char kind, bool at_new_file);
void gen_rlisting_line_info(char code);
// The N or S record of the current line; its X record is written by the second routine, which with
// at_end_of_source writes what is left over.
void gen_raw_listing_output_for_curr_line();
void gen_expanded_raw_listing_output_for_curr_line(bool at_end_of_source);
void finish_raw_listing_file();

//---------------------------------------------------------------------------------------------
// Start-up and end of this module and the scanner.

void lexical_one_time_init();
void lexical_init();
void lexical_trans_unit_init();
void lexical_reset();
void lexical_trans_unit_wrapup();
