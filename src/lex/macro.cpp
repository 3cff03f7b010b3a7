// macro.cpp - macro calls: where expansion begins and where it ends.
// Owns:    the expansion buffer, the macro state that is not definitions.
// Uses:    arguments (macro_args.cpp), substitution (macro_subst.cpp), modifications (source_input.h).
// Rule:    expansion writes text, never tokens; the scanner reads the text again.
// Rule:    texts are given back in the order in which they were attached, so that the buffer is a stack
//          and is empty again between the lines.
// Entry:   macro_invocation.
// See:     C99 6.10.3; GNU differences are marked "GNU".
#include "lex/macro.h"
#include <climits>
#include <cstring>
#include "driver/flags.h"
#include "errors/error.h"
#include "errors/misra_hooks.h"
#include "lex/lexical.h"
#include "lex/macro_internal.h"
#include "lex/preproc.h"
#include "lex/token_cache.h"
#include "mem/mem_manage.h"
#include "mem/registered_vars.h"
#include "parse/symbol_ref.h"
#include "parse/symbol_tbl.h"

int macro_depth;
int num_macro_invocations_in_process;
bool scanning_macro_name;
char *delete_source_from_loc;
bool comma_is_from_argument;
a_registered_pointer *registered_pointers;

char *expansion_buffer;
char *next_free_in_expansion_buffer;
unsigned num_texts_in_expansion_buffer;

static char *end_of_expansion_buffer;
static a_concatenation_record *avail_concatenation_records;

static constexpr unsigned long initial_expansion_buffer_size = 4000;
// Texts of one macro within each other in K&R mode, where nothing else stops them.
static constexpr int max_pcc_recursion = 299;
// What a call that contains itself may grow to: with a dozen names in each text, 299 levels would never end.
static constexpr unsigned long max_pcc_recursive_text = 1000000;

unsigned long text_of_outermost_call;
// The outermost call was given up: what is left of its text holds no calls any more.
static bool recursion_was_reported;

//---------------------------------------------------------------------------------------------
// The expansion buffer.

void ensure_expansion_buffer_space(unsigned long need)
{
  unsigned long room = end_of_expansion_buffer - next_free_in_expansion_buffer;
  if (need <= room) return;
  unsigned long old_size = end_of_expansion_buffer - expansion_buffer;
  unsigned long shortfall = need + need / 10 - room;
  if (shortfall > UINT_MAX - old_size) catastrophe(ec_requested_size_too_large);
  unsigned long size = old_size + (old_size > shortfall ? old_size : shortfall);
  char *old_start = expansion_buffer;
  char *new_start = realloc_buffer(old_start, old_size + 1, size + 1);
  expansion_buffer = new_start;
  next_free_in_expansion_buffer += new_start - old_start;
  end_of_expansion_buffer = new_start + size;
  adjust_curr_source_line_structure_after_realloc(old_start, old_start + old_size, new_start, true);
}

void note_text_in_expansion_buffer(a_source_line_modif *modif)
{
  modif->text_is_in_expansion_buffer = true;
  ++num_texts_in_expansion_buffer;
}

//---------------------------------------------------------------------------------------------
// Concatenation records.

a_concatenation_record *alloc_concatenation_record(char *location)
{
  a_concatenation_record *record = avail_concatenation_records;
  if (record != nullptr) {
    avail_concatenation_records = record->next;
  } else {
    record = (a_concatenation_record *)alloc_in_region(0, sizeof(a_concatenation_record));
  }
  record->next = nullptr;
  record->location = location;
  return record;
}

void free_concatenation_records(a_concatenation_record *list)
{
  while (list != nullptr) {
    a_concatenation_record *next = list->next;
    list->next = avail_concatenation_records;
    avail_concatenation_records = list;
    list = next;
  }
}

