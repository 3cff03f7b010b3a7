// host_envir_search.cpp - the search list for included files and how a name is resolved against it.
// Owns:    the lists, the cache of resolved names, the parsed list of suffixes.
// Rule:    one list: its head stands for the directory of the current file, then the options'
//          directories in order, then those of C_DIR.  sys_incl_search_path is an element of the
//          same list.  Names of directories are shared strings, so that equal directories are
//          equal pointers.
// Entry:   add_to_include_search_path ..., open_file_for_input.
#include <cerrno>
#include <cstring>
#include "driver/flags.h"
#include "driver/host_envir.h"
#include "driver/host_envir_internal.h"
#include "errors/error.h"
#include "mem/mem_manage.h"
#include "mem/registered_vars.h"

a_directory_name_entry *incl_search_path, *end_incl_search_path;
a_directory_name_entry *sys_incl_search_path;
a_directory_name_entry *end_of_user_incl_search_path;
a_directory_name_entry *template_search_path;
bool put_dir_of_each_opened_source_file_on_incl_search_path = true;
bool stack_referenced_include_directories;
bool (*suppress_subsequent_include_hook)(const char *name, an_include_file_history **history,
                                         bool create, bool is_system);

static a_directory_name_entry *end_template_search_path;
static a_directory_name_entry *avail_directory_name_entries; // free list
static bool user_incl_search_path_ended;                     // "-" was given

//-------------------------------------------------------------------------------------------------
// The lists.

static a_directory_name_entry *alloc_directory_name_entry(const char *dir, bool is_system)
{
  a_directory_name_entry *entry = avail_directory_name_entries;
  if (entry != nullptr) {
    avail_directory_name_entries = entry->next;
  } else {
    entry = static_cast<a_directory_name_entry *>(alloc_general(sizeof(a_directory_name_entry)));
  }
  *entry = {dir, is_system, nullptr};
  return entry;
}

static void free_directory_name_entry(a_directory_name_entry *entry)
{
  entry->next = avail_directory_name_entries;
  avail_directory_name_entries = entry;
}

void add_to_specified_include_search_path(const char *dir, bool is_system,
                                          a_directory_name_entry **head,
                                          a_directory_name_entry **tail)
{
  a_directory_name_entry *entry = alloc_directory_name_entry(shared_directory_name(dir), is_system);
  *(*head == nullptr ? head : &(*tail)->next) = entry;
  *tail = entry;
}

void add_to_front_of_include_search_path(const char *dir, a_directory_name_entry **head,
                                         a_directory_name_entry **tail)
{
  a_directory_name_entry *entry = alloc_directory_name_entry(shared_directory_name(dir), false);
  entry->next = *head;
  if (*head == nullptr) *tail = entry;
  *head = entry;
}

void add_to_include_search_path(const char *dir, bool is_system)
{
  add_to_specified_include_search_path(dir, is_system, &incl_search_path, &end_incl_search_path);
}

void add_to_template_search_path(const char *dir)
{
  add_to_specified_include_search_path(dir, false, &template_search_path,
                                       &end_template_search_path);
}

static void add_environment_directory(const char *dir)
{
  add_to_include_search_path(dir, false);
}

void add_environment_include_search_path()
{
  extract_paths("C_DIR", add_environment_directory);
}

// The shell passes all directories of this target.
void add_default_include_search_path(a_directory_name_entry **, a_directory_name_entry **)
{
}

void end_user_include_search_path()
{
  user_incl_search_path_ended = true;
  end_of_user_incl_search_path = end_incl_search_path;
}

void settle_system_include_search_path()
{
  bool has_user_part = user_incl_search_path_ended && end_of_user_incl_search_path != nullptr;
  sys_incl_search_path = has_user_part ? end_of_user_incl_search_path->next : incl_search_path;
}

static bool names_a_system_directory(const char *dir)
{
  for (a_directory_name_entry *entry = incl_search_path; entry != nullptr; entry = entry->next) {
    if (entry->is_system && compare_dir_names(entry->dir_name, dir, false) == 0) return true;
  }
  return false;
}

void remove_duplicate_system_includes(a_directory_name_entry **marker)
{
  a_directory_name_entry *before = nullptr;
  a_directory_name_entry *next;
  for (a_directory_name_entry *entry = incl_search_path; entry != nullptr; entry = next) {
    next = entry->next;
    if (entry->is_system || !names_a_system_directory(entry->dir_name)) {
      before = entry;
      continue;
    }
    pos_st_warning(ec_incl_dir_both_sys_and_nonsys, no_line_position, entry->dir_name);
    (before == nullptr ? incl_search_path : before->next) = next;
    if (end_incl_search_path == entry) end_incl_search_path = before;
    if (*marker == entry) *marker = before;
    free_directory_name_entry(entry);
  }
}

