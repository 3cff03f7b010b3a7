// option_arguments.cpp - the arguments behind the names: words, numbers in three bases, strings.
// Uses:    the lists of words and the limits of numbers (option_tables.h).
// Entry:   parse_arg, parse_oneof, check_numerical_arg, get_radix, strtol_by_radix.
#include <climits>
#include <cstring>
#include <string>
#include "options/option_diag.h"
#include "options/option_obj.h"

//-------------------------------------------------------------------------------------------------
// Numbers.

static int digit_value(char c)
{
  if (c >= '0' && c <= '9') return c - '0';
  char const lower = char(c | 0x20);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : 99;
}

static char const *skip_digits(char const *text, int radix)
{
  while (digit_value(*text) < radix)
    text++;
  return text;
}

static bool is_one_of(char c, char const *two_letters)
{
  return c == two_letters[0] || c == two_letters[1];
}

// A trailing letter says more than the prefix: "017h" is hexadecimal.
int option_obj::get_radix(char const *text, char const **digits, char const **behind)
{
  bool const prefixed = text[0] == '0' && is_one_of(text[1], "xX") && digit_value(text[2]) < 16;
  *digits = prefixed ? text + 2 : text;
  char const *end = skip_digits(*digits, 16);
  if (end != *digits && is_one_of(*end, "hH")) {
    *behind = end + 1;
    return 16;
  }
  *behind = end;
  if (prefixed) return 16;
  end = skip_digits(*digits, 8);
  if (end != *digits && is_one_of(*end, "qQ")) {
    *behind = end + 1;
    return 8;
  }
  int const radix = text[0] == '0' && digit_value(text[1]) < 8 ? 8 : 10;
  *behind = skip_digits(*digits, radix);
  return radix;
}

long option_obj::strtol_by_radix(char const *digits, int radix, bool negative)
{
  unsigned long const limit = negative ? 0ul - (unsigned long)LONG_MIN : (unsigned long)LONG_MAX;
  unsigned long value = 0;
  for (; digit_value(*digits) < radix; digits++) {
    unsigned long const digit = (unsigned long)digit_value(*digits);
    if (value > (limit - digit) / (unsigned long)radix) return negative ? LONG_MIN : LONG_MAX;
    value = value * (unsigned long)radix + digit;
  }
  return negative ? long(0ul - value) : long(value);
}

long option_obj::strtol_by_radix(char const *text, char const **rest)
{
  bool const negative = *text == '-';
  char const *digits, *behind;
  int const radix = get_radix(text + negative, &digits, &behind);
  if (rest != nullptr) *rest = behind == digits ? text : behind;
  return strtol_by_radix(digits, radix, negative);
}

// The limits are shown where the message can: it prints them unsigned.
void option_obj::report_numerical_arg(option_id id, char const *text,
                                      a_parameter_limits const *limits)
{
  a_parameter_limits const any_number;
  if (limits->low < 0) {
    report_optgen<DIAG::optgen_arg_out_of_range>({option_name(id), text});
  } else if (limits->low == any_number.low && limits->high == any_number.high) {
    report_optgen<DIAG::optgen_arg_negative>({option_name(id), text});
  } else {
    report_optgen<DIAG::optgen_arg_outside_limits>(
        {option_name(id), text}, {(unsigned long)limits->low, (unsigned long)limits->high});
  }
}

bool option_obj::check_numerical_arg(option_id id, char const *text,
                                     a_parameter_limits const *limits, long *value)
{
  char const *rest;
  *value = strtol_by_radix(text, &rest);
  if (rest == text || *value < limits->low || *value > limits->high) {
    report_numerical_arg(id, text, limits);
    return false;
  }
  if (*rest != '\0') report_optgen<DIAG::optgen_garbage_after_option>({option_name(id) + 1});
  return true;
}

//-------------------------------------------------------------------------------------------------
// Words.

static std::string words_of(an_item const *list)
{
  std::string words;
  for (; list->text != nullptr; list++) {
    if (!words.empty()) words += ',';
    words += option_obj::rot13(list->text);
  }
  return words;
}

an_item const *option_obj::parse_oneof(option_id id, char const *word)
{
  an_item const *list = option_definitions[id].item_list;
  if (list == nullptr) {
    report_optgen<DIAG::optgen_not_a_list>({}, {unsigned(id)});
    return nullptr;
  }
  for (an_item const *item = list; item->text != nullptr; item++) {
    if (strcmp(rot13(item->text), word) == 0) return item;
  }
  std::string const words = words_of(list); // first, since it takes many of rot13's buffers
  report_optgen<DIAG::optgen_bad_argument>({option_name(id), words.c_str()});
  return nullptr;
}

//-------------------------------------------------------------------------------------------------
// Any argument.

// The text of the argument: behind "=", behind blanks, at once, or in the next word; null if there
// is none.
static char const *find_argument(char const *text, a_parameter_limits const *limits)
{
  if (*text == '\0' && limits->omitted != nullptr) return limits->omitted;
  bool const separated = *text == '=';
  if (separated) text++;
  while (!separated && *text == ' ')
    text++;
  if (*text == '\0' && !separated && option_obj::next_arg != nullptr) text = option_obj::next_arg();
  return text != nullptr && *text != '\0' ? text : nullptr;
}

an_argument_t option_obj::parse_arg(option_id id, char const *text, char const *parameter_name,
                                    int kind, a_parameter_limits const *limits)
{
  char const *argument = find_argument(text, limits);
  if (argument == nullptr) {
    report_optgen<DIAG::optgen_missing_parameter>({option_name(id), parameter_name});
    return {};
  }
  switch (kind) {
  case parm_text:
  case parm_list: return an_argument_t::of_string(argument);
  case parm_number: {
    long value;
    if (!check_numerical_arg(id, argument, limits, &value)) return {};
    return an_argument_t::of_number(value);
  }
  case parm_word: {
    an_item const *item = parse_oneof(id, argument);
    return item != nullptr ? an_argument_t::of_number(item->value) : an_argument_t();
  }
  default: report_optgen<DIAG::optgen_unhandled_option>({}, {unsigned(id)}); return {};
  }
}
