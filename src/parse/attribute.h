// attribute.h - attributes: reading them in their three syntaxes, checking what they stand on, and
// applying them.
#pragma once
#include <cstdint>

#include "il/il_enums.h"
#include "il/il_fwd.h"
#include "lex/source_position.h"

enum an_attribute_kind : unsigned char {
  ak_dropped,                  // a record that later passes skip
  ak_empty,                    // an empty slot in a standard list
#define ATTRIBUTE_KIND(kind, entities, handler) kind,
#include "parse/attributes.def"
  ak_last
};

// Where a list stood.  Only al_decl_start, al_specifiers and al_tag accept __declspec.
enum an_attribute_location_tag : unsigned char {
  al_none,
  al_decl_start = 1,           // start of a declaration
  al_tag = 2,                  // behind class, struct, union, enum
  al_after_body = 3,           // behind a class or enum body
  al_base_specifier = 4,
  al_specifiers = 5,
  al_declarator = 6,           // behind a pointer operator or inside a declarator
  al_label = 7,
  al_statement = 8,
  al_parameter = 9,
  al_after_declarator = 10
};

// Reads the attribute groups at the current token (none: returns null).  Issues what concerns names
// and arguments; unknown attributes get 1173 and are left out.
an_attribute *scan_attributes(an_attribute_location_tag location);
an_attribute *scan_gnu_attribute_groups(an_attribute_location_tag location);
// The next scan_attributes returns this list, with its own location.
void unscan_attributes(an_attribute *list);
// Skips attribute groups without looking at them.
void skip_over_attributes();

// Checks each attribute of the list against the entity and applies it; the list is appended to the
// entity's.  Returns the entity, which for a type may be a new one.
void *attach_attributes(an_attribute *list, void *entity, an_il_entry_kind entity_kind,
                        a_decl_parse_state *state);
// The attributes of the list that make a type different (aligned, mode, may_alias, vector_size, and
// function attributes on function types) are applied to *type, which may become a new type.
void attach_type_attributes(a_type **type, an_attribute *list, a_decl_parse_state *state);
// Attributes of a class or enum head or tail.  Without a body only what may stand there is applied.
void attach_tag_attributes(an_attribute *list, a_type *type, a_decl_parse_state *state,
                           bool is_definition);
// Moves the attributes of the specifiers' type list that concern the declared entity to
// state->specifiers_attributes.
void separate_decl_attributes(a_decl_parse_state *state);

// Takes the attributes that change the type off the list and returns them.
an_attribute *take_type_attributes(an_attribute **list);

an_attribute **f_last_attribute_link(an_attribute **list);
an_attribute *f_find_attribute(an_attribute_kind kind, an_attribute *list);
void mark_primary_decl_attributes(an_attribute *list);
void report_bad_attribute_target(an_attribute *attribute, an_il_entry_kind kind);
an_attribute *copy_of_attributes_list(an_attribute *list);
// `b`'s attributes that `a` lacks, appended to a copy of `a`.
an_attribute *composite_attributes(an_attribute *a, an_attribute *b);
bool equivalent_attributes(an_attribute *a, an_attribute *b, bool ignore_arguments);
void copy_gnu_type_properties(a_type *to, a_type *from);
// The type of the mode word; `type` with 1175, 1164 or 1165 when there is none.
a_type *get_type_with_mode(a_type *type, const char *mode, a_source_position position);
bool packed_attribute_allowed_on_type(a_type *type);
an_elf_visibility ELF_visibility_from_string(const char *text);
const char *deprecation_message_of(an_attribute *list);

// Declares that a routine or variable is an alias; targets are resolved at the end of the file.
void add_alias_fixup(void *entity, an_il_entry_kind kind, an_attribute *attribute);
void process_alias_fixup_list();

void attribute_init();
void attribute_trans_unit_init();
