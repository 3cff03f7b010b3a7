

user 1
system 0
user 1
