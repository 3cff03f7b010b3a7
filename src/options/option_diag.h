// option_diag.h - the messages of the option framework, one class for each row that it reports.
#pragma once
#include <initializer_list>
#include <source_location>
#include <string>
#include "DIAG/diag.h"

namespace DIAG {

enum an_insert_form : unsigned char { STRINGS, NUMBER, RANGE };

// A coded message and what goes into its text: strings, numbers, or both.
class optgen_message : public DIAGNOSTIC {
public:
  static constexpr unsigned max_strings = 4;
  std::string   strings[max_strings];
  unsigned long numbers[2] = {0, 0};

  optgen_message(int code, an_insert_form insert_form, std::source_location where);
  int report() override;
  char *get_sp_buffer() override;
  bool is_equal(DIAGNOSTIC *other) override;
  void dump() override;
  // The row's text with the inserts in their places.
  std::string text() const;

private:
  an_insert_form form;
};

#define OPTGEN(name, code, form)                                                            \
  class optgen_##name : public optgen_message {                                             \
  public:                                                                                   \
    explicit optgen_##name(std::source_location where = std::source_location::current());   \
    DIAGNOSTIC *alloc() override;                                                           \
  };
#include "options/optgen_messages.def"

}  // namespace DIAG

// Where the options come from that are read now (a line of an option file); null: the command line.
// Not owned.  The reader of option files writes it, and all messages of this framework show it.
extern DIAG_SRCINFO *option_position;

// Reports a message with its strings (up to four) and numbers (up to two).
template <class Message>
void report_optgen(std::initializer_list<char const *> strings = {},
                   std::initializer_list<unsigned long> numbers = {},
                   std::source_location where = std::source_location::current())
{
  Message message(where);
  unsigned i = 0;
  for (char const *string : strings) message.strings[i++] = string;
  i = 0;
  for (unsigned long number : numbers) message.numbers[i++] = number;
  message.set_src(option_position);
  message.report();
}
