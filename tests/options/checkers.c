// options: --check_misra=none --advice:power=none --advice:power_severity=suppress --ulp_standalone_mode=none -P
// proves: the checkers' options are read
read
