// options: -n
// proves: nested declarators build the type from the inside out (C99 6.7.5)
int *a[3], (*b)[3], *(*c[2])(int, ...), (*(*d)(void))[5];
void (*signal(int, void (*)(int)))(int);
typedef int row[4];
row matrix[2], *rows = matrix;
const row constant_row;
int takes(int array[10], int function(int), row r, const row *cr);
typedef char check_1[sizeof(a) == 3 * sizeof(int *) && sizeof(*b) == 3 * sizeof(int) ? 1 : -1];
typedef char check_2[sizeof(c) == 2 * sizeof(int *) && sizeof((*d)()[0]) == 5 * sizeof(int) ? 1 : -1];
typedef char check_3[sizeof(matrix) == 8 * sizeof(int) && sizeof(*rows) == 4 * sizeof(int) ? 1 : -1];
typedef char check_4[sizeof(int (*[2])(void)) == 2 * sizeof(int *) ? 1 : -1];
int use(void) { return takes(a[0], 0, matrix[1], &constant_row) + (*d)()[0][1]; }
