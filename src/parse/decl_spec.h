// decl_spec.h - declaration specifiers, and the records that one declaration carries through the
// parser: a_decl_parse_state, a_decl_pos_block, a_func_info_block.
#pragma once
#include <cstdint>

#include "il/il_enums.h"
#include "il/il_fwd.h"
#include "lex/source_position.h"
#include "parse/symbol_tbl.h"

// Bits of a_decl_parse_state::specifier_flags.
enum a_specifier_flag : uint32_t {
  sf_has_type_specifier = 0x1,          // any type specifier, or a sized integer specifier
  sf_is_inline = 0x2,
  sf_is_virtual = 0x4,
  sf_is_friend = 0x8,
  sf_is_in_error = 0x10,                // a type error: the declared type is the error type
  sf_defines_type = 0x20,               // a class or enum body stood in the specifiers
  sf_is_void_only = 0x40,               // `void` alone
  sf_missing_semicolon_suspected = 0x80,
  sf_no_specifiers = 0x100,             // no specifier came before the name
  sf_is_type_declaration = 0x200,       // an elaborated or defining specifier with nothing else
  sf_is_constructor_name = 0x400,       // the token at the end is a constructor's name
  sf_is_destructor_or_conversion = 0x800,
  sf_is_mutable = 0x1000,
  sf_is_explicit = 0x2000,
  sf_is_typename_declaration = 0x10000,
  sf_written_signed = 0x20000,          // `signed` stood among the words
};

// Bits of a_decl_parse_state::declarator_flags, the result of declarator().
enum a_declarator_flag : uint32_t {
  df_is_function_body_paren = 0x1,      // a `(` may start a function-style initializer
  df_has_name = 0x2,
  df_is_qualified = 0x4,
  df_is_declared_in_parens = 0x8,
  df_option_copy_1 = 0x10,              // copied from the options
  df_option_copy_2 = 0x20,
  df_is_derived = 0x40,                 // a pointer, array or function part stood around the name
  df_is_pointer_to_member = 0x80,
  df_is_function = 0x100,               // the outermost derived part is a function declarator
};

// Bits of a_decl_parse_state::decl_modifiers, in the order of decl_modifier_names.
enum a_decl_modifier : uint32_t {
  dm_dllimport = 0x1,
  dm_dllexport = 0x2,
  dm_notshared = 0x4,
  dm_thread = 0x8,
  dm_interrupt = 0x10,
  dm_nmi_interrupt = 0x20,
  dm_near = 0x40,
  dm_far = 0x80,
  dm_reentrant = 0x100,
  dm_port = 0x200,
  dm_shared = 0x400,
  dm_sharedpp = 0x800,
  dm_trap = 0x1000,
  dm_cregister = 0x2000,
  dm_global = 0x4000,
  dm_data_mem_bank = 0x8000,
  dm_data_align = 0x10000,
};

// One word for each bit of decl_modifiers, from the lowest; ends with "last".
extern const char *const decl_modifier_names[];

// Option bits of decl_specifiers.
enum a_decl_specifier_option : uint32_t {
  dso_storage_class_ok = 0x1,
  dso_type_ok = 0x2,
  dso_member = 0x4,                       // friend, virtual, explicit, mutable may appear
  dso_parameter = 0x8,                    // function specifiers are refused with 240
  dso_type_optional = 0x10,
  dso_inline_ok = 0x20,
  dso_in_condition_or_param_template = 0x40,
  dso_class_def_ok = 0x80,                // the first specifier may be a class definition
  dso_template = 0x200,
  dso_qualifiers_only = 0x400,            // qualifiers after `*` and in `[ ]`
  dso_check_missing_semicolon = 0x800,
  dso_typedef_ok_in_param = 0x1000,
  dso_storage_refused_in_c = 0x4000,
  dso_restricted_storage = 0x8000,        // only auto and register
  dso_storage_refused = 0x20000,
  dso_type_context = 0x40000,
  dso_no_misra = 0x80000,
  dso_secondary = 0x100000,               // a second list: anything but a type is 1843
  dso_std_attributes_ok = 0x8000000,
};

// Work to be done once the declaration has been read to its end.
struct an_end_of_parse_action {
  an_end_of_parse_action *next;
  void (*action)(a_decl_parse_state *state, void *data);
  void *data;
};

