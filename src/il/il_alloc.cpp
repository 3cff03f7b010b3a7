// il_alloc.cpp - allocation of IL entries by kind, the kinds of existing records, regions.
// Owns:    il_header, curr_il_region_number, the prefix sizes, the free list of template arguments.
// Rule:    every entry is zeroed and carries its prefix; a record's variant changes through
//          set_*_kind only.
#include "il/il_alloc.h"

#include "driver/flags.h"
#include "driver/trans_unit.h"
#include "il/il.h"
#include "il/source_entities.h"
#include "il/types.h"

an_il_header il_header;
int curr_il_region_number;
bool initial_value_for_il_lowering_flag;
bool in_front_end = true;
bool flag_value_meaning_visited = true;
bool file_scope_visited_value;
bool okay_to_eliminate_unneeded_il_entries;
a_name_linkage_kind default_routine_name_linkage = nlk_cplusplus;
unsigned needed_flag_bit_number;
bool statement_expressions_exist;
unsigned file_scope_il_prefix_size = primary_file_scope_il_prefix_size;

static a_template_arg *avail_template_args; // of the current translation unit

void compute_il_prefix_size()
{
  file_scope_il_prefix_size = is_primary_translation_unit ? primary_file_scope_il_prefix_size
                                                          : secondary_file_scope_il_prefix_size;
}

// --- Raw storage ---------------------------------------------------------------------------------

void *alloc_primary_file_scope_il(size_t size)
{
  bool saved_is_primary = is_primary_translation_unit;
  is_primary_translation_unit = true;
  compute_il_prefix_size();
  void *result = alloc_il_entry_in_region(1, size, true);
  is_primary_translation_unit = saved_is_primary;
  compute_il_prefix_size();
  return result;
}

void *alloc_in_same_region_as(const void *entry, size_t size)
{
  const an_il_entry_flags &flags = entry_flags_of(entry);
  if (!flags.is_file_scope_entry) {
    return alloc_il_entry_in_region(curr_il_region_number, size, false);
  }
  if (!flags.is_secondary_entry) return alloc_primary_file_scope_il(size);
  // Secondary units have one file-scope region each; the entry's unit is the one in force while its
  // entries are extended.
  return alloc_il(size);
}

char *copy_string_of_length_to_region(bool in_file_scope, const char *text, size_t length)
{
  char *copy = (char *)(in_file_scope ? alloc_il(length + 1) : alloc_in_region(0, length + 1));
  memcpy(copy, text, length);
  copy[length] = 0;
  return copy;
}

char *copy_string_to_region(bool in_file_scope, const char *text)
{
  return copy_string_of_length_to_region(in_file_scope, text, strlen(text));
}

char *alloc_text_of_string_literal(uint64_t length)
{
  return (char *)alloc_il(length);
}

// --- Entries of the file scope -------------------------------------------------------------------

a_source_file *alloc_source_file()
{
  return (a_source_file *)alloc_primary_file_scope_il(sizeof(a_source_file));
}

a_seq_number_lookup_entry *alloc_seq_number_lookup_entry()
{
  return (a_seq_number_lookup_entry *)alloc_primary_file_scope_il(
      sizeof(a_seq_number_lookup_entry));
}

a_param_type *alloc_param_type(a_type *type)
{
  a_param_type *param = alloc_fs_entry<a_param_type>();
  param->type = type;
  param->orig_type = type;
  return param;
}

a_based_type_list_member *alloc_based_type_list_member(a_type *base_type)
{
  return (a_based_type_list_member *)alloc_in_same_region_as(base_type,
                                                             sizeof(a_based_type_list_member));
}

a_field *alloc_field()
{
  a_field *field = alloc_fs_entry<a_field>();
  clear_source_corresp(&field->source_corresp);
  return field;
}

an_exception_specification *alloc_exception_specification()
{
  return alloc_fs_entry<an_exception_specification>();
}

an_exception_specification_type *alloc_exception_specification_type()
{
  return alloc_fs_entry<an_exception_specification_type>();
}

a_routine *alloc_routine()
{
  a_routine *routine = alloc_fs_entry<a_routine>();
  clear_source_corresp(&routine->source_corresp);
  routine->storage_class = sc_unspecified;
  routine->virtual_function_number = 0xffff;
  return routine;
}

