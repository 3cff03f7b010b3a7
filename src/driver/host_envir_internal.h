// host_envir_internal.h - what the files of the host module share; nobody else includes it.
#pragma once

// A copy in the general heap that is never freed.
char *copy_of_string(const char *text);
// The one string that stands for this directory: equal names are equal pointers.
const char *shared_directory_name(const char *dir);

void host_envir_search_early_init();
void host_envir_search_one_time_init();
