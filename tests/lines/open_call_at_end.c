// proves: a call, a conditional and a comment that are open where the file ends, each with its message
#define f(x) x
#if 1
int a = f(1 /* open