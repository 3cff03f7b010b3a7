// options: -@ no_such_file
// status: 4
// proves: an option file that can't be opened, with the system's reason
int x;
