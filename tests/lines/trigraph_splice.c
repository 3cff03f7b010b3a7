// options: --strict --no_brief_diagnostics --diag_suppress=illegal_end_of_line_comment
// proves: behind a line continued by a trigraph, positions are those of the next physical line
int x;??/
int @;
int y??(??/
??/
  @ ??);
