// il.h - construction of constants, expressions, statements, dynamic initializations and lifetimes.
// Rule:    no builder fails or reports; error_node and the error constant are the error values.
// Entry:   alloc_shareable_constant, make_operator_node, add_cast, var_rvalue_expr, make_variable,
//          ...
#pragma once
#include "il/il_alloc.h"
#include "il/types.h"

// --- Constants -----------------------------------------------------------------------------------
// A constant is built in a working record on the caller's stack (clear_constant, then a setter),
// and only then given to alloc_shareable_constant.

// A shared copy where sharing is possible, else a new one.
a_constant *alloc_shareable_constant(const a_constant *constant);
a_constant *alloc_unshared_constant(const a_constant *constant);
// `in_file_scope`: the copy goes to the file-scope region whatever the current one is.
a_constant *alloc_unshared_constant_full(const a_constant *constant, bool in_file_scope);
// Copies the record, clearing `next` and the links of the head's supplements.
void copy_constant(const a_constant *from, a_constant *to);
// A new entry with all parts copied (elements of aggregates too).
a_constant *copy_unshared_constant(const a_constant *constant);
a_constant *copy_constant_full(const a_constant *constant, bool in_file_scope);
// A constant that stays as it is when it is an entry already, else a shared copy.
a_constant *transfer_constant_to_il(a_constant *constant);
an_expr_node *alloc_node_for_constant(const a_constant *constant);
an_expr_node *alloc_node_for_allocated_constant(a_constant *constant);

// Setters on a working record: they clear it first.
void set_integer_constant(a_constant *constant, long long value, an_integer_kind kind);
void set_unsigned_integer_constant(a_constant *constant, unsigned long long value,
                                   an_integer_kind kind);
void set_error_constant(a_constant *constant);
a_constant *alloc_error_constant();
// `implicit`: no explicit & stood in the source (array decay).  Both mark the entity's address as
// taken.
void set_variable_address_constant(a_variable *variable, a_constant *constant, bool implicit);
void set_routine_address_constant(a_routine *routine, a_constant *constant, bool implicit);
void set_label_address_constant(a_label *label, a_constant *constant);
void set_constant_address_constant(a_constant *target, a_constant *constant, bool implicit);
void set_ptr_to_data_member_constant(a_field *field, a_constant *constant);
void set_ptr_to_member_function_constant(a_routine *routine, a_constant *constant);
void make_typeid_constant(a_type *type, a_constant *constant);
// The zero of a scalar type: integer, floating, complex, null pointer, null pointer to member.
void make_zero_of_proper_type(a_type *type, a_constant *constant);
void set_complex_constant(a_constant *constant, const simul_fval *real, const simul_fval *imag,
                          a_float_kind kind);

// Tests.
bool compare_constants(const a_constant *a, const a_constant *b, unsigned options);
bool eq_constants(const a_constant *a, const a_constant *b);
uint32_t hash_constant(const a_constant *constant);
uint32_t hash_string(const char *text);
bool is_zero_constant(const a_constant *constant);
bool is_enum_constant(const a_constant *constant);
bool is_ordinary_string_constant(const a_constant *constant);
bool is_wide_string_constant(const a_constant *constant);
// The address of all of a variable, without offset.
bool con_is_exact_addr_of_variable(const a_constant *constant, a_variable **variable);
bool pm_constant_is_null(const a_constant *constant);
bool constant_contains_error(const a_constant *constant);
bool constant_is_instantiation_dependent(const a_constant *constant);
// True when a part of the constant lives in a function's region.
bool has_non_file_scope_ref(const a_constant *constant);

// A string as the aggregate of its characters; `array_type` gives the bound.
a_constant *explode_string_initializer(a_constant *string, a_type *array_type);
// `later` overrides `earlier`; side effects of what is overridden are kept in front of the later
// value.
a_constant *combine_initializers(a_constant *earlier, a_constant *later);
a_constant *combine_initializer_constants(a_constant *earlier, a_constant *later);
void add_to_aggregate(a_constant *aggregate, a_constant *element);
// The character at an index of a string constant.
uint32_t string_character_at(const a_constant *string, uint64_t index);
unsigned char_size_of_string(const a_constant *string);

// Installed by the symbol table: the constant that a named constant's symbol stands for, or null;
// `must_compare`: the caller has to check that the value still is that constant's.
extern a_constant *(*named_constant_hook)(a_symbol *symbol, bool *must_compare);
extern a_scope *innermost_function_scope; // scope_stk.h

struct a_shareable_constants_table;
a_shareable_constants_table *alloc_function_shareable_constants_table();
void free_function_shareable_constants_table(a_shareable_constants_table *table);
void empty_shareable_constants_table();
void empty_func_shareable_constants_table(a_shareable_constants_table *table);
// Table of the innermost open function, or null; written by the scope stack.
extern a_shareable_constants_table *curr_func_shareable_constants_table;
uint32_t f_assign_string_literal_sequence_number();

// --- Expressions ---------------------------------------------------------------------------------

