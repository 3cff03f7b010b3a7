// class_implicit.cpp - members that the compiler declares, and functions that are written `= default` or
// `= delete`.
// Rule:    an implicit member takes the same way as a written one; its body is made when it is used.
// Entry:   declare_implicit_members, check_defaulted_or_deleted_function,
//          is_assignment_operator_for_copy.
// See:     C++ 12.1p5, 12.4p3, 12.8.
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "parse/class_private.h"
#include "parse/decls.h"
#include "parse/scope_stk.h"

static a_symbol *first_function_of(a_symbol *symbol)
{
  if (symbol == nullptr || symbol->kind != sk_overloaded_function) return symbol;
  return overloads_of_symbol(symbol);
}

static a_symbol *next_function_of(a_symbol *set, a_symbol *symbol)
{
  return set->kind == sk_overloaded_function ? symbol->next_same_name : nullptr;
}

//---------------------------------------------------------------------------------------------
// = default and = delete

static bool is_reference_to_class(a_type *type, a_type *class_type, bool const_allowed)
{
  if (!is_any_reference_type(type) || is_rvalue_reference_type(type)) return false;
  a_type *target = type_pointed_to(type);
  a_type_qualifier_set qualifiers = get_type_qualifiers(target);
  if (qualifiers != 0 && !(const_allowed && qualifiers == tq_const)) return false;
  return identical_types(skip_typerefs(target), class_type);
}

static bool has_only_param(a_type *routine_type, a_param_type *param)
{
  return param != nullptr && param->next == nullptr &&
         !routine_supplement_of(routine_type)->has_ellipsis;
}

// The message for a constructor that can't be defaulted; ec_no_error when it can.
static an_error_code fault_of_constructor(a_routine *routine, a_type *class_type)
{
  a_type *type = skip_typerefs(routine->type);
  a_param_type *param = param_types_of(type);
  if (param == nullptr && !routine_supplement_of(type)->has_ellipsis) return ec_no_error;
  if (!has_only_param(type, param) || !is_reference_to_class(param->type, class_type, true)) {
    return ec_invalid_constructor_to_be_defaulted;
  }
  if (param->has_default_arg) return ec_copy_ctor_with_default_arg_cannot_be_defaulted;
  return ec_no_error;
}

static an_error_code fault_of_assignment(a_routine *routine, a_type *class_type)
{
  a_type *type = skip_typerefs(routine->type);
  a_param_type *param = param_types_of(type);
  bool is_fine = routine_supplement_of(type)->this_qualifiers == 0 &&
                 is_reference_to_class(return_type_of(type), class_type, false) &&
                 has_only_param(type, param) &&
                 is_reference_to_class(param->type, class_type, true);
  return is_fine ? ec_no_error : ec_invalid_assignment_operator_to_be_defaulted;
}

static bool is_assignment_operator(const a_routine *routine)
{
  return routine->special_kind == sfk_operator && routine->special.operator_kind == onk_assign;
}

static an_error_code fault_of_defaulted(a_routine *routine, const a_func_info_block *func_info)
{
  if (func_info->is_friend) return ec_function_defaulted_in_friend_decl;
  a_type *class_type = parent_class_of(&routine->source_corresp);
  if (class_type == nullptr || routine->is_static_member) {
    return ec_invalid_function_to_be_defaulted;
  }
  if (routine->special_kind == sfk_constructor) return fault_of_constructor(routine, class_type);
  if (routine->special_kind == sfk_destructor) return ec_no_error;
  if (is_assignment_operator(routine)) return fault_of_assignment(routine, class_type);
  return ec_invalid_function_to_be_defaulted;
}

// The written form counts for nothing: the function is only declared.
static void drop_form(a_func_info_block *func_info, a_symbol *symbol, a_routine *routine)
{
  func_info->is_defaulted = func_info->is_deleted = false;
  func_info->is_definition = func_info->has_body = false;
  symbol->defined = false;
  if (routine->storage_class != sc_static) routine->storage_class = sc_unspecified;
  routine->is_defined = routine->is_inline = routine->inline_in_class = false;
}

