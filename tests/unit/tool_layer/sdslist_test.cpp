// sdslist_test.cpp - lists: order, the sorted table, searching.
#include "capture.h"
#include <algorithm>
#include <random>
#include <vector>

namespace {

// Items are numbers; compared are their tens, so that equal items can be told apart.
void *item(long number)
{
  return reinterpret_cast<void *>(number);
}

long number_of(void const *data)
{
  return reinterpret_cast<long>(data);
}

int compare_tens(void const *a, void const *b)
{
  return int(number_of(a) / 10 - number_of(b) / 10);
}

int compare_all(void const *a, void const *b)
{
  return int(number_of(a) - number_of(b));
}

std::vector<long> forward(SLIST const &list)
{
  std::vector<long> numbers;
  for (SLIST::NODE *n = list.begin(); n; n = list.next(n))
    numbers.push_back(number_of(n->data));
  std::vector<long> backward;
  for (SLIST::NODE *n = list.end(); n; n = list.prev(n))
    backward.push_back(number_of(n->data));
  EXPECT_TRUE(std::equal(numbers.rbegin(), numbers.rend(), backward.begin(), backward.end()));
  EXPECT_EQ(numbers.size(), list.size());
  return numbers;
}

using NUMBERS = std::vector<long>;

void fill(SLIST &list, NUMBERS const &numbers)
{
  for (long number : numbers)
    list.append(item(number));
}

TEST(List, KeepsItsLinksInBothDirections)
{
  SLIST list(nullptr);
  EXPECT_EQ(list.remove_first(), nullptr);
  EXPECT_EQ(list.remove_last(), nullptr);
  EXPECT_EQ(list.size(), 0u);
  SLIST::NODE *two = list.add(item(2));
  list.prepend(item(1));
  SLIST::NODE *four = list.insert(item(4), nullptr);
  SLIST::NODE *three = list.insert(item(3), four);
  EXPECT_EQ(forward(list), (NUMBERS{1, 2, 3, 4}));
  EXPECT_EQ(three->mylist(), &list);
  list.move_node(four, two);
  EXPECT_EQ(forward(list), (NUMBERS{1, 4, 2, 3}));
  list.move_node(four, four);
  list.swap_nodes(four, three);
  EXPECT_EQ(forward(list), (NUMBERS{1, 3, 2, 4}));
  list.swap_nodes(two, three); // neighbours, the later one first
  EXPECT_EQ(forward(list), (NUMBERS{1, 2, 3, 4}));
  list.swap_nodes(two, three);
  EXPECT_EQ(forward(list), (NUMBERS{1, 3, 2, 4}));
  EXPECT_EQ(number_of(list.remove_first()), 1);
  EXPECT_EQ(number_of(list.remove_last()), 4);
  list.erase(two);
  list.erase(two); // in no list any more
  SLIST other(nullptr);
  other.move_node(three, nullptr);
  EXPECT_EQ(forward(list), (NUMBERS{3}));
}

TEST(List, TakesOverTheItemsOfAnother)
{
  SLIST list(nullptr), other(nullptr);
  fill(list, {1, 2});
  fill(other, {7, 8});
  list.merge(&other);
  list.premerge(&other);
  list.merge(nullptr);
  EXPECT_EQ(forward(list), (NUMBERS{7, 8, 1, 2, 7, 8}));
  EXPECT_EQ(forward(other), (NUMBERS{7, 8}));
  other.merge(&other);
  EXPECT_EQ(forward(other), (NUMBERS{7, 8, 7, 8}));
  other.premerge(&other);
  EXPECT_EQ(other.size(), 8u);
  other.set_cmp_func(compare_tens);
  list.copy(&other);
  EXPECT_EQ(forward(list), forward(other));
  EXPECT_TRUE(list.is_cmp_func(compare_tens));
}

TEST(List, FindsPlacesByBinarySearch)
{
  SLIST list(nullptr);
  uint32_t index = 9;
  EXPECT_EQ(list.find_index(item(1), &index, nullptr), 0);
  EXPECT_EQ(index, 0u);
  list.set_cmp_func(compare_all);
  fill(list, {5, 1, 3});
  struct {
    long key;
    int found;
    uint32_t index;
  } const rows[] = {{0, 0, 0}, {1, 1, 0}, {2, 0, 1}, {3, 1, 1}, {4, 0, 2}, {5, 1, 2}, {6, 0, 3}};
  for (auto row : rows) {
    EXPECT_EQ(list.find_index(item(row.key), &index, compare_all), row.found) << row.key;
    EXPECT_EQ(index, row.index) << row.key;
  }
  EXPECT_EQ(forward(list), (NUMBERS{5, 1, 3})); // a search leaves the links alone
  EXPECT_EQ(number_of(list.find_insert_succ(item(2))->data), 3);
  EXPECT_EQ(number_of(list.find_insert_pred(item(2))->data), 1);
  EXPECT_EQ(number_of(list.find_insert_pred(item(3))->data), 3);
  EXPECT_EQ(list.find_insert_succ(item(6)), nullptr);
  EXPECT_EQ(list.find_insert_pred(item(0)), nullptr);
}

TEST(List, SearchesByASecondFunction)
{
  SLIST list(nullptr);
  list.set_find_cmp_func(compare_tens);
  EXPECT_TRUE(list.is_cmp_func(compare_tens)); // there was none
  list.set_cmp_func(compare_all);
  fill(list, {31, 12, 15, 20, 11});
  list.sort();
  EXPECT_EQ(number_of(list.find_first(item(19))->data), 11);
  EXPECT_EQ(number_of(list.find_insert_succ(item(19))->data), 20);
  EXPECT_EQ(list.find(item(40)), nullptr);
  EXPECT_EQ(list.find_next(list.begin()), nullptr);
}

TEST(List, SeesEveryChangeAtTheNextSearch)
{
  SLIST list(nullptr);
  list.set_cmp_func(compare_all);
  fill(list, {1, 2, 3});
  EXPECT_NE(list.find(item(2)), nullptr);
  list.remove_first();
  EXPECT_EQ(list.find(item(1)), nullptr);
  SLIST::NODE *node = list.find(item(3));
  node->data = item(9);
  list.set_node_modified();
  EXPECT_EQ(list.find(item(9)), node);
  list.clear();
  EXPECT_FALSE(list.table_valid);
  EXPECT_EQ(list.find(item(9)), nullptr);
  list.append(item(4));
  EXPECT_NE(list.find(item(4)), nullptr);
}

TEST(List, ErasesFromAValidTableWithoutSpoilingIt)
{
  SLIST list(nullptr);
  list.set_cmp_func(compare_tens);
  fill(list, {31, 11, 21});
  list.erase(item(25)); // no table yet: by identity
  EXPECT_EQ(list.size(), 3u);
  list.sort();
  list.erase(item(25));
  EXPECT_EQ(forward(list), (NUMBERS{11, 31}));
  EXPECT_TRUE(list.table_valid && list.is_sorted);
  EXPECT_NE(list.find(item(30)), nullptr);
  EXPECT_EQ(list.find(item(20)), nullptr);
  list.erase(list.begin());
  EXPECT_FALSE(list.table_valid || list.is_sorted);
}

TEST(List, DropsNullItemsAndDuplicates)
{
  SLIST list(nullptr);
  list.set_cmp_func(compare_tens);
  fill(list, {0, 21, 11, 22, 0, 12, 23, 0});
  list.purge();
  EXPECT_EQ(forward(list), (NUMBERS{21, 11, 22, 12, 23}));
  list.uniq();
  EXPECT_EQ(forward(list), (NUMBERS{12, 23}));
  EXPECT_FALSE(list.table_valid);
  list.uniq();
  EXPECT_TRUE(list.table_valid);
  list.erase(list.alloc_node(nullptr)); // a null item isn't erased
  EXPECT_EQ(list.size(), 2u);
}

TEST(List, SortsEqualItemsInTheirOrder)
{
  std::mt19937 random(2);
  for (int round = 0; round < 200; round++) {
    SLIST list(nullptr);
    list.set_cmp_func(compare_tens);
    NUMBERS numbers;
    for (int left = int(random() % 200); left > 0; left--)
      numbers.push_back(1 + long(random() % (10 + random() % 500)));
    fill(list, numbers);
    list.sort(round % 2 != 0);
    std::stable_sort(numbers.begin(), numbers.end(),
                     [](long a, long b) { return a / 10 < b / 10; });
    ASSERT_EQ(forward(list), numbers);
    ASSERT_EQ(list.is_sorted, !numbers.empty());
  }
}

TEST(List, SurvivesAComparisonThatContradictsItself)
{
  SLIST list(nullptr);
  fill(list, NUMBERS(500, 7));
  for (auto function : {+[](void const *, void const *) { return 1; },
                        +[](void const *, void const *) { return -1; }}) {
    list.set_cmp_func(function);
    list.sort(true);
    EXPECT_EQ(forward(list), NUMBERS(500, 7));
  }
}

// Random operations beside a vector that does the same.
TEST(List, AgreesWithAVectorOverManyOperations)
{
  std::mt19937 random(3);
  SLIST list(nullptr);
  list.set_cmp_func(compare_all);
  NUMBERS model;
  for (int step = 0; step < 5000; step++) {
    long number = 1 + long(random() % 400);
    auto lower = [&] { return std::lower_bound(model.begin(), model.end(), number); };
    switch (random() % 6) {
    case 0:
    case 1: {
      std::sort(model.begin(), model.end());
      uint32_t index = list.insert_sorted(item(number));
      auto [first, last] = std::equal_range(model.begin(), model.end(), number);
      ASSERT_GE(index, first - model.begin());
      ASSERT_LE(index, last - model.begin());
      model.insert(last, number);
      break;
    }
    case 2:
      list.append(item(number));
      model.push_back(number);
      break;
    case 3:
      list.sort();
      list.find(item(1)); // makes sure of the table
      list.erase(item(number));
      std::sort(model.begin(), model.end());
      if (lower() != model.end() && *lower() == number) model.erase(lower());
      break;
    case 4:
      ASSERT_EQ(number_of(list.remove_last()), model.empty() ? 0 : model.back());
      if (!model.empty()) model.pop_back();
      break;
    case 5:
      ASSERT_EQ(list.find(item(number)) != nullptr,
                std::count(model.begin(), model.end(), number) != 0);
      break;
    }
    ASSERT_EQ(forward(list), model);
  }
}

TEST(List, InsertsSortedWithoutSortingAgain)
{
  static int calls;
  SLIST list(nullptr);
  list.set_cmp_func([](void const *a, void const *b) {
    calls++;
    return compare_all(a, b);
  });
  for (long number = 1; number <= 1024; number++)
    list.insert_sorted(item(number * 7919 % 10007));
  EXPECT_LT(calls, 1024 * 11 + 10);
  NUMBERS numbers = forward(list);
  EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
  EXPECT_EQ(list.mzone()->min_alloc, 1024u / 4 * 20);
}

TEST(List, TakesNodesFromTheChainOfAllLists)
{
  SLIST list(nullptr);
  for (long number = 1; number <= 100; number++)
    list.append(item(number));
  SLIST::NODE *first = list.begin();
  list.clear();
  uint32_t total = SLIST::node_total;
  SLIST other(nullptr);
  EXPECT_EQ(other.append(item(1)), first);
  for (int i = 0; i < 99; i++)
    other.append(item(2));
  EXPECT_EQ(SLIST::node_total, total);
}

TEST(List, UsesTheZoneItIsGiven)
{
  MZONE zone(100, "test", 1);
  SLIST list(nullptr);
  list.set_cmp_func(compare_all);
  fill(list, {2, 1});
  list.sort();
  EXPECT_TRUE(list.owns_zone);
  EXPECT_STREQ(list.mzone()->file, "sdslist");
  EXPECT_EQ(list.mzone()->min_alloc, 200u);
  list.set_mzone(&zone);
  EXPECT_TRUE(list.is_empty());
  EXPECT_FALSE(list.owns_zone);
  fill(list, {2, 1});
  list.sort();
  EXPECT_EQ(forward(list), (NUMBERS{1, 2}));
  EXPECT_EQ(zone.cur_size, 2 * sizeof(void *));
  EXPECT_EQ(SLIST::ptr_cmp(item(-1), item(1)), 1); // as unsigned addresses
  EXPECT_EQ(SLIST::ptr_cmp(item(1), item(-1)), -1);
}

TEST_F(MESSAGES, ReportAListWithoutAComparison)
{
  DIAGNOSTIC::wrap_enabled_m = false;
  char const text[] = ": Use set_cmp_func to specify compare function\\)";
  SLIST list(nullptr);
  fill(list, {1, 2});
  EXPECT_DEATH(list.find(item(1)), std::string("\\(SLIST::find_index") + text);
  EXPECT_DEATH(list.find_next(list.begin()), std::string("\\(SLIST::find_next") + text);
  EXPECT_DEATH(list.sort(true), std::string("\\(SLIST::stable_itemcmp") + text);
  DIAGNOSTIC::debug_mode_m = true; // the message doesn't end the process: nothing is found
  errors_of([&] {
    EXPECT_EQ(list.find(item(1)), nullptr);
    EXPECT_EQ(list.find_next(list.begin()), nullptr);
    EXPECT_EQ(list.find_insert_succ(item(1)), nullptr);
    EXPECT_EQ(list.insert_sorted(item(3)), 2u);
    list.sort(true);
  });
  EXPECT_EQ(forward(list), (NUMBERS{1, 2, 3}));
}

TEST(List, IsDumpedItemByItem)
{
  SLIST list(nullptr);
  fill(list, {0x1234});
  char expected[200];
  snprintf(expected, sizeof expected,
           "SLIST:  0x%08lx\nSIZE:     00000001\nITEMS:\n0         :  0x%08lx  0x00001234\n",
           (unsigned long)&list, (unsigned long)list.begin());
  EXPECT_EQ(output_of([&] { list.dump(stdout); }), expected);
}

} // namespace
