// stmt_jumps.cpp - labels, goto, break, continue, return, and jumps over initializations.
// Owns:    the blocks and declarations of the function as the jump tests see them.
// Rule:    a jump from P to L passes what was initialized in the blocks that it enters, before L, and, in
//          the block that holds both, between P and L.
// Entry:   label_definition, goto_statement, return_statement, wrapup_control_flow_processing.
// See:     C99 6.8.1, 6.8.6; computed goto and __label__ are GNU.
#include <cstring>

#include "driver/flags.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "mem/mem_manage.h"
#include "parse/attribute.h"
#include "parse/expr.h"
#include "parse/exprutil.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"
#include "parse/statements_parts.h"
#include "parse/symbol_ref.h"

//---------------------------------------------------------------------------------------------
// Blocks and declarations of a function

// A declaration over which a jump is reported.
struct a_flow_init {
  a_flow_init *next; // the one before it in the block
  unsigned sequence;
  a_variable *variable; // null: a dimension of variable length
  a_source_position position;
  bool is_vla;
};

struct a_flow_block {
  a_flow_block *parent;
  a_flow_block *next_of_function; // all blocks of the function, to be recycled
  int depth;
  a_flow_init *inits; // newest first
};

// A goto whose label has not been read.
struct a_pending_goto {
  a_pending_goto *next;
  a_flow_block *block;
  unsigned sequence;
  a_source_position position;
};

struct a_label_flow {
  a_pending_goto *pending;
  a_flow_block *block; // where the label stands, once it is defined
  unsigned sequence;
};

static a_flow_block *innermost_flow_block;
static a_flow_block *blocks_of_function;
static unsigned flow_sequence;
static a_flow_block *avail_flow_blocks;
static a_flow_init *avail_flow_inits;
static a_pending_goto *avail_pending_gotos;
static unsigned label_count_of_function;

bool curr_function_type_was_missing;

template <class a_record> static a_record *take_record(a_record **free_list)
{
  a_record *record = *free_list;
  if (record != nullptr)
    *free_list = *(a_record **)record;
  else
    record = (a_record *)alloc_in_region(0, sizeof(a_record));
  memset((void *)record, 0, sizeof(a_record));
  return record;
}

template <class a_record> static void give_record_back(a_record **free_list, a_record *record)
{
  *(a_record **)record = *free_list;
  *free_list = record;
}

unsigned next_flow_sequence()
{
  return ++flow_sequence;
}
a_flow_block *curr_flow_block()
{
  return innermost_flow_block;
}
void set_curr_flow_block(a_flow_block *block)
{
  innermost_flow_block = block;
}

void reset_flow_of_function()
{
  innermost_flow_block = nullptr;
  curr_flow_context = 0;
}

void open_flow_block(a_struct_stmt_stack_entry *entry)
{
  a_flow_block *block = take_record(&avail_flow_blocks);
  block->parent = innermost_flow_block;
  block->depth = innermost_flow_block != nullptr ? innermost_flow_block->depth + 1 : 0;
  block->next_of_function = blocks_of_function;
  blocks_of_function = block;
  innermost_flow_block = block;
  entry->flow_block = block;
}

void close_flow_block(a_struct_stmt_stack_entry *entry)
{
  innermost_flow_block = entry->flow_block->parent;
}

void wrapup_control_flow_processing(a_scope *)
{
  // The records of an enclosing function stay until it ends.
  if (struct_stmt_stack_base > 0) return;
  a_flow_block *next;
  for (a_flow_block *block = blocks_of_function; block != nullptr; block = next) {
    next = block->next_of_function;
    a_flow_init *next_init;
    for (a_flow_init *init = block->inits; init != nullptr; init = next_init) {
      next_init = init->next;
      give_record_back(&avail_flow_inits, init);
    }
    give_record_back(&avail_flow_blocks, block);
  }
  blocks_of_function = nullptr;
  label_count_of_function = 0;
}

static void record_init(a_variable *variable, bool is_vla, const a_source_position *position)
{
  if (innermost_flow_block == nullptr) return;
  a_flow_init *init = take_record(&avail_flow_inits);
  init->sequence = next_flow_sequence();
  init->variable = variable;
  init->is_vla = is_vla;
  init->position = *position;
  init->next = innermost_flow_block->inits;
  innermost_flow_block->inits = init;
}

