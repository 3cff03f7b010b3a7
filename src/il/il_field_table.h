// il_field_table.h - the rows of il_entities.def as data.  Used by il_walk*.cpp and the IL file
// writer.
#pragma once
#include <cstdint>

#include "il/il_alloc.h"
#include "il/il_entities.h"

enum an_il_field_action : unsigned char {
  ifa_pointer,      // followed
  ifa_back,         // remapped, never followed
  ifa_list,         // head of a list
  ifa_declarations, // head of a list of which marking takes needed entries only
  ifa_link,         // next entry of a list
  ifa_text,         // null-terminated text
  ifa_counted_text, // text with a length field
  ifa_data          // no IL pointer
};

struct an_il_field {
  const char *name;
  uint16_t offset;
  uint16_t size;
  an_il_field_action action;
  an_il_entry_kind target; // with a selector: iek_none
  uint16_t discriminator;  // offset of the byte that says whether the field holds
  uint16_t length_offset;  // ifa_counted_text: offset of the 64-bit length
  uint32_t kinds;          // bits of the discriminator's values; 0: always
  // The kind of what an untyped pointer points to, or iek_none when it holds no pointer now.
  an_il_entry_kind (*selector)(const void *entry);
};

struct an_il_kind_description {
  const an_il_field *fields;
  uint16_t field_count;
  uint16_t link_offset; // of the ifa_link field; no_link: entries form no lists
  bool has_head;
};
inline constexpr uint16_t no_link = 0xffff;

extern const an_il_kind_description *const il_kind_table; // by kind

// What marking follows: neither ways back nor texts nor links.  The fields of a kind stand in
// groups, one for each value of the discriminator, so that none has to be asked whether it holds.
struct a_followed_field {
  uint16_t offset;
  bool is_list;
  bool needed_only;        // the list holds declarations, of which marking takes the needed ones
  an_il_entry_kind target; // with a selector: iek_none
  an_il_entry_kind (*selector)(const void *entry);
};

struct a_followed_field_table {
  const a_followed_field *fields;
  const uint16_t *group_begin; // group g: the fields from group_begin[g] up to group_begin[g + 1]
  uint16_t discriminator; // offset of the byte that is the group's number; no_link: only group 0
};
extern const a_followed_field_table *const followed_field_tables; // by kind

inline bool field_holds(const an_il_field *field, const void *entry)
{
  if (field->kinds == 0) return true;
  unsigned value = ((const unsigned char *)entry)[field->discriminator];
  return (field->kinds >> value & 1) != 0;
}
inline an_il_entry_kind target_of_field(const an_il_field *field, const void *entry)
{
  return field->selector == nullptr ? field->target : field->selector(entry);
}
inline void *&pointer_in_field(const an_il_field *field, const void *entry)
{
  return *(void **)((char *)entry + field->offset);
}
inline void *&link_of_entry(const void *entry, an_il_entry_kind kind)
{
  return *(void **)((char *)entry + il_kind_table[kind].link_offset);
}
