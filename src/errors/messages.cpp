// messages.cpp - the catalogue as tables: texts by code, codes by tag.
// Owns:    error_texts and the sorted table of tags; both are made from messages.def at compile
//          time.
#include <cstring>
#include "errors/error.h"

const char *const error_texts[num_error_codes] = {
#define MESSAGE(code, tag, text) text,
#define PHRASE(code, name, text) text,
#define NO_MESSAGE(code) "",
#include "errors/messages.def"
};

// The rows stand in the order of their codes: a row's place is its code.
static constexpr int codes_of_rows[] = {
#define MESSAGE(code, tag, text) code,
#define PHRASE(code, name, text) code,
#define NO_MESSAGE(code) code,
#include "errors/messages.def"
};
static constexpr bool rows_are_in_order()
{
  for (int i = 0; i < num_error_codes; i++) {
    if (codes_of_rows[i] != i) return false;
  }
  return sizeof codes_of_rows / sizeof codes_of_rows[0] == num_error_codes;
}
static_assert(rows_are_in_order(), "a row of messages.def is missing or out of place");

struct a_tag {
  const char *name;
  unsigned short code;
};

static constexpr a_tag tags_by_code[] = {
#define MESSAGE(code, tag, text) {#tag, code},
#define PHRASE(code, name, text)
#define NO_MESSAGE(code)
#include "errors/messages.def"
};
static constexpr int num_tags = sizeof tags_by_code / sizeof tags_by_code[0];

struct a_tag_table {
  a_tag tags[num_tags];
};

static constexpr int compare_tags(const char *a, const char *b)
{
  while (*a != '\0' && *a == *b)
    a++, b++;
  return int((unsigned char)*a) - int((unsigned char)*b);
}

// Heap sort: the compiler runs it.
static consteval a_tag_table sorted_tags()
{
  a_tag_table table = {};
  for (int i = 0; i < num_tags; i++)
    table.tags[i] = tags_by_code[i];
  auto sift_down = [&table](int root, int length) {
    for (int child = 2 * root + 1; child < length; child = 2 * root + 1) {
      if (child + 1 < length &&
          compare_tags(table.tags[child].name, table.tags[child + 1].name) < 0) {
        child++;
      }
      if (compare_tags(table.tags[root].name, table.tags[child].name) >= 0) return;
      a_tag moved = table.tags[root];
      table.tags[root] = table.tags[child];
      table.tags[child] = moved;
      root = child;
    }
  };
  for (int root = num_tags / 2 - 1; root >= 0; root--)
    sift_down(root, num_tags);
  for (int end = num_tags - 1; end > 0; end--) {
    a_tag last = table.tags[0];
    table.tags[0] = table.tags[end];
    table.tags[end] = last;
    sift_down(0, end);
  }
  return table;
}

static constinit const a_tag_table tag_table = sorted_tags();

int error_code_for_tag(const char *tag)
{
  int low = 0;
  int high = num_tags;
  while (low < high) {
    int middle = (low + high) / 2;
    int order = strcmp(tag_table.tags[middle].name, tag);
    if (order == 0) return tag_table.tags[middle].code;
    if (order < 0) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return -1;
}
