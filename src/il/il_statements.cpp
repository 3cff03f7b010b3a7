// il_statements.cpp - builders of statements, variables and initializations, and small facts of
// entities.
// Entry:   alloc_expr_statement, change_statement_into_block, make_variable, make_vla_dimension,
//          get_variable_initializer, next_initializable_field.
#include "il/il.h"

#include "driver/flags.h"
#include "driver/target.h"

const char *const name_linkage_kind_names[4] = {"no", "internal", "C++", "C"};

// --- Statements ----------------------------------------------------------------------------------

a_statement *alloc_expr_statement(an_expr_node *expr)
{
  a_statement *statement = alloc_statement(stmk_expr);
  set_expr_result_not_used(expr);
  statement->expr = expr;
  statement->start_position = expr->expr_range.start;
  statement->end_position = expr->expr_range.end;
  return statement;
}

a_statement *make_assignment_statement(an_expr_node *lhs, an_expr_node *rhs)
{
  an_expr_operator_kind op = assignment_operator_for_type(lhs->type);
  return alloc_expr_statement(make_binary_node(op, rvalue_type(lhs->type), lhs, rhs));
}

a_statement *make_array_assignment_statement(an_expr_node *lhs, an_expr_node *rhs)
{
  return alloc_expr_statement(make_binary_node(eok_struct_assign, lhs->type, lhs, rhs));
}

a_statement *copy_statement(const a_statement *statement)
{
  a_statement *copy = alloc_curr_entry<a_statement>();
  *copy = *statement;
  entry_flags_of(copy).lowered = entry_flags_of(statement).lowered;
  return copy;
}

// The copy takes the place of `original` in records that point back at their statement.
static void redirect_links_to_statement(a_statement *copy)
{
  switch (copy->kind) {
  case stmk_label: label_of(copy)->statement = copy; break;
  case stmk_case: case_entry_of(copy)->statement = copy; break;
  case stmk_block: {
    a_scope *scope = block_supplement_of(copy)->scope;
    if (scope != nullptr) scope->assoc_block = copy;
    break;
  }
  default: break;
  }
}

a_statement *change_statement_into_block(a_statement *statement)
{
  a_statement *copy = copy_statement(statement);
  copy->next = nullptr;
  redirect_links_to_statement(copy);
  statement->expr = nullptr;
  statement->pre_statement = nullptr;
  statement->attributes = nullptr;
  statement->pragmas = nullptr;
  statement->has_associated_pragma = false;
  set_statement_kind(statement, stmk_block);
  first_statement_of(statement) = copy;
  block_supplement_of(statement)->end_position = statement->end_position;
  block_supplement_of(statement)->is_compiler_generated = true;
  return copy;
}

a_statement *last_statement_in_block(a_statement *block)
{
  a_statement *statement = first_statement_of(block);
  if (statement == nullptr) return nullptr;
  while (statement->next != nullptr)
    statement = statement->next;
  return statement;
}

void turn_statement_into_noop(a_statement *statement)
{
  statement->expr = nullptr;
  statement->pre_statement = nullptr;
  set_statement_kind(statement, stmk_block);
  block_supplement_of(statement)->is_compiler_generated = true;
}

// --- Variables -----------------------------------------------------------------------------------

a_variable *make_variable(a_type *type, a_storage_class storage_class, bool compiler_generated)
{
  a_variable *variable = alloc_variable(storage_class);
  variable->type = type;
  variable->is_definition = true;
  variable->is_compiler_generated = compiler_generated;
  variable->source_corresp.is_nameless = true;
  variable->source_corresp.is_local = !is_file_scope_entry(variable);
  return variable;
}

a_variable *make_handler_parameter(a_type *type, a_handler *handler)
{
  a_variable *variable = make_variable(type, sc_auto, false);
  variable->is_handler_param = true;
  handler->parameter = variable;
  return variable;
}

