// c_gen_init.cpp - initializers of the generated C, and what of them becomes statements.
// Rule:  an initializer in a declaration holds constants only.  An automatic aggregate is copied
//        from a constant template where its declaration stood, and its parts that are no constants
//        are assigned.
// Entry: write_initializer, write_local_initialization, write_string_arrays.
#include "backend/c_gen_private.h"

// From this count on a repeated element is written with a range.
static constexpr uint64_t min_range_count = 4;

namespace {
// A step from an object to a part of it.
struct a_path_step {
  const a_path_step *outer; // null: this is the variable itself
  a_variable *variable;
  a_field *field; // null: index holds
  uint64_t index;
};
} // namespace

static const char *memcpy_name()
{
  return memory_routines_are_redefined ? "__builtin_memcpy" : "memcpy";
}

static const char *memset_name()
{
  return memory_routines_are_redefined ? "__builtin_memset" : "memset";
}

static bool is_aggregate_type(a_type *type)
{
  type = skip_typerefs(type);
  return kind_has_class_part(type->kind) || type->kind == tk_array;
}

// --- Wide strings --------------------------------------------------------------------------------

static void write_character_list(const a_constant *string, uint64_t count)
{
  put_char('{');
  for (uint64_t i = 0; i < count; i++) {
    char text[16];
    int length = snprintf(text, sizeof text, i == 0 ? "0x%x" : ",0x%x",
                          unsigned(string_character_at(string, i)));
    put_text(text, size_t(length));
  }
  put_char('}');
}

static uint64_t character_count(const a_constant *string)
{
  return string_of(string).length / char_size_of_string(string);
}

// A static array with the characters, once a string.
static void write_wide_array(a_constant *string)
{
  a_source_correspondence *corresp = &string->source_corresp;
  if (string->char_kind == chk_char || corresp->is_renamed_for_output) return;
  end_line();
  put_str("static ");
  write_declarator(string->type, corresp, iek_constant, false);
  put_str(" = ");
  write_character_list(string, character_count(string));
  put_char(';');
  end_line();
}

bool write_string_name(const a_constant *string, an_il_to_str_output_control_block *)
{
  if (string->char_kind == chk_char || !string->source_corresp.is_renamed_for_output) return false;
  put_str(string->source_corresp.internal_name);
  return true;
}

static void visit_constant(a_constant *constant, an_expr_or_stmt_traversal_block *)
{
  if (constant->kind == ck_string) {
    write_wide_array(constant);
  } else if (constant->kind == ck_address && address_of(constant).kind == ack_constant) {
    a_constant *target = static_cast<a_constant *>(address_of(constant).entity);
    if (target->kind == ck_string) write_wide_array(target);
  }
}

void write_string_arrays_of_statement(a_statement *statement)
{
  if (!wide_string_types_used) return;
  an_expr_or_stmt_traversal_block block;
  clear_expr_or_stmt_traversal_block(&block);
  block.constant_callback = visit_constant;
  block.follow_dynamic_inits = true;
  traverse_statement(statement, &block);
}

void write_string_arrays(a_constant *constant)
{
  if (!wide_string_types_used) return;
  switch (constant->kind) {
  case ck_aggregate:
    for (a_constant *element = aggregate_of(constant).first_element; element != nullptr;
         element = element->next)
      write_string_arrays(element);
    return;
  case ck_init_repeat: write_string_arrays(init_repeat_of(constant).repeated); return;
  case ck_address: visit_constant(constant, nullptr); return;
  default: return;
  }
}

// --- Constant values -----------------------------------------------------------------------------

bool constant_is_static(const a_constant *constant)
{
  switch (constant->kind) {
  case ck_dynamic_init: return false;
  case ck_aggregate:
    for (const a_constant *element = aggregate_of(constant).first_element; element != nullptr;
         element = element->next)
      if (!constant_is_static(element)) return false;
    return true;
  case ck_init_repeat: return constant_is_static(init_repeat_of(constant).repeated);
  default: return true;
  }
}

// All bits of the object that the constant makes are zero.
static bool is_all_zero(const a_constant *constant)
{
  switch (constant->kind) {
  case ck_integer: return cmplit_integer_constant(constant, 0) == 0;
  case ck_float: return fp_is_zero_constant(&float_of(constant)) && !float_of(constant).sign;
  case ck_dynamic_init:
  case ck_designator: return true; // the former is assigned later, the latter has no value
  case ck_aggregate:
    for (const a_constant *element = aggregate_of(constant).first_element; element != nullptr;
         element = element->next)
      if (!is_all_zero(element)) return false;
    return true;
  case ck_init_repeat: return is_all_zero(init_repeat_of(constant).repeated);
  default: return false;
  }
}

