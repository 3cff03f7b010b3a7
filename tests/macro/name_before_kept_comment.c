// options: -E -C
// proves: a name without call between comments that span lines puts each line out once
#define foo() bar
foo /* a
b */ + foo /*
*/
#define E
, foo
