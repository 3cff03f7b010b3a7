// lower_new.cpp - new and delete as calls of the functions that get and give back memory, with the code
// that begins and ends the objects in between.
// Rule:    an array with constructors or destructors goes through the routines of the ABI, which keep
//          the number of its elements in front of it.
// Entry:   lower_new_delete.
#include "driver/flags.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il_walk.h"
#include "lower/lower_c99.h"
#include "lower/lower_class.h"

static const unsigned entry_complete = 1;
static const long long cookie_size = 8; // size of an element and number of elements

static a_type *void_pointer_type()
{
  return make_pointer_type(void_type());
}

static an_expr_node *size_node(unsigned long long value)
{
  return node_for_integer_constant((long long)value, targ_size_t_int_kind);
}

static void lower_list(an_expr_node *list)
{
  for (an_expr_node *next; list != nullptr; list = next) {
    next = list->next;
    lower_c99_expr(list);
  }
}

static an_expr_node *assign_to(a_variable *variable, an_expr_node *value)
{
  value->next = nullptr;
  return make_binary_node(eok_assign, variable->type, var_lvalue_expr(variable), value);
}

static an_expr_node *in_order(an_expr_node *first, an_expr_node *second)
{
  if (first == nullptr) return second;
  if (second == nullptr) return first;
  set_expr_result_not_used(first);
  return make_comma_node(first, second);
}

// --- Objects in new memory -----------------------------------------------------------------------

// What the object begins with, as an expression; null for nothing.
static an_expr_node *begin_object(a_dynamic_init *init, a_type *type, a_variable *pointer)
{
  if (init == nullptr) return nullptr;
  an_init_pos_descr descr = {};
  descr.variable = pointer;
  descr.is_indirect = true;
  descr.type = type;
  an_insert_location location;
  set_expr_creation_insert_location(&location);
  a_constant *constant = nullptr;
  bool is_new = false;
  lower_dynamic_init(init, &descr, nullptr, nullptr, lif_none, false, &location, &constant,
                     &is_new);
  if (constant != nullptr) {
    an_expr_node *object = make_lvalue_of_init_entity_node(&descr);
    insert_expr_statement(make_init_assignment(object, alloc_node_for_allocated_constant(constant)),
                          &location);
  }
  return location.entry.expr;
}

static bool may_return_null(const a_routine *routine)
{
  an_exception_specification *specification =
      routine_supplement_of(skip_typerefs(routine->type))->exception_specification;
  return specification != nullptr && specification->first_type == nullptr;
}

// pointer ? (work, 0) : 0, as a void expression.
static an_expr_node *unless_null(a_variable *pointer, an_expr_node *work)
{
  an_expr_node *zero = node_for_zero_of_type(pointer->type);
  an_expr_node *test =
      make_binary_node(eok_ne, integer_type(ik_int), var_rvalue_expr(pointer), zero);
  test->next = add_cast(work, void_type());
  test->next->next = zero_cast_to_void();
  return make_operator_node(eok_question, void_type(), test);
}

static an_expr_node *lower_scalar_new(a_new_delete_supplement *supplement)
{
  a_type *pointer_type = make_pointer_type(supplement->type);
  a_variable *pointer = make_lowered_temporary(pointer_type);
  an_expr_node *memory =
      add_cast(make_call_node(supplement->routine, supplement->first_arg), pointer_type);
  an_expr_node *beginning = begin_object(supplement->init, supplement->type, pointer);
  if (beginning != nullptr && may_return_null(supplement->routine))
    beginning = unless_null(pointer, beginning);
  return in_order(in_order(assign_to(pointer, memory), beginning), var_rvalue_expr(pointer));
}

// --- Arrays --------------------------------------------------------------------------------------

static unsigned number_of_parameters(const a_routine *routine)
{
  unsigned count = 0;
  a_param_type *param = param_types_of(skip_typerefs(routine->type));
  for (; param != nullptr; param = param->next)
    count += !param->is_this_param;
  return count;
}

