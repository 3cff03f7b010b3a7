// pieces.cpp - the pieces of normal size that the blocks of memory regions are cut from.
// Owns:    the chunk in use, the list of free pieces.
// Rule:    a small input lives in one chunk of small pages; all later chunks ask for large pages,
//          since the faults of small ones would cost as much as a good part of the parse.  Free
//          pieces are used again, the last one first; none goes back to the system.
#include <cstdint>
#include <cstdlib>
#include <sys/mman.h>

#include "mem/mem_manage.h"
#include "mem/mem_private.h"

#ifdef __SANITIZE_ADDRESS__

// The sanitizer is to see the use of a piece that was given back.
void *alloc_piece()
{
  return malloc(HOST_ALLOCATION_INCREMENT);
}

void free_piece(void *piece)
{
  free(piece);
}

#else

static constexpr size_t size_of_first_chunk = 16 * HOST_ALLOCATION_INCREMENT;
static constexpr size_t size_of_large_page = 0x200000;
static constexpr size_t size_of_later_chunk = 4 * size_of_large_page;

struct a_free_piece {
  a_free_piece *next;
};

static char *next_piece_of_chunk;
static char *end_of_chunk;
static a_free_piece *free_pieces;

// Address space that begins on a large page; what is mapped beyond it for that goes back at once.
static char *map_large_pages(size_t size)
{
  size_t mapped_size = size + size_of_large_page;
  void *mapped =
      mmap(nullptr, mapped_size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (mapped == MAP_FAILED) return nullptr;
  char *start =
      reinterpret_cast<char *>(round_up(reinterpret_cast<uintptr_t>(mapped), size_of_large_page));
  size_t before = size_t(start - static_cast<char *>(mapped));
  if (before != 0) munmap(mapped, before);
  munmap(start + size, size_of_large_page - before);
  madvise(start, size, MADV_HUGEPAGE); // refused where there are none: small pages serve as well
  return start;
}

static bool begin_chunk()
{
  bool is_first = end_of_chunk == nullptr;
  size_t size = is_first ? size_of_first_chunk : size_of_later_chunk;
  char *chunk = is_first ? static_cast<char *>(malloc(size)) : map_large_pages(size);
  if (chunk == nullptr) return false;
  next_piece_of_chunk = chunk;
  end_of_chunk = chunk + size;
  return true;
}

// HOST_ALLOCATION_INCREMENT uninitialised bytes, or null.
void *alloc_piece()
{
  if (free_pieces != nullptr) {
    a_free_piece *piece = free_pieces;
    free_pieces = piece->next;
    return piece;
  }
  if (next_piece_of_chunk == end_of_chunk && !begin_chunk()) return nullptr;
  char *piece = next_piece_of_chunk;
  next_piece_of_chunk += HOST_ALLOCATION_INCREMENT;
  return piece;
}

void free_piece(void *piece)
{
  a_free_piece *freed = static_cast<a_free_piece *>(piece);
  freed->next = free_pieces;
  free_pieces = freed;
}

#endif
