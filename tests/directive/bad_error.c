// options: -E
// proves: #error ends the run and shows the rest of its line
// status: 4
one
#error   text  of /* the */ error   
two
