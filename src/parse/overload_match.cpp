// overload_match.cpp - the rank of one argument against one parameter.
// Entry:   determine_arg_match_level, selector_match_with_this_param,
//          direct_reference_binding_possible.
// See:     C++98 13.3.3.1, 8.5.3.
#include "consts/folding.h"
#include "driver/flags.h"
#include "il/il.h"
#include "il/il_entities.h"
#include "il/types.h"
#include "parse/overload.h"
#include "parse/overload_private.h"

// What is known of the source while it is ranked.
struct a_match_source {
  an_operand *operand; // null: only the type is known
  a_type *type;
  bool is_lvalue;
  bool is_function;
};

// -------------------------------------------------------------------------------------------------
// Direct binding of a reference

static bool binds_to_any_source(a_type *reference_type, bool *const_volatile_blocks)
{
  *const_volatile_blocks = false;
  if (is_rvalue_reference_type(reference_type)) return true;
  a_type_qualifier_set qualifiers = get_type_qualifiers(type_pointed_to(reference_type));
  if (!(qualifiers & tq_const)) return false;
  if (!(qualifiers & tq_volatile)) return true;
  *const_volatile_blocks = true;
  return false;
}

// Same type but for qualifiers, or a class derived from the referred one.
static bool is_reference_related(a_type *referred, a_type *source, a_base_class **base_class)
{
  *base_class = nullptr;
  if (f_identical_types(referred, source, ido_ignore_top_qualifiers)) return true;
  a_type *target_class = skip_typerefs(referred), *source_class = skip_typerefs(source);
  if (!is_class_struct_union_type(target_class) || !is_class_struct_union_type(source_class))
    return false;
  if (is_incomplete_type(source_class)) return false;
  *base_class = find_base_class_of(source_class, target_class);
  return *base_class != nullptr;
}

void direct_reference_binding_possible(an_operand *operand, a_type *source_type, bool is_lvalue,
                                       a_type *reference_type, a_reference_binding *binding)
{
  *binding = {};
  a_type *referred = type_pointed_to(reference_type);
  a_type *source = operand != nullptr ? operand->type : source_type;
  if (is_any_reference_type(source)) source = type_pointed_to(source);
  binding->temporary_allowed = binds_to_any_source(reference_type, &binding->const_volatile_blocks);
  if (is_function_type(referred) && is_function_type(source)) {
    binding->is_direct = identical_types(referred, source);
    return;
  }
  if (!is_reference_related(referred, source, &binding->base_class)) return;
  a_type_qualifier_set lost = get_type_qualifiers(source) & ~get_type_qualifiers(referred);
  binding->qualifiers_lost = (lost & (tq_const | tq_volatile | tq_restrict)) != 0;
  // An rvalue of class type is an object that a reference may bind to as well.
  bool is_object = is_lvalue || (is_class_struct_union_type(source) && binding->temporary_allowed);
  binding->is_direct = is_object && !binding->qualifiers_lost;
}

// -------------------------------------------------------------------------------------------------
// The source

static bool operand_names_function(const an_operand *operand)
{
  return operand->state == os_function_designator || operand->kind == ok_indefinite_function;
}

static void describe_match_source(an_operand *operand, a_type *actual_type, a_match_source *source)
{
  *source = {};
  source->operand = operand;
  if (operand != nullptr) {
    source->type = operand->type;
    source->is_lvalue = is_lvalue_operand(operand);
    source->is_function = operand_names_function(operand);
  } else {
    source->type = actual_type;
    if (is_any_reference_type(actual_type)) {
      source->is_lvalue = !is_rvalue_reference_type(actual_type);
      source->type = type_pointed_to(actual_type);
    }
    source->is_function = is_function_type(source->type);
  }
}

