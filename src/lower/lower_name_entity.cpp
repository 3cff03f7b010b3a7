// lower_name_entity.cpp - names of routines, classes, variables and namespaces in mangled names:
// nested and local names, operators, constructors, unnamed things, the module id.
// Rule:    each class, namespace and template on the way down to a name becomes a candidate for
//          substitution.
// Entry:   put_encoding, put_type_name, put_entity_name.
#include <cstdio>
#include <cstring>

#include "driver/flags.h"
#include "il/il_alloc.h"
#include "lower/lower_name_private.h"
#include "parse/symbol_tbl.h"

static a_source_correspondence *head_of(void *entity)
{
  return static_cast<a_source_correspondence *>(entity); // first in every record that has one
}

// --- Parents -------------------------------------------------------------------------------------

bool is_std_namespace(const a_namespace *name_space)
{
  const a_source_correspondence *corresp = &name_space->source_corresp;
  return corresp->name != nullptr && strcmp(corresp->name, "std") == 0 &&
         parent_namespace_of(corresp) == nullptr;
}

a_type *parent_type_of(const a_source_correspondence *corresp)
{
  a_type *class_type = parent_class_of(corresp);
  if (class_type != nullptr) return class_type;
  a_scope *scope = get_parent_scope_of(corresp);
  return scope != nullptr && scope->kind == sck_enum ? type_of_scope(scope) : nullptr;
}

// What the name of an entity stands in: a type, else a namespace, else nothing.
struct a_parent {
  a_type *type;
  a_namespace *name_space;
};

static a_parent parent_of(const a_source_correspondence *corresp)
{
  a_parent parent = {parent_type_of(corresp), nullptr};
  if (parent.type == nullptr) parent.name_space = parent_namespace_of(corresp);
  return parent;
}

static bool has_parent(a_parent parent)
{
  return parent.type != nullptr || parent.name_space != nullptr;
}

// The outermost entity around this one (or itself) that may be local to a routine.
static a_source_correspondence *outermost_entity(an_il_entry_kind *kind,
                                                 a_source_correspondence *corresp)
{
  for (a_type *type = parent_type_of(corresp); type != nullptr; type = parent_type_of(corresp)) {
    corresp = &type->source_corresp;
    *kind = iek_type;
  }
  return corresp;
}

// The routine whose local entity holds this one at some depth, or null.
static a_routine *routine_around(an_il_entry_kind kind, a_source_correspondence *corresp)
{
  corresp = outermost_entity(&kind, corresp);
  if (kind != iek_type && kind != iek_variable && kind != iek_constant) return nullptr;
  if (parent_namespace_of(corresp) != nullptr) return nullptr;
  return corresp->enclosing_routine;
}

// --- Ordinals ------------------------------------------------------------------------------------

static bool is_same_name(const a_source_correspondence *a, const a_source_correspondence *b)
{
  if (a->name == nullptr || b->name == nullptr) return a->name == b->name;
  return strcmp(a->name, b->name) == 0;
}

// Counts the entities of the name in the scopes, in the order of the text, up to `entity`.
static bool count_up_to(a_scope *scope, an_il_entry_kind kind, const void *entity, uint64_t *count)
{
  const a_source_correspondence *corresp = static_cast<const a_source_correspondence *>(entity);
  if (kind == iek_type) {
    for (a_type *type = scope->types; type != nullptr; type = type->next) {
      bool is_tag = kind_has_class_part(type->kind) || type->kind == tk_integer;
      if (is_tag && is_same_name(&type->source_corresp, corresp)) ++*count;
      if (type == entity) return true;
    }
  } else {
    for (a_variable *variable = scope->variables; variable; variable = variable->next) {
      if (is_same_name(&variable->source_corresp, corresp)) ++*count;
      if (variable == entity) return true;
    }
  }
  for (a_scope *inner = scope->subscopes; inner != nullptr; inner = inner->next)
    if (count_up_to(inner, kind, entity, count)) return true;
  return false;
}

