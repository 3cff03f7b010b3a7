// memory_fixture.h - regions for a test that needs them.
#pragma once
#include "mem/mem_manage.h"

// Fresh regions 0 and 1.  Buffers of the modules outlive a test, so their records are never
// cleared.
inline void open_regions()
{
  static bool is_initialised;
  if (!is_initialised) {
    mem_manage_early_init();
    mem_manage_one_time_init();
    is_initialised = true;
  }
  mem_manage_init();
}
