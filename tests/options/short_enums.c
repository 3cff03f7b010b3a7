// options: --short_enums
// proves: --short_enums takes the smallest type in the GNU mode
enum small { A, B = 200 };
char size[sizeof(enum small) == 1 ? 1 : -1];
