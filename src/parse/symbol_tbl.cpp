// symbol_tbl.cpp - the tables behind symbols: headers by spelling, general hash tables, scope numbers.
// Owns:    symbol_table, the name-space table, the symbol template, the numbers of scopes.
// Rule:    headers and symbols live in region 0 and are never released.
// Entry:   make_symbol_header, alloc_hash_table, hash_find, take_next_scope_number.
#include "parse/symbol_tbl.h"

#include "driver/flags.h"
#include "driver/trans_unit.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "mem/mem_manage.h"
#include "mem/registered_vars.h"
#include "parse/scope_stk.h"
#include "parse/symbol_links.h"

a_symbol_table symbol_table;
const a_symbol_locator cleared_locator = {};
a_symbol_header *opname_symbol_table[num_opname_kinds];
a_symbol_header *conversion_header_list;
a_symbol_header *unnamed_symbol_header;
a_symbol *symbol_for_namespace_std;
void (*symbol_header_hook)(a_symbol_header *header);

const char *const symbol_kind_names[sk_last + 1] = {
#define SYMBOL_KIND(kind, text, il_kind, cplusplus_space, c_space) text,
#include "parse/symbol_kinds.def"
    "last"};
const char *const opname_texts[num_opname_kinds] = {
#define OPNAME(kind, text, token) text,
#include "parse/opnames.def"
};
static const a_name_space_kind cplusplus_name_spaces[sk_last] = {
#define SYMBOL_KIND(kind, text, il_kind, cplusplus_space, c_space) cplusplus_space,
#include "parse/symbol_kinds.def"
};
static const a_name_space_kind c_name_spaces[sk_last] = {
#define SYMBOL_KIND(kind, text, il_kind, cplusplus_space, c_space) c_space,
#include "parse/symbol_kinds.def"
};
a_name_space_kind name_space_for_symbol_kind[sk_last];

int next_scope_number;
uint32_t decl_seq_counter;
bool file_scope_symbols_are_on_inactive_list;
a_symbol *symbols_with_no_scope;

static constexpr unsigned initial_table_bits = 12;
static constexpr int trans_unit_table_step = 16384;
// Translation unit of each scope number; used once a second unit is open.
static a_translation_unit **trans_unit_for_scope;
static int size_of_trans_unit_for_scope;
static a_symbol_header *error_symbol_header; // "<error>": entered without a name

//---------------------------------------------------------------------------------------------
// Headers

static void *alloc_cleared(size_t size)
{
  void *place = alloc_in_region(0, size);
  memset(place, 0, size);
  return place;
}

static void alloc_symbol_table_buckets(unsigned bits)
{
  size_t size = sizeof(a_symbol_header *) << bits;
  symbol_table.buckets = (a_symbol_header **)alloc_general(size);
  memset(symbol_table.buckets, 0, size);
  symbol_table.shift = 32 - bits;
}

// Twice the buckets: chains stay short however many names there are.
static void grow_symbol_table()
{
  a_symbol_header **old_buckets = symbol_table.buckets;
  unsigned old_bits = 32 - symbol_table.shift;
  alloc_symbol_table_buckets(old_bits + 1);
  for (size_t i = 0; i < (size_t)1 << old_bits; ++i) {
    a_symbol_header *next;
    for (a_symbol_header *header = old_buckets[i]; header != nullptr; header = next) {
      next = header->next_in_bucket;
      a_symbol_header **bucket =
          &symbol_table.buckets[(header->hash * 0x9E3779B1u) >> symbol_table.shift];
      header->next_in_bucket = *bucket;
      *bucket = header;
    }
  }
  free_general(old_buckets, sizeof(a_symbol_header *) << old_bits);
}

static a_symbol_header *alloc_header(const char *text, uint32_t length, uint32_t hash)
{
  a_symbol_header *header = (a_symbol_header *)alloc_cleared(sizeof(a_symbol_header));
  header->identifier = text;
  header->length = length;
  header->hash = hash;
  return header;
}

a_symbol_header *make_symbol_header(const char *text, uint32_t length, uint32_t hash)
{
  if (symbol_table.header_count >= (size_t)1 << (32 - symbol_table.shift)) grow_symbol_table();
  char *copy = (char *)alloc_primary_file_scope_il(length + 1);
  memcpy(copy, text, length);
  copy[length] = '\0';
  a_symbol_header *header = alloc_header(copy, length, hash);
  a_symbol_header **bucket = &symbol_table.buckets[(hash * 0x9E3779B1u) >> symbol_table.shift];
  header->next_in_bucket = *bucket;
  *bucket = header;
  ++symbol_table.header_count;
  if (symbol_header_hook != nullptr) symbol_header_hook(header);
  return header;
}

