

int from_dir;
int with_suffix;
int preincluded;
