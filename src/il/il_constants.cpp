// il_constants.cpp - constants: setters on working records, comparison, hashing, sharing, copies.
// Owns:    the tables of shared constants (one for the file scope, one for each open function).
// Rule:    equal constants of the same type share one entry; a constant with a part that lives in a
//          function stays in that function.
// Entry:   alloc_shareable_constant, set_integer_constant, compare_constants.
#include "il/il.h"

#include "consts/const_ints.h"
#include "consts/float_pt.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "il/il_walk.h"
#include "mem/stack_limit.h"

// --- Setters -------------------------------------------------------------------------------------

void set_integer_constant(a_constant *constant, long long value, an_integer_kind kind)
{
  clear_constant(constant, ck_integer);
  set_integer_value(&integer_of(constant), value);
  constant->type = integer_type(kind);
}

void set_unsigned_integer_constant(a_constant *constant, unsigned long long value,
                                   an_integer_kind kind)
{
  clear_constant(constant, ck_integer);
  set_unsigned_integer_value(&integer_of(constant), value);
  constant->type = integer_type(kind);
}

void set_error_constant(a_constant *constant)
{
  clear_constant(constant, ck_error);
  constant->type = error_type();
}

a_constant *alloc_error_constant()
{
  a_constant *constant = alloc_constant(ck_error);
  constant->type = error_type();
  return constant;
}

static void set_address_constant(a_constant *constant, an_address_constant_kind kind, void *entity,
                                 a_type *type)
{
  clear_constant(constant, ck_address);
  address_of(constant).kind = kind;
  address_of(constant).entity = entity;
  constant->type = type;
}

void set_variable_address_constant(a_variable *variable, a_constant *constant, bool implicit)
{
  set_address_constant(constant, ack_variable, variable, make_pointer_type(variable->type));
  constant->show_implicit_cast = false;
  if (!implicit) set_variable_address_taken(variable);
  variable->address_taken = true;
}

void set_routine_address_constant(a_routine *routine, a_constant *constant, bool)
{
  set_address_constant(constant, ack_routine, routine, make_pointer_type(routine->type));
  routine->address_taken = true;
}

void set_label_address_constant(a_label *label, a_constant *constant)
{
  set_address_constant(constant, ack_label, label, make_pointer_type(void_type()));
  label->address_taken = true;
}

void set_constant_address_constant(a_constant *target, a_constant *constant, bool)
{
  set_address_constant(constant, ack_constant, target, make_pointer_type(target->type));
}

void set_ptr_to_data_member_constant(a_field *field, a_constant *constant)
{
  clear_constant(constant, ck_ptr_to_member);
  ptr_to_member_of(constant).member = field;
  a_type *class_type = parent_class_of(&field->source_corresp);
  constant->type = ptr_to_member_type_full(field->type, class_type, 0);
}

void set_ptr_to_member_function_constant(a_routine *routine, a_constant *constant)
{
  clear_constant(constant, ck_ptr_to_member);
  ptr_to_member_of(constant).is_member_function = true;
  ptr_to_member_of(constant).member = routine;
  a_type *class_type = parent_class_of(&routine->source_corresp);
  constant->type = ptr_to_member_type_full(routine->type, class_type, 0);
}

void make_typeid_constant(a_type *type, a_constant *constant)
{
  set_address_constant(constant, ack_typeid, type, nullptr);
}

void set_complex_constant(a_constant *constant, const simul_fval *real, const simul_fval *imag,
                          a_float_kind kind)
{
  clear_constant(constant, ck_complex);
  complex_of(constant)->real = *real;
  complex_of(constant)->imag = *imag;
  constant->type = complex_type(kind);
}

void make_zero_of_proper_type(a_type *type, a_constant *constant)
{
  a_type *bare = skip_typerefs(type);
  switch (bare->kind) {
  case tk_integer:
  case tk_pointer:
  case tk_nullptr: clear_constant(constant, ck_integer); break;
  case tk_float:
    clear_constant(constant, ck_float);
    float_of(constant) = pos_zero;
    break;
  case tk_imaginary:
    clear_constant(constant, ck_imaginary);
    float_of(constant) = pos_zero;
    break;
  case tk_complex:
    set_complex_constant(constant, &pos_zero, &pos_zero, as_float(bare).float_kind);
    break;
  case tk_ptr_to_member: {
    bool is_function = is_function_type(as_ptr_to_member(bare).member_type);
    clear_constant(constant, ck_ptr_to_member);
    ptr_to_member_of(constant).is_member_function = is_function;
    break;
  }
  default: set_error_constant(constant); return;
  }
  constant->type = type;
}

