// folding_float.cpp - operators on real, imaginary and complex constants.
// Uses:  the rounded operations of float_pt.h, in the float kind of the operands.
// Rule:  with IEEE handling a division by zero, and what follows from infinities and NaN, is a
//        value; only a result out of range is a fault.
#include "consts/folding_private.h"

namespace {
// Any floating constant as two parts.
struct a_complex_number {
  simul_fval real;
  simul_fval imag;
};

// A chain of operations in one kind; remembers whether a step left the range.
struct a_float_computation {
  a_float_kind kind;
  bool out_of_range = false;

  typedef void an_fp_operation(a_float_kind, const simul_fval *, const simul_fval *, simul_fval *,
                               bool *, bool *);
  simul_fval apply(an_fp_operation *operation, const simul_fval &a, const simul_fval &b)
  {
    simul_fval result;
    bool error, second;
    operation(kind, &a, &b, &result, &error, &second);
    bool excused = IEEE_handling_on_float_operation_exceptions &&
                   (fp_error & (fpe_invalid | fpe_divide_by_zero)) != 0;
    if (error && !excused) out_of_range = true;
    return result;
  }
  simul_fval add(const simul_fval &a, const simul_fval &b)
  {
    return apply(fp_add, a, b);
  }
  simul_fval subtract(const simul_fval &a, const simul_fval &b)
  {
    return apply(fp_subtract, a, b);
  }
  simul_fval multiply(const simul_fval &a, const simul_fval &b)
  {
    return apply(fp_multiply, a, b);
  }
  simul_fval divide(const simul_fval &a, const simul_fval &b)
  {
    return apply(fp_divide, a, b);
  }
  simul_fval negate(const simul_fval &a)
  {
    simul_fval result;
    bool error, second;
    fp_negate(kind, &a, &result, &error, &second);
    return result;
  }
};
} // namespace

void set_result_float(a_constant *result, a_constant_kind kind, const simul_fval *value)
{
  if (result->kind != kind) set_constant_kind(result, kind);
  float_of(result) = *value;
}

static void set_result_complex(a_constant *result, const a_complex_number &value)
{
  if (result->kind != ck_complex) set_constant_kind(result, ck_complex);
  complex_of(result)->real = value.real;
  complex_of(result)->imag = value.imag;
}

static a_complex_number parts_of(const a_constant *constant)
{
  switch (constant->kind) {
  case ck_float: return {float_of(constant), pos_zero};
  case ck_imaginary: return {pos_zero, float_of(constant)};
  case ck_complex: return {complex_of(constant)->real, complex_of(constant)->imag};
  default: unexpected_kind("floating constant");
  }
}

static bool is_floating_constant(const a_constant *constant)
{
  return constant->kind == ck_float || constant->kind == ck_imaginary ||
         constant->kind == ck_complex;
}

bool float_constant_is_zero(const a_constant *constant)
{
  a_complex_number value = parts_of(constant);
  return fp_is_zero_constant(&value.real) && fp_is_zero_constant(&value.imag);
}

static bool is_zero(const a_complex_number &value)
{
  return fp_is_zero_constant(&value.real) && fp_is_zero_constant(&value.imag);
}

// A division by zero that is a fault and no value.
static bool record_zero_divisor(a_folding *folding, const a_complex_number &divisor)
{
  if (IEEE_handling_on_float_operation_exceptions || !is_zero(divisor)) return false;
  record_fault(folding, ec_divide_by_zero, es_error);
  return true;
}

// --- Real and imaginary operands -----------------------------------------------------------------

static a_constant_kind simple_result_kind(const a_folding *folding)
{
  bool left = folding->left->kind == ck_imaginary, right = folding->right->kind == ck_imaginary;
  bool product = folding->op == eok_multiply || folding->op == eok_divide ||
                 folding->op == eok_multiply_complex || folding->op == eok_divide_complex;
  if (product) return left == right ? ck_float : ck_imaginary;
  return left ? ck_imaginary : ck_float;
}

static void fold_real_operation(a_folding *folding, a_float_computation *step)
{
  simul_fval a = float_of(folding->left), b = float_of(folding->right), value;
  switch (folding->op) {
  case eok_add: value = step->add(a, b); break;
  case eok_subtract: value = step->subtract(a, b); break;
  case eok_multiply:
  case eok_multiply_complex:
    value = step->multiply(a, b);
    // i times i
    if (folding->left->kind == ck_imaginary && folding->right->kind == ck_imaginary)
      value = step->negate(value);
    break;
  case eok_divide:
  case eok_divide_complex:
    if (record_zero_divisor(folding, {b, pos_zero})) return;
    value = step->divide(a, b);
    if (folding->left->kind != ck_imaginary && folding->right->kind == ck_imaginary)
      value = step->negate(value);
    break;
  default: folding->not_folded = true; return;
  }
  set_result_float(folding->result, simple_result_kind(folding), &value);
}

