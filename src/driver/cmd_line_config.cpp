// cmd_line_config.cpp - the dump of the settings with which this front end was built.
// Uses:    the tables of flags and target values: a default is a setting of the build.
// Rule:    one line a setting, in the order of the names; nothing here steers a run.
// Entry:   dump_configuration.
#include <cctype>
#include <cstdlib>
#include <cstring>
#include "driver/cmd_line.h"
#include "driver/flags.h"
#include "driver/rov_util.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il_enums.h"

struct a_setting {
  const char *prefix;
  const char *name; // printed in capitals
  enum : unsigned char { number, text, undefined } kind;
  long long value;
  const char *string;
};

static constexpr a_setting setting_of(const char *prefix, const char *name, long long value)
{
  return {prefix, name, a_setting::number, value, nullptr};
}

static constexpr a_setting setting_of(const char *prefix, const char *name, const char *value)
{
  return {prefix, name, value != nullptr ? a_setting::text : a_setting::undefined, 0, value};
}

// A stream has no setting.
static constexpr a_setting setting_of(const char *prefix, const char *name, FILE *)
{
  return {prefix, name, a_setting::undefined, 0, nullptr};
}

static a_setting settings[] = {
#define FLAG(type, name, initial, meaning) setting_of("default_", #name, (type)(initial)),
#include "driver/flags.def"
#define TARGET_VALUE(type, name, initial, meaning) setting_of("", #name, (type)(initial)),
#include "driver/target_values.def"
    setting_of("", "abi_compatibility_version", 310),
    setting_of("", "c_gen_be", 1),
    setting_of("", "default_context_limit", DEFAULT_CONTEXT_LIMIT),
    setting_of("", "front_end_version", front_end_version_text),
    setting_of("", "host_alignment_required", 8),
    setting_of("", "ignore_carriage_return_in_source", 1),
    setting_of("", "max_error_output_line_length", MAX_ERROR_OUTPUT_LINE_LENGTH),
    setting_of("", "tool_version", tool_version_text),
};

static int order_of_settings(const void *a, const void *b)
{
  const auto *x = static_cast<const a_setting *>(a);
  const auto *y = static_cast<const a_setting *>(b);
  char name_x[128], name_y[128];
  snprintf(name_x, sizeof name_x, "%s%s", x->prefix, x->name);
  snprintf(name_y, sizeof name_y, "%s%s", y->prefix, y->name);
  return strcasecmp(name_x, name_y);
}

static void print_setting(FILE *stream, const a_setting &setting)
{
  char name[128];
  snprintf(name, sizeof name, "%s%s", setting.prefix, setting.name);
  for (char *p = name; *p != '\0'; p++)
    *p = char(toupper((unsigned char)*p));
  switch (setting.kind) {
  case a_setting::number: fprintf(stream, "#define %s %lld\n", name, setting.value); break;
  case a_setting::text: fprintf(stream, "#define %s %s\n", name, setting.string); break;
  case a_setting::undefined: fprintf(stream, "/*      %s not defined */\n", name); break;
  }
}

void dump_configuration(FILE *stream)
{
  fprintf(stream, "/* Configuration data for Zokara C/C++ Front End */\n");
  fprintf(stream, "/* version %s, built on %s at %s. */\n", front_end_version_text, __DATE__,
          __TIME__);
  qsort(settings, sizeof settings / sizeof settings[0], sizeof settings[0], order_of_settings);
  for (const a_setting &setting : settings)
    print_setting(stream, setting);
}
