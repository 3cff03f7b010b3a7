// lower_designators.cpp - designated initializers become positional ones.
// Rule:    a later initializer overrides an earlier one of the same place, position by position
//          unless it stood between braces of its own; what an overridden one would have done still
//          runs, first. The one designator that stays is that of a union's member other than the
//          first.
// Entry:   lower_designated_initializers, lower_dynamic_init_designated_initializers.
#include "driver/flags.h"
#include "lower/lower_c99.h"
#include "lower/lower_init.h"
#include "mem/stack_limit.h"

// --- Positional lists ----------------------------------------------------------------------------

namespace {

// The elements of an array or struct in order of position; a ck_init_repeat stands for several.
// The cursor makes runs and ascending designators cost constant time each.
struct a_positional_list {
  a_constant *head;
  a_constant *tail;
  uint64_t length;           // positions
  a_constant *before_cursor; // element in front of the cursor's, null at the head
  uint64_t cursor_position;  // first position of the cursor's element
};

} // namespace

static uint64_t positions_of(const a_constant *element)
{
  return element->kind == ck_init_repeat ? init_repeat_of(element).count : 1;
}

static void append_element(a_positional_list *list, a_constant *element)
{
  element->next = nullptr;
  if (list->tail == nullptr) {
    list->head = element;
  } else {
    list->tail->next = element;
  }
  list->tail = element;
  list->length += positions_of(element);
}

static a_constant *cursor_element(a_positional_list *list)
{
  return list->before_cursor == nullptr ? list->head : list->before_cursor->next;
}

// Moves the cursor to the element that holds the position, which exists.
static a_constant *seek(a_positional_list *list, uint64_t position)
{
  if (position < list->cursor_position) {
    list->before_cursor = nullptr;
    list->cursor_position = 0;
  }
  a_constant *element = cursor_element(list);
  while (position >= list->cursor_position + positions_of(element)) {
    list->cursor_position += positions_of(element);
    list->before_cursor = element;
    element = element->next;
  }
  return element;
}

static void replace_link(a_positional_list *list, a_constant *previous, a_constant *old_element,
                         a_constant *new_element)
{
  new_element->next = old_element->next;
  if (previous == nullptr) {
    list->head = new_element;
  } else {
    previous->next = new_element;
  }
  if (list->tail == old_element) list->tail = new_element;
}

static void insert_behind(a_positional_list *list, a_constant *element, a_constant *new_element)
{
  new_element->next = element->next;
  element->next = new_element;
  if (list->tail == element) list->tail = new_element;
}

static void unshare_expressions(a_constant *constant)
{
  check_recursion();
  if (constant->kind == ck_init_repeat) {
    unshare_expressions(init_repeat_of(constant).repeated);
  } else if (constant->kind == ck_aggregate) {
    for (a_constant *element = aggregate_of(constant).first_element; element != nullptr;
         element = element->next) {
      unshare_expressions(element);
    }
  } else if (constant->kind == ck_dynamic_init &&
             dynamic_init_of(constant)->kind == dik_expression) {
    a_dynamic_init *init = alloc_dynamic_init(dik_expression);
    expr_of(init) = copy_expr_tree(expr_of(dynamic_init_of(constant)), true);
    dynamic_init_of(constant) = init;
  }
}

// The value for one more place, with expressions of its own.
static a_constant *copy_element(const a_constant *element)
{
  a_constant *copy = copy_unshared_constant(element);
  if (has_dynamic_part(copy)) unshare_expressions(copy);
  return copy;
}

// A repeat of `count`, or the value itself for one.
static a_constant *make_repeat(const a_constant *repeat, uint64_t count)
{
  if (count == 1) return copy_element(init_repeat_of(repeat).repeated);
  a_constant *copy = alloc_unshared_constant(repeat);
  init_repeat_of(copy).repeated = copy_element(init_repeat_of(repeat).repeated);
  init_repeat_of(copy).count = count;
  return copy;
}

