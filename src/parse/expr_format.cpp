// expr_format.cpp - the format strings of printf and scanf against the arguments of the call.
// Entry:   check_format_arguments.
// See:     C99 7.19.6.1, 7.19.6.2; positional forms are those of POSIX.
#include <cstring>

#include "consts/folding.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "il/il.h"
#include "il/types.h"
#include "parse/expr_args.h"
#include "parse/expr_internal.h"

enum a_length_modifier : unsigned char {
  lm_none,
  lm_hh,
  lm_h,
  lm_l,
  lm_ll,
  lm_long_double,
  lm_j,
  lm_z,
  lm_t,
  lm_int40
};

struct a_format_scan {
  const an_arg_check_block *block;
  const char *text;
  const char *end;
  an_expr_node *next_arg; // the one that the next conversion takes
  bool positional_seen;
  bool stopped;
};

// -------------------------------------------------------------------------------------------------
// The text

// The literal behind a format argument, through casts; false when it is none.
static bool text_of_format(an_expr_node *argument, const char **text, const char **end)
{
  while (is_operation(argument, eok_cast))
    argument = first_operand_of(argument);
  a_constant *string = nullptr;
  if (is_operation(argument, eok_array_to_pointer)) argument = first_operand_of(argument);
  if (argument->kind != enk_constant) return false;
  a_constant *constant = constant_of(argument);
  if (constant->kind == ck_string) {
    string = constant;
  } else if (constant->kind == ck_address && address_of(constant).kind == ack_constant) {
    if (address_of(constant).offset != 0) return false;
    string = (a_constant *)address_of(constant).entity;
  }
  if (string == nullptr || string->kind != ck_string || !is_ordinary_string_constant(string))
    return false;
  const a_constant_string &value = string_of(string);
  if (value.length == 0 || value.text[value.length - 1] != 0) return false;
  *text = value.text;
  *end = value.text + value.length - 1;
  return true;
}

// -------------------------------------------------------------------------------------------------
// Arguments

static an_expr_node *take_argument(a_format_scan *scan)
{
  an_expr_node *argument = scan->next_arg;
  if (argument == nullptr) {
    expr_pos_warning(ec_too_few_printf_args, scan->block->format_arg->expr_range.start);
    scan->stopped = true;
    return nullptr;
  }
  scan->next_arg = argument->next;
  return argument;
}

// "12$": the argument with that number, from the first that the format describes.
static bool positional_number(a_format_scan *scan, an_expr_node **argument)
{
  if (!check_printf_scanf_positional_args) return false;
  const char *p = scan->text;
  unsigned number = 0;
  while (p < scan->end && *p >= '0' && *p <= '9' && number <= 99)
    number = number * 10 + (unsigned)(*p++ - '0');
  if (p == scan->text || p >= scan->end || *p != '$') return false;
  scan->text = p + 1;
  scan->positional_seen = true;
  *argument = nullptr;
  if (number == 0) {
    expr_pos_warning(ec_positional_format_specifier_zero,
                     scan->block->format_arg->expr_range.start);
    scan->stopped = true;
    return true;
  }
  if (number > 99) {
    scan->stopped = true;
    return true;
  }
  *argument = scan->block->first_format_arg;
  while (*argument != nullptr && --number > 0)
    *argument = (*argument)->next;
  if (*argument == nullptr) {
    expr_pos_warning(ec_too_few_printf_args, scan->block->format_arg->expr_range.start);
    scan->stopped = true;
  }
  return true;
}

// -------------------------------------------------------------------------------------------------
// Expected types

static an_integer_kind with_sign(an_integer_kind kind, bool is_signed)
{
  a_type *type = integer_type(kind);
  if (is_unsigned_integral_type(type) != is_signed) return kind;
  return int_kind_of_type(other_signedness_integer_type(kind));
}

static a_type *integer_of_length(a_length_modifier length, bool is_signed)
{
  switch (length) {
  case lm_hh: return integer_type(is_signed ? ik_signed_char : ik_unsigned_char);
  case lm_h: return integer_type(is_signed ? ik_short : ik_unsigned_short);
  case lm_l: return integer_type(is_signed ? ik_long : ik_unsigned_long);
  case lm_ll:
  case lm_long_double: return integer_type(is_signed ? ik_long_long : ik_unsigned_long_long);
  case lm_j: return integer_type(with_sign(targ_intmax_kind, is_signed));
  case lm_z: return integer_type(with_sign(targ_size_t_int_kind, is_signed));
  case lm_t: return integer_type(with_sign(targ_ptrdiff_t_int_kind, is_signed));
  case lm_int40: return integer_type(is_signed ? ik_int40 : ik_unsigned_int40);
  case lm_none: break;
  }
  return integer_type(is_signed ? ik_int : ik_unsigned_int);
}

