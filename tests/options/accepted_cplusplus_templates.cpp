// options: --old_specializations --no_old_specializations --implicit_extern_c_type_conversion
// options: --no_implicit_extern_c_type_conversion --extern_inline --no_extern_inline --enum_overloading
// options: --no_enum_overloading --nonstd_qualifier_deduction --no_nonstd_qualifier_deduction --late_tiebreaker
// options: --early_tiebreaker --class_name_injection --no_class_name_injection --arg_dep_lookup --no_arg_dep_lookup
// options: --friend_injection --no_friend_injection --nonstd_using_decl --no_nonstd_using_decl --parse_templates
// options: --no_parse_templates --dep_name --no_dep_name --ignore_std --type_traits_helpers --auto_type
// options: --no_auto_type --auto_storage --pch --pch_dir=. --create_pch=x.pch --use_pch=x.pch -P
// proves: the options of C++ are taken there
taken