// The entries of the list are shared by all who look at it, so the head is overwritten in place.
void change_primary_include_search_dir(const char *dir)
{
  if (put_dir_of_each_opened_source_file_on_incl_search_path) incl_search_path->dir_name = dir;
}

void push_primary_include_search_dir(const char *dir, bool is_system)
{
  if (!put_dir_of_each_opened_source_file_on_incl_search_path) return;
  if (stack_referenced_include_directories) {
    add_to_front_of_include_search_path(dir, &incl_search_path, &end_incl_search_path);
    incl_search_path->is_system = is_system;
  } else {
    incl_search_path->dir_name = dir;
    incl_search_path->is_system = is_system;
  }
}

void pop_primary_include_search_dir(const char *dir, bool is_system)
{
  if (!put_dir_of_each_opened_source_file_on_incl_search_path) return;
  if (stack_referenced_include_directories) {
    a_directory_name_entry *entry = incl_search_path;
    incl_search_path = entry->next;
    free_directory_name_entry(entry);
  } else {
    incl_search_path->dir_name = dir;
    incl_search_path->is_system = is_system;
  }
}

//-------------------------------------------------------------------------------------------------
// Suffixes to try for a name that has none.

struct an_include_suffix {
  const char *text; // without the dot; empty: the name as it stands
};

static an_include_suffix *include_suffixes;
static unsigned include_suffix_count;

// Entries are separated by ':', and an empty one stands for no suffix; of the two leading
// separators of "::hpp" the first one only tells that the list replaces the default.
static void parse_include_file_suffixes()
{
  const char *p = include_file_suffixes;
  unsigned most = 1;
  for (const char *q = p; *q != '\0'; q++)
    most += *q == ':';
  include_suffixes =
      static_cast<an_include_suffix *>(alloc_general(most * sizeof(an_include_suffix)));
  include_suffix_count = 0;
  if (p[0] == ':' && p[1] == ':') p++;
  for (;;) {
    size_t length = strcspn(p, ":");
    char *text = static_cast<char *>(alloc_general(length + 1));
    memcpy(text, p, length);
    text[length] = '\0';
    include_suffixes[include_suffix_count++].text = text;
    if (p[length] == '\0') return;
    p += length + 1;
  }
}

//-------------------------------------------------------------------------------------------------
// The cache of resolved names: it saves the look at candidates that are known, one by one
// directory.

struct a_resolution {
  a_resolution *next;
  const char *directory; // shared strings: compared by pointer
  const char *working_directory;
  const char *name;
  const char *resolved_name; // null: no file there
};

static constexpr unsigned resolution_table_size = 2048;
static a_resolution *resolution_table[resolution_table_size];

static unsigned hash_of_name(const char *name)
{
  unsigned hash = 2166136261u;
  for (; *name != '\0'; name++)
    hash = (hash ^ (unsigned char)*name) * 16777619u;
  return hash;
}

static a_resolution *find_resolution(const char *directory, const char *name, unsigned name_hash,
                                     bool *is_new)
{
  unsigned hash = (name_hash ^ unsigned(size_t(directory) >> 4)) % resolution_table_size;
  *is_new = false;
  for (a_resolution *entry = resolution_table[hash]; entry != nullptr; entry = entry->next) {
    if (entry->directory == directory && entry->working_directory == current_directory_name &&
        strcmp(entry->name, name) == 0) {
      return entry;
    }
  }
  auto *entry = static_cast<a_resolution *>(alloc_general(sizeof(a_resolution)));
  *entry = {resolution_table[hash], directory, current_directory_name, copy_of_string(name),
            nullptr};
  resolution_table[hash] = entry;
  *is_new = true;
  return entry;
}

//-------------------------------------------------------------------------------------------------
// Finding a file.

struct a_search {
  const a_source_file_request *request;
  an_opened_source_file *opened;
  an_open_file_result result; // of the last failure that is worth reporting
};

// True if the search ends here: the file is open or need not be read.
static bool try_source_file(a_search *search, const char *name, bool is_system)
{
  an_opened_source_file *opened = search->opened;
  opened->history = nullptr;
  if (search->request->is_include && suppress_subsequent_include_hook != nullptr &&
      suppress_subsequent_include_hook(name, &opened->history, true, is_system)) {
    opened->suppressed = true;
    return true;
  }
  an_open_file_result result;
  opened->file = open_source_file(name, &result, &opened->unicode_kind);
  if (opened->file != nullptr) return true;
  if (search->result.bits == 0 || !(result.bits & off_not_found)) search->result = result;
  return false;
}

