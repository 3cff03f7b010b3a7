// heap.cpp - tracked heap objects, resizable buffers, text buffers.
// Owns:    the allocation records and their two lists, the list of text buffers.
// Rule:    long-lived objects only: finding a record is a walk of its list.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include "mem/check.h"
#include "mem/mem_manage.h"
#include "mem/mem_private.h"

struct a_general_alloc_record {
  a_general_alloc_record *next;
  void *address;
  size_t size;
};

static constexpr int size_of_record_pool = 1024;
static a_general_alloc_record record_pool[size_of_record_pool];
static int num_general_alloc_records_used;         // records taken from the pool
static a_general_alloc_record *general_alloc_list; // general allocations, text buffer descriptors
static a_general_alloc_record *resizable_buffer_list;
static a_text_buffer *text_buffer_list;

void out_of_memory()
{
  if (mem_manage_hooks.out_of_memory != nullptr) mem_manage_hooks.out_of_memory();
  // No error engine yet: all that is left is the text and the status of a catastrophe.
  fputs("out of memory\n", stderr);
  _Exit(4);
}

static void *alloc_from_heap(size_t size)
{
  void *address = malloc(size != 0 ? size : 1);
  if (address == nullptr) out_of_memory();
  return address;
}

static void record_allocation(a_general_alloc_record **list, void *address, size_t size)
{
  a_general_alloc_record *record;
  if (num_general_alloc_records_used < size_of_record_pool) {
    record = &record_pool[num_general_alloc_records_used++];
  } else {
    record = static_cast<a_general_alloc_record *>(alloc_from_heap(sizeof *record));
  }
  *record = {*list, address, size};
  *list = record;
}

static a_general_alloc_record *find_record(a_general_alloc_record *list, const void *address)
{
  a_general_alloc_record *record = list;
  while (record != nullptr && record->address != address)
    record = record->next;
  check(record != nullptr);
  return record;
}

// ---- General allocations ----

void *alloc_general(size_t size)
{
  void *address = alloc_from_heap(size);
  record_allocation(&general_alloc_list, address, size);
  return address;
}

// The record stays in its list.
static void free_recorded(a_general_alloc_record *list, void *address)
{
  if (address == nullptr) return;
  a_general_alloc_record *record = find_record(list, address);
  record->address = nullptr;
  record->size = 0;
  free(address);
}

void free_general(void *address, size_t)
{
  free_recorded(general_alloc_list, address);
}

// ---- Resizable buffers ----

char *alloc_resizable_buffer(size_t size)
{
  char *address = static_cast<char *>(alloc_from_heap(size));
  record_allocation(&resizable_buffer_list, address, size);
  return address;
}

char *realloc_buffer(char *address, size_t, size_t new_size)
{
  if (address == nullptr) return alloc_resizable_buffer(new_size);
  a_general_alloc_record *record = find_record(resizable_buffer_list, address);
  char *moved = static_cast<char *>(realloc(address, new_size != 0 ? new_size : 1));
  if (moved == nullptr) out_of_memory();
  record->address = moved;
  record->size = new_size;
  return moved;
}

void free_resizable_buffer(char *address)
{
  free_recorded(resizable_buffer_list, address);
}

// ---- Text buffers ----

a_text_buffer *alloc_text_buffer(size_t initial_size)
{
  a_text_buffer *buffer = static_cast<a_text_buffer *>(alloc_from_heap(sizeof *buffer));
  record_allocation(&general_alloc_list, buffer, sizeof *buffer);
  buffer->allocated_size = initial_size;
  buffer->size = 0;
  buffer->increment = initial_size;
  buffer->buffer = static_cast<char *>(alloc_from_heap(initial_size));
  buffer->next = text_buffer_list;
  text_buffer_list = buffer;
  return buffer;
}

void expand_text_buffer(a_text_buffer *buffer, size_t minimum_size)
{
  if (buffer->allocated_size >= minimum_size) return;
  if (buffer->increment == 0) buffer->increment = HOST_ALIGNMENT_REQUIRED;
  if (minimum_size > SIZE_MAX - buffer->increment) out_of_memory();
  size_t new_size = round_up(minimum_size, buffer->increment);
  char *moved = static_cast<char *>(realloc(buffer->buffer, new_size));
  if (moved == nullptr) out_of_memory();
  buffer->buffer = moved;
  buffer->allocated_size = new_size;
  buffer->increment *= 2;
}

size_t add_to_text_buffer(a_text_buffer *buffer, const char *text, size_t length)
{
  size_t new_size = buffer->size + length;
  if (new_size > buffer->allocated_size) expand_text_buffer(buffer, new_size);
  if (length != 0) memcpy(buffer->buffer + buffer->size, text, length); // no text: no source either
  buffer->size = new_size;
  return length;
}

void remove_null_terminator_from_text_buffer(a_text_buffer *buffer)
{
  if (buffer->size != 0 && buffer->buffer[buffer->size - 1] == '\0') buffer->size--;
}

void heap_early_init()
{
  num_general_alloc_records_used = 0;
  general_alloc_list = nullptr;
  resizable_buffer_list = nullptr;
  text_buffer_list = nullptr;
}
