// options: --exceptions --rtti --no_bool --no_wchar_t_keyword --no_array_new_and_delete --embedded_c++ --using_std
// options: --uliterals --no_type_traits_helpers -P
// proves: the feature macros of C++ follow the options, which beat the g++ mode
cplusplus __cplusplus bool _BOOL wchar _WCHAR_T array __ARRAY_OPERATORS exceptions __EXCEPTIONS
rtti __rtti_enabled__ embedded __embedded_cplusplus std __ZOK_IMPLICIT_USING_STD
traits __ZOK_TYPE_TRAITS_ENABLED u __CHAR16_T_AND_CHAR32_T text __VERSION__
