// lower_cleanup.cpp - destruction of objects at the places where their lifetimes are left.
// Rule:    a lifetime's list runs from its youngest object to its oldest; a context knows the
//          youngest that exists where the code stands.
// Entry:   note_construction, lower_end_of_block, lower_goto, lower_return, lower_lifetime_wrapper.
#include "il/il_alloc.h"
#include "il/il_walk.h"
#include "lower/lower_c99.h"
#include "lower/lower_class.h"

// What lowering knows of an object that is to be destroyed.
struct a_destructible_entity_descr {
  an_init_pos_descr position;
  a_variable *flag_variable; // says that a conditional object exists, or null
  bool initialized;
};

// --- Contexts ------------------------------------------------------------------------------------

static a_context *context_for_lifetime(const an_object_lifetime *lifetime)
{
  for (a_context *context = curr_context; context != nullptr; context = context->parent)
    if (context->has_own_lifetime && context->object_lifetime == lifetime) return context;
  return nullptr;
}

static a_destructible_entity_descr *descr_of(a_dynamic_init *init)
{
  if (init->destructible_entity_descr == nullptr) {
    a_destructible_entity_descr *descr = (a_destructible_entity_descr *)alloc_il(sizeof *descr);
    *descr = {};
    init->destructible_entity_descr = descr;
  }
  return (a_destructible_entity_descr *)init->destructible_entity_descr;
}

static an_init_pos_modifier *copy_modifiers(const an_init_pos_modifier *step,
                                            an_init_pos_modifier **last)
{
  an_init_pos_modifier *first = nullptr, **link = &first;
  for (; step != nullptr; step = step->next) {
    an_init_pos_modifier *copy = (an_init_pos_modifier *)alloc_il(sizeof *copy);
    *copy = *step;
    copy->next = nullptr;
    *link = *last = copy;
    link = &copy->next;
  }
  return first;
}

static void assign_int(a_variable *variable, long long value, an_insert_location *location)
{
  insert_var_assignment_statement(variable, node_for_integer_constant(value, ik_int), location);
}

void note_construction(a_dynamic_init *init, const an_init_pos_descr *descr,
                       an_insert_location *location)
{
  if (init->destructor == nullptr || init->destruction_lifetime == nullptr) return;
  a_destructible_entity_descr *entity = descr_of(init);
  entity->position = *descr;
  entity->position.last_modifier = nullptr;
  entity->position.modifiers = copy_modifiers(descr->modifiers, &entity->position.last_modifier);
  entity->initialized = true;
  if (entity->flag_variable != nullptr) assign_int(entity->flag_variable, 1, location);
  // The list is in the order of the text; arguments are evaluated in another.
  an_object_lifetime *lifetime = init->destruction_lifetime;
  remove_from_destruction_list(init);
  add_to_end_of_destructions_list(init, lifetime);
  a_context *context = context_for_lifetime(lifetime);
  if (context != nullptr) context->latest_init = init;
}

// --- Destructions --------------------------------------------------------------------------------

// flag && (destruction, 1), as an expression of type void.
static void insert_conditional_destruction(a_dynamic_init *init, a_variable *flag,
                                           an_insert_location *location)
{
  an_insert_location call;
  set_expr_creation_insert_location(&call);
  add_destructor_call(init->destructor, &descr_of(init)->position, true, &call);
  an_expr_node *test = make_binary_node(eok_ne, integer_type(ik_int), var_rvalue_expr(flag),
                                        node_for_integer_constant(0, ik_int));
  test->next = add_cast(call.entry.expr, void_type());
  test->next->next = zero_cast_to_void();
  insert_expr_statement(make_operator_node(eok_question, void_type(), test), location);
}

static bool exists(a_dynamic_init *init)
{
  a_destructible_entity_descr *descr =
      (a_destructible_entity_descr *)init->destructible_entity_descr;
  return descr != nullptr && descr->initialized && !init->destroyed_elsewhere &&
         !init->exceptions_only && init->destructor != nullptr;
}