// The place where ## joined texts lies within one token if the token begins before it and ends behind it.
void check_concatenation_at(char *start, char *end)
{
  a_source_line_modif *modif = nested_source_line_modif(start);
  if (modif == nullptr || modif->concatenations == nullptr) return;
  a_concatenation_record **link = &modif->concatenations;
  while (*link != nullptr && (*link)->location <= end) {
    a_concatenation_record *record = *link;
    bool is_one_token = record->location > start;
    *link = record->next;
    record->next = nullptr;
    if (!is_one_token) {
      size_t length = end - start + 1;
      a_text_buffer *text = alloc_text_buffer(length + 1);
      add_to_text_buffer(text, start, length);
      add_char_to_text_buffer(text, '\0');
      an_error_severity severity =
          strict_ansi_mode ? strict_ansi_discretionary_severity : es_warning;
      pos_stsy_diagnostic(severity, ec_concat_yields_invalid_token, error_position, text->buffer,
                          modif->macro_symbol);
    }
    free_concatenation_records(record);
  }
}

//---------------------------------------------------------------------------------------------
// The name: recursion, and the parenthesis behind it.

// How many texts of the macro hold the current token, within each other?
static int count_enclosing_expansions(const a_macro_def *macro)
{
  int count = 0;
  a_source_line_modif *modif = nested_source_line_modif(start_of_curr_token);
  for (; modif != nullptr; modif = parent_source_line_modif(modif)) {
    if (modif->macro == macro) ++count;
  }
  return count;
}

// The name stands in its own expansion: it is replaced by itself with a mark that goes wherever the
// name is copied.
static void make_name_inert(const a_macro_call *call)
{
  char *from = start_of_curr_token;
  a_pointer_registration keep_from(&from);
  ensure_expansion_buffer_space(call->name_length + 4);
  char *text = next_free_in_expansion_buffer;
  char *to = text;
  *to++ = 0;
  *to++ = lesc_inert_macro;
  memcpy(to, from, call->name_length);
  to += call->name_length;
  to[0] = 0;
  to[1] = lesc_end_of_modif;
  next_free_in_expansion_buffer = to + 2;
  a_source_line_modif *modif = add_source_line_modif(from, call->name_length, text, to);
  modif->pos = call->position;
  note_text_in_expansion_buffer(modif);
  curr_char_loc = text;
}

// The peek for "(" left the line in which the name stood, and the name was deleted from it for the case
// that the call is one.  It stands in front of the line now, with the comments that were passed.
static void attach_name_again(a_macro_call *call, const char *name)
{
  // What was passed of the line, such as the rest of a comment, isn't read again.
  unsigned passed = at_end_of_source_file ? 0 : (unsigned)(curr_char_loc - curr_source_line);
  const a_text_buffer *comments = passed_comments;
  size_t comments_length = comments == nullptr ? 0 : comments->size;
  // The line's end behind "//" is the one that follows the text.
  if (comments_length > 0 && comments->buffer[comments_length - 1] == lesc_newline)
    comments_length -= 2;
  ensure_expansion_buffer_space(call->name_length + comments_length + 4);
  char *text = next_free_in_expansion_buffer;
  memcpy(text, name, call->name_length);
  char *to = text + call->name_length;
  if (comments_length > 0) memcpy(to, comments->buffer, comments_length);
  to += comments_length;
  curr_char_loc = to;
  *to++ = 0;
  *to++ = lesc_newline;
  to[0] = 0;
  to[1] = lesc_end_of_modif;
  next_free_in_expansion_buffer = to + 2;
  a_source_line_modif *modif = add_source_line_modif(nullptr, passed, text, to);
  modif->pos = call->position;
  modif->has_fixed_ends = true;
  note_text_in_expansion_buffer(modif);
  start_of_curr_token = text;
  end_of_curr_token = text + call->name_length - 1;
}

// Output that keeps comments gets those between the name and the next line.
static void begin_collecting_comments()
{
  static a_text_buffer *comments;
  if (!generate_pp_output || !keep_comments_in_pp_output) return;
  if (comments == nullptr) comments = alloc_text_buffer(200);
  reset_text_buffer(comments);
  passed_comments = comments;
}