a_symbol_header *existing_symbol_header(const char *text, uint32_t length)
{
  uint32_t hash = hash_of_identifier(text, length);
  a_symbol_header *header = symbol_table.buckets[(hash * 0x9E3779B1u) >> symbol_table.shift];
  while (header != nullptr && (header->hash != hash || header->length != length ||
                               memcmp(header->identifier, text, length) != 0)) {
    header = header->next_in_bucket;
  }
  return header;
}

static a_symbol_header *make_private_header(const char *text)
{
  uint32_t length = (uint32_t)strlen(text);
  return alloc_header(text, length, hash_of_identifier(text, length));
}

// The text is put together from three parts.
static a_symbol_header *make_private_header_of_two(const char *first, const char *separator,
                                                   const char *second)
{
  size_t size = strlen(first) + strlen(separator) + strlen(second) + 1;
  char *text = (char *)alloc_primary_file_scope_il(size);
  strcpy(text, first);
  strcat(text, separator);
  strcat(text, second);
  return make_private_header(text);
}

// The header of symbols that are entered without a name; made on first need.
a_symbol_header *header_for_error_symbol()
{
  if (error_symbol_header == nullptr) error_symbol_header = make_private_header("<error>");
  return error_symbol_header;
}

a_symbol_header *make_unnamed_header()
{
  a_symbol_header *header = make_private_header("<unnamed>");
  header->is_unnamed = true;
  return header;
}

a_symbol *find_macro_symbol_by_name(const char *text, uint32_t length)
{
  return find_symbol_header(text, length)->macro_symbol;
}

a_symbol *find_label_symbol(a_symbol_header *header)
{
  for (a_symbol *symbol = header->active_symbols; symbol; symbol = symbol->next_same_name) {
    if (symbol->kind != sk_label) continue;
    bool is_local;
    if (scope_depth_of_symbol(symbol, &is_local) >= depth_innermost_function_scope) return symbol;
  }
  return nullptr;
}

//---------------------------------------------------------------------------------------------
// General hash tables

static const uint32_t bucket_primes[58] = {
    1,          5,         11,        17,        29,        41,        59,        83,
    127,        179,       251,       353,       499,       701,       983,       1381,
    1949,       2729,      3821,      5351,      7499,      10499,     14699,     20593,
    28837,      40387,     56543,     79181,     110863,    155209,    217307,    304253,
    425959,     596363,    834913,    1168879,   1636457,   2291041,   3207461,   4490459,
    6286661,    8801327,   12321863,  17250641,  24150901,  33811277,  47335793,  66270121,
    92778187,   129889477, 181845299, 254583437, 356416861, 498983623, 698577083, 978007931,
    1369211111, 1916895569};

static uint32_t first_prime_not_below(uint64_t size)
{
  for (uint32_t prime : bucket_primes) {
    if (prime >= size) return prime;
  }
  return bucket_primes[57];
}

static a_hash_table_entry **alloc_buckets(int region, uint32_t count)
{
  size_t size = count * sizeof(a_hash_table_entry *);
  a_hash_table_entry **buckets = (a_hash_table_entry **)alloc_general_or_in_region(region, size);
  memset(buckets, 0, size);
  return buckets;
}

a_hash_table *alloc_hash_table(int region, uint32_t minimum_size, a_hash_function *hash_function,
                               a_hash_equal_function *equal_function)
{
  a_hash_table *table = (a_hash_table *)alloc_general_or_in_region(region, sizeof(a_hash_table));
  table->hash_function = hash_function;
  table->equal_function = equal_function;
  table->region = region;
  table->bucket_count = first_prime_not_below(minimum_size);
  table->entry_count = 0;
  table->buckets = alloc_buckets(region, table->bucket_count);
  return table;
}

static void rebuild_hash_table(a_hash_table *table)
{
  uint32_t old_count = table->bucket_count;
  a_hash_table_entry **old_buckets = table->buckets;
  table->bucket_count = first_prime_not_below((uint64_t)old_count * 4);
  table->buckets = alloc_buckets(table->region, table->bucket_count);
  for (uint32_t i = 0; i < old_count; ++i) {
    a_hash_table_entry *next;
    for (a_hash_table_entry *entry = old_buckets[i]; entry != nullptr; entry = next) {
      next = entry->next;
      a_hash_table_entry **bucket = &table->buckets[entry->hash % table->bucket_count];
      entry->next = *bucket;
      *bucket = entry;
    }
  }
  if (table->region == no_memory_region) {
    free_general(old_buckets, old_count * sizeof(a_hash_table_entry *));
  }
}

