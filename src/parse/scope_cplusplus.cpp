// scope_cplusplus.cpp - scopes of C++: namespaces and classes entered again, using directives.
// Owns:    avail_active_using_directives.
// Entry:   push_namespace_scope, f_push_namespace_reactivation_scope, push_class_reactivation_scope,
//          add_active_using_directive.
#include "driver/flags.h"
#include "driver/trans_unit.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "mem/mem_manage.h"
#include "parse/scope_stk.h"
#include "parse/scope_stk_parts.h"

static an_active_using_directive *avail_active_using_directives;

static a_namespace_symbol_supplement *supplement_of_namespace(a_namespace *name_space)
{
  a_symbol *symbol = skip_namespace_aliases(name_space)->source_corresp.assoc_symbol;
  return symbol->variant.name_space.supplement;
}

//---------------------------------------------------------------------------------------------
// Using directives

static bool namespace_encloses(a_namespace *outer, a_namespace *inner)
{
  for (; inner != nullptr; inner = parent_namespace_of(&inner->source_corresp)) {
    if (inner == outer) return true;
  }
  return false;
}

// The innermost open namespace that encloses both the entry and the nominated namespace.
static int common_ancestor_depth(a_namespace *nominated, int depth)
{
  for (; depth > 0; --depth) {
    a_scope_stack_entry *entry = &scope_stack[depth];
    bool is_namespace = entry->kind == sck_namespace || entry->kind == sck_namespace_extension ||
                        entry->kind == sck_namespace_reactivation;
    if (is_namespace && namespace_encloses(entry->assoc_namespace, nominated)) return depth;
  }
  return 0;
}

static an_active_using_directive *alloc_active_using_directive()
{
  an_active_using_directive *directive = avail_active_using_directives;
  if (directive != nullptr)
    avail_active_using_directives = directive->next;
  else
    directive = (an_active_using_directive *)alloc_in_region(0, sizeof(*directive));
  *directive = {};
  return directive;
}

void add_active_using_directive(a_using_decl *using_decl, int depth, uint32_t decl_seq)
{
  a_namespace *nominated = skip_namespace_aliases((a_namespace *)using_decl->entity);
  a_namespace_symbol_supplement *supplement = supplement_of_namespace(nominated);
  a_scope_stack_entry *entry = &scope_stack[depth];
  for (an_active_using_directive *old = entry->active_using_directives; old; old = old->next) {
    if (old->nominated == supplement) return;
  }
  an_active_using_directive *directive = alloc_active_using_directive();
  directive->using_decl = using_decl;
  directive->nominated = supplement;
  directive->decl_seq = decl_seq;
  directive->common_ancestor_depth = common_ancestor_depth(nominated, depth);
  directive->next = entry->active_using_directives;
  entry->active_using_directives = directive;
  a_scope_stack_entry *ancestor = &scope_stack[directive->common_ancestor_depth];
  directive->next_applying = ancestor->applying_using_directives;
  ancestor->applying_using_directives = directive;
  a_scope *scope = scope_of_namespace(nominated);
  for (a_using_decl *inner = scope != nullptr ? scope->using_decls : nullptr; inner;
       inner = inner->next) {
    if (inner->is_using_directive) add_active_using_directive(inner, depth, decl_seq);
  }
  for (int i = depth; i <= depth_scope_stack; ++i)
    scope_stack[i].use_slow_lookup = true;
}

void reset_using_directives_at_pop(a_scope_stack_entry *entry)
{
  if (entry->active_using_directives == nullptr && entry->applying_using_directives == nullptr)
    return;
  int depth = (int)(entry - scope_stack);
  for (int i = 0; i <= depth; ++i)
    scope_stack[i].applying_using_directives = nullptr;
  for (int i = 0; i < depth; ++i) {
    an_active_using_directive *directive = scope_stack[i].active_using_directives;
    for (; directive != nullptr; directive = directive->next) {
      a_scope_stack_entry *ancestor = &scope_stack[directive->common_ancestor_depth];
      directive->next_applying = ancestor->applying_using_directives;
      ancestor->applying_using_directives = directive;
    }
  }
  an_active_using_directive *next;
  for (an_active_using_directive *directive = entry->active_using_directives; directive;
       directive = next) {
    next = directive->next;
    directive->next = avail_active_using_directives;
    avail_active_using_directives = directive;
  }
  entry->active_using_directives = nullptr;
}

// The stack moves between translation units: depths of `from` and above are counted anew.
void set_active_using_list_scope_depths(int from, int to, uint32_t)
{
  if (C_dialect != 2) return;
  for (int i = to; i <= from && i <= depth_scope_stack; ++i) {
    an_active_using_directive *directive = scope_stack[i].active_using_directives;
    for (; directive != nullptr; directive = directive->next) {
      a_namespace *nominated = namespace_of_symbol(directive->nominated->symbol);
      directive->common_ancestor_depth = common_ancestor_depth(nominated, i);
    }
  }
}

static void activate_using_directives_of(a_namespace *name_space, int depth)
{
  a_scope *scope = scope_of_namespace(name_space);
  for (a_using_decl *decl = scope != nullptr ? scope->using_decls : nullptr; decl;
       decl = decl->next) {
    if (decl->is_using_directive) add_active_using_directive(decl, depth, (uint32_t)decl->decl_seq);
  }
}

