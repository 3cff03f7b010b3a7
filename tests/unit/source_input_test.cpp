// Logical lines, modifications of a line, positions, segments, file indexes.
#include "lex/source_input.h"
#include <cstdio>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include "driver/flags.h"
#include "driver/host_envir.h"
#include "errors/error.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/macro.h"
#include "lex/preproc.h"
#include "memory_fixture.h"
#include "parse/symbol_tbl.h"

class SourceInput : public testing::Test {
protected:
  void SetUp() override
  {
    open_regions();
    static bool is_initialised;
    if (!is_initialised) {
      host_envir_early_init();
      add_to_include_search_path("", false);
      il_one_time_init();
      lexical_one_time_init();
      macro_one_time_init();
      is_initialised = true;
    }
    C_dialect = 0;
    gcc_mode = true;
    il_header.source_files = nullptr;
    il_header.seq_number_lookup_list = nullptr;
    seq_number_last_read = curr_seq_number = 0;
    lexical_trans_unit_init();
    macro_trans_unit_init();
    preproc_trans_unit_init();
  }

  // Makes the text a file on top of the input stack.
  static void push(const std::string &text, const char *name, bool is_include = false)
  {
    FILE *file = tmpfile();
    fwrite(text.data(), 1, text.size(), file);
    fflush(file);
    rewind(file);
    a_file_to_push pushed = {};
    pushed.file = file;
    pushed.name_as_written = pushed.file_name = pushed.full_name = name;
    pushed.is_include = is_include;
    push_input_stack(pushed);
  }

  static std::string line()
  {
    return std::string(curr_source_line, end_of_curr_source_line);
  }

  static a_source_position position_of(const char *text)
  {
    a_source_position pos;
    conv_line_loc_to_source_pos(strstr(curr_source_line, text), &pos);
    return pos;
  }

  static void expect_position(const char *text, unsigned seq, unsigned column)
  {
    a_source_position pos = position_of(text);
    EXPECT_EQ(pos.seq, seq) << text;
    EXPECT_EQ(pos.column, column) << text;
  }

  static void expect_file_and_line(unsigned seq, const char *name, unsigned long line,
                                   bool physical = false)
  {
    a_line_number found_line;
    bool at_end;
    a_source_file *file = source_file_for_seq(seq, &found_line, &at_end, physical);
    ASSERT_NE(file, nullptr) << seq;
    EXPECT_STREQ(file->file_name, name) << seq;
    EXPECT_EQ(found_line, line) << seq;
  }
};

TEST_F(SourceInput, LinesOfAllLengths)
{
  std::string long_line(200000, 'x');
  push("int a;\r\n\n" + long_line + "\nlast", "a.c");
  ASSERT_FALSE(read_logical_source_line(true, false));
  EXPECT_EQ(line(), "int a;");
  ASSERT_FALSE(read_logical_source_line(true, false));
  EXPECT_EQ(line(), "");
  ASSERT_FALSE(read_logical_source_line(true, false));
  EXPECT_EQ(line(), long_line);
  error_threshold = es_error; // no word about the missing newline
  ASSERT_FALSE(read_logical_source_line(true, false));
  EXPECT_EQ(line(), "last");
  EXPECT_EQ(memcmp(end_of_curr_source_line, "\0\2\0\1", 4), 0);
  EXPECT_TRUE(read_logical_source_line(true, false));
  EXPECT_TRUE(no_more_input);
}

TEST_F(SourceInput, PositionsBehindSplicesAndTrigraphs)
{
  trigraphs_allowed = true;
  push("one \\\n two ?"
       "?( four \\\n\\\nsix\nnext\n",
       "a.c");
  read_logical_source_line(true, false);
  EXPECT_EQ(line(), "one  two [ four six");
  expect_position("six", 4, 1); // places may be asked for in any order
  expect_position("one", 1, 1);
  expect_position("two", 2, 2);
  expect_position("[", 2, 6);
  expect_position("four", 2, 10);
  read_logical_source_line(true, false);
  expect_position("next", 5, 1);
}

TEST_F(SourceInput, ScannerPassesThroughModifications)
{
  push("a CALL(x) b\n", "a.c");
  read_logical_source_line(true, false);
  static char outer[] = "p INNER q\0\3";
  static char inner[] = "i\0\3";
  char *call = strstr(curr_source_line, "CALL");
  a_source_line_modif *o = add_source_line_modif(call, 7, outer, outer + 9);
  a_source_line_modif *i = add_source_line_modif(outer + 2, 5, inner, inner + 1);
  o->pos = position_of("a");
  EXPECT_EQ(nested_source_line_modif(curr_source_line), nullptr);
  EXPECT_EQ(nested_source_line_modif(outer + 4), o);
  EXPECT_EQ(parent_source_line_modif(i), o);

  curr_char_loc = call;
  ASSERT_TRUE(enter_source_line_modif());
  EXPECT_EQ(curr_char_loc, outer);
  curr_char_loc = outer + 2;
  ASSERT_TRUE(enter_source_line_modif());
  EXPECT_EQ(curr_char_loc, inner);
  a_source_position pos;
  conv_line_loc_to_source_pos(inner, &pos);
  EXPECT_EQ(pos.column, 1); // all of an expansion stands where the call does
  curr_char_loc = inner + 1;
  ASSERT_TRUE(leave_source_line_modif());
  EXPECT_EQ(curr_char_loc, outer + 7);
  o->stop_at_end = true;
  curr_char_loc = outer + 9;
  EXPECT_FALSE(leave_source_line_modif());
  o->stop_at_end = false;
  ASSERT_TRUE(leave_source_line_modif());
  EXPECT_EQ(std::string(curr_char_loc, 2), " b");

  rem_source_line_modifs_since(o->sequence_id);
  EXPECT_EQ(outer[2], 'I');
  EXPECT_EQ(source_line_modif_list, o);
  rem_source_line_modif(o);
  EXPECT_EQ(line(), "a CALL(x) b");
}

