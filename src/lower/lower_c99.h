// lower_c99.h - lowering of C: what the generated C can't say as it stands is rewritten in place.
#pragma once
#include "lower/lower_il.h"

// Whether the pass runs for this unit.
bool c99_il_lowering_needed();
void lower_c99_il_memory_region(int region);
void lower_c99_one_time_init();
void lower_c99_trans_unit_init();
void lower_c99_init();

void lower_c99_statement(a_statement *statement);
void lower_c99_expr(an_expr_node *expr);
void lower_c99_full_expr(an_expr_node *expr);
void lower_c99_boolean_controlling_expr(an_expr_node *expr, bool full);
void lower_c99_operator(an_expr_node *expr);
void lower_c99_cast(an_expr_node *expr);
void lower_c99_constant(a_constant *constant);

// Variable-length arrays (lower_vla.cpp).
void lower_type_of_vla_cast_if_necessary(an_expr_node *expr);
void lower_vla_dimensions_in_type(a_type *type);
void lower_vla_dimension_expression(a_vla_dimension *dimension);
void create_dimension_variable(a_statement *statement);
void create_element_count_variable_for_vla(a_statement *statement);
void lower_runtime_sizeof(an_expr_node *expr);

// Imaginary types (lower_imaginary.cpp).
// The operands are lowered.
void lower_imaginary_operator(an_expr_node *expr);
// An assignment `x op= y` to an imaginary x becomes x = x op y where that is more than an operation
// on the parts; true if so.  The operands aren't lowered yet.
bool rewrite_imaginary_assignment(an_expr_node *expr);

// Statement expressions and their sequence points (lower_gnu.cpp).
extern bool full_expr_has_statement_expression;
void lower_sequence_point_expr(an_expr_node *expr);
void lower_gnu_statement_expr(an_expr_node *expr);
void convert_struct_rvalue_to_comma_expr_if_needed(an_expr_node *expr);
// What the condition (or the increment) hoists goes into a block of the loop; curr_gnu_statement
// becomes it.
a_statement *loop_serialization_init(a_statement *statement, bool is_condition);
// Drops the block if nothing was hoisted into it.
void loop_serialization_end(a_statement *statement, bool is_condition);
// Loops whose hoisted statements may stand in the text only once are rewritten.
void settle_loop_serialization(a_statement *loop);

// Conditions (lower_expr.cpp); C++ uses them too.
void lower_question_operator(an_expr_node *expr, bool is_address_context);
void lower_logical_operator(an_expr_node *expr);

// Designated initializers (lower_designators.cpp); C++ uses them too.
void lower_designated_initializers(a_constant *constant, a_variable *variable);
void lower_dynamic_init_designated_initializers(a_dynamic_init *init);
bool aggregate_is_partial(const a_constant *constant, a_type *type);
