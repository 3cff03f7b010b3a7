// options: -n
// proves: what the pack pragma refuses
#pragma pack(3)            // expect: warning bad_pack_alignment
struct s { char c; int i; };
typedef char check_1[sizeof(struct s) == 8 ? 1 : -1];
#pragma pack(pop)          // expect: warning empty_pack_alignment_stack
#pragma pack(push, a, 1)
#pragma pack(pop, b)       // expect: warning not_found_on_pack_alignment_stack
#pragma pack 1             // expect: warning exp_lparen
#pragma pack(x)            // expect: warning exp_int_constant
#pragma pack(8)
#pragma pack(show)         // expect: warning value_of_pragma_pack_show
#pragma pack(0)
#pragma pack(show)         // expect: warning value_of_pragma_pack_show