static void write_value(const a_constant *constant, a_type *type);

static void write_scalar(const a_constant *constant)
{
  if (constant->kind == ck_integer && constant->type != nullptr &&
      is_pointer_type(constant->type) && cmplit_integer_constant(constant, 0) == 0) {
    put_char('0');
    return;
  }
  bool saved = control.no_small_int_casts;
  control.no_small_int_casts = true;
  form_constant(constant, false, &control);
  control.no_small_int_casts = saved;
}

static void write_zero(a_type *type)
{
  put_str(!is_aggregate_type(type) ? "0" : size_of_type(type) == 0 ? "{}" : "{0}");
}

// One value several times: a range of indices, or the text again.
static void write_repeat(const a_constant *repeat, uint64_t index, a_type *element_type)
{
  uint64_t count = init_repeat_of(repeat).count;
  const a_constant *value = init_repeat_of(repeat).repeated;
  if (count >= min_range_count) {
    char text[64];
    int length = snprintf(text, sizeof text, "[%llu ... %llu] = ", (unsigned long long)index,
                          (unsigned long long)(index + count - 1));
    put_text(text, size_t(length));
    write_value(value, element_type);
    return;
  }
  for (uint64_t i = 0; i < count; i++) {
    if (i != 0) put_char(',');
    write_value(value, element_type);
  }
}

static void write_array_elements(const a_constant *aggregate, a_type *type)
{
  a_type *element_type = as_array(type).element_type;
  uint64_t index = 0;
  for (const a_constant *element = aggregate_of(aggregate).first_element; element != nullptr;
       element = element->next) {
    if (element->kind == ck_designator) {
      index = designator_of(element).index;
      put_char('[');
      put_unsigned(index);
      put_str("] = ");
      continue;
    }
    if (element->kind == ck_init_repeat) {
      write_repeat(element, index, element_type);
      index += init_repeat_of(element).count;
    } else {
      write_value(element, element_type);
      index++;
    }
    if (element->next != nullptr) put_char(',');
  }
}

static void write_member_designator(a_field *field)
{
  put_char('.');
  write_name(field);
  put_str(" = ");
}

static void write_class_elements(const a_constant *aggregate, a_type *type)
{
  // Padding that C++ layout put between members has members of its own in the text.
  bool names_members = il_header.source_language != 1 && type->kind != tk_union;
  a_field *field = first_initializable_field(type);
  for (const a_constant *element = aggregate_of(aggregate).first_element; element != nullptr;
       element = element->next) {
    if (element->kind == ck_designator) {
      field = designator_of(element).field;
      write_member_designator(field);
      continue;
    }
    if (field == nullptr) return;
    if (names_members) write_member_designator(field);
    write_value(element, field->type);
    field = next_initializable_field(field->next);
    if (element->next != nullptr && (field != nullptr || element->next->kind == ck_designator))
      put_char(',');
  }
}

static void write_aggregate(const a_constant *aggregate, a_type *type)
{
  type = skip_typerefs(type);
  // The value of a pointer to member function is that of a struct.
  if (type->kind == tk_ptr_to_member) type = skip_typerefs(aggregate->type);
  if (type->kind != tk_array && !kind_has_class_part(type->kind)) {
    // A scalar that stood in braces.
    const a_constant *first = aggregate_of(aggregate).first_element;
    if (first != nullptr)
      write_value(first, type);
    else
      put_char('0');
    return;
  }
  put_char('{');
  if (type->kind == tk_array)
    write_array_elements(aggregate, type);
  else
    write_class_elements(aggregate, type);
  put_char('}');
}

static void write_string_value(const a_constant *string, a_type *type)
{
  a_type *final_type = skip_typerefs(type);
  if (string->char_kind == chk_char || final_type->kind != tk_array) {
    form_constant(string, false, &control);
    return;
  }
  uint64_t count = character_count(string), bound = as_array(final_type).bound.number_of_elements;
  write_character_list(string, bound != 0 && bound < count ? bound : count);
}

