// options: -n --gcc --remarks
// proves: lists of attributes and what they stand on
enum tint { red };
enum __attribute__((packed)) tint;  // expect: warning extended_modifier_ignored_on_enum
__attribute__((packed)) enum shade { dark };  // expect: warning attributes_with_no_decl
int twice(void) __attribute__((const, const));  // expect: remark attr_twice_in_group
int nonnull(int n) __attribute__((nonnull));  // expect: warning no_pointer_parameters
int bad1 __attribute__((3));  // expect: error exp_attribute_name
int bad2 __attribute__((aligned(4 4)));  // expect: error unbalanced_attribute_argument
__attribute__((unused));  // expect: warning unattached_attribute, expect: warning useless_decl
int __attribute__((unused));  // expect: warning attributes_with_no_decl, expect: warning useless_decl