static void describe_conversion_source(const a_match_source *source,
                                       a_conversion_source *conversion)
{
  *conversion = {};
  conversion->type = source->type;
  conversion->is_lvalue = source->is_lvalue;
  an_operand *operand = source->operand;
  if (operand == nullptr || operand->kind != ok_constant) return;
  conversion->is_constant = true;
  conversion->is_null_pointer_constant = is_null_pointer_constant(&operand->value.constant);
  conversion->is_string_literal =
      operand->is_string_literal || constant_is_pointer_to_string_literal(&operand->value.constant);
}

// Arrays and functions decay unless a reference takes them as they are.
static void decay_source(a_match_source *source, a_type *param_type, an_arg_match_summary *summary)
{
  bool is_array = is_array_type(source->type), is_function = is_function_type(source->type);
  if (!is_array && !is_function) return;
  if (is_any_reference_type(param_type)) {
    a_reference_binding binding;
    direct_reference_binding_possible(nullptr, source->type, true, param_type, &binding);
    if (binding.is_direct) return;
  }
  source->type = is_array ? type_after_array_to_pointer_transformation(source->type)
                          : make_pointer_type(source->type);
  source->is_lvalue = false;
  summary->needs_rvalue = true;
}

// -------------------------------------------------------------------------------------------------
// Levels

static an_arg_match_level level_of_std_conversion(a_std_conv_descr *conv,
                                                  an_arg_match_summary *summary)
{
  if (conv->is_promotion) return aml_promotion;
  if (conv->string_literal_to_nonconst) {
    if (!conv->to_void_or_null) return aml_exact;
    summary->anachronism = true;
    return aml_standard;
  }
  if (!conv->is_conversion) return aml_exact;
  return aml_standard;
}

// Old cfronts let only a literal 0 be a null pointer.
static bool null_constant_refused(const a_match_source *source, a_type *target)
{
  if (!cfront_2_1_mode && !cfront_3_0_mode) return false;
  if (!is_pointer_type(target) || !is_integral_or_enum_type(source->type)) return false;
  return source->operand == nullptr || !source->operand->cfront_literal;
}

static bool match_standard_conversion(const a_match_source *source, a_type *target,
                                      an_arg_match_summary *summary)
{
  if (is_class_struct_union_type(source->type) || is_class_struct_union_type(target)) return false;
  if (null_constant_refused(source, target)) return false;
  a_conversion_source conversion;
  describe_conversion_source(source, &conversion);
  a_std_conv_descr *conv = &summary->conv.std_conv;
  clear_std_conv_descr(conv);
  if (!impl_conversion_possible(&conversion, rvalue_type(target), conv)) return false;
  summary->level = level_of_std_conversion(conv, summary);
  return true;
}

static bool match_overload_set(const a_match_source *source, a_type *target,
                               an_arg_match_summary *summary)
{
  an_operand *operand = source->operand;
  if (operand == nullptr || operand->kind != ok_indefinite_function) return false;
  bool is_ambiguous = false;
  an_arg_match_level level = aml_no_match;
  a_symbol *function = find_addr_of_overloaded_function_match(
      operand->symbol, operand->template_args != nullptr, operand->template_args,
      operand->pending_address_of, target, false, &is_ambiguous, &level, &summary->conv.std_conv);
  if (function == nullptr) return false;
  summary->level = level == aml_no_match ? aml_exact : level;
  summary->selected_function = function;
  return true;
}

static bool match_derived_to_base(const a_match_source *source, a_type *target,
                                  an_arg_match_summary *summary)
{
  a_type *source_class = skip_typerefs(source->type), *target_class = skip_typerefs(target);
  if (!is_class_struct_union_type(source_class) || !is_class_struct_union_type(target_class))
    return false;
  if (is_incomplete_type(source_class)) return false;
  a_base_class *base = find_base_class_of(source_class, target_class);
  if (base == nullptr) return false;
  summary->conv.std_conv.base_class = base;
  summary->level = aml_standard;
  return true;
}

