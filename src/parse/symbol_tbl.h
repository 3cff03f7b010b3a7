// symbol_tbl.h - what a spelling means: headers, symbols, locators.
// Owns:    symbol_table, opname_symbol_table, conversion_header_list, the numbers of scopes.
// Rule:    a header's active chain holds the visible declarations, innermost scope first; symbols
//          never go away, they are only unlinked.
// Entry:   find_symbol, enter_symbol, find_macro_symbol, il_entry_for_symbol.
#pragma once
#include <cstdint>
#include <cstring>

#include "il/il_enums.h"
#include "il/il_fwd.h"
#include "lex/source_position.h"
#include "mem/check.h"

struct a_macro_def;
struct a_class_symbol_supplement;
struct a_namespace_symbol_supplement;
struct an_enum_symbol_supplement;
struct a_template_symbol_supplement;
struct an_active_using_directive;

//---------------------------------------------------------------------------------------------
// General hash table, for the per-scope tables and other keyed sets.

struct a_hash_table_entry {
  a_hash_table_entry *next;
  void *value;
  uint32_t hash;
};

typedef uint32_t a_hash_function(const void *key);
typedef bool a_hash_equal_function(const void *value, const void *key);

struct a_hash_table {
  a_hash_function *hash_function;
  a_hash_equal_function *equal_function;
  int region;  // -1: general heap
  uint32_t bucket_count;
  uint32_t entry_count;
  a_hash_table_entry **buckets;
};

a_hash_table *alloc_hash_table(int region, uint32_t minimum_size, a_hash_function *hash_function,
                               a_hash_equal_function *equal_function);
// The place of the value for the key; with `create` a new place (holding null) when there is none,
// else null.  The place stays valid until the entry is removed.
void **hash_find(a_hash_table *table, const void *key, bool create);
uint32_t hash_source_string(const char *text);  // for strings that are not identifiers

//---------------------------------------------------------------------------------------------
// Headers: one for each distinct spelling of the run.

struct a_symbol_header {
  a_symbol_header *next_in_bucket;
  const char *identifier;  // null-terminated
  uint32_t length;
  uint32_t hash;           // before reduction to a bucket
  a_symbol *active_symbols;
  a_symbol *inactive_symbols;
  a_symbol *synthesized_namespace_symbols;
  a_symbol *removed_symbols;  // kept only while check_misra_c_2004 is set
  a_symbol *macro_symbol;     // the macro of this name, also on the active chain
  a_symbol *keyword_symbol;   // the keyword of this name, also on the active chain
  bool member_type_seen : 1;
  bool is_opname : 1;          // header of an operator function
  bool is_conversion_name : 1;
  bool is_unnamed : 1;         // private header of an unnamed symbol
  bool is_constructor_name : 1; // private header of a class's constructors
  unsigned char opname_kind;   // with is_opname
  a_type *conversion_type;     // with is_conversion_name
};

struct a_symbol_table {
  a_symbol_header **buckets;  // a power of two of them
  unsigned shift;             // 32 minus the logarithm of the number of buckets
  uint32_t header_count;
};
extern a_symbol_table symbol_table;  // writer: symbol_tbl.cpp

// Names of operator functions.
enum an_opname_kind : unsigned char {
#define OPNAME(kind, text, token) kind,
#include "parse/opnames.def"
  num_opname_kinds
};
extern const char *const opname_texts[num_opname_kinds];  // "+", "new[]"
extern a_symbol_header *opname_symbol_table[num_opname_kinds];
extern a_symbol_header *conversion_header_list;
extern a_symbol_header *unnamed_symbol_header;

// The hash of a spelling takes all its bytes in, eight at a time: sampling a few positions would
// make generated names that count in the middle collide by the thousand.
inline uint32_t hash_of_identifier(const char *text, uint32_t length)
{
  constexpr uint64_t multiplier = 0x9E3779B97F4A7C15u;
  uint64_t h = length * multiplier;
  while (length >= 8) {
    uint64_t chunk;
    memcpy(&chunk, text, 8);
    h = (h ^ chunk) * multiplier;
    h ^= h >> 32;
    text += 8;
    length -= 8;
  }
  uint64_t tail = 0;
  if (length >= 4) {
    uint32_t low, high;
    memcpy(&low, text, 4);
    memcpy(&high, text + length - 4, 4);
    tail = low | (uint64_t)high << 32;
  } else if (length > 0) {
    tail = (unsigned char)text[0] | (unsigned)(unsigned char)text[length >> 1] << 8
           | (unsigned)(unsigned char)text[length - 1] << 16;
  }
  h = (h ^ tail) * multiplier;
  return (uint32_t)(h >> 32);
}

