// options: --diag_warning=no_such_tag
// status: 4
// proves: a tag that no message has
int x;
