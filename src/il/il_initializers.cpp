// il_initializers.cpp - aggregates of constants, strings as aggregates, overridden initializers.
// Rule:    what an overridden initializer would have done still runs, in front of what overrides
//          it.
// Entry:   add_to_aggregate, explode_string_initializer, combine_initializers.
#include "consts/const_ints.h"
#include "driver/target.h"
#include "il/il.h"

void add_to_aggregate(a_constant *aggregate, a_constant *element)
{
  a_constant_aggregate &list = aggregate_of(aggregate);
  element->next = nullptr;
  if (list.first_element == nullptr) {
    list.first_element = element;
  } else {
    list.last_element->next = element;
  }
  list.last_element = element;
}

unsigned char_size_of_string(const a_constant *string)
{
  a_type *element = array_element_type(string->type);
  uint64_t size = size_of_type(element);
  return size == 0 ? 1 : (unsigned)size;
}

// Characters wider than one byte are stored in the target's byte order, low byte first or high.
uint32_t string_character_at(const a_constant *string, uint64_t index)
{
  unsigned size = char_size_of_string(string);
  const unsigned char *bytes = (const unsigned char *)string_of(string).text + index * size;
  uint32_t value = 0;
  for (unsigned i = 0; i < size; i++) {
    unsigned at = targ_little_endian ? size - 1 - i : i;
    value = value << 8 | bytes[at];
  }
  return value;
}

static a_constant *constant_for_character(a_constant *string, uint64_t index, a_type *char_type)
{
  a_constant character;
  uint32_t code = string_character_at(string, index);
  a_type *bare = skip_typerefs(char_type);
  bool is_signed = int_kind_is_signed[as_integer(bare).int_kind];
  long long value = code;
  unsigned bits = char_size_of_string(string) * targ_char_bit;
  if (is_signed && bits < 64 && (code >> (bits - 1) & 1)) value -= 1LL << bits;
  set_integer_constant(&character, value, as_integer(bare).int_kind);
  character.type = make_unqualified_type(char_type);
  return alloc_unshared_constant_full(&character, is_file_scope_entry(string));
}

a_constant *explode_string_initializer(a_constant *string, a_type *array_type)
{
  if (string->kind != ck_string) return string;
  a_constant *aggregate =
      is_file_scope_entry(string) ? fs_constant(ck_aggregate) : alloc_constant(ck_aggregate);
  aggregate->type = array_type;
  a_type *char_type = array_element_type(array_type);
  uint64_t count = string_of(string).length / char_size_of_string(string);
  uint64_t bound = 0;
  a_type *bare = skip_typerefs(array_type);
  bool is_bounded = bare->kind == tk_array && !is_incomplete_array_type(bare) && !is_vla_type(bare);
  if (is_bounded) bound = as_array(bare).bound.number_of_elements;
  if (is_bounded && count > bound) count = bound;
  for (uint64_t i = 0; i < count; i++) {
    add_to_aggregate(aggregate, constant_for_character(string, i, char_type));
  }
  return aggregate;
}

// --- Overridden initializers ---------------------------------------------------------------------

// The expression whose side effects an overridden initializer had, or null.
static an_expr_node *side_effects_of_initializer(a_constant *constant)
{
  switch (constant->kind) {
  case ck_dynamic_init: {
    a_dynamic_init *init = dynamic_init_of(constant);
    if (!dynamic_init_has_side_effects(init)) return nullptr;
    if (init->kind == dik_expression) return expr_of(init);
    return alloc_temp_init_node(constant->type, init, false);
  }
  case ck_init_repeat: return side_effects_of_initializer(init_repeat_of(constant).repeated);
  case ck_aggregate: {
    an_expr_node *all = nullptr;
    for (a_constant *element = aggregate_of(constant).first_element; element != nullptr;
         element = element->next) {
      an_expr_node *one = side_effects_of_initializer(element);
      if (one == nullptr) continue;
      all = all == nullptr ? one : make_comma_node(all, one);
    }
    return all;
  }
  default: return nullptr;
  }
}

// Puts the expression in front of the first scalar place of an initializer.
static void put_in_front_of_first_scalar(a_constant *constant, an_expr_node *effects)
{
  for (;;) {
    if (constant->kind == ck_string) {
      a_constant *next = constant->next;
      a_constant *characters = explode_string_initializer(constant, constant->type);
      copy_constant(characters, constant);
      constant->next = next;
    }
    if (constant->kind == ck_aggregate) {
      a_constant *first = aggregate_of(constant).first_element;
      while (first != nullptr && first->kind == ck_designator)
        first = first->next;
      if (first == nullptr) return;
      constant = first;
    } else if (constant->kind == ck_init_repeat) {
      constant = init_repeat_of(constant).repeated;
    } else {
      break;
    }
  }
  an_expr_node *value;
  if (constant->kind == ck_dynamic_init && dynamic_init_of(constant)->kind == dik_expression) {
    value = expr_of(dynamic_init_of(constant));
  } else if (constant->kind == ck_dynamic_init) {
    value = alloc_temp_init_node(constant->type, dynamic_init_of(constant), false);
  } else {
    a_constant *copy = alloc_unshared_constant(constant);
    value = alloc_node_for_allocated_constant(copy);
  }
  a_dynamic_init *init = alloc_dynamic_init(dik_expression);
  expr_of(init) = make_comma_node(effects, value);
  a_constant *next = constant->next;
  set_constant_kind(constant, ck_dynamic_init);
  dynamic_init_of(constant) = init;
  constant->next = next;
}

a_constant *combine_initializer_constants(a_constant *earlier, a_constant *later)
{
  an_expr_node *effects = side_effects_of_initializer(earlier);
  if (effects != nullptr) put_in_front_of_first_scalar(later, effects);
  return later;
}

a_constant *combine_initializers(a_constant *earlier, a_constant *later)
{
  return earlier == nullptr ? later : combine_initializer_constants(earlier, later);
}
