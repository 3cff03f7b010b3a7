// il_field_table.cpp - the size table and the field table of the IL kinds, made from
// il_entities.def.
// Rule: a record whose pointer fields are not all rows of the table does not compile.
#include "il/il_field_table.h"

#include <cstddef>
#include <type_traits>

#include "il/source_entities.h"
#include "il/types.h"

// --- What an untyped pointer points to -----------------------------------------------------------

static an_il_entry_kind entity_kind_of_address_constant(const void *entry)
{
  switch (address_of((const a_constant *)entry).kind) {
  case ack_routine: return iek_routine;
  case ack_variable: return iek_variable;
  case ack_constant: return iek_constant;
  case ack_uuidof:
  case ack_typeid: return iek_type;
  case ack_label: return iek_label;
  case ack_last: break;
  }
  unexpected_kind("address constant");
}

static an_il_entry_kind entity_kind_of_member_constant(const void *entry)
{
  bool is_function = ptr_to_member_of((const a_constant *)entry).is_member_function;
  return is_function ? iek_routine : iek_field;
}

static an_il_entry_kind entity_kind_of_template_param_constant(const void *entry)
{
  const a_constant_template_param &param = template_param_of((const a_constant *)entry);
  switch (param.kind) {
  case tpck_param:
  case tpck_unknown_function: return iek_none;
  case tpck_expression: return iek_expr_node;
  case tpck_address_of_unknown_function: return iek_type;
  case tpck_cast:
  case tpck_address_of_constant:
  case tpck_unknown_function_with_args: return iek_constant;
  case tpck_sizeof:
  case tpck_alignof:
  case tpck_uuidof:
  case tpck_typeid: return param.operand_is_type ? iek_type : iek_expr_node;
  case tpck_last: break;
  }
  unexpected_kind("template parameter constant");
}

static an_il_entry_kind is_unscoped_enum_entry(const void *entry)
{
  const an_integer_type_part &part = as_integer((const a_type *)entry);
  return part.is_enum && !part.enum_is_scoped ? iek_constant : iek_none;
}

static an_il_entry_kind entity_kind_of_enum_scope(const void *entry)
{
  const an_integer_type_part &part = as_integer((const a_type *)entry);
  return part.is_enum && part.enum_is_scoped ? iek_scope : iek_none;
}

static an_il_entry_kind entity_kind_of_enum_supplement(const void *entry)
{
  return as_integer((const a_type *)entry).is_enum ? iek_enum_type_supplement : iek_type;
}

// The expression of a VLA stays with the dimension records of its function.
static an_il_entry_kind entity_kind_of_array_bound(const void *entry)
{
  const an_array_type_part &part = as_array((const a_type *)entry);
  if (part.is_vla) return iek_none;
  if (part.bound_is_constant) return iek_constant;
  return part.bound_is_expr ? iek_expr_node : iek_none;
}

static an_il_entry_kind entity_kind_of_sizeof_operand(const void *entry)
{
  const an_expr_sizeof &operand = sizeof_of((const an_expr_node *)entry);
  if (operand.is_template) return iek_template;
  return operand.is_type ? iek_type : iek_expr_node;
}

static an_il_entry_kind is_internal_try_node(const void *entry)
{
  bool is_try = eh_construct_of((const an_expr_node *)entry).kind == lek_internal_try;
  return is_try ? iek_expr_node : iek_none;
}

static an_il_entry_kind entity_kind_of_eh_construct(const void *entry)
{
  switch (eh_construct_of((const an_expr_node *)entry).kind) {
  case lek_caught_object_address:
  case lek_catch_epilogue: return iek_handler;
  case lek_function_prologue: return iek_lowered_eh_routine_ref;
  case lek_function_epilogue: return iek_routine;
  case lek_try_epilogue: return iek_try_supplement;
  default: return iek_none;
  }
}

static an_il_entry_kind entity_kind_of_decl_statement(const void *entry)
{
  return decl_of((const a_statement *)entry).is_type ? iek_type : iek_variable;
}

static an_il_entry_kind owner_kind_of_lifetime(const void *entry)
{
  return ((const an_object_lifetime *)entry)->owner_kind;
}

