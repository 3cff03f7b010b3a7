// sections.cpp - which section a variable or routine goes to, and the pragmas that set it for a stretch.
// Owns:    curr_code_section, curr_data_section.
// Uses:    the section_specification of variables and routines, which the writer of the generated C
//          renders as an attribute.
// Rule:    what was said about the entity itself outlasts what a stretch of source gives to all.
// Entry:   set_..._section_specification, apply_..._block_section_specification,
//          process_set_section_pragma.
#include "lex/sections.h"

#include <cstring>

#include "driver/flags.h"
#include "errors/error.h"
#include "il/il_alloc.h"
#include "il/il_entities.h"
#include "lex/lexical.h"
#include "lex/pragma.h"
#include "lex/pragma_handlers.h"
#include "mem/registered_vars.h"

a_section_specification *curr_code_section, *curr_data_section;

static a_section_specification *make_section_specification(unsigned char kind, const char *name,
                                                           a_source_position position)
{
  a_section_specification *section = alloc_fs_entry<a_section_specification>();
  section->name = copy_string_to_region(true, name);
  section->position = position;
  section->kind = kind;
  return section;
}

static void report_conflict(const a_source_correspondence *corresp, a_source_position position,
                            const char *old_name, const char *new_name)
{
  pos_st2_sy_diagnostic(ec_section_pragma_conflict, position, es_warning, old_name, new_name,
                        corresp->assoc_symbol);
}

static bool set_specification(a_section_specification **place,
                              const a_source_correspondence *corresp, unsigned char kind,
                              const char *name, a_source_position position)
{
  const a_section_specification *old = *place;
  if (old == nullptr || old->kind == secspec_block) {
    *place = make_section_specification(kind, name, position);
    return true;
  }
  if (strcmp(old->name, name) == 0) return true;
  report_conflict(corresp, position, old->name, name);
  return false;
}

bool set_variable_section_specification(a_variable *variable, unsigned char kind, const char *name,
                                        a_source_position position)
{
  return set_specification(&variable->section_specification, &variable->source_corresp, kind, name,
                           position);
}

bool set_routine_section_specification(a_routine *routine, unsigned char kind, const char *name,
                                       a_source_position position)
{
  return set_specification(&routine->section_specification, &routine->source_corresp, kind, name,
                           position);
}

static void apply_block(a_section_specification **place, a_section_specification *block,
                        const a_source_correspondence *corresp)
{
  const a_section_specification *old = *place;
  if (old == nullptr)
    *place = block;
  else if (old->kind != secspec_attribute && strcmp(old->name, block->name) != 0)
    report_conflict(corresp, error_position, old->name, block->name);
}

void apply_variable_block_section_specification(a_variable *variable)
{
  if (curr_data_section == nullptr) return;
  bool has_place = variable->storage_class != sc_auto && variable->storage_class != sc_register &&
                   variable->asm_name_is_text;
  if (has_place) {
    apply_block(&variable->section_specification, curr_data_section, &variable->source_corresp);
  }
}

void apply_routine_block_section_specification(a_routine *routine)
{
  if (curr_code_section == nullptr) return;
  apply_block(&routine->section_specification, curr_code_section, &routine->source_corresp);
}

//---------------------------------------------------------------------------------------------
// SET_CODE_SECTION, SET_DATA_SECTION
//---------------------------------------------------------------------------------------------

// Behind the parenthesis: the section, or null for none.  Returns false after a complaint.
static bool scan_section_operand(const a_pending_pragma *pragma, a_section_specification **section)
{
  *section = nullptr;
  if (curr_token == tok_rparen) return true;
  bool is_name = curr_token == tok_string_literal && const_for_curr_token.kind == ck_string &&
                 const_for_curr_token.char_kind == chk_char;
  if (!is_name) {
    pos_error(ec_bad_pragma_format, pragma->position);
    return false;
  }
  const char *name = string_of(&const_for_curr_token).text;
  if (*name != '\0') *section = make_section_specification(secspec_block, name, pragma->position);
  get_token();
  return true;
}

static bool scan_set_section_pragma(const a_pending_pragma *pragma,
                                    a_section_specification **section)
{
  if (!required_token(tok_lparen, ec_exp_lparen)) return false;
  add_stop_token(tok_rparen);
  bool good = scan_section_operand(pragma, section);
  remove_stop_token(tok_rparen);
  if (!good) return false;
  bool is_closed =
      curr_token == tok_rparen; // one that is reached behind other tokens comes too late
  required_token(tok_rparen, ec_exp_rparen);
  return is_closed;
}

// Acts on everything that is declared behind the directive.  A run that only preprocesses declares nothing.
void process_set_section_pragma(a_pending_pragma *pragma, a_symbol *, a_statement *)
{
  if (do_preprocessing_only) return;
  a_section_specification *section = nullptr;
  begin_rescan_of_pragma_tokens(pragma);
  bool good = scan_set_section_pragma(pragma, &section);
  if (good && curr_token == tok_semicolon) get_token();
  wrapup_rescan_of_pragma_tokens(!good);
  if (!good) return;
  bool is_code = pragma->description->kind == pragk_set_code_section;
  (is_code ? curr_code_section : curr_data_section) = section;
}

//---------------------------------------------------------------------------------------------

void sections_one_time_init()
{
  register_trans_unit_variable(curr_code_section);
  register_trans_unit_variable(curr_data_section);
}

void sections_trans_unit_init()
{
  curr_code_section = curr_data_section = nullptr;
}
