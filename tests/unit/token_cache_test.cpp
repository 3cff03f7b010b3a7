// token_cache_test.cpp - storing, replaying and looking ahead: the parser never sees the difference.
#include <cstring>
#include <gtest/gtest.h>
#include "lex/cached_token.h"
#include "lex/lexical.h"
#include "lex/token_cache.h"
#include "mem/mem_manage.h"
#include "token_dump.h"

namespace {

// What the steps print, on one line.
std::string run(const std::string &text, void (*steps)(FILE *),
                const std::vector<std::string> &options = {}, const char *suffix = ".c")
{
  std::string out = run_on_tokens(text + "\n", steps, options, suffix).tokens;
  for (char &c : out) {
    if (c == '\n') c = ' ';
  }
  return out;
}

void print(FILE *out)
{
  fprintf(out, "%s\n", text_of_curr_token().c_str());
}

void print_rest(FILE *out)
{
  for (; curr_token != tok_end_of_source; get_token())
    print(out);
}

// Stores tokens up to a ";".
void store_statement(a_token_cache *cache, bool reusable)
{
  unsigned char stops[tok_last] = {};
  stops[tok_semicolon] = 1;
  clear_token_cache(cache, reusable);
  cache_token_stream(cache, stops);
}

TEST(TokenCache, OfNoTokensLeavesTheStreamAlone)
{
  EXPECT_EQ(run("a b",
                [](FILE *out) {
                  a_token_cache cache;
                  clear_token_cache(&cache, false);
                  rescan_cached_tokens(&cache);
                  print_rest(out);
                }),
            "identifier a identifier b ");
}

TEST(TokenCache, ComesBackInFrontOfTheCurrentToken)
{
  EXPECT_EQ(run("#define two 2\na (b; c) 1 + \"s\" \"t\" two; d",
                [](FILE *out) {
                  a_token_cache cache;
                  store_statement(&cache, false); // the ";" in parentheses is nested
                  print(out);
                  rescan_cached_tokens(&cache);
                  print_rest(out);
                }),
            "; identifier a ( identifier b ; identifier c ) int constant int 1 + "
            "string literal 0 737400 int constant int 2 ; identifier d ");
}

TEST(TokenCache, IsReplayedAsOftenAsWanted)
{
  EXPECT_EQ(run("x y; z",
                [](FILE *out) {
                  a_token_cache cache;
                  a_cached_token *handles[2];
                  store_statement(&cache, true);
                  terminate_token_cache(&cache);
                  for (a_cached_token *&handle : handles) {
                    rescan_reusable_cache(&cache);
                    handle = curr_cached_token_handle;
                    print_rest(out);
                    get_token();
                    print(out);
                  }
                  fputs(handles[0] == handles[1] && handles[0] != nullptr ? "same\n" : "other\n",
                        out);
                  print_rest(out);
                }),
            "identifier x identifier y ; identifier x identifier y ; same ; identifier z ");
}

TEST(TokenCache, StaysValidWhileItIsReplayed)
{
  EXPECT_EQ(run("x y; z",
                [](FILE *out) {
                  push_lexical_state_stack();
                  begin_caching_fetched_tokens(true);
                  get_token();
                  end_caching_fetched_tokens();
                  a_token_cache *cache = &curr_lexical_state_stack_entry->cache;
                  terminate_token_cache(cache);
                  rescan_reusable_cache_full(cache, true);
                  pop_lexical_state_stack(); // the owner of the tokens goes
                  print_rest(out);
                }),
            "identifier x identifier y ; ; identifier z ");
}

TEST(TokenCache, SplitsARightShiftIntoTwoTokens)
{
  EXPECT_EQ(run("a >> b;",
                [](FILE *out) {
                  a_token_cache cache;
                  clear_token_cache(&cache, false);
                  get_token();
                  split_right_shift_token();
                  unsigned first = curr_token_sequence_number;
                  cache_curr_token(&cache);
                  get_token();
                  fprintf(out, "%u\n", curr_token_sequence_number - first);
                  rescan_cached_tokens(&cache);
                  print_rest(out);
                }),
            "1 > > identifier b ; ");
}

TEST(TokenCache, SplitsAndCopiesByNumber)
{
  EXPECT_EQ(run("a b c d;",
                [](FILE *out) {
                  a_token_cache cache, rest, copy;
                  unsigned first = curr_token_sequence_number;
                  store_statement(&cache, false);
                  clear_token_cache(&copy, false);
                  copy_tokens_from_cache(&cache, first + 2, first + 6, false, &copy);
                  split_token_cache(&cache, &rest, first + 6, true, false, false);
                  remove_cache_terminator(&cache);
                  rescan_cached_tokens(&rest);
                  rescan_cached_tokens(&copy);
                  rescan_cached_tokens(&cache);
                  print_rest(out);
                }),
            "identifier a identifier b identifier b identifier c identifier c identifier d ; ");
}

TEST(Lookahead, ConsumesNothing)
{
  EXPECT_EQ(run("#define m b c\na m d",
                [](FILE *out) {
                  a_token_kind second;
                  unsigned number;
                  a_symbol_header *header;
                  next_token_full(&number, &header);
                  fprintf(out, "%s %u\n", header->identifier, number - curr_token_sequence_number);
                  next_two_tokens(tok_identifier, &second);
                  fprintf(out, "%s\n", token_names[second]);
                  next_two_tokens(tok_lparen, &second);
                  fprintf(out, "%s\n", token_names[second]);
                  print_rest(out);
                }),
            "b 2 identifier error identifier a identifier b identifier c identifier d ");
}

TEST(Lookahead, PutsTheCurrentTokenBack)
{
  EXPECT_EQ(run("a b",
                [](FILE *out) {
                  unget_token();
                  print_rest(out);
                }),
            "identifier a identifier a identifier b ");
}

TEST(InsertedText, BecomesTokensInFrontOfTheCurrentOne)
{
  EXPECT_EQ(
      run("#define two 2\na b",
          [](FILE *out) {
            insert_string_into_token_stream("x = two + \"s\" \"t\";", 18, true, pos_curr_token);
            print_rest(out);
          }),
      "identifier x = int constant int 2 + string literal 0 737400 ; identifier a identifier b ");
}

TEST(Recovery, StopsAtWhatTheContextStopsAt)
{
  EXPECT_EQ(run("a (b; ) c; d",
                [](FILE *out) {
                  push_stop_token_stack();
                  add_stop_token(tok_semicolon);
                  flush_tokens();
                  pop_stop_token_stack();
                  print_rest(out);
                }),
            "; identifier d ");
}

TEST(StoredTokens, AreWrittenAsText)
{
  EXPECT_EQ(run("if (x+1 <  0x10u) s = \"a\\n\" ; d",
                [](FILE *out) {
                  a_token_cache cache;
                  store_statement(&cache, false);
                  add_token_cache_to_string(&cache);
                  fwrite(temp_text_buffer->buffer, 1, temp_text_buffer->size, out);
                }),
            "if (x+1 < 16U) s = \"a\\n\"");
}

} // namespace
