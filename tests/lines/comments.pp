

int a ; 
int 

  c; "/* in a string */" '//' x
y/ *z; a   b
