// error_render.cpp - templates become pieces, inserts become text.
// Owns:    the chains of pieces, kept and reused from one message to the next.
// Uses:    the hooks of the IL printer for types and symbols; positions (source_input).
// Rule:    rendering a type may itself report a line, so each depth of rendering has its own chain.
#include "errors/error_private.h"
#include <cstring>
#include "driver/host_envir.h"
#include "lex/source_input.h"
#include "mem/check.h"

static constexpr int max_rendering_depth = 4;
static constexpr size_t text_increment = 100;

static a_message_piece *piece_chains[max_rendering_depth];
static int rendering_depth;
static a_diag_text type_string;  // format_type_string's result
static a_text_buffer *name_text; // a file name on its way into a message

// ---- Growing text ----

void put_to_insert(a_diag_text *text, const char *string, size_t length)
{
  if (text->length + length + 1 > text->capacity) {
    size_t step = length >= text_increment ? length + 1 : text_increment;
    size_t new_capacity = text->capacity + step;
    text->buffer = realloc_buffer(text->buffer, text->capacity, new_capacity);
    text->capacity = new_capacity;
  }
  memcpy(text->buffer + text->length, string, length);
  text->length += length;
  text->buffer[text->length] = '\0';
}

void put_str_to_insert(a_diag_text *text, const char *string)
{
  put_to_insert(text, string, strlen(string));
}

static void put_word(a_diag_text *text, an_error_code code)
{
  put_str_to_insert(text, error_text(code));
}

static void put_file_name(a_diag_text *text, const char *name)
{
  if (name_text == nullptr) name_text = alloc_text_buffer(256);
  reset_text_buffer(name_text);
  write_file_name_to_text_buffer(name, name_text, false);
  remove_null_terminator_from_text_buffer(name_text);
  put_str_to_insert(text, "\"");
  put_to_insert(text, name_text->buffer, name_text->size);
  put_str_to_insert(text, "\"");
}

// ---- Parsing a template ----

static a_message_piece *next_piece(a_message_piece **link)
{
  if (*link == nullptr) {
    auto *made = static_cast<a_message_piece *>(alloc_general(sizeof(a_message_piece)));
    memset(made, 0, sizeof *made);
    *link = made;
  }
  a_message_piece *piece = *link;
  a_message_piece *next = piece->next;
  a_diag_text text = piece->text;
  text.length = 0;
  *piece = {};
  piece->next = next;
  piece->text = text;
  piece->index = 1;
  return piece;
}

// What follows "%n": at most one of f, o, p, t, a; then d; then T.
static const char *parse_symbol_flags(const char *p, a_message_piece *piece)
{
  switch (*p) {
  case 'f': piece->full = true; break;
  case 'o': piece->no_kind_word = true; break;
  case 'p': piece->with_params = true; break;
  case 't': piece->full = piece->with_template_info = true; break;
  case 'a': piece->with_template_args = true; break;
  default: p--; break;
  }
  p++;
  if (*p == 'd') {
    piece->with_declared_at = true;
    p++;
  }
  if (*p == 'T') {
    piece->with_trans_unit = true;
    p++;
  }
  return p;
}

// An insert at `p`, behind the percent sign; returns what follows it, or null if it is none.
static const char *parse_insert(const char *p, a_message_piece *piece)
{
  switch (*p++) {
  case 's':
    piece->kind = piece_string;
    if (*p == 'q') {
      piece->quoted = true;
      p++;
    }
    break;
  case 't': piece->kind = piece_type; break;
  case 'p': piece->kind = piece_position; break;
  case 'n':
    piece->kind = piece_symbol;
    p = parse_symbol_flags(p, piece);
    break;
  default: return nullptr;
  }
  if (*p >= '1' && *p <= '0' + max_inserts_of_a_kind) piece->index = (unsigned char)(*p++ - '0');
  return p;
}

static void make_literal(a_message_piece *piece, const char *text, size_t length)
{
  piece->kind = piece_literal;
  piece->literal = text;
  piece->literal_length = length;
}

static void parse_template(const char *p, a_message_piece **link)
{
  while (*p != '\0') {
    a_message_piece *piece = next_piece(link);
    link = &piece->next;
    if (*p == '%') {
      if (p[1] == '%') {
        make_literal(piece, p, 1);
        p += 2;
        continue;
      }
      const char *behind = parse_insert(p + 1, piece);
      if (behind != nullptr) {
        p = behind;
        continue;
      }
    }
    size_t length = 1 + strcspn(p + 1, "%");
    make_literal(piece, p, length);
    p += length;
  }
  next_piece(link)->kind = piece_end;
}

// ---- Rendering inserts ----

static void begin_quoted(a_message_piece *piece)
{
  piece->quote_start = piece->text.length;
  put_str_to_insert(&piece->text, "\"");
}

static void end_quoted(a_message_piece *piece)
{
  put_str_to_insert(&piece->text, "\"");
  piece->quote_end = piece->text.length;
}

static void render_string(a_message_piece *piece, const char *string)
{
  if (piece->quoted) begin_quoted(piece);
  put_str_to_insert(&piece->text, string != nullptr ? string : "");
  if (piece->quoted) end_quoted(piece);
}

