// lower_name_special.cpp - names of what lowering makes or moves: virtual function tables, run-time
// type information, thunks, alternate entries, entities that leave their function or their unit.
// Entry:   mangled_vtbl_name, mangle_wrapper_name, mangle_promoted_entity_name,
//          externalize_mangled_name.
#include <cstdio>
#include <cstring>

#include "il/il_alloc.h"
#include "lower/lower_il.h"
#include "lower/lower_name_private.h"

static uint32_t length_of(const char *text)
{
  return (uint32_t)strlen(text);
}

// --- Alternate entries ---------------------------------------------------------------------------

void mangle_alternate_entry_point_name(a_routine *alternate, a_routine *routine)
{
  static const char digits[] = {'1', '1', '2', '0'};
  a_source_correspondence *corresp = &alternate->source_corresp;
  mangle_function_name(routine);
  const char *name = routine->source_corresp.internal_name;
  if (name == nullptr || routine->mangled_name_length == 0) return;
  char *text = const_cast<char *>(copy_mangled_text(name));
  unsigned kind = alternate->special.ctor_dtor_kind;
  text[routine->mangled_name_length] = digits[kind <= 3 ? kind : 1];
  corresp->name = routine->source_corresp.name;
  corresp->internal_name = text;
  corresp->name_is_mangled = true;
  corresp->is_nameless = false;
  corresp->name_was_truncated = routine->source_corresp.name_was_truncated;
  alternate->mangled_name_length = routine->mangled_name_length;
}

// --- Thunks --------------------------------------------------------------------------------------

static void put_adjustment(a_mangling_control_block *mcb, const a_pointer_adjustment &adjustment)
{
  put(mcb, adjustment.vcall_index != 0 ? "v" : "h");
  put_signed_number(mcb, adjustment.delta);
  put(mcb, "_");
  if (adjustment.vcall_index == 0) return;
  put_signed_number(mcb, adjustment.vcall_index * (int64_t)vtbl_entry_size());
  put(mcb, "_");
}

void mangle_wrapper_name(a_routine *thunk, const a_thunk_description *description)
{
  a_mangling_control_block mcb;
  start_mangled_name(&mcb);
  put(&mcb, description->is_covariant ? "_ZTc" : "_ZT");
  put_adjustment(&mcb, description->this_adjustment);
  if (description->is_covariant) put_adjustment(&mcb, description->result_adjustment);
  const a_source_correspondence &target = description->target->source_corresp;
  if (target.name_is_mangled && strncmp(target.internal_name, "_Z", 2) == 0)
    put(&mcb, target.internal_name + 2);
  else
    put_encoding(&mcb, description->target);
  finish_mangled_name(&mcb, &thunk->source_corresp, true);
}

// --- Classes and their tables --------------------------------------------------------------------

const char *mangled_class_name(a_type *class_type)
{
  a_mangling_control_block mcb;
  start_mangled_name(&mcb);
  put_type_name(&mcb, skip_typerefs(class_type));
  return copy_mangled_text(end_mangled_name(&mcb));
}

void mangle_subobject_class_name(a_type *class_type, a_type *subobject_type)
{
  a_mangling_control_block mcb;
  start_mangled_name(&mcb);
  put(&mcb, "__SO__");
  put_type_name(&mcb, skip_typerefs(class_type));
  finish_mangled_name(&mcb, &subobject_type->source_corresp, true);
}

// A base that is there more than once: "__A" and, from the second on, which one it is.
static void put_base_occurrence(a_mangling_control_block *mcb, a_type *class_type,
                                a_base_class *base)
{
  unsigned ordinal = 0, count = 0;
  bool has_virtual = false;
  for (a_base_class *other = class_supplement_of(class_type)->base_classes; other != nullptr;
       other = other->next) {
    if (skip_typerefs(other->type) != skip_typerefs(base->type)) continue;
    count++;
    if (other->is_virtual) has_virtual = true;
    if (other == base) ordinal = count;
  }
  if (count < 2) return;
  put(mcb, "__A");
  if (ordinal > 1 && !(has_virtual && !base->is_virtual && count == 2))
    put_number(mcb, ordinal - 1);
}

// The classes on the way from the top to the base.
static void put_base_path_name(a_mangling_control_block *mcb, a_type *class_type,
                               a_base_class *base)
{
  a_base_class_derivation *derivation = base->derivations;
  a_derivation_step *step = derivation == nullptr ? nullptr : derivation->path;
  if (step == nullptr) put_type_name(mcb, skip_typerefs(base->type));
  for (; step != nullptr; step = step->next)
    put_type_name(mcb, skip_typerefs(step->base->type));
  put_base_occurrence(mcb, class_type, base);
}

const char *mangled_vtbl_name(a_type *class_type, a_base_class *base,
                              a_base_class *construction_base)
{
  class_type = skip_typerefs(class_type);
  a_mangling_control_block mcb;
  start_mangled_name(&mcb);
  mcb.no_substitutions = true; // the parts don't follow the grammar
  put(&mcb, "_ZTV");
  if (base != nullptr) {
    put_base_path_name(&mcb, class_type, base);
    put(&mcb, "__");
  }
  if (construction_base != nullptr) {
    put_base_path_name(&mcb, class_type, construction_base);
    put(&mcb, "__");
  }
  put_type_name(&mcb, class_type);
  return copy_mangled_text(end_mangled_name(&mcb));
}

