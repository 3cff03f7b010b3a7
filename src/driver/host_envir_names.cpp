// host_envir_names.cpp - names of files and directories: taking them apart and putting them
// together.
// Owns:    the list of shared directory names, the buffers that results stand in.
// Rule:    separators are '/'; a name is never looked at as anything but bytes, except that a
//          multibyte character stays whole when a name is normalised.
// Entry:   see host_envir.h.
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>
#include "driver/host_envir.h"
#include "driver/host_envir_internal.h"
#include "mem/mem_manage.h"

char *copy_of_string(const char *text)
{
  size_t size = strlen(text) + 1;
  return static_cast<char *>(memcpy(alloc_general(size), text, size));
}

//-------------------------------------------------------------------------------------------------
// Parts of a name.

const char *start_of_file_name(const char *name)
{
  const char *slash = strrchr(name, '/');
  return slash == nullptr ? name : slash + 1;
}

// The '.' in front of the suffix, or null.
static const char *dot_of_suffix(const char *name)
{
  return strrchr(start_of_file_name(name), '.');
}

const char *suffix_of(const char *name)
{
  const char *dot = dot_of_suffix(name);
  return dot == nullptr ? "" : dot + 1;
}

bool is_absolute_file_name(const char *name)
{
  return *name == '/';
}

const char *file_name_in_internal_encoding(const char *name)
{
  return name;
}

const char *file_name_in_external_encoding(const char *name)
{
  return name;
}

char *derived_name(const char *name, const char *suffix)
{
  const char *base = start_of_file_name(name);
  const char *dot = dot_of_suffix(name);
  size_t length = dot == nullptr ? strlen(base) : size_t(dot - base);
  size_t suffix_length = strlen(suffix);
  char *result = static_cast<char *>(alloc_general(length + suffix_length + 2));
  memcpy(result, base, length);
  result[length] = '.';
  memcpy(result + length + 1, suffix, suffix_length + 1);
  return result;
}

//-------------------------------------------------------------------------------------------------
// Shared names of directories.

struct a_directory_name {
  a_directory_name *next;
  size_t length;
  char text[1];
};

static constexpr unsigned directory_table_size = 256;
static a_directory_name *dir_name_list[directory_table_size];

static const char *shared_name(const char *text, size_t length)
{
  unsigned hash = unsigned(length);
  for (size_t i = 0; i < length; i++)
    hash = hash * 31 + (unsigned char)text[i];
  a_directory_name **chain = &dir_name_list[hash % directory_table_size];
  for (a_directory_name *name = *chain; name != nullptr; name = name->next) {
    if (name->length == length && memcmp(name->text, text, length) == 0) return name->text;
  }
  auto *name = static_cast<a_directory_name *>(alloc_general(sizeof(a_directory_name) + length));
  name->next = *chain;
  name->length = length;
  memcpy(name->text, text, length);
  name->text[length] = '\0';
  *chain = name;
  return name->text;
}

const char *shared_directory_name(const char *dir)
{
  return shared_name(dir, strlen(dir));
}

// Directories of the IL and of the heap share one list here: both live to the end of the process.
const char *f_directory_of(const char *name, bool)
{
  size_t length = size_t(start_of_file_name(name) - name);
  if (length > 1) length--; // the root keeps its slash
  return shared_name(name, length);
}

//-------------------------------------------------------------------------------------------------
// Names in text buffers.

static a_text_buffer *shared_name_buffer()
{
  static a_text_buffer *buffer;
  if (buffer == nullptr) buffer = alloc_text_buffer(256);
  return buffer;
}

// The buffer holds a terminated string before and after.
void append_to_path_name(a_text_buffer *buffer, const char *name)
{
  if (buffer->size != 0) buffer->size--;
  if (buffer->size != 0 && buffer->buffer[buffer->size - 1] != '/') {
    add_char_to_text_buffer(buffer, '/');
  }
  add_to_text_buffer(buffer, name, strlen(name) + 1);
}

