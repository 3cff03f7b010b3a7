#include <cstdlib>
#include "driver/host_envir.h"
#define W __attribute__((weak))
W const char *compilation_time_text()
{
  static char text[32];
  time_t now = time(nullptr);
  if (const char *e = getenv("SOURCE_DATE_EPOCH")) now = atol(e);
  return ctime_r(&now, text);
}
struct a_scope;
W void clean_up_all_object_lifetimes(a_scope *) {}
W bool il_lowering_needed() { return false; }
W bool il_lowering_underway;
W void do_all_name_mangling(bool) {}
W void do_final_name_mangling() {}
W void clear_parent_information() {}
W void lower_il_memory_region(int) {}
W void wrapup_namespace_scopes() {}
