// argv_list.h - the words of a command.
#pragma once
#include <string>
#include <vector>

class argv_list {
public:
  void add(std::string word)
  {
    words.push_back(std::move(word));
  }
  int size() const
  {
    return int(words.size());
  }
  // The words as one line, separated by blanks.
  std::string text() const
  {
    std::string line;
    for (std::string const &word : words) line += line.empty() ? word : ' ' + word;
    return line;
  }

  std::vector<std::string> words;
};