// "_Z", the letters, the type.
static const char *special_name(const char *letters, a_type *type)
{
  a_mangling_control_block mcb;
  start_mangled_name(&mcb);
  put(&mcb, letters);
  put_type(&mcb, type);
  return copy_mangled_text(end_mangled_name(&mcb));
}

const char *mangled_virtual_table_table_name(a_type *class_type)
{
  return special_name("_ZTT", class_type);
}

const char *mangled_typeinfo_name(a_type *type)
{
  return special_name("_ZTI", type);
}

const char *mangled_typeinfo_string(a_type *type)
{
  return special_name("", type);
}

const char *mangled_typeinfo_string_name(a_type *type)
{
  return special_name("_ZTS", type);
}

// --- Entities that leave their unit --------------------------------------------------------------

static const char *old_name_of(a_source_correspondence *corresp, void *entity, bool is_variable,
                               char *address_text, size_t size)
{
  if (corresp->internal_name != nullptr) return corresp->internal_name;
  if (corresp->name != nullptr) return corresp->name;
  const char *name = nullptr;
  if (is_variable) name = first_named_field_name(static_cast<a_variable *>(entity)->type);
  if (name != nullptr) return name;
  snprintf(address_text, size, "%p", entity);
  return address_text;
}

void externalize_mangled_name(void *entity, bool is_variable)
{
  a_source_correspondence *corresp = static_cast<a_source_correspondence *>(entity);
  if (corresp->name_is_externalized) return;
  char address_text[32];
  const char *old_name =
      old_name_of(corresp, entity, is_variable, address_text, sizeof address_text);
  uint32_t old_length = length_of(old_name);
  a_mangling_control_block mcb;
  start_mangled_name(&mcb);
  put(&mcb, "_ZB");
  put_source_name(&mcb, module_id_for_name(&mcb));
  if (strncmp(old_name, "_Z", 2) == 0)
    put(&mcb, old_name + 2);
  else
    put_source_name(&mcb, old_name);
  uint32_t added = (uint32_t)mcb.length - old_length;
  bool complete = !mcb.incomplete;
  finish_mangled_name(&mcb, corresp, true);
  if (!complete) return;
  corresp->name_is_externalized = true;
  if (is_variable) return;
  a_routine *routine = static_cast<a_routine *>(entity);
  if (routine->mangled_name_length != 0) routine->mangled_name_length += added;
}

// --- Entities that leave their function ----------------------------------------------------------

static bool is_string_variable(a_variable *variable)
{
  return variable->init_kind == initk_static &&
         constant_initializer_of(variable)->kind == ck_string;
}

// Which of the nameless strings of the scope it is, from 1 on.
static uint64_t ordinal_of_string(a_variable *string, a_scope *scope)
{
  uint64_t ordinal = 1;
  for (a_variable *variable = scope->variables; variable && variable != string;
       variable = variable->next)
    if (variable->source_corresp.name == nullptr && is_string_variable(variable)) ordinal++;
  return ordinal;
}

static void put_promoted_variable(a_mangling_control_block *mcb, a_variable *variable,
                                  a_scope *scope)
{
  a_source_correspondence *corresp = &variable->source_corresp;
  const char *name = corresp->name;
  if (name == nullptr) name = first_named_field_name(variable->type);
  if (name == nullptr) {
    put(mcb, "s");
    uint64_t ordinal = scope == nullptr ? 1 : ordinal_of_string(variable, scope);
    if (ordinal > 1) put(mcb, "_");
    put_ordinal(mcb, ordinal);
    return;
  }
  put_source_name(mcb, name);
  uint64_t ordinal = ordinal_in_routine(iek_variable, variable);
  if (ordinal > 1) put(mcb, "_");
  put_ordinal(mcb, ordinal);
}

static void put_promoted_type(a_mangling_control_block *mcb, a_type *type)
{
  a_type *outer = parent_class_of(&type->source_corresp);
  const char *name = type->source_corresp.name;
  if (outer != nullptr) {
    put(mcb, "N");
    put_source_name(mcb, outer->source_corresp.name == nullptr ? "" : outer->source_corresp.name);
  }
  put_source_name(mcb, name == nullptr ? "" : name);
  if (outer != nullptr) {
    put(mcb, "E");
    return;
  }
  uint64_t ordinal = ordinal_in_routine(iek_type, type);
  if (ordinal > 1) put(mcb, "_");
  put_ordinal(mcb, ordinal);
}

void mangle_promoted_entity_name(void *entity, an_il_entry_kind kind, bool truncate,
                                 a_routine *routine, a_scope *scope)
{
  a_source_correspondence *corresp = static_cast<a_source_correspondence *>(entity);
  if (corresp->name_is_mangled) return;
  a_mangling_control_block mcb;
  start_mangled_name(&mcb);
  put(&mcb, "_Z");
  if (routine->source_corresp.name_is_externalized) {
    put(&mcb, "B");
    put_source_name(&mcb, module_id_for_name(&mcb));
  }
  put(&mcb, "Z");
  put_encoding(&mcb, routine);
  put(&mcb, "E");
  if (kind == iek_type)
    put_promoted_type(&mcb, static_cast<a_type *>(entity));
  else
    put_promoted_variable(&mcb, static_cast<a_variable *>(entity), scope);
  finish_mangled_name(&mcb, corresp, truncate);
  corresp->has_promoted_name = true;
}
