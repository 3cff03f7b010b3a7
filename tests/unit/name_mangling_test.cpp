// name_mangling_test.cpp - names that no single source file shows: thunks, tables, entries, names that are cut or carry the
// module id.
#include <string>

#include "driver/host_envir.h"
#include "lower/lower_name.h"
#include "unit_fixture.h"

class a_name_mangling_test : public a_unit_test {
 protected:
  void SetUp() override
  {
    a_unit_test::SetUp();
    use_dialect(2, false);
    name_lower_init();
    max_mangled_name_length = 0;
    final_name_mangling_needed = false;
  }
  void TearDown() override
  {
    max_mangled_name_length = 0;
    a_unit_test::TearDown();
  }

  a_type *make_class(const char *name)
  {
    a_type *type = alloc_type(tk_struct);
    type->source_corresp.name = name;
    return type;
  }
  a_routine *make_routine(const char *name, a_type *p1, a_type *p2 = nullptr)
  {
    a_routine *routine = alloc_routine();
    routine->source_corresp.name = name;
    routine->source_corresp.name_linkage = nlk_cplusplus;
    routine->type = make_routine_type(void_type(), p1, p2);
    return routine;
  }
  const char *mangled(a_routine *routine)
  {
    mangle_function_name(routine);
    return routine->source_corresp.internal_name;
  }
};

TEST_F(a_name_mangling_test, types_of_the_target_have_vendor_codes)
{
  a_type *wide = integer_type(ik_int40), *unsigned_wide = integer_type(ik_unsigned_int40);
  EXPECT_STREQ(mangled(make_routine("f", wide, unsigned_wide)), "_Z1fu3i40u3u40");
  // Built-in types are no candidates, pointers to them are.
  a_type *pointer = make_pointer_type(wide);
  EXPECT_STREQ(mangled(make_routine("g", pointer, pointer)), "_Z1gPu3i40S_");
}

TEST_F(a_name_mangling_test, names_are_given_once)
{
  a_routine *routine = make_routine("f", integer_type(ik_int));
  const char *name = mangled(routine);
  routine->type = make_routine_type(void_type());
  EXPECT_EQ(mangled(routine), name);
  EXPECT_STREQ(routine->source_corresp.name, "f");
}

TEST_F(a_name_mangling_test, thunks_tell_their_adjustments)
{
  a_thunk_description description = {};
  description.target = make_routine("f", integer_type(ik_int));
  description.this_adjustment = {-8, 0};
  a_routine *thunk = alloc_routine();
  mangle_wrapper_name(thunk, &description);
  EXPECT_STREQ(thunk->source_corresp.internal_name, "_ZThn8_1fi");

  description.this_adjustment = {0, -4};
  description.is_covariant = true;
  description.result_adjustment = {12, 0};
  a_routine *covariant = alloc_routine();
  mangle_wrapper_name(covariant, &description);
  EXPECT_STREQ(covariant->source_corresp.internal_name, "_ZTcv0_n16_h12_1fi");
}

TEST_F(a_name_mangling_test, tables_and_subobjects_are_named_for_their_classes)
{
  a_type *type = make_class("Widget"), *subobject = make_class(nullptr);
  EXPECT_STREQ(mangled_class_name(type), "6Widget");
  EXPECT_STREQ(mangled_vtbl_name(type, nullptr, nullptr), "_ZTV6Widget");
  EXPECT_STREQ(mangled_virtual_table_table_name(type), "_ZTT6Widget");
  EXPECT_STREQ(mangled_typeinfo_name(make_pointer_type(type)), "_ZTIP6Widget");
  EXPECT_STREQ(mangled_typeinfo_string(type), "6Widget");
  EXPECT_STREQ(mangled_typeinfo_string_name(type), "_ZTS6Widget");
  mangle_subobject_class_name(type, subobject);
  EXPECT_STREQ(subobject->source_corresp.internal_name, "__SO__6Widget");
}

TEST_F(a_name_mangling_test, substitutions_count_in_base_36)
{
  a_type *type = make_class("T");
  a_type *routine_type = make_routine_type(void_type());
  for (int i = 0; i < 40; i++, type = make_pointer_type(type))
    add_param_type(routine_type, alloc_param_type(type));
  add_param_type(routine_type, alloc_param_type(type));
  add_param_type(routine_type, alloc_param_type(type));
  a_routine *routine = make_routine("f", nullptr);
  routine->type = routine_type;
  std::string name = mangled(routine);
  EXPECT_EQ(name.substr(0, 14), "_Z1f1TPS_PS0_P");
  EXPECT_NE(name.find("PS9_PSA_"), std::string::npos);
  EXPECT_NE(name.find("PSZ_PS10_"), std::string::npos);
  EXPECT_EQ(name.substr(name.size() - 4), "S13_");
}

TEST_F(a_name_mangling_test, long_names_end_in_a_checksum)
{
  max_mangled_name_length = 24;
  a_routine *routine = make_routine("a_function_with_a_long_name", integer_type(ik_int));
  std::string name = mangled(routine);
  EXPECT_EQ(name.size(), 24u);
  EXPECT_EQ(name.substr(0, 16), "_Z27a_function__");
  EXPECT_TRUE(routine->source_corresp.name_was_truncated);

  final_name_mangling_needed = true;
  a_routine *later = make_routine("a_function_with_a_longer_name", integer_type(ik_int));
  EXPECT_STREQ(mangled(later), "_Z29a_function_with_a_longer_namei");
  EXPECT_TRUE(later->source_corresp.name_needs_final_check);
}

TEST_F(a_name_mangling_test, externalized_names_carry_the_module_id)
{
  set_module_id("_3_x_c_1");
  a_routine *routine = make_routine("f", integer_type(ik_int));
  mangle_function_name(routine);
  externalize_mangled_name(routine, false);
  EXPECT_STREQ(routine->source_corresp.internal_name, "_ZB8_3_x_c_11fi");
  externalize_mangled_name(routine, false);
  EXPECT_STREQ(routine->source_corresp.internal_name, "_ZB8_3_x_c_11fi");
  a_variable *variable = alloc_variable(sc_static);
  variable->source_corresp.name = "v";
  variable->type = integer_type(ik_int);
  externalize_mangled_name(variable, true);
  EXPECT_STREQ(variable->source_corresp.internal_name, "_ZB8_3_x_c_11v");
  set_module_id(nullptr);
}
