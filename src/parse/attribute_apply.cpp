// attribute_apply.cpp - what attributes do: one handler for each effect.
// Rule:    a handler reports what is wrong with the arguments and changes nothing then.
// See:     attributes.def for the kinds that share a handler.
#include <cstring>

#include "consts/const_ints.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/pragma.h"
#include "lex/sections.h"
#include "parse/attribute_private.h"
#include "parse/decl_spec.h"
#include "parse/layout.h"
#include "parse/lookup.h"
#include "parse/qn_pragma.h"
#include "parse/scope_stk.h"
#include "parse/symbol_ref.h"

//---------------------------------------------------------------------------------------------
// Arguments.

static void invalid_argument(an_attribute *attribute)
{
  a_source_position position = attribute->args ? attribute->args->position : attribute->position;
  pos_st_error(ec_invalid_argument_to_attribute, position, attribute->name);
  attribute->kind = ak_dropped;
}

static bool number_of_arg(const an_attribute_arg *arg, long long *value)
{
  if (arg == nullptr || arg->kind != aak_constant || arg->variant.constant->kind != ck_integer) {
    return false;
  }
  bool overflow = false;
  *value = value_of_integer_constant(arg->variant.constant, &overflow);
  return !overflow;
}

//---------------------------------------------------------------------------------------------
// Alignment.

// The alignment that the attribute asks for; false after a message.
static bool requested_alignment(an_attribute *attribute, uint32_t *alignment)
{
  const an_attribute_arg *arg = attribute->args;
  if (arg == nullptr) {
    *alignment = targ_maximum_intrinsic_alignment;
    return true;
  }
  if (arg->kind == aak_type) {
    a_type *type = arg->variant.type;
    if (is_error_type(type)) return false;
    if (is_function_type(type) || is_incomplete_type(type)) {
      pos_error(is_function_type(type) ? ec_function_type_not_allowed
                                       : ec_incomplete_type_not_allowed,
                arg->position);
      return false;
    }
    *alignment = f_alignment_of_type(type);
    return true;
  }
  if (arg->kind != aak_constant || arg->variant.constant->kind != ck_integer) return false;
  if (check_pack_alignment_value(arg->variant.constant, alignment)) return true;
  pos_error(ec_bad_attribute_alignment, arg->position);
  return false;
}

static void align_field(an_attribute *attribute, a_field *field, uint32_t alignment)
{
  if (attribute->syntax == asy_standard && alignment < f_alignment_of_type(field->type)) {
    pos_error(ec_invalid_alignment_reducing_attr, attribute->position);
    return;
  }
  if (alignment > field->declared_alignment) field->declared_alignment = alignment;
}

static void align_variable(an_attribute *attribute, a_variable *variable, uint32_t alignment)
{
  if (variable->declared_register && attribute->syntax != asy_declspec) {
    pos_st_error(ec_attr_disallows_register_storage, attribute->position, attribute->name);
    attribute->kind = ak_dropped;
    return;
  }
  if (alignment < f_alignment_of_type(variable->type) && attribute->syntax != asy_gnu) {
    pos_error(ec_invalid_alignment_reducing_attr, attribute->position);
    return;
  }
  if (alignment > variable->alignment) variable->alignment = alignment;
}

// GNU: functions came to `aligned` late.
static void align_routine(an_attribute *attribute, a_routine *routine, uint32_t alignment)
{
  if (attribute->syntax == asy_gnu && gnu_version < 40300) {
    report_bad_attribute_target(attribute, iek_routine);
    return;
  }
  if (alignment > routine->alignment) routine->alignment = alignment;
}

// A class takes the alignment at its layout, a typedef carries it itself.
static void align_type(a_type *type, uint32_t alignment)
{
  if (kind_has_class_part(type->kind) && type->alignment_was_declared &&
      type->alignment > alignment) {
    return;
  }
  type->alignment = alignment;
  type->alignment_was_declared = true;
}

static void *apply_aligned(an_attribute *attribute, void *entity, an_il_entry_kind kind,
                           a_decl_parse_state *)
{
  uint32_t alignment = 0;
  if (!requested_alignment(attribute, &alignment)) {
    attribute->kind = ak_dropped;
    return entity;
  }
  switch (kind) {
  case iek_field: align_field(attribute, (a_field *)entity, alignment); break;
  case iek_variable: align_variable(attribute, (a_variable *)entity, alignment); break;
  case iek_type: align_type((a_type *)entity, alignment); break;
  case iek_routine: align_routine(attribute, (a_routine *)entity, alignment); break;
  default: report_bad_attribute_target(attribute, kind); break;
  }
  return entity;
}

