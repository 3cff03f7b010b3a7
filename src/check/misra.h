// misra.h - the MISRA-C:2004 checker.
// A violation is an ordinary diagnostic whose severity is that of its rule's class.  Most rules are tested where the
// parser stands anyway; the functions that it calls for that are the rows of errors/misra_hooks.def, declared here
// as well.  check_misra_c_2004 says whether the checker is on.
#pragma once
#include "errors/error_codes.h"
#include "errors/misra_hooks.h"

#define HOOK(result, name, parameters) result name parameters;
#include "errors/misra_hooks.def"

// ---- The rules (misra_rules.cpp) ----

enum a_misra_rule_kind : unsigned char { misra_required = 1, misra_advisory = 3 };

// The code of a rule, or ec_no_error if no check knows it.  A rule with two messages gives with `with_name` the one
// that names the identifier.  Severity and kind of the rule's class are set only if there is a code.
an_error_code misra_c_2004_offset_to_error_code(int section, int subsection, an_error_severity *severity,
                                                a_misra_rule_kind *rule_kind, bool with_name);

// Changes the rules of the sections and subsections from first to last (both included) whose class is asked for:
// suppressed unless `enable`, with `is_reset` back to the state of the command line, else to the severity of the
// class.  From `pos` on, or if it is null everywhere; `from_option` makes it the state of the command line.
void misra_c_2004_set_rules(int first_section, int last_section, int first_subsection, int last_subsection,
                            const a_source_position *pos, bool from_option, bool is_reset, bool enable, bool required,
                            bool advisory);

// Applies a list of rule specifiers, and turns the checker on.  *is_bad is set if an entry can't be read; the others
// are applied all the same.
void process_check_misra(const char *text, const a_source_position *pos, bool *is_bad, bool from_option,
                         bool is_reset);

// Sets the severity of a class by its word, and that of its rules that are on.  An unknown word changes nothing.
void process_misra_severity(a_misra_rule_kind rule_kind, const char *text, const a_source_position *pos);

// ---- The table of the standard library's names (misra_identifiers.cpp) ----

struct an_ansi_c_identifier {
  const char *name;
  const char *header;        // that declares it; null for none
  unsigned char kinds;       // bits of an_ansi_c_identifier_kind
  unsigned char section;     // of the rule that bans it, 0 if none does
  unsigned char subsection;
};

// The row of a name of `length` bytes, or null.
const an_ansi_c_identifier *lookup_ansi_c_identifier(const char *name, size_t length);
// Its kinds; ansi_c_none for a name that is not in the table.
unsigned ansi_c_identifier_kind(const char *name, size_t length);

// ---- Conversions (misra_conv.cpp) ----

// A conversion of a number: between fundamental types, for an operand of `precision` value bits.
struct a_misra_conversion {
  a_constant *constant;        // null if the operand is none
  a_type *source_type;
  a_type *target_type;
  int precision;
  a_source_position position;  // of the message
  bool adapts;                 // the values are known not to be negative
  bool is_complex;             // the expression is
  bool is_argument;
  bool is_return;
  bool is_implicit;
  bool is_compound;            // part of an operation: the other operand is converted as well
};

// 1393 to 1396, 1464.
void misra_check_is_conv_valid(const a_misra_conversion *conversion);
// 1393, 1394 and 1464 for an operand that is converted to `target_type`, as argument, as a function's result, or (with
// neither) by an assignment; with `is_compound` as a part of an operation.
void misra_check_is_oper_conv_valid(an_operand *operand, bool is_complex, bool is_argument, bool is_return,
                                    bool is_compound, a_type *target_type);
// 1484 if the first type is plain char and the second the char type of numbers, 1485 if it is the other way round.
void ensure_types_both_plain_or_unplain_char(a_source_position pos, a_type *type1, a_type *type2);

// ---- Types of expressions (misra_types.cpp) ----

// The type that an expression has before promotions; *precision is the number of bits that its values take, without
// a sign bit.
a_type *fundamental_expr_type(an_expr_node *expr, int *precision);
a_type *fundamental_constant_type(a_constant *constant, int *precision);
a_type *fundamental_operand_type(an_operand *operand, int *precision);
bool is_expr_of_signed_integral_type(an_expr_node *expr);

// ---- Operands and objects (misra_expr.cpp, misra_order.cpp, misra_pointers.cpp) ----

// An operand of the operator `op` needs no parentheses: a constant, a name, something in parentheses, or `op` again.
bool is_operand_misra_primary_expr(an_expr_node *operand, an_expr_operator_kind op);
// The variable that the controlling expression of a loop tests, or null.
a_variable *find_loop_condition_variable(an_expr_node *expr);
// Whether both nodes stand for the same object.
bool oper_nodes_are_same_arg(an_expr_node *a, an_expr_node *b);
// The address of an object with automatic storage; *variable is that object, or null if it has no name.
bool is_expr_ptr_to_nonstatic(an_expr_node *expr, a_variable **variable);
bool is_operand_ptr_to_nonstatic(an_operand *operand, a_variable **variable);

// ---- Start and end ----

void misra_early_init();    // installs misra_hooks; all rules start suppressed
void misra_one_time_init(); // behind the command line, if the checker is on: makes the table of names
void misra_wrapup();        // frees it
// A unit with declarations begins; 1376 unless the mode is C90.
void misra_check_language_version();
// The end of a unit: 1475 for each structure or union of the scope that is incomplete, 1387 for each variable that one
// routine alone uses.
void misra_check_file_scope(a_scope *scope);
