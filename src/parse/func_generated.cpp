// func_generated.cpp - bodies of the functions that the compiler writes: constructors, destructors and
// assignments of members.
// Rule:    a body is made when something that is evaluated uses the function, at the end of the unit;
//          that of a local class's function at the end of the function around it.
// Entry:   generated_routine_is_needed, force_definition_of_compiler_generated_routine,
//          define_needed_generated_routines, require_definitions_of_virtual_functions_in_class.
// See:     C++ 12.1p7, 12.4p5, 12.8.
#include "driver/target.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "mem/mem_manage.h"
#include "parse/class_decl.h"
#include "parse/decl_inits.h"
#include "parse/exprutil.h"
#include "parse/func_def.h"
#include "parse/layout.h"
#include "parse/overload.h"
#include "parse/scope_stk.h"
#include "parse/statements_parts.h"
#include "parse/symbol_ref.h"

static a_routine_list_entry *needed_routines; // asked for, in order, without a body so far
static a_routine_list_entry **needed_routines_end = &needed_routines;
static a_routine_list_entry *avail_entries;

//---------------------------------------------------------------------------------------------
// The assignment of a class.

// One operator= while its body is made.
struct a_memberwise_assignment {
  a_type *class_type;
  a_variable *this_variable;
  a_variable *source;
  unsigned source_qualifiers;
  a_source_position position;
};

static an_expr_node *target_object(const a_memberwise_assignment *assignment)
{
  return add_indirection_to_node(var_rvalue_expr(assignment->this_variable));
}

static an_expr_node *source_object(const a_memberwise_assignment *assignment)
{
  return add_ref_indirection_to_node(var_rvalue_expr(assignment->source));
}

static void add_expression(an_expr_node *expr)
{
  a_statement *statement = alloc_statement(stmk_expr);
  statement->expr = expr;
  statement->start_position = statement->end_position = pos_curr_token;
  statement->is_compiler_generated = true;
  link_statement(statement);
}

static an_expr_node *call_of_assignment(a_routine *routine, an_expr_node *target,
                                        an_expr_node *source)
{
  mark_routine_referenced(routine);
  a_param_type *param = param_types_of(skip_typerefs(routine->type));
  bool by_reference = is_any_reference_type(param->type);
  an_expr_node *function = function_addr_expr(routine);
  function->next = add_address_of_to_node(target);
  if (by_reference) {
    source = add_reference_to_to_node(source);
  } else {
    source->is_lvalue = false;
    source->type = make_unqualified_type(source->type);
  }
  function->next->next = source;
  return make_operator_node(eok_call, return_type_of(routine->type), function);
}

// Two objects that are no arrays.
static void assign_object(const a_memberwise_assignment *assignment, an_expr_node *target,
                          an_expr_node *source)
{
  a_type *type = skip_typerefs(target->type);
  a_source_position position = assignment->position;
  if (kind_has_class_part(type->kind) &&
      !class_symbol_supplement_of(type)->has_trivial_copy_assignment) {
    a_symbol *symbol = select_assignment_operator_for_memberwise_copy(
        type, get_type_qualifiers(source->type), &position);
    if (symbol == nullptr) return;
    a_routine *routine = routine_of_symbol(symbol);
    check_use_of_deleted_function(routine, &position);
    add_expression(call_of_assignment(routine, target, source));
    return;
  }
  source->is_lvalue = false;
  source->type = make_unqualified_type(source->type);
  a_statement *statement = make_assignment_statement(target, source);
  statement->is_compiler_generated = true;
  link_statement(statement);
}

static an_expr_node *element_at(an_expr_node *array, a_type *element, a_variable *index)
{
  a_type *pointer = make_pointer_type(element);
  an_expr_node *start = add_cast(add_address_of_to_node(array), pointer);
  an_expr_node *place = make_binary_node(eok_pointer_add, pointer, start, var_rvalue_expr(index));
  return add_indirection_to_node(place);
}

