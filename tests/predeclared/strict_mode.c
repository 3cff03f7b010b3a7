/* options: --strict */
/* proves: outside the GNU modes there are no GNU built-ins */
int (*add2)(int, int) = _add2;
int *p = __builtin_strlen; /* expect: error undefined_identifier */
