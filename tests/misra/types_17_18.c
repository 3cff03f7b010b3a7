// options: --gcc --check_misra=17.5,18
// proves: levels of pointers, incomplete structures, unions
typedef int *POINTER;
int **two;
int ***three;                         // expect: warning misra_c_2004_17_5
POINTER *two_by_typedef;
POINTER **three_by_typedef;           // expect: warning misra_c_2004_17_5
typedef POINTER **TRIPLE;             // expect: warning misra_c_2004_17_5
int **array_of_two[3];
int *(*pointer_to_array)[3];
int **(*function)(void);
int ***(*function_of_three)(void);    // expect: warning misra_c_2004_17_5
int **result(int *a[], int **b);
int ***result_of_three(int **a[]);    // expect: warning misra_c_2004_17_5 expect: warning misra_c_2004_17_5
struct s { int **member; int ***deep; }; // expect: warning misra_c_2004_17_5
union u { int a; float b; };          // expect: warning misra_c_2004_18_4
struct with_union {
  union { int a; float b; } part;     // expect: warning misra_c_2004_18_4
  union u *other;                     // expect: warning misra_c_2004_18_4
};
struct flexible { int n; int rest[]; }; // expect: warning misra_c_2004_18_1
struct opaque *handle;                // expect: warning misra_c_2004_18_1
struct completed *list;
struct completed { struct completed *next; };
