// il_lifetimes.cpp - object lifetimes: the tree of places at which objects die.
// Owns:    curr_object_lifetime (with the scope stack, which saves it).
// Rule:    a lifetime that destroys nothing leaves no trace: pop_object_lifetime recycles it.
// Entry:   push_object_lifetime, pop_object_lifetime, record_end_of_lifetime_destruction.
#include "il/il.h"

#include "driver/flags.h"

an_object_lifetime *curr_object_lifetime;

// --- Owners --------------------------------------------------------------------------------------

// Stores `value` in the back link of the owner; some owners have none.
static void set_link_of_owner(an_object_lifetime *lifetime, an_object_lifetime *value)
{
  void *owner = lifetime->owner;
  if (owner == nullptr) return;
  switch (lifetime->owner_kind) {
  case iek_expr_node: {
    an_expr_node *expr = (an_expr_node *)owner;
    if (expr->kind == enk_lifetime_wrapper) lifetime_wrapper_of(expr).object_lifetime = value;
    break;
  }
  case iek_dynamic_init: ((a_dynamic_init *)owner)->object_lifetime = value; break;
  case iek_block_supplement: ((a_block_supplement *)owner)->object_lifetime = value; break;
  case iek_statement: {
    a_statement *statement = (a_statement *)owner;
    if (statement->kind == stmk_block) block_supplement_of(statement)->object_lifetime = value;
    break;
  }
  case iek_try_supplement: ((a_try_supplement *)owner)->object_lifetime = value; break;
  case iek_scope:
    if (lifetime->kind == olk_function) {
      ((a_scope *)owner)->outer_lifetime = value;
    } else {
      ((a_scope *)owner)->object_lifetime = value;
    }
    break;
  case iek_local_static_variable_init:
    ((a_local_static_variable_init *)owner)->object_lifetime = value;
    break;
  default: break;
  }
}

void bind_object_lifetime(an_object_lifetime *lifetime, an_il_entry_kind owner_kind, void *owner)
{
  lifetime->owner_kind = owner_kind;
  lifetime->owner = owner;
  lifetime->is_unbound = false;
  set_link_of_owner(lifetime, lifetime);
}

void unbind_object_lifetime(an_object_lifetime *lifetime)
{
  set_link_of_owner(lifetime, nullptr);
  lifetime->owner = nullptr;
  lifetime->owner_kind = iek_none;
  lifetime->is_unbound = true;
}

// --- The tree ------------------------------------------------------------------------------------

static bool owner_is_function_scope(an_il_entry_kind owner_kind, void *owner)
{
  return owner_kind == iek_scope && owner != nullptr && ((a_scope *)owner)->kind == sck_function;
}

static void link_as_first_child(an_object_lifetime *lifetime, an_object_lifetime *parent)
{
  lifetime->parent = parent;
  lifetime->next_sibling = parent->first_child;
  parent->first_child = lifetime;
  lifetime->first_destruction_when_leaving = parent->destructions;
  if (lifetime->kind == olk_expression) parent->has_expression_child = true;
}

an_object_lifetime *push_object_lifetime(an_il_entry_kind owner_kind, void *owner,
                                         an_object_lifetime_kind kind)
{
  an_object_lifetime *lifetime = alloc_object_lifetime(kind);
  bool stands_alone = curr_object_lifetime == nullptr || owner_is_function_scope(owner_kind, owner);
  if (!stands_alone) link_as_first_child(lifetime, curr_object_lifetime);
  bind_object_lifetime(lifetime, owner_kind, owner);
  curr_object_lifetime = lifetime;
  return lifetime;
}

void detach_from_object_lifetime_tree(an_object_lifetime *lifetime)
{
  an_object_lifetime *parent = lifetime->parent;
  if (parent == nullptr) return;
  an_object_lifetime **link = &parent->first_child;
  while (*link != nullptr && *link != lifetime)
    link = &(*link)->next_sibling;
  if (*link != nullptr) *link = lifetime->next_sibling;
  lifetime->next_sibling = nullptr;
  lifetime->parent = nullptr;
  parent->has_expression_child = false;
  for (an_object_lifetime *child = parent->first_child; child != nullptr;
       child = child->next_sibling) {
    if (child->kind == olk_expression) parent->has_expression_child = true;
  }
}

bool is_useless_object_lifetime(const an_object_lifetime *lifetime)
{
  if (lifetime->kind == olk_useless) return true;
  if (lifetime->destructions != nullptr || lifetime->must_remain) return false;
  for (const an_object_lifetime *child = lifetime->first_child; child != nullptr;
       child = child->next_sibling) {
    if (!is_useless_object_lifetime(child)) return false;
  }
  bool owns_try = lifetime->owner_kind == iek_try_supplement;
  return !(exceptions_enabled && owns_try);
}

void mark_object_lifetime_as_useless(an_object_lifetime *lifetime)
{
  lifetime->kind = olk_useless;
}

