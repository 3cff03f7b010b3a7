// option_parse.cpp - parsing one option text by the trie of names.
// Owns:    the stack of parse frames.
// Uses:    option_trie and option_names, parse_arg (option_arguments.cpp).
// Rule:    a text that is no option ends in a longjmp to process_option.  No object with a
//          destructor may be alive between the two: walking keeps to plain values.
// Entry:   process_option, deprecated_case.
#include <csetjmp>
#include <cstring>
#include <string>
#include <strings.h>
#include "options/option_diag.h"
#include "options/option_obj.h"
#include "options/scramble.h"

//-------------------------------------------------------------------------------------------------
// Frames.  An option's action may parse further options, so they form a stack.

struct a_parse_frame {
  jmp_buf env;
  char const *volatile text; // what is left; where parsing stopped after a longjmp
  bool volatile used_up;
  a_parse_frame *below;
};
static a_parse_frame *parse_frames;

[[noreturn]] static void no_option(char const *where)
{
  parse_frames->text = where;
  longjmp(parse_frames->env, 1);
}

int option_obj::process_option(char const *text, char const **rest)
{
  if (text == nullptr) report_optgen<DIAG::optgen_null_pointer>({"text"});
  if (text == nullptr) return 0;
  a_parse_frame frame;
  frame.text = text;
  frame.used_up = false;
  frame.below = parse_frames;
  parse_frames = &frame;
  if (setjmp(frame.env) == 0) {
    while (*frame.text != '\0') {
      current_option = frame.text;
      frame.text = process_prefix(frame.text);
    }
    frame.used_up = true;
  }
  parse_frames = frame.below;
  if (rest != nullptr) *rest = frame.text;
  return frame.used_up;
}

//-------------------------------------------------------------------------------------------------
// The walk.

static a_trie_node const *child_with(a_trie_node const *node, char c)
{
  a_trie_node const *child = option_trie + node->first_child;
  for (unsigned i = 0; i < node->child_count; i++, child++) {
    if (trie_text(option_names[child->name])[node->depth] == scrambled(c)) return child;
  }
  return nullptr;
}

// The first place behind `depth` where the text differs from the prefix of the node.
static char const *end_of_match(a_trie_node const *node, char const *text, unsigned depth)
{
  char const *prefix = trie_text(option_names[node->name]);
  while (depth < node->depth && scrambled(text[depth]) == prefix[depth])
    depth++;
  return text + depth;
}

static bool is_letter(char c)
{
  char const lower = char(c | 0x20);
  return lower >= 'a' && lower <= 'z';
}

// The node of a first letter, of the same case if there is one.  A name of the linker counts behind
// run_linker only.
a_trie_node const *option_obj::first_node(char c) const
{
  for (char const form : {c, char(c ^ 0x20)}) {
    a_trie_node const *node = child_with(option_trie, form);
    if (node == nullptr) continue;
    bool const for_linker =
        node->terminal >= 0 && option_names[node->terminal].linker_only && node->child_count == 0;
    if (!for_linker || state[opt_run_linker]) return node;
  }
  return nullptr;
}

// Parses the option at the start of the text and returns what follows it.  A caller may have left
// the first dash of a long name in its place.
char const *option_obj::process_prefix(char const *text)
{
  if (text[0] == '-' && text[1] == '-') text++;
  if (*text < '-' || *text > 'z') no_option(text);
  a_trie_node const *node = is_letter(*text) ? first_node(*text) : child_with(option_trie, *text);
  if (node == nullptr) no_option(text);
  return walk_trie(node, text);
}

// Whether an option whose name has ended may be followed by c.  A short name is followed by its
// argument or by further letters, a long one by what separates the argument.
static bool may_follow(an_option_name const &name, char const *text, char c)
{
  if (text[0] != '-') return true;
  return parm_type[name.option] != parm_none && (c == '=' || c == ' ');
}

char const *option_obj::walk_trie(a_trie_node const *node, char const *text)
{
  char const *at = end_of_match(node, text, 1);
  if (at != text + node->depth) no_option(at);
  for (;;) {
    char const *behind = text + node->depth;
    a_trie_node const *next = *behind != '\0' ? child_with(node, *behind) : nullptr;
    at = next != nullptr ? end_of_match(next, text, node->depth) : behind;
    if (next != nullptr && at == text + next->depth) {
      node = next;
      continue;
    }
    if (node->terminal < 0) no_option(at);
    an_option_name const &name = option_names[node->terminal];
    if (*behind != '\0' && !may_follow(name, text, *behind)) no_option(at);
    return perform_action(name, text, behind);
  }
}

//-------------------------------------------------------------------------------------------------
// Actions.

void option_obj::deprecated_case(char const *text, char const *proper)
{
  if (strcmp(text, proper) != 0 && strcasecmp(text, proper) == 0) {
    report_optgen<DIAG::optgen_case_insensitivity_deprecated>({text, proper});
  }
}

static void check_case(an_option_name const &name, char const *text, char const *behind)
{
  std::string const proper = option_obj::rot13(name.text);
  std::string const given =
      proper.substr(0, name.text != trie_text(name)) + std::string(text, size_t(behind - text));
  option_obj::deprecated_case(given.c_str(), proper.c_str());
}

// The linker's short name for its output file is the old one of the optimization level, too.
static void check_output_name(std::string const &name, char const *argument)
{
  for (an_item const *item = option_definitions[opt_opt_level].item_list; item->text; item++) {
    if (strcmp(option_obj::rot13(item->text), argument) == 0) {
      report_optgen<DIAG::optgen_output_file_or_opt_level>(
          {name.c_str(), name.c_str(), argument, argument});
    }
  }
}

static void imply(option_obj &set, option_id id)
{
  for (an_implication const *row = implications; row->option != row->implied; row++) {
    if (row->option == id && !set.state[row->implied]) set.setopt_internal(row->implied);
  }
}

// What an option does once its name has been read; returns what follows the option.
char const *option_obj::perform_action(an_option_name const &name, char const *text,
                                       char const *behind)
{
  option_id const id = name.option;
  char const *after = parm_type[id] == parm_none ? behind : behind + strlen(behind);
  if (option_definitions[id].shell_only && state[opt_run_linker] && !merging) {
    report_optgen<DIAG::optgen_shell_option_behind_linker>({rot13(name.text)});
    return after;
  }
  check_case(name, text, behind);
  if (parm_type[id] != parm_none) {
    int const format_before = format[id];
    format[id] = name.format; // messages about the argument name the option so
    an_argument_t const argument =
        parse_arg(id, behind, rot13(option_definitions[id].parameter_name), parm_type[id],
                  &parameter_limits[id]);
    if (argument.type == arg_none) {
      format[id] = format_before;
      return after;
    }
    if (name.linker_only) check_output_name(option_name(id), argument.value.string);
    store_argument(id, argument);
  }
  parsed[id] = true;
  format[id] = name.format;
  raise_counts(id, "%s: Parsed option id %s/%d\n", name.format);
  conclude_setting(id);
  if (!merging) imply(*this, id);
  return after;
}
