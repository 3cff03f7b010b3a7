// option_tools.h - the tools of the chain.
#pragma once
#include "options/option_ids.h"

struct a_tool {
  char const *name;
  char const *command;
  class_id    verbatim_class;  // its options go to the tool as they stand; class_count: none
  option_id   file_option;     // takes the tool's files; option_count: none
};

// The tool that a command starts; null if there is none.
a_tool const *tool_of_command(char const *command);
