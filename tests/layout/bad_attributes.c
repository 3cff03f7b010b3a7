// options: -n --gcc
// proves: alignments that reduce and unions that cannot be transparent
struct __attribute__((aligned(2))) reduced { int n; };  // expect: warning alignment_reduction_ignored
struct field_reduced { int n __attribute__((aligned(1))); };  // expect: warning alignment_reduction_ignored
union none { } __attribute__((transparent_union));  // expect: warning transparent_attribute_ignored
union floating { float f; int i; } __attribute__((transparent_union));  // expect: error transparent_union_cannot_have_floating_first_field
union bits { int b : 3; int i; } __attribute__((transparent_union));  // expect: error transparent_union_cannot_have_bit_field_first
union small { char b; int i; } __attribute__((transparent_union));  // expect: warning union_cannot_be_transparent
struct not { int n; } __attribute__((transparent_union));  // expect: warning transparent_type_is_not_union
