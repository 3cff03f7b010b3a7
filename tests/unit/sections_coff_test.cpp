// Object files are made here, byte by byte, in both orders of bytes and all versions of the format.
#include "lex/sections.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

struct a_test_section {
  std::string name;
  std::string data;
};

class ObjectFile {
public:
  ObjectFile(unsigned version, bool exchanged) : version(version), exchanged(exchanged)
  {
  }

  std::vector<a_test_section> sections;
  unsigned target = 153;
  unsigned optional_header = 28;
  unsigned symbols = 3;
  unsigned claimed_size = 0; // of the last section, if not 0

  std::string bytes()
  {
    text.clear();
    std::string names(4, '\0'), data; // a string table begins with its size
    unsigned header = version >= 193 ? 22 : 20, section_header = version == 194 ? 48 : 40;
    unsigned data_at = header + optional_header + section_header * (unsigned)sections.size();
    unsigned symbols_at = data_at;
    for (const a_test_section &section : sections)
      symbols_at += (unsigned)section.data.size();
    put_file_header(symbols_at);
    text.resize(header + optional_header, '\x55');
    for (const a_test_section &section : sections) {
      size_t begin = text.size();
      put_name(section.name, &names);
      put(0, 4), put(0, 4);
      bool is_last = &section == &sections.back();
      put(is_last && claimed_size != 0 ? claimed_size : (unsigned)section.data.size(), 4);
      put(data_at + (unsigned)data.size(), 4);
      text.resize(begin + section_header, '\0');
      data += section.data;
    }
    return text + data + std::string(18 * symbols, '\x7f') + names;
  }

private:
  unsigned version;
  bool exchanged;
  std::string text;

  void put(uint32_t value, int size)
  {
    char native[4];
    uint16_t half = (uint16_t)value;
    memcpy(native, size == 2 ? (const void *)&half : (const void *)&value, (size_t)size);
    for (int i = 0; i < size; ++i)
      text += native[exchanged ? size - 1 - i : i];
  }

  void put_file_header(unsigned symbols_at)
  {
    put(version, 2), put((uint32_t)sections.size(), 2), put(0, 4), put(symbols_at, 4);
    put(symbols, 4), put(optional_header, 2), put(0, 2);
    if (version >= 193) put(target, 2);
  }

  void put_name(const std::string &name, std::string *names)
  {
    if (name.size() <= 8) {
      text += name + std::string(8 - name.size(), '\0');
    } else {
      put(0, 4), put((uint32_t)names->size(), 4);
      *names += name + std::string(1, '\0');
    }
  }
};

class SectionsCoff : public testing::Test {
protected:
  std::string path;

  void SetUp() override
  {
    char name[] = "/tmp/coff_XXXXXX";
    int handle = mkstemp(name);
    ASSERT_GE(handle, 0);
    close(handle);
    path = name;
  }
  void TearDown() override
  {
    coff_close();
    remove(path.c_str());
  }
  void write(const std::string &bytes)
  {
    FILE *stream = fopen(path.c_str(), "wb");
    fwrite(bytes.data(), 1, bytes.size(), stream);
    fclose(stream);
  }
  std::string section(const char *name)
  {
    unsigned char *block = coff_sect_data(name);
    if (block == nullptr) return "error " + std::to_string(load_err);
    std::string data((char *)block, sect_size);
    free(block);
    return data;
  }
};

TEST_F(SectionsCoff, every_version_in_both_orders)
{
  for (unsigned version : {153u, 192u, 193u, 194u}) {
    for (bool exchanged : {false, true}) {
      ObjectFile file(version, exchanged);
      file.sections = {{".text", "code"},
                       {".eightch", "8"},
                       {".template", std::string("\x44_Z1f\0", 6)},
                       {".template", "second"}};
      write(file.bytes());
      ASSERT_TRUE(coff_open(path.c_str())) << version << exchanged << load_err;
      EXPECT_EQ(section(".template"), std::string("\x44_Z1f\0", 6)) << version << exchanged;
      EXPECT_EQ(section(".eightch"), "8");
      EXPECT_EQ(section(".text"), "code");
    }
  }
}

TEST_F(SectionsCoff, no_name_matches_a_part_of_another)
{
  ObjectFile file(194, false);
  file.sections = {{".text", "a"}, {".eightch", "b"}, {".long_name_of_it", "c"}, {".empty", ""}};
  write(file.bytes());
  ASSERT_TRUE(coff_open(path.c_str()));
  for (const char *name : {".tex", ".text2", ".eightchr", ".long_name", ".long_name_of_its", ""})
    EXPECT_EQ(section(name), "error 4") << name;
  EXPECT_EQ(section(".long_name_of_it"), "c");
  EXPECT_EQ(section(".empty"), "");
}

TEST_F(SectionsCoff, files_that_are_none)
{
  EXPECT_FALSE(coff_open("/nowhere/at/all.obj"));
  EXPECT_EQ(load_err, load_read_error);
  EXPECT_EQ(section(".text"), "error 4"); // nothing is open
  write("");
  EXPECT_FALSE(coff_open(path.c_str()));
  EXPECT_EQ(load_err, load_read_error);
  write(std::string(64, 'x'));
  EXPECT_FALSE(coff_open(path.c_str()));
  EXPECT_EQ(load_err, load_bad_format);
  ObjectFile file(194, false);
  file.target = 99;
  write(file.bytes());
  EXPECT_FALSE(coff_open(path.c_str()));
  EXPECT_EQ(load_err, load_bad_format);
}

TEST_F(SectionsCoff, what_is_cut_off_is_a_read_error)
{
  ObjectFile file(194, true);
  file.sections = {{".template", "abc"}};
  file.claimed_size = 0xfffffff0;
  std::string bytes = file.bytes();
  write(bytes);
  ASSERT_TRUE(coff_open(path.c_str()));
  EXPECT_EQ(section(".template"), "error 1");
  for (size_t length = 0; length < bytes.size(); ++length) { // no length crashes
    write(bytes.substr(0, length));
    bool is_open = coff_open(path.c_str());
    EXPECT_TRUE(!is_open || section(".template").substr(0, 5) == "error") << length;
  }
}

} // namespace
