// layout_empty.cpp - class layout: empty classes and their addresses.
// Rule:    two different subobjects of one type have two addresses; an empty class takes no space as a
//          base, so that it must be looked after where it lies.
// Entry:   find_empty_subobjects, field_conflicts, base_conflicts, note_field_place, note_base_place.
// See:     C++ 1.8p5, 10p8.
#include "driver/target.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "mem/mem_manage.h"
#include "parse/class_decl.h"
#include "parse/layout_private.h"

static an_empty_place *avail_empty_places;

// What is done with each empty class inside an object; true ends the walk.
typedef bool an_empty_class_action(a_layout *layout, a_type *type, a_target_size offset);

//---------------------------------------------------------------------------------------------
// The walk over an object.

static bool has_empty_subobject(a_type *type)
{
  a_class_symbol_supplement *supplement = class_symbol_supplement_of(type);
  return supplement != nullptr && supplement->has_empty_subobject;
}

static bool walk_object(a_layout *layout, a_type *type, a_target_size offset,
                        an_empty_class_action *action);

// Behind the size of the biggest empty base no other subobject can come to lie on an element's.
static bool walk_array(a_layout *layout, a_type *type, a_target_size offset,
                       an_empty_class_action *action)
{
  a_type *element = skip_typerefs(skip_array_types(type));
  if (!kind_has_class_part(element->kind) || !has_empty_subobject(element)) return false;
  if (element->size == 0) return walk_object(layout, element, offset, action);
  a_target_size count = type->size / element->size;
  for (a_target_size i = 0; i < count; ++i, offset += element->size) {
    if (i != 0 && offset > layout->biggest_empty_base) break;
    if (walk_object(layout, element, offset, action)) return true;
  }
  return false;
}

static bool walk_fields(a_layout *layout, a_type *class_type, a_target_size offset,
                        an_empty_class_action *action)
{
  for (a_field *field = as_class(class_type).first_field; field; field = field->next) {
    if (walk_object(layout, field->type, offset + field->offset, action)) return true;
  }
  return false;
}

// A complete object: the class itself, its fields, and each of its bases with the fields of that.
static bool walk_object(a_layout *layout, a_type *type, a_target_size offset,
                        an_empty_class_action *action)
{
  type = skip_typerefs(type);
  if (type->kind == tk_array) return walk_array(layout, type, offset, action);
  if (!kind_has_class_part(type->kind) || !has_empty_subobject(type)) return false;
  if (is_empty_class_type(type) && action(layout, type, offset)) return true;
  if (walk_fields(layout, type, offset, action)) return true;
  a_base_class *base = class_supplement_of(type)->base_classes;
  for (; base != nullptr; base = base->next) {
    a_target_size place = offset + base->offset;
    if (is_empty_class_type(base->type) && action(layout, base->type, place)) return true;
    if (walk_fields(layout, base->type, place, action)) return true;
  }
  return false;
}

// A base subobject, of the class being laid out: without virtual bases, which have places of their own,
// but for those that lie in its place.
static bool walk_base(a_layout *layout, a_base_class *base, a_target_size offset,
                      an_empty_class_action *action)
{
  if (is_empty_class_type(base->type) && action(layout, base->type, offset)) return true;
  if (has_empty_subobject(base->type) && walk_fields(layout, base->type, offset, action))
    return true;
  a_base_class *inner = class_supplement_of(base->type)->base_classes;
  for (; inner != nullptr; inner = inner->next) {
    if (!inner->is_direct || inner->is_virtual) continue;
    a_base_class *corresp = corresp_base_class(base, inner);
    if (corresp && walk_base(layout, corresp, offset + inner->offset, action)) return true;
  }
  a_base_class *primary = nominal_primary_base(base);
  bool lies_here = primary != nullptr && primary->is_virtual && primary->primary_of == base;
  return lies_here && walk_base(layout, primary, offset, action);
}

//---------------------------------------------------------------------------------------------
// Places.

static bool is_taken(a_layout *layout, a_type *type, a_target_size offset)
{
  for (an_empty_place *place = layout->empty_places; place; place = place->next) {
    if (place->offset == offset && identical_types(place->type, type)) return true;
  }
  return false;
}

static bool note_place(a_layout *layout, a_type *type, a_target_size offset)
{
  an_empty_place *place = avail_empty_places;
  if (place != nullptr) {
    avail_empty_places = place->next;
  } else {
    place = (an_empty_place *)alloc_in_region(0, sizeof *place);
  }
  *place = {layout->empty_places, type, offset};
  layout->empty_places = place;
  return false;
}

bool field_conflicts(a_layout *layout, a_type *type, a_target_size offset)
{
  return layout->empty_places != nullptr && walk_object(layout, type, offset, is_taken);
}

bool base_conflicts(a_layout *layout, a_base_class *base, a_target_size offset)
{
  return layout->empty_places != nullptr && walk_base(layout, base, offset, is_taken);
}

void note_field_place(a_layout *layout, a_type *type, a_target_size offset)
{
  walk_object(layout, type, offset, note_place);
}

void note_base_place(a_layout *layout, a_base_class *base, a_target_size offset)
{
  walk_base(layout, base, offset, note_place);
}

void release_empty_places(a_layout *layout)
{
  while (an_empty_place *place = layout->empty_places) {
    layout->empty_places = place->next;
    place->next = avail_empty_places;
    avail_empty_places = place;
  }
}

void find_empty_subobjects(a_layout *layout)
{
  a_type *class_type = layout->class_type;
  bool found = is_empty_class_type(class_type);
  a_base_class *base = class_supplement_of(class_type)->base_classes;
  for (; base != nullptr; base = base->next) {
    found |= has_empty_subobject(base->type);
    bool is_bigger = base->type->size > layout->biggest_empty_base;
    if (is_bigger && is_empty_class_type(base->type)) layout->biggest_empty_base = base->type->size;
  }
  for (a_field *field = as_class(class_type).first_field; field; field = field->next) {
    a_type *type = skip_typerefs(skip_array_types(field->type));
    found |= kind_has_class_part(type->kind) && has_empty_subobject(type);
  }
  a_class_symbol_supplement *supplement = class_symbol_supplement_of(class_type);
  if (supplement != nullptr) supplement->has_empty_subobject = found;
}

void layout_empty_init()
{
  avail_empty_places = nullptr;
}
