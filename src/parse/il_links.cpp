// il_links.cpp - links between the IL, the symbols and the scope stack.
// Owns:    set_source_corresp, parent links, references from a function's region to file-scope
//          entries, the free lists of object lifetimes.
// Rule:    a file-scope entry whose parent lies in a function's region has a null parent_scope; the
//          function scope holds an a_local_scope_ref in its place.
// Entry:   set_source_corresp, set_parent_scope, f_get_parent_scope_of, make_local_expr_node_ref.
#include "il/il_alloc.h"

#include "driver/flags.h"
#include "il/il.h"
#include "parse/decl_spec.h"
#include "parse/scope_stk.h"
#include "parse/symbol_tbl.h"

// --- Source correspondence -----------------------------------------------------------------------

void set_source_corresp_name(a_source_correspondence *corresp, a_symbol_header *header)
{
  if (corresp->name_is_fixed) return;
  bool has_name = header != nullptr && !header->is_unnamed;
  corresp->name = has_name ? header->identifier : nullptr;
}

void set_source_corresp_with_scope_depth(a_source_correspondence *corresp, a_symbol *symbol,
                                         int scope_depth)
{
  corresp->assoc_symbol = symbol;
  set_source_corresp_name(corresp, symbol->header);
  if (is_null_position(corresp->decl_position)) corresp->decl_position = symbol->position;
  corresp->referenced = false;
  corresp->scope_depth = scope_depth;
}

void set_source_corresp(a_source_correspondence *corresp, a_symbol *symbol)
{
  bool is_local = false;
  int depth = scope_depth_of_symbol(symbol, &is_local);
  set_source_corresp_with_scope_depth(corresp, symbol, depth);
  corresp->is_local = is_local || symbol->kind == sk_label;
  if (C_dialect != 2 || depth < 0 || scope_stack[depth].kind != sck_class) return;
  // A member of the class that is being read, under the access label in force.
  set_class_membership(corresp, scope_stack[depth].assoc_type);
  corresp->access = scope_stack[depth].current_access;
}

// --- Positions -----------------------------------------------------------------------------------

static void fill_decl_pos_supplement(a_decl_position_supplement *supplement,
                                     const a_decl_pos_block *pos_block)
{
  supplement->whole_range = {pos_block->type_begin, pos_block->type_end};
  supplement->specifiers_range = {pos_block->specifier_first, pos_block->specifier_last};
  supplement->declarator_range = {pos_block->declarator_begin, pos_block->declarator_end};
}

a_decl_position_supplement *make_decl_pos_supplement(a_source_correspondence *corresp,
                                                     const a_decl_pos_block *pos_block)
{
  a_decl_position_supplement *supplement =
      alloc_decl_position_supplement(is_file_scope_entry(corresp));
  fill_decl_pos_supplement(supplement, pos_block);
  corresp->decl_position_supplement = supplement;
  return supplement;
}

void update_decl_pos_info(a_source_correspondence *corresp, const a_decl_pos_block *pos_block)
{
  if (pos_block == nullptr) return;
  if (corresp->decl_position_supplement != nullptr) {
    fill_decl_pos_supplement(corresp->decl_position_supplement, pos_block);
  } else {
    make_decl_pos_supplement(corresp, pos_block);
  }
}

// --- Parent links --------------------------------------------------------------------------------

// The scope of the function that encloses a scope of the stack.
static a_scope *function_scope_enclosing(a_scope *scope)
{
  if (scope->kind == sck_function) return scope;
  if (scope->stack_depth >= 0) {
    int depth = scope_stack[scope->stack_depth].enclosing_function_depth;
    if (depth >= 0) return scope_stack[depth].il_scope;
  }
  return innermost_function_scope;
}

// Makes the region of the function the current one while a reference record is allocated.
static int switch_to_region_of_function(a_scope *function_scope)
{
  int region = routine_of_scope(function_scope)->region_number;
  int saved = 0;
  if (region != 0 && region != curr_il_region_number) {
    saved = curr_il_region_number;
    switch_il_region(region);
  }
  return saved;
}

void make_local_scope_ref(a_scope *scope, void *entity, an_il_entry_kind kind,
                          a_scope *function_scope)
{
  int saved = switch_to_region_of_function(function_scope);
  a_local_scope_ref *ref = alloc_local_scope_ref();
  switch_back_to_original_region(saved);
  ref->scope = scope;
  ref->entity_kind = kind;
  ref->entity = entity;
  ref->next = function_scope->local_scope_refs;
  function_scope->local_scope_refs = ref;
}

void make_local_expr_node_ref(an_expr_node *expr, a_local_expr_use use, void *entity,
                              an_il_entry_kind kind, a_scope *function_scope)
{
  int saved = switch_to_region_of_function(function_scope);
  a_local_expr_node_ref *ref = alloc_local_expr_node_ref();
  switch_back_to_original_region(saved);
  ref->expr = expr;
  ref->use = use;
  ref->entity_kind = kind;
  ref->entity = entity;
  ref->next = function_scope->local_expr_node_refs;
  function_scope->local_expr_node_refs = ref;
  a_source_correspondence *corresp = source_corresp_for_il_entry(entity, kind);
  if (corresp == nullptr) return;
  corresp->enclosing_routine = routine_of_scope(function_scope);
  if (use == leu_default_arg) corresp->has_local_expr_ref = true;
  if (use == leu_decl_expr) corresp->has_local_decl_expr_ref = true;
}

