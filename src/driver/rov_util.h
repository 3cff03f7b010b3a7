// rov_util.h - small services of the tool chain: hook functions and the version's numbers.
#pragma once

// The two hooks that generated code may call, by the number that the options use.
enum a_hook_kind : unsigned char { hk_entry = 17, hk_exit = 18 };
// What a hook function gets passed.
enum a_hook_parameter : unsigned char { hp_none, hp_name, hp_address };

struct a_hook {
  const char *name; // null while the hook isn't wanted
  a_hook_parameter parameter;
};

// Switches a hook on.  A null name keeps the present name (at first a default one), a null
// parameter keeps the parameter; otherwise it is "none", "name" or "address".
bool is_hook_parameter(const char *text);
void enable_hook(a_hook_kind kind, const char *name, const char *parameter);
// The state of a hook.
const a_hook &hook_of(a_hook_kind kind);

// The tool chain's version: three numbers and the text that banners show.
extern const int tool_version_major, tool_version_minor, tool_version_patch;
extern const char tool_version_text[];
extern const char tool_title[];
extern const char front_end_version_text[];
// Prints the line with the build's number.
void buildid();
