// options: -E
// proves: a comment that isn't closed is reported at its start, and the file's end ends it
int x; /* expect: error comment_unclosed_at_eof
   /* nested expect: warning nested_comment
