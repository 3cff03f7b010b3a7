// il_lists.cpp - the lists of IL scopes: every append takes constant time through the tails that
// the scope stack keeps, or one search when the scope isn't on the stack.
// Owns:    the table of scheduled routine moves.
// Entry:   add_to_types_list and its kin, remove_from_variables_list, move_to_end_of_types_list.
#include <cstdlib>

#include "driver/flags.h"
#include "driver/trans_unit.h"
#include "il/il.h"
#include "il/types.h"
#include "parse/scope_stk.h"
#include "parse/symbol_tbl.h"

bool perform_type_list_ordering = true;

// Where a declaration goes: the scope, the tails of its lists, and its entry if it is on the stack.
struct a_list_place {
  a_scope *scope;
  a_scope_pointers_block *block; // null: the tails must be searched
  a_scope_stack_entry *entry;    // null: not on the stack
};

static a_list_place place_of_file_scope()
{
  a_scope *scope = il_header.primary_scope;
  a_scope_stack_entry *entry = depth_scope_stack >= 0 ? &scope_stack[0] : nullptr;
  if (entry != nullptr && entry->il_scope != scope) entry = nullptr;
  a_scope_pointers_block *block =
      entry != nullptr ? block_of_scope_entry(entry) : get_pointers_block_for_scope(scope);
  return {scope, block, entry};
}

static a_list_place place_of_class_member(const a_source_correspondence *corresp)
{
  a_scope *scope = get_parent_scope_of(corresp);
  if (scope->stack_depth < 0) return {scope, nullptr, nullptr};
  a_scope_stack_entry *entry = &scope_stack[scope->stack_depth];
  return {scope, block_of_scope_entry(entry), entry};
}

// The place that a stack depth, or with -1 the entity itself, asks for.
static a_list_place place_for_entity(const a_source_correspondence *corresp, int depth)
{
  if (depth > 0) {
    a_scope_stack_entry *entry = &scope_stack[depth];
    a_scope *scope = ensure_il_scope_exists(entry);
    entry = &scope_stack[depth];
    return {scope, block_of_scope_entry(entry), entry};
  }
  if (depth == 0 || corresp == nullptr) return place_of_file_scope();
  if (corresp->is_class_member) return place_of_class_member(corresp);
  a_namespace *name_space = parent_namespace_of(corresp);
  bool is_c_linkage = C_dialect == 2 && corresp->name_linkage == nlk_c;
  if (name_space == nullptr || is_c_linkage) return place_of_file_scope();
  a_scope *scope = scope_of_namespace(name_space);
  return {scope, get_pointers_block_for_scope(scope), nullptr};
}

// Appends through the tail when one is known, else behind the last entry found by a search.
template <class an_entry> static an_entry *append(an_entry **head, an_entry **tail, an_entry *entry)
{
  an_entry *previous = tail != nullptr ? *tail : nullptr;
  if (*head == nullptr) previous = nullptr;
  if (previous == nullptr && *head != nullptr) {
    previous = *head;
    while (previous->next != nullptr)
      previous = previous->next;
  }
  if (previous == nullptr) {
    *head = entry;
  } else {
    previous->next = entry;
  }
  entry->next = nullptr;
  if (tail != nullptr) *tail = entry;
  return previous;
}

#define TAIL(place, field) ((place).block == nullptr ? nullptr : &(place).block->field)
#define ENTRY_TAIL(place, field) ((place).entry == nullptr ? nullptr : &(place).entry->field)

static void set_parent_unless_member(a_source_correspondence *corresp, an_il_entry_kind kind,
                                     const a_list_place &place)
{
  if (corresp->is_class_member) return;
  bool is_plain_file_scope = place.scope->kind == sck_file;
  if (is_plain_file_scope && !corresp->has_local_scope_ref) {
    corresp->parent_scope = place.scope;
  } else {
    set_parent_scope(corresp, kind, place.scope);
  }
}

// --- The lists -----------------------------------------------------------------------------------

static void set_prev_on_types_list(a_type *type, a_type *previous)
{
  a_symbol *symbol = type->source_corresp.assoc_symbol;
  if (symbol == nullptr || !symbol_kind_is_class(symbol->kind)) return;
  if (type_of_symbol(symbol) != type) return;
  a_class_symbol_supplement *supplement = class_supplement_of_symbol(symbol);
  if (supplement != nullptr) supplement->prev_on_types_list = previous;
}

bool may_be_added_to_types_list(const a_type *type, int depth)
{
  if (!type->is_prototype_tag || depth < 0) return true;
  return scope_stack[depth].kind == sck_function_prototype;
}

