// error_source.cpp - the source line that a diagnostic shows.
// Owns:    the buffer of the line shown.
// Uses:    the current line and the file index (source_input), the host for reading a file again.
// Rule:    what reading changed is undone: trigraphs, splices and replaced text show as they were
//          written.
#include "errors/error_private.h"
#include <cstring>
#include "driver/host_envir.h"
#include "lex/source_input.h"
#include "mem/check.h"

static constexpr size_t initial_line_size = 200;
static constexpr size_t line_increment = 1000;

static char *shown_line;
static size_t size_of_shown_line;
static size_t length_of_shown_line;

static void put_char(char c)
{
  if (length_of_shown_line == size_of_shown_line) {
    size_t new_size =
        size_of_shown_line == 0 ? initial_line_size : size_of_shown_line + line_increment;
    shown_line = realloc_buffer(shown_line, size_of_shown_line, new_size);
    size_of_shown_line = new_size;
  }
  shown_line[length_of_shown_line++] = c == '\0' || c == '\r' ? ' ' : c;
}

// ---- The current line ----

// Where the physical line `seq` starts in the line buffer; *modif gets the first record behind
// that. Null if the current logical line doesn't hold it.
static const char *start_of_physical_line(a_seq_number seq, const an_orig_line_modif **modif)
{
  *modif = orig_line_modif_list;
  if (seq == curr_seq_number) return curr_source_line;
  for (; *modif != nullptr; *modif = (*modif)->next) {
    const an_orig_line_modif *record = *modif;
    bool is_line_end = record->kind == olm_splice || record->kind == olm_newline_in_string;
    if (!is_line_end || record->variant.seq != seq) continue;
    *modif = record->next;
    return record->location + (record->kind == olm_newline_in_string ? 2 : 0);
  }
  return nullptr;
}

// The character that the source has at `loc`, where a modification may have overwritten it.
static char source_char(const char *loc)
{
  return *loc == modif_mark ? assoc_source_line_modif(loc)->saved_char : *loc;
}

// Shows what the record at `*loc` replaced and moves behind it; false at the end of the physical
// line.
static bool copy_modif(const an_orig_line_modif *modif, const char **loc)
{
  switch (modif->kind) {
  case olm_trigraph:
    put_char('?');
    put_char('?');
    put_char(modif->variant.character);
    ++*loc;
    // A backslash written as a trigraph may itself have been taken out, by a splice.
    return modif->next == nullptr || modif->next->location != modif->location;
  case olm_null_char:
    put_char(' ');
    *loc += 2; // an escape of two bytes
    return true;
  case olm_splice: put_char('\\'); return false;
  case olm_newline_in_string: return false;
  }
  unexpected_kind("kind of line modification");
}

static bool copy_current_line(a_seq_number seq)
{
  const an_orig_line_modif *modif;
  const char *loc = start_of_physical_line(seq, &modif);
  if (loc == nullptr) return false;
  length_of_shown_line = 0;
  for (;;) {
    if (modif != nullptr && modif->location == loc) {
      if (!copy_modif(modif, &loc)) return true;
      modif = modif->next;
      continue;
    }
    char c = source_char(loc);
    if (c == '\0') {
      if (loc[1] == lesc_newline || loc[1] == lesc_end_of_buffer) return true;
      loc += 2;
      continue;
    }
    put_char(c);
    loc++;
  }
}

// ---- A line that has been left behind ----

struct a_line_place {
  a_source_file *file;
  a_line_number line;
};

static bool find_left_behind_line(a_seq_number seq, a_line_place *place)
{
  bool at_end_of_file = false;
  conv_seq_to_physical_file_and_line(seq, &place->file, &place->line, &at_end_of_file);
  return place->file != nullptr && place->line != 0 && !at_end_of_file &&
         place->file->full_name != nullptr && strcmp(place->file->full_name, "-") != 0;
}

// Positions the stream at the start of the wanted line.
static bool seek_line(FILE *stream, const a_line_place &place)
{
  a_line_number line = 0;
  long offset = 0;
  look_up_file_index(place.file, place.line - 1, &line, &offset);
  if (fseek(stream, offset, SEEK_SET) != 0) return false;
  int c = 0;
  while (line < place.line - 1 && c != EOF) {
    c = getc_unlocked(stream);
    if (c == '\n') line++;
  }
  return c != EOF;
}

static bool read_left_behind_line(const a_line_place &place)
{
  a_unicode_source_kind_tag kind;
  FILE *stream = reopen_source_file(place.file->full_name, &kind);
  if (stream == nullptr) return false;
  length_of_shown_line = 0;
  bool found = seek_line(stream, place);
  if (found) {
    int c;
    size_t end_of_text = 0; // carriage returns in front of the newline are part of the line's end
    while ((c = getc_unlocked(stream)) != EOF && c != '\n') {
      put_char(char(c));
      if (c != '\r') end_of_text = length_of_shown_line;
    }
    length_of_shown_line = end_of_text;
    found = c != EOF || length_of_shown_line != 0;
  }
  fclose(stream);
  return found;
}

bool source_line_of_position(a_source_position pos, bool only_if_cheap, const char **text,
                             size_t *length)
{
  *text = nullptr;
  *length = 0;
  bool is_current = pos.seq >= curr_seq_number && pos.seq <= seq_number_last_read &&
                    !no_more_input && !at_end_of_source_file && curr_source_line != nullptr;
  if (is_current && only_if_cheap) return true;
  if (!is_current || !copy_current_line(pos.seq)) {
    a_line_place place;
    if (!find_left_behind_line(pos.seq, &place)) return false;
    if (only_if_cheap) return true;
    if (!read_left_behind_line(place)) return false;
  }
  *text = shown_line;
  *length = length_of_shown_line;
  return true;
}