a_namespace *alloc_namespace(bool is_alias)
{
  a_namespace *name_space = alloc_fs_entry<a_namespace>();
  clear_namespace(name_space, is_alias);
  return name_space;
}

a_vcall_offset_entry *alloc_vcall_offset_entry()
{
  return alloc_fs_entry<a_vcall_offset_entry>();
}

an_overriding_virtual_function *alloc_overriding_virtual_function()
{
  return alloc_fs_entry<an_overriding_virtual_function>();
}

a_derivation_step *alloc_derivation_step()
{
  return alloc_fs_entry<a_derivation_step>();
}

a_base_class_derivation *alloc_base_class_derivation()
{
  return alloc_fs_entry<a_base_class_derivation>();
}

a_base_class *alloc_base_class()
{
  return alloc_fs_entry<a_base_class>();
}

a_class_list_entry *alloc_list_entry_for_class_full(a_type *class_type, const void *like)
{
  void *place = like == nullptr ? alloc_il(sizeof(a_class_list_entry))
                                : alloc_in_same_region_as(like, sizeof(a_class_list_entry));
  a_class_list_entry *entry = (a_class_list_entry *)place;
  entry->class_type = class_type;
  return entry;
}

a_class_list_entry *alloc_list_entry_for_class(a_type *class_type)
{
  return alloc_list_entry_for_class_full(class_type, nullptr);
}

a_routine_list_entry *alloc_list_entry_for_routine(a_routine *routine)
{
  a_routine_list_entry *entry = alloc_fs_entry<a_routine_list_entry>();
  entry->routine = routine;
  return entry;
}

a_template_arg *alloc_template_arg(a_template_arg_kind kind)
{
  a_template_arg *arg = avail_template_args;
  if (arg != nullptr) {
    avail_template_args = arg->next;
    memset(arg, 0, sizeof(*arg));
  } else {
    arg = alloc_fs_entry<a_template_arg>();
  }
  set_template_arg_kind(arg, kind);
  return arg;
}

void free_template_arg_list(a_template_arg *list)
{
  while (list != nullptr) {
    a_template_arg *next = list->next;
    // An orphan stays on its list, so its record can't be used again.
    if (next_orphan_of(list) == nullptr) {
      list->next = avail_template_args;
      avail_template_args = list;
    }
    list = next;
  }
}

a_scope_orphaned_list_header *alloc_scope_orphaned_list_header()
{
  return alloc_fs_entry<a_scope_orphaned_list_header>();
}

a_template *alloc_template(a_template_kind kind)
{
  a_template *templ = alloc_fs_entry<a_template>();
  clear_source_corresp(&templ->source_corresp);
  templ->kind = kind;
  return templ;
}

a_macro *alloc_macro()
{
  a_macro *macro = alloc_fs_entry<a_macro>();
  clear_source_corresp(&macro->source_corresp);
  return macro;
}

a_template_decl *alloc_template_decl()
{
  return alloc_fs_entry<a_template_decl>();
}

a_template_param *alloc_template_parameter()
{
  return alloc_fs_entry<a_template_param>();
}

a_name_reference *alloc_name_reference()
{
  a_name_reference *reference = alloc_fs_entry<a_name_reference>();
  clear_name_reference(reference);
  return reference;
}

a_name_qualifier *alloc_name_qualifier()
{
  return alloc_fs_entry<a_name_qualifier>();
}

an_attribute *alloc_attribute()
{
  return alloc_fs_entry<an_attribute>();
}

an_attribute_arg *alloc_attribute_arg()
{
  return alloc_fs_entry<an_attribute_arg>();
}

an_attribute_group *alloc_attribute_group()
{
  return alloc_fs_entry<an_attribute_group>();
}

a_per_instantiation_needed_flags_entry *
alloc_per_instantiation_needed_flags_entry(bool in_file_scope)
{
  return in_file_scope ? alloc_fs_entry<a_per_instantiation_needed_flags_entry>()
                       : alloc_curr_entry<a_per_instantiation_needed_flags_entry>();
}

a_decl_position_supplement *alloc_decl_position_supplement(bool in_file_scope)
{
  return in_file_scope ? alloc_fs_entry<a_decl_position_supplement>()
                       : alloc_curr_entry<a_decl_position_supplement>();
}

