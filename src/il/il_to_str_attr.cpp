// il_to_str_attr.cpp - text of attributes, asm names and registers; the names of built-in
// operations.
// Uses:  the table of register names (registers.def).
// Rule:  each attribute is an " __attribute__((...))" of its own.  In generated code those that
//        only serve messages (c_forms) are left out.
#include <cstring>
#include "driver/flags.h"
#include "il/il.h"
#include "il/il_to_str_private.h"

const char *const builtin_operation_names[bok_last + 1] = {
#define BUILTIN_OPERATION(kind, number, spelling) spelling,
#include "il/builtin_operations.def"
    "**BAD-BUILTIN-OPERATION**"};

namespace {
struct a_register_row {
  unsigned char code;
  const char *name;
};
} // namespace

static constexpr a_register_row register_rows[] = {
#define REGISTER(code, name) {code, name},
#include "il/registers.def"
};

const char *register_name(int code)
{
  // Every assembler knows the flags by this name.
  if (code == register_code_of_flags) return "cc";
  for (const a_register_row &row : register_rows)
    if (row.code == code) return row.name;
  return "unrecognized";
}

void form_asm_name(const char *name, an_il_to_str_output_control_block *block)
{
  put(" __asm__(", block);
  put_quoted(name, block);
  put(")", block);
}

void form_var_reg_name(int register_number, an_il_to_str_output_control_block *block)
{
  form_asm_name(register_name(register_number), block);
}

namespace {
// Writes the attributes of one entity and remembers whether any was written.
struct an_attribute_writer {
  an_il_to_str_output_control_block *block;
  bool any;

  // False: nothing may be written for this target.
  bool open(const char *name)
  {
    if (block->generated_code && !gcc_is_generated_code_target) return false;
    any = true;
    put(" __attribute__((", block);
    put(name, block);
    return true;
  }
  void plain(bool wanted, const char *name)
  {
    if (wanted && open(name)) put("))", block);
  }
  void number(const char *name, unsigned long long value)
  {
    if (!open(name)) return;
    put("(", block);
    put_number(value, block);
    put(")))", block);
  }
  void string(const char *name, const char *text)
  {
    if (!open(name)) return;
    put("(", block);
    put_quoted(text, block);
    put(")))", block);
  }
};
} // namespace

static void write_visibility(an_attribute_writer *writer, unsigned visibility)
{
  static const char *const names[] = {nullptr, "hidden", "protected", "internal", "default"};
  if (visibility != vis_unspecified && visibility <= vis_default)
    writer->string("visibility", names[visibility]);
}

// The string argument of the attribute with that name, or null.
static const char *attribute_string(const a_source_correspondence *corresp, const char *name)
{
  for (const an_attribute *attribute = corresp->attributes; attribute != nullptr;
       attribute = attribute->next) {
    if (attribute->name == nullptr || strcmp(attribute->name, name) != 0) continue;
    const an_attribute_arg *arg = attribute->args;
    if (arg != nullptr && arg->kind == aak_constant && arg->variant.constant->kind == ck_string)
      return string_of(arg->variant.constant).text;
  }
  return nullptr;
}

// The name by which the linker knows the entity.
static const char *linker_name(const a_source_correspondence *corresp, const char *asm_name)
{
  if (asm_name != nullptr) return asm_name;
  return corresp->internal_name != nullptr ? corresp->internal_name : corresp->name;
}

// alias("target"), weakref("target") or a plain weakref.
static void write_alias(an_attribute_writer *writer, const a_source_correspondence *corresp,
                        const char *target_name, bool is_weakref)
{
  const char *text = attribute_string(corresp, is_weakref ? "weakref" : "alias");
  if (text == nullptr) text = target_name;
  if (text != nullptr)
    writer->string(is_weakref ? "__weakref__" : "__alias__", text);
  else
    writer->plain(is_weakref, "__weakref__");
}

bool form_label_attributes(const a_label *label, an_il_to_str_output_control_block *block)
{
  an_attribute_writer writer = {block, false};
  writer.plain(label->is_unused, "__unused__");
  return writer.any;
}

bool form_field_attributes(const a_field *field, an_il_to_str_output_control_block *block)
{
  an_attribute_writer writer = {block, false};
  writer.plain(field->source_corresp.is_deprecated && !block->c_forms, "__deprecated__");
  if (field->declared_alignment != 0) writer.number("__aligned__", field->declared_alignment);
  writer.plain(field->is_packed_field, "__packed__");
  return writer.any;
}

