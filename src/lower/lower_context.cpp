// lower_context.cpp - contexts, insert locations and temporaries of lowering.
// Owns:    curr_context, temp_init_statements, the free list of temporary records.
// Entry:   push_context, insert_statement_full, make_lowered_temporary, make_reusable_copy.
#include "driver/flags.h"
#include "driver/target.h"
#include "errors/error.h"
#include "lower/lower_il.h"

a_context *curr_context;
a_source_position code_pos_for_lowering;
a_statement *temp_init_statements;
a_variable *return_value_pointer_variable;
a_statement *curr_gnu_statement;

static a_temporary_list_entry *avail_temporary_entries;

// --- Contexts ------------------------------------------------------------------------------------

void push_context(a_context *context, a_scope *scope, an_object_lifetime *lifetime)
{
  *context = {};
  context->parent = curr_context;
  context->scope = scope;
  context->saved_lifetime = curr_object_lifetime;
  if (lifetime == nullptr && scope != nullptr) lifetime = scope->object_lifetime;
  context->has_own_lifetime = lifetime != nullptr;
  if (context->has_own_lifetime) curr_object_lifetime = lifetime;
  context->object_lifetime = curr_object_lifetime;
  if (scope == nullptr && curr_context != nullptr) context->scope = curr_context->scope;
  curr_context = context;
}

void pop_context()
{
  a_context *context = curr_context;
  a_temporary_list_entry *entry = context->reusable_temps;
  while (entry != nullptr) {
    a_temporary_list_entry *next = entry->next;
    entry->next = avail_temporary_entries;
    avail_temporary_entries = entry;
    entry = next;
  }
  curr_object_lifetime = context->saved_lifetime;
  curr_context = context->parent;
}

void save_and_push_context(a_saved_context *saved, a_scope *scope, an_object_lifetime *lifetime)
{
  saved->temp_init_statements = temp_init_statements;
  saved->code_pos = code_pos_for_lowering;
  saved->error_pos = error_position;
  temp_init_statements = nullptr;
  push_context(&saved->context, scope, lifetime);
}

void restore_saved_context(a_saved_context *saved)
{
  pop_context();
  // What still waits belongs to the statement outside.
  if (temp_init_statements == nullptr) {
    temp_init_statements = saved->temp_init_statements;
  } else if (saved->temp_init_statements != nullptr) {
    a_statement *last = saved->temp_init_statements;
    while (last->next != nullptr)
      last = last->next;
    last->next = temp_init_statements;
    temp_init_statements = saved->temp_init_statements;
  }
  code_pos_for_lowering = saved->code_pos;
  error_position = saved->error_pos;
}

// --- Insert locations ----------------------------------------------------------------------------

void set_insert_location(a_statement *statement, an_insert_location *location)
{
  location->kind = ilk_after_statement;
  location->entry.statement = statement;
}

void set_block_start_insert_location(a_statement *block, an_insert_location *location)
{
  location->kind = ilk_block_start;
  location->entry.statement = block;
}

void set_statement_creation_insert_location(an_insert_location *location)
{
  location->kind = ilk_statement_creation;
  location->entry.statement = nullptr;
}

void set_expr_insert_location(an_expr_node *expr, an_insert_location *location)
{
  location->kind = ilk_before_expr;
  location->entry.expr = expr;
}

void set_expr_creation_insert_location(an_insert_location *location)
{
  location->kind = ilk_expr_creation;
  location->entry.expr = nullptr;
}

void mark_stmk_inits_as_following_exec_statement(a_statement *statement)
{
  for (; statement != nullptr; statement = statement->next) {
    if (statement->kind == stmk_decl_entities) continue;
    if (statement->kind != stmk_init) return;
    statement->follows_exec_statement = true;
  }
}

static void link_statement(a_statement *statement, an_insert_location *location)
{
  switch (location->kind) {
  case ilk_after_statement:
    statement->next = location->entry.statement->next;
    location->entry.statement->next = statement;
    break;
  case ilk_block_start: {
    a_statement *&first = first_statement_of(location->entry.statement);
    statement->next = first;
    first = statement;
    break;
  }
  default: statement->next = nullptr; break;
  }
  if (statement->kind != stmk_init) mark_stmk_inits_as_following_exec_statement(statement->next);
  set_insert_location(statement, location);
}

// A node keeps its address: what it was moves to a copy, and the node becomes the comma.
static void insert_before_node(an_expr_node *expr, an_insert_location *location)
{
  an_expr_node *node = location->entry.expr;
  an_expr_node *copy = copy_node(node);
  an_expr_node *comma = make_comma_node(expr, copy);
  comma->result_not_used = node->result_not_used;
  overwrite_node(node, comma);
  location->entry.expr = copy;
}