uint64_t ordinal_in_routine(an_il_entry_kind kind, const void *entity)
{
  const a_routine *routine =
      static_cast<const a_source_correspondence *>(entity)->enclosing_routine;
  if (routine == nullptr || routine->region_number == 0) return 1;
  a_scope *scope = region_scope_table[routine->region_number];
  uint64_t count = 0;
  return scope != nullptr && count_up_to(scope, kind, entity, &count) ? count : 1;
}

// --- Unqualified names ---------------------------------------------------------------------------

void put_operator_code(a_mangling_control_block *mcb, unsigned char opname, bool unary)
{
  switch (opname) {
#define OPNAME_CODE(kind, unary_code, binary_code)                                                 \
  case kind:                                                                                       \
    put(mcb, unary ? unary_code : binary_code);                                                    \
    return;
#include "lower/operator_codes.def"
  default: put(mcb, "v07unknown"); return;
  }
}

static bool takes_one_operand(const a_routine *routine)
{
  a_param_type *param = param_types_of(routine->type);
  if (param != nullptr && param->is_this_param) param = param->next;
  bool has_this = routine_supplement_of(skip_typerefs(routine->type))->this_class != nullptr;
  return has_this ? param == nullptr : param != nullptr && param->next == nullptr;
}

static void put_ctor_dtor_name(a_mangling_control_block *mcb, const a_routine *routine)
{
  bool is_base = routine->primary_ctor_dtor_kind == 2;
  if (routine->primary_ctor_dtor_kind == 0) {
    a_type *class_type = parent_class_of(&routine->source_corresp);
    is_base = class_type != nullptr && as_class(class_type).has_virtual_bases;
  }
  put(mcb, routine->special_kind == sfk_constructor ? "C" : "D");
  mcb->digit_place = mcb->length;
  put(mcb, is_base ? "2" : "1");
}

static void put_routine_name(a_mangling_control_block *mcb, a_routine *routine)
{
  switch (routine->special_kind) {
  case sfk_constructor:
  case sfk_destructor: put_ctor_dtor_name(mcb, routine); return;
  case sfk_operator:
    put_operator_code(mcb, routine->special.operator_kind, takes_one_operand(routine));
    return;
  case sfk_conversion:
    put(mcb, "cv");
    put_type(mcb, return_type_of(routine->type));
    return;
  case sfk_none: break;
  }
  const char *name = routine->source_corresp.name;
  put_source_name(mcb, name == nullptr ? "" : name);
}

const char *first_named_field_name(a_type *type)
{
  type = skip_typerefs(type);
  if (!kind_has_class_part(type->kind)) return nullptr;
  for (a_field *field = as_class(type).first_field; field != nullptr; field = field->next) {
    if (field->source_corresp.name != nullptr) return field->source_corresp.name;
    const char *name = first_named_field_name(field->type);
    if (name != nullptr) return name;
  }
  return nullptr;
}

static void put_unnamed_type(a_mangling_control_block *mcb, a_type *type)
{
  bool is_closure = kind_has_class_part(type->kind) && class_supplement_of(type)->is_closure;
  put(mcb, is_closure ? "Ul" : "Ut");
  if (is_closure) {
    a_lambda *lambda = class_supplement_of(type)->assoc_lambda;
    if (lambda != nullptr && lambda->call_operator != nullptr)
      put_param_types(mcb, lambda->call_operator->type);
    put(mcb, "E");
  }
  put_ordinal(mcb, ordinal_in_routine(iek_type, type));
  put(mcb, "_");
}

static void put_namespace_name(a_mangling_control_block *mcb, const a_namespace *name_space)
{
  if (name_space->source_corresp.name != nullptr) {
    put_source_name(mcb, name_space->source_corresp.name);
    return;
  }
  static const char prefix[] = "_GLOBAL__N_";
  const char *id = module_id_for_name(mcb);
  put_number(mcb, sizeof prefix - 1 + strlen(id));
  put(mcb, prefix);
  put(mcb, id);
}

