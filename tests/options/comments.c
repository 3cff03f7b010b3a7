// options: -C --no_preproc_only
// proves: comments stay in the preprocessed text
int a; /* kept */
int b; // kept, too
