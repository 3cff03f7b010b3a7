// scramble.h - the scrambled form in which the tables keep their texts, for the compiler.
// At run time option_obj::rot13 gives the plain form.
#pragma once
#include <array>
#include <cstddef>

// The counterpart of a character; its own inverse.
constexpr char scrambled(char c)
{
  if (c == '%') return '-';
  if (c == '-') return '%';
  bool const lower = c >= 'a' && c <= 'z';
  char const upper = lower ? char(c - 'a' + 'A') : c;
  if (upper < 'A' || upper > 'Z') return c;
  return char(upper <= 'M' ? c + 13 : c - 13);
}

// Texts in scrambled form, each ended by a zero.
template <size_t Size>
struct a_text_pool {
  char text[Size];
};

// The pool of the texts that stand in `plain` one behind the other, each ended by a zero.
template <size_t Size>
consteval a_text_pool<Size> scrambled_pool(char const (&plain)[Size])
{
  a_text_pool<Size> pool{};
  for (size_t i = 0; i < Size; i++) pool.text[i] = scrambled(plain[i]);
  return pool;
}

// Where the first Count texts of a pool begin.
template <size_t Count, size_t Size>
consteval std::array<char const *, Count> texts_of(a_text_pool<Size> const &pool)
{
  std::array<char const *, Count> texts{};
  size_t at = 0;
  for (size_t i = 0; i < Count; i++) {
    texts[i] = pool.text + at;
    while (pool.text[at] != '\0') at++;
    at++;
  }
  return texts;
}