static void insert_after_node(an_expr_node *expr, an_insert_location *location)
{
  an_expr_node *node = location->entry.expr;
  an_expr_node *comma = make_comma_node(copy_node(node), expr);
  overwrite_node(node, comma);
}

void insert_expr(an_expr_node *expr, an_insert_location *location)
{
  switch (location->kind) {
  case ilk_before_expr: insert_before_node(expr, location); break;
  case ilk_after_expr: insert_after_node(expr, location); break;
  case ilk_expr_creation:
    location->entry.expr = expr;
    location->kind = ilk_after_expr;
    break;
  default: insert_expr_statement(expr, location); break;
  }
}

void insert_statement_full(a_statement *statement, an_insert_location *location, bool do_post_pass)
{
  if (do_post_pass && statement->expr != nullptr) {
    perform_post_pass_on_lowered_expression(statement->expr);
  }
  if (do_post_pass && statement->kind == stmk_for) {
    an_expr_node *increment = for_supplement_of(statement)->increment_expr;
    if (increment != nullptr) perform_post_pass_on_lowered_expression(increment);
  }
  if (location->kind >= ilk_before_expr) {
    check(statement->kind == stmk_expr);
    insert_expr(statement->expr, location);
  } else {
    link_statement(statement, location);
  }
}

void insert_expr_statement(an_expr_node *expr, an_insert_location *location)
{
  if (location->kind >= ilk_before_expr) {
    insert_expr(expr, location);
    return;
  }
  a_statement *statement = alloc_expr_statement(expr);
  statement->start_position = code_pos_for_lowering;
  statement->end_position = code_pos_for_lowering;
  statement->is_compiler_generated = true;
  insert_statement_full(statement, location, true);
}

void insert_assignment_statement(an_expr_node *lhs, an_expr_operator_kind op, an_expr_node *rhs,
                                 an_insert_location *location)
{
  insert_expr_statement(make_binary_node(op, rvalue_type(lhs->type), lhs, rhs), location);
}

void insert_var_assignment_statement(a_variable *variable, an_expr_node *expr,
                                     an_insert_location *location)
{
  an_expr_operator_kind op = assignment_operator_for_type(variable->type);
  insert_assignment_statement(var_lvalue_expr(variable), op, expr, location);
}

static bool is_empty_block(const a_statement *statement)
{
  return statement->kind == stmk_block && first_statement_of(statement) == nullptr &&
         block_supplement_of(statement)->scope == nullptr;
}

void reinsert_for_loop_initialization(a_statement *list, an_insert_location *location)
{
  while (list != nullptr) {
    a_statement *next = list->next;
    if (!is_empty_block(list)) insert_statement_full(list, location, false);
    list = next;
  }
}

a_statement *turn_statement_into_block(a_statement *statement)
{
  return change_statement_into_block(statement);
}

a_statement *turn_branch_into_block(a_statement *statement)
{
  return statement->kind == stmk_block ? statement : turn_statement_into_block(statement);
}

void add_to_end_of_temp_init_statements_list(a_statement *statement)
{
  a_statement **link = &temp_init_statements;
  while (*link != nullptr)
    link = &(*link)->next;
  statement->next = nullptr;
  *link = statement;
}

void insert_temp_init_statements(a_statement *statement)
{
  if (temp_init_statements == nullptr) return;
  change_statement_into_block(statement);
  an_insert_location location;
  set_block_start_insert_location(statement, &location);
  while (temp_init_statements != nullptr) {
    a_statement *init = temp_init_statements;
    temp_init_statements = init->next;
    insert_statement_full(init, &location, false);
  }
}

// A label of the function that nothing but generated code knows.
a_statement *insert_temp_label(an_insert_location *location)
{
  a_label *label = alloc_label();
  label->is_compiler_generated = true;
  label->is_defined = true;
  label->source_corresp.is_nameless = true;
  label->source_corresp.needed = true;
  add_to_labels_list(label, -1);
  a_statement *statement = alloc_statement(stmk_label);
  label_of(statement) = label;
  label->statement = statement;
  statement->start_position = code_pos_for_lowering;
  statement->is_compiler_generated = true;
  insert_statement_full(statement, location, false);
  return statement;
}

// --- Temporaries ---------------------------------------------------------------------------------

// In front of the first entry with a name: temporaries stand first in the written block.
static void link_temporary(a_variable **head, a_variable *variable)
{
  a_variable **link = head;
  while (*link != nullptr && (*link)->source_corresp.name == nullptr)
    link = &(*link)->next;
  if (*link == nullptr) {
    // At the end, which the scope's tails must learn.
    add_variable_to_scope(variable, curr_context->scope);
    return;
  }
  variable->next = *link;
  *link = variable;
}

