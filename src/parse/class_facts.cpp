// class_facts.cpp - what the members of a class say of the class: whether it is an aggregate, plain data,
// copied bit by bit, and what it needs to be made and destroyed.
// Entry:   note_field_facts.
// See:     C++ 8.5.1p1, 9p4, 12.8.
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "parse/class_private.h"
#include "parse/scope_stk.h"

static void note_class_of_field(a_class_scan_state *scan, a_type *type)
{
  a_class_symbol_supplement *own = class_symbol_supplement_of(scan->class_type);
  a_class_symbol_supplement *supplement = class_symbol_supplement_of(type);
  if (supplement == nullptr) return;
  if (!supplement->is_pod) scan->not_pod = true;
  if (needs_default_constructor_call(supplement)) scan->needs_default_constructor = true;
  if (supplement->destructor != nullptr && !supplement->has_trivial_destructor) {
    scan->field_has_destructor = true;
  }
  own->has_reference_field |= supplement->has_reference_field;
  bool is_dependent = as_class(type).is_template_dependent;
  if (is_dependent) return;
  if (!supplement->has_trivial_copy_assignment) own->has_trivial_copy_assignment = false;
  if (!supplement->has_trivial_copy_constructor) own->has_trivial_copy_constructor = false;
}

// A union's members can't do anything when they are made, copied or destroyed (C++ 9.5p1).
static void check_union_member(a_class_scan_state *scan, a_field *field, a_type *type)
{
  if (scan->class_type->kind != tk_union) return;
  a_source_position position = field->source_corresp.decl_position;
  if (is_any_reference_type(field->type)) {
    pos_error(ec_ref_not_allowed_in_union, position);
    return;
  }
  if (!is_class_struct_union_type(type)) return;
  a_class_symbol_supplement *supplement = class_symbol_supplement_of(type);
  if (supplement == nullptr || cpp11_mode) return;
  bool makes_or_destroys =
      needs_default_constructor_call(supplement) ||
      (supplement->destructor != nullptr && !supplement->has_trivial_destructor);
  if (!makes_or_destroys && supplement->has_trivial_copy_constructor &&
      supplement->has_trivial_copy_assignment) {
    return;
  }
  pos_ty_error(ec_bad_union_field, position, type);
}

void note_field_facts(a_class_scan_state *scan, a_field *field)
{
  a_type *type = skip_typerefs(skip_array_types(field->type));
  if (type->kind == tk_error) return;
  a_class_symbol_supplement *own = class_symbol_supplement_of(scan->class_type);
  if (scan->current_access != as_public) scan->not_aggregate = true;
  bool is_reference = is_any_reference_type(field->type);
  bool is_named = field->source_corresp.name != nullptr;
  if (is_reference) {
    scan->not_pod = true;
    own->has_reference_field = true;
  }
  if (is_reference || is_const_qualified(field->type)) {
    if (is_named) scan->needs_constructor_for_member = true;
    own->has_trivial_copy_assignment = false;
  }
  if (kind_has_class_part(type->kind)) note_class_of_field(scan, type);
  check_union_member(scan, field, type);
}