// Directory and file names joined; "name.suffix" if there's a suffix.
static const char *candidate_name(const char *directory, const char *name, const char *suffix)
{
  static a_text_buffer *buffer;
  if (buffer == nullptr) buffer = alloc_text_buffer(256);
  combine_dir_and_file_name(directory, name, buffer);
  if (*suffix == '\0') return buffer->buffer;
  buffer->size--;
  add_char_to_text_buffer(buffer, '.');
  add_to_text_buffer(buffer, suffix, strlen(suffix) + 1);
  return buffer->buffer;
}

static bool found_under(a_search *search, const char *candidate, a_directory_name_entry *entry)
{
  if (!try_source_file(search, candidate, entry->is_system)) return false;
  search->opened->dir_entry = entry;
  return true;
}

static bool try_new_candidates(a_search *search, a_directory_name_entry *entry,
                               a_resolution *resolution)
{
  const char *name = search->request->name;
  unsigned tries = *suffix_of(name) != '\0' ? 1 : include_suffix_count;
  for (unsigned i = 0; i < tries; i++) {
    const char *suffix = tries == 1 ? "" : include_suffixes[i].text;
    const char *candidate = candidate_name(entry->dir_name, name, suffix);
    if (found_under(search, candidate, entry)) {
      resolution->resolved_name = copy_of_string(candidate);
      search->opened->full_name = resolution->resolved_name;
      return true;
    }
  }
  return false;
}

static bool search_in_directories(a_search *search, a_directory_name_entry *start)
{
  const char *name = search->request->name;
  unsigned name_hash = hash_of_name(name);
  const char *previous_dir = nullptr;
  for (a_directory_name_entry *entry = start; entry != nullptr; entry = entry->next) {
    if (entry->dir_name == previous_dir) continue;
    previous_dir = entry->dir_name;
    bool is_new;
    a_resolution *resolution = find_resolution(entry->dir_name, name, name_hash, &is_new);
    if (is_new) {
      if (try_new_candidates(search, entry, resolution)) return true;
    } else if (resolution->resolved_name != nullptr &&
               found_under(search, resolution->resolved_name, entry)) {
      search->opened->full_name = resolution->resolved_name;
      return true;
    }
  }
  return false;
}

static a_directory_name_entry *start_of_search(const a_source_file_request &request)
{
  if (request.search_after_current_dir && request.current_dir_entry != nullptr) {
    return request.current_dir_entry->next;
  }
  return request.angle_bracket ? sys_incl_search_path : incl_search_path;
}

static bool report_missing_source(const a_source_file_request &request,
                                  const an_open_file_result &result)
{
  an_error_severity severity =
      request.failure_is_not_fatal ? es_discretionary_error : es_catastrophe;
  file_open_error(severity, ec_file_kind_source, request.name, &result);
  return false;
}

static bool open_by_name_alone(a_search *search)
{
  if (!try_source_file(search, search->request->name, false)) return false;
  search->opened->full_name = copy_of_string(search->request->name);
  search->opened->file_name = search->opened->full_name;
  return true;
}

bool open_file_for_input(const a_source_file_request &request, an_opened_source_file *opened)
{
  *opened = {};
  a_search search = {&request, opened, {}};
  if (!request.input_is_open && strcmp(request.name, "-") == 0) {
    opened->file = stdin;
    opened->file_name = opened->full_name = "-";
    return true;
  }
  bool is_absolute = is_absolute_file_name(request.name);
  bool wants_search = request.use_search_path && !is_absolute;
  if (!wants_search || request.try_name_first) {
    if (open_by_name_alone(&search)) return true;
    if (!wants_search) return report_missing_source(request, search.result);
  }
  a_directory_name_entry *start = start_of_search(request);
  if (start == nullptr && incl_search_path == nullptr) {
    str_catastrophe(ec_empty_include_search_path, request.name);
  }
  if (!search_in_directories(&search, start)) {
    if (search.result.bits == 0) search.result = {off_not_found, ENOENT};
    return report_missing_source(request, search.result);
  }
  opened->file_name = opened->full_name;
  return true;
}

//-------------------------------------------------------------------------------------------------
// Start-up.

void host_envir_search_early_init()
{
  incl_search_path = end_incl_search_path = sys_incl_search_path = nullptr;
  template_search_path = end_template_search_path = nullptr;
  end_of_user_incl_search_path = nullptr;
  user_incl_search_path_ended = false;
  put_dir_of_each_opened_source_file_on_incl_search_path = true;
  stack_referenced_include_directories = false;
}

void host_envir_search_one_time_init()
{
  parse_include_file_suffixes();
  add_to_template_search_path(current_directory_name);
  register_trans_unit_variable(incl_search_path);
  register_trans_unit_variable(end_incl_search_path);
  register_trans_unit_variable(sys_incl_search_path);
}