// index = 0; while (index != count) { target[index] = source[index]; index = index + 1; }
static void assign_arrays(const a_memberwise_assignment *assignment, a_type *type,
                          an_expr_node *target, an_expr_node *source)
{
  a_type *element = skip_array_types(type);
  a_type *size_type = integer_type(targ_size_t_int_kind);
  a_target_size size = skip_typerefs(type)->size, element_size = skip_typerefs(element)->size;
  a_target_size count = element_size != 0 ? size / element_size : 0;
  a_variable *index = alloc_temporary_variable(size_type, false);
  link_statement(make_assignment_statement(var_lvalue_expr(index),
                                           node_for_integer_constant(0, targ_size_t_int_kind)));
  a_statement *loop = add_statement_at_stmt_pos(stmk_while, &pos_curr_token);
  an_expr_node *bound = node_for_integer_constant((long long)count, targ_size_t_int_kind);
  loop->expr = make_binary_node(eok_ne, integer_type(ik_int), var_rvalue_expr(index), bound);
  a_statement *body = alloc_statement(stmk_block);
  body->start_position = body->end_position = pos_curr_token;
  body_of(loop) = body;
  a_statement **saved = top_stmt_entry()->insertion_pointer;
  top_stmt_entry()->insertion_pointer = &first_statement_of(body);
  a_type *const_element = f_make_qualified_type(element, get_type_qualifiers(source->type));
  assign_object(assignment, element_at(target, element, index),
                element_at(source, const_element, index));
  an_expr_node *next = make_binary_node(eok_add, size_type, var_rvalue_expr(index),
                                        node_for_integer_constant(1, targ_size_t_int_kind));
  link_statement(make_assignment_statement(var_lvalue_expr(index), next));
  top_stmt_entry()->insertion_pointer = saved;
}

static void assign_field(const a_memberwise_assignment *assignment, a_field *field)
{
  if (field->is_bit_field && field->source_corresp.name == nullptr) return;
  if (is_error_type(field->type)) return;
  an_expr_node *target = field_lvalue_selection_expr(target_object(assignment), field);
  an_expr_node *source = field_lvalue_selection_expr(source_object(assignment), field);
  if (is_array_type(field->type)) {
    assign_arrays(assignment, field->type, target, source);
  } else {
    assign_object(assignment, target, source);
  }
}

// A virtual base that a direct base has too is assigned by that one.
static bool virtual_base_class_is_indirect(a_base_class *base)
{
  for (a_base_class_derivation *d = base->derivations; d != nullptr; d = d->next) {
    if (d->path->next != nullptr) return true;
  }
  return false;
}

static void assign_bases(const a_memberwise_assignment *assignment)
{
  a_base_class *base = class_supplement_of(assignment->class_type)->base_classes;
  for (; base != nullptr; base = base->next) {
    if (!base->is_direct || is_empty_class_type(base->type)) continue;
    if (base->is_virtual && virtual_base_class_is_indirect(base)) continue;
    assign_object(assignment, base_class_selection_expr(target_object(assignment), base),
                  base_class_selection_expr(source_object(assignment), base));
  }
}

// Members that keep their value stand against an assignment; they are listed.
static bool check_members_can_be_assigned(const a_memberwise_assignment *assignment)
{
  bool all_can = true;
  a_field *field = as_class(assignment->class_type).first_field;
  for (; field != nullptr; field = field->next) {
    bool is_reference = is_any_reference_type(field->type);
    if (!is_reference && !is_const_qualified(field->type)) continue;
    if (field->source_corresp.assoc_symbol == nullptr || field->source_corresp.name == nullptr)
      continue;
    if (all_can) {
      pos_sy_start_error(ec_bad_default_assignment, assignment->position,
                         assignment->class_type->source_corresp.assoc_symbol);
    }
    all_can = false;
    sym_add_diag_info(is_reference ? ec_reference_entity : ec_const_entity,
                      field->source_corresp.assoc_symbol);
  }
  if (!all_can) end_error();
  return all_can;
}

static void assign_members(const a_memberwise_assignment *assignment)
{
  if (assignment->class_type->kind == tk_union ||
      class_symbol_supplement_of(assignment->class_type)->has_trivial_copy_assignment) {
    an_expr_node *source = source_object(assignment);
    source->is_lvalue = false;
    source->type = make_unqualified_type(source->type);
    link_statement(make_assignment_statement(target_object(assignment), source));
    return;
  }
  if (!check_members_can_be_assigned(assignment)) return;
  assign_bases(assignment);
  for (a_field *field = as_class(assignment->class_type).first_field; field; field = field->next)
    assign_field(assignment, field);
}

static void add_return_of_object(const a_memberwise_assignment *assignment)
{
  a_statement *statement = alloc_statement(stmk_return);
  statement->start_position = statement->end_position = pos_curr_token;
  statement->is_compiler_generated = true;
  statement->expr = add_reference_to_to_node(target_object(assignment));
  link_statement(statement);
  curr_stmt_reachable = false;
}

static void body_of_assignment(a_routine *routine, a_variable *source)
{
  a_memberwise_assignment assignment = {};
  assignment.class_type = parent_class_of(&routine->source_corresp);
  assignment.this_variable = top_scope()->il_scope->this_param;
  assignment.source = source;
  assignment.position = error_position;
  assign_members(&assignment);
  add_return_of_object(&assignment);
}

