// host_mapping.cpp - memory mapped from files.
// Owns:    the temporary file behind the mapped blocks of regions.
#include "driver/host_mapping.h"
#include <cerrno>
#include <sys/mman.h>
#include <unistd.h>
#include "driver/host_envir.h"
#include "errors/error.h"
#include "mem/mem_manage.h"

static FILE *f_mapped_il_temp;

size_t do_page_alignment(size_t size)
{
  static size_t page_size;
  if (page_size == 0) page_size = size_t(sysconf(_SC_PAGESIZE));
  return (size + page_size - 1) & ~(page_size - 1);
}

void seek_to_page_alignment(FILE *stream)
{
  long offset = ftell(stream);
  if (offset >= 0) fseek(stream, long(do_page_alignment(size_t(offset))), SEEK_SET);
}

void open_mapped_il_temp_file()
{
  f_mapped_il_temp = open_temp_file(true);
}

void *map_file_region(size_t, size_t size, size_t offset)
{
  if (fseek(f_mapped_il_temp, long(offset + size), SEEK_SET) != 0 ||
      putc(0, f_mapped_il_temp) == EOF || fflush(f_mapped_il_temp) != 0) {
    return nullptr;
  }
  void *address = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE, fileno(f_mapped_il_temp),
                       off_t(offset));
  return address != MAP_FAILED ? address : nullptr;
}

void *map_input_file_to_region(FILE *stream, size_t offset, size_t size, void *address,
                               const char *name)
{
  void *mapped = mmap(address, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_FIXED,
                      fileno(stream), off_t(offset));
  if (mapped == MAP_FAILED || mapped != address) {
    str_errno_catastrophe(ec_unable_to_get_mapped_memory_reason, name, errno);
  }
  return mapped;
}

void unmap_memory(void *address, size_t size)
{
  munmap(address, size);
}

void install_mapping_hooks()
{
  mem_manage_hooks.open_mapped_temp_file = open_mapped_il_temp_file;
  mem_manage_hooks.map_file_region = map_file_region;
  mem_manage_hooks.unmap_memory = unmap_memory;
}