static void write_value(const a_constant *constant, a_type *type)
{
  switch (constant->kind) {
  case ck_aggregate: write_aggregate(constant, type); return;
  case ck_string: write_string_value(constant, type); return;
  case ck_dynamic_init: write_zero(type); return;
  case ck_init_repeat: write_value(init_repeat_of(constant).repeated, type); return;
  default: write_scalar(constant); return;
  }
}

void write_initializer(a_variable *variable, const a_constant *constant)
{
  write_value(constant, variable->type);
}

// --- Parts of objects ----------------------------------------------------------------------------

static void write_path(const a_path_step *step)
{
  if (step->outer == nullptr) {
    write_name(step->variable);
    return;
  }
  write_path(step->outer);
  if (step->field != nullptr) {
    put_char('.');
    write_name(step->field);
  } else {
    put_char('[');
    put_unsigned(step->index);
    put_char(']');
  }
}

static void write_address_of_path(const a_path_step *path)
{
  put_str("(char *)&");
  write_path(path);
}

static void write_memset(const a_path_step *path, uint64_t offset, uint64_t size)
{
  put_str("(void)");
  put_str(memset_name());
  put_char('(');
  write_address_of_path(path);
  if (offset != 0) {
    put_str(" + ");
    put_unsigned(offset);
  }
  put_str(", 0, ");
  put_unsigned(size);
  put_str(");");
}

// True if a plain assignment to an object of the type is refused.
static bool has_const_part(a_type *type)
{
  if ((get_type_qualifiers(type) & tq_const) != 0) return true;
  type = skip_typerefs(type);
  return kind_has_class_part(type->kind) && as_class(type).has_const_field;
}

static void write_plain_assignment(const a_path_step *path, a_type *type, an_expr_node *expr)
{
  bool is_bit_field = path->field != nullptr && path->field->is_bit_field;
  if (has_const_part(type) && !is_bit_field && path->outer != nullptr) {
    put_char('*');
    write_pointer_cast(assignable_type(type));
    put_char('&');
    write_path(path);
  } else {
    write_path(path);
  }
  put_str(" = ");
  write_assignment_expression(expr);
  put_char(';');
}

// A variable without name that the writer alone knows.
static a_variable *make_unlisted_variable(a_type *type)
{
  a_variable *variable = alloc_variable(sc_static);
  variable->type = type;
  return variable;
}

// An object with const members takes its value through a copy.
static void write_copied_assignment(const a_path_step *path, a_type *type, an_expr_node *expr)
{
  a_variable *copy = make_unlisted_variable(type);
  put_char('{');
  write_declarator(assignable_type(type), &copy->source_corresp, iek_variable, false);
  put_str(" = ");
  write_assignment_expression(expr);
  put_str("; (void)");
  put_str(memcpy_name());
  put_char('(');
  write_address_of_path(path);
  put_str(", (char *)&");
  write_name(copy);
  put_str(", ");
  put_unsigned(size_of_type(type));
  put_str(");}");
}

static void write_assignment(const a_path_step *path, a_type *type, an_expr_node *expr)
{
  a_type *final_type = skip_typerefs(type);
  if (kind_has_class_part(final_type->kind) && as_class(final_type).has_const_field)
    write_copied_assignment(path, type, expr);
  else
    write_plain_assignment(path, type, expr);
}

// --- Aggregates of automatic variables -----------------------------------------------------------

static void write_string_copy(const a_path_step *path, const a_constant *string, a_type *type)
{
  uint64_t size = size_of_type(type), length = string_of(string).length;
  if (length > size) length = size;
  put_str("(void)");
  put_str(memcpy_name());
  put_char('(');
  write_address_of_path(path);
  put_str(", (char *)");
  form_constant(string, true, &control);
  put_str(", ");
  put_unsigned(length);
  put_str(");");
  if (length < size) write_memset(path, length, size - length);
}

// The constant parts: a template that is copied, or zeros.
static void write_template(const a_path_step *path, const a_constant *constant, a_type *type)
{
  uint64_t size = size_of_type(type);
  if (size == 0) return;
  if (constant->kind == ck_string && constant->char_kind == chk_char) {
    write_string_copy(path, constant, type);
    return;
  }
  if (is_all_zero(constant)) {
    write_memset(path, 0, size);
    return;
  }
  a_variable *source = make_unlisted_variable(type);
  put_str("{static const ");
  write_declarator(assignable_type(type), &source->source_corresp, iek_variable, false);
  put_str(" = ");
  write_value(constant, type);
  put_str("; (void)");
  put_str(memcpy_name());
  put_char('(');
  write_address_of_path(path);
  put_str(", (char *)&");
  write_name(source);
  put_str(", ");
  put_unsigned(size);
  put_str(");}");
}

