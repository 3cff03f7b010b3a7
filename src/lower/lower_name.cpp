// lower_name.cpp - text and substitutions of a mangled name, and the names of a whole unit.
// Owns:    the pool of buffers, the free substitutions, the numbers of unnamed entities.
// Uses:    lower_name_entity.cpp, lower_name_type.cpp and lower_name_expr.cpp for the grammar.
// Rule:    a name in progress may start another one, so buffers are a stack.
// Entry:   do_all_name_mangling, start_mangled_name, finish_mangled_name.
#include <cstdio>
#include <cstring>

#include "driver/flags.h"
#include "driver/host_envir.h"
#include "driver/trans_unit.h"
#include "il/il_alloc.h"
#include "il/il_walk.h"
#include "lower/lower_name_private.h"
#include "lower/lower_il.h"
#include "mem/registered_vars.h"

struct a_mangling_buffer {
  a_mangling_buffer *next;
  a_text_buffer *text;
};

static const size_t mangling_buffer_size = 2048;

size_t max_mangled_name_length;
bool final_name_mangling_needed;

static a_mangling_buffer *curr_mangling_buffer;  // and those of the names around it
static a_mangling_buffer *free_mangling_buffers; // the first holds the last name that ended
static a_substitution *free_substitutions;
static unsigned long unnamed_class_number;
static unsigned long unnamed_variable_number;
static bool mangling_without_module_id;

// --- Text ----------------------------------------------------------------------------------------

static a_text_buffer *name_text()
{
  return curr_mangling_buffer->text;
}

void put(a_mangling_control_block *mcb, const char *text)
{
  size_t length = strlen(text);
  add_to_text_buffer(name_text(), text, length);
  mcb->length += length;
}

void put_number(a_mangling_control_block *mcb, uint64_t value)
{
  char text[32];
  snprintf(text, sizeof text, "%llu", (unsigned long long)value);
  put(mcb, text);
}

void put_signed_number(a_mangling_control_block *mcb, int64_t value)
{
  if (value < 0) put(mcb, "n");
  put_number(mcb, value < 0 ? 0 - (uint64_t)value : (uint64_t)value);
}

void put_source_name(a_mangling_control_block *mcb, const char *name)
{
  put_number(mcb, strlen(name));
  put(mcb, name);
}

void put_ordinal(a_mangling_control_block *mcb, uint64_t ordinal)
{
  if (ordinal > 1) put_number(mcb, ordinal - 2);
}

void overwrite_with_blank(a_mangling_control_block *mcb, size_t place)
{
  name_text()->buffer[place] = ' ';
  mcb->blanks++;
}

char mangled_character_at(const a_mangling_control_block *mcb, size_t place)
{
  return place < mcb->length ? name_text()->buffer[place] : '\0';
}

void start_mangled_name(a_mangling_control_block *mcb)
{
  *mcb = a_mangling_control_block{};
  a_mangling_buffer *buffer = free_mangling_buffers;
  if (buffer != nullptr) {
    free_mangling_buffers = buffer->next;
  } else {
    buffer = (a_mangling_buffer *)alloc_general(sizeof(a_mangling_buffer));
    buffer->text = alloc_text_buffer(mangling_buffer_size);
  }
  reset_text_buffer(buffer->text);
  buffer->next = curr_mangling_buffer;
  curr_mangling_buffer = buffer;
}

static void squeeze_blanks(a_mangling_control_block *mcb)
{
  char *text = name_text()->buffer;
  size_t kept = 0;
  for (size_t i = 0; i <= mcb->length; i++)
    if (text[i] != ' ') text[kept++] = text[i];
  mcb->length = kept - 1;
  mcb->blanks = 0;
}

