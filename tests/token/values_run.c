// options: --c99
// proves: digraphs, alternative spellings of numbers, strings and characters have the values that C gives them
%:define JOIN(a, b) a %:%: b
%:define TEXT(x) %:x
int printf(const char *, ...);
static int list<:3:> = <%1, JOIN(2, 3), 0x1F%>;
static const double floats[] = {0x1p4, 0x.8p-1, 0X1.8P+1, 1e3, .5e-1, 5.e1, 0x1.fffffep127f, 1.0L, 3.14f, 00009.5};
static const long long ints[] = {0b1011, 0777, 0xFFFFFFFF, 4294967295, 2147483648, 0x7fffffffffffffff, 1uLL << 63, 10l, 10Lu, 0x8000000000000000, 1ll, 017LLU};
static const char chars[] = {'\a', '\b', '\f', '\n', '\r', '\t', '\v', '\'', '\"', '\?', '\\', '\0', '\177', '\x7f', '\e', '"'};
static const char text[] = "a\x41" "B\102" "\1012\7" "tab\there" "\u00e9\U000020ac";
static const int multi[] = {'ab', 'abc', 'abcd', '\xff', '\377', L'x', L'\x1234'};
static const unsigned wide[] = {sizeof L"abc", sizeof "abc" "de", sizeof L"ab" "c", sizeof ""};
static const int \u00fcber = 4, na\u00efve = 5;
int main(void)
<%
  unsigned i, sum = 0;
  for (i = 0; i < sizeof text; i++) sum = sum * 31 + (unsigned char)text<:i:>;
  printf("%d %d %d %s %u %u\n", list[0], list[1], list[2], TEXT(a %: b <: "c"), (unsigned)sizeof text, sum);
  for (i = 0; i < 9; i++) printf("%g ", floats[i]);
  printf("%g\n", floats[9]);
  for (i = 0; i < 12; i++) printf("%llx ", ints[i]);
  for (i = 0; i < sizeof chars; i++) printf("%d.", chars[i]);
  printf("\n%d %d %d %d %d %d %d\n", multi[0], multi[1], multi[2], multi[3], multi[4], multi[5], multi[6]);
  printf("%u %u %u %u %d\n", wide[0], wide[1], wide[2], wide[3], \u00fcber + na\u00efve);
  return 0;
%>
