// options: --no_trigraphs -P --diag_suppress=trigraph_ignored
// proves: three characters stay what they are
a ??( b
