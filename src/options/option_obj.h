// option_obj.h - a set of options of the tool chain: parsing, conflicts, history, merging, export.
#pragma once
#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>
#include "options/an_argument.h"
#include "options/argv_list.h"
#include "options/option_tables.h"

// An argument as it was when the option came.
struct hist_argument {
  int         type = arg_none;
  long        number = 0;
  std::string string;
};

// One option in the order of arrival.
struct a_history_entry {
  option_id                  option;
  std::vector<hist_argument> arguments;  // empty or one
};

// Adds the words for one option to the command of one tool; `argument` is the plain text of the
// argument, empty for an option without one.
using a_passto_function = void (*)(argv_list &argv, char const *argument);

// Forms in which options are exported.
enum an_export_kind : int {
  export_command_line,  // words of a command line
  export_xml,           // elements
  export_internal       // internal names
};

// Messages are those of optgen_messages.def.  Ids outside of the tables have no state: an operation
// on one does nothing, and a query gives 0 or null.
class option_obj {
public:
  // --- State, for callers to read.
  int                        debug = 0;               // print each change to standard output
  int                        state[option_count];         // how often it was set; 0: not set
  int                        change_count[option_count];
  int                        format[option_count];        // index of the name that was used
  bool                       parsed[option_count];        // it came as a text
  int                        arg_count[option_count];
  std::vector<an_argument_t> args[option_count];          // strings are owned
  char const                *current_option = nullptr;    // the text being parsed, the caller's
  char const                *current_file;                // whose options these are; not owned
  std::vector<std::pair<option_id, std::string>> file_options;
  bool                       merging = false;             // conflicts aren't looked for

  // An empty set, or one of the defaults.
  explicit option_obj(bool set_defaults = false);
  ~option_obj();
  option_obj(option_obj const &) = delete;
  option_obj &operator=(option_obj const &) = delete;

  void debug_level(int level);

  // --- Parsing.  Parses one word, of which the first dash is left out (that of a long name may
  // stay): "-name" or "-name=argument" for a long name, one letter or several ("gk", "Dname") else,
  // "@file".  1 if all of it was used up; else 0, with *rest (if rest isn't null) where parsing
  // stopped.  An option file is noted, and read by process_words only.
  int process_option(char const *text, char const **rest);
  // A whole command line without the name of the program: options, option files, names of source
  // files, which are taken by their suffixes.  An unknown option is fatal.  check_settings runs at
  // the end.
  void process_words(int count, char const *const *words);
  // The words of an option file.  An unknown option there is an error at its line.
  void process_option_file(char const *name);
  // Reports what the options in force can't be together.
  void check_settings();

  // The argument in `text`, which stands behind the option's name.  arg_none if it is bad, and that
  // has been reported.  A string points into `text`.
  an_argument_t parse_arg(option_id id, char const *text, char const *parameter_name, int kind,
                          a_parameter_limits const *limits);
  // The row of a word; null, reported, if the option has no such word.
  an_item const *parse_oneof(option_id id, char const *word);
  // False, reported, if the text isn't a number within the limits.  What follows the number is
  // reported as garbage.
  bool check_numerical_arg(option_id id, char const *text, a_parameter_limits const *limits,
                           long *value);
  // Reports if the two differ in case only.
  static void deprecated_case(char const *text, char const *proper);

  // 16, 10 or 8, by prefix or trailing letter; *digits and *behind get the digits and what follows.
  static int get_radix(char const *text, char const **digits, char const **behind);
  // The value, saturated; *rest, if rest isn't null, is what follows, `text` if there is no number.
  static long strtol_by_radix(char const *text, char const **rest);
  static long strtol_by_radix(char const *digits, int radix, bool negative);

  // --- Setting and clearing.  A string is copied.
  void setopt(option_id id);
  void setopt(option_id id, char const *argument);
  void setopt(option_id id, long argument);
  void setopt(class_id group);
  void setopt_internal(option_id id);  // not noted in the history
  void setarg(option_id id, char const *argument);
  void setarg(option_id id, long argument);
  void clearopt(option_id id);
  void clearopt(class_id group);
  void clearclassmembers(class_id group);

  // --- Queries.
  static bool isclass(option_id id, class_id group);
  int testclass(class_id group) const;  // the number of members that are set
  int getargcount(option_id id) const;
  long getnumarg(option_id id, unsigned index) const;
  char const *getstrarg(option_id id, unsigned index) const;  // owned by the set
  // The last argument, arg_none if there is none; false then.  A string is owned by the set.
  bool get_argument(option_id id, an_argument_t *argument) const;
  // It has arguments, and all are in the list (ended by a null).
  bool args_match_list(option_id id, char const *const *list) const;
  bool parsed_option(option_id id) const;
  int format_of_option(option_id id) const;
  static std::vector<class_id> class_list_for_option(option_id id);
  static char const *internal_option_string(option_id id);  // as rot13 gives it
  char const *option_name(option_id id) const;              // as it was given, with its dashes

