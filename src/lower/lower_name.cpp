// lower_name.cpp - external names of C++ entities.
// Rule:    a mangled name tells the scopes, the name and the parameter types of a function, so that
//          overloaded functions and members of different classes have different names.
// Entry:   do_all_name_mangling.
#include <cstdio>
#include <cstring>

#include "driver/flags.h"
#include "driver/trans_unit.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lower/lower_il.h"
#include "mem/mem_manage.h"
#include "parse/symbol_tbl.h"

static char name_buffer[4096];
static size_t name_length;

static void put(const char *text)
{
  for (; *text != '\0' && name_length + 1 < sizeof name_buffer; ++text)
    name_buffer[name_length++] = *text;
  name_buffer[name_length] = '\0';
}

static void put_source_name(const char *name)
{
  char number[24];
  snprintf(number, sizeof number, "%zu", strlen(name));
  put(number);
  put(name);
}

// Operators and special members by number; their spelling is no C name.
static void put_function_name(const a_routine *routine)
{
  char text[32];
  switch (routine->special_kind) {
  case sfk_constructor: put("C1"); return;
  case sfk_destructor: put("D1"); return;
  case sfk_operator:
    snprintf(text, sizeof text, "v0op%u", (unsigned)routine->special.operator_kind);
    put(text);
    return;
  case sfk_conversion: put("cv"); return;
  case sfk_none: break;
  }
  put_source_name(routine->source_corresp.name);
}

static void put_type(a_type *type);

static void put_parents(const a_source_correspondence *corresp)
{
  a_type *class_type = parent_class_of(corresp);
  a_namespace *name_space = parent_namespace_of(corresp);
  const a_source_correspondence *parent = nullptr;
  if (class_type != nullptr) parent = &class_type->source_corresp;
  if (name_space != nullptr) parent = &name_space->source_corresp;
  if (parent == nullptr) return;
  put_parents(parent);
  put_source_name(parent->name != nullptr ? parent->name : "_GLOBAL__N_1");
}

static void put_params(a_type *routine_type)
{
  a_param_type *param = param_types_of(routine_type);
  if (param != nullptr && param->is_this_param) param = param->next;
  if (param == nullptr && !routine_supplement_of(skip_typerefs(routine_type))->has_ellipsis)
    put("v");
  for (; param != nullptr; param = param->next)
    put_type(make_unqualified_type(param->type));
  if (routine_supplement_of(skip_typerefs(routine_type))->has_ellipsis) put("z");
}

static void put_plain_type(a_type *type)
{
  static const char *const integers[] = {"c", "a", "h",       "s",        "t", "i", "j",
                                         "l", "m", "v5int40", "v6uint40", "x", "y"};
  static const char *const floats[] = {"f", "d", "e"};
  switch (type->kind) {
  case tk_void: put("v"); return;
  case tk_integer:
    if (as_integer(type).is_bool)
      put("b");
    else if (as_integer(type).is_enum && type->source_corresp.name != nullptr)
      put_source_name(type->source_corresp.name);
    else
      put(as_integer(type).is_wchar_t ? "w" : integers[as_integer(type).int_kind]);
    return;
  case tk_float: put(floats[as_float(type).float_kind]); return;
  case tk_pointer:
    put(!as_pointer(type).is_reference ? "P" : as_pointer(type).is_rvalue ? "O" : "R");
    put_type(as_pointer(type).pointed_to_type);
    return;
  case tk_array:
    put("A_");
    put_type(as_array(type).element_type);
    return;
  case tk_routine:
    put("F");
    put_type(as_routine(type).return_type);
    put_params(type);
    put("E");
    return;
  case tk_class:
  case tk_struct:
  case tk_union:
    put("N");
    put_parents(&type->source_corresp);
    put_source_name(type->source_corresp.name != nullptr ? type->source_corresp.name : "Ut_");
    put("E");
    return;
  default: put("v4type"); return;
  }
}

static void put_type(a_type *type)
{
  unsigned qualifiers = get_type_qualifiers(type);
  if (qualifiers & tq_volatile) put("V");
  if (qualifiers & tq_const) put("K");
  put_plain_type(skip_typerefs(type));
}

static bool has_parent(const a_source_correspondence *corresp)
{
  return parent_class_of(corresp) != nullptr || parent_namespace_of(corresp) != nullptr;
}

static void store_name(a_source_correspondence *corresp)
{
  corresp->internal_name = copy_string_to_region(true, name_buffer);
  corresp->name_is_mangled = true;
}

static void mangle_routine(a_routine *routine)
{
  a_source_correspondence *corresp = &routine->source_corresp;
  if (corresp->internal_name != nullptr || corresp->name == nullptr || routine->is_main) return;
  if (corresp->name_linkage == nlk_c || routine->is_builtin) return;
  name_length = 0;
  bool nested = has_parent(corresp);
  put(nested ? "_ZN" : "_Z");
  a_type *type = skip_typerefs(routine->type);
  if (nested && type->kind == tk_routine) {
    if (routine_supplement_of(type)->this_qualifiers & tq_volatile) put("V");
    if (routine_supplement_of(type)->this_qualifiers & tq_const) put("K");
  }
  put_parents(corresp);
  put_function_name(routine);
  if (nested) put("E");
  if (type->kind == tk_routine) put_params(type);
  store_name(corresp);
}

static void mangle_nested_name(a_source_correspondence *corresp)
{
  if (corresp->internal_name != nullptr || corresp->name == nullptr || !has_parent(corresp)) return;
  name_length = 0;
  put("_ZN");
  put_parents(corresp);
  put_source_name(corresp->name);
  put("E");
  store_name(corresp);
}

static void mangle_scope(a_scope *scope)
{
  for (a_routine *routine = scope->routines; routine; routine = routine->next)
    mangle_routine(routine);
  for (a_variable *variable = scope->variables; variable; variable = variable->next) {
    if (variable->source_corresp.name_linkage != nlk_c)
      mangle_nested_name(&variable->source_corresp);
  }
  for (a_constant *constant = scope->constants; constant; constant = constant->next)
    mangle_nested_name(&constant->source_corresp);
  for (a_type *type = scope->types; type != nullptr; type = type->next) {
    mangle_nested_name(&type->source_corresp);
    if (type->kind == tk_integer && as_integer(type).is_enum && !as_integer(type).enum_is_scoped) {
      for (a_constant *c = as_integer(type).first_enumerator; c != nullptr; c = c->next)
        mangle_nested_name(&c->source_corresp);
    }
    if (kind_has_class_part(type->kind) && class_supplement_of(type)->class_scope != nullptr) {
      mangle_scope(class_supplement_of(type)->class_scope);
    }
  }
  for (a_namespace *name_space = scope->namespaces; name_space; name_space = name_space->next) {
    if (!name_space->is_alias && name_space->variant.scope != nullptr) {
      mangle_scope(name_space->variant.scope);
    }
  }
}

void do_all_name_mangling(bool)
{
  mangle_scope(curr_translation_unit->primary_scope);
}