// --- Tests ---------------------------------------------------------------------------------------

bool is_zero_constant(const a_constant *constant)
{
  switch (constant->kind) {
  case ck_integer: return cmplit_integer_constant(constant, 0) == 0;
  case ck_float:
  case ck_imaginary: return fp_is_zero_constant(&float_of(constant));
  case ck_complex:
    return fp_is_zero_constant(&complex_of(constant)->real) &&
           fp_is_zero_constant(&complex_of(constant)->imag);
  case ck_ptr_to_member: return pm_constant_is_null(constant);
  default: return false;
  }
}

bool is_enum_constant(const a_constant *constant)
{
  if (constant->kind != ck_integer || constant->type == nullptr) return false;
  const a_type *type = skip_typerefs(constant->type);
  if (type->kind != tk_integer) return false;
  const an_integer_type_part &part = as_integer(type);
  return part.is_enum || (il_header.source_language == 1 && part.represented_enum != nullptr);
}

bool is_ordinary_string_constant(const a_constant *constant)
{
  return constant->kind == ck_string && constant->char_kind == chk_char;
}

bool is_wide_string_constant(const a_constant *constant)
{
  return constant->kind == ck_string && constant->char_kind == chk_wchar_t;
}

bool con_is_exact_addr_of_variable(const a_constant *constant, a_variable **variable)
{
  if (constant->kind != ck_address) return false;
  const a_constant_address &address = address_of(constant);
  if (address.kind != ack_variable || address.offset != 0) return false;
  *variable = (a_variable *)address.entity;
  return true;
}

bool pm_constant_is_null(const a_constant *constant)
{
  return constant->kind == ck_ptr_to_member && ptr_to_member_of(constant).member == nullptr;
}

bool constant_contains_error(const a_constant *constant)
{
  switch (constant->kind) {
  case ck_error: return true;
  case ck_address_difference:
    return constant_contains_error(address_difference_of(constant).minuend) ||
           constant_contains_error(address_difference_of(constant).subtrahend);
  case ck_init_repeat: return constant_contains_error(init_repeat_of(constant).repeated);
  case ck_aggregate:
    for (const a_constant *element = aggregate_of(constant).first_element; element != nullptr;
         element = element->next) {
      if (constant_contains_error(element)) return true;
    }
    return false;
  default: return constant->type != nullptr && is_error_type(constant->type);
  }
}

bool constant_is_instantiation_dependent(const a_constant *constant)
{
  if (constant->kind == ck_template_param) return true;
  return constant->type != nullptr && is_instantiation_dependent_type(constant->type);
}

static bool is_function_local(const void *entry)
{
  return entry != nullptr && !is_file_scope_entry(entry);
}

static bool template_param_has_local_ref(const a_constant_template_param &param)
{
  switch (param.kind) {
  case tpck_expression: return is_function_local(param.expr);
  case tpck_cast:
  case tpck_address_of_constant:
  case tpck_unknown_function_with_args: return is_function_local(param.constant);
  case tpck_sizeof:
  case tpck_alignof:
  case tpck_uuidof:
  case tpck_typeid: return !param.operand_is_type && is_function_local(param.expr);
  default: return false;
  }
}

