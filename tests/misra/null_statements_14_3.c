// options: --check_misra=14.3
// proves: a null statement stands alone in its line, but for comments
#define NOTHING
extern int next(void);
void f(int a)
{
  while (next())
    ;
  while (next()) ;   // expect: warning misra_c_2004_14_3
  while (next())
    ; // comment
  while (next())
    ; /* comment
         in two lines */
  /* before */ ;
  while (next()) /* a comment
     that ends here */ ;
  ; ;                // expect: warning misra_c_2004_14_3 expect: warning misra_c_2004_14_3
  NOTHING;           // expect: warning misra_c_2004_14_3
  ;// behind         // expect: warning misra_c_2004_14_3
  if (a == 1)
    ;
  else
    ; a = 2;         // expect: warning misra_c_2004_14_3
  a = 3;;            // expect: warning misra_c_2004_14_3
end:
  ;
  if (a == 3) goto end;
}
