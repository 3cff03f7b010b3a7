// macro_args.cpp - the arguments of macro calls: collecting them, and expanding the macros in them.
// Owns:    the free list of argument records.
// Rule:    an argument is kept as the text of its tokens, with a blank where white space stood and the
//          escape lesc_token_separator where tokens touched.
// Rule:    an argument that begins in replacement text and ends behind it is expanded in that context
//          up to where it left it, and outside from there on.
// Entry:   collect_macro_args, expanded_text_of_arg.
// See:     C99 6.10.3, 6.10.3.1.
#include <climits>
#include <cstring>
#include <initializer_list>
#include "driver/flags.h"
#include "errors/error.h"
#include "lex/lexical.h"
#include "lex/macro_internal.h"
#include "mem/mem_manage.h"
#include "parse/symbol_tbl.h"

static constexpr unsigned initial_arg_text_capacity = 400;

static a_macro_arg *macro_arg_free_list;

//---------------------------------------------------------------------------------------------
// Records and their texts.

static void make_arg_text(an_arg_text *text)
{
  text->text = alloc_resizable_buffer(initial_arg_text_capacity + 1);
  text->capacity = initial_arg_text_capacity;
}

static a_macro_arg *alloc_macro_arg()
{
  a_macro_arg *arg = macro_arg_free_list;
  if (arg != nullptr) {
    macro_arg_free_list = arg->next;
  } else {
    arg = (a_macro_arg *)alloc_general(sizeof(a_macro_arg));
    make_arg_text(&arg->raw);
    make_arg_text(&arg->expanded);
  }
  arg->next = nullptr;
  arg->raw.length = arg->expanded.length = 0;
  arg->first_context = arg->second_context = nullptr;
  arg->rescan_offset = 0;
  arg->is_split = arg->is_empty_arg = arg->may_hold_macros = arg->is_expanded = false;
  return arg;
}

// A record on the free list may have the room that is wanted: the texts are swapped then.
static bool take_larger_text(an_arg_text *text, unsigned long capacity)
{
  for (a_macro_arg *arg = macro_arg_free_list; arg != nullptr; arg = arg->next) {
    for (an_arg_text *spare : {&arg->raw, &arg->expanded}) {
      if (spare->capacity < capacity) continue;
      memcpy(spare->text, text->text, text->length);
      char *taken = spare->text;
      unsigned taken_capacity = spare->capacity;
      spare->text = text->text;
      spare->capacity = text->capacity;
      text->text = taken;
      text->capacity = taken_capacity;
      return true;
    }
  }
  return false;
}

static void grow_arg_text(an_arg_text *text, unsigned long needed)
{
  if (take_larger_text(text, needed)) return;
  unsigned long capacity = text->capacity;
  unsigned long shortfall = needed - capacity;
  capacity += shortfall > capacity ? shortfall : capacity;
  if (capacity > UINT_MAX - 1) catastrophe(ec_requested_size_too_large);
  text->text = realloc_buffer(text->text, text->capacity + 1, capacity + 1);
  text->capacity = (unsigned)capacity;
}

void ensure_arg_text_space(an_arg_text *text, unsigned long need)
{
  unsigned long needed = text->length + need;
  if (needed > text->capacity) grow_arg_text(text, needed);
}

void release_macro_args(a_macro_call *call)
{
  if (call->last_arg == nullptr) return;
  call->last_arg->next = macro_arg_free_list;
  macro_arg_free_list = call->first_arg;
  call->first_arg = call->last_arg = nullptr;
}

a_macro_arg *arg_of_call(const a_macro_call *call, unsigned number)
{
  if (number <= directly_reached_args) return call->args[number - 1];
  a_macro_arg *arg = call->args[directly_reached_args - 1];
  for (unsigned i = directly_reached_args; i < number; ++i)
    arg = arg->next;
  return arg;
}

static a_macro_arg *add_macro_arg(a_macro_call *call)
{
  a_macro_arg *arg = alloc_macro_arg();
  if (call->last_arg == nullptr) {
    call->first_arg = arg;
  } else {
    call->last_arg->next = arg;
  }
  call->last_arg = arg;
  if (call->arg_count < directly_reached_args) call->args[call->arg_count] = arg;
  ++call->arg_count;
  return arg;
}

//---------------------------------------------------------------------------------------------
// Texts of tokens.

void append_curr_token(an_arg_text *text, bool mark_comma)
{
  unsigned length = len_of_curr_token;
  ensure_arg_text_space(text, length + 8);
  char *to = text->text + text->length;
  if (text->length > 0) {
    if (white_space_separates()) {
      *to++ = ' ';
    } else if (!pcc_preprocessing_mode) {
      *to++ = 0;
      *to++ = lesc_token_separator;
    }
  }
  if (curr_token_is_inert_macro || curr_token_is_temporarily_inert_macro) {
    *to++ = 0;
    *to++ = curr_token_is_inert_macro ? lesc_inert_macro : lesc_temp_inert_macro;
  }
  if (mark_comma) {
    *to++ = 0;
    *to++ = lesc_comma_from_arg;
  }
  memcpy(to, start_of_curr_token, length);
  text->length = (unsigned)(to + length - text->text);
  if (curr_token == tok_error) remark(err_code_for_error_token);
}

