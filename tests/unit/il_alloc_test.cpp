// il_alloc_test.cpp - prefixes, regions, parent links across regions, lists, orphans.
#include "il/il_field_table.h"
#include "unit_fixture.h"

class il_alloc : public a_unit_test {
protected:
  // Opens the scope of a function; its region is current.
  a_scope *open_function(a_routine **out_routine = nullptr)
  {
    a_routine *routine = alloc_routine();
    routine->type = make_routine_type(void_type());
    push_scope(sck_function, -1, nullptr, routine);
    routine->region_number = scope_stack[depth_scope_stack].region_number;
    if (out_routine != nullptr) *out_routine = routine;
    return scope_stack[depth_scope_stack].il_scope;
  }
  void release_region_of(a_routine *routine)
  {
    region_scope_table[routine->region_number] = nullptr;
  }
};

TEST_F(il_alloc, prefix_depends_on_region_and_unit)
{
  a_type *type = alloc_type(tk_void);
  EXPECT_TRUE(is_file_scope_entry(type));
  EXPECT_EQ(next_orphan_of(type), nullptr);
  is_primary_translation_unit = false;
  compute_il_prefix_size();
  EXPECT_EQ(file_scope_il_prefix_size, secondary_file_scope_il_prefix_size);
  a_type *secondary = alloc_type(tk_void);
  void *primary = alloc_primary_file_scope_il(16);
  EXPECT_EQ(file_scope_il_prefix_size, secondary_file_scope_il_prefix_size);
  is_primary_translation_unit = true;
  compute_il_prefix_size();
  EXPECT_TRUE(entry_flags_of(secondary).is_secondary_entry);
  EXPECT_FALSE(entry_flags_of(primary).is_secondary_entry);
  set_corresp_entry(secondary, type);
  EXPECT_EQ(corresp_entry_of(secondary), type);
  EXPECT_EQ(corresp_entry_of(type), nullptr);
  open_function();
  EXPECT_FALSE(is_file_scope_entry(alloc_statement(stmk_expr)));
  EXPECT_TRUE(is_file_scope_entry(alloc_variable(sc_static)));
  EXPECT_FALSE(is_file_scope_entry(alloc_variable(sc_auto)));
}

TEST_F(il_alloc, region_switch_that_changes_nothing_is_undone_to_nothing)
{
  int saved = 99;
  switch_to_file_scope_region(&saved);
  EXPECT_EQ(saved, 0);
  switch_back_to_original_region(saved);
  EXPECT_EQ(curr_il_region_number, file_scope_region_number);
  open_function();
  int function_region = curr_il_region_number;
  switch_to_file_scope_region(&saved);
  EXPECT_EQ(curr_il_region_number, file_scope_region_number);
  switch_back_to_original_region(saved);
  EXPECT_EQ(curr_il_region_number, function_region);
}

TEST_F(il_alloc, local_entity_of_file_scope_kind_finds_its_parent_through_the_function)
{
  a_routine *routine;
  a_scope *scope = open_function(&routine);
  a_variable *local_static = alloc_variable(sc_static);
  local_static->type = integer_type(ik_int);
  add_to_variables_list(local_static, depth_scope_stack);
  a_source_correspondence *head = &local_static->source_corresp;
  EXPECT_TRUE(head->has_local_scope_ref);
  EXPECT_EQ(head->parent_scope, nullptr);
  EXPECT_EQ(head->enclosing_routine, routine);
  EXPECT_EQ(get_parent_scope_of(head), scope);
  EXPECT_EQ(scope->variables, local_static);
  a_type *local_class = alloc_type(tk_struct);
  add_to_types_list(local_class, depth_scope_stack);
  add_scope_orphaned_il_lists(scope);
  ASSERT_NE(il_header.scope_orphaned_lists, nullptr);
  EXPECT_EQ(il_header.scope_orphaned_lists->types, local_class);
  release_region_of(routine);
  EXPECT_EQ(get_parent_scope_of(head), nullptr);
  EXPECT_EQ(local_class->source_corresp.enclosing_routine, routine);
  il_header.scope_orphaned_lists = nullptr;
}

TEST_F(il_alloc, cleared_parent_takes_its_reference_along)
{
  a_scope *scope = open_function();
  a_variable *local_static = alloc_variable(sc_static);
  add_to_variables_list(local_static, depth_scope_stack);
  clear_parent(&local_static->source_corresp);
  EXPECT_EQ(scope->local_scope_refs, nullptr);
  EXPECT_FALSE(local_static->source_corresp.has_local_scope_ref);
  EXPECT_EQ(local_static->source_corresp.enclosing_routine, nullptr);
}