// --- Entries of the current region ---------------------------------------------------------------

a_variable *alloc_variable(a_storage_class storage_class)
{
  bool is_static =
      storage_class == sc_extern || storage_class == sc_static || storage_class == sc_unspecified;
  a_variable *variable = is_static ? alloc_fs_entry<a_variable>() : alloc_curr_entry<a_variable>();
  clear_source_corresp(&variable->source_corresp);
  variable->storage_class = storage_class;
  variable->asm_name_is_text = true;
  if (storage_class == sc_static && keep_unneeded_statics) variable->source_corresp.needed = true;
  return variable;
}

a_label *alloc_label()
{
  a_label *label = alloc_curr_entry<a_label>();
  clear_source_corresp(&label->source_corresp);
  return label;
}

an_expr_node *alloc_expr_node(an_expr_node_kind kind)
{
  an_expr_node *expr = alloc_curr_entry<an_expr_node>();
  set_expr_node_kind(expr, kind);
  return expr;
}

a_switch_case_entry *alloc_switch_case_entry()
{
  a_switch_case_entry *entry = alloc_curr_entry<a_switch_case_entry>();
  entry->is_reachable = true;
  return entry;
}

a_handler *alloc_handler()
{
  return alloc_curr_entry<a_handler>();
}

a_statement *alloc_statement(a_statement_kind kind)
{
  a_statement *statement = alloc_curr_entry<a_statement>();
  set_statement_kind(statement, kind);
  return statement;
}

a_scope *alloc_scope(a_scope_kind kind, int number, a_routine *routine)
{
  a_scope *scope = alloc_curr_entry<a_scope>();
  scope->number = number;
  scope->stack_depth = -1;
  set_scope_kind(scope, kind, routine);
  return scope;
}

a_using_decl *alloc_using_decl()
{
  return alloc_curr_entry<a_using_decl>();
}

a_dynamic_init *alloc_dynamic_init(a_dynamic_init_kind kind)
{
  a_dynamic_init *init = alloc_curr_entry<a_dynamic_init>();
  init->kind = kind;
  return init;
}

a_local_static_variable_init *alloc_local_static_variable_init()
{
  return alloc_curr_entry<a_local_static_variable_init>();
}

a_vla_dimension *alloc_vla_dimension()
{
  return alloc_curr_entry<a_vla_dimension>();
}

a_constructor_init *alloc_ctor_init(a_constructor_init_kind kind)
{
  a_constructor_init *init = alloc_curr_entry<a_constructor_init>();
  init->kind = kind;
  return init;
}

an_asm_entry *alloc_asm_entry()
{
  an_asm_entry *entry = alloc_curr_entry<an_asm_entry>();
  clear_source_corresp(&entry->source_corresp);
  return entry;
}

an_asm_operand *alloc_asm_operand()
{
  return alloc_curr_entry<an_asm_operand>();
}

a_named_register_list *alloc_named_register_list()
{
  return alloc_curr_entry<a_named_register_list>();
}

a_lowered_eh_routine_ref *alloc_lowered_eh_routine_ref(a_routine *routine)
{
  a_lowered_eh_routine_ref *ref = alloc_curr_entry<a_lowered_eh_routine_ref>();
  ref->routine = routine;
  return ref;
}

a_pragma *alloc_pragma(unsigned char kind, const void *related_entry)
{
  void *place = related_entry == nullptr ? alloc_in_current_region(sizeof(a_pragma))
                                         : alloc_in_same_region_as(related_entry, sizeof(a_pragma));
  a_pragma *pragma = (a_pragma *)place;
  clear_source_corresp(&pragma->source_corresp);
  pragma->kind = kind;
  return pragma;
}

a_local_expr_node_ref *alloc_local_expr_node_ref()
{
  return alloc_curr_entry<a_local_expr_node_ref>();
}

a_local_scope_ref *alloc_local_scope_ref()
{
  return alloc_curr_entry<a_local_scope_ref>();
}

an_il_entity_list_entry *alloc_il_entity_list_entry(an_il_entry_kind kind, void *entity)
{
  an_il_entity_list_entry *entry = alloc_curr_entry<an_il_entity_list_entry>();
  entry->kind = kind;
  entry->entity = entity;
  return entry;
}

