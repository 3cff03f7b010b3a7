// c_gen_stmts.cpp - statements, blocks and asm of the generated C.
// Rule:  declarations stand at block starts only: one that follows code opens a block of its own.
// Entry: write_statement, write_block_body, write_asm.
#include "backend/c_gen_private.h"

static void write_indented(a_statement *statement)
{
  // A block indents what it holds by itself.
  unsigned step = statement != nullptr && statement->kind == stmk_block ? 0 : 2;
  indent += step;
  if (statement == nullptr)
    put_char(';');
  else
    write_statement(statement);
  indent -= step;
}

// --- Labels, jumps -------------------------------------------------------------------------------

static bool label_is_used(const a_label *label)
{
  return label->source_corresp.needed || label->source_corresp.referenced || label->address_taken ||
         label->is_compiler_generated;
}

static void write_label(a_statement *statement)
{
  a_label *label = label_of(statement);
  if (!label_is_used(label)) {
    put_char(';');
    return;
  }
  write_position(statement->start_position);
  write_name(label);
  put_char(':');
  form_label_attributes(label, &control);
  put_char(';');
}

static void write_goto(a_statement *statement)
{
  put_str("goto ");
  write_name(label_of(statement));
  put_char(';');
}

static void write_return(a_statement *statement)
{
  if (statement->expr == nullptr) {
    put_str("return;");
    return;
  }
  put_str("return ");
  write_expression(statement->expr, false);
  put_char(';');
}

// A return at the very end of a routine that says nothing.
static bool is_idle_return(const a_statement *statement)
{
  return statement->kind == stmk_return && statement->expr == nullptr && statement->next == nullptr;
}

// --- Branches and loops --------------------------------------------------------------------------

// A branch that could take the `else` behind it as its own, or that holds more than one text.
static bool needs_braces(const a_statement *statement)
{
  switch (statement->kind) {
  case stmk_if:
  case stmk_while:
  case stmk_for:
  case stmk_do:
  case stmk_switch:
  case stmk_label:
  case stmk_case:
  case stmk_init:
  case stmk_vla_decl:
  case stmk_type_or_var_decl: return true;
  default: return false;
  }
}

static void write_branch(a_statement *statement, bool else_follows)
{
  bool braces = statement != nullptr && else_follows && needs_braces(statement);
  if (braces) put_char('{');
  write_indented(statement);
  if (braces) put_char('}');
}

static void write_if(a_statement *statement)
{
  a_statement *else_statement = else_statement_of(statement);
  put_str("if ");
  write_parenthesized(statement->expr);
  write_branch(then_statement_of(statement), else_statement != nullptr);
  if (else_statement == nullptr) return;
  write_position(statement->else_position);
  put_str("else");
  write_branch(else_statement, false);
}

// The body of a loop with what runs again behind it.
static void write_loop_body(a_statement *body, a_statement *behind_1, a_statement *behind_2)
{
  bool braces = behind_1 != nullptr || behind_2 != nullptr;
  if (braces) put_char('{');
  write_indented(body);
  if (behind_1 != nullptr) write_indented(behind_1);
  if (behind_2 != nullptr) write_indented(behind_2);
  if (braces) put_char('}');
}

static void write_while(a_statement *statement)
{
  a_statement *pre = statement->pre_statement;
  if (pre != nullptr) write_statement(pre);
  put_str("while ");
  write_parenthesized(statement->expr);
  write_loop_body(body_of(statement), pre, nullptr);
}

static void write_do(a_statement *statement)
{
  put_str("do");
  write_loop_body(body_of(statement), statement->pre_statement, nullptr);
  put_str(" while ");
  write_parenthesized(statement->expr);
  put_char(';');
}

// The first part of a for header: an expression, or the initialization of a scalar.  False: the
// statement has to stand in front of the loop.
static bool fits_for_header(const a_statement *statement)
{
  if (statement == nullptr) return true;
  if (statement->next != nullptr) return false;
  return statement->kind == stmk_expr;
}

static void write_for_header(a_statement *statement, bool with_init)
{
  a_for_supplement *supplement = for_supplement_of(statement);
  put_str("for (");
  if (with_init && supplement->init_statement != nullptr)
    write_expression(supplement->init_statement->expr, false);
  put_str("; ");
  if (statement->expr != nullptr) write_parenthesized(statement->expr);
  put_str("; ");
  if (supplement->increment_expr != nullptr) write_expression(supplement->increment_expr, false);
  put_char(')');
}

static void write_scope_variables(a_scope *scope);

static void write_pragmas_of(const a_statement *statement)
{
  for (const a_pragma *pragma = statement->pragmas; pragma != nullptr; pragma = pragma->next)
    write_pragma(pragma);
}