static void fold_real_min_max(a_folding *folding, a_float_kind kind)
{
  bool unordered;
  int order = fp_compare(kind, &float_of(folding->left), &float_of(folding->right), &unordered);
  bool takes_left = !unordered && (folding->op == eok_min ? order <= 0 : order >= 0);
  set_result_float(folding->result, ck_float,
                   &float_of(takes_left ? folding->left : folding->right));
}

static void fold_comparison(a_folding *folding, a_float_kind kind)
{
  a_complex_number a = parts_of(folding->left), b = parts_of(folding->right);
  bool unordered, imag_unordered;
  int order = fp_compare(kind, &a.real, &b.real, &unordered);
  int imag_order = fp_compare(kind, &a.imag, &b.imag, &imag_unordered);
  unordered = unordered || imag_unordered;
  // Parts of complex values are only compared for equality.
  if (order == 0) order = imag_order;
  set_result_number(folding->result,
                    unordered ? folding->op == eok_ne : order_satisfies(folding->op, order));
}

// --- Complex operands ----------------------------------------------------------------------------

static a_complex_number multiply_complex(const a_complex_number &x, const a_complex_number &y,
                                         a_float_computation *step)
{
  return {step->subtract(step->multiply(x.real, y.real), step->multiply(x.imag, y.imag)),
          step->add(step->multiply(x.real, y.imag), step->multiply(x.imag, y.real))};
}

static a_complex_number divide_complex(const a_complex_number &x, const a_complex_number &y,
                                       a_float_computation *step)
{
  simul_fval denominator =
      step->add(step->multiply(y.real, y.real), step->multiply(y.imag, y.imag));
  simul_fval real = step->add(step->multiply(x.real, y.real), step->multiply(x.imag, y.imag));
  simul_fval imag = step->subtract(step->multiply(x.imag, y.real), step->multiply(x.real, y.imag));
  return {step->divide(real, denominator), step->divide(imag, denominator)};
}

static void fold_complex_operation(a_folding *folding, a_float_computation *step)
{
  a_complex_number x = parts_of(folding->left), y = parts_of(folding->right), value;
  switch (folding->op) {
  case eok_add:
  case eok_add_complex_1:
  case eok_add_complex_2: value = {step->add(x.real, y.real), step->add(x.imag, y.imag)}; break;
  case eok_subtract:
  case eok_subtract_complex_1:
  case eok_subtract_complex_2:
    value = {step->subtract(x.real, y.real), step->subtract(x.imag, y.imag)};
    break;
  case eok_multiply:
  case eok_multiply_complex: value = multiply_complex(x, y, step); break;
  case eok_divide:
  case eok_divide_complex:
    if (record_zero_divisor(folding, y)) return;
    // A real divisor divides the parts; the general formula would make NaN of infinities.
    value = folding->right->kind == ck_float
                ? a_complex_number{step->divide(x.real, y.real), step->divide(x.imag, y.real)}
                : divide_complex(x, y, step);
    break;
  default: folding->not_folded = true; return;
  }
  set_result_complex(folding->result, value);
}

void fold_float_operation(a_folding *folding, a_type_kind operand_kind)
{
  if (!is_floating_constant(folding->left) || !is_floating_constant(folding->right)) {
    folding->not_folded = true;
    return;
  }
  a_float_computation step = {float_kind_of_type(folding->left->type)};
  bool is_complex = folding->left->kind == ck_complex || folding->right->kind == ck_complex ||
                    operand_kind == tk_complex;
  if (folding->op >= eok_eq && folding->op <= eok_le) {
    fold_comparison(folding, step.kind);
  } else if (is_complex) {
    fold_complex_operation(folding, &step);
    if (step.out_of_range) record_fault(folding, ec_bad_complex_operation_result, es_error);
  } else if (folding->op == eok_min || folding->op == eok_max) {
    fold_real_min_max(folding, step.kind);
  } else {
    fold_real_operation(folding, &step);
    if (step.out_of_range) record_fault(folding, ec_bad_float_operation_result, es_error);
  }
}

void fold_float_unary(a_folding *folding)
{
  a_float_computation step = {float_kind_of_type(folding->left->type)};
  a_complex_number value = parts_of(folding->left);
  switch (folding->op) {
  case eok_plus: break;
  case eok_negate: value = {step.negate(value.real), step.negate(value.imag)}; break;
  case eok_complement: // GNU: the conjugate
  case eok_conj: value.imag = step.negate(value.imag); break;
  case eok_real: set_result_float(folding->result, ck_float, &value.real); return;
  case eok_imag: set_result_float(folding->result, ck_float, &value.imag); return;
  default: folding->not_folded = true; return;
  }
  if (folding->left->kind == ck_complex)
    set_result_complex(folding->result, value);
  else
    set_result_float(folding->result, folding->left->kind,
                     folding->left->kind == ck_float ? &value.real : &value.imag);
}
