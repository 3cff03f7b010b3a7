// attribute.cpp - attributes on entities: what each may stand on, lists, copies.
// Rule:    an attribute that may not stand where it does becomes ak_dropped and stays in the list.
// Entry:   attach_attributes, attach_type_attributes, attach_tag_attributes.
#include "parse/attribute.h"

#include <cstring>

#include "driver/flags.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "parse/attribute_private.h"
#include "parse/decl_spec.h"
#include "parse/scope_stk.h"

//---------------------------------------------------------------------------------------------
// Lists.

an_attribute **f_last_attribute_link(an_attribute **list)
{
  while (*list)
    list = &(*list)->next;
  return list;
}

an_attribute *f_find_attribute(an_attribute_kind kind, an_attribute *list)
{
  for (; list; list = list->next) {
    if (list->kind == kind) return list;
  }
  return nullptr;
}

static an_attribute *copy_of_attribute(const an_attribute *attribute)
{
  an_attribute *copy = alloc_attribute();
  *copy = *attribute;
  copy->next = nullptr;
  return copy;
}

an_attribute *copy_of_attributes_list(an_attribute *list)
{
  an_attribute *first = nullptr;
  an_attribute **link = &first;
  for (; list; list = list->next) {
    *link = copy_of_attribute(list);
    link = &(*link)->next;
  }
  return first;
}

static bool same_arguments(const an_attribute_arg *a, const an_attribute_arg *b)
{
  for (; a && b; a = a->next, b = b->next) {
    if (a->kind != b->kind) return false;
    if (a->kind == aak_constant && !eq_constants(a->variant.constant, b->variant.constant)) {
      return false;
    }
    if (a->kind == aak_name && strcmp(a->variant.text, b->variant.text) != 0) return false;
    if (a->kind == aak_type && !identical_types(a->variant.type, b->variant.type)) return false;
  }
  return a == b;
}

bool equivalent_attributes(an_attribute *a, an_attribute *b, bool ignore_arguments)
{
  return a->kind == b->kind && (ignore_arguments || same_arguments(a->args, b->args));
}

an_attribute *composite_attributes(an_attribute *a, an_attribute *b)
{
  an_attribute *result = copy_of_attributes_list(a);
  an_attribute **link = f_last_attribute_link(&result);
  for (; b; b = b->next) {
    bool known = false;
    for (an_attribute *old = a; old && !known; old = old->next) {
      known = equivalent_attributes(old, b, false);
    }
    if (known) continue;
    *link = copy_of_attribute(b);
    link = &(*link)->next;
  }
  return result;
}

void mark_primary_decl_attributes(an_attribute *list)
{
  for (; list; list = list->next)
    list->is_shared = true;
}

void report_bad_attribute_target(an_attribute *attribute, an_il_entry_kind kind)
{
  // GNU C ignores it on a type that it doesn't help to define.
  bool defines_tag = attribute->location == al_tag || attribute->location == al_after_body;
  bool is_ignored = attribute->syntax == asy_gnu && kind == iek_type && !defines_tag;
  pos_st_diagnostic(is_ignored ? es_warning : es_error, ec_wrong_entity_for_attribute,
                    attribute->position, attribute->name);
  attribute->kind = ak_dropped;
}

void copy_gnu_type_properties(a_type *to, a_type *from)
{
  to->is_unused |= from->is_unused;
  to->may_alias |= from->may_alias;
  to->source_corresp.is_deprecated |= from->source_corresp.is_deprecated;
}

const char *string_argument(const an_attribute *attribute)
{
  const an_attribute_arg *arg = attribute->args;
  if (arg == nullptr || arg->kind != aak_constant || arg->variant.constant->kind != ck_string) {
    return nullptr;
  }
  return string_of(arg->variant.constant).text;
}

const char *name_argument(const an_attribute *attribute)
{
  const an_attribute_arg *arg = attribute->args;
  return arg && arg->kind == aak_name ? arg->variant.text : nullptr;
}

const char *deprecation_message_of(an_attribute *list)
{
  an_attribute *attribute = f_find_attribute(ak_deprecated, list);
  return attribute ? string_argument(attribute) : nullptr;
}

//---------------------------------------------------------------------------------------------
// What an attribute may stand on.

