int a; /* open
