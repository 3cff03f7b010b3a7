// stack_limit.cpp - see stack_limit.h.
#include "mem/stack_limit.h"

#include "mem/mem_manage.h"

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
  mem_manage_hooks.program_too_large();
  __builtin_unreachable();
}