// Called for each header that is made for an identifier: installed by the predeclared functions, which
// are declared when their spelling first occurs.
extern void (*symbol_header_hook)(a_symbol_header *header);
// The header of the spelling if it occurred before, else null.
a_symbol_header *existing_symbol_header(const char *text, uint32_t length);

// A miss: makes the header with a copy of the text.
a_symbol_header *make_symbol_header(const char *text, uint32_t length, uint32_t hash);

// Finds or makes the header of the spelling.  The text need not be terminated.
inline a_symbol_header *find_symbol_header_by_hash(const char *text, uint32_t length, uint32_t hash)
{
  a_symbol_header **bucket = &symbol_table.buckets[(hash * 0x9E3779B1u) >> symbol_table.shift];
  a_symbol_header *header = *bucket;
  a_symbol_header **link = bucket;
  while (header != nullptr) {
    if (header->hash == hash && header->length == length
        && memcmp(header->identifier, text, length) == 0) {
      if (link != bucket) {  // move to the front
        *link = header->next_in_bucket;
        header->next_in_bucket = *bucket;
        *bucket = header;
      }
      return header;
    }
    link = &header->next_in_bucket;
    header = *link;
  }
  return make_symbol_header(text, length, hash);
}

inline a_symbol_header *find_symbol_header(const char *text, uint32_t length)
{
  return find_symbol_header_by_hash(text, length, hash_of_identifier(text, length));
}

//---------------------------------------------------------------------------------------------
// Symbols

enum a_symbol_kind : unsigned char {
#define SYMBOL_KIND(kind, text, il_kind, cplusplus_space, c_space) kind,
#include "parse/symbol_kinds.def"
  sk_last
};
extern const char *const symbol_kind_names[sk_last + 1];

enum a_name_space_kind : unsigned char {
  nsk_label, nsk_tag, nsk_ordinary, nsk_macro, nsk_keyword, nsk_extern, nsk_member
};
extern a_name_space_kind name_space_for_symbol_kind[sk_last];

