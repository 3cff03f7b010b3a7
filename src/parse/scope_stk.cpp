// scope_stk.cpp - the scope stack: push and pop, and what each of them saves and restores.
// Owns:    scope_stack and the depths of interest declared in scope_stk.h.
// Rule:    the array moves when it grows: indices, not pointers, live across a push.  Pop works strictly
//          in its written order.
// Entry:   push_scope, push_file_scope, pop_scope, ensure_il_scope_exists.
#include "parse/scope_stk.h"

#include <cstdio>
#include <cstring>

#include "driver/flags.h"
#include "driver/trans_unit.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "lex/pragma.h"
#include "mem/mem_manage.h"
#include "mem/registered_vars.h"
#include "parse/exprutil.h"
#include "parse/lookup.h"
#include "parse/qn_pragma.h"
#include "parse/scope_stk_parts.h"
#include "parse/statements.h"

static constexpr int scope_stack_growth = 30;

a_scope_stack_entry *scope_stack;
int size_scope_stack;
int depth_scope_stack = -1;
int decl_scope_level = -1;
int depth_innermost_function_scope = -1;
a_scope *innermost_function_scope;
int depth_innermost_namespace_scope = -1;
int depth_innermost_instantiation_scope = -1;
int depth_template_declaration_scope = -1;
int depth_of_initial_lookup_scope = -1;
int depth_of_innermost_scope_that_affects_access_control = -1;
int curr_deferred_access_scope = -1;
int num_classes_on_scope_stack;
bool inside_local_class;
a_pack_expansion_stack_entry *pack_expansion_stack;
unsigned curr_fp_contract_state;
unsigned curr_fenv_access_state;
unsigned curr_cx_limited_range_state;

// One saved state of push_name_linkage.
struct a_saved_name_linkage {
  a_saved_name_linkage *next;
  unsigned name_linkage : 2;
  bool is_explicit : 1;
};
static a_saved_name_linkage *name_linkage_stack;
static a_saved_name_linkage *avail_saved_name_linkages;

//---------------------------------------------------------------------------------------------
// Kinds

static bool is_namespace_kind(a_scope_kind kind)
{
  return kind == sck_file || kind == sck_namespace || kind == sck_namespace_extension ||
         kind == sck_namespace_reactivation;
}

static bool is_class_kind(a_scope_kind kind)
{
  return kind == sck_class || kind == sck_class_reactivation;
}

static bool takes_given_number(a_scope_kind kind, int number)
{
  switch (kind) {
  case sck_file:
  case sck_namespace_extension:
  case sck_namespace_reactivation:
  case sck_class_reactivation:
  case sck_template_instantiation: return true;
  case sck_function:
  case sck_block:
  case sck_function_prototype: return number != -1;
  case sck_namespace:
  case sck_class:
  case sck_template_declaration:
  case sck_instantiation_context:
  case sck_pragma_rescan:
  case sck_function_access:
  case sck_condition:
  case sck_enum: return false;
  }
  unexpected_kind("scope kind");
}

a_routine *curr_routine()
{
  return depth_innermost_function_scope >= 0
             ? scope_stack[depth_innermost_function_scope].assoc_routine
             : nullptr;
}

//---------------------------------------------------------------------------------------------
// The IL scope of a push

// In C the parent is the scope that receives declarations; a file-scope entry below a function keeps a
// reference record there instead.
static void set_parent_in_c(a_scope *scope, int enclosing_level)
{
  if (enclosing_level < 0) return;
  if (is_file_scope_entry(scope) && scope_stack[enclosing_level].enclosing_function_depth >= 0) {
    a_scope *enclosing = ensure_il_scope_exists(&scope_stack[enclosing_level]);
    make_local_scope_ref(enclosing, scope, iek_scope, innermost_function_scope);
    return;
  }
  scope->parent = scope_stack[enclosing_level].il_scope;
}