bool form_type_attributes(a_type *type, an_il_to_str_output_control_block *block)
{
  an_attribute_writer writer = {block, false};
  if (type->alignment_was_declared) writer.number("__aligned__", type->alignment);
  bool is_class = kind_has_class_part(type->kind);
  bool is_packed_enum =
      type->kind == tk_integer && as_integer(type).is_enum && as_integer(type).enum_is_packed;
  writer.plain((is_class && as_class(type).is_packed) || is_packed_enum, "__packed__");
  writer.plain(type->may_alias, "__may_alias__");
  writer.plain(type->is_unused, "__unused__");
  writer.plain(type->source_corresp.is_deprecated && !block->c_forms, "__deprecated__");
  writer.plain(is_class && as_class(type).is_transparent_union, "__transparent_union__");
  return writer.any;
}

static void write_routine_type_attributes(an_attribute_writer *writer, const a_routine *routine)
{
  bool c_forms = writer->block->c_forms;
  writer->plain(routine->warn_unused_result && !c_forms, "__warn_unused_result__");
  writer->plain(routine->is_noreturn, "__noreturn__");
  writer->plain(routine->is_const_attr, "__const__");
  if (routine->alignment != 0) writer->number("__aligned__", routine->alignment);
}

bool form_routine_attributes(const a_routine *routine, an_il_to_str_output_control_block *block)
{
  an_attribute_writer writer = {block, false};
  const a_source_correspondence *corresp = &routine->source_corresp;
  write_routine_type_attributes(&writer, routine);
  writer.plain(routine->is_constructor_attr, "__constructor__");
  writer.plain(routine->is_destructor_attr, "__destructor__");
  writer.plain(routine->is_pure, "__pure__");
  writer.plain(routine->weak_state == ws_weak, "__weak__");
  writer.plain(routine->is_unused, "__unused__");
  writer.plain(routine->is_used, "__used__");
  writer.plain(corresp->is_deprecated && !block->c_forms, "__deprecated__");
  writer.plain(routine->is_malloc, "__malloc__");
  writer.plain(routine->no_instrument, "__no_instrument_function__");
  writer.plain(routine->no_check_memory_usage && !block->generated_code,
               "__no_check_memory_usage__");
  writer.plain(routine->no_inline, "__noinline__");
  writer.plain(routine->always_inline, "__always_inline__");
  writer.plain(routine->gnu_inline && gnu_target_version_number > 40199, "__gnu_inline__");
  writer.plain(routine->is_nothrow, "__nothrow__");
  writer.plain(routine->returns_twice, "__returns_twice__");
  if (routine->section_specification != nullptr)
    writer.string("__section__", routine->section_specification->name);
  const a_routine *target = routine->alias_target;
  write_alias(&writer, corresp,
              target == nullptr ? nullptr : linker_name(&target->source_corresp, target->asm_name),
              routine->weak_state == ws_weakref);
  write_visibility(&writer, routine->visibility);
  return writer.any;
}

bool form_variable_attributes(const a_variable *variable, an_il_to_str_output_control_block *block)
{
  an_attribute_writer writer = {block, false};
  const a_source_correspondence *corresp = &variable->source_corresp;
  if (variable->alignment != 0) writer.number("__aligned__", variable->alignment);
  writer.plain(variable->weak_state == ws_weak, "__weak__");
  writer.plain(variable->is_unused, "__unused__");
  writer.plain(variable->is_used, "__used__");
  writer.plain(variable->no_common, "__nocommon__");
  writer.plain(corresp->is_deprecated && !block->c_forms, "__deprecated__");
  if (variable->cleanup_routine != nullptr && writer.open("__cleanup__")) {
    put("(", block);
    form_name(variable->cleanup_routine, iek_routine, block);
    put(")))", block);
  }
  if (variable->section_specification != nullptr)
    writer.string("__section__", variable->section_specification->name);
  const a_variable *target = variable->alias_target;
  const char *asm_name = target != nullptr && target->asm_name_is_text ? target->asm_name : nullptr;
  write_alias(&writer, corresp,
              target == nullptr ? nullptr : linker_name(&target->source_corresp, asm_name),
              variable->weak_state == ws_weakref);
  write_visibility(&writer, variable->visibility);
  return writer.any;
}