struct a_symbol {
  a_symbol_header *header;
  a_symbol *next_same_name;
  a_symbol *next_in_scope;
  a_symbol *prev_in_scope;
  a_symbol *next_in_bucket;  // chain in the scope's own table
  int scope_number;          // -1: none
  uint32_t decl_seq;         // decl_seq_counter at the declaration, 0 until first needed
  a_source_position position;
  union {
    a_type *class_type;      // with is_class_member
    a_namespace *name_space;
  } parent;
  a_symbol *real_symbol;
  a_symbol_kind kind;
  bool referenced : 1;
  bool declared : 1;         // a declaration was recorded
  bool is_class_member : 1;
  bool not_entered : 1;      // stays outside all chains
  bool is_template_param_name : 1;
  bool is_unbound_template_param : 1;
  bool is_ambiguous : 1;
  bool is_synthesized_namespace_symbol : 1;
  bool is_invisible : 1;
  bool in_friend_lookup_list : 1;
  bool in_lookup_set : 1;
  bool has_dependent_using : 1;
  bool defined : 1;                 // a definition was recorded
  bool value_set : 1;               // variables: mark_variable_value_set was applied, or not local
  bool assigned_only : 1;           // variables: written and never read so far
  bool address_or_read : 1;         // variables: read, or address taken
  bool on_inactive_chain : 1;
  bool on_active_chain : 1;
  bool is_parameter : 1;            // a variable that is a function's parameter
  bool in_for_init_difference : 1;
  bool used_before_set_reported : 1;
  bool is_predeclared : 1;          // entered by the compiler
  bool is_condition_decl : 1;       // the name declared by a condition
  bool is_handler_param : 1;
  bool is_anonymous_union_member : 1;
  bool is_implicit_routine : 1;     // declared by a call
  bool declared_at_block_scope : 1; // extern declared in a block
  bool error_reported : 1;          // undefined symbols
  bool in_members_list : 1;
  bool is_label_reference_only : 1; // label seen in goto, no statement yet
  bool is_nonreal : 1;
  union {
    struct {
      unsigned char token;          // a_token_kind
      unsigned char flag_1, flag_2;
      void *pointer;
    } keyword;
    a_macro_def *macro_def;
    a_constant *constant;
    struct {
      a_type *type;
      void *extra;
      bool is_tag_typedef;          // a typedef whose name is the tag's, or injected
    } type;
    struct {
      a_type *type;
      a_class_symbol_supplement *supplement;
    } class_struct_union;
    struct {
      a_type *type;
      an_enum_symbol_supplement *supplement;
    } enumeration;
    struct {
      a_variable *variable;
      bool flag;
      uint32_t loop_depth;          // function_depth of loops at the declaration, for used-before-set
    } variable;
    struct {
      a_field *field;
      a_symbol *anonymous_parent;   // the unnamed field through which the member is reached
    } field;
    struct {
      a_variable *variable;
      void *extra;
    } static_data_member;
    struct {
      a_routine *routine;
      void *extra;                  // deferred information, by its user
    } routine;                      // sk_member_function, sk_routine
    struct {
      a_label *label;
      void *extra;                  // the jump bookkeeping of statements
    } label;
    struct {
      a_symbol *symbol;             // the declaration of the object
      a_type *type;                 // composite type of all declarations so far
      union {
        a_variable *variable;
        a_routine *routine;
      } entity;
    } extern_entity;                // sk_extern_variable, sk_extern_routine
    struct {
      a_symbol *projected_symbol;
      a_base_class *base_class;
      a_derivation_step *derivation;
      unsigned access : 2;
      bool is_using_declaration : 1;
    } projection;
    struct {
      a_symbol *symbols;            // head of the overload list
      bool mixed_static_nonstatic;
    } overloaded_function;
    a_param_type *param_type;       // sk_parameter
    struct {
      a_template_symbol_supplement *supplement;
      a_template *entry;
    } template_info;                // sk_class_template, sk_function_template
    struct {
      a_namespace *entry;
      a_namespace_symbol_supplement *supplement;
    } name_space;
    a_symbol *projected_namespace;  // sk_namespace_projection
  } variant;
};

// Kind-checked access.
inline bool symbol_kind_is_class(a_symbol_kind kind)
{
  return kind == sk_class_or_struct_tag || kind == sk_union_tag;
}
inline bool is_tag_symbol(const a_symbol *symbol)
{
  return symbol->kind >= sk_class_or_struct_tag && symbol->kind <= sk_enum_tag;
}
inline bool is_type_symbol(const a_symbol *symbol)
{
  return symbol->kind >= sk_type && symbol->kind <= sk_enum_tag;
}
inline bool is_routine_symbol(const a_symbol *symbol)
{
  return symbol->kind == sk_routine || symbol->kind == sk_member_function;
}
// The a_macro_def of a macro symbol.
inline a_macro_def *&macro_def_of_symbol(a_symbol *symbol)
{
  check(symbol->kind == sk_macro);
  return symbol->variant.macro_def;
}
inline a_constant *&constant_of_symbol(a_symbol *symbol)
{
  check(symbol->kind == sk_constant);
  return symbol->variant.constant;
}
// The type of a type, class, union or enum symbol.
inline a_type *&type_of_symbol(a_symbol *symbol)
{
  check(is_type_symbol(symbol));
  return symbol->variant.type.type;
}
// The variable of a variable or static data member symbol.
inline a_variable *&variable_of_symbol(a_symbol *symbol)
{
  check(symbol->kind == sk_variable || symbol->kind == sk_static_data_member);
  return symbol->variant.variable.variable;
}
inline a_field *&field_of_symbol(a_symbol *symbol)
{
  check(symbol->kind == sk_field);
  return symbol->variant.field.field;
}
inline a_routine *&routine_of_symbol(a_symbol *symbol)
{
  check(is_routine_symbol(symbol));
  return symbol->variant.routine.routine;
}
inline a_label *&label_of_symbol(a_symbol *symbol)
{
  check(symbol->kind == sk_label);
  return symbol->variant.label.label;
}
inline a_namespace *&namespace_of_symbol(a_symbol *symbol)
{
  check(symbol->kind == sk_namespace);
  return symbol->variant.name_space.entry;
}
inline a_symbol *&projected_symbol_of(a_symbol *symbol)
{
  check(symbol->kind == sk_projection);
  return symbol->variant.projection.projected_symbol;
}
inline a_symbol *&overloads_of_symbol(a_symbol *symbol)
{
  check(symbol->kind == sk_overloaded_function);
  return symbol->variant.overloaded_function.symbols;
}
inline a_class_symbol_supplement *class_supplement_of_symbol(a_symbol *symbol)
{
  check(symbol_kind_is_class(symbol->kind));
  return symbol->variant.class_struct_union.supplement;
}

