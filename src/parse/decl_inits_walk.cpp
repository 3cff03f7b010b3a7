// decl_inits_walk.cpp - values in braces: aggregates, elided braces, designators.
// Rule:    a level walks one object; without braces of its own it takes as many values as it needs,
//          and leaves
//          designators to the innermost level with braces.  A value's place is told by a designator
//          entry wherever
//          it isn't the next one; a later entry for a place overrides an earlier one.
// Entry:   scan_object_initializer.
// See:     C99 6.7.8.
#include "consts/folding.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "lex/token_cache.h"
#include "mem/stack_limit.h"
#include "parse/class_decl.h"
#include "parse/decl_inits_internal.h"
#include "parse/expr.h"
#include "parse/lookup.h"
#include "parse/symbol_ref.h"
#include "parse/symbol_tbl.h"

// Where a level stands in its object.
struct an_init_pos_state {
  a_type *type; // skipped typerefs
  an_init_walk *walk;
  a_constant *aggregate; // being built
  bool has_braces;
  bool is_array;
  bool bound_is_known;
  bool at_end; // the element behind the last one
  uint64_t bound;
  uint64_t index;       // arrays: the element that comes next
  uint64_t highest;     // arrays: one past the highest index reached
  a_field *field;       // classes: the member that comes next
  uint64_t range_count; // GNU: the value stands for that many elements
};

static void scan_level(an_init_pos_state *level, bool starts_with_designator);

// -------------------------------------------------------------------------------------------------
// Places

static bool is_aggregate(a_type *type)
{
  type = skip_typerefs(type);
  return type->kind == tk_array || kind_has_class_part(type->kind);
}

static void start_level(a_type *type, an_init_walk *walk, bool has_braces, a_constant *aggregate,
                        an_init_pos_state *level)
{
  *level = {};
  level->type = skip_typerefs(type);
  level->walk = walk;
  level->aggregate = aggregate;
  level->has_braces = has_braces;
  clear_constant(aggregate, ck_aggregate);
  aggregate->type = type;
  aggregate_of(aggregate).has_own_braces = has_braces;
  level->is_array = level->type->kind == tk_array;
  if (level->is_array) {
    level->bound_is_known = !is_incomplete_array_type(level->type);
    if (level->bound_is_known) level->bound = as_array(level->type).bound.number_of_elements;
    level->at_end = level->bound_is_known && level->bound == 0;
  } else {
    level->field = first_initializable_field(level->type);
    level->at_end = level->field == nullptr;
  }
}

static a_type *type_of_next_element(an_init_pos_state *level)
{
  return level->is_array ? as_array(level->type).element_type : level->field->type;
}

static void step_to_next_element(an_init_pos_state *level)
{
  if (level->is_array) {
    level->index += level->range_count > 1 ? level->range_count : 1;
    level->range_count = 0;
    if (level->index > level->highest) level->highest = level->index;
    level->at_end = level->bound_is_known && level->index >= level->bound;
    return;
  }
  level->field =
      level->type->kind == tk_union ? nullptr : next_initializable_field(level->field->next);
  level->at_end = level->field == nullptr;
}

static a_constant *append_entry(an_init_pos_state *level, const a_constant *value)
{
  a_constant *entry = alloc_unshared_constant(value);
  add_to_aggregate(level->aggregate, entry);
  return entry;
}

static void append_designator(an_init_pos_state *level)
{
  a_constant designator;
  clear_constant(&designator, ck_designator);
  if (level->is_array)
    designator_of(&designator).index = level->index;
  else
    designator_of(&designator).field = level->field;
  append_entry(level, &designator);
  aggregate_of(level->aggregate).has_designators = true;
}

// -------------------------------------------------------------------------------------------------
// Designators

static bool at_old_field_designator()
{
  return extended_designators_allowed && curr_token == tok_identifier && next_token() == tok_colon;
}

static bool at_designator()
{
  if (!designators_allowed && !extended_designators_allowed) return false;
  if (curr_token == tok_period || curr_token == tok_lbracket) return true;
  return curr_token == tok_identifier && at_old_field_designator();
}

// A subscript as a target integer in range; false after a message.
static bool scan_subscript_value(an_init_pos_state *level, uint64_t *value)
{
  a_constant constant;
  a_source_position pos = pos_curr_token;
  scan_integral_constant_expression(&constant);
  if (constant.kind != ck_integer) return false;
  bool overflow = false;
  long long number = value_of_integer_constant(&constant, &overflow);
  if (overflow || number < 0 || (level->bound_is_known && (uint64_t)number >= level->bound)) {
    pos_error(ec_subscript_out_of_range, pos);
    return false;
  }
  *value = (uint64_t)number;
  return true;
}