void **hash_find(a_hash_table *table, const void *key, bool create)
{
  uint32_t hash = table->hash_function(key);
  a_hash_table_entry **bucket = &table->buckets[hash % table->bucket_count];
  for (a_hash_table_entry *entry = *bucket; entry != nullptr; entry = entry->next) {
    if (entry->hash == hash && table->equal_function(entry->value, key)) return &entry->value;
  }
  if (!create) return nullptr;
  a_hash_table_entry *entry =
      (a_hash_table_entry *)alloc_general_or_in_region(table->region, sizeof(a_hash_table_entry));
  entry->value = nullptr;
  entry->hash = hash;
  entry->next = *bucket;
  *bucket = entry;
  if (++table->entry_count >= table->bucket_count) rebuild_hash_table(table);
  return &entry->value;
}

void hash_remove(a_hash_table *table, const void *key)
{
  uint32_t hash = table->hash_function(key);
  a_hash_table_entry **link = &table->buckets[hash % table->bucket_count];
  for (; *link != nullptr; link = &(*link)->next) {
    if ((*link)->hash == hash && table->equal_function((*link)->value, key)) {
      *link = (*link)->next;
      --table->entry_count;
      return;
    }
  }
}

uint32_t hash_source_string(const char *text)
{
  uint32_t hash = 0;
  for (; *text != '\0'; ++text)
    hash = 33 * hash + (uint32_t)(int)(signed char)*text;
  return hash;
}

//---------------------------------------------------------------------------------------------
// Scope numbers

static void record_trans_unit_for_scope(int number)
{
  if (number >= size_of_trans_unit_for_scope) {
    int new_size = (number / trans_unit_table_step + 1) * trans_unit_table_step;
    trans_unit_for_scope = (a_translation_unit **)realloc_buffer(
        (char *)trans_unit_for_scope, size_of_trans_unit_for_scope * sizeof(a_translation_unit *),
        new_size * sizeof(a_translation_unit *));
    size_of_trans_unit_for_scope = new_size;
  }
  trans_unit_for_scope[number] = curr_translation_unit;
}

int take_next_scope_number()
{
  if (next_scope_number == 0x7fffffff) catastrophe(ec_program_too_large);
  int number = next_scope_number++;
  record_trans_unit_for_scope(number);
  return number;
}

a_translation_unit *get_trans_unit_for_scope(int scope_number)
{
  if (scope_number <= 0 || scope_number >= size_of_trans_unit_for_scope) return translation_units;
  return trans_unit_for_scope[scope_number];
}

//---------------------------------------------------------------------------------------------
// Kinds

a_symbol *alloc_symbol(a_symbol_kind kind, a_symbol_header *header, a_source_position position)
{
  a_symbol *symbol = (a_symbol *)alloc_cleared(sizeof(a_symbol));
  symbol->header = header;
  symbol->position = position;
  symbol->scope_number = -1;
  set_symbol_kind(symbol, kind);
  return symbol;
}

static a_class_symbol_supplement *alloc_class_symbol_supplement()
{
  a_class_symbol_supplement *supplement =
      (a_class_symbol_supplement *)alloc_cleared(sizeof(a_class_symbol_supplement));
  supplement->class_scope_number = -1;
  supplement->not_cplusplus = C_dialect != 2;
  return supplement;
}

void set_symbol_kind(a_symbol *symbol, a_symbol_kind kind)
{
  symbol->kind = kind;
  memset(&symbol->variant, 0, sizeof(symbol->variant));
  if (symbol_kind_is_class(kind)) {
    symbol->variant.class_struct_union.supplement = alloc_class_symbol_supplement();
  } else if (kind == sk_enum_tag) {
    symbol->variant.enumeration.supplement =
        (an_enum_symbol_supplement *)alloc_cleared(sizeof(an_enum_symbol_supplement));
  } else if (kind == sk_namespace) {
    a_namespace_symbol_supplement *supplement =
        (a_namespace_symbol_supplement *)alloc_cleared(sizeof(a_namespace_symbol_supplement));
    supplement->symbol = symbol;
    supplement->scope_number = -1;
    symbol->variant.name_space.supplement = supplement;
  }
}

//---------------------------------------------------------------------------------------------
// Locators