char *combine_dir_and_file_name(const char *dir, const char *file, a_text_buffer *buffer)
{
  if (buffer == nullptr) buffer = shared_name_buffer();
  reset_text_buffer(buffer);
  add_to_text_buffer(buffer, dir, strlen(dir) + 1);
  append_to_path_name(buffer, file);
  return buffer->buffer;
}

void replace_file_name_suffix(const char *suffix, a_text_buffer *buffer)
{
  const char *dot = dot_of_suffix(buffer->buffer);
  if (dot != nullptr) {
    set_buffer_position(buffer, dot);
  } else {
    buffer->size--;
  }
  if (*suffix != '.') add_char_to_text_buffer(buffer, '.');
  add_to_text_buffer(buffer, suffix, strlen(suffix) + 1);
}

// How a character of a file name is written in a string literal; returns the length.
static unsigned text_for_c_string(char c, char text[5])
{
  unsigned char code = static_cast<unsigned char>(c);
  if (c == '"' || c == '\\') {
    text[0] = '\\';
    text[1] = c;
    return 2;
  }
  if (c == '\n') {
    memcpy(text, "\\n", 2);
    return 2;
  }
  if (code < ' ' || code == 127) return static_cast<unsigned>(snprintf(text, 5, "\\%03o", code));
  text[0] = c;
  return 1;
}

void write_file_name_to_text_buffer(const char *name, a_text_buffer *buffer, bool for_c_string)
{
  if (!for_c_string) {
    add_to_text_buffer(buffer, name, strlen(name));
    return;
  }
  for (; *name != '\0'; name++) {
    char text[5];
    unsigned length = text_for_c_string(*name, text);
    add_to_text_buffer(buffer, text, length);
  }
}

void write_file_name(const char *name, FILE *stream, bool for_c_string)
{
  for (; *name != '\0'; name++) {
    char text[5] = {*name};
    unsigned length = for_c_string ? text_for_c_string(*name, text) : 1;
    fwrite(text, 1, length, stream);
  }
}

const char *format_file_name(const char *name)
{
  return name;
}

//-------------------------------------------------------------------------------------------------
// Normal form.

// Takes the last component off the text: "/a/b" becomes "/a", and the root stays.
static void drop_last_component(a_text_buffer *buffer)
{
  while (buffer->size > 1 && buffer->buffer[buffer->size - 1] != '/')
    buffer->size--;
  if (buffer->size > 1) buffer->size--;
}

static const char *end_of_component(const char *p)
{
  while (*p != '\0' && *p != '/')
    p += f_mbc_length(p);
  return p;
}

static void add_components(a_text_buffer *buffer, const char *name)
{
  while (*name != '\0') {
    if (*name == '/') {
      name++;
      continue;
    }
    const char *end = end_of_component(name);
    size_t length = size_t(end - name);
    if (length == 2 && name[0] == '.' && name[1] == '.') {
      drop_last_component(buffer);
    } else if (length != 1 || name[0] != '.') {
      if (buffer->size != 1) add_char_to_text_buffer(buffer, '/');
      add_to_text_buffer(buffer, name, length);
    }
    name = end;
  }
}

const char *normalize_file_name(const char *name)
{
  static a_text_buffer *buffers[2];
  static unsigned turn;
  a_text_buffer *&buffer = buffers[turn++ & 1];
  if (buffer == nullptr) buffer = alloc_text_buffer(256);
  reset_text_buffer(buffer);
  add_char_to_text_buffer(buffer, '/');
  if (!is_absolute_file_name(name)) add_components(buffer, current_directory_name);
  add_components(buffer, name);
  add_char_to_text_buffer(buffer, '\0');
  return buffer->buffer;
}

int compare_dir_names(const char *a, const char *b, bool no_cwd)
{
  if (no_cwd && (!is_absolute_file_name(a) || !is_absolute_file_name(b))) return strcmp(a, b);
  const char *normal_a = normalize_file_name(a);
  return strcmp(normal_a, normalize_file_name(b));
}

//-------------------------------------------------------------------------------------------------
// The family of the tool chain.

static constexpr size_t fn_buffer_size = 500;

