// option_obj.cpp - a set of options: its state, setting and clearing, queries.
// Owns:    the state of an option_obj, the buffers of rot13.
// Uses:    the tables (option_tables.h), the messages (option_diag.h).
// Rule:    each change of an option's state goes through raise_counts or clearopt.
// Entry:   option_obj, setopt, setopt_internal, setarg, clearopt and the queries.
#include "options/option_obj.h"
#include <cstring>
#include "options/option_diag.h"
#include "options/scramble.h"
#include "options/tool_assert.h"

static char const debug_tag[] = "ansi option debug";
static char const internal_file_name[] = "<internal>";

//-------------------------------------------------------------------------------------------------
// Texts of the tables.

char const *option_obj::rot13(char const *text)
{
  static std::vector<char> buffers[5];
  static unsigned last_buffer;
  if (text == nullptr) return "";
  size_t const length = strlen(text);
  last_buffer = (last_buffer + 1) % std::size(buffers);
  std::vector<char> &buffer = buffers[last_buffer];
  if (buffer.size() <= length) buffer.resize(length + 80);
  buffer[length] = '\0';
  for (size_t i = length; i-- > 0;)
    buffer[i] = scrambled(text[i]);
  return buffer.data();
}

char const *option_name_text(option_id id, int format)
{
  an_option_definition const *opt = is_option(id) ? &option_definitions[id] : nullptr;
  assert(opt != __null);
  return option_obj::rot13(format == 0 ? opt->name : opt->other_names[format - 1]);
}

char const *option_obj::option_name(option_id id) const
{
  return option_name_text(id, is_option(id) ? format[id] : 0);
}

char const *option_obj::internal_option_string(option_id id)
{
  return is_option(id) ? rot13(enum_to_enumtxt[id]) : nullptr;
}

//-------------------------------------------------------------------------------------------------
// Life.

option_obj::option_obj(bool set_defaults)
    : state{}, change_count{}, format{}, parsed{}, arg_count{},
      current_file(internal_file_name), live_history{}
{
  if (!set_defaults) return;
  for (a_default_word const *row = default_words; row->word != nullptr; row++) {
    an_item const *item = parse_oneof(row->option, row->word);
    assert(item != __null);
    setopt(row->option, item->value);
  }
}

option_obj::~option_obj()
{
  for (int id = 0; id < option_count; id++)
    free_arguments(option_id(id));
}

void option_obj::debug_level(int level)
{
  debug = level;
}

//-------------------------------------------------------------------------------------------------
// Arguments.

void option_obj::free_arguments(option_id id)
{
  if (parm_type[id] == parm_text || parm_type[id] == parm_list) {
    for (an_argument_t &argument : args[id])
      delete[] argument.value.string;
  }
  args[id].clear();
  arg_count[id] = 0;
}

static an_argument_t with_own_string(an_argument_t argument)
{
  char *copy = new char[argument.length + 1];
  memcpy(copy, argument.value.string, argument.length + 1);
  argument.value.string = copy;
  return argument;
}

// The lists among the file specifiers name files.
static bool is_file_option(option_id id)
{
  return parm_type[id] == parm_list && option_definitions[id].help_class == class_file_specifiers;
}

void option_obj::append_argument(option_id id, an_argument_t argument)
{
  if (parm_type[id] != parm_list) report_optgen<DIAG::optgen_not_a_list>({}, {unsigned(id)});
  args[id].push_back(argument);
  if (is_file_option(id)) file_options.emplace_back(id, argument.value.string);
}

// Keeps an argument of the option's kind; of a string, a copy.
void option_obj::store_argument(option_id id, an_argument_t argument)
{
  // Copied first, since it may be one of those that are freed.
  if (argument.type == arg_string) argument = with_own_string(argument);
  switch (parm_type[id]) {
  case parm_text:
  case parm_number:
  case parm_word:
    free_arguments(id);
    args[id].push_back(argument);
    break;
  case parm_list: append_argument(id, argument); break;
  default: report_optgen<DIAG::optgen_unhandled_setarg>({}, {unsigned(id)});
  }
  arg_count[id] = int(args[id].size());
}

// The argument that a text stands for; false, reported, if it is none for this option.
bool option_obj::argument_of(option_id id, char const *text, an_argument_t *argument)
{
  if (text == nullptr) report_optgen<DIAG::optgen_null_pointer>({"argument"});
  if (text == nullptr) return false;
  switch (parm_type[id]) {
  case parm_text:
  case parm_list: *argument = an_argument_t::of_string(text); return true;
  case parm_number: {
    long value;
    if (!check_numerical_arg(id, text, &parameter_limits[id], &value)) return false;
    *argument = an_argument_t::of_number(value);
    return true;
  }
  case parm_word: {
    an_item const *item = parse_oneof(id, text);
    if (item != nullptr) *argument = an_argument_t::of_number(item->value);
    return item != nullptr;
  }
  default: report_optgen<DIAG::optgen_unhandled_setarg>({}, {unsigned(id)}); return false;
  }
}

//-------------------------------------------------------------------------------------------------
// Setting.

