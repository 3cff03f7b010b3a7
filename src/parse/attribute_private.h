// attribute_private.h - what the files of attribute share.
#pragma once
#include "parse/attribute.h"

// A handler applies one attribute; returns the entity, which for a type may be a new one.
typedef void *an_attribute_handler(an_attribute *attribute, void *entity, an_il_entry_kind kind,
                                   a_decl_parse_state *state);

struct an_attribute_kind_description {
  const char *entities;           // null: the handler tests
  an_attribute_handler *handler;  // null: nothing to do
};
extern const an_attribute_kind_description attribute_kind_descriptions[ak_last];

// The number, text or name of the first argument; the defaults when there is none.
const char *string_argument(const an_attribute *attribute);
const char *name_argument(const an_attribute *attribute);
