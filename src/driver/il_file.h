// il_file.h - the IL written as a binary memory image, when asked for.
#pragma once
#include <cstdio>
#include "mem/mem_manage.h"

extern FILE *f_il_output; // null unless an IL file is being written

void il_write_early_init();
void open_il_output_file(); // opens it under the given or a derived name
void start_il_file();       // does nothing when no file is open
void write_memory_region(a_memory_region_number region);
void finish_il_file();
void close_il_output_file();
void cancel_il_file(); // closes and deletes the file