static void put_simple_name(a_mangling_control_block *mcb, an_il_entry_kind kind, void *entity)
{
  const char *name = head_of(entity)->name;
  if (kind == iek_routine) {
    put_routine_name(mcb, static_cast<a_routine *>(entity));
  } else if (name != nullptr) {
    put_source_name(mcb, name);
  } else if (kind == iek_type) {
    put_unnamed_type(mcb, static_cast<a_type *>(entity));
  } else {
    if (kind == iek_variable)
      name = first_named_field_name(static_cast<a_variable *>(entity)->type);
    put_source_name(mcb, name == nullptr ? "" : name);
  }
}

// --- Templates -----------------------------------------------------------------------------------

static a_template_arg *template_args_of(an_il_entry_kind kind, void *entity, a_template **templ)
{
  *templ = nullptr;
  if (kind == iek_routine) {
    a_routine *routine = static_cast<a_routine *>(entity);
    *templ = routine->assoc_template;
    return routine->template_args;
  }
  if (kind != iek_type || !kind_has_class_part(static_cast<a_type *>(entity)->kind)) return nullptr;
  a_class_type_supplement *supplement = class_supplement_of(static_cast<a_type *>(entity));
  *templ = supplement->assoc_template;
  return supplement->template_args;
}

// --- Prefixes ------------------------------------------------------------------------------------

static void put_parent(a_mangling_control_block *mcb, a_parent parent);

// The name behind its parents, and the arguments of an instance.
static void put_name_in_parent(a_mangling_control_block *mcb, an_il_entry_kind kind, void *entity)
{
  a_parent parent = parent_of(head_of(entity));
  a_template *templ;
  a_template_arg *args = template_args_of(kind, entity, &templ);
  if (args == nullptr) {
    put_parent(mcb, parent);
    put_simple_name(mcb, kind, entity);
    return;
  }
  if (templ == nullptr || !put_substitution(mcb, iek_template, templ, 0)) {
    put_parent(mcb, parent);
    put_simple_name(mcb, kind, entity);
    if (templ != nullptr) add_substitution(mcb, iek_template, templ, 0);
  }
  put_template_args(mcb, args);
}

static void put_parent(a_mangling_control_block *mcb, a_parent parent)
{
  if (!has_parent(parent)) return;
  an_il_entry_kind kind = parent.type != nullptr ? iek_type : iek_namespace;
  void *entity = parent.type != nullptr ? (void *)parent.type : (void *)parent.name_space;
  if (put_substitution(mcb, kind, entity, 0)) return;
  if (kind == iek_namespace) {
    put_parent(mcb, parent_of(&parent.name_space->source_corresp));
    put_namespace_name(mcb, parent.name_space);
  } else {
    put_name_in_parent(mcb, kind, entity);
  }
  add_substitution(mcb, kind, entity, 0);
}

// --- Whole names ---------------------------------------------------------------------------------

static bool needs_nested_form(a_parent parent)
{
  if (parent.type != nullptr) return true;
  return parent.name_space != nullptr && !is_std_namespace(parent.name_space);
}

static void put_scoped_name(a_mangling_control_block *mcb, an_il_entry_kind kind, void *entity,
                            bool individuated)
{
  bool nested = needs_nested_form(parent_of(head_of(entity))) || individuated;
  if (nested) put(mcb, "N");
  if (kind == iek_routine) {
    a_type *type = skip_typerefs(static_cast<a_routine *>(entity)->type);
    if (type->kind == tk_routine) put_qualifiers(mcb, routine_supplement_of(type)->this_qualifiers);
  }
  if (individuated) {
    static const char prefix[] = "_INTERNAL";
    const char *id = module_id_for_name(mcb);
    put_number(mcb, sizeof prefix - 1 + strlen(id));
    put(mcb, prefix);
    put(mcb, id);
  }
  put_name_in_parent(mcb, kind, entity);
  if (nested) put(mcb, "E");
}

