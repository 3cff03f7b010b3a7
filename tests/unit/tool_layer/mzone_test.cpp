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
  EXPECT_EQ(written_by([&] { zone.dump(true); }).out, "");
  EXPECT_NE(zone.id(), MZONE(1, "", 0).id());
  zone.alloc(1999);
  char expected[400], pool[200];
  snprintf(expected, sizeof expected,
           "--> Zone %p\nsize   :  1K bytes\n# pools:  1\ncreated:  source : 12\n",
           static_cast<void *>(&zone));
  snprintf(pool, sizeof pool, "...       size:  2000\n          pool:  %p\n          next:  %p\n",
           static_cast<void *>(zone.pool->base), static_cast<void *>(nullptr));
  EXPECT_EQ(written_by([&] { zone.dump(false); }).out, expected);
  std::string full = written_by([&] { zone.dump(true); }).out;
  EXPECT_EQ(full.substr(full.find("...")), pool);
  EXPECT_NE(full.find("       size:      2000\n       avail:     0\n"), std::string::npos) << full;
}

TEST(Zone, StandsInTheListsUntilItsEnd)
{
  EXPECT_EQ(written_by([] { zdump_zones_id(true); }).out, "");
  {
    MZONE zone(1000000, "source", 0);
    zone.alloc(1000000);
    szones[7] = &zone;
    std::string named = written_by([] { zdump_zones_id(false); }).out;
    EXPECT_NE(named.find(" (zid: 7)\nsize   :  1M bytes\n# pools:  1\n"), std::string::npos)
        << named;
    EXPECT_TRUE(zone.enlist());
    EXPECT_TRUE(zone.enlist());
    EXPECT_EQ(zl_avail, 1);
    std::string report = written_by(zreport).out;
    EXPECT_EQ(report.find("\nMemory zone usage\n-----------------\nMaximum allocated  :  1M "
                          "bytes\nCurrently allocated:  "),
              0u)
        << report;
    EXPECT_NE(report.find("--> Zone"), std::string::npos);
  }
  EXPECT_EQ(szones[7], nullptr);
  EXPECT_EQ(written_by([] { zdump_zones(true); }).out, "");
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