static bool scan_array_designator(an_init_pos_state *level, bool *is_extended)
{
  a_source_position pos = pos_curr_token;
  if (!level->is_array) pos_error(ec_invalid_designator_kind, pos);
  uint64_t first = 0, last = 0;
  get_token();
  add_stop_token(tok_rbracket);
  bool ok = scan_subscript_value(level, &first) && level->is_array;
  last = first;
  if (curr_token == tok_ellipsis && extended_designators_allowed) {
    *is_extended = true;
    get_token();
    a_source_position last_pos = pos_curr_token;
    ok = scan_subscript_value(level, &last) && ok;
    if (ok && last < first) {
      pos_error(ec_no_negative_designator_range, last_pos);
      ok = false;
    }
  }
  remove_stop_token(tok_rbracket);
  required_token(tok_rbracket, ec_exp_rbracket);
  if (!ok) return false;
  level->index = first;
  level->range_count = last - first + 1;
  level->at_end = false;
  append_designator(level);
  return true;
}

// The first step of the way to a member: the unnamed member that holds it, or the member itself.
static a_symbol *first_step_to_member(a_symbol *symbol)
{
  while (symbol->variant.field.anonymous_parent != nullptr)
    symbol = symbol->variant.field.anonymous_parent;
  return symbol;
}

// *remaining: the member that the way goes on to inside an anonymous one, or null.
static bool designate_member(an_init_pos_state *level, a_symbol_locator *locator,
                             a_source_position pos, a_symbol **remaining)
{
  *remaining = nullptr;
  if (level->is_array) {
    pos_error(ec_invalid_designator_kind, pos);
    return false;
  }
  a_symbol *symbol = class_qualified_id_lookup(locator, level->type, lo_none);
  if (symbol == nullptr || symbol->kind != sk_field) {
    a_symbol *class_symbol = level->type->source_corresp.assoc_symbol;
    if (class_symbol != nullptr)
      pos_stsy_error(ec_not_a_field, pos, locator->header->identifier, class_symbol);
    else
      pos_st_error(ec_not_a_field_name, pos, locator->header->identifier);
    return false;
  }
  record_symbol_reference(4, symbol, &pos);
  a_symbol *step = first_step_to_member(symbol);
  if (step != symbol) *remaining = symbol;
  level->field = field_of_symbol(step);
  level->at_end = false;
  append_designator(level);
  return true;
}

static void report_designator_extension(bool is_extended, a_source_position pos)
{
  if (!report_gnu_extensions || !(gcc_mode || gpp_mode)) return;
  if (is_extended)
    pos_warning(ec_extended_designator_is_gnu_extension, pos);
  else if (!c99_mode)
    pos_warning(ec_designator_is_nonstandard, pos);
}

// Behind a designator: "=", or another designator, which belongs to the element's own level.
// False: error.
static bool finish_designator(bool is_extended, bool *goes_on)
{
  *goes_on = false;
  if (curr_token == tok_assign) {
    get_token();
    return true;
  }
  if (curr_token == tok_period || curr_token == tok_lbracket) {
    *goes_on = true;
    return true;
  }
  if (is_extended || extended_designators_allowed) return true;
  error_position = pos_curr_token;
  error(ec_exp_assign);
  return true;
}

// -------------------------------------------------------------------------------------------------
// Elements

static void note_value(an_init_pos_state *level, a_constant *value)
{
  if (value->kind == ck_error) level->walk->error_seen = true;
  if (level->is_array && level->range_count > 1) {
    if (value->kind == ck_dynamic_init)
      pos_error(ec_no_range_designator_with_dynamic_init, pos_curr_token);
    a_constant repeat;
    clear_constant(&repeat, ck_init_repeat);
    init_repeat_of(&repeat).repeated = alloc_unshared_constant(value);
    init_repeat_of(&repeat).count = level->range_count;
    init_repeat_of(&repeat).from_range_designator = true;
    append_entry(level, &repeat);
    return;
  }
  append_entry(level, value);
}

