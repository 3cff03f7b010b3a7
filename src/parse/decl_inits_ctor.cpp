// decl_inits_ctor.cpp - member initializers of constructors, what the source doesn't write of them, and
// the end of destructors.
// Rule:    a function scope lists what is built (or destroyed, backwards): virtual bases, direct bases,
//          members, in the order of the class, whatever the order of the source.
// Entry:   ctor_initializer, dtor_initializer.
// See:     C++98 12.6.2, 12.4, 12.8.
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/token_cache.h"
#include "parse/class_decl.h"
#include "parse/decl_inits_internal.h"
#include "parse/expr.h"
#include "parse/expr_class.h"
#include "parse/expr_internal.h"
#include "parse/lookup.h"
#include "parse/overload.h"
#include "parse/scope_stk.h"
#include "parse/symbol_ref.h"

// One constructor's work.
struct a_ctor_scan {
  a_routine *routine;
  a_type *class_type;
  a_constructor_init *written; // in the order of the source
  a_constructor_init **last_written;
  a_constructor_init **last_in_order;
  a_field *written_union_member;
  a_source_position position; // of what the source doesn't write
  bool is_copy;               // the compiler's own copy constructor
  bool failure_open;          // message 368 or 369 lists what can't be initialized
};

// -------------------------------------------------------------------------------------------------
// Entries

static a_constructor_init *make_entry(a_constructor_init_kind kind, a_dynamic_init *init,
                                      a_source_position position)
{
  a_constructor_init *entry = alloc_ctor_init(kind);
  if (init != nullptr) {
    init->is_ctor_init = true;
    init->position = position;
  }
  entry->dynamic_init = init;
  entry->position = position;
  return entry;
}

static bool is_entry_for(const a_constructor_init *entry, const void *entity)
{
  return entry->kind == cik_field ? entry->entity.field == entity
                                  : entry->entity.base_class == entity;
}

static a_constructor_init *written_entry_for(const a_ctor_scan *scan, const void *entity)
{
  a_constructor_init *entry = scan->written;
  while (entry != nullptr && !is_entry_for(entry, entity))
    entry = entry->next;
  return entry;
}

static void unlink_written(a_ctor_scan *scan, a_constructor_init *entry)
{
  a_constructor_init **link = &scan->written;
  while (*link != entry)
    link = &(*link)->next;
  *link = entry->next;
  entry->next = nullptr;
}

static void append_in_order(a_ctor_scan *scan, a_constructor_init *entry)
{
  *scan->last_in_order = entry;
  scan->last_in_order = &entry->next;
}

// -------------------------------------------------------------------------------------------------
// Values

static a_dynamic_init *init_of_scalar(a_type *type)
{
  bool not_whole;
  an_expr_node *expr = nullptr;
  a_constant constant;
  scan_initializer_element(type, false, false, true, &not_whole, &expr, &constant);
  if (expr != nullptr) return dynamic_init_from_expr(expr, type);
  if (constant.kind == ck_error) return nullptr;
  a_dynamic_init *init = alloc_dynamic_init(dik_constant);
  constant_of(init) = alloc_unshared_constant(&constant);
  return init;
}

// (): zero, or the default constructor.
static a_dynamic_init *value_initialization(a_type *type, a_source_position pos)
{
  if (is_any_reference_type(type)) {
    pos_error(ec_default_init_of_reference, pos);
    return nullptr;
  }
  bool failed = false;
  a_dynamic_init *init = nullptr;
  if (class_of_elements(type) != nullptr) {
    a_scan_entry scan;
    an_operand place;
    open_entry(&scan, ek_normal, false, true);
    init = make_default_init(type, pos, &failed);
    make_error_operand(&place);
    place.end_position = end_pos_curr_token;
    close_entry(&scan, &place);
  }
  if (failed) return nullptr;
  if (init == nullptr) return alloc_dynamic_init(dik_zero);
  if (init->kind == dik_none) set_dynamic_init_kind(init, dik_zero);
  return init;
}

static void skip_arguments()
{
  while (curr_token != tok_rparen && curr_token != tok_end_of_source) {
    scan_and_discard_initializer_expression();
    if (!loop_token(tok_comma)) break;
  }
}

