

char *s = "é";