static bool is_static_duration(a_variable *variable)
{
  return variable->storage_class != sc_auto && variable->storage_class != sc_register;
}

void record_trivial_init_control_flow(a_variable *variable)
{
  if (!is_variably_modified_type(variable->type)) return;
  record_init(variable, true, &variable->source_corresp.decl_position);
}

void record_dimension_control_flow(const a_source_position *position)
{
  record_init(nullptr, true, position);
}

void update_init_statement_control_flow(a_statement *statement)
{
  a_dynamic_init *init = dynamic_init_of(statement);
  a_variable *variable = init != nullptr ? init->variable : nullptr;
  if (variable == nullptr || is_static_duration(variable)) return;
  record_init(variable, false, &statement->start_position);
}

//---------------------------------------------------------------------------------------------
// Reports

static an_error_severity severity_of_bypass(const a_flow_init *init)
{
  if (init->is_vla) return es_error;
  if (C_dialect == 2 && !cfront_2_1_mode && init->variable != nullptr &&
      is_class_struct_union_type(skip_array_types(init->variable->type))) {
    return es_error;
  }
  return strict_ansi_mode ? strict_ansi_error_severity : es_warning;
}

// The open message of one jump.
struct a_bypass_report {
  a_source_position position;
  an_error_severity severity;
  bool is_open;
};

static void add_bypassed(a_bypass_report *report, const a_flow_init *init)
{
  an_error_severity severity = severity_of_bypass(init);
  if (report->is_open && severity != report->severity) {
    end_error();
    report->is_open = false;
  }
  if (!report->is_open) {
    pos_start_diagnostic(severity, ec_branch_past_initialization, report->position);
    report->is_open = true;
    report->severity = severity;
  }
  a_symbol *symbol =
      init->variable != nullptr ? init->variable->source_corresp.assoc_symbol : nullptr;
  if (symbol == nullptr)
    add_diag_info_with_pos_insert(ec_vla_dimension_at, init->position);
  else
    sym_add_diag_info(init->is_vla ? ec_vla_declared : ec_entity_with_declaration, symbol);
}

// Those of the block with after < sequence < before, in source order.
static void add_inits_of_block(a_bypass_report *report, const a_flow_init *init, unsigned after,
                               unsigned before)
{
  if (init == nullptr || init->sequence <= after) return;
  add_inits_of_block(report, init->next, after, before);
  if (init->sequence < before) add_bypassed(report, init);
}

static void add_entered_blocks(a_bypass_report *report, a_flow_block *block, a_flow_block *common,
                               unsigned before)
{
  if (block == common) return;
  add_entered_blocks(report, block->parent, common, before);
  add_inits_of_block(report, block->inits, 0, before);
}

static a_flow_block *common_block(a_flow_block *a, a_flow_block *b)
{
  while (a->depth > b->depth)
    a = a->parent;
  while (b->depth > a->depth)
    b = b->parent;
  while (a != b) {
    a = a->parent;
    b = b->parent;
  }
  return a;
}

static void check_jump(a_flow_block *from, unsigned from_sequence, a_flow_block *to,
                       unsigned to_sequence, const a_source_position *position)
{
  if (from == nullptr || to == nullptr) return;
  a_bypass_report report = {*position, es_none, false};
  a_flow_block *common = common_block(from, to);
  if (from_sequence < to_sequence) {
    add_inits_of_block(&report, common->inits, from_sequence, to_sequence);
  }
  add_entered_blocks(&report, to, common, to_sequence);
  if (report.is_open) end_error();
}

void check_case_jump(a_struct_stmt_stack_entry *switch_entry, const a_source_position *position)
{
  check_jump(switch_entry->flow_block, switch_entry->switch_sequence, innermost_flow_block,
             next_flow_sequence(), position);
}

//---------------------------------------------------------------------------------------------
// Labels

a_label *make_internal_label()
{
  a_label *label = alloc_label();
  label->is_compiler_generated = true;
  label->is_break_label = true;
  add_to_labels_list(label, depth_innermost_function_scope);
  return label;
}

void add_goto(a_label *label, const a_source_position *position)
{
  a_statement *statement = add_statement_at_stmt_pos(stmk_goto, position);
  label_of(statement) = label;
  if (C_dialect == 2) label_lifetime_of(statement) = innermost_block_object_lifetime();
}

