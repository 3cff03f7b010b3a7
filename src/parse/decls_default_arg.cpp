// decls_default_arg.cpp - default arguments that can't be read where they stand: their tokens are kept
// until the class is complete.
// Owns:    the free list of fixups.
// Entry:   prescan_default_function_arg_expr, delayed_scan_of_default_arg_expr.
// See:     C++ 8.3.6, 9.2p2.
#include <cstring>

#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/token_cache.h"
#include "mem/mem_manage.h"
#include "parse/decls.h"
#include "parse/expr.h"

static a_def_arg_expr_fixup *avail_def_arg_expr_fixups;

// Up to the `,` or `)` that ends the argument.
void prescan_default_arg_expr(a_token_cache *cache, bool)
{
  unsigned char stop_counts[tok_last];
  memset(stop_counts, 0, sizeof stop_counts);
  stop_counts[tok_comma] = stop_counts[tok_rparen] = 1;
  stop_counts[tok_semicolon] = stop_counts[tok_rbrace] = 1;
  cache_token_stream(cache, stop_counts);
  terminate_token_cache(cache);
}

static a_def_arg_expr_fixup *alloc_def_arg_expr_fixup(a_param_type *param)
{
  a_def_arg_expr_fixup *fixup = avail_def_arg_expr_fixups;
  if (fixup != nullptr) {
    avail_def_arg_expr_fixups = fixup->next;
  } else {
    fixup = (a_def_arg_expr_fixup *)alloc_in_region(0, sizeof(a_def_arg_expr_fixup));
  }
  *fixup = {};
  fixup->param_type = param;
  fixup->token_cache = (a_token_cache *)alloc_in_region(0, sizeof(a_token_cache));
  clear_token_cache(fixup->token_cache, false);
  return fixup;
}

void free_def_arg_expr_fixup(a_def_arg_expr_fixup *fixup)
{
  discard_token_cache(fixup->token_cache);
  fixup->next = avail_def_arg_expr_fixups;
  avail_def_arg_expr_fixups = fixup;
}

void prescan_default_function_arg_expr(a_param_type *param, a_def_arg_expr_fixup **fixups)
{
  a_def_arg_expr_fixup *fixup = alloc_def_arg_expr_fixup(param);
  prescan_default_arg_expr(fixup->token_cache, true);
  while (*fixups != nullptr)
    fixups = &(*fixups)->next;
  *fixups = fixup;
}

// Behind the first parameter with a default argument all have one; what lacks it gets an error node.
static void check_later_parameters(a_param_type *param)
{
  bool reported = false;
  for (a_param_type *later = param->next; later != nullptr; later = later->next) {
    if (later->has_default_arg) continue;
    if (!reported) pos_error(ec_default_arg_not_at_end, later->position);
    reported = true;
    later->has_default_arg = true;
    later->default_arg_expr = error_node();
  }
}

void delayed_scan_of_default_arg_expr(a_param_type *param, a_symbol *, bool check_later_params)
{
  if (param->default_arg_expr != nullptr) {
    pos_error(ec_default_arg_already_defined, param->position);
  } else {
    if (check_later_params) check_later_parameters(param);
    param->default_arg_expr = scan_default_arg_expr(param->type);
  }
  if (curr_token != tok_end_of_source) {
    pos_error(ec_unexpected_end_of_default_arg, pos_curr_token);
    while (curr_token != tok_end_of_source)
      get_token();
  }
  get_token();
}

a_def_arg_expr_fixup *copy_def_arg_expr_fixup_list(a_def_arg_expr_fixup *list)
{
  a_def_arg_expr_fixup *copy = nullptr, **link = &copy;
  for (; list != nullptr; list = list->next) {
    *link = alloc_def_arg_expr_fixup(list->param_type);
    if (list->token_cache->first != nullptr) {
      copy_tokens_from_cache(list->token_cache, 0, (unsigned)-1, true, (*link)->token_cache);
    }
    link = &(*link)->next;
  }
  return copy;
}
