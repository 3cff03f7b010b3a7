// merge_options.cpp - merges the options of several files and reports where they conflict.
//
//   merge_options ["OPTIONS OF THE MAIN FILE" "OPTIONS OF ANOTHER FILE"...]
//
// Each argument is the option list of one file.  Without arguments two lists of its own are merged;
// merge_options.out is what that prints.
#include <sstream>
#include <string>
#include <vector>
#include "tool_layer.h"

static void read_options(option_obj &set, std::string const &name, std::string const &list)
{
  set.current_file = name.c_str();
  std::istringstream stream(list);
  std::vector<std::string> words;
  for (std::string word; stream >> word;)
    words.push_back(word);
  std::vector<char const *> texts;
  for (std::string const &word : words)
    texts.push_back(word.c_str());
  set.process_words(int(texts.size()), texts.data());
}

int main(int argc, char **argv)
{
  std::vector<std::string> lists(argv + 1, argv + argc);
  if (lists.empty()) {
    lists = {"-O3 --abi=eabi --silicon_version=6000 -gq --signed_chars --stack=400h -Iinclude",
             "-O1 --abi=coffabi --symdebug:none -v --unsigned_chars --stack_size=2000 -Ifilter"};
  }
  DIAGNOSTIC::fp_m = stdout;

  option_obj merged;
  for (size_t i = 0; i < lists.size(); i++) {
    std::string const name = "file" + std::to_string(i + 1);
    option_obj set;
    read_options(set, name, lists[i]);
    if (i == 0) {
      merged.merge_init(set);
    } else {
      merged.merge_options(set);
    }
  }
  printf("%d conflicts; the merged options are\n", USER_MSG::get_error_count());
  merged.print();

  argv_list command;
  merged.add_opts_for_tool(command, "rvcg");
  printf("and the code generator gets\n%s\n", command.text().c_str());
  return USER_MSG::get_error_count() != 0;
}
