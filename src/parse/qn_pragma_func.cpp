// qn_pragma_func.cpp - pragmas of the target about functions, and those about functions and objects alike.
// Uses:    operands and records of qn_pragma.cpp, sections (lex/sections.h).
// Entry:   the functions that rows of lex/pragmas.def name; pragma_interrupt_backend.
#include <cctype>
#include <cstdio>

#include "driver/flags.h"
#include "il/il_alloc.h"
#include "il/il_entities.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "lex/sections.h"
#include "parse/decl_spec.h"
#include "parse/qn_pragma_private.h"

//---------------------------------------------------------------------------------------------
// Sections and options
//---------------------------------------------------------------------------------------------

bool proc_code_section_pragma(a_pending_pragma *pragma, a_symbol *symbol, a_statement *)
{
  const char *name;
  if (!scan_comma_behind_symbol(pragma) || !scan_pragma_string(pragma, &name) ||
      !end_of_pragma_operands(pragma)) {
    return true;
  }
  if (!is_routine_symbol(symbol)) {
    report_wrong_entity(pragma, ec_pragma_requires_func_def, symbol);
    return false;
  }
  if (set_routine_section_specification(routine_of_symbol(symbol), secspec_pragma, name,
                                        pragma->position)) {
    add_pragma_argument(name);
    keep_pragma(pragma, symbol, nullptr);
  }
  return false;
}

bool proc_function_options_pragma(a_pending_pragma *pragma, a_symbol *symbol, a_statement *)
{
  const char *options;
  if (!scan_comma_behind_symbol(pragma) || !scan_pragma_string(pragma, &options) ||
      !end_of_pragma_operands(pragma)) {
    return true;
  }
  if (!is_routine_symbol(symbol)) {
    report_wrong_entity(pragma, ec_pragma_requires_func_def, symbol);
    return false;
  }
  const a_source_correspondence *corresp = &routine_of_symbol(symbol)->source_corresp;
  if (symbol->defined && target_pragma_handlers.function_options != nullptr) {
    target_pragma_handlers.function_options(corresp->name, &corresp->decl_position);
  }
  add_pragma_argument(options);
  keep_pragma(pragma, symbol, nullptr);
  return false;
}

//---------------------------------------------------------------------------------------------
// Properties
//---------------------------------------------------------------------------------------------

void keep_static_entity(a_symbol *symbol)
{
  if (is_routine_symbol(symbol)) {
    a_routine *routine = routine_of_symbol(symbol);
    if (routine->storage_class == sc_static) routine->is_used = true;
  } else {
    a_variable *variable = variable_of_symbol(symbol);
    if (variable->storage_class == sc_static) variable->is_used = true;
  }
}

bool proc_function_pragma(a_pending_pragma *pragma, a_symbol *symbol, a_statement *)
{
  if (!end_of_pragma_operands(pragma)) return true;
  if (!is_routine_symbol(symbol)) {
    report_wrong_entity(pragma, ec_pragma_requires_func, symbol);
    return false;
  }
  if (pragma->description->kind == pragk_hook_function) keep_static_entity(symbol);
  keep_pragma(pragma, symbol, nullptr);
  return false;
}

bool proc_function_definition_pragma(a_pending_pragma *pragma, a_symbol *symbol, a_statement *)
{
  if (!end_of_pragma_operands(pragma)) return true;
  bool fits = is_function_definition(symbol) ||
              (is_routine_symbol(symbol) && routine_of_symbol(symbol)->is_defined);
  if (!fits) {
    report_wrong_entity(pragma, ec_pragma_requires_func_def, symbol);
    return false;
  }
  if (pragma->description->kind == pragk_func_ext_called) keep_static_entity(symbol);
  keep_pragma(pragma, symbol, nullptr);
  return false;
}

// A variable that isn't of this unit has nothing to keep.
static bool has_storage_here(a_symbol *symbol)
{
  return is_variable_symbol(symbol) && variable_of_symbol(symbol)->storage_class != sc_extern;
}

bool proc_keep_pragma(a_pending_pragma *pragma, a_symbol *symbol, a_statement *)
{
  if (!end_of_pragma_operands(pragma)) return true;
  if (!is_function_definition(symbol)) {
    if (!has_storage_here(symbol)) {
      report_wrong_entity(pragma, ec_pragma_requires_func_or_obj_def, symbol);
      return false;
    }
    if (!check_data_symbol(pragma, symbol)) return false;
  }
  if (pragma->description->kind == pragk_retain) keep_static_entity(symbol);
  keep_pragma(pragma, symbol, nullptr);
  return false;
}