static void terminate_arg_text(an_arg_text *text)
{
  ensure_arg_text_space(text, 2);
  text->text[text->length++] = 0;
  text->text[text->length++] = lesc_end_of_modif;
}

//---------------------------------------------------------------------------------------------
// Collecting.

// The texts in which the argument begins are kept while lines are read.
static void keep_context_over_lines(a_source_line_modif *context)
{
  for (; context != nullptr; context = parent_source_line_modif(context)) {
    if (context->spans_lines) break;
    context->spans_lines = true;
  }
}

static void begin_arg_context(a_macro_arg *arg)
{
  last_source_line_modif_exited_while_skipping_white_space = nullptr;
  if (source_line_modif_list == nullptr) return;
  arg->first_context = nested_source_line_modif(curr_char_loc);
  arg->second_context = arg->first_context;
  keep_context_over_lines(arg->first_context);
}

// In front of the current token a replacement text was left.  If the argument was in it, what follows
// takes place outside.
static void note_end_of_context(a_macro_arg *arg)
{
  a_source_line_modif *left = last_source_line_modif_exited_while_skipping_white_space;
  last_source_line_modif_exited_while_skipping_white_space = nullptr;
  a_source_line_modif *context = arg->second_context;
  while (context != nullptr && context != left)
    context = parent_source_line_modif(context);
  if (context == nullptr) return;
  arg->second_context = parent_source_line_modif(left);
  arg->rescan_offset = arg->raw.length;
  arg->is_split = true;
}

// May the current token be expanded when the argument is?
static inline bool token_may_be_macro()
{
  if (curr_token_is_inert_macro) return false;
  if (id_contains_ucn_or_multibyte_char) return true;
  return find_symbol_header(start_of_curr_token, len_of_curr_token)->macro_symbol != nullptr;
}

// A comma that came out of an argument belongs to the last parameter's argument, whole.
static inline bool comma_ends_arg(bool is_last_param, bool takes_all_commas)
{
  return !takes_all_commas && !(is_last_param && comma_is_from_argument);
}

namespace {
// The parentheses that are open in an argument.  Calls in arguments of calls are expanded by recursion,
// so that too many of them have to be found before it begins.
class an_open_paren_count {
public:
  unsigned long depth = 0;

  void note_identifier()
  {
    if (depth >= shallow_depth) {
      a_symbol *macro =
          find_macro_symbol(find_symbol_header(start_of_curr_token, len_of_curr_token));
      behind_macro_name = macro != nullptr && !macro_def_of_symbol(macro)->object_like;
    }
  }
  void open()
  {
    if (depth >= shallow_depth && depth < deepest_noted) {
      is_call[depth - shallow_depth] = behind_macro_name;
      if (behind_macro_name && ++open_calls >= max_macro_nesting) catastrophe(ec_program_too_large);
    }
    behind_macro_name = false;
    ++depth;
  }
  void close()
  {
    --depth;
    behind_macro_name = false;
    if (depth >= shallow_depth && depth < deepest_noted)
      open_calls -= is_call[depth - shallow_depth];
  }

private:
  static constexpr unsigned long shallow_depth = 200;
  static constexpr unsigned long deepest_noted = shallow_depth + 4ul * max_macro_nesting;
  bool behind_macro_name = false;
  int open_calls = 0;
  bool is_call[deepest_noted - shallow_depth];
};
} // namespace

// Reads one argument; the current token is then what ended it.  Its frame must not become part of one
// that stays while the argument is expanded.
__attribute__((noinline)) static void collect_macro_arg(a_macro_call *call, a_macro_arg *arg,
                                                        const a_macro_param *param)
{
  bool is_last_param = param != nullptr && param->next == nullptr;
  bool takes_all_commas = is_last_param && call->macro->variadic;
  an_open_paren_count parens;
  a_seq_number seq = seq_number_last_read;
  begin_arg_context(arg);
  for (;;) {
    get_token();
    bool mark_comma = false;
    switch (curr_token) {
    case tok_identifier:
      if (!arg->may_hold_macros) arg->may_hold_macros = token_may_be_macro();
      parens.note_identifier();
      break;
    case tok_lparen: parens.open(); break;
    case tok_rparen:
      if (parens.depth == 0) goto end_of_arg;
      parens.close();
      break;
    case tok_comma:
      if (parens.depth == 0) {
        if (comma_ends_arg(is_last_param, takes_all_commas)) goto end_of_arg;
        mark_comma = true;
      }
      break;
    case tok_end_of_source:
    case tok_newline: goto end_of_arg;
    default: break;
    }
    if (last_source_line_modif_exited_while_skipping_white_space != nullptr) {
      note_end_of_context(arg);
    }
    append_curr_token(&arg->raw, mark_comma);
  }
end_of_arg:
  // A directive among the lines may have defined what wasn't a macro before.
  if (seq_number_last_read != seq) arg->may_hold_macros = true;
  terminate_arg_text(&arg->raw);
}