static char entity_letter(const void *entity, an_il_entry_kind kind)
{
  switch (kind) {
  case iek_variable: return 'v';
  case iek_routine: return 'r';
  case iek_field: return 'd';
  case iek_label: return 'l';
  case iek_namespace: return 'n';
  case iek_param_type: return 'p';
  case iek_using_decl: return 'u';
  case iek_type: {
    const a_type *type = (const a_type *)entity;
    if (kind_has_class_part(type->kind)) return 'c';
    if (type->kind == tk_integer && as_integer(type).is_enum) return 'e';
    return 't';
  }
  default: return '0';
  }
}

static bool has_external_linkage(const a_source_correspondence *corresp)
{
  return !corresp->is_local && corresp->name_linkage != nlk_none &&
         corresp->name_linkage != nlk_internal;
}

struct a_condition_codes {
  an_error_code refused, required;
};

// Whether the condition with that letter holds of the entity, and its messages.
static bool condition_holds(char letter, const void *entity, an_il_entry_kind kind,
                            a_condition_codes *codes)
{
  const a_variable *variable = kind == iek_variable ? (const a_variable *)entity : nullptr;
  const a_routine *routine = kind == iek_routine ? (const a_routine *)entity : nullptr;
  switch (letter) {
  case 'a':
    *codes = {ec_attr_disallows_automatic_storage, ec_attr_requires_automatic_storage};
    return variable &&
           (variable->storage_class == sc_auto || variable->storage_class == sc_register);
  case 'r':
    *codes = {ec_attr_disallows_register_storage, ec_attr_requires_register_storage};
    return variable && variable->declared_register;
  case 'l':
    *codes = {ec_attribute_does_not_apply_to_local_variable, ec_attr_requires_local_variable};
    return variable && variable->source_corresp.is_local && !variable->is_external_in_block;
  case 'x':
    *codes = {ec_attr_disallows_external_linkage, ec_attribute_requires_external_linkage};
    return variable ? has_external_linkage(&variable->source_corresp)
                    : routine && has_external_linkage(&routine->source_corresp);
  case 'm':
    *codes = {ec_attr_disallows_member_function, ec_attr_requires_member_function};
    return routine && routine->source_corresp.is_class_member;
  case 'v':
    *codes = {ec_attr_disallows_virtual_function, ec_attr_requires_virtual_function};
    return routine && routine->is_virtual;
  case 'p':
    *codes = {ec_attr_disallows_pure_virtual_function, ec_attr_requires_pure_virtual_function};
    return routine && routine->is_pure_virtual;
  case 'i':
    *codes = {ec_attr_disallows_inline, ec_attr_requires_inline};
    return routine && routine->is_inline;
  case 'b':
    *codes = {ec_attr_disallows_bit_field, ec_attr_requires_bit_field};
    return kind == iek_field && ((const a_field *)entity)->is_bit_field;
  default: *codes = {ec_wrong_entity_for_attribute, ec_wrong_entity_for_attribute}; return true;
  }
}

// The conditions behind a `:`; false when one fails, which is reported.
static bool conditions_hold(an_attribute *attribute, const char *conditions, const void *entity,
                            an_il_entry_kind kind)
{
  while (*conditions == '+' || *conditions == '-') {
    bool required = *conditions == '+';
    a_condition_codes codes;
    bool holds = condition_holds(conditions[1], entity, kind, &codes);
    bool is_error = conditions[2] == '!';
    if (holds != required) {
      pos_st_diagnostic(is_error ? es_error : es_warning, required ? codes.required : codes.refused,
                        attribute->position, attribute->name);
      attribute->kind = ak_dropped;
      return false;
    }
    conditions += is_error ? 3 : 2;
  }
  return true;
}

// Tests the entity against the alternatives of the kind's string.
static bool may_stand_on(an_attribute *attribute, const char *alternatives, const void *entity,
                         an_il_entry_kind kind)
{
  char letter = entity_letter(entity, kind);
  for (const char *p = alternatives; *p; ++p) {
    bool warn = *p == 'W';
    if (warn) ++p;
    char wanted = *p == 'T' ? 't' : *p;
    // What applies to types applies to classes and enumerations that are being defined, too.
    if (wanted == letter) {
      if (warn) {
        pos_st_warning(ec_wrong_entity_for_attribute, attribute->position, attribute->name);
        attribute->kind = ak_dropped;
        return false;
      }
      return p[1] != ':' || conditions_hold(attribute, p + 2, entity, kind);
    }
    while (*p && *p != '|')
      ++p;
    if (*p == '\0') break;
  }
  report_bad_attribute_target(attribute, kind);
  return false;
}