// Sees to it that the position's element stands alone; the cursor is at it then.
static a_constant *split_at(a_positional_list *list, uint64_t position)
{
  a_constant *element = seek(list, position);
  if (element->kind != ck_init_repeat) return element;
  uint64_t before = position - list->cursor_position;
  uint64_t behind = init_repeat_of(element).count - before - 1;
  a_constant *single = copy_element(init_repeat_of(element).repeated);
  if (behind > 0) insert_behind(list, element, make_repeat(element, behind));
  if (before == 0) {
    replace_link(list, list->before_cursor, element, single);
  } else {
    insert_behind(list, element, single);
    if (before == 1) {
      a_constant *first = copy_element(init_repeat_of(element).repeated);
      replace_link(list, list->before_cursor, element, first);
      element = first;
    } else {
      init_repeat_of(element).count = before;
    }
    list->before_cursor = element;
    list->cursor_position = position;
  }
  return single;
}

// Fills the places up to the position, exclusively, with zeros.
static void fill_gap(a_positional_list *list, uint64_t position, a_type *element_type)
{
  if (position <= list->length) return;
  uint64_t gap = position - list->length;
  a_constant *zero = zero_constant_for_type(element_type);
  if (gap == 1) {
    append_element(list, zero);
    return;
  }
  a_constant *repeat = alloc_constant(ck_init_repeat);
  repeat->type = element_type;
  init_repeat_of(repeat).repeated = zero;
  init_repeat_of(repeat).count = gap;
  append_element(list, repeat);
}

// --- Flattening ----------------------------------------------------------------------------------

static void flatten_designators(a_constant *aggregate, a_type *type, a_constant *base);
static void rewrite_nested_designators(a_constant *constant, a_type *type);

static bool contains_designators(const a_constant *constant)
{
  check_recursion();
  switch (constant->kind) {
  case ck_aggregate:
    if (aggregate_of(constant).has_designators) return true;
    for (const a_constant *element = aggregate_of(constant).first_element; element != nullptr;
         element = element->next) {
      if (element->kind == ck_designator || contains_designators(element)) return true;
    }
    return false;
  case ck_init_repeat: return contains_designators(init_repeat_of(constant).repeated);
  case ck_dynamic_init: {
    const a_dynamic_init *init = dynamic_init_of(constant);
    bool has_constant = init->kind == dik_constant || init->kind == dik_constant_via_temp;
    return has_constant && contains_designators(constant_of(init));
  }
  default: return false;
  }
}

static bool is_elided_aggregate(const a_constant *constant)
{
  return constant->kind == ck_aggregate && !aggregate_of(constant).has_own_braces;
}

// What element e makes of the place that the older element o has.  The result takes o's place.
static a_constant *overlay(a_constant *o, a_constant *e, a_type *type)
{
  if (is_elided_aggregate(e) && o->kind != ck_dynamic_init) {
    if (o->kind == ck_string) o = explode_string_initializer(o, type);
    if (o->kind == ck_aggregate) {
      flatten_designators(e, type, o);
      return e;
    }
  }
  rewrite_nested_designators(e, type);
  return combine_initializer_constants(o, e);
}

// In all elements of a range but the last, what follows the designated place doesn't belong to it:
// [0 ... 3].a = 1, 2 initializes the member behind a in the last element only.
static void reduce_to_designated_place(a_constant *constant)
{
  while (constant != nullptr) {
    if (constant->kind == ck_init_repeat) {
      constant = init_repeat_of(constant).repeated;
      continue;
    }
    if (!is_elided_aggregate(constant)) return;
    a_constant *first = aggregate_of(constant).first_element;
    if (first != nullptr && first->kind == ck_designator) first = first->next;
    if (first == nullptr) return;
    first->next = nullptr;
    aggregate_of(constant).last_element = first;
    constant = first;
  }
}

// The place that a range designates, to which all elements but the last are reduced.
static a_constant *designated_place(a_constant *constant)
{
  while (is_elided_aggregate(constant) && contains_designators(constant)) {
    a_constant *first = aggregate_of(constant).first_element;
    if (first != nullptr && first->kind == ck_designator) first = first->next;
    if (first == nullptr) break;
    constant = first;
  }
  return constant;
}

