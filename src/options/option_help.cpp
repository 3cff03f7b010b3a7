// option_help.cpp - what a user or a developer is shown of the options, on standard output.
// Uses:    the texts of the definitions; the classes give the headings.
// Entry:   display_option_help, dump_class, dump_basic_class, dump, get_opt_txt.
#include <algorithm>
#include <cstring>
#include "options/option_diag.h"
#include "options/option_obj.h"
#include "options/option_xml.h"

static constexpr size_t most_name_text = 120; // of get_opt_txt, without the parameter
static constexpr int description_column = 36;

//-------------------------------------------------------------------------------------------------
// One option.

static bool is_same(char const *a, char const *b)
{
  return a != nullptr && b != nullptr && strcmp(a, b) == 0;
}

static void join_name(std::string &text, char const *name)
{
  if (name == nullptr || *name == '\0') return;
  size_t const comma = !text.empty();
  if (text.size() + comma + strlen(name) > most_name_text) return;
  if (comma) text += ',';
  text += name;
}

char *option_obj::get_opt_txt(char const *short_name, char const *const *names,
                              char const *long_name, char const *parameter, int optional)
{
  static std::string text;
  text.clear();
  join_name(text, long_name);
  if (!is_same(short_name, long_name)) join_name(text, short_name);
  for (; names != nullptr && *names != nullptr; names++) {
    if (!is_same(*names, long_name) && !is_same(*names, short_name)) join_name(text, *names);
  }
  if (parameter != nullptr && *parameter != '\0') {
    text += optional ? "[=" : "=";
    text += parameter;
    if (optional) text += ']';
  }
  return text.data();
}

static char *option_text(an_option_definition const &option)
{
  std::vector<std::string> plain;
  for (char const *const *name = option.other_names; *name != nullptr; name++) {
    plain.push_back(option_obj::rot13(*name));
  }
  std::vector<char const *> names;
  for (std::string const &name : plain)
    names.push_back(name.c_str());
  names.push_back(nullptr);
  return option_obj::get_opt_txt(nullptr, names.data(), option_obj::rot13(option.name),
                                 option_obj::rot13(option.parameter_name), option.optional);
}

static void show_more(an_option_definition const &option)
{
  char const *help = option_obj::rot13(option.help_text);
  if (*help != '\0') printf("%*s%s\n", description_column, "", help);
  if (!option.has_item_list) return;
  printf("%*s", description_column, "");
  for (an_item const *item = option.item_list; item->text != nullptr; item++) {
    printf("%s%s", item == option.item_list ? "" : ", ", option_obj::rot13(item->text));
  }
  putchar('\n');
}

static void show_option(option_id id, int detail)
{
  an_option_definition const &option = option_definitions[id];
  if (detail == 2) {
    printf("%s\n", xml_option_description(id).c_str());
    return;
  }
  char const *text = option_text(option);
  if (int(strlen(text)) + 4 <= description_column) {
    printf("  %-*s", description_column - 2, text);
  } else {
    printf("  %s\n%*s", text, description_column, "");
  }
  printf("%s\n", option_obj::rot13(option.description));
  if (detail == 1) show_more(option);
}

//-------------------------------------------------------------------------------------------------
// Many options.

// By the sort key, the highest first, then by name.
static bool comes_first(option_id a, option_id b)
{
  int const key_a = option_definitions[a].help_sort_key;
  int const key_b = option_definitions[b].help_sort_key;
  if (key_a != key_b) return key_a > key_b;
  return strcmp(option_obj::rot13(enum_to_optiontxt[a]), option_obj::rot13(enum_to_optiontxt[b])) <
         0;
}

static void show_options(std::vector<option_id> shown, class_id heading, int detail)
{
  std::erase_if(shown, [](option_id id) { return option_definitions[id].hidden != 0; });
  if (shown.empty()) return;
  std::sort(shown.begin(), shown.end(), comes_first);
  if (detail != 2) printf("\n%s:\n", option_obj::rot13(class_descriptions[heading]));
  for (option_id id : shown)
    show_option(id, detail);
}

static void show_class(class_id help_class, int detail)
{
  std::vector<option_id> shown;
  for (int id = 0; id < option_count; id++) {
    if (option_definitions[id].help_class == help_class) shown.push_back(option_id(id));
  }
  show_options(std::move(shown), help_class, detail);
}

void option_obj::dump_class(class_id help_class) const
{
  if (unsigned(help_class) < unsigned(class_count)) show_class(help_class, 0);
}

void option_obj::dump_basic_class() const
{
  std::vector<option_id> shown;
  for (int id = 0; id < option_count; id++) {
    if (isclass(option_id(id), class_basic)) shown.push_back(option_id(id));
  }
  show_options(std::move(shown), class_basic, 0);
}

// The option with that name, with or without its dashes; one outside of the range if there is none.
static option_id option_of_name(char const *name)
{
  for (int i = 0; i < option_name_count; i++) {
    char const *plain = option_obj::rot13(option_names[i].text);
    if (strcmp(plain, name) == 0 || strcmp(plain + strspn(plain, "-"), name) == 0) {
      return option_names[i].option;
    }
  }
  return option_id(option_count);
}

void option_obj::display_option_help(char const *name, int detail) const
{
  if (name != nullptr) {
    option_id const id = option_of_name(name);
    if (!is_option(id)) {
      report_optgen<DIAG::optgen_option_is_invalid>();
      return;
    }
    show_option(id, detail);
    return;
  }
  if (print_banner != nullptr) print_banner(stdout);
  if (detail != 2) printf("Usage: %s [options] files...\n", executable_name);
  for (int group = 0; group < class_count; group++)
    show_class(class_id(group), detail);
}

//-------------------------------------------------------------------------------------------------
// State.

void option_obj::dump(int all) const
{
  printf("options of %s\n", current_file);
  for (int i = 0; i < option_count; i++) {
    option_id const id = option_id(i);
    if (!all && !state[id]) continue;
    printf("%-40s state %d, changes %d%s", internal_option_string(id), state[id], change_count[id],
           parsed[id] ? ", parsed" : "");
    for (int index = 0; index < arg_count[id]; index++) {
      printf("%s%s", index ? "," : " = ", argument_text(id, unsigned(index)).c_str());
    }
    putchar('\n');
  }
}