static void gen_one_destruction(a_dynamic_init *init, an_insert_location *location)
{
  a_variable *flag = descr_of(init)->flag_variable;
  if (flag != nullptr)
    insert_conditional_destruction(init, flag, location);
  else
    add_destructor_call(init->destructor, &descr_of(init)->position, true, location);
}

static bool is_behind(const a_source_position &a, const a_source_position &b)
{
  return a.seq != b.seq ? a.seq > b.seq : a.column > b.column;
}

// How far objects die: up to the lifetime, of which only those declared behind a place; no place:
// all of them.
struct a_cleanup_range {
  an_object_lifetime *last_lifetime; // null: none is left out
  const a_source_position *start;
};

static bool is_to_die(a_dynamic_init *init, const a_cleanup_range *range,
                      const an_object_lifetime *lifetime)
{
  if (!exists(init)) return false;
  if (lifetime != range->last_lifetime || range->start == nullptr) return true;
  return is_behind(init->position, *range->start);
}

// With a null location it only tells whether something would die.
static bool gen_cleanup_actions(const a_cleanup_range *range, an_insert_location *location)
{
  bool any = false;
  an_object_lifetime *lifetime = curr_object_lifetime;
  a_context *context = context_for_lifetime(lifetime);
  a_dynamic_init *init = context == nullptr ? nullptr : context->latest_init;
  while (lifetime != nullptr && lifetime->kind != olk_global) {
    for (; init != nullptr; init = init->next_destruction) {
      if (!is_to_die(init, range, lifetime)) continue;
      any = true;
      if (location == nullptr) return true;
      gen_one_destruction(init, location);
    }
    if (lifetime == range->last_lifetime) break;
    lifetime = lifetime->parent;
    context = context_for_lifetime(lifetime);
    init = context == nullptr ? nullptr : context->latest_init;
  }
  return any;
}

// --- Blocks --------------------------------------------------------------------------------------

void lower_end_of_block(a_statement *block)
{
  an_object_lifetime *lifetime = curr_object_lifetime;
  if (lifetime == nullptr || !curr_context->has_own_lifetime) return;
  if (!block_supplement_of(block)->end_is_reachable) return;
  a_cleanup_range range = {lifetime, nullptr};
  if (!gen_cleanup_actions(&range, nullptr)) return;
  an_insert_location location;
  a_statement *last = first_statement_of(block);
  while (last != nullptr && last->next != nullptr)
    last = last->next;
  if (last != nullptr && last->kind == stmk_return) return;
  if (last != nullptr)
    set_insert_location(last, &location);
  else
    set_block_start_insert_location(block, &location);
  gen_cleanup_actions(&range, &location);
}

static void note_in_statement(a_statement *statement, an_object_lifetime *lifetime);

static void note_in_list(a_statement *list, an_object_lifetime *lifetime)
{
  for (; list != nullptr; list = list->next)
    note_in_statement(list, lifetime);
}

static void note_in_statement(a_statement *statement, an_object_lifetime *lifetime)
{
  if (statement == nullptr) return;
  switch (statement->kind) {
  case stmk_label: label_lifetime_of(statement) = lifetime; break;
  case stmk_block: {
    a_scope *scope = block_supplement_of(statement)->scope;
    if (scope != nullptr && scope->object_lifetime != nullptr) lifetime = scope->object_lifetime;
    note_in_list(first_statement_of(statement), lifetime);
    break;
  }
  case stmk_if:
    note_in_statement(then_statement_of(statement), lifetime);
    note_in_statement(else_statement_of(statement), lifetime);
    break;
  case stmk_while:
  case stmk_do:
  case stmk_for:
  case stmk_switch: note_in_statement(body_of(statement), lifetime); break;
  default: break;
  }
}

void note_lifetimes_of_labels(a_statement *body)
{
  note_in_statement(body, nullptr);
}

