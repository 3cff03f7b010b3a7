// option_state_test.cpp - setting, clearing, conflicts, history, tools, queries, texts.
#include "option_fixture.h"
#include <algorithm>
#include <cstring>
#include <set>

namespace {

TEST_F(OPTIONS, ScrambledTextsComeBack)
{
  char const text[] = "The %d options -- azAZ nmNM [09] \xE4";
  char const *once = option_obj::rot13(text);
  EXPECT_STREQ(once, "Gur -q bcgvbaf %% nmNM azAZ [09] \xE4");
  EXPECT_STREQ(option_obj::rot13(once), text);
  EXPECT_STREQ(option_obj::rot13(nullptr), "");
  char const *results[5];
  for (int i = 0; i < 5; i++)
    results[i] = option_obj::rot13(std::string(size_t(i) * 70, 'a').c_str());
  for (int i = 0; i < 5; i++)
    EXPECT_EQ(results[i], std::string(size_t(i) * 70, 'n'));
  EXPECT_STREQ(option_definitions[opt_pch].name, "%%cpu");
}

TEST_F(OPTIONS, EachRowOfTheTablesIsWhole)
{
  std::set<std::string> names;
  for (int i = 0; i < option_count; i++) {
    an_option_definition const &option = option_definitions[i];
    bool const has_parameter = parm_type[i] != parm_none;
    EXPECT_EQ(std::string(option_obj::rot13(option.name)).compare(0, 2, "--"), 0);
    EXPECT_STRNE(option.description, "");
    EXPECT_EQ(option.parameter_name != nullptr, has_parameter);
    EXPECT_EQ(option.item_list != nullptr, parm_type[i] == parm_word);
    EXPECT_TRUE(option.help_sort_key == 500 ||
                (option.help_sort_key >= 600 && option.help_sort_key <= 910));
    EXPECT_EQ(option.other_names[max_other_names], nullptr);
    EXPECT_TRUE(option_obj::isclass(option_id(i), option.help_class));
    EXPECT_STREQ(enum_to_optiontxt[i], option.name);
    EXPECT_EQ(conflicts[i][i], 0);
    names.insert(option_obj::internal_option_string(option_id(i)));
  }
  EXPECT_EQ(names.size(), size_t(option_count));
  EXPECT_EQ(long_form_node_count, 479);
}

// An option of the shell that the parser doesn't know would end every run.
TEST_F(OPTIONS, TheParserKnowsTheWordsThatItIsGiven)
{
  static std::set<std::string> const known = {
#define OPTION(id, name, letter, value, argument, pch, action, help)                               \
  name + std::string(argument ? "=" : ""),
#define OPTION_ALSO OPTION
#include "driver/options.def"
  };
  auto check = [&](std::string const &word) {
    size_t const end = word.find('=');
    EXPECT_TRUE(known.count(word.substr(2, end == std::string::npos ? end : end - 1))) << word;
  };
  for (int i = 0; i < option_count; i++) {
    option_id const id = option_id(i);
    option_obj set;
    if (parm_type[i] == parm_word) set.setopt(id, option_definitions[i].item_list->value);
    if (parm_type[i] == parm_number) set.setopt(id, 1l);
    if (parm_type[i] == parm_text || parm_type[i] == parm_list) set.setopt(id, "x");
    if (parm_type[i] == parm_none) set.setopt(id);
    argv_list argv;
    set.add_opts_for_tool(argv, "rvparse");
    ASSERT_LE(argv.size(), 1);
    if (argv.size()) check(argv.words[0]);
  }
}

TEST_F(OPTIONS, TheDefaultsAreSetOnDemand)
{
  option_obj empty, set(true);
  EXPECT_EQ(empty.export_option_list(export_command_line), "");
  EXPECT_EQ(set.export_option_list(export_command_line),
            "--abi=eabi --byte_order=little --object_format=coff --mem_model:data=far_aggregates "
            "--size_speed_goal=medium_risk_performance");
  EXPECT_FALSE(set.parsed_option(opt_abi));
  EXPECT_STREQ(set.current_file, "<internal>");
}

TEST_F(OPTIONS, EachSettingIsCountedAndNoted)
{
  option_obj set;
  set.setopt(opt_gcc);
  set.setopt(opt_gcc);
  set.setopt(opt_library, "a");
  set.setopt(opt_library, "b");
  set.setopt(opt_stack_size, 5l);
  set.setopt(opt_stack_size, "10h");
  set.setopt(opt_abi, "coffabi");
  set.setopt_internal(opt_vla);
  EXPECT_EQ(set.state[opt_gcc], 2);
  EXPECT_EQ(set.change_count[opt_stack_size], 2);
  EXPECT_EQ(set.getargcount(opt_library), 2);
  EXPECT_EQ(set.getargcount(opt_stack_size), 1);
  EXPECT_EQ(set.getnumarg(opt_stack_size, 0), 16);
  EXPECT_EQ(set.state[opt_vla], 1);
  EXPECT_EQ(output_of([&] { set.dump_history(); }),
            "   1  --gcc\n   2  --gcc\n   3  --library=a\n   4  --library=b\n"
            "   5  --stack_size=5\n   6  --stack_size=16\n   7  --abi=coffabi\n");
  set.clear_history(opt_library);
  EXPECT_EQ(output_of([&] { set.dump_history(); }),
            "   1  --gcc\n   2  --gcc\n   3  --stack_size=5\n   4  --stack_size=16\n"
            "   5  --abi=coffabi\n");
  argv_list argv;
  set.add_opts_for_tool(argv, "rvlink");
  EXPECT_EQ(argv.text(), "--stack_size=16");
}

TEST_F(OPTIONS, ABadSettingChangesNothing)
{
  option_obj set;
  EXPECT_ERRORS(set.setopt(opt_abi, "x"),
                "error: bad argument to option --abi: should be one of {eabi,coffabi}\n");
  EXPECT_ERRORS(set.setopt(opt_stack_size, "x"), "error: argument to option --stack_size (x) is "
                                                 "out of range (must be a "
                                                 "non-negative_number)\n");
  for (option_id id : {option_id(305), option_id(-1), option_id(100000)}) {
    set.setopt(id);
    set.setopt(id, "x");
    set.setopt(id, 1l);
    set.setopt_internal(id);
    set.clearopt(id);
    set.do_conflicts(id);
    set.add_to_history(id);
    EXPECT_EQ(set.getargcount(id) + set.format_of_option(id) + set.parsed_option(id), 0);
    EXPECT_EQ(option_obj::internal_option_string(id), nullptr);
    EXPECT_TRUE(option_obj::class_list_for_option(id).empty());
    EXPECT_STREQ(set.export_option(id, 0), " ");
  }
  EXPECT_EQ(output_of([&] { set.dump(0), set.dump_history(); }), "options of <internal>\n");
}

TEST_F(OPTIONS, FaultsOfTheToolEndIt)
{
  option_obj set;
  an_argument_t argument;
  EXPECT_EXIT(set.setarg(opt_gcc, 1l), testing::ExitedWithCode(1),
              "unhandled clause in setarg\\(\\) \\[");
  EXPECT_EXIT(set.setopt(opt_gcc, "x"), testing::ExitedWithCode(1), "unhandled clause in setarg");
  EXPECT_EXIT(set.parse_oneof(opt_gcc, "x"), testing::ExitedWithCode(1),
              "list handler for non-list option");
  EXPECT_DEATH(set.setopt(opt_library, nullptr), "pointer \"argument\" should not be NULL");
  EXPECT_DEATH(set.process_option(nullptr, nullptr), "pointer \"text\" should not be NULL");
  EXPECT_DEATH(set.get_argument(opt_gcc, nullptr), "internal fatal error #6000");
  EXPECT_DEATH(set.option_name(option_id(305)), "opt != __null");
  EXPECT_DEATH((void)(an_argument_t::of_number(1) == an_argument_t::of_string("1")),
               "type == rhs.type");
  EXPECT_DEATH((void)(an_argument_t() > an_argument_t::of_string("1")), "type == rhs.type");
  EXPECT_FALSE(set.get_argument(opt_gcc, &argument));
  EXPECT_EQ(argument.type, arg_none);
}

TEST_F(OPTIONS, ArgumentsCompareByTheirType)
{
  using A = an_argument_t;
  EXPECT_TRUE(A::of_number(5) > A::of_number(-5));
  EXPECT_FALSE(A::of_unsigned(5) > A::of_unsigned(~0ul));
  EXPECT_TRUE(A::of_string("b") > A::of_string("abc"));
  EXPECT_TRUE(A::of_string("b") == A::of_string(std::string("b").c_str()));
  EXPECT_FALSE(A::of_unsigned(5) == A::of_unsigned(6));
}

//-------------------------------------------------------------------------------------------------
// Conflicts.

TEST_F(OPTIONS, AConflictIsReportedByItsKindAndClearsTheEarlierOption)
{
  DIAGNOSTIC::display_code_m = true;
  DIAGNOSTIC::remarks_m = true;
  struct {
    option_id earlier, later;
    char const *message;
  } const cases[] = {
      {opt_quiet, opt_verbose,
       "remark #24004-D: option --verbose clears preceding option --quiet\n"},
      {opt_vla, opt_no_vla, "warning #24003-D: option --no_vla overrides preceding option --vla\n"},
      {opt_c89, opt_c99, "error #24002-D: option --c99 conflicts with previous option --c89\n"}};
  for (auto const &one : cases) {
    option_obj set;
    set.setopt(one.earlier);
    DIAGNOSTIC::fp_m = stderr;
    EXPECT_ERRORS(set.setopt(one.later), one.message);
    EXPECT_EQ(set.state[one.earlier], 0);
    EXPECT_EQ(set.state[one.later], 1);
    EXPECT_EQ(set.change_count[one.earlier], 2);
  }
}

// Each entry of the matrix by itself: as many messages as entries, and the later option stands.
TEST_F(OPTIONS, AllConflictsTakeEffect)
{
  int by_kind[4] = {};
  DIAGNOSTIC::remarks_m = true;
  DIAGNOSTIC::fp_m = stderr;
  DIAGNOSTIC::max_errors_m = 1000;
  for (int later = 0; later < option_count; later++) {
    for (int earlier = 0; earlier < option_count; earlier++) {
      int const kind = conflicts[later][earlier];
      if (!kind) continue;
      option_obj set;
      set.setopt_internal(option_id(earlier));
      std::string const messages = errors_of([&] { set.setopt(option_id(later)); });
      bool const stays = option_definitions[earlier].persistent;
      EXPECT_EQ(std::count(messages.begin(), messages.end(), '\n') >= 1 + stays, true) << messages;
      EXPECT_EQ(set.state[earlier], stays);
      EXPECT_EQ(set.state[later], 1);
      by_kind[kind]++;
      set.merging = true;
      EXPECT_ERRORS(set.setopt(option_id(earlier)), "");
    }
  }
  EXPECT_EQ(by_kind[1], 16);
  EXPECT_EQ(by_kind[2], 30);
  EXPECT_EQ(by_kind[3], 45);
}

TEST_F(OPTIONS, AMessageNamesOptionsAsTheyWereGiven)
{
  option_obj set;
  set.process_option("g", nullptr);
  EXPECT_ERRORS(set.process_option("-symdebug:coff", nullptr),
                "warning: option --symdebug:coff overrides preceding option -g\n");
  EXPECT_ERRORS(set.process_option("A-ansi", nullptr), "");
  EXPECT_ERRORS(set.process_option("a", nullptr),
                "error: option -a conflicts with previous option -A\n");
}

TEST_F(OPTIONS, APersistentOptionStays)
{
  option_obj set;
  set.setopt(opt_run_linker);
  set.clearopt(opt_run_linker);
  set.clearopt(class_linker);
  EXPECT_EQ(set.state[opt_run_linker], 1);
  EXPECT_EQ(set.change_count[opt_run_linker], 1);
  EXPECT_ERRORS(set.setopt(opt_to_assembly),
                "error: option --to_assembly conflicts with previous option --run_linker\n"
                "warning: Attempt to clear PERSISTENT option --run_linker ignored\n");
  EXPECT_EQ(set.state[opt_run_linker], 1);
}

//-------------------------------------------------------------------------------------------------
// Classes and queries.

TEST_F(OPTIONS, AClassIsSetAndClearedAsAWhole)
{
  option_obj set;
  set.merging = true;
  set.setopt(class_Quiet_Level);
  EXPECT_EQ(set.testclass(class_Quiet_Level), 3);
  EXPECT_EQ(set.testclass(class_basic), 1); // --quiet is a member of both
  set.clearclassmembers(class_basic);
  EXPECT_EQ(set.testclass(class_Quiet_Level), 2);
  set.clearopt(class_Quiet_Level);
  EXPECT_EQ(set.testclass(class_Quiet_Level), 0);
  EXPECT_EQ(option_obj::class_list_for_option(opt_quiet),
            (std::vector<class_id>{class_basic, class_Quiet_Level}));
  EXPECT_FALSE(option_obj::isclass(opt_quiet, class_id(30)));
}

TEST_F(OPTIONS, ArgumentsAreKeptApartFromTheCallersText)
{
  option_obj set;
  std::string text = "one";
  set.setopt(opt_library, text.c_str());
  set.setopt(opt_map_file, text.c_str());
  text = "two";
  set.setopt(opt_library, text.c_str());
  set.setopt(opt_map_file, set.getstrarg(opt_map_file, 0)); // from itself
  an_argument_t argument;
  EXPECT_TRUE(set.get_argument(opt_library, &argument));
  EXPECT_STREQ(argument.value.string, "two");
  EXPECT_EQ(argument.length, 3u);
  EXPECT_STREQ(set.getstrarg(opt_library, 0), "one");
  EXPECT_STREQ(set.getstrarg(opt_map_file, 0), "one");
  EXPECT_EQ(set.getstrarg(opt_library, 2), nullptr);
  EXPECT_EQ(set.getnumarg(opt_library, 0), 0);
  char const *const both[] = {"two", "three", "one", nullptr}, *const one[] = {"one", nullptr};
  EXPECT_TRUE(set.args_match_list(opt_library, both));
  EXPECT_FALSE(set.args_match_list(opt_library, one));
  EXPECT_FALSE(set.args_match_list(opt_xref, one));
  set.setopt(opt_abi, 1l);
  char const *const abis[] = {"coffabi", nullptr};
  EXPECT_TRUE(set.args_match_list(opt_abi, abis));
}

TEST_F(OPTIONS, EachChangeIsPrintedOnDemand)
{
  option_obj set;
  set.debug_level(1);
  EXPECT_EQ(output_of([&] {
              set.setopt(opt_gcc);
              set.setopt(opt_gcc);
              set.clearopt(opt_gcc);
              set.process_option("-debug", nullptr);
            }),
            "ansi option debug: Set    option id opt_gcc to state 1\n"
            "ansi option debug: Set    option id opt_gcc to state 2\n"
            "ansi option debug: Clear  option id opt_gcc to state 0\n"
            "ansi option debug: Parsed option id opt_symdebug_dwarf/2\n");
}

//-------------------------------------------------------------------------------------------------
// Tools.

TEST_F(OPTIONS, ToolsGetTheOptionsInForceInTheOrderOfTheirArrival)
{
  option_obj set;
  for (char const *text : {"-byte_order=big", "DA=1", "-rtti", "-vla", "-no_vla", "-opt_level=1",
                           "-goal=low_risk_size", "DB", "-opt_level=3", "-cpu=heron"}) {
    errors_of([&] { EXPECT_EQ(set.process_option(text, nullptr), 1); });
  }
  std::map<std::string, std::string> words;
  for (char const *tool : {"rvparse", "rvopt", "rvcg", "rvasm", "rvlink"}) {
    argv_list argv;
    set.add_opts_for_tool(argv, tool);
    words[tool] = argv.text();
  }
  EXPECT_EQ(words["rvparse"], "--big_endian --define_macro=A=1 --rtti --no_vla "
                              "--size_speed_goal=low_risk_size --define_macro=B --version=heron");
  EXPECT_EQ(words["rvopt"],
            "--size_speed_goal=low_risk_size --opt_level=3 --silicon_version=heron");
  EXPECT_EQ(words["rvasm"], "--byte_order=big --silicon_version=heron");
  EXPECT_EQ(words["rvlink"], "--byte_order=big");
  argv_list argv;
  set.setopt(opt_abi); // without an argument: nothing to tell a tool
  set.setopt(opt_asm_listing);
  set.add_opts_for_tool(argv, "rvasm");
  EXPECT_EQ(argv.text(), "--byte_order=big --silicon_version=heron --asm_listing=plain");
  argv.words.clear();
  EXPECT_ERRORS(set.add_opts_for_tool(argv, "cc"),
                "error: Cannot find tool type with command \"cc\". Is the command defined in "
                "the tooldef?\n");
  EXPECT_EQ(argv.size(), 0);
  size_t functions = 0;
  for (auto const &tool : option_obj::passto_fn_table)
    functions += tool.second.size();
  EXPECT_EQ(functions, 237u);
}

} // namespace
