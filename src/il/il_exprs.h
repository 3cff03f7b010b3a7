// il_exprs.h - records of the executable side of the IL: constants, expressions, statements,
// dynamic initializations, object lifetimes.  Included through il_entities.h. The member that a
// kind selects is read through the accessors below, which check the kind; only they, the allocator
// and the field table name `variant`.
#pragma once
#include <cstdint>

#include "consts/const_ints.h"
#include "consts/float_pt.h"
#include "il/il_corresp.h"
#include "mem/check.h"

// --- Constants -----------------------------------------------------------------------------------

struct a_constant_string {
  uint64_t length;                     // in bytes, with the terminating null character
  const char *text;                    // iek_string_text; null-terminated within length
  uint32_t string_literal_number;      // non-zero: has an address of its own in this function
};

struct a_constant_address {
  an_address_constant_kind kind;       // says what entity is
  void *entity;                        // routine, variable, constant, type (2 forms), label
  int64_t offset;
};

struct a_constant_ptr_to_member {
  a_base_class *base_class;            // cast steps to a base or derived class
  a_name_reference *name_reference;
  bool is_member_function : 1;         // says what member is
  bool cast_to_base : 1;               // base_class is the class that the constant was cast to
  bool name_is_written : 1;
  void *member;                        // a_routine or a_field; null is the null pointer to member
};

struct a_constant_address_difference {
  a_constant *minuend;
  a_constant *subtrahend;
};

struct a_constant_aggregate {
  a_constant *first_element;
  a_constant *last_element;
  bool has_designators : 1;            // the list holds ck_designator entries
  bool has_own_braces : 1;             // stood between its own braces in the source
  bool is_vector : 1;                  // a value of an OpenCL vector type
};

struct a_constant_init_repeat {
  a_constant *repeated;
  uint64_t count;
  bool from_range_designator : 1;      // GNU: [a ... b]
};

struct a_constant_template_param {
  a_template_param_constant_kind kind; // says how the words are used
  bool is_pack : 1;
  bool operand_is_type : 1;            // sizeof and its kin: `type` holds, else `expr`
  bool operand_is_template_arg : 1;
  int position;                        // tpck_param
  int level;
  union {
    an_expr_node *expr;                // tpck_expression; sizeof and its kin
    a_constant *constant;              // cast, address of constant, unknown function with arguments
    a_type *type;                      // address of unknown function; sizeof and its kin
  };
  a_template_arg *template_args;       // tpck_unknown_function_with_args
};

struct a_constant_designator {
  a_field *field;                      // null: index holds
  uint64_t index;
};

// The two values of a complex constant; an entry of its own (iek_complex_value).
struct a_complex_value {
  simul_fval real;
  simul_fval imag;
};

struct a_constant {
  a_source_correspondence source_corresp;
  a_constant *next;                    // scope's list, aggregate's elements, shared ones
  a_type *type;                        // null for some internal constants
  an_expr_node *expr;                  // the expression that was folded
  const char *source_text;             // spelling kept for output
  uint32_t source_text_length;
  a_constant_kind kind;
  a_char_kind char_kind;               // of a string or character constant
  bool value_is_punned : 1;            // an integer of pointer type, or an address of integer type
  bool from_reinterpret_cast : 1;      // such a pointer to member; isn't converted further
  bool unsigned_op_result : 1;         // of a bitwise or unsigned operation (K&R negation)
  bool not_integral_constant_expr : 1; // not one in the standard's sense
  bool show_cast : 1;                  // an explicit cast stood in the source
  bool show_implicit_cast : 1;
  bool is_enumerator_use : 1;          // kept by comparison
  bool is_gnu_null : 1;                // prints as __null
  bool is_nullptr : 1;                 // prints as nullptr
  bool from_character_constant : 1;    // written as 'x'
  bool is_true_false_keyword : 1;
  bool literal_is_unsuffixed_decimal : 1;
  bool from_literal : 1;               // the scanner made it of a literal
  bool is_nondecimal_literal : 1;      // octal, hex, binary, or moved to a wider kind by K&R rules
  bool is_literal_zero : 1;            // the spelling is the single character 0
  bool has_unsigned_suffix : 1;
  bool from_pp_identifier : 1;         // a name in #if that is no macro
  bool is_referenced_enumerator : 1;
  bool is_string_from_concatenation : 1;
  bool needs_variable : 1;             // lowering gives the value a variable
  union {
    an_integer_value integer;
    a_constant_string string;
    simul_fval floating;               // ck_float, ck_imaginary
    a_complex_value *complex_value;
    a_constant_address address;
    a_constant_ptr_to_member ptr_to_member;
    a_constant_address_difference address_difference;
    a_dynamic_init *dynamic_init;
    a_constant_aggregate aggregate;
    a_constant_init_repeat init_repeat;
    a_constant_template_param template_param;
    a_constant_designator designator;
  } variant;
};

