// qn_pragma_data.cpp - pragmas of the target about objects and types: sections, alignment, banks, addresses.
// Uses:    operands and records of qn_pragma.cpp, sections (lex/sections.h).
// Entry:   the functions that rows of lex/pragmas.def name; the backends shared with attributes.
#include <cstdio>
#include <cstring>

#include "consts/const_ints.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "il/il_entities.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "lex/sections.h"
#include "parse/decl_spec.h"
#include "parse/decls.h"
#include "parse/layout.h"
#include "parse/lookup.h"
#include "parse/qn_pragma_private.h"

//---------------------------------------------------------------------------------------------
// Sections
//---------------------------------------------------------------------------------------------

bool proc_data_section_pragma(a_pending_pragma *pragma, a_symbol *symbol, a_statement *)
{
  const char *name;
  if (!scan_comma_behind_symbol(pragma) || !scan_pragma_string(pragma, &name) ||
      !end_of_pragma_operands(pragma)) {
    return true;
  }
  if (!check_data_symbol(pragma, symbol)) return false;
  if (set_variable_section_specification(variable_of_symbol(symbol), secspec_pragma, name,
                                         pragma->position)) {
    add_pragma_argument(name);
    keep_pragma(pragma, symbol, nullptr);
  }
  return false;
}

//---------------------------------------------------------------------------------------------
// Alignment
//---------------------------------------------------------------------------------------------

static uint32_t top_level_alignment(const a_variable *variable)
{
  return variable->alignment != 0 ? variable->alignment : f_alignment_of_type(variable->type);
}

// A power of two (818) that the target can align to (819).
static bool check_alignment_operand(const a_pending_pragma *pragma, const a_constant *constant,
                                    uint32_t *alignment)
{
  bool overflow = false;
  unsigned long long value = unsigned_value_of_integer_constant(constant, &overflow);
  const char *name = name_of_pragma(pragma);
  if (cmplit_integer_constant(constant, 0) <= 0 || (!overflow && (value & (value - 1)) != 0)) {
    pos_st_warning(ec_pragma_icon_not_pow2, pragma->position, name);
    return false;
  }
  if (overflow || !check_pack_alignment_value(constant, alignment)) {
    pos_st_warning(ec_pragma_alignment_too_large, pragma->position, name);
    return false;
  }
  return true;
}

static void add_number_argument(unsigned long long number)
{
  char text[24];
  snprintf(text, sizeof text, "%llu", number);
  add_pragma_argument(text);
}

// The value, with 23 for one that no number holds.
static bool scan_alignment_operand(a_pending_pragma *pragma, a_constant *constant)
{
  if (!scan_pragma_constant(pragma, constant)) return false;
  bool overflow = false;
  unsigned_value_of_integer_constant(constant, &overflow);
  if (!overflow || cmplit_integer_constant(constant, 0) < 0) return true;
  pos_error(ec_integer_too_large, pragma->position);
  return false;
}

static void report_bank_and_alignment(const a_pending_pragma *pragma, const a_symbol *symbol)
{
  pos_st_warning(ec_bad_membank_align_use, pragma->position, symbol->header->identifier);
}

bool proc_data_align_pragma(a_pending_pragma *pragma, a_symbol *symbol, a_statement *)
{
  a_constant constant;
  uint32_t alignment;
  if (!scan_comma_behind_symbol(pragma) || !scan_alignment_operand(pragma, &constant) ||
      !end_of_pragma_operands(pragma)) {
    return true;
  }
  if (!check_data_symbol(pragma, symbol) ||
      !check_alignment_operand(pragma, &constant, &alignment)) {
    return false;
  }
  a_variable *variable = variable_of_symbol(symbol);
  if (variable->decl_modifiers & dm_data_mem_bank) {
    report_bank_and_alignment(pragma, symbol);
    return false;
  }
  if (top_level_alignment(variable) < alignment) variable->alignment = alignment;
  add_decl_modifier(symbol, dm_data_align);
  add_number_argument(alignment);
  keep_pragma(pragma, symbol, nullptr);
  return false;
}

//---------------------------------------------------------------------------------------------
// Types
//---------------------------------------------------------------------------------------------

// The symbol of a complete class type: itself a tag, or a typedef of one; or null.
static a_symbol *structure_of_symbol(a_symbol *symbol)
{
  if (symbol == nullptr || !is_type_symbol(symbol)) return nullptr;
  a_type *type = skip_typerefs(type_of_entity_symbol(symbol));
  if (!kind_has_class_part(type->kind) || is_incomplete_type(type)) return nullptr;
  return type->source_corresp.assoc_symbol;
}

// A name is one of a tag before it is one of a typedef.
static a_symbol *scan_structure_name()
{
  a_symbol_locator locator = locator_for_curr_id;
  a_symbol *symbol = normal_id_lookup(&locator, lo_tag);
  if (symbol == nullptr) {
    locator = locator_for_curr_id;
    symbol = normal_id_lookup(&locator, 0);
  }
  get_token();
  return structure_of_symbol(symbol);
}

// "struct" and "union" with a tag; any other type keyword names no structure.
static a_symbol *scan_structure_operand()
{
  if (curr_token == tok_struct || curr_token == tok_union) get_token();
  return curr_token == tok_identifier ? scan_structure_name() : nullptr;
}