//---------------------------------------------------------------------------------------------
// A body.

static a_variable *make_generated_parameter(a_routine *routine)
{
  a_param_type *param_type = param_types_of(skip_typerefs(routine->type));
  if (param_type == nullptr) return nullptr;
  a_variable *variable = alloc_variable(sc_auto);
  variable->type = param_type->type;
  variable->param_type = param_type;
  variable->is_parameter = variable->is_definition = true;
  variable->is_compiler_generated = true;
  variable->source_corresp.is_local = variable->source_corresp.is_nameless = true;
  variable->source_corresp.needed = true;
  add_to_parameters_list(variable, depth_scope_stack);
  return variable;
}

static void make_body(a_routine *routine)
{
  a_struct_stmt_stack_state stack_state;
  push_scope(sck_function, -1, routine->type, routine);
  expr_stack = nullptr;
  make_this_parameter(routine);
  a_variable *parameter = make_generated_parameter(routine);
  new_struct_stmt_stack(&stack_state);
  a_statement *block;
  if (routine->special_kind == sfk_operator) {
    block = open_generated_body();
    body_of_assignment(routine, parameter);
  } else {
    if (routine->special_kind == sfk_constructor) {
      ctor_initializer(routine, false);
    } else {
      dtor_initializer(routine);
    }
    block = open_generated_body();
  }
  close_generated_body(block);
  pop_scope();
  restore_struct_stmt_stack(&stack_state);
}

static bool can_be_generated(const a_routine *routine)
{
  if (!routine->is_compiler_generated && !routine->is_defaulted) return false;
  if (routine->is_defined || routine->is_deleted) return false;
  a_type *class_type = parent_class_of(&routine->source_corresp);
  if (class_type == nullptr || is_incomplete_type(class_type)) return false;
  switch (routine->special_kind) {
  case sfk_constructor:
  case sfk_destructor: return true;
  case sfk_operator: return routine->special.operator_kind == onk_assign;
  default: return false;
  }
}

void force_definition_of_compiler_generated_routine(a_routine *routine)
{
  if (!can_be_generated(routine)) return;
  a_type *class_type = parent_class_of(&routine->source_corresp);
  a_source_position saved_error_position = error_position, saved_position = pos_curr_token;
  auto saved_expr_stack = expr_stack;
  error_position = pos_curr_token = class_type->source_corresp.decl_position;
  push_class_and_template_reactivation_scope(class_type, false, false);
  make_body(routine);
  pop_class_reactivation_scope();
  expr_stack = saved_expr_stack;
  pos_curr_token = saved_position;
  error_position = saved_error_position;
}

//---------------------------------------------------------------------------------------------
// The functions that wait.

void generated_routine_is_needed(a_routine *routine)
{
  if (routine->is_generation_pending || !can_be_generated(routine)) return;
  routine->is_generation_pending = true;
  a_routine_list_entry *entry = avail_entries;
  if (entry != nullptr) {
    avail_entries = entry->next;
  } else {
    entry = (a_routine_list_entry *)alloc_in_region(0, sizeof *entry);
  }
  *entry = {};
  entry->routine = routine;
  *needed_routines_end = entry;
  needed_routines_end = &entry->next;
}

static bool is_of_local_class(const a_routine *routine)
{
  return parent_class_of(&routine->source_corresp)->source_corresp.is_local;
}

void define_needed_generated_routines(bool local_ones_only)
{
  // A body may ask for further ones, which join the list at its end.
  a_routine_list_entry **link = &needed_routines;
  while (a_routine_list_entry *entry = *link) {
    if (local_ones_only && !is_of_local_class(entry->routine)) {
      link = &entry->next;
      continue;
    }
    force_definition_of_compiler_generated_routine(entry->routine);
    *link = entry->next;
    if (needed_routines_end == &entry->next) needed_routines_end = link;
    entry->next = avail_entries;
    avail_entries = entry;
  }
}

void require_definitions_of_virtual_functions_in_class(a_type *class_type)
{
  a_scope *scope = class_supplement_of(class_type)->class_scope;
  if (scope == nullptr) return;
  for (a_routine *routine = scope->routines; routine != nullptr; routine = routine->next) {
    if (routine->is_virtual && !routine->is_pure_virtual) mark_routine_referenced(routine);
  }
}

void func_generated_init()
{
  needed_routines = nullptr;
  needed_routines_end = &needed_routines;
  avail_entries = nullptr;
}
