

ab 1x ++ x
x(1)
.. .