static void write_for(a_statement *statement)
{
  a_for_supplement *supplement = for_supplement_of(statement);
  a_scope *saved_scope = current_scope, *scope = supplement->scope;
  bool has_variables =
      scope != nullptr && (scope->variables != nullptr || scope->local_variables != nullptr);
  bool in_header = fits_for_header(supplement->init_statement);
  bool braces = has_variables || !in_header;
  if (braces || statement->pragmas == nullptr) write_position(statement->start_position);
  if (braces) put_char('{');
  if (has_variables) {
    current_scope = scope;
    write_scope_variables(scope);
  }
  if (!in_header) {
    for (a_statement *init = supplement->init_statement; init != nullptr; init = init->next)
      write_statement(init);
  }
  a_statement *pre_test = statement->expr != nullptr ? supplement->pre_test_statement : nullptr;
  a_statement *pre_increment =
      supplement->increment_expr != nullptr ? supplement->pre_increment_statement : nullptr;
  if (pre_test != nullptr && in_header && supplement->init_statement != nullptr) {
    // What runs before the first test runs behind the initialization.
    write_statement(supplement->init_statement);
    in_header = false;
  }
  if (pre_test != nullptr) write_statement(pre_test);
  write_pragmas_of(statement);
  bool has_moved = braces || pre_test != nullptr || statement->pragmas != nullptr;
  if (has_moved) write_position(statement->start_position);
  if (pre_test == nullptr && pre_increment == nullptr) {
    write_for_header(statement, in_header);
    write_indented(body_of(statement));
  } else {
    // The increment runs behind its own statements and in front of those of the test.
    put_str("for (");
    if (in_header && supplement->init_statement != nullptr)
      write_expression(supplement->init_statement->expr, false);
    put_str("; ");
    if (statement->expr != nullptr) write_parenthesized(statement->expr);
    put_str("; ) {");
    write_indented(body_of(statement));
    if (pre_increment != nullptr) write_indented(pre_increment);
    if (supplement->increment_expr != nullptr) {
      put_char(' ');
      write_expression(supplement->increment_expr, false);
      put_char(';');
    }
    if (pre_test != nullptr) write_indented(pre_test);
    put_char('}');
  }
  if (braces) put_char('}');
  current_scope = saved_scope;
}

// --- Switches ------------------------------------------------------------------------------------

static bool statement_follows(const a_statement *statement)
{
  for (const a_statement *next = statement->next; next != nullptr; next = next->next)
    if (next->kind != stmk_decl_entities) return true;
  return false;
}

static void write_case(a_statement *statement)
{
  const a_switch_case_entry *entry = case_entry_of(statement);
  if (entry->low_value == nullptr) {
    put_str("default:");
  } else {
    put_str("case ");
    write_constant(entry->low_value, false);
    if (entry->high_value != nullptr) {
      put_str(" ... ");
      write_constant(entry->high_value, false);
    }
    put_char(':');
  }
  if (!statement_follows(statement)) put_char(';');
}

static void write_switch(a_statement *statement)
{
  put_str("switch (");
  write_expression(statement->expr, false);
  put_char(')');
  write_indented(body_of(statement));
}

// --- Asm -----------------------------------------------------------------------------------------

static void write_asm_operand(const an_asm_operand *operand)
{
  put_char(' ');
  if (operand->name != nullptr) {
    put_char('[');
    put_str(operand->name);
    put_str("] ");
  }
  write_constant(operand->constraint, false);
  write_parenthesized(operand->expr);
}

static void write_asm_operands(const an_asm_operand *operand)
{
  put_str(" :");
  bool in_outputs = true, first = true;
  for (; operand != nullptr; operand = operand->next) {
    if (in_outputs && !operand->is_output) {
      put_str(" :");
      in_outputs = false;
      first = true;
    }
    if (!first) put_char(',');
    first = false;
    write_asm_operand(operand);
  }
  if (in_outputs) put_str(" :");
}

void write_asm(const an_asm_entry *entry)
{
  put_str("__asm__");
  if (entry->is_volatile) put_str(" volatile");
  put_char('(');
  write_constant(entry->asm_string, false);
  if (!entry->is_simple || entry->operands != nullptr || entry->clobbers != nullptr) {
    write_asm_operands(entry->operands);
    if (entry->clobbers != nullptr) put_str(" :");
    for (const a_named_register_list *clobber = entry->clobbers; clobber != nullptr;
         clobber = clobber->next) {
      put_str(" \"");
      put_no_wrap(register_name(clobber->register_number));
      put_no_wrap(clobber->next != nullptr ? "\"," : "\"");
    }
  }
  put_str(");");
}

// --- Declarations in blocks ----------------------------------------------------------------------

static void write_init(a_statement *statement)
{
  a_dynamic_init *init = dynamic_init_of(statement);
  if (init == nullptr || init->variable == nullptr || init->kind == dik_none) return;
  a_variable *variable = init->variable;
  // A static constant stands in the declaration.
  if (variable->init_kind == initk_static) return;
  write_local_initialization(variable, init);
}

static void write_vla_declaration(a_statement *statement)
{
  a_vla_dimension *dimension = vla_dimension_of(statement);
  if (dimension == nullptr || dimension->expr == nullptr) return;
  write_position(statement->start_position);
  write_assignment_expression(dimension->expr);
  put_char(';');
}

