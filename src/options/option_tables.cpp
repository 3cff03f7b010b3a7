// option_tables.cpp - the tables of the options, expanded from the rows of the .def files.
// Owns:    all that option_tables.h declares but the names and their trie.
// Rule:    all of it is made by the compiler, and texts stand in the object file scrambled only.
// See:     option_trie.cpp for the trie of the names.
#include "options/option_tables.h"
#include <string_view>
#include "options/option_obj.h"
#include "options/option_texts.h"

//-------------------------------------------------------------------------------------------------
// Kinds of parameters and what they are about.

static constexpr a_parm_kind FLAG = parm_none, TEXT = parm_text, NUMBER = parm_number,
                             WORD_KIND = parm_word, LIST = parm_list;

#define WORD WORD_KIND // the .def of the words has a macro of that name
constexpr unsigned char parm_type[option_count] = {
#define OPTION(id, kind, group, name, description) kind,
#include "options/options.def"
};
#undef WORD

static consteval int count_of_kind(a_parm_kind kind)
{
  int count = 0;
  for (unsigned char one : parm_type)
    count += one == kind;
  return count;
}
static_assert(option_count == 305 && class_count == 30);
static_assert(count_of_kind(parm_none) == 183 && count_of_kind(parm_text) == 35 &&
              count_of_kind(parm_number) == 22 && count_of_kind(parm_word) == 41 &&
              count_of_kind(parm_list) == 24);

static constexpr option_id parameter_options[] = {
#define PARAMETER(option, name, help) opt_##option,
#define OPTIONAL(option, text)
#define LIMITS(option, low, high)
#include "options/option_parameters.def"
};
static constexpr int parameter_count = int(std::size(parameter_options));
static_assert(parameter_count == option_count - count_of_kind(parm_none));

// The name and the help text of each parameter, in turn.
static constexpr auto parameter_pool = scrambled_pool(
#define PARAMETER(option, name, help) name "\0" help "\0"
#define OPTIONAL(option, text)
#define LIMITS(option, low, high)
#include "options/option_parameters.def"
);
static constexpr auto parameter_texts = texts_of<2 * parameter_count>(parameter_pool);

