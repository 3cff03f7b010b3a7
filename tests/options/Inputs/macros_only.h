#define ONLY_THE_MACRO 1
int not_this;