void add_temporary_to_scope(a_variable *variable, a_scope *scope, bool)
{
  if (scope == nullptr) scope = curr_context->scope;
  bool is_file_scope = scope == il_header.primary_scope || scope->kind == sck_file;
  variable->source_corresp.is_local = !is_file_scope;
  if (is_file_scope) {
    add_variable_to_scope(variable, scope);
    return;
  }
  a_context *saved = curr_context;
  a_context place = *curr_context;
  place.scope = scope;
  curr_context = &place;
  set_parent_scope(&variable->source_corresp, iek_variable, scope);
  bool is_automatic = !is_file_scope_entry(variable);
  link_temporary(is_automatic ? &scope->local_variables : &scope->variables, variable);
  curr_context = saved;
}

// The type without const: generated code assigns to temporaries.  They are declared at the start of
// a block, where variable bounds may not have their values yet.
static a_type *type_for_temporary(a_type *type)
{
  type = type_without_variable_bounds(type);
  a_type_qualifier_set qualifiers = get_type_qualifiers(type);
  return (qualifiers & (tq_const | tq_volatile)) == 0 ? type : make_unqualified_type(type);
}

a_variable *make_temporary_in_scope(a_type *type, a_scope *scope, bool is_static, bool promote)
{
  if (scope == nullptr) scope = curr_context->scope;
  bool at_file_scope = scope->kind == sck_file;
  bool is_global = is_static || at_file_scope;
  a_variable *variable =
      make_variable(type_for_temporary(type), is_global ? sc_static : sc_auto, true);
  variable->is_temporary = true;
  variable->source_corresp.needed = true;
  entry_flags_of(variable).keep_in_il = false;
  variable->source_corresp.decl_position = code_pos_for_lowering;
  add_temporary_to_scope(variable, scope, promote);
  return variable;
}

a_variable *make_lowered_temporary(a_type *type)
{
  return make_temporary_in_scope(type, nullptr, false, false);
}

an_expr_node *lowered_temporary_value(a_variable *variable, a_type *type)
{
  an_expr_node *value = var_rvalue_expr(variable);
  return is_variably_modified_type(type) ? add_cast(value, rvalue_type(type)) : value;
}

a_variable *make_file_scope_temporary(a_type *type)
{
  return make_temporary_in_scope(type, il_header.primary_scope, true, false);
}

a_variable *make_unnamed_local_static_variable(a_type *type, bool local)
{
  return local ? make_temporary_in_scope(type, nullptr, true, true)
               : make_file_scope_temporary(type);
}

void add_to_reusable_temporaries_list(a_variable *variable)
{
  a_temporary_list_entry *entry = avail_temporary_entries;
  if (entry != nullptr) {
    avail_temporary_entries = entry->next;
  } else {
    entry = (a_temporary_list_entry *)alloc_in_region(0, sizeof(*entry));
  }
  *entry = {curr_context->reusable_temps, variable, true};
  curr_context->reusable_temps = entry;
}

a_variable *make_local_temporary(a_type *type)
{
  for (a_temporary_list_entry *entry = curr_context->reusable_temps; entry != nullptr;
       entry = entry->next) {
    if (entry->in_use || entry->variable->type != type) continue;
    entry->in_use = true;
    return entry->variable;
  }
  a_variable *variable = make_lowered_temporary(type);
  if (variable->type == type) add_to_reusable_temporaries_list(variable);
  return variable;
}

void release_reusable_temporaries()
{
  for (a_temporary_list_entry *entry = curr_context->reusable_temps; entry != nullptr;
       entry = entry->next) {
    entry->in_use = false;
  }
}

// --- Values for more than one use ----------------------------------------------------------------

a_variable *assign_expr_to_temp(an_expr_node *expr)
{
  a_type *type = rvalue_type(expr->type);
  a_variable *variable = make_lowered_temporary(type);
  an_expr_node *value = copy_node(expr);
  an_expr_operator_kind op = assignment_operator_for_type(type);
  an_expr_node *assignment = make_binary_node(op, type, var_lvalue_expr(variable), value);
  an_expr_node *comma = make_comma_node(assignment, lowered_temporary_value(variable, type));
  comma->expr_range = expr->expr_range;
  overwrite_node(expr, comma);
  return variable;
}

an_expr_node *assign_expr_to_temp_and_make_expr_for_reuse(an_expr_node *expr)
{
  a_type *type = rvalue_type(expr->type);
  return lowered_temporary_value(assign_expr_to_temp(expr), type);
}

an_expr_node *make_reusable_copy(an_expr_node *expr, bool side_effects)
{
  bool may_be_repeated = side_effects ? is_invariant_expr(expr) : !node_has_side_effects(expr);
  if (may_be_repeated) return copy_expr_tree(expr, true);
  return assign_expr_to_temp_and_make_expr_for_reuse(expr);
}
