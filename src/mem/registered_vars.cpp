// registered_vars.cpp - the lists of variables that a translation unit or a precompiled header
// keeps.
#include "mem/registered_vars.h"
#include "mem/check.h"
#include "mem/mem_manage.h"
#include "mem/mem_private.h"

a_registered_variable *registered_variables;
size_t size_of_saved_variables;
a_pch_saved_variable *pch_saved_variable_tables[max_pch_saved_variable_tables];
int num_pch_saved_variable_tables;

static a_registered_variable **end_of_registered_variables = &registered_variables;

void f_register_trans_unit_variable(void *address, unsigned size, size_t field_offset)
{
  a_registered_variable *record =
      static_cast<a_registered_variable *>(alloc_general(sizeof(a_registered_variable)));
  *record = {nullptr, address, size, size_of_saved_variables, field_offset};
  size_of_saved_variables += round_up(size, HOST_ALIGNMENT_REQUIRED);
  *end_of_registered_variables = record;
  end_of_registered_variables = &record->next;
}

void register_pch_saved_variables(a_pch_saved_variable *table)
{
  check(num_pch_saved_variable_tables < max_pch_saved_variable_tables);
  pch_saved_variable_tables[num_pch_saved_variable_tables++] = table;
}