void add_to_types_list(a_type *type, int depth)
{
  a_list_place place = place_for_entity(&type->source_corresp, depth);
  set_parent_unless_member(&type->source_corresp, iek_type, place);
  a_type *previous = append(&place.scope->types, TAIL(place, last_type), type);
  if (kind_has_class_part(type->kind)) set_prev_on_types_list(type, previous);
}

void add_to_variables_list(a_variable *variable, int depth)
{
  a_list_place place = place_for_entity(&variable->source_corresp, depth);
  set_parent_unless_member(&variable->source_corresp, iek_variable, place);
  bool is_automatic = !is_file_scope_entry(variable) && (variable->storage_class == sc_auto ||
                                                         variable->storage_class == sc_register);
  if (is_automatic) {
    append(&place.scope->local_variables, ENTRY_TAIL(place, variables_tail), variable);
  } else {
    append(&place.scope->variables, TAIL(place, last_variable), variable);
  }
}

void add_variable_to_scope(a_variable *variable, a_scope *scope)
{
  set_parent_scope(&variable->source_corresp, iek_variable, scope);
  if (scope->kind == sck_file) {
    a_list_place place = place_of_file_scope();
    append(&scope->variables, TAIL(place, last_variable), variable);
    return;
  }
  bool is_automatic = !is_file_scope_entry(variable);
  append(is_automatic ? &scope->local_variables : &scope->variables, (a_variable **)nullptr,
         variable);
}

a_variable *alloc_temporary_variable(a_type *type, bool is_static)
{
  a_variable *variable = make_variable(type, is_static ? sc_static : sc_auto, true);
  variable->is_temporary = true;
  add_to_variables_list(variable, decl_scope_level);
  return variable;
}

void add_to_routines_list(a_routine *routine, int depth)
{
  a_list_place place = place_for_entity(&routine->source_corresp, depth);
  set_parent_unless_member(&routine->source_corresp, iek_routine, place);
  append(&place.scope->routines, TAIL(place, last_routine), routine);
}

void add_to_constants_list(a_constant *constant, int depth)
{
  a_list_place place = place_for_entity(&constant->source_corresp, depth);
  set_parent_unless_member(&constant->source_corresp, iek_constant, place);
  append(&place.scope->constants, TAIL(place, last_constant), constant);
}

void add_to_namespaces_list(a_namespace *name_space, int depth)
{
  a_list_place place = place_for_entity(&name_space->source_corresp, depth);
  set_parent_unless_member(&name_space->source_corresp, iek_namespace, place);
  append(&place.scope->namespaces, TAIL(place, last_namespace), name_space);
}

void add_to_templates_list(a_template *templ, int depth)
{
  a_list_place place = place_for_entity(&templ->source_corresp, depth);
  set_parent_unless_member(&templ->source_corresp, iek_template, place);
  append(&place.scope->templates, TAIL(place, last_template), templ);
}

void add_to_labels_list(a_label *label, int depth)
{
  // A label belongs to the function, unless __label__ declared it in a block.
  if (depth < 0 || !label->is_block_local) depth = depth_innermost_function_scope;
  a_list_place place;
  if (depth >= 0) {
    place = place_for_entity(nullptr, depth);
  } else {
    check(innermost_function_scope != nullptr);
    place = {innermost_function_scope, nullptr, nullptr};
  }
  label->source_corresp.is_local = true;
  set_parent_scope(&label->source_corresp, iek_label, place.scope);
  append(&place.scope->labels, ENTRY_TAIL(place, labels_tail), label);
}

void add_to_asm_entries_list(an_asm_entry *entry, int depth)
{
  a_list_place place = place_for_entity(&entry->source_corresp, depth);
  append(&place.scope->asm_entries, TAIL(place, last_asm_entry), entry);
}

void add_to_using_decls_list(a_using_decl *using_decl, int depth)
{
  a_list_place place = place_for_entity(nullptr, depth);
  append(&place.scope->using_decls, TAIL(place, last_using_decl), using_decl);
}

void add_to_parameters_list(a_variable *parameter, int depth)
{
  a_list_place place = place_for_entity(nullptr, depth);
  set_parent_scope(&parameter->source_corresp, iek_variable, place.scope);
  append(&place.scope->parameters, ENTRY_TAIL(place, params_tail), parameter);
}

void add_to_pragma_list(a_pragma *pragma, int depth)
{
  a_list_place place = place_for_entity(nullptr, depth);
  append(&place.scope->pragmas, TAIL(place, last_pragma), pragma);
}

void add_to_dynamic_inits_list(a_dynamic_init *init, int depth)
{
  a_list_place place = place_for_entity(nullptr, depth);
  append(&place.scope->dynamic_inits, TAIL(place, last_dynamic_init), init);
}

void add_to_scopes_list(a_scope *scope, int depth)
{
  a_list_place place = place_for_entity(nullptr, depth);
  scope->parent = place.scope;
  append(&place.scope->subscopes, ENTRY_TAIL(place, subscopes_tail), scope);
}

