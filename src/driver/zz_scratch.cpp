#include <cstdlib>
#include "driver/host_envir.h"
const char *compilation_time_text()
{
  static char text[32];
  time_t now = time(nullptr);
  if (const char *e = getenv("SOURCE_DATE_EPOCH")) now = atol(e);
  return ctime_r(&now, text);
}
struct a_scope;
struct a_pending_pragma;
void clean_up_all_object_lifetimes(a_scope *) {}
bool il_lowering_needed() { return false; }
bool il_lowering_underway;
void do_all_name_mangling(bool) {}
void do_final_name_mangling() {}
void clear_parent_information() {}
void lower_il_memory_region(int) {}
void wrapup_namespace_scopes() {}
