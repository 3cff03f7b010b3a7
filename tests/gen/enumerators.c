// options: --gcc
// proves: a value is written only where it isn't the next one
enum e { A, B, C = 5, D, E = -2, F, G = 0x7fffffff };
enum e x = D;