static void render_type(a_message_piece *piece, a_type *type)
{
  begin_quoted(piece);
  if (type != nullptr && error_hooks.form_type != nullptr)
    error_hooks.form_type(type, &piece->text);
  end_quoted(piece);
}

// "at line 3", or "at line 3 of "b.h"" in another file, relative to the message's own position.
static void render_place(a_diag_text *text, a_source_position place, a_source_position message_pos,
                         const char *before, const char *behind)
{
  if (is_null_position(place)) return;
  const char *file_name;
  const char *message_file;
  const char *full_name;
  a_line_number line;
  a_line_number message_line;
  bool at_end_of_file;
  bool message_at_end;
  conv_seq_to_file_and_line(place.seq, &file_name, &full_name, &line, &at_end_of_file);
  if (at_end_of_file) {
    if (text->length != 0) put_str_to_insert(text, " ");
    put_word(text, ec_w_at_end_of_source);
    return;
  }
  conv_seq_to_file_and_line(message_pos.seq, &message_file, &full_name, &message_line,
                            &message_at_end);
  bool other_file = strcmp(file_name, message_file) != 0;
  put_str_to_insert(text, before);
  if (line != 0) {
    char number[24];
    snprintf(number, sizeof number, "%lu", line);
    put_word(text, ec_w_at_line);
    put_str_to_insert(text, number);
  } else if (other_file) {
    put_word(text, ec_w_in);
  }
  if (other_file && strcmp(file_name, "-") != 0) {
    if (line != 0) put_word(text, ec_w_of);
    put_file_name(text, file_name);
  }
  put_str_to_insert(text, behind);
}

static void render_template_args(a_message_piece *piece, a_symbol *symbol,
                                 const void *instantiation)
{
  if (error_hooks.form_template_args == nullptr) return;
  a_diag_text list = {};
  int count = error_hooks.form_template_args(symbol, instantiation, &list);
  if (count == 0) return;
  put_str_to_insert(&piece->text, " ");
  put_word(&piece->text, count == 1 ? ec_w_based_on_argument : ec_w_based_on_arguments);
  put_str_to_insert(&piece->text, " ");
  put_to_insert(&piece->text, list.buffer, list.length);
}

static void render_trans_unit(a_diag_text *text, a_symbol *symbol)
{
  if (error_hooks.symbol_translation_unit == nullptr) return;
  const char *name = error_hooks.symbol_translation_unit(symbol);
  if (name == nullptr) return;
  put_str_to_insert(text, " (");
  put_word(text, ec_from_translation_unit);
  put_file_name(text, name);
  put_str_to_insert(text, ")");
}

static void render_symbol(a_message_piece *piece, a_symbol *symbol, const void *instantiation,
                          a_source_position message_pos)
{
  if (symbol == nullptr || error_hooks.form_symbol == nullptr) return;
  a_diag_text *text = &piece->text;
  if (!piece->no_kind_word && !piece->with_template_args) {
    an_error_code word = error_hooks.symbol_kind_word(symbol, piece->full);
    if (word != ec_no_error) {
      put_word(text, word);
      put_str_to_insert(text, " ");
    }
  }
  begin_quoted(piece);
  a_symbol_insert_flags flags = {piece->full, piece->no_kind_word, piece->with_params,
                                 piece->with_template_info, piece->with_template_args};
  error_hooks.form_symbol(symbol, flags, text);
  end_quoted(piece);
  if (piece->with_template_args) render_template_args(piece, symbol, instantiation);
  if (piece->with_declared_at) {
    render_place(text, error_hooks.symbol_position(symbol), message_pos, error_text(ec_w_declared),
                 ")");
  }
  if (piece->with_trans_unit) render_trans_unit(text, symbol);
}

static void render_piece(a_message_piece *piece, const a_diag_inserts *inserts,
                         a_source_position pos)
{
  int slot = piece->index - 1;
  switch (piece->kind) {
  case piece_literal:
  case piece_end: return;
  case piece_string: render_string(piece, inserts->st[slot]); return;
  case piece_type: render_type(piece, inserts->ty[slot]); return;
  case piece_symbol:
    render_symbol(piece, inserts->sy[slot], inserts->instantiation[slot], pos);
    return;
  case piece_position: render_place(&piece->text, inserts->pos[slot], pos, "", ""); return;
  }
  unexpected_kind("kind of message piece");
}

const a_message_piece *render_template(const char *text, const a_diag_inserts *inserts,
                                       a_source_position pos)
{
  static const a_diag_inserts no_inserts = {};
  check(rendering_depth < max_rendering_depth);
  a_message_piece **chain = &piece_chains[rendering_depth++];
  parse_template(text, chain);
  for (a_message_piece *piece = *chain; piece->kind != piece_end; piece = piece->next) {
    render_piece(piece, inserts != nullptr ? inserts : &no_inserts, pos);
  }
  return *chain;
}

void end_rendering()
{
  rendering_depth--;
}

const char *format_type_string(a_type *type, size_t *length)
{
  type_string.length = 0;
  put_str_to_insert(&type_string, "");
  if (error_hooks.form_type != nullptr) error_hooks.form_type(type, &type_string);
  if (length != nullptr) *length = type_string.length;
  return type_string.buffer;
}
