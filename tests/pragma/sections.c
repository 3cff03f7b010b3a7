// proves: sections reach the generated file as a pragma and an attribute; a stretch's section yields to the entity's own
extern int table[];
#pragma DATA_SECTION(early, ".early")  // stands in front of the declaration
int early;
static int late = 3;
#pragma DATA_SECTION(late, ".la" "te");
#pragma CODE_SECTION(f, "code_a")

#pragma SET_DATA_SECTION(".block")
int in_block = 1, own;
int table[2] = {1, 2};                 // declared before: the definition is placed
#pragma DATA_SECTION(own, ".own")
int by_attribute __attribute__((section(".attr")));
static int count(void)
{
  static int calls = 7;                // lives as long as the program: placed
  int local = calls++;                 // is not
  return local;
}
#pragma SET_DATA_SECTION()
int behind;
#pragma SET_CODE_SECTION("code_b")
int f(void) { return late + count(); } // its own section stays
int g(void) { return f(); }
#pragma SET_CODE_SECTION()
int h(void) { return g(); }
