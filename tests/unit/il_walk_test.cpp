// il_walk_test.cpp - walks, remapping, needed marks, expressions and lifetimes.
#include <map>
#include <set>

#include "il/il_field_table.h"
#include "il/il_walk.h"
#include "unit_fixture.h"

static std::map<const void *, int> visits;
static void count_visit(void *entry, an_il_entry_kind)
{
  visits[entry]++;
}
static std::set<std::string> texts;
static void collect_text(const char *text, an_il_entry_kind, size_t length)
{
  texts.insert(std::string(text, length - 1));
}
static void *shift_pointer(void *pointer, an_il_entry_kind)
{
  return (char *)pointer + 0x1000;
}

class il_walk : public a_unit_test {
protected:
  void SetUp() override
  {
    a_unit_test::SetUp();
    visits.clear();
    texts.clear();
    okay_to_eliminate_unneeded_il_entries = true;
  }
  a_variable *file_variable(const char *name, a_storage_class storage_class, a_type *type)
  {
    a_variable *variable = alloc_variable(storage_class);
    assign_internal_name(&variable->source_corresp, name);
    variable->type = type;
    add_to_variables_list(variable, 0);
    return variable;
  }
  // A defined routine whose body calls `callee` (if any).
  a_routine *routine_calling(a_routine *callee, a_storage_class storage_class)
  {
    a_routine *routine = alloc_routine();
    routine->type = make_routine_type(void_type());
    routine->storage_class = storage_class;
    add_to_routines_list(routine, 0);
    push_scope(sck_function, -1, nullptr, routine);
    routine->region_number = scope_stack[depth_scope_stack].region_number;
    a_scope *scope = scope_stack[depth_scope_stack].il_scope;
    scope->assoc_block = alloc_statement(stmk_block);
    if (callee != nullptr) {
      an_expr_node *call = make_operator_node(eok_call, void_type(), function_addr_expr(callee));
      first_statement_of(scope->assoc_block) = alloc_expr_statement(call);
    }
    int region = curr_il_region_number;
    pop_scope();
    region_scope_table[region] = scope;
    routine->is_defined = true;
    return routine;
  }
  a_variable *local(a_type *type)
  {
    return make_variable(type, sc_auto, false);
  }
};

TEST_F(il_walk, every_entry_is_met_once_by_each_walk)
{
  a_type *pointer = make_pointer_type(integer_type(ik_short));
  a_variable *first = file_variable("first", sc_unspecified, pointer);
  file_variable("second", sc_unspecified, pointer);
  an_il_walk_callbacks callbacks = {};
  callbacks.entry_callback = count_visit;
  callbacks.string_callback = collect_text;
  for (int pass = 1; pass <= 3; pass++) {
    walk_file_scope_il(&callbacks);
    EXPECT_EQ(visits[first], pass);
    EXPECT_EQ(visits[pointer], pass);
    EXPECT_EQ(visits[integer_type(ik_short)], pass);
    // What is made between two walks is met by the next one.
    a_variable *late = file_variable("late", sc_unspecified, pointer);
    EXPECT_EQ(entry_flags_of(late).visited, entry_flags_of(first).visited);
  }
  EXPECT_EQ(texts.count("second"), 1u);
}

TEST_F(il_walk, remap_changes_each_pointer_and_nothing_else)
{
  a_variable *variable = alloc_variable(sc_static);
  variable->type = integer_type(ik_int);
  variable->init_kind = initk_none;
  variable->initializer.constant = (a_constant *)0x5000; // doesn't hold
  a_variable before = *variable;
  remap_pointers_in_il_entry(variable, iek_variable, shift_pointer, nullptr);
  EXPECT_EQ((char *)variable->type, (char *)before.type + 0x1000);
  EXPECT_EQ(variable->initializer.constant, before.initializer.constant);
  EXPECT_EQ(variable->alias_target, nullptr);
  variable->init_kind = initk_static;
  remap_pointers_in_il_entry(variable, iek_variable, shift_pointer, nullptr);
  EXPECT_EQ((char *)variable->initializer.constant, (char *)before.initializer.constant + 0x1000);
}

TEST_F(il_walk, deep_expression_needs_no_machine_stack)
{
  a_variable *variable = file_variable("v", sc_unspecified, integer_type(ik_int));
  an_expr_node *expr = var_rvalue_expr(variable);
  for (int i = 0; i < 300000; i++) {
    expr =
        make_binary_node(eok_add, integer_type(ik_int), expr, node_for_integer_constant(1, ik_int));
  }
  an_il_walk_callbacks callbacks = {};
  callbacks.entry_callback = count_visit;
  walk_il_subtree(&callbacks, expr, iek_expr_node);
  EXPECT_GT(visits.size(), 600000u);
}

TEST_F(il_walk, statics_that_only_unused_statics_call_go)
{
  a_routine *inner = routine_calling(nullptr, sc_static);
  a_routine *outer = routine_calling(inner, sc_static);
  a_routine *used = routine_calling(nullptr, sc_static);
  a_routine *entry = routine_calling(used, sc_unspecified);
  a_scope *scope = il_header.primary_scope;
  set_needed_flags_at_end_of_file_scope(scope);
  mark_to_keep_in_il(scope, iek_scope);
  EXPECT_FALSE(inner->source_corresp.needed);
  EXPECT_FALSE(outer->source_corresp.needed);
  EXPECT_TRUE(used->definition_needed);
  EXPECT_TRUE(entry->definition_needed);
  eliminate_bodies_of_unneeded_functions();
  eliminate_unneeded_il_entries(scope);
  EXPECT_EQ(scope->routines, used);
  EXPECT_EQ(used->next, entry);
  EXPECT_EQ(entry->next, nullptr);
  EXPECT_EQ(scope_for_routine(inner), nullptr);
  a_routine *appended = alloc_routine();
  add_to_routines_list(appended, 0);
  EXPECT_EQ(entry->next, appended);
}