//---------------------------------------------------------------------------------------------
// Namespaces

static void push_namespace_entry(a_scope_kind kind, a_namespace *name_space)
{
  a_scope_push push = {};
  push.kind = kind;
  push.name_space = skip_namespace_aliases(name_space);
  push.number = kind == sck_namespace ? -1 : supplement_of_namespace(name_space)->scope_number;
  push_scope_full(&push);
}

void push_namespace_scope(a_scope_kind kind, a_namespace *name_space)
{
  push_namespace_entry(kind, name_space);
}

void f_push_namespace_extension_scope(a_namespace *name_space, bool)
{
  push_namespace_entry(sck_namespace_extension, name_space);
  activate_using_directives_of(name_space, depth_scope_stack);
}

static bool namespace_is_on_stack(a_namespace *name_space)
{
  for (int depth = depth_of_initial_lookup_scope; depth >= 0;
       depth = scope_stack[depth].previous_lookup_depth) {
    if (scope_stack[depth].assoc_namespace == name_space) return true;
  }
  return false;
}

// Pops what was pushed since the stack had that depth.
void pop_scopes_above(int depth)
{
  while (depth_scope_stack > depth)
    pop_scope();
}

// Enters the enclosing namespaces first; what is open already is entered again only at the end.
void f_push_namespace_reactivation_scope(a_namespace *name_space, bool flag)
{
  int depth = depth_scope_stack;
  name_space = skip_namespace_aliases(name_space);
  a_namespace *parent = parent_namespace_of(&name_space->source_corresp);
  if (parent != nullptr && !namespace_is_on_stack(parent)) {
    f_push_namespace_reactivation_scope(parent, flag);
  }
  push_namespace_entry(sck_namespace_reactivation, name_space);
  top_scope()->depth_before_reactivation = depth;
  activate_using_directives_of(name_space, depth_scope_stack);
}

void pop_namespace_scope()
{
  pop_scope();
}
void pop_namespace_extension_scope()
{
  pop_scope();
}

void pop_namespace_reactivation_scope()
{
  pop_scopes_above(top_scope()->depth_before_reactivation);
}

// The end-of-file checks of a namespace's names, and of those inside it.
static void wrapup_namespaces_of(a_scope *scope)
{
  for (a_namespace *name_space = scope->namespaces; name_space; name_space = name_space->next) {
    if (name_space->is_alias || name_space->variant.scope == nullptr) continue;
    a_scope *inner = name_space->variant.scope;
    a_scope_pointers_block *block = &supplement_of_namespace(name_space)->pointers_block;
    wrapup_namespaces_of(inner);
    wrapup_scope(inner, sck_namespace, block, true, 0);
  }
}

void wrapup_namespace_scopes()
{
  wrapup_namespaces_of(curr_translation_unit->primary_scope);
}

//---------------------------------------------------------------------------------------------
// Classes

static bool class_is_on_stack(a_type *class_type)
{
  for (int depth = depth_of_initial_lookup_scope; depth >= 0;
       depth = scope_stack[depth].previous_lookup_depth) {
    a_scope_kind kind = scope_stack[depth].kind;
    if ((kind == sck_class || kind == sck_class_reactivation) &&
        scope_stack[depth].assoc_type == class_type) {
      return true;
    }
  }
  return false;
}

void push_class_reactivation_scope(a_type *class_type, bool flag)
{
  int depth = depth_scope_stack;
  class_type = skip_typerefs(class_type);
  a_type *parent = parent_class_of(&class_type->source_corresp);
  a_namespace *name_space = parent_namespace_of(&class_type->source_corresp);
  if (parent != nullptr && !class_is_on_stack(parent)) {
    push_class_reactivation_scope(parent, flag);
  } else if (name_space != nullptr && !namespace_is_on_stack(name_space)) {
    f_push_namespace_reactivation_scope(name_space, flag);
  }
  a_symbol *symbol = class_type->source_corresp.assoc_symbol;
  push_scope(sck_class_reactivation, class_supplement_of_symbol(symbol)->class_scope_number,
             class_type, nullptr);
  top_scope()->incomplete_class_reactivated = is_incomplete_type(class_type);
  top_scope()->depth_before_reactivation = depth;
}

void push_class_and_template_reactivation_scope(a_type *class_type, bool flag, bool)
{
  push_class_reactivation_scope(class_type, flag);
}

void pop_class_reactivation_scope()
{
  pop_scopes_above(top_scope()->depth_before_reactivation);
}

void make_class_definition_context_visible(a_type *class_type)
{
  push_class_reactivation_scope(class_type, false);
}

void push_function_reactivation_scope(a_routine *routine)
{
  a_scope *scope = scope_for_routine(routine);
  check(scope != nullptr);
  int saved_region = curr_il_region_number;
  curr_il_region_number = routine->region_number;
  scope->is_reactivated_function = true;
  push_scope(sck_function_access, -1, nullptr, routine);
  top_scope()->il_scope = scope;
  top_scope()->region_number = routine->region_number;
  top_scope()->saved_region_number = saved_region;
}
