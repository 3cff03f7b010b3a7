// options: --no_gcc --extended_designators --compound_literals --variadic_macros --extended_variadic_macros
// options: --trigraphs --alternative_tokens
// proves: GNU extensions can be had outside the GNU mode
#define f(x, rest...) x, ## rest
struct s { int a, b; };
struct s s = { b: f(1) };
int a<:3:> = { [0 ... 1] = 2 };
