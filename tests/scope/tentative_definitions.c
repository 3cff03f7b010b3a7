// options: -r
// proves: what the end of the file makes of objects that nothing completed
int open_array[];                    // expect: remark array_size_one_assumed
extern int declared_elsewhere[];
int completed_later[];
int completed_later[3];
struct never;
struct never never_completed;        // expect: error var_retained_incomp_type
struct later later_completed;
struct later { int member; };
const int no_value;                  // expect: remark has_no_initializer_on_const