static void write_dynamic_parts(const a_path_step *path, const a_constant *constant, a_type *type);

static void write_dynamic_part(const a_path_step *path, const a_dynamic_init *init, a_type *type)
{
  write_position(init->position);
  switch (init->kind) {
  case dik_none: return;
  case dik_zero: write_memset(path, 0, size_of_type(type)); return;
  case dik_constant:
  case dik_constant_via_temp:
    if (is_aggregate_type(type)) {
      write_template(path, constant_of(init), type);
      write_dynamic_parts(path, constant_of(init), type);
    } else {
      write_path(path);
      put_str(" = ");
      write_scalar(constant_of(init));
      put_char(';');
    }
    return;
  case dik_expression:
  case dik_call_returning_class: write_assignment(path, type, expr_of(init)); return;
  case dik_constructor:
  case dik_bitwise_copy:
  case dik_last: return;
  }
}

// Elements behind the first of a repeat are copies of it.
static void write_repeat_copies(const a_path_step *array, uint64_t first, uint64_t count,
                                a_type *element_type)
{
  a_path_step from = {array, nullptr, nullptr, first};
  put_str("{unsigned long __i; for (__i = 1; __i < ");
  put_unsigned(count);
  put_str("; __i++) (void)");
  put_str(memcpy_name());
  put_char('(');
  write_address_of_path(&from);
  put_str(" + __i * ");
  put_unsigned(size_of_type(element_type));
  put_str(", ");
  write_address_of_path(&from);
  put_str(", ");
  put_unsigned(size_of_type(element_type));
  put_str(");}");
}

static void write_dynamic_elements(const a_path_step *path, const a_constant *aggregate,
                                   a_type *type)
{
  a_type *element_type = as_array(type).element_type;
  uint64_t index = 0;
  for (const a_constant *element = aggregate_of(aggregate).first_element; element != nullptr;
       element = element->next) {
    if (element->kind == ck_designator) {
      index = designator_of(element).index;
      continue;
    }
    a_path_step step = {path, nullptr, nullptr, index};
    if (element->kind != ck_init_repeat) {
      write_dynamic_parts(&step, element, element_type);
      index++;
      continue;
    }
    const a_constant_init_repeat &repeat = init_repeat_of(element);
    if (!constant_is_static(repeat.repeated)) {
      write_dynamic_parts(&step, repeat.repeated, element_type);
      if (repeat.count > 1) write_repeat_copies(path, index, repeat.count, element_type);
    }
    index += repeat.count;
  }
}

static void write_dynamic_members(const a_path_step *path, const a_constant *aggregate,
                                  a_type *type)
{
  a_field *field = first_initializable_field(type);
  for (const a_constant *element = aggregate_of(aggregate).first_element; element != nullptr;
       element = element->next) {
    if (element->kind == ck_designator) {
      field = designator_of(element).field;
      continue;
    }
    if (field == nullptr) return;
    a_path_step step = {path, nullptr, field, 0};
    write_dynamic_parts(&step, element, field->type);
    field = next_initializable_field(field->next);
  }
}

static void write_dynamic_parts(const a_path_step *path, const a_constant *constant, a_type *type)
{
  a_type *final_type = skip_typerefs(type);
  switch (constant->kind) {
  case ck_dynamic_init: write_dynamic_part(path, dynamic_init_of(constant), type); return;
  case ck_aggregate:
    if (final_type->kind == tk_array)
      write_dynamic_elements(path, constant, final_type);
    else if (kind_has_class_part(final_type->kind))
      write_dynamic_members(path, constant, final_type);
    else if (aggregate_of(constant).first_element != nullptr)
      write_dynamic_parts(path, aggregate_of(constant).first_element, type);
    return;
  default: return;
  }
}

void write_local_initialization(a_variable *variable, a_dynamic_init *init)
{
  a_path_step path = {nullptr, variable, nullptr, 0};
  bool is_static = variable->storage_class == sc_static;
  if (is_static) put_str("{static int __init_done=0; if (!__init_done) {__init_done=1;");
  write_dynamic_part(&path, init, variable->type);
  if (is_static) put_str("}}");
}
