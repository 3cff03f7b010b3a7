// options: --version=1900
// proves: the special version has 24-bit products and floating point, but not the saturating products
int (*mpy24)(int, int) = _mpy24;
double (*mpyid)(int, int) = _mpyid;
int (*smpy)(int, int) = _smpy; // expect: error undefined_identifier
int (*dotp2)(int, int) = _dotp2; // expect: error undefined_identifier
