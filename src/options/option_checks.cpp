// option_checks.cpp - what the options of a set can't be together, looked at when all are known.
// Uses:    the rows of option_checks.def.
// Entry:   check_settings.
#include <cstring>
#include "options/option_diag.h"
#include "options/option_obj.h"

enum a_severity : unsigned char { IGNORED, REFUSED };
enum a_support : unsigned char { SUPPORTED, LEGACY };

static bool has_word(option_obj const &set, option_id id, char const *word)
{
  char const *const list[] = {word, nullptr};
  return set.state[id] && set.args_match_list(id, list);
}

static std::string with_word(option_obj const &set, option_id id, char const *word)
{
  return set.option_name(id) + std::string("=") + word;
}

//-------------------------------------------------------------------------------------------------
// Combinations.

struct a_combination {
  option_id option, other;
  char const *word;
  a_severity severity;
};
static a_combination const combinations[] = {
#define POWER_OF_2(option)
#define NOT_VALID(option, other, word, severity) {opt_##option, opt_##other, word, severity},
#define WITHDRAWN(option, word, message)
#define SILICON(version, support)
#include "options/option_checks.def"
};

void option_obj::check_combinations()
{
  for (a_combination const &row : combinations) {
    if (!state[row.option] || !has_word(*this, row.other, row.word)) continue;
    std::string const other = with_word(*this, row.other, row.word);
    if (row.severity == IGNORED) {
      report_optgen<DIAG::optgen_not_valid_ignored>(
          {option_name(row.option), "with", other.c_str()});
      clearopt(row.option);
    } else {
      report_optgen<DIAG::optgen_not_valid>({option_name(row.option), "with", other.c_str()});
    }
  }
  if (state[opt_float_support] && !has_word(*this, opt_float_support, "fpalib") &&
      has_word(*this, opt_abi, "coffabi")) {
    report_optgen<DIAG::optgen_float_support_needs_eabi>();
  }
}

//-------------------------------------------------------------------------------------------------
// Values.

static option_id const powers_of_2[] = {
#define POWER_OF_2(option) opt_##option,
#define NOT_VALID(option, other, word, severity)
#define WITHDRAWN(option, word, message)
#define SILICON(version, support)
#include "options/option_checks.def"
};

static void small_model_withdrawn(char const *)
{
  report_optgen<DIAG::optgen_small_model_withdrawn>();
}

static void option_withdrawn(char const *text)
{
  report_optgen<DIAG::optgen_option_withdrawn>({text});
}

struct a_withdrawn_word {
  option_id option;
  char const *word;
  void (*report)(char const *text);
};
static a_withdrawn_word const withdrawn_words[] = {
#define POWER_OF_2(option)
#define NOT_VALID(option, other, word, severity)
#define WITHDRAWN(option, word, message) {opt_##option, word, message},
#define SILICON(version, support)
#include "options/option_checks.def"
};

void option_obj::check_values()
{
  for (option_id id : powers_of_2) {
    long const value = getnumarg(id, 0);
    if (state[id] && (value <= 0 || (value & (value - 1)) != 0)) {
      report_optgen<DIAG::optgen_not_power_of_2>({option_name(id)});
    }
  }
  for (a_withdrawn_word const &row : withdrawn_words) {
    if (has_word(*this, row.option, row.word)) {
      row.report(with_word(*this, row.option, row.word).c_str());
    }
  }
}

//-------------------------------------------------------------------------------------------------
// Silicon versions.

struct a_silicon_row {
  char const *version;
  a_support support;
};
static a_silicon_row const silicon_versions[] = {
#define POWER_OF_2(option)
#define NOT_VALID(option, other, word, severity)
#define WITHDRAWN(option, word, message)
#define SILICON(version, support) {version, support},
#include "options/option_checks.def"
};

void option_obj::check_silicon()
{
  char const *version = getstrarg(opt_silicon_version, 0);
  if (version == nullptr) return;
  for (a_silicon_row const &row : silicon_versions) {
    if (strcmp(row.version, version) != 0) continue;
    if (row.support == LEGACY) report_optgen<DIAG::optgen_silicon_legacy>({version});
    return;
  }
  report_optgen<DIAG::optgen_silicon_not_supported>({version});
}

void option_obj::check_settings()
{
  check_silicon();
  check_values();
  check_combinations();
}
