// options: --small-enum --pack_all_structs --long_precision_bits=32 --abi=eabi
// proves: --small-enum, --pack_all_structs and --long_precision_bits decide sizes
enum small { A };
struct s { char c; int i; };
char enum_size[sizeof(enum small) == 1 ? 1 : -1];
char packed_size[sizeof(struct s) == 5 ? 1 : -1];
char long_size[sizeof(long) == 4 ? 1 : -1];