static an_il_entry_kind owner_kind_of_scope(const void *entry)
{
  switch (((const a_scope *)entry)->kind) {
  case sck_function_prototype:
  case sck_class:
  case sck_class_reactivation:
  case sck_enum: return iek_type;
  case sck_namespace:
  case sck_namespace_extension:
  case sck_namespace_reactivation: return iek_namespace;
  case sck_block: return iek_handler;
  case sck_condition: return iek_statement;
  case sck_function: return iek_routine;
  default: return iek_none;
  }
}

static an_il_entry_kind is_function_scope_entry(const void *entry)
{
  return ((const a_scope *)entry)->kind == sck_function ? iek_statement : iek_none;
}

static an_il_entry_kind entity_kind_of_namespace(const void *entry)
{
  return ((const a_namespace *)entry)->is_alias ? iek_namespace : iek_scope;
}

static an_il_entry_kind entity_kind_of_using_decl(const void *entry)
{
  return ((const a_using_decl *)entry)->entity_kind;
}

static an_il_entry_kind target_kind_of_using_decl(const void *entry)
{
  return ((const a_using_decl *)entry)->target_is_class ? iek_type : iek_namespace;
}

static an_il_entry_kind entity_kind_of_template_arg(const void *entry)
{
  return ((const a_template_arg *)entry)->is_integer_value ? iek_none : iek_constant;
}

static an_il_entry_kind entity_kind_of_pragma(const void *entry)
{
  return ((const a_pragma *)entry)->entity_kind;
}

static an_il_entry_kind prototype_kind_of_template(const void *entry)
{
  switch (((const a_template *)entry)->kind) {
  case templk_class:
  case templk_member_class: return iek_type;
  case templk_function:
  case templk_member_function: return iek_routine;
  case templk_static_data_member: return iek_variable;
  case templk_none:
  case templk_template_template_param: return iek_none;
  }
  unexpected_kind("template");
}

static an_il_entry_kind entity_kind_of_name_qualifier(const void *entry)
{
  return ((const a_name_qualifier *)entry)->is_namespace ? iek_namespace : iek_type;
}

static an_il_entry_kind entity_kind_of_local_expr_ref(const void *entry)
{
  return ((const a_local_expr_node_ref *)entry)->entity_kind;
}

static an_il_entry_kind entity_kind_of_local_scope_ref(const void *entry)
{
  return ((const a_local_scope_ref *)entry)->entity_kind;
}

static an_il_entry_kind entity_kind_of_list_entry(const void *entry)
{
  return ((const an_il_entity_list_entry *)entry)->kind;
}

// --- The rows ------------------------------------------------------------------------------------

// A row before its use: what the layout check needs as well.
struct a_table_row {
  an_il_field field;
  uint16_t alignment;
  uint16_t bit_field_bytes; // BITS
  bool for_layout_only;     // BITS, PART
  bool inside_part;         // a row of a union or nested record
  bool is_head;
};

#define K(value) (1u << (value))
#define FIELD_TYPE(member) decltype(((record *)nullptr)->member)
#define ROW(member, action, target, disc, length, kinds, selector, inside)                         \
  {{#member, offsetof(record, member), sizeof(FIELD_TYPE(member)), action, target, disc, length,   \
    kinds, selector},                                                                              \
   alignof(FIELD_TYPE(member)),                                                                    \
   0,                                                                                              \
   false,                                                                                          \
   inside,                                                                                         \
   false},
#define TYPED(member, type)                                                                        \
  (sizeof(char[std::is_same_v<FIELD_TYPE(member), type *> ? 1 : -1]) ? offsetof(record, member) : 0)
#define TYPED_ROW(member, type, action, target, disc, kinds, selector, inside)                     \
  {{#member, TYPED(member, type), sizeof(FIELD_TYPE(member)), action, target, disc, 0, kinds,      \
    selector},                                                                                     \
   alignof(FIELD_TYPE(member)),                                                                    \
   0,                                                                                              \
   false,                                                                                          \
   inside,                                                                                         \
   false},

template <an_il_entry_kind kind> struct an_il_rows;

#define ENTITY(kind, a_record)                                                                     \
  template <> struct an_il_rows<kind> {                                                            \
    using record = a_record;                                                                       \
    static_assert(std::is_trivially_copyable_v<record>);                                           \
    static constexpr a_table_row rows[] = {
#define END                                                                                        \
  }                                                                                                \
  ;                                                                                                \
  }                                                                                                \
  ;
