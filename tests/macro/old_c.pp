

"abc" 'z' xyzw
foobar
1 <2>
foo 3
 # define not_in_column_one
"X" foo

1
