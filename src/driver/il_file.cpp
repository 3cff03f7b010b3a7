// il_file.cpp - the IL as a binary image of its memory regions.
// Owns:    f_il_output, the offsets of the regions in it (index_for_il_file).
// Rule:    each region is written once, when nothing is added to it any more; a run with errors
//          leaves no file behind.
#include "driver/il_file.h"
#include <cerrno>
#include <cstring>
#include "driver/flags.h"
#include "driver/host_envir.h"
#include "driver/later_modules.h"
#include "driver/trans_unit.h"
#include "errors/error.h"
#include "il/il_alloc.h"
#include "il/il_walk.h"
#include "parse/scope_stk.h"

static constexpr char il_file_signature[] = "ZOK IL file (v4.4)\f\f";
static constexpr long offset_of_region_words = sizeof il_file_signature - 1 + 1;

// What stands behind the signature; filled in at the end.
struct an_il_file_index {
  unsigned long highest_region_number;
  unsigned long offset_of_index;
  unsigned long offset_of_region_1;
};

struct a_region_header {
  unsigned long zero;
  unsigned long length; // of all blocks with their headers
  a_scope *root;
  unsigned long reserved;
};

FILE *f_il_output;
static const char *il_output_name;
static long offset_of_il_header;

// ---- Writing ----

static void put_bytes(const void *bytes, size_t size, an_error_code part)
{
  if (fwrite(bytes, 1, size, f_il_output) != size) file_write_error(part, errno);
}

static unsigned long curr_offset(an_error_code part)
{
  long offset = ftell(f_il_output);
  if (offset < 0) file_write_error(part, errno);
  return (unsigned long)offset;
}

static void go_to_offset(long offset, an_error_code part)
{
  if (fseek(f_il_output, offset, SEEK_SET) != 0) file_write_error(part, errno);
}

static void put_header_records(an_error_code part)
{
  put_bytes(&il_header, sizeof il_header, part);
  put_bytes(orphaned_file_scope_il_entries, sizeof orphaned_file_scope_il_entries, part);
}

static void walk_region(a_memory_region_number region)
{
  static const an_il_walk_callbacks no_callbacks = {};
  walk_routine_scope_il(region, &no_callbacks);
}

static void put_blocks(a_memory_region_number region)
{
  for (a_mem_block *block = mem_region_table[region]; block != nullptr; block = block->next) {
    put_bytes(block, sizeof *block, ec_file_kind_il_4);
    put_bytes(block->first_byte, size_t(block->next_free - block->first_byte), ec_file_kind_il_5);
  }
}

void write_memory_region(a_memory_region_number region)
{
  if (f_il_output == nullptr || index_for_il_file[region] != 0) return;
  if (region != 1) walk_region(region);
  index_for_il_file[region] = curr_offset(ec_file_kind_il_2);
  a_region_header header = {0, 0, region_scope_table[region], 0};
  for (a_mem_block *block = mem_region_table[region]; block != nullptr; block = block->next) {
    header.length += size_t(block->next_free - block->first_byte) + sizeof *block;
  }
  put_bytes(&header, sizeof header, ec_file_kind_il_3);
  put_blocks(region);
  if (region != 1) return;
  unsigned long end = curr_offset(ec_file_kind_il_6);
  go_to_offset(offset_of_il_header, ec_file_kind_il_6);
  put_header_records(ec_file_kind_il_6);
  go_to_offset(long(end), ec_file_kind_il_6);
}

// ---- When regions are written ----

static bool belongs_to_secondary_unit(a_scope *root)
{
  return root != nullptr && entry_flags_of(root).is_secondary_entry;
}

static bool function_is_done(a_routine *routine)
{
  return routine->is_defined && !keep_function_body_for_possible_inlining(routine) &&
         routine->body_was_lowered && !routine->lowering_delayed;
}

static void write_region_if_done(a_memory_region_number region)
{
  if (f_il_output == nullptr) return;
  a_scope *root = region_scope_table[region];
  if (belongs_to_secondary_unit(root)) return;
  bool is_function = root != nullptr && root->kind == sck_function;
  if (!is_function || function_is_done(routine_of_scope(root))) write_memory_region(region);
}

static void write_region_of_primary_unit(a_memory_region_number region)
{
  if (!belongs_to_secondary_unit(region_scope_table[region])) write_memory_region(region);
}

// ---- The file ----

void il_write_early_init()
{
  f_il_output = nullptr;
  mem_manage_hooks.write_done_region = write_region_if_done;
  mem_manage_hooks.write_remaining_region = write_region_of_primary_unit;
}

void open_il_output_file()
{
  const char *name = il_file_name;
  if (name == nullptr) {
    if (strcmp(primary_source_file_name, "-") == 0) {
      str_command_line_error(ec_cl_il_file_must_be_specified, "\"-\"");
    }
    name = derived_name(primary_source_file_name, "cil");
  }
  il_output_name = name;
  f_il_output = open_output_file_with_error_handling(name, true, true, 0, ec_file_kind_il_1);
}

void start_il_file()
{
  if (f_il_output == nullptr) return;
  an_il_file_index index = {};
  put_bytes(il_file_signature, sizeof il_file_signature, ec_file_kind_il_1);
  put_bytes(&index, sizeof index, ec_file_kind_il_1);
  offset_of_il_header = long(curr_offset(ec_file_kind_il_1));
  put_header_records(ec_file_kind_il_1);
}

void finish_il_file()
{
  if (f_il_output == nullptr) return;
  unsigned long zero = 0;
  put_bytes(&zero, sizeof zero, ec_file_kind_il_7);
  an_il_file_index index;
  index.highest_region_number = (unsigned long)highest_used_region_number;
  index.offset_of_index = curr_offset(ec_file_kind_il_8);
  index.offset_of_region_1 = index_for_il_file[1];
  put_bytes(index_for_il_file, size_t(highest_used_region_number + 1) * sizeof *index_for_il_file,
            ec_file_kind_il_8);
  go_to_offset(offset_of_region_words, ec_file_kind_il_9);
  put_bytes(&index, sizeof index, ec_file_kind_il_9);
}

void close_il_output_file()
{
  if (f_il_output == nullptr) return;
  close_output_file_with_error_handling(&f_il_output, ec_file_kind_il_9);
}

void cancel_il_file()
{
  if (f_il_output == nullptr) return;
  fclose(f_il_output);
  f_il_output = nullptr;
  delete_file(il_output_name);
}
