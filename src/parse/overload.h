// overload.h - which function a call, an operator, a conversion or a copy names.
// Owns:    the free lists of candidates and argument summaries (overload.cpp).
// Rule:    every list that a function of this module hands out goes back to its free list; nothing
//          survives a selection.
// Entry:   select_overloaded_function, check_for_operator_overloading, user_defined_conversion_possible,
//          prep_reference_initializer_operand.
// See:     C++98 13.3.
#pragma once
#include "errors/error.h"
#include "il/il_fwd.h"
#include "il/types.h"
#include "lex/source_position.h"
#include "parse/exprutil.h"
#include "parse/symbol_tbl.h"

// The rank of one argument against one parameter; lower is better.
enum an_arg_match_level : unsigned char {
  aml_exact,      // identity, qualification, decay
  aml_promotion,  // integral or floating promotion
  aml_standard,   // any other standard conversion
  aml_unused,
  aml_user,       // user-defined conversion
  aml_ellipsis,   // the argument goes to the ...
  aml_error,      // one side has the error type, or a pack ran out: matches all, beats none
  aml_no_match
};

// How an operand converts through a user-defined conversion, or why it doesn't.  Copied by value.
struct a_conv_descr {
  a_routine *routine;           // constructor or conversion function, else null
  a_symbol *symbol;             // through which it was found
  bool is_trivial_copy : 1;     // a copy of the class or to a base, with no function to call
  bool result_is_lvalue : 1;
  bool is_ambiguous : 1;        // more than one conversion applied
  bool class_adjustment_needed : 1;
  bool for_direct_reference_binding : 1;
  bool copy_like_constructor : 1;  // chosen for a source of the class or one derived from it
  bool is_dependent : 1;
  a_std_conv_descr std_conv;    // from the function's result to the target
};
void clear_conv_descr(a_conv_descr *conv);

// One argument of one candidate; the implicit object, when there is one, comes first.
struct an_arg_match_summary {
  an_arg_match_summary *next;
  an_arg_match_level level;
  bool rvalue_ref_to_lvalue : 1;
  bool anachronism : 1;
  bool nonconst_call_anachronism : 1;
  bool is_this_param : 1;
  bool arg_is_constant : 1;
  bool needs_rvalue : 1;
  bool pm_object_source : 1;
  uint32_t param_number;
  a_type *param_type;           // for the object the type of `this`
  a_conv_descr conv;            // std_conv also for levels up to aml_standard
  a_symbol *selected_function;  // the function that the argument names or points to
};

struct a_candidate_function {
  a_candidate_function *next;
  a_symbol *symbol;             // null: built-in or surrogate
  a_symbol *overload_symbol;    // the entry of the set that it came from
  bool is_template : 1;
  bool has_explicit_args : 1;
  bool is_conversion_candidate : 1;
  bool viable : 1;              // not yet beaten
  bool best_for_some_arg : 1;
  bool best_for_this_arg : 1;
  a_template_arg *template_args;
  const char *builtin_signature;  // letters, up to ';' or the end
  a_symbol *surrogate_conversion;
  a_conv_descr conv;            // of a conversion candidate
  a_type *concrete_type;        // of a `=` built-in candidate
  an_arg_match_summary *arg_summaries;
  an_arg_match_summary *current_arg;
  a_candidate_function *next_best;
};

struct an_arg_operand {
  an_arg_operand *next;
  an_operand operand;
};
an_arg_operand *alloc_arg_operand(const an_operand *operand);
void free_arg_operand_list(an_arg_operand *list);

a_candidate_function *alloc_candidate_function();
// Gives back the candidates, their summaries and their template arguments.
void free_candidate_function_list(a_candidate_function *list);
an_arg_match_summary *alloc_arg_match_summary();
void free_arg_match_summary_list(an_arg_match_summary *list);