// "Z", the routine, "E", the name within it.
static void put_local_name(a_mangling_control_block *mcb, an_il_entry_kind kind, void *entity,
                           a_routine *routine)
{
  put(mcb, "Z");
  put_encoding(mcb, routine);
  put(mcb, "E");
  put_scoped_name(mcb, kind, entity, false);
  a_source_correspondence *root = outermost_entity(&kind, head_of(entity));
  if (root->name == nullptr) return;
  uint64_t ordinal = ordinal_in_routine(kind, root);
  if (ordinal > 1) put(mcb, "_");
  put_ordinal(mcb, ordinal);
}

void put_entity_name(a_mangling_control_block *mcb, an_il_entry_kind kind, void *entity)
{
  a_routine *routine = routine_around(kind, head_of(entity));
  bool individuated = kind == iek_routine && routine == nullptr &&
                      routine_contains_an_individuated_entity(static_cast<a_routine *>(entity));
  if (routine != nullptr)
    put_local_name(mcb, kind, entity, routine);
  else
    put_scoped_name(mcb, kind, entity, individuated);
}

void put_type_name(a_mangling_control_block *mcb, a_type *type)
{
  if (put_substitution(mcb, iek_type, type, 0)) return;
  put_entity_name(mcb, iek_type, type);
  add_substitution(mcb, iek_type, type, 0);
}

// --- Encodings -----------------------------------------------------------------------------------

static bool keeps_source_name(const a_routine *routine)
{
  if (routine->is_main) return true;
  return routine->source_corresp.name_linkage == nlk_c && routine->special_kind == sfk_none &&
         !(vectypes_support && routine->is_builtin);
}

// The type that tells instances of a template from those of other templates.
static a_type *signature_of(a_routine *routine)
{
  a_template *templ = routine->assoc_template;
  if (routine->template_args == nullptr || templ == nullptr || !distinct_template_signatures)
    return routine->type;
  bool is_routine = templ->kind == templk_function || templ->kind == templk_member_function;
  a_routine *prototype = is_routine ? templ->prototype.routine : nullptr;
  return prototype == nullptr || prototype->type == nullptr ? routine->type : prototype->type;
}

void put_encoding(a_mangling_control_block *mcb, a_routine *routine)
{
  if (keeps_source_name(routine)) {
    put_source_name(mcb, routine->source_corresp.name);
    return;
  }
  put_entity_name(mcb, iek_routine, routine);
  a_type *type = signature_of(routine);
  if (skip_typerefs(type)->kind != tk_routine) return;
  bool saved = mcb->in_template_signature;
  mcb->in_template_signature = type != routine->type;
  if (routine->template_args != nullptr &&
      (routine->special_kind == sfk_none || routine->special_kind == sfk_operator))
    put_type(mcb, return_type_of(type));
  put_param_types(mcb, type);
  mcb->in_template_signature = saved;
}

// --- Individuated entities -----------------------------------------------------------------------

static int is_individuated(a_type *type, bool *)
{
  if (!kind_has_class_part(type->kind) && !(type->kind == tk_integer && as_integer(type).is_enum))
    return 0;
  const a_source_correspondence *corresp = &type->source_corresp;
  return corresp->name == nullptr || corresp->name_is_generated ||
         routine_around(iek_type, &type->source_corresp) != nullptr;
}

static bool is_individuated_type(a_type *type)
{
  return traverse_type_tree(type, is_individuated,
                            two_return_types | two_param_types | two_template_args) != 0;
}

static bool args_contain_individuated_entity(a_template_arg *args)
{
  for (a_template_arg *arg = args; arg != nullptr; arg = arg->next)
    if (arg->kind == tak_type && is_individuated_type(arg->variant.type)) return true;
  return false;
}

bool routine_contains_an_individuated_entity(a_routine *routine)
{
  if (!local_types_as_template_args_enabled) return false;
  if (args_contain_individuated_entity(routine->template_args)) return true;
  a_type *type = parent_class_of(&routine->source_corresp);
  for (; type != nullptr; type = parent_class_of(&type->source_corresp))
    if (args_contain_individuated_entity(class_supplement_of(type)->template_args)) return true;
  return false;
}

