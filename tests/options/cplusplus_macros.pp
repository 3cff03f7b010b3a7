


cplusplus 1 bool _BOOL wchar _WCHAR_T array __ARRAY_OPERATORS exceptions 1
rtti 1 embedded 1 std 1
traits __ZOK_TYPE_TRAITS_ENABLED u 1 text "ZOK g++ 4.3 mode"