// Behind `(`; the type is that of the member, or the base class.
static a_dynamic_init *scan_value(a_type *type, a_symbol *member, a_source_position pos)
{
  if (is_error_type(type)) {
    skip_arguments();
    return nullptr;
  }
  if (curr_token == tok_rparen) return value_initialization(type, pos);
  if (is_array_type(type)) {
    pos_sy_error(ec_array_member_initialization, pos, member);
    skip_arguments();
    return nullptr;
  }
  if (is_class_struct_union_type(type)) return scan_class_initializer(type, true, pos);
  a_dynamic_init *init = init_of_scalar(type);
  if (curr_token == tok_comma) {
    get_token();
    pos_error(ec_too_many_initializer_values, pos_curr_token);
    skip_arguments();
  }
  return init;
}

static a_dynamic_init *scan_parenthesized_value(a_type *type, a_symbol *member,
                                                a_source_position pos)
{
  a_dynamic_init *init = nullptr;
  an_init_lifetime lifetime;
  if (!required_token(tok_lparen, ec_exp_lparen)) return nullptr;
  add_stop_token(tok_rparen);
  push_init_lifetime(&lifetime);
  init = scan_value(type, member, pos);
  pop_init_lifetime(&lifetime, init, type);
  remove_stop_token(tok_rparen);
  required_token(tok_rparen, ec_exp_rparen);
  return init;
}

// -------------------------------------------------------------------------------------------------
// The list of the source

// What an item names: a member, or a base class; both null after a message.
struct a_ctor_item {
  a_symbol *member;
  a_base_class *base;
  a_source_position position;
};

static void check_for_duplicate(a_ctor_scan *scan, a_ctor_item *item)
{
  const void *entity = item->base;
  if (item->member != nullptr) entity = field_of_symbol(item->member);
  if (written_entry_for(scan, entity) != nullptr) {
    if (item->member != nullptr)
      pos_sy_error(ec_member_already_initialized, item->position, item->member);
    else
      pos_ty_error(ec_base_class_already_initialized, item->position, item->base->type);
    item->member = nullptr;
    item->base = nullptr;
    return;
  }
  if (item->member == nullptr) return;
  bool is_union = skip_typerefs(scan->class_type)->kind == tk_union;
  if (is_union && scan->written_union_member != nullptr) {
    pos_error(ec_union_already_initialized, item->position);
    item->member = nullptr;
    return;
  }
  scan->written_union_member = field_of_symbol(item->member);
}

static a_base_class *only_direct_base(a_type *class_type)
{
  a_base_class *found = nullptr;
  for (a_base_class *base = class_supplement_of(class_type)->base_classes; base != nullptr;
       base = base->next) {
    if (!base->is_direct) continue;
    if (found != nullptr) return nullptr;
    found = base;
  }
  return found;
}

static void resolve_base(a_ctor_scan *scan, a_type *type, a_ctor_item *item)
{
  a_base_class *base = class_supplement_of(scan->class_type)->base_classes, *found = nullptr;
  bool is_indirect = false;
  for (; base != nullptr; base = base->next) {
    if (!identical_types(skip_typerefs(base->type), type)) continue;
    if (base->is_direct || base->is_virtual) {
      if (found != nullptr) {
        pos_ty_error(ec_ambiguous_base_class, item->position, type);
        return;
      }
      found = base;
    } else {
      is_indirect = true;
    }
  }
  item->base = found;
  if (found != nullptr) return;
  if (is_indirect) {
    pos_error(ec_indirect_nonvirtual_base_class_not_allowed, item->position);
  } else {
    const char *name = locator_for_curr_id.header->identifier;
    pos_stty_error(ec_not_a_field_or_base_class, item->position, name, scan->class_type);
  }
}

// At the name, which stays current.
static void resolve_item(a_ctor_scan *scan, a_ctor_item *item)
{
  bool error_found = false;
  a_symbol_locator locator = locator_for_curr_id;
  a_symbol *symbol = nullptr;
  f_is_generalized_identifier_start(0, nullptr);
  locator = locator_for_curr_id;
  if (locator.header == nullptr) return;
  bool is_qualified = (locator.qualifier_bits & qb_qualified) != 0;
  if (!is_qualified) {
    locator.symbol = nullptr;
    symbol = class_qualified_id_lookup(&locator, scan->class_type, lo_no_base_classes);
    if (symbol != nullptr && symbol->kind == sk_field) {
      item->member = symbol;
      return;
    }
  }
  symbol = coalesce_and_lookup_generalized_identifier(0, lo_none, &error_found);
  if (error_found) return;
  if (symbol != nullptr && is_type_symbol(symbol) &&
      is_class_struct_union_type(type_of_symbol(symbol))) {
    resolve_base(scan, skip_typerefs(type_of_symbol(symbol)), item);
  } else if (symbol != nullptr && symbol->kind == sk_field && is_qualified) {
    pos_error(ec_qualified_name_not_allowed, item->position);
  } else {
    pos_stty_error(ec_not_a_field_or_base_class, item->position,
                   locator_for_curr_id.header->identifier, scan->class_type);
  }
}