// A name that only this unit sees can't yield to another unit's.
static void make_weak(a_symbol *symbol)
{
  if (is_routine_symbol(symbol)) {
    a_routine *routine = routine_of_symbol(symbol);
    if (routine->storage_class != sc_static) routine->weak_state = ws_weak;
  } else {
    a_variable *variable = variable_of_symbol(symbol);
    if (variable->storage_class != sc_static) variable->weak_state = ws_weak;
  }
}

bool proc_weak_pragma(a_pending_pragma *pragma, a_symbol *symbol, a_statement *)
{
  if (!end_of_pragma_operands(pragma)) return true;
  bool fits = (is_variable_symbol(symbol) || is_routine_symbol(symbol)) &&
              !is_local_symbol(symbol) && !is_block_extern_symbol(symbol);
  if (!fits) {
    report_wrong_entity(pragma, ec_pragma_requires_level_zero, symbol);
    return false;
  }
  make_weak(symbol);
  keep_pragma(pragma, symbol, nullptr);
  return false;
}

bool proc_memory_model_pragma(a_pending_pragma *pragma, a_symbol *symbol, a_statement *)
{
  if (!end_of_pragma_operands(pragma)) return true;
  if (!is_routine_symbol(symbol) && !is_variable_symbol(symbol)) {
    pos_error(ec_pragma_symbol_invalid, pragma->position);
    return false;
  }
  add_decl_modifier(symbol, pragma->description->kind == pragk_near ? dm_near : dm_far);
  keep_pragma(pragma, symbol, nullptr);
  return false;
}

//---------------------------------------------------------------------------------------------
// Interrupts
//---------------------------------------------------------------------------------------------

bool proc_interrupt_threshold_pragma(a_pending_pragma *pragma, a_symbol *symbol, a_statement *)
{
  if (!is_routine_symbol(symbol)) {
    report_wrong_entity(pragma, ec_pragma_requires_func, symbol);
    return true;
  }
  long long threshold;
  if (!scan_comma_behind_symbol(pragma) || !scan_pragma_number(pragma, &threshold) ||
      !end_of_pragma_operands(pragma)) {
    return true;
  }
  char text[24];
  snprintf(text, sizeof text, "%lld", threshold);
  add_pragma_argument(text);
  keep_pragma(pragma, symbol, nullptr);
  return false;
}

bool pragma_interrupt_backend(a_pending_pragma *pragma, a_symbol *symbol)
{
  if (!is_routine_symbol(symbol)) {
    pos_warning(ec_pragma_interrupt_requires_void, pragma->position);
    return false;
  }
  a_type *type = skip_typerefs(routine_of_symbol(symbol)->type);
  if (type->kind != tk_routine) return false;
  bool good = true;
  if (!is_void_type(as_routine(type).return_type)) {
    pos_error(ec_pragma_interrupt_requires_void, pragma->position);
    good = false;
  }
  if (routine_supplement_of(type)->param_types != nullptr) {
    pos_error(ec_pragma_interrupt_has_params, pragma->position);
    good = false;
  }
  if (!good) return false;
  bool is_nmi = pragma->description->kind == pragk_nmi_interrupt;
  add_decl_modifier(symbol, is_nmi ? dm_interrupt | dm_nmi_interrupt : dm_interrupt);
  keep_static_entity(symbol);
  keep_pragma(pragma, symbol, nullptr);
  return true;
}

// The kind of interrupt, a word or a string, is kept in capitals.
static bool scan_interrupt_kind(const a_pending_pragma *pragma)
{
  const char *word;
  if (curr_token == tok_identifier) {
    word = locator_for_curr_id.header->identifier;
    get_token();
  } else if (!scan_pragma_string(pragma, &word)) {
    return false;
  }
  char *capitals = copy_string_to_region(true, word);
  for (char *p = capitals; *p != '\0'; ++p)
    *p = (char)toupper((unsigned char)*p);
  add_pragma_argument(capitals);
  return true;
}

bool proc_interrupt_pragma(a_pending_pragma *pragma, a_symbol *symbol, a_statement *)
{
  bool has_kind = names_its_symbol(pragma)
                      ? curr_token == tok_comma
                      : curr_token != tok_rparen && curr_token != tok_end_of_source;
  if (has_kind) {
    if (!scan_comma_behind_symbol(pragma) || !scan_interrupt_kind(pragma)) return true;
  }
  if (!end_of_pragma_operands(pragma)) return true;
  pragma_interrupt_backend(pragma, symbol);
  return false;
}
