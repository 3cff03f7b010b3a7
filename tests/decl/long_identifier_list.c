// proves: names of a long identifier list find their declarations, whatever the order
int printf(const char *, ...);

int sum(a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q, r, s, t)
    char t, *a;
    short b, s;
    double c;
    int d, e, f, g, h, i, j, k, l, m, n, o;
    long long p;
{
    return a[0] + b * 2 + (int)(c * 10) + d + e + f + g + h + i + j + k + l + m + n + o + (int)(p >> 32) + q + r + s * 3 + t;
}

int main(void)
{
    printf("%d\n", sum("A", 2, 0.5, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 7LL << 32, 100, 200, 300, 'z'));
    return 0;
}