void add_to_local_static_inits_list(a_local_static_variable_init *init, a_scope *scope)
{
  append(&scope->local_static_inits, (a_local_static_variable_init **)nullptr, init);
}

static a_macro *last_macro; // tail of il_header.macros

void add_to_macros_list(a_macro *macro)
{
  if (il_header.macros == nullptr) last_macro = nullptr;
  append(&il_header.macros, &last_macro, macro);
}

// --- Removal and moves ---------------------------------------------------------------------------

// Unlinks the entry and returns its predecessor; the tail, if it was the last, becomes that.
template <class an_entry>
static void remove_entry(an_entry **head, an_entry **tail, an_entry *entry)
{
  an_entry *previous = nullptr;
  an_entry **link = head;
  while (*link != nullptr && *link != entry) {
    previous = *link;
    link = &previous->next;
  }
  if (*link == nullptr) return;
  *link = entry->next;
  entry->next = nullptr;
  if (tail != nullptr && *tail == entry) *tail = previous;
}

static a_scope_pointers_block *block_of_active_scope(a_scope *scope)
{
  bool is_known =
      scope->kind == sck_file || scope->kind == sck_namespace || scope->stack_depth >= 0;
  return is_known ? get_pointers_block_for_scope(scope) : nullptr;
}

void remove_from_routines_list(a_routine *routine, a_scope *scope)
{
  a_scope_pointers_block *block = block_of_active_scope(scope);
  remove_entry(&scope->routines, block == nullptr ? nullptr : &block->last_routine, routine);
}

void remove_from_variables_list(a_variable *variable, a_scope *scope)
{
  a_scope_pointers_block *block = block_of_active_scope(scope);
  remove_entry(&scope->variables, block == nullptr ? nullptr : &block->last_variable, variable);
}

// The predecessor that the class's symbol keeps, when it still is one.
static a_type *known_predecessor(a_type *type)
{
  a_symbol *symbol = type->source_corresp.assoc_symbol;
  if (symbol == nullptr || !symbol_kind_is_class(symbol->kind)) return nullptr;
  a_class_symbol_supplement *supplement = class_supplement_of_symbol(symbol);
  if (supplement == nullptr || supplement->prev_on_types_list == nullptr) return nullptr;
  a_type *previous = supplement->prev_on_types_list;
  return previous->next == type ? previous : nullptr;
}

void move_to_end_of_types_list(a_type *type)
{
  a_scope *scope = get_parent_scope_of(&type->source_corresp);
  if (scope == nullptr || type->next == nullptr) return;
  a_scope_pointers_block *block = block_of_active_scope(scope);
  a_type **tail = block == nullptr ? nullptr : &block->last_type;
  a_type *previous = known_predecessor(type);
  a_type *following = type->next;
  if (previous != nullptr) {
    previous->next = following;
    type->next = nullptr;
  } else {
    remove_entry(&scope->types, tail, type);
  }
  if (kind_has_class_part(following->kind)) set_prev_on_types_list(following, previous);
  set_prev_on_types_list(type, append(&scope->types, tail, type));
}

// The complete class, struct or union that a member or element of this type needs before it.
static a_type *class_needed_before(a_type *type)
{
  type = skip_typerefs(type);
  while (type->kind == tk_array)
    type = skip_typerefs(as_array(type).element_type);
  return kind_has_class_part(type->kind) ? type : nullptr;
}

// --- Order of the types list: each class behind the classes of its members -----------------------

struct an_ordering_state {
  a_scope *scope;
  a_type *head;
  a_type *tail;
};

static void append_in_order(an_ordering_state *state, a_type *type)
{
  if (kind_has_class_part(type->kind)) set_prev_on_types_list(type, state->tail);
  if (state->tail == nullptr) {
    state->head = type;
  } else {
    state->tail->next = type;
  }
  state->tail = type;
}

// A type that is placed has its `visited` bit away from the value that entries have at rest. The
// nesting of members by value is limited by the language: a class can't contain itself.
static void place_type(an_ordering_state *state, a_type *type)
{
  if (entry_flags_of(type).visited != file_scope_visited_value) return;
  entry_flags_of(type).visited = !file_scope_visited_value;
  if (kind_has_class_part(type->kind)) {
    for (a_field *field = as_class(type).first_field; field != nullptr; field = field->next) {
      a_type *needed = class_needed_before(field->type);
      bool is_here = needed != nullptr && needed != type &&
                     needed->source_corresp.parent_scope == state->scope;
      if (is_here) place_type(state, needed);
    }
  }
  append_in_order(state, type);
}

