// symbol_ref.cpp - declarations and references: marks, use-before-set, deprecation, cross reference.
// Owns:    curr_flow_context (writer: the statement scanner).
// Entry:   record_symbol_declaration, record_symbol_reference_full, mark_variable_value_set.
#include "parse/symbol_ref.h"

#include <cstdio>

#include "driver/flags.h"
#include "errors/error.h"
#include "errors/misra_hooks.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "lex/source_input.h"
#include "parse/attribute.h"
#include "parse/decls.h"
#include "parse/exprutil.h"
#include "parse/func_def.h"
#include "parse/scope_stk.h"

uint32_t curr_flow_context;

//---------------------------------------------------------------------------------------------
// Cross reference

void write_xref_entry(char mark, a_symbol *symbol, const a_source_position *position)
{
  if (f_xref_info == nullptr || position->seq == 0 || symbol->is_predeclared) return;
  const char *file_name, *full_name;
  a_line_number line;
  bool at_end_of_file;
  conv_seq_to_file_and_line(position->seq, &file_name, &full_name, &line, &at_end_of_file);
  fprintf(f_xref_info, "%c\t%s\t%s\t%s\t%lu\t%u\n", mark, symbol->header->identifier,
          symbol_kind_names[symbol->kind], file_name, (unsigned long)line,
          (unsigned)position->column);
}

static char xref_mark_of_reference(unsigned ref_kind)
{
  if (ref_kind & rk_error) return 'E';
  if (ref_kind & rk_address_taken) return 'A';
  if ((ref_kind & rk_read_modified) == rk_read_modified) return 'C';
  if (ref_kind & rk_modified) return 'M';
  return ref_kind & rk_read ? 'U' : 'R';
}

//---------------------------------------------------------------------------------------------
// Declarations

static bool is_automatic_variable(a_symbol *symbol)
{
  if (symbol->kind != sk_variable || variable_of_symbol(symbol) == nullptr) return false;
  a_storage_class storage = variable_of_symbol(symbol)->storage_class;
  return storage == sc_auto || storage == sc_register;
}

void record_symbol_declaration(uint32_t flags, a_symbol *symbol, const a_source_position *position,
                               a_decl_position_supplement *supplement)
{
  if (!symbol->declared) {
    symbol->declared = true;
    symbol->position = *position;
    a_source_correspondence *corresp = source_corresp_entry_for_symbol(symbol);
    if (corresp != nullptr) {
      corresp->decl_position = *position;
      if (supplement != nullptr) corresp->decl_position_supplement = supplement;
    }
    if (symbol->kind == sk_variable) {
      symbol->variant.variable.loop_depth = curr_flow_context;
      // What has static duration starts as zero; a parameter comes with its value.
      if (symbol->is_parameter || !is_automatic_variable(symbol)) symbol->value_set = true;
    }
    if (check_misra_c_2004) misra_hooks.check_symbol_uniqueness(symbol);
  }
  if (flags & rdf_definition) symbol->defined = true;
  if (f_xref_info != nullptr) {
    write_xref_entry(flags & rdf_definition ? 'D' : 'd', symbol, position);
  }
}

void mark_variable_value_set(a_symbol *symbol)
{
  if (symbol->kind == sk_projection) symbol = projected_symbol_of(symbol);
  symbol->value_set = true;
}

//---------------------------------------------------------------------------------------------
// Uses that are reported

// The first read of an automatic variable before anything was stored in it.  A loop or a label between
// declaration and use means that the value may come from later text.
static void check_used_before_set(a_symbol *symbol, const a_source_position *position)
{
  if (symbol->value_set || symbol->used_before_set_reported || !is_automatic_variable(symbol))
    return;
  if (symbol->variant.variable.loop_depth != curr_flow_context) return;
  a_type *type = skip_typerefs(variable_of_symbol(symbol)->type);
  if (type->kind == tk_array || is_or_contains_volatile(variable_of_symbol(symbol)->type)) return;
  symbol->used_before_set_reported = true;
  if (check_misra_c_2004 &&
      misra_c_2004_generate_diagnostic(ec_misra_c_2004_9_1, misra_required_severity)) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_9_1, *position);
  } else {
    pos_sy_warning(ec_used_before_set, *position, symbol);
  }
}