// Defines NAME(record): the member of the variant that the kind test admits, by reference.
#define IL_ACCESSOR(name, record, member, condition)                                               \
  inline auto &name(record *entry)                                                                 \
  {                                                                                                \
    check(condition);                                                                              \
    return entry->variant.member;                                                                  \
  }                                                                                                \
  inline const auto &name(const record *entry)                                                     \
  {                                                                                                \
    check(condition);                                                                              \
    return entry->variant.member;                                                                  \
  }

IL_ACCESSOR(integer_of, a_constant, integer, entry->kind == ck_integer)
IL_ACCESSOR(string_of, a_constant, string, entry->kind == ck_string)
IL_ACCESSOR(float_of, a_constant, floating, entry->kind == ck_float || entry->kind == ck_imaginary)
IL_ACCESSOR(complex_of, a_constant, complex_value, entry->kind == ck_complex)
IL_ACCESSOR(address_of, a_constant, address, entry->kind == ck_address)
IL_ACCESSOR(ptr_to_member_of, a_constant, ptr_to_member, entry->kind == ck_ptr_to_member)
IL_ACCESSOR(address_difference_of, a_constant, address_difference,
            entry->kind == ck_address_difference)
IL_ACCESSOR(dynamic_init_of, a_constant, dynamic_init, entry->kind == ck_dynamic_init)
IL_ACCESSOR(aggregate_of, a_constant, aggregate, entry->kind == ck_aggregate)
IL_ACCESSOR(init_repeat_of, a_constant, init_repeat, entry->kind == ck_init_repeat)
IL_ACCESSOR(template_param_of, a_constant, template_param, entry->kind == ck_template_param)
IL_ACCESSOR(designator_of, a_constant, designator, entry->kind == ck_designator)

// --- Expressions ---------------------------------------------------------------------------------

struct an_expr_operation {
  an_expr_operator_kind op;
  a_type_kind operand_kind;            // result of binary_operation_type_kind
  bool is_lvalue_valued : 1;
  bool is_implicit_cast : 1;
  bool is_virtual_call : 1;
  bool is_saturating : 1;              // vector conversions
  bool rounds : 1;
  an_expr_node *first_operand;         // linked through next
};

struct an_expr_operand_pair {          // enk_lambda
  a_lambda *lambda;
  a_dynamic_init *dynamic_init;
};

struct an_expr_lifetime_wrapper {
  an_expr_node *expr;
  an_object_lifetime *object_lifetime;
};

struct an_expr_typeid {
  a_type *type;                        // or null
  an_expr_node *expr;
};

struct an_expr_sizeof {                // enk_sizeof, enk_sizeof_pack
  bool is_type;
  bool is_template;                    // enk_sizeof_pack
  union {
    a_type *type;
    an_expr_node *expr;
    a_template *pack_template;
  };
};

struct an_expr_eh_construct {
  a_lowered_eh_kind kind;
  int number;                          // of the exception table
  union {
    a_handler *handler;                // caught object, catch epilogue
    void *routine_ref;                 // function prologue: an iek_lowered_eh_routine_ref
    a_routine *routine;                // function epilogue
    a_try_supplement *try_supplement;  // try epilogue
    an_expr_node *operands;            // internal try: two expressions through next
  };
};

