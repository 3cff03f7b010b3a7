// mem_private.h - what the files of the memory floor share.
#pragma once
#include <cstddef>

[[noreturn]] void out_of_memory();
size_t host_page_size();

// Pieces of HOST_ALLOCATION_INCREMENT bytes; alloc_piece may return null.
void *alloc_piece();
void free_piece(void *piece);

inline size_t round_up(size_t size, size_t multiple)
{
  return (size + multiple - 1) / multiple * multiple;
}

void heap_early_init();
void mapped_memory_early_init();
void mapped_memory_one_time_init();
