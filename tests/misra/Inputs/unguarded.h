extern int unguarded;