// A label that only dead jumps reach leaves the flow as it is.
void place_label(a_label *label, bool is_live, const a_source_position *position)
{
  a_flow_words flow = curr_flow();
  a_statement *statement = add_statement_at_stmt_pos(stmk_label, position);
  label_of(statement) = label;
  label->statement = statement;
  label->is_defined = true;
  if (!is_live) set_flow(flow);
}

static a_symbol *enter_label(a_symbol_locator *locator, int depth)
{
  a_symbol *symbol = enter_symbol(sk_label, locator, depth, true);
  a_label *label = alloc_label();
  label_of_symbol(symbol) = label;
  set_source_corresp(&label->source_corresp, symbol);
  label->source_corresp.is_local = true;
  a_label_flow *flow = (a_label_flow *)alloc_in_region(0, sizeof(a_label_flow));
  memset((void *)flow, 0, sizeof(*flow));
  symbol->variant.label.extra = flow;
  return symbol;
}

static a_label_flow *flow_of_label(a_symbol *symbol)
{
  return (a_label_flow *)symbol->variant.label.extra;
}

// The label that the current identifier names; makes it when it is new, and takes the identifier.
static a_symbol *scan_label()
{
  a_symbol_locator locator = locator_for_curr_id;
  locator.symbol = nullptr;
  a_symbol *symbol = find_label_symbol(locator.header);
  if (symbol == nullptr) {
    symbol = enter_label(&locator, depth_innermost_function_scope);
    add_to_labels_list(label_of_symbol(symbol), depth_innermost_function_scope);
  }
  get_token();
  return symbol;
}

static void resolve_pending_gotos(a_label_flow *flow)
{
  a_pending_goto *next;
  for (a_pending_goto *jump = flow->pending; jump != nullptr; jump = next) {
    next = jump->next;
    check_jump(jump->block, jump->sequence, flow->block, flow->sequence, &jump->position);
    give_record_back(&avail_pending_gotos, jump);
  }
  flow->pending = nullptr;
}

static void label_attributes(a_label *label)
{
  if (curr_token != tok_attribute || !gnu_attributes_enabled) return;
  an_attribute *attributes = scan_attributes(al_label);
  if (attributes != nullptr) attach_attributes(attributes, label, iek_label, nullptr);
}

void label_definition()
{
  a_source_position position = pos_curr_token;
  a_symbol *symbol = scan_label();
  a_label *label = label_of_symbol(symbol);
  if (label->is_defined) {
    pos_sy_error(ec_already_defined, position, symbol);
  } else {
    symbol->position = position;
    label->source_corresp.decl_position = position;
    record_symbol_declaration(3, symbol, &position, nullptr);
    place_label(label, true, &position);
    a_label_flow *flow = flow_of_label(symbol);
    flow->block = innermost_flow_block;
    flow->sequence = next_flow_sequence();
    resolve_pending_gotos(flow);
  }
  top_stmt_entry()->contains_label = true;
  // What is read behind the label may have been set in text that follows.
  curr_flow_context += (++label_count_of_function) << 12;
  get_token(); // the colon
  label_attributes(label);
}

a_label *scan_label_address()
{
  a_source_position position = pos_curr_token;
  a_symbol *symbol = scan_label();
  record_symbol_reference(rk_address_taken, symbol, &position);
  a_label *label = label_of_symbol(symbol);
  label->address_taken = true;
  return label;
}

// The current token names a label of the innermost block.
static void declare_local_label()
{
  a_symbol_locator locator = locator_for_curr_id;
  a_symbol *prior = find_label_symbol(locator.header);
  if (prior != nullptr && prior->scope_number == top_scope()->number) {
    pos_st_error(ec_id_already_declared, locator.position, locator.header->identifier);
    return;
  }
  locator.symbol = nullptr;
  a_symbol *symbol = enter_label(&locator, depth_scope_stack);
  label_of_symbol(symbol)->is_block_local = true;
  add_to_labels_list(label_of_symbol(symbol), depth_scope_stack);
}

// GNU: `__label__ a, b;` at the start of a block.
void local_label_declarations()
{
  while (curr_token == tok_label) {
    do {
      get_token();
      if (curr_token != tok_identifier) {
        syntax_error(ec_exp_identifier);
        break;
      }
      declare_local_label();
      get_token();
    } while (curr_token == tok_comma);
    required_token(tok_semicolon, ec_exp_semicolon);
  }
}

