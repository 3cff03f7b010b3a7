

cplusplus __cplusplus version 199409L