// Everything known about one declaration.  Lives on the stack of the caller for the whole
// declaration; the fields of the declarator are reset for the next declarator of a list.
struct a_decl_parse_state {
  uint32_t specifier_flags;                   // a_specifier_flag
  uint32_t declarator_flags;                  // a_declarator_flag
  a_source_position start_position;           // set by the caller of decl_specifiers
  a_source_range specifiers_range;
  a_source_range declarator_range;
  unsigned type_qualifiers;                   // const 1, volatile 2, restrict 4
  a_source_position const_position;           // volatile too
  a_source_position restrict_position;
  a_source_position inline_position;
  a_source_position virtual_position;
  a_source_position auto_position;
  bool is_synthesized : 1;                    // not read from source: an implicit member
  bool in_parens : 1;                         // declarator recursion
  bool trailing_return_allowed : 1;
  bool is_variadic_template_param : 1;
  bool pack_was_seen : 1;
  bool has_pending_qualifiers : 1;
  bool auto_type_pending : 1;                 // `auto` stands for a deduced type
  bool no_attributes_seen : 1;
  bool bad_declaration : 1;                   // errors were reported, do not report more
  bool is_member_function_decl : 1;
  bool is_member_definition : 1;
  bool vla_constant_bound_folded : 1;
  bool is_definition : 1;
  bool c99_for_init : 1;                      // the init declaration of a C99 `for`
  bool is_implicit_int : 1;                   // no type specifier: `int` was taken
  bool has_initializer : 1;                   // an `=` follows the declarator
  bool enum_body_seen : 1;                    // the specifiers' type is an enum with a body
  bool attributes_attached : 1;               // specifiers_attributes went to an entity
  bool in_prototype : 1;                      // a parameter of a prototype
  bool array_is_static_param : 1;             // `static` stood in the outermost brackets
  bool typedef_type_was_used : 1;             // the base type came from a typedef name
  an_attribute *specifiers_attributes;        // name a declaration
  an_attribute *type_attributes;              // apply to the type
  an_attribute *declarator_attributes;        // stood behind the current declarator
  uint32_t decl_modifiers;                    // a_decl_modifier
  uint32_t specifiers_options;                // as given to decl_specifiers
  a_symbol_locator tag_locator;               // name in a class or enum specifier
  a_source_position mutable_position;
  a_source_position storage_class_position;
  a_storage_class storage_class;              // as declared; sc_unspecified is none
  a_storage_class effective_storage_class;
  a_type *type_specifier;                     // built from the specifiers alone
  a_type *declared_type;                      // type of the current declarator
  a_type *bottom_type;                        // to which the next declarator attaches
  a_type *auto_placeholder;                   // overwritten when deduction has a type
  a_source_position qualified_position;       // where qualifiers stood
  void *param_scope_info;
  an_end_of_parse_action *end_of_parse_actions;
  an_attribute *pending_param_attributes;
  const char *asm_name;                       // GNU asm name of the current declarator
  a_source_position asm_name_position;
  a_symbol *symbol;                           // what the current declarator declared
  struct an_expression_cache *expression_cache;  // initializer that `auto` deduction read ahead
  unsigned implicit_member_form;              // what a synthesized member is, see class_implicit.cpp
  int depth_above_declarator_scopes;          // 1 + depth of the stack below the scopes that a qualified
                                              // name opened; 0: none
  uint32_t dll_flags;
};

extern const a_decl_parse_state null_decl_parse_state;

// The positions that an exact source listing needs.  Callers that need none pass null.
struct a_decl_pos_block {
  a_source_position storage_class_position;
  a_source_position name_position;
  a_source_position type_begin;               // together the first range of a position supplement
  a_source_position type_end;
  a_source_position specifier_first;
  a_source_position specifier_last;
  a_source_position declarator_begin;
  a_source_position declarator_end;
};

void clear_decl_pos_block(a_decl_pos_block *block);

// __declspec information of a class.
struct an_extended_decl_info_block {
  uint32_t dll_flags;
  a_source_position position;
};

// Name and type of one parameter as the declarator gave it, for the definition that may follow.
struct a_param_id {
  a_param_id *next;
  a_symbol_locator locator;                   // header null when the parameter has no name
  a_type *type;                               // adjusted; null in a K&R list until declared
  unsigned qualifiers;                        // dropped from the parameter type, kept for the body
  a_symbol *symbol;                           // made in the prototype scope or by a declaration
  a_param_type *param_type;                   // null in a K&R list until its end
  unsigned number;                            // place in the list, from 1
  a_source_position position;
  a_storage_class storage_class;              // sc_register or sc_unspecified
  bool declared : 1;                          // K&R: a declaration was seen
  bool has_unspecified_bound : 1;             // [*]: no definition may have that
  an_attribute *attributes;
  a_decl_position_supplement *decl_position_supplement;
};