bool has_non_file_scope_ref(const a_constant *constant)
{
  switch (constant->kind) {
  case ck_error:
  case ck_integer:
  case ck_float:
  case ck_complex:
  case ck_imaginary:
  case ck_ptr_to_member:
  case ck_designator: return false;
  case ck_string: return string_of(constant).string_literal_number != 0;
  case ck_address:
    if (address_of(constant).kind == ack_label) return true;
    return is_function_local(address_of(constant).entity);
  case ck_address_difference: return true;
  case ck_dynamic_init: return is_function_local(dynamic_init_of(constant));
  case ck_aggregate: {
    const a_constant *first = aggregate_of(constant).first_element;
    if (is_function_local(first)) return true;
    for (; first != nullptr; first = first->next) {
      if (has_non_file_scope_ref(first)) return true;
    }
    return false;
  }
  case ck_init_repeat:
    return is_function_local(init_repeat_of(constant).repeated) ||
           has_non_file_scope_ref(init_repeat_of(constant).repeated);
  case ck_template_param: return template_param_has_local_ref(template_param_of(constant));
  case ck_last: break;
  }
  unexpected_kind("constant");
}

// --- Comparison ----------------------------------------------------------------------------------

static bool corresponding_entries(const void *a, const void *b)
{
  if (a == b) return true;
  if (a == nullptr || b == nullptr) return false;
  return corresp_entry_of(a) == b || corresp_entry_of(b) == a;
}

// The flags that compare_constants with cco_same_type takes into account for integers.
static bool same_integer_form(const a_constant *a, const a_constant *b)
{
  return a->is_enumerator_use == b->is_enumerator_use && a->is_gnu_null == b->is_gnu_null &&
         a->is_nullptr == b->is_nullptr;
}

static bool types_match(const a_constant *a, const a_constant *b, unsigned options)
{
  if (a->type == nullptr || b->type == nullptr || a->type == b->type) return true;
  if (options & cco_same_type) {
    if (a->kind == ck_string) return f_identical_types(a->type, b->type, ido_none);
    a_trans_unit_corresp *set = a->type->source_corresp.trans_unit_corresp;
    return set != nullptr && set == b->type->source_corresp.trans_unit_corresp;
  }
  a_type *left = a->type;
  a_type *right = b->type;
  bool are_variable_addresses = a->kind == ck_address && address_of(a).kind == ack_variable &&
                                address_of(b).kind == ack_variable;
  if (are_variable_addresses && is_pointer_type(left) && is_pointer_type(right)) {
    left = type_pointed_to(left);
    right = type_pointed_to(right);
  }
  return f_types_are_compatible(left, right, tco_array_bounds);
}

static bool same_template_param(const a_constant *a, const a_constant *b, unsigned options)
{
  if (options & cco_no_template_params) return false;
  const a_constant_template_param &left = template_param_of(a);
  const a_constant_template_param &right = template_param_of(b);
  if (left.kind != right.kind) return false;
  switch (left.kind) {
  case tpck_param: return left.position == right.position && left.level == right.level;
  case tpck_expression: return compare_expressions(left.expr, right.expr, options);
  case tpck_unknown_function: return a->source_corresp.name == b->source_corresp.name;
  case tpck_address_of_unknown_function: return left.type == right.type;
  case tpck_cast:
  case tpck_address_of_constant:
  case tpck_unknown_function_with_args:
    return compare_constants(left.constant, right.constant, options);
  case tpck_sizeof:
  case tpck_alignof:
  case tpck_uuidof:
  case tpck_typeid:
    if (left.operand_is_type != right.operand_is_type) return false;
    if (left.operand_is_type) return f_identical_types(left.type, right.type, ido_none);
    return compare_expressions(left.expr, right.expr, options);
  case tpck_last: break;
  }
  unexpected_kind("template parameter constant");
}

static bool same_string(const a_constant_string &a, const a_constant_string &b)
{
  return a.length == b.length && a.string_literal_number == b.string_literal_number &&
         memcmp(a.text, b.text, a.length) == 0;
}

static bool same_address(const a_constant_address &a, const a_constant_address &b)
{
  if (a.kind != b.kind || a.offset != b.offset) return false;
  if (a.entity == b.entity) return true;
  if (a.kind == ack_uuidof || a.kind == ack_typeid) {
    return f_identical_types((a_type *)a.entity, (a_type *)b.entity, ido_none);
  }
  return corresponding_entries(a.entity, b.entity);
}

static bool same_ptr_to_member(const a_constant_ptr_to_member &a, const a_constant_ptr_to_member &b)
{
  return a.is_member_function == b.is_member_function && a.base_class == b.base_class &&
         a.cast_to_base == b.cast_to_base && corresponding_entries(a.member, b.member);
}