void set_parent_scope(a_source_correspondence *corresp, an_il_entry_kind kind, a_scope *scope)
{
  if (corresp->has_local_scope_ref) clear_local_scope_ref_if_present(corresp);
  corresp->parent_scope = scope;
  if (scope == nullptr || is_file_scope_entry(scope)) return;
  a_scope *function_scope = function_scope_enclosing(scope);
  check(function_scope != nullptr);
  corresp->enclosing_routine = routine_of_scope(function_scope);
  if (!is_file_scope_entry(corresp)) return;
  make_local_scope_ref(scope, corresp, kind, function_scope);
  corresp->has_local_scope_ref = true;
  corresp->parent_scope = nullptr;
}

// Root scope of the routine that encloses the entity; null once its region is gone.
static a_scope *root_scope_of_enclosing_routine(const a_source_correspondence *corresp)
{
  const a_routine *routine = corresp->enclosing_routine;
  return routine == nullptr ? nullptr : scope_for_routine(routine);
}

a_scope *find_local_scope(const a_source_correspondence *entity)
{
  a_scope *root = root_scope_of_enclosing_routine(entity);
  if (root == nullptr) return nullptr;
  for (a_local_scope_ref *ref = root->local_scope_refs; ref != nullptr; ref = ref->next) {
    if (ref->entity == entity) return ref->scope;
  }
  return nullptr;
}

an_expr_node *find_local_expr_node(const a_source_correspondence *entity, a_local_expr_use use)
{
  a_scope *root = root_scope_of_enclosing_routine(entity);
  if (root == nullptr) return nullptr;
  for (a_local_expr_node_ref *ref = root->local_expr_node_refs; ref != nullptr; ref = ref->next) {
    if (ref->entity == entity && ref->use == use) return ref->expr;
  }
  return nullptr;
}

a_scope *f_get_parent_scope_of(const a_source_correspondence *corresp)
{
  return corresp->has_local_scope_ref ? find_local_scope(corresp) : corresp->parent_scope;
}

a_type *parent_class_of(const a_source_correspondence *corresp)
{
  if (!corresp->is_class_member) return nullptr;
  a_scope *scope = get_parent_scope_of(corresp);
  return scope == nullptr ? nullptr : type_of_scope(scope);
}

a_namespace *parent_namespace_of(const a_source_correspondence *corresp)
{
  a_scope *scope = get_parent_scope_of(corresp);
  bool is_namespace_scope = scope != nullptr && scope->kind == sck_namespace;
  return is_namespace_scope ? scope->owner.name_space : nullptr;
}

void set_class_membership(a_source_correspondence *corresp, a_type *class_type)
{
  clear_local_scope_ref_if_present(corresp);
  corresp->parent_scope = class_supplement_of(skip_typerefs(class_type))->class_scope;
  corresp->is_class_member = true;
}

void set_namespace_membership(a_source_correspondence *corresp, an_il_entry_kind kind,
                              a_namespace *name_space)
{
  corresp->is_class_member = false;
  set_parent_scope(corresp, kind, scope_of_namespace(name_space));
}

void clear_local_scope_ref_if_present(a_source_correspondence *corresp)
{
  if (!corresp->has_local_scope_ref) return;
  corresp->has_local_scope_ref = false;
  a_scope *root = root_scope_of_enclosing_routine(corresp);
  if (root == nullptr) return;
  a_local_scope_ref **link = &root->local_scope_refs;
  while (*link != nullptr && (*link)->entity != corresp)
    link = &(*link)->next;
  if (*link != nullptr) *link = (*link)->next;
}

void clear_parent(a_source_correspondence *corresp)
{
  clear_local_scope_ref_if_present(corresp);
  corresp->is_class_member = false;
  corresp->is_local = false;
  corresp->enclosing_routine = nullptr;
  if (corresp->parent_scope != nullptr) corresp->parent_scope = il_header.primary_scope;
}

a_routine *enclosing_routine_for_local_type_or_null(a_type *type)
{
  return type->source_corresp.enclosing_routine;
}

a_routine *enclosing_routine_for_local_type(a_type *type)
{
  a_routine *routine = enclosing_routine_for_local_type_or_null(type);
  check(routine != nullptr);
  return routine;
}

a_scope *function_scope_for_local_type(a_type *type)
{
  a_routine *routine = enclosing_routine_for_local_type_or_null(type);
  return routine == nullptr ? nullptr : scope_for_routine(routine);
}

void switch_to_scope_region(int depth, int *saved)
{
  *saved = 0;
  int region = scope_stack[depth].region_number;
  if (region == 0 || region == curr_il_region_number) return;
  *saved = curr_il_region_number;
  switch_il_region(region);
}

// --- Free lists of lifetimes ---------------------------------------------------------------------

static an_object_lifetime **free_lifetimes_of_function()
{
  if (depth_innermost_function_scope < 0) return nullptr;
  a_scope_stack_entry *entry = &scope_stack[depth_innermost_function_scope];
  return entry->region_number == curr_il_region_number ? &entry->free_lifetimes : nullptr;
}

an_object_lifetime *alloc_object_lifetime(an_object_lifetime_kind kind)
{
  an_object_lifetime **free_list = free_lifetimes_of_function();
  an_object_lifetime *lifetime;
  if (free_list != nullptr && *free_list != nullptr) {
    lifetime = *free_list;
    *free_list = lifetime->next_sibling;
    memset((void *)lifetime, 0, sizeof(*lifetime));
  } else {
    lifetime = alloc_curr_entry<an_object_lifetime>();
  }
  lifetime->kind = kind;
  return lifetime;
}

void free_object_lifetime(an_object_lifetime *lifetime)
{
  an_object_lifetime **free_list = free_lifetimes_of_function();
  if (free_list == nullptr || is_file_scope_entry(lifetime)) return;
  lifetime->next_sibling = *free_list;
  *free_list = lifetime;
}
