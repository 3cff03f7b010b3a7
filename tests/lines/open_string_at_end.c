// proves: a string that is open where the file ends without a newline
char *s = "abc