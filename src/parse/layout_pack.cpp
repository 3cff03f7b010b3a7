// layout_pack.cpp - the pack pragma and its state.
// Writes:  curr_max_member_alignment, pack_alignment_stack (pragma.h).
#include <cstring>

#include "consts/const_ints.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "mem/mem_manage.h"
#include "parse/layout_private.h"
#include "parse/scope_stk.h"

static a_pack_alignment_state *free_states;

static an_error_severity pack_severity()
{
  return gcc_mode || gpp_mode ? es_warning : es_error;
}

uint32_t current_pack_pragma_value()
{
  return curr_max_member_alignment;
}

uint32_t current_max_alignment_for_class_members()
{
  return curr_max_member_alignment ? curr_max_member_alignment
                                   : (uint32_t)default_max_member_alignment;
}

void reset_pack_alignment_state(unsigned value, a_saved_pack_alignment_state *state)
{
  state->value = curr_max_member_alignment;
  state->stack = pack_alignment_stack;
  if (top_scope()->kind == sck_class_reactivation) return;
  curr_max_member_alignment = value;
  pack_alignment_stack = nullptr;
}

void restore_pack_alignment_state(const a_saved_pack_alignment_state *state)
{
  curr_max_member_alignment = state->value;
  pack_alignment_stack = state->stack;
}

bool check_pack_alignment_value(const a_constant *value, uint32_t *result)
{
  bool overflow = false;
  long long number = value_of_integer_constant(value, &overflow);
  if (overflow || number < (long long)targ_minimum_pack_alignment ||
      number > (long long)targ_maximum_pack_alignment || (number & (number - 1)) != 0) {
    return false;
  }
  *result = (uint32_t)number;
  return true;
}

//---------------------------------------------------------------------------------------------
// The stack.

static void push_state(const char *name)
{
  a_pack_alignment_state *state = free_states;
  if (state) {
    free_states = state->next;
  } else {
    state = (a_pack_alignment_state *)alloc_in_region(0, sizeof *state);
  }
  state->name = name;
  state->value = curr_max_member_alignment;
  state->next = pack_alignment_stack;
  pack_alignment_stack = state;
}

static void pop_top()
{
  a_pack_alignment_state *state = pack_alignment_stack;
  curr_max_member_alignment = state->value;
  pack_alignment_stack = state->next;
  state->next = free_states;
  free_states = state;
}

static bool is_on_stack(const char *name)
{
  for (a_pack_alignment_state *state = pack_alignment_stack; state; state = state->next) {
    if (state->name && strcmp(state->name, name) == 0) return true;
  }
  return false;
}

// Unwinds to the named entry; a name that isn't there pops nothing where that is an error.
static void pop_state(const char *name, a_source_position position)
{
  if (pack_alignment_stack == nullptr) {
    pos_diagnostic(pack_severity(), ec_empty_pack_alignment_stack, position);
    return;
  }
  if (name == nullptr) {
    pop_top();
    return;
  }
  if (!is_on_stack(name)) {
    pos_st_diagnostic(pack_severity(), ec_not_found_on_pack_alignment_stack, position, name);
    if (pack_severity() != es_error) pop_top();
    return;
  }
  bool found = false;
  while (!found) {
    found = pack_alignment_stack->name && strcmp(pack_alignment_stack->name, name) == 0;
    pop_top();
  }
}

//---------------------------------------------------------------------------------------------
// The pragma.

static void set_value(const a_constant *constant, a_source_position position)
{
  bool overflow = false;
  if ((gcc_mode || gpp_mode) && value_of_integer_constant(constant, &overflow) == 0) {
    curr_max_member_alignment = 0;
    return;
  }
  uint32_t value = 0;
  if (check_pack_alignment_value(constant, &value)) {
    curr_max_member_alignment = value;
  } else {
    pos_diagnostic(pack_severity(), ec_bad_pack_alignment, position);
    curr_max_member_alignment = 0;
  }
}

// A number behind a comma or alone; anything else is 664, and false.
static bool value_operand()
{
  if (curr_token != tok_int_constant) {
    pos_diagnostic(pack_severity(), ec_exp_int_constant, pos_curr_token);
    return false;
  }
  set_value(&const_for_curr_token, pos_curr_token);
  get_token();
  return true;
}

static const char *name_operand()
{
  if (curr_token != tok_identifier) return nullptr;
  const char *name = locator_for_curr_id.header->identifier;
  get_token();
  return name;
}

static bool push_or_pop(bool is_push)
{
  a_source_position position = pos_curr_token;
  get_token();
  const char *name = nullptr;
  if (curr_token == tok_comma) {
    get_token();
    name = name_operand();
  }
  if (is_push) {
    push_state(name);
  } else {
    pop_state(name, position);
  }
  if (name != nullptr && curr_token == tok_comma) {
    get_token();
    return value_operand();
  }
  if (name == nullptr && curr_token == tok_int_constant) return value_operand();
  return true;
}

static void show_value(a_source_position position)
{
  get_token();
  const char *text =
      curr_max_member_alignment ? conv_unsigned_long_to_str(curr_max_member_alignment) : "not set";
  pos_st_warning(ec_value_of_pragma_pack_show, position, text);
}

static bool curr_identifier_is(const char *word)
{
  return curr_token == tok_identifier && strcmp(locator_for_curr_id.header->identifier, word) == 0;
}

// False when what follows makes no sense any more.
static bool pack_operands()
{
  if (curr_token == tok_rparen) {
    curr_max_member_alignment = 0;
  } else if (curr_identifier_is("push")) {
    return push_or_pop(true);
  } else if (curr_identifier_is("pop")) {
    return push_or_pop(false);
  } else if (curr_identifier_is("show")) {
    show_value(pos_curr_token);
  } else {
    return value_operand();
  }
  return true;
}

// The list in parentheses; false when there is none.
static bool pack_list()
{
  if (curr_token != tok_lparen) {
    pos_diagnostic(pack_severity(), ec_exp_lparen, pos_curr_token);
    return false;
  }
  get_token();
  if (!pack_operands()) return false;
  if (curr_token != tok_rparen) {
    pos_diagnostic(pack_severity(), ec_exp_rparen, pos_curr_token);
    return false;
  }
  get_token();
  return true;
}

void pack_pragma(a_pending_pragma *pragma, a_symbol *, a_statement *)
{
  begin_rescan_of_pragma_tokens(pragma);
  bool fine = pack_list();
  wrapup_rescan_of_pragma_tokens(!fine);
  a_routine *routine = in_function_scope() ? curr_routine() : nullptr;
  if (routine && routine->source_corresp.assoc_symbol) {
    pos_sy_remark(ec_local_pragma_pack, pragma->position, routine->source_corresp.assoc_symbol);
  }
}

void layout_init()
{
  curr_max_member_alignment = 0;
  pack_alignment_stack = nullptr;
  free_states = nullptr;
  layout_empty_init();
}
