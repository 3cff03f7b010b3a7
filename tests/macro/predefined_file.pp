

1 + 2 (x) ABSENT ABSENT2 1 []
5
