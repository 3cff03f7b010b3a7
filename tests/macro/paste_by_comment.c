// options: -E --svr4
#define paste(a, b) a/**/b  // expect: warning svr4_token_pasting_comment
paste(1, 2)