// Entry iek_lowered_eh_routine_ref.
struct a_lowered_eh_routine_ref {
  a_routine *routine;
};

struct an_expr_builtin_operation {
  a_builtin_operation_kind op;
  an_expr_node *first_argument;        // through next
};

struct an_expr_param_ref {
  int position;                        // 0 means `this`
  int levels_up;
};

struct an_expr_node {
  a_type *type;
  an_expr_node *next;                  // next operand of a list
  an_expr_node_kind kind;
  bool is_lvalue : 1;
  bool result_not_used : 1;
  bool is_lowered : 1;                 // written form made by lowering, not by the source
  bool is_parenthesized : 1;
  bool in_reuse : 1;
  bool is_discarded_lvalue : 1;        // an lvalue whose value is not wanted
  bool is_pack_expansion : 1;
  bool is_compound_literal : 1;        // enk_temp_init from a compound literal
  bool tested_as_bool : 1;
  bool is_address_context : 1;
  uint32_t call_site;                  // number of the call in the exception table; 0 none
  union {
    an_expr_operation operation;
    a_constant *constant;
    a_variable *variable;              // enk_variable, enk_variable_marker
    a_field *field;
    a_dynamic_init *dynamic_init;      // enk_temp_init, enk_temp_ref
    a_new_delete_supplement *new_delete;
    an_expr_operand_pair lambda;
    a_throw_supplement *throw_info;    // null rethrows
    a_condition_supplement *condition;
    an_expr_lifetime_wrapper wrapper;
    an_expr_typeid type_id;
    an_expr_sizeof size_of;
    a_statement *statement;
    an_expr_eh_construct eh_construct;
    an_expr_node *wrapper_call_args;
    a_routine *routine;
    a_type *type_operand;
    an_expr_builtin_operation builtin_operation;
    an_expr_param_ref param_ref;
  } variant;
  a_source_range expr_range;           // from first to last token
  a_source_position operator_position;
  a_name_reference *name_reference;    // written form of the name, where recorded
  void *rescan_info;                   // an_expr_rescan_info_entry of the parser; no IL pointer
};

IL_ACCESSOR(operation_of, an_expr_node, operation, entry->kind == enk_operation)
IL_ACCESSOR(constant_of, an_expr_node, constant, entry->kind == enk_constant)
IL_ACCESSOR(variable_of, an_expr_node, variable,
            entry->kind == enk_variable || entry->kind == enk_variable_marker)
IL_ACCESSOR(field_of, an_expr_node, field, entry->kind == enk_field)
IL_ACCESSOR(dynamic_init_of, an_expr_node, dynamic_init,
            entry->kind == enk_temp_init || entry->kind == enk_temp_ref)
IL_ACCESSOR(new_delete_of, an_expr_node, new_delete, entry->kind == enk_new_delete)
IL_ACCESSOR(lambda_of, an_expr_node, lambda, entry->kind == enk_lambda)
IL_ACCESSOR(throw_of, an_expr_node, throw_info, entry->kind == enk_throw)
IL_ACCESSOR(condition_of, an_expr_node, condition, entry->kind == enk_condition)
IL_ACCESSOR(lifetime_wrapper_of, an_expr_node, wrapper, entry->kind == enk_lifetime_wrapper)
IL_ACCESSOR(typeid_of, an_expr_node, type_id, entry->kind == enk_typeid)
IL_ACCESSOR(sizeof_of, an_expr_node, size_of,
            entry->kind == enk_sizeof || entry->kind == enk_sizeof_pack)
IL_ACCESSOR(statement_of, an_expr_node, statement, entry->kind == enk_statement_expr)
IL_ACCESSOR(eh_construct_of, an_expr_node, eh_construct, entry->kind == enk_lowered_eh_construct)
IL_ACCESSOR(wrapper_call_args_of, an_expr_node, wrapper_call_args, entry->kind == enk_wrapper_call)
IL_ACCESSOR(routine_of, an_expr_node, routine, entry->kind == enk_routine)
IL_ACCESSOR(type_operand_of, an_expr_node, type_operand, entry->kind == enk_type_operand)
IL_ACCESSOR(builtin_operation_of, an_expr_node, builtin_operation,
            entry->kind == enk_builtin_operation)