bool check_use_of_deleted_function(a_routine *routine, a_source_position *position)
{
  if (!routine->is_deleted) return false;
  if (routine->source_corresp.assoc_symbol != nullptr) {
    pos_sy_error(ec_deleted_function, *position, routine->source_corresp.assoc_symbol);
  }
  return true;
}

void check_use_of_deprecated_entity(a_source_correspondence *corresp, an_il_entry_kind,
                                    a_source_position *position)
{
  if (!corresp->is_deprecated || corresp->assoc_symbol == nullptr) return;
  const char *text = deprecation_message_of(corresp->attributes);
  if (text != nullptr && *text != '\0') {
    pos_stsy_warning(ec_deprecated_entity_with_custom_message, *position, text,
                     corresp->assoc_symbol);
  } else {
    pos_sy_warning(ec_deprecated_entity, *position, corresp->assoc_symbol);
  }
}

void reference_to_invalid_name(a_symbol_locator *locator, a_source_position *position)
{
  if (locator->header == nullptr) return; // the scanner has reported what stood there
  a_symbol *symbol = locator->symbol;
  if (symbol == nullptr || symbol->kind != sk_undefined) symbol = enter_undefined_symbol(locator);
  if (!symbol->error_reported) {
    symbol->error_reported = true;
    pos_st_error(ec_undefined_identifier, *position, locator->header->identifier);
  }
  write_xref_entry('E', symbol, position);
}

//---------------------------------------------------------------------------------------------
// References

static void mark_entity_referenced(a_symbol *symbol)
{
  a_source_correspondence *corresp = source_corresp_entry_for_symbol(symbol);
  if (corresp != nullptr) corresp->referenced = true;
}

void mark_routine_referenced_full(a_routine *routine, bool is_evaluated)
{
  routine->source_corresp.referenced = true;
  if (is_evaluated && (routine->is_compiler_generated || routine->is_defaulted)) {
    generated_routine_is_needed(routine);
  }
  if (routine->source_corresp.assoc_symbol != nullptr) {
    routine->source_corresp.assoc_symbol->referenced = true;
  }
}

void mark_routine_referenced(a_routine *routine)
{
  mark_routine_referenced_full(routine, true);
}

void mark_variable_referenced(a_variable *variable)
{
  variable->source_corresp.referenced = true;
  if (variable->source_corresp.assoc_symbol != nullptr) {
    variable->source_corresp.assoc_symbol->referenced = true;
  }
}

static void record_variable_use(unsigned ref_kind, a_symbol *symbol,
                                const a_source_position *position, bool is_evaluated)
{
  bool only_modified =
      (ref_kind & rk_read_modified) == rk_modified && !(ref_kind & rk_address_taken);
  if (!only_modified) symbol->address_or_read = true;
  if (is_evaluated && (ref_kind & rk_read) && ref_kind != rk_read_folded) {
    check_used_before_set(symbol, position);
  }
  if (ref_kind & (rk_modified | rk_address_taken)) symbol->value_set = true;
}

void record_symbol_reference_full(unsigned ref_kind, a_symbol *symbol,
                                  const a_source_position *position, bool is_evaluated,
                                  bool update_needed)
{
  if (depth_scope_stack >= 0 && top_scope()->suppress_references) return;
  if (symbol->kind == sk_projection) symbol = projected_symbol_of(symbol);
  if (f_xref_info != nullptr) {
    write_xref_entry(xref_mark_of_reference(ref_kind), symbol, position);
  }
  if (ref_kind & rk_error) return;
  symbol->referenced = true;
  switch (symbol->kind) {
  case sk_variable: record_variable_use(ref_kind, symbol, position, is_evaluated); break;
  case sk_routine:
  case sk_member_function:
    if (update_needed) mark_routine_referenced_full(routine_of_symbol(symbol), is_evaluated);
    break;
  default: break;
  }
  if (update_needed) mark_entity_referenced(symbol);
  a_source_correspondence *corresp = source_corresp_entry_for_symbol(symbol);
  if (corresp != nullptr && corresp->is_deprecated) {
    a_source_position place = *position;
    check_use_of_deprecated_entity(corresp, iek_none, &place);
  }
}

void record_symbol_reference(unsigned ref_kind, a_symbol *symbol, const a_source_position *position,
                             bool is_evaluated)
{
  record_symbol_reference_full(ref_kind, symbol, position, is_evaluated, true);
}