// A member of an anonymous struct or union was designated: the levels in between are made here.
static void scan_designated_in_anonymous(an_init_pos_state *outer, a_symbol *member)
{
  an_init_pos_state level;
  a_constant value;
  start_level(type_of_next_element(outer), outer->walk, false, &value, &level);
  a_symbol *step = member;
  while (step->variant.field.anonymous_parent != nullptr &&
         field_of_symbol(step->variant.field.anonymous_parent) != outer->field) {
    step = step->variant.field.anonymous_parent;
  }
  level.field = field_of_symbol(step);
  level.at_end = false;
  append_designator(&level);
  if (step != member) {
    scan_designated_in_anonymous(&level, member);
    step_to_next_element(&level);
  } else {
    bool goes_on;
    finish_designator(false, &goes_on);
    a_constant element;
    if (goes_on) {
      an_init_pos_state inner;
      start_level(type_of_next_element(&level), level.walk, false, &element, &inner);
      scan_level(&inner, true);
    } else {
      a_type *type = type_of_next_element(&level);
      scan_object_initializer(&type, level.walk, &element);
    }
    note_value(&level, &element);
    step_to_next_element(&level);
  }
  note_value(outer, &value);
}

// A flexible array member takes values only in an object of static storage duration (GNU).
static bool check_flexible_array(an_init_pos_state *level, a_source_position pos)
{
  if (level->is_array || !is_incomplete_array_type(level->field->type)) return true;
  if (!gcc_mode && !gpp_mode) {
    pos_error(ec_cannot_initialize_flexible_array_member, pos);
    return false;
  }
  if (!level->walk->is_static) {
    pos_error(ec_cannot_init_auto_flexible_array_member, pos);
    return false;
  }
  // GNU C takes a string there: whoever writes one knows that the object around ends with room for
  // it.
  if (level->walk->level_depth > 1 && (C_dialect == 2 || curr_token != tok_string_literal)) {
    pos_error(ec_cannot_initialize_indirect_flexible_array, pos);
    return false;
  }
  level->walk->is_object_with_flexible_array = true;
  return true;
}

// Reads one designator with what it designates.
static bool scan_designated_element(an_init_pos_state *level)
{
  a_source_position pos = pos_curr_token;
  a_symbol *remaining = nullptr;
  bool is_extended = false, ok;
  if (curr_token == tok_lbracket) {
    ok = scan_array_designator(level, &is_extended);
  } else {
    is_extended = curr_token == tok_identifier;
    if (!is_extended) get_token();
    if (curr_token != tok_identifier) {
      syntax_error(ec_exp_identifier);
      return false;
    }
    a_symbol_locator locator = locator_for_curr_id;
    a_source_position name_pos = pos_curr_token;
    get_token();
    if (is_extended) get_token(); // the colon
    ok = designate_member(level, &locator, name_pos, &remaining);
  }
  report_designator_extension(is_extended, pos);
  if (!ok) {
    while (curr_token == tok_period || curr_token == tok_lbracket) {
      flush_tokens_without_warning();
      break;
    }
    if (curr_token == tok_assign) get_token();
    scan_and_discard_initializer_expression();
    level->walk->error_seen = true;
    return false;
  }
  if (remaining != nullptr) {
    scan_designated_in_anonymous(level, remaining);
    return true;
  }
  bool goes_on;
  finish_designator(is_extended, &goes_on);
  a_constant value;
  if (goes_on) {
    if (is_extended && !level->is_array)
      pos_error(ec_no_ordinary_and_extended_designators, pos_curr_token);
    if (!is_aggregate(type_of_next_element(level))) {
      pos_error(ec_invalid_designator_kind, pos_curr_token);
      flush_tokens_without_warning();
      level->walk->error_seen = true;
      return false;
    }
    an_init_pos_state inner;
    start_level(type_of_next_element(level), level->walk, false, &value, &inner);
    scan_level(&inner, true);
  } else {
    a_type *type = type_of_next_element(level);
    if (!check_flexible_array(level, pos)) {
      scan_and_discard_initializer_expression();
      level->walk->error_seen = true;
      return false;
    }
    scan_object_initializer(&type, level->walk, &value);
  }
  note_value(level, &value);
  return true;
}

static void scan_next_element(an_init_pos_state *level)
{
  a_constant value;
  a_type *type = type_of_next_element(level);
  if (!check_flexible_array(level, pos_curr_token)) {
    scan_and_discard_initializer_expression();
    level->walk->error_seen = true;
    return;
  }
  scan_object_initializer(&type, level->walk, &value);
  note_value(level, &value);
}

