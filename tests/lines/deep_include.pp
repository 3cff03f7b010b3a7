

int before1;
int before2;
int before3;
int before4;
int before5;
int before6;
int before7;
int before8;
int before9;
int before10;
int before11;
int before12;
int after12 = 2;
int after11 = 3;
int after10 = 3;
int after9 = 3;
int after8 = 3;
int after7 = 3;
int after6 = 3;
int after5 = 3;
int after4 = 3;
int after3 = 3;
int after2 = 3;
int after1 = 3;
int after0 = 5;
int last;
