// c_gen_types.cpp - types of the generated C: two passes over tags, enums, classes and typedefs.
// Owns:  the marks of what is written (name_used_in_output of a type).
// Rule:  pass 1 declares all tags and defines the enums, pass 2 defines classes and typedefs in
//        list order, a class that an object needs before it.  A typedef that is not written is
//        spelled out at its uses.
// Entry: write_all_types, write_type_pass.
#include "backend/c_gen_private.h"
#include "consts/const_ints.h"

static bool is_written(const a_type *type)
{
  return type->source_corresp.name_used_in_output;
}

bool typedef_is_written(const a_type *type)
{
  return is_written(type);
}

bool class_is_written(const a_type *type)
{
  return is_written(type);
}

void write_declarator(a_type *type, a_source_correspondence *corresp, an_il_entry_kind kind,
                      bool drop_qualifiers)
{
  form_type_first_part(type, false, drop_qualifiers, 0, 0, &control);
  if (corresp != nullptr) {
    put_blank_after_word();
    write_entity_name(corresp, kind);
  }
  form_type_second_part(type, false, 0, &control);
}

// --- Enums ---------------------------------------------------------------------------------------

static void write_enumerators(a_constant *first)
{
  an_integer_value running;
  set_integer_value(&running, 0);
  bool running_signed = true;
  for (a_constant *c = first; c != nullptr; c = c->next) {
    write_position(c->source_corresp.decl_position);
    write_entity_name(&c->source_corresp, iek_constant);
    bool is_signed = int_constant_is_signed(c);
    if (cmp_integer_values(&running, running_signed, &integer_of(c), is_signed) != 0) {
      put_str(" = ");
      bool saved = control.no_small_int_casts;
      control.no_small_int_casts = true;
      form_integer_constant(c, true, false, &control);
      control.no_small_int_casts = saved;
      running = integer_of(c);
      running_signed = is_signed;
    }
    if (c->next != nullptr) put_char(',');
    incr_integer_value(&running);
  }
}

static void write_enum_definition(a_type *type)
{
  a_source_correspondence *corresp = &type->source_corresp;
  bool is_protected = open_protection(corresp);
  write_associated_pragmas(type, corresp);
  write_position(corresp->decl_position);
  put_str("enum ");
  write_entity_name(corresp, iek_type);
  put_str(" {");
  indent += 2;
  write_enumerators(as_integer(type).first_enumerator);
  indent -= 2;
  put_char('}');
  form_type_attributes(type, &control);
  put_char(';');
  close_protection(is_protected);
}

// --- Members -------------------------------------------------------------------------------------

namespace {
// What the member writer carries from one member to the next.
struct a_member_state {
  a_type *class_type;
  uint64_t end; // of the previous member, in bytes
  bool any_member;
  bool last_is_flexible;
};
} // namespace

// The end of a member, in bytes.
static uint64_t end_of_field(const a_field *field)
{
  if (field->is_bit_field) return field->offset + (field->bit_offset + field->bit_size + 7u) / 8u;
  a_type *type = skip_typerefs(field->type);
  if (type->kind == tk_array && is_incomplete_array_type(type)) return field->offset;
  return field->offset + size_of_type(field->type);
}

static void write_padding(const char *name, uint64_t position, bool with_position, uint64_t gap)
{
  char text[64];
  int length = snprintf(text, sizeof text, "char %s", name);
  if (with_position)
    length +=
        snprintf(text + length, sizeof text - size_t(length), "%llu", (unsigned long long)position);
  if (gap > 1)
    length +=
        snprintf(text + length, sizeof text - size_t(length), "[%llu]", (unsigned long long)gap);
  snprintf(text + length, sizeof text - size_t(length), ";");
  put_str(text);
}

static unsigned alignment_of_field(const a_field *field, a_type *class_type)
{
  if (field->declared_alignment != 0) return field->declared_alignment;
  if (field->is_packed_field || as_class(class_type).is_packed) return 1;
  unsigned alignment = f_alignment_of_type(field->type);
  unsigned limit = as_class(class_type).max_member_alignment;
  return limit != 0 && alignment > limit ? limit : alignment;
}

