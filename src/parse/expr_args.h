// expr_args.h - the state of one call's argument walk.
#pragma once
#include "il/il_fwd.h"
#include "lex/source_position.h"

enum a_format_kind : unsigned char { fmk_none, fmk_printf, fmk_scanf };

struct an_arg_check_block {
  a_routine *routine; // null: called through a pointer
  bool is_error_call;
  bool params_known; // prototyped, or the parameters of an old-style definition are listed
  a_param_type *next_param;
  bool prototyped;
  bool has_ellipsis;
  a_format_kind format_kind;
  int min_arg_count; // -1: the parameter list says it
  int arg_count;
  an_expr_node *result_list;
  an_expr_node *result_tail;
  int format_arg_number; // from 1; 0: the last argument before the ellipsis
  int first_checked_arg; // number of the first argument that the format describes
  int sentinel_position; // -1: none
  an_expr_node *first_format_arg;
  an_expr_node *format_arg;
  a_source_position call_position;
  bool parameters_given_up; // too many arguments: they are no longer compared
};

void start_call_argument_processing(a_type *routine_type, a_routine *routine,
                                    an_arg_check_block *block);
// The object pointer of a member function (nothing for a static one) is the first argument.
void add_object_argument(a_type *routine_type, struct an_operand *selector,
                         an_arg_check_block *block);
// Converts one argument and appends its node.
void process_call_argument(struct an_operand *argument, an_arg_check_block *block);
// The same for an argument that was converted to its parameter already.
void process_converted_argument(struct an_operand *argument, an_arg_check_block *block);
// C++: arguments of a function that was ranked; each follows its summary.
struct an_arg_operand;
struct an_arg_match_summary;
void process_ranked_arguments(an_arg_operand *args, an_arg_match_summary *summary,
                              an_arg_check_block *block);
// Messages that need all arguments: too few, format, sentinel.
void finish_call_argument_processing(an_arg_check_block *block, a_source_position *close_pos);