static void set_parent_in_cplusplus(a_scope *scope, a_scope_stack_entry *entry, int enclosing_level)
{
  bool nests = entry->kind == sck_class || entry->kind == sck_enum;
  if (nests && entry->assoc_type != nullptr) {
    a_source_correspondence *corresp = &entry->assoc_type->source_corresp;
    if (corresp->is_class_member) {
      a_type *parent = parent_class_of(corresp);
      scope->parent = parent != nullptr ? class_supplement_of(parent)->class_scope : nullptr;
      return;
    }
    if (corresp->is_local && depth_innermost_function_scope >= 0 && enclosing_level >= 0) {
      make_local_scope_ref(ensure_il_scope_exists(&scope_stack[enclosing_level]), scope, iek_scope,
                           innermost_function_scope);
      return;
    }
    a_namespace *name_space = parent_namespace_of(corresp);
    if (name_space != nullptr) {
      scope->parent = scope_of_namespace(name_space);
      return;
    }
  }
  if (entry->kind == sck_condition && enclosing_level >= 0) {
    scope->parent = scope_stack[enclosing_level].il_scope;
    return;
  }
  scope->parent = curr_translation_unit->primary_scope;
}

static a_scope *alloc_file_region_scope(a_scope_stack_entry *entry)
{
  curr_il_region_number = file_scope_region_number;
  return alloc_scope(entry->kind, entry->number, nullptr);
}

// Makes or finds the IL scope and switches the region.  Returns true for a new scope.
static bool set_il_scope_and_region(a_scope_stack_entry *entry, unsigned flags)
{
  bool is_new = false;
  switch (entry->kind) {
  case sck_file:
    curr_il_region_number = file_scope_region_number;
    entry->il_scope = curr_translation_unit->primary_scope;
    break;
  case sck_function_prototype:
  case sck_template_instantiation:
  case sck_instantiation_context: curr_il_region_number = file_scope_region_number; break;
  case sck_namespace:
    entry->il_scope = alloc_file_region_scope(entry);
    entry->il_scope->owner.name_space = entry->assoc_namespace;
    entry->assoc_namespace->variant.scope = entry->il_scope;
    is_new = true;
    break;
  case sck_namespace_extension:
  case sck_namespace_reactivation:
    curr_il_region_number = file_scope_region_number;
    entry->il_scope = scope_of_namespace(entry->assoc_namespace);
    break;
  case sck_class:
    entry->il_scope = alloc_file_region_scope(entry);
    entry->il_scope->owner.type = entry->assoc_type;
    class_supplement_of(entry->assoc_type)->class_scope = entry->il_scope;
    is_new = true;
    break;
  case sck_class_reactivation:
    curr_il_region_number = file_scope_region_number;
    entry->il_scope = class_supplement_of(entry->assoc_type)->class_scope;
    break;
  case sck_enum:
    entry->il_scope = alloc_file_region_scope(entry);
    entry->il_scope->owner.type = entry->assoc_type;
    is_new = true;
    break;
  case sck_template_declaration:
    if (prototype_instantiations_in_il && !(flags & psf_no_il_scope)) {
      entry->il_scope = alloc_scope(entry->kind, entry->number, nullptr);
      is_new = true;
    }
    break;
  case sck_condition:
    entry->il_scope = alloc_scope(entry->kind, entry->number, nullptr);
    is_new = true;
    break;
  case sck_function:
    entry->il_scope = new_il_region(sck_function, entry->number, entry->assoc_routine);
    entry->region_is_own = true;
    if (entry->assoc_routine != nullptr)
      entry->assoc_routine->region_number = curr_il_region_number;
    is_new = true;
    break;
  case sck_block:
  case sck_pragma_rescan:
  case sck_function_access: break;
  }
  entry->region_number = curr_il_region_number;
  return is_new;
}

static void append_subscope(a_scope_stack_entry *entry, a_scope *scope)
{
  if (entry->subscopes_tail != nullptr)
    entry->subscopes_tail->next = scope;
  else
    entry->subscopes_head = scope;
  entry->subscopes_tail = scope;
}

