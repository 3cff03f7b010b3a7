

1 [] three 2
