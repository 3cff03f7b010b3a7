// option_reader.cpp - whole command lines and the option files that they name.
// Owns:    the words being read and the position of the current one.
// Uses:    process_option for each option, next_arg to give it the word behind.
// Entry:   process_words, process_option_file.
#include <cerrno>
#include <cstring>
#include <strings.h>
#include "options/option_diag.h"
#include "options/option_obj.h"

struct a_word {
  std::string text;
  int line; // of the option file; 0: of the command line
};

// Words that are read in turn.  An option file's are read while those around it wait.
struct a_word_list_in_use {
  std::vector<a_word> words;
  std::string file; // empty: the command line
  size_t next = 0;
  a_word_list_in_use *around = nullptr;
};
static a_word_list_in_use *words_in_use;

static char const *take_next_word()
{
  a_word_list_in_use *words = words_in_use;
  return words->next < words->words.size() ? words->words[words->next++].text.c_str() : nullptr;
}

//-------------------------------------------------------------------------------------------------
// Files among the words.

struct a_suffix {
  char const *suffix;
  option_id option;
};
static a_suffix const suffixes[] = {
    {"c", opt_source_c},           {"cpp", opt_source_cplusplus}, {"cc", opt_source_cplusplus},
    {"cxx", opt_source_cplusplus}, {"asm", opt_source_asm},       {"s", opt_source_asm},
};

// What isn't a source is the linker's: objects, libraries, command files.
static option_id option_of_suffix(char const *name)
{
  char const *dot = strrchr(name, '.');
  for (a_suffix const &row : suffixes) {
    if (dot != nullptr && strcasecmp(dot + 1, row.suffix) == 0) return row.option;
  }
  return opt_source_object;
}

void option_obj::add_source_file(char const *name)
{
  static option_id const by_language[] = {opt_source_object, opt_source_c, opt_source_cplusplus,
                                          opt_source_asm};
  long const language = getnumarg(opt_source_language, 0); // 0: auto, as if it weren't set
  setopt(language == 0 ? option_of_suffix(name) : by_language[language], name);
}

//-------------------------------------------------------------------------------------------------
// Words.

static void report_unknown(a_word const &word)
{
  if (word.line != 0) {
    report_optgen<DIAG::optgen_option_is_invalid>();
  } else {
    report_optgen<DIAG::optgen_invalid_option>({word.text.c_str()});
  }
}

// What process_option takes of a word; null if the word can't be an option.
static char const *option_text(char const *word)
{
  if (*word == '@') return word;
  bool const three_dashes = strncmp(word, "---", 3) == 0;
  return word[1] == '\0' || three_dashes || strcmp(word, "--") == 0 ? nullptr : word + 1;
}

// An option file is read where it is named, before the words behind it.
void option_obj::process_word_list(a_word_list_in_use &words)
{
  auto const next_arg_before = next_arg;
  DIAG_SRCINFO *const position_before = option_position;
  words.around = words_in_use;
  words_in_use = &words;
  next_arg = take_next_word;
  while (words.next < words.words.size()) {
    a_word const word = words.words[words.next++];
    DIAG_SRCINFO_DATA position(words.file, word.line);
    option_position = word.line != 0 ? &position : nullptr;
    int const files_before = arg_count[opt_opt_cmdfile];
    if (word.text.empty()) continue;
    if (word.text[0] != '-' && word.text[0] != '@') {
      add_source_file(word.text.c_str());
    } else {
      char const *text = option_text(word.text.c_str());
      if (text == nullptr || !process_option(text, nullptr)) report_unknown(word);
    }
    if (arg_count[opt_opt_cmdfile] > files_before) {
      process_option_file(std::string(getstrarg(opt_opt_cmdfile, unsigned(files_before))).c_str());
    }
  }
  words_in_use = words.around;
  next_arg = next_arg_before;
  option_position = position_before;
}

void option_obj::process_words(int count, char const *const *words)
{
  a_word_list_in_use list;
  for (int i = 0; i < count; i++)
    list.words.push_back({words[i], 0});
  process_word_list(list);
  check_settings();
}

//-------------------------------------------------------------------------------------------------
// Option files.

// Text of an option file that is cut into words.
struct a_file_text {
  std::string text;
  size_t at = 0;
  int line = 1;

  bool at_end() const
  {
    return at == text.size();
  }
  bool at_white_space() const
  {
    return strchr(" \t\n\v\f\r", text[at]) != nullptr;
  }
  void step()
  {
    line += text[at++] == '\n';
  }
};

static void skip_to_word(a_file_text &file)
{
  while (!file.at_end() && (file.at_white_space() || file.text[file.at] == '#')) {
    if (file.text[file.at] == '#') {
      while (!file.at_end() && file.text[file.at] != '\n')
        file.step();
    } else {
      file.step();
    }
  }
}

// Quotation marks keep white space in a word.
static a_word read_word(a_file_text &file)
{
  a_word word{{}, file.line};
  char quote = 0;
  for (; !file.at_end() && (quote || !file.at_white_space()); file.step()) {
    char const c = file.text[file.at];
    if (c == quote) {
      quote = 0;
    } else if (!quote && (c == '"' || c == '\'')) {
      quote = c;
    } else {
      word.text += c;
    }
  }
  return word;
}

static bool read_file(char const *name, std::string *text)
{
  FILE *file = fopen(name, "r");
  if (file == nullptr) return false;
  char buffer[4096];
  for (size_t got; (got = fread(buffer, 1, sizeof buffer, file)) != 0;)
    text->append(buffer, got);
  bool const good = !ferror(file);
  int const error = errno;
  fclose(file);
  errno = error;
  return good;
}

static bool is_being_read(char const *name)
{
  for (a_word_list_in_use *words = words_in_use; words != nullptr; words = words->around) {
    if (words->file == name) return true;
  }
  return false;
}

void option_obj::process_option_file(char const *name)
{
  if (is_being_read(name)) {
    report_optgen<DIAG::optgen_cannot_open_file>({name, "it names itself"});
    return;
  }
  a_file_text file;
  if (!read_file(name, &file.text)) {
    report_optgen<DIAG::optgen_cannot_open_file>({name, strerror(errno)});
    return;
  }
  a_word_list_in_use list;
  list.file = name;
  for (skip_to_word(file); !file.at_end(); skip_to_word(file)) {
    a_word word = read_word(file);
    if (!word.text.empty()) list.words.push_back(std::move(word));
  }
  process_word_list(list);
}
