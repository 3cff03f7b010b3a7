// lower_init.h - initializations as code: one a_dynamic_init becomes assignments at an insert
// location.
#pragma once
#include "lower/lower_il.h"

enum an_init_pos_modifier_kind : unsigned char { ipm_field, ipm_base_class, ipm_element };

// A step from an object to a part of it; on the stack of those who walk aggregates.
struct an_init_pos_modifier {
  an_init_pos_modifier *next; // the step into the part
  a_type *type;               // of the part
  an_init_pos_modifier_kind kind;
  union {
    a_field *field;
    a_base_class *base_class;
    uint64_t index;
  } variant;
};

// The object that is initialized: a variable, or a part of it.
struct an_init_pos_descr {
  a_variable *variable; // holds the object; null for a thrown one
  bool is_thrown_object;
  bool is_indirect;    // variable points to the object
  bool is_array_range; // a run of elements from the last modifier's on
  bool is_base_subobject;
  bool is_virtual_base_init;
  a_type *type;                    // of the object
  an_init_pos_modifier *modifiers; // from the variable down
  an_init_pos_modifier *last_modifier;
  uint64_t element_count; // is_array_range
  a_type *element_type;
};

enum a_lower_init_flag : unsigned {
  lif_none = 0,
  lif_full_expression = 1,
  lif_exception_state = 2
};

// Whether some part of the initial value needs code.
bool has_dynamic_part(const a_constant *constant);
void set_var_init_pos_descr(a_variable *variable, an_init_pos_descr *descr);
// The object as an lvalue.
an_expr_node *make_lvalue_of_init_entity_node(const an_init_pos_descr *descr);

// Code for `init` at `location`.  When the whole value is a constant that the variable can take as
// its initializer, no code is made for it and *out_constant receives it (else null).
// *out_new_constant tells that the constant is another than the init's own: parts of it needed
// code.
void lower_dynamic_init(a_dynamic_init *init, an_init_pos_descr *descr,
                        const an_init_pos_descr *copy_source, a_variable *construction_vtbls,
                        unsigned flags, bool not_last, an_insert_location *location,
                        a_constant **out_constant, bool *out_new_constant);
// A stmk_init of the constant among the statements in front of the current one.
void add_stmk_init_for_compound_literal(a_variable *variable, a_dynamic_init *init);
// Zeroing code in front of the node; the variable keeps no initializer.
void zero_automatic_temporary(a_variable *variable, an_expr_node *expr);
// A call that clears `size` bytes at the address.
an_expr_node *zero_memory_call(an_expr_node *address, a_type *type);
a_constant *zero_constant_for_type(a_type *type);
// Assignment of an initial value; drops const from the object's type.
an_expr_node *make_init_assignment(an_expr_node *object, an_expr_node *value);
// Forgets the routines that belong to the translation unit before.
void clear_lowered_runtime_routines();
