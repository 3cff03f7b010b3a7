// folding_private.h - what the files of folding share.
#pragma once
#include "consts/folding.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "il/il.h"

// One operation on its way: operands, result, and what the context will be told.
struct a_folding {
  an_expr_operator_kind op;
  const a_constant *left;
  const a_constant *right; // null for one operand
  a_constant *result;      // has its type; the kind is set by the operation
  an_error_code code = ec_no_error;
  an_error_severity severity = es_warning;
  bool not_folded = false;
  bool not_folded_by_template = false;
};

// The constant becomes an integer with that value; type and head stay.
inline void set_result_value(a_constant *result, const an_integer_value *value)
{
  if (result->kind != ck_integer) set_constant_kind(result, ck_integer);
  integer_of(result) = *value;
}
void set_result_number(a_constant *result, long long number);
void set_result_float(a_constant *result, a_constant_kind kind, const simul_fval *value);

// Integer overflow, with the severity that the mode gives it.
void record_integer_overflow(a_folding *folding);
void record_fault(a_folding *folding, an_error_code code, an_error_severity severity);

// folding_float.cpp
void fold_float_operation(a_folding *folding, a_type_kind operand_kind);
void fold_float_unary(a_folding *folding);
bool float_constant_is_zero(const a_constant *constant);

// folding_pointer.cpp
void fold_pointer_operation(a_folding *folding);
void fold_pointer_difference(a_folding *folding);
void fold_pointer_comparison(a_folding *folding);
void fold_ptr_to_member_comparison(a_folding *folding);
// constant := constant plus or minus count elements; faults go to the folding.
bool add_to_pointer_constant(a_constant *pointer, const a_constant *count, bool subtract,
                             bool is_subscript, a_folding *folding);
// The type's size, or false if it has none that is constant.
bool constant_size_of(a_type *type, uint64_t *size);

// The result for a comparison operator of an order -1, 0, 1.
bool order_satisfies(an_expr_operator_kind op, int order);

// Reports what the operation recorded, by the rules of its context.  Returns what out_not_folded is
// to be.
bool report_folding(a_folding *folding, bool is_constant_context, bool value_required,
                    an_error_code *suppressed, const a_source_position *position);
