// stack_limit.h - the end of the machine stack.  Every recursion that the input drives calls
// check_recursion first: too deep a nesting ends in a message, whatever the frames are made of.
#pragma once

extern char *lowest_stack_address; // written by set_stack_limit; null: not checked

// Called once by main: the stack may grow to `size` bytes below the caller's frame.
void set_stack_limit(unsigned long size);
// Ends the run with catastrophe 144.
[[noreturn]] void report_too_deep_nesting();

inline void check_recursion()
{
  if (__builtin_expect((char *)__builtin_frame_address(0) < lowest_stack_address, 0)) {
    report_too_deep_nesting();
  }
}
