// an_argument.h - one argument of an option.
#pragma once

enum an_argument_type : int {
  arg_signed   = 0,
  arg_unsigned = 1,
  arg_string   = 2,
  arg_none     = 4
};

// Both sides of a comparison are of the same type: another one is a fault of the tool and ends it.
struct an_argument_t {
  int type = arg_none;
  union {
    long          number;             // arg_signed
    unsigned long unsigned_number;    // arg_unsigned
    char const   *string = nullptr;   // arg_string; who owns it says the holder
  } value;
  unsigned long length = 0;  // of the string

  static an_argument_t of_number(long number);
  static an_argument_t of_unsigned(unsigned long number);
  static an_argument_t of_string(char const *string);

  // Numbers compare as numbers, strings by strcmp; two empty arguments are equal.
  bool operator==(an_argument_t const &rhs) const;
  bool operator>(an_argument_t const &rhs) const;
};
