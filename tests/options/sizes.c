// options: --enum_is_int --pack_alignment=2 --gcc
// proves: --enum_is_int and --pack_alignment decide sizes
enum small { A };
struct s { char c; int i; };
char enum_size[sizeof(enum small) == sizeof(int) ? 1 : -1];
char packed_size[sizeof(struct s) == 6 ? 1 : -1];
char long_size[sizeof(long) == 8 ? 1 : -1];
