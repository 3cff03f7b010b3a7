// sdshash_test.cpp - hash tables.
#include "capture.h"
#include <algorithm>
#include <climits>
#include <map>
#include <random>
#include <set>
#include <vector>

namespace {

void *value(long number)
{
  return reinterpret_cast<void *>(number);
}

// As callers see it: the second word of a node's data.
long value_of(SLIST::NODE const *node)
{
  return reinterpret_cast<long>(((void **)node->data)[1]);
}

long value_of_key(SHASH &table, char const *key)
{
  SLIST::NODE *node = table.find(key);
  return node ? value_of(node) : 0;
}

unsigned long hash_of(char const *text, int buckets)
{
  return SHASH::str_hash(&text, buckets);
}

TEST(Hash, OfStringsIsTheOneOfObjectFiles)
{
  EXPECT_EQ(hash_of("", 521), 0u);
  EXPECT_EQ(hash_of(nullptr, 521), 0u);
  EXPECT_EQ(hash_of("printf", INT_MAX), 0x077905a6u);
  EXPECT_EQ(hash_of("exit", INT_MAX), 0x0006cf04u);
  EXPECT_EQ(hash_of("syscall", INT_MAX), 0x0b09985cu);
  EXPECT_EQ(hash_of("printf", 521), 0x077905a6u % 521);
  // A signed character below 0 borrows from the ones ahead of it.
  EXPECT_EQ(hash_of("a\xff", INT_MAX), 0x61u * 16 - 1);
}

TEST(Hash, TakesAKeyMoreThanOnce)
{
  SHASH table(SHASH::str_hash, SHASH::str_cmp, 521);
  std::string first = "key", second = "key";
  table.add(first.c_str(), value(1));
  table.add("other", value(7));
  table.add(second.c_str(), value(2));
  EXPECT_EQ(table.size(), 3);
  SLIST::NODE *node = table.find_first("key");
  SLIST::NODE *next = table.find_next(node);
  ASSERT_NE(next, nullptr);
  EXPECT_EQ((std::set<long>{value_of(node), value_of(next)}), (std::set<long>{1, 2}));
  EXPECT_EQ(table.find_next(next), nullptr);
  table.update(table.find("other"), value(8));
  EXPECT_EQ(value_of_key(table, "other"), 8);
  EXPECT_EQ(table.find("none"), nullptr);
  EXPECT_EQ(table.find(static_cast<char const *>(nullptr)), nullptr);
}

TEST(Hash, ErasesByKeyAndByNode)
{
  SHASH table(SHASH::str_hash, SHASH::str_cmp, 1); // one bucket, so that its table is at stake
  for (char const *key : {"d", "b", "a", "c"})
    table.add(key, value(key[0]));
  table.erase("b");
  table.erase("none");
  EXPECT_EQ(table.find("b"), nullptr);
  SLIST::NODE *node = table.find("c");
  table.erase(node);
  table.erase(node);
  EXPECT_EQ(table.size(), 2);
  EXPECT_EQ(value_of_key(table, "a"), 'a');
  EXPECT_EQ(value_of_key(table, "d"), 'd');
  table.add("b", value('B'));
  EXPECT_EQ(value_of(table.next(table.begin())), 'B');
}

std::vector<long> walked(SHASH const &table)
{
  std::vector<long> forward, backward;
  for (SLIST::NODE *n = table.begin(); n; n = table.next(n))
    forward.push_back(value_of(n));
  for (SLIST::NODE *n = table.end(); n; n = table.prev(n))
    backward.push_back(value_of(n));
  EXPECT_TRUE(std::equal(forward.rbegin(), forward.rend(), backward.begin(), backward.end()));
  return forward;
}

TEST(Hash, IsWalkedByBucketsAndSortedInEach)
{
  SHASH table(SHASH::UINT32_hash, SHASH::UINT32_cmp, 10);
  EXPECT_EQ(table.begin(), nullptr);
  EXPECT_EQ(table.end(), nullptr);
  for (unsigned long key : {33, 8, 13, 21, 3, 28, 31})
    table.add(key, value(long(key)));
  EXPECT_EQ(walked(table), (std::vector<long>{21, 31, 3, 13, 33, 8, 28}));
  EXPECT_EQ(walked(table).size(), size_t(table.size()));
}

TEST(Hash, ComparesKeysAsUnsigned)
{
  SHASH scalars(SHASH::UINT32_hash, SHASH::UINT32_cmp, 1);
  for (unsigned long key : {~0UL, 1UL, 0x80000000UL, 0UL})
    scalars.add(key, value(long(key)));
  EXPECT_EQ(walked(scalars), (std::vector<long>{0, 1, 0x80000000L, -1}));
  SHASH pointers(SHASH::ptr_hash, SHASH::UINT32_cmp, 7);
  int things[50];
  for (int &thing : things)
    pointers.add(&thing, &thing);
  for (int &thing : things)
    EXPECT_EQ(value_of(pointers.find(&thing)), reinterpret_cast<long>(&thing));
  SHASH::KEY key = {.scalar = 0x1007};
  EXPECT_EQ(SHASH::ptr_hash(&key, 100), 0x401u % 100);
}

TEST(Hash, OrdersNullStringsFirst)
{
  auto order = [](char const *left, char const *right) {
    SHASH::ITEM a = {&a.key, nullptr, {left}}, b = {&b.key, nullptr, {right}};
    int result = SHASH::str_cmp(&a, &b);
    return (result > 0) - (result < 0);
  };
  EXPECT_EQ(order(nullptr, nullptr), 0);
  EXPECT_EQ(order(nullptr, ""), -1);
  EXPECT_EQ(order("", nullptr), 1);
  EXPECT_EQ(order("a", "b"), -1);
  EXPECT_EQ(order("b", "b"), 0);
}

TEST(Hash, CanBeUsedAgainAfterClear)
{
  SHASH own(SHASH::str_hash, SHASH::str_cmp, 5);
  EXPECT_STREQ(own.mzone()->file, "sdshash");
  EXPECT_EQ(own.mzone()->line, 94);
  MZONE zone(4000, "test", 1);
  SHASH shared(&zone, SHASH::str_hash, SHASH::str_cmp, 5);
  EXPECT_EQ(shared.mzone(), &zone);
  std::vector<std::string> keys;
  for (int i = 0; i < 200; i++)
    keys.push_back("key" + std::to_string(i));
  for (SHASH *table : {&own, &shared}) {
    for (int round = 0; round < 3; round++) {
      for (size_t i = 0; i < keys.size(); i++)
        table->add(keys[i].c_str(), value(long(i)));
      EXPECT_EQ(walked(*table).size(), 200u);
      EXPECT_EQ(value_of_key(*table, "key123"), 123);
      table->clear();
      EXPECT_EQ(table->size(), 0);
      EXPECT_EQ(table->begin(), nullptr);
      EXPECT_EQ(table->find("key123"), nullptr);
      EXPECT_EQ(table->key_mode, SHASH::pointer_keys);
    }
  }
  // The items of a shared zone wait on the free chain, those of an own zone are gone with it.
  EXPECT_EQ(own.item_total, 0u);
  EXPECT_EQ(own.free_items, nullptr);
  uint32_t free_items = 0;
  for (SHASH::ITEM *item = shared.free_items; item;
       item = static_cast<SHASH::ITEM *>(item->value)) {
    EXPECT_EQ(item->key_ref, nullptr);
    free_items++;
  }
  EXPECT_EQ(free_items, shared.item_total);
  EXPECT_LT(shared.item_total, 320u);
}

TEST(Hash, AgreesWithAMultimapOverManyOperations)
{
  std::mt19937 random(4);
  SHASH table(SHASH::UINT32_hash, SHASH::UINT32_cmp, 17);
  std::multimap<unsigned long, long> model;
  for (long step = 1; step < 20000; step++) {
    unsigned long key = random() % 300;
    if (random() % 2) {
      table.add(key, value(step));
      model.emplace(key, step);
    } else if (SLIST::NODE *node = random() % 2 ? table.find(key) : nullptr) {
      auto entry = model.lower_bound(key);
      while (entry->second != value_of(node))
        ++entry;
      ASSERT_EQ(entry->first, key);
      model.erase(entry);
      table.erase(node);
    } else if (random() % 500 == 0) {
      table.clear();
      model.clear();
    }
    std::multiset<long> values, expected;
    for (SLIST::NODE *n = table.find_first(key); n; n = table.find_next(n))
      values.insert(value_of(n));
    for (auto [first, last] = model.equal_range(key); first != last; ++first)
      expected.insert(first->second);
    ASSERT_EQ(values, expected);
    ASSERT_EQ(size_t(table.size()), model.size());
  }
  EXPECT_EQ(walked(table).size(), model.size());
}

TEST_F(MESSAGES, ReportMixedKeys)
{
  DIAGNOSTIC::wrap_enabled_m = false;
  SHASH pointers(SHASH::str_hash, SHASH::str_cmp, 5),
      scalars(SHASH::UINT32_hash, SHASH::UINT32_cmp, 5);
  EXPECT_EQ(pointers.find(1UL), nullptr); // no mode yet
  EXPECT_EQ(pointers.find_first("a"), nullptr);
  pointers.erase(1UL);
  pointers.add("a", nullptr);
  scalars.add(1UL, nullptr);
  EXPECT_DEATH(pointers.add(1UL, nullptr),
               "\\(SHASH::add \\(scalar\\): cannot mix hash key types\\)");
  EXPECT_DEATH(scalars.add("a", nullptr),
               "\\(SHASH::add \\(pointer\\): cannot mix hash key types\\)");
  EXPECT_DEATH(pointers.find(1UL), "\\(SHASH::find \\(scalar\\): cannot mix key types\\)");
  EXPECT_DEATH(pointers.find_first(1UL), "\\(SHASH::find \\(scalar\\): cannot mix key types\\)");
  EXPECT_DEATH(scalars.find("a"), "\\(SHASH::find \\(pointer\\): cannot mix key types\\)");
  EXPECT_DEATH(pointers.erase(1UL), "\\(SHASH::erase \\(scalar\\): cannot mix key types\\)");
  EXPECT_DEATH(scalars.erase("a"), "\\(SHASH::erase \\(pointer\\): cannot mix key types\\)");
  DIAGNOSTIC::debug_mode_m = true; // the message doesn't end the process: nothing happens
  errors_of([&] {
    pointers.add(1UL, nullptr);
    EXPECT_EQ(scalars.find("a"), nullptr);
  });
  EXPECT_EQ(pointers.size(), 1);
}

TEST(Hash, IsDumpedByRows)
{
  SHASH table(SHASH::UINT32_hash, SHASH::UINT32_cmp, 4);
  for (unsigned long key : {1, 5, 3})
    table.add(key, nullptr);
  char address[40];
  snprintf(address, sizeof address, "SHASH:  0x%08lx\n", (unsigned long)&table);
  EXPECT_EQ(output_of([&] { table.dump(stdout); }),
            address + std::string("SIZE:     00000003\nROWS:     00000004\n  - 2/4 Rows are empty\n"
                                  "  - Row 1 has 2 entries\n  - Row 3 has 1 entries\n\n"));
}

} // namespace
