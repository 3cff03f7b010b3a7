// lookup.h - from a locator to the symbol that the name means.
// Every lookup stores its result in locator->symbol and returns the entity behind it (a projection's
// projected symbol), null when nothing is found; none issues diagnostics but the rule of an extern
// declaration gone out of scope (using_out_of_scope_declaration).
#pragma once
#include <cstdint>

#include "il/il_fwd.h"
#include "lex/source_position.h"
#include "parse/symbol_tbl.h"

enum a_lookup_option : unsigned {
  lo_none                       = 0,
  lo_nested_name_qualifier      = 0x1,
  lo_tag                        = 0x2,
  lo_type_only                  = 0x4,
  lo_skip_first_scope           = 0x8,
  lo_skip_class_scopes          = 0x10,
  lo_find_hidden                = 0x20,
  lo_keep_projections           = 0x40,
  lo_namespace_only             = 0x200,
  lo_type_expected              = 0x400,
  lo_class_only                 = 0x800,
  lo_no_base_classes            = 0x1000,
  lo_template_name              = 0x2000,
  lo_friend_decl                = 0x4000,
  lo_tag_typedef_as_type        = 0x8000,
  lo_no_conversion_search       = 0x10000,
  lo_strict_typedefs            = 0x20000,
  lo_skip_template_decl_scopes  = 0x40000,
  lo_no_projection              = 0x100000,
  lo_no_seq_limit               = 0x200000,
  lo_dependent_conversions      = 0x400000,
  lo_tag_typedef_counts         = 0x1000000,
  lo_no_real_symbol             = 0x4000000,
  lo_gnu_hidden_friends         = 0x8000000
};

a_symbol *normal_id_lookup(a_symbol_locator *locator, unsigned options);
// Only the scope of decl_scope_level, for redeclaration checks.
a_symbol *curr_scope_id_lookup(a_symbol_locator *locator, unsigned options);
a_symbol *file_scope_id_lookup(a_scope *scope, a_symbol_locator *locator, unsigned options);
// C: the member of a struct or union, members of anonymous ones included.
a_symbol *class_qualified_id_lookup(a_symbol_locator *locator, a_type *class_type, unsigned options);
a_symbol *namespace_qualified_id_lookup(a_symbol_locator *locator, a_namespace *name_space,
                                        unsigned options);
a_symbol *enum_qualified_id_lookup(a_symbol_locator *locator, a_type *enum_type);

bool sym_matches_lookup_options(a_symbol *symbol, unsigned options);
uint32_t f_get_effective_decl_seq();

// Types whose classes and namespaces a call looks in; region 0.
struct an_arg_dependent_type_list {
  an_arg_dependent_type_list *next;
  a_type *type;
};
void add_to_arg_dependent_lookup_list(a_type *type, an_arg_dependent_type_list **list);
// The functions of the name: `symbol` alone (or null) when the types bring none beside it, else the one
// function or a synthesized set that holds all.
a_symbol *argument_dependent_lookup(a_symbol *symbol, a_symbol_locator *locator,
                                    an_arg_dependent_type_list *types);
a_symbol *opname_function_symbol(unsigned opname_kind);
a_symbol *any_opname_function_symbol(unsigned opname_kind);
a_symbol *opname_member_function_symbol(unsigned opname_kind, a_type *class_type);
a_symbol *look_up_conversion_function(a_type *class_type, a_type *type, a_source_position *position);

bool symbols_are_lookup_equivalent(a_symbol *a, a_symbol *b, bool extern_c_equal, unsigned options);
a_symbol *find_projected_symbol(a_type *class_type, a_symbol_locator *locator, unsigned options);

// A use of an ambiguous result is error ambiguous_name; the locator is cleared then.  Returns true
// when the name is ambiguous.
bool f_check_for_ambiguity(a_symbol_locator *locator, bool ok_if_overload, bool report);
void f_check_ambiguity_and_verify_access(a_symbol_locator *locator, bool ok_if_overload,
                                         a_type *class_type, bool *failed);
bool have_access_to_symbol(a_symbol *symbol);
bool have_member_access_privilege(a_type *class_type);
bool have_protected_member_access_privilege(a_type *class_type);
bool is_accessible_base_class(a_base_class *base);
void perform_deferred_access_checks_at_depth(int depth);
void f_discard_deferred_access_checks();
a_type *proxy_class_for_template_param(a_type *type);

void lookup_one_time_init();
