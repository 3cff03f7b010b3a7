// options: --multibyte_chars -P
// proves: multibyte characters pass
char *s = "é";