a_lambda *alloc_lambda()
{
  return alloc_curr_entry<a_lambda>();
}

a_lambda_capture *alloc_lambda_capture()
{
  return alloc_curr_entry<a_lambda_capture>();
}

// --- Constants -----------------------------------------------------------------------------------

void set_constant_kind(a_constant *constant, a_constant_kind kind)
{
  memset(&constant->variant, 0, sizeof(constant->variant));
  constant->kind = kind;
  if (kind == ck_complex) complex_of(constant) = alloc_fs_entry<a_complex_value>();
}

void set_template_param_constant_kind(a_constant *constant, a_template_param_constant_kind kind)
{
  if (constant->kind != ck_template_param) set_constant_kind(constant, ck_template_param);
  memset(&template_param_of(constant), 0, sizeof(a_constant_template_param));
  template_param_of(constant).kind = kind;
}

void clear_constant(a_constant *constant, a_constant_kind kind)
{
  memset((void *)constant, 0, sizeof(*constant));
  clear_source_corresp(&constant->source_corresp);
  set_constant_kind(constant, kind);
}

a_constant *alloc_constant(a_constant_kind kind)
{
  a_constant *constant = alloc_curr_entry<a_constant>();
  clear_source_corresp(&constant->source_corresp);
  set_constant_kind(constant, kind);
  return constant;
}

a_constant *fs_constant(a_constant_kind kind)
{
  a_constant *constant = alloc_fs_entry<a_constant>();
  clear_source_corresp(&constant->source_corresp);
  set_constant_kind(constant, kind);
  return constant;
}

// --- Types ---------------------------------------------------------------------------------------

void set_type_kind(a_type *type, a_type_kind kind)
{
  memset((void *)&type->variant, 0, sizeof(type->variant));
  type->kind = kind;
  switch (kind) {
  case tk_routine: {
    a_routine_type_supplement *supplement = alloc_fs_entry<a_routine_type_supplement>();
    supplement->type_linkage = default_routine_name_linkage;
    as_routine(type).routine_supplement = supplement;
    break;
  }
  case tk_class:
  case tk_struct:
  case tk_union: {
    a_class_type_supplement *supplement = alloc_fs_entry<a_class_type_supplement>();
    as_class(type).class_supplement = supplement;
    clear_class_type_definition_fields(type);
    break;
  }
  case tk_template_param:
    as_template_param(type).template_param_supplement =
        alloc_fs_entry<a_template_param_type_supplement>();
    break;
  case tk_typeref: // its supplement is made by those who have something to put in it
  case tk_error:
  case tk_void:
  case tk_integer:
  case tk_float:
  case tk_imaginary:
  case tk_complex:
  case tk_pointer:
  case tk_array:
  case tk_ptr_to_member:
  case tk_cl_vector:
  case tk_nullptr:
  case tk_unknown: break;
  case tk_last: unexpected_kind("type");
  }
}

void clear_type(a_type *type, a_type_kind kind)
{
  memset((void *)type, 0, sizeof(*type));
  clear_source_corresp(&type->source_corresp);
  type->alignment = 1;
  set_type_kind(type, kind);
}

a_type *alloc_type(a_type_kind kind)
{
  a_type *type = alloc_fs_entry<a_type>();
  clear_source_corresp(&type->source_corresp);
  type->alignment = 1;
  set_type_kind(type, kind);
  return type;
}

void clear_class_type_definition_fields(a_type *class_type)
{
  a_class_type_supplement *supplement = class_supplement_of(class_type);
  as_class(class_type).first_field = nullptr;
  supplement->base_classes = nullptr;
  supplement->virtual_bases = nullptr;
  supplement->primary_base = nullptr;
  supplement->nonvirtual_size = 0;
  supplement->nonvirtual_alignment = 1;
  supplement->next_virtual_function_number = 0xffff;
  supplement->vptr_offset = 0;
  supplement->vptr_owner_base = nullptr;
  supplement->vcall_offsets = nullptr;
  supplement->next_negative_vtable_index = -3;
  supplement->negative_index_after_vbases = -3;
  supplement->vtbl_variable = nullptr;
  supplement->subobject_type = nullptr;
}