// C layout needs no help from a member; what C++ placed farther on is filled up to there.
static void write_gap_before(const a_field *field, a_member_state *state)
{
  if (il_header.source_language == 1 || field->is_bit_field ||
      skip_typerefs(state->class_type)->kind == tk_union)
    return;
  uint64_t natural = state->end;
  align(&natural, alignment_of_field(field, state->class_type));
  if (natural < field->offset)
    write_padding("__dummy", state->end, true, field->offset - state->end);
}

// The type whose units hold the field: the C compiler then places it where the layout did.
static a_type *unit_type_of(const a_field *field)
{
  a_type *type =
      skip_typerefs(field->declared_type != nullptr ? field->declared_type : field->type);
  bool has_other_unit = field->allocation_type != nullptr && type->kind == tk_integer &&
                        !as_integer(type).is_bool && field->allocation_type->size != type->size;
  return has_other_unit ? field->allocation_type : type;
}

static void write_bit_field_type(const a_field *field)
{
  a_type *type = unit_type_of(field);
  unsigned qualifiers = get_type_qualifiers(field->type);
  form_type_qualifier(qualifiers, false, true, &control);
  if (type->kind != tk_integer) {
    write_type(type);
    return;
  }
  const an_integer_type_part &part = as_integer(type);
  if (part.is_bool) {
    put_str("_Bool");
    return;
  }
  const char *name = int_kind_name(part.int_kind);
  if (strncmp(name, "signed", 6) != 0 && strncmp(name, "unsigned", 8) != 0)
    put_str(field->bit_field_is_signed ? "signed " : "unsigned ");
  put_str(name);
}

// Bits of a declared width beyond those that are allocated.
static void write_excess_bits(const a_field *field)
{
  if (field->declared_width <= field->bit_size) return;
  uint64_t rest = field->declared_width - field->bit_size;
  unsigned at = field->bit_offset + field->bit_size;
  while (rest != 0) {
    uint64_t piece = 8 - at % 8;
    if (piece > rest) piece = rest;
    put_str(" char : ");
    put_unsigned(piece);
    put_char(';');
    rest -= piece;
    at += unsigned(piece);
  }
}

static void write_bit_field(a_field *field)
{
  write_bit_field_type(field);
  put_char(' ');
  if (field->source_corresp.name != nullptr && !field->source_corresp.is_nameless)
    write_name(field);
  put_str(": ");
  put_unsigned(field->bit_size);
  form_field_attributes(field, &control);
  put_char(';');
  if (skip_typerefs(field->type)->kind == tk_integer) write_excess_bits(field);
}

// " offset = 4 bytes, 3 bits, type alignment = 4", in one piece.
static void write_offset_comment(const a_field *field)
{
  char text[128];
  int length = snprintf(text, sizeof text, "/*  offset = %llu byte%s",
                        (unsigned long long)field->offset, field->offset == 1 ? "" : "s");
  if (field->is_bit_field && field->bit_offset != 0)
    length += snprintf(text + length, sizeof text - size_t(length), ", %u bit%s",
                       unsigned(field->bit_offset), field->bit_offset == 1 ? "" : "s");
  length += snprintf(text + length, sizeof text - size_t(length), ", type alignment = %u*/",
                     f_alignment_of_type(field->type));
  put_text(text, size_t(length));
}

static bool is_empty_class_object(a_type *type)
{
  type = skip_typerefs(skip_array_types(type));
  return il_header.source_language != 1 && kind_has_class_part(type->kind) &&
         as_class(type).is_empty_class;
}

static void write_member(a_field *field, a_member_state *state)
{
  write_gap_before(field, state);
  write_associated_pragmas(field, &field->source_corresp);
  write_position(field->source_corresp.decl_position);
  if (field->is_bit_field) {
    write_bit_field(field);
  } else {
    write_declarator(field->type, &field->source_corresp, iek_field, false);
    form_field_attributes(field, &control);
    put_char(';');
    if (is_empty_class_object(field->type))
      write_padding("__dummy_empty", end_of_field(field), true, size_of_type(field->type));
  }
  write_offset_comment(field);
  state->any_member = true;
  uint64_t end = end_of_field(field);
  if (end > state->end) state->end = end;
  a_type *type = skip_typerefs(field->type);
  state->last_is_flexible =
      type->kind == tk_array && !field->is_bit_field && size_of_type(type) == 0;
}