static void skip_excess_element(an_init_pos_state *level)
{
  if (!level->walk->excess_reported) {
    level->walk->excess_reported = true;
    if (gcc_mode) {
      pos_warning(ec_excess_initializers_ignored, pos_curr_token);
    } else {
      pos_error(ec_too_many_initializer_values, pos_curr_token);
      level->walk->error_seen = true;
    }
  }
  if (!drop_kept_initializer_element()) scan_and_discard_initializer_expression();
}

// -------------------------------------------------------------------------------------------------
// Levels

// Behind a value.  True: another value of this level follows, the comma is consumed.
static bool another_value_follows(an_init_pos_state *level)
{
  an_init_walk *walk = level->walk;
  if (level->has_braces) {
    if (walk->comma_taken) {
      walk->comma_taken = false;
    } else if (!loop_token(tok_comma)) {
      if (curr_token != tok_rbrace) {
        error_position = pos_curr_token;
        syntax_error(ec_exp_comma);
      }
      return false;
    }
    return curr_token != tok_rbrace && curr_token != tok_end_of_source;
  }
  if (walk->comma_taken || walk->brace_depth == 0) return false;
  if (level->at_end || curr_token != tok_comma) return false;
  get_token();
  if (curr_token == tok_rbrace || at_designator()) {
    walk->comma_taken = true;
    return false;
  }
  return true;
}

// Does an entry of the list stand for the member?  A designator says where the entries behind it
// go.
static bool member_has_value(an_init_pos_state *level, a_field *member)
{
  a_field *place = first_initializable_field(level->type);
  a_constant *entry = aggregate_of(level->aggregate).first_element;
  for (; entry != nullptr; entry = entry->next) {
    if (entry->kind == ck_designator) {
      place = designator_of(entry).field;
    } else if (place != nullptr) {
      if (place == member) return true;
      place = next_initializable_field(place->next);
    }
  }
  return false;
}

static void note_const_members_without_value(an_init_pos_state *level)
{
  if (level->type->kind != tk_struct || !as_class(level->type).has_const_field) return;
  a_field *field = first_initializable_field(level->type);
  for (; field != nullptr; field = next_initializable_field(field->next)) {
    a_type *type = skip_typerefs(field->type);
    bool is_const = is_const_qualified(field->type) ||
                    (type->kind == tk_struct && as_class(type).has_const_field);
    if (is_const && !member_has_value(level, field)) level->walk->const_member_unset = true;
  }
}

static void scan_level(an_init_pos_state *level, bool starts_with_designator)
{
  check_recursion();
  if (level->has_braces && curr_token == tok_rbrace) return;
  bool may_designate = level->has_braces || starts_with_designator;
  ++level->walk->level_depth;
  do {
    if (may_designate && at_designator()) {
      if (scan_designated_element(level)) step_to_next_element(level);
    } else if (level->at_end) {
      skip_excess_element(level);
    } else {
      scan_next_element(level);
      step_to_next_element(level);
    }
    may_designate = level->has_braces;
  } while (another_value_follows(level));
  --level->walk->level_depth;
  note_const_members_without_value(level);
}

// An array of unknown bound gets one past the highest index.
static void complete_array(a_type **type, an_init_pos_state *level)
{
  if (!level->is_array || level->bound_is_known) return;
  a_type *complete = copy_type(level->type);
  as_array(complete).bound.number_of_elements = level->highest;
  as_array(complete).bound_is_zero = level->highest == 0;
  complete->size = 0;
  complete->is_incomplete = false;
  set_array_type_size(complete, true);
  a_type_qualifier_set qualifiers = f_get_type_qualifiers(*type, true);
  *type = qualifiers == 0 ? complete : f_make_qualified_type(complete, qualifiers);
  level->aggregate->type = *type;
}