a_scope *ensure_il_scope_exists(a_scope_stack_entry *entry)
{
  if (entry->il_scope != nullptr) return entry->il_scope;
  int depth = (int)(entry - scope_stack);
  a_scope_stack_entry *below = depth > 0 ? entry - 1 : nullptr;
  int saved_region = curr_il_region_number;
  if (entry->kind == sck_block) {
    curr_il_region_number = entry->region_number;
    entry->il_scope = alloc_scope(sck_block, entry->number, nullptr);
    append_subscope(below, entry->il_scope);
    if (C_dialect == 2 && entry->object_lifetime != nullptr && entry->lifetime_pushed) {
      bind_object_lifetime(entry->object_lifetime, iek_scope, entry->il_scope);
    }
  } else if (entry->kind == sck_function_prototype) {
    curr_il_region_number = file_scope_region_number;
    entry->il_scope = alloc_scope(sck_function_prototype, entry->number, nullptr);
    if (below->kind == sck_function_prototype) {
      a_scope *parent = ensure_il_scope_exists(below);
      append_subscope(below, entry->il_scope);
      entry->il_scope->parent = parent;
    }
    if (entry->assoc_type != nullptr) {
      entry->il_scope->owner.type = entry->assoc_type;
      routine_supplement_of(entry->assoc_type)->prototype_scope = entry->il_scope;
    }
  }
  curr_il_region_number = saved_region;
  if (entry->il_scope != nullptr && entry->il_scope->stack_depth == -1) {
    entry->il_scope->stack_depth = depth;
  }
  return entry->il_scope;
}

//---------------------------------------------------------------------------------------------
// Push

static void grow_scope_stack()
{
  int new_size = size_scope_stack + scope_stack_growth;
  if (new_size > 4 * scope_stack_growth) new_size = size_scope_stack * 2;
  scope_stack = (a_scope_stack_entry *)realloc_buffer(
      (char *)scope_stack, size_scope_stack * sizeof(a_scope_stack_entry),
      new_size * sizeof(a_scope_stack_entry));
  size_scope_stack = new_size;
}

static void fill_saved_state(a_scope_stack_entry *entry)
{
  entry->saved_region_number = curr_il_region_number;
  entry->saved_decl_scope_level = decl_scope_level;
  entry->saved_depth_template_declaration_scope = depth_template_declaration_scope;
  entry->saved_depth_innermost_instantiation_scope = depth_innermost_instantiation_scope;
  entry->saved_access_depth = depth_of_innermost_scope_that_affects_access_control;
  entry->saved_deferred_access_scope = curr_deferred_access_scope;
  entry->saved_expr_stack = expr_stack;
  entry->saved_initial_lookup_depth = depth_of_initial_lookup_scope;
  entry->saved_object_lifetime = curr_object_lifetime;
  entry->saved_fp_contract_state = curr_fp_contract_state;
  entry->saved_fenv_access_state = curr_fenv_access_state;
  entry->saved_cx_limited_range_state = curr_cx_limited_range_state;
  entry->push_position = pos_curr_token;
  entry->enclosing_function_depth = depth_innermost_function_scope;
  entry->namespace_depth = depth_innermost_namespace_scope;
}

static bool sets_decl_scope_level(a_scope_kind kind)
{
  if (kind == sck_pragma_rescan) return false;
  if (C_dialect != 2) return kind != sck_class;
  return kind != sck_namespace_reactivation && kind != sck_class_reactivation &&
         kind != sck_instantiation_context && kind != sck_function_access &&
         kind != sck_template_instantiation;
}

static void set_lookup_facts(a_scope_stack_entry *entry, int depth)
{
  a_scope_stack_entry *below = depth > 0 ? entry - 1 : nullptr;
  entry->previous_lookup_depth =
      entry->kind == sck_instantiation_context ? 0 : depth_of_initial_lookup_scope;
  depth_of_initial_lookup_scope = depth;
  bool class_with_bases =
      entry->kind == sck_class && class_supplement_of(entry->assoc_type)->base_classes != nullptr;
  bool slow = entry->kind == sck_template_instantiation || entry->kind == sck_class_reactivation ||
              entry->kind == sck_namespace_extension || entry->kind == sck_namespace_reactivation ||
              class_with_bases || (entry->kind == sck_file && entry->suppress_wrapup);
  entry->use_slow_lookup = slow || (below != nullptr && below->use_slow_lookup);
  bool force = entry->kind == sck_pragma_rescan || entry->kind == sck_template_declaration ||
               entry->kind == sck_template_instantiation ||
               entry->kind == sck_instantiation_context ||
               (entry->kind == sck_class && class_supplement_of(entry->assoc_type)->is_closure);
  entry->force_stack_lookup = force || (below != nullptr && below->force_stack_lookup);
}

