// option_merge_test.cpp - merging, export, help.
#include "option_fixture.h"
#include <algorithm>
#include <cstring>

namespace {

// Parses words separated by single blanks, each without its first dash.
void fill(option_obj &set, std::string const &words)
{
  for (size_t at = 0; at < words.size();) {
    size_t const end = std::min(words.find(' ', at), words.size());
    EXPECT_EQ(set.process_option(words.substr(at, end - at).c_str(), nullptr), 1) << words;
    at = end + 1;
  }
}

struct MERGED {
  std::string options, messages;
};

// The merge of two files, "a.c" and "b.c".
MERGED merge(std::string const &first, std::string const &second)
{
  option_obj a, b, merged;
  a.current_file = "a.c";
  b.current_file = "b.c";
  fill(a, first);
  fill(b, second);
  MERGED result;
  result.messages = errors_of([&] {
    merged.merge_init(a);
    merged.merge_options(b);
  });
  EXPECT_FALSE(merged.merging);
  result.options = merged.export_option_list(export_command_line);
  return result;
}

TEST_F(OPTIONS, ThePoliciesDecide)
{
  struct {
    char const *policy, *first, *second, *merged;
  } const cases[] = {{"none", "-timing", "-timing", ""},
                     {"no policy", "-long_long", "-long_long", ""},
                     {"main", "-map_file=a", "-map_file=b", "--map_file=a"},
                     {"main", "", "-map_file=b", ""},
                     {"or", "", "-profile", "--profile"},
                     {"or", "-profile", "", "--profile"},
                     {"or", "la lb", "lc la", "--library=a --library=b --library=c --library=a"},

                     {"and", "-no_inlining", "", ""},
                     {"and", "-no_inlining", "-no_inlining", "--no_inlining"},
                     {"and", "", "-no_inlining", ""},
                     {"min", "-inline_limit=10", "-inline_limit=9", "--inline_limit=9"},
                     {"min", "-inline_limit=9", "-inline_limit=10", "--inline_limit=9"},
                     {"min", "-inline_limit=9", "", "--inline_limit=9"},
                     {"min", "", "-inline_limit=9", "--inline_limit=9"},
                     {"min of words", "O3", "O0", "--opt_level=0"},
                     {"min of words", "O0", "Ooff", "--opt_level=off"},
                     {"min of words", "Ooff", "O0", "--opt_level=off"},
                     {"max", "-stack=10", "-stack=9", "--stack_size=10"},
                     {"max", "-stack=9", "-stack=10", "--stack_size=10"},
                     {"max", "", "-stack=10", "--stack_size=10"},
                     {"exact", "-abi=eabi", "-abi=eabi", "--abi=eabi"},
                     {"exact_notset", "-float=fpu32", "", "--float_support=fpu32"},
                     {"exact_notset", "", "-float=fpu32", ""}};
  for (auto const &one : cases) {
    MERGED const result = merge(one.first, one.second);
    EXPECT_EQ(result.options, one.merged) << one.policy << ": " << one.first << " | " << one.second;
    EXPECT_EQ(result.messages, "") << one.policy;
  }
}

TEST_F(OPTIONS, ExactOptionsMustAgree)
{
  EXPECT_EQ(merge("-align_structs=4", "").messages,
            "error: option --align_structs was set in previous files, but not in \"b.c\"\n");
  EXPECT_EQ(merge("", "-endian=big").messages,
            "error: option --endian is set in \"b.c\", but not in previous files\n");
  EXPECT_EQ(merge("-cpu=1000", "-processor=2000").messages,
            "error: option --silicon_version=2000 is set in \"b.c\", and is incompatible "
            "with the previously seen option --silicon_version=1000\n");
  EXPECT_EQ(merge("-float=fpu32", "-float=fpu64").messages,
            "error: option --float_support=fpu64 is set in \"b.c\", and is incompatible "
            "with the previously seen option --float_support=fpu32\n");
}

TEST_F(OPTIONS, MergeConflictsKeepWhatCameFirst)
{
  int entries = 0;
  DIAGNOSTIC::max_errors_m = 1000;
  for (int mine = 0; mine < option_count; mine++) {
    for (int theirs = 0; theirs < option_count; theirs++) {
      if (!merge_conflicts[mine][theirs]) continue;
      EXPECT_EQ(merge_conflicts[mine][theirs], 3);
      entries++;
      std::string const my_name = option_obj::rot13(option_definitions[mine].name);
      std::string const their_name = option_obj::rot13(option_definitions[theirs].name);
      option_obj a, b, merged;
      a.setopt(option_id(mine));
      b.setopt(option_id(theirs));
      b.current_file = "b";
      merged.merge_init(a);
      std::string message = errors_of([&] { merged.merge_options(b); });
      std::replace(message.begin(), message.end(), '\n', ' ');
      EXPECT_EQ(message.find("error: option " + their_name + " in file \"b\" conflicts with"), 0u)
          << message;
      EXPECT_EQ(merged.export_option_list(export_command_line), my_name);
    }
  }
  EXPECT_EQ(entries, 8);
}

// In each group the choice of the later set replaces that of the earlier, whichever stands first in
// the tables, and a set without a choice changes nothing.
TEST_F(OPTIONS, TheLaterChoiceOfAGroupWins)
{
  for (class_id group : {class_C_Dialect, class_Quiet_Level, class_Language_mode,
                         class_Debugging_model, class_Source_interlist, class_Cplusplus_Dialect,
                         class_Function_Subsections, class_Preprocessor_Analysis_Options}) {
    for (int mine = 0; mine < option_count; mine++) {
      if (!option_obj::isclass(option_id(mine), group)) continue;
      ASSERT_NE(mutex_merge_override_functions[mine], nullptr);
      for (int theirs = 0; theirs < option_count; theirs++) {
        if (!option_obj::isclass(option_id(theirs), group)) continue;
        option_obj a, b, merged, nothing;
        a.setopt(option_id(mine));
        b.setopt(option_id(theirs));
        EXPECT_ERRORS((merged.merge_init(a), merged.merge_options(b)), "");
        EXPECT_EQ(merged.testclass(group), 1);
        EXPECT_TRUE(merged.state[theirs]);
        merged.merge_options(nothing);
        EXPECT_TRUE(merged.state[theirs]);
      }
    }
  }
}

TEST_F(OPTIONS, AnOverrideSaysWhetherTheWorkIsDone)
{
  option_obj a, b, none;
  a.merging = b.merging = true;
  a.setopt(opt_quiet);
  b.setopt(opt_verbose);
  EXPECT_FALSE(a.mutex_merge_override_Quiet_Level(opt_quiet, none));
  EXPECT_FALSE(none.mutex_merge_override_Quiet_Level(opt_quiet, a));
  EXPECT_TRUE(a.mutex_merge_override_Quiet_Level(opt_verbose, b)); // left alone
  EXPECT_TRUE(a.state[opt_quiet] && !a.state[opt_verbose]);
  EXPECT_TRUE(a.mutex_merge_override_Quiet_Level(opt_quiet, b)); // taken
  EXPECT_TRUE(!a.state[opt_quiet] && a.state[opt_verbose]);
  EXPECT_FALSE(a.mutex_merge_override_Quiet_Level(opt_verbose, b)); // both have it
}

//-------------------------------------------------------------------------------------------------
// Export.

TEST_F(OPTIONS, WhatIsExportedIsParsedAgain)
{
  for (int i = 0; i < option_count; i++) {
    option_id const id = option_id(i);
    option_obj set, copy;
    switch (parm_type[i]) {
    case parm_none: set.setopt(id); break;
    case parm_number: set.setopt(id, parameter_limits[i].high); break;
    case parm_word: set.setopt(id, option_definitions[i].item_list[1].value); break;
    case parm_list: set.setopt(id, "= \"<first>\""); [[fallthrough]];
    default: set.setopt(id, " a=b "); break;
    }
    copy.merging = true;
    for (int k = 0; k == 0 || k < set.getargcount(id); k++) {
      EXPECT_EQ(copy.process_option(set.export_option(id, k) + 1, nullptr), 1);
    }
    EXPECT_EQ(copy.export_option_list(export_command_line),
              set.export_option_list(export_command_line));
    EXPECT_EQ(copy.getargcount(id), set.getargcount(id));
  }
  option_obj set; // an argument that isn't there
  EXPECT_EQ(set.process_option(set.export_option(opt_map_file, 0) + 1, nullptr), 1);
  EXPECT_EQ(set.state[opt_map_file], 0);
  EXPECT_STREQ(set.export_option(opt_gcc, 0), "--gcc");
  EXPECT_STREQ(set.export_option(opt_opt_level, 7), "--opt_level");
}

TEST_F(OPTIONS, ExportHasSeveralForms)
{
  option_obj set;
  fill(set, "g -abi=eabi DX=\"1\"&<2> -gcc");
  EXPECT_EQ(set.export_option_class(export_command_line, class_basic),
            "--symdebug:dwarf --define_macro=X=\"1\"&<2>");
  EXPECT_EQ(set.export_option_class(export_internal, class_target), "opt_abi=eabi");
  EXPECT_EQ(set.export_option_class(export_xml, class_preprocessor),
            "<option id=\"define_macro\" kind=\"LIST\" class=\"basic\"><name>--define_macro</name>"
            "<description>define a macro</description><value>X=&quot;1&quot;&amp;&lt;2&gt;</value>"
            "</option>");
  EXPECT_EQ(set.export_option_pairs(export_command_line, class_basic),
            "--symdebug:dwarf\t\n--define_macro\tX=\"1\"&<2>\n");
  EXPECT_EQ(set.export_option_pairs(export_internal, class_target), "opt_abi\teabi\n");
  EXPECT_EQ(output_of([&] { set.print(); }),
            "--abi=eabi\n--symdebug:dwarf\n--gcc\n--define_macro=X=\"1\"&<2>\n");
}

//-------------------------------------------------------------------------------------------------
// Help.

TEST_F(OPTIONS, TheTextOfAnOptionJoinsItsNames)
{
  char const *const names[] = {"--debug", "-g", "--dbg", nullptr};
  EXPECT_STREQ(option_obj::get_opt_txt(nullptr, names, "-g", nullptr, 0), "-g,--debug,--dbg");
  EXPECT_STREQ(option_obj::get_opt_txt("-g", names, nullptr, "level", 0), "-g,--debug,--dbg=level");
  EXPECT_STREQ(option_obj::get_opt_txt("-g", nullptr, "--dbg", "level", 1), "--dbg,-g[=level]");
  std::string const long_name(100, 'x');
  char const *const more[] = {"yyyyyyyyyyyyyyyyyyyy", "zzzzzzzzzzzzzzzzzzz", "u", nullptr};
  EXPECT_EQ(option_obj::get_opt_txt(nullptr, more, long_name.c_str(), "p", 0),
            long_name + ",zzzzzzzzzzzzzzzzzzz=p"); // 120 characters ahead of the parameter
}

TEST_F(OPTIONS, HelpIsShownByNameAndByClass)
{
  option_obj set;
  EXPECT_EQ(output_of([&] { set.display_option_help("O", 1); }),
            "  --opt_level,-O[=level]            how hard the optimizer works\n"
            "                                    off leaves the optimizer out\n"
            "                                    off, 0, 1, 2, 3\n");
  EXPECT_EQ(output_of([&] { set.display_option_help("--long_precision_bits", 0); }),
            "  --long_precision_bits=32|40       width of long\n");
  EXPECT_EQ(
      output_of([&] { set.display_option_help("endian", 2); }),
      "<option id=\"byte_order\" kind=\"WORD\" class=\"target\"><name>--byte_order</name>"
      "<description>the byte order of data</description><name>--endian</name>"
      "<parameter optional=\"0\"><name>order</name><help>all files of a program need the same"
      "</help><word value=\"0\">little</word><word value=\"1\">big</word></parameter></option>\n");
  EXPECT_ERRORS(set.display_option_help("nosuch", 0), "error: option is invalid\n");
  EXPECT_EQ(output_of([&] { set.dump_class(class_Quiet_Level); }),
            "\nHow much is shown of the run:\n"
            "  --quiet,-q                        don't name each file that is compiled\n"
            "  --super_quiet,-qq                 show nothing but diagnostics\n"
            "  --verbose,-v                      show each command as it runs\n");
  EXPECT_EQ(output_of([&] { set.dump_class(class_id(30)); }), "");
  EXPECT_EQ(output_of([&] { set.dump_basic_class(); }).find("\nOptions used most often:\n  --help"),
            0u);
}

TEST_F(OPTIONS, TheWholeHelpShowsAllThatIsNotHidden)
{
  option_obj set;
  option_obj::print_banner = [](FILE *file) { fputs("banner\n", file); };
  std::string const help = output_of([&] { set.display_option_help(nullptr, 0); });
  option_obj::print_banner = nullptr;
  EXPECT_EQ(help.find("banner\nUsage: rvcl [options] files...\n"), 0u);
  for (int i = 0; i < option_count; i++) {
    std::string const name = option_obj::rot13(option_definitions[i].name);
    bool found = false;
    for (char behind : {' ', ',', '=', '[', '\n'})
      found |= help.find("  " + name + behind) != help.npos;
    EXPECT_EQ(found, !option_definitions[i].hidden) << name;
  }
}

} // namespace