const char *end_mangled_name(a_mangling_control_block *mcb)
{
  add_char_to_text_buffer(name_text(), '\0');
  if (mcb->blanks != 0) squeeze_blanks(mcb);
  if (mcb->last_substitution != nullptr) {
    mcb->last_substitution->next = free_substitutions;
    free_substitutions = mcb->first_substitution;
  }
  a_mangling_buffer *buffer = curr_mangling_buffer;
  curr_mangling_buffer = buffer->next;
  buffer->next = free_mangling_buffers;
  free_mangling_buffers = buffer;
  return mcb->incomplete ? nullptr : buffer->text->buffer;
}

const char *copy_mangled_text(const char *text)
{
  return text == nullptr ? nullptr : copy_string_to_region(true, text);
}

// --- Truncation ----------------------------------------------------------------------------------

static const char *truncated_name(const char *name)
{
  char *text = (char *)alloc_in_region(file_scope_region_number, max_mangled_name_length + 1);
  size_t kept = max_mangled_name_length > 10 ? max_mangled_name_length - 10 : 0;
  memcpy(text, name, kept);
  snprintf(text + kept, max_mangled_name_length + 1 - kept, "__%08lx",
           (unsigned long)crc_32(name, 0));
  return text;
}

static bool name_is_too_long(const char *name)
{
  return max_mangled_name_length != 0 && strlen(name) > max_mangled_name_length;
}

static void check_final_name(a_source_correspondence *corresp)
{
  if (!corresp->name_needs_final_check) return;
  corresp->name_needs_final_check = false;
  if (!name_is_too_long(corresp->internal_name)) return;
  corresp->internal_name = truncated_name(corresp->internal_name);
  corresp->name_was_truncated = true;
}

static void store_name(a_source_correspondence *corresp, const char *text)
{
  corresp->internal_name = text;
  corresp->name_is_mangled = true;
  corresp->is_nameless = false;
}

void finish_mangled_name(a_mangling_control_block *mcb, a_source_correspondence *corresp,
                         bool truncate)
{
  const char *text = end_mangled_name(mcb);
  if (text == nullptr) return;
  bool cut = truncate && !final_name_mangling_needed && name_is_too_long(text);
  store_name(corresp, cut ? truncated_name(text) : copy_mangled_text(text));
  corresp->name_was_truncated = cut;
  corresp->name_needs_final_check = final_name_mangling_needed || !truncate;
}

// --- Substitutions -------------------------------------------------------------------------------

void add_substitution(a_mangling_control_block *mcb, an_il_entry_kind kind, void *entity,
                      unsigned qualifiers)
{
  if (mcb->no_substitutions) return;
  a_substitution *entry = free_substitutions;
  if (entry != nullptr)
    free_substitutions = entry->next;
  else
    entry = (a_substitution *)alloc_general(sizeof(a_substitution));
  *entry = {nullptr, kind, entity, qualifiers};
  if (mcb->last_substitution != nullptr)
    mcb->last_substitution->next = entry;
  else
    mcb->first_substitution = entry;
  mcb->last_substitution = entry;
}

static const a_source_correspondence *corresp_of(an_il_entry_kind kind, const void *entity)
{
  return kind == iek_namespace ? &static_cast<const a_namespace *>(entity)->source_corresp
                               : &static_cast<const a_template *>(entity)->source_corresp;
}

static bool is_same_entity(const a_substitution *entry, an_il_entry_kind kind, void *entity,
                           unsigned qualifiers)
{
  if (entry->entity_kind != kind || entry->qualifiers != qualifiers) return false;
  if (entry->entity == entity) return true;
  if (kind == iek_type)
    return f_identical_types((a_type *)entry->entity, (a_type *)entity, ido_original_param_arrays);
  const a_trans_unit_corresp *set = corresp_of(kind, entity)->trans_unit_corresp;
  return set != nullptr && corresp_of(kind, entry->entity)->trans_unit_corresp == set;
}

static bool is_member_of_std(const a_source_correspondence *corresp)
{
  a_namespace *name_space = parent_namespace_of(corresp);
  return name_space != nullptr && is_std_namespace(name_space);
}

