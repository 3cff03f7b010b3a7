// host_mapping.h - memory mapped from files: what precompiled headers save and map again.
#pragma once
#include <cstddef>
#include <cstdio>

// Rounds a size up to a multiple of the page size.
size_t do_page_alignment(size_t size);
// Moves the stream's position up to a page boundary.
void seek_to_page_alignment(FILE *stream);
// Makes the temporary file, which has no name and goes with the process; catastrophe 165 on
// failure.
void open_mapped_il_temp_file();
// Extends the temporary file to `offset + size` and maps that part; null on failure.
void *map_file_region(size_t total, size_t size, size_t offset);
// Maps a part of a saved file at exactly `address`; a catastrophe that names the file on failure.
void *map_input_file_to_region(FILE *stream, size_t offset, size_t size, void *address,
                               const char *name);
void unmap_memory(void *address, size_t size);
// Gives the region manager these routines.
void install_mapping_hooks();
