// class_deferred.cpp - what a class leaves for the end of the outermost class: default arguments and
// bodies of its member functions.
// Owns:    the free lists of fixups and of waiting classes.
// Rule:    the holder of the list is the enclosing function's scope entry, or entry 0: a class that is
//          defined while another one of the same holder is open waits with it.
// Entry:   begin_class_being_defined, end_class_being_defined, cache_body,
//          process_deferred_class_fixups_and_instantiations.
// See:     C++ 9.2p2.
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "mem/mem_manage.h"
#include "parse/class_private.h"
#include "parse/decls.h"
#include "parse/func_def.h"
#include "parse/scope_stk.h"

// A class whose deferred work waits.
struct a_deferred_class {
  a_deferred_class *next;
  a_type *class_type;
};

static a_routine_fixup *avail_routine_fixups;
static a_deferred_class *avail_deferred_classes;

//---------------------------------------------------------------------------------------------
// Fixups.

a_routine_fixup *alloc_routine_fixup(a_type *class_type)
{
  a_routine_fixup *fixup = avail_routine_fixups;
  if (fixup != nullptr) {
    avail_routine_fixups = fixup->next;
  } else {
    fixup = (a_routine_fixup *)alloc_in_region(0, sizeof(a_routine_fixup));
  }
  memset((void *)fixup, 0, sizeof *fixup);
  fixup->class_type = class_type;
  clear_func_info(&fixup->func_info);
  clear_token_cache(&fixup->body_cache, false);
  return fixup;
}

void free_routine_fixup(a_routine_fixup *fixup)
{
  free_param_id_list(&fixup->func_info);
  discard_token_cache(&fixup->body_cache);
  fixup->next = avail_routine_fixups;
  avail_routine_fixups = fixup;
}

// The list of the class is kept with the latest first; it is turned round when it is worked off.
void add_routine_fixup(a_routine_fixup *fixup)
{
  a_class_type_supplement *supplement = class_supplement_of(fixup->class_type);
  fixup->next = (a_routine_fixup *)supplement->routine_fixups;
  supplement->routine_fixups = fixup;
}

static a_routine_fixup *take_routine_fixups(a_type *class_type)
{
  a_class_type_supplement *supplement = class_supplement_of(class_type);
  a_routine_fixup *list = nullptr, *next;
  for (a_routine_fixup *fixup = (a_routine_fixup *)supplement->routine_fixups; fixup;
       fixup = next) {
    next = fixup->next;
    fixup->next = list;
    list = fixup;
  }
  supplement->routine_fixups = nullptr;
  return list;
}

void cache_body(a_routine_fixup *fixup, bool may_have_initializers)
{
  bool error_found = false;
  unsigned first_seq, last_seq;
  a_source_position start, end;
  if (curr_token == tok_colon && !may_have_initializers) {
    syntax_error(ec_exp_lbrace);
    if (curr_token != tok_lbrace) return;
  }
  fixup->has_body = cache_function_body(&fixup->body_cache, may_have_initializers, &error_found,
                                        &first_seq, &last_seq, &start, &end);
  if (fixup->has_body) return;
  discard_token_cache(&fixup->body_cache);
  syntax_error(curr_token == tok_end_of_source ? ec_exp_rbrace : ec_exp_lbrace);
}

//---------------------------------------------------------------------------------------------
// Classes that are open.

static int depth_of_holder_from(int depth)
{
  for (; depth > 0; depth = scope_stack[depth].saved_decl_scope_level) {
    a_scope_stack_entry *entry = &scope_stack[depth];
    if (entry->kind == sck_class) return entry->depth_of_class_holder;
    if (entry->kind == sck_function) return depth;
    if (entry->kind == sck_namespace || entry->kind == sck_namespace_extension) return 0;
  }
  return 0;
}

static int depth_of_holder()
{
  return depth_of_holder_from(decl_scope_level);
}

// The scope of the class is on top already.
void begin_class_being_defined()
{
  int holder = depth_of_holder_from(top_scope()->saved_decl_scope_level);
  ++scope_stack[holder].classes_being_defined;
  top_scope()->depth_of_class_holder = holder;
}