IL_ACCESSOR(param_ref_of, an_expr_node, param_ref, entry->kind == enk_param_ref)

inline bool is_operation(const an_expr_node *expr, an_expr_operator_kind op)
{
  return expr->kind == enk_operation && expr->variant.operation.op == op;
}
inline an_expr_operator_kind op_of(const an_expr_node *expr)
{
  return operation_of(expr).op;
}
inline an_expr_node *&first_operand_of(an_expr_node *expr)
{
  return operation_of(expr).first_operand;
}
inline an_expr_node *first_operand_of(const an_expr_node *expr)
{
  return operation_of(expr).first_operand;
}
inline an_expr_node *second_operand_of(const an_expr_node *expr)
{
  return operation_of(expr).first_operand->next;
}
inline an_expr_node *third_operand_of(const an_expr_node *expr)
{
  return operation_of(expr).first_operand->next->next;
}

struct a_new_delete_supplement {
  bool is_new : 1;
  bool is_array : 1;
  bool is_global : 1;                  // written with ::
  bool is_placement : 1;
  bool has_paren_init : 1;
  bool has_array_cookie : 1;
  a_type *type;
  a_routine *routine;                  // allocation or deallocation function
  an_expr_node *first_arg;
  a_dynamic_init *init;
  a_dynamic_init *cleanup_init;
};

struct a_throw_supplement {
  a_type *type;
  a_dynamic_init *dynamic_init;
  an_expr_node *expr;
  a_routine *routine;
};

struct a_condition_supplement {
  a_scope *scope;
  a_dynamic_init *dynamic_init;
  an_expr_node *expr;
};

// --- Statements ----------------------------------------------------------------------------------

struct a_statement_branches {          // stmk_if
  a_statement *then_statement;
  a_statement *else_statement;
};

struct a_statement_label_ref {         // stmk_goto, stmk_label
  a_label *label;
  an_object_lifetime *object_lifetime;
};

struct a_statement_block {
  a_statement *first_statement;
  a_block_supplement *supplement;
};

struct a_statement_loop {              // stmk_while, stmk_do, stmk_for, stmk_switch
  a_statement *body;
  union {
    a_for_supplement *for_supplement;
    a_switch_supplement *switch_supplement;
  };
};

struct a_statement_decl {              // stmk_type_or_var_decl
  bool is_type;
  union {
    a_type *type;
    a_variable *variable;
  };
};

struct a_statement {
  a_source_position start_position;
  a_source_position end_position;
  a_source_position else_position;     // stmk_if
  a_statement *next;
  an_attribute *attributes;
  a_pragma *pragmas;                   // pragmas that stand in front of the statement
  a_statement_kind kind;
  bool is_compiler_generated : 1;      // kept by copy_statement
  bool has_associated_pragma : 1;
  bool is_unreachable : 1;
  bool is_initialization_code : 1;     // makes the initialization of a variable explicit
  bool follows_exec_statement : 1;     // stmk_init behind an executable statement
  bool is_fallthrough : 1;
  a_statement *pre_statement;          // GNU: what the controlling expression hoists
  an_expr_node *expr;
  union {
    a_statement_branches branches;
    a_statement_label_ref label;
    a_dynamic_init *dynamic_init;      // stmk_return of a class result, stmk_init
    a_statement_block block;
    a_statement_loop loop;
    a_switch_case_entry *case_entry;
    an_asm_entry *asm_entry;
    a_try_supplement *try_supplement;
    an_il_entity_list_entry *entities;
    a_vla_dimension *vla_dimension;
    a_statement_decl decl;
  } variant;
};

IL_ACCESSOR(then_statement_of, a_statement, branches.then_statement, entry->kind == stmk_if)
IL_ACCESSOR(else_statement_of, a_statement, branches.else_statement, entry->kind == stmk_if)
IL_ACCESSOR(label_of, a_statement, label.label,
            entry->kind == stmk_goto || entry->kind == stmk_label)