// --- Jumps ---------------------------------------------------------------------------------------

static bool is_inside(const an_object_lifetime *inner, const an_object_lifetime *outer)
{
  for (; inner != nullptr; inner = inner->parent)
    if (inner == outer) return true;
  return false;
}

void lower_goto(a_statement *statement)
{
  a_statement *target = label_of(statement)->statement;
  if (target == nullptr || curr_object_lifetime == nullptr) return;
  an_object_lifetime *lifetime = label_lifetime_of(target);
  while (lifetime != nullptr && !is_inside(curr_object_lifetime, lifetime))
    lifetime = lifetime->parent;
  a_cleanup_range range = {lifetime, &target->start_position};
  if (!gen_cleanup_actions(&range, nullptr)) return;
  change_statement_into_block(statement);
  an_insert_location location;
  set_block_start_insert_location(statement, &location);
  gen_cleanup_actions(&range, &location);
}

// What a constructor or destructor returns.
static void set_value_of_special_member(a_statement *statement)
{
  a_scope *scope = innermost_function_scope;
  if (scope == nullptr || scope->this_param == nullptr) return;
  a_routine_special_kind kind = routine_of_scope(scope)->special_kind;
  if (kind == sfk_constructor)
    statement->expr = var_rvalue_expr(scope->this_param);
  else if (kind == sfk_destructor)
    statement->expr = add_cast(var_rvalue_expr(scope->this_param), make_pointer_type(void_type()));
}

// A class value that a constructor makes is made in a temporary first.
static void construct_return_value(a_statement *statement, an_insert_location *location)
{
  a_dynamic_init *init = dynamic_init_of(statement);
  if (init == nullptr || init->kind != dik_constructor) return;
  a_type *type = return_type_of(routine_of_scope(innermost_function_scope)->type);
  a_variable *variable = make_lowered_temporary(type);
  an_init_pos_descr descr;
  set_var_init_pos_descr(variable, &descr);
  lower_constructor_init(init, &descr, nullptr, location);
  dynamic_init_of(statement) = nullptr;
  statement->expr = var_rvalue_expr(variable);
}

void lower_return(a_statement *statement)
{
  set_value_of_special_member(statement);
  a_cleanup_range range = {nullptr, nullptr};
  a_dynamic_init *init = dynamic_init_of(statement);
  bool constructs = init != nullptr && init->kind == dik_constructor;
  bool cleans_up = gen_cleanup_actions(&range, nullptr);
  if (!constructs && !cleans_up) return;
  a_statement *inner = change_statement_into_block(statement);
  an_insert_location location;
  set_block_start_insert_location(statement, &location);
  construct_return_value(inner, &location);
  if (init != nullptr && init->kind == dik_expression && cleans_up) {
    inner->expr = expr_of(init);
    dynamic_init_of(inner) = nullptr;
  }
  if (!cleans_up) return;
  an_expr_node *value = inner->expr;
  if (value != nullptr && !is_void_type(value->type) && !is_invariant_expr(value)) {
    a_variable *variable = make_lowered_temporary(rvalue_type(value->type));
    insert_var_assignment_statement(variable, value, &location);
    inner->expr = var_rvalue_expr(variable);
  }
  gen_cleanup_actions(&range, &location);
}

// --- Full expressions ----------------------------------------------------------------------------

// Flags for what may not come to exist, zeroed in front of the expression.
static void make_flags(an_object_lifetime *lifetime, an_insert_location *location)
{
  for (a_dynamic_init *init = lifetime->destructions; init; init = init->next_destruction) {
    if (!init->is_conditional && !init->destruction_needs_flag) continue;
    a_variable *flag = make_lowered_temporary(integer_type(ik_int));
    descr_of(init)->flag_variable = flag;
    assign_int(flag, 0, location);
  }
}

