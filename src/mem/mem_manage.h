// mem_manage.h - numbered memory regions, heap objects, resizable buffers, text buffers.
// No allocator returns null: exhausted memory is a catastrophe.
#pragma once
#include <cstddef>

typedef int a_memory_region_number;
struct a_scope;

inline constexpr a_memory_region_number no_memory_region = -1; // alloc_general_or_in_region: heap
inline constexpr size_t HOST_ALLOCATION_INCREMENT = 0x10000;   // normal size of a new block
inline constexpr size_t HOST_ALIGNMENT_REQUIRED = 8;

// Header of every block of a region; the allocatable bytes follow it.
struct a_mem_block {
  a_mem_block *next;     // next block of the region or of the free list
  char *first_byte;      // first allocatable byte, directly behind the header
  char *next_free;       // where the next allocation goes
  char *end;             // one past the last byte
  size_t total_size;     // size obtained from the system with the header; 0 for a fragment
  bool no_more_trimming; // the tail has been considered for trimming
};

// Written by mem_manage alone.  The three tables have size_of_mem_region_table entries each.
extern a_mem_block **mem_region_table;   // head of each region's chain, newest block first
extern a_scope **region_scope_table;     // root scope of each region; set by new_il_region
extern unsigned long *index_for_il_file; // file offset of each region in the IL file, 0 if none
extern int size_of_mem_region_table;
extern a_memory_region_number highest_used_region_number;
extern a_memory_region_number file_scope_region_number; // per translation unit
extern bool blocks_may_be_returned; // blocks come from the heap, not from mapped pages

// A growable character buffer.  It isn't terminated; callers who want a string add a null byte.
struct a_text_buffer {
  a_text_buffer *next; // all text buffers ever made
  size_t allocated_size;
  size_t size;      // bytes in use
  size_t increment; // growth step, doubled by each expansion
  char *buffer;     // may move on any addition
};

// One mapped block: what the precompiled-header writer saves and the reader maps again.
struct a_mem_alloc_history_entry {
  void *address;
  size_t size;
};
extern a_mem_alloc_history_entry *mem_alloc_history;
extern size_t size_of_mem_alloc_history;
extern size_t num_of_mem_alloc_history_entries;
extern size_t mem_alloc_history_entries_used;
extern size_t mapped_memory_total;

// What this floor needs from above, installed before the first allocation that may need it.
struct a_mem_manage_hooks {
  void (*out_of_memory)(); // don't return
  void (*program_too_large)();
  void (*unable_to_get_mapped_memory)();
  void (*open_mapped_temp_file)(); // makes the anonymous file for mapped blocks
  void *(*map_file_region)(size_t total, size_t size, size_t offset); // null on failure
  void (*unmap_memory)(void *address, size_t size);
  // Tells whether the region is complete and belongs in the IL file now, and writes it.
  void (*write_done_region)(a_memory_region_number region);
  // Tells whether the region's root scope belongs to the primary translation unit.
  void (*write_remaining_region)(a_memory_region_number region);
};
extern a_mem_manage_hooks mem_manage_hooks;

// ---- Regions ----

// A new region with one block.
a_memory_region_number new_memory_region();
// Makes the given region, with a first block that holds `size` bytes.
void init_memory_region(a_memory_region_number region, size_t size);
// Only clears the table entry and raises highest_used_region_number.
void init_memory_region_without_initial_allocation(a_memory_region_number region);
// Grows the three tables so that `region` has an entry.
void ensure_mem_region_table_space(a_memory_region_number region);
// Adds a block of at least `size` usable bytes to the region.  `wanted_first_byte` prefers one
// particular free block (restoring a saved state); null otherwise.
a_mem_block *alloc_mem_block(a_memory_region_number region, size_t size, char *wanted_first_byte,
                             bool use_small_size);
// The slow path of alloc_in_region: the head block has no room.
void *alloc_in_new_block(a_memory_region_number region, size_t rounded_size);
// Cuts the unused tail off the region's head block.
void trim_memory_region(a_memory_region_number region);
// The region's function (or the file scope) is complete: writes it to the IL file if due, trims it.
void check_for_done_with_memory_region(a_memory_region_number region);
void check_for_done_with_all_function_memory_regions();
// Releases all blocks of a region; its number isn't used again.
void free_memory_region(a_memory_region_number region);
// The last act of the run.
void free_all_memory_regions();

// Uninitialised storage of the region, aligned to HOST_ALIGNMENT_REQUIRED.
inline void *alloc_in_region(a_memory_region_number region, size_t size)
{
  size_t rounded = (size + (HOST_ALIGNMENT_REQUIRED - 1)) & ~(HOST_ALIGNMENT_REQUIRED - 1);
  a_mem_block *block = mem_region_table[region];
  char *place = block->next_free;
  if (__builtin_expect(rounded + HOST_ALIGNMENT_REQUIRED > size_t(block->end - place), 0)) {
    return alloc_in_new_block(region, rounded);
  }
  block->next_free = place + rounded;
  return place;
}

// The same from the heap where region is no_memory_region.
void *alloc_general_or_in_region(a_memory_region_number region, size_t size);

// ---- Heap ----

void *alloc_general(size_t size);
// `address` came from alloc_general; the size is informative.
void free_general(void *address, size_t size);
char *alloc_resizable_buffer(size_t size);
// A null address makes a new buffer.  Returns the buffer's new place.
char *realloc_buffer(char *address, size_t old_size, size_t new_size);
void free_resizable_buffer(char *address);

// ---- Text buffers ----

a_text_buffer *alloc_text_buffer(size_t initial_size);
void expand_text_buffer(a_text_buffer *buffer, size_t minimum_size);
size_t add_to_text_buffer(a_text_buffer *buffer, const char *text, size_t length);
void remove_null_terminator_from_text_buffer(a_text_buffer *buffer);

inline void add_char_to_text_buffer(a_text_buffer *buffer, char c)
{
  if (buffer->size + 1 > buffer->allocated_size) expand_text_buffer(buffer, buffer->size + 1);
  buffer->buffer[buffer->size++] = c;
}

inline void reset_text_buffer(a_text_buffer *buffer)
{
  buffer->size = 0;
}

// `position` becomes the next byte to write.
inline void set_buffer_position(a_text_buffer *buffer, const char *position)
{
  buffer->size = size_t(position - buffer->buffer);
}

// ---- Mapped blocks ----

void *alloc_new_mem_block(size_t size);
// Records a block that the precompiled-header reader mapped itself.
void record_mapped_mem_block(void *address, size_t size);
void free_mapped_mem_blocks();

// ---- Initialisation, in the driver's order ----

void mem_manage_early_init();
// Regions live in mapped pages if precompiled_header_processing_required is set by now.
void mem_manage_one_time_init();
void mem_manage_init();
// A secondary unit gets a file-scope region of its own.
void mem_manage_trans_unit_init(bool is_primary);
