// options: --no_gcc --no_variadic_macros --no_extended_variadic_macros --no_designators --no_extended_designators
// options: --no_compound_literals --trigraphs -P
// proves: a trigraph is replaced
a ??( b