void end_class_being_defined(a_type *class_type)
{
  a_scope_stack_entry *holder = &scope_stack[depth_of_holder()];
  --holder->classes_being_defined;
  if (class_supplement_of(class_type)->routine_fixups == nullptr) return;
  a_deferred_class *waiting = avail_deferred_classes;
  if (waiting != nullptr) {
    avail_deferred_classes = waiting->next;
  } else {
    waiting = (a_deferred_class *)alloc_in_region(0, sizeof(a_deferred_class));
  }
  *waiting = {nullptr, class_type};
  a_deferred_class **link = (a_deferred_class **)&holder->deferred_classes;
  while (*link != nullptr)
    link = &(*link)->next;
  *link = waiting;
}

//---------------------------------------------------------------------------------------------
// Working it off.

static void scan_default_arguments(a_routine_fixup *fixup)
{
  a_def_arg_expr_fixup *next;
  bool is_first = true;
  for (a_def_arg_expr_fixup *entry = fixup->default_arg_fixups; entry != nullptr; entry = next) {
    next = entry->next;
    rescan_cached_tokens(entry->token_cache);
    delayed_scan_of_default_arg_expr(entry->param_type, fixup->symbol, is_first);
    is_first = false;
    free_def_arg_expr_fixup(entry);
  }
  fixup->default_arg_fixups = nullptr;
}

void default_argument_fixup_for_class(a_type *class_type)
{
  bool entered = false;
  a_routine_fixup *fixup = (a_routine_fixup *)class_supplement_of(class_type)->routine_fixups;
  for (; fixup != nullptr; fixup = fixup->next) {
    if (fixup->default_arg_fixups == nullptr) continue;
    if (!entered) push_class_and_template_reactivation_scope(class_type, false, false);
    entered = true;
    scan_default_arguments(fixup);
  }
  if (entered) pop_class_reactivation_scope();
}

// What a broken body left behind in the cache.
static void skip_rest_of_cache()
{
  while (curr_token != tok_end_of_source)
    get_token();
  get_token();
}

static a_routine *routine_of_fixup(a_routine_fixup *fixup, unsigned *flags)
{
  a_symbol *symbol = fixup->symbol;
  if (symbol != nullptr && is_routine_symbol(symbol)) {
    a_routine *routine = routine_of_symbol(symbol);
    if (routine->type->kind == tk_routine && !routine->is_defined) return routine;
  }
  *flags |= fbf_discard;
  return make_routine_for_discarded_body(fixup->class_type, &fixup->func_info);
}

static void scan_deferred_body(a_routine_fixup *fixup)
{
  unsigned flags = fbf_deferred;
  a_routine *routine = routine_of_fixup(fixup, &flags);
  rescan_cached_tokens(&fixup->body_cache);
  scan_function_body(routine, &fixup->func_info, flags);
  skip_rest_of_cache();
}

static void scan_deferred_bodies(a_type *class_type)
{
  a_routine_fixup *fixup = take_routine_fixups(class_type), *next;
  push_class_and_template_reactivation_scope(class_type, false, false);
  for (; fixup != nullptr; fixup = next) {
    next = fixup->next;
    if (fixup->has_body) scan_deferred_body(fixup);
    free_routine_fixup(fixup);
  }
  pop_class_reactivation_scope();
}

void process_deferred_class_fixups_and_instantiations(a_type *)
{
  int depth = depth_of_holder();
  if (scope_stack[depth].classes_being_defined != 0) return;
  a_deferred_class *list = (a_deferred_class *)scope_stack[depth].deferred_classes, *next;
  scope_stack[depth].deferred_classes = nullptr;
  if (list == nullptr) return;
  // A body may call what any class of the list declares: all default arguments come first.
  for (a_deferred_class *waiting = list; waiting != nullptr; waiting = waiting->next)
    default_argument_fixup_for_class(waiting->class_type);
  for (a_deferred_class *waiting = list; waiting != nullptr; waiting = next) {
    next = waiting->next;
    scan_deferred_bodies(waiting->class_type);
    waiting->next = avail_deferred_classes;
    avail_deferred_classes = waiting;
  }
}

void class_decl_init()
{
  avail_routine_fixups = nullptr;
  avail_deferred_classes = nullptr;
  curr_routine_fixup = nullptr;
  func_generated_init();
}
