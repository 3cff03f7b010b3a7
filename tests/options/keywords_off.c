// options: --no_restrict --no_nonstd_gnu_keywords --no_intrinsics
// proves: words that options take from the keywords are names
int restrict;
int typeof;
int _extu;
