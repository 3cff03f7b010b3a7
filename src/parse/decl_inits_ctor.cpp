// decl_inits_ctor.cpp - member initializers of constructors, and the end of destructors.
// Entry:   ctor_initializer, dtor_initializer.
// See:     C++ 12.6.2.
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "parse/decl_inits.h"
#include "parse/expr.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"
#include "parse/symbol_ref.h"

static void append_ctor_init(a_constructor_init *init)
{
  a_constructor_init **link = &innermost_function_scope->constructor_inits;
  while (*link != nullptr)
    link = &(*link)->next;
  *link = init;
}

// `name ( value )`: the value of a member that isn't of class type.
static void field_initializer(a_symbol *symbol, const a_source_position *position)
{
  a_field *field = field_of_symbol(symbol);
  bool not_whole;
  an_expr_node *expr = nullptr;
  a_constant constant;
  scan_initializer_element(field->type, false, false, &not_whole, &expr, &constant);
  a_dynamic_init *init = alloc_dynamic_init(expr != nullptr ? dik_expression : dik_constant);
  if (expr != nullptr)
    expr_of(init) = expr;
  else
    constant_of(init) = alloc_unshared_constant(&constant);
  init->position = *position;
  init->is_ctor_init = true;
  a_constructor_init *entry = alloc_ctor_init(cik_field);
  entry->entity.field = field;
  entry->dynamic_init = init;
  entry->position = *position;
  append_ctor_init(entry);
}

static void one_initializer(a_type *class_type)
{
  a_source_position position = pos_curr_token;
  if (curr_token != tok_identifier) {
    pos_error(ec_missing_base_class_or_member_name, position);
    while (curr_token != tok_comma && curr_token != tok_lbrace && curr_token != tok_end_of_source)
      get_token();
    return;
  }
  a_symbol_locator locator = locator_for_curr_id;
  locator.symbol = nullptr;
  a_symbol *symbol = class_qualified_id_lookup(&locator, class_type, lo_no_base_classes);
  if (symbol != nullptr && symbol->kind != sk_field) symbol = nullptr;
  if (symbol == nullptr) {
    pos_stty_error(ec_not_a_field_or_base_class, position, locator.header->identifier, class_type);
  }
  get_token();
  required_token(tok_lparen, ec_exp_lparen);
  add_stop_token(tok_rparen);
  if (symbol != nullptr && curr_token != tok_rparen) {
    field_initializer(symbol, &position);
  } else {
    while (curr_token != tok_rparen && curr_token != tok_lbrace && curr_token != tok_end_of_source)
      get_token();
  }
  remove_stop_token(tok_rparen);
  required_token(tok_rparen, ec_exp_rparen);
}

void ctor_initializer(a_routine *routine, bool has_list)
{
  if (!has_list) return;
  a_type *class_type = routine_supplement_of(skip_typerefs(routine->type))->this_class;
  add_stop_token(tok_lbrace);
  add_stop_token(tok_comma);
  do {
    get_token();
    one_initializer(class_type);
  } while (curr_token == tok_comma);
  remove_stop_token(tok_comma);
  remove_stop_token(tok_lbrace);
}

void dtor_initializer(a_routine *)
{
}