  // --- Conflicts.
  void do_conflicts(option_id id);
  void do_merge_conflicts(option_id id, option_obj &other);

  // --- History.
  void add_to_history(option_id id);
  void clear_history(option_id id);
  void dump_history() const;

  // --- Merging.
  void merge_init(option_obj &first);
  void merge_options(option_obj &other);
  void merge_policy_none(option_id id, option_obj &other);
  void merge_policy_main(option_id id, option_obj &other);
  void merge_policy_or(option_id id, option_obj &other);
  void merge_policy_and(option_id id, option_obj &other);
  void merge_policy_min(option_id id, option_obj &other);
  void merge_policy_max(option_id id, option_obj &other);
  void merge_policy_exact(option_id id, option_obj &other);
  void merge_policy_exact_notset(option_id id, option_obj &other);
  // True: the work on this option is done.
  bool mutex_merge_override_C_Dialect(option_id id, option_obj &other);
  bool mutex_merge_override_Quiet_Level(option_id id, option_obj &other);
  bool mutex_merge_override_Language_mode(option_id id, option_obj &other);
  bool mutex_merge_override_Debugging_model(option_id id, option_obj &other);
  bool mutex_merge_override_Source_interlist(option_id id, option_obj &other);
  bool mutex_merge_override_Cplusplus_Dialect(option_id id, option_obj &other);
  bool mutex_merge_override_Function_Subsections(option_id id, option_obj &other);
  bool mutex_merge_override_Preprocessor_Analysis_Options(option_id id, option_obj &other);

  // --- Export.  The option in its command-line form with the argument of that index; callers skip
  // the first character, and process_option takes the rest.  Owned by the set, until the next call.
  char const *export_option(option_id id, int index);
  // All options that are set, or those of a class; separated by blanks in a command line, else each
  // on a line.
  std::string export_option_list(int kind);
  std::string export_option_class(int kind, class_id group);
  // The same as pairs of name and argument, each on a line with a tab between them.
  std::string export_option_pairs(int kind, class_id group);
  // The words for the tool with this command, in the order in which the options came.
  void add_opts_for_tool(argv_list &argv, char const *command);
  // Takes a file for a tool.
  void add_file(char const *tool, char const *file);

  // --- Help and debugging, on standard output.
  // The option of that name (dashes may be left out), or all if it is null.  An unknown name is
  // reported.  detail: 0 one line each, 1 with parameters and words, 2 in XML.
  void display_option_help(char const *name, int detail) const;
  void dump(int all) const;  // the state of options that are set, or of all
  void dump_class(class_id help_class) const;
  void dump_basic_class() const;
  void print();  // the options that are set, in their command-line form
  // "long_name,names...=parameter" in a static buffer.  Any of the names may be null.
  static char *get_opt_txt(char const *short_name, char const *const *names, char const *long_name,
                           char const *parameter, int optional);

  // The plain form of a scrambled text and the reverse.  Valid until the fifth call after.
  static char const *rot13(char const *text);

  // --- Class-wide.
  static std::map<std::string, std::string>                              tool_cmd_map;
  static std::map<std::string, option_id>                                tn_fileopt_map;
  static std::map<std::string, std::map<option_id, a_passto_function>>   passto_fn_table;
  // The next word, for a parameter that doesn't stand in the option's own word; null at the end.
  inline static char const *(*next_arg)() = nullptr;
  inline static char const *executable_name = "rvcl";
  inline static void (*print_banner)(FILE *) = nullptr;  // shown ahead of the help
  inline static int merge_main_count = 0;                // how often merge_policy_main ran

private:
  std::vector<a_history_entry> history;
  unsigned    live_history[option_count];  // an option's entries below it are out of force
  std::string export_text;

  char const *process_prefix(char const *text);
  char const *walk_trie(a_trie_node const *node, char const *text);
  a_trie_node const *first_node(char c) const;
  char const *perform_action(an_option_name const &name, char const *text, char const *behind);
  void report_numerical_arg(option_id id, char const *text, a_parameter_limits const *limits);
  void process_word_list(struct a_word_list_in_use &words);
  void add_source_file(char const *name);

  void raise_counts(option_id id, char const *format_of_message, int value);
  void conclude_setting(option_id id);
  bool argument_of(option_id id, char const *text, an_argument_t *argument);
  void store_argument(option_id id, an_argument_t argument);
  void append_argument(option_id id, an_argument_t argument);
  void free_arguments(option_id id);
  void clear_other(option_id other);

  void take_option(option_id id, option_obj &other);
  int compare_with(option_id id, option_obj const &other) const;
  void merge_exact(option_id id, option_obj &other, bool unset_agrees);
  bool mutex_merge_override(class_id group, option_id id, option_obj &other);

  void check_combinations();
  void check_values();
  void check_silicon();

  std::string argument_text(option_id id, unsigned index) const;
  std::string exported(int kind, option_id id, int index);
};

// The name of an option by its format, and whether an id stands in the tables.
char const *option_name_text(option_id id, int format);
inline bool is_option(option_id id)
{
  return unsigned(id) < unsigned(option_count);
}