#define TEXT_KIND(kind)
#define HEAD                                                                                       \
  {{"source_corresp", 0, sizeof(a_source_correspondence), ifa_data, iek_none, 0, 0, 0, nullptr},   \
   alignof(a_source_correspondence),                                                               \
   0,                                                                                              \
   false,                                                                                          \
   false,                                                                                          \
   true},                                                                                          \
      TYPED_ROW(source_corresp.name, const char, ifa_text, iek_name_text, 0, 0, nullptr, true)     \
          TYPED_ROW(source_corresp.internal_name, const char, ifa_text, iek_name_text, 0, 0,       \
                    nullptr, true) TYPED_ROW(source_corresp.parent_scope, a_scope, ifa_back,       \
                                             iek_scope, 0, 0, nullptr, true)                       \
              TYPED_ROW(source_corresp.enclosing_routine, a_routine, ifa_back, iek_routine, 0, 0,  \
                        nullptr, true)                                                             \
                  TYPED_ROW(source_corresp.decl_position_supplement, a_decl_position_supplement,   \
                            ifa_pointer, iek_decl_position_supplement, 0, 0, nullptr, true)        \
                      TYPED_ROW(source_corresp.name_reference, a_name_reference, ifa_pointer,      \
                                iek_name_reference, 0, 0, nullptr, true)                           \
                          TYPED_ROW(source_corresp.per_instantiation_needed_flags,                 \
                                    a_per_instantiation_needed_flags_entry, ifa_list,              \
                                    iek_per_instantiation_needed_flags_entry, 0, 0, nullptr, true) \
                              TYPED_ROW(source_corresp.attributes, an_attribute, ifa_list,         \
                                        iek_attribute, 0, 0, nullptr, true)
#define PTR(f, type, target) TYPED_ROW(f, type, ifa_pointer, target, 0, 0, nullptr, false)
#define PTR_IF(f, type, target, selector)                                                          \
  TYPED_ROW(f, type, ifa_pointer, iek_none, 0, 0, selector, false)
#define BACK(f, type, target) TYPED_ROW(f, type, ifa_back, target, 0, 0, nullptr, false)
#define LIST(f, type, target) TYPED_ROW(f, type, ifa_list, target, 0, 0, nullptr, false)
#define DECLS(f, type, target) TYPED_ROW(f, type, ifa_declarations, target, 0, 0, nullptr, false)
#define LINK(f, type, target) TYPED_ROW(f, type, ifa_link, target, 0, 0, nullptr, false)
#define ANY(f, selector) ROW(f, ifa_pointer, iek_none, 0, 0, 0, selector, false)
#define ANY_BACK(f, selector) ROW(f, ifa_back, iek_none, 0, 0, 0, selector, false)
#define TEXT(f, target) TYPED_ROW(f, const char, ifa_text, target, 0, 0, nullptr, false)
#define DATA(f) ROW(f, ifa_data, iek_none, 0, 0, 0, nullptr, false)
#define BITS(bytes)                                                                                \
  {{"", 0, 0, ifa_data, iek_none, 0, 0, 0, nullptr}, 1, bytes, true, false, false},