static void *apply_packed(an_attribute *attribute, void *entity, an_il_entry_kind kind,
                          a_decl_parse_state *)
{
  bool packed = attribute->kind == ak_packed;
  if (kind == iek_field) {
    a_field *field = (a_field *)entity;
    field->is_packed_field = packed;
    if (packed && !is_error_type(field->type)) {
      field->type = f_make_qualified_type(field->type, tq_packed, -1);
    }
  } else if (kind == iek_type) {
    a_type *type = (a_type *)entity;
    if (kind_has_class_part(type->kind)) {
      as_class(type).is_packed = packed;
    } else if (type->kind == tk_integer && as_integer(type).is_enum) {
      as_integer(type).enum_is_packed = packed;
    }
  }
  return entity;
}

//---------------------------------------------------------------------------------------------
// Flags.

static void set_routine_flag(a_routine *routine, an_attribute_kind kind)
{
  switch (kind) {
  case ak_always_inline: routine->always_inline = true; break;
  case ak_artificial: routine->is_artificial = true; break;
  case ak_cold: routine->is_cold = true; break;
  case ak_const: routine->is_const_attr = true; break;
  case ak_constructor: routine->is_constructor_attr = true; break;
  case ak_destructor: routine->is_destructor_attr = true; break;
  case ak_externally_visible: routine->externally_visible = true; break;
  case ak_flatten: routine->is_flatten = true; break;
  case ak_gnu_inline: routine->gnu_inline = true; break;
  case ak_hot: routine->is_hot = true; break;
  case ak_malloc: routine->is_malloc = true; break;
  case ak_no_instrument_function: routine->no_instrument = true; break;
  case ak_no_check_memory_usage: routine->no_check_memory_usage = true; break;
  case ak_noinline: routine->no_inline = true; break;
  case ak_nothrow: routine->is_nothrow = true; break;
  case ak_pure: routine->is_pure = true; break;
  case ak_warn_unused_result: routine->warn_unused_result = true; break;
  default: break;
  }
}

static void *apply_routine_flag(an_attribute *attribute, void *entity, an_il_entry_kind kind,
                                a_decl_parse_state *state)
{
  if (kind != iek_routine) return entity;
  a_routine *routine = (a_routine *)entity;
  bool declared_inline = state != nullptr && (state->specifier_flags & sf_is_inline);
  if (attribute->kind == ak_gnu_inline && !routine->is_inline && !declared_inline) {
    pos_warning(ec_gnu_inline_requires_inline, attribute->position);
    attribute->kind = ak_dropped;
    return entity;
  }
  set_routine_flag(routine, (an_attribute_kind)attribute->kind);
  return entity;
}

static void *apply_noreturn(an_attribute *, void *entity, an_il_entry_kind kind,
                            a_decl_parse_state *)
{
  if (kind == iek_routine) ((a_routine *)entity)->is_noreturn = true;
  return entity;
}

static void *apply_variable_flag(an_attribute *attribute, void *entity, an_il_entry_kind kind,
                                 a_decl_parse_state *)
{
  if (kind != iek_variable) return entity;
  a_variable *variable = (a_variable *)entity;
  switch (attribute->kind) {
  case ak_nocommon: variable->no_common = true; break;
  case ak_common: variable->is_common = true; break;
  case ak_thread: variable->is_thread_local = true; break;
  default: break;
  }
  return entity;
}

static void *apply_unused(an_attribute *, void *entity, an_il_entry_kind kind, a_decl_parse_state *)
{
  switch (kind) {
  case iek_variable: ((a_variable *)entity)->is_unused = true; break;
  case iek_routine: ((a_routine *)entity)->is_unused = true; break;
  case iek_field: ((a_field *)entity)->is_unused = true; break;
  case iek_param_type: ((a_param_type *)entity)->is_unused = true; break;
  case iek_label: ((a_label *)entity)->is_unused = true; break;
  case iek_type: ((a_type *)entity)->is_unused = true; break;
  default: break;
  }
  return entity;
}

static void *apply_used(an_attribute *, void *entity, an_il_entry_kind kind, a_decl_parse_state *)
{
  if (kind == iek_variable) {
    ((a_variable *)entity)->is_used = true;
  } else if (kind == iek_routine) {
    ((a_routine *)entity)->is_used = true;
  }
  return entity;
}

