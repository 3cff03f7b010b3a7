// types_test.cpp - sharing, identity, compatibility, composite types, promotions with a 40-bit type.
#include "unit_fixture.h"

class types : public a_unit_test {
protected:
  a_type *int_type()
  {
    return integer_type(ik_int);
  }
  void set_long_precision(unsigned bits)
  {
    targ_precisionof_long = bits;
    targ_sizeof_long = targ_alignof_long = bits <= 32 ? 4 : 8;
    types_trans_unit_init();
  }
  a_type *common(an_integer_kind a, an_integer_kind b)
  {
    return usual_arithmetic_conversions(integer_type(a), integer_type(b));
  }
  a_type *unprototyped_routine(a_type *result)
  {
    a_type *type = make_routine_type(result);
    routine_supplement_of(type)->is_prototyped = false;
    return type;
  }
};

TEST_F(types, derived_types_are_shared_through_the_base)
{
  a_type *pointer = make_pointer_type(int_type());
  a_type *qualified = f_make_qualified_type(int_type(), tq_const);
  EXPECT_EQ(pointer, make_pointer_type(int_type()));
  EXPECT_EQ(qualified, f_make_qualified_type(int_type(), tq_const));
  EXPECT_EQ(qualified, f_make_qualified_type(qualified, tq_const));
  // A chain of qualified forms does not grow.
  EXPECT_EQ(f_make_qualified_type(qualified, tq_volatile),
            f_make_qualified_type(int_type(), tq_const | tq_volatile));
  EXPECT_NE(make_pointer_type(nullptr), make_pointer_type(nullptr));
}

TEST_F(types, a_reference_takes_only_restrict)
{
  a_type *reference = make_reference_type(int_type());
  EXPECT_EQ(f_make_qualified_type(reference, tq_const), reference);
  a_type *restricted = f_make_qualified_type(reference, tq_const | tq_restrict);
  EXPECT_EQ(get_type_qualifiers(restricted), tq_restrict);
}

TEST_F(types, qualifying_an_array_qualifies_its_elements)
{
  a_type *inner = make_array_type(int_type(), 3);
  a_type *outer = make_array_type(inner, 2);
  a_type *qualified = f_make_qualified_type(outer, tq_const);
  ASSERT_EQ(qualified->kind, tk_array);
  EXPECT_EQ(qualified->size, outer->size);
  a_type *element = underlying_array_element_type(qualified);
  EXPECT_EQ(get_type_qualifiers(element), tq_const);
  EXPECT_EQ(find_based_type(outer, btk_qualified_array)->type, qualified);
  EXPECT_EQ(f_make_qualified_type(outer, tq_const), qualified);
  EXPECT_EQ(make_unqualified_type(element), int_type());
}

TEST_F(types, arithmetic_with_the_40_bit_type)
{
  set_long_precision(40);
  EXPECT_EQ(common(ik_long, ik_int40), integer_type(ik_long));
  EXPECT_EQ(common(ik_long, ik_unsigned_int40), integer_type(ik_unsigned_long));
  EXPECT_EQ(common(ik_int40, ik_unsigned_int), integer_type(ik_int40));
  set_long_precision(32);
  EXPECT_EQ(common(ik_long, ik_int40), integer_type(ik_int40));
  EXPECT_EQ(common(ik_unsigned_int40, ik_int), integer_type(ik_unsigned_int40));
  EXPECT_EQ(common(ik_long, ik_unsigned_int), integer_type(ik_unsigned_long));
  EXPECT_EQ(common(ik_long_long, ik_unsigned_int40), integer_type(ik_long_long));
  EXPECT_EQ(common(ik_long_long, ik_unsigned_long_long), integer_type(ik_unsigned_long_long));
  EXPECT_EQ(common(ik_char, ik_short), integer_type(ik_int));
}

TEST_F(types, promotions_follow_the_dialect)
{
  EXPECT_EQ(type_after_integral_promotion(integer_type(ik_unsigned_char)), int_type());
  EXPECT_EQ(type_after_integral_promotion(bool_type()), int_type());
  EXPECT_EQ(default_argument_promotion(float_type(fk_float)), float_type(fk_double));
  EXPECT_EQ(usual_arithmetic_conversions(float_type(fk_float), int_type()), float_type(fk_float));
  EXPECT_EQ(usual_arithmetic_conversions(complex_type(fk_float), float_type(fk_double)),
            complex_type(fk_double));
  EXPECT_EQ(type_after_bit_field_integral_promotion(integer_type(ik_unsigned_int), 31), int_type());
  EXPECT_EQ(type_after_bit_field_integral_promotion(integer_type(ik_unsigned_int), 32),
            integer_type(ik_unsigned_int));
  use_dialect(1, false);
  EXPECT_EQ(type_after_integral_promotion(integer_type(ik_unsigned_char)),
            integer_type(ik_unsigned_int));
  EXPECT_EQ(usual_arithmetic_conversions(float_type(fk_float), float_type(fk_float)),
            float_type(fk_double));
}

TEST_F(types, unsigned_short_as_wide_as_int_promotes_to_unsigned)
{
  targ_sizeof_int = 2;
  EXPECT_EQ(type_after_integral_promotion(integer_type(ik_unsigned_short)),
            integer_type(ik_unsigned_int));
}

TEST_F(types, wchar_t_is_distinct_only_as_a_keyword)
{
  EXPECT_EQ(eff_wchar_t_type(), integer_type(targ_wchar_t_int_kind));
  use_dialect(2, false);
  wchar_t_is_keyword = true;
  EXPECT_FALSE(identical_types(eff_wchar_t_type(), integer_type(targ_wchar_t_int_kind)));
}