TEST_F(il_walk, mutual_references_of_unneeded_entities_keep_nothing)
{
  a_type *pointer = make_pointer_type(void_type());
  a_variable *a = file_variable("a", sc_static, pointer);
  a_variable *b = file_variable("b", sc_static, pointer);
  a_constant address;
  set_variable_address_constant(b, &address, false);
  a->init_kind = b->init_kind = initk_static;
  a->initializer.constant = alloc_unshared_constant(&address);
  set_variable_address_constant(a, &address, false);
  b->initializer.constant = alloc_unshared_constant(&address);
  a_scope *scope = il_header.primary_scope;
  set_needed_flags_at_end_of_file_scope(scope);
  EXPECT_FALSE(a->source_corresp.needed);
  b->is_used = true;
  set_needed_flags_at_end_of_file_scope(scope);
  EXPECT_TRUE(a->source_corresp.needed);
}

TEST_F(il_walk, expressions_tell_side_effects_and_equality)
{
  a_variable *plain = file_variable("p", sc_unspecified, integer_type(ik_int));
  a_variable *shaky =
      file_variable("s", sc_unspecified, f_make_qualified_type(integer_type(ik_int), tq_volatile));
  a_type *int_type = integer_type(ik_int);
  auto sum = [&]() {
    return make_binary_node(eok_add, int_type, var_rvalue_expr(plain),
                            node_for_integer_constant(1, ik_int));
  };
  EXPECT_TRUE(compare_expressions(sum(), sum(), cco_same_type));
  EXPECT_FALSE(node_has_side_effects(sum()));
  EXPECT_FALSE(is_invariant_expr(sum()));
  EXPECT_TRUE(is_invariant_expr(var_addr_expr(plain)));
  EXPECT_TRUE(node_has_side_effects(var_rvalue_expr(shaky)));
  an_expr_node *assignment = make_binary_node(eok_assign, int_type, var_lvalue_expr(plain), sum());
  EXPECT_TRUE(node_has_side_effects(assignment));
  EXPECT_TRUE(compare_expressions(copy_expr_tree(assignment, true), assignment, cco_same_type));
  an_expr_node *comma = make_comma_node(assignment, var_lvalue_expr(plain));
  EXPECT_TRUE(comma->is_lvalue);
  EXPECT_EQ(comma->type, int_type);
  EXPECT_TRUE(assignment->result_not_used);
  EXPECT_FALSE(second_operand_of(comma)->result_not_used);
}

TEST_F(il_walk, operand_kind_of_mixed_types)
{
  a_type *imaginary = imaginary_type(fk_double);
  a_type *real = float_type(fk_double);
  EXPECT_EQ(binary_operation_type_kind(eok_multiply, imaginary, imaginary), tk_imaginary);
  EXPECT_EQ(binary_operation_type_kind(eok_divide, imaginary, imaginary), tk_float);
  EXPECT_EQ(binary_operation_type_kind(eok_divide, real, imaginary), tk_imaginary);
  EXPECT_EQ(binary_operation_type_kind(eok_multiply, real, imaginary), tk_float);
  EXPECT_EQ(binary_operation_type_kind(eok_add_complex_1, real, imaginary), tk_complex);
  EXPECT_EQ(binary_operation_type_kind(eok_land, real, imaginary), tk_integer);
  EXPECT_EQ(binary_operation_type_kind(eok_assign, alloc_type(tk_union), real), tk_float);
  EXPECT_EQ(binary_operation_type_kind(eok_pointer_add, make_pointer_type(real), real), tk_pointer);
}

TEST_F(il_walk, statement_moves_into_its_block_with_what_points_back)
{
  routine_calling(nullptr, sc_static);
  a_statement *statement = alloc_statement(stmk_label);
  a_label *label = alloc_label();
  label_of(statement) = label;
  label->statement = statement;
  a_statement *moved = change_statement_into_block(statement);
  EXPECT_EQ(statement->kind, stmk_block);
  EXPECT_EQ(first_statement_of(statement), moved);
  EXPECT_EQ(label->statement, moved);
}

TEST_F(il_walk, block_without_objects_leaves_no_lifetime)
{
  use_dialect(2, false);
  curr_object_lifetime = nullptr;
  a_scope *scope = alloc_scope(sck_namespace, 1, nullptr);
  push_object_lifetime(iek_scope, scope, olk_global);
  an_object_lifetime *outer = curr_object_lifetime;
  a_statement *block = alloc_statement(stmk_block);
  push_object_lifetime(iek_statement, block, olk_block);
  EXPECT_FALSE(pop_object_lifetime());
  EXPECT_EQ(block_supplement_of(block)->object_lifetime, nullptr);
  push_object_lifetime(iek_statement, block, olk_block);
  a_dynamic_init *first = alloc_dynamic_init(dik_none);
  a_dynamic_init *second = alloc_dynamic_init(dik_none);
  record_end_of_lifetime_destruction(first, false, false);
  record_end_of_lifetime_destruction(second, false, true);
  EXPECT_EQ(curr_object_lifetime->destructions, second);
  EXPECT_EQ(second->next_destruction, first);
  remove_from_destruction_list(second);
  EXPECT_EQ(curr_object_lifetime->destructions, first);
  EXPECT_TRUE(pop_object_lifetime());
  EXPECT_NE(block_supplement_of(block)->object_lifetime, nullptr);
  EXPECT_EQ(curr_object_lifetime, outer);
}
