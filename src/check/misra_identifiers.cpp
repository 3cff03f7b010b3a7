// misra_identifiers.cpp - the rules on names of the standard library: 20.1, 20.2, 20.4 to 20.12.
// Owns:    the table of the names of C90.
// Entry:   check_for_invalid_identifier, check_for_misra_20_1, check_for_misra_20_2,
//          lookup_ansi_c_identifier.
#include <cstring>
#include "CONTAINERS/sdshash.h"
#include "check/misra.h"
#include "driver/flags.h"
#include "errors/error.h"
#include "parse/scope_stk.h"
#include "parse/symbol_tbl.h"

static const an_ansi_c_identifier identifiers[] = {
#define H ansi_c_header
#define T ansi_c_type
#define F ansi_c_function
#define M ansi_c_function_macro
#define O ansi_c_object
#define NAME(name, header, kinds, section, subsection) {name, header, kinds, section, subsection},
#include "check/misra_identifiers.def"
#undef H
#undef T
#undef F
#undef M
#undef O
};
static_assert(sizeof identifiers / sizeof *identifiers == 265, "all of C90's library, once");

static constexpr int num_buckets = 521;
static constexpr size_t longest_name = 15;

static SHASH *identifier_table;
// Bit n: the table has a name of n bytes that begins with this one.  It settles most names of a
// program.
static unsigned lengths_by_first_byte[256];

// What check_for_invalid_identifier reported last: a name of the library can be a macro that stands
// for itself or for another such name, which is one violation.
static a_source_position last_reported_pos;
static an_error_code last_reported_code;

//---------------------------------------------------------------------------------------------
// The table.

void misra_one_time_init()
{
  if (identifier_table != nullptr) return;
  identifier_table = new SHASH(SHASH::str_hash, SHASH::str_cmp, num_buckets);
  for (const an_ansi_c_identifier &row : identifiers) {
    identifier_table->add(row.name, const_cast<an_ansi_c_identifier *>(&row));
    lengths_by_first_byte[(unsigned char)row.name[0]] |= 1u << strlen(row.name);
  }
  last_reported_pos = null_source_position;
}

void misra_wrapup()
{
  delete identifier_table;
  identifier_table = nullptr;
  memset(lengths_by_first_byte, 0, sizeof lengths_by_first_byte);
}

const an_ansi_c_identifier *lookup_ansi_c_identifier(const char *name, size_t length)
{
  if (length > longest_name || (lengths_by_first_byte[(unsigned char)*name] >> length & 1) == 0) {
    return nullptr;
  }
  char key[longest_name + 1];
  memcpy(key, name, length);
  key[length] = '\0';
  SHASH::NODE *node = identifier_table->find(static_cast<void const *>(key));
  if (node == nullptr) return nullptr;
  return static_cast<an_ansi_c_identifier *>(static_cast<SHASH::ITEM *>(node->data)->value);
}

unsigned ansi_c_identifier_kind(const char *name, size_t length)
{
  const an_ansi_c_identifier *row = lookup_ansi_c_identifier(name, length);
  return row != nullptr ? row->kinds : unsigned(ansi_c_none);
}

//---------------------------------------------------------------------------------------------
// The rules.

void check_for_invalid_identifier(const char *name, const a_source_position *pos, unsigned kinds)
{
  const an_ansi_c_identifier *row = lookup_ansi_c_identifier(name, strlen(name));
  if (row == nullptr || row->section == 0 || (row->kinds & kinds) == 0) return;
  an_error_severity severity;
  a_misra_rule_kind rule_kind;
  // A header is named by the text of its rule.
  bool with_name = row->kinds != ansi_c_header;
  an_error_code code = misra_c_2004_offset_to_error_code(row->section, row->subsection, &severity,
                                                         &rule_kind, with_name);
  a_source_position place = pos != nullptr ? *pos : error_position;
  if (code == last_reported_code && same_position(place, last_reported_pos)) return;
  last_reported_code = code;
  last_reported_pos = place;
  if (pos != nullptr) {
    pos_st_diagnostic(severity, code, *pos, name);
  } else {
    st_diagnostic(severity, code, name);
  }
}

// Reserved for any use: an underscore, and then another one or a capital letter.
static bool is_reserved_name(const char *name, size_t length)
{
  return length > 1 && name[0] == '_' && (name[1] == '_' || (name[1] >= 'A' && name[1] <= 'Z'));
}

bool check_for_misra_20_1(const char *name, size_t length)
{
  if (depth_scope_stack < 0) return false;
  bool names_library = ansi_c_identifier_kind(name, length) != ansi_c_none;
  if (names_library) {
    diagnostic(misra_required_severity, ec_misra_c_2004_20_1);
  } else if (is_reserved_name(name, length)) {
    diagnostic(misra_advisory_severity, ec_misra_c_2004_20_1_adv);
  }
  return names_library;
}

void check_for_misra_20_2(const a_symbol_locator *locator)
{
  if (depth_scope_stack < 0 || is_null_position(locator->position)) return;
  const a_symbol_header *header = locator->header;
  if (ansi_c_identifier_kind(header->identifier, header->length) == ansi_c_none) return;
  pos_st_diagnostic(misra_required_severity, ec_misra_c_2004_20_2, locator->position,
                    header->identifier);
}