an_expr_node *error_node();
an_expr_node *fs_error_node();
// `first_operand` heads the operand list.  The plain form makes an rvalue, except for the operators
// whose result is an lvalue in all cases.
an_expr_node *make_operator_node(an_expr_operator_kind op, a_type *type,
                                 an_expr_node *first_operand);
an_expr_node *make_lvalue_operator_node(an_expr_operator_kind op, a_type *type,
                                        an_expr_node *first_operand);
// Links the second operand behind the first.
an_expr_node *make_binary_node(an_expr_operator_kind op, a_type *type, an_expr_node *left,
                               an_expr_node *right);
void set_node_operator(an_expr_node *expr, an_expr_operator_kind op);
an_expr_node *make_comma_node(an_expr_node *left, an_expr_node *right);
an_expr_node *add_cast(an_expr_node *expr, a_type *type);
an_expr_node *add_implicit_cast(an_expr_node *expr, a_type *type);
an_expr_node *add_cast_if_necessary(an_expr_node *expr, a_type *type);
an_expr_node *add_cast_to_lvalue(an_expr_node *expr, a_type *type);
an_expr_node *add_cast_to_lvalue_if_necessary(an_expr_node *expr, a_type *type);
an_expr_node *make_lvalue_cast_node(an_expr_node *expr, a_type *type);
an_expr_node *add_indirection_to_node(an_expr_node *expr);
an_expr_node *add_ref_indirection_to_node(an_expr_node *expr);
an_expr_node *add_address_of_to_node(an_expr_node *expr);
an_expr_node *add_reference_to_to_node(an_expr_node *expr);
an_expr_node *add_rvalue_class_adjust_node(an_expr_node *expr);
an_expr_node *conv_array_expr_to_pointer(an_expr_node *expr);
an_expr_node *var_lvalue_expr(a_variable *variable);
an_expr_node *var_rvalue_expr(a_variable *variable);
an_expr_node *var_addr_expr(a_variable *variable);
an_expr_node *function_lvalue_expr(a_routine *routine);
an_expr_node *function_rvalue_expr(a_routine *routine);
an_expr_node *function_addr_expr(a_routine *routine);
an_expr_node *field_lvalue_selection_expr(an_expr_node *object, a_field *field);
an_expr_node *field_rvalue_selection_expr(an_expr_node *object, a_field *field);
// The form of the front end: steps through anonymous unions are made too.
an_expr_node *fe_field_lvalue_selection_expr(an_expr_node *object, a_field *field);
an_expr_node *base_class_selection_expr(an_expr_node *object, a_base_class *base);
an_expr_node *adjust_anonymous_union_field_selection(an_expr_node *expr);
an_expr_node *node_for_integer_constant(long long value, an_integer_kind kind);
an_expr_node *node_for_host_large_integer(long long value, an_integer_kind kind);
an_expr_node *node_for_zero_of_type(a_type *type);
an_expr_node *zero_cast_to_void();
an_expr_node *this_param_value_expr();
an_expr_node *alloc_temp_init_node(a_type *type, a_dynamic_init *init, bool is_lvalue);
an_expr_node *add_object_lifetime_to_expr(an_expr_node *expr, an_object_lifetime *lifetime);

// `keep_constants`: constants are shared with the original instead of copied.
an_expr_node *copy_expr_tree(an_expr_node *expr, bool keep_constants);
an_expr_node *copy_list_of_expr_trees(an_expr_node *list, bool keep_constants);
// A new node with the same content; operands are shared, `next` is null.
an_expr_node *copy_node(const an_expr_node *expr);
// Rewrites a node in place: address, `next` and the implicit-cast mark of the old node stay.
void overwrite_node(an_expr_node *expr, const an_expr_node *content);
an_expr_node *rvalue_expr_for_lvalue(an_expr_node *expr);
a_type *rvalue_type(a_type *type);
void set_expr_result_not_used(an_expr_node *expr);
a_type_kind binary_operation_type_kind(an_expr_operator_kind op, a_type *left, a_type *right);
an_expr_operator_kind assignment_operator_for_type(a_type *type);

// Tests on operators and nodes.
bool is_operator_returning_bool(an_expr_operator_kind op);
bool is_cast_operation_node(const an_expr_node *expr);
bool operator_takes_lvalue_operand(an_expr_operator_kind op);
bool operator_result_is_always_lvalue(an_expr_operator_kind op);
bool is_compound_assignment_operator(an_expr_operator_kind op);
bool is_rvalueable_node(const an_expr_node *expr);
bool compare_expressions(an_expr_node *a, an_expr_node *b, unsigned options);
bool expr_contains_error(an_expr_node *expr);
bool expr_is_instantiation_dependent(an_expr_node *expr);
bool expr_might_throw(an_expr_node *expr);
bool has_statement_expression(an_expr_node *expr);
bool node_has_side_effects(an_expr_node *expr);
bool node_reads_volatile(const an_expr_node *expr); // the node itself, not its operands
bool dynamic_init_has_side_effects(a_dynamic_init *init);
bool expr_list_has_side_effects(an_expr_node *list);
bool is_invariant_expr(an_expr_node *expr);
a_routine *routine_from_function_expr(const an_expr_node *expr);
// The variable or routine at the bottom of an lvalue gets its address-taken mark.
void set_variable_address_taken(a_variable *variable);
void set_address_taken_for_variable_or_routine_expr(an_expr_node *expr);