// The general case of the search: over comments, line ends and the ends of texts.
static bool peek_for_lparen(a_macro_call *call)
{
  char *behind_name = curr_char_loc;
  char *outer_deletion = delete_source_from_loc;
  a_pointer_registration keep_behind_name(&behind_name);
  a_pointer_registration keep_outer_deletion(&outer_deletion);
  const char *name = locator_for_curr_id.header->identifier;
  unsigned newest = newest_source_line_modif();
  a_seq_number seq = seq_number_last_read;
  bool was_at_end = at_end_of_source_file;
  a_source_position pos_of_outer_call = pos_of_macro_invocation;
  bool pops_are_held = curr_ise != nullptr && curr_ise->is_macro_preinclude;
  if (curr_ise != nullptr)
    curr_ise->is_macro_preinclude = true; // a call doesn't reach out of its file
  delete_source_from_loc = start_of_curr_token;
  begin_collecting_comments();
  bool found = skip_white_space() == '(';
  if (curr_ise != nullptr) curr_ise->is_macro_preinclude = pops_are_held;
  if (found) {
    passed_comments = nullptr;
    return true;
  }
  delete_source_from_loc = outer_deletion;
  if (seq_number_last_read != seq || (at_end_of_source_file && !was_at_end)) {
    call->name_length = locator_for_curr_id.header->length;
    attach_name_again(call, name);
  } else {
    rem_source_line_modifs_since(newest);
    curr_char_loc = behind_name;
    pos_of_macro_invocation = pos_of_outer_call;
  }
  passed_comments = nullptr;
  return false;
}

bool find_lparen_of_call(a_macro_call *call)
{
  char *loc = curr_char_loc;
  while (*loc == ' ' || *loc == '\t')
    ++loc;
  switch (*loc) {
  case '(':
    delete_source_from_loc = start_of_curr_token;
    curr_char_loc = loc;
    return true;
  case 0:
  case modif_mark:
  case '/':
  case '\v':
  case '\f':
  case '\r': return peek_for_lparen(call);
  default: return false;
  }
}

//---------------------------------------------------------------------------------------------
// Calls.

// What a call changes while it reads its arguments.
namespace {
class a_call_state {
public:
  a_call_state()
      : fetch(fetch_pp_tokens), expand(expand_macros), header_name(exp_header_name),
        system_header_name(exp_system_header_name), digits(exp_digit_sequence),
        caching_pragma(caching_pragma_tokens), depth(macro_depth), position(error_position),
        is_caching(curr_lexical_state_stack_entry != nullptr &&
                   curr_lexical_state_stack_entry->caching_count > 0)
  {
    if (is_caching) push_lexical_state_stack();
    exp_header_name = exp_system_header_name = exp_digit_sequence = caching_pragma_tokens = false;
  }
  ~a_call_state()
  {
    fetch_pp_tokens = fetch;
    expand_macros = expand;
    exp_header_name = header_name;
    exp_system_header_name = system_header_name;
    exp_digit_sequence = digits;
    caching_pragma_tokens = caching_pragma;
    macro_depth = depth;
    if (is_caching) pop_lexical_state_stack();
    error_position = position;
  }
  a_call_state(const a_call_state &) = delete;
  a_call_state &operator=(const a_call_state &) = delete;

private:
  bool fetch, expand, header_name, system_header_name, digits, caching_pragma;
  int depth;
  a_source_position position;
  bool is_caching;
};
} // namespace

// The call has no ")": what was read of it is gone.
static a_token_kind abandon_macro_call(a_macro_call *call)
{
  if (curr_token == tok_end_of_source && abandon_rescan()) return curr_token;
  syntax_error(ec_exp_rparen);
  pos_error(ec_improperly_terminated_macro_call, call->position);
  delete_collected_source(start_of_curr_token);
  return curr_token;
}

// The name of a function-like macro is the current token.
static a_token_kind invoke_function_like_macro(a_macro_call *call, bool *expansion_attached)
{
  char *outer_deletion = delete_source_from_loc;
  a_pointer_registration keep_outer_deletion(&outer_deletion);
  unsigned char white_space = kind_of_white_space_skipped;
  a_token_kind result = tok_identifier;
  if (!find_lparen_of_call(call)) {
    kind_of_white_space_skipped = white_space;
    return tok_identifier;
  }
  {
    a_call_state state;
    ++macro_depth;
    fetch_pp_tokens = true;
    expand_macros = false;
    ++curr_char_loc;
    if (collect_macro_args(call)) {
      char *from = delete_source_from_loc;
      delete_source_from_loc = nullptr;
      substitute_macro_call(call, from);
      *expansion_attached = true;
    } else {
      result = abandon_macro_call(call);
    }
    release_macro_args(call);
  }
  delete_source_from_loc = outer_deletion == nullptr ? nullptr : curr_char_loc;
  kind_of_white_space_skipped = white_space;
  return result;
}