// The size was made as the number times the size of an element.
static an_expr_node *count_of_array(a_new_delete_supplement *supplement)
{
  an_expr_node *size = supplement->first_arg;
  while (is_operation(size, eok_cast))
    size = first_operand_of(size);
  if (is_operation(size, eok_multiply)) return first_operand_of(size);
  bool overflow = false;
  unsigned long long bytes = size->kind == enk_constant
                                 ? unsigned_value_of_integer_constant(constant_of(size), &overflow)
                                 : 0;
  a_target_size element = size_of_type(supplement->type);
  return size_node(element == 0 ? 0 : bytes / element);
}

static a_routine *constructor_of_elements(a_new_delete_supplement *supplement)
{
  a_dynamic_init *init = supplement->init;
  return init != nullptr && init->kind == dik_constructor ? constructor_of(init).routine : nullptr;
}

static an_expr_node *entry_or_null(a_routine *routine)
{
  if (routine == nullptr) return node_for_zero_of_type(void_pointer_type());
  bool has_entries =
      routine->special_kind == sfk_constructor || routine->special_kind == sfk_destructor;
  a_routine *entry = has_entries ? alternate_entry_point(routine, entry_complete) : routine;
  mark_as_needed(entry, iek_routine);
  return add_cast(function_addr_expr(entry), void_pointer_type());
}

// A routine of the ABI: `sizes` parameters of type size_t behind the first, `pointers` behind these.
static a_routine *vector_routine(const char *name, a_type *return_type, a_type *first,
                                 unsigned sizes, unsigned pointers)
{
  a_routine *routine = runtime_routine(name, return_type, first);
  a_type *type = skip_typerefs(routine->type);
  if (param_types_of(type)->next != nullptr) return routine;
  int saved;
  switch_to_file_scope_region(&saved);
  while (sizes-- > 0)
    add_param_type(type, alloc_param_type(size_t_type()));
  while (pointers-- > 0)
    add_param_type(type, alloc_param_type(void_pointer_type()));
  switch_back_to_original_region(saved);
  return routine;
}

static an_expr_node *address_of_routine(a_routine *routine)
{
  if (routine == nullptr) return node_for_zero_of_type(void_pointer_type());
  mark_as_needed(routine, iek_routine);
  return add_cast(function_addr_expr(routine), void_pointer_type());
}

static an_expr_node *chain(an_expr_node *a, an_expr_node *b, an_expr_node *c, an_expr_node *d,
                           an_expr_node *e)
{
  a->next = b;
  b->next = c;
  c->next = d;
  d->next = e;
  e->next = nullptr;
  return a;
}

// Every constructor of an element takes the object alone there; defaults of further parameters are for
// a routine in between.
static a_routine *constructor_without_arguments(a_new_delete_supplement *supplement)
{
  a_routine *constructor = constructor_of_elements(supplement);
  if (constructor == nullptr || constructor_of(supplement->init).first_arg == nullptr)
    return constructor;
  a_generated_routine_state state;
  int saved;
  switch_to_file_scope_region(&saved);
  a_type *object = make_pointer_type(supplement->type);
  a_type *type = make_routine_type(void_pointer_type(), object, nullptr);
  a_routine *wrapper = make_rout_entry("__construct", sc_static, type);
  wrapper->source_corresp.name = nullptr;
  wrapper->source_corresp.internal_name = nullptr;
  wrapper->source_corresp.is_nameless = true;
  switch_back_to_original_region(saved);
  begin_generated_routine(wrapper, &state);
  a_variable *parameter = add_generated_parameter(&state, param_types_of(type));
  an_insert_location location;
  set_block_start_insert_location(state.scope->assoc_block, &location);
  an_expr_node *self = var_rvalue_expr(parameter);
  self->next = copy_list_of_expr_trees(constructor_of(supplement->init).first_arg, false);
  a_routine *entry = alternate_entry_point(constructor, entry_complete);
  insert_expr_statement(make_call_node(entry, self), &location);
  a_statement *result = alloc_statement(stmk_return);
  result->expr = add_cast(var_rvalue_expr(parameter), void_pointer_type());
  insert_statement_full(result, &location, true);
  finish_generated_routine(&state);
  mark_as_needed(wrapper, iek_routine);
  return wrapper;
}

