// misra_params.cpp - parameters of pointer type through which a function doesn't store (16.7).
// Rule:    each use of a parameter is followed outward through the expression around it, until its value is stored
//          through, read, or handed to something else.  What it is handed to must itself promise not to store:
//          a pointer to const does.  Where the way can't be followed, the parameter counts as stored through.
// Entry:   check_pointer_parameters.
#include <cstring>

#include "check/misra.h"
#include "check/misra_private.h"
#include "errors/error.h"
#include "il/il_walk.h"
#include "il/types.h"
#include "mem/mem_manage.h"

// Level 0 is the parameter itself, level n what is behind n pointers.
static constexpr unsigned max_levels = 30;

struct a_pointer_param {
  a_variable *variable;
  unsigned levels;  // of pointers to objects
  unsigned written; // bit n: level n is stored to
};

// What is done with the value of a full expression.
enum a_value_use : unsigned char { value_dropped, value_tested, value_kept };

struct a_param_walk {
  a_pointer_param *params;
  unsigned param_count;
  unsigned open_base; // where the nodes of the full expression begin
  a_value_use use;    // of that expression
};
static a_param_walk walk;

// The nodes from the full expression down to the one at hand; those of the expression around a statement expression
// stand below.
static an_expr_node **open_nodes;
static unsigned open_count;
static unsigned size_of_open_nodes;

// Where the use at hand has got to.
struct a_param_place {
  a_pointer_param *param;
  unsigned level; // of the object, or of the place that the pointer at hand was read from
  bool is_part;   // a member or element is meant, whose type says nothing of the levels behind it
  a_type *type;   // of the value, behind conversions
};

//---------------------------------------------------------------------------------------------
// Marks

// What is stored at a level may be a pointer to anything: the levels behind it are open as well.
static void mark_written(a_pointer_param *param, unsigned level)
{
  if (level > max_levels) return;
  param->written |= ~0u << level;
}

// The pointer at hand is kept somewhere: what its type protects by const stays unwritten.
static void hand_out(const a_param_place &place)
{
  a_type *type = skip_typerefs(place.type);
  for (unsigned level = place.level + 1; level <= max_levels; ++level) {
    if (type->kind != tk_pointer) {
      mark_written(place.param, level);
      return;
    }
    a_type *target = type_pointed_to(type);
    if (is_function_type(target)) return;
    if (!is_const_qualified(target)) {
      mark_written(place.param, level);
      return;
    }
    type = skip_typerefs(target);
    // A member's type tells nothing of the levels, and void not what is behind it.
    if (place.is_part || type->kind != tk_pointer) return;
  }
}

// Nothing is known of what happens to the object, or behind the pointer.
static void give_up(const a_param_place &place, const an_expr_node *node)
{
  bool is_object = node->is_lvalue && place.level > 0;
  mark_written(place.param, is_object ? place.level : place.level + 1);
}

//---------------------------------------------------------------------------------------------
// Following a use

static bool is_assignment(an_expr_operator_kind op)
{
  return op >= eok_assign && op <= eok_struct_assign;
}

static bool is_comparison(an_expr_operator_kind op)
{
  return (op >= eok_eq && op <= eok_le) || op == eok_not || op == eok_land || op == eok_lor ||
         op == eok_pointer_difference;
}

// The object behind the pointer at hand, which `node` names or loads.  False: the use ends here.
static bool go_behind_pointer(a_param_place *place, an_expr_node *node, bool is_part)
{
  if (place->is_part && !is_part && !node->is_lvalue) return false;
  ++place->level;
  place->is_part |= is_part;
  place->type = node->type;
  // A value that was loaded goes on as a pointer of its own level, unless it was read from a member.
  return node->is_lvalue || (!place->is_part && is_pointer_type(node->type));
}

// The address of the object at hand.
static bool take_address(a_param_place *place, an_expr_node *node)
{
  if (place->level == 0) { // of the parameter itself: whoever has it can do everything
    mark_written(place->param, 1);
    return false;
  }
  --place->level;
  place->type = node->type;
  return true;
}

static bool follow_into_cast(a_param_place *place, an_expr_node *node)
{
  a_type *type = skip_typerefs(node->type);
  if (op_of(node) == eok_cast_to_bool || type->kind == tk_void) return false;
  place->type = node->type;
  if (type->kind == tk_pointer || node->is_lvalue) return true;
  mark_written(place->param, place->level + 1); // a number, which can become a pointer again
  return false;
}

// The lvalue at hand is the left operand of an assignment, or stepped.
static bool follow_store(a_param_place *place, an_expr_node *node)
{
  if (place->level > 0) mark_written(place->param, place->level);
  place->type = node->type;
  return !place->is_part && is_pointer_type(node->type);
}

