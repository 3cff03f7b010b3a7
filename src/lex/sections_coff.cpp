// sections_coff.cpp - reads a section out of an object file of the tool chain (COFF).
// Owns:    the open file and its section headers, load_err, sect_size.
// Rule:    nothing in the file is trusted: offsets and sizes are held against the file's length.
// Entry:   coff_open, coff_sect_data, coff_close.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>

#include "lex/sections.h"

int load_err;
size_t sect_size;

enum : uint32_t {
  coff_target = 153,    // the target's number, and the version of files that have no other
  coff_version_0 = 192, // file header of 20 bytes
  coff_version_1 = 193, // 22 bytes: the target stands behind the flags
  coff_version_2 = 194, // and section headers of 48 bytes
  file_header_size = 22,
  symbol_size = 18,
  short_name_size = 8,
};

struct a_coff_file {
  FILE *stream;
  long length;
  bool is_exchanged; // the bytes of a number stand in the other order
  uint32_t symbol_table;
  uint32_t number_of_symbols;
  uint32_t number_of_sections;
  uint32_t section_header_size;
  unsigned char *section_headers;
};
static a_coff_file coff;

//---------------------------------------------------------------------------------------------
// Numbers and blocks
//---------------------------------------------------------------------------------------------

static uint32_t exchanged_16(uint32_t value)
{
  return (value & 0xff) << 8 | (value >> 8 & 0xff);
}

static uint32_t number_16(const unsigned char *place)
{
  uint16_t value;
  memcpy(&value, place, sizeof value);
  return coff.is_exchanged ? exchanged_16(value) : value;
}

static uint32_t number_32(const unsigned char *place)
{
  uint32_t value;
  memcpy(&value, place, sizeof value);
  if (!coff.is_exchanged) return value;
  return exchanged_16(value & 0xffff) << 16 | exchanged_16(value >> 16);
}

static bool read_at(uint64_t offset, void *block, size_t size)
{
  if (offset + size > (uint64_t)coff.length || fseek(coff.stream, (long)offset, SEEK_SET) != 0 ||
      fread(block, 1, size, coff.stream) != size) {
    load_err = load_read_error;
    return false;
  }
  return true;
}

// A block of malloc with `size` bytes of the file; null and load_err after a failure.
static unsigned char *new_block_from(uint64_t offset, size_t size)
{
  if (offset + size > (uint64_t)coff.length) { // a size that is only claimed isn't allocated
    load_err = load_read_error;
    return nullptr;
  }
  unsigned char *block = (unsigned char *)malloc(size == 0 ? 1 : size);
  if (block == nullptr) {
    load_err = load_out_of_memory;
    return nullptr;
  }
  if (size == 0 || read_at(offset, block, size)) return block;
  free(block);
  return nullptr;
}

//---------------------------------------------------------------------------------------------
// Headers
//---------------------------------------------------------------------------------------------

static bool is_known_version(uint32_t version)
{
  return version == coff_target || (version >= coff_version_0 && version <= coff_version_2);
}

// Finds the order of bytes; the version, or 0 if it is none.
static uint32_t version_of_header(const unsigned char *header)
{
  for (bool exchanged : {false, true}) {
    coff.is_exchanged = exchanged;
    if (uint32_t version = number_16(header); is_known_version(version)) return version;
  }
  return 0;
}

static bool read_headers()
{
  unsigned char header[file_header_size] = {};
  if (!read_at(0, header, sizeof header)) return false;
  uint32_t version = version_of_header(header);
  bool has_target = version >= coff_version_1;
  if (version == 0 || (has_target && number_16(header + 20) != coff_target)) {
    load_err = load_bad_format;
    return false;
  }
  coff.number_of_sections = number_16(header + 2);
  coff.symbol_table = number_32(header + 8);
  coff.number_of_symbols = number_32(header + 12);
  coff.section_header_size = version == coff_version_2 ? 48 : 40;
  uint32_t header_size = has_target ? 22 : 20;
  coff.section_headers = new_block_from(header_size + number_16(header + 16),
                                        (size_t)coff.number_of_sections * coff.section_header_size);
  return coff.section_headers != nullptr;
}

bool coff_open(const char *name)
{
  coff_close();
  load_err = load_ok;
  coff.stream = fopen(name, "rb");
  if (coff.stream == nullptr || fseek(coff.stream, 0, SEEK_END) != 0 ||
      (coff.length = ftell(coff.stream)) < 0) {
    load_err = load_read_error;
  } else if (read_headers()) {
    return true;
  }
  coff_close();
  return false;
}

void coff_close()
{
  free(coff.section_headers);
  if (coff.stream != nullptr) fclose(coff.stream);
  coff = {};
}

//---------------------------------------------------------------------------------------------
// Sections
//---------------------------------------------------------------------------------------------

// A long name stands in the string table, which lies behind the symbols.
static bool long_name_matches(uint32_t offset, const char *name)
{
  uint64_t place =
      (uint64_t)coff.symbol_table + (uint64_t)coff.number_of_symbols * symbol_size + offset;
  for (const char *p = name;; ++p, ++place) {
    char c;
    if (place >= (uint64_t)coff.length || !read_at(place, &c, 1) || c != *p) return false;
    if (c == '\0') return true;
  }
}

// A name of eight characters fills its place, without a null character.
static bool name_matches(const unsigned char *header, const char *name)
{
  static const unsigned char no_name[4] = {};
  if (memcmp(header, no_name, sizeof no_name) == 0) {
    return long_name_matches(number_32(header + 4), name);
  }
  return strncmp((const char *)header, name, short_name_size) == 0 &&
         strlen(name) <= short_name_size;
}

unsigned char *coff_sect_data(const char *section_name)
{
  load_err = load_no_section;
  if (coff.stream == nullptr) return nullptr;
  for (uint32_t i = 0; i < coff.number_of_sections; ++i) {
    const unsigned char *header = coff.section_headers + (size_t)i * coff.section_header_size;
    if (!name_matches(header, section_name)) {
      load_err = load_no_section;
      continue;
    }
    load_err = load_ok;
    sect_size = number_32(header + 16);
    return new_block_from(number_32(header + 20), sect_size);
  }
  return nullptr;
}