IL_ACCESSOR(label_lifetime_of, a_statement, label.object_lifetime,
            entry->kind == stmk_goto || entry->kind == stmk_label)
IL_ACCESSOR(dynamic_init_of, a_statement, dynamic_init,
            entry->kind == stmk_return || entry->kind == stmk_init)
IL_ACCESSOR(first_statement_of, a_statement, block.first_statement, entry->kind == stmk_block)
IL_ACCESSOR(block_supplement_of, a_statement, block.supplement, entry->kind == stmk_block)
IL_ACCESSOR(body_of, a_statement, loop.body,
            entry->kind == stmk_while || entry->kind == stmk_do || entry->kind == stmk_for ||
                entry->kind == stmk_switch)
IL_ACCESSOR(for_supplement_of, a_statement, loop.for_supplement, entry->kind == stmk_for)
IL_ACCESSOR(switch_supplement_of, a_statement, loop.switch_supplement, entry->kind == stmk_switch)
IL_ACCESSOR(case_entry_of, a_statement, case_entry, entry->kind == stmk_case)
IL_ACCESSOR(asm_entry_of, a_statement, asm_entry, entry->kind == stmk_asm)
IL_ACCESSOR(try_supplement_of, a_statement, try_supplement, entry->kind == stmk_try)
IL_ACCESSOR(entities_of, a_statement, entities, entry->kind == stmk_decl_entities)
IL_ACCESSOR(vla_dimension_of, a_statement, vla_dimension, entry->kind == stmk_vla_decl)
IL_ACCESSOR(decl_of, a_statement, decl,
            entry->kind == stmk_type_or_var_decl || entry->kind == stmk_vla_dealloc)

struct a_block_supplement {
  a_source_position end_position;
  a_scope *scope;
  an_object_lifetime *object_lifetime;
  bool end_is_reachable : 1;           // set at allocation
  bool is_statement_expr_block : 1;
  bool is_compiler_generated : 1;
};

struct a_for_supplement {
  a_statement *init_statement;
  an_expr_node *increment_expr;
  a_scope *scope;
  a_statement *pre_increment_statement;  // GNU
  a_statement *pre_test_statement;       // GNU
};

struct a_switch_case_entry {
  a_statement *statement;
  a_constant *low_value;               // null: default
  a_constant *high_value;              // GNU case range, else null
  a_switch_case_entry *next;
  a_switch_case_entry *next_in_value_order;
  a_source_position position;
  a_source_position range_position;
  bool is_reachable : 1;               // set at allocation
};

struct a_switch_supplement {
  a_switch_case_entry *first_case;
  a_switch_case_entry *default_case;
  a_switch_case_entry *last_case;
};

struct a_try_supplement {
  bool is_function_try_block;
  a_statement *try_block;
  a_handler *handlers;
  an_object_lifetime *object_lifetime;
};

struct a_handler {
  a_handler *next;
  a_source_position position;
  a_variable *parameter;               // null for ...
  a_statement *body;
  a_dynamic_init *param_init;
  a_variable *catch_var;
};

// --- Assembler -----------------------------------------------------------------------------------

struct an_asm_operand {
  an_asm_operand *next;
  const char *name;                    // symbolic name, or null
  a_constant *constraint;              // the string as written
  an_expr_node *expr;
  bool is_output : 1;
  bool is_read_write : 1;
  a_source_position position;
};

struct a_named_register_list {
  a_named_register_list *next;
  unsigned char register_number;       // code of registers.def
};

struct an_asm_entry {
  a_source_correspondence source_corresp;
  an_asm_entry *next;                  // file scope: the scope's list
  a_constant *asm_string;
  an_asm_operand *operands;            // outputs first
  a_named_register_list *clobbers;
  bool is_volatile : 1;
  bool is_simple : 1;                  // a string alone
  bool clobbers_memory : 1;
};

// --- Dynamic initialization and lifetimes --------------------------------------------------------