// The objects that were laid out keep their places: only what is created from the type now is aligned.
bool proc_struct_align_pragma(a_pending_pragma *pragma, a_symbol *, a_statement *)
{
  a_constant constant;
  uint32_t alignment;
  if (!had_open_paren) {
    syntax_error(ec_exp_lparen);
    return true;
  }
  a_symbol *symbol = scan_structure_operand();
  if (symbol == nullptr) {
    pos_st_warning(ec_pragma_requires_struct_def, pragma->position, name_of_pragma(pragma));
    return true;
  }
  if (!scan_pragma_comma() || !scan_alignment_operand(pragma, &constant) ||
      !end_of_pragma_operands(pragma)) {
    return true;
  }
  if (!check_alignment_operand(pragma, &constant, &alignment)) return false;
  a_type *type = skip_typerefs(type_of_entity_symbol(symbol));
  if (type->alignment < alignment) type->alignment = alignment;
  add_number_argument(alignment);
  keep_pragma(pragma, symbol, nullptr);
  return false;
}

//---------------------------------------------------------------------------------------------
// Memory banks
//---------------------------------------------------------------------------------------------

static constexpr long long highest_mem_bank = 7; // in every class of silicon

// Banks are words of 4 bytes wide: a smaller object begins at an even one.
static bool TRG_legal_membank(const a_pending_pragma *pragma, a_symbol *symbol, long long *bank)
{
  if (*bank < 0 || *bank > highest_mem_bank) {
    pos_st_error(ec_pragma_not_mem_bank, pragma->position, name_of_pragma(pragma));
    return false;
  }
  a_type *type = skip_typerefs(variable_of_symbol(symbol)->type);
  if (*bank % 2 != 0 && !is_incomplete_type(type) && type->size < 4) {
    char given[24], even[24];
    snprintf(given, sizeof given, "%lld", *bank);
    snprintf(even, sizeof even, "%lld", --*bank);
    pos_ststst_warning(ec_even_bank_boundary, pragma->position, symbol->header->identifier, even,
                       given);
  }
  return true;
}

bool proc_mem_bank_pragma(a_pending_pragma *pragma, a_symbol *symbol, a_statement *)
{
  long long bank;
  if (!scan_comma_behind_symbol(pragma) || !scan_pragma_number(pragma, &bank) ||
      !end_of_pragma_operands(pragma)) {
    return true;
  }
  if (!is_variable_symbol(symbol)) {
    pos_st_warning(ec_bad_membank_symbol, pragma->position, name_of_pragma(pragma));
    return false;
  }
  long long given = bank;
  if (!TRG_legal_membank(pragma, symbol, &bank)) return false;
  if (variable_of_symbol(symbol)->alignment != 0) {
    report_bank_and_alignment(pragma, symbol);
    return false;
  }
  add_decl_modifier(symbol, dm_data_mem_bank);
  add_number_argument((unsigned long long)bank);
  if (bank != given) pragma->text = nullptr; // the number as scanned isn't the one in force
  keep_pragma(pragma, symbol, nullptr);
  return false;
}

//---------------------------------------------------------------------------------------------
// Places
//---------------------------------------------------------------------------------------------

static bool fits_in_pointer(const a_constant *address)
{
  bool overflow = false;
  unsigned long long value = unsigned_value_of_integer_constant(address, &overflow);
  if (overflow || cmplit_integer_constant(address, 0) < 0) return false;
  unsigned bits = (unsigned)targ_sizeof_pointer * 8;
  return bits >= 64 || value >> bits == 0;
}

bool pragma_location_backend(a_pending_pragma *pragma, a_symbol *symbol, const a_constant *address,
                             bool from_attribute)
{
  if (!fits_in_pointer(address)) {
    pos_st_warning(ec_pragma_location_value_too_large, pragma->position,
                   from_attribute ? "attribute" : "pragma");
    return false;
  }
  bool overflow;
  add_number_argument(unsigned_value_of_integer_constant(address, &overflow));
  keep_pragma(pragma, symbol, nullptr);
  return true;
}

bool proc_location_pragma(a_pending_pragma *pragma, a_symbol *symbol, a_statement *)
{
  if (!is_function_definition(symbol) && !check_data_symbol(pragma, symbol)) return true;
  a_constant address;
  if (!scan_comma_behind_symbol(pragma) || !scan_pragma_constant(pragma, &address) ||
      !end_of_pragma_operands(pragma)) {
    return true;
  }
  pragma_location_backend(pragma, symbol, &address, false);
  return false;
}

bool pragma_noinit_persistent_backend(a_pending_pragma *pragma, a_symbol *symbol,
                                      bool from_attribute)
{
  bool is_cpp = C_dialect == 2;
  bool is_noinit = pragma->description->kind == pragk_noinit;
  if (is_cpp ? !has_static_storage(symbol) : !is_file_level_object_definition(symbol)) {
    const char *attribute_name = is_noinit ? "noinit" : "persistent";
    pos_st_warning(is_cpp ? ec_requires_static_storage : ec_requires_level_zero_def,
                   pragma->position, from_attribute ? attribute_name : name_of_pragma(pragma));
    return false;
  }
  a_variable *variable = variable_of_symbol(symbol);
  if (is_noinit)
    variable->is_noinit = true;
  else
    variable->is_persistent = true;
  add_pragma_argument(symbol->header->identifier);
  keep_pragma(pragma, symbol, nullptr);
  return true;
}

bool proc_noinit_persistent_pragma(a_pending_pragma *pragma, a_symbol *symbol, a_statement *)
{
  if (!end_of_pragma_operands(pragma)) return true;
  if (is_routine_symbol(symbol)) {
    pos_st_warning(ec_pragma_cannot_apply_to_func, pragma->position, name_of_pragma(pragma));
    return false;
  }
  pragma_noinit_persistent_backend(pragma, symbol, false);
  return false;
}