// The tails of a scope's lists, and the symbols that it holds.
struct a_scope_pointers_block {
  a_symbol *symbols;      // in order of declaration
  a_symbol *last_symbol;
  a_symbol *hidden_symbols_head;  // second list: symbols that were hidden from lookup
  a_hash_table *symbol_hash_table;
  bool inactive_list_after_file_scope;  // new symbols go straight to the inactive chain
  // Last entries of the lists of the a_scope.
  a_constant *last_constant;
  a_type *last_type;
  a_variable *last_variable;
  a_routine *last_routine;
  an_asm_entry *last_asm_entry;
  a_dynamic_init *last_dynamic_init;
  a_namespace *last_namespace;
  a_using_decl *last_using_decl;
  a_pragma *last_pragma;
  a_template *last_template;
};

struct an_enum_symbol_supplement {
  a_symbol *first_enumerator;
  a_symbol *last_enumerator;
};

struct a_symbol_list_entry {
  a_symbol_list_entry *next;
  a_symbol *symbol;
};

struct a_class_symbol_supplement {
  a_symbol *first_member;         // stored at the class's wrap-up
  a_symbol *constructors;         // one constructor or an overload set
  a_symbol *trivial_default_constructor;
  a_symbol_header *constructor_header;  // of both; null until the first is declared or looked up
  a_symbol *destructor;
  a_symbol *assignment_operator;  // one routine or an overload set
  a_symbol_list_entry *conversion_functions;
  a_type *prev_on_types_list;     // predecessor of the type on the scope's list
  int class_scope_number;         // -1 until pushed
  a_source_position position_of_definition;
  a_scope_pointers_block pointers_block;
  bool not_cplusplus : 1;         // set only when the dialect is not C++
  bool has_nontrivial_default_constructor : 1;
  bool has_user_default_constructor : 1;
  bool has_user_provided_default_constructor : 1;
  bool has_copy_constructor : 1;
  bool copy_constructor_takes_const : 1;
  bool has_user_copy_constructor : 1;
  bool has_trivial_destructor : 1;
  bool has_trivial_copy_assignment : 1;
  bool has_trivial_copy_constructor : 1;
  bool has_reference_field : 1;
  bool is_aggregate : 1;
  bool is_pod : 1;
  bool has_empty_subobject : 1;
  bool is_being_defined : 1;
  bool has_dependent_bases : 1;
  bool gpp_dependent_bases : 1;
  bool no_slow_lookup : 1;
  bool has_members : 1;
};

struct a_namespace_symbol_supplement {
  a_symbol *symbol;
  a_scope_pointers_block pointers_block;
  int scope_number;
  void *inline_set;               // namespaces nominated for association
  a_using_decl *using_directives;
  bool is_std : 1;
  bool searched : 1;              // marks of one lookup
};

//---------------------------------------------------------------------------------------------
// Locators: the value by which names travel in the parser.

// qualifier_bits of a locator.
enum : unsigned { qb_global = 1, qb_qualified = 2, qb_coalesced = 4 };

struct a_symbol_locator {
  a_symbol_header *header;        // null in the cleared locator
  a_source_position position;
  unsigned qualifier_bits : 3;    // what kind of :: was scanned
  bool symbol_not_entered : 1;
  bool force_slow_lookup : 1;
  bool is_qualified : 1;          // qualified, or lookup failed for good
  bool qualifier_is_class : 1;
  bool found_by_anachronism : 1;
  bool access_error_reported : 1;
  bool no_base_classes : 1;
  bool has_template_args : 1;
  bool is_destructor_name : 1;
  bool is_conversion_name : 1;
  bool is_opname : 1;
  a_symbol *symbol;               // result of lookup
  union {
    a_type *class_type;           // with qualifier_is_class
    a_namespace *name_space;
  } qualifier;
  a_template_arg *template_args;  // of a template-id
  a_type *conversion_type;        // of a conversion function's name
  a_derivation_step *derivation;  // path of a member found in a base class
};