// --- Statements ----------------------------------------------------------------------------------

a_statement *alloc_expr_statement(an_expr_node *expr);
a_statement *make_assignment_statement(an_expr_node *lhs, an_expr_node *rhs);
a_statement *make_array_assignment_statement(an_expr_node *lhs, an_expr_node *rhs);
// The statement becomes a block that holds a copy of it; returns the copy.
a_statement *change_statement_into_block(a_statement *statement);
a_statement *copy_statement(const a_statement *statement);
a_statement *last_statement_in_block(a_statement *block);
void turn_statement_into_noop(a_statement *statement);
// Whether a local variable is declared where the source does it, by a stmk_type_or_var_decl, and not
// at the start of its block: its type is fixed at run time, or leaving its scope has effects.
bool is_declared_by_statement(const a_variable *variable);

// --- Initializations and lifetimes ---------------------------------------------------------------

// Written here and by the scope stack, which saves it.
extern an_object_lifetime *curr_object_lifetime;

an_object_lifetime *push_object_lifetime(an_il_entry_kind owner_kind, void *owner,
                                         an_object_lifetime_kind kind);
// False: the lifetime was useless and is gone.
bool pop_object_lifetime();
void bind_object_lifetime(an_object_lifetime *lifetime, an_il_entry_kind owner_kind, void *owner);
void unbind_object_lifetime(an_object_lifetime *lifetime);
void free_object_lifetime(an_object_lifetime *lifetime);
void record_end_of_lifetime_destruction(a_dynamic_init *init, bool at_function_level,
                                        bool at_block_level);
void add_to_end_of_destructions_list(a_dynamic_init *init, an_object_lifetime *lifetime);
void add_to_destructions_list_following(a_dynamic_init *init, a_dynamic_init *previous,
                                        an_object_lifetime *lifetime);
void remove_from_destruction_list(a_dynamic_init *init);
void move_destruction_to_curr_object_lifetime(a_dynamic_init *init);
void mark_object_lifetime_as_useless(an_object_lifetime *lifetime);
bool is_useless_object_lifetime(const an_object_lifetime *lifetime);
an_object_lifetime *innermost_block_object_lifetime();
void detach_from_object_lifetime_tree(an_object_lifetime *lifetime);
// The lifetime of the initializer's temporaries: the wrapper of a dik_expression, or the init's
// own.
an_object_lifetime *init_expr_lifetime_of(a_dynamic_init *init);

a_local_static_variable_init *make_local_static_variable_init(a_variable *variable, a_scope *scope);
a_local_static_variable_init *find_local_static_variable_init(a_variable *variable, a_scope *scope);
// Looks through initk_function_local.  One of the two results is set, or neither.
void get_variable_initializer(a_variable *variable, a_scope *scope, an_init_kind *kind,
                              a_constant **constant, a_dynamic_init **dynamic_init);

// A variable without name; `promote`: it goes to the file scope's list.
a_variable *make_variable(a_type *type, a_storage_class storage_class, bool compiler_generated);
a_variable *make_handler_parameter(a_type *type, a_handler *handler);
// One that the parser makes: it goes to the innermost scope that takes declarations.
a_variable *alloc_temporary_variable(a_type *type, bool is_static);
a_vla_dimension *make_vla_dimension(a_type *type, an_expr_node *expr, bool is_parameter_dimension,
                                    const a_source_position *position);
a_vla_dimension *find_vla_dimension(a_type *type);
a_vla_dimension *find_vla_dimension_in_current_function(a_type *type);
// The entry with which a parameter's declarator is written: its expression stands outside of the
// body.
a_vla_dimension *find_declared_vla_dimension(a_type *type);
void set_block_scope_handler(a_scope *scope, a_handler *handler);
bool is_default_constructor(const a_routine *routine);
bool is_copy_constructor(const a_routine *routine, a_type *class_type);
bool routine_is_move_constructor(const a_routine *routine, a_type *class_type);
bool routine_is_move_assignment_operator(const a_routine *routine, a_type *class_type);
void set_routine_defined(a_routine *routine, bool defined);
void set_inline_flag(a_routine *routine, bool is_inline);
bool is_gnu_builtin_function(const a_routine *routine);
bool routine_might_exist_in_multiple_copies(a_routine *routine);
void put_variable_into_comdat_group(a_variable *variable, const char *name);
void put_routine_into_comdat_group(a_routine *routine, const char *name);
unsigned alignment_of_variable(a_variable *variable);
a_field *next_initializable_field(a_field *field); // from this field on; null at the end
a_field *first_initializable_field(a_type *class_type);
// A name that is not one of a symbol: the entry's name is set and fixed.
void assign_internal_name(a_source_correspondence *corresp, const char *name);

extern const char *const name_linkage_kind_names[4];
