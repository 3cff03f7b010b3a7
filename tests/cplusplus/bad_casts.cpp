// proves: what casts by keyword refuse
struct Plain { int x; };
struct Half;
struct More : Plain { int y; };
void casts(const int *constant, int *plain, Plain *object, double d, Half *half, int i)
{
  (void)static_cast<int *>(constant);        // expect: error cannot_cast_away_const
  (void)reinterpret_cast<char *>(constant);  // expect: error cannot_cast_away_const
  (void)const_cast<int>(i);                  // expect: error bad_const_cast_type
  (void)const_cast<char *>(plain);           // expect: error bad_const_cast
  (void)static_cast<char *>(plain);          // expect: error bad_cast
  (void)reinterpret_cast<float>(d);          // expect: error bad_cast
  (void)dynamic_cast<int *>(object);         // expect: error bad_dynamic_cast_type
  (void)dynamic_cast<Plain *>(half);         // expect: error bad_ptr_dynamic_cast_operand
  (void)dynamic_cast<Plain &>(i);            // expect: error bad_ref_dynamic_cast_operand
  (void)dynamic_cast<More *>(object);        // expect: error dynamic_cast_operand_must_be_polymorphic
  (void)int;                                 // expect: error type_identifier_not_allowed
  (void)static_cast<int &>(3);               // expect: error nonconst_ref_init_from_rvalue
}
