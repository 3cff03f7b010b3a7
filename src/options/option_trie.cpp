// option_trie.cpp - the trie of the options' names, built by the compiler.
// Owns:    option_names, option_trie, long_form_node_count.
// Uses:    the names of options.def and option_names.def.
// Rule:    a node for each prefix at which names part or end, so that a chain of single letters is
//          one step; the walk is in option_parse.cpp.
#include <algorithm>
#include <string_view>
#include "options/option_texts.h"

// A name with both its forms.  The plain one is for sorting and building only.
struct a_full_name {
  std::string_view plain; // without the first dash, as the trie has it
  an_option_name name;
};

static constexpr int name_count = option_count + other_name_count;

static consteval std::string_view without_dash(char const *plain)
{
  return std::string_view(plain + (plain[0] == '-'));
}

static consteval std::array<a_full_name, name_count> make_full_names()
{
  std::array<a_full_name, name_count> names{};
  std::array<unsigned char, option_count> formats{};
  for (int i = 0; i < option_count; i++) {
    a_name_row const &row = main_name_rows[i];
    names[i] = {without_dash(row.plain), {main_name_texts[i], row.option, 0, false}};
  }
  for (int i = 0; i < other_name_count; i++) {
    a_name_row const &row = other_name_rows[i];
    names[option_count + i] = {
        without_dash(row.plain),
        {other_name_texts[i], row.option, ++formats[row.option], row.linker_only}};
  }
  std::sort(names.begin(), names.end(),
            [](a_full_name const &a, a_full_name const &b) { return a.plain < b.plain; });
  return names;
}
static constexpr std::array<a_full_name, name_count> full_names = make_full_names();

static consteval bool names_differ()
{
  for (int i = 1; i < name_count; i++) {
    if (full_names[i - 1].plain == full_names[i].plain) return false;
  }
  return true;
}
static_assert(names_differ(), "two options have a name in common");

static consteval std::array<an_option_name, name_count> make_names()
{
  std::array<an_option_name, name_count> names{};
  for (int i = 0; i < name_count; i++)
    names[i] = full_names[i].name;
  return names;
}

//-------------------------------------------------------------------------------------------------
// Building.

static constexpr int most_nodes = 2 * name_count; // each name ends one node and parts at most one

struct a_trie {
  std::array<a_trie_node, most_nodes> nodes{};
  std::array<int, most_nodes> ends{}; // behind the last name of each node
  int count = 0;
};

// How many characters all names from `first` up to, not including, `end` have in common.
static consteval unsigned common_length(int first, int end)
{
  std::string_view const a = full_names[first].plain, b = full_names[end - 1].plain;
  unsigned length = 0;
  while (length < a.size() && length < b.size() && a[length] == b[length])
    length++;
  return length;
}

static consteval void add_node(a_trie &trie, int first, int end, unsigned depth)
{
  bool const ends_here = depth != 0 && full_names[first].plain.size() == depth;
  trie.nodes[trie.count] = {short(first), short(ends_here ? first : -1), 0, 0,
                            static_cast<unsigned char>(depth)};
  trie.ends[trie.count++] = end;
}

// The names are sorted, so those below a node stand side by side, and so do those of each child.
static consteval void add_children(a_trie &trie, int node)
{
  unsigned const depth = trie.nodes[node].depth;
  int const end = trie.ends[node];
  int first = trie.nodes[node].name + (trie.nodes[node].terminal >= 0);
  trie.nodes[node].first_child = static_cast<unsigned short>(trie.count);
  while (first < end) {
    int behind = first + 1;
    while (behind < end && full_names[behind].plain[depth] == full_names[first].plain[depth]) {
      behind++;
    }
    add_node(trie, first, behind, common_length(first, behind));
    trie.nodes[node].child_count++;
    first = behind;
  }
}

static consteval a_trie build_trie()
{
  a_trie trie;
  add_node(trie, 0, name_count, 0);
  for (int node = 0; node < trie.count; node++)
    add_children(trie, node);
  return trie;
}
static constexpr a_trie built = build_trie();

static consteval int count_long_forms()
{
  int count = 0;
  for (int i = 1; i < built.count; i++)
    count += full_names[built.nodes[i].name].plain[0] == '-';
  return count;
}
static_assert(count_long_forms() == 479);

//-------------------------------------------------------------------------------------------------
// What stays in the program: the scrambled names and as many nodes as there are.

static consteval std::array<a_trie_node, built.count> used_nodes()
{
  std::array<a_trie_node, built.count> nodes{};
  for (int i = 0; i < built.count; i++)
    nodes[i] = built.nodes[i];
  return nodes;
}

static constexpr std::array<an_option_name, name_count> names = make_names();
static constexpr std::array<a_trie_node, built.count> nodes = used_nodes();

constexpr an_option_name const *option_names = names.data();
constexpr int option_name_count = name_count;
constexpr a_trie_node const *option_trie = nodes.data();
constexpr int long_form_node_count = count_long_forms();
