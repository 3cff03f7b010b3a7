


bar


foo
x
foo  ()


bar end
bar bar 
foo

foo
() 
foo

foo
+ 

foo
  , 
foo
