// host_envir.cpp - environment, option files, module id, multibyte characters, start-up of the
// module.
// Owns:    current_directory_name, primary_source_file_name, zok_base_directory, the module id.
// Uses:    host_envir_search, host_envir_names, host_envir_files are the other rooms of the module.
// Entry:   host_envir_early_init and the other inits; see host_envir.h.
#include "driver/host_envir.h"
#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <unistd.h>
#include "driver/signals.h"
#include "driver/fe_init.h"
#include "driver/flags.h"
#include "driver/host_envir_internal.h"
#include "driver/target.h"
#include "errors/error.h"
#include "mem/mem_manage.h"

const char *current_directory_name;
const char *primary_source_file_name;
const char *dir_name_of_primary_source_file;
const char *zok_base_directory;

static const char *module_id; // null until it is computed or set
static bool multibyte_locale_is_set;

//-------------------------------------------------------------------------------------------------
// Environment.

const char *get_environment(const char *name)
{
  char own_name[64];
  snprintf(own_name, sizeof own_name, "ROV_%s", name);
  const char *value = getenv(own_name);
  return value != nullptr ? value : getenv(name);
}

// Takes the blanks and separators around the element at *rest off; null at the end of the list.
static const char *next_path_element(const char **rest, size_t *length)
{
  const char *start = *rest + strspn(*rest, "; \t");
  if (*start == '\0') return nullptr;
  size_t used = strcspn(start, ";");
  *rest = start + used;
  while (start[used - 1] == ' ' || start[used - 1] == '\t')
    used--;
  *length = used;
  return start;
}

void extract_paths(const char *name, void (*callback)(const char *element))
{
  const char *rest = get_environment(name);
  if (rest == nullptr) return;
  size_t length;
  while (const char *element = next_path_element(&rest, &length)) {
    char *copy = static_cast<char *>(alloc_general(length + 1));
    memcpy(copy, element, length);
    copy[length] = '\0';
    callback(copy);
  }
}

bool gen_envvar_warning(const char *name, const char **value, int *count)
{
  const char *text = get_environment(name);
  *value = nullptr;
  *count = 0;
  if (text == nullptr) return false;
  size_t length;
  for (const char *rest = text; next_path_element(&rest, &length) != nullptr;)
    ++*count;
  if (*count == 1) *value = text;
  return *count == 1;
}

//-------------------------------------------------------------------------------------------------
// Option files.

static bool is_space(int c)
{
  return c == ' ' || (c >= '\t' && c <= '\r');
}

static void skip_block_comment(FILE *stream)
{
  int before = 0;
  for (int c; (c = getc(stream)) != EOF; before = c) {
    if (before == '*' && c == '/') return;
  }
  fputs(">> Unterminated comment in command file;", stderr);
  fputs(" aborting!\n", stderr);
  exit(-1);
}

static void skip_to_end_of_line(FILE *stream)
{
  for (int c; (c = getc(stream)) != EOF && c != '\n';) {
  }
}

static int next_char_is(FILE *stream, int wanted)
{
  int c = getc(stream);
  if (c == wanted) return true;
  if (c != EOF) ungetc(c, stream);
  return false;
}

// Skips blanks and comments; true with the first character of a word put back.
static bool skip_to_option_word(FILE *stream)
{
  for (int c; (c = getc(stream)) != EOF;) {
    if (is_space(c)) continue;
    if (c == '/' && next_char_is(stream, '*')) {
      skip_block_comment(stream);
    } else if (c == ';' || c == '#') {
      skip_to_end_of_line(stream);
    } else {
      ungetc(c, stream);
      return true;
    }
  }
  return false;
}

struct an_option_word {
  char *text;
  size_t length, size;
  bool has_dash; // then "#" is a plain character
};

static void add_to_word(an_option_word *word, int c)
{
  if (word->length == word->size) {
    word->text = realloc_buffer(word->text, word->size, word->size + 80);
    word->size += 80;
  }
  word->text[word->length++] = char(c);
  word->has_dash |= c == '-';
}

// A backslash stands for the quote or backslash behind it; any other one stays.
static void add_escaped(an_option_word *word, FILE *stream)
{
  if (next_char_is(stream, '"')) {
    add_to_word(word, '"');
  } else {
    next_char_is(stream, '\\');
    add_to_word(word, '\\');
  }
}

static void read_option_word(FILE *stream, an_option_word *word)
{
  bool in_quotes = false;
  for (int c; (c = getc(stream)) != EOF;) {
    if (c == '\\') {
      add_escaped(word, stream);
    } else if (c == '"') {
      in_quotes = !in_quotes;
    } else if (in_quotes) {
      add_to_word(word, c);
    } else if (is_space(c)) {
      return;
    } else if (c == '/' && next_char_is(stream, '*')) {
      skip_block_comment(stream);
    } else if (c == ';' || (c == '#' && !word->has_dash)) {
      skip_to_end_of_line(stream);
      return;
    } else {
      add_to_word(word, c);
    }
  }
}

char *fnextopt(FILE *stream)
{
  if (!skip_to_option_word(stream)) return nullptr;
  an_option_word word = {alloc_resizable_buffer(80), 0, 80, false};
  read_option_word(stream, &word);
  add_to_word(&word, '\0');
  return word.text;
}

//-------------------------------------------------------------------------------------------------
// Module id.