static bool is_std_instance(a_type *type, const char *name)
{
  if (!kind_has_class_part(type->kind) || class_supplement_of(type)->template_args == nullptr)
    return false;
  return type->source_corresp.name != nullptr && strcmp(type->source_corresp.name, name) == 0 &&
         is_member_of_std(&type->source_corresp);
}

static a_type *argument_type(a_template_arg *arg)
{
  return arg != nullptr && arg->kind == tak_type ? arg->variant.type : nullptr;
}

static bool is_plain_char(a_type *type)
{
  return type != nullptr && type == integer_type(ik_char);
}

// The type is an instance of std's template `name` for char.
static bool is_std_instance_for_char(a_type *type, const char *name)
{
  if (type == nullptr) return false;
  type = skip_typerefs(type);
  return is_std_instance(type, name) &&
         is_plain_char(argument_type(class_supplement_of(type)->template_args));
}

static bool takes_char_and_traits(a_type *type, const char *name)
{
  if (!is_std_instance_for_char(type, name)) return false;
  a_template_arg *traits = class_supplement_of(type)->template_args->next;
  return traits != nullptr && is_std_instance_for_char(argument_type(traits), "char_traits");
}

// The abbreviation that the ABI has for the entity, or null.
static const char *standard_abbreviation(an_il_entry_kind kind, void *entity)
{
  if (kind == iek_namespace) return is_std_namespace((const a_namespace *)entity) ? "St" : nullptr;
  if (kind == iek_template) {
    const a_source_correspondence *corresp = corresp_of(kind, entity);
    if (corresp->name == nullptr || !is_member_of_std(corresp)) return nullptr;
    if (strcmp(corresp->name, "allocator") == 0) return "Sa";
    return strcmp(corresp->name, "basic_string") == 0 ? "Sb" : nullptr;
  }
  a_type *type = (a_type *)entity;
  if (takes_char_and_traits(type, "basic_string")) {
    a_template_arg *allocator = class_supplement_of(type)->template_args->next->next;
    return is_std_instance_for_char(argument_type(allocator), "allocator") ? "Ss" : nullptr;
  }
  if (takes_char_and_traits(type, "basic_istream")) return "Si";
  if (takes_char_and_traits(type, "basic_ostream")) return "So";
  return takes_char_and_traits(type, "basic_iostream") ? "Sd" : nullptr;
}

static void put_base_36(a_mangling_control_block *mcb, size_t value)
{
  char text[16];
  char *place = text + sizeof text - 1;
  *place = '\0';
  do {
    *--place = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"[value % 36];
    value /= 36;
  } while (value != 0);
  put(mcb, place);
}

bool put_substitution(a_mangling_control_block *mcb, an_il_entry_kind kind, void *entity,
                      unsigned qualifiers)
{
  if (mcb->no_substitutions) return false;
  const char *abbreviation = qualifiers != 0 ? nullptr : standard_abbreviation(kind, entity);
  if (abbreviation != nullptr) {
    put(mcb, abbreviation);
    return true;
  }
  size_t index = 0;
  for (a_substitution *entry = mcb->first_substitution; entry; entry = entry->next, index++) {
    if (!is_same_entity(entry, kind, entity, qualifiers)) continue;
    put(mcb, "S");
    if (index != 0) put_base_36(mcb, index - 1);
    put(mcb, "_");
    return true;
  }
  return false;
}

const char *module_id_for_name(a_mangling_control_block *mcb)
{
  const char *id = mangling_without_module_id ? nullptr : get_module_id();
  if (id == nullptr) mcb->incomplete = true;
  return id == nullptr ? "" : id;
}

// --- Names of types and of nameless things -------------------------------------------------------

static const char *numbered_name(const char *prefix, unsigned long number)
{
  char text[40];
  snprintf(text, sizeof text, "%s%lu", prefix, number);
  return copy_mangled_text(text);
}

