// option_export.cpp - options as words of a command line, as elements of XML, as pairs.
// Entry:   export_option, export_option_list, export_option_class, export_option_pairs, print.
#include "options/option_obj.h"
#include "options/option_xml.h"

static char const *text_of_word(an_item const *list, long value)
{
  for (; list->text != nullptr; list++) {
    if (list->value == value) return option_obj::rot13(list->text);
  }
  return "";
}

// An argument in the form in which a command line has it; empty if there is none of that index.
std::string option_obj::argument_text(option_id id, unsigned index) const
{
  if (index >= args[id].size()) return {};
  an_argument_t const &argument = args[id][index];
  if (argument.type == arg_string) return argument.value.string;
  if (parm_type[id] == parm_word) {
    return text_of_word(option_definitions[id].item_list, argument.value.number);
  }
  return std::to_string(argument.value.number);
}

// The main name is exported, whatever name the option came under: behind it any argument is safe.
// Without an argument that the option needs, or with a value that is no word, there is nothing to
// export, and nothing behind the character that callers skip.
char const *option_obj::export_option(option_id id, int index)
{
  export_text = " ";
  if (!is_option(id)) return export_text.c_str();
  std::string const argument = index >= 0 ? argument_text(id, unsigned(index)) : std::string();
  if (argument.empty() && parm_type[id] != parm_none && !option_definitions[id].optional) {
    return export_text.c_str();
  }
  export_text = rot13(option_definitions[id].name);
  if (!argument.empty()) export_text += '=' + argument;
  return export_text.c_str();
}

std::string option_obj::exported(int kind, option_id id, int index)
{
  switch (kind) {
  case export_xml: {
    bool const has_argument = index < arg_count[id];
    std::string const argument = argument_text(id, unsigned(index));
    return xml_option_setting(id, has_argument ? &argument : nullptr);
  }
  case export_internal: {
    std::string const argument = argument_text(id, unsigned(index));
    return internal_option_string(id) + (argument.empty() ? argument : '=' + argument);
  }
  default: return export_option(id, index);
  }
}

std::string option_obj::export_option_list(int kind)
{
  return export_option_class(kind, class_id(class_count));
}

// A class outside of the range stands for all options.
std::string option_obj::export_option_class(int kind, class_id group)
{
  char const separator = kind == export_command_line ? ' ' : '\n';
  std::string list;
  for (int i = 0; i < option_count; i++) {
    option_id const id = option_id(i);
    if (!state[id] || (group != class_count && !isclass(id, group))) continue;
    for (int index = 0; index == 0 || index < arg_count[id]; index++) {
      if (!list.empty()) list += separator;
      list += exported(kind, id, index);
    }
  }
  return list;
}

std::string option_obj::export_option_pairs(int kind, class_id group)
{
  std::string pairs;
  for (int i = 0; i < option_count; i++) {
    option_id const id = option_id(i);
    if (!state[id] || !isclass(id, group)) continue;
    for (int index = 0; index == 0 || index < arg_count[id]; index++) {
      pairs += kind == export_internal ? internal_option_string(id) : rot13(enum_to_optiontxt[id]);
      std::string const argument = argument_text(id, unsigned(index));
      pairs += '\t' + (kind == export_xml ? xml_text(argument) : argument) + '\n';
    }
  }
  return pairs;
}

void option_obj::print()
{
  for (int i = 0; i < option_count; i++) {
    option_id const id = option_id(i);
    if (!state[id]) continue;
    for (int index = 0; index == 0 || index < arg_count[id]; index++) {
      printf("%s\n", export_option(id, index));
    }
  }
}
