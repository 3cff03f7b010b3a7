// options: --instantiate=used --ii_file=x.ii --template_info_file=x.ti --definition_list_file=x.dl
// options: --instantiation_dir=. --one_instantiation_per_object --pending_instantiations=10 --auto_instantiation
// options: --no_auto_instantiation --suppress_instantiation_flags -V --force_vtbl --extern_c_can_throw
// options: --anachronisms --no_anachronisms --wchar_t_keyword --bool --array_new_and_delete --explicit
// options: --no_explicit --namespaces --no_namespaces --typename --no_typename --implicit_typename
// options: --no_implicit_typename --special_subscript_cost --no_special_subscript_cost --old_for_init --new_for_init
// options: --for_init_diff_warning --no_for_init_diff_warning --guiding_decls --no_guiding_decls
// options: -P
// proves: the options of C++ are taken there
taken
