// mapped_memory.cpp - blocks mapped from an anonymous temporary file, for precompiled headers.
// Owns:    mem_alloc_history and the state of the temporary file.
#include <cstring>
#include <unistd.h>
#include "mem/mem_manage.h"
#include "mem/mem_private.h"

static constexpr size_t history_increment = 500;

a_mem_alloc_history_entry *mem_alloc_history;
size_t size_of_mem_alloc_history;
size_t num_of_mem_alloc_history_entries;
size_t mem_alloc_history_entries_used; // copy of the length that stays with the saved variables
size_t mapped_memory_total;
static bool mapped_file_is_open;
static size_t mapped_file_offset; // next free offset in the temporary file

size_t host_page_size()
{
  static size_t page_size;
  if (page_size == 0) page_size = size_t(sysconf(_SC_PAGESIZE));
  return page_size;
}

static void add_to_history(void *address, size_t size)
{
  if (num_of_mem_alloc_history_entries == size_of_mem_alloc_history) {
    size_t entry_size = sizeof(a_mem_alloc_history_entry);
    size_t new_length = size_of_mem_alloc_history + history_increment;
    char *grown = realloc_buffer(reinterpret_cast<char *>(mem_alloc_history),
                                 size_of_mem_alloc_history * entry_size, new_length * entry_size);
    mem_alloc_history = reinterpret_cast<a_mem_alloc_history_entry *>(grown);
    size_of_mem_alloc_history = new_length;
  }
  mem_alloc_history[num_of_mem_alloc_history_entries++] = {address, size};
  mem_alloc_history_entries_used = num_of_mem_alloc_history_entries;
}

void *alloc_new_mem_block(size_t size)
{
  if (!mapped_file_is_open) {
    mem_manage_hooks.open_mapped_temp_file();
    mapped_memory_total = 0;
    mapped_file_offset = 0;
    mapped_file_is_open = true;
  }
  void *address = mem_manage_hooks.map_file_region(mapped_memory_total, size, mapped_file_offset);
  if (address == nullptr) mem_manage_hooks.unable_to_get_mapped_memory();
  mapped_memory_total += size;
  mapped_file_offset += size;
  add_to_history(address, size);
  return address;
}

void record_mapped_mem_block(void *address, size_t size)
{
  add_to_history(address, size);
  mapped_memory_total += size;
}

void free_mapped_mem_blocks()
{
  for (size_t i = 0; i < num_of_mem_alloc_history_entries; i++) {
    mem_manage_hooks.unmap_memory(mem_alloc_history[i].address, mem_alloc_history[i].size);
  }
  num_of_mem_alloc_history_entries = 0;
  mem_alloc_history_entries_used = 0;
  mapped_memory_total = 0;
  mapped_file_offset = 0;
}

void mapped_memory_early_init()
{
  size_of_mem_alloc_history = 0;
  num_of_mem_alloc_history_entries = 0;
  mem_alloc_history_entries_used = 0;
}

void mapped_memory_one_time_init()
{
  mem_alloc_history = nullptr;
  size_of_mem_alloc_history = 0;
  mapped_file_is_open = false;
  mapped_memory_total = 0;
  mapped_file_offset = 0;
}