// The library gets the memory, and keeps the number of elements where they are to be destroyed.
static an_expr_node *call_vec_new(an_expr_node *count, a_new_delete_supplement *supplement,
                                  a_routine *constructor, a_routine *destructor)
{
  an_expr_node *size = size_node(size_of_type(supplement->type));
  an_expr_node *padding = size_node(destructor != nullptr ? cookie_size : 0);
  an_expr_node *arguments =
      chain(count, size, padding, entry_or_null(constructor), entry_or_null(destructor));
  a_type *result = void_pointer_type();
  if (supplement->cleanup_init == nullptr)
    return make_call_node(vector_routine("__cxa_vec_new", result, size_t_type(), 2, 2), arguments);
  a_routine *deallocation = supplement->cleanup_init->destructor;
  bool takes_size = number_of_parameters(deallocation) > 1;
  const char *name = takes_size ? "__cxa_vec_new3" : "__cxa_vec_new2";
  an_expr_node *last = arguments->next->next->next->next;
  last->next = address_of_routine(supplement->routine);
  last->next->next = address_of_routine(deallocation);
  return make_call_node(vector_routine(name, result, size_t_type(), 2, 4), arguments);
}

static an_expr_node *call_vec_ctor(a_variable *pointer, an_expr_node *count,
                                   a_new_delete_supplement *supplement, a_routine *constructor,
                                   a_routine *destructor)
{
  an_expr_node *array = add_cast(var_rvalue_expr(pointer), void_pointer_type());
  an_expr_node *size = size_node(size_of_type(supplement->type));
  an_expr_node *arguments =
      chain(array, count, size, entry_or_null(constructor), entry_or_null(destructor));
  a_type *p = void_pointer_type();
  return make_call_node(vector_routine("__cxa_vec_ctor", p, p, 2, 2), arguments);
}

static an_expr_node *zero_array(a_variable *pointer, an_expr_node *size)
{
  a_type *p = void_pointer_type();
  a_routine *routine = runtime_routine("memset", p, p, integer_type(ik_int), size_t_type());
  an_expr_node *address = add_cast(var_rvalue_expr(pointer), p);
  address->next = node_for_integer_constant(0, ik_int);
  address->next->next = size;
  return make_call_node(routine, address);
}

// Memory of the class's own, or of a place that is given: no number of elements is kept there.
static an_expr_node *lower_plain_array_new(a_new_delete_supplement *supplement)
{
  a_routine *constructor = constructor_without_arguments(supplement);
  a_dynamic_init *init = supplement->init;
  a_type *pointer_type = make_pointer_type(supplement->type);
  a_variable *pointer = make_lowered_temporary(pointer_type);
  bool zeroes = init != nullptr && init->kind == dik_zero;
  an_expr_node *beginning = nullptr, *first = nullptr;
  if (constructor != nullptr) {
    a_variable *count = make_lowered_temporary(size_t_type());
    an_expr_node *number = count_of_array(supplement), *rest = supplement->first_arg->next;
    first = assign_to(count, copy_expr_tree(number, true));
    an_expr_node *size = make_binary_node(eok_multiply, size_t_type(), var_rvalue_expr(count),
                                          size_node(size_of_type(supplement->type)));
    size->next = rest;
    supplement->first_arg = size;
    beginning = call_vec_ctor(pointer, var_rvalue_expr(count), supplement, constructor, nullptr);
  } else if (zeroes) {
    a_variable *bytes = make_lowered_temporary(size_t_type());
    an_expr_node *size = supplement->first_arg, *rest = size->next;
    first = assign_to(bytes, size);
    supplement->first_arg = var_rvalue_expr(bytes);
    supplement->first_arg->next = rest;
    beginning = zero_array(pointer, var_rvalue_expr(bytes));
  }
  an_expr_node *memory =
      add_cast(make_call_node(supplement->routine, supplement->first_arg), pointer_type);
  an_expr_node *result = in_order(first, assign_to(pointer, memory));
  return in_order(in_order(result, beginning), var_rvalue_expr(pointer));
}

