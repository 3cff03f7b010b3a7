// mzone_test.cpp - zones: where memory comes from, what a reset leaves, the reports.
#include "capture.h"
#include <climits>
#include <cstdlib>
#include <cstring>

namespace {

bool is_zero(void const *memory, size_t size)
{
  std::string zeros(size, '\0');
  return memcmp(memory, zeros.data(), size) == 0;
}

TEST(Zone, TakesPoolsOfAtLeastItsMinimum)
{
  uint32_t before = MZONE::cur_alloced;
  {
    MZONE zone(100, "test", 1);
    EXPECT_EQ(zone.pool, nullptr);
    zone.alloc(40);
    MZONE::POOL *first = zone.pool;
    EXPECT_EQ(first->size, 100u);
    void *large = zone.alloc(101);
    EXPECT_EQ(large, zone.pool->base);
    EXPECT_EQ(zone.pool->size, 101u);
    EXPECT_EQ(zone.pool->next, first);
    EXPECT_EQ(zone.cur_size, 141u);
    zone.set_min_alloc(300);
    zone.alloc(1);
    EXPECT_EQ(zone.pool->size, 300u);
    EXPECT_EQ(MZONE::cur_alloced - before, 501u);
    EXPECT_GE(MZONE::max_alloced, MZONE::cur_alloced);
  }
  EXPECT_EQ(MZONE::cur_alloced, before);
}

TEST(Zone, UsesRoomInStepsOfEight)
{
  struct {
    unsigned size, used;
  } const rows[] = {{0, 8}, {7, 8}, {8, 16}, {15, 16}, {16, 24}};
  for (auto row : rows) {
    MZONE zone(100, "test", 1);
    char *first = static_cast<char *>(zone.alloc(row.size));
    EXPECT_EQ(zone.avail, 100 - row.used) << row.size;
    EXPECT_EQ(static_cast<char *>(zone.alloc(1)) - first, int(row.used)) << row.size;
  }
  // Less than 8 bytes behind the request are given up.
  MZONE zone(16, "test", 1);
  zone.alloc(9);
  EXPECT_EQ(zone.avail, 0u);
  MZONE empty(0, "test", 1);
  EXPECT_NE(empty.alloc(0), nullptr);
}

TEST(Zone, HandsOutZeroedMemoryAfterAReset)
{
  uint32_t before = MZONE::cur_alloced;
  MZONE zone(64, "test", 1);
  memset(zone.alloc(64), 'x', 64);
  char *newest = static_cast<char *>(zone.alloc(40));
  memset(newest, 'y', 40);
  zone.reset();
  EXPECT_EQ(zone.cur_size, 0u);
  EXPECT_EQ(zone.max_size, 104u);
  EXPECT_EQ(MZONE::cur_alloced - before, 64u);
  EXPECT_EQ(zone.alloc(60), newest);
  EXPECT_TRUE(is_zero(newest, 64));
}

struct NOTED : MZONE_OBJECT {
  std::string &order;
  char name;
  MZONE *heir; // gets an object at this one's end
  NOTED(std::string &o, char n, MZONE *h = nullptr) : order(o), name(n), heir(h)
  {
  }
  ~NOTED() override
  {
    order += name;
    if (heir) heir->own(new NOTED(order, 'z'));
  }
};

TEST(Zone, DeletesItsObjectsInTheirOrder)
{
  std::string order;
  {
    MZONE zone(64, "test", 1);
    zone.own(new NOTED(order, 'a', &zone));
    zone.own(new NOTED(order, 'b'));
    zone.reset();
    EXPECT_EQ(order, "abz");
    zone.own(new NOTED(order, 'c'));
  }
  EXPECT_EQ(order, "abzc");
}

TEST(Zone, ReportsItsFigures)
{
  MZONE zone(2000, "source", 12);
  EXPECT_EQ(output_of([&] { zone.dump(true); }), "");
  EXPECT_NE(zone.id(), MZONE(1, "", 0).id());
  zone.alloc(1999);
  std::string text = output_of([&] { zone.dump(true); });
  EXPECT_THAT(text,
              testing::MatchesRegex(
                  "--> Zone 0x[0-9a-f]+\nsize   :  1K bytes\n# pools:  1\ncreated:  source : 12\n"
                  "       size:      2000\n       avail:     0\n       pool:      0x[0-9a-f]+\n"
                  "       cur_size:  1999\n       max_size:  1999\n"
                  "...       size:  2000\n          pool:  0x[0-9a-f]+\n          next:  .nil.\n"));
  EXPECT_EQ(output_of([&] { zone.dump(false); }), text.substr(0, text.find("       size:")));
}

TEST(Zone, StandsInTheListsUntilItsEnd)
{
  EXPECT_EQ(output_of([] { zdump_zones_id(true); }), "");
  {
    MZONE zone(1000000, "source", 0);
    zone.alloc(1000000);
    szones[7] = &zone;
    std::string named = output_of([] { zdump_zones_id(false); });
    EXPECT_THAT(named, testing::HasSubstr(" (zid: 7)\nsize   :  1M bytes\n# pools:  1\n"));
    EXPECT_TRUE(zone.enlist());
    EXPECT_TRUE(zone.enlist());
    EXPECT_EQ(zl_avail, 1);
    std::string report = output_of(zreport);
    EXPECT_THAT(report, testing::StartsWith(
                            "\nMemory zone usage\n-----------------\nMaximum allocated  :  1M "
                            "bytes\nCurrently allocated:  "));
    EXPECT_THAT(report, testing::HasSubstr("--> Zone"));
  }
  EXPECT_EQ(szones[7], nullptr);
  EXPECT_EQ(output_of([] { zdump_zones(true); }), "");
}

TEST(Heap, GivesZeroedBlocksOrEndsTheProcess)
{
  void *block = ralloc(100);
  EXPECT_TRUE(is_zero(block, 100));
  memset(block, 'x', 100);
  block = rrealloc(block, 5000);
  EXPECT_EQ(static_cast<char *>(block)[99], 'x');
  free(block);
  block = rrealloc(nullptr, 9);
  EXPECT_TRUE(is_zero(block, 9));
  EXPECT_NE(block = rrealloc(block, 0), nullptr);
  free(block);
  EXPECT_EXIT(MZONE(8, "test", 1).alloc_array(UINT_MAX, 2), testing::ExitedWithCode(1),
              "^OUT OF MEMORY - APPLICATION ABORTED\n$");
}

} // namespace