unsigned crc_32(const char *text, unsigned initial)
{
  unsigned crc = ~initial;
  for (; *text != '\0'; text++) {
    crc ^= (unsigned char)*text;
    for (int bit = 0; bit < 8; bit++)
      crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1)));
  }
  return ~crc;
}

void change_non_id_characters(char *text)
{
  for (; *text != '\0'; text++) {
    char c = *text;
    bool is_alphanumeric =
        (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    if (!is_alphanumeric) *text = '_';
  }
}

const char *make_module_id(const char *text)
{
  if (module_id != nullptr) return module_id;
  const char *stamp = text;
  const char *directory = "";
  char time_text[32], crc_text[16];
  if (text == nullptr) {
    time_t time;
    stamp = compile_time_text;
    if (is_regular_file(primary_source_file_name) &&
        get_file_modification_time(primary_source_file_name, &time)) {
      stamp = ctime_r(&time, time_text);
    }
    directory = current_directory_name;
  }
  if (strlen(stamp) + strlen(directory) > 8) {
    snprintf(crc_text, sizeof crc_text, "%08lx",
             (unsigned long)crc_32(directory, crc_32(stamp, 0)));
    stamp = crc_text;
    directory = "";
  }
  const char *base = start_of_file_name(primary_source_file_name);
  size_t size = strlen(base) + strlen(stamp) + strlen(directory) + 32;
  char *id = static_cast<char *>(alloc_general(size));
  int used = snprintf(id, size, "_%lu_%s_%s", (unsigned long)strlen(base), base, stamp);
  if (*directory != '\0') snprintf(id + used, size - size_t(used), "_%s", directory);
  change_non_id_characters(id);
  module_id = id;
  return id;
}

void set_module_id(const char *id)
{
  module_id = id;
}

const char *get_module_id()
{
  return module_id;
}

const char *generate_instantiation_output_file_name(const char *name)
{
  static char result[32];
  snprintf(result, sizeof result, "%.16s%08lx", name, (unsigned long)crc_32(name, 0));
  return result;
}

//-------------------------------------------------------------------------------------------------
// Characters.

void set_multibyte_locale()
{
  if (multibyte_locale_is_set) return;
  if (setlocale(LC_CTYPE, "") == nullptr) catastrophe(ec_bad_multibyte_char_locale);
  multibyte_locale_is_set = true;
}

unsigned f_mbc_length(const char *text)
{
  if ((unsigned char)*text < 0x80 || !multibyte_locale_is_set) return 1;
  int length = mblen(text, MB_CUR_MAX);
  return length < 1 ? 1 : unsigned(length);
}

unsigned long mbc_to_wide_char(const char *text, unsigned *length)
{
  wchar_t value;
  int used = multibyte_locale_is_set ? mbtowc(&value, text, MB_CUR_MAX) : -1;
  if (used < 1) {
    *length = 1;
    return (unsigned char)*text;
  }
  *length = unsigned(used);
  return (unsigned long)value;
}

const char *mbc_strchr(const char *text, char c)
{
  for (; *text != '\0'; text += f_mbc_length(text)) {
    if (*text == c) return text;
  }
  return nullptr;
}

unsigned unicode_to_utf8(unsigned long code, char *out)
{
  if (code < 0x80) {
    out[0] = char(code);
    return 1;
  }
  unsigned length = code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
  for (unsigned i = length - 1; i > 0; i--, code >>= 6)
    out[i] = char(0x80 | (code & 0x3F));
  static const unsigned char lead[] = {0, 0, 0xC0, 0xE0, 0xF0};
  out[0] = char(lead[length] | code);
  return length;
}

unsigned ucn_to_utf16(unsigned long code, unsigned short *out)
{
  if (code < 0x10000) {
    out[0] = (unsigned short)code;
    return 1;
  }
  code -= 0x10000;
  out[0] = (unsigned short)(0xD800 + (code >> 10));
  out[1] = (unsigned short)(0xDC00 + (code & 0x3FF));
  return 2;
}

unsigned long extract_character_from_string(const char *text, size_t index, unsigned char_size)
{
  const unsigned char *bytes = reinterpret_cast<const unsigned char *>(text) + index * char_size;
  unsigned long value = 0;
  for (unsigned i = 0; i < char_size; i++) {
    value = (value << 8) | bytes[targ_little_endian ? char_size - 1 - i : i];
  }
  return value;
}

int smemcmp(const void *a, const void *b, size_t length)
{
  return memcmp(a, b, length);
}

//-------------------------------------------------------------------------------------------------
// Start-up.

static void read_current_directory()
{
  size_t size = 256;
  char *buffer = static_cast<char *>(malloc(size));
  while (getcwd(buffer, size) == nullptr) {
    if (errno != ERANGE) {
      buffer[0] = '\0';
      break;
    }
    size += 256;
    buffer = static_cast<char *>(realloc(buffer, size));
  }
  current_directory_name = buffer;
}

void host_envir_early_init()
{
  signal_init();
  host_envir_search_early_init();
  read_current_directory();
  primary_source_file_name = nullptr;
  dir_name_of_primary_source_file = nullptr;
  module_id = nullptr;
  multibyte_locale_is_set = false;
  C_dialect = 2;
  host_little_endian = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__;
  const char *base = getenv("ZOK_BASE");
  zok_base_directory = base != nullptr ? base : "";
}

void host_envir_one_time_init()
{
  host_envir_search_one_time_init();
}

void host_envir_init()
{
}

void host_envir_trans_unit_init()
{
  module_id = nullptr;
}