static void scan_braced_aggregate(a_type **type, an_init_walk *walk, a_constant *constant)
{
  an_init_pos_state level;
  get_token();
  ++walk->brace_depth;
  bool saved_required = walk->constants_required;
  if (C_dialect != 2 && !allow_nonconstant_auto_aggr_init_in_c_mode)
    walk->constants_required = true;
  add_stop_token(tok_rbrace);
  add_stop_token(tok_comma);
  if (string_initializes_array(*type, true)) {
    scan_string_initializer(type, walk, constant);
    if (curr_token == tok_comma) get_token();
  } else {
    start_level(*type, walk, true, constant, &level);
    bool unknown = level.is_array && !level.bound_is_known;
    bool saved_excess = walk->excess_reported, saved_elision = walk->elision_reported;
    walk->excess_reported = walk->elision_reported = false;
    if (curr_token == tok_rbrace && unknown && !(gcc_mode || gpp_mode)) {
      pos_error(ec_bad_initializer_for_array_with_unspecified_bound, pos_curr_token);
      walk->error_seen = true;
    }
    scan_level(&level, false);
    walk->excess_reported = saved_excess;
    walk->elision_reported = saved_elision;
    complete_array(type, &level);
  }
  remove_stop_token(tok_comma);
  remove_stop_token(tok_rbrace);
  walk->comma_taken = false;
  --walk->brace_depth;
  walk->constants_required = saved_required;
  required_token(tok_rbrace, ec_exp_rbrace);
}

static bool is_all_zero(a_constant *constant)
{
  switch (constant->kind) {
  case ck_aggregate:
    for (a_constant *e = aggregate_of(constant).first_element; e != nullptr; e = e->next) {
      if (e->kind != ck_designator && !is_all_zero(e)) return false;
    }
    return true;
  case ck_init_repeat: return is_all_zero(init_repeat_of(constant).repeated);
  case ck_integer:
  case ck_float: return is_zero_constant(constant);
  default: return false;
  }
}

// MISRA 9.2: a part of an aggregate has its own braces unless it is all zero; once for a list.
static void check_elided_braces(an_init_walk *walk, a_constant *constant, a_source_position pos)
{
  if (walk->elision_reported || is_all_zero(constant)) return;
  walk->elision_reported = true;
  pos_diagnostic(misra_required_severity, ec_misra_c_2004_9_2, pos);
}

// Without a brace: a class takes a whole value of its type where one comes, else its members take
// the values.
static void scan_unbraced_aggregate(a_type **type, an_init_walk *walk, a_constant *constant)
{
  if (string_initializes_array(*type, false)) {
    scan_string_initializer(type, walk, constant);
    return;
  }
  a_source_position pos = pos_curr_token;
  bool is_class = is_class_struct_union_type(*type), is_whole_object = walk->brace_depth == 0;
  // A string is never the value of a class: it waits for a member.
  if (is_class && curr_token != tok_string_literal) {
    bool not_whole;
    an_expr_node *expr;
    scan_initializer_element(*type, walk->constants_required, walk->is_static, is_whole_object,
                             &not_whole, &expr, constant);
    if (!not_whole) {
      if (expr != nullptr) make_dynamic_element(expr, *type, walk, constant);
      return;
    }
  }
  if (is_class && is_whole_object && !missing_braces_are_tolerated(pos)) {
    if (!drop_kept_initializer_element()) scan_and_discard_initializer_expression();
    set_error_constant(constant);
    walk->error_seen = true;
    return;
  }
  an_init_pos_state level;
  start_level(*type, walk, false, constant, &level);
  if (level.at_end) {
    // What has no member takes a value all the same, which is one too many.
    if (C_dialect != 2) skip_excess_element(&level);
    return;
  }
  scan_level(&level, false);
  if (check_misra_c_2004 && !is_whole_object) check_elided_braces(walk, constant, pos);
  complete_array(type, &level);
}

// C++: a class with constructors, bases or members that nobody may name takes no list.
static bool check_braces_of_class(a_type *type)
{
  if (C_dialect != 2 || !is_class_struct_union_type(type)) return true;
  a_class_symbol_supplement *supplement = class_symbol_supplement_of(skip_typerefs(type));
  if (supplement == nullptr || supplement->is_aggregate) return true;
  pos_ty_error(ec_brace_initialization_not_allowed, pos_curr_token, type);
  return false;
}

void scan_object_initializer(a_type **type, an_init_walk *walk, a_constant *constant)
{
  check_recursion();
  if (!is_aggregate(*type)) {
    scan_scalar_initializer(*type, walk, constant);
  } else if (curr_token == tok_lbrace && !check_braces_of_class(*type)) {
    scan_and_discard_initializer_expression();
    set_error_constant(constant);
    walk->error_seen = true;
  } else if (curr_token == tok_lbrace) {
    scan_braced_aggregate(type, walk, constant);
  } else {
    scan_unbraced_aggregate(type, walk, constant);
  }
}