TEST_F(types, enums_and_integers)
{
  a_type *color = alloc_type(tk_integer), *shape = alloc_type(tk_integer);
  for (a_type *type : {color, shape}) {
    as_integer(type).int_kind = ik_unsigned_int;
    as_integer(type).is_enum = true;
    set_type_size(type);
  }
  EXPECT_EQ(is_integral_type(color), enum_type_is_integral);
  EXPECT_TRUE(types_are_compatible(color, integer_type(ik_unsigned_int)));
  EXPECT_FALSE(types_are_compatible(color, int_type()));
  EXPECT_FALSE(types_are_compatible(color, shape));
  use_dialect(0, true);
  gnu_version = 30300;
  EXPECT_TRUE(types_are_compatible(color, shape));
  gnu_version = 40300;
}

TEST_F(types, arrays_of_unknown_bound_are_compatible_and_give_the_known_bound)
{
  a_type *open = make_incomplete_array_type(int_type());
  a_type *closed = make_array_type(int_type(), 4);
  EXPECT_TRUE(types_are_compatible(open, closed));
  EXPECT_FALSE(identical_types(open, closed));
  EXPECT_FALSE(types_are_compatible(make_array_type(int_type(), 5), closed));
  EXPECT_EQ(composite_type(open, closed), closed);
  EXPECT_EQ(composite_type(closed, open), closed);
  EXPECT_TRUE(is_incomplete_type(open));
  EXPECT_FALSE(is_incomplete_type(make_array_type(int_type(), 0)));
}

TEST_F(types, composite_goes_through_pointers_and_parameters)
{
  a_type *open = make_pointer_type(make_incomplete_array_type(int_type()));
  a_type *closed = make_pointer_type(make_array_type(int_type(), 4));
  a_type *f = make_routine_type(int_type(), open, closed);
  a_type *g = make_routine_type(int_type(), closed, open);
  a_type *composite = composite_type(f, g);
  ASSERT_NE(composite, f);
  ASSERT_NE(composite, g);
  for (a_param_type *param = param_types_of(composite); param; param = param->next) {
    EXPECT_TRUE(identical_types(param->type, closed));
  }
  EXPECT_EQ(composite_type(f, f), f);
}

TEST_F(types, lists_without_prototype_match_promoted_parameters)
{
  a_type *old = unprototyped_routine(int_type());
  EXPECT_TRUE(types_are_compatible(old, make_routine_type(int_type(), int_type())));
  EXPECT_FALSE(types_are_compatible(old, make_routine_type(int_type(), integer_type(ik_char))));
  EXPECT_FALSE(types_are_compatible(old, make_routine_type(int_type(), float_type(fk_float))));
  a_type *variadic = make_routine_type(int_type(), int_type());
  routine_supplement_of(variadic)->has_ellipsis = true;
  EXPECT_FALSE(types_are_compatible(old, variadic));
  a_type *prototype = make_routine_type(int_type(), int_type());
  EXPECT_EQ(composite_type(old, prototype), prototype);
}

TEST_F(types, top_level_qualifiers_of_parameters_do_not_count)
{
  a_type *plain = make_routine_type(void_type(), int_type());
  a_type *qualified = make_routine_type(void_type(), f_make_qualified_type(int_type(), tq_const));
  EXPECT_TRUE(types_are_compatible(plain, qualified));
  a_type *pointer = make_routine_type(void_type(), make_pointer_type(int_type()));
  a_type *to_const = make_routine_type(void_type(), make_ptr_to_const_type(int_type()));
  EXPECT_FALSE(types_are_compatible(pointer, to_const));
}

TEST_F(types, gnu_alignment_makes_types_different)
{
  use_dialect(0, true);
  a_type *aligned = alloc_type(tk_typeref);
  as_typeref(aligned).referenced_type = int_type();
  aligned->alignment = 16;
  aligned->alignment_was_declared = true;
  EXPECT_EQ(f_alignment_of_type(aligned), 16u);
  EXPECT_FALSE(identical_types(aligned, int_type()));
  use_standard_c();
  EXPECT_TRUE(identical_types(aligned, as_typeref(aligned).referenced_type));
}

TEST_F(types, conversions_of_pointers)
{
  a_std_conv_descr descr;
  a_conversion_source source = {};
  source.type = make_pointer_type(int_type());
  EXPECT_TRUE(impl_conversion_possible(&source, make_ptr_to_const_type(int_type()), &descr));
  EXPECT_TRUE(descr.qualification_added);
  EXPECT_TRUE(impl_conversion_possible(&source, make_pointer_type(void_type()), &descr));
  EXPECT_TRUE(descr.to_void_or_null);
  EXPECT_FALSE(impl_conversion_possible(&source, make_pointer_type(integer_type(ik_char)), &descr));
  source.type = make_ptr_to_const_type(int_type());
  EXPECT_FALSE(impl_conversion_possible(&source, make_pointer_type(int_type()), &descr));
  EXPECT_TRUE(expl_conversion_possible(&source, make_pointer_type(integer_type(ik_char)), &descr));
  EXPECT_TRUE(cast_removes_qualifiers(source.type, make_pointer_type(int_type())));
}

TEST_F(types, sizes_come_from_the_target)
{
  EXPECT_EQ(make_array_type(integer_type(ik_short), 7)->size, 7u * targ_sizeof_short);
  EXPECT_EQ(complex_type(fk_double)->size, 2u * targ_sizeof_double);
  EXPECT_EQ(string_literal_type(chk_char, 6), string_literal_type(chk_char, 6));
  a_target_size value = 13;
  EXPECT_TRUE(align(&value, 8));
  EXPECT_EQ(value, 16u);
  value = ~(a_target_size)0;
  EXPECT_FALSE(align(&value, 8));
}
