// source_entities.h - the IL's records of source files and of the map from sequence numbers to lines.
// They are made by lex/source_input.cpp; the roots are il_header's source_files and seq_number_lookup_list.
#pragma once
#include "il/il_fwd.h"
#include "lex/source_position.h"

typedef unsigned long a_line_number;

// One for each inclusion of a file, and one for each change of the file name by a line directive.
struct a_source_file {
  const char *file_name;        // the name to print
  const char *full_name;        // the physical file; null in an entry that a line directive made
  const char *name_as_written;  // in the #include or on the command line
  a_seq_number first_seq_number;
  a_seq_number last_seq_number;     // set at the end of the file
  a_line_number first_line_number;  // 1, or what the line directive says
  a_source_file *first_child;       // files entered from this one, in order of entry
  a_source_file *last_child;
  a_source_file *next_sibling;  // for a top-level entry the next primary file
  bool is_include_file : 1;
  bool is_angle_bracket_include : 1;
  bool is_preinclude : 1;
  bool is_macro_preinclude : 1;
  bool is_system_header : 1;
  bool is_top_level : 1;
};

inline constexpr a_seq_number open_seq_number = (a_seq_number)-1;  // last number of an open segment

// A stretch of sequence numbers whose lines follow each other in one file.
struct a_seq_number_lookup_entry {
  a_seq_number_lookup_entry *next;
  a_seq_number first_seq_number;
  a_seq_number last_seq_number;  // open_seq_number while lines are still added
  a_line_number first_line_number;
  a_source_file *source_file;
};