// --- Expressions and statements ------------------------------------------------------------------

void set_expr_node_kind(an_expr_node *expr, an_expr_node_kind kind)
{
  memset(&expr->variant, 0, sizeof(expr->variant));
  expr->kind = kind;
  switch (kind) {
  case enk_operation: operation_of(expr).op = eok_last; break;
  case enk_new_delete: new_delete_of(expr) = alloc_curr_entry<a_new_delete_supplement>(); break;
  case enk_throw: throw_of(expr) = alloc_curr_entry<a_throw_supplement>(); break;
  case enk_condition: condition_of(expr) = alloc_curr_entry<a_condition_supplement>(); break;
  case enk_sizeof: sizeof_of(expr).is_type = true; break;
  case enk_statement_expr: statement_expressions_exist = true; break;
  case enk_builtin_operation: builtin_operation_of(expr).op = bok_last; break;
  case enk_error:
  case enk_constant:
  case enk_variable:
  case enk_field:
  case enk_temp_init:
  case enk_lambda:
  case enk_lifetime_wrapper:
  case enk_typeid:
  case enk_sizeof_pack:
  case enk_address_of_ellipsis:
  case enk_temp_ref:
  case enk_lowered_eh_construct:
  case enk_wrapper_call:
  case enk_routine:
  case enk_variable_marker:
  case enk_type_operand:
  case enk_param_ref: break;
  case enk_last: unexpected_kind("expression node");
  }
}

void clear_expr_node(an_expr_node *expr, an_expr_node_kind kind)
{
  memset((void *)expr, 0, sizeof(*expr));
  set_expr_node_kind(expr, kind);
}

void set_lowered_eh_construct_node_kind(an_expr_node *expr, a_lowered_eh_kind kind)
{
  set_expr_node_kind(expr, enk_lowered_eh_construct);
  eh_construct_of(expr).kind = kind;
  if (kind == lek_function_prologue) {
    eh_construct_of(expr).routine_ref = alloc_lowered_eh_routine_ref(nullptr);
  }
}

void set_statement_kind(a_statement *statement, a_statement_kind kind)
{
  memset(&statement->variant, 0, sizeof(statement->variant));
  statement->kind = kind;
  switch (kind) {
  case stmk_block: {
    a_block_supplement *supplement = alloc_curr_entry<a_block_supplement>();
    supplement->end_is_reachable = true;
    block_supplement_of(statement) = supplement;
    break;
  }
  case stmk_for: for_supplement_of(statement) = alloc_curr_entry<a_for_supplement>(); break;
  case stmk_switch:
    switch_supplement_of(statement) = alloc_curr_entry<a_switch_supplement>();
    break;
  case stmk_try: try_supplement_of(statement) = alloc_curr_entry<a_try_supplement>(); break;
  case stmk_expr:
  case stmk_if:
  case stmk_while:
  case stmk_goto:
  case stmk_label:
  case stmk_return:
  case stmk_do:
  case stmk_case:
  case stmk_init:
  case stmk_asm:
  case stmk_decl_entities:
  case stmk_vla_decl:
  case stmk_type_or_var_decl:
  case stmk_computed_goto:
  case stmk_vla_dealloc: break;
  case stmk_last: unexpected_kind("statement");
  }
}

void set_dynamic_init_kind(a_dynamic_init *init, a_dynamic_init_kind kind)
{
  memset(&init->variant, 0, sizeof(init->variant));
  init->kind = kind;
}

void set_template_arg_kind(a_template_arg *arg, a_template_arg_kind kind)
{
  memset(&arg->variant, 0, sizeof(arg->variant));
  arg->kind = kind;
}

void set_scope_kind(a_scope *scope, a_scope_kind kind, a_routine *routine)
{
  memset(&scope->owner, 0, sizeof(scope->owner));
  scope->kind = kind;
  if (kind == sck_function) scope->owner.routine = routine;
}

void set_routine_special_kind(a_routine *routine, a_routine_special_kind kind)
{
  memset(&routine->special, 0, sizeof(routine->special));
  routine->special_kind = kind;
}

