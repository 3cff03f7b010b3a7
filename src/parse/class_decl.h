// class_decl.h - class, struct, union: heads, bodies, members.
#pragma once
#include <cstdint>

#include "il/il_enums.h"
#include "il/il_fwd.h"
#include "lex/source_position.h"
#include "parse/decl_spec.h"

// What is known of a class while its body is read.
struct a_class_scan_state {
  a_type *class_type;
  unsigned current_access : 2;
  bool not_aggregate : 1;
  bool not_pod : 1;
  bool needs_constructor_for_member : 1;
  bool has_flexible_array_member : 1;
  bool needs_default_constructor : 1;
  bool field_has_destructor : 1;
  bool base_has_destructor : 1;
  bool any_named_member : 1;
  a_field *last_field;
  a_source_position flexible_array_position;
};

// Reads a class specifier whose class, struct or union keyword is the current token: head, and body
// if there is one.  `options` are those of decl_specifiers.  Returns the type, never null; sets
// sf_defines_type and state->tag_locator.
a_type *class_specifier(uint32_t options, a_decl_parse_state *state, a_decl_pos_block *pos_block);

// Finds or makes the type of a tag.  `kind` is sk_class_or_struct_tag, sk_union_tag or sk_enum_tag;
// `type_kind` the kind for a new class.  is_definition: a body (or enum list) follows; is_alone: a
// `;` follows, which redeclares the tag in the inner scope (C99 6.7.2.3p7).
a_type *find_or_enter_tag(a_symbol_locator *locator, unsigned char kind, a_type_kind type_kind,
                          bool is_definition, bool is_alone, a_decl_parse_state *state);

// Reads base clause and body at the current `:` or `{`; false when no body was there.
bool scan_class_definition(a_type *class_type, a_decl_parse_state *state,
                           a_decl_pos_block *pos_block);
// Promotes the members of an anonymous union or struct into the scope that holds it.
void check_anonymous_union_symbols(a_symbol *symbol, a_type *type, bool in_class);
a_symbol *make_anonymous_parent_object_symbol(a_variable *variable, a_source_position *position);

void process_deferred_class_fixups_and_instantiations(a_type *class_type);

// An unnamed class or enum takes the name of the typedef that declares it.
void give_typedef_name_to_tag(a_type *type, a_symbol_locator *locator);

void class_decl_init();