static void inherit_facts(a_scope_stack_entry *entry, int depth)
{
  a_scope_stack_entry *below = depth > 0 ? entry - 1 : nullptr;
  if (below != nullptr) {
    entry->in_template_definition = below->in_template_definition;
    entry->in_template_prototype = below->in_template_prototype;
    entry->has_implicit_template_typename = below->has_implicit_template_typename;
    entry->routine_may_have_multiple_copies = below->routine_may_have_multiple_copies;
    entry->suppress_references = below->suppress_references;
    entry->inherit_lifetime = false;
  }
  if (C_dialect != 2) {
    entry->name_linkage = nlk_c;
  } else if (below == nullptr) {
    entry->name_linkage = nlk_cplusplus;
  } else {
    entry->name_linkage = below->name_linkage;
    entry->name_linkage_is_explicit = below->name_linkage_is_explicit;
  }
}

// Depths of functions, classes, namespaces and instantiations.
static void set_depths(a_scope_stack_entry *entry, int depth, unsigned flags)
{
  a_scope_kind kind = entry->kind;
  if (is_class_kind(kind)) {
    ++num_classes_on_scope_stack;
    if (kind == sck_class && depth_innermost_function_scope >= 0 && C_dialect == 2) {
      inside_local_class = true;
    }
  }
  entry->in_local_class = inside_local_class;
  bool c_class = C_dialect != 2 && kind == sck_class; // declares nothing but members
  if (kind == sck_template_instantiation || kind == sck_instantiation_context ||
      (is_class_kind(kind) && !c_class) || (is_namespace_kind(kind) && kind != sck_file)) {
    depth_innermost_function_scope = -1;
    innermost_function_scope = nullptr;
    entry->enclosing_function_depth = -1;
  }
  if (kind == sck_template_instantiation) {
    depth_innermost_instantiation_scope = depth;
    entry->in_template_definition = (flags & psf_template_definition) != 0;
    entry->in_template_prototype = (flags & psf_template_prototype) != 0;
  }
  if (kind == sck_template_declaration) depth_template_declaration_scope = depth;
  if (kind == sck_function) {
    depth_innermost_function_scope = depth;
    innermost_function_scope = entry->il_scope;
    entry->enclosing_function_depth = depth;
    if (C_dialect == 2 && !entry->in_template_definition && entry->assoc_routine != nullptr) {
      entry->routine_may_have_multiple_copies =
          routine_might_exist_in_multiple_copies(entry->assoc_routine);
    }
    entry->shareable_constants_table = alloc_function_shareable_constants_table();
    curr_func_shareable_constants_table = entry->shareable_constants_table;
  }
  if (is_namespace_kind(kind)) {
    depth_innermost_namespace_scope = depth;
    entry->namespace_depth = depth;
    curr_deferred_access_scope = depth;
  }
  bool access = is_class_kind(kind) || kind == sck_function || kind == sck_function_access ||
                (kind == sck_template_instantiation && !(flags & psf_keep_access_depth));
  if (access) depth_of_innermost_scope_that_affects_access_control = depth;
}

static void begin_object_lifetime(a_scope_stack_entry *entry, an_object_lifetime *given)
{
  if (C_dialect != 2) return;
  if (given != nullptr) {
    curr_object_lifetime = given;
  } else if (entry->kind == sck_file || entry->kind == sck_namespace) {
    if (entry->il_scope->object_lifetime != nullptr) {
      curr_object_lifetime = entry->il_scope->object_lifetime;
    } else {
      push_object_lifetime(iek_scope, entry->il_scope, olk_global);
    }
  } else if (entry->kind == sck_function || entry->kind == sck_pragma_rescan ||
             entry->kind == sck_function_prototype || entry->kind == sck_template_instantiation) {
    curr_object_lifetime = curr_translation_unit->primary_scope->object_lifetime;
  }
  bool inherits = entry->kind == sck_block && entry > scope_stack && (entry - 1)->inherit_lifetime;
  bool pushes = entry->kind == sck_function || entry->kind == sck_condition ||
                (entry->kind == sck_block && given == nullptr && !inherits);
  if (pushes) {
    push_object_lifetime(entry->il_scope != nullptr ? iek_scope : iek_none, entry->il_scope,
                         olk_block);
    entry->lifetime_pushed = true;
  }
  entry->object_lifetime = curr_object_lifetime;
}