static void *apply_deprecated(an_attribute *, void *entity, an_il_entry_kind kind,
                              a_decl_parse_state *)
{
  a_source_correspondence *corresp = source_corresp_for_il_entry(entity, kind);
  if (corresp) corresp->is_deprecated = true;
  return entity;
}

static void *apply_may_alias(an_attribute *, void *entity, an_il_entry_kind kind,
                             a_decl_parse_state *)
{
  if (kind == iek_type) ((a_type *)entity)->may_alias = true;
  return entity;
}

// A mode on an enumeration sets its kind; on other types it was applied before.
static void *apply_mode(an_attribute *attribute, void *entity, an_il_entry_kind kind,
                        a_decl_parse_state *)
{
  if (kind != iek_type) return entity;
  a_type *type = (a_type *)entity;
  const char *word = name_argument(attribute);
  if (word == nullptr || type->kind != tk_integer || !as_integer(type).is_enum) return entity;
  a_type *integer = get_type_with_mode(integer_type(ik_int), word, attribute->position);
  integer = skip_typerefs(integer);
  if (integer->kind != tk_integer) return entity;
  as_integer(type).int_kind = as_integer(integer).int_kind;
  as_integer(type).underlying_is_fixed = true;
  if (as_integer(type).enum_supplement == nullptr) {
    as_integer(type).enum_supplement = alloc_fs_entry<an_enum_type_supplement>();
  }
  as_integer(type).enum_supplement->underlying_type = integer;
  return entity;
}

//---------------------------------------------------------------------------------------------
// Placement and visibility.

static void *apply_section(an_attribute *attribute, void *entity, an_il_entry_kind kind,
                           a_decl_parse_state *)
{
  const char *name = string_argument(attribute);
  if (name == nullptr) return entity;
  if (kind == iek_variable) {
    set_variable_section_specification((a_variable *)entity, secspec_attribute, name,
                                       attribute->position);
  } else if (kind == iek_routine) {
    set_routine_section_specification((a_routine *)entity, secspec_attribute, name,
                                      attribute->position);
  }
  return entity;
}

// Null for an entity that has no declaration in the source.
static a_symbol *symbol_of_entity(void *entity, an_il_entry_kind kind)
{
  return source_corresp_for_il_entry(entity, kind)->assoc_symbol;
}

static void *apply_noinit_persistent(an_attribute *attribute, void *entity, an_il_entry_kind kind,
                                     a_decl_parse_state *)
{
  a_symbol *symbol = symbol_of_entity(entity, kind);
  if (kind != iek_variable || symbol == nullptr) return entity;
  a_pending_pragma *pragma = pragma_for_attribute(
      attribute->kind == ak_noinit ? pragk_noinit : pragk_persistent, &attribute->position);
  pragma_noinit_persistent_backend(pragma, symbol, true);
  free_pending_pragma(pragma);
  return entity;
}

static void *apply_location(an_attribute *attribute, void *entity, an_il_entry_kind kind,
                            a_decl_parse_state *)
{
  long long value = 0;
  if (!number_of_arg(attribute->args, &value)) {
    invalid_argument(attribute);
    return entity;
  }
  const a_constant *address = attribute->args->variant.constant;
  if (kind == iek_variable) {
    ((a_variable *)entity)->location =
        copy_string_to_region(true, str_for_integer_constant(address));
  }
  if (a_symbol *symbol = symbol_of_entity(entity, kind)) {
    a_pending_pragma *pragma = pragma_for_attribute(pragk_location, &attribute->position);
    pragma_location_backend(pragma, symbol, address, true);
    free_pending_pragma(pragma);
  }
  return entity;
}

static void *apply_visibility(an_attribute *attribute, void *entity, an_il_entry_kind kind,
                              a_decl_parse_state *)
{
  const char *word = string_argument(attribute);
  if (word == nullptr) return entity;
  an_elf_visibility visibility = ELF_visibility_from_string(word);
  if (visibility == vis_unspecified) {
    pos_st_error(ec_unrecognized_visibility, attribute->position, word);
    return entity;
  }
  unsigned old = vis_unspecified;
  if (kind == iek_variable) {
    old = ((a_variable *)entity)->visibility;
    ((a_variable *)entity)->visibility = visibility;
  } else if (kind == iek_routine) {
    old = ((a_routine *)entity)->visibility;
    ((a_routine *)entity)->visibility = visibility;
  } else if (kind == iek_namespace) {
    ((a_namespace *)entity)->visibility = visibility;
  }
  if (old != vis_unspecified && old != (unsigned)visibility) {
    pos_warning(ec_gnu_visibility_conflict, attribute->position);
  }
  return entity;
}