TEST_F(il_alloc, changing_a_kind_leaves_the_head_alone)
{
  a_type *type = alloc_type(tk_integer);
  assign_internal_name(&type->source_corresp, "kept");
  as_integer(type).int_kind = ik_long;
  set_type_kind(type, tk_struct);
  EXPECT_STREQ(type->source_corresp.name, "kept");
  EXPECT_NE(class_supplement_of(type), nullptr);
  EXPECT_EQ(class_supplement_of(type)->next_virtual_function_number, 0xffff);
  a_symbol *symbol = enter(sk_type, "other", 0);
  set_source_corresp(&type->source_corresp, symbol);
  EXPECT_STREQ(type->source_corresp.name, "kept");
  EXPECT_FALSE(type->source_corresp.referenced);
}

TEST_F(il_alloc, routines_move_to_the_end_in_the_order_of_the_requests)
{
  a_routine *routine[6];
  for (a_routine *&each : routine) {
    each = alloc_routine();
    add_to_routines_list(each, 0);
  }
  schedule_move_to_current_end_of_routines_list(routine[0]);
  schedule_move_to_current_end_of_routines_list(routine[2]);
  schedule_move_to_current_end_of_routines_list(routine[5]); // is last already
  a_routine *late = alloc_routine();
  add_to_routines_list(late, 0);
  schedule_move_to_current_end_of_routines_list(routine[1]);
  perform_scheduled_routine_moves();
  a_routine *expected[] = {routine[3], routine[4], routine[5], routine[0],
                           routine[2], late,       routine[1]};
  a_routine *at = il_header.primary_scope->routines;
  for (a_routine *each : expected) {
    EXPECT_EQ(at, each);
    at = at->next;
  }
  EXPECT_EQ(at, nullptr);
  a_routine *appended = alloc_routine();
  add_to_routines_list(appended, 0);
  EXPECT_EQ(routine[1]->next, appended);
}

TEST_F(il_alloc, class_stands_behind_the_classes_of_its_members)
{
  a_type *outer = alloc_type(tk_struct);
  a_type *inner = alloc_type(tk_struct);
  a_field *field = alloc_field();
  field->type = inner;
  as_class(outer).first_field = field;
  add_to_types_list(outer, 0);
  add_to_types_list(inner, 0);
  a_type *last = alloc_type(tk_struct);
  add_to_types_list(last, 0);
  fix_type_list_ordering_problems(il_header.primary_scope);
  EXPECT_EQ(il_header.primary_scope->types, inner);
  EXPECT_EQ(inner->next, outer);
  EXPECT_EQ(outer->next, last);
  move_to_end_of_types_list(inner);
  EXPECT_EQ(il_header.primary_scope->types, outer);
  EXPECT_EQ(last->next, inner);
}

TEST_F(il_alloc, only_what_nothing_else_reaches_is_an_orphan)
{
  orphaned_file_scope_il_entries[iek_type] = {};
  a_type *derived = make_pointer_type(integer_type(ik_int));
  a_type *class_type = alloc_type(tk_struct);
  f_possibly_add_orphaned_file_scope_il_entry(class_type, iek_type, nullptr);
  EXPECT_EQ(orphaned_file_scope_il_entries[iek_type].head, nullptr);
  f_possibly_add_orphaned_file_scope_il_entry(derived, iek_type, nullptr);
  f_possibly_add_orphaned_file_scope_il_entry(derived, iek_type, nullptr);
  EXPECT_EQ(orphaned_file_scope_il_entries[iek_type].head, derived);
  a_type *second = make_pointer_type(derived);
  f_possibly_add_orphaned_file_scope_il_entry(second, iek_type, nullptr);
  f_possibly_add_orphaned_file_scope_il_entry(derived, iek_type, nullptr);
  EXPECT_EQ(next_orphan_of(derived), second);
  EXPECT_EQ(orphaned_file_scope_il_entries[iek_type].tail, second);
  orphaned_file_scope_il_entries[iek_type] = {};
}

TEST_F(il_alloc, size_table_has_every_kind)
{
  EXPECT_EQ(sizeof_il_entry[iek_variable], sizeof(a_variable));
  EXPECT_EQ(sizeof_il_entry[iek_name_text], 1);
  EXPECT_EQ(sizeof_il_entry[iek_last], 9999);
  for (int kind = 1; kind < iek_last; kind++)
    EXPECT_GT(sizeof_il_entry[kind], 0) << kind;
}
