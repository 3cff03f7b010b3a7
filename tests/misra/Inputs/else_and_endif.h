int in_group;
#else
int not_in_group;
#endif
#if 0
#else
#endif