static void *apply_weak(an_attribute *, void *entity, an_il_entry_kind kind, a_decl_parse_state *)
{
  if (kind == iek_variable) {
    ((a_variable *)entity)->weak_state = ws_weak;
  } else if (kind == iek_routine) {
    ((a_routine *)entity)->weak_state = ws_weak;
  }
  return entity;
}

static void *apply_tls_model(an_attribute *attribute, void *entity, an_il_entry_kind kind,
                             a_decl_parse_state *)
{
  static const char *const models[] = {"global-dynamic", "local-dynamic", "initial-exec",
                                       "local-exec"};
  const char *word = string_argument(attribute);
  bool known = false;
  for (const char *model : models)
    known |= word && strcmp(word, model) == 0;
  if (!known) {
    pos_error(ec_bad_tls_model_attr_arg, attribute->position);
    return entity;
  }
  if (kind != iek_variable) return entity;
  for (an_attribute *old = ((a_variable *)entity)->source_corresp.attributes;
       old && old != attribute; old = old->next) {
    if (old->kind != ak_tls_model) continue;
    const char *old_word = string_argument(old);
    if (old_word && strcmp(old_word, word) != 0) {
      pos_error(ec_inconsistent_tls_model_attr_arg, attribute->position);
    }
  }
  return entity;
}

//---------------------------------------------------------------------------------------------
// Aliases, cleanup, unions.

static void *apply_alias(an_attribute *attribute, void *entity, an_il_entry_kind kind,
                         a_decl_parse_state *)
{
  bool is_weakref = attribute->kind == ak_weakref;
  if (kind == iek_routine) {
    a_routine *routine = (a_routine *)entity;
    if (in_function_scope() && !is_weakref) {
      pos_st_warning(ec_local_function_attribute_ignored, attribute->position, attribute->name);
      return entity;
    }
    if (is_weakref) routine->weak_state = ws_weakref;
  } else if (kind == iek_variable && is_weakref) {
    ((a_variable *)entity)->weak_state = ws_weakref;
  }
  if (string_argument(attribute)) add_alias_fixup(entity, kind, attribute);
  return entity;
}

// The function takes one pointer, to which the object's address converts.
static bool is_cleanup_function(a_symbol *symbol)
{
  if (symbol == nullptr || !is_routine_symbol(symbol)) return false;
  a_type *type = skip_typerefs(routine_of_symbol(symbol)->type);
  if (type->kind != tk_routine) return false;
  a_routine_type_supplement *supplement = routine_supplement_of(type);
  if (!supplement->is_prototyped) return true;
  a_param_type *param = supplement->param_types;
  return param && param->next == nullptr && is_pointer_type(param->type);
}

static void *apply_cleanup(an_attribute *attribute, void *entity, an_il_entry_kind kind,
                           a_decl_parse_state *)
{
  if (kind != iek_variable) return entity;
  a_variable *variable = (a_variable *)entity;
  const char *name = name_argument(attribute);
  if (variable->storage_class != sc_auto && variable->storage_class != sc_register) {
    pos_warning(ec_attribute_cleanup_requires_automatic_storage, attribute->position);
    return entity;
  }
  a_symbol_locator locator = cleared_locator;
  locator.position = attribute->args->position;
  find_symbol(name, (uint32_t)strlen(name), &locator);
  a_symbol *symbol = normal_id_lookup(&locator, lo_type_only);
  if (!is_cleanup_function(symbol)) {
    pos_st_error(ec_invalid_cleanup_routine, locator.position, name);
    return entity;
  }
  record_symbol_reference(4, symbol, &locator.position);
  variable->cleanup_routine = routine_of_symbol(symbol);
  variable->source_corresp.needed = true; // the call happens even if nothing else uses the object
  return entity;
}

