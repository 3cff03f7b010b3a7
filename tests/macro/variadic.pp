

fprintf(stderr, "Flag");
fprintf(stderr, "X = %d\n", x);
puts("The first, second, and third items.");
((x>y)?puts("x>y"): printf("x is %d but y is %d", x, y));
printf("a"); printf("a",1); printf("a",1,2); printf("b"); printf("b"); printf("b",x y , z); f(a ); f(a ,1); f(a ,1,2); printf("c", ); printf("c", 1)
g(); g(1,2);