static char *fn_copy(char *out, const char *text, size_t length)
{
  if (length > fn_buffer_size - 1) length = fn_buffer_size - 1;
  memcpy(out, text, length);
  out[length] = '\0';
  return out;
}

void fn_split(const char *path, char **dir, char **base, char **ext)
{
  static char parts[3][fn_buffer_size];
  const char *start = start_of_file_name(path);
  const char *dot = dot_of_suffix(path);
  if (dot == nullptr) dot = start + strlen(start);
  *dir = fn_copy(parts[0], path, size_t(start - path));
  *base = fn_copy(parts[1], start, size_t(dot - start));
  *ext = fn_copy(parts[2], dot, strlen(dot));
}

char *fn_build(char *out, const char *dir, const char *base, const char *ext)
{
  const char *slash = *dir != '\0' && dir[strlen(dir) - 1] != '/' ? "/" : "";
  const char *dot = *ext != '\0' && *ext != '.' ? "." : "";
  snprintf(out, fn_buffer_size, "%s%s%s%s%s", dir, slash, base, dot, ext);
  return out;
}

char *fn_addext(const char *name, const char *ext, bool force)
{
  static char result[fn_buffer_size];
  const char *dot = dot_of_suffix(name);
  size_t length = dot != nullptr && force ? size_t(dot - name) : strlen(name);
  fn_copy(result, name, length);
  if (dot != nullptr && !force) return result;
  size_t used = strlen(result);
  snprintf(result + used, fn_buffer_size - used, "%s%s", *ext == '.' ? "" : ".", ext);
  return result;
}

char *fn_delext(const char *name)
{
  static char result[fn_buffer_size];
  const char *dot = dot_of_suffix(name);
  return fn_copy(result, name, dot != nullptr ? size_t(dot - name) : strlen(name));
}

const char *fn_basename(const char *path)
{
  return start_of_file_name(path);
}

bool fn_hasdir(const char *path)
{
  return strchr(path, '/') != nullptr;
}

bool fn_has_full_path(const char *path)
{
  return is_absolute_file_name(path);
}

bool fn_has_relative_path(const char *path)
{
  return fn_hasdir(path) && !fn_has_full_path(path);
}

bool fn_matches_ext(const char *name, const char *ext)
{
  return strcmp(suffix_of(name), *ext == '.' ? ext + 1 : ext) == 0;
}

bool fn_samefile(const char *a, const char *b)
{
  struct stat stat_a, stat_b;
  return stat(a, &stat_a) == 0 && stat(b, &stat_b) == 0 && stat_a.st_dev == stat_b.st_dev &&
         stat_a.st_ino == stat_b.st_ino;
}

int fn_strcmp(const char *a, const char *b)
{
  return strcmp(a, b);
}

bool fn_exists(const char *name)
{
  return access(name, F_OK) == 0;
}

bool fn_rename(const char *from, const char *to)
{
  return rename(from, to) == 0;
}

bool fn_delete(const char *name)
{
  return unlink(name) == 0;
}

char *fn_tmpnam(char *out, const char *dir, const char *prefix)
{
  static unsigned count;
  do {
    snprintf(out, fn_buffer_size, "%s%s%s%ld_%u", dir, *dir == '\0' ? "" : "/", prefix,
             long(getpid()), count++);
  } while (fn_exists(out));
  return out;
}

const char *fn_get_working_dir()
{
  return current_directory_name;
}

bool fn_change_dir(const char *dir)
{
  return chdir(dir) == 0;
}

const char *fn_realname(const char *name)
{
  return normalize_file_name(name);
}

bool fn_is_empty(const char *name)
{
  return name == nullptr || *name == '\0';
}

// Names that stand for streams: "stdout", "stderr"; "none" switches the output off.
bool fn_is_user_specified_stream(const char *name)
{
  return strcmp(name, "stdout") == 0 || strcmp(name, "stderr") == 0;
}

bool fn_explicit_disable(const char *name)
{
  return strcmp(name, "none") == 0;
}

FILE *user_specified_advice_stream(const char *name)
{
  if (!fn_is_user_specified_stream(name)) return nullptr;
  return strcmp(name, "stdout") == 0 ? stdout : stderr;
}