unsigned alignment_of_variable(a_variable *variable)
{
  if (variable->alignment != 0) return variable->alignment;
  return f_alignment_of_type(variable->type);
}

void put_variable_into_comdat_group(a_variable *variable, const char *name)
{
  variable->in_comdat_group = true;
  variable->comdat_group_name = name;
}

a_local_static_variable_init *make_local_static_variable_init(a_variable *variable, a_scope *scope)
{
  a_local_static_variable_init *init = alloc_local_static_variable_init();
  init->variable = variable;
  variable->init_kind = initk_function_local;
  add_to_local_static_inits_list(init, scope);
  return init;
}

a_local_static_variable_init *find_local_static_variable_init(a_variable *variable, a_scope *scope)
{
  for (; scope != nullptr; scope = scope->parent) {
    for (a_local_static_variable_init *init = scope->local_static_inits; init != nullptr;
         init = init->next) {
      if (init->variable == variable) return init;
    }
  }
  return nullptr;
}

void get_variable_initializer(a_variable *variable, a_scope *scope, an_init_kind *kind,
                              a_constant **constant, a_dynamic_init **dynamic_init)
{
  *kind = variable->init_kind;
  *constant = nullptr;
  *dynamic_init = nullptr;
  switch (variable->init_kind) {
  case initk_none:
  case initk_zero: break;
  case initk_static: *constant = constant_initializer_of(variable); break;
  case initk_dynamic: *dynamic_init = dynamic_initializer_of(variable); break;
  case initk_function_local: {
    a_scope *home = get_parent_scope_of(&variable->source_corresp);
    if (home == nullptr) home = scope;
    a_local_static_variable_init *init = find_local_static_variable_init(variable, home);
    *kind = init == nullptr ? initk_none : init->init_kind;
    if (*kind == initk_static) *constant = init->initializer.constant;
    if (*kind == initk_dynamic) *dynamic_init = init->initializer.dynamic_init;
    break;
  }
  }
}

// --- Variable-length arrays ----------------------------------------------------------------------

a_vla_dimension *make_vla_dimension(a_type *type, an_expr_node *expr, bool is_parameter_dimension,
                                    const a_source_position *position)
{
  a_vla_dimension *dimension = alloc_vla_dimension();
  dimension->type = type;
  dimension->expr = expr;
  dimension->is_parameter_dimension = is_parameter_dimension;
  dimension->position = *position;
  a_vla_dimension **link = &innermost_function_scope->vla_dimensions;
  while (*link != nullptr)
    link = &(*link)->next;
  *link = dimension;
  if (type != nullptr) type->has_vla_bound_ref = true;
  return dimension;
}

static a_vla_dimension *find_dimension_in_scope(a_type *type, a_scope *scope)
{
  type = skip_typerefs(type);
  for (a_vla_dimension *dimension = scope->vla_dimensions; dimension != nullptr;
       dimension = dimension->next) {
    if (dimension->type != type) continue;
    return dimension->same_dimension != nullptr ? dimension->same_dimension : dimension;
  }
  return nullptr;
}

a_vla_dimension *find_vla_dimension_in_current_function(a_type *type)
{
  if (innermost_function_scope == nullptr) return nullptr;
  return find_dimension_in_scope(type, innermost_function_scope);
}

a_vla_dimension *find_declared_vla_dimension(a_type *type)
{
  if (innermost_function_scope == nullptr) return nullptr;
  type = skip_typerefs(type);
  a_vla_dimension *dimension = innermost_function_scope->vla_dimensions;
  while (dimension != nullptr && dimension->type != type)
    dimension = dimension->next;
  return dimension;
}

a_vla_dimension *find_vla_dimension(a_type *type)
{
  return find_vla_dimension_in_current_function(type);
}

bool is_declared_by_statement(const a_variable *variable)
{
  return variable->cleanup_routine != nullptr || is_variably_modified_type(variable->type);
}

// --- Routines ------------------------------------------------------------------------------------

