// options: --error_output=messages.txt
// proves: messages go to the file that was named
#warning one
