// option_tables.h - the tables of the options, which the compiler makes from the .def files.
// All texts are scrambled: option_obj::rot13 makes them plain.  A text that an option lacks is
// null.
#pragma once
#include <array>
#include "options/option_ids.h"

class option_obj;

// A word of a list and its value; a null text ends the list.
struct an_item {
  char const *text;
  long        value;
};

constexpr int max_other_names = 22;

struct an_option_definition {
  char const    *name;                              // with its dashes
  char const    *other_names[max_other_names + 1];  // ended by a null
  char const    *description;
  bool           has_item_list;                     // the help shows the words
  char const    *parameter_name;
  char const    *help_text;                         // about the parameter
  unsigned char  hidden;                            // not shown by the help
  unsigned char  optional;                          // the parameter may be left out
  unsigned char  persistent;                        // can't be cleared
  unsigned char  shell_only;                        // refused behind run_linker
  class_id       help_class;                        // under which the help shows it
  an_item const *item_list;                         // the words of a parm_word
  int            help_sort_key;                     // the highest stands first
};

// The numbers that a parm_number may be, and the text (plain) that stands for a parameter left out.
struct a_parameter_limits {
  long        low  = 0;
  long        high = 2147483647;
  char const *omitted = nullptr;
};

using a_merge_policy   = void (option_obj::*)(option_id, option_obj &other);
using a_mutex_override = bool (option_obj::*)(option_id, option_obj &other);

extern an_option_definition const option_definitions[option_count];
extern unsigned char const        parm_type[option_count];  // a_parm_kind


template <class Element>
using a_table_by_option = std::array<Element, option_count>;
using a_class_matrix    = a_table_by_option<std::array<unsigned char, class_count>>;
using a_conflict_matrix = a_table_by_option<a_table_by_option<unsigned char>>;

// 1 if the option is a member of the class.
extern a_class_matrix const                       classes;
extern std::array<char const *, class_count> const class_descriptions;

// [option][one that was set before]: an a_conflict_kind.  In the second matrix the other option is
// of another set.
extern a_conflict_matrix const conflicts;
extern a_conflict_matrix const merge_conflicts;

extern a_table_by_option<a_parameter_limits> const parameter_limits;

// Functions or null.
extern a_table_by_option<a_merge_policy> const   merge_policy_functions;
extern a_table_by_option<a_mutex_override> const mutex_merge_override_functions;

extern a_table_by_option<char const *> const enum_to_enumtxt;    // internal names
extern a_table_by_option<char const *> const enum_to_optiontxt;  // main names
// The beginning of an option's element in XML, up to its further names and words.
extern a_table_by_option<char const *> const xml_option_def;

// An option that is set with another when that one is parsed.
struct an_implication {
  option_id option, implied;
};
// A word that an option has in an object that is made with defaults (plain).
struct a_default_word {
  option_id   option;
  char const *word;
};
extern an_implication const implications[];  // ended by a row whose two options are the same
extern a_default_word const default_words[];  // ended by a null word

// A name of an option, in the order of the plain texts.
struct an_option_name {
  char const   *text;         // scrambled, with the dashes
  option_id     option;
  unsigned char format;       // 0: the main name, else the place in other_names, from 1
  bool          linker_only;  // a name behind run_linker only
};

// The trie of all names.  A node stands for the prefix at which names part or end; the children of
// a node lie side by side and differ in the character behind its prefix.  A name's first dash isn't
// part of it: the node of "-pch" is that of the option --pch, and the node of "g" is that of -g.
struct a_trie_node {
  short          name;         // a name with this prefix, index in option_names
  short          terminal;     // the first name that ends here, -1 if none does
  unsigned short first_child;
  unsigned char  child_count;
  unsigned char  depth;        // length of the prefix
};

extern an_option_name const *const option_names;
extern int const                   option_name_count;
extern a_trie_node const *const    option_trie;  // the root first
// The nodes below "-", the long forms, and that of the dash itself.
extern int const long_form_node_count;

// The text of a name without its first dash, scrambled.
inline char const *trie_text(an_option_name const &name)
{
  return name.text + (name.text[0] == '%');
}
