// option_tools.cpp - the tools of the chain, and the function for each option that a tool is given.
// Owns:    tool_cmd_map, tn_fileopt_map, passto_fn_table.
// Uses:    the rows of option_tools.def, Boost.Assign to fill the maps from them.
#include "options/option_tools.h"
#include <boost/assign/list_inserter.hpp>
#include <boost/assign/std/vector.hpp>
#include "options/option_diag.h"
#include "options/option_obj.h"

static constexpr class_id class_no_class = class_id(class_count);
static constexpr option_id opt_no_file = option_id(option_count);

static a_tool const tools[] = {
#define TOOL(tool, command, group, file_option) {#tool, command, class_##group, opt_##file_option},
#define PASSTO(tool, option, word)
#include "options/option_tools.def"
};

a_tool const *tool_of_command(char const *command)
{
  for (auto const &[name, its_command] : option_obj::tool_cmd_map) {
    if (its_command != command) continue;
    for (a_tool const &tool : tools) {
      if (tool.name == name) return &tool;
    }
  }
  return nullptr;
}

//-------------------------------------------------------------------------------------------------
// The functions.

// Adds the word with the argument in the place of "%s".
static void add_word(argv_list &argv, std::string word, char const *argument)
{
  size_t const at = word.find("%s");
  if (at != std::string::npos) word.replace(at, 2, argument);
  argv.add(std::move(word));
}

#define TOOL(tool, command, group, file_option)
#define PASSTO(tool, option, word)                                                                 \
  static void passto_##tool##_##option(argv_list &argv, char const *argument)                      \
  {                                                                                                \
    add_word(argv, word, argument);                                                                \
  }
#include "options/option_tools.def"

static constexpr int passto_count =
#define TOOL(tool, command, group, file_option)
#define PASSTO(tool, option, word) +1
#include "options/option_tools.def"
    ;
static_assert(passto_count == 237);

//-------------------------------------------------------------------------------------------------
// The maps.

static std::map<std::string, std::string> make_tool_commands()
{
  std::map<std::string, std::string> commands;
  boost::assign::insert(commands)
#define TOOL(tool, command, group, file_option) (#tool, command)
#define PASSTO(tool, option, word)
#include "options/option_tools.def"
      ;
  return commands;
}

static std::map<std::string, option_id> make_file_options()
{
  std::map<std::string, option_id> file_options;
  boost::assign::insert(file_options)
#define TOOL(tool, command, group, file_option) (#tool, opt_##file_option)
#define PASSTO(tool, option, word)
#include "options/option_tools.def"
      ;
  std::erase_if(file_options, [](auto const &entry) { return entry.second == opt_no_file; });
  return file_options;
}

struct a_passto_row {
  char const *tool;
  option_id option;
  a_passto_function function;

  a_passto_row(char const *its_tool, option_id its_option, a_passto_function its_function)
      : tool(its_tool), option(its_option), function(its_function)
  {
  }
};

static std::map<std::string, std::map<option_id, a_passto_function>> make_passto_functions()
{
  std::vector<a_passto_row> rows;
  boost::assign::push_back(rows)
#define TOOL(tool, command, group, file_option)
#define PASSTO(tool, option, word) (#tool, opt_##option, passto_##tool##_##option)
#include "options/option_tools.def"
      ;
  std::map<std::string, std::map<option_id, a_passto_function>> functions;
  for (a_passto_row const &row : rows) {
    boost::assign::insert(functions[row.tool])(row.option, row.function);
  }
  return functions;
}

std::map<std::string, std::string> option_obj::tool_cmd_map = make_tool_commands();
std::map<std::string, option_id> option_obj::tn_fileopt_map = make_file_options();
std::map<std::string, std::map<option_id, a_passto_function>> option_obj::passto_fn_table =
    make_passto_functions();

//-------------------------------------------------------------------------------------------------
// Files.

void option_obj::add_file(char const *tool, char const *file)
{
  auto const found = tn_fileopt_map.find(tool);
  if (found == tn_fileopt_map.end()) {
    report_optgen<DIAG::optgen_unknown_tool>({tool});
    return;
  }
  setopt(found->second, file);
}
