// lower_class.h - lowering of classes and of what their objects need: construction, destruction,
// generated routines, casts between classes.
#pragma once
#include "lower/lower_init.h"

// ---- Types ----

// The type of a member function gets its parameter for `this`; a constructor returns the object's
// address, a destructor a pointer to void.  Once for each type.
void lower_member_function_type(a_routine *routine);
// Base subobjects and the virtual function pointer become fields.  Once for each class.
void prelower_class_type(a_type *class_type);

// A value of the class is passed by the address of a copy: copying or destroying it takes a call.
bool class_is_passed_by_address(a_type *type);

// ---- Expressions of C++ ----

// The operands are lowered.
void lower_cplusplus_operator(an_expr_node *expr);
void lower_lifetime_wrapper(an_expr_node *expr);
// The node becomes the calls that it stands for; its parts are not lowered before.
void lower_new_delete(an_expr_node *expr);

// The pointer, moved by a number of bytes, as a pointer of the type.
an_expr_node *displaced_pointer(an_expr_node *pointer, int64_t delta, a_type *type);
// Lowered arguments of such classes become addresses.
void pass_class_arguments(an_expr_node **list);
// The address of a lowered operand of class type; a value gets a temporary.
an_expr_node *address_of_class_value(an_expr_node *expr);

// ---- Pointers to members (lower_ptr_to_member.cpp) ----

// True when the operator was one on pointers to members; the operands are lowered.
bool lower_ptr_to_member_operator(an_expr_node *expr);
// In place: an integer, or the aggregate of a struct.
void lower_ptr_to_member_constant(a_constant *constant);
void lower_ptr_to_member_constant_node(an_expr_node *expr);
// The value of a pointer to member function comes from a variable, where code sets it.
void turn_function_constant_into_expr(a_dynamic_init *init);
// An int that tells whether the lowered value isn't null.
an_expr_node *test_of_ptr_to_member(an_expr_node *pointer);
a_type *make_mptr_type();
// What the type is in the generated C.
a_type *lowered_ptr_to_member_type(a_type *type);
void clear_mptr_type();

// ---- Construction and destruction ----

// The call of the constructor; what is_copy_of_source copies from stands in copy_source.
void lower_constructor_init(a_dynamic_init *init, const an_init_pos_descr *descr,
                            const an_init_pos_descr *copy_source, an_insert_location *location);
// A call of the destructor's entry for the object, or for each element of an array.
void add_destructor_call(a_routine *destructor, const an_init_pos_descr *descr, bool complete,
                         an_insert_location *location);
// The entry of a constructor or destructor: 1 complete, 2 base, 3 deleting; made when missing.
a_routine *alternate_entry_point(a_routine *routine, unsigned kind);
// The values of the parameters, in order, for a call that passes them on.
an_expr_node *values_of_parameters(a_variable *parameters);
// The body of a function, with the code that the source doesn't write.
void lower_special_function_body(a_scope *scope);

// ---- Lifetimes ----

// Notes at each label in whose lifetime it lies; before the body is lowered.
void note_lifetimes_of_labels(a_statement *body);
// Around an initialization whose own temporaries die at its end.
struct a_context;
void begin_init_lifetime(a_dynamic_init *init, a_context *context, an_insert_location *location);
void end_init_lifetime(a_dynamic_init *init, an_insert_location *location);
// The object exists from here on: what leaves its lifetime destroys it.
void note_construction(a_dynamic_init *init, const an_init_pos_descr *descr,
                       an_insert_location *location);
// At the end of a block whose context is the current one.
void lower_end_of_block(a_statement *block);
void lower_goto(a_statement *statement);
void lower_return(a_statement *statement);
// True when the statement was rewritten; false leaves a plain C initializer to the caller.
bool lower_cplusplus_stmk_init(a_statement *statement);

// ---- Generated routines (lower_generated.cpp) ----

struct a_generated_routine_state {
  a_routine *routine;
  a_scope *scope;
  a_context context;
  a_context *outer_context;
  an_object_lifetime *outer_lifetime;
  a_scope *outer_function_scope;
  a_statement *outer_temp_inits;
  int outer_region;
  bool outer_lowering_file_scope;
};
// A routine of the file scope, known by its external name only.
a_routine *make_rout_entry(const char *name, a_storage_class storage_class, a_type *type);
// Opens a body for the routine; code goes to the block of state->scope.
void begin_generated_routine(a_routine *routine, a_generated_routine_state *state);
// A parameter of the open body.
a_variable *add_generated_parameter(a_generated_routine_state *state, a_param_type *param);
void finish_generated_routine(a_generated_routine_state *state);
// A routine of the run-time library, declared on its first use in the unit.
a_routine *runtime_routine(const char *name, a_type *return_type, a_type *p1 = nullptr,
                           a_type *p2 = nullptr, a_type *p3 = nullptr);
an_expr_node *make_call_node(a_routine *routine, an_expr_node *arguments);
void clear_runtime_routines();
void clear_static_init_entities();

// ---- File scope (lower_file_init.cpp) ----

// All dynamic initializations of the file scope go to one routine that runs before main.
void lower_file_scope_dynamic_inits();
// Wraps what is to be generated for a local static: *inner is where its initialization goes.
void make_guard(a_variable *variable, an_insert_location *location, an_insert_location *inner);
void register_destructor(a_dynamic_init *init, const an_init_pos_descr *descr,
                         an_insert_location *location);

// ---- Virtual functions (lower_vtbl.cpp) ----

// Defines the tables of the classes of the scope and of those inside them.
void lower_vtbls_of_scope(a_scope *scope);
// The constructor sets the pointers of the object that `this` shows at.
void set_virtual_function_pointers(a_type *class_type, a_variable *this_variable,
                                   an_insert_location *location);
// A call by the number of the function in the object's table.
void lower_virtual_function_call(an_expr_node *call, a_routine *routine);
