// rov_util.cpp - small services of the tool chain: hook functions, version numbers.
// Owns:    the two hooks; the numbers and texts of the version.
// Entry:   enable_hook, hook_of, buildid.
#include "driver/rov_util.h"
#include <cstdio>
#include <cstring>

const int tool_version_major = 1, tool_version_minor = 0, tool_version_patch = 0;
const char tool_version_text[] = "v1.0.0";
const char tool_title[] = "Rovane C/C++ Parser";
const char front_end_version_text[] = "4.4";

static a_hook hooks[2];

static a_hook &hook_record(a_hook_kind kind)
{
  return hooks[kind == hk_exit];
}

const a_hook &hook_of(a_hook_kind kind)
{
  return hook_record(kind);
}

static const char *const hook_parameter_names[] = {"none", "name", "address"};

bool is_hook_parameter(const char *text)
{
  for (const char *name : hook_parameter_names) {
    if (strcmp(name, text) == 0) return true;
  }
  return false;
}

void enable_hook(a_hook_kind kind, const char *name, const char *parameter)
{
  a_hook &hook = hook_record(kind);
  if (name != nullptr) hook.name = name;
  if (hook.name == nullptr) hook.name = kind == hk_entry ? "__entry_hook" : "__exit_hook";
  if (parameter == nullptr) return;
  for (unsigned i = 0; i < 3; i++) {
    if (strcmp(hook_parameter_names[i], parameter) == 0) hook.parameter = a_hook_parameter(i);
  }
}

void buildid()
{
  printf("Build Number %d%03d%03d\n", tool_version_major, tool_version_minor, tool_version_patch);
}