// The value is kept in a temporary while the objects of the expression die; of an lvalue, the
// address is.
static an_expr_node *with_cleanups(an_expr_node *expr, an_expr_node *cleanups)
{
  if (expr->result_not_used || is_void_type(expr->type)) return make_comma_node(expr, cleanups);
  bool is_lvalue = expr->is_lvalue;
  an_expr_node *value = is_lvalue ? add_address_of_to_node(expr) : expr;
  a_variable *variable = make_lowered_temporary(rvalue_type(value->type));
  an_expr_operator_kind op = assignment_operator_for_type(variable->type);
  an_expr_node *save = make_binary_node(op, variable->type, var_lvalue_expr(variable), value);
  an_expr_node *result = var_rvalue_expr(variable);
  if (is_lvalue) result = add_indirection_to_node(result);
  return make_comma_node(save, make_comma_node(cleanups, result));
}

void begin_init_lifetime(a_dynamic_init *init, a_context *context, an_insert_location *location)
{
  push_context(context, nullptr, init->object_lifetime);
  make_flags(init->object_lifetime, location);
}

void end_init_lifetime(a_dynamic_init *init, an_insert_location *location)
{
  a_cleanup_range range = {init->object_lifetime, nullptr};
  gen_cleanup_actions(&range, location);
  pop_context();
}

void lower_lifetime_wrapper(an_expr_node *expr)
{
  an_expr_node *inner = lifetime_wrapper_of(expr).expr;
  an_object_lifetime *lifetime = lifetime_wrapper_of(expr).object_lifetime;
  if (lifetime == nullptr) {
    lower_c99_expr(inner);
    overwrite_node(expr, inner);
    return;
  }
  a_context context;
  push_context(&context, nullptr, lifetime);
  an_insert_location flags, cleanups;
  set_expr_creation_insert_location(&flags);
  make_flags(lifetime, &flags);
  lower_c99_expr(inner);
  inner->result_not_used = expr->result_not_used;
  set_expr_creation_insert_location(&cleanups);
  a_cleanup_range range = {lifetime, nullptr};
  if (gen_cleanup_actions(&range, &cleanups)) inner = with_cleanups(inner, cleanups.entry.expr);
  if (flags.entry.expr != nullptr) inner = make_comma_node(flags.entry.expr, inner);
  pop_context();
  bool result_not_used = expr->result_not_used;
  overwrite_node(expr, inner);
  expr->result_not_used = result_not_used;
}

// --- Declarations --------------------------------------------------------------------------------

// A constant that came back is the variable's own initializer.
static void finish_initialization(a_statement *statement, a_dynamic_init *init,
                                  a_constant *constant)
{
  if (constant == nullptr) {
    turn_statement_into_noop(statement);
    return;
  }
  set_dynamic_init_kind(init, dik_constant);
  constant_of(init) = constant;
}

static bool needs_code(const a_dynamic_init *init)
{
  return init->kind == dik_constructor || init->kind == dik_zero ||
         init->kind == dik_bitwise_copy || init->init_lifetime != nullptr ||
         init->object_lifetime != nullptr;
}

bool lower_cplusplus_stmk_init(a_statement *statement)
{
  a_dynamic_init *init = dynamic_init_of(statement);
  a_variable *variable = init->variable;
  if (variable == nullptr) return false;
  bool is_static = variable->storage_class == sc_static || variable->storage_class == sc_extern;
  if (!is_static && init->destructor == nullptr && !needs_code(init)) return false;
  an_init_pos_descr descr;
  set_var_init_pos_descr(variable, &descr);
  an_insert_location location, inner;
  set_insert_location(statement, &location);
  inner = location;
  if (is_static) make_guard(variable, &location, &inner);
  a_constant *constant = nullptr;
  bool is_new = false;
  lower_dynamic_init(init, &descr, nullptr, nullptr, lif_full_expression, false,
                     is_static ? &inner : &location, &constant, &is_new);
  finish_initialization(statement, init, constant);
  return true;
}
