

twothree