void clear_namespace(a_namespace *name_space, bool is_alias)
{
  memset((void *)name_space, 0, sizeof(*name_space));
  clear_source_corresp(&name_space->source_corresp);
  name_space->is_alias = is_alias;
}

void clear_name_reference(a_name_reference *reference)
{
  memset((void *)reference, 0, sizeof(*reference));
  reference->position_seq = -1;
}

void clear_decl_position_supplement(a_decl_position_supplement *supplement)
{
  memset((void *)supplement, 0, sizeof(*supplement));
}

// --- Regions -------------------------------------------------------------------------------------

void set_scope_of_region(int region, a_scope *scope)
{
  ensure_mem_region_table_space(region);
  region_scope_table[region] = scope;
}

a_scope *new_il_region(a_scope_kind kind, int number, a_routine *routine)
{
  curr_il_region_number = kind == sck_function ? new_memory_region() : file_scope_region_number;
  a_scope *scope = alloc_scope(kind, number, routine);
  set_scope_of_region(curr_il_region_number, scope);
  return scope;
}

a_scope *scope_for_routine(const a_routine *routine)
{
  return routine->region_number == 0 ? nullptr : region_scope_table[routine->region_number];
}

// --- Heads of entries ----------------------------------------------------------------------------

a_source_correspondence *source_corresp_for_il_entry(void *entry, an_il_entry_kind kind)
{
  switch (kind) {
  case iek_constant: return &((a_constant *)entry)->source_corresp;
  case iek_type: return &((a_type *)entry)->source_corresp;
  case iek_variable: return &((a_variable *)entry)->source_corresp;
  case iek_field: return &((a_field *)entry)->source_corresp;
  case iek_routine: return &((a_routine *)entry)->source_corresp;
  case iek_label: return &((a_label *)entry)->source_corresp;
  case iek_namespace: return &((a_namespace *)entry)->source_corresp;
  case iek_asm_entry: return &((an_asm_entry *)entry)->source_corresp;
  case iek_pragma: return &((a_pragma *)entry)->source_corresp;
  case iek_template: return &((a_template *)entry)->source_corresp;
  case iek_macro: return &((a_macro *)entry)->source_corresp;
  default: return nullptr;
  }
}

// The state of a new head: an entity that the compiler makes counts as referenced until a symbol
// says otherwise.
static const a_source_correspondence initial_source_corresp = []() {
  a_source_correspondence head = {};
  head.referenced = true;
  head.scope_depth = -1;
  return head;
}();

void clear_source_corresp(a_source_correspondence *corresp)
{
  *corresp = initial_source_corresp;
}

void clear_source_corresp_name(a_source_correspondence *corresp)
{
  corresp->name = nullptr;
  corresp->internal_name = nullptr;
  corresp->name_is_fixed = false;
}

void break_source_corresp(a_source_correspondence *corresp)
{
  a_source_correspondence old = *corresp;
  corresp->assoc_symbol = nullptr;
  clear_source_corresp_name(corresp);
  corresp->trans_unit_corresp = nullptr;
  corresp->parent_scope = nullptr;
  corresp->enclosing_routine = nullptr;
  corresp->decl_position_supplement = nullptr;
  corresp->name_reference = nullptr;
  corresp->needed = false;
  corresp->per_instantiation_needed_flags = nullptr;
  corresp->is_class_member = false;
  corresp->is_nameless = false;
  corresp->has_promoted_name = false;
  corresp->access = as_public;
  corresp->has_local_expr_ref = false;
  corresp->has_local_scope_ref = false;
  corresp->is_deprecated = old.is_deprecated;
}

void break_instance_source_corresp(a_source_correspondence *corresp)
{
  corresp->decl_position_supplement = nullptr;
  corresp->name_reference = nullptr;
  corresp->per_instantiation_needed_flags = nullptr;
}

void break_constant_source_corresp(a_constant *constant)
{
  if (constant->kind == ck_template_param) {
    a_template_param_constant_kind kind = template_param_of(constant).kind;
    bool head_names_it = kind == tpck_param || kind == tpck_unknown_function ||
                         kind == tpck_address_of_unknown_function;
    if (head_names_it) return;
  }
  break_source_corresp(&constant->source_corresp);
}