static void name_unnamed_type(a_type *type)
{
  a_source_correspondence *corresp = &type->source_corresp;
  bool is_class = kind_has_class_part(type->kind);
  if (is_class && as_class(type).is_anonymous) return;
  corresp->internal_name = numbered_name(is_class ? "__C" : "__E", ++unnamed_class_number);
  corresp->is_nameless = false;
  corresp->name_is_generated = true;
}

static bool is_enum(const a_type *type)
{
  return type->kind == tk_integer && as_integer(type).is_enum;
}

static bool needs_mangled_type_name(a_type *type)
{
  a_source_correspondence *corresp = &type->source_corresp;
  if (corresp->name_linkage == nlk_c && !kind_has_class_part(type->kind)) return false;
  return parent_type_of(corresp) != nullptr || parent_namespace_of(corresp) != nullptr ||
         (kind_has_class_part(type->kind) && class_supplement_of(type)->template_args != nullptr);
}

static void mangle_type_name(a_type *type)
{
  a_source_correspondence *corresp = &type->source_corresp;
  if (corresp->internal_name != nullptr) return;
  if (corresp->name == nullptr) {
    if (kind_has_class_part(type->kind) || is_enum(type)) name_unnamed_type(type);
    return;
  }
  if (!needs_mangled_type_name(type)) return;
  a_mangling_control_block mcb;
  start_mangled_name(&mcb);
  put(&mcb, "_Z");
  // A typedef's own name is meant, not that of the type which it stands for.
  if (type->kind == tk_typeref)
    put_entity_name(&mcb, iek_type, type);
  else
    put_type_name(&mcb, type);
  finish_mangled_name(&mcb, corresp, true);
}

static void mangle_types_of_scope(a_scope *scope)
{
  for (a_type *type = scope->types; type != nullptr; type = type->next) {
    mangle_type_name(type);
    if (!kind_has_class_part(type->kind)) continue;
    a_scope *class_scope = class_supplement_of(type)->class_scope;
    if (class_scope != nullptr) mangle_types_of_scope(class_scope);
  }
  for (a_namespace *name_space = scope->namespaces; name_space; name_space = name_space->next) {
    if (!name_space->is_alias && name_space->variant.scope != nullptr)
      mangle_types_of_scope(name_space->variant.scope);
  }
}

// --- Members -------------------------------------------------------------------------------------

static void mangle_enumerators(a_type *type)
{
  const an_integer_type_part &part = as_integer(type);
  a_source_correspondence *corresp = &type->source_corresp;
  if (!part.enum_is_scoped && parent_type_of(corresp) == nullptr &&
      parent_namespace_of(corresp) == nullptr)
    return;
  a_constant *first = part.enum_is_scoped
                          ? part.enum_scope != nullptr ? part.enum_scope->constants : nullptr
                          : part.first_enumerator;
  for (a_constant *enumerator = first; enumerator != nullptr; enumerator = enumerator->next)
    mangle_member_constant_name(enumerator);
}

static void mangle_members_of_type(a_type *type)
{
  if (is_enum(type)) {
    mangle_enumerators(type);
  } else if (kind_has_class_part(type->kind)) {
    a_scope *scope = class_supplement_of(type)->class_scope;
    if (scope != nullptr) do_scope_other_name_mangling(scope);
  }
}

static void mangle_constants(a_scope *scope)
{
  for (a_constant *constant = scope->constants; constant != nullptr; constant = constant->next)
    mangle_member_constant_name(constant);
}

