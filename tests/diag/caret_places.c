// options: -E --no_brief_diagnostics --trigraphs
// proves: trigraphs show as three characters, a splice ends the line shown, columns count as written
??=undef A trigraph
#undef \
A splice
#undef A ??( ??/
  tri??(graph
#if 1
#undef A /* comment */ behind
#endif