static bool check_deleted(a_func_info_block *func_info, a_symbol *symbol, a_routine *routine,
                          const a_source_position *position)
{
  if (symbol->is_predeclared) {
    pos_error(ec_predeclared_function_cannot_be_deleted, *position);
  } else if (!func_info->is_first_declaration) {
    pos_error(ec_deleted_function_definition_must_be_first_declaration, *position);
  } else {
    routine->is_deleted = routine->is_inline = routine->is_defined = true;
    return true;
  }
  return false;
}

static bool check_defaulted(const a_decl_parse_state *state, a_func_info_block *func_info,
                            a_routine *routine, const a_source_position *position)
{
  an_error_code fault = fault_of_defaulted(routine, func_info);
  if (fault != ec_no_error) {
    pos_error(fault, *position);
    return false;
  }
  routine->is_defaulted = true;
  if (state->is_synthesized || !func_info->is_first_declaration) return true;
  if (routine->source_corresp.access != as_public || routine->is_explicit) {
    pos_error(ec_nonpublic_or_explicit_member_defaulted_in_class, *position);
  }
  return true;
}

void check_defaulted_or_deleted_function(a_decl_parse_state *state, a_func_info_block *func_info,
                                         a_symbol *symbol, a_source_position *position)
{
  a_routine *routine = routine_of_symbol(symbol);
  bool is_fine = func_info->is_deleted ? check_deleted(func_info, symbol, routine, position)
                                       : check_defaulted(state, func_info, routine, position);
  if (!is_fine) drop_form(func_info, symbol, routine);
}

//---------------------------------------------------------------------------------------------
// Copy assignment

// How a form of operator= takes an object of its class; false: it doesn't.
static bool copies_object(a_symbol *symbol, bool *takes_const)
{
  if (!is_routine_symbol(symbol)) return false;
  a_routine *routine = routine_of_symbol(symbol);
  a_type *class_type = parent_class_of(&routine->source_corresp);
  a_param_type *param = param_types_of(skip_typerefs(routine->type));
  if (class_type == nullptr || param == nullptr) return false;
  if (param->next != nullptr && !param->next->has_default_arg) return false;
  bool is_reference = is_any_reference_type(param->type);
  if (is_reference && is_rvalue_reference_type(param->type)) return false;
  a_type *type = is_reference ? type_pointed_to(param->type) : param->type;
  if (!identical_types(skip_typerefs(type), class_type)) return false;
  if (!is_reference || is_const_qualified(type)) *takes_const = true;
  return true;
}

bool is_assignment_operator_for_copy(a_symbol *symbol, bool *takes_const, bool *user_provided)
{
  bool found = false;
  *takes_const = *user_provided = false;
  for (a_symbol *s = first_function_of(symbol); s != nullptr; s = next_function_of(symbol, s)) {
    if (!copies_object(s, takes_const)) continue;
    found = true;
    a_routine *routine = routine_of_symbol(s);
    routine->is_copy_assignment = true;
    if (!routine->is_compiler_generated && !routine->is_defaulted) *user_provided = true;
  }
  return found;
}

//---------------------------------------------------------------------------------------------
// What the subobjects ask for

typedef bool a_class_test(const a_class_symbol_supplement *supplement);

static bool assigns_from_nonconst_only(const a_class_symbol_supplement *supplement)
{
  bool takes_const, user_provided;
  if (supplement->assignment_operator == nullptr) return false;
  return is_assignment_operator_for_copy(supplement->assignment_operator, &takes_const,
                                         &user_provided) &&
         !takes_const;
}

static bool copies_from_nonconst_only(const a_class_symbol_supplement *supplement)
{
  return supplement->has_copy_constructor && !supplement->copy_constructor_takes_const;
}