static a_type *floating_of_length(a_length_modifier length, bool is_scanf)
{
  if (length == lm_long_double) return float_type(fk_long_double);
  if (!is_scanf || length == lm_l) return float_type(fk_double);
  return float_type(fk_float);
}

// The type that a conversion describes (scanf: points to); null for an unknown letter.
static a_type *type_of_conversion(char letter, a_length_modifier length, bool is_scanf)
{
  switch (letter) {
  case 'a':
  case 'A':
  case 'e':
  case 'E':
  case 'f':
  case 'F':
  case 'g':
  case 'G': return floating_of_length(length, is_scanf);
  case 'd':
  case 'i':
  case 'n': return integer_of_length(length, true);
  case 'o':
  case 'u':
  case 'x':
  case 'X': return integer_of_length(length, false);
  case 'p': return make_pointer_type(void_type());
  case 'c':
    if (length == lm_l && !is_scanf) return integer_type(targ_wint_t_int_kind);
    [[fallthrough]];
  case 's':
  case '[':
    if (letter == '[' && !is_scanf) return nullptr;
    if (length == lm_l) return eff_wchar_t_type();
    return integer_type(letter == 'c' && !is_scanf ? ik_int : plain_char_int_kind);
  default: return nullptr;
  }
}

// -------------------------------------------------------------------------------------------------
// Comparison

static bool differs_in_sign_only(a_type *a, a_type *b)
{
  if (is_character_type(a) && is_character_type(b)) return true;
  return is_integral_or_enum_type(a) && is_integral_or_enum_type(b) &&
         integral_types_the_same_except_for_signedness(a, b);
}

static bool is_one_of(char letter, const char *letters)
{
  return strchr(letters, letter) != nullptr;
}

static bool value_fits(a_type *actual, a_type *expected, char letter)
{
  if (f_types_are_compatible(actual, expected, tco_ignore_top_qualifiers)) return true;
  if (is_one_of(letter, "oxXps") && differs_in_sign_only(actual, expected)) return true;
  if (is_one_of(letter, "oxXp") && is_pointer_type(expected) && is_pointer_type(actual))
    return true;
  bool pointer_as_integer =
      is_integral_or_enum_type(expected) && is_pointer_type(actual) && !strict_ansi_mode;
  return pointer_as_integer && size_of_type(actual) == size_of_type(expected) &&
         f_alignment_of_type(actual) == f_alignment_of_type(expected);
}

static void report_mismatch(an_expr_node *argument, a_type *actual, a_type *expected)
{
  bool harmless = interchangeable_types(actual, expected) ||
                  (is_integral_or_enum_type(actual) && is_integral_or_enum_type(expected) &&
                   differs_in_sign_only(actual, expected));
  expr_pos_diagnostic(harmless ? es_remark : es_warning, ec_printf_arg_mismatch,
                      argument->expr_range.start);
}

// The argument is a pointer to what the conversion reads or writes.
static void compare_pointer_argument(an_expr_node *argument, a_type *expected, char letter,
                                     bool is_scanf)
{
  a_type *actual = argument->type;
  if (!is_pointer_type(actual)) {
    if (!is_error_type(actual))
      expr_pos_warning(ec_printf_arg_mismatch, argument->expr_range.start);
    return;
  }
  a_type *object = type_pointed_to(actual);
  if (is_scanf && letter != 'p' && is_const_qualified(object)) {
    expr_pos_warning(ec_printf_arg_mismatch, argument->expr_range.start);
    return;
  }
  object = make_unqualified_type(object);
  if (value_fits(object, expected, letter)) return;
  if ((letter == 's' || letter == '[') && is_character_type(object) && is_character_type(expected))
    return;
  report_mismatch(argument, object, expected);
}

static void compare_argument(an_expr_node *argument, a_type *expected, char letter, bool is_scanf)
{
  bool through_pointer = is_scanf || letter == 'n' || letter == 's' || letter == '[';
  if (through_pointer) {
    compare_pointer_argument(argument, expected, letter, is_scanf);
    return;
  }
  a_type *actual = rvalue_type(argument->type);
  expected = type_after_integral_promotion(expected);
  if (value_fits(actual, expected, letter)) return;
  report_mismatch(argument, actual, expected);
}

