// attribute_scan.cpp - attributes in the source: the three syntaxes, names, arguments.
// Owns:    the name table, the list that unscan_attributes put back.
// Rule:    an attribute that nobody knows is reported once where it stands and left out with its
//          arguments; what is wrong with known ones leaves a record of kind ak_dropped.
// See:     attributes.def for the forms of arguments and the availability.
#include <cstring>

#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/token_cache.h"
#include "parse/attribute_private.h"
#include "parse/decls.h"
#include "parse/expr.h"
#include "parse/symbol_tbl.h"

struct an_attribute_name {
  const char *name;
  const char *arguments;
  const char *availability;
  an_attribute_kind kind;
  an_attribute_name *next; // further row of the name
};

static an_attribute_name attribute_names[] = {
#define ATTRIBUTE(name, arguments, availability, kind)                                             \
  {name, arguments, availability, kind, nullptr},
#include "parse/attributes.def"
};

static a_hash_table *attribute_table;
static an_attribute *unscanned_attributes;

//---------------------------------------------------------------------------------------------
// The name table.

static uint32_t hash_attribute_name(const void *key)
{
  return hash_source_string((const char *)key);
}

static bool same_attribute_name(const void *value, const void *key)
{
  return strcmp(((const an_attribute_name *)value)->name, (const char *)key) == 0;
}

static void fill_attribute_table()
{
  attribute_table = alloc_hash_table(0, 67, hash_attribute_name, same_attribute_name);
  for (an_attribute_name &row : attribute_names) {
    row.next = nullptr;
    an_attribute_name **slot = (an_attribute_name **)hash_find(attribute_table, row.name, true);
    while (*slot)
      slot = &(*slot)->next;
    *slot = &row;
  }
}

// A version range "(from-to)" behind the letters of an availability.
static bool version_fits(const char *range, unsigned version)
{
  if (*range != '(') return true;
  unsigned from = 0, to = 0;
  const char *p = range + 1;
  for (; *p >= '0' && *p <= '9'; ++p)
    from = from * 10 + unsigned(*p - '0');
  bool open = *p == '-' && p[1] == ')';
  if (*p == '-') {
    for (++p; *p >= '0' && *p <= '9'; ++p)
      to = to * 10 + unsigned(*p - '0');
  } else {
    to = from;
  }
  return version >= from && (open || version <= to);
}

static bool is_available(const an_attribute_name *row, an_attribute_syntax syntax)
{
  const char *p = row->availability;
  if (*p == '1') ++p;
  static const char letters[] = {0, 'c', 'g', 'm'};
  if (*p++ != letters[syntax]) return false;
  if (*p == 'c' && C_dialect == 2) return false;
  if (*p == '+' && C_dialect != 2) return false;
  return version_fits(p + 1, gnu_version);
}

// `__name__` is `name` in a GNU attribute.
static const char *reduced_name(const char *name, an_attribute_syntax syntax, char *buffer)
{
  size_t length = strlen(name);
  bool decorated = length >= 5 && length <= 104 && memcmp(name, "__", 2) == 0 &&
                   memcmp(name + length - 2, "__", 2) == 0;
  if (syntax != asy_gnu || !decorated) return name;
  memcpy(buffer, name + 2, length - 4);
  buffer[length - 4] = '\0';
  return buffer;
}

static an_attribute_name *find_attribute_name(const char *name, an_attribute_syntax syntax)
{
  if (attribute_table == nullptr) fill_attribute_table();
  char buffer[128];
  const char *key = reduced_name(name, syntax, buffer);
  an_attribute_name **slot = (an_attribute_name **)hash_find(attribute_table, key, false);
  for (an_attribute_name *row = slot ? *slot : nullptr; row; row = row->next) {
    if (is_available(row, syntax)) return row;
  }
  return nullptr;
}

//---------------------------------------------------------------------------------------------
// Arguments.

static an_attribute_arg *add_arg(an_attribute *attribute, an_attribute_arg_kind kind)
{
  an_attribute_arg *arg = alloc_attribute_arg();
  arg->kind = kind;
  arg->position = pos_curr_token;
  an_attribute_arg **link = &attribute->args;
  while (*link)
    link = &(*link)->next;
  *link = arg;
  return arg;
}

static void drop(an_attribute *attribute)
{
  attribute->kind = ak_dropped;
}

static void skip_balanced_arguments()
{
  if (curr_token != tok_lparen) return;
  flush_until_matching_token();
  if (curr_token == tok_rparen) get_token();
}

static void constant_argument(an_attribute *attribute, bool must_be_integer)
{
  an_attribute_arg *arg = add_arg(attribute, aak_constant);
  a_constant constant;
  scan_fs_integral_constant_expression(&constant);
  if (constant.kind != ck_integer) {
    if (must_be_integer && constant.kind != ck_error && constant.kind != ck_template_param) {
      pos_error(ec_exp_int_constant, arg->position);
    }
    drop(attribute);
  }
  arg->variant.constant = alloc_unshared_constant_full(&constant, true);
}