// Whether the test holds for the class of a direct or virtual base or of a field.
static bool some_subobject(a_type *class_type, a_class_test *test)
{
  a_base_class *base = class_supplement_of(class_type)->base_classes;
  for (; base != nullptr; base = base->next) {
    if (!base->is_direct && !base->is_virtual) continue;
    if (test(class_symbol_supplement_of(base->type))) return true;
  }
  for (a_field *field = as_class(class_type).first_field; field; field = field->next) {
    a_type *type = skip_typerefs(skip_array_types(field->type));
    if (!kind_has_class_part(type->kind)) continue;
    a_class_symbol_supplement *supplement = class_symbol_supplement_of(type);
    if (supplement != nullptr && test(supplement)) return true;
  }
  return false;
}

//---------------------------------------------------------------------------------------------
// Declarations

static void locator_of_member(a_type *class_type, unsigned form, a_symbol_locator *locator)
{
  a_symbol *symbol = class_type->source_corresp.assoc_symbol;
  make_locator_for_symbol(symbol, locator);
  clear_qualifier_from_locator(locator);
  locator->position = symbol->position;
  locator->symbol = nullptr;
  if (form & imf_constructor) {
    change_class_locator_into_constructor_locator(locator, symbol);
  } else if (form & imf_destructor) {
    change_to_destructor_or_finalizer_locator(locator, symbol);
  } else {
    make_opname_locator(onk_assign, locator, &locator->position);
  }
}

static void declare_implicit_member(a_class_scan_state *scan, a_decl_parse_state *state,
                                    a_func_info_block *func_info, a_param_type *params)
{
  unsigned form = state->implicit_member_form;
  bool has_no_result = form & (imf_constructor | imf_destructor);
  a_type *type =
      make_routine_type(has_no_result ? void_type() : make_reference_type(scan->class_type));
  if (params != nullptr) add_param_type(type, params);
  state->declared_type = type;
  a_symbol_locator locator;
  locator_of_member(scan->class_type, form, &locator);
  unsigned saved_access = top_scope()->current_access;
  top_scope()->current_access = as_public;
  decl_member_function(scan, state, &locator, func_info, true);
  top_scope()->current_access = saved_access;
}

static void init_synthesized_state(a_decl_parse_state *state, a_func_info_block *func_info,
                                   a_type *class_type, unsigned form)
{
  *state = null_decl_parse_state;
  state->is_synthesized = true;
  state->implicit_member_form = form;
  state->start_position = class_type->source_corresp.assoc_symbol->position;
  clear_func_info(func_info);
  func_info->is_first_declaration = true;
  func_info->type_from_declarator = true;
}

static a_symbol *declare_member(a_class_scan_state *scan, unsigned form, a_param_type *params)
{
  a_decl_parse_state state;
  a_func_info_block func_info;
  init_synthesized_state(&state, &func_info, scan->class_type, form);
  func_info.is_defaulted = (form & imf_trivial_default) != 0;
  declare_implicit_member(scan, &state, &func_info, params);
  return state.symbol;
}

static a_param_type *reference_param(a_type *class_type, a_type_qualifier_set qualifiers)
{
  a_type *type = qualifiers ? f_make_qualified_type(class_type, qualifiers, -1) : class_type;
  return alloc_param_type(make_reference_type(type));
}

void declare_implicit_copy_assignment(a_class_scan_state *scan, bool is_deleted,
                                      unsigned qualifiers)
{
  a_symbol *symbol =
      declare_member(scan, imf_member, reference_param(scan->class_type, qualifiers));
  a_routine *routine = routine_of_symbol(symbol);
  routine->is_copy_assignment = true;
  if (is_deleted) routine->is_deleted = routine->is_defined = true;
}

// Step by step with what later steps ask.
static void drop_trivial_default(a_class_scan_state *scan, a_class_symbol_supplement *supplement)
{
  a_symbol *symbol = supplement->trivial_default_constructor;
  if (symbol == nullptr || !scan->needs_default_constructor) return;
  supplement->trivial_default_constructor = nullptr;
  supplement->has_nontrivial_default_constructor = true;
  routine_of_symbol(symbol)->is_trivial_default_constructor = false;
}

