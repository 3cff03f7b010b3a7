// mem_manage.cpp - numbered memory regions and the free list of their blocks.
// Owns:    the region tables, the free list.
// Uses:    pieces and the heap; mapped pages (mapped_memory.cpp) when a precompiled header is in use.
// Rule:    nothing in a region is freed singly.  A block's tail that its region won't need is cut
//          off as a fragment; when all fragments of a heap piece are free again they join up, and
//          it goes back.
// Entry:   new_memory_region, alloc_in_region, check_for_done_with_memory_region,
//          free_memory_region.
#include "mem/mem_manage.h"
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include "driver/flags.h"
#include "mem/check.h"
#include "mem/mem_private.h"
#include "mem/registered_vars.h"

static constexpr size_t small_block_size = 2048;
static constexpr size_t trimming_threshold = 1144; // a tail of this size is cut off as a fragment
static constexpr int max_searched_neighbours = 32;
static constexpr int table_increment = 500;
static constexpr a_memory_region_number last_region_number = 0x7fffffff;

a_mem_block **mem_region_table;
a_scope **region_scope_table;
unsigned long *index_for_il_file;
int size_of_mem_region_table;
a_memory_region_number highest_used_region_number;
a_memory_region_number file_scope_region_number;
bool blocks_may_be_returned;
a_mem_manage_hooks mem_manage_hooks;

static a_mem_block *free_mem_blocks; // all regions' free blocks, most recently freed first

// ---- Blocks and the heap ----

// Blocks of normal size are pieces, all others come from the heap singly.
static void *alloc_block_storage(size_t size)
{
  void *place = size == HOST_ALLOCATION_INCREMENT ? alloc_piece() : malloc(size);
  if (place == nullptr) out_of_memory();
  return place;
}

static void free_block_storage(a_mem_block *block)
{
  if (block->total_size == HOST_ALLOCATION_INCREMENT) {
    free_piece(block);
  } else {
    free(block);
  }
}

// ---- The free list ----

static bool is_whole_piece(const a_mem_block *block)
{
  return block->total_size != 0 &&
         block->total_size == size_t(block->end - reinterpret_cast<const char *>(block));
}

static bool ends_where_fragment_begins(const a_mem_block *lower, const a_mem_block *higher)
{
  return higher->total_size == 0 && lower->end == reinterpret_cast<const char *>(higher);
}

// Joins `block` with its free neighbours.  They were most likely freed just before: only the front
// of the list is searched, or freeing many regions would take quadratic time.  Returns null if that
// completed a heap piece, which has been given back, else the joined block, which is on no list.
static a_mem_block *merge_with_free_neighbours(a_mem_block *block)
{
  a_mem_block **link = &free_mem_blocks;
  for (int searched = 0; *link != nullptr && searched < max_searched_neighbours; searched++) {
    a_mem_block *other = *link;
    a_mem_block *lower;
    a_mem_block *higher;
    if (ends_where_fragment_begins(other, block)) {
      lower = other;
      higher = block;
    } else if (ends_where_fragment_begins(block, other)) {
      lower = block;
      higher = other;
    } else {
      link = &other->next;
      continue;
    }
    *link = other->next;
    lower->end = higher->end;
    block = lower;
    if (is_whole_piece(block)) {
      free_block_storage(block);
      return nullptr;
    }
  }
  return block;
}

static void release_block(a_mem_block *block)
{
  if (blocks_may_be_returned) {
    if (is_whole_piece(block)) {
      free_block_storage(block);
      return;
    }
    block = merge_with_free_neighbours(block);
    if (block == nullptr) return;
  }
  block->next = free_mem_blocks;
  free_mem_blocks = block;
}

static void trim_block(a_mem_block *block)
{
  if (size_t(block->end - block->next_free) >= trimming_threshold) {
    char *place = block->next_free;
    a_mem_block *fragment = reinterpret_cast<a_mem_block *>(place);
    fragment->next = nullptr;
    fragment->first_byte = place + sizeof(a_mem_block);
    fragment->next_free = fragment->first_byte;
    fragment->end = block->end;
    fragment->total_size = 0;
    fragment->no_more_trimming = false;
    release_block(fragment);
    block->end = place;
  }
  block->no_more_trimming = true;
}