// The candidates that are left: one, or those that tie.  All others are freed.
struct a_selection {
  a_candidate_function *candidates;
  bool is_undetermined;  // an argument in error: no function, and no message either
  bool is_ambiguous;
};
// Takes over `list`.
a_selection select_best_candidate(a_candidate_function *list);

// What a call looks for.
struct an_overload_request {
  a_symbol *symbol;              // function, overload set or template; null for a class object's call
  bool has_explicit_args;
  a_template_arg *explicit_args;
  an_operand *object;            // selected object or the object called; null if none
  an_arg_operand *args;
  bool is_undeclared;            // only the arguments' classes and namespaces can bring a function
  bool is_constructor_call;      // ranked even when there is but one, since conversions are noted
  bool adl_allowed;
  bool no_explicit_constructors; // copy-initialization
  an_error_code error_code;      // nothing fits
  an_error_code ambiguity_code;
  a_source_position position;
};
struct an_overload_result {
  a_symbol *symbol;              // null: none, reported
  an_arg_match_summary *summaries;  // the caller gives them back; null when nothing was ranked
  a_symbol *surrogate_conversion;
  bool not_found;                // an undeclared name: the caller reports it
  bool was_single_function;      // taken without ranking: the plain call messages apply
  bool is_dependent;
  bool explicit_constructor_skipped;
};
// Chooses the function of a call.  Reports error_code, ambiguity_code and the kinds of failure that
// have messages of their own, with the argument types and candidates.
void select_overloaded_function(const an_overload_request *request, an_overload_result *result);

// The rank of an argument; `actual_type` stands for the operand where that is null.
void determine_arg_match_level(an_operand *operand, a_type *actual_type, a_type *param_type,
                               a_param_type *param, bool may_use_user_conversion, bool is_copy_like,
                               an_arg_match_summary *summary);
// The same for the implicit object: `object_type` is the class of the object with its qualifiers.
void selector_match_with_this_param(an_operand *object, a_type *object_type, a_routine *routine,
                                    an_arg_match_summary *summary);
// Converts an argument as its summary says.
void convert_argument_by_summary(an_operand *operand, a_param_type *param,
                                 an_arg_match_summary *summary);
// The warning that goes with a chosen match.
void issue_warning_from_arg_match_summary(an_arg_match_summary *summary, a_source_position position);

// Operators.  True when the operator was handled: then *result is set.  On false the operands may
// have been converted to built-in types, for the ordinary code to go on with.
struct an_operator_request {
  unsigned opname_kind;
  bool is_unary;
  bool no_builtin;          // members only, no built-in candidates
  bool consider_builtin;
  bool quiet;               // without a candidate the operator counts as not handled, silently
  a_source_position position;
};
bool check_for_operator_overloading(const an_operator_request *request, an_operand *left,
                                    an_operand *right, an_operand *result);

// The operator of a token on operands that were scanned; `right` is null for a prefix operator.
// True: *result is set.  False: the ordinary code goes on, with operands that may have been converted.
bool do_overloaded_operator(unsigned token, a_source_position *pos, an_operand *left,
                            an_operand *right, an_operand *result);
// The same by name, for [], () and postfix ++.
bool do_overloaded_operator_by_name(unsigned opname_kind, a_source_position *pos, an_operand *left,
                                    an_operand *right, an_operand *result);

// User-defined conversions.  The tests are silent; `candidates`, where asked for, receives the tying
// candidates of an ambiguity, which the caller lists and frees.
enum : unsigned {
  ucf_explicit_ok = 1,          // explicit constructors and conversion functions may serve
  ucf_lvalue_only = 2,          // the result must be an lvalue
  ucf_direct_binding = 4,       // for direct binding of a reference
  ucf_derived_result_ok = 8,
  ucf_no_conversion_functions = 16
};
bool conversion_from_class_possible(an_operand *operand, a_type *source_type, a_type *target,
                                    unsigned flags, a_conv_descr *conv,
                                    a_candidate_function **candidates);
