

1 [] x+y pq D 2 2
