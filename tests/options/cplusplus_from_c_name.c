// options: -p --g++ --no_rtti --no_exceptions -P
// proves: --c++ beats the suffix
cplusplus __cplusplus exceptions __EXCEPTIONS