static void mangle_variable_name(a_variable *variable)
{
  a_source_correspondence *corresp = &variable->source_corresp;
  if (corresp->name_is_mangled || corresp->internal_name != nullptr) return;
  if (corresp->name_linkage == nlk_c) return;
  if (parent_type_of(corresp) == nullptr && parent_namespace_of(corresp) == nullptr) return;
  if (corresp->name == nullptr) {
    const char *field_name = first_named_field_name(variable->type);
    if (field_name == nullptr) {
      corresp->internal_name = numbered_name("__V", ++unnamed_variable_number);
      corresp->is_nameless = false;
      corresp->name_is_generated = true;
      return;
    }
  }
  a_mangling_control_block mcb;
  start_mangled_name(&mcb);
  put(&mcb, "_Z");
  put_entity_name(&mcb, iek_variable, variable);
  finish_mangled_name(&mcb, corresp, true);
}

void do_scope_other_name_mangling(a_scope *scope)
{
  for (a_type *type = scope->types; type != nullptr; type = type->next)
    mangle_members_of_type(type);
  for (a_namespace *name_space = scope->namespaces; name_space; name_space = name_space->next) {
    if (name_space->is_alias || name_space->variant.scope == nullptr) continue;
    if (name_space->source_corresp.name == nullptr &&
        (mangling_without_module_id || get_module_id() == nullptr))
      continue;
    do_scope_other_name_mangling(name_space->variant.scope);
  }
  for (a_routine *routine = scope->routines; routine; routine = routine->next)
    mangle_function_name(routine);
  if (scope->kind != sck_file) {
    for (a_variable *variable = scope->variables; variable; variable = variable->next)
      mangle_variable_name(variable);
  }
  mangle_constants(scope);
}

static void mangle_local_type(a_type *type)
{
  a_scope *scope =
      kind_has_class_part(type->kind) ? class_supplement_of(type)->class_scope : nullptr;
  if (scope == nullptr) return;
  mangle_types_of_scope(scope);
  do_scope_other_name_mangling(scope);
}

void mangle_local_types(a_scope *function_scope)
{
  process_local_types(function_scope, mangle_local_type);
}

void do_type_name_mangling()
{
  mangle_types_of_scope(curr_translation_unit->primary_scope);
}

void do_all_name_mangling(bool without_module_id)
{
  mangling_without_module_id = without_module_id;
  do_type_name_mangling();
  do_scope_other_name_mangling(curr_translation_unit->primary_scope);
  mangling_without_module_id = false;
}

// --- The final pass ------------------------------------------------------------------------------

static void check_final_names_of_scope(a_scope *scope)
{
  for (a_type *type = scope->types; type != nullptr; type = type->next) {
    check_final_name(&type->source_corresp);
    if (!kind_has_class_part(type->kind)) continue;
    a_class_type_supplement *supplement = class_supplement_of(type);
    if (supplement->subobject_type != nullptr)
      check_final_name(&supplement->subobject_type->source_corresp);
    if (supplement->class_scope != nullptr) check_final_names_of_scope(supplement->class_scope);
  }
  for (a_routine *routine = scope->routines; routine; routine = routine->next)
    check_final_name(&routine->source_corresp);
  for (a_variable *variable = scope->variables; variable; variable = variable->next)
    check_final_name(&variable->source_corresp);
  for (a_constant *constant = scope->constants; constant != nullptr; constant = constant->next)
    check_final_name(&constant->source_corresp);
  for (a_namespace *name_space = scope->namespaces; name_space; name_space = name_space->next) {
    if (!name_space->is_alias && name_space->variant.scope != nullptr)
      check_final_names_of_scope(name_space->variant.scope);
  }
}

void do_final_name_mangling()
{
  if (max_mangled_name_length != 0)
    check_final_names_of_scope(curr_translation_unit->primary_scope);
}

// --- Initialization ------------------------------------------------------------------------------

void name_lower_init()
{
  unnamed_class_number = 0;
  unnamed_variable_number = 0;
  free_substitutions = nullptr;
}

void name_lower_one_time_init()
{
  curr_mangling_buffer = nullptr;
  free_mangling_buffers = nullptr;
  register_trans_unit_variable(unnamed_class_number);
  register_trans_unit_variable(unnamed_variable_number);
}