// One operation outward: `child` is at the place, an operand of `node`.  False: the use ends here.
static bool follow_into_operation(a_param_place *place, an_expr_node *child, an_expr_node *node)
{
  an_expr_operator_kind op = op_of(node);
  bool is_first = first_operand_of(node) == child;
  if (is_comparison(op)) return false;
  if (op >= eok_pre_incr && op <= eok_post_decr) return follow_store(place, node);
  if (is_assignment(op)) {
    if (is_first) return follow_store(place, node);
    if (!child->is_lvalue) hand_out(*place);
    return false;
  }
  switch (op) {
  case eok_address_of:
  case eok_array_to_pointer: return take_address(place, node);
  case eok_indirection:
  case eok_subscript:
    if (!is_pointer_type(place->type)) return false; // an index
    return go_behind_pointer(place, node, false);
  case eok_arrow_field: return go_behind_pointer(place, node, true);
  case eok_dot_field:
    place->is_part = true;
    place->type = node->type;
    return node->is_lvalue;
  case eok_pointer_add:
  case eok_pointer_subtract: place->type = node->type; return true;
  case eok_question: place->type = node->type; return !is_first;
  case eok_comma: place->type = node->type; return !is_first;
  case eok_cast:
  case eok_lvalue_cast:
  case eok_cast_to_lvalue:
  case eok_cast_to_bool:
  case eok_rvalue_cast:
  case eok_rvalue_qualifier_cast: return follow_into_cast(place, node);
  case eok_call:
    if (!is_first) hand_out(*place);
    return false;
  default: give_up(*place, child); return false;
  }
}

// The use is the whole of a full expression.
static void end_of_expression(const a_param_place &place, const an_expr_node *node)
{
  if (node->is_lvalue || walk.use != value_kept || !is_pointer_type(place.type)) return;
  hand_out(place);
}

static void follow_use(a_pointer_param *param)
{
  unsigned at = open_count - 1;
  a_param_place place = {param, 0, false, open_nodes[at]->type};
  for (; at > walk.open_base; --at) {
    an_expr_node *child = open_nodes[at], *node = open_nodes[at - 1];
    if (node->kind == enk_sizeof) return;
    if (node->kind != enk_operation) { // a built-in operation, an element of a compound literal
      if (child->is_lvalue)
        give_up(place, child);
      else
        hand_out(place);
      return;
    }
    if (!follow_into_operation(&place, child, node)) return;
  }
  end_of_expression(place, open_nodes[at]);
}

//---------------------------------------------------------------------------------------------
// The walk

static void note_statement(a_statement *statement, an_expr_or_stmt_traversal_block *);

static void push_node(an_expr_node *expr)
{
  if (open_count == size_of_open_nodes) {
    unsigned size = size_of_open_nodes * 2 + 64;
    open_nodes = (an_expr_node **)realloc_buffer((char *)open_nodes,
                                                 size_of_open_nodes * sizeof(an_expr_node *),
                                                 size * sizeof(an_expr_node *));
    size_of_open_nodes = size;
  }
  open_nodes[open_count++] = expr;
}

static void look_at_statements(a_statement *list)
{
  an_expr_or_stmt_traversal_block block;
  clear_expr_or_stmt_traversal_block(&block);
  block.stmt_callback = note_statement;
  // Expressions are looked at statement by statement, each with what becomes of its value.
  block.expr_callback = [](an_expr_node *, an_expr_or_stmt_traversal_block *b) {
    b->skip_subtree = true;
  };
  block.init_callback = [](a_dynamic_init *, an_expr_or_stmt_traversal_block *b) {
    b->skip_subtree = true;
  };
  traverse_statement_list(list, &block);
}

static void open_node(an_expr_node *expr, an_expr_or_stmt_traversal_block *block)
{
  push_node(expr);
  if (expr->kind == enk_variable) {
    for (unsigned i = 0; i < walk.param_count; ++i) {
      if (walk.params[i].variable == variable_of(expr)) follow_use(&walk.params[i]);
    }
  } else if (expr->kind == enk_error) {
    for (unsigned i = 0; i < walk.param_count; ++i)
      mark_written(&walk.params[i], 1);
  } else if (expr->kind == enk_statement_expr) {
    a_param_walk saved = walk;
    look_at_statements(statement_of(expr));
    walk = saved;
    --open_count; // what is skipped is not closed
    block->skip_subtree = true;
  }
}

static void close_node(an_expr_node *, an_expr_or_stmt_traversal_block *)
{
  --open_count;
}

