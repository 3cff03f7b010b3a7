// il_to_str.h - text of types, names, constants and attributes, for messages and for the generated
// C. Everything that differs between the two stands in the control block; nothing here knows where
// text goes.
#pragma once
#include "consts/const_ints.h"
#include "il/il_enums.h"
#include "il/il_fwd.h"

// One open function declarator: lets a reference to a parameter find its parameter.
struct a_func_prototype_stack_entry {
  a_func_prototype_stack_entry *next; // the enclosing declarator
  a_type *routine_type;
  unsigned depth;
};

struct an_il_to_str_output_control_block {
  void (*output_text)(const char *text, an_il_to_str_output_control_block *block); // always set
  // For a piece that may not be split from the one before; null: output_text.
  void (*output_text_no_break)(const char *text, an_il_to_str_output_control_block *block);
  void (*form_entity_name)(const void *entity, an_il_entry_kind kind,
                           an_il_to_str_output_control_block *block);
  void (*form_qualifier)(a_type *class_type, an_il_to_str_output_control_block *block);
  // False: the string has no name, and its text is to be written.
  bool (*form_string_name)(const a_constant *string, an_il_to_str_output_control_block *block);
  void (*form_prototype)(a_type *routine_type, an_il_to_str_output_control_block *block);
  void (*form_expression)(an_expr_node *expr, bool parenthesize,
                          an_il_to_str_output_control_block *block);
  void (*form_attributes)(an_attribute *attributes, int where, bool flag,
                          an_il_to_str_output_control_block *block);
  bool (*typedef_unusable)(a_type *type, an_il_to_str_output_control_block *block);
  a_func_prototype_stack_entry *prototype_stack; // innermost first
  bool generated_code;                           // for the generated C
  bool old_style_c;                              // K&R: no void *, no unsigned suffix
  bool no_typedefs;                              // typedef names are not used
  bool skip_internal_typedefs;                   // compiler-made typedefs are not used
  bool c_forms;                                  // source-only forms are dropped
  bool in_prototype;                             // inside a parameter list
  bool tab_literal;                              // a tab in a string stands as it is
  bool no_string_split;                          // long strings stay in one piece
  bool no_small_int_casts;                       // constants of small integer kinds get no cast
  bool no_template_args;                         // names of instances print without arguments
};

void clear_il_to_str_output_control_block(an_il_to_str_output_control_block *block);
// Clears the module's tables and installs the error engine's printing hooks.
void il_to_str_init();

// Types.  The two parts stand around the declared name; qualifiers are those collected from
// outside.
void form_type(a_type *type, an_il_to_str_output_control_block *block);
void form_type_first_part(a_type *type, bool is_pointer_target, bool suppress_qualifiers_hint,
                          unsigned qualifiers, unsigned flags,
                          an_il_to_str_output_control_block *block);
void form_type_second_part(a_type *type, bool is_pointer_target, unsigned flags,
                           an_il_to_str_output_control_block *block);
void form_function_declarator(a_type *type, an_il_to_str_output_control_block *block);
void form_type_qualifier(unsigned qualifiers, bool leading_blank, bool trailing_blank,
                         an_il_to_str_output_control_block *block);
// Installed by lowering: the type that the generated C has for a pointer to member.
extern a_type *(*ptr_to_member_text_hook)(a_type *type);
const char *int_kind_name(an_integer_kind kind);
an_expr_node *decltype_arg(a_type *type);

// Names.
void form_name(const void *entity, an_il_entry_kind kind, an_il_to_str_output_control_block *block);
void form_unqualified_name(const void *entity, an_il_entry_kind kind,
                           an_il_to_str_output_control_block *block);
void form_class_or_namespace_qualifier(bool is_namespace, const void *parent,
                                       an_il_to_str_output_control_block *block);

// Constants.  in_context: inside an expression, where parentheses may be needed.
void form_constant(const a_constant *constant, bool in_context,
                   an_il_to_str_output_control_block *block);
void form_integer_constant(const a_constant *constant, bool no_cast, bool parenthesize,
                           an_il_to_str_output_control_block *block);
void form_lvalue_address_constant(const a_constant *constant, bool in_context,
                                  an_il_to_str_output_control_block *block);
void form_pm_constant(const a_constant *constant, an_il_to_str_output_control_block *block);
void form_unknown_function_constant(const a_constant *constant,
                                    an_il_to_str_output_control_block *block);
void form_typeid_reference(a_type *type, an_il_to_str_output_control_block *block);
void form_uuidof_reference(a_type *type, an_il_to_str_output_control_block *block);
// One escaped character; returns the number of characters written.
unsigned form_char(unsigned character, an_il_to_str_output_control_block *block);

void form_a_template_arg(const a_template_arg *arg, an_il_to_str_output_control_block *block);
void form_template_args(const a_template_arg *args, an_il_to_str_output_control_block *block);

// Parameters of open prototypes.
void push_function_prototype(a_type *routine_type, a_func_prototype_stack_entry *entry,
                             an_il_to_str_output_control_block *block);
void pop_function_prototype(an_il_to_str_output_control_block *block);
a_param_type *get_param_for_param_ref(const an_expr_node *expr,
                                      an_il_to_str_output_control_block *block);
void form_param_ref(const an_expr_node *expr, an_il_to_str_output_control_block *block);

extern const char *const builtin_operation_names[bok_last + 1];
// The first name of a register's code (registers.def).
const char *register_name(int code);
inline constexpr int register_code_of_flags = 50;

// Assembler names and attributes; the attribute routines tell whether anything was written.
void form_asm_name(const char *name, an_il_to_str_output_control_block *block);
void form_var_reg_name(int register_number, an_il_to_str_output_control_block *block);
bool form_label_attributes(const a_label *label, an_il_to_str_output_control_block *block);
bool form_field_attributes(const a_field *field, an_il_to_str_output_control_block *block);
bool form_type_attributes(a_type *type, an_il_to_str_output_control_block *block);
bool form_routine_attributes(const a_routine *routine, an_il_to_str_output_control_block *block);
bool form_variable_attributes(const a_variable *variable, an_il_to_str_output_control_block *block);
