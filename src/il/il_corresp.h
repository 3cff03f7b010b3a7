// il_corresp.h - the head that all entries with a name or a place in the source share.
#pragma once
#include "il/il_enums.h"
#include "il/il_fwd.h"
#include "lex/source_position.h"

struct a_decl_position_supplement {
  a_source_range specifiers_range;
  a_source_range declarator_range;
  a_source_range whole_range;
};

// The set of corresponding entries of several translation units.
struct a_trans_unit_corresp {
  void *canonical;             // the canonical entry of the set
  void *primary;               // the entry of the primary unit
};

struct a_source_correspondence {
  a_symbol *assoc_symbol;      // no IL pointer: cleared when the IL is handed on
  const char *name;            // source name, null for unnamed entities
  const char *internal_name;   // external or mangled name, or one fixed by other means
  a_trans_unit_corresp *trans_unit_corresp;
  a_scope *parent_scope;       // null while has_local_scope_ref is set: use get_parent_scope_of
  a_routine *enclosing_routine;
  a_source_position decl_position;
  a_decl_position_supplement *decl_position_supplement;
  a_name_reference *name_reference;
  // First byte of corresp_flags.
  bool is_lambda_entity : 1;
  bool name_is_mangled : 1;    // internal_name is a mangled name
  bool referenced : 1;
  bool needed : 1;
  unsigned name_linkage : 2;   // a_name_linkage_kind
  bool is_compiler_generated_name : 1;
  bool is_local : 1;
  // Second byte.
  bool has_local_scope_ref : 1;
  bool is_class_member : 1;
  bool name_is_fixed : 1;
  bool is_nameless : 1;
  bool has_promoted_name : 1;
  unsigned access : 2;         // an_access_specifier, of members
  bool has_local_expr_ref : 1;
  // Third byte.
  bool is_system_header_entity : 1;
  bool has_local_decl_expr_ref : 1;
  bool name_used_in_output : 1;
  bool is_renamed_for_output : 1;
  bool assoc_pragmas_present : 1;
  bool is_deprecated : 1;
  bool is_instance : 1;
  bool marked_in_instantiation : 1;
  // Fourth byte.
  bool name_was_truncated : 1;     // the mangled name was cut and ends in a checksum
  bool name_needs_final_check : 1; // it waits for do_final_name_mangling
  bool name_is_generated : 1;      // made up for an unnamed class, enum or namespace
  bool name_is_externalized : 1;   // it carries the module id
  bool lowered : 1;                // lowering has rewritten the entry
  int scope_depth;             // -1: unknown
  a_per_instantiation_needed_flags_entry *per_instantiation_needed_flags;
  an_attribute *attributes;
};
