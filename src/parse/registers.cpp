// registers.cpp - the register that an asm name means.
// Entry:   name_to_register, extasm_one_time_init.
#include <cstdlib>
#include <cstring>

#include "parse/func_def.h"

struct a_register_name {
  const char *name;
  unsigned char code;
};

static a_register_name register_names[] = {
#define REGISTER(code, name) {name, code},
#include "il/registers.def"
};
static constexpr int num_register_names = sizeof(register_names) / sizeof(register_names[0]);
static bool register_names_are_sorted;

static int compare_register_names(const void *a, const void *b)
{
  return strcmp(((const a_register_name *)a)->name, ((const a_register_name *)b)->name);
}

// Sorts the table by name.
void extasm_one_time_init()
{
  if (register_names_are_sorted) return;
  qsort(register_names, num_register_names, sizeof(a_register_name), compare_register_names);
  register_names_are_sorted = true;
}

int name_to_register(const char *name)
{
  extasm_one_time_init();
  if (*name == '%') ++name;
  int low = 0, high = num_register_names - 1;
  while (low <= high) {
    int middle = (low + high) / 2;
    int order = strcmp(name, register_names[middle].name);
    if (order == 0) return register_names[middle].code;
    if (order < 0)
      high = middle - 1;
    else
      low = middle + 1;
  }
  return register_unrecognized;
}
