// options: --remarks
// proves: what isn't required is read in silence (C99 6.6)
#if 0 && (1 / 0) || 1
#elif 1 / 0
#endif
#if 1 || NAME || 5 % 0
int a;
#endif
#if 1 ? 2 : 1 / 0
int b;
#endif
#if 0 ? NAME << 70 : 1
int c;
#endif
#if NAME  // expect: remark undefined_preproc_id
#endif
