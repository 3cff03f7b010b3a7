// symbol_test.cpp - headers, entering, chains in scope order, lookup, tables that grow.
#include <string>

#include "unit_fixture.h"

class symbols : public a_unit_test {
protected:
  void push_block()
  {
    push_scope(sck_block, -1, nullptr, nullptr);
  }
};

TEST_F(symbols, a_spelling_has_one_header)
{
  a_symbol_header *first = find_symbol_header("counter", 7);
  EXPECT_EQ(find_symbol_header("counter_two", 7), first);
  EXPECT_STREQ(first->identifier, "counter");
  // Long names that differ in one place only.
  std::string a(60, 'x'), b = a;
  b[37] = 'y';
  EXPECT_NE(find_symbol_header(a.c_str(), 60), find_symbol_header(b.c_str(), 60));
}

TEST_F(symbols, the_table_grows_and_keeps_every_name)
{
  std::string text;
  for (int i = 0; i < 100000; ++i) {
    text = "name_number_" + std::to_string(i) + "_of_many";
    find_symbol_header(text.c_str(), (uint32_t)text.size());
  }
  uint32_t count = symbol_table.header_count;
  for (int i = 0; i < 100000; i += 7919) {
    text = "name_number_" + std::to_string(i) + "_of_many";
    a_symbol_header *header = find_symbol_header(text.c_str(), (uint32_t)text.size());
    EXPECT_EQ(text, header->identifier);
  }
  EXPECT_EQ(symbol_table.header_count, count);
}

TEST_F(symbols, keywords_and_macros_hang_on_the_header_only)
{
  enter_keyword(5, "while_");
  a_symbol *macro = enter(sk_macro, "while_", 0);
  a_symbol_header *header = find_symbol_header("while_", 6);
  EXPECT_EQ(find_macro_symbol(header), macro);
  EXPECT_EQ(find_keyword_symbol(header)->variant.keyword.token, 5);
  EXPECT_EQ(header->active_symbols, nullptr);
  remove_symbol(macro);
  EXPECT_EQ(find_macro_symbol(header), nullptr);
}

TEST_F(symbols, the_innermost_declaration_is_found_and_leaves_with_its_scope)
{
  a_symbol *outer = enter(sk_variable, "n", 0);
  push_block();
  a_symbol *inner = enter(sk_variable, "n", depth_scope_stack);
  EXPECT_EQ(look_up("n"), inner);
  pop_scope();
  EXPECT_EQ(look_up("n"), outer);
}

TEST_F(symbols, a_symbol_entered_into_an_outer_scope_stays_behind_the_inner_ones)
{
  push_block();
  a_symbol *inner = enter(sk_variable, "f", depth_scope_stack);
  a_symbol *outer = enter(sk_routine, "f", 0);
  EXPECT_EQ(look_up("f"), inner);
  EXPECT_EQ(inner->next_same_name, outer);
  pop_scope();
  EXPECT_EQ(look_up("f"), outer);
}

TEST_F(symbols, tags_of_c_have_a_name_space_of_their_own)
{
  a_symbol *tag = enter(sk_class_or_struct_tag, "s", 0);
  a_symbol *variable = enter(sk_variable, "s", 0);
  EXPECT_EQ(look_up("s"), variable);
  EXPECT_EQ(look_up("s", lo_tag), tag);
}

TEST_F(symbols, in_cplusplus_a_variable_stands_before_the_tag_of_its_scope)
{
  use_dialect(2, false);
  enter(sk_variable, "s", 0);
  a_symbol *tag = enter(sk_enum_tag, "s", 0);
  EXPECT_EQ(look_up("s")->kind, sk_variable);
  EXPECT_EQ(look_up("s", lo_tag), tag);
}

TEST_F(symbols, a_conflicting_symbol_stays_off_the_chain)
{
  a_symbol *first = enter(sk_variable, "x", 0);
  a_symbol *second = enter(sk_routine, "x", 0);
  EXPECT_EQ(look_up("x"), first);
  EXPECT_FALSE(second->on_active_chain);
}

TEST_F(symbols, overloads_share_one_place_on_the_chain)
{
  use_dialect(2, false);
  a_symbol *before = enter(sk_variable, "g", 0);
  push_block();
  a_symbol *first = enter(sk_routine, "g", depth_scope_stack);
  a_symbol *second = alloc_symbol(sk_routine, first->header, null_source_position);
  a_symbol *set = add_symbol_to_overload_list(first, second, false, nullptr);
  ASSERT_EQ(set->kind, sk_overloaded_function);
  EXPECT_EQ(look_up("g"), set);
  EXPECT_EQ(overloads_of_symbol(set), first);
  EXPECT_EQ(first->next_same_name, second);
  EXPECT_EQ(set->next_same_name, before);
}

TEST_F(symbols, an_extern_symbol_is_found_by_its_own_lookup_only)
{
  a_symbol_locator locator = locator_for("ext");
  push_block();
  a_symbol *symbol = enter_extern_symbol(sk_extern_variable, &locator);
  pop_scope();
  EXPECT_EQ(find_external_symbol(locator.header), symbol);
  strict_ansi_mode = true;
  EXPECT_EQ(look_up("ext"), nullptr);
  strict_ansi_mode = false;
}

TEST_F(symbols, curr_scope_lookup_ignores_outer_scopes)
{
  enter(sk_variable, "v", 0);
  push_block();
  a_symbol_locator locator = locator_for("v");
  EXPECT_EQ(curr_scope_id_lookup(&locator, lo_none), nullptr);
  a_symbol *inner = enter(sk_variable, "v", depth_scope_stack);
  EXPECT_EQ(curr_scope_id_lookup(&locator, lo_none), inner);
}

TEST_F(symbols, general_tables_find_every_key_after_rebuilding)
{
  auto hash = [](const void *key) -> uint32_t { return *(const int *)key * 2654435761u; };
  auto equal = [](const void *value, const void *key) {
    return *(const int *)value == *(const int *)key;
  };
  a_hash_table *table = alloc_hash_table(no_memory_region, 1, hash, equal);
  static int keys[500];
  for (int i = 0; i < 500; ++i) {
    keys[i] = i * 3;
    *hash_find(table, &keys[i], true) = &keys[i];
  }
  EXPECT_EQ(table->entry_count, 500u);
  EXPECT_GT(table->bucket_count, 500u);
  for (int &key : keys)
    EXPECT_EQ(*hash_find(table, &key, false), &key);
  int missing = 1;
  EXPECT_EQ(hash_find(table, &missing, false), nullptr);
}

TEST_F(symbols, access_combines_along_a_path)
{
  EXPECT_EQ(compute_access(as_public, as_public), as_public);
  EXPECT_EQ(compute_access(as_protected, as_public), as_protected);
  EXPECT_EQ(compute_access(as_public, as_protected), as_protected);
  EXPECT_EQ(compute_access(as_protected, as_protected), as_protected);
  EXPECT_EQ(compute_access(as_public, as_private), as_private);
  EXPECT_EQ(compute_access(as_private, as_public), as_inaccessible);
}
