 
 
D
