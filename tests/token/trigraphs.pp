# 1 "trigraphs.c"



[ ] { } | ^ ~ "\n" spliced
