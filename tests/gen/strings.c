// options: --gcc
// proves: escapes, trigraph protection, embedded nulls, cut and wide strings mean the same again
#include <stdio.h>
#include <string.h>
#include <wchar.h>
static char all[] = "\a\b\f\n\r\t\v\\\'\"\?\0\1\12\377z";
static const char *odd = "?\?=?\?/ \x7f\x80 9";
static char tight[3] = "abc", wide_room[8] = "ab";
static wchar_t wide[] = L"w\x20ac\xffff", *pointer = L"point";
static const char *const parts[] = { "one" "two", "x" + 1, &"hello"[2] };
static const char *longer =
  "0123456789012345678901234567890123456789012345678901234567890123456789012345678901234567890123456789"
  "0123456789012345678901234567890123456789012345678901234567890123456789\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n"
  "\1011\7a\377" "7 end";
int main(void)
{
  unsigned i;
  char local[16] = "local", zeros[300] = "z";
  wchar_t here[4] = L"ab";
  for (i = 0; i < sizeof all; i++) printf("%d ", all[i]);
  for (i = 0; i < strlen(odd); i++) printf("%02x", odd[i]);
  printf("\n%.3s %d %d %d\n", tight, wide_room[1], wide_room[7], (int)sizeof tight);
  for (i = 0; i < sizeof wide / sizeof *wide; i++) printf("%x ", (unsigned)wide[i]);
  printf("%d %c %x\n", (int)wcslen(pointer), (int)pointer[1], (unsigned)here[1]);
  printf("%s|%s|%s|%d\n", parts[0], parts[1], parts[2], (int)wcslen(L"in" L"line"));
  printf("%s %d\n%s %d %d\n", longer, (int)strlen(longer), local, zeros[0], zeros[299]);
  return 0;
}