static bool same_elements(const a_constant *a, const a_constant *b, unsigned options)
{
  while (a != nullptr && b != nullptr) {
    if (!compare_constants(a, b, options)) return false;
    a = a->next;
    b = b->next;
  }
  return a == b;
}

static a_float_kind float_kind_of_constant(const a_constant *constant)
{
  return constant->type == nullptr ? fk_long_double
                                   : as_float(skip_typerefs(constant->type)).float_kind;
}

static bool same_value(const a_constant *a, const a_constant *b, unsigned options)
{
  switch (a->kind) {
  case ck_error: return true;
  case ck_integer:
    if ((options & cco_same_type) != 0 && !same_integer_form(a, b)) return false;
    return cmp_integer_constants(a, b) == 0;
  case ck_string: return same_string(string_of(a), string_of(b));
  case ck_float:
  case ck_imaginary:
    return fp_same_representation(float_kind_of_constant(a), &float_of(a), &float_of(b));
  case ck_complex: {
    a_float_kind kind = float_kind_of_constant(a);
    return fp_same_representation(kind, &complex_of(a)->real, &complex_of(b)->real) &&
           fp_same_representation(kind, &complex_of(a)->imag, &complex_of(b)->imag);
  }
  case ck_address: return same_address(address_of(a), address_of(b));
  case ck_ptr_to_member: return same_ptr_to_member(ptr_to_member_of(a), ptr_to_member_of(b));
  case ck_address_difference: {
    const a_constant_address_difference &left = address_difference_of(a);
    const a_constant_address_difference &right = address_difference_of(b);
    return compare_constants(left.minuend, right.minuend, options) &&
           compare_constants(left.subtrahend, right.subtrahend, options);
  }
  case ck_dynamic_init: return dynamic_init_of(a) == dynamic_init_of(b);
  case ck_aggregate:
    return same_elements(aggregate_of(a).first_element, aggregate_of(b).first_element, options);
  case ck_init_repeat:
    return init_repeat_of(a).count == init_repeat_of(b).count &&
           compare_constants(init_repeat_of(a).repeated, init_repeat_of(b).repeated, options);
  case ck_template_param: return same_template_param(a, b, options);
  case ck_designator: return false;
  case ck_last: break;
  }
  unexpected_kind("constant");
}

bool compare_constants(const a_constant *a, const a_constant *b, unsigned options)
{
  if (a == b) return true;
  bool param_matches = (options & cco_param_matches_all) != 0;
  if (param_matches) {
    bool a_is_param = a->kind == ck_template_param && template_param_of(a).kind == tpck_param;
    bool b_is_param = b->kind == ck_template_param && template_param_of(b).kind == tpck_param;
    if (a_is_param || b_is_param) return true;
  }
  if (a->kind != b->kind) return false;
  return types_match(a, b, options) && same_value(a, b, options);
}

bool eq_constants(const a_constant *a, const a_constant *b)
{
  return compare_constants(a, b, 0);
}

// --- Hashing -------------------------------------------------------------------------------------

uint32_t hash_string(const char *text)
{
  uint32_t hash = 0;
  for (; *text != 0; text++)
    hash = hash * 33 + (uint32_t)(int)(signed char)*text;
  return hash;
}

// The hash decides the order of shared constants only, never the output, so that it may use what is
// at hand; but it may not depend on addresses, since runs are to be repeatable in time too.
static uint32_t hash_of_type(const a_type *type)
{
  if (type == nullptr) return 0;
  uint32_t hash = type->kind * 5u;
  if (type->kind == tk_integer) hash += as_integer(type).int_kind * 17u;
  if (type->source_corresp.name != nullptr) hash += hash_string(type->source_corresp.name);
  return hash;
}

static uint32_t hash_of_address(const a_constant_address &address)
{
  uint32_t hash = address.kind * 3u + (uint32_t)address.offset;
  const a_source_correspondence *corresp = nullptr;
  switch (address.kind) {
  case ack_routine: corresp = &((a_routine *)address.entity)->source_corresp; break;
  case ack_variable: corresp = &((a_variable *)address.entity)->source_corresp; break;
  case ack_label: corresp = &((a_label *)address.entity)->source_corresp; break;
  case ack_constant: return hash + hash_constant((a_constant *)address.entity);
  case ack_uuidof:
  case ack_typeid: return hash + hash_of_type((a_type *)address.entity);
  case ack_last: break;
  }
  bool is_named = corresp != nullptr && corresp->name != nullptr;
  return is_named ? hash + hash_string(corresp->name) : hash;
}

