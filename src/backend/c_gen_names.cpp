// c_gen_names.cpp - names of entities in the generated C, and the control block of the printer.
// Owns:  the numbers of nameless entities; control.
// Rule:  a name that only its scope kept apart in the source is made unique, so that neither
//        hoisting nor shadowing can change what it means.
// Entry: write_entity_name, set_up_control_block, rename_local_entity.
#include <cctype>
#include <cstdlib>
#include "backend/c_gen_private.h"
#include "mem/mem_manage.h"

an_il_to_str_output_control_block control;

static unsigned long next_nameless_number;

// Words of the C compiler behind us.  Sorted.
static const char *const reserved_words[] = {
    "asm",    "auto",   "break",  "case",     "char",   "const",    "continue", "default",
    "do",     "double", "else",   "enum",     "extern", "float",    "for",      "fortran",
    "goto",   "if",     "inline", "int",      "long",   "pascal",   "register", "restrict",
    "return", "short",  "signed", "sizeof",   "static", "struct",   "switch",   "typedef",
    "typeof", "union",  "unix",   "unsigned", "void",   "volatile", "while"};

static int compare_words(const void *a, const void *b)
{
  return strcmp(static_cast<const char *>(a), *static_cast<const char *const *>(b));
}

static bool is_reserved_word(const char *name)
{
  if (*name < 'a' || *name > 'w') return false;
  return bsearch(name, reserved_words, sizeof reserved_words / sizeof *reserved_words,
                 sizeof *reserved_words, compare_words) != nullptr;
}

// --- Names ---------------------------------------------------------------------------------------

static char *copy_name(const char *text)
{
  size_t length = strlen(text) + 1;
  char *copy = static_cast<char *>(alloc_in_region(file_scope_region_number, length));
  memcpy(copy, text, length);
  return copy;
}

static void set_output_name(a_source_correspondence *corresp, const char *text)
{
  corresp->internal_name = copy_name(text);
  corresp->is_renamed_for_output = true;
}

static bool is_nameless(const a_source_correspondence *corresp)
{
  return corresp->is_nameless || (corresp->name == nullptr && corresp->internal_name == nullptr);
}

static bool is_local_name(const a_source_correspondence *corresp, an_il_entry_kind kind,
                          const void *entity)
{
  if (kind == iek_label) return static_cast<const a_label *>(entity)->is_block_local;
  if (kind != iek_variable) return false;
  const a_variable *variable = static_cast<const a_variable *>(entity);
  if (variable->storage_class == sc_auto || variable->storage_class == sc_register ||
      variable->is_parameter)
    return !(corresp->decl_position.seq == 0 && corresp->name == nullptr) &&
           corresp->scope_depth != 0;
  return corresp->is_local && variable->storage_class == sc_static &&
         !variable->promoted_from_function;
}

// The number of parameters behind this one if one of them has the same name, else 0.
static unsigned discriminator_of(const a_source_correspondence *corresp, an_il_entry_kind kind,
                                 const void *entity)
{
  if (kind != iek_variable) return 0;
  const a_variable *variable = static_cast<const a_variable *>(entity);
  if (!variable->is_parameter) return variable->name_collision_discriminator;
  if (C_dialect != 2) return 0; // C refuses two parameters of one name
  unsigned behind = 0;
  bool shared = false;
  for (const a_variable *other = variable->next; other != nullptr; other = other->next, behind++) {
    const char *name = other->source_corresp.name;
    if (name != nullptr && strcmp(name, corresp->name) == 0) shared = true;
  }
  return shared ? behind : 0;
}

// "__", the discriminator and "_" if there is one, line and column of the declaration, the name.
// The name is kept: a local variable is written many times.
static void set_unique_name(a_source_correspondence *corresp, an_il_entry_kind kind,
                            const char *name)
{
  size_t size = strlen(name) + 48;
  char *text = static_cast<char *>(alloc_in_region(file_scope_region_number, size));
  // The head comes first in every record that has one.
  unsigned discriminator = discriminator_of(corresp, kind, corresp);
  int length = discriminator != 0 ? snprintf(text, size, "__%u_", discriminator)
                                  : snprintf(text, size, "__");
  snprintf(text + length, size - size_t(length), "%lu_%u_%s",
           (unsigned long)corresp->decl_position.seq, unsigned(corresp->decl_position.column),
           name);
  corresp->internal_name = text;
  corresp->is_renamed_for_output = true;
}

void write_entity_name(a_source_correspondence *corresp, an_il_entry_kind kind)
{
  char text[64];
  if (corresp->is_renamed_for_output) {
    put_str(corresp->internal_name);
    return;
  }
  bool is_this = kind == iek_variable && corresp->name == nullptr &&
                 reinterpret_cast<const a_variable *>(corresp)->is_this_parameter;
  if (is_this) {
    put_str("this");
    return;
  }
  if (is_nameless(corresp)) {
    snprintf(text, sizeof text, "__T%lu", ++next_nameless_number);
    set_output_name(corresp, text);
    put_str(corresp->internal_name);
    return;
  }
  const char *name = corresp->internal_name != nullptr ? corresp->internal_name : corresp->name;
  if (is_local_name(corresp, kind, corresp)) {
    set_unique_name(corresp, kind, name);
    put_str(corresp->internal_name);
    return;
  }
  bool external = corresp->name_linkage == nlk_c || corresp->name_linkage == nlk_cplusplus;
  if (!external && is_reserved_word(name)) {
    put_str("__x");
    put_no_wrap(name);
    return;
  }
  put_str(name);
}