//---------------------------------------------------------------------------------------------
// goto, break, continue

static void computed_goto(const a_source_position *position)
{
  a_source_position star_position = pos_curr_token;
  get_token();
  if (strict_ansi_mode)
    pos_diagnostic(strict_ansi_error_severity, ec_nonstd_assigned_goto, star_position);
  an_expr_node *expr = scan_computed_goto_expression();
  pos_st_error(ec_not_supported, star_position, "computed goto");
  a_statement *statement = add_statement_at_stmt_pos(stmk_computed_goto, position);
  statement->expr = expr;
  if (curr_routine() != nullptr) curr_routine()->contains_computed_goto = true;
}

static void goto_label(const a_source_position *position)
{
  a_source_position label_position = pos_curr_token;
  a_symbol *symbol = scan_label();
  record_symbol_reference(rk_plain, symbol, &label_position);
  a_label_flow *flow = flow_of_label(symbol);
  unsigned sequence = next_flow_sequence();
  if (label_of_symbol(symbol)->is_defined) {
    check_jump(innermost_flow_block, sequence, flow->block, flow->sequence, position);
  } else {
    a_pending_goto *jump = take_record(&avail_pending_gotos);
    jump->block = innermost_flow_block;
    jump->sequence = sequence;
    jump->position = *position;
    jump->next = flow->pending;
    flow->pending = jump;
  }
  add_goto(label_of_symbol(symbol), position);
}

void goto_statement()
{
  a_source_position position = pos_curr_token;
  warn_if_code_is_unreachable(ec_code_is_unreachable, &position);
  if (check_misra_c_2004) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_14_4, position);
  }
  add_stop_token(tok_semicolon);
  get_token();
  if (curr_token == tok_star && (gcc_mode || gpp_mode)) {
    computed_goto(&position);
  } else if (curr_token == tok_identifier) {
    goto_label(&position);
  } else {
    syntax_error(ec_exp_identifier);
  }
  remove_stop_token(tok_semicolon);
  required_token(tok_semicolon, ec_exp_semicolon);
}

void break_statement()
{
  a_source_position position = pos_curr_token;
  warn_if_code_is_unreachable(ec_code_is_unreachable, &position);
  int depth = find_enclosing_loop(true);
  get_token();
  if (depth < 0) {
    pos_error(ec_break_must_be_in_loop_or_switch, position);
  } else {
    a_struct_stmt_stack_entry *entry = &struct_stmt_stack[depth];
    if (entry->break_label == nullptr) entry->break_label = make_internal_label();
    if (curr_stmt_reachable) entry->break_is_live = true;
    add_goto(entry->break_label, &position);
  }
  required_token(tok_semicolon, ec_exp_semicolon);
}

void continue_statement()
{
  a_source_position position = pos_curr_token;
  warn_if_code_is_unreachable(ec_code_is_unreachable, &position);
  if (check_misra_c_2004) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_14_5, position);
  }
  int depth = find_enclosing_loop(false);
  get_token();
  if (depth < 0) {
    pos_error(ec_continue_must_be_in_loop, position);
  } else {
    a_struct_stmt_stack_entry *entry = &struct_stmt_stack[depth];
    if (entry->continue_label == nullptr) entry->continue_label = make_internal_label();
    if (curr_stmt_reachable) entry->continue_is_live = true;
    add_goto(entry->continue_label, &position);
  }
  required_token(tok_semicolon, ec_exp_semicolon);
}

//---------------------------------------------------------------------------------------------
// return

static bool needs_no_value(a_type *type)
{
  type = skip_typerefs(type);
  return type->kind == tk_void || type->kind == tk_error || type->kind == tk_template_param ||
         is_template_dependent_type(type);
}

static bool is_main_returning_int(a_routine *routine)
{
  if (!routine->is_main && routine != il_header.main_routine) return false;
  a_type *type = skip_typerefs(return_type_of(routine->type));
  return type->kind == tk_integer && as_integer(type).int_kind == ik_int;
}

