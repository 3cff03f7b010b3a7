// options: --no_g++ -P
// proves: plain C++ has the standard's macros
cplusplus __cplusplus bool _BOOL wchar _WCHAR_T array __ARRAY_OPERATORS exceptions __EXCEPTIONS
rtti __rtti_enabled__ text __VERSION__
