// unit_fixture.h - a translation unit for tests of types, symbols and scopes: regions, target values,
// an open file scope.
#pragma once
#include <gtest/gtest.h>

#include "consts/const_ints.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "driver/trans_unit.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "memory_fixture.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"
#include "parse/symbol_tbl.h"

class a_unit_test : public testing::Test {
 protected:
  void SetUp() override
  {
    open_regions();
    target_early_init();
    use_standard_c();
  }

  void use_dialect(int dialect, bool gnu)
  {
    C_dialect = dialect;
    gcc_mode = gnu && dialect != 2;
    gpp_mode = gnu && dialect == 2;
    open_unit();
  }
  void use_standard_c() { use_dialect(0, false); }

  // A new declaration of the kind at the depth.
  a_symbol *enter(a_symbol_kind kind, const char *name, int depth, bool no_errors = true)
  {
    a_symbol_locator locator = locator_for(name);
    return enter_symbol(kind, &locator, depth, no_errors);
  }
  a_symbol_locator locator_for(const char *name)
  {
    a_symbol_locator locator = cleared_locator;
    locator.header = find_symbol_header(name, (uint32_t)strlen(name));
    return locator;
  }
  a_symbol *look_up(const char *name, unsigned options = lo_none)
  {
    a_symbol_locator locator = locator_for(name);
    return normal_id_lookup(&locator, options);
  }

 private:
  void open_unit()
  {
    target_one_time_init();
    target_init();
    const_ints_init();
    is_primary_translation_unit = true;
    file_scope_region_number = 1;
    unit_ = {};
    block_ = {};
    unit_.scope_pointers = &block_;
    curr_translation_unit = translation_units = &unit_;
    il_trans_unit_init();
    types_trans_unit_init();
    symbol_tbl_one_time_init();
    symbol_tbl_init();
    scope_stk_init();
    scope_stk_trans_unit_init();
    a_scope *scope = new_il_region(sck_file, take_next_scope_number(), nullptr);
    unit_.primary_scope = il_header.primary_scope = scope;
    push_file_scope(psf_none);
  }

  a_translation_unit unit_;
  a_scope_pointers_block block_;
};