static void write_tail_padding(a_type *type, const a_member_state &state)
{
  if (state.last_is_flexible || type->kind == tk_union) {
    if (state.any_member) return;
  }
  uint64_t gap = type->size > state.end ? type->size - state.end : 0;
  if (!state.any_member) {
    // A class without members has the size that the layout gave it: 0 in GNU C.
    if (type->size == 0) return;
    write_padding("__dummy", 0, false, type->size);
  } else if (gap != 0) {
    write_padding("__dummy", 0, false, gap);
  }
}

// --- Classes -------------------------------------------------------------------------------------

static bool is_complete_class(a_type *type)
{
  return kind_has_class_part(type->kind) && !type->is_incomplete;
}

static void write_members(a_type *type)
{
  a_member_state state = {type, 0, false, false};
  for (a_field *field = as_class(type).first_field; field != nullptr; field = field->next)
    write_member(field, &state);
  write_tail_padding(type, state);
}

static bool needs_pack_pragma(a_type *type)
{
  unsigned limit = as_class(type).max_member_alignment;
  return limit != 0 && limit != il_header.max_member_alignment &&
         !(limit == 1 && as_class(type).is_packed);
}

static void write_class_definition(a_type *type, bool forced)
{
  a_source_correspondence *corresp = &type->source_corresp;
  corresp->name_used_in_output = true;
  for (a_field *field = as_class(type).first_field; field != nullptr; field = field->next)
    write_needed_classes(field->type);
  bool is_protected = !forced && open_protection(corresp);
  bool packs = needs_pack_pragma(type);
  if (packs) {
    char text[48];
    snprintf(text, sizeof text, "#pragma pack(%u)", as_class(type).max_member_alignment);
    write_directive_line(text);
  }
  write_associated_pragmas(type, corresp);
  write_position(corresp->decl_position);
  put_str(type->kind == tk_union ? "union " : "struct ");
  write_entity_name(corresp, iek_type);
  put_str(" {");
  indent += 2;
  write_members(type);
  indent -= 2;
  put_char('}');
  form_type_attributes(type, &control);
  put_char(';');
  if (packs) write_directive_line("#pragma pack()");
  close_protection(is_protected);
}

void write_needed_classes(a_type *type)
{
  for (;;) {
    if (type->kind == tk_typeref)
      type = as_typeref(type).referenced_type;
    else if (type->kind == tk_array)
      type = as_array(type).element_type;
    else
      break;
  }
  if (is_complete_class(type) && !is_written(type)) write_class_definition(type, true);
}

static void write_tag(a_type *type)
{
  a_source_correspondence *corresp = &type->source_corresp;
  bool is_protected = open_protection(corresp);
  if (!is_complete_class(type)) write_associated_pragmas(type, corresp);
  write_position(corresp->decl_position);
  put_str(type->kind == tk_union ? "union " : "struct ");
  write_entity_name(corresp, iek_type);
  put_char(';');
  close_protection(is_protected);
}

// --- Typedefs ------------------------------------------------------------------------------------

static bool needs_typedef_text(a_type *type)
{
  return type->source_corresp.name != nullptr && !is_va_list_name(type->source_corresp.name) &&
         !is_variably_modified_type(type);
}

static void write_typedef(a_type *type)
{
  if (!needs_typedef_text(type) || is_written(type)) return;
  a_source_correspondence *corresp = &type->source_corresp;
  a_type *target = as_typeref(type).referenced_type;
  if (is_needed(corresp) && skip_typerefs(target)->kind == tk_array) write_needed_classes(target);
  bool is_protected = open_protection(corresp);
  write_associated_pragmas(type, corresp);
  write_position(corresp->decl_position);
  put_str("typedef ");
  form_type_first_part(target, false, false, as_typeref(type).qualifiers, 0, &control);
  put_blank_after_word();
  write_entity_name(corresp, iek_type);
  form_type_second_part(target, false, 0, &control);
  form_type_attributes(type, &control);
  put_char(';');
  close_protection(is_protected);
  corresp->name_used_in_output = !is_protected;
}