static a_type *type_of_item(const a_ctor_item *item)
{
  if (item->member != nullptr) return field_of_symbol(item->member)->type;
  return item->base != nullptr ? item->base->type : error_type();
}

static void scan_item(a_ctor_scan *scan)
{
  a_ctor_item item = {};
  item.position = pos_curr_token;
  if (curr_token == tok_lparen) {
    item.base = only_direct_base(scan->class_type);
    if (item.base != nullptr)
      pos_ty_warning(ec_base_class_init_anachronism, item.position, item.base->type);
    else
      pos_error(ec_missing_base_class_or_member_name, item.position);
  } else if (curr_token == tok_identifier || curr_token == tok_colon_colon) {
    resolve_item(scan, &item);
    get_token();
  } else {
    syntax_error(ec_missing_base_class_or_member_name);
    return;
  }
  check_for_duplicate(scan, &item);
  bool known = item.member != nullptr || item.base != nullptr;
  if (item.member != nullptr)
    record_symbol_reference(rk_modified, item.member, &item.position, true);
  a_dynamic_init *init = scan_parenthesized_value(type_of_item(&item), item.member, item.position);
  if (!known) return;
  a_constructor_init_kind kind = item.member != nullptr  ? cik_field
                                 : item.base->is_virtual ? cik_virtual_base
                                                         : cik_direct_base;
  a_constructor_init *entry = make_entry(kind, init, item.position);
  if (item.member != nullptr)
    entry->entity.field = field_of_symbol(item.member);
  else
    entry->entity.base_class = item.base;
  *scan->last_written = entry;
  scan->last_written = &entry->next;
}

static void scan_list(a_ctor_scan *scan)
{
  add_stop_token(tok_lbrace);
  add_stop_token(tok_comma);
  do {
    get_token();
    scan_item(scan);
  } while (curr_token == tok_comma);
  remove_stop_token(tok_comma);
  remove_stop_token(tok_lbrace);
}

// -------------------------------------------------------------------------------------------------
// The order

static a_symbol *symbol_of_entry(const a_constructor_init *entry)
{
  if (entry->kind == cik_field) return entry->entity.field->source_corresp.assoc_symbol;
  return skip_typerefs(entry->entity.base_class->type)->source_corresp.assoc_symbol;
}

static long place_of_field(const a_type *class_type, const a_field *field)
{
  long place = 1000000;
  for (a_field *f = as_class((a_type *)class_type).first_field; f != nullptr && f != field;
       f = f->next)
    ++place;
  return place;
}

static long place_of_entry(const a_ctor_scan *scan, const a_constructor_init *entry)
{
  if (entry->kind == cik_field) return place_of_field(scan->class_type, entry->entity.field);
  if (entry->kind == cik_direct_base) return 100000 + entry->entity.base_class->order;
  long place = 0;
  a_base_class *base = class_supplement_of(scan->class_type)->virtual_bases;
  for (; base != nullptr && base != entry->entity.base_class; base = base->next_virtual_base)
    ++place;
  return place;
}

static void check_order(a_ctor_scan *scan)
{
  if (scan->written == nullptr) return;
  long last = place_of_entry(scan, scan->written);
  a_constructor_init *previous = scan->written;
  for (a_constructor_init *entry = previous->next; entry != nullptr; entry = entry->next) {
    long place = place_of_entry(scan, entry);
    a_symbol *first = symbol_of_entry(entry), *second = symbol_of_entry(previous);
    if (place < last && first != nullptr && second != nullptr)
      pos_sy2_remark(ec_out_of_order_ctor_init, entry->position, first, second);
    last = place;
    previous = entry;
  }
}

// -------------------------------------------------------------------------------------------------
// What the source doesn't write