void set_block_scope_handler(a_scope *scope, a_handler *handler)
{
  check(scope->kind == sck_block);
  scope->owner.handler = handler;
}

void set_routine_defined(a_routine *routine, bool defined)
{
  routine->is_defined = defined;
}

void set_inline_flag(a_routine *routine, bool is_inline)
{
  routine->is_inline = is_inline;
}

bool is_gnu_builtin_function(const a_routine *routine)
{
  return routine->special_kind == sfk_none && routine->special.builtin_function_kind != 0;
}

bool routine_might_exist_in_multiple_copies(a_routine *routine)
{
  if (routine->may_be_duplicated || routine->inline_linkage_state == 1) return true;
  // The variants directly follow the routine that they were made from.
  return routine->generated_from != nullptr ||
         (routine->next != nullptr && routine->next->generated_from == routine);
}

void put_routine_into_comdat_group(a_routine *routine, const char *name)
{
  routine->in_comdat_group = true;
  routine->comdat_group_name = name;
  bool has_variants =
      routine->special_kind == sfk_constructor || routine->special_kind == sfk_destructor;
  if (has_variants) {
    for (a_routine_list_entry *entry = routine->special.ctor_dtor_variants; entry != nullptr;
         entry = entry->next) {
      entry->routine->in_comdat_group = true;
      entry->routine->comdat_group_name = name;
    }
  }
  for (a_routine *variant = routine->next; variant != nullptr && variant->generated_from == routine;
       variant = variant->next) {
    variant->in_comdat_group = true;
    variant->comdat_group_name = name;
  }
}

static a_param_type *parameters_of_routine(const a_routine *routine)
{
  return routine_supplement_of(skip_typerefs(routine->type))->param_types;
}

static bool rest_has_default_args(const a_param_type *param)
{
  for (; param != nullptr; param = param->next) {
    if (!param->has_default_arg) return false;
  }
  return true;
}

bool is_default_constructor(const a_routine *routine)
{
  if (routine->special_kind != sfk_constructor) return false;
  return rest_has_default_args(parameters_of_routine(routine));
}

// The first parameter is a reference of the asked kind to the class, and the others have defaults.
static bool takes_reference_to_class(const a_routine *routine, a_type *class_type, bool rvalue)
{
  a_param_type *param = parameters_of_routine(routine);
  if (param == nullptr || !rest_has_default_args(param->next)) return false;
  if (!is_any_reference_type(param->type)) return false;
  if (is_rvalue_reference_type(param->type) != rvalue) return false;
  a_type *target = skip_typerefs(as_pointer(skip_typerefs(param->type)).pointed_to_type);
  return f_identical_types(target, class_type, ido_ignore_top_qualifiers);
}

bool is_copy_constructor(const a_routine *routine, a_type *class_type)
{
  return routine->special_kind == sfk_constructor &&
         takes_reference_to_class(routine, class_type, false);
}

bool routine_is_move_constructor(const a_routine *routine, a_type *class_type)
{
  return routine->special_kind == sfk_constructor &&
         takes_reference_to_class(routine, class_type, true);
}

static constexpr unsigned char assignment_operator_kind = 15;

bool routine_is_move_assignment_operator(const a_routine *routine, a_type *class_type)
{
  return routine->special_kind == sfk_operator &&
         routine->special.operator_kind == assignment_operator_kind &&
         takes_reference_to_class(routine, class_type, true);
}

// --- Fields --------------------------------------------------------------------------------------

// An unnamed bit-field takes no value; the unnamed field of an anonymous union or struct does.
a_field *next_initializable_field(a_field *field)
{
  while (field != nullptr && field->is_bit_field && field->source_corresp.name == nullptr) {
    field = field->next;
  }
  return field;
}

a_field *first_initializable_field(a_type *class_type)
{
  return next_initializable_field(as_class(skip_typerefs(class_type)).first_field);
}
