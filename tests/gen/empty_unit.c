// options: --gcc
// proves: an empty unit gives banner, marker variable and memory routines, and nothing else