static consteval a_table_by_option<a_parameter_limits> make_limits()
{
  a_table_by_option<a_parameter_limits> limits{};
#define PARAMETER(option, name, help)
#define OPTIONAL(option, text) limits[opt_##option].omitted = text;
#define LIMITS(option, lowest, highest)                                                            \
  limits[opt_##option].low = lowest;                                                               \
  limits[opt_##option].high = highest;
#include "options/option_parameters.def"
  return limits;
}
constexpr a_table_by_option<a_parameter_limits> parameter_limits = make_limits();

//-------------------------------------------------------------------------------------------------
// Lists of words.

static constexpr auto word_pool = scrambled_pool(
#define WORD_LIST(option, listed)
#define WORD(word, value) word "\0"
#define END_LIST(option)
#include "options/option_words.def"
);

struct a_word_row {
  bool ends_list;
  long value;
};
static constexpr a_word_row word_rows[] = {
#define WORD_LIST(option, listed)
#define WORD(word, value) {false, value},
#define END_LIST(option) {true, 0},
#include "options/option_words.def"
};
static constexpr int word_row_count = int(std::size(word_rows));

struct a_word_list {
  option_id option;
  bool listed;
};
static constexpr a_word_list word_lists[] = {
#define WORD_LIST(option, listed) {opt_##option, listed},
#define WORD(word, value)
#define END_LIST(option)
#include "options/option_words.def"
};
static_assert(std::size(word_lists) == count_of_kind(parm_word));

// All lists, one behind the other.
static consteval std::array<an_item, word_row_count> make_items()
{
  std::array<an_item, word_row_count> items{};
  char const *text = word_pool.text;
  for (int i = 0; i < word_row_count; i++) {
    if (word_rows[i].ends_list) continue;
    items[i] = {text, word_rows[i].value};
    while (*text != '\0')
      text++;
    text++;
  }
  return items;
}
static constexpr std::array<an_item, word_row_count> items = make_items();

static consteval an_item const *items_of(unsigned list)
{
  int at = 0;
  for (unsigned i = 0; i < list; at++)
    i += word_rows[at].ends_list;
  return &items[at];
}

//-------------------------------------------------------------------------------------------------
// The definitions.

static constexpr auto description_pool = scrambled_pool(
#define OPTION(id, kind, group, name, description) description "\0"
#include "options/options.def"
);
static constexpr auto descriptions = texts_of<option_count>(description_pool);

// Descriptions stand in XML elements as they are.
static consteval bool fit_for_xml()
{
  for (char c : description_pool.text) {
    if (c == '<' || c == '>' || c == '&') return false;
  }
  return true;
}
static_assert(fit_for_xml());

static consteval void add_other_names(an_option_definition &definition, option_id id)
{
  int count = 0;
  for (int i = 0; i < other_name_count; i++) {
    if (other_name_rows[i].option == id) definition.other_names[count++] = other_name_texts[i];
  }
}

static consteval void add_parameter(an_option_definition &definition, option_id id)
{
  for (int i = 0; i < parameter_count; i++) {
    if (parameter_options[i] != id) continue;
    definition.parameter_name = parameter_texts[2 * i];
    definition.help_text = parameter_texts[2 * i + 1];
  }
  definition.optional = parameter_limits[id].omitted != nullptr;
  for (unsigned i = 0; i < std::size(word_lists); i++) {
    if (word_lists[i].option != id) continue;
    definition.item_list = items_of(i);
    definition.has_item_list = word_lists[i].listed;
  }
}

static consteval void add_traits(an_option_definition &definition, option_id id)
{
#define HIDDEN(option) definition.hidden |= id == opt_##option;
#define PERSISTENT(option) definition.persistent |= id == opt_##option;
#define SHELL_ONLY(option) definition.shell_only |= id == opt_##option;
#define SORT_KEY(option, key)                                                                      \
  if (id == opt_##option) definition.help_sort_key = key;
#define DEFAULT(option, word)
#define IMPLIES(option, other)
#include "options/option_traits.def"
}

static consteval an_option_definition definition_of(option_id id, class_id help_class)
{
  an_option_definition definition{};
  definition.name = main_name_texts[id];
  definition.description = descriptions[id];
  definition.help_class = help_class;
  definition.help_sort_key = 500;
  add_other_names(definition, id);
  add_parameter(definition, id);
  add_traits(definition, id);
  return definition;
}

constexpr an_option_definition option_definitions[option_count] = {
#define OPTION(id, kind, group, name, description) definition_of(opt_##id, class_##group),
#include "options/options.def"
};

static consteval int listed_count()
{
  int count = 0;
  for (an_option_definition const &one : option_definitions)
    count += one.has_item_list;
  return count;
}
static_assert(listed_count() == 37);

//-------------------------------------------------------------------------------------------------
// Classes.

static consteval a_class_matrix make_classes()
{
  a_class_matrix result{};
  for (int id = 0; id < option_count; id++)
    result[id][option_definitions[id].help_class] = 1;
#define CLASS(group, description)
#define MEMBER(group, option) result[opt_##option][class_##group] = 1;
#include "options/option_classes.def"
  return result;
}
constexpr a_class_matrix classes = make_classes();

static constexpr auto class_pool = scrambled_pool(
#define CLASS(group, description) description "\0"
#define MEMBER(group, option)
#include "options/option_classes.def"
);
constexpr std::array<char const *, class_count> class_descriptions =
    texts_of<class_count>(class_pool);

//-------------------------------------------------------------------------------------------------
// Conflicts.

static constexpr a_conflict_kind CLEARS = conflict_clears, OVERRIDES = conflict_overrides,
                                 REFUSES = conflict_refuses;

static consteval void exclude_each_other(a_conflict_matrix &matrix, class_id group,
                                         a_conflict_kind kind)
{
  for (int id = 0; id < option_count; id++) {
    if (!classes[id][group]) continue;
    for (int other = 0; other < option_count; other++) {
      if (other != id && classes[other][group]) matrix[id][other] = kind;
    }
  }
}

static consteval a_conflict_matrix make_conflicts()
{
  a_conflict_matrix matrix{};
#define CONFLICT(option, other, kind) matrix[opt_##option][opt_##other] = kind;
#define MUTUAL(a, b, kind) matrix[opt_##a][opt_##b] = matrix[opt_##b][opt_##a] = kind;
#define EXCLUSIVE(group, kind) exclude_each_other(matrix, class_##group, kind);
#define MERGE_MUTUAL(a, b)
#include "options/option_conflicts.def"
  return matrix;
}

static consteval a_conflict_matrix make_merge_conflicts()
{
  a_conflict_matrix matrix{};
#define CONFLICT(option, other, kind)
#define MUTUAL(a, b, kind)
#define EXCLUSIVE(group, kind)
#define MERGE_MUTUAL(a, b) matrix[opt_##a][opt_##b] = matrix[opt_##b][opt_##a] = conflict_refuses;
#include "options/option_conflicts.def"
  return matrix;
}

constexpr a_conflict_matrix conflicts = make_conflicts();
constexpr a_conflict_matrix merge_conflicts = make_merge_conflicts();

static consteval int count_of_conflicts(a_conflict_matrix const &matrix, a_conflict_kind kind)
{
  int count = 0;
  for (auto const &row : matrix) {
    for (unsigned char one : row)
      count += one == kind;
  }
  return count;
}
static_assert(count_of_conflicts(conflicts, conflict_clears) == 16 &&
              count_of_conflicts(conflicts, conflict_overrides) == 30 &&
              count_of_conflicts(conflicts, conflict_refuses) == 45);
static_assert(count_of_conflicts(merge_conflicts, conflict_clears) == 0 &&
              count_of_conflicts(merge_conflicts, conflict_overrides) == 0 &&
              count_of_conflicts(merge_conflicts, conflict_refuses) == 8);

//-------------------------------------------------------------------------------------------------
// Merging.

static consteval a_table_by_option<a_merge_policy> make_policies()
{
  a_table_by_option<a_merge_policy> policies{};
#define POLICY(policy, option) policies[opt_##option] = &option_obj::merge_policy_##policy;
#define MUTEX(group)
#include "options/option_merging.def"
  return policies;
}
constexpr a_table_by_option<a_merge_policy> merge_policy_functions = make_policies();

static consteval a_table_by_option<a_mutex_override> make_overrides()
{
  a_table_by_option<a_mutex_override> overrides{};
#define POLICY(policy, option)
#define MUTEX(group)                                                                               \
  for (int id = 0; id < option_count; id++) {                                                      \
    if (classes[id][class_##group]) overrides[id] = &option_obj::mutex_merge_override_##group;     \
  }
#include "options/option_merging.def"
  return overrides;
}
constexpr a_table_by_option<a_mutex_override> mutex_merge_override_functions = make_overrides();

static constexpr std::string_view policies_of_rows[] = {
#define POLICY(policy, option) #policy,
#define MUTEX(group)
#include "options/option_merging.def"
};

static consteval int count_of_policy(std::string_view policy)
{
  int count = 0;
  for (std::string_view one : policies_of_rows)
    count += one == policy;
  return count;
}
static_assert(count_of_policy("none") == 12 && count_of_policy("main") == 16 &&
              count_of_policy("or") == 27 && count_of_policy("and") == 4 &&
              count_of_policy("min") == 3 && count_of_policy("max") == 1 &&
              count_of_policy("exact") == 9);

//-------------------------------------------------------------------------------------------------
// Texts by option, implications, defaults.

static constexpr auto internal_name_pool = scrambled_pool(
#define OPTION(id, kind, group, name, description) "opt_" #id "\0"
#include "options/options.def"
);
constexpr a_table_by_option<char const *> enum_to_enumtxt =
    texts_of<option_count>(internal_name_pool);
constexpr a_table_by_option<char const *> enum_to_optiontxt = main_name_texts;

static constexpr char const xml_plain[] =
#define OPTION(id, kind, group, name, description)                                                 \
  "<option id=\"" #id "\" kind=\"" #kind "\" class=\"" #group "\"><name>" name                     \
  "</name><description>" description "</description>\0"
#include "options/options.def"
    ;
static constexpr auto xml_pool = scrambled_pool(xml_plain);
constexpr a_table_by_option<char const *> xml_option_def = texts_of<option_count>(xml_pool);

constexpr an_implication implications[] = {
#define HIDDEN(option)
#define PERSISTENT(option)
#define SHELL_ONLY(option)
#define SORT_KEY(option, key)
#define DEFAULT(option, word)
#define IMPLIES(option, other) {opt_##option, opt_##other},
#include "options/option_traits.def"
    {option_id(0), option_id(0)}};

constexpr a_default_word default_words[] = {
#define HIDDEN(option)
#define PERSISTENT(option)
#define SHELL_ONLY(option)
#define SORT_KEY(option, key)
#define DEFAULT(option, word) {opt_##option, word},
#define IMPLIES(option, other)
#include "options/option_traits.def"
    {option_id(0), nullptr}};