static bool match_user_conversion(const a_match_source *source, a_type *param_type, a_type *target,
                                  an_arg_match_summary *summary)
{
  a_conv_descr conv;
  clear_conv_descr(&conv);
  bool is_reference = is_any_reference_type(param_type);
  bool from_class = is_class_struct_union_type(source->type);
  bool found = false;
  if (is_reference && from_class) {
    found = conversion_from_class_possible(
        source->operand, source->type, target,
        ucf_lvalue_only | ucf_direct_binding | ucf_derived_result_ok, &conv, nullptr);
    if (found) conv.for_direct_reference_binding = true;
  }
  if (!found && !conv.is_ambiguous && is_class_struct_union_type(target)) {
    found = conversion_to_class_possible(source->operand, source->type,
                                         make_unqualified_type(target), 0, &conv, nullptr);
  } else if (!found && !conv.is_ambiguous && from_class) {
    found = conversion_from_class_possible(source->operand, source->type, rvalue_type(target), 0,
                                           &conv, nullptr);
  }
  if (!found && !conv.is_ambiguous) return false;
  summary->conv = conv;
  summary->level = aml_user;
  return true;
}

// -------------------------------------------------------------------------------------------------
// References to what has another type or fewer qualifiers

static bool may_bind_non_lvalue(a_type *reference_type)
{
  if (is_rvalue_reference_type(reference_type)) return true;
  if (cfront_2_1_mode || cfront_3_0_mode || allow_anachronisms) return true;
  a_type_qualifier_set qualifiers = get_type_qualifiers(type_pointed_to(reference_type));
  if (!(qualifiers & tq_const)) return false;
  return !(qualifiers & tq_volatile) || (strict_ansi_mode && !cpp11_mode);
}

static void no_match(an_arg_match_summary *summary)
{
  summary->level = aml_no_match;
  clear_conv_descr(&summary->conv);
}

// The last checks of a reference parameter: what may not bind is no match after all.
static void check_reference_match(const a_match_source *source, a_type *param_type, bool converted,
                                  bool qualifiers_lost, an_arg_match_summary *summary)
{
  if (summary->level == aml_no_match || summary->level == aml_error) return;
  bool from_function = summary->conv.for_direct_reference_binding;
  bool is_lvalue = (source->is_lvalue && !converted) || from_function || source->is_function;
  if (!converted && qualifiers_lost) {
    no_match(summary);
    return;
  }
  if (is_rvalue_reference_type(param_type) && is_lvalue) {
    if (!gpp_mode || gnu_version >= 40500 || qualifiers_lost) {
      no_match(summary);
    } else {
      summary->rvalue_ref_to_lvalue = true;
    }
    return;
  }
  if (is_lvalue || may_bind_non_lvalue(param_type)) return;
  bool anachronism =
      allow_nonconst_ref_anachronism && is_class_struct_union_type(type_pointed_to(param_type));
  if (!anachronism) no_match(summary);
}

// A qualifier that the parameter adds is an extra for a reference, and nothing for a value.
static void note_added_qualifiers(const a_match_source *source, a_type *target, bool is_reference,
                                  an_arg_match_summary *summary)
{
  if (!is_reference) return;
  a_type_qualifier_set mask = tq_const | tq_volatile | tq_restrict;
  a_type_qualifier_set have = get_type_qualifiers(source->type) & mask;
  a_type_qualifier_set want = get_type_qualifiers(target) & mask;
  if ((have & ~want) == 0 && have != want) summary->conv.std_conv.ref_qualification_added = true;
}

// -------------------------------------------------------------------------------------------------
// Entry points

static void rank_other_type(const a_match_source *source, a_type *param_type, a_type *target,
                            bool may_use_user_conversion, an_arg_match_summary *summary)
{
  if (match_overload_set(source, is_any_reference_type(param_type) ? param_type : target, summary))
    return;
  if (source->operand != nullptr && source->operand->kind == ok_indefinite_function) return;
  if (match_standard_conversion(source, target, summary)) {
    if (is_any_reference_type(param_type) && summary->conv.std_conv.qualification_added) {
      summary->conv.std_conv.ref_qualification_added = true;
      summary->conv.std_conv.qualification_added = false;
    }
    return;
  }
  if (match_derived_to_base(source, target, summary)) return;
  if (may_use_user_conversion) match_user_conversion(source, param_type, target, summary);
}

