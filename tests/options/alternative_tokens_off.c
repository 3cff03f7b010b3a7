// options: --no_alternative_tokens --variadic_macros --extended_variadic_macros --no_check_concatenations -P
// proves: digraphs are two tokens each; GNU macros take named rests
#define f(x, rest...) g(x, ## rest)
f(1) f(1, 2) %: <: :>
