// stack_limit.cpp - see stack_limit.h.
#include "mem/stack_limit.h"

#include "errors/error.h"

char *lowest_stack_address;

// What is left below the limit serves the message itself.
static constexpr unsigned long reserve = 4ul << 20;

void set_stack_limit(unsigned long size)
{
  lowest_stack_address = (char *)__builtin_frame_address(0) - size + reserve;
}

void report_too_deep_nesting()
{
  lowest_stack_address = nullptr;
  catastrophe(ec_program_too_large);
}
