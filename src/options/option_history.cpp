// option_history.cpp - the options in the order in which they came.
// Rule:    the history keeps everything; what was cleared or replaced since is passed to no tool.
// Entry:   add_to_history, clear_history, dump_history, add_opts_for_tool.
#include "options/option_diag.h"
#include "options/option_obj.h"
#include "options/option_tools.h"

static hist_argument history_form(an_argument_t const &argument, std::string text)
{
  hist_argument result;
  result.type = argument.type;
  if (argument.type != arg_string) result.number = argument.value.number;
  result.string = std::move(text);
  return result;
}

void option_obj::add_to_history(option_id id)
{
  if (!is_option(id)) return;
  a_history_entry entry{id, {}};
  switch (parm_type[id]) {
  case parm_none: break;
  case parm_text:
  case parm_number:
  case parm_word:
  case parm_list:
    // The newest one only: a list's earlier ones have entries of their own.
    if (arg_count[id]) {
      entry.arguments.push_back(
          history_form(args[id].back(), argument_text(id, unsigned(arg_count[id] - 1))));
    }
    break;
  default: report_optgen<DIAG::optgen_unhandled_history>({}, {unsigned(id)}); return;
  }
  // Only the arguments of a list add up; anything else is passed on as it was given last.
  if (parm_type[id] != parm_list) live_history[id] = unsigned(history.size());
  history.push_back(std::move(entry));
}

// The marks of what was cleared count entries, so those of the option are taken off them as well.
void option_obj::clear_history(option_id id)
{
  for (unsigned i = unsigned(history.size()); i-- > 0;) {
    if (history[i].option != id) continue;
    history.erase(history.begin() + i);
    for (unsigned &mark : live_history)
      mark -= i < mark;
  }
}

void option_obj::dump_history() const
{
  int number = 0;
  for (a_history_entry const &entry : history) {
    printf("%4d  %s", ++number, rot13(enum_to_optiontxt[entry.option]));
    for (hist_argument const &argument : entry.arguments)
      printf("=%s", argument.string.c_str());
    putchar('\n');
  }
}

// The words of an option that a tool takes as it stands.
static void pass_as_it_stands(argv_list &argv, option_id id, char const *argument)
{
  std::string word = option_obj::rot13(enum_to_optiontxt[id]);
  if (parm_type[id] != parm_none) word += std::string("=") + argument;
  argv.add(word);
}

void option_obj::add_opts_for_tool(argv_list &argv, char const *command)
{
  a_tool const *tool = tool_of_command(command);
  if (tool == nullptr) {
    report_optgen<DIAG::optgen_unknown_tool_command>({command});
    return;
  }
  std::map<option_id, a_passto_function> const &functions = passto_fn_table[tool->name];
  for (unsigned i = 0; i < history.size(); i++) {
    a_history_entry const &entry = history[i];
    if (i < live_history[entry.option]) continue;
    char const *argument = entry.arguments.empty() ? parameter_limits[entry.option].omitted
                                                   : entry.arguments[0].string.c_str();
    if (argument == nullptr) {
      if (parm_type[entry.option] != parm_none) continue; // set without what there is to say
      argument = "";
    }
    auto const found = functions.find(entry.option);
    if (found != functions.end()) {
      found->second(argv, argument);
    } else if (isclass(entry.option, tool->verbatim_class)) {
      pass_as_it_stands(argv, entry.option, argument);
    }
  }
}
