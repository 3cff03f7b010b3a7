

read