// `first` is a copy of `rest`: expressions are evaluated there, and the others read their values.
static void share_values(a_constant *first, a_constant *rest)
{
  check_recursion();
  if (first->kind == ck_init_repeat) {
    share_values(init_repeat_of(first).repeated, init_repeat_of(rest).repeated);
  } else if (first->kind == ck_aggregate) {
    a_constant *other = aggregate_of(rest).first_element;
    for (a_constant *element = aggregate_of(first).first_element; element != nullptr;
         element = element->next, other = other->next) {
      share_values(element, other);
    }
  } else if (first->kind == ck_dynamic_init && dynamic_init_of(first)->kind == dik_expression) {
    an_expr_node *&evaluated = expr_of(dynamic_init_of(first));
    a_type *type = rvalue_type(evaluated->type);
    a_variable *variable = make_lowered_temporary(type);
    an_expr_operator_kind op = assignment_operator_for_type(type);
    an_expr_node *save = make_binary_node(op, type, var_lvalue_expr(variable), evaluated);
    evaluated = make_comma_node(save, lowered_temporary_value(variable, type));
    expr_of(dynamic_init_of(rest)) = lowered_temporary_value(variable, type);
  }
}

static void place_element(a_positional_list *list, uint64_t position, a_constant *element,
                          a_type *type)
{
  fill_gap(list, position, type);
  if (position == list->length) {
    rewrite_nested_designators(element, type);
    append_element(list, element);
    return;
  }
  a_constant *old_element = split_at(list, position);
  a_constant *previous = list->before_cursor;
  a_constant *result = overlay(old_element, element, type);
  replace_link(list, previous, old_element, result);
}

static void place_repeat(a_positional_list *list, uint64_t position, a_constant *repeat,
                         a_type *type);

// A range whose value isn't constant: later designators may take it apart, but its expressions are
// evaluated once, for its first element.
static void place_dynamic_range(a_positional_list *list, uint64_t position, a_constant *range,
                                a_type *type)
{
  a_constant *value = init_repeat_of(range).repeated;
  a_constant *first = copy_element(value);
  if (is_elided_aggregate(value) && contains_designators(value)) {
    reduce_to_designated_place(first);
  }
  share_values(designated_place(first), designated_place(value));
  place_element(list, position, first, type);
  uint64_t rest = init_repeat_of(range).count - 1;
  if (rest == 1) {
    place_element(list, position + 1, value, type);
  } else {
    init_repeat_of(range).count = rest;
    place_repeat(list, position + 1, range, type);
  }
}

// A run of equal elements from the position on.  Over older elements, and with parts that differ in
// the last one, they are placed one by one.
static void place_repeat(a_positional_list *list, uint64_t position, a_constant *repeat,
                         a_type *type)
{
  uint64_t count = init_repeat_of(repeat).count;
  a_constant *value = init_repeat_of(repeat).repeated;
  bool last_differs = init_repeat_of(repeat).from_range_designator && is_elided_aggregate(value) &&
                      contains_designators(value);
  fill_gap(list, position, type);
  uint64_t i = 0;
  while (i < count && (position + i < list->length || last_differs)) {
    bool is_last = i + 1 == count;
    a_constant *single = is_last ? value : copy_element(value);
    if (last_differs && !is_last) reduce_to_designated_place(single);
    place_element(list, position + i, single, type);
    i++;
    // Beyond the older elements the rest can stay one repeat if its parts are alike.
    if (i == count) return;
  }
  rewrite_nested_designators(value, type);
  if (i == 0) {
    append_element(list, repeat);
  } else {
    append_element(list, make_repeat(repeat, count - i));
  }
}

static void take_elements(a_positional_list *list, a_constant *base)
{
  *list = {};
  if (base == nullptr) return;
  for (a_constant *element = aggregate_of(base).first_element, *next; element != nullptr;
       element = next) {
    next = element->next;
    append_element(list, element);
  }
}

static void store_elements(a_constant *aggregate, const a_positional_list *list)
{
  aggregate_of(aggregate).first_element = list->head;
  aggregate_of(aggregate).last_element = list->tail;
  aggregate_of(aggregate).has_designators = false;
}