static a_scope_pointers_block *external_block_for(a_scope_stack_entry *entry)
{
  a_symbol *symbol = nullptr;
  switch (entry->kind) {
  case sck_file: return curr_translation_unit->scope_pointers;
  case sck_namespace:
  case sck_namespace_extension:
  case sck_namespace_reactivation:
    symbol = entry->assoc_namespace->source_corresp.assoc_symbol;
    return &symbol->variant.name_space.supplement->pointers_block;
  case sck_class:
  case sck_class_reactivation:
    symbol = entry->assoc_type->source_corresp.assoc_symbol;
    return symbol != nullptr ? &class_supplement_of_symbol(symbol)->pointers_block : nullptr;
  default: return nullptr;
  }
}

static void set_number_of_owner(a_scope_stack_entry *entry)
{
  if (entry->kind == sck_class) {
    a_symbol *symbol = entry->assoc_type->source_corresp.assoc_symbol;
    if (symbol != nullptr) class_supplement_of_symbol(symbol)->class_scope_number = entry->number;
  } else if (entry->kind == sck_namespace) {
    a_symbol *symbol = entry->assoc_namespace->source_corresp.assoc_symbol;
    symbol->variant.name_space.supplement->scope_number = entry->number;
  }
}

void push_scope_full(const a_scope_push *push)
{
  if (depth_scope_stack + 1 >= size_scope_stack) grow_scope_stack();
  int depth = ++depth_scope_stack;
  a_scope_stack_entry *entry = &scope_stack[depth];
  memset(entry, 0, sizeof(*entry));
  entry->kind = push->kind;
  entry->number =
      takes_given_number(push->kind, push->number) ? push->number : take_next_scope_number();
  entry->assoc_type = push->type;
  entry->assoc_routine = push->routine;
  entry->assoc_namespace = push->name_space;
  entry->suppress_wrapup = (push->flags & (psf_suppress_wrapup | psf_wrapup_scope)) != 0;
  fill_saved_state(entry);
  inherit_facts(entry, depth);
  int enclosing_level = decl_scope_level;
  bool is_new_scope = set_il_scope_and_region(entry, push->flags);
  entry->external_block = external_block_for(entry);
  set_number_of_owner(entry);
  if (is_new_scope) {
    if (C_dialect == 2)
      set_parent_in_cplusplus(entry->il_scope, entry, enclosing_level);
    else
      set_parent_in_c(entry->il_scope, enclosing_level);
    if (entry->kind == sck_condition) append_subscope(entry - 1, entry->il_scope);
  }
  if (entry->il_scope != nullptr) entry->il_scope->stack_depth = depth;
  set_lookup_facts(entry, depth);
  if (sets_decl_scope_level(push->kind)) decl_scope_level = depth;
  set_depths(entry, depth, push->flags);
  begin_object_lifetime(entry, push->lifetime);
}

void push_scope(a_scope_kind kind, int number, a_type *type, a_routine *routine)
{
  a_scope_push push = {};
  push.kind = kind;
  push.number = number;
  push.type = type;
  push.routine = routine;
  push_scope_full(&push);
}

void push_file_scope(unsigned flags)
{
  a_scope_push push = {};
  push.kind = sck_file;
  push.number = curr_translation_unit->primary_scope->number;
  push.flags = flags;
  push_scope_full(&push);
}

void push_block_scope_with_lifetime(an_object_lifetime *lifetime)
{
  a_scope_push push = {};
  push.kind = sck_block;
  push.number = -1;
  push.lifetime = lifetime;
  push_scope_full(&push);
}

void push_for_init_scope()
{
  push_scope(sck_block, -1, nullptr, nullptr);
  top_scope()->for_init_scope = true;
}

