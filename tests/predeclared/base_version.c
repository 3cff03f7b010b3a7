// proves: the lowest version has the basic intrinsics, and none of the classes above
int (*add2)(int, int) = _add2;
long (*lsadd)(int, long) = _lsadd;
int (*smpy)(int, int) = _smpy;
int (*mpy24)(int, int) = _mpy24; // expect: error undefined_identifier
double (*mpyid)(int, int) = _mpyid; // expect: error undefined_identifier
int (*dotp2)(int, int) = _dotp2; // expect: error undefined_identifier
