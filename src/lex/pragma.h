// pragma.h - the frame for pragmas: what is known of each, and the queue from the directive's line to
// the token, construct or scope that it concerns.
#pragma once
#include "errors/error.h"
#include "il/il_fwd.h"
#include "lex/source_position.h"
#include "lex/token_cache.h"

enum a_pragma_kind_tag : unsigned char {
#define PRAGMA_ID(kind, name) kind,
#include "lex/pragmas.def"
  pragk_last
};
extern const char *const pragma_ids[pragk_last];

enum a_pragma_phase : unsigned char {
  pragma_no_phase,
  pragma_curr_construct, // binds to the next declaration or statement
  pragma_curr_token,     // runs before the next token is seen by the parser
  pragma_immediate,      // runs right behind the directive
  pragma_end_of_scope,   // waits in the scope, and is taken by the name of the entity
  pragma_at_directive,   // runs inside the directive, in a preprocess-only run too
};

enum a_pragma_flag : unsigned char {
  prf_declaration = 0x01, // binds to a declaration
  prf_statement = 0x02,   // binds to a statement
  prf_il_at_file_scope = 0x04,
  prf_add_to_il = 0x08,
  prf_text_form = 0x10, // the text is kept as a string
  prf_expand_macros = 0x20,
  prf_keywords = 0x40, // keywords and string concatenation in its tokens
  prf_raw_pp_tokens = 0x80,
};

enum a_pragma_flag2 : unsigned char {
  prf2_il_flag = 0x01,      // passed on in the IL record
  prf2_comment_form = 0x02, // is written as a comment
  prf2_stdc_like = 0x04,    // no IL record unless the handler makes one
  prf2_in_operator = 0x08,  // allowed in _Pragma although it runs at the directive
  prf2_header_name = 0x10,  // the operand may be a header name
};

// A handler reads the tokens between begin_rescan_of_pragma_tokens and wrapup_rescan_of_pragma_tokens.
// `symbol` or `statement` is what the pragma bound to, for pragma_curr_construct.
typedef void a_pragma_handler(a_pending_pragma *pragma, a_symbol *symbol, a_statement *statement);

struct a_pragma_kind_description {
  a_pragma_kind_description *next;
  a_pragma_kind_tag kind;
  a_pragma_phase phase;
  unsigned char flags;
  unsigned char flags2;
  an_error_severity misplaced_severity; // es_none: no complaint
  a_pragma_handler *handler;            // or null
};
extern a_pragma_kind_description *pragma_kind_descriptions; // those that have a name in the source
extern a_pragma_kind_description *pragma_description_for_pragma_kind[pragk_last];

// A pragma between reading and processing.
struct a_pending_pragma {
  a_pending_pragma *next;
  // Of the first in curr_token_pragmas: one from which the end is near, or null.  Who takes pragmas out of
  // the middle of that list clears it.
  a_pending_pragma *near_end;
  a_pragma_kind_description *description;
  a_token_cache tokens;                 // reusable
  a_source_position position;           // of the name
  a_source_position directive_position; // of the "#"
  bool owns_tokens : 1;
  bool from_microsoft_operator : 1;
  bool already_processed : 1;
  bool from_operator : 1;
  const char *text;    // of text_form pragmas
  a_pragma *il_pragma; // the IL record, when one was made
  unsigned varargs_count;
};

//---------------------------------------------------------------------------------------------
// Reading.

// Reads the pragma's name; returns its description or null.  *position gets the place of the name.
a_pragma_kind_description *look_up_pragma_id(a_source_position *position);
// Records the pragma whose name was just read, or, with a null description, issues 163 and skips it.
void record_pragma(a_pragma_kind_description *description,
                   const a_source_position *pos_of_directive, const a_source_position *pos_of_name,
                   bool from_operator);
// From a lint comment: kind is pragk_argsused, pragk_varargs or pragk_notreached.
void add_curr_token_pseudo_pragma(a_pragma_kind_tag kind, a_source_position position,
                                  unsigned count);

a_pending_pragma *alloc_pending_pragma(a_pragma_kind_description *description);
void free_pending_pragma(a_pending_pragma *pragma);
void free_pending_pragma_list(a_pending_pragma *list);
a_pending_pragma *make_copy_of_pragma_list(a_pending_pragma *list);

//---------------------------------------------------------------------------------------------
// Processing.

void process_immediate_pragmas();
void process_curr_token_pragmas();
// Before a construct may start: moves construct pragmas from the token to the scope; those that are
// there already stay with `keep`.  Returns whether any wait.
bool select_curr_construct_pragmas(bool keep);
// After a construct: applies what waits to its symbol or statement (either may be null).
void process_curr_construct_pragmas(a_symbol *symbol, a_statement *statement);
a_pending_pragma *extract_curr_construct_pragmas();
void reactivate_curr_construct_pragmas(a_pending_pragma *list);
void discard_curr_construct_pragmas();
void cannot_bind_to_curr_construct();
void end_of_scope_pragma_processing(a_pending_pragma *list);
// Takes the pragmas of one kind that concern the entity off the lists; the caller frees them.
a_pending_pragma *extract_specific_pragmas(a_pragma_kind_tag kind, a_symbol *symbol,
                                           a_statement *statement, bool this_scope_only);
// Makes the IL record; entry_kind is an an_il_entry_kind.
void add_pragma_to_il(a_pending_pragma *pragma, unsigned char entry_kind, char *entry,
                      bool at_file_scope);
void create_il_entry_for_pragma(a_pending_pragma *pragma, a_symbol *symbol, a_statement *statement);
// Where a declaration may begin: takes the STDC pragmas that wait in front of the token.
void check_for_stdc_pragmas();

// Which STDC pragma, as the IL record keeps it.
enum an_stdc_pragma_kind : unsigned char {
  stdck_none,
  stdck_fp_contract,
  stdck_fenv_access,
  stdck_cx_limited_range
};

//---------------------------------------------------------------------------------------------
// The default visibility that "#pragma GCC visibility push" has set; evis_default's number where none is.

void push_ELF_visibility(unsigned char visibility);
bool pop_ELF_visibility();                        // false: nothing was pushed
extern unsigned char curr_default_ELF_visibility; // an_elf_visibility

//---------------------------------------------------------------------------------------------
// Packing.

struct a_pack_alignment_state {
  a_pack_alignment_state *next;
  const char *name; // null: pushed without one
  unsigned value;
};
extern unsigned curr_max_member_alignment; // 0 is the default
extern a_pack_alignment_state *pack_alignment_stack;

//---------------------------------------------------------------------------------------------
// What pragmas of the target reach in modules above; each is installed before pragma_init, and null where
// the module isn't there.

struct a_target_pragma_handlers {
  a_pragma_handler *pragma_misra_action;
  // FUNCTION_OPTIONS was given for the function.
  void (*function_options)(const char *name, const a_source_position *position);
};
extern a_target_pragma_handlers target_pragma_handlers;

void pragma_one_time_init();
void pragma_init();