static void declare_default_constructor(a_class_scan_state *scan,
                                        a_class_symbol_supplement *supplement)
{
  bool has_constructors = supplement->constructors != nullptr;
  if (has_constructors && !supplement->has_user_default_constructor) scan->not_pod = true;
  if (has_constructors || !scan->not_pod) return;
  if (class_supplement_of(scan->class_type)->is_closure) return;
  unsigned form = imf_member | imf_constructor;
  declare_member(scan, scan->needs_default_constructor ? form : form | imf_trivial_default,
                 nullptr);
}

static bool wants_copy_constructor(const a_class_scan_state *scan,
                                   const a_class_symbol_supplement *supplement)
{
  if (supplement->has_copy_constructor) return false;
  return class_supplement_of(scan->class_type)->is_closure || supplement->constructors != nullptr ||
         !supplement->has_trivial_copy_constructor;
}

static void settle_trivial_destructor(a_class_scan_state *scan,
                                      a_class_symbol_supplement *supplement)
{
  a_symbol *symbol = supplement->destructor;
  supplement->has_trivial_destructor = symbol == nullptr;
  if (symbol == nullptr || scan->field_has_destructor || scan->base_has_destructor) return;
  a_routine *routine = routine_of_symbol(symbol);
  if (routine->is_defaulted && !routine->is_virtual) supplement->has_trivial_destructor = true;
}

// The functions that copy bit by bit.
static void mark_trivial_members(a_type *class_type, const a_class_symbol_supplement *supplement)
{
  if (!supplement->has_trivial_copy_constructor && !supplement->has_trivial_copy_assignment) return;
  a_scope *scope = class_supplement_of(class_type)->class_scope;
  for (a_routine *routine = scope->routines; routine != nullptr; routine = routine->next) {
    if (!routine->is_compiler_generated && !routine->is_defaulted) continue;
    if (routine->special_kind == sfk_constructor && routine->is_copy_constructor) {
      routine->is_trivial = supplement->has_trivial_copy_constructor;
    } else if (is_assignment_operator(routine)) {
      routine->is_trivial = supplement->has_trivial_copy_assignment;
    }
  }
}

static bool wants_copy_assignment(const a_class_symbol_supplement *supplement, bool has_one)
{
  if (has_one) return false;
  bool is_cfront = cfront_2_1_mode || cfront_3_0_mode;
  return !is_cfront || supplement->assignment_operator == nullptr;
}

void declare_implicit_members(a_class_scan_state *scan)
{
  a_type *class_type = scan->class_type;
  a_class_symbol_supplement *supplement = class_symbol_supplement_of(class_type);
  bool takes_const = false, user_provided = false;
  bool has_copy_assignment = is_assignment_operator_for_copy(supplement->assignment_operator,
                                                             &takes_const, &user_provided);
  if (user_provided || scan->not_aggregate) scan->not_pod = true;
  drop_trivial_default(scan, supplement);
  declare_default_constructor(scan, supplement);
  bool assigns_const = !some_subobject(class_type, assigns_from_nonconst_only);
  bool copies_const = !some_subobject(class_type, copies_from_nonconst_only);
  if (wants_copy_constructor(scan, supplement)) {
    declare_member(scan, imf_member | imf_constructor,
                   reference_param(class_type, copies_const ? (unsigned)tq_const : 0u));
  }
  bool has_destroyed_part = scan->field_has_destructor || scan->base_has_destructor;
  if (has_destroyed_part && supplement->destructor == nullptr) {
    declare_member(scan, imf_member | imf_destructor, nullptr);
  }
  settle_trivial_destructor(scan, supplement);
  if (wants_copy_assignment(supplement, has_copy_assignment)) {
    declare_implicit_copy_assignment(scan, false, assigns_const ? (unsigned)tq_const : 0u);
  }
  mark_trivial_members(class_type, supplement);
  if (supplement->has_user_copy_constructor) supplement->has_trivial_copy_constructor = false;
  if (user_provided) supplement->has_trivial_copy_assignment = false;
}