// "_ZZ", the routine, "E", the length of the name, the name, "_", a number.
void rename_local_entity(a_source_correspondence *corresp, const a_routine *routine)
{
  if (corresp->is_renamed_for_output || is_nameless(corresp)) return;
  char number[32];
  const char *name = corresp->name;
  const char *routine_name = "";
  char routine_length[24] = "";
  if (routine != nullptr) {
    const a_source_correspondence &head = routine->source_corresp;
    routine_name = head.internal_name != nullptr ? head.internal_name : head.name;
    if (strncmp(routine_name, "_Z", 2) == 0)
      routine_name += 2;
    else
      snprintf(routine_length, sizeof routine_length, "%zu", strlen(routine_name));
  }
  static unsigned long local_number;
  snprintf(number, sizeof number, "_%lu", ++local_number);
  size_t size = strlen(routine_name) + strlen(name) + sizeof routine_length + sizeof number + 32;
  char *text = static_cast<char *>(alloc_in_region(file_scope_region_number, size));
  snprintf(text, size, "_ZZ%s%sE%zu%s%s", routine_length, routine_name, strlen(name), name, number);
  corresp->internal_name = text;
  corresp->is_renamed_for_output = true;
}

// --- Types by name -------------------------------------------------------------------------------

// True when the C compiler gives the enum the same integer type as the front end did.
static bool enum_kind_matches(a_type *type)
{
  const an_integer_type_part &part = as_integer(type);
  if (part.enum_is_packed) return true;
  bool any_negative = false, any = false;
  for (const a_constant *c = part.first_enumerator; c != nullptr; c = c->next, any = true)
    if (int_constant_is_signed(c) && cmplit_integer_constant(c, 0) < 0) any_negative = true;
  if (!any) return true;
  return int_kind_is_signed[part.int_kind] == any_negative;
}

static void write_type_name(a_type *type)
{
  switch (type->kind) {
  case tk_class:
  case tk_struct: put_str("struct "); break;
  case tk_union: put_str("union "); break;
  case tk_integer:
    if (as_integer(type).is_enum && !enum_kind_matches(type)) {
      put_str(int_kind_name(as_integer(type).int_kind));
      return;
    }
    put_str("enum ");
    break;
  default: break;
  }
  write_entity_name(&type->source_corresp, iek_type);
}

bool is_va_list_name(const char *name)
{
  return name != nullptr && strcmp(name, "__builtin_va_list") == 0;
}

bool is_va_list_type(a_type *type)
{
  while (type->kind == tk_typeref) {
    if (is_va_list_name(type->source_corresp.name)) return true;
    type = as_typeref(type).referenced_type;
  }
  return false;
}

void write_type(a_type *type)
{
  form_type(type, &control);
}

void write_cast(a_type *type)
{
  put_char('(');
  write_type(type);
  put_char(')');
}

void write_pointer_cast(a_type *type)
{
  write_cast(make_pointer_type(type));
}

a_type *assignable_type(a_type *type)
{
  a_type *final_type = skip_typerefs(type);
  if (final_type->kind == tk_array) {
    const an_array_type_part &part = as_array(final_type);
    a_type *element = assignable_type(part.element_type);
    if (element == part.element_type || part.bound_is_expr || part.bound_is_constant) return type;
    a_type *array = make_array_type(element, part.bound.number_of_elements);
    as_array(array).bound_is_zero = part.bound_is_zero;
    return array;
  }
  unsigned qualifiers = f_get_type_qualifiers(type, true);
  if ((qualifiers & tq_const) == 0) return type;
  qualifiers &= ~unsigned(tq_const);
  return qualifiers == 0 ? final_type : f_make_qualified_type(final_type, qualifiers);
}

// --- The control block ---------------------------------------------------------------------------

static void output_text(const char *text, an_il_to_str_output_control_block *)
{
  put_str(text);
}

static void output_text_no_break(const char *text, an_il_to_str_output_control_block *)
{
  put_no_wrap(text);
}

static void form_entity_name(const void *entity, an_il_entry_kind kind,
                             an_il_to_str_output_control_block *)
{
  void *place = const_cast<void *>(entity);
  if (kind == iek_type)
    write_type_name(static_cast<a_type *>(place));
  else
    write_entity_name(source_corresp_for_il_entry(place, kind), kind);
}

static void form_prototype(a_type *routine_type, an_il_to_str_output_control_block *)
{
  write_prototype(routine_type, nullptr);
}

static void form_expression(an_expr_node *expr, bool parenthesize,
                            an_il_to_str_output_control_block *)
{
  write_expression(expr, parenthesize);
}

// A typedef is used only where its text was written in front; its type is spelled out otherwise.
static bool typedef_unusable(a_type *type, an_il_to_str_output_control_block *)
{
  return !typedef_is_written(type) && !is_va_list_name(type->source_corresp.name);
}

void set_up_control_block()
{
  clear_il_to_str_output_control_block(&control);
  control.output_text = output_text;
  control.output_text_no_break = output_text_no_break;
  control.form_entity_name = form_entity_name;
  control.form_string_name = write_string_name;
  control.form_prototype = form_prototype;
  control.form_expression = form_expression;
  control.typedef_unusable = typedef_unusable;
  control.generated_code = true;
  control.skip_internal_typedefs = true;
  control.c_forms = true;
  control.old_style_c = il_header.is_old_c_dialect;
}
