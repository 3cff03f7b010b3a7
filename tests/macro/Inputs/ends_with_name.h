#define f(x) <x>
int f