// -------------------------------------------------------------------------------------------------
// One conversion

static void compare_star(a_format_scan *scan)
{
  an_expr_node *argument;
  ++scan->text;
  if (!positional_number(scan, &argument)) argument = take_argument(scan);
  if (argument == nullptr || scan->stopped) return;
  if (!value_fits(rvalue_type(argument->type), integer_type(ik_int), 'd')) {
    report_mismatch(argument, rvalue_type(argument->type), integer_type(ik_int));
  }
}

static void skip_digits(a_format_scan *scan)
{
  while (scan->text < scan->end && *scan->text >= '0' && *scan->text <= '9')
    ++scan->text;
}

static void scan_width_and_precision(a_format_scan *scan)
{
  if (scan->text < scan->end && *scan->text == '*')
    compare_star(scan);
  else
    skip_digits(scan);
  if (scan->stopped || scan->text >= scan->end || *scan->text != '.') return;
  ++scan->text;
  if (scan->text < scan->end && *scan->text == '*')
    compare_star(scan);
  else
    skip_digits(scan);
}

static a_length_modifier scan_length(a_format_scan *scan)
{
  const char *p = scan->text;
  char first = p < scan->end ? *p : '\0', second = p + 1 < scan->end ? p[1] : '\0';
  if (first == 'I' && second == '4' && p + 2 < scan->end && p[2] == '0') {
    scan->text += 3;
    return lm_int40;
  }
  if ((first == 'l' && second == 'l') || (first == 'h' && second == 'h')) {
    scan->text += 2;
    return first == 'l' ? lm_ll : lm_hh;
  }
  a_length_modifier length = lm_none;
  switch (first) {
  case 'l': length = lm_l; break;
  case 'h': length = lm_h; break;
  case 'L': length = lm_long_double; break;
  case 'j': length = lm_j; break;
  case 'z': length = lm_z; break;
  case 't': length = lm_t; break;
  default: return lm_none;
  }
  ++scan->text;
  return length;
}

// Behind "[" of scanf: to the "]" that ends the set.
static void skip_scan_set(a_format_scan *scan)
{
  if (scan->text < scan->end && *scan->text == '^') ++scan->text;
  if (scan->text < scan->end && *scan->text == ']') ++scan->text;
  while (scan->text < scan->end && *scan->text != ']')
    ++scan->text;
  if (scan->text < scan->end) ++scan->text;
}

static void scan_conversion(a_format_scan *scan)
{
  bool is_scanf = scan->block->format_kind == fmk_scanf, suppressed = false;
  an_expr_node *argument = nullptr;
  bool positional = positional_number(scan, &argument);
  if (scan->stopped) return;
  if (is_scanf) {
    if (scan->text < scan->end && *scan->text == '*') {
      suppressed = true;
      ++scan->text;
    }
    skip_digits(scan);
  } else {
    while (scan->text < scan->end && is_one_of(*scan->text, "-+ #0'"))
      ++scan->text;
    scan_width_and_precision(scan);
    if (scan->stopped) return;
  }
  a_length_modifier length = scan_length(scan);
  char letter = scan->text < scan->end ? *scan->text++ : '\0';
  a_type *expected = letter != '\0' ? type_of_conversion(letter, length, is_scanf) : nullptr;
  if (expected == nullptr) {
    expr_pos_warning(ec_bad_printf_format_string, scan->block->format_arg->expr_range.start);
    scan->stopped = true;
    return;
  }
  if (letter == '[') skip_scan_set(scan);
  if (suppressed) return;
  if (!positional) argument = take_argument(scan);
  if (argument != nullptr && !scan->stopped) compare_argument(argument, expected, letter, is_scanf);
}

void check_format_arguments(const an_arg_check_block *block)
{
  a_format_scan scan = {};
  scan.block = block;
  scan.next_arg = block->first_format_arg;
  if (!text_of_format(block->format_arg, &scan.text, &scan.end)) return;
  while (scan.text < scan.end && !scan.stopped) {
    if (*scan.text++ != '%') continue;
    if (scan.text < scan.end && *scan.text == '%') {
      ++scan.text;
      continue;
    }
    scan_conversion(&scan);
  }
  if (!scan.stopped && !scan.positional_seen && scan.next_arg != nullptr) {
    expr_pos_warning(ec_too_many_printf_args, scan.next_arg->expr_range.start);
  }
}
