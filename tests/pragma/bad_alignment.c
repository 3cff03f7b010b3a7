// options: -n
// proves: alignments that are none, and alignment of what can't have it
int x, aligned __attribute__((aligned(16))); extern int ex; int f(); struct unknown; enum e { A };
short half; int word;
#pragma DATA_ALIGN(x, 3)                       // expect: warning pragma_icon_not_pow2
#pragma DATA_ALIGN(x, 0)                       // expect: warning pragma_icon_not_pow2
#pragma DATA_ALIGN(x, -8)                      // expect: warning pragma_icon_not_pow2
#pragma DATA_ALIGN(x, 0x40000000)              // expect: warning pragma_alignment_too_large
#pragma DATA_ALIGN(x, 0x8000000000000000ULL)   // expect: warning pragma_alignment_too_large
#pragma DATA_ALIGN(x, 99999999999999999999999) // expect: error integer_too_large
#pragma DATA_ALIGN(x, x)                       // expect: error expr_not_constant
#pragma DATA_ALIGN(x, )                        // expect: error exp_primary_expr
#pragma DATA_ALIGN(x)                          // expect: error exp_comma
#pragma DATA_ALIGN(ex, 8)                      // expect: warning pragma_requires_level_zero_def
#pragma DATA_ALIGN(f, 8)                       // expect: warning pragma_requires_level_zero_def
#pragma DATA_ALIGN(nowhere, 8)                 // expect: warning pragma_requires_file_level
#pragma DATA_MEM_BANK(word, 8)                 // expect: error pragma_not_mem_bank
#pragma DATA_MEM_BANK(word, -1)                // expect: error pragma_not_mem_bank
#pragma DATA_MEM_BANK(word, 9223372036854775808ULL) // expect: error integer_too_large
#pragma DATA_MEM_BANK(f, 1)                    // expect: warning bad_membank_symbol
#pragma DATA_MEM_BANK(aligned, 2)              // expect: warning bad_membank_align_use
#pragma DATA_MEM_BANK(half, 3)                 // expect: warning even_bank_boundary
#pragma DATA_ALIGN(half, 8)                    // expect: warning bad_membank_align_use
#pragma STRUCT_ALIGN(unknown, 8)               // expect: warning pragma_requires_struct_def
#pragma STRUCT_ALIGN(struct nowhere, 8)        // expect: warning pragma_requires_struct_def
#pragma STRUCT_ALIGN(x, 8)                     // expect: warning pragma_requires_struct_def
#pragma STRUCT_ALIGN(e, 8)                     // expect: warning pragma_requires_struct_def
#pragma STRUCT_ALIGN(int, 8)                   // expect: warning pragma_requires_struct_def
#pragma STRUCT_ALIGN                           // expect: error exp_lparen
void g(void)
{
  int local = 1;
  struct inner { char c; } v;                  // expect: warning declared_but_not_referenced
#pragma STRUCT_ALIGN(inner, 3)                 // expect: warning pragma_icon_not_pow2
#pragma DATA_ALIGN(local, 8)                   // expect: warning pragma_requires_level_zero_def
  f(local);
}
