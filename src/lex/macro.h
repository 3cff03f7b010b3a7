// macro.h - macros: definition, look-up, expansion.
// Expansion makes no tokens: it writes the replacement text into one expansion buffer and attaches it to
// the source by a source line modification; the scanner reads on in it.
#pragma once
#include "errors/error_codes.h"
#include "il/il_fwd.h"
#include "lex/source_position.h"
#include "lex/tokens.h"

struct a_source_line_modif;

//---------------------------------------------------------------------------------------------
// Definitions.

struct a_macro_param {
  a_macro_param *next;
  const char *name; // "__VA_ARGS__" for "..."
  unsigned name_length;
  bool needs_expansion; // used at least once outside # and ##
};

// Items of an encoded replacement list: a kind byte and a three-byte operand, low byte first; the list ends
// with a single byte rli_end.
enum a_replacement_item : unsigned char {
  rli_end = 0,
  rli_text = 1,         // operand: length of the text that follows
  rli_paste = 2,        // ##
  rli_raw_param = 3,    // operand: number of the parameter, from 1
  rli_string_param = 4, // # of the parameter
  rli_param = 6,        // the parameter with macros expanded
};

enum a_builtin_macro : unsigned char {
  bim_none,
  bim_line,
  bim_file,
  bim_base_file,
  bim_defined,
  bim_pragma,
  bim_counter,
  bim_timestamp,
  bim_stdc,
};

// The supplement of a macro symbol; in region 0.
struct a_macro_def {
  bool object_like : 1;
  bool cannot_redefine : 1;
  bool no_pch_use : 1; // its use depends on the run: not for a precompiled header, nor for listings
  bool variadic : 1;
  bool predefined : 1;
  a_builtin_macro builtin; // computed at each use; such a macro has no replacement
  unsigned param_count;
  unsigned active_expansions; // modifications that hold its replacement text now
  a_macro_param *params;
  const unsigned char *replacement; // the encoded replacement list
  a_macro *il_macro;
};

void clear_macro_def(a_macro_def *macro);

// Where ## joined text: `location` is the first character of the right-hand text, in the expansion buffer.
struct a_concatenation_record {
  a_concatenation_record *next;
  char *location;
};

//---------------------------------------------------------------------------------------------
// State.  Written by this module and, as far as said, by the scanner.

extern int macro_depth; // calls whose arguments are being collected
extern int num_macro_invocations_in_process;
extern bool scanning_macro_name;     // the name after #define is being read
extern char *delete_source_from_loc; // what is read from here on is deleted; null: nothing
extern bool
    comma_is_from_argument; // set by the scanner: a lesc_comma_from_arg stood before the comma

// Local pointers into a buffer that may move: linked while they are needed.
struct a_registered_pointer {
  a_registered_pointer *next;
  char **pointer;
};
extern a_registered_pointer *registered_pointers;

// Registers a local pointer for the time of a block.
class a_pointer_registration {
public:
  explicit a_pointer_registration(char **pointer)
  {
    record = {registered_pointers, pointer};
    registered_pointers = &record;
  }
  ~a_pointer_registration()
  {
    registered_pointers = record.next;
  }
  a_pointer_registration(const a_pointer_registration &) = delete;
  a_pointer_registration &operator=(const a_pointer_registration &) = delete;

private:
  a_registered_pointer record;
};

// -D and -U, in the order given; filled by the command line.
struct a_def_from_cmd_line {
  a_def_from_cmd_line *next;
  const char *text;
  bool is_undef;
};
extern a_def_from_cmd_line *defs_from_cmd_line, *end_defs_from_cmd_line;

// Modes that the predefined macro file names.
enum a_predef_macro_mode : unsigned char {
  pmm_none,
  pmm_gnu,
  pmm_gcc,
  pmm_gpp,
  pmm_microsoft,
  pmm_strict,
  pmm_cpp,
  pmm_all,
  pmm_last
};
extern unsigned char predef_macro_mode_values[pmm_last];
void set_predef_macro_mode(a_predef_macro_mode mode, int value);

//---------------------------------------------------------------------------------------------
// Interface.

// Carries out a #define, or a definition of the command line; the name is next in the input.
// Issues 18, 41, 47, 48, 50 to 53, 768, 1023, 1046, 1920, 1921.
void proc_define();

// Called for an identifier that names a macro, with the identifier as the current token (its spelling
// from start_of_curr_token to end_of_curr_token, curr_char_loc behind it).  With *expansion_attached the
// scanner goes on at curr_char_loc; otherwise the result is the kind of the token to deliver, tok_error
// meaning that the scanner is to carry on (after _Pragma).
a_token_kind macro_invocation(a_symbol *macro, bool *expansion_attached);

// Enters a macro with no parameters; a null value makes one without text.  Issues 1618.
a_symbol *enter_predef_macro(const char *value, const char *name, bool cannot_redefine,
                             bool no_pch_use);
// date_and_time is ctime's text.
void init_predefined_macros(const char *date_and_time);
void fixup_predefined_macros(const char *date_and_time);

// The macro of that name for #ifdef and #undef; null for "defined", "_Pragma" and if there is none.
a_symbol *find_defined_macro(a_symbol_header *header);
// For the options that name a macro: is the text an identifier?  Hands back its macro, if it is one.
bool is_valid_identifier(const char *text, unsigned length, a_symbol **macro,
                         a_symbol_locator *locator);
// Is the macro of that name defined now?  For include guards.
bool macro_is_defined(const char *name, unsigned length);

// Sets const_for_curr_token to an integer constant of the widest signed type; returns tok_int_constant.
a_token_kind make_pp_int_constant(long value);

// Called by the scanner, with check_concatenations set, for a token from `start` to `end`: 1934 if ##
// joined something that isn't this one token.
void check_concatenation_at(char *start, char *end);

// Writes the definitions as #define lines to the preprocessed output.
void gen_pp_output_for_macro_definitions();
// "#define name(params) text", in the temporary text buffer, null-terminated.
const char *text_of_macro_definition(a_symbol *macro);

void macro_one_time_init();
void macro_init();
void macro_trans_unit_init();