static uint32_t hash_of_bytes(const a_constant_string &string)
{
  uint32_t hash = string.string_literal_number + 100;
  for (uint64_t i = 0; i < string.length; i++) {
    hash = hash * 33 + (uint32_t)(int)(signed char)string.text[i];
  }
  return hash;
}

uint32_t hash_constant(const a_constant *constant)
{
  switch (constant->kind) {
  case ck_integer: {
    const uint16_t *digit = integer_of(constant).digit;
    uint32_t hash = digit[3] | (uint32_t)digit[2] << 16;
    hash ^= (digit[1] | (uint32_t)digit[0] << 16) * 31u;
    return hash + hash_of_type(constant->type);
  }
  case ck_string: return hash_of_bytes(string_of(constant));
  case ck_float:
  case ck_imaginary: return fp_hash(&float_of(constant)) + 500;
  case ck_complex:
    return fp_hash(&complex_of(constant)->real) + fp_hash(&complex_of(constant)->imag) + 250;
  case ck_address: return hash_of_address(address_of(constant)) + hash_of_type(constant->type);
  case ck_ptr_to_member:
  case ck_template_param: return constant->kind + hash_of_type(constant->type);
  default: return constant->kind;
  }
}

// --- Copies --------------------------------------------------------------------------------------

// What a copy may not take along: links of lists and of the head's supplements.
static void clear_links_of_copy(a_constant *constant)
{
  constant->next = nullptr;
  constant->source_corresp.decl_position_supplement = nullptr;
  constant->source_corresp.per_instantiation_needed_flags = nullptr;
  constant->source_corresp.has_local_scope_ref = false;
  constant->source_corresp.needed = false;
}

void copy_constant(const a_constant *from, a_constant *to)
{
  *to = *from;
  clear_links_of_copy(to);
}

// Drops the pointers that a file-scope entry may not hold.
static void drop_function_local_links(a_constant *constant)
{
  if (is_function_local(constant->expr)) constant->expr = nullptr;
  if (constant->kind == ck_string) string_of(constant).string_literal_number = 0;
  a_source_correspondence *head = &constant->source_corresp;
  if (is_function_local(head->parent_scope)) head->parent_scope = nullptr;
}

a_constant *alloc_unshared_constant_full(const a_constant *constant, bool in_file_scope)
{
  a_constant *copy = in_file_scope ? alloc_fs_entry<a_constant>() : alloc_curr_entry<a_constant>();
  copy_constant(constant, copy);
  if (is_file_scope_entry(copy)) drop_function_local_links(copy);
  return copy;
}

a_constant *alloc_unshared_constant(const a_constant *constant)
{
  return alloc_unshared_constant_full(constant, false);
}

static void copy_elements(a_constant *aggregate, bool in_file_scope)
{
  const a_constant *element = aggregate_of(aggregate).first_element;
  aggregate_of(aggregate).first_element = nullptr;
  aggregate_of(aggregate).last_element = nullptr;
  for (; element != nullptr; element = element->next) {
    add_to_aggregate(aggregate, copy_constant_full(element, in_file_scope));
  }
}

a_constant *copy_constant_full(const a_constant *constant, bool in_file_scope)
{
  check_recursion();
  a_constant *copy = alloc_unshared_constant_full(constant, in_file_scope);
  switch (copy->kind) {
  case ck_aggregate: copy_elements(copy, in_file_scope); break;
  case ck_init_repeat: {
    a_constant *&repeated = init_repeat_of(copy).repeated;
    repeated = copy_constant_full(repeated, in_file_scope);
    break;
  }
  case ck_address:
    if (address_of(copy).kind == ack_constant) {
      void *&entity = address_of(copy).entity;
      entity = copy_constant_full((a_constant *)entity, in_file_scope);
    }
    break;
  case ck_address_difference: {
    a_constant_address_difference &difference = address_difference_of(copy);
    difference.minuend = copy_constant_full(difference.minuend, in_file_scope);
    difference.subtrahend = copy_constant_full(difference.subtrahend, in_file_scope);
    break;
  }
  default: break;
  }
  return copy;
}