bool conversion_to_class_possible(an_operand *operand, a_type *source_type, a_type *target,
                                  unsigned flags, a_conv_descr *conv,
                                  a_candidate_function **candidates);
// Reports when there is none, or several, and makes the operand an error then.
bool user_defined_conversion_possible(an_operand *operand, a_type *target, bool is_direct,
                                      a_conv_descr *conv, a_source_position *position);
// Masks of result categories for try_to_convert_class_operand_to_builtin_type.
enum : unsigned {
  cvm_integral = 1, cvm_floating = 2, cvm_pointer = 4, cvm_object_pointer = 8,
  cvm_function_pointer = 16, cvm_member_pointer = 32, cvm_bool = 64, cvm_enum = 128,
  cvm_ptrdiff = 256
};
// A class operand where a built-in type is needed: converts it by its one conversion function that
// fits the mask.  False, with a message, when there is none or several.
bool try_to_convert_class_operand_to_builtin_type(an_operand *operand, unsigned mask,
                                                  an_error_code code);
// Performs a conversion that was found; the operand becomes an lvalue or rvalue of the target.
void user_convert_operand(an_operand *operand, a_type *target, a_conv_descr *conv, bool is_implicit);
bool conditional_operator_conversion_possible(an_operand *from, an_operand *to, a_conv_descr *conv,
                                              bool *is_ambiguous);

// References.
enum : unsigned {
  rif_lives_on = 1,        // a temporary bound to it lasts with it
  rif_return = 2,
  rif_copy_assignment = 32,
  rif_move_candidate = 64,
  rif_static = 512
};
struct a_reference_binding {
  bool is_direct;               // an lvalue of the type or of a class derived from it
  bool temporary_allowed;       // const, or an rvalue reference
  bool const_volatile_blocks;   // would be allowed but for volatile
  bool qualifiers_lost;
  a_base_class *base_class;     // the step to a base class
};
void direct_reference_binding_possible(an_operand *operand, a_type *source_type, bool is_lvalue,
                                       a_type *reference_type, a_reference_binding *binding);
// Makes the operand what the reference is initialized with: its address, unless keep_object.
void prep_reference_initializer_operand(an_operand *operand, a_type *reference_type,
                                        a_conv_descr *conv, bool keep_object, unsigned flags,
                                        an_error_code code, a_source_position *position);

// Initializes a temporary of `type` from the operand, which becomes its lvalue.
void temp_init_from_operand(an_operand *operand, a_type *type, bool is_static);

// The function of the set that fits `target_type` (function, pointer, reference or pointer to member).
// Null when none fits or, with *is_ambiguous, when several do.
a_symbol *find_addr_of_overloaded_function_match(a_symbol *symbol, bool has_explicit_args,
                                                 a_template_arg *args, bool is_address_of,
                                                 a_type *target_type, bool is_static_cast,
                                                 bool *is_ambiguous, an_arg_match_level *level,
                                                 a_std_conv_descr *std_conv);
// Makes an indefinite function operand name `function`.
void overloaded_function_catch_up(an_operand *operand, a_symbol *function);

// Special members.  Null when there is none; *no_copy_needed for a copy without a function.
a_symbol *select_overloaded_copy_constructor(a_type *class_type, unsigned qualifiers, bool is_rvalue,
                                             a_source_position *position, bool *is_ambiguous,
                                             bool *is_anachronistic, bool *no_copy_needed);
a_symbol *select_overloaded_default_constructor(a_type *class_type, a_source_position *position,
                                                bool *is_ambiguous);
a_symbol *select_assignment_operator_for_memberwise_copy(a_type *class_type, unsigned qualifiers,
                                                         a_source_position *position);

// Notes of a message that is open: the candidates, and the types of the arguments.
void list_candidates(a_candidate_function *list);
void list_argument_types(an_arg_operand *args, an_operand *object);

void overload_init();