struct a_dynamic_init_constructor {    // dik_constructor
  a_routine *routine;                  // null: trivial, arguments are still evaluated
  an_expr_node *first_arg;
  bool is_copy_of_source : 1;          // copies the object that the context supplies
  bool is_throw_copy : 1;
  bool zero_first : 1;                 // value initialization: the object is zeroed before
  bool is_explicit : 1;
};

struct a_dynamic_init {
  a_dynamic_init *next;                // scope's dynamic_inits
  a_variable *variable;                // the object, when it has a name or a temporary
  a_routine *destructor;               // null when nothing is to be destroyed
  an_object_lifetime *destruction_lifetime;  // on whose list the destruction stands
  a_dynamic_init *next_destruction;
  an_object_lifetime *init_lifetime;
  a_dynamic_init_kind kind;
  bool has_destructor : 1;
  bool lifetime_set : 1;
  bool is_static_storage : 1;
  bool is_temporary : 1;
  bool is_compound_literal : 1;
  bool is_new_cleanup : 1;             // frees the memory of a failed new
  bool destruction_needs_flag : 1;
  bool is_conditional : 1;             // evaluated under a condition
  bool long_lived_temp : 1;
  bool exceptions_only : 1;
  bool destroyed_elsewhere : 1;
  bool is_comma_form : 1;
  bool uses_default_arg : 1;
  bool needs_zero_fill : 1;            // aggregate covers only part of the object
  bool is_reused : 1;
  bool is_return_value : 1;
  bool is_guard_abort : 1;
  bool is_parameter_init : 1;
  bool is_ctor_init : 1;
  union {
    a_constant *constant;              // dik_constant, dik_constant_via_temp
    an_expr_node *expr;                // dik_expression, dik_call_returning_class
    a_dynamic_init_constructor constructor;
  } variant;
  an_object_lifetime *object_lifetime; // lifetime of the initializer's temporaries
  a_dynamic_init *previous_destruction_init;
  void *destructible_entity_descr;     // lowering's record while it runs
  uint32_t cleanup_entry_number;
  uint32_t instantiation_number;
  a_source_position position;
};

IL_ACCESSOR(constant_of, a_dynamic_init, constant,
            entry->kind == dik_constant || entry->kind == dik_constant_via_temp)
IL_ACCESSOR(expr_of, a_dynamic_init, expr,
            entry->kind == dik_expression || entry->kind == dik_call_returning_class)
IL_ACCESSOR(constructor_of, a_dynamic_init, constructor, entry->kind == dik_constructor)

struct a_local_static_variable_init {
  a_local_static_variable_init *next;
  a_variable *variable;
  an_init_kind init_kind;              // initk_static or initk_dynamic
  union {
    a_constant *constant;
    a_dynamic_init *dynamic_init;
  } initializer;
  an_object_lifetime *object_lifetime;
};

struct a_vla_dimension {
  a_vla_dimension *next;
  a_type *type;                        // the array; null for an entry that only fixes up another
  an_expr_node *expr;                  // the size
  a_vla_dimension *same_dimension;     // found in place of this one
  bool is_parameter_dimension;
  a_source_position position;
  a_variable *variable;                // temporary with the evaluated size
};

// A member or base initializer of a constructor.
struct a_constructor_init {
  a_constructor_init *next;
  a_constructor_init_kind kind;
  union {
    a_base_class *base_class;
    a_field *field;
  } entity;
  a_dynamic_init *dynamic_init;
  an_expr_node *delegate_expr;
  a_source_position position;
  bool is_compiler_generated : 1;
};

struct an_object_lifetime {
  an_object_lifetime_kind kind;
  bool has_expression_child : 1;       // a child of kind olk_expression exists
  bool must_remain : 1;                // a function's lifetime that may not be recycled
  bool is_unbound : 1;
  an_il_entry_kind owner_kind;         // says what owner is
  void *owner;
  a_dynamic_init *destructions;
  an_object_lifetime *parent;
  a_dynamic_init *first_destruction_when_leaving;
  an_object_lifetime *first_child;
  an_object_lifetime *next_sibling;
};