void make_locator_for_symbol(a_symbol *symbol, a_symbol_locator *locator)
{
  *locator = cleared_locator;
  locator->header = symbol->header;
  locator->position = symbol->position;
  locator->symbol = symbol;
  if (symbol->is_class_member) {
    locator->qualifier_is_class = true;
    locator->qualifier.class_type = symbol->parent.class_type;
  } else {
    locator->qualifier.name_space = symbol->parent.name_space;
  }
}

void make_opname_locator(unsigned opname_kind, a_symbol_locator *locator,
                         a_source_position *position)
{
  check(opname_kind < num_opname_kinds);
  a_symbol_header *&header = opname_symbol_table[opname_kind];
  if (header == nullptr) {
    bool is_word = opname_kind >= onk_new && opname_kind <= onk_array_delete;
    header = make_private_header_of_two("operator", is_word ? " " : "", opname_texts[opname_kind]);
    header->is_opname = true;
    header->opname_kind = (unsigned char)opname_kind;
  }
  *locator = cleared_locator;
  locator->header = header;
  locator->is_opname = true;
  locator->position = *position;
}

// The list holds one header for each target type, so that one class may have several conversions.
void make_type_conversion_locator(a_type *type, a_symbol_locator *locator,
                                  a_source_position *position)
{
  a_symbol_header *header = conversion_header_list;
  while (header != nullptr && !identical_types(header->conversion_type, type))
    header = header->next_in_bucket;
  if (header == nullptr) {
    header = make_private_header("operator");
    header->is_conversion_name = true;
    header->conversion_type = type;
    header->next_in_bucket = conversion_header_list;
    conversion_header_list = header;
  }
  *locator = cleared_locator;
  locator->header = header;
  locator->is_conversion_name = true;
  locator->conversion_type = type;
  locator->position = *position;
}

void change_class_locator_into_constructor_locator(a_symbol_locator *locator,
                                                   a_symbol *class_symbol)
{
  a_class_symbol_supplement *supplement = class_supplement_of_symbol(class_symbol);
  if (supplement->constructor_header == nullptr) {
    supplement->constructor_header = make_private_header(class_symbol->header->identifier);
    supplement->constructor_header->is_constructor_name = true;
  }
  locator->header = supplement->constructor_header;
  locator->symbol = supplement->constructors;
}

void change_to_destructor_or_finalizer_locator(a_symbol_locator *locator, a_symbol *class_symbol)
{
  a_symbol *destructor = class_supplement_of_symbol(class_symbol)->destructor;
  locator->is_destructor_name = true;
  locator->symbol = destructor;
  if (destructor != nullptr) {
    locator->header = destructor->header;
    return;
  }
  uint32_t length = class_symbol->header->length;
  char *text = (char *)alloc_in_region(0, length + 2);
  text[0] = '~';
  memcpy(text + 1, class_symbol->header->identifier, length + 1);
  locator->header = find_symbol_header(text, length + 1);
}

//---------------------------------------------------------------------------------------------
// Initialisation

// An enumerator stands for its own constant unless a conversion has changed the value or the type.
static a_constant *constant_of_named_symbol(a_symbol *symbol, bool *must_compare)
{
  *must_compare = true;
  return symbol->kind == sk_constant ? constant_of_symbol(symbol) : nullptr;
}

void symbol_tbl_one_time_init()
{
  named_constant_hook = constant_of_named_symbol;
  const a_name_space_kind *spaces = C_dialect == 2 ? cplusplus_name_spaces : c_name_spaces;
  memcpy(name_space_for_symbol_kind, spaces, sizeof(name_space_for_symbol_kind));
  register_trans_unit_variable(symbols_with_no_scope);
  register_trans_unit_variable(file_scope_symbols_are_on_inactive_list);
}

void symbol_tbl_init()
{
  if (symbol_table.buckets == nullptr)
    alloc_symbol_table_buckets(initial_table_bits);
  else
    memset(symbol_table.buckets, 0, sizeof(a_symbol_header *) << (32 - symbol_table.shift));
  symbol_table.header_count = 0;
  next_scope_number = 1;
  decl_seq_counter = 0;
  symbols_with_no_scope = nullptr;
  error_symbol_header = nullptr;
  unnamed_symbol_header = nullptr;
  symbol_for_namespace_std = nullptr;
  conversion_header_list = nullptr;
  memset(opname_symbol_table, 0, sizeof(opname_symbol_table));
  file_scope_symbols_are_on_inactive_list = false;
}

void symbol_tbl_trans_unit_init()
{
  symbols_with_no_scope = nullptr;
  file_scope_symbols_are_on_inactive_list = false;
}
