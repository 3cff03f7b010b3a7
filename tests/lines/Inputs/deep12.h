int before12;
int after12 = __LINE__;
