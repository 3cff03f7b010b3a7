// lower_cplusplus.cpp - the first steps of lowering C++: references become pointers, member functions
// functions with a parameter for `this`, class and namespace scopes are emptied into the file scope.
// Entry:   lower_cplusplus_il_memory_region.
#include "lower/lower_cplusplus.h"

#include "il/il.h"
#include "il/il_alloc.h"
#include "il/il_walk.h"
#include "lower/lower_c99.h"
#include "lower/lower_class.h"
#include "lower/lower_il.h"
#include "lower/lower_name.h"

// --- Expressions ---------------------------------------------------------------------------------

static void lower_reference_node(an_expr_node *expr, an_expr_or_stmt_traversal_block *)
{
  if (expr->kind != enk_operation) return;
  switch (op_of(expr)) {
  case eok_reference_to: set_node_operator(expr, eok_address_of); break;
  case eok_ref_indirection: set_node_operator(expr, eok_indirection); break;
  default: break;
  }
}

static void init_traversal_block(an_expr_or_stmt_traversal_block *block)
{
  clear_expr_or_stmt_traversal_block(block);
  block->expr_callback = lower_reference_node;
  block->follow_dynamic_inits = true;
}

// --- Routines ------------------------------------------------------------------------------------

static void lower_function_scope(a_scope *scope)
{
  for (a_variable *param = scope->parameters; param != nullptr; param = param->next)
    param->is_by_reference = class_is_passed_by_address(param->type);
  a_variable *this_param = scope->this_param;
  if (this_param != nullptr && scope->parameters != this_param) {
    this_param->next = scope->parameters;
    scope->parameters = this_param;
  }
  if (scope->assoc_block == nullptr) return;
  an_expr_or_stmt_traversal_block block;
  init_traversal_block(&block);
  traverse_statement(scope->assoc_block, &block);
}

static void lower_routine_types(a_scope *scope)
{
  for (a_routine *routine = scope->routines; routine; routine = routine->next)
    lower_member_function_type(routine);
}

// --- Emptying the scopes -------------------------------------------------------------------------

static void flatten_scope(a_scope *scope);

template <class an_entity>
static void move_list(an_entity **list, void (*add)(an_entity *entity, int depth))
{
  an_entity *next;
  for (an_entity *entity = *list; entity != nullptr; entity = next) {
    next = entity->next;
    entity->next = nullptr;
    entity->source_corresp.is_class_member = false;
    add(entity, 0);
  }
  *list = nullptr;
}

static void empty_scope(a_scope *scope)
{
  move_list(&scope->types, add_to_types_list);
  move_list(&scope->constants, add_to_constants_list);
  move_list(&scope->variables, add_to_variables_list);
  move_list(&scope->routines, add_to_routines_list);
}

static void flatten_classes(a_type *types)
{
  a_type *next;
  for (a_type *type = types; type != nullptr; type = next) {
    next = type->next;
    if (!kind_has_class_part(type->kind)) continue;
    a_scope *scope = class_supplement_of(type)->class_scope;
    if (scope == nullptr) continue;
    if (as_class(type).layout_done) prelower_class_type(type);
    lower_routine_types(scope);
    flatten_classes(scope->types);
    empty_scope(scope);
  }
}

static void flatten_scope(a_scope *scope)
{
  lower_routine_types(scope);
  for (a_namespace *name_space = scope->namespaces; name_space; name_space = name_space->next) {
    if (name_space->is_alias || name_space->variant.scope == nullptr) continue;
    flatten_scope(name_space->variant.scope);
    empty_scope(name_space->variant.scope);
  }
  flatten_classes(scope->types);
}

// --- Regions -------------------------------------------------------------------------------------

static void flatten_local_classes(a_scope *scope)
{
  flatten_classes(scope->types);
  for (a_scope *inner = scope->subscopes; inner != nullptr; inner = inner->next)
    flatten_local_classes(inner);
}

void lower_cplusplus_il_memory_region(int region)
{
  if (region == file_scope_region_number) {
    if (ptr_to_member_function_types_used) {
      mark_as_needed(make_mptr_type(), iek_type);
      set_class_definition_needed(make_mptr_type());
    }
    lower_vtbls_of_scope(il_header.primary_scope);
    flatten_scope(il_header.primary_scope);
    lower_file_scope_dynamic_inits();
  } else if (region_scope_table[region] != nullptr) {
    mangle_local_types(region_scope_table[region]);
    lower_function_scope(region_scope_table[region]);
    flatten_local_classes(region_scope_table[region]);
  }
  lower_c99_il_memory_region(region);
}