static void set_up_expression_walk(an_expr_or_stmt_traversal_block *block, a_value_use use)
{
  clear_expr_or_stmt_traversal_block(block);
  block->expr_callback = open_node;
  block->expr_end_callback = close_node;
  block->follow_dynamic_inits = true;
  walk.use = use;
  walk.open_base = open_count;
}

static void look_at_expression(an_expr_node *expr, a_value_use use)
{
  if (expr == nullptr) return;
  an_expr_or_stmt_traversal_block block;
  set_up_expression_walk(&block, expr->result_not_used ? value_dropped : use);
  traverse_expr(expr, &block);
}

static void look_at_init(a_dynamic_init *init)
{
  if (init == nullptr) return;
  an_expr_or_stmt_traversal_block block;
  set_up_expression_walk(&block, value_kept);
  traverse_dynamic_init(init, &block);
}

static void note_statement(a_statement *statement, an_expr_or_stmt_traversal_block *)
{
  switch (statement->kind) {
  case stmk_for:
    look_at_expression(for_supplement_of(statement)->increment_expr, value_dropped);
    [[fallthrough]];
  case stmk_if:
  case stmk_while:
  case stmk_do:
  case stmk_switch: look_at_expression(statement->expr, value_tested); break;
  case stmk_return:
  case stmk_init:
    look_at_expression(statement->expr, value_kept);
    look_at_init(dynamic_init_of(statement));
    break;
  case stmk_vla_decl: look_at_expression(vla_dimension_of(statement)->expr, value_tested); break;
  case stmk_asm:
    for (an_asm_operand *operand = asm_entry_of(statement)->operands; operand != nullptr;
         operand = operand->next) {
      look_at_expression(operand->expr, value_kept);
    }
    break;
  default: look_at_expression(statement->expr, value_kept); break;
  }
}

//---------------------------------------------------------------------------------------------
// The report

static bool level_lacks_const(const a_pointer_param *param, unsigned level, a_type *target)
{
  return !(param->written >> level & 1) && !is_const_qualified(target);
}

// The type with const on each level of its pointers that isn't stored to; *changed says whether any got one.
static a_type *type_with_const(const a_pointer_param *param, a_type *type, unsigned level,
                               bool *changed)
{
  if (level >= param->levels) return type;
  a_type *target = type_pointed_to(skip_typerefs(type));
  bool target_changed = false;
  a_type *new_target = type_with_const(param, target, level + 1, &target_changed);
  if (level_lacks_const(param, level + 1, target)) {
    new_target = f_make_qualified_type(new_target, tq_const);
    target_changed = true;
  }
  if (!target_changed) return type;
  *changed = true;
  a_type *pointer = make_pointer_type(new_target);
  a_type_qualifier_set qualifiers = get_type_qualifiers(type);
  return qualifiers != 0 ? f_make_qualified_type(pointer, qualifiers) : pointer;
}

static void report_parameter(const a_pointer_param *param)
{
  bool changed = false;
  a_type *type = type_with_const(param, param->variable->type, 0, &changed);
  if (!changed) return;
  const a_source_correspondence *corresp = &param->variable->source_corresp;
  pos_ststst_diagnostic(misra_advisory_severity, ec_misra_c_2004_16_7, corresp->decl_position,
                        corresp->name != nullptr ? corresp->name : "<unnamed>", ": ",
                        format_type_string(type, nullptr));
}

//---------------------------------------------------------------------------------------------
// Entry

static unsigned levels_of_object_pointers(a_type *type)
{
  unsigned levels = 0;
  for (type = skip_typerefs(type); type->kind == tk_pointer; type = skip_typerefs(type)) {
    type = type_pointed_to(type);
    if (is_function_type(type)) break;
    ++levels;
  }
  return levels <= max_levels ? levels : max_levels;
}

void check_pointer_parameters(a_scope *function_scope, a_statement *body)
{
  unsigned count = 0;
  for (a_variable *variable = function_scope->parameters; variable; variable = variable->next)
    ++count;
  if (count == 0) return;
  size_t size = count * sizeof(a_pointer_param);
  walk = {};
  walk.params = (a_pointer_param *)alloc_general(size);
  for (a_variable *variable = function_scope->parameters; variable; variable = variable->next) {
    unsigned levels = levels_of_object_pointers(variable->type);
    if (levels > 0) walk.params[walk.param_count++] = {variable, levels, 0};
  }
  if (walk.param_count > 0) {
    look_at_statements(body);
    for (unsigned i = 0; i < walk.param_count; ++i)
      report_parameter(&walk.params[i]);
  }
  free_general(walk.params, size);
}