static void type_or_constant_argument(an_attribute *attribute)
{
  if (!is_type_start(dst_cast)) {
    constant_argument(attribute, true);
    return;
  }
  an_attribute_arg *arg = add_arg(attribute, aak_type);
  type_name(&arg->variant.type);
}

static void string_argument_token(an_attribute *attribute, bool must_be_narrow)
{
  if (curr_token != tok_string_literal ||
      (must_be_narrow && const_for_curr_token.char_kind != chk_char)) {
    pos_error(ec_exp_string_literal, pos_curr_token);
    drop(attribute);
    if (curr_token != tok_rparen && curr_token != tok_comma) get_token();
    return;
  }
  an_attribute_arg *arg = add_arg(attribute, aak_constant);
  arg->variant.constant = alloc_unshared_constant_full(&const_for_curr_token, true);
  get_token();
}

static const char *text_of_name_token()
{
  if (curr_token == tok_identifier) return locator_for_curr_id.header->identifier;
  return is_keyword_token(curr_token) ? token_names[curr_token] : nullptr;
}

static void name_argument_token(an_attribute *attribute)
{
  const char *text = text_of_name_token();
  if (text == nullptr) {
    pos_error(ec_exp_identifier, pos_curr_token);
    drop(attribute);
    return;
  }
  add_arg(attribute, aak_name)->variant.text = text;
  get_token();
}

// One item of an argument form; returns the place behind it in the form.
static const char *one_argument(an_attribute *attribute, const char *item)
{
  switch (*item) {
  case 'c':
    if (item[1] == 't') {
      type_or_constant_argument(attribute);
    } else {
      constant_argument(attribute, true);
    }
    return item + 2;
  case 's': string_argument_token(attribute, item[1] == 'n'); return item + 2;
  case 'n': name_argument_token(attribute); return item + 1;
  default: return item + 1;
  }
}

static void skip_to_end_of_arguments()
{
  int level = 0;
  while (curr_token != tok_end_of_source && curr_token != tok_semicolon &&
         curr_token != tok_lbrace) {
    if (curr_token == tok_lparen) ++level;
    if (curr_token == tok_rparen && level-- == 0) return;
    get_token();
  }
}

// The items behind the `(`, by the form.
static void argument_items(an_attribute *attribute, const char *form)
{
  const char *item = form + 1;
  bool optional = false;
  for (;;) {
    if (*item == '?') {
      optional = true;
      ++item;
    }
    if (*item == '*') {
      skip_to_end_of_arguments();
      return;
    }
    const char *start = item;
    item = one_argument(attribute, item);
    if (*item == '?') {
      optional = true;
      ++item;
    }
    bool repeated = *item == '+';
    if (curr_token != tok_comma) {
      if (*item == ',' && !optional) {
        pos_error(ec_exp_comma, pos_curr_token);
        drop(attribute);
      }
      return;
    }
    if (!repeated && *item != ',') return;
    get_token();
    item = repeated ? start : item + 1;
  }
}

static void scan_arguments(an_attribute *attribute, const char *form)
{
  if (*form == '\0') {
    if (curr_token != tok_lparen) return;
    pos_st_error(ec_arguments_provided_for_attribute, pos_curr_token, attribute->name);
    skip_balanced_arguments();
    drop(attribute);
    return;
  }
  bool optional = *form == '?';
  if (optional) ++form;
  if (curr_token != tok_lparen) {
    if (optional) return;
    pos_st_error(ec_missing_attribute_arguments, attribute->position, attribute->name);
    drop(attribute);
    return;
  }
  get_token();
  add_stop_token(tok_rparen);
  if (curr_token == tok_rparen) {
    if (form[1] != '*' && form[1] != '?') {
      pos_st_error(ec_invalid_empty_attribute_arg_list, pos_curr_token, attribute->name);
      drop(attribute);
    }
  } else {
    argument_items(attribute, form);
  }
  remove_stop_token(tok_rparen);
  if (curr_token == tok_rparen) {
    get_token();
    return;
  }
  pos_error(ec_unbalanced_attribute_argument, pos_curr_token);
  drop(attribute);
  skip_to_end_of_arguments();
  if (curr_token == tok_rparen) get_token();
}

//---------------------------------------------------------------------------------------------
// Lists.

// A repetition within one group: refused where the row says so.
static bool is_refused_repetition(const an_attribute_name *row, an_attribute *group_start,
                                  a_source_position position)
{
  for (an_attribute *attribute = group_start; attribute; attribute = attribute->next) {
    if (attribute->kind != row->kind) continue;
    bool once = row->availability[0] == '1';
    if (!once && row->arguments[0] != '\0') return false;
    pos_st_diagnostic(once ? es_error : es_remark, ec_attr_twice_in_group, position, row->name);
    return once;
  }
  return false;
}

