// options: -m -P
// proves: --c beats the suffix
cplusplus __cplusplus version __STDC_VERSION__