bool pop_object_lifetime()
{
  an_object_lifetime *lifetime = curr_object_lifetime;
  check(lifetime != nullptr);
  an_object_lifetime *parent = lifetime->parent;
  curr_object_lifetime = parent;
  if (is_useless_object_lifetime(lifetime)) {
    // Useless children stay in the region but out of the tree.
    detach_from_object_lifetime_tree(lifetime);
    unbind_object_lifetime(lifetime);
    free_object_lifetime(lifetime);
    return false;
  }
  if (parent != nullptr && owner_is_function_scope(lifetime->owner_kind, lifetime->owner)) {
    parent->must_remain = true;
  }
  return true;
}

an_object_lifetime *innermost_block_object_lifetime()
{
  an_object_lifetime *lifetime = curr_object_lifetime;
  while (lifetime != nullptr && lifetime->kind != olk_block && lifetime->kind != olk_function) {
    lifetime = lifetime->parent;
  }
  return lifetime;
}

an_object_lifetime *init_expr_lifetime_of(a_dynamic_init *init)
{
  if (init->object_lifetime != nullptr) return init->object_lifetime;
  bool has_expr = init->kind == dik_expression || init->kind == dik_call_returning_class;
  if (!has_expr || expr_of(init)->kind != enk_lifetime_wrapper) return nullptr;
  return lifetime_wrapper_of(expr_of(init)).object_lifetime;
}

// --- Destructions --------------------------------------------------------------------------------

// The list runs from the youngest object to the oldest: the order in which they die.
void add_to_end_of_destructions_list(a_dynamic_init *init, an_object_lifetime *lifetime)
{
  init->destruction_lifetime = lifetime;
  init->previous_destruction_init = nullptr;
  init->next_destruction = lifetime->destructions;
  if (lifetime->destructions != nullptr) {
    lifetime->destructions->previous_destruction_init = init;
  }
  lifetime->destructions = init;
}

void add_to_destructions_list_following(a_dynamic_init *init, a_dynamic_init *previous,
                                        an_object_lifetime *lifetime)
{
  if (previous == nullptr) {
    add_to_end_of_destructions_list(init, lifetime);
    return;
  }
  init->destruction_lifetime = lifetime;
  init->previous_destruction_init = previous;
  init->next_destruction = previous->next_destruction;
  if (previous->next_destruction != nullptr) {
    previous->next_destruction->previous_destruction_init = init;
  }
  previous->next_destruction = init;
}

void remove_from_destruction_list(a_dynamic_init *init)
{
  an_object_lifetime *lifetime = init->destruction_lifetime;
  if (lifetime == nullptr) return;
  if (init->previous_destruction_init != nullptr) {
    init->previous_destruction_init->next_destruction = init->next_destruction;
  } else {
    lifetime->destructions = init->next_destruction;
  }
  if (init->next_destruction != nullptr) {
    init->next_destruction->previous_destruction_init = init->previous_destruction_init;
  }
  init->next_destruction = nullptr;
  init->previous_destruction_init = nullptr;
  init->destruction_lifetime = nullptr;
}

void move_destruction_to_curr_object_lifetime(a_dynamic_init *init)
{
  remove_from_destruction_list(init);
  add_to_end_of_destructions_list(init, curr_object_lifetime);
}

static an_object_lifetime *root_of_lifetime_tree()
{
  an_object_lifetime *lifetime = curr_object_lifetime;
  while (lifetime != nullptr && lifetime->parent != nullptr)
    lifetime = lifetime->parent;
  return lifetime;
}

// The lifetime of what dies when the function is left for good: made on demand.
static an_object_lifetime *outermost_lifetime_of_function()
{
  if (innermost_function_scope == nullptr) return root_of_lifetime_tree();
  a_scope *scope = innermost_function_scope;
  if (scope->outer_lifetime == nullptr) {
    an_object_lifetime *lifetime = alloc_object_lifetime(olk_function);
    bind_object_lifetime(lifetime, iek_scope, scope);
  }
  return scope->outer_lifetime;
}

static an_object_lifetime *innermost_block_or_expression_lifetime()
{
  an_object_lifetime *lifetime = curr_object_lifetime;
  while (lifetime != nullptr && lifetime->kind != olk_block && lifetime->kind != olk_expression) {
    lifetime = lifetime->parent;
  }
  return lifetime;
}

void record_end_of_lifetime_destruction(a_dynamic_init *init, bool at_function_level,
                                        bool at_block_level)
{
  an_object_lifetime *lifetime = curr_object_lifetime;
  if (at_function_level) {
    lifetime = outermost_lifetime_of_function();
  } else if (at_block_level) {
    lifetime = innermost_block_or_expression_lifetime();
  }
  if (lifetime == nullptr) return;
  // An initialization that is evaluated deeper than its object dies may not have run at all.
  an_object_lifetime *own = init->init_lifetime;
  bool lies_deeper = own != nullptr && own != lifetime && own->destructions != nullptr;
  if (lies_deeper) init->destruction_needs_flag = true;
  add_to_end_of_destructions_list(init, lifetime);
}