static bool free_block_qualifies(const a_mem_block *block, size_t wanted_size, bool use_small_size)
{
  size_t capacity = size_t(block->end - block->first_byte) + sizeof(a_mem_block);
  return capacity >= wanted_size && (!use_small_size || capacity <= small_block_size);
}

// Unlinks and returns a free block of sufficient capacity, or returns null.
static a_mem_block *take_free_block(size_t wanted_size, const char *wanted_first_byte,
                                    bool use_small_size)
{
  a_mem_block **chosen = nullptr;
  for (a_mem_block **link = &free_mem_blocks; *link != nullptr; link = &(*link)->next) {
    bool is_wanted_one = wanted_first_byte != nullptr && (*link)->first_byte == wanted_first_byte &&
                         free_block_qualifies(*link, wanted_size, false);
    if (is_wanted_one) {
      chosen = link;
      break;
    }
    if (chosen == nullptr && free_block_qualifies(*link, wanted_size, use_small_size)) {
      chosen = link;
      if (wanted_first_byte == nullptr) break;
    }
  }
  if (chosen == nullptr) return nullptr;
  a_mem_block *block = *chosen;
  *chosen = block->next;
  return block;
}

static a_mem_block *make_new_block(size_t wanted_size, bool use_small_size)
{
  size_t size = use_small_size ? small_block_size : HOST_ALLOCATION_INCREMENT;
  if (wanted_size > size) size = wanted_size;
  size = round_up(size, HOST_ALIGNMENT_REQUIRED);
  void *place;
  if (blocks_may_be_returned) {
    place = alloc_block_storage(size);
  } else {
    size = round_up(size, host_page_size());
    place = alloc_new_mem_block(size);
  }
  a_mem_block *block = static_cast<a_mem_block *>(place);
  block->total_size = size;
  block->first_byte = reinterpret_cast<char *>(block) + sizeof(a_mem_block);
  block->end = reinterpret_cast<char *>(block) + size;
  return block;
}

a_mem_block *alloc_mem_block(a_memory_region_number region, size_t size, char *wanted_first_byte,
                             bool use_small_size)
{
  if (size > SIZE_MAX - HOST_ALLOCATION_INCREMENT) out_of_memory();
  size_t wanted_size = size + sizeof(a_mem_block);
  a_mem_block *block = take_free_block(wanted_size, wanted_first_byte, use_small_size);
  if (block == nullptr) block = make_new_block(wanted_size, use_small_size);
  block->next_free = block->first_byte;
  block->no_more_trimming = false;
  block->next = mem_region_table[region];
  mem_region_table[region] = block;
  return block;
}

void *alloc_in_new_block(a_memory_region_number region, size_t rounded_size)
{
  a_mem_block *block = mem_region_table[region];
  // A block that was trimmed when its region seemed complete grows little more.
  bool use_small_size = block->no_more_trimming;
  if (!use_small_size) trim_block(block);
  // A size close to the top of the address space wraps when it is rounded up.
  if (rounded_size > SIZE_MAX / 2) out_of_memory();
  block = alloc_mem_block(region, rounded_size + HOST_ALIGNMENT_REQUIRED, nullptr, use_small_size);
  char *place = block->next_free;
  block->next_free = place + rounded_size;
  return place;
}

void *alloc_general_or_in_region(a_memory_region_number region, size_t size)
{
  return region == no_memory_region ? alloc_general(size) : alloc_in_region(region, size);
}

// ---- Regions ----

template <class T> static void grow_table(T *&table, int old_length, int new_length)
{
  size_t old_size = size_t(old_length) * sizeof(T);
  size_t new_size = size_t(new_length) * sizeof(T);
  char *grown = realloc_buffer(reinterpret_cast<char *>(table), old_size, new_size);
  memset(grown + old_size, 0, new_size - old_size);
  table = reinterpret_cast<T *>(grown);
}

void ensure_mem_region_table_space(a_memory_region_number region)
{
  if (size_of_mem_region_table > region) return;
  if (region > last_region_number - table_increment) mem_manage_hooks.program_too_large();
  int new_length = region + table_increment;
  grow_table(mem_region_table, size_of_mem_region_table, new_length);
  grow_table(region_scope_table, size_of_mem_region_table, new_length);
  grow_table(index_for_il_file, size_of_mem_region_table, new_length);
  size_of_mem_region_table = new_length;
}

