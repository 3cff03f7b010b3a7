// attribute_mode.cpp - the type that a mode word names.
// Rule:    the words of integers and floats name sizes; the kind of that size is the target's.
#include <cstring>

#include "consts/const_ints.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il.h"
#include "parse/attribute.h"

enum a_mode_class : unsigned char { mc_integer, mc_float, mc_complex };

struct a_type_mode {
  const char *word;
  a_mode_class mode_class;
  unsigned size; // bytes
};

// The size of `word` and `pointer` is the target's.
static const a_type_mode type_mode_kind_names[] = {
    {"QI", mc_integer, 1},      {"HI", mc_integer, 2},   {"SI", mc_integer, 4},
    {"DI", mc_integer, 8},      {"TI", mc_integer, 16},  {"SF", mc_float, 4},
    {"DF", mc_float, 8},        {"XF", mc_float, 12},    {"TF", mc_float, 16},
    {"SC", mc_complex, 4},      {"DC", mc_complex, 8},   {"XC", mc_complex, 12},
    {"TC", mc_complex, 16},     {"byte", mc_integer, 1}, {"word", mc_integer, 0},
    {"pointer", mc_integer, 0},
};

static const a_type_mode *find_mode(const char *word)
{
  char buffer[32];
  size_t length = strlen(word);
  if (length > 4 && length < sizeof buffer && memcmp(word, "__", 2) == 0 &&
      memcmp(word + length - 2, "__", 2) == 0) {
    memcpy(buffer, word + 2, length - 4);
    buffer[length - 4] = '\0';
    word = buffer;
  }
  for (const a_type_mode &mode : type_mode_kind_names) {
    if (strcmp(mode.word, word) == 0) return &mode;
  }
  return nullptr;
}

static unsigned size_of_mode(const a_type_mode *mode)
{
  if (mode->size) return mode->size;
  return mode->word[0] == 'p' ? (unsigned)targ_sizeof_pointer : (unsigned)targ_sizeof_int;
}

// The kind of that size, preferring the kinds in the order of their numbers: int before long.
static an_integer_kind integer_kind_of_size(unsigned size, bool is_signed)
{
  static const an_integer_kind kinds[] = {ik_signed_char, ik_short, ik_int, ik_long, ik_long_long};
  for (an_integer_kind kind : kinds) {
    if (integer_type(kind)->size != size) continue;
    return is_signed ? kind : unsigned_int_kind_of[kind];
  }
  return ik_none;
}

static a_float_kind float_kind_of_size(unsigned size)
{
  static const a_float_kind kinds[] = {fk_float, fk_double, fk_long_double};
  for (a_float_kind kind : kinds) {
    if (float_type(kind)->size == size) return kind;
  }
  return fk_none;
}

static a_type *type_of_mode(const a_type_mode *mode, a_type *type)
{
  unsigned size = size_of_mode(mode);
  if (mode->mode_class == mc_integer) {
    bool is_signed = int_kind_is_signed[as_integer(type).int_kind];
    an_integer_kind kind = integer_kind_of_size(size, is_signed);
    return kind == ik_none ? nullptr : integer_type(kind);
  }
  a_float_kind kind = float_kind_of_size(size);
  if (kind == fk_none) return nullptr;
  return mode->mode_class == mc_float ? float_type(kind) : complex_type(kind);
}

static bool mode_fits(const a_type_mode *mode, a_type *type)
{
  switch (mode->mode_class) {
  case mc_integer: return type->kind == tk_integer;
  case mc_float: return type->kind == tk_float;
  case mc_complex: return type->kind == tk_complex;
  }
  return false;
}

a_type *get_type_with_mode(a_type *type, const char *mode_word, a_source_position position)
{
  const a_type_mode *mode = find_mode(mode_word);
  if (mode == nullptr) {
    pos_st_error(ec_invalid_argument_to_attribute, position, "mode");
    return type;
  }
  a_type *plain = skip_typerefs(type);
  // A pointer keeps its kind: there is one size of pointers.
  if (plain->kind == tk_pointer && size_of_mode(mode) == targ_sizeof_pointer &&
      mode->mode_class == mc_integer) {
    return type;
  }
  if (!mode_fits(mode, plain)) {
    pos_stty_error(ec_mode_incompatible_with_type, position, mode_word, type);
    return type;
  }
  a_type *result = type_of_mode(mode, plain);
  if (result == nullptr) {
    pos_error(ec_no_type_of_specified_width, position);
    return type;
  }
  unsigned qualifiers = get_type_qualifiers(type);
  return qualifiers ? f_make_qualified_type(result, qualifiers, -1) : result;
}