void push_template_declaration_scope(a_template_decl_info *decl_info, unsigned flags)
{
  a_scope_push push = {};
  push.kind = sck_template_declaration;
  push.number = -1;
  push.flags = flags;
  push_scope_full(&push);
  top_scope()->template_decl_info = decl_info;
}

//---------------------------------------------------------------------------------------------
// Pop

// Pragmas that wait for the end of the scope, in the order of the source.
static void process_end_of_scope_pragmas(a_scope_stack_entry *entry)
{
  a_pending_pragma *list = entry->pending_pragmas;
  entry->pending_pragmas = nullptr;
  for (a_pending_pragma *pragma = list; pragma != nullptr; pragma = pragma->next) {
    if (pragma->description->phase != pragma_end_of_scope) {
      fputs("INTERNAL ERROR!  Cannot process pragma!\n", stderr);
    } else {
      process_c_pragma(pragma);
    }
  }
  free_pending_pragma_list(list);
}

// Those that found no construct.
static void process_pending_pragmas(a_scope_stack_entry *entry)
{
  a_pending_pragma *list = entry->pending_pragma_list;
  entry->pending_pragma_list = nullptr;
  if (list == nullptr) return;
  if (total_errors != 0)
    free_pending_pragma_list(list);
  else
    end_of_scope_pragma_processing(list);
}

static void move_homeless_symbols_to_inactive_chains()
{
  for (a_symbol *symbol = symbols_with_no_scope; symbol; symbol = symbol->next_in_scope) {
    if (!symbol->on_active_chain) continue;
    unlink_symbol_from_symbol_table(symbol);
    add_symbol_to_inactive_list(symbol);
  }
  file_scope_symbols_are_on_inactive_list = true;
}

static void end_object_lifetime(a_scope_stack_entry *entry)
{
  if (C_dialect != 2) return;
  if (entry->lifetime_pushed) {
    curr_object_lifetime = entry->object_lifetime;
    pop_object_lifetime();
  }
  curr_object_lifetime = entry->saved_object_lifetime;
}

// The scopes made inside go to the IL scope, or to the entry below where there is none.
static void hand_on_subscopes(a_scope_stack_entry *entry)
{
  if (entry->subscopes_head == nullptr) return;
  if (entry->il_scope == nullptr && entry->kind == sck_function_prototype &&
      (entry - 1)->kind != sck_function_prototype) {
    ensure_il_scope_exists(entry);
  }
  if (entry->il_scope != nullptr) {
    a_scope **link = &entry->il_scope->subscopes;
    while (*link != nullptr)
      link = &(*link)->next;
    *link = entry->subscopes_head;
    for (a_scope *scope = entry->subscopes_head; scope; scope = scope->next) {
      if (scope->parent == nullptr) scope->parent = entry->il_scope;
    }
    return;
  }
  if (entry == scope_stack) return;
  a_scope_stack_entry *below = entry - 1;
  if (below->subscopes_tail != nullptr)
    below->subscopes_tail->next = entry->subscopes_head;
  else
    below->subscopes_head = entry->subscopes_head;
  below->subscopes_tail = entry->subscopes_tail;
}

static void report_unexpanded_packs(a_scope_stack_entry *entry)
{
  an_unexpanded_pack_reference *reference = entry->unexpanded_packs;
  for (; reference != nullptr; reference = reference->next) {
    pos_st_error(ec_pack_not_expanded, reference->position, reference->symbol->header->identifier);
  }
}

static void restore_pragma_states(a_scope_stack_entry *entry)
{
  if (entry->kind == sck_file) return;
  curr_fp_contract_state = entry->saved_fp_contract_state;
  curr_fenv_access_state = entry->saved_fenv_access_state;
  curr_cx_limited_range_state = entry->saved_cx_limited_range_state;
}

