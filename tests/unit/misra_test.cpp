// misra_test.cpp - the tables of the MISRA-C:2004 checker against the catalogue, the look-up of rules and names.
#include <gtest/gtest.h>
#include <cstring>
#include <set>
#include <string>
#include "check/misra.h"
#include "driver/flags.h"
#include "errors/error.h"

namespace {

struct a_rule_row {
  int section;
  int subsection;
  char kind;
  an_error_code code;
  an_error_code code_with_name;
};

constexpr char R = 'R';
constexpr char A = 'A';
const a_rule_row rows[] = {
#define RULE(section, subsection, kind, code, code_with_name)                                      \
  {section, subsection, kind, code, code_with_name},
#include "check/misra_rules.def"
};

std::string start_of_text(const a_rule_row &row)
{
  return "(MISRA-C:2004 " + std::to_string(row.section) + "." + std::to_string(row.subsection) +
         "/" + row.kind + ") ";
}

bool begins_with(const char *text, const std::string &start)
{
  return strncmp(text, start.c_str(), start.size()) == 0;
}

TEST(misra, EachRuleSaysItsNumberAndClass)
{
  for (const a_rule_row &row : rows) {
    EXPECT_TRUE(begins_with(error_text(row.code), start_of_text(row))) << start_of_text(row);
    EXPECT_TRUE(begins_with(error_text(row.code_with_name), start_of_text(row)));
  }
}

TEST(misra, EachMessageBelongsToARule)
{
  std::set<int> codes;
  for (const a_rule_row &row : rows) {
    codes.insert(row.code);
    codes.insert(row.code_with_name);
  }
  for (int code = 0; code < num_error_codes; ++code) {
    bool is_rule = begins_with(error_texts[code], "(MISRA-C:2004 ");
    EXPECT_EQ(is_rule, codes.count(code) == 1) << error_texts[code];
  }
}

TEST(misra, ARuleIsFoundByItsNumber)
{
  an_error_severity severity = es_default;
  a_misra_rule_kind kind = misra_required;
  misra_required_severity = es_error;
  misra_advisory_severity = es_remark;
  EXPECT_EQ(misra_c_2004_offset_to_error_code(19, 7, &severity, &kind, false), 1428);
  EXPECT_EQ(severity, es_remark);
  EXPECT_EQ(kind, misra_advisory);
  EXPECT_EQ(misra_c_2004_offset_to_error_code(8, 1, &severity, &kind, true), 1384);
  EXPECT_EQ(misra_c_2004_offset_to_error_code(8, 1, &severity, &kind, false), 1383);
  EXPECT_EQ(severity, es_error);
  EXPECT_EQ(misra_c_2004_offset_to_error_code(8, 3, &severity, &kind, false), ec_no_error);
  EXPECT_EQ(misra_c_2004_offset_to_error_code(0, 19, &severity, &kind, false), ec_no_error);
  EXPECT_EQ(misra_c_2004_offset_to_error_code(21, 1, &severity, &kind, false), ec_no_error);
}

TEST(misra, NamesAreFoundByTheirWholeSpelling)
{
  EXPECT_EQ(ansi_c_identifier_kind("malloc", 6), unsigned(ansi_c_none))
      << "before the table is made";
  misra_one_time_init();
  EXPECT_EQ(ansi_c_identifier_kind("malloc", 6), unsigned(ansi_c_function));
  EXPECT_EQ(ansi_c_identifier_kind("malloc_", 6), unsigned(ansi_c_function));
  EXPECT_EQ(ansi_c_identifier_kind("malloc_", 7), unsigned(ansi_c_none));
  EXPECT_EQ(ansi_c_identifier_kind("mallo", 5), unsigned(ansi_c_none));
  EXPECT_EQ(ansi_c_identifier_kind("LDBL_MAX_10_EXP", 15), unsigned(ansi_c_object));
  EXPECT_EQ(ansi_c_identifier_kind("a_name_longer_than_all_others", 29), unsigned(ansi_c_none));
  const an_ansi_c_identifier *row = lookup_ansi_c_identifier("clock_t", 7);
  ASSERT_NE(row, nullptr);
  EXPECT_STREQ(row->header, "time.h");
  EXPECT_EQ(row->section, 20);
  EXPECT_EQ(row->subsection, 12);
  misra_wrapup();
  EXPECT_EQ(lookup_ansi_c_identifier("clock_t", 7), nullptr);
}

} // namespace