static void start_macro_call(a_macro_call *call, a_symbol *symbol)
{
  call->symbol = symbol;
  call->macro = macro_def_of_symbol(symbol);
  call->position = pos_curr_token;
  call->name_length = len_of_curr_token;
  call->arg_count = 0;
  call->first_arg = call->last_arg = nullptr;
  call->concatenations = nullptr;
}

// K&R mode: names expand in their own expansion, up to a bound; beyond it the outermost call ends.
static bool pcc_recursion_ends(const a_macro_call *call)
{
  if (loc_is_in_curr_source_line(start_of_curr_token)) {
    text_of_outermost_call = 0;
    recursion_was_reported = false;
  }
  if (recursion_was_reported) return true;
  if (call->macro->active_expansions == 0) return false;
  int count = count_enclosing_expansions(call->macro);
  if (count == 0) return false;
  if (count <= max_pcc_recursion && text_of_outermost_call <= max_pcc_recursive_text) return false;
  error(ec_macro_recursion);
  recursion_was_reported = true;
  return true;
}

// Is the name to stay as it is, because it stands in its own expansion?
static bool name_is_in_own_expansion(const a_macro_call *call)
{
  if (pcc_preprocessing_mode) return pcc_recursion_ends(call);
  return call->macro->active_expansions != 0 && count_enclosing_expansions(call->macro) > 0;
}

a_token_kind macro_invocation(a_symbol *symbol, bool *expansion_attached)
{
  a_macro_call call;
  start_macro_call(&call, symbol);
  *expansion_attached = false;
  if (check_concatenations && !loc_is_in_curr_source_line(start_of_curr_token)) {
    check_concatenation_at(start_of_curr_token, end_of_curr_token);
  }
  reset_expansion_buffer_if_unused();
  if (name_is_in_own_expansion(&call)) {
    make_name_inert(&call);
    *expansion_attached = true;
    return tok_identifier;
  }
  if (num_macro_invocations_in_process >= max_macro_nesting) catastrophe(ec_program_too_large);
  ++num_macro_invocations_in_process;
  a_token_kind result = tok_identifier;
  if (call.macro->builtin != bim_none) {
    result = invoke_builtin_macro(&call, expansion_attached);
  } else if (call.macro->object_like) {
    substitute_macro_call(&call, start_of_curr_token);
    *expansion_attached = true;
  } else {
    result = invoke_function_like_macro(&call, expansion_attached);
  }
  if (*expansion_attached) {
    record_symbol_reference(4, symbol, &call.position, true);
    if (check_misra_c_2004) {
      misra_hooks.check_for_invalid_identifier(symbol->header->identifier, &call.position,
                                               ansi_c_macro);
    }
    bool has_text = call.macro->builtin == bim_none && *call.macro->replacement != rli_end;
    if (pcc_preprocessing_mode && macro_depth == 0 && has_text) rescan_replacement_text();
  }
  --num_macro_invocations_in_process;
  return result;
}

//---------------------------------------------------------------------------------------------
// Start-up.

void macro_one_time_init()
{
  expansion_buffer = alloc_resizable_buffer(initial_expansion_buffer_size + 1);
  end_of_expansion_buffer = expansion_buffer + initial_expansion_buffer_size;
  next_free_in_expansion_buffer = expansion_buffer;
  register_trans_unit_variable(macro_depth);
  register_trans_unit_variable(num_macro_invocations_in_process);
  register_trans_unit_variable(scanning_macro_name);
  register_trans_unit_variable(delete_source_from_loc);
  register_trans_unit_variable(comma_is_from_argument);
  register_trans_unit_variable(registered_pointers);
  register_trans_unit_variable(counter_macro_value);
}

void macro_init()
{
  num_macro_invocations_in_process = 0;
}

void macro_trans_unit_init()
{
  macro_depth = 0;
  num_macro_invocations_in_process = 0;
  scanning_macro_name = false;
  delete_source_from_loc = nullptr;
  comma_is_from_argument = false;
  registered_pointers = nullptr;
  text_of_outermost_call = 0;
  recursion_was_reported = false;
  num_texts_in_expansion_buffer = 0;
  next_free_in_expansion_buffer = expansion_buffer;
  counter_macro_value = 0;
}