static void list_uninitialized(a_ctor_scan *scan, an_error_code code, a_symbol *symbol)
{
  if (!scan->failure_open) {
    scan->failure_open = true;
    if (scan->routine->is_compiler_generated)
      pos_ty_start_error(ec_cannot_initialize_fields, scan->position, scan->class_type);
    else
      pos_sy_start_error(ec_missing_initializer_on_fields, scan->position,
                         scan->routine->source_corresp.assoc_symbol);
  }
  sym_add_diag_info(code, symbol);
}

// A copy of the same part of the constructor's parameter.
static a_dynamic_init *copy_of_part(a_ctor_scan *scan, a_type *type)
{
  a_type *class_type = class_of_elements(type);
  bool is_ambiguous, is_anachronistic, no_copy_needed = true;
  a_symbol *symbol = nullptr;
  if (class_type != nullptr) {
    a_param_type *param = param_types_of(skip_typerefs(scan->routine->type));
    unsigned qualifiers = get_type_qualifiers(type_pointed_to(param->type));
    symbol = select_overloaded_copy_constructor(class_type, qualifiers, false, &scan->position,
                                                &is_ambiguous, &is_anachronistic, &no_copy_needed);
    if (symbol == nullptr && is_ambiguous)
      pos_ty_error(ec_ambiguous_copy_constructor, scan->position, class_type);
    else if (symbol == nullptr && !no_copy_needed)
      pos_ty_error(ec_no_suitable_copy_constructor, scan->position, class_type);
  }
  if (symbol == nullptr) return alloc_dynamic_init(dik_bitwise_copy);
  record_use_of_function(symbol, scan->position);
  a_dynamic_init *init = alloc_dynamic_init(dik_constructor);
  init->variant.constructor.routine = routine_of_symbol(symbol);
  init->variant.constructor.is_copy_of_source = true;
  if (!is_array_type(type)) return init;
  a_dynamic_init *all;
  unsigned long long count = size_of_type(type) / size_of_type(class_type);
  repeat_nonconstant_init(init, type, class_type, &all, count);
  return all;
}

// In an expression entry of its own, with the temporaries of default arguments in their own lifetime.
static a_dynamic_init *implicit_init(a_ctor_scan *scan, a_type *type)
{
  an_init_lifetime lifetime;
  a_scan_entry entry;
  an_operand place;
  bool failed = false;
  push_init_lifetime(&lifetime);
  open_entry(&entry, ek_normal, false, true);
  a_dynamic_init *init =
      scan->is_copy ? copy_of_part(scan, type) : make_default_init(type, scan->position, &failed);
  if (init != nullptr && !init->has_destructor)
    add_dtor_to_dynamic_init(init, type, &scan->position);
  make_error_operand(&place);
  place.end_position = curr_construct_end_position;
  close_entry(&entry, &place);
  pop_init_lifetime(&lifetime, init, type);
  return init;
}

static void initialize_base(a_ctor_scan *scan, a_base_class *base)
{
  a_constructor_init *entry = written_entry_for(scan, base);
  if (entry != nullptr) {
    unlink_written(scan, entry);
  } else {
    a_dynamic_init *init = implicit_init(scan, base->type);
    if (init == nullptr) return;
    a_constructor_init_kind kind = base->is_virtual ? cik_virtual_base : cik_direct_base;
    entry = make_entry(kind, init, scan->position);
    entry->entity.base_class = base;
    entry->is_compiler_generated = true;
  }
  append_in_order(scan, entry);
}

static bool class_has_const_member(a_type *type)
{
  a_type *class_type = class_of_elements(type);
  return class_type != nullptr && as_class(class_type).has_const_field;
}

static an_error_code need_of_value(a_field *field)
{
  if (is_any_reference_type(field->type)) return ec_reference_entity;
  if (is_const_qualified(underlying_array_element_type(field->type))) return ec_const_entity;
  return class_has_const_member(field->type) ? ec_uninitialized_field_with_const_member
                                             : ec_no_error;
}

// Members without a value whose type asks for one.
static void check_member_without_value(a_ctor_scan *scan, a_field *field)
{
  a_symbol *symbol = field->source_corresp.assoc_symbol;
  an_error_code code = need_of_value(field);
  if (code == ec_no_error || symbol == nullptr || scan->is_copy) return;
  a_constructor_init *entry = innermost_function_scope->constructor_inits;
  while (entry != nullptr && !is_entry_for(entry, field))
    entry = entry->next;
  if (entry == nullptr) list_uninitialized(scan, code, symbol);
}

