

int a;
int last
