// il_constants_test.cpp - sharing, comparison, hashing, exploded strings, overridden initializers.
#include "consts/float_pt.h"
#include "il/il_walk.h"
#include "unit_fixture.h"

class il_constants : public a_unit_test {
protected:
  void SetUp() override
  {
    a_unit_test::SetUp();
    in_front_end = true;
    string_literals_shared = true;
  }
  a_constant *shared_integer(long long value, an_integer_kind kind = ik_int)
  {
    a_constant constant;
    set_integer_constant(&constant, value, kind);
    return alloc_shareable_constant(&constant);
  }
  a_constant float_constant(const simul_fval &value)
  {
    a_constant constant;
    clear_constant(&constant, ck_float);
    float_of(&constant) = value;
    constant.type = float_type(fk_double);
    return constant;
  }
  a_constant string_constant(const char *text, uint32_t number = 0)
  {
    a_constant constant;
    clear_constant(&constant, ck_string);
    string_of(&constant).length = strlen(text) + 1;
    string_of(&constant).text = copy_string_to_region(true, text);
    string_of(&constant).string_literal_number = number;
    constant.type = string_literal_type(chk_char, strlen(text) + 1);
    return constant;
  }
  void open_function()
  {
    a_routine *routine = alloc_routine();
    routine->type = make_routine_type(void_type());
    push_scope(sck_function, -1, nullptr, routine);
    routine->region_number = scope_stack[depth_scope_stack].region_number;
  }
};

TEST_F(il_constants, equal_constants_of_one_type_are_one_entry)
{
  a_constant *five = shared_integer(5);
  EXPECT_EQ(five, shared_integer(5));
  EXPECT_NE(five, shared_integer(6));
  EXPECT_NE(five, shared_integer(5, ik_long));
  open_function();
  EXPECT_EQ(five, shared_integer(5));
  EXPECT_TRUE(is_file_scope_entry(shared_integer(77)));
  in_front_end = false;
  EXPECT_NE(five, shared_integer(5));
  in_front_end = true;
}

TEST_F(il_constants, negative_zero_is_a_value_of_its_own)
{
  a_constant positive = float_constant(pos_zero);
  a_constant negative = float_constant(neg_zero);
  EXPECT_FALSE(compare_constants(&positive, &negative, cco_same_type));
  EXPECT_NE(alloc_shareable_constant(&positive), alloc_shareable_constant(&negative));
  EXPECT_TRUE(is_zero_constant(&negative));
}

TEST_F(il_constants, strings_are_shared_on_demand_only)
{
  a_constant first = string_constant("text");
  a_constant second = string_constant("text");
  EXPECT_EQ(alloc_shareable_constant(&first), alloc_shareable_constant(&second));
  a_constant address_1, address_2;
  set_constant_address_constant(alloc_unshared_constant(&first), &address_1, true);
  set_constant_address_constant(alloc_unshared_constant(&second), &address_2, true);
  string_literals_shared = false;
  EXPECT_NE(alloc_shareable_constant(&first), alloc_shareable_constant(&second));
  EXPECT_NE(alloc_shareable_constant(&address_1), alloc_shareable_constant(&address_2));
  string_literals_shared = true;
}

TEST_F(il_constants, string_with_its_own_address_stays_in_its_function)
{
  open_function();
  a_constant numbered = string_constant("numbered", 1);
  a_constant other = string_constant("numbered", 2);
  a_constant *entry = alloc_shareable_constant(&numbered);
  EXPECT_FALSE(is_file_scope_entry(entry));
  EXPECT_EQ(entry, alloc_shareable_constant(&numbered));
  EXPECT_NE(entry, alloc_shareable_constant(&other));
  a_constant *copy = alloc_unshared_constant_full(&numbered, true);
  EXPECT_EQ(string_of(copy).string_literal_number, 0u);
}

TEST_F(il_constants, folded_constant_keeps_its_expression_and_is_not_shared)
{
  a_constant folded;
  set_integer_constant(&folded, 12, ik_int);
  folded.expr = node_for_integer_constant(12, ik_int);
  a_constant *entry = alloc_shareable_constant(&folded);
  EXPECT_EQ(entry->expr, folded.expr);
  EXPECT_NE(entry, alloc_shareable_constant(&folded));
  open_function();
  folded.expr = node_for_integer_constant(12, ik_int);
  EXPECT_EQ(alloc_unshared_constant_full(&folded, true)->expr, nullptr);
}

TEST_F(il_constants, aggregates_compare_to_the_same_length)
{
  a_constant *three = alloc_constant(ck_aggregate);
  a_constant *two = alloc_constant(ck_aggregate);
  for (int i = 0; i < 3; i++) {
    a_constant value;
    set_integer_constant(&value, i, ik_int);
    add_to_aggregate(three, alloc_unshared_constant(&value));
    if (i < 2) add_to_aggregate(two, alloc_unshared_constant(&value));
  }
  EXPECT_FALSE(eq_constants(three, two));
  EXPECT_TRUE(eq_constants(three, copy_unshared_constant(three)));
  EXPECT_NE(aggregate_of(copy_unshared_constant(three)).first_element,
            aggregate_of(three).first_element);
  a_constant *designator = alloc_constant(ck_designator);
  EXPECT_FALSE(eq_constants(designator, alloc_constant(ck_designator)));
}

TEST_F(il_constants, string_explodes_to_what_the_array_holds)
{
  a_constant text = string_constant("ab");
  a_constant *string = alloc_unshared_constant(&text);
  a_constant *characters =
      explode_string_initializer(string, make_array_type(integer_type(ik_char), 2));
  a_constant *first = aggregate_of(characters).first_element;
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(cmplit_integer_constant(first, 'a'), 0);
  EXPECT_EQ(aggregate_of(characters).last_element, first->next); // the null has no place
}

TEST_F(il_constants, overridden_call_still_runs)
{
  open_function();
  a_routine *routine = alloc_routine();
  routine->type = make_routine_type(integer_type(ik_int));
  an_expr_node *call =
      make_operator_node(eok_call, integer_type(ik_int), function_addr_expr(routine));
  a_dynamic_init *init = alloc_dynamic_init(dik_expression);
  expr_of(init) = call;
  a_constant *earlier = alloc_constant(ck_dynamic_init);
  dynamic_init_of(earlier) = init;
  earlier->type = integer_type(ik_int);
  a_constant value;
  set_integer_constant(&value, 3, ik_int);
  a_constant *later = combine_initializers(earlier, alloc_unshared_constant(&value));
  ASSERT_EQ(later->kind, ck_dynamic_init);
  an_expr_node *combined = expr_of(dynamic_init_of(later));
  ASSERT_TRUE(is_operation(combined, eok_comma));
  EXPECT_EQ(first_operand_of(combined), call);
  EXPECT_EQ(second_operand_of(combined)->kind, enk_constant);
  a_constant *plain = alloc_unshared_constant(&value);
  EXPECT_EQ(combine_initializers(alloc_unshared_constant(&value), plain)->kind, ck_integer);
}