static an_attribute *one_attribute(an_attribute_syntax syntax, an_attribute_location_tag location,
                                   an_attribute *group_start)
{
  const char *name = text_of_name_token();
  a_source_position position = pos_curr_token;
  if (name == nullptr) {
    pos_error(ec_exp_attribute_name, position);
    if (curr_token != tok_rparen && curr_token != tok_rbracket) get_token();
    return nullptr;
  }
  get_token();
  if (syntax == asy_standard && curr_token == tok_colon_colon) {
    get_token();
    name = text_of_name_token();
    if (name) get_token();
    if (name == nullptr) return nullptr;
  }
  an_attribute_name *row = find_attribute_name(name, syntax);
  if (row == nullptr) {
    pos_st_warning(ec_unrecognized_attribute, position, name);
    skip_balanced_arguments();
    return nullptr;
  }
  an_attribute *attribute = alloc_attribute();
  attribute->kind = row->kind;
  attribute->syntax = syntax;
  attribute->location = location;
  attribute->name = row->name;
  attribute->position = position;
  const char *entities = attribute_kind_descriptions[row->kind].entities;
  attribute->is_type_attribute = entities && *entities == 'T';
  if (is_refused_repetition(row, group_start, position)) drop(attribute);
  scan_arguments(attribute, row->arguments);
  attribute->end_position = pos_curr_token;
  return attribute;
}

// The attributes up to `end`; appends to the list behind *link.
static void attribute_list(an_attribute_syntax syntax, an_attribute_location_tag location,
                           a_token_kind end, an_attribute **link)
{
  an_attribute **group = link;
  add_stop_token(end);
  while (curr_token != end && curr_token != tok_end_of_source && curr_token != tok_semicolon) {
    if (curr_token == tok_comma) {
      get_token();
      continue;
    }
    unsigned sequence_number = curr_token_sequence_number;
    an_attribute *attribute = one_attribute(syntax, location, *group);
    if (attribute) {
      *link = attribute;
      link = &attribute->next;
    }
    if (curr_token == tok_comma || curr_token == end) continue;
    if (syntax == asy_declspec && curr_token_sequence_number != sequence_number) continue;
    syntax_error(end == tok_rparen ? ec_exp_rparen : ec_exp_rbracket);
    break;
  }
  remove_stop_token(end);
}

static void gnu_group(an_attribute_location_tag location, an_attribute **link)
{
  get_token();
  if (!required_token(tok_lparen, ec_exp_lparen)) return;
  add_stop_token(tok_rparen);
  if (required_token(tok_lparen, ec_exp_lparen)) {
    attribute_list(asy_gnu, location, tok_rparen, link);
    required_token(tok_rparen, ec_exp_rparen);
  }
  remove_stop_token(tok_rparen);
  required_token(tok_rparen, ec_exp_rparen);
}

static void declspec_group(an_attribute_location_tag location, an_attribute **link)
{
  get_token();
  if (!required_token(tok_lparen, ec_exp_lparen)) return;
  attribute_list(asy_declspec, location, tok_rparen, link);
  required_token(tok_rparen, ec_exp_rparen);
}

static void standard_group(an_attribute_location_tag location, an_attribute **link)
{
  get_token();
  get_token();
  attribute_list(asy_standard, location, tok_rbracket, link);
  required_token(tok_rbracket, ec_exp_rbracket);
  required_token(tok_rbracket, ec_exp_rbracket);
}

static bool declspec_location(an_attribute_location_tag location)
{
  return location == al_decl_start || location == al_specifiers || location == al_tag;
}

an_attribute *scan_attributes(an_attribute_location_tag location)
{
  an_attribute *list = unscanned_attributes;
  unscanned_attributes = nullptr;
  for (an_attribute *attribute = list; attribute; attribute = attribute->next) {
    attribute->location = location;
  }
  for (;;) {
    an_attribute **link = f_last_attribute_link(&list);
    if (curr_token == tok_attribute && gnu_attributes_enabled) {
      gnu_group(location, link);
    } else if (curr_token == tok_declspec && ms_declspec_attributes_enabled &&
               declspec_location(location)) {
      declspec_group(location, link);
    } else if (curr_token == tok_lbracket && std_attributes_enabled &&
               next_token() == tok_lbracket) {
      standard_group(location, link);
    } else {
      return list;
    }
  }
}

an_attribute *scan_gnu_attribute_groups(an_attribute_location_tag location)
{
  an_attribute *list = nullptr;
  while (curr_token == tok_attribute)
    gnu_group(location, f_last_attribute_link(&list));
  return list;
}

void unscan_attributes(an_attribute *list)
{
  unscanned_attributes = list;
}

void skip_over_attributes()
{
  while (curr_token == tok_attribute || curr_token == tok_declspec) {
    get_token();
    skip_balanced_arguments();
  }
}

void attribute_init()
{
  attribute_table = nullptr;
  unscanned_attributes = nullptr;
}