a_constant *copy_unshared_constant(const a_constant *constant)
{
  return copy_constant_full(constant, false);
}

// --- Sharing -------------------------------------------------------------------------------------

static constexpr unsigned initial_file_scope_buckets = 2048; // a power of two; doubled as it fills
static constexpr unsigned num_function_buckets = 31;

struct a_shareable_constants_table {
  a_shareable_constants_table *next; // free list
  a_constant *buckets[num_function_buckets];
};

a_shareable_constants_table *curr_func_shareable_constants_table;
static a_constant **file_scope_buckets;
static unsigned num_file_scope_buckets;
static unsigned num_file_scope_constants;
static a_shareable_constants_table *avail_function_tables;

a_shareable_constants_table *alloc_function_shareable_constants_table()
{
  a_shareable_constants_table *table = avail_function_tables;
  if (table != nullptr) {
    avail_function_tables = table->next;
  } else {
    table = (a_shareable_constants_table *)alloc_in_region(0, sizeof(*table));
  }
  memset((void *)table, 0, sizeof(*table));
  return table;
}

static void empty_buckets(a_constant **buckets, unsigned count)
{
  for (unsigned i = 0; i < count; i++) {
    a_constant *constant = buckets[i];
    buckets[i] = nullptr;
    while (constant != nullptr) {
      a_constant *next = constant->next;
      constant->next = nullptr;
      constant = next;
    }
  }
}

void empty_func_shareable_constants_table(a_shareable_constants_table *table)
{
  if (table != nullptr) empty_buckets(table->buckets, num_function_buckets);
}

void free_function_shareable_constants_table(a_shareable_constants_table *table)
{
  if (table == nullptr) return;
  table->next = avail_function_tables;
  avail_function_tables = table;
}

void empty_shareable_constants_table()
{
  if (num_file_scope_constants == 0) return;
  empty_buckets(file_scope_buckets, num_file_scope_buckets);
  num_file_scope_constants = 0;
}

static bool is_never_shared(const a_constant *constant)
{
  if (constant->expr != nullptr) return true;
  switch (constant->kind) {
  case ck_ptr_to_member: return ptr_to_member_of(constant).name_reference != nullptr;
  case ck_string: return !string_literals_shared;
  case ck_address:
    // The address of a string is that of one literal only.
    return !string_literals_shared && address_of(constant).kind == ack_constant &&
           ((a_constant *)address_of(constant).entity)->kind == ck_string;
  case ck_template_param:
  case ck_aggregate:
  case ck_init_repeat:
  case ck_dynamic_init:
  case ck_designator: return true;
  default: return false;
  }
}

// What must agree beyond the value: all flags, since the writer or a message looks at them.
static bool same_flags(const a_constant *a, const a_constant *b)
{
  constexpr size_t start = offsetof(a_constant, char_kind);
  constexpr size_t length = offsetof(a_constant, variant) - start;
  return memcmp((const char *)a + start, (const char *)b + start, length) == 0 &&
         a->source_text == b->source_text;
}

static a_constant *look_up_in_bucket(a_constant **bucket, const a_constant *constant)
{
  a_constant *previous = nullptr;
  for (a_constant *entry = *bucket; entry != nullptr; previous = entry, entry = entry->next) {
    if (entry->kind != constant->kind || entry->type != constant->type) {
      if (entry->kind != constant->kind || entry->kind != ck_string) continue;
    }
    if (!compare_constants(entry, constant, cco_same_type)) continue;
    if (!same_flags(entry, constant)) continue;
    if (previous != nullptr) {
      previous->next = entry->next;
      entry->next = *bucket;
      *bucket = entry;
    }
    return entry;
  }
  return nullptr;
}

static a_constant **file_scope_bucket(const a_constant *constant)
{
  uint32_t hash = hash_constant(constant) * 0x9E3779B1u;
  return &file_scope_buckets[(hash >> 8) & (num_file_scope_buckets - 1)];
}

