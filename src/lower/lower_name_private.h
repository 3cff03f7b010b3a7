// lower_name_private.h - what the files of the name mangler share.
#pragma once
#include "il/il.h"
#include "lower/lower_name.h"
#include "mem/mem_manage.h"

// A part of the name that a later one may refer to.
struct a_substitution {
  a_substitution *next;
  an_il_entry_kind entity_kind; // iek_type, iek_namespace, iek_template
  void *entity;
  unsigned qualifiers; // of a type
};

// One name in the making.
struct a_mangling_control_block {
  size_t length;
  size_t blanks; // to be squeezed out at the end
  a_substitution *first_substitution;
  a_substitution *last_substitution;
  bool in_array_bound;   // GNU's fault: plain numbers of bounds are written as expressions
  bool no_substitutions; // nothing is recorded
  bool incomplete;       // the module id isn't known
  bool in_template_signature;
  size_t digit_place; // of a constructor or destructor, 0 for none
};

// ---- Text (lower_name.cpp) ----

void start_mangled_name(a_mangling_control_block *mcb);
// Ends the name and returns the buffer; the text lasts until the next name begins.  Null when the
// name is incomplete.
const char *end_mangled_name(a_mangling_control_block *mcb);
// The same, with the text stored in the entity.
void finish_mangled_name(a_mangling_control_block *mcb, a_source_correspondence *corresp,
                         bool truncate);
const char *copy_mangled_text(const char *text);
void put(a_mangling_control_block *mcb, const char *text);
void put_number(a_mangling_control_block *mcb, uint64_t value);
void put_signed_number(a_mangling_control_block *mcb, int64_t value);
void put_source_name(a_mangling_control_block *mcb, const char *name);
// The ABI's form of an ordinal from 1 on: nothing, then the ordinal minus 2.
void put_ordinal(a_mangling_control_block *mcb, uint64_t ordinal);
void overwrite_with_blank(a_mangling_control_block *mcb, size_t place);
char mangled_character_at(const a_mangling_control_block *mcb, size_t place);
// A reference to an earlier part: true when one was written.
bool put_substitution(a_mangling_control_block *mcb, an_il_entry_kind kind, void *entity,
                      unsigned qualifiers);
void add_substitution(a_mangling_control_block *mcb, an_il_entry_kind kind, void *entity,
                      unsigned qualifiers);
// The front end's module id, or null and the name is marked incomplete.
const char *module_id_for_name(a_mangling_control_block *mcb);

// ---- Entities (lower_name_entity.cpp) ----

bool is_std_namespace(const a_namespace *name_space);
// The class, or scoped enum, that the entity is a member of, else null.
a_type *parent_type_of(const a_source_correspondence *corresp);
void put_encoding(a_mangling_control_block *mcb, a_routine *routine);
void put_type_name(a_mangling_control_block *mcb, a_type *type);
// Variables, constants, fields, templates.
void put_entity_name(a_mangling_control_block *mcb, an_il_entry_kind kind, void *entity);
void put_operator_code(a_mangling_control_block *mcb, unsigned char opname, bool unary);
const char *first_named_field_name(a_type *type);
// Which of the entities of its name in the routine it is, from 1 on.
uint64_t ordinal_in_routine(an_il_entry_kind kind, const void *entity);

// ---- Types (lower_name_type.cpp) ----

void put_type(a_mangling_control_block *mcb, a_type *type);
// The parameters, and "v" for none, "z" for an ellipsis.
void put_param_types(a_mangling_control_block *mcb, a_type *routine_type);
void put_qualifiers(a_mangling_control_block *mcb, unsigned qualifiers);

// ---- Template arguments and expressions (lower_name_expr.cpp) ----

void put_template_args(a_mangling_control_block *mcb, a_template_arg *args);
void put_expression(a_mangling_control_block *mcb, an_expr_node *expr);
void put_constant_expression(a_mangling_control_block *mcb, a_constant *constant);
void put_template_param_number(a_mangling_control_block *mcb, int position);