// --- Passes --------------------------------------------------------------------------------------

void write_type_pass(a_type *type, int pass)
{
  switch (type->kind) {
  case tk_integer:
    if (pass == 1 && as_integer(type).is_enum && !as_integer(type).enum_is_scoped &&
        as_integer(type).first_enumerator != nullptr)
      write_enum_definition(type);
    return;
  case tk_class:
  case tk_struct:
  case tk_union:
    if (pass == 1)
      write_tag(type);
    else if (is_complete_class(type) && !is_written(type))
      write_class_definition(type, false);
    return;
  case tk_typeref:
    if (pass == 2) write_typedef(type);
    return;
  default: return;
  }
}

static void rename_local(a_type *type, const a_routine *routine)
{
  rename_local_entity(&type->source_corresp, routine);
  if (type->kind != tk_integer || !as_integer(type).is_enum || as_integer(type).enum_is_scoped)
    return;
  for (a_constant *c = as_integer(type).first_enumerator; c != nullptr; c = c->next)
    rename_local_entity(&c->source_corresp, routine);
}

static void write_local_types(a_type *types, const a_routine *routine, int pass)
{
  for (a_type *type = types; type != nullptr; type = type->next) {
    if (pass == 1) rename_local(type, routine);
    write_type_pass(type, pass);
  }
}

static void write_types_of_scopes(a_scope *scope, const a_routine *routine, int pass)
{
  if (!scope->has_orphaned_lists) write_local_types(scope->types, routine, pass);
  for (a_scope *inner = scope->subscopes; inner != nullptr; inner = inner->next)
    write_types_of_scopes(inner, routine, pass);
}

// Types that stand in the parameter lists of a function type, however deep it hides in `type`.
static bool write_prototype_types(a_type *type, int pass)
{
  bool found = false;
  while (type != nullptr) {
    switch (type->kind) {
    case tk_typeref: type = as_typeref(type).referenced_type; break;
    case tk_pointer: type = as_pointer(type).pointed_to_type; break;
    case tk_array: type = as_array(type).element_type; break;
    case tk_routine: {
      a_scope *scope = routine_supplement_of(type)->prototype_scope;
      if (scope != nullptr && (scope->types != nullptr || scope->subscopes != nullptr)) {
        write_types_of_scopes(scope, nullptr, pass);
        found = true;
      }
      type = as_routine(type).return_type;
      break;
    }
    default: return found;
    }
  }
  return found;
}

static bool write_all_prototype_types(int pass)
{
  bool found = false;
  a_scope *scope = il_header.primary_scope;
  for (a_routine *routine = scope->routines; routine != nullptr; routine = routine->next)
    found |= write_prototype_types(routine->type, pass);
  for (a_variable *variable = scope->variables; variable != nullptr; variable = variable->next)
    found |= write_prototype_types(variable->type, pass);
  for (a_variable *variable = scope->local_variables; variable != nullptr;
       variable = variable->next)
    found |= write_prototype_types(variable->type, pass);
  return found;
}

void write_all_types(int pass)
{
  static bool prototype_types_found;
  for (a_type *type = il_header.primary_scope->types; type != nullptr; type = type->next)
    write_type_pass(type, pass);
  if (il_header.source_language == 1 && (pass == 1 || prototype_types_found))
    prototype_types_found = write_all_prototype_types(pass);
  for (a_scope_orphaned_list_header *list = il_header.scope_orphaned_lists; list != nullptr;
       list = list->next)
    write_local_types(list->types, list->routine, pass);
  for (a_routine *routine = il_header.primary_scope->routines; routine != nullptr;
       routine = routine->next) {
    if (a_scope *body = scope_for_routine(routine)) write_types_of_scopes(body, routine, pass);
  }
}

static void reset_marks_of_list(a_type *types)
{
  for (a_type *type = types; type != nullptr; type = type->next)
    type->source_corresp.name_used_in_output = false;
}

void reset_type_marks()
{
  reset_marks_of_list(il_header.primary_scope->types);
  for (a_scope_orphaned_list_header *list = il_header.scope_orphaned_lists; list != nullptr;
       list = list->next)
    reset_marks_of_list(list->types);
}
