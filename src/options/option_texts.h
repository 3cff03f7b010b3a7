// option_texts.h - the names of the options in both forms, for the files that make the tables.
#pragma once
#include "options/option_tables.h"
#include "options/scramble.h"

// A name as its row gives it.
struct a_name_row {
  option_id   option;
  bool        linker_only;
  char const *plain;  // for the compiler only
};

inline constexpr a_name_row main_name_rows[] = {
#define OPTION(id, kind, group, name, description) {opt_##id, false, name},
#include "options/options.def"
};
inline constexpr a_name_row other_name_rows[] = {
#define NAME(id, name)        {opt_##id, false, name},
#define LINKER_NAME(id, name) {opt_##id, true, name},
#include "options/option_names.def"
};
inline constexpr int other_name_count = int(std::size(other_name_rows));

inline constexpr auto main_name_pool = scrambled_pool(
#define OPTION(id, kind, group, name, description) name "\0"
#include "options/options.def"
);
inline constexpr auto other_name_pool = scrambled_pool(
#define NAME(id, name)        name "\0"
#define LINKER_NAME(id, name) name "\0"
#include "options/option_names.def"
);

inline constexpr auto main_name_texts  = texts_of<option_count>(main_name_pool);
inline constexpr auto other_name_texts = texts_of<other_name_count>(other_name_pool);