void option_obj::raise_counts(option_id id, char const *format_of_message, int value)
{
  state[id]++;
  change_count[id]++;
  if (debug) printf(format_of_message, debug_tag, internal_option_string(id), value);
}

static char const set_message[] = "%s: Set    option id %s to state %d\n";

void option_obj::conclude_setting(option_id id)
{
  if (!merging) do_conflicts(id);
  add_to_history(id);
}

void option_obj::setopt(option_id id)
{
  if (!is_option(id)) return;
  raise_counts(id, set_message, state[id] + 1);
  conclude_setting(id);
}

void option_obj::setopt_internal(option_id id)
{
  if (!is_option(id)) return;
  raise_counts(id, set_message, state[id] + 1);
  if (!merging) do_conflicts(id);
}

void option_obj::setopt(option_id id, char const *argument)
{
  int const before = is_option(id) ? state[id] : 0;
  setarg(id, argument);
  if (is_option(id) && state[id] != before) conclude_setting(id);
}

void option_obj::setopt(option_id id, long argument)
{
  int const before = is_option(id) ? state[id] : 0;
  setarg(id, argument);
  if (is_option(id) && state[id] != before) conclude_setting(id);
}

void option_obj::setopt(class_id group)
{
  for (int id = 0; id < option_count; id++) {
    if (isclass(option_id(id), group)) setopt(option_id(id));
  }
}

void option_obj::setarg(option_id id, char const *argument)
{
  an_argument_t stored;
  if (!is_option(id) || !argument_of(id, argument, &stored)) return;
  store_argument(id, stored);
  raise_counts(id, set_message, state[id] + 1);
}

void option_obj::setarg(option_id id, long argument)
{
  if (!is_option(id)) return;
  if (parm_type[id] != parm_number && parm_type[id] != parm_word) {
    report_optgen<DIAG::optgen_unhandled_setarg>({}, {unsigned(id)});
    return;
  }
  store_argument(id, an_argument_t::of_number(argument));
  raise_counts(id, set_message, state[id] + 1);
}

//-------------------------------------------------------------------------------------------------
// Clearing.

void option_obj::clearopt(option_id id)
{
  if (!is_option(id) || option_definitions[id].persistent) return;
  change_count[id]++;
  state[id] = 0;
  free_arguments(id);
  std::erase_if(file_options, [id](auto const &entry) { return entry.first == id; });
  live_history[id] = unsigned(history.size());
  if (debug) {
    printf("%s: Clear  option id %s to state 0\n", debug_tag, internal_option_string(id));
  }
}

void option_obj::clearclassmembers(class_id group)
{
  for (int id = 0; id < option_count; id++) {
    if (isclass(option_id(id), group)) clearopt(option_id(id));
  }
}

void option_obj::clearopt(class_id group)
{
  clearclassmembers(group);
}

//-------------------------------------------------------------------------------------------------
// Queries.

bool option_obj::isclass(option_id id, class_id group)
{
  return is_option(id) && unsigned(group) < unsigned(class_count) && classes[id][group];
}

int option_obj::testclass(class_id group) const
{
  int count = 0;
  for (int id = 0; id < option_count; id++)
    count += state[id] && isclass(option_id(id), group);
  return count;
}

std::vector<class_id> option_obj::class_list_for_option(option_id id)
{
  std::vector<class_id> list;
  for (int group = 0; group < class_count; group++) {
    if (isclass(id, class_id(group))) list.push_back(class_id(group));
  }
  return list;
}

int option_obj::getargcount(option_id id) const
{
  return is_option(id) ? arg_count[id] : 0;
}

long option_obj::getnumarg(option_id id, unsigned index) const
{
  if (index >= unsigned(getargcount(id)) || args[id][index].type == arg_string) return 0;
  return args[id][index].value.number;
}

char const *option_obj::getstrarg(option_id id, unsigned index) const
{
  if (index >= unsigned(getargcount(id)) || args[id][index].type != arg_string) return nullptr;
  return args[id][index].value.string;
}

bool option_obj::get_argument(option_id id, an_argument_t *argument) const
{
  if (argument == nullptr) report_optgen<DIAG::optgen_null_pointer>({"argument"});
  if (argument == nullptr) return false;
  *argument = {};
  if (!is_option(id)) return false;
  switch (parm_type[id]) {
  case parm_none: return false;
  case parm_text:
  case parm_number:
  case parm_word:
  case parm_list: break;
  default: report_optgen<DIAG::optgen_bad_parm_type>(); return false;
  }
  if (arg_count[id] == 0) return false;
  *argument = args[id].back();
  return true;
}

static bool is_in_list(std::string const &text, char const *const *list)
{
  for (; *list != nullptr; list++) {
    if (text == *list) return true;
  }
  return false;
}

bool option_obj::args_match_list(option_id id, char const *const *list) const
{
  for (int i = 0; i < getargcount(id); i++) {
    if (!is_in_list(argument_text(id, unsigned(i)), list)) return false;
  }
  return getargcount(id) != 0;
}

bool option_obj::parsed_option(option_id id) const
{
  return is_option(id) && parsed[id];
}

int option_obj::format_of_option(option_id id) const
{
  return is_option(id) ? format[id] : 0;
}
