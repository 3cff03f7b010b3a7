// options: --version=heron
// proves: the widest generation has everything but what only the special version has
int (*dotp2)(int, int) = _dotp2;
unsigned (*cmpyr)(unsigned, unsigned) = _cmpyr;
double (*mpyspdp)(float, double) = _mpyspdp;
long long (*dadd)(long long, long long) = _dadd;
long long (*mpyidll)(int, int) = _mpyidll;
int (*mpy24)(int, int) = _mpy24; // expect: error undefined_identifier