static an_error_severity missing_return_severity(a_routine *routine, bool is_explicit)
{
  if (is_main_returning_int(routine)) {
    if (is_explicit) return es_warning;
    return C_dialect == 2 || c99_mode ? es_none : es_remark;
  }
  if (is_explicit && strict_ansi_mode && C_dialect == 2) return strict_ansi_discretionary_severity;
  if (is_explicit && strict_ansi_mode && c99_mode && !gcc_mode) return es_error;
  return C_dialect != 2 && curr_function_type_was_missing ? es_remark : es_warning;
}

// The rule's message stands for the ordinary one, and also where main needs no return statement.
static bool misra_reports_missing_return(const a_source_position *position)
{
  if (!check_misra_c_2004 ||
      !misra_c_2004_generate_diagnostic(ec_misra_c_2004_16_8, misra_required_severity)) {
    return false;
  }
  pos_diagnostic(misra_required_severity, ec_misra_c_2004_16_8, *position);
  return true;
}

void missing_return_check(bool is_explicit, const a_source_position *position)
{
  a_routine *routine = curr_routine();
  if (routine == nullptr || needs_no_value(return_type_of(routine->type))) return;
  if (routine->special_kind == sfk_constructor || routine->special_kind == sfk_destructor) return;
  an_error_severity severity = missing_return_severity(routine, is_explicit);
  if (!is_explicit && severity <= es_warning && !end_reachable) return;
  if (severity <= es_warning && misra_reports_missing_return(position)) return;
  if (severity == es_none) return;
  a_symbol *symbol = routine->source_corresp.assoc_symbol;
  if (symbol == nullptr) return;
  pos_sy_diagnostic(severity,
                    is_explicit ? ec_no_value_returned_in_non_void_function
                                : ec_implicit_return_from_non_void_function,
                    *position, symbol);
}

void implicit_return(const a_source_position *position)
{
  if (!curr_stmt_reachable) return;
  missing_return_check(false, position);
  a_routine *routine = curr_routine();
  bool returns_zero = routine != nullptr && is_main_returning_int(routine);
  a_statement *statement = add_statement_at_stmt_pos(stmk_return, position);
  statement->is_compiler_generated = true;
  if (returns_zero) statement->expr = node_for_zero_of_type(return_type_of(routine->type));
}

static void return_with_operand(a_routine *routine, const a_source_position *position)
{
  a_type *type = routine != nullptr ? return_type_of(routine->type) : error_type();
  bool is_void = is_void_type(type);
  a_source_position operand_position = pos_curr_token;
  a_dynamic_init *init = nullptr;
  an_expr_node *expr;
  if (routine != nullptr &&
      (routine->special_kind == sfk_constructor || routine->special_kind == sfk_destructor)) {
    pos_error(ec_value_returned_in_constructor, operand_position);
    expr = scan_void_expression(false, false, false);
  } else if (is_void) {
    expr = scan_void_expression(false, false, true);
    if (!is_void_type(expr->type) && expr->kind != enk_error) {
      pos_diagnostic(C_dialect == 2 || strict_ansi_mode ? es_error : es_discretionary_error,
                     ec_value_returned_in_void_function, operand_position);
    } else if (C_dialect != 2 && strict_ansi_mode && expr->kind != enk_error) {
      pos_diagnostic(strict_ansi_discretionary_severity, ec_value_returned_in_void_function,
                     operand_position);
    }
  } else {
    expr = scan_return_expression(type, ec_bad_return_value_type, &init);
  }
  if (is_void) {
    // The value is evaluated, then control leaves.
    a_statement *evaluation = add_statement_at_stmt_pos(stmk_expr, position);
    set_expr_result_not_used(expr);
    evaluation->expr = expr;
    expr = nullptr;
  }
  a_statement *statement = add_statement_at_stmt_pos(stmk_return, position);
  statement->expr = expr;
  if (init != nullptr) dynamic_init_of(statement) = init;
  statement->end_position = curr_construct_end_position;
}

void return_statement()
{
  a_source_position position = pos_curr_token;
  warn_if_code_is_unreachable(ec_code_is_unreachable, &position);
  add_stop_token(tok_semicolon);
  get_token();
  if (curr_token == tok_semicolon) {
    missing_return_check(true, &position);
    add_statement_at_stmt_pos(stmk_return, &position);
  } else {
    return_with_operand(curr_routine(), &position);
  }
  remove_stop_token(tok_semicolon);
  required_token(tok_semicolon, ec_exp_semicolon);
}
