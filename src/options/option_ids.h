// option_ids.h - the numbers of the options and of their classes.
#pragma once

enum option_id : int {
#define OPTION(id, kind, group, name, description) opt_##id,
#include "options/options.def"
};

enum class_id : int {
#define CLASS(group, description) class_##group,
#define MEMBER(group, option)
#include "options/option_classes.def"
};

constexpr int option_count =
#define OPTION(id, kind, group, name, description) +1
#include "options/options.def"
    ;
constexpr int class_count =
#define CLASS(group, description) +1
#define MEMBER(group, option)
#include "options/option_classes.def"
    ;

// Kinds of parameters.  3, 6 and 7 have numbers and no use.
enum a_parm_kind : unsigned char {
  parm_none = 0,
  parm_text = 1,    // one string
  parm_number = 2,  // one number
  parm_word = 4,    // one of a list of words
  parm_list = 5     // a list of strings
};

// What an option does to one that was set before it.
enum a_conflict_kind : unsigned char {
  no_conflict,
  conflict_clears,     // a remark, and the other is cleared
  conflict_overrides,  // a warning, and the other is cleared
  conflict_refuses     // an error, and the other is cleared
};
