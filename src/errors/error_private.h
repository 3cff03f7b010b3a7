// error_private.h - what the files of the error engine share.
#pragma once
#include "errors/error.h"
#include "mem/mem_manage.h"

enum a_diagnostic_part : unsigned char {
  dp_complete,     // a whole diagnostic
  dp_start,        // first part of one in several parts
  dp_added_line,   // a further line, indented by 12
  dp_end,          // closes it; no text
  dp_context_line, // a context line, indented by 10
  dp_context_end   // closes the context lines; no text
};

inline constexpr int max_inserts_of_a_kind = 3;

// The insert slots.  An empty slot renders as nothing.
struct a_diag_inserts {
  const char *st[max_inserts_of_a_kind] = {};
  a_type *ty[max_inserts_of_a_kind] = {};
  a_source_position pos[max_inserts_of_a_kind] = {};
  a_symbol *sy[max_inserts_of_a_kind] = {};
  const void *instantiation[max_inserts_of_a_kind] = {};
};

// Everything that a call says.
struct a_diagnostic {
  an_error_code code;
  an_error_severity severity;
  a_diagnostic_part part;
  a_source_position pos;
  const char *text;              // the template; null: the catalogue's
  const a_diag_inserts *inserts; // null: none
};

// error.cpp: the one road of all diagnostics.
void issue_diagnostic(const a_diagnostic &diagnostic);

// ---- error_severity.cpp ----

// Decides on the severity and whether the diagnostic is shown.  For the parts behind a start the
// decision for the start holds; `pos` and `severity` become those in force.
bool diagnostic_is_shown(an_error_code code, a_diagnostic_part part, an_error_severity *severity,
                         a_source_position *pos);
an_error_severity effective_severity(an_error_code code, an_error_severity severity,
                                     a_source_position pos);
void severity_init();

// ---- error_render.cpp ----

struct a_diag_text {
  char *buffer;
  size_t length;
  size_t capacity;
};

enum a_piece_kind : unsigned char {
  piece_literal,
  piece_string,
  piece_type,
  piece_symbol,
  piece_position,
  piece_end
};

// A stretch of a parsed template.  Pieces are kept and reused from one message to the next.
struct a_message_piece {
  a_message_piece *next;
  a_piece_kind kind;
  unsigned char index;   // of the insert, 1 to 3
  bool quoted : 1;       // %sq
  bool full : 1;         // %nf, %nt
  bool no_kind_word : 1; // %no
  bool with_params : 1;  // %np
  bool with_template_info : 1;
  bool with_template_args : 1;
  bool with_declared_at : 1;
  bool with_trans_unit : 1;
  a_diag_text text;    // the rendered insert
  const char *literal; // piece_literal: into the template
  size_t literal_length;
  size_t quote_start; // the part of the text that stays on one line
  size_t quote_end;
};

// Parses and renders a template.  The pieces belong to the engine.
const a_message_piece *render_template(const char *text, const a_diag_inserts *inserts,
                                       a_source_position pos);
// Renderings nest when printing a type reports something itself.
void end_rendering();

inline const char *text_of_piece(const a_message_piece *piece)
{
  return piece->kind == piece_literal ? piece->literal : piece->text.buffer;
}
inline size_t length_of_piece(const a_message_piece *piece)
{
  return piece->kind == piece_literal ? piece->literal_length : piece->text.length;
}

// ---- error_output.cpp ----

// Writes one part.  With in_context_lines, context lines follow: the closing blank line is held
// back.
void output_diagnostic(const a_diagnostic &diagnostic, const a_message_piece *pieces,
                       bool in_context_lines);
// What follows the last part: after a fatal one, or too many errors, the run ends.
void end_diagnostic(const a_diagnostic &diagnostic, bool in_context_lines);
void output_init();
