// declarator_array.cpp - array bounds: constant, missing, variable.
// Rule:    a bound that is wrong makes the array the error type, which apply_declarator_part passes
//          on silently.
// See:     C99 6.7.5.2; zero bounds and arrays of variable length in C89 are GNU.
#include "consts/const_ints.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/token_cache.h"
#include "parse/declarator.h"
#include "parse/decls.h"
#include "parse/expr.h"
#include "parse/scope_stk.h"
#include "parse/statements.h"
#include "parse/type_evaluation.h"

//---------------------------------------------------------------------------------------------
// Bounds.

// A constant bound: 0 is a size of its own in the GNU modes only.
static void constant_bound(a_type *array, a_constant *bound, a_source_position position,
                           bool *is_error)
{
  if (bound->kind == ck_template_param) {
    as_array(array).bound_is_constant = true;
    as_array(array).bound.bound_as_constant = transfer_constant_to_il(bound);
    return;
  }
  if (bound->kind != ck_integer) {
    *is_error = true;
    return;
  }
  if (cmplit_integer_constant(bound, 0) < 0) {
    pos_error(ec_array_size_must_be_positive, position);
    *is_error = true;
    return;
  }
  bool overflow = false;
  a_target_size count = unsigned_value_of_integer_constant(bound, &overflow);
  if (count == 0) {
    if (!gcc_mode && !gpp_mode) {
      pos_error(ec_array_size_must_be_positive, position);
      *is_error = true;
      return;
    }
    if (report_gnu_extensions) pos_warning(ec_zero_length_array_is_gnu_extension, position);
    as_array(array).bound_is_zero = true;
  }
  if (overflow) {
    pos_error(ec_array_size_too_large, position);
    *is_error = true;
    return;
  }
  as_array(array).bound.number_of_elements = count;
}

// Where a bound may be variable: in a block or a prototype of C.
static bool nonconstant_bound_allowed(uint32_t options, bool is_first)
{
  if (options & dop_nonconstant_first_bound) return is_first || vla_enabled;
  if (C_dialect == 2 && !gpp_mode) return false;
  if (!vla_enabled) return false;
  a_scope_kind kind = scope_stack[decl_scope_level].kind;
  if (kind == sck_function_prototype) return C_dialect != 2;
  return (options & dop_vla_ok) && (kind == sck_block || kind == sck_function);
}

// GNU C: a field's bound may vary, and then counts as 0.
static bool is_field_bound(uint32_t options)
{
  return gcc_mode && vla_enabled && (options & dop_member);
}

static bool in_prototype_scope()
{
  return scope_stack[decl_scope_level].kind == sck_function_prototype;
}

static void make_vla_type(a_type *array, an_expr_node *bound, a_source_position position)
{
  an_array_type_part &part = as_array(array);
  part.is_vla = true;
  part.bound_is_expr = true;
  part.bound.bound_expr = bound;
  il_header.vla_used = true;
  if (in_prototype_scope()) {
    add_vla_fixup_entry(array, bound, position);
    return;
  }
  // Dimensions are evaluated in the order in which they are written.
  a_vla_dimension *dimension = make_vla_dimension(array, bound, false, &position);
  if (expr_stack == nullptr) {
    if (in_statement_context()) set_vla_size_statement(dimension, &position);
  } else if (node_has_side_effects(bound) || expr_stack->in_typeof_or_decltype) {
    evaluate_dimension_with_type(dimension);
  }
}

// new T[n]: the first bound, which is no part of any type.
static an_expr_node *bound_of_new;

an_expr_node *take_bound_of_new()
{
  an_expr_node *bound = bound_of_new;
  bound_of_new = nullptr;
  return bound;
}

static void first_bound_of_new(a_type *array, bool *is_error)
{
  a_source_position position = pos_curr_token;
  bool is_constant = false;
  a_constant constant;
  an_expr_node *expr = scan_nonconstant_dimension_expression(&is_constant, &constant);
  as_array(array).bound_is_zero = true;
  as_array(array).bound.number_of_elements = 0;
  if (!is_constant && expr != nullptr) {
    if (expr->kind == enk_error) *is_error = true;
    bound_of_new = expr;
    return;
  }
  bool overflow = false;
  long long count =
      constant.kind == ck_integer ? value_of_integer_constant(&constant, &overflow) : 0;
  if (constant.kind != ck_integer) *is_error = true;
  if (count < 0 && !overflow) {
    pos_error(ec_new_array_size_must_be_nonnegative, position);
    *is_error = true;
    return;
  }
  as_array(array).bound_is_zero = count == 0;
  as_array(array).bound.number_of_elements = (a_target_size)count;
}