static void flatten_array(a_constant *aggregate, a_type *element_type, a_constant *base)
{
  a_positional_list list;
  take_elements(&list, base);
  uint64_t position = 0;
  for (a_constant *element = aggregate_of(aggregate).first_element, *next; element != nullptr;
       element = next) {
    next = element->next;
    if (element->kind == ck_designator) {
      position = designator_of(element).index;
    } else if (element->kind == ck_init_repeat) {
      uint64_t count = init_repeat_of(element).count;
      bool is_range = init_repeat_of(element).from_range_designator;
      if (is_range && count > 1 && has_dynamic_part(init_repeat_of(element).repeated)) {
        place_dynamic_range(&list, position, element, element_type);
      } else {
        place_repeat(&list, position, element, element_type);
      }
      position += count;
    } else {
      place_element(&list, position, element, element_type);
      position++;
    }
  }
  store_elements(aggregate, &list);
}

// Zeros for the members in front of the one at the position.
static void fill_members(a_positional_list *list, a_type *class_type, uint64_t position)
{
  uint64_t at = 0;
  for (a_field *field = first_initializable_field(class_type); field != nullptr && at < position;
       field = next_initializable_field(field->next)) {
    if (at >= list->length) fill_gap(list, at + 1, field->type);
    at++;
  }
}

static uint64_t position_of_member(a_type *class_type, const a_field *member)
{
  uint64_t position = 0;
  for (a_field *field = first_initializable_field(class_type); field != nullptr;
       field = next_initializable_field(field->next)) {
    if (field == member) return position;
    position++;
  }
  unexpected_kind("designated member");
}

static void flatten_struct(a_constant *aggregate, a_type *class_type, a_constant *base)
{
  a_positional_list list;
  take_elements(&list, base);
  a_field *field = first_initializable_field(class_type);
  uint64_t position = 0;
  for (a_constant *element = aggregate_of(aggregate).first_element, *next; element != nullptr;
       element = next) {
    next = element->next;
    if (element->kind == ck_designator) {
      field = designator_of(element).field;
      position = position_of_member(class_type, field);
      continue;
    }
    if (field == nullptr) break;
    fill_members(&list, class_type, position);
    place_element(&list, position, element, field->type);
    field = next_initializable_field(field->next);
    position++;
  }
  store_elements(aggregate, &list);
}

namespace {

// The one value of a union, and what it has overridden.
struct a_union_value {
  a_field *member;
  a_constant *value;
  a_constant *overridden;
};

} // namespace

static void take_union_value(a_union_value *state, a_type *union_type, a_constant *base)
{
  *state = {first_initializable_field(union_type), nullptr, nullptr};
  if (base == nullptr) return;
  a_constant *element = aggregate_of(base).first_element;
  if (element != nullptr && element->kind == ck_designator) {
    state->member = designator_of(element).field;
    element = element->next;
  }
  state->value = element;
}

static void give_union_value(a_union_value *state, a_field *member, a_constant *element)
{
  if (state->value != nullptr && member == state->member) {
    state->value = overlay(state->value, element, member->type);
    return;
  }
  if (state->value != nullptr) {
    state->overridden = combine_initializers(state->overridden, state->value);
  }
  rewrite_nested_designators(element, member->type);
  state->member = member;
  state->value = element;
}

static void flatten_union(a_constant *aggregate, a_type *union_type, a_constant *base)
{
  a_union_value state;
  take_union_value(&state, union_type, base);
  a_field *first_member = first_initializable_field(union_type);
  a_field *member = first_member;
  for (a_constant *element = aggregate_of(aggregate).first_element, *next; element != nullptr;
       element = next) {
    next = element->next;
    if (element->kind == ck_designator) {
      member = designator_of(element).field;
    } else if (member != nullptr) {
      give_union_value(&state, member, element);
    }
  }
  a_positional_list list = {};
  if (state.value != nullptr) {
    if (state.overridden != nullptr) {
      state.value = combine_initializer_constants(state.overridden, state.value);
    }
    if (state.member != first_member) {
      a_constant *designator = alloc_constant(ck_designator);
      designator_of(designator).field = state.member;
      append_element(&list, designator);
    }
    append_element(&list, state.value);
  }
  store_elements(aggregate, &list);
  aggregate_of(aggregate).has_designators = state.value != nullptr && state.member != first_member;
}