//---------------------------------------------------------------------------------------------
// Attaching.

static an_attribute **attribute_list_of(void *entity, an_il_entry_kind kind)
{
  if (kind == iek_param_type) return &((a_param_type *)entity)->attributes;
  if (kind == iek_using_decl) return &((a_using_decl *)entity)->attributes;
  a_source_correspondence *corresp = source_corresp_for_il_entry(entity, kind);
  return corresp ? &corresp->attributes : nullptr;
}

void *attach_attributes(an_attribute *list, void *entity, an_il_entry_kind entity_kind,
                        a_decl_parse_state *state)
{
  if (list == nullptr) return entity;
  an_attribute **own = attribute_list_of(entity, entity_kind);
  if (own) *f_last_attribute_link(own) = list;
  for (an_attribute *attribute = list; attribute; attribute = attribute->next) {
    if (attribute->kind <= ak_empty) continue;
    const an_attribute_kind_description &description = attribute_kind_descriptions[attribute->kind];
    if (description.entities &&
        !may_stand_on(attribute, description.entities, entity, entity_kind)) {
      continue;
    }
    if (description.handler) {
      entity = description.handler(attribute, entity, entity_kind, state);
    }
  }
  return entity;
}

// The attributes of the specifiers concern the declared entity, but for those that name a type.
void separate_decl_attributes(a_decl_parse_state *state)
{
  an_attribute **link = &state->type_attributes;
  an_attribute **last = f_last_attribute_link(&state->specifiers_attributes);
  while (*link) {
    an_attribute *attribute = *link;
    if (attribute->is_type_attribute) {
      link = &attribute->next;
      continue;
    }
    *link = attribute->next;
    attribute->next = nullptr;
    *last = attribute;
    last = &attribute->next;
  }
}

an_attribute *take_type_attributes(an_attribute **list)
{
  an_attribute *taken = nullptr;
  an_attribute **last = &taken;
  while (*list) {
    an_attribute *attribute = *list;
    if (!attribute->is_type_attribute) {
      list = &attribute->next;
      continue;
    }
    *list = attribute->next;
    attribute->next = nullptr;
    *last = attribute;
    last = &attribute->next;
  }
  return taken;
}

static bool makes_new_type(const an_attribute *attribute)
{
  return attribute->kind == ak_may_alias || attribute->kind == ak_aligned ||
         attribute->kind == ak_align;
}

void attach_type_attributes(a_type **type, an_attribute *list, a_decl_parse_state *state)
{
  while (list) {
    an_attribute *attribute = list;
    list = attribute->next;
    attribute->next = nullptr;
    if (attribute->kind <= ak_empty || is_error_type(*type)) continue;
    if (attribute->kind == ak_mode) {
      const char *word = name_argument(attribute);
      if (word) *type = get_type_with_mode(*type, word, attribute->position);
    } else if (makes_new_type(attribute)) {
      a_type *copy = make_typeref_with_attributes(*type, attribute);
      const an_attribute_kind_description &description =
          attribute_kind_descriptions[attribute->kind];
      *type = (a_type *)description.handler(attribute, copy, iek_type, state);
    }
  }
}

void attach_tag_attributes(an_attribute *list, a_type *type, a_decl_parse_state *state,
                           bool is_definition)
{
  if (list == nullptr) return;
  if (is_definition) {
    attach_attributes(list, type, iek_type, state);
    return;
  }
  pos_warning(is_enum_type(type) ? ec_extended_modifier_ignored_on_enum
                                 : ec_attribute_ignored_on_incomplete_class_decl,
              list->position);
}

bool packed_attribute_allowed_on_type(a_type *type)
{
  type = skip_typerefs(type);
  return kind_has_class_part(type->kind) || is_enum_type(type);
}

an_elf_visibility ELF_visibility_from_string(const char *text)
{
  static const char *const names[] = {"hidden", "protected", "internal", "default"};
  for (int i = 0; i < 4; ++i) {
    if (strcmp(text, names[i]) == 0) return (an_elf_visibility)(vis_hidden + i);
  }
  return vis_unspecified;
}