// A bound that may be variable; where it is, the size is evaluated at the declaration, or taken as 0 for a
// field.
static void variable_bound(uint32_t options, a_type *array, a_decl_parse_state *state,
                           bool *is_error)
{
  a_source_position position = pos_curr_token;
  bool is_constant = false;
  a_constant constant;
  an_expr_node *expr = scan_nonconstant_dimension_expression(&is_constant, &constant);
  if (is_constant || expr == nullptr) {
    constant_bound(array, &constant, position, is_error);
    return;
  }
  if (expr->kind == enk_error) {
    *is_error = true;
    return;
  }
  if (is_field_bound(options)) {
    pos_warning(ec_vla_size_ignored, position);
    as_array(array).bound_is_zero = true;
    as_array(array).bound.number_of_elements = 0;
    state->vla_constant_bound_folded = true;
    return;
  }
  make_vla_type(array, expr, position);
}

// [*]: an array of a variable length that a prototype leaves open (C99 6.7.5.2p4).
static void star_bound(a_type *array, bool *is_error)
{
  a_source_position position = pos_curr_token;
  get_token();
  an_array_type_part &part = as_array(array);
  part.is_vla = true;
  part.is_star_vla = true;
  part.bound_is_expr = true;
  part.bound.bound_expr = nullptr;
  il_header.vla_used = true;
  if (in_prototype_scope()) return;
  pos_error(ec_vla_with_unspecified_bound_not_allowed, position);
  *is_error = true;
}

//---------------------------------------------------------------------------------------------
// Brackets.

// Qualifiers and `static` stand in the outermost brackets of a parameter only (C99 6.7.5.3p7).
static void bracket_qualifiers(uint32_t options, bool is_first, a_type *array,
                               a_decl_parse_state *state)
{
  bool static_seen = false;
  unsigned qualifiers = 0;
  a_source_position position = pos_curr_token;
  for (;;) {
    if (curr_token == tok_static && (c99_mode || gcc_mode)) {
      static_seen = true;
      get_token();
    } else if (curr_token == tok_const || curr_token == tok_volatile ||
               curr_token == tok_restrict || curr_token == tok_gnu_restrict) {
      unsigned more = 0;
      collect_type_qualifiers(nullptr, &more);
      qualifiers |= more;
    } else {
      break;
    }
  }
  if (!static_seen && qualifiers == 0) return;
  bool is_known = c99_mode || gcc_mode;
  if (!is_known || !(options & dop_parameter) || !is_first || state->in_parens) {
    pos_error(ec_type_qualifier_not_allowed, position);
    return;
  }
  as_array(array).qualifiers = qualifiers;
  as_array(array).is_static_bound = static_seen;
  state->array_is_static_param = static_seen;
}

static void scan_bound(uint32_t options, bool is_first, a_type *array, a_decl_parse_state *state,
                       bool *is_error)
{
  if (curr_token == tok_star && next_token() == tok_rbracket && vla_enabled) {
    star_bound(array, is_error);
    return;
  }
  if ((options & dop_nonconstant_first_bound) && is_first) {
    first_bound_of_new(array, is_error);
    return;
  }
  if (nonconstant_bound_allowed(options, is_first) || is_field_bound(options)) {
    variable_bound(options, array, state, is_error);
    return;
  }
  a_source_position position = pos_curr_token;
  a_constant constant;
  scan_fs_integral_constant_expression(&constant);
  constant_bound(array, &constant, position, is_error);
}

void array_declarator(uint32_t options, a_decl_parse_state *state, bool is_first,
                      a_declarator_part *part)
{
  bool is_error = false;
  a_type *array = alloc_type(tk_array);
  part->type = array;
  get_token();
  add_stop_token(tok_rbracket);
  bracket_qualifiers(options, is_first, array, state);
  if (curr_token == tok_rbracket) {
    array->is_incomplete = true;
  } else {
    scan_bound(options, is_first, array, state, &is_error);
  }
  remove_stop_token(tok_rbracket);
  required_token(tok_rbracket, ec_exp_rbracket);
  if (is_error) part->type = error_type();
}