static bool is_out_of_order(a_scope *scope)
{
  bool result = false;
  for (a_type *type = scope->types; type != nullptr; type = type->next) {
    if (kind_has_class_part(type->kind)) {
      for (a_field *field = as_class(type).first_field; field != nullptr; field = field->next) {
        a_type *needed = class_needed_before(field->type);
        bool is_here =
            needed != nullptr && needed != type && needed->source_corresp.parent_scope == scope;
        if (is_here && entry_flags_of(needed).visited == file_scope_visited_value) result = true;
      }
    }
    entry_flags_of(type).visited = !file_scope_visited_value;
  }
  for (a_type *type = scope->types; type != nullptr; type = type->next) {
    entry_flags_of(type).visited = file_scope_visited_value;
  }
  return result;
}

void fix_type_list_ordering_problems(a_scope *scope)
{
  if (!perform_type_list_ordering || !is_out_of_order(scope)) return;
  // place_type relinks, so the old order is kept through a copy of the links.
  unsigned count = 0;
  for (a_type *type = scope->types; type != nullptr; type = type->next)
    count++;
  a_type **types = (a_type **)alloc_general(count * sizeof(a_type *));
  unsigned i = 0;
  for (a_type *type = scope->types; type != nullptr; type = type->next)
    types[i++] = type;
  an_ordering_state state = {scope, nullptr, nullptr};
  for (i = 0; i < count; i++)
    place_type(&state, types[i]);
  state.tail->next = nullptr;
  for (i = 0; i < count; i++)
    entry_flags_of(types[i]).visited = file_scope_visited_value;
  free_general(types, count * sizeof(a_type *));
  scope->types = state.head;
  a_scope_pointers_block *block = block_of_active_scope(scope);
  if (block != nullptr) block->last_type = state.tail;
}

// --- Scheduled moves of routines -----------------------------------------------------------------

struct a_routine_move {
  a_routine *routine;
  a_routine *behind; // the routine that was last when the request was made
  unsigned sequence;
};
static constexpr int max_routine_moves = 100;
static a_routine_move routine_moves[max_routine_moves];
static int num_routine_moves;

static int compare_routine_moves(const void *a, const void *b)
{
  uintptr_t left = (uintptr_t)((const a_routine_move *)a)->routine;
  uintptr_t right = (uintptr_t)((const a_routine_move *)b)->routine;
  return left < right ? -1 : left > right;
}

static a_routine_move *move_of_routine(a_routine *routine)
{
  a_routine_move key = {routine, nullptr, 0};
  return (a_routine_move *)bsearch(&key, routine_moves, num_routine_moves, sizeof(a_routine_move),
                                   compare_routine_moves);
}

static int compare_move_sequences(const void *a, const void *b)
{
  unsigned left = ((const a_routine_move *)a)->sequence;
  unsigned right = ((const a_routine_move *)b)->sequence;
  return left < right ? -1 : left > right;
}

// One pass takes the routines out; then each goes behind the routine that was last at its request.
void perform_scheduled_routine_moves()
{
  if (num_routine_moves == 0) return;
  a_list_place place = place_of_file_scope();
  qsort(routine_moves, num_routine_moves, sizeof(a_routine_move), compare_routine_moves);
  a_routine *previous = nullptr;
  a_routine **link = &place.scope->routines;
  while (*link != nullptr) {
    a_routine *routine = *link;
    if (move_of_routine(routine) != nullptr) {
      *link = routine->next;
    } else {
      previous = routine;
      link = &routine->next;
    }
  }
  place.block->last_routine = previous;
  qsort(routine_moves, num_routine_moves, sizeof(a_routine_move), compare_move_sequences);
  // From the last request back, so that requests behind the same routine keep their order.
  for (int i = num_routine_moves - 1; i >= 0; i--) {
    a_routine *routine = routine_moves[i].routine;
    a_routine *behind = routine_moves[i].behind;
    routine->next = behind->next;
    behind->next = routine;
    if (routine->next == nullptr) place.block->last_routine = routine;
  }
  num_routine_moves = 0;
}

void schedule_move_to_current_end_of_routines_list(a_routine *routine)
{
  a_list_place place = place_of_file_scope();
  a_routine *last = place.block->last_routine;
  if (last == routine || last == nullptr) return;
  for (int i = 0; i < num_routine_moves; i++) {
    // A routine that is moved again, or behind which others wait, is settled first.
    if (routine_moves[i].routine == routine || routine_moves[i].behind == routine ||
        routine_moves[i].routine == last) {
      perform_scheduled_routine_moves();
      last = place.block->last_routine;
      if (last == routine) return;
      break;
    }
  }
  if (num_routine_moves == max_routine_moves) {
    perform_scheduled_routine_moves();
    last = place.block->last_routine;
    if (last == routine) return;
  }
  routine_moves[num_routine_moves] = {routine, last, (unsigned)num_routine_moves};
  num_routine_moves++;
}
