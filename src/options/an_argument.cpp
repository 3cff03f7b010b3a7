// an_argument.cpp - arguments of options and their comparison.
#include "options/an_argument.h"
#include <cstring>
#include "options/tool_assert.h"

an_argument_t an_argument_t::of_number(long number)
{
  an_argument_t argument;
  argument.type = arg_signed;
  argument.value.number = number;
  return argument;
}

an_argument_t an_argument_t::of_unsigned(unsigned long number)
{
  an_argument_t argument;
  argument.type = arg_unsigned;
  argument.value.unsigned_number = number;
  return argument;
}

an_argument_t an_argument_t::of_string(char const *string)
{
  an_argument_t argument;
  argument.type = arg_string;
  argument.value.string = string;
  argument.length = strlen(string);
  return argument;
}

bool an_argument_t::operator==(an_argument_t const &rhs) const
{
  assert(type == rhs.type);
  switch (type) {
  case arg_signed: return value.number == rhs.value.number;
  case arg_unsigned: return value.unsigned_number == rhs.value.unsigned_number;
  case arg_string: return strcmp(value.string, rhs.value.string) == 0;
  default: return true;
  }
}

bool an_argument_t::operator>(an_argument_t const &rhs) const
{
  assert(type == rhs.type);
  switch (type) {
  case arg_signed: return value.number > rhs.value.number;
  case arg_unsigned: return value.unsigned_number > rhs.value.unsigned_number;
  case arg_string: return strcmp(value.string, rhs.value.string) > 0;
  default: return false;
  }
}
