// options: --align_structs=8
// proves: --align_structs is the least alignment of structures
struct s { char c; };
char size[sizeof(struct s) == 8 ? 1 : -1];
