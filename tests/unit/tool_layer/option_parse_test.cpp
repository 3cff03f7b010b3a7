// option_parse_test.cpp - names and their trie, arguments, what each wrong text is answered with.
#include "option_fixture.h"
#include <cstring>
#include <fstream>

namespace {

// What parsing a text gives, and where it stopped.
int parse(option_obj &set, std::string const &text, std::string *rest = nullptr)
{
  char const *stopped;
  int result = set.process_option(text.c_str(), &stopped);
  if (rest) *rest = stopped;
  return result;
}

std::string messages_of(std::string const &text)
{
  option_obj set;
  return errors_of([&] { EXPECT_EQ(parse(set, text), 1) << text; });
}

// A good argument for an option, with its separator; empty for an option without one.
std::string some_argument(option_id id)
{
  switch (parm_type[id]) {
  case parm_none: return "";
  case parm_number: return '=' + std::to_string(parameter_limits[id].low + 1);
  case parm_word:
    return std::string("=") + option_obj::rot13(option_definitions[id].item_list->text);
  default: return "=some text";
  }
}

TEST_F(OPTIONS, EachNameSetsItsOptionAndNoOther)
{
  for (int i = 0; i < option_name_count; i++) {
    an_option_name const &name = option_names[i];
    if (name.linker_only) continue;
    option_obj set;
    set.merging = true; // so that nothing is implied
    std::string const text = option_obj::rot13(trie_text(name));
    std::string rest = "?";
    EXPECT_ERRORS(EXPECT_EQ(parse(set, text + some_argument(name.option), &rest), 1) << text, "");
    EXPECT_EQ(rest, "");
    for (int id = 0; id < option_count; id++) {
      EXPECT_EQ(set.state[id], id == name.option) << text << " and " << id;
    }
    EXPECT_EQ(set.format_of_option(name.option), name.format);
    EXPECT_TRUE(set.parsed_option(name.option));
    EXPECT_EQ(set.getargcount(name.option), parm_type[name.option] != parm_none);
    EXPECT_STREQ(set.option_name(name.option), option_obj::rot13(name.text));
  }
}

TEST_F(OPTIONS, APrefixOfANameIsNoOption)
{
  for (int i = 0; i < option_name_count; i++) {
    std::string const name = option_obj::rot13(trie_text(option_names[i]));
    if (name[0] != '-') continue;
    for (size_t length = 2; length < name.size(); length++) {
      std::string const prefix = name.substr(0, length);
      bool is_name = false;
      for (int k = 0; k < option_name_count; k++) {
        is_name |= prefix == option_obj::rot13(trie_text(option_names[k]));
      }
      option_obj set;
      std::string rest = "?";
      if (is_name) continue;
      EXPECT_EQ(parse(set, prefix, &rest), 0) << prefix;
      EXPECT_EQ(rest, "");
      EXPECT_EQ(parse(set, name + "!", nullptr), 0) << name;
    }
  }
}

TEST_F(OPTIONS, ParsingStopsWhereATextIsNoLongerAnOption)
{
  struct {
    char const *text, *rest;
  } const cases[] = {{"-pchx", "x"},     {"-p=1", "=1"},  {"-strictly", "ly"},
                     {"!", "!"},         {"{", "{"},      {"-", ""},
                     {"---pch", "-pch"}, {"g1", "1"},     {"-strict=yes", "=yes"},
                     {"-PCH", "PCH"},    {"\xE4", "\xE4"}};
  for (auto const &one : cases) {
    option_obj set;
    std::string rest = "?";
    EXPECT_EQ(parse(set, one.text, &rest), 0) << one.text;
    EXPECT_EQ(rest, one.rest) << one.text;
  }
  option_obj set;
  EXPECT_EQ(set.process_option("", nullptr), 1);
  EXPECT_EQ(set.process_option("--pch", nullptr), 1); // with both its dashes
  EXPECT_EQ(parse(set, "g-strict!"), 0);              // what stood ahead of the wrong part counts
  EXPECT_EQ(set.state[opt_symdebug_dwarf] + set.state[opt_strict], 1);
}

TEST_F(OPTIONS, SingleLettersFormChains)
{
  option_obj set;
  EXPECT_EQ(set.process_option("gkqqDNAME=a b", nullptr), 1);
  EXPECT_EQ(set.state[opt_symdebug_dwarf] + set.state[opt_keep_assembly], 2);
  EXPECT_EQ(set.state[opt_super_quiet], 1);
  EXPECT_EQ(set.state[opt_quiet], 0);
  EXPECT_STREQ(set.getstrarg(opt_define_macro, 0), "NAME=a b");
  EXPECT_STREQ(set.option_name(opt_define_macro), "-D");
  EXPECT_STREQ(set.current_option, "DNAME=a b");
}

TEST_F(OPTIONS, TheOtherCaseOfALetterIsDeprecated)
{
  EXPECT_EQ(messages_of("G"), "warning: Case insensitivity of options has been deprecated; -G must "
                              "be written as -g in future releases\n");
  EXPECT_EQ(messages_of("Qq"),
            "warning: Case insensitivity of options has been deprecated; -Qq must be "
            "written as -qq in future releases\n");
  option_obj set; // both cases have an option, so there is no doubt
  EXPECT_ERRORS(EXPECT_EQ(parse(set, "kKcC"), 1), "");
  EXPECT_EQ(set.state[opt_keep_assembly] + set.state[opt_old_c] + set.state[opt_compile_only] +
                set.state[opt_comments],
            4);
  EXPECT_ERRORS(option_obj::deprecated_case("-strict", "-strict"), "");
  EXPECT_ERRORS(option_obj::deprecated_case("-a", "-b"), "");
}

TEST_F(OPTIONS, ANameOfTheLinkerCountsBehindRunLinker)
{
  option_obj set;
  EXPECT_ERRORS(parse(set, "o3"), "warning: Case insensitivity of options has been deprecated; -o "
                                  "must be written as -O in future releases\n");
  EXPECT_EQ(set.getnumarg(opt_opt_level, 0), 3);
  EXPECT_EQ(parse(set, "z"), 1);
  EXPECT_ERRORS(EXPECT_EQ(parse(set, "oa.out"), 1), "");
  EXPECT_STREQ(set.getstrarg(opt_output_file, 0), "a.out");
  EXPECT_ERRORS(parse(set, "o2"),
                "warning: Option -o is an alias of linker option --output_file. The specified "
                "argument of -o is also a valid argument for the compiler option --opt_level "
                "(2). If the intent is to specify the optimization level, the option should "
                "be specified before the --run_linker(-z) option. As specified, the output "
                "file of the linker will be 2\n");
  EXPECT_EQ(set.getnumarg(opt_opt_level, 0), 3);
  EXPECT_ERRORS(EXPECT_EQ(parse(set, "-parallel_runs=2"), 1),
                "error: option --parallel_runs needs to be passed to the compiler shell instead "
                "of directly to the linker.  Ignoring.\n");
  EXPECT_EQ(set.state[opt_parallel_runs], 0);
}

TEST_F(OPTIONS, NumbersHaveThreeBases)
{
  struct {
    char const *text;
    long value;
    char const *rest;
  } const cases[] = {{"10", 10, ""},
                     {"10h", 16, ""},
                     {"17q", 15, ""},
                     {"19q", 19, "q"},
                     {"0x1F", 31, ""},
                     {"0X1f", 31, ""},
                     {"017", 15, ""},
                     {"018", 1, "8"},
                     {"09", 9, ""},
                     {"0", 0, ""},
                     {"017h", 23, ""},
                     {"FFh", 255, ""},
                     {"0x10h", 16, ""},
                     {"0x", 0, "x"},
                     {"77Q", 63, ""},
                     {"10H1", 16, "1"},
                     {"-12", -12, ""},
                     {"-10h", -16, ""},
                     {"12ab", 12, "ab"},
                     {"", 0, ""},
                     {"abc", 0, "abc"},
                     {"-", 0, "-"},
                     {"h", 0, "h"},
                     {"8q", 8, "q"},
                     {"9223372036854775807", 9223372036854775807l, ""},
                     {"9223372036854775808", 9223372036854775807l, ""},
                     {"-9223372036854775808", -9223372036854775807l - 1, ""}};
  for (auto const &one : cases) {
    char const *rest = "?";
    EXPECT_EQ(option_obj::strtol_by_radix(one.text, &rest), one.value) << one.text;
    EXPECT_STREQ(rest, one.rest) << one.text;
  }
  option_obj set;
  EXPECT_ERRORS(EXPECT_EQ(parse(set, "-heap_size 19q"), 1),
                "warning: garbage following option --heap_size ignored\n");
  EXPECT_EQ(set.getnumarg(opt_heap_size, 0), 19);
}

TEST_F(OPTIONS, ABadArgumentIsReportedAndSetsNothing)
{
  char const negative[] = "is out of range (must be a non-negative_number)\n";
  struct {
    char const *text;
    std::string message;
  } const cases[] = {
      {"-heap_size", "error: option --heap_size is missing its parameter 'bytes'\n"},
      {"-heap=", "error: option --heap is missing its parameter 'bytes'\n"},
      {"D", "error: option -D is missing its parameter 'name[=text]'\n"},
      {"@", "error: option @ is missing its parameter 'file'\n"},
      {"-heap_size=-1", std::string("error: argument to option --heap_size (-1) ") + negative},
      {"-heap_size=2147483648", "error: argument to option --heap_size (2147483648) is out of "
                                "range (must be a non-negative_number)\n"},
      {"-stack=all", std::string("error: argument to option --stack (all) ") + negative},
      {"-tab_width=33", "error: argument to option --tab_width (33) is out of range (must be a "
                        "number from 1 to 32\n"},
      {"-inline_bias=-101", "error: argument to option --inline_bias (-101) is out of range\n"},
      {"-opt_level=4", "error: bad argument to option --opt_level: should be one of "
                       "{off,0,1,2,3}\n"},
      {"OO", "error: bad argument to option -O: should be one of {off,0,1,2,3}\n"},
      {"-abi=EABI", "error: bad argument to option --abi: should be one of {eabi,coffabi}\n"}};
  for (auto const &one : cases) {
    option_obj set;
    EXPECT_ERRORS(EXPECT_EQ(parse(set, one.text), 1) << one.text, one.message);
    for (int id = 0; id < option_count; id++)
      EXPECT_EQ(set.change_count[id], 0) << one.text;
  }
}

TEST_F(OPTIONS, AnArgumentStandsBehindAnEqualsSignOrBlanksOrAtOnce)
{
  for (char const *text : {"-define_macro=A", "-define_macro   A", "DA", "D A", "D=A"}) {
    option_obj set;
    EXPECT_EQ(parse(set, text), 1);
    EXPECT_STREQ(set.getstrarg(opt_define_macro, 0), "A") << text;
  }
  option_obj set;
  EXPECT_EQ(parse(set, "-define= A"), 1); // one separator only
  EXPECT_STREQ(set.getstrarg(opt_define_macro, 0), " A");
  EXPECT_EQ(parse(set, "-opt_level"), 1); // may be left out
  EXPECT_EQ(set.getnumarg(opt_opt_level, 0), 2);
  EXPECT_EQ(parse(set, "-entry_hook"), 1);
  EXPECT_STREQ(set.getstrarg(opt_entry_hook, 0), "__entry_hook");
}

TEST_F(OPTIONS, OneOptionMaySetAnother)
{
  option_obj set;
  EXPECT_EQ(parse(set, "-openmp:host"), 1);
  EXPECT_EQ(set.state[opt_openmp], 1);
  EXPECT_FALSE(set.parsed_option(opt_openmp));
  EXPECT_EQ(output_of([&] { set.dump_history(); }), "   1  --openmp:host\n");
  parse(set, "-openmp:device"); // already set
  EXPECT_EQ(set.state[opt_openmp], 1);
}

//-------------------------------------------------------------------------------------------------
// Whole command lines.

void read(option_obj &set, std::vector<char const *> words)
{
  set.process_words(int(words.size()), words.data());
}

TEST_F(OPTIONS, ACommandLineHoldsOptionsAndFiles)
{
  option_obj set;
  EXPECT_ERRORS(read(set, {"-gc", "a.c", "--define_macro", "X=1", "b.CPP", "-I", "dir", "c.asm",
                           "d.obj", "--source_language=c", "e.h", "--source:object", "-odd"}),
                "");
  EXPECT_STREQ(set.getstrarg(opt_define_macro, 0), "X=1");
  EXPECT_STREQ(set.getstrarg(opt_include_directory, 0), "dir");
  std::string files;
  for (auto const &[id, name] : set.file_options) {
    files += option_obj::internal_option_string(id) + (':' + name) + ' ';
  }
  EXPECT_EQ(files, "opt_source_c:a.c opt_source_cplusplus:b.CPP opt_source_asm:c.asm "
                   "opt_source_object:d.obj opt_source_c:e.h opt_source_object:-odd ");
  set.clearopt(opt_source_c);
  EXPECT_EQ(set.file_options.size(), 4u);
  EXPECT_ERRORS(set.add_file("linker", "f.lib"), "");
  EXPECT_STREQ(set.getstrarg(opt_source_object, 2), "f.lib");
  EXPECT_ERRORS(set.add_file("optimizer", "g"),
                "warning: No known tool \"optimizer\" when adding file to option list.\n");
  EXPECT_EQ(option_obj::next_arg, nullptr);
}

TEST_F(OPTIONS, AnUnknownOptionOfACommandLineIsFatal)
{
  for (char const *word : {"--nosuch", "--opt_lev=3", "-g:", "-", "--", "---gcc"}) {
    option_obj set;
    std::string const message = std::string("fatal error: invalid option:  ") + word + '\n';
    EXPECT_EXIT(read(set, {word}), testing::ExitedWithCode(1), message);
    DIAGNOSTIC::debug_mode_m = true; // goes on with the next word
    EXPECT_ERRORS(read(set, {word, "-k"}), message);
    DIAGNOSTIC::debug_mode_m = false;
    EXPECT_EQ(set.state[opt_keep_assembly], 1);
  }
}

class OPTION_FILE {
public:
  std::string name;
  OPTION_FILE(std::string const &its_name, std::string const &text)
      : name(testing::TempDir() + its_name)
  {
    std::ofstream(name) << text;
  }
  ~OPTION_FILE()
  {
    remove(name.c_str());
  }
};

TEST_F(OPTIONS, AnOptionFileIsReadWhereItIsNamed)
{
  OPTION_FILE inner("inner.cmd", "-Dinner --nosuch\n\n --heap_size=x");
  OPTION_FILE outer("outer.cmd", "# -Dnot\n'-Dtwo words' -D\n  \"next one\" ''\n@" + inner.name +
                                     "  -Dlast --heap_size");
  std::string const at = "@" + outer.name;
  option_obj set;
  EXPECT_EQ(errors_of([&] {
              read(set, {"-Dfirst", at.c_str(), "-Dbehind"});
            }),
            "\"" + inner.name + "\", line 1: error: option is invalid\n\"" + inner.name +
                "\", line 3: error: argument to option --heap_size "
                "(x) is out of range (must be a non-negative_number)\n\"" +
                outer.name +
                "\", line 4: error: option --heap_size is missing its parameter 'bytes'\n");
  char const *const expected[] = {"first", "two words", "next one", "inner", "last", "behind"};
  ASSERT_EQ(set.getargcount(opt_define_macro), 6);
  for (unsigned i = 0; i < 6; i++) {
    EXPECT_STREQ(set.getstrarg(opt_define_macro, i), expected[i]);
  }
}

TEST_F(OPTIONS, AnOptionFileThatCantBeReadIsFatal)
{
  OPTION_FILE self("self.cmd", "-k @" + testing::TempDir() + "self.cmd");
  option_obj set;
  EXPECT_EXIT(set.process_option_file("/nosuch/file"), testing::ExitedWithCode(1),
              "fatal error: cannot open file \"/nosuch/file\":  No such file or directory");
  EXPECT_EXIT(set.process_option_file(self.name.c_str()), testing::ExitedWithCode(1), "itself");
  EXPECT_EXIT(set.process_option_file("/"), testing::ExitedWithCode(1), "Is a directory");
}

//-------------------------------------------------------------------------------------------------
// What a whole set is checked for.

TEST_F(OPTIONS, SettingsThatDontFitTogetherAreReported)
{
  struct {
    std::vector<char const *> words;
    char const *message;
  } const cases[] = {
      {{"--align_structs=12"}, "error: Argument of --align_structs must be a power of 2\n"},
      {{"--pack_alignment=0"}, "error: Argument of --pack_alignment must be a power of 2\n"},
      {{"--array_alignment=8", "--silicon_version=heron"}, ""},
      {{"--float=fpu32", "--abi=coffabi"},
       "error: Rovane core with hardware floating point support requires --abi=eabi. "
       "Use --float_support=fpalib to disable hardware floating piont support.\n"},
      {{"--float_support=fpalib", "--abi=coffabi"}, ""},
      {{"--symdebug:coff", "--object_format=elf"},
       "warning: Option --symdebug:coff is not valid with --object_format=elf (ignored)\n"},
      {{"--dsbt", "--abi=coffabi"}, "error: Option --dsbt is not valid with --abi=coffabi\n"}};
  for (auto const &one : cases) {
    option_obj set;
    EXPECT_ERRORS(read(set, one.words), one.message);
    EXPECT_EQ(set.state[opt_symdebug_coff], 0);
  }
}

TEST_F(OPTIONS, WhatIsNoLongerSupportedIsFatal)
{
  struct {
    char const *word, *message;
  } const cases[] = {
      {"--cpu=500",
       "fatal error: Silicon version 500 is a legacy processor variant and is no longer "
       "supported. Please use Rovane Zentrix v7.4.x or earlier for support of this "
       "processor.\n"},
      {"--cpu=fast", "fatal error: Silicon version fast is not a supported or valid value\n"},
      {"--mem_model:data=small", "fatal error: Small memory model is no longer supported\n"},
      {"--calling_model=stack",
       "fatal error: --calling_model=stack is no longer supported. Please use Rovane "
       "Zentrix v7.4.x or earlier for support of this option.\n"}};
  for (auto const &one : cases) {
    DIAGNOSTIC::debug_mode_m = true;
    option_obj set;
    EXPECT_ERRORS(read(set, {one.word}), one.message);
  }
}

} // namespace