void assign_internal_name(a_source_correspondence *corresp, const char *name)
{
  corresp->name = name;
  corresp->internal_name = name;
  corresp->name_is_fixed = true;
}

// --- Orphans -------------------------------------------------------------------------------------

an_orphaned_list orphaned_file_scope_il_entries[iek_last];

static bool type_is_never_orphaned(const a_type *type)
{
  return kind_has_class_part(type->kind) || (type->kind == tk_integer && as_integer(type).is_enum);
}

// Rules 3 and 4: is nothing but a pointer of another entry leading here?
static bool is_orphan(void *entry, an_il_entry_kind kind)
{
  switch (kind) {
  case iek_complex_value:
  case iek_template_arg:
  case iek_name_reference:
  case iek_attribute: return true;
  case iek_base_class: {
    const a_type *derived_class = ((a_base_class *)entry)->derived_class;
    return derived_class != nullptr && as_class(derived_class).is_template_dependent;
  }
  case iek_type:
    if (type_is_never_orphaned((a_type *)entry)) return false;
    if (((a_type *)entry)->kind == tk_template_param) return true;
    break;
  case iek_constant:
    if (((a_constant *)entry)->kind == ck_template_param) return true;
    break;
  default: return false;
  }
  const a_source_correspondence *corresp = source_corresp_for_il_entry(entry, kind);
  if (corresp->name != nullptr || corresp->is_class_member) return false;
  const a_scope *parent = corresp->parent_scope;
  return parent == nullptr || parent->kind != sck_namespace;
}

// The front end's lists of each unit, in the order of its record's list heads.
void f_possibly_add_orphaned_file_scope_il_entry(void *entry, an_il_entry_kind kind,
                                                 a_translation_unit *)
{
  if (next_orphan_of(entry) != nullptr) return;
  if (!is_orphan(entry, kind)) return;
  an_orphaned_list *list = &orphaned_file_scope_il_entries[kind];
  if (list->tail == entry) return;
  if (list->head == nullptr) {
    list->head = entry;
  } else {
    next_orphan_of(list->tail) = entry;
  }
  list->tail = entry;
}

static a_scope_orphaned_list_header *last_scope_orphaned_list;

static void add_one_scope_orphaned_list(a_scope *scope)
{
  if (scope->types == nullptr && scope->variables == nullptr && scope->namespaces == nullptr) {
    return;
  }
  a_routine *routine = scope->kind == sck_function ? scope->owner.routine : nullptr;
  a_scope_orphaned_list_header *header = alloc_scope_orphaned_list_header();
  header->routine = routine;
  header->scope_number = scope->number;
  header->types = scope->types;
  header->variables = scope->variables;
  header->namespaces = scope->namespaces;
  if (il_header.scope_orphaned_lists == nullptr) {
    il_header.scope_orphaned_lists = header;
  } else {
    last_scope_orphaned_list->next = header;
  }
  last_scope_orphaned_list = header;
  scope->has_orphaned_lists = true;
}

void add_scope_orphaned_il_lists(a_scope *scope)
{
  add_one_scope_orphaned_list(scope);
  for (a_scope *sub = scope->subscopes; sub != nullptr; sub = sub->next) {
    add_scope_orphaned_il_lists(sub);
  }
}

// --- Initialization ------------------------------------------------------------------------------

void il_one_time_init()
{
  register_trans_unit_variable(avail_template_args);
  register_trans_unit_variable(curr_il_region_number);
  register_trans_unit_variable(curr_object_lifetime);
  register_trans_unit_variable(orphaned_file_scope_il_entries);
  register_trans_unit_variable(last_scope_orphaned_list);
  default_routine_name_linkage = C_dialect == 2 ? nlk_cplusplus : nlk_c;
}

void il_trans_unit_init()
{
  curr_object_lifetime = nullptr;
  needed_flag_bit_number = 0;
  statement_expressions_exist = false;
  avail_template_args = nullptr;
  last_scope_orphaned_list = nullptr;
  memset(orphaned_file_scope_il_entries, 0, sizeof(orphaned_file_scope_il_entries));
  empty_shareable_constants_table();
  curr_il_region_number = 0;
  compute_il_prefix_size();
  okay_to_eliminate_unneeded_il_entries = remove_unneeded_entities;
}
