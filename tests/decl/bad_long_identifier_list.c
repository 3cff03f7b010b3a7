// proves: repeated, foreign and twice declared names of a long identifier list
int f(a, b, c, d, e, f0, g, h, i, j, k, l, m, n, o, p, q, a, r, q) // expect: error dupl_param_name, expect: error dupl_param_name
    int a, q;
    short z; // expect: error decl_should_be_of_param
    char h;
    int h;   // expect: error id_already_declared
{
    return a + q + h;
}
