// options: -Done -Dtwo= -Dthree=3 -DX=1 -DX=2 -Uthree -U nothing -P
// proves: definitions and undefinitions act in their order; of two values the later one holds
one [two] three X