static an_expr_node *lower_array_new(a_new_delete_supplement *supplement)
{
  a_dynamic_init *init = supplement->init;
  a_routine *destructor = init != nullptr ? init->destructor : nullptr;
  bool uses_library =
      supplement->has_array_cookie &&
      (supplement->cleanup_init != nullptr || number_of_parameters(supplement->routine) == 1) &&
      (destructor != nullptr || constructor_of_elements(supplement) != nullptr);
  if (!uses_library) return lower_plain_array_new(supplement);
  a_routine *constructor = constructor_without_arguments(supplement);
  an_expr_node *memory =
      call_vec_new(count_of_array(supplement), supplement, constructor, destructor);
  return add_cast(memory, make_pointer_type(supplement->type));
}

// --- delete --------------------------------------------------------------------------------------

static an_expr_node *call_deallocation(a_new_delete_supplement *supplement, a_variable *pointer)
{
  a_routine *routine = supplement->routine;
  an_expr_node *address = add_cast(var_rvalue_expr(pointer), void_pointer_type());
  if (number_of_parameters(routine) > 1) address->next = size_node(size_of_type(supplement->type));
  return make_call_node(routine, address);
}

static an_expr_node *end_object(a_routine *destructor, a_variable *pointer)
{
  a_type *class_type = skip_typerefs(type_pointed_to(pointer->type));
  an_expr_node *self = add_cast(var_rvalue_expr(pointer), make_pointer_type(class_type));
  bool is_virtual = destructor->is_virtual;
  a_routine *entry = is_virtual ? destructor : alternate_entry_point(destructor, entry_complete);
  an_expr_node *call = make_call_node(entry, self);
  if (is_virtual) lower_virtual_function_call(call, destructor);
  return call;
}

static an_expr_node *lower_array_delete(a_new_delete_supplement *supplement, a_variable *pointer,
                                        a_routine *destructor)
{
  a_type *p = void_pointer_type();
  bool is_plain = supplement->has_array_cookie;
  bool takes_size = number_of_parameters(supplement->routine) > 1;
  const char *name = is_plain     ? "__cxa_vec_delete"
                     : takes_size ? "__cxa_vec_delete3"
                                  : "__cxa_vec_delete2";
  a_routine *routine = vector_routine(name, void_type(), p, 2, is_plain ? 1 : 2);
  an_expr_node *address = add_cast(var_rvalue_expr(pointer), p);
  address->next = size_node(size_of_type(supplement->type));
  address->next->next = size_node(cookie_size);
  address->next->next->next = entry_or_null(destructor);
  if (!is_plain) address->next->next->next->next = address_of_routine(supplement->routine);
  return make_call_node(routine, address);
}

static an_expr_node *lower_delete(a_new_delete_supplement *supplement)
{
  a_type *pointer_type = make_pointer_type(supplement->type);
  a_variable *pointer = make_lowered_temporary(make_unqualified_type(pointer_type));
  a_routine *destructor = supplement->init != nullptr ? supplement->init->destructor : nullptr;
  an_expr_node *start = assign_to(pointer, add_cast(supplement->first_arg, pointer->type));
  an_expr_node *work;
  if (supplement->is_array && destructor != nullptr) {
    work = lower_array_delete(supplement, pointer, destructor);
  } else {
    work = call_deallocation(supplement, pointer);
    if (destructor != nullptr) work = in_order(end_object(destructor, pointer), work);
  }
  return in_order(start, unless_null(pointer, work));
}

void lower_new_delete(an_expr_node *expr)
{
  a_new_delete_supplement *supplement = new_delete_of(expr);
  lower_list(supplement->first_arg);
  an_expr_node *result = !supplement->is_new    ? lower_delete(supplement)
                         : supplement->is_array ? lower_array_new(supplement)
                                                : lower_scalar_new(supplement);
  bool not_used = expr->result_not_used;
  result->expr_range = expr->expr_range;
  overwrite_node(expr, result);
  expr->result_not_used = not_used;
}