bool exception_specification_contains_an_individuated_entity(a_type *type)
{
  type = skip_typerefs(type);
  if (type->kind != tk_routine) return false;
  an_exception_specification *specification = routine_supplement_of(type)->exception_specification;
  if (specification == nullptr) return false;
  for (an_exception_specification_type *entry = specification->first_type; entry != nullptr;
       entry = entry->next)
    if (is_individuated_type(entry->type)) return true;
  return false;
}

// --- Routines and members ------------------------------------------------------------------------

static bool is_to_be_mangled(const a_routine *routine)
{
  const a_source_correspondence *corresp = &routine->source_corresp;
  if (corresp->name_is_mangled || corresp->internal_name != nullptr) return false;
  if (keeps_source_name(routine)) return false;
  if (routine->is_builtin && !vectypes_support) return false;
  if (corresp->name != nullptr || routine->special_kind == sfk_destructor) return true;
  if (routine->special_kind == sfk_operator || routine->special_kind == sfk_conversion) return true;
  if (routine->special_kind != sfk_constructor) return false;
  a_type *class_type = parent_class_of(corresp);
  return class_type != nullptr && class_type->source_corresp.name != nullptr;
}

static void put_externalizing_prefix(a_mangling_control_block *mcb)
{
  put(mcb, "B");
  put_source_name(mcb, module_id_for_name(mcb));
}

void mangle_function_name(a_routine *routine)
{
  if (!is_to_be_mangled(routine)) return;
  a_mangling_control_block mcb;
  start_mangled_name(&mcb);
  put(&mcb, "_Z");
  if (routine->source_corresp.name_is_externalized) put_externalizing_prefix(&mcb);
  put_encoding(&mcb, routine);
  routine->mangled_name_length = (uint32_t)mcb.digit_place;
  finish_mangled_name(&mcb, &routine->source_corresp, true);
}

const char *get_mangled_function_name_full(a_routine *routine, bool with_complete_digit,
                                           bool externalize, size_t *digit_place)
{
  if (digit_place != nullptr) *digit_place = 0;
  const a_source_correspondence *corresp = &routine->source_corresp;
  if (keeps_source_name(routine)) return corresp->name;
  a_mangling_control_block mcb;
  start_mangled_name(&mcb);
  if (corresp->name_is_mangled) {
    put(&mcb, corresp->internal_name);
    mcb.digit_place = routine->mangled_name_length;
  } else {
    put(&mcb, "_Z");
    if (externalize) put_externalizing_prefix(&mcb);
    put_encoding(&mcb, routine);
  }
  size_t place = mcb.digit_place;
  const char *text = end_mangled_name(&mcb);
  if (digit_place != nullptr) *digit_place = place;
  if (with_complete_digit && place != 0 && text != nullptr) const_cast<char *>(text)[place] = '1';
  return text;
}

const char *get_mangled_function_name(a_routine *routine)
{
  return get_mangled_function_name_full(routine, false, false, nullptr);
}

const char *get_mangled_member_variable_name(a_variable *variable)
{
  if (variable->source_corresp.name_is_mangled) return variable->source_corresp.internal_name;
  a_mangling_control_block mcb;
  start_mangled_name(&mcb);
  put(&mcb, "_Z");
  put_entity_name(&mcb, iek_variable, variable);
  return end_mangled_name(&mcb);
}

void mangle_member_constant_name(a_constant *constant)
{
  a_source_correspondence *corresp = &constant->source_corresp;
  if (corresp->internal_name != nullptr || corresp->name == nullptr) return;
  if (!has_parent(parent_of(corresp))) return;
  a_mangling_control_block mcb;
  start_mangled_name(&mcb);
  put(&mcb, "_Z");
  put_entity_name(&mcb, iek_constant, constant);
  finish_mangled_name(&mcb, corresp, true);
}