// The names of a for-init declaration: where the other rule would find another symbol from now on, uses
// of that symbol are to be reported.
static void compare_for_init_names(a_scope_stack_entry *entry, a_symbol *first)
{
  if (!microsoft_mode && !warning_on_for_init_difference) return;
  for (a_symbol *symbol = first; symbol != nullptr; symbol = symbol->next_in_scope) {
    a_symbol_locator locator = cleared_locator;
    locator.header = symbol->header;
    locator.position = symbol->position;
    if (locator.header->active_symbols == nullptr) continue;
    a_symbol *found = normal_id_lookup(&locator, lo_none);
    if (found == nullptr || found->scope_number == entry->number) continue;
    a_hidden_symbol *hidden = (a_hidden_symbol *)alloc_in_region(0, sizeof(a_hidden_symbol));
    hidden->symbol = found;
    hidden->saved_mark = found->in_for_init_difference;
    hidden->next = top_scope()->hidden_symbols;
    top_scope()->hidden_symbols = hidden;
    found->in_for_init_difference = true;
  }
}

static void restore_hidden_symbols(a_scope_stack_entry *entry)
{
  for (a_hidden_symbol *hidden = entry->hidden_symbols; hidden; hidden = hidden->next) {
    hidden->symbol->in_for_init_difference = hidden->saved_mark;
  }
}

// The state of the new top.
static void restore_from_new_top(const a_scope_stack_entry *popped)
{
  depth_of_initial_lookup_scope = popped->saved_initial_lookup_depth;
  curr_il_region_number = popped->saved_region_number;
  decl_scope_level = popped->saved_decl_scope_level;
  depth_template_declaration_scope = popped->saved_depth_template_declaration_scope;
  depth_innermost_instantiation_scope = popped->saved_depth_innermost_instantiation_scope;
  depth_of_innermost_scope_that_affects_access_control = popped->saved_access_depth;
  curr_deferred_access_scope = popped->saved_deferred_access_scope;
  expr_stack = popped->saved_expr_stack;
  if (is_class_kind(popped->kind)) --num_classes_on_scope_stack;
  if (depth_scope_stack < 0) {
    depth_innermost_function_scope = depth_innermost_namespace_scope = -1;
    innermost_function_scope = nullptr;
    inside_local_class = false;
    curr_func_shareable_constants_table = nullptr;
    return;
  }
  a_scope_stack_entry *top = top_scope();
  inside_local_class = top->in_local_class;
  depth_innermost_function_scope = top->enclosing_function_depth;
  depth_innermost_namespace_scope = top->namespace_depth;
  bool in_function = depth_innermost_function_scope >= 0;
  innermost_function_scope =
      in_function ? scope_stack[depth_innermost_function_scope].il_scope : nullptr;
  curr_func_shareable_constants_table =
      in_function ? scope_stack[depth_innermost_function_scope].shareable_constants_table : nullptr;
}

void pop_scope()
{
  a_scope_stack_entry *entry = top_scope();
  a_scope_kind kind = entry->kind;
  if (entry->pending_pragmas != nullptr) process_end_of_scope_pragmas(entry);
  a_scope_pointers_block *block = block_of_scope_entry(entry);
  a_symbol *first_symbol = block->symbols;
  if (kind == sck_file && !entry->suppress_wrapup) move_homeless_symbols_to_inactive_chains();
  if (!entry->suppress_wrapup) wrapup_scope(entry->il_scope, kind, block, false, 0);
  if (kind == sck_file) report_references_of_inline_functions();
  process_pending_pragmas(entry);
  if (C_dialect == 2) reset_using_directives_at_pop(entry);
  if (kind == sck_function && !entry->in_template_prototype) {
    wrapup_control_flow_processing(entry->il_scope);
  }
  end_object_lifetime(entry);
  restore_hidden_symbols(entry);
  if (kind == sck_namespace || kind == sck_file) block->inactive_list_after_file_scope = true;
  restore_pragma_states(entry);
  hand_on_subscopes(entry);
  if (entry->region_is_own) decide_fate_of_function_body(entry);
  report_unexpanded_packs(entry);
  if (kind == sck_template_declaration || kind == sck_template_instantiation) {
    pack_expansion_stack = entry->saved_pack_expansion_stack;
  }
  if (entry->il_scope != nullptr && entry->il_scope->stack_depth == depth_scope_stack) {
    entry->il_scope->stack_depth = -1;
  }
  --depth_scope_stack;
  // The entry's place stays readable until the next push.
  restore_from_new_top(entry);
  if (entry->for_init_scope) compare_for_init_names(entry, first_symbol);
  if (kind == sck_function && depth_innermost_function_scope < 0)
    lower_waiting_functions_if_possible();
}

