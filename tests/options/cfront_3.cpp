// options: --cfront_3.0 --no_auto_storage -P
// proves: cfront 3.0 sets its mode
cplusplus __cplusplus
