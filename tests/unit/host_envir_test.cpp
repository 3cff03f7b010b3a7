// Names of files, option files, module ids, characters.
#include "driver/host_envir.h"
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <vector>
#include "memory_fixture.h"

class HostEnvir : public testing::Test {
protected:
  void SetUp() override
  {
    open_regions();
    host_envir_early_init();
  }
};

static std::vector<std::string> option_words(const std::string &text)
{
  FILE *stream = tmpfile();
  fwrite(text.data(), 1, text.size(), stream);
  rewind(stream);
  std::vector<std::string> words;
  while (char *word = fnextopt(stream))
    words.push_back(word);
  fclose(stream);
  return words;
}

TEST_F(HostEnvir, OptionFileWords)
{
  typedef std::vector<std::string> words;
  EXPECT_EQ(option_words("  -a\n\t-b c"), (words{"-a", "-b", "c"}));
  EXPECT_EQ(option_words("\"a b\" c"), (words{"a b", "c"}));
  EXPECT_EQ(option_words("a\\\"b \"x\\\\y\\\"\" p\\q"), (words{"a\"b", "x\\y\"", "p\\q"}));
  EXPECT_EQ(option_words("-x#y x #y\nz"), (words{"-x#y", "x", "z"}));
  EXPECT_EQ(option_words("x#y\n-I#z"), (words{"x", "-I#z"}));
  EXPECT_EQ(option_words("a /* b \n * / ** c */ d ; e\nf"), (words{"a", "d", "f"}));
  EXPECT_EQ(option_words("-Dx=\"1 2\"y"), (words{"-Dx=1 2y"}));
  EXPECT_EQ(option_words(std::string(500, 'w')), (words{std::string(500, 'w')}));
  EXPECT_EQ(option_words(" \n; nothing"), (words{}));
}

TEST_F(HostEnvir, PartsOfNames)
{
  EXPECT_STREQ(suffix_of("a.b/c"), "");
  EXPECT_STREQ(suffix_of("a.b/c.d.e"), "e");
  EXPECT_STREQ(start_of_file_name("a/b/"), "");
  EXPECT_STREQ(f_directory_of("x.c", true), "");
  EXPECT_STREQ(f_directory_of("/x.c", true), "/");
  EXPECT_STREQ(f_directory_of("a/b/x.c", true), "a/b");
  EXPECT_EQ(f_directory_of("a/b/x.c", true), f_directory_of("a/b/y.c", false));
  EXPECT_STREQ(derived_name("a.b/c.d", "cil"), "c.cil");
  EXPECT_STREQ(derived_name("a.b/c", "cil"), "c.cil");
}

TEST_F(HostEnvir, BuildingNames)
{
  a_text_buffer *buffer = alloc_text_buffer(4);
  EXPECT_STREQ(combine_dir_and_file_name("", "x.h", buffer), "x.h");
  EXPECT_STREQ(combine_dir_and_file_name("a/", "x.h", buffer), "a/x.h");
  EXPECT_STREQ(combine_dir_and_file_name("a.b", "x", buffer), "a.b/x");
  replace_file_name_suffix("int.c", buffer);
  EXPECT_STREQ(buffer->buffer, "a.b/x.int.c");
  replace_file_name_suffix("o", buffer);
  EXPECT_STREQ(buffer->buffer, "a.b/x.int.o");
  char out[500];
  EXPECT_STREQ(fn_build(out, "d", "b", "e"), "d/b.e");
  EXPECT_STREQ(fn_addext("a.b/c", "o", false), "a.b/c.o");
  EXPECT_STREQ(fn_addext("c.x", "o", false), "c.x");
  EXPECT_STREQ(fn_addext("c.x", "o", true), "c.o");
  char *dir, *base, *ext;
  fn_split(("d/" + std::string(600, 'b') + ".e").c_str(), &dir, &base, &ext);
  EXPECT_STREQ(dir, "d/");
  EXPECT_EQ(strlen(base), 499u);
  EXPECT_STREQ(ext, ".e");
}

TEST_F(HostEnvir, NormalNames)
{
  EXPECT_STREQ(normalize_file_name("/a//b/./c/../d"), "/a/b/d");
  EXPECT_STREQ(normalize_file_name("/../.."), "/");
  EXPECT_EQ(normalize_file_name("x"), std::string(current_directory_name) + "/x");
  EXPECT_EQ(compare_dir_names("a/../b", "./b/", false), 0);
  EXPECT_NE(compare_dir_names("a/../b", "b", true), 0);
}

TEST_F(HostEnvir, ChecksumsAndModuleIds)
{
  EXPECT_EQ(crc_32("", 7), 7u);
  EXPECT_EQ(crc_32("123456789", 0), 0xCBF43926u);
  EXPECT_EQ(crc_32("789", crc_32("123456", 0)), 0xCBF43926u);
  primary_source_file_name = "no/such/a-b.c";
  EXPECT_STREQ(make_module_id("stamp"), "_5_a_b_c_stamp");
  EXPECT_STREQ(make_module_id("other"), "_5_a_b_c_stamp");
  host_envir_trans_unit_init();
  std::string id = make_module_id("a stamp that is long");
  EXPECT_EQ(id.size(), strlen("_5_a_b_c_") + 8);
  EXPECT_STREQ(generate_instantiation_output_file_name("a_very_long_name_of_something"),
               ("a_very_long_name" + id.substr(0, 0) +
                [] {
                  char text[16];
                  snprintf(text, sizeof text, "%08x", crc_32("a_very_long_name_of_something", 0));
                  return std::string(text);
                }())
                   .c_str());
}

TEST_F(HostEnvir, OutputNeverGoesOverTheSource)
{
  char name[] = "/tmp/host_envir_XXXXXX";
  close(mkstemp(name));
  std::ofstream(name) << "int kept;\n";
  primary_source_file_name = name;
  an_open_file_result result;
  EXPECT_EQ(open_output_file(name, false, false, &result), nullptr);
  EXPECT_EQ(result.bits, off_bad_name);
  std::string other_spelling = std::string("/tmp/../") + name;
  EXPECT_EQ(open_output_file(other_spelling.c_str(), false, false, &result), nullptr);
  EXPECT_FALSE(okay_as_output_file(name));
  std::string text;
  std::getline(std::ifstream(name), text);
  EXPECT_EQ(text, "int kept;");
  unlink(name);
  EXPECT_EQ(fopen_with_result("/tmp", "r", &result), nullptr);
  EXPECT_EQ(result.bits, off_directory);
  EXPECT_EQ(fopen_with_result("", "r", &result), nullptr);
  EXPECT_EQ(result.bits, off_bad_name);
  EXPECT_EQ(fopen_with_result("/no/such", "r", &result), nullptr);
  EXPECT_EQ(result.bits, off_not_found);
}

TEST_F(HostEnvir, Characters)
{
  char bytes[4];
  EXPECT_EQ(unicode_to_utf8(0x20AC, bytes), 3u);
  EXPECT_EQ(memcmp(bytes, "\xE2\x82\xAC", 3), 0);
  EXPECT_EQ(unicode_to_utf8(0x1F600, bytes), 4u);
  EXPECT_EQ(memcmp(bytes, "\xF0\x9F\x98\x80", 4), 0);
  unsigned short units[2];
  EXPECT_EQ(ucn_to_utf16(0x1F600, units), 2u);
  EXPECT_EQ(units[0], 0xD83D);
  EXPECT_EQ(units[1], 0xDE00);
  EXPECT_EQ(f_mbc_length("\xE2\x82\xAC"), 1u) << "no locale was asked for";
}