void init_memory_region_without_initial_allocation(a_memory_region_number region)
{
  ensure_mem_region_table_space(region);
  mem_region_table[region] = nullptr;
  if (region > highest_used_region_number) highest_used_region_number = region;
}

void init_memory_region(a_memory_region_number region, size_t size)
{
  init_memory_region_without_initial_allocation(region);
  alloc_mem_block(region, size, nullptr, false);
}

a_memory_region_number new_memory_region()
{
  if (highest_used_region_number == last_region_number) mem_manage_hooks.program_too_large();
  a_memory_region_number region = highest_used_region_number + 1;
  init_memory_region(region, 0);
  return region;
}

void trim_memory_region(a_memory_region_number region)
{
  a_mem_block *block = mem_region_table[region];
  if (block != nullptr) trim_block(block);
}

void check_for_done_with_memory_region(a_memory_region_number region)
{
  if (mem_manage_hooks.write_done_region != nullptr) mem_manage_hooks.write_done_region(region);
  trim_memory_region(region);
}

void check_for_done_with_all_function_memory_regions()
{
  if (mem_manage_hooks.write_remaining_region == nullptr) return;
  for (a_memory_region_number region = 2; region <= highest_used_region_number; region++) {
    if (mem_region_table[region] != nullptr) mem_manage_hooks.write_remaining_region(region);
  }
}

void free_memory_region(a_memory_region_number region)
{
  a_mem_block *block = mem_region_table[region];
  while (block != nullptr) {
    a_mem_block *next = block->next;
    release_block(block);
    block = next;
  }
  mem_region_table[region] = nullptr;
  region_scope_table[region] = nullptr;
}

static void unlink_fragments(a_mem_block **link)
{
  while (a_mem_block *block = *link) {
    if (block->total_size == 0) {
      *link = block->next;
    } else {
      link = &block->next;
    }
  }
}

static void return_chain(a_mem_block *block)
{
  while (block != nullptr) {
    a_mem_block *next = block->next;
    free_block_storage(block);
    block = next;
  }
}

void free_all_memory_regions()
{
  if (mem_region_table == nullptr) return;
  if (!blocks_may_be_returned) {
    for (a_memory_region_number region = highest_used_region_number; region >= 0; region--) {
      free_memory_region(region);
    }
    return;
  }
  // Fragments live inside other blocks: all of them leave the lists before any block is returned.
  for (a_memory_region_number region = highest_used_region_number; region >= 0; region--) {
    unlink_fragments(&mem_region_table[region]);
  }
  unlink_fragments(&free_mem_blocks);
  for (a_memory_region_number region = highest_used_region_number; region >= 0; region--) {
    return_chain(mem_region_table[region]);
    mem_region_table[region] = nullptr;
    region_scope_table[region] = nullptr;
  }
  return_chain(free_mem_blocks);
  free_mem_blocks = nullptr;
}

// ---- Initialisation ----

void mem_manage_early_init()
{
  heap_early_init();
  mem_region_table = nullptr;
  size_of_mem_region_table = 0;
  mapped_memory_early_init();
}

static a_pch_saved_variable saved_variables[] = {
    {&highest_used_region_number, sizeof highest_used_region_number, false},
    {&file_scope_region_number, sizeof file_scope_region_number, false},
    {&mem_alloc_history_entries_used, sizeof mem_alloc_history_entries_used, false},
    {nullptr, 0, false},
};

void mem_manage_one_time_init()
{
  blocks_may_be_returned = !precompiled_header_processing_required;
  if (precompiled_header_processing_required) register_pch_saved_variables(saved_variables);
  mapped_memory_one_time_init();
  register_trans_unit_variable(file_scope_region_number);
  free_mem_blocks = nullptr;
  index_for_il_file = nullptr;
  region_scope_table = nullptr;
}

void mem_manage_init()
{
  highest_used_region_number = 0;
  file_scope_region_number = 1;
  if (index_for_il_file != nullptr) {
    memset(index_for_il_file, 0, size_t(size_of_mem_region_table) * sizeof *index_for_il_file);
  }
  init_memory_region(0, 0);
  init_memory_region(1, 0);
}

void mem_manage_trans_unit_init(bool is_primary)
{
  if (is_primary) return;
  file_scope_region_number = highest_used_region_number + 1;
  init_memory_region(file_scope_region_number, 0);
}