static void write_declaration_statement(a_statement *statement)
{
  const a_statement_decl &decl = decl_of(statement);
  if (decl.is_type)
    write_type_pass(decl.type, 2);
  else
    write_variable(decl.variable, true, true);
}

static void write_variable_list(a_variable *list)
{
  for (a_variable *variable = list; variable != nullptr; variable = variable->next)
    if (!is_declared_by_statement(variable)) write_variable(variable, true, true);
}

static void write_scope_variables(a_scope *scope)
{
  write_variable_list(scope->variables);
  write_variable_list(scope->local_variables);
}

static void write_local_labels(a_scope *scope)
{
  if (scope->kind == sck_function) return;
  for (a_label *label = scope->labels; label != nullptr; label = label->next) {
    if (!label->is_block_local || !label_is_used(label)) continue;
    end_line();
    put_str("__label__ ");
    write_name(label);
    put_char(';');
    end_line();
  }
}

static void enter_scope(a_scope *scope)
{
  current_scope = scope;
  write_local_labels(scope);
  write_unbound_pragmas(scope);
  write_scope_variables(scope);
}

static bool is_code(const a_statement *statement)
{
  switch (statement->kind) {
  case stmk_decl_entities:
  case stmk_vla_decl:
  case stmk_type_or_var_decl: return false;
  default: return true;
  }
}

void write_block_body(a_statement *block)
{
  a_scope *saved_scope = current_scope, *scope = block_supplement_of(block)->scope;
  // The variables of a function's outermost block are those of the function.
  if (scope != nullptr) {
    enter_scope(scope);
  } else if (current_scope != nullptr && current_scope->kind == sck_function &&
             current_scope->assoc_block == block) {
    enter_scope(current_scope);
  }
  bool code_seen = false;
  unsigned inner_blocks = 0;
  for (a_statement *statement = first_statement_of(block); statement != nullptr;
       statement = statement->next) {
    if (statement->kind == stmk_type_or_var_decl && code_seen) {
      put_char('{');
      inner_blocks++;
      code_seen = false;
    }
    if (is_code(statement)) code_seen = true;
    if (is_idle_return(statement) && current_scope != nullptr &&
        current_scope->kind == sck_function && current_scope->assoc_block == block)
      continue;
    write_statement(statement);
  }
  while (inner_blocks-- > 0)
    put_char('}');
  current_scope = saved_scope;
}

static void write_block(a_statement *statement)
{
  put_char('{');
  indent += 2;
  write_block_body(statement);
  indent -= 2;
  write_position(block_supplement_of(statement)->end_position);
  put_char('}');
}

// --- All statements ------------------------------------------------------------------------------

static bool has_own_position(const a_statement *statement)
{
  switch (statement->kind) {
  case stmk_label:
  case stmk_decl_entities:
  case stmk_vla_decl:
  case stmk_type_or_var_decl:
  case stmk_for:
  case stmk_init: return false;
  default: return true;
  }
}

static void write_try(a_statement *statement)
{
  a_try_supplement *supplement = try_supplement_of(statement);
  put_str("try ");
  write_statement(supplement->try_block);
  for (a_handler *handler = supplement->handlers; handler != nullptr; handler = handler->next) {
    write_position(handler->position);
    put_str("catch (");
    if (handler->parameter == nullptr)
      put_str("...");
    else
      write_declarator(handler->parameter->type, &handler->parameter->source_corresp, iek_variable,
                       false);
    put_str(") ");
    write_statement(handler->body);
  }
}

void write_statement(a_statement *statement)
{
  if (statement->kind != stmk_for) write_pragmas_of(statement); // a loop may follow its own block
  if (has_own_position(statement)) write_position(statement->start_position);
  switch (statement->kind) {
  case stmk_expr:
    if (statement->expr != nullptr) write_expression(statement->expr, false);
    put_char(';');
    return;
  case stmk_if: write_if(statement); return;
  case stmk_while: write_while(statement); return;
  case stmk_goto: write_goto(statement); return;
  case stmk_label: write_label(statement); return;
  case stmk_return: write_return(statement); return;
  case stmk_block: write_block(statement); return;
  case stmk_do: write_do(statement); return;
  case stmk_for: write_for(statement); return;
  case stmk_case: write_case(statement); return;
  case stmk_switch: write_switch(statement); return;
  case stmk_init: write_init(statement); return;
  case stmk_asm: write_asm(asm_entry_of(statement)); return;
  case stmk_try: write_try(statement); return;
  case stmk_decl_entities: return;
  case stmk_vla_decl: write_vla_declaration(statement); return;
  case stmk_type_or_var_decl: write_declaration_statement(statement); return;
  case stmk_computed_goto:
    put_str("goto *");
    write_operand(statement->expr);
    put_char(';');
    return;
  case stmk_vla_dealloc: put_char(';'); return;
  case stmk_last: break;
  }
  unexpected_kind("statement");
}