// The number of constants grows with the source; that of a function's own ones doesn't.
static void grow_file_scope_buckets()
{
  unsigned old_count = num_file_scope_buckets;
  a_constant **old_buckets = file_scope_buckets;
  num_file_scope_buckets = old_count == 0 ? initial_file_scope_buckets : old_count * 2;
  size_t size = num_file_scope_buckets * sizeof(a_constant *);
  file_scope_buckets = (a_constant **)alloc_general(size);
  memset((void *)file_scope_buckets, 0, size);
  for (unsigned i = 0; i < old_count; i++) {
    a_constant *next;
    for (a_constant *constant = old_buckets[i]; constant != nullptr; constant = next) {
      next = constant->next;
      a_constant **bucket = file_scope_bucket(constant);
      constant->next = *bucket;
      *bucket = constant;
    }
  }
  if (old_buckets != nullptr) free_general(old_buckets, old_count * sizeof(a_constant *));
}

static a_constant *share_in_bucket(a_constant **bucket, const a_constant *constant, bool file_scope)
{
  a_constant *entry = look_up_in_bucket(bucket, constant);
  if (entry != nullptr) return entry;
  entry = alloc_unshared_constant_full(constant, file_scope);
  if (file_scope && ++num_file_scope_constants > num_file_scope_buckets) {
    grow_file_scope_buckets();
    bucket = file_scope_bucket(constant);
  }
  entry->next = *bucket;
  *bucket = entry;
  return entry;
}

// Installed by the symbol table: the constant that a named constant's symbol stands for, or null.
// `must_compare` is set when the caller has to check that the value still is that constant's.
a_constant *(*named_constant_hook)(a_symbol *symbol, bool *must_compare);

static a_constant *shared_named_constant(const a_constant *constant)
{
  if (constant->source_corresp.assoc_symbol == nullptr || named_constant_hook == nullptr) {
    return nullptr;
  }
  bool must_compare = false;
  a_constant *named = named_constant_hook(constant->source_corresp.assoc_symbol, &must_compare);
  if (named == nullptr) return nullptr;
  if (must_compare && !compare_constants(named, constant, cco_same_type)) return nullptr;
  return named;
}

a_constant *alloc_shareable_constant(const a_constant *constant)
{
  if (!in_front_end) return alloc_unshared_constant(constant);
  if (constant->source_corresp.assoc_symbol != nullptr) {
    a_constant *named = shared_named_constant(constant);
    return named != nullptr ? named : alloc_unshared_constant(constant);
  }
  if (is_never_shared(constant)) return alloc_unshared_constant(constant);
  bool in_file_scope_region = curr_il_region_number == file_scope_region_number;
  if (in_file_scope_region || !has_non_file_scope_ref(constant)) {
    if (file_scope_buckets == nullptr) grow_file_scope_buckets();
    return share_in_bucket(file_scope_bucket(constant), constant, true);
  }
  a_shareable_constants_table *table = curr_func_shareable_constants_table;
  if (table == nullptr) return alloc_unshared_constant(constant);
  unsigned bucket = hash_constant(constant) % num_function_buckets;
  return share_in_bucket(&table->buckets[bucket], constant, false);
}

// A working record lies on the caller's stack: it has no prefix, so that nothing but its address
// tells it from an entry.  Callers that may hold either use this for records with a type of their
// own making.
a_constant *transfer_constant_to_il(a_constant *constant)
{
  return alloc_shareable_constant(constant);
}

an_expr_node *alloc_node_for_allocated_constant(a_constant *constant)
{
  an_expr_node *expr = alloc_expr_node(enk_constant);
  constant_of(expr) = constant;
  expr->type = constant->type;
  // A string is an array, and so an lvalue.
  expr->is_lvalue = constant->kind == ck_string;
  return expr;
}

an_expr_node *alloc_node_for_constant(const a_constant *constant)
{
  return alloc_node_for_allocated_constant(alloc_shareable_constant(constant));
}

static uint32_t last_string_literal_number;

uint32_t f_assign_string_literal_sequence_number()
{
  return ++last_string_literal_number;
}
