// mem_manage_test.cpp - the regions' block handling, which nothing outside shows.
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include "mem/mem_manage.h"
#include "memory_fixture.h"

namespace {

class Regions : public testing::Test {
protected:
  void SetUp() override
  {
    open_regions();
  }
  void TearDown() override
  {
    free_all_memory_regions();
  }
  static size_t room(const a_mem_block *block)
  {
    return size_t(block->end - block->next_free);
  }
};

TEST_F(Regions, ZeroBytesReturnTheNextFreePlaceAndAdvanceNothing)
{
  int region = new_memory_region();
  char *next = mem_region_table[region]->next_free;
  EXPECT_EQ(alloc_in_region(region, 0), next);
  EXPECT_EQ(mem_region_table[region]->next_free, next);
}

TEST_F(Regions, ABlockIsUsedToItsLastAlignedUnitButOne)
{
  int region = new_memory_region();
  a_mem_block *block = mem_region_table[region];
  size_t fill = room(block) - 2 * HOST_ALIGNMENT_REQUIRED;
  alloc_in_region(region, fill);
  // Exactly the size and one unit of room are left: it fits.
  alloc_in_region(region, HOST_ALIGNMENT_REQUIRED);
  EXPECT_EQ(mem_region_table[region], block);
  EXPECT_EQ(room(block), HOST_ALIGNMENT_REQUIRED);
  alloc_in_region(region, HOST_ALIGNMENT_REQUIRED);
  EXPECT_NE(mem_region_table[region], block);
}

TEST_F(Regions, ALargeRequestBecomesTheHeadWithNothingToSpare)
{
  int region = new_memory_region();
  a_mem_block *first = mem_region_table[region];
  alloc_in_region(region, 100001);
  a_mem_block *head = mem_region_table[region];
  EXPECT_EQ(head->next, first);
  EXPECT_EQ(room(head), HOST_ALIGNMENT_REQUIRED);
}

TEST_F(Regions, ATailBelowTheThresholdStaysInTheBlock)
{
  int region = new_memory_region();
  a_mem_block *block = mem_region_table[region];
  char *end = block->end;
  alloc_in_region(region, room(block) - 1136);
  trim_memory_region(region);
  EXPECT_EQ(block->end, end);
  EXPECT_TRUE(block->no_more_trimming);
}

TEST_F(Regions, ATailAtTheThresholdBecomesAFreeFragment)
{
  int region = new_memory_region();
  a_mem_block *block = mem_region_table[region];
  alloc_in_region(region, room(block) - 1144);
  char *tail = block->next_free;
  trim_memory_region(region);
  EXPECT_EQ(block->end, tail);
  // A region that was trimmed grows by small blocks: here by that fragment.
  alloc_in_region(region, 64);
  EXPECT_EQ(reinterpret_cast<char *>(mem_region_table[region]), tail);
  EXPECT_EQ(mem_region_table[region]->total_size, 0u);
}

TEST_F(Regions, ATrimmedRegionGrowsBySmallBlocks)
{
  int region = new_memory_region();
  a_mem_block *block = mem_region_table[region];
  alloc_in_region(region, room(block) - 16);
  trim_memory_region(region);
  alloc_in_region(region, 64);
  EXPECT_EQ(mem_region_table[region]->total_size, 2048u);
}

TEST_F(Regions, ANewRegionReusesWhatAnotherGaveBack)
{
  // Fragments keep the freed piece from going back to the heap as a whole.
  int keeper = new_memory_region();
  alloc_in_region(keeper, 100);
  trim_memory_region(keeper);
  int user = new_memory_region();
  a_mem_block *fragment = mem_region_table[user];
  EXPECT_EQ(fragment->total_size, 0u);
  EXPECT_EQ(reinterpret_cast<char *>(fragment), mem_region_table[keeper]->end);
  free_memory_region(user);
  EXPECT_EQ(mem_region_table[user], nullptr);
  int next_user = new_memory_region();
  EXPECT_EQ(mem_region_table[next_user], fragment);
}

TEST_F(Regions, FragmentsJoinUpInAnyOrder)
{
  // One heap piece in three parts, given back middle, first, last: no two parts may stay apart,
  // or the piece would be lost (the sanitizers see that).
  int a = new_memory_region();
  alloc_in_region(a, 3000);
  trim_memory_region(a);
  int b = new_memory_region();
  alloc_in_region(b, 3000);
  trim_memory_region(b);
  int c = new_memory_region();
  alloc_in_region(c, 3000);
  a_mem_block *piece = mem_region_table[a];
  ASSERT_EQ(reinterpret_cast<char *>(mem_region_table[b]), piece->end);
  ASSERT_EQ(reinterpret_cast<char *>(mem_region_table[c]), mem_region_table[b]->end);
  free_memory_region(b);
  free_memory_region(a);
  free_memory_region(c);
  int d = new_memory_region();
  EXPECT_EQ(mem_region_table[d]->total_size, HOST_ALLOCATION_INCREMENT);
}

TEST_F(Regions, TheTablesFollowTheHighestNumber)
{
  init_memory_region_without_initial_allocation(1700);
  EXPECT_GT(size_of_mem_region_table, 1700);
  EXPECT_EQ(highest_used_region_number, 1700);
  EXPECT_EQ(mem_region_table[1699], nullptr);
  EXPECT_EQ(new_memory_region(), 1701);
}

size_t mapped_total;

void open_nothing()
{
}

void *map_from_heap(size_t, size_t size, size_t)
{
  mapped_total += size;
  return aligned_alloc(4096, size);
}

TEST(MappedRegions, BlocksArePagesAndNeverGoBack)
{
  mem_manage_hooks.open_mapped_temp_file = open_nothing;
  mem_manage_hooks.map_file_region = map_from_heap;
  // The blocks stay on the free list; later regions use them and give them back to the heap.
  mem_manage_hooks.unmap_memory = [](void *, size_t size) { mapped_total -= size; };
  open_regions();
  free_all_memory_regions();
  blocks_may_be_returned = false;
  mem_manage_init();
  int region = new_memory_region();
  EXPECT_EQ(mem_region_table[region]->total_size % 4096, 0u);
  EXPECT_EQ(num_of_mem_alloc_history_entries, 3u);
  EXPECT_EQ(mapped_memory_total, mapped_total);
  a_mem_block *block = mem_region_table[region];
  alloc_in_region(region, 100);
  trim_memory_region(region);
  free_memory_region(region);
  // Fragment and block stay apart: the block alone serves, with the end that trimming left it.
  int next_region = new_memory_region();
  EXPECT_EQ(mem_region_table[next_region], block);
  EXPECT_EQ(num_of_mem_alloc_history_entries, 3u);
  free_all_memory_regions();
  free_mapped_mem_blocks();
  EXPECT_EQ(mapped_memory_total, 0u);
  EXPECT_EQ(mapped_total, 0u);
  blocks_may_be_returned = true;
}

TEST(TextBuffers, TheGrowthStepDoubles)
{
  a_text_buffer *buffer = alloc_text_buffer(100);
  expand_text_buffer(buffer, 250);
  EXPECT_EQ(buffer->allocated_size, 300u);
  expand_text_buffer(buffer, 301);
  EXPECT_EQ(buffer->allocated_size, 400u);
  EXPECT_EQ(buffer->increment, 400u);
}

TEST(TextBuffers, TheTerminatorGoesOnlyWhereItIs)
{
  a_text_buffer *buffer = alloc_text_buffer(4);
  remove_null_terminator_from_text_buffer(buffer);
  EXPECT_EQ(buffer->size, 0u);
  add_to_text_buffer(buffer, "abcdef", 7);
  remove_null_terminator_from_text_buffer(buffer);
  remove_null_terminator_from_text_buffer(buffer);
  EXPECT_EQ(buffer->size, 6u);
}

TEST(Heap, ABufferMovesWithItsText)
{
  char *buffer = realloc_buffer(nullptr, 0, 10);
  strcpy(buffer, "text");
  buffer = realloc_buffer(buffer, 10, 100000);
  EXPECT_STREQ(buffer, "text");
  void *object = alloc_general(16);
  free_general(object, 16);
}

} // namespace