static void *apply_transparent_union(an_attribute *attribute, void *entity, an_il_entry_kind kind,
                                     a_decl_parse_state *)
{
  if (kind != iek_type) return entity;
  a_type *type = skip_typerefs((a_type *)entity);
  if (type->kind != tk_union) {
    pos_warning(ec_transparent_type_is_not_union, attribute->position);
    return entity;
  }
  // A union that is still being read is tested by its layout.
  if (as_class(type).layout_done && !check_transparent_union(type, attribute->position)) {
    return entity;
  }
  as_class(type).is_transparent_union = true;
  return entity;
}

//---------------------------------------------------------------------------------------------
// Parameters of functions.

static a_type *routine_type_of(void *entity, an_il_entry_kind kind)
{
  a_type *type = nullptr;
  switch (kind) {
  case iek_routine: type = ((a_routine *)entity)->type; break;
  case iek_variable: type = ((a_variable *)entity)->type; break;
  case iek_field: type = ((a_field *)entity)->type; break;
  case iek_type: type = (a_type *)entity; break;
  default: return nullptr;
  }
  type = skip_typerefs(type);
  if (type->kind == tk_pointer) type = skip_typerefs(type_pointed_to(type));
  return type->kind == tk_routine ? type : nullptr;
}

static void *apply_nonnull(an_attribute *attribute, void *entity, an_il_entry_kind kind,
                           a_decl_parse_state *)
{
  a_type *type = routine_type_of(entity, kind);
  if (type == nullptr || !routine_supplement_of(type)->is_prototyped) return entity;
  a_param_type *params = routine_supplement_of(type)->param_types;
  if (attribute->args == nullptr) {
    for (a_param_type *param = params; param; param = param->next) {
      if (is_pointer_type(param->type)) return entity;
    }
    pos_warning(ec_no_pointer_parameters, attribute->position);
    return entity;
  }
  for (an_attribute_arg *arg = attribute->args; arg; arg = arg->next) {
    long long number = 0;
    if (!number_of_arg(arg, &number)) continue;
    a_param_type *param = params;
    for (long long i = 1; param && i < number; ++i)
      param = param->next;
    if (number < 1 || param == nullptr) {
      if (number < 1 || !routine_supplement_of(type)->has_ellipsis) {
        pos_error(ec_nonnull_parameter_number_too_large, arg->position);
      }
    } else if (!is_pointer_type(param->type) && !is_error_type(param->type) &&
               !is_class_struct_union_type(param->type)) {
      pos_error(ec_nonnull_on_nonpointer, arg->position);
    }
  }
  return entity;
}

// The word names a family of functions; the numbers are checked at calls.
static void *apply_format(an_attribute *attribute, void *entity, an_il_entry_kind,
                          a_decl_parse_state *)
{
  static const char *const families[] = {"printf",     "scanf",     "strftime",    "strfmon",
                                         "gnu_printf", "gnu_scanf", "gnu_strftime"};
  const char *word = name_argument(attribute);
  if (word == nullptr) return entity;
  size_t length = strlen(word);
  bool decorated =
      length > 4 && memcmp(word, "__", 2) == 0 && memcmp(word + length - 2, "__", 2) == 0;
  if (decorated) {
    word = copy_string_of_length_to_region(true, word + 2, length - 4);
    attribute->args->variant.text = word;
  }
  bool known = false;
  for (const char *family : families)
    known |= strcmp(word, family) == 0;
  if (!known) {
    pos_st_warning(ec_invalid_argument_to_attribute, attribute->args->position, attribute->name);
    attribute->kind = ak_dropped;
  }
  return entity;
}

static void *apply_alloc_size(an_attribute *attribute, void *entity, an_il_entry_kind kind,
                              a_decl_parse_state *)
{
  a_type *type = routine_type_of(entity, kind);
  if (type == nullptr) return entity;
  long long count = 0;
  for (a_param_type *p = routine_supplement_of(type)->param_types; p; p = p->next)
    ++count;
  for (an_attribute_arg *arg = attribute->args; arg; arg = arg->next) {
    long long number = 0;
    if (!number_of_arg(arg, &number)) continue;
    bool prototyped = routine_supplement_of(type)->is_prototyped;
    if (number >= 1 && (!prototyped || number <= count)) continue;
    invalid_argument(attribute);
    return entity;
  }
  return entity;
}

//---------------------------------------------------------------------------------------------
// The table.

const an_attribute_kind_description attribute_kind_descriptions[ak_last] = {
    {"!!ERROR", nullptr},
    {"!!ERROR", nullptr},
#define ATTRIBUTE_KIND(kind, entities, handler) {entities, handler},
#include "parse/attributes.def"
};