static void initialize_field(a_ctor_scan *scan, a_field *field)
{
  a_constructor_init *entry = written_entry_for(scan, field);
  if (entry != nullptr) {
    unlink_written(scan, entry);
  } else {
    bool in_union = skip_typerefs(scan->class_type)->kind == tk_union;
    if (in_union && !scan->is_copy) return;
    a_dynamic_init *init = nullptr;
    if (scan->is_copy || class_of_elements(field->type) != nullptr)
      init = implicit_init(scan, field->type);
    if (init == nullptr) return;
    entry = make_entry(cik_field, init, scan->position);
    entry->entity.field = field;
    entry->is_compiler_generated = true;
  }
  append_in_order(scan, entry);
}

// Calls `visit` for the parts of the class in the order in which they are built.
template <class a_base_visitor, class a_field_visitor>
static void visit_parts(a_type *class_type, a_base_visitor visit_base, a_field_visitor visit_field)
{
  a_class_type_supplement *supplement = class_supplement_of(class_type);
  for (a_base_class *base = supplement->virtual_bases; base; base = base->next_virtual_base)
    visit_base(base);
  for (a_base_class *base = supplement->base_classes; base != nullptr; base = base->next) {
    if (base->is_direct && !base->is_virtual) visit_base(base);
  }
  for (a_field *field = first_initializable_field(class_type); field != nullptr;
       field = next_initializable_field(field->next))
    visit_field(field);
}

// Members of anonymous unions aren't among the class's own: what is written of them comes last.
static void append_rest(a_ctor_scan *scan)
{
  while (scan->written != nullptr) {
    a_constructor_init *entry = scan->written;
    unlink_written(scan, entry);
    append_in_order(scan, entry);
  }
}

void ctor_initializer(a_routine *routine, bool has_list)
{
  a_ctor_scan scan = {};
  scan.routine = routine;
  scan.class_type = skip_typerefs(routine_supplement_of(skip_typerefs(routine->type))->this_class);
  scan.last_written = &scan.written;
  scan.last_in_order = &innermost_function_scope->constructor_inits;
  scan.position = routine->source_corresp.decl_position;
  scan.is_copy = routine->is_compiler_generated && routine->is_copy_constructor;
  if (has_list) scan_list(&scan);
  check_order(&scan);
  visit_parts(
      scan.class_type, [&](a_base_class *base) { initialize_base(&scan, base); },
      [&](a_field *field) { initialize_field(&scan, field); });
  append_rest(&scan);
  if (scan.class_type->kind != tk_union) {
    visit_parts(
        scan.class_type, [](a_base_class *) {},
        [&](a_field *field) { check_member_without_value(&scan, field); });
  }
  if (scan.failure_open) end_error();
}

// -------------------------------------------------------------------------------------------------
// Destructors

static void append_destruction(a_ctor_scan *scan, a_constructor_init_kind kind, a_type *type,
                               void *entity)
{
  a_routine *destructor = expr_select_destructor(type, &scan->position);
  if (destructor == nullptr) return;
  a_dynamic_init *init = alloc_dynamic_init(dik_none);
  init->destructor = destructor;
  init->has_destructor = true;
  a_constructor_init *entry = make_entry(kind, init, scan->position);
  entry->is_compiler_generated = true;
  if (kind == cik_field)
    entry->entity.field = (a_field *)entity;
  else
    entry->entity.base_class = (a_base_class *)entity;
  append_in_order(scan, entry);
}

void dtor_initializer(a_routine *routine)
{
  a_ctor_scan scan = {};
  scan.routine = routine;
  scan.class_type = skip_typerefs(routine_supplement_of(skip_typerefs(routine->type))->this_class);
  scan.last_in_order = &innermost_function_scope->constructor_inits;
  scan.position = routine->source_corresp.decl_position;
  a_scan_entry entry;
  an_operand place;
  open_entry(&entry, ek_normal, false, true);
  bool is_union = scan.class_type->kind == tk_union;
  visit_parts(
      scan.class_type,
      [&](a_base_class *base) {
        append_destruction(&scan, base->is_virtual ? cik_virtual_base : cik_direct_base, base->type,
                           base);
      },
      [&](a_field *field) {
        if (!is_union) append_destruction(&scan, cik_field, field->type, field);
      });
  make_error_operand(&place);
  place.end_position = curr_construct_end_position;
  close_entry(&entry, &place);
}