// A bound that a prototype left to the body: the array type, the bound's expression.
struct a_vla_fixup {
  a_vla_fixup *next;
  a_type *array_type;
  an_expr_node *bound;
  a_source_position position;
};

// What a function declarator leaves for the definition.
struct a_func_info_block {
  a_param_id *param_ids;
  a_param_id *ids_tail;
  a_hash_table *ids_by_name;                  // of a long K&R list, see report_repeated_names
  int32_t prototype_scope_number;             // -1: none
  a_scope *prototype_scope;                   // kept for the symbols, see make_param_syms_invisible
  a_symbol *prototype_symbols;                // symbols of the closed prototype scope, in order
  a_vla_fixup *vla_fixups;
  a_source_position exception_specification_position;
  unsigned param_count;
  uint32_t max_member_alignment;              // value of the pack pragma at the body
  a_source_position inline_position;
  bool is_inline : 1;
  bool is_old_style : 1;                      // the list holds names only
  bool type_from_declarator : 1;              // not from a typedef
  bool is_definition : 1;                     // a body follows
  bool is_deleted : 1;
  bool is_defaulted : 1;
  bool is_main : 1;
  bool has_body : 1;
  bool is_implicit : 1;                       // declared by a call
  bool is_friend : 1;
  bool type_was_missing : 1;                  // implicit int
  bool is_pure : 1;                           // `= 0`
  bool is_first_declaration : 1;              // of the function; for `= default` and `= delete`
  a_source_position pure_position;
};

void clear_func_info(a_func_info_block *block);
// Returns the records of the list to their free list and empties the block's list.
void free_param_id_list(a_func_info_block *block);
a_param_id *alloc_param_id();
// The first record of the list with the name; null if there is none.
a_param_id *find_param_id(const a_func_info_block *block, const a_symbol_header *header);
// The same, before `id` only; from then on `id` is found.  Called for each record in order.
a_param_id *find_earlier_param_id(a_func_info_block *block, a_param_id *id);

// Reads the run of specifier tokens at the current token.  `state` is a copy of
// null_decl_parse_state with start_position set; it gets base type, storage class, qualifiers,
// function specifiers, modifiers and attributes.  `options` is a sum of dso_ bits; `pos_block` may
// be null.  Issues the messages of every misplaced, repeated or contradictory specifier.
void decl_specifiers(uint32_t options, a_decl_parse_state *state, a_decl_pos_block *pos_block);

// Reads an enum specifier whose `enum` is the current token; returns the type, never null.
a_type *enum_specifier(uint32_t options, a_decl_parse_state *state, a_decl_pos_block *pos_block);
// Reads a `typename` specifier; outside of templates a plain lookup of the qualified name.
void typename_specifier(a_type **type, a_symbol **symbol, bool flag, a_decl_pos_block *pos_block);

// Whether `class_type`'s constructor is declared at the current identifier.
bool is_constructor_decl(a_type *class_type, a_decl_parse_state *state);

// Sets the linkage of the name that a typedef gave to an unnamed class or enum.
void set_name_linkage_for_type(a_type *type);

// Whether restrict may qualify `type`; if not, issues the message at `position`.
bool restrict_qualifier_is_allowed(a_type *type, const a_source_position *position);
// Reads qualifiers at the current token and returns their word through `qualifiers`.
void collect_type_qualifiers(a_decl_pos_block *pos_block, unsigned *qualifiers);

// Adds the dm_ bits of the dll attributes in the list to *flags; 732 on a contradiction.
void add_flags_from_dll_attributes(uint32_t *flags, an_attribute *attributes);

// While the token is __declspec, scan and append attributes to the list.
void scan_extended_decl_modifiers(an_extended_decl_info_block *info, an_attribute **attributes,
                                  int where);
void update_extended_decl_info_for_class(a_type *class_type, an_extended_decl_info_block *info);
void update_dll_info_for_class(a_type *class_type, uint32_t dll_flags, a_source_position *position);
void update_membership_of_class(a_type *class_type);

// Appends an action; run_end_of_parse_actions runs them in order and frees the records.
void add_end_of_parse_action(a_decl_parse_state *state,
                             void (*action)(a_decl_parse_state *state, void *data), void *data);
void run_end_of_parse_actions(a_decl_parse_state *state);

void decl_spec_init();