static an_error_severity severity_of_wrong_arg_count()
{
  return pcc_preprocessing_mode || SVR4_C_mode ? es_warning : es_discretionary_error;
}

static void check_for_empty_arg(a_macro_arg *arg, bool is_real)
{
  if (arg->raw.length > 2 || !is_real) return;
  arg->is_empty_arg = true;
  if (strict_ansi_mode && C_dialect == 0 && !c99_mode) warning(ec_empty_macro_argument);
}

// Missing arguments count as empty.
static void supply_missing_args(a_macro_call *call)
{
  const a_macro_def *macro = call->macro;
  if (call->arg_count >= macro->param_count) return;
  bool only_rest_is_missing = macro->variadic && call->arg_count + 1 == macro->param_count;
  if (!only_rest_is_missing || !extended_variadic_macros_allowed) {
    if (check_misra_c_2004 &&
        misra_c_2004_generate_diagnostic(ec_misra_c_2004_19_8, misra_required_severity)) {
      diagnostic(misra_required_severity, ec_misra_c_2004_19_8);
    } else {
      sym_diagnostic(severity_of_wrong_arg_count(), ec_too_few_macro_args, call->symbol);
    }
  }
  while (call->arg_count < macro->param_count)
    terminate_arg_text(&add_macro_arg(call)->raw);
}

bool collect_macro_args(a_macro_call *call)
{
  const a_macro_param *param = call->macro->params;
  bool is_surplus = false, surplus_reported = false;
  for (;;) {
    a_macro_arg *arg = add_macro_arg(call);
    collect_macro_arg(call, arg, param);
    bool is_only_arg = call->arg_count == 1 && curr_token == tok_rparen;
    if (is_surplus || (param == nullptr && (!is_only_arg || arg->raw.length > 2))) {
      if (!surplus_reported) {
        sym_diagnostic(severity_of_wrong_arg_count(), ec_too_many_macro_args, call->symbol);
      }
      surplus_reported = true;
    }
    check_for_empty_arg(arg, !is_only_arg);
    if (curr_token == tok_rparen) {
      supply_missing_args(call);
      return true;
    }
    if (curr_token != tok_comma) return false;
    if (param != nullptr) {
      param = param->next;
      is_surplus = param == nullptr;
    }
  }
}

//---------------------------------------------------------------------------------------------
// Expanding.

// The records by which the scanner knows the argument's text.
static void attach_arg_text(a_macro_arg *arg, a_source_position position)
{
  char *start = arg->raw.text;
  char *end = start + arg->raw.length - 2;
  a_source_line_modif *context = arg->first_context;
  if (arg->is_split) {
    char *second = start + arg->rescan_offset;
    if (second > start) add_detached_source_line_modif(start, second - 2, context)->pos = position;
    start = second;
    context = arg->second_context;
  }
  a_source_line_modif *modif = add_detached_source_line_modif(start, end, context);
  modif->stop_at_end = true;
  modif->pos = position;
}

// Reads the argument's text with macros expanded.
static void scan_arg_text(a_macro_arg *arg)
{
  long depth = 0;
  while (get_token() != tok_end_of_source) {
    if (curr_token == tok_lparen) ++depth;
    if (curr_token == tok_rparen) --depth;
    append_curr_token(&arg->expanded, curr_token == tok_comma && depth <= 0);
  }
}

static void expand_macro_arg(const a_macro_call *call, a_macro_arg *arg)
{
  char *saved_loc = curr_char_loc;
  char *saved_start = start_of_curr_token;
  char *saved_end = end_of_curr_token;
  char *saved_deletion = delete_source_from_loc;
  a_pointer_registration keep_loc(&saved_loc);
  a_pointer_registration keep_start(&saved_start);
  a_pointer_registration keep_end(&saved_end);
  a_pointer_registration keep_deletion(&saved_deletion);
  unsigned newest = newest_source_line_modif();
  unsigned long buffer_used = next_free_in_expansion_buffer - expansion_buffer;
  bool saved_expand = expand_macros;

  attach_arg_text(arg, call->position);
  curr_char_loc = arg->raw.text;
  delete_source_from_loc = nullptr;
  expand_macros = true;
  scan_arg_text(arg);
  terminate_arg_text(&arg->expanded);
  rem_source_line_modifs_since(newest);
  next_free_in_expansion_buffer = expansion_buffer + buffer_used;

  expand_macros = saved_expand;
  curr_char_loc = saved_loc;
  start_of_curr_token = saved_start;
  end_of_curr_token = saved_end;
  delete_source_from_loc = saved_deletion;
}

const an_arg_text *expanded_text_of_arg(const a_macro_call *call, a_macro_arg *arg)
{
  if (!arg->may_hold_macros) return &arg->raw;
  if (!arg->is_expanded) {
    expand_macro_arg(call, arg);
    arg->is_expanded = true;
  }
  return &arg->expanded;
}