extern const a_symbol_locator cleared_locator;

// A qualifier was written: `A::x` or `::x`.  (is_qualified alone also marks an erroneous name.)
inline bool has_written_qualifier(const a_symbol_locator *locator)
{
  return (locator->qualifier_bits & qb_qualified) != 0;
}

inline void clear_qualifier_from_locator(a_symbol_locator *locator)
{
  locator->qualifier_bits = 0;
  locator->qualifier.class_type = nullptr;
  locator->is_qualified = false;
  locator->qualifier_is_class = false;
}
void make_locator_for_symbol(a_symbol *symbol, a_symbol_locator *locator);
void make_opname_locator(unsigned opname_kind, a_symbol_locator *locator,
                         a_source_position *position);
void make_type_conversion_locator(a_type *type, a_symbol_locator *locator,
                                  a_source_position *position);
// The names of special members: a class's constructors have a private header with the text of its name.
void change_class_locator_into_constructor_locator(a_symbol_locator *locator, a_symbol *class_symbol);
void change_to_destructor_or_finalizer_locator(a_symbol_locator *locator, a_symbol *class_symbol);

//---------------------------------------------------------------------------------------------
// Finding by spelling

// Finds or makes the header and stores it in the (otherwise untouched) locator; returns the head
// of the active chain, which may be null.
inline a_symbol *find_symbol(const char *text, uint32_t length, a_symbol_locator *locator)
{
  locator->header = find_symbol_header(text, length);
  return locator->header->active_symbols;
}
inline a_symbol *find_macro_symbol(a_symbol_header *header)
{
  return header->macro_symbol;
}
inline a_symbol *find_keyword_symbol(a_symbol_header *header)
{
  return header->keyword_symbol;
}
a_symbol *find_macro_symbol_by_name(const char *text, uint32_t length);
a_symbol *find_label_symbol(a_symbol_header *header);   // of the current function, or null

//---------------------------------------------------------------------------------------------
// Making and linking.  Each returns the new symbol, in region 0.

a_symbol *alloc_symbol(a_symbol_kind kind, a_symbol_header *header, a_source_position position);
void set_symbol_kind(a_symbol *symbol, a_symbol_kind kind);
// Makes a symbol and links it into the scope at stack index depth (-1: no scope of the stack).
// Conflicts are reported unless no_errors; locator->symbol is set.
a_symbol *enter_symbol(a_symbol_kind kind, a_symbol_locator *locator, int depth, bool no_errors);
// The same into the scope that receives declarations.
a_symbol *enter_local_symbol(a_symbol_kind kind, a_symbol_locator *locator, bool no_errors = false);
void reenter_symbol(a_symbol *symbol, int depth, bool no_errors);
void enter_symbol_into_completed_class(a_symbol *symbol, a_type *class_type);
void add_symbol_to_symbol_table(a_symbol *symbol, int depth, bool no_errors);
a_symbol *enter_typedef_symbol(a_type *type, a_symbol_locator *locator, int depth, bool no_errors);
a_symbol *enter_injected_class_name_symbol(a_symbol *class_symbol);
a_symbol *enter_undefined_symbol(a_symbol_locator *locator);
// The name-space-5 symbol of a block-scope extern declaration, kept for later declarations.
a_symbol *enter_extern_symbol(a_symbol_kind kind, a_symbol_locator *locator);
a_symbol *find_external_symbol(a_symbol_header *header);
a_symbol *enter_copy_of_symbol(a_symbol *symbol, int depth);
void relink_unnamed_tag_symbol(a_symbol *symbol, a_symbol_locator *locator);

a_symbol *enter_overloaded_symbol(a_symbol_kind kind, a_symbol_locator *locator, int depth,
                                  a_symbol *first, a_symbol **overload_symbol);
a_symbol *add_symbol_to_overload_list(a_symbol *first, a_symbol *new_symbol,
                                      bool at_namespace_level, a_namespace *name_space);
