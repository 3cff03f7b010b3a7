

"\"a\\n\" 'b' '\\'' \"\\\"\" L\"x\" a+b c d"
"spaced out" "" ""
"@ \n \"\\n\" \ '\\\\'"


"a b c"
"a b"
"" "a" "a , b,c , (d,e)"