//---------------------------------------------------------------------------------------------
// Name linkage

void push_name_linkage(a_name_linkage_kind linkage)
{
  a_saved_name_linkage *saved = avail_saved_name_linkages;
  if (saved != nullptr)
    avail_saved_name_linkages = saved->next;
  else
    saved = (a_saved_name_linkage *)alloc_in_region(0, sizeof(a_saved_name_linkage));
  saved->name_linkage = top_scope()->name_linkage;
  saved->is_explicit = top_scope()->name_linkage_is_explicit;
  saved->next = name_linkage_stack;
  name_linkage_stack = saved;
  top_scope()->name_linkage = linkage;
  top_scope()->name_linkage_is_explicit = true;
}

void pop_name_linkage()
{
  a_saved_name_linkage *saved = name_linkage_stack;
  check(saved != nullptr);
  top_scope()->name_linkage = saved->name_linkage;
  top_scope()->name_linkage_is_explicit = saved->is_explicit;
  name_linkage_stack = saved->next;
  saved->next = avail_saved_name_linkages;
  avail_saved_name_linkages = saved;
}

//---------------------------------------------------------------------------------------------
// Queries

void clear_scope_pointers_block(a_scope_pointers_block *block)
{
  memset(block, 0, sizeof(*block));
}

a_scope_pointers_block *get_pointers_block_for_scope(a_scope *scope)
{
  if (scope->kind == sck_file) {
    a_translation_unit *unit = get_trans_unit_for_scope(scope->number);
    return unit != nullptr ? unit->scope_pointers : curr_translation_unit->scope_pointers;
  }
  if (scope->kind == sck_namespace) {
    a_symbol *symbol = scope->owner.name_space->source_corresp.assoc_symbol;
    return symbol != nullptr ? &symbol->variant.name_space.supplement->pointers_block : nullptr;
  }
  if (scope->stack_depth >= 0) return block_of_scope_entry(&scope_stack[scope->stack_depth]);
  if (scope->kind == sck_class) {
    a_symbol *symbol = scope->owner.type->source_corresp.assoc_symbol;
    return symbol != nullptr ? &class_supplement_of_symbol(symbol)->pointers_block : nullptr;
  }
  return nullptr;
}

bool namespace_is_enclosed_by_scope(a_symbol *symbol, a_scope_stack_entry *entry)
{
  if (entry->kind == sck_file) return true;
  a_namespace *wanted = entry->assoc_namespace;
  a_namespace *name_space = namespace_of_symbol(symbol);
  while (name_space != nullptr && name_space != wanted) {
    name_space = parent_namespace_of(&name_space->source_corresp);
  }
  return name_space == wanted;
}

a_symbol *current_class_symbol_if_class_template()
{
  for (int depth = depth_scope_stack; depth >= 0;
       depth = scope_stack[depth].previous_lookup_depth) {
    a_scope_stack_entry *entry = &scope_stack[depth];
    if (is_class_kind(entry->kind)) {
      return as_class(entry->assoc_type).is_template_instance
                 ? entry->assoc_type->source_corresp.assoc_symbol
                 : nullptr;
    }
  }
  return nullptr;
}

bool routine_defined(a_routine *routine)
{
  return routine->is_defined || routine->alias_target != nullptr;
}

//---------------------------------------------------------------------------------------------
// Initialisation

void scope_stk_one_time_init()
{
  register_trans_unit_variable(name_linkage_stack);
}

void scope_stk_init()
{
  depth_scope_stack = -1;
  decl_scope_level = -1;
  depth_innermost_function_scope = -1;
  innermost_function_scope = nullptr;
  depth_innermost_namespace_scope = -1;
  depth_innermost_instantiation_scope = -1;
  depth_template_declaration_scope = -1;
  depth_of_initial_lookup_scope = -1;
  depth_of_innermost_scope_that_affects_access_control = -1;
  curr_deferred_access_scope = -1;
  num_classes_on_scope_stack = 0;
  inside_local_class = false;
  name_linkage_stack = nullptr;
  avail_saved_name_linkages = nullptr;
}

void scope_stk_trans_unit_init()
{
  init_end_of_scope_state();
}