#define PART(f)                                                                                    \
  {{#f, offsetof(record, f), sizeof(FIELD_TYPE(f)), ifa_data, iek_none, 0, 0, 0, nullptr},         \
   alignof(FIELD_TYPE(f)),                                                                         \
   0,                                                                                              \
   true,                                                                                           \
   false,                                                                                          \
   false},
#define IN_PTR(d, kinds, f, type, target)                                                          \
  TYPED_ROW(f, type, ifa_pointer, target, offsetof(record, d), kinds, nullptr, true)
#define IN_BACK(d, kinds, f, type, target)                                                         \
  TYPED_ROW(f, type, ifa_back, target, offsetof(record, d), kinds, nullptr, true)
#define IN_LIST(d, kinds, f, type, target)                                                         \
  TYPED_ROW(f, type, ifa_list, target, offsetof(record, d), kinds, nullptr, true)
#define IN_LIST_IF(d, kinds, f, type, target, selector)                                            \
  TYPED_ROW(f, type, ifa_list, iek_none, offsetof(record, d), kinds, selector, true)
#define IN_ANY(d, kinds, f, selector)                                                              \
  ROW(f, ifa_pointer, iek_none, offsetof(record, d), 0, kinds, selector, true)
#define IN_TEXT(d, kinds, f, length, target)                                                       \
  ROW(f, ifa_counted_text, target, offsetof(record, d), offsetof(record, length), kinds, nullptr,  \
      true)
#define IN_TEXT0(d, kinds, f, target)                                                              \
  TYPED_ROW(f, const char, ifa_text, target, offsetof(record, d), kinds, nullptr, true)
#include "il/il_entities.def"

// --- Table against records -----------------------------------------------------------------------

// No gap between two rows is as large as a pointer, so that no pointer field can be missing.  Rows
// of a part are not in the sequence: the part's own row stands for its storage.
template <an_il_entry_kind kind> constexpr bool rows_cover_record()
{
  using record = typename an_il_rows<kind>::record;
  size_t end = 0;
  size_t bit_field_bytes = 0;
  for (const a_table_row &row : an_il_rows<kind>::rows) {
    if (row.bit_field_bytes != 0) bit_field_bytes += row.bit_field_bytes;
    if (row.bit_field_bytes != 0 || row.inside_part) continue;
    bool is_inside_previous = row.field.offset + row.field.size <= end;
    if (is_inside_previous) continue; // a row like special.ctor_dtor_variants
    if (row.field.offset < end) return false;
    if (row.field.offset - end >= bit_field_bytes + sizeof(void *)) return false;
    end = row.field.offset + row.field.size;
    bit_field_bytes = 0;
  }
  return sizeof(record) - end < bit_field_bytes + sizeof(void *);
}

template <an_il_entry_kind kind> constexpr unsigned short checked_size_of()
{
  static_assert(rows_cover_record<kind>(), "a field of the record has no row");
  return sizeof(typename an_il_rows<kind>::record);
}

// The rows that a walk reads: IL pointers only.
template <an_il_entry_kind kind> constexpr unsigned count_of_walked_fields()
{
  unsigned count = 0;
  for (const a_table_row &row : an_il_rows<kind>::rows)
    count += row.field.action != ifa_data;
  return count;
}

template <an_il_entry_kind kind> struct a_walked_field_array {
  static constexpr unsigned count = count_of_walked_fields<kind>();
  an_il_field fields[count == 0 ? 1 : count];
  constexpr a_walked_field_array() : fields{}
  {
    unsigned i = 0;
    for (const a_table_row &row : an_il_rows<kind>::rows) {
      if (row.field.action != ifa_data) fields[i++] = row.field;
    }
  }
};

template <an_il_entry_kind kind> constexpr a_walked_field_array<kind> walked_fields;

template <an_il_entry_kind kind> constexpr an_il_kind_description describe_kind()
{
  an_il_kind_description result = {walked_fields<kind>.fields, a_walked_field_array<kind>::count,
                                   no_link, an_il_rows<kind>::rows[0].is_head};
  for (const a_table_row &row : an_il_rows<kind>::rows) {
    if (row.field.action == ifa_link) result.link_offset = row.field.offset;
  }
  return result;
}

// --- The fields that marking follows -------------------------------------------------------------

constexpr bool is_followed(const an_il_field &field)
{
  return field.action == ifa_pointer || field.action == ifa_list ||
         field.action == ifa_declarations;
}

// The one discriminator of a kind's followed fields, or no_link.
template <an_il_entry_kind kind> constexpr uint16_t discriminator_of_kind()
{
  uint16_t result = no_link;
  for (const a_table_row &row : an_il_rows<kind>::rows) {
    if (is_followed(row.field) && row.field.kinds != 0) result = row.field.discriminator;
  }
  return result;
}

constexpr bool belongs_to_group(const an_il_field &field, unsigned group, uint16_t discriminator)
{
  if (!is_followed(field)) return false;
  if (field.kinds == 0) return true;
  return field.discriminator == discriminator && (field.kinds >> group & 1) != 0;
}

template <an_il_entry_kind kind> struct a_followed_field_array {
  static constexpr uint16_t discriminator = discriminator_of_kind<kind>();
  static constexpr unsigned num_groups = discriminator == no_link ? 1 : 32;
  static constexpr unsigned count = []() {
    unsigned total = 1;
    for (unsigned group = 0; group < num_groups; group++) {
      for (const a_table_row &row : an_il_rows<kind>::rows) {
        total += belongs_to_group(row.field, group, discriminator);
      }
    }
    return total;
  }();
  static_assert(
      []() {
        for (const a_table_row &row : an_il_rows<kind>::rows) {
          bool is_conditional = is_followed(row.field) && row.field.kinds != 0;
          if (is_conditional && row.field.discriminator != discriminator) return false;
        }
        return true;
      }(),
      "the fields of a kind depend on one discriminator");

  a_followed_field fields[count];
  uint16_t group_begin[num_groups + 1];
  constexpr a_followed_field_array() : fields{}, group_begin{}
  {
    uint16_t used = 0;
    for (unsigned group = 0; group < num_groups; group++) {
      for (const a_table_row &row : an_il_rows<kind>::rows) {
        if (!belongs_to_group(row.field, group, discriminator)) continue;
        bool is_declaration_list = row.field.action == ifa_declarations;
        fields[used++] = {row.field.offset, row.field.action == ifa_list || is_declaration_list,
                          is_declaration_list, row.field.target, row.field.selector};
      }
      group_begin[group + 1] = used;
    }
  }
};

template <an_il_entry_kind kind> constexpr a_followed_field_array<kind> followed_fields;

template <an_il_entry_kind kind> constexpr a_followed_field_table describe_followed_fields()
{
  return {followed_fields<kind>.fields, followed_fields<kind>.group_begin,
          a_followed_field_array<kind>::discriminator};
}

static constexpr uint16_t no_group[2] = {0, 0};
static constexpr a_followed_field_table no_followed_fields = {nullptr, no_group, no_link};

// --- The tables by kind --------------------------------------------------------------------------

#define HEAD
#define PTR(f, type, target)
#define PTR_IF(f, type, target, selector)
#define BACK(f, type, target)
#define LIST(f, type, target)
#define DECLS(f, type, target)
#define LINK(f, type, target)
#define ANY(f, selector)
#define ANY_BACK(f, selector)
#define TEXT(f, target)
#define DATA(f)
#define BITS(bytes)
#define PART(f)
#define IN_PTR(d, kinds, f, type, target)
#define IN_BACK(d, kinds, f, type, target)
#define IN_LIST(d, kinds, f, type, target)
#define IN_LIST_IF(d, kinds, f, type, target, selector)
#define IN_ANY(d, kinds, f, selector)
#define IN_TEXT(d, kinds, f, length, target)
#define IN_TEXT0(d, kinds, f, target)
#define END
#define TEXT_KIND(kind) {1, {nullptr, 0, no_link, false}, no_followed_fields, #kind, kind},
#define ENTITY(kind, record)                                                                       \
  {checked_size_of<kind>(), describe_kind<kind>(), describe_followed_fields<kind>(), #kind, kind},

struct a_kind_row {
  unsigned short size;
  an_il_kind_description description;
  a_followed_field_table followed;
  const char *name;
  an_il_entry_kind kind;
};
static constexpr a_kind_row kind_rows[] = {
#include "il/il_entities.def"
};

constexpr bool kind_rows_are_in_order()
{
  unsigned number = iek_none;
  for (const a_kind_row &row : kind_rows) {
    if (row.kind != ++number) return false;
  }
  return number + 1 == iek_last;
}
static_assert(kind_rows_are_in_order(), "rows of il_entities.def stand in the order of the kinds");

template <class an_element, unsigned count> struct an_array_by_kind {
  an_element element[count];
};

#define BY_KIND(type, count, member, none_value, end_value)                                        \
  []() {                                                                                           \
    an_array_by_kind<type, count> result = {};                                                     \
    result.element[0] = none_value;                                                                \
    for (unsigned i = 1; i < iek_last; i++)                                                        \
      result.element[i] = kind_rows[i - 1].member;                                                 \
    if (count > iek_last) result.element[count - 1] = end_value;                                   \
    return result;                                                                                 \
  }()

static constexpr auto sizes = BY_KIND(unsigned short, iek_last + 1, size, 0, 9999);
static constexpr auto names = BY_KIND(const char *, iek_last, name, "iek_none", nullptr);
static constexpr an_il_kind_description no_description = {nullptr, 0, no_link, false};
static constexpr auto descriptions =
    BY_KIND(an_il_kind_description, iek_last, description, no_description, no_description);
static constexpr auto followed =
    BY_KIND(a_followed_field_table, iek_last, followed, no_followed_fields, no_followed_fields);

const unsigned short *const sizeof_il_entry = sizes.element;
const char *const *const il_entry_kind_names = names.element;
const an_il_kind_description *const il_kind_table = descriptions.element;
const a_followed_field_table *const followed_field_tables = followed.element;