void remove_symbol_from_overload_set(a_symbol *overload_symbol, a_symbol *symbol);

a_symbol *make_projection_symbol(a_symbol *symbol, a_type *class_type, a_base_class *base_class,
                                 a_derivation_step *derivation, bool is_ambiguous);
a_symbol *enter_synthesized_projection_symbol(a_symbol *symbol, a_namespace *name_space);
a_symbol *make_namespace_projection_symbol(a_symbol_locator *locator, a_symbol *namespace_symbol);
a_symbol *enter_namespace_projection_symbol(a_symbol_locator *locator, a_symbol *namespace_symbol,
                                            int depth);
void set_namespace_projection_symbol(a_symbol *projection, a_symbol *namespace_symbol);

// Unlinks from the header's chain (the scope's list stays); from the scope's list and tables too.
void unlink_symbol_from_symbol_table(a_symbol *symbol);
void remove_symbol(a_symbol *symbol);
void remove_symbol_from_lookup_table(a_symbol *symbol, a_scope_pointers_block *block);
void add_symbol_to_inactive_list(a_symbol *symbol);
void remove_anonymous_union_member_from_inactive_symbols_list(a_symbol *symbol);
// First symbol of the name in the scope's own table, chained through next_in_bucket.
a_symbol *find_symbol_list_in_table(a_scope_pointers_block *block, a_symbol_header *header);

// A predeclared function that nothing used: any declaration of the name takes its place.
bool is_unused_predeclared_function(const a_symbol *symbol);

// Predeclared and unnamed symbols.
a_symbol *enter_keyword(unsigned token, const char *text);
a_symbol *make_predeclared_function_symbol(const char *name, a_type *type, unsigned builtin_kind);
a_symbol *make_symbol_for_predeclared_type(const char *name, a_type *type);
a_symbol *make_global_operator_new_or_delete_symbol(int which);  // 1 to 4
a_symbol *make_symbol_for_namespace_std();
a_symbol *make_symbol_for_namespace_abi();
void enter_symbol_for_namespace_std();
void enter_symbol_for_namespace_abi();
extern a_symbol *symbol_for_namespace_std;
a_symbol *make_unnamed_symbol(a_symbol_kind kind, a_source_position *position);
a_symbol *make_unnamed_tag_symbol(a_symbol_kind kind, a_source_position *position);
a_symbol *make_unnamed_namespace_symbol(a_source_position *position);
a_symbol *unnamed_field_symbol(a_source_position *position);

//---------------------------------------------------------------------------------------------
// Symbols and the IL

// The entry that carries the symbol's meaning and its kind; the first form expects one.
void *il_entry_for_symbol(a_symbol *symbol, an_il_entry_kind *kind);
void *il_entry_for_symbol_null_okay(a_symbol *symbol, an_il_entry_kind *kind);
a_source_correspondence *source_corresp_entry_for_symbol(a_symbol *symbol);
a_type *type_of_entity_symbol(a_symbol *symbol);  // declared type of the entity, null if none

// Depth of the symbol's scope on the stack, -1 if it isn't there; *is_local: inside a function.
int scope_depth_of_symbol(a_symbol *symbol, bool *is_local);
bool is_local_symbol(a_symbol *symbol);
bool is_block_extern_symbol(a_symbol *symbol);
a_namespace *parent_namespace_for_symbol(a_symbol *symbol);
void set_class_membership(a_symbol *symbol, a_source_correspondence *corresp, a_type *class_type);
void set_namespace_membership(a_symbol *symbol, a_source_correspondence *corresp,
                              a_namespace *name_space);
void set_membership_in_source_corresp(a_symbol *symbol, a_source_correspondence *corresp);
an_access_specifier access_for_symbol(a_symbol *symbol);
an_access_specifier compute_access(an_access_specifier member_access,
                                   an_access_specifier inheritance);

//---------------------------------------------------------------------------------------------
// Numbers

extern int next_scope_number;
extern uint32_t decl_seq_counter;
extern bool file_scope_symbols_are_on_inactive_list;
extern a_symbol *symbols_with_no_scope;  // list through next_in_scope
int take_next_scope_number();
a_translation_unit *get_trans_unit_for_scope(int scope_number);

void symbol_tbl_one_time_init();
void symbol_tbl_init();
void symbol_tbl_trans_unit_init();