static void note_selected_function(const a_match_source *source, an_arg_match_summary *summary)
{
  an_operand *operand = source->operand;
  if (operand == nullptr || summary->selected_function != nullptr) return;
  if (operand->state == os_function_designator && operand->symbol != nullptr)
    summary->selected_function = operand->symbol;
}

void determine_arg_match_level(an_operand *operand, a_type *actual_type, a_type *param_type,
                               a_param_type *param, bool may_use_user_conversion, bool is_copy_like,
                               an_arg_match_summary *summary)
{
  a_match_source source;
  describe_match_source(operand, actual_type, &source);
  summary->level = aml_no_match;
  summary->param_type = param_type;
  if (param != nullptr) summary->param_number = param->number;
  summary->arg_is_constant = operand != nullptr && operand->kind == ok_constant;
  bool is_reference = is_any_reference_type(param_type);
  a_type *target = is_reference ? type_pointed_to(param_type) : param_type;
  if (is_error_type(source.type) || is_error_type(target)) {
    summary->level = aml_error;
    return;
  }
  if (is_void_type(source.type)) return;
  decay_source(&source, param_type, summary);
  bool qualifiers_lost =
      is_reference && (get_type_qualifiers(source.type) & ~get_type_qualifiers(target) &
                       (tq_const | tq_volatile | tq_restrict)) != 0;
  bool converted = false;
  bool indefinite = operand != nullptr && operand->kind == ok_indefinite_function;
  if (!indefinite && f_identical_types(source.type, target, ido_ignore_top_qualifiers)) {
    summary->level = aml_exact;
    summary->conv.std_conv.is_conversion = false;
    note_added_qualifiers(&source, target, is_reference, summary);
  } else {
    rank_other_type(&source, param_type, target, may_use_user_conversion && !is_copy_like, summary);
    converted = summary->conv.std_conv.base_class == nullptr ||
                !is_class_struct_union_type(source.type) || summary->level == aml_user;
    if (!converted) note_added_qualifiers(&source, target, is_reference, summary);
    if (indefinite) converted = false;
  }
  if (is_reference) check_reference_match(&source, param_type, converted, qualifiers_lost, summary);
  note_selected_function(&source, summary);
}

void selector_match_with_this_param(an_operand *object, a_type *object_type, a_routine *routine,
                                    an_arg_match_summary *summary)
{
  (void)object;
  summary->is_this_param = true;
  a_type *this_type = f_implicit_this_param_type_of(routine->type);
  summary->param_type = this_type;
  if (is_error_type(object_type)) {
    summary->level = aml_error;
    return;
  }
  determine_arg_match_level(nullptr, make_pointer_type(object_type), this_type, nullptr, false,
                            false, summary);
  if (summary->level != aml_no_match || !allow_nonconst_call_anachronism) return;
  a_type *any_object = f_make_qualified_type(type_pointed_to(this_type), tq_const | tq_volatile);
  determine_arg_match_level(nullptr, make_pointer_type(object_type), make_pointer_type(any_object),
                            nullptr, false, false, summary);
  summary->param_type = this_type;
  summary->nonconst_call_anachronism = summary->level != aml_no_match;
}

void issue_warning_from_arg_match_summary(an_arg_match_summary *summary, a_source_position position)
{
  if (summary->conv.std_conv.diagnostic != ec_no_error) {
    expr_pos_warning((an_error_code)summary->conv.std_conv.diagnostic, position);
  } else if (summary->nonconst_call_anachronism) {
    expr_pos_warning(ec_const_function_anachronism, position);
  }
}