TEST_F(SourceInput, ThousandsOfModificationsInOneLine)
{
  std::string text;
  for (int i = 0; i < 50000; ++i)
    text += "ab ";
  push(text + "\n", "a.c");
  read_logical_source_line(true, false);
  for (int i = 0; i < 50000; ++i) {
    add_inline_source_line_modif(curr_source_line + 3 * i, 2, true);
  }
  for (int i = 0; i < 50000; i += 777) {
    a_source_line_modif *modif = assoc_source_line_modif(curr_source_line + 3 * i);
    EXPECT_EQ(modif->location, curr_source_line + 3 * i);
    EXPECT_EQ(modif->saved_char, 'a');
  }
  rem_source_line_modifs_since(0);
  EXPECT_EQ(line(), text);
}

TEST_F(SourceInput, PointersFollowAGrowingLine)
{
  push("first CALL \\\nsecond\n", "a.c");
  read_logical_source_line(true, false);
  char *call = strstr(curr_source_line, "CALL");
  char *registered = call + 1;
  a_pointer_registration keep(&registered);
  a_source_line_modif *modif = add_inline_source_line_modif(call, 4, false);
  curr_char_loc = call + 4;
  std::string before = line();
  ensure_min_curr_source_line_length(1000000);
  EXPECT_EQ(line(), before);
  EXPECT_EQ(modif->location, curr_source_line + 6);
  EXPECT_EQ(assoc_source_line_modif(curr_source_line + 6), modif);
  EXPECT_EQ(registered, curr_source_line + 7);
  EXPECT_EQ(curr_char_loc, curr_source_line + 10);
  expect_position("second", 2, 1);
}

TEST_F(SourceInput, AppendingALine)
{
  push("\"open\nclosed\" x\n", "a.c");
  read_logical_source_line(true, false);
  add_orig_line_modif(end_of_curr_source_line, olm_newline_in_string)->variant.seq = 2;
  memcpy(end_of_curr_source_line, "\\n", 2);
  curr_char_loc = end_of_curr_source_line + 2;
  ASSERT_FALSE(read_logical_source_line(false, true));
  EXPECT_EQ(line(), "\"open\\nclosed\" x");
  expect_position("closed", 2, 1);
  expect_position("x", 2, 9);
}

TEST_F(SourceInput, NumbersToFilesAndLines)
{
  push("1\n2\n3\n4\n", "main.c");
  read_logical_source_line(true, false);
  read_logical_source_line(true, false);
  push("i1\ni2\n", "inc.h", true);
  for (int i = 0; i < 3; ++i)
    read_logical_source_line(true, false);
  EXPECT_EQ(line(), "3");
  expect_file_and_line(1, "main.c", 1);
  expect_file_and_line(3, "inc.h", 1);
  expect_file_and_line(4, "inc.h", 2);
  expect_file_and_line(5, "main.c", 3);
  EXPECT_TRUE(seq_is_in_include_file(4));
  EXPECT_FALSE(seq_is_in_include_file(5));

  // What a line directive does.
  a_source_file_start start = {};
  start.parent = curr_ise->curr_source_file;
  start.seq = seq_number_last_read + 1;
  start.line = 70;
  start.file_name = start.name_as_written = "renamed.y";
  curr_ise->curr_source_file = record_start_of_source_file(start);
  curr_ise->line_number = 69;
  read_logical_source_line(true, false);
  expect_file_and_line(6, "renamed.y", 70);
  expect_file_and_line(6, "main.c", 4, true);
  EXPECT_TRUE(read_logical_source_line(true, false));

  a_line_number at_line;
  bool at_end;
  source_file_for_seq(7, &at_line, &at_end, false);
  EXPECT_TRUE(at_end);
  EXPECT_EQ(source_file_for_seq(0, &at_line, &at_end, false), nullptr);
  EXPECT_EQ(source_file_for_seq(100, &at_line, &at_end, false), nullptr);
}

TEST_F(SourceInput, FileIndexStaysSmallAndUseful)
{
  std::string text;
  for (int i = 1; i <= 20000; ++i)
    text += std::to_string(i) + "\n";
  push(text, "a.c");
  a_source_file *file = curr_ise->first_source_file;
  while (!read_logical_source_line(true, false)) {
  }
  for (a_line_number line : {1ul, 99ul, 100ul, 5000ul, 12345ul, 19999ul}) {
    a_line_number indexed;
    long offset;
    look_up_file_index(file, line, &indexed, &offset);
    EXPECT_LE(indexed, line);
    // The offset is that of the line behind the indexed one.
    EXPECT_EQ(text.compare(offset, std::to_string(indexed + 1).size(), std::to_string(indexed + 1)),
              0);
    if (line > 10000) {
      EXPECT_GT(indexed, line / 2);
    }
  }
}