// Makes the list of the aggregate positional, over the elements of `base` (which is used up) if
// given.
static void flatten_designators(a_constant *aggregate, a_type *type, a_constant *base)
{
  check_recursion();
  type = skip_typerefs(type);
  switch (type->kind) {
  case tk_array: flatten_array(aggregate, as_array(type).element_type, base); break;
  case tk_class:
  case tk_struct: flatten_struct(aggregate, type, base); break;
  case tk_union: flatten_union(aggregate, type, base); break;
  default: { // braces around a scalar
    a_constant *element = aggregate_of(aggregate).first_element;
    if (element != nullptr) rewrite_nested_designators(element, type);
    break;
  }
  }
}

static void rewrite_nested_designators(a_constant *constant, a_type *type)
{
  if (!contains_designators(constant)) return;
  switch (constant->kind) {
  case ck_aggregate: flatten_designators(constant, type, nullptr); break;
  case ck_init_repeat: rewrite_nested_designators(init_repeat_of(constant).repeated, type); break;
  case ck_dynamic_init:
    lower_dynamic_init_designated_initializers(dynamic_init_of(constant));
    break;
  default: break;
  }
}

// --- Partial aggregates --------------------------------------------------------------------------

static bool element_is_partial(const a_constant *element, a_type *type)
{
  if (element->kind == ck_init_repeat) element = init_repeat_of(element).repeated;
  if (element->kind != ck_aggregate && element->kind != ck_string) return false;
  a_type *bare = skip_typerefs(type);
  bool is_part = bare->kind == tk_array || kind_has_class_part(bare->kind);
  return is_part && aggregate_is_partial(element, type);
}

static bool array_is_partial(const a_constant *constant, a_type *array)
{
  uint64_t bound = as_array(array).bound.number_of_elements;
  uint64_t covered = 0;
  for (const a_constant *element = aggregate_of(constant).first_element; element != nullptr;
       element = element->next) {
    if (element_is_partial(element, as_array(array).element_type)) return true;
    covered += positions_of(element);
  }
  return covered < bound;
}

static bool struct_is_partial(const a_constant *constant, a_type *class_type)
{
  a_field *field = first_initializable_field(class_type);
  for (const a_constant *element = aggregate_of(constant).first_element; element != nullptr;
       element = element->next) {
    if (field == nullptr) return false;
    if (element_is_partial(element, field->type)) return true;
    field = next_initializable_field(field->next);
  }
  return field != nullptr;
}

bool aggregate_is_partial(const a_constant *constant, a_type *type)
{
  type = skip_typerefs(type);
  if (constant->kind == ck_string) {
    return type->kind == tk_array && string_of(constant).length < size_of_type(type);
  }
  if (constant->kind != ck_aggregate) return false;
  const a_constant *first = aggregate_of(constant).first_element;
  switch (type->kind) {
  case tk_array: return array_is_partial(constant, type);
  case tk_union: {
    if (first == nullptr) return true;
    a_field *member = first_initializable_field(type);
    if (first->kind == ck_designator) {
      member = designator_of(first).field;
      first = first->next;
    }
    return first == nullptr || member == nullptr || element_is_partial(first, member->type);
  }
  case tk_class:
  case tk_struct: return struct_is_partial(constant, type);
  default: return false;
  }
}

// --- Entries -------------------------------------------------------------------------------------

void lower_designated_initializers(a_constant *constant, a_variable *variable)
{
  if (!designators_allowed || constant->kind != ck_aggregate) return;
  if (!contains_designators(constant)) return;
  int saved = 0;
  if (is_file_scope_entry(constant)) switch_to_file_scope_region(&saved);
  a_type *type = constant->type != nullptr ? constant->type : variable->type;
  flatten_designators(constant, type, nullptr);
  switch_back_to_original_region(saved);
  if (variable != nullptr && variable->init_needs_zero_fill) {
    variable->init_needs_zero_fill = aggregate_is_partial(constant, type);
  }
}

void lower_dynamic_init_designated_initializers(a_dynamic_init *init)
{
  if (init->kind != dik_constant && init->kind != dik_constant_via_temp) return;
  lower_designated_initializers(constant_of(init), init->variable);
}
