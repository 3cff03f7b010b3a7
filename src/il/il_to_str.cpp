// il_to_str.cpp - text of types and names.
// Uses:  the control block's callbacks; il_header for the language.
// Rule:  a type prints in two parts that stand around the declared name.  Between the first part
//        and a name the caller puts a blank when the part ends in a word.
// Entry: form_type, form_type_first_part, form_type_second_part, form_name, il_to_str_init.
// See:   il_to_str_const.cpp for constants, il_to_str_attr.cpp for attributes.
#include <cstdio>
#include <cstring>
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_to_str_private.h"

// form_type_first_part's flags.
static constexpr unsigned ftf_expand_arrays = 1; // no typedef may hide an array's bound

void clear_il_to_str_output_control_block(an_il_to_str_output_control_block *block)
{
  memset(block, 0, sizeof *block);
}

bool source_is_c()
{
  return il_header.source_language == 1;
}

void put_number(unsigned long long number, an_il_to_str_output_control_block *block)
{
  char text[24];
  snprintf(text, sizeof text, "%llu", number);
  put(text, block);
}

void put_cast(a_type *type, an_il_to_str_output_control_block *block)
{
  put("(", block);
  form_type(type, block);
  put(")", block);
}

// --- Parameters of open prototypes ---------------------------------------------------------------

void push_function_prototype(a_type *routine_type, a_func_prototype_stack_entry *entry,
                             an_il_to_str_output_control_block *block)
{
  entry->next = block->prototype_stack;
  entry->routine_type = skip_typerefs(routine_type);
  entry->depth = entry->next == nullptr ? 1 : entry->next->depth + 1;
  block->prototype_stack = entry;
}

void pop_function_prototype(an_il_to_str_output_control_block *block)
{
  check(block->prototype_stack != nullptr);
  block->prototype_stack = block->prototype_stack->next;
}

a_param_type *get_param_for_param_ref(const an_expr_node *expr,
                                      an_il_to_str_output_control_block *block)
{
  const an_expr_param_ref &ref = param_ref_of(expr);
  a_func_prototype_stack_entry *entry = block->prototype_stack;
  for (int level = 0; level < ref.levels_up && entry != nullptr; level++)
    entry = entry->next;
  if (entry == nullptr) return nullptr;
  a_param_type *param = routine_supplement_of(entry->routine_type)->param_types;
  for (int position = 1; position < ref.position && param != nullptr; position++)
    param = param->next;
  return param;
}

void form_param_ref(const an_expr_node *expr, an_il_to_str_output_control_block *block)
{
  const an_expr_param_ref &ref = param_ref_of(expr);
  if (ref.position == 0) {
    put("this", block);
    return;
  }
  a_param_type *param = get_param_for_param_ref(expr, block);
  if (param != nullptr && param->name != nullptr) {
    put(param->name, block);
    return;
  }
  put("<parameter #", block);
  put_number(unsigned(ref.position), block);
  if (ref.levels_up == 1) {
    put(" (one level up)", block);
  } else if (ref.levels_up > 1) {
    put(" (", block);
    put_number(unsigned(ref.levels_up), block);
    put(" levels up)", block);
  }
  put(">", block);
}

// --- Names ---------------------------------------------------------------------------------------

void form_class_or_namespace_qualifier(bool is_namespace, const void *parent,
                                       an_il_to_str_output_control_block *block)
{
  an_il_entry_kind kind = is_namespace ? iek_namespace : iek_type;
  a_source_correspondence *corresp = source_corresp_for_il_entry(const_cast<void *>(parent), kind);
  if (a_type *outer_class = parent_class_of(corresp))
    form_class_or_namespace_qualifier(false, outer_class, block);
  else if (a_namespace *outer = parent_namespace_of(corresp))
    form_class_or_namespace_qualifier(true, outer, block);
  form_unqualified_name(parent, kind, block);
  put("::", block);
}

static void form_lambda_name(a_type *closure, an_il_to_str_output_control_block *block)
{
  put("lambda []", block);
  a_lambda *lambda = class_supplement_of(closure)->assoc_lambda;
  if (lambda != nullptr && lambda->call_operator != nullptr)
    form_function_declarator(skip_typerefs(lambda->call_operator->type), block);
}

static bool is_closure_class(const void *entity, an_il_entry_kind kind)
{
  if (kind != iek_type) return false;
  const a_type *type = static_cast<const a_type *>(entity);
  return kind_has_class_part(type->kind) && as_class(type).class_supplement != nullptr &&
         as_class(type).class_supplement->is_closure;
}

static const a_template_arg *template_args_of(const void *entity, an_il_entry_kind kind)
{
  if (kind != iek_type) return nullptr;
  const a_type *type = static_cast<const a_type *>(entity);
  if (kind_has_class_part(type->kind)) {
    a_class_type_supplement *supplement = as_class(type).class_supplement;
    return supplement == nullptr ? nullptr : supplement->template_args;
  }
  if (type->kind == tk_typeref && as_typeref(type).typeref_supplement != nullptr)
    return as_typeref(type).typeref_supplement->template_args;
  return nullptr;
}

void form_unqualified_name(const void *entity, an_il_entry_kind kind,
                           an_il_to_str_output_control_block *block)
{
  const a_source_correspondence *corresp =
      source_corresp_for_il_entry(const_cast<void *>(entity), kind);
  if (kind == iek_routine &&
      static_cast<const a_routine *>(entity)->special_kind == sfk_conversion) {
    put("operator ", block);
    form_type(return_type_of(static_cast<const a_routine *>(entity)->type), block);
    return;
  }
  if (corresp == nullptr || corresp->name == nullptr || corresp->is_nameless) {
    if (is_closure_class(entity, kind))
      form_lambda_name(static_cast<a_type *>(const_cast<void *>(entity)), block);
    else
      put("<unnamed>", block);
    return;
  }
  put(corresp->name, block);
  if (block->no_template_args) return;
  if (const a_template_arg *args = template_args_of(entity, kind)) form_template_args(args, block);
}

void form_name(const void *entity, an_il_entry_kind kind, an_il_to_str_output_control_block *block)
{
  if (block->form_entity_name != nullptr) {
    block->form_entity_name(entity, kind, block);
    return;
  }
  if (!source_is_c() && !is_closure_class(entity, kind)) {
    const a_source_correspondence *corresp =
        source_corresp_for_il_entry(const_cast<void *>(entity), kind);
    if (corresp != nullptr) {
      if (a_type *outer_class = parent_class_of(corresp))
        form_class_or_namespace_qualifier(false, outer_class, block);
      else if (a_namespace *outer = parent_namespace_of(corresp))
        form_class_or_namespace_qualifier(true, outer, block);
    }
  }
  form_unqualified_name(entity, kind, block);
}

// --- Base types ----------------------------------------------------------------------------------

void form_type_qualifier(unsigned qualifiers, bool leading_blank, bool trailing_blank,
                         an_il_to_str_output_control_block *block)
{
  // Plain "restrict" is no keyword of the C that the generated text is compiled as.
  const char *restrict_word = block->generated_code || !c99_mode ? "__restrict" : "restrict";
  const struct {
    unsigned bit;
    const char *word;
  } words[] = {{tq_const, "const"}, {tq_volatile, "volatile"}, {tq_restrict, restrict_word}};
  bool first = true;
  for (const auto &row : words) {
    if ((qualifiers & row.bit) == 0) continue;
    if (!first || leading_blank) put(" ", block);
    put(row.word, block);
    first = false;
  }
  if (!first && trailing_blank) put(" ", block);
}

const char *int_kind_name(an_integer_kind kind)
{
  return int_kind_name_full(kind);
}

static const char *float_kind_name(a_float_kind kind)
{
  switch (kind) {
  case fk_float: return "float";
  case fk_double: return "double";
  case fk_long_double: return "long double";
  case fk_none: break;
  }
  return "**BAD-FLOAT-KIND**";
}

an_expr_node *decltype_arg(a_type *type)
{
  a_typeref_supplement *supplement = as_typeref(type).typeref_supplement;
  return supplement == nullptr ? nullptr : supplement->decl_expr;
}

// A class, struct, union or enum: its key where the language needs one, and its name.
static void form_tagged_type(a_type *type, an_il_to_str_output_control_block *block)
{
  if (block->form_entity_name != nullptr) {
    block->form_entity_name(type, iek_type, block);
    return;
  }
  if (source_is_c() || type->source_corresp.name == nullptr) {
    if (type->kind == tk_integer)
      put("enum ", block);
    else if (!is_closure_class(type, iek_type))
      put(type->kind == tk_class    ? "class "
          : type->kind == tk_struct ? "struct "
                                    : "union ",
          block);
  }
  form_name(type, iek_type, block);
}

static void form_integer_type(a_type *type, an_il_to_str_output_control_block *block)
{
  const an_integer_type_part &part = as_integer(type);
  if (part.is_enum)
    form_tagged_type(type, block);
  else if (part.is_bool)
    put(block->c_forms || source_is_c() ? "_Bool" : "bool", block);
  else if (part.is_wchar_t && !block->c_forms)
    put("wchar_t", block);
  else if (part.is_char16_t && !block->c_forms)
    put("char16_t", block);
  else if (part.is_char32_t && !block->c_forms)
    put("char32_t", block);
  else
    put(int_kind_name_full(part.int_kind), block);
}

// A type that is neither typeref nor derived.
static void form_base_type(a_type *type, an_il_to_str_output_control_block *block)
{
  switch (type->kind) {
  case tk_error: put("<error-type>", block); return;
  case tk_void: put("void", block); return;
  case tk_integer: form_integer_type(type, block); return;
  case tk_float: put(float_kind_name(as_float(type).float_kind), block); return;
  case tk_imaginary:
    put(float_kind_name(as_float(type).float_kind), block);
    if (!block->generated_code) put(" _Imaginary", block); // there it is lowered to the real type
    return;
  case tk_complex:
    put(float_kind_name(as_float(type).float_kind), block);
    put(block->generated_code ? " __complex__" : " _Complex", block);
    return;
  case tk_class:
  case tk_struct:
  case tk_union: form_tagged_type(type, block); return;
  case tk_nullptr:
    put(block->generated_code ? "decltype(nullptr)" : "std::nullptr_t", block);
    return;
  case tk_template_param:
  case tk_cl_vector:
  case tk_unknown:
    if (type->source_corresp.name != nullptr)
      form_name(type, iek_type, block);
    else
      put("<unknown-type>", block);
    return;
  case tk_pointer:
  case tk_routine:
  case tk_array:
  case tk_typeref:
  case tk_ptr_to_member:
  case tk_last: break;
  }
  put("<unknown-type>", block);
}

// --- The two parts of a type ---------------------------------------------------------------------

// True when the typedef's name may stand for the type at this place.
static bool typedef_name_is_used(a_type *type, unsigned flags,
                                 an_il_to_str_output_control_block *block)
{
  if (type->source_corresp.name == nullptr || block->no_typedefs) return false;
  if (block->skip_internal_typedefs && !as_typeref(type).is_typedef_decl &&
      !as_typeref(type).is_alias_decl && !as_typeref(type).predeclared) {
    return false;
  }
  if (block->typedef_unusable != nullptr && block->typedef_unusable(type, block)) return false;
  return (flags & ftf_expand_arrays) == 0 || skip_typerefs(type)->kind != tk_array;
}

a_type *(*ptr_to_member_text_hook)(a_type *type);

// The first type at or below `type` that prints: a usable typedef or no typeref.  Adds the
// qualifiers of what is passed; *may_alias tells of an attribute that was walked past.
static a_type *printable_type(a_type *type, unsigned flags, unsigned *qualifiers, bool *may_alias,
                              an_il_to_str_output_control_block *block)
{
  while (type->kind == tk_typeref && !typedef_name_is_used(type, flags, block)) {
    *qualifiers |= as_typeref(type).qualifiers;
    if (type->may_alias) *may_alias = true;
    if (as_typeref(type).dependent_decltype) break;
    type = as_typeref(type).referenced_type;
  }
  bool is_replaced = block->generated_code && type->kind == tk_ptr_to_member;
  return is_replaced && ptr_to_member_text_hook != nullptr ? ptr_to_member_text_hook(type) : type;
}

static bool is_declarator_suffix(const a_type *type)
{
  return type->kind == tk_array || type->kind == tk_routine;
}

// What the part just written ends in; decides about the blank in front of a star.
enum a_part_end { pe_word, pe_star, pe_open };

static a_part_end first_part(a_type *type, bool is_pointer_target, unsigned qualifiers,
                             unsigned flags, an_il_to_str_output_control_block *block);

static a_part_end pointer_first_part(a_type *type, unsigned qualifiers, unsigned flags,
                                     an_il_to_str_output_control_block *block)
{
  const a_pointer_type_part &part = as_pointer(type);
  a_part_end end = pe_word;
  if (part.pointed_to_type == nullptr)
    put("<something>", block);
  else
    end = first_part(part.pointed_to_type, true, 0, flags & ~ftf_expand_arrays, block);
  if (end == pe_word) put(" ", block);
  put(part.is_reference && !block->generated_code ? (part.is_rvalue ? "&&" : "&") : "*", block);
  if ((qualifiers & ~unsigned(tq_packed)) == 0) return pe_star;
  form_type_qualifier(qualifiers, false, false, block);
  return pe_word;
}

static a_part_end ptr_to_member_first_part(a_type *type, unsigned qualifiers,
                                           an_il_to_str_output_control_block *block)
{
  const a_ptr_to_member_type_part &part = as_ptr_to_member(type);
  a_part_end end = first_part(part.member_type, true, 0, 0, block);
  if (end == pe_word) put(" ", block);
  if (block->form_qualifier != nullptr)
    block->form_qualifier(part.member_class, block);
  else
    form_name(part.member_class, iek_type, block);
  put("::*", block);
  if ((qualifiers & ~unsigned(tq_packed)) == 0) return pe_star;
  form_type_qualifier(qualifiers, false, false, block);
  return pe_word;
}

static void dependent_type_first_part(a_type *type, an_il_to_str_output_control_block *block)
{
  const a_typeref_type_part &part = as_typeref(type);
  put(part.is_typeof            ? "__typeof__("
      : part.is_underlying_type ? "__underlying_type("
                                : "__decltype(",
      block);
  an_expr_node *expr = decltype_arg(type);
  if (part.is_underlying_type && part.typeref_supplement != nullptr &&
      part.typeref_supplement->underlying_type_operand != nullptr)
    form_type(part.typeref_supplement->underlying_type_operand, block);
  else if (expr != nullptr && block->form_expression != nullptr)
    block->form_expression(expr, false, block);
  else
    put("<expr>", block);
  put(")", block);
}

static a_part_end first_part(a_type *type, bool is_pointer_target, unsigned qualifiers,
                             unsigned flags, an_il_to_str_output_control_block *block)
{
  if (type == nullptr) {
    put("<something>", block);
    return pe_word;
  }
  bool may_alias = false;
  type = printable_type(type, flags, &qualifiers, &may_alias, block);
  a_part_end end = pe_word;
  switch (type->kind) {
  case tk_typeref:
    form_type_qualifier(qualifiers, false, true, block);
    if (type->source_corresp.name != nullptr)
      form_name(type, iek_type, block);
    else
      dependent_type_first_part(type, block);
    break;
  case tk_pointer: end = pointer_first_part(type, qualifiers, flags, block); break;
  case tk_ptr_to_member: end = ptr_to_member_first_part(type, qualifiers, block); break;
  case tk_array:
    // Qualifiers of an array are those of its elements.
    end = first_part(as_array(type).element_type, false, qualifiers, flags, block);
    break;
  case tk_routine: end = first_part(as_routine(type).return_type, false, 0, 0, block); break;
  default:
    form_type_qualifier(qualifiers, false, true, block);
    form_base_type(type, block);
    break;
  }
  if (may_alias && block->generated_code) {
    put(" __attribute((__may_alias__))", block);
    end = pe_word;
  }
  if (is_pointer_target && is_declarator_suffix(type)) {
    if (end == pe_word) put(" ", block);
    put("(", block);
    end = pe_open;
  }
  return end;
}

void form_type_first_part(a_type *type, bool is_pointer_target, bool suppress_qualifiers_hint,
                          unsigned qualifiers, unsigned flags,
                          an_il_to_str_output_control_block *block)
{
  // The outermost qualifiers belong to the declared object, which is written without them.
  while (suppress_qualifiers_hint && type != nullptr && type->kind == tk_typeref &&
         type->source_corresp.name == nullptr)
    type = as_typeref(type).referenced_type;
  first_part(type, is_pointer_target, qualifiers, flags, block);
}

// The size of a variable-length dimension: the variable that holds it, or its expression.
static bool form_vla_bound(a_type *type, an_il_to_str_output_control_block *block)
{
  a_vla_dimension *dimension =
      block->in_prototype ? find_declared_vla_dimension(type) : find_vla_dimension(type);
  if (dimension == nullptr) return false;
  if (dimension->variable != nullptr)
    form_name(dimension->variable, iek_variable, block);
  else if (dimension->expr != nullptr && block->form_expression != nullptr)
    block->form_expression(dimension->expr, false, block);
  return true;
}

static void form_array_bound(a_type *type, an_il_to_str_output_control_block *block)
{
  const an_array_type_part &part = as_array(type);
  put("[", block);
  if (block->generated_code && part.bound_is_expr && form_vla_bound(type, block)) {
    put("]", block);
    return;
  }
  if (part.is_star_vla) {
    // In generated code a bound that only a prototype leaves open is left out.
    if (!block->generated_code) put("*", block);
  } else if (part.bound_is_constant) {
    form_constant(part.bound.bound_as_constant, false, block);
  } else if (part.bound_is_expr) {
    if (block->generated_code && block->in_prototype)
      put("*", block); // of a prototype whose parameters can't be named here
    else if (part.bound.bound_expr != nullptr && block->form_expression != nullptr)
      block->form_expression(part.bound.bound_expr, false, block);
    else
      put("<expr>", block);
  } else if (part.bound.number_of_elements != 0 || part.bound_is_zero) {
    put_number(part.bound.number_of_elements, block);
  }
  put("]", block);
}

void form_type_second_part(a_type *type, bool is_pointer_target, unsigned flags,
                           an_il_to_str_output_control_block *block)
{
  if (type == nullptr) return;
  unsigned ignored_qualifiers = 0;
  bool ignored;
  type = printable_type(type, flags, &ignored_qualifiers, &ignored, block);
  if (is_pointer_target && is_declarator_suffix(type)) put(")", block);
  switch (type->kind) {
  case tk_pointer:
    form_type_second_part(as_pointer(type).pointed_to_type, true, flags & ~ftf_expand_arrays,
                          block);
    break;
  case tk_ptr_to_member:
    form_type_second_part(as_ptr_to_member(type).member_type, true, 0, block);
    break;
  case tk_array:
    form_array_bound(type, block);
    form_type_second_part(as_array(type).element_type, false, flags, block);
    break;
  case tk_routine:
    form_function_declarator(type, block);
    form_type_second_part(as_routine(type).return_type, false, 0, block);
    break;
  default: break;
  }
}

void form_function_declarator(a_type *type, an_il_to_str_output_control_block *block)
{
  if (block->form_prototype != nullptr) {
    block->form_prototype(type, block);
    return;
  }
  a_routine_type_supplement *supplement = routine_supplement_of(type);
  a_func_prototype_stack_entry entry;
  push_function_prototype(type, &entry, block);
  bool was_in_prototype = block->in_prototype;
  block->in_prototype = true;
  put("(", block);
  for (a_param_type *param = supplement->param_types; param != nullptr; param = param->next) {
    form_type(param->type, block);
    if (param->next != nullptr) put(", ", block);
  }
  if (supplement->has_ellipsis)
    put(supplement->param_types != nullptr ? ", ..." : "...", block);
  else if (supplement->param_types == nullptr && supplement->is_prototyped && source_is_c())
    put("void", block);
  put(")", block);
  block->in_prototype = was_in_prototype;
  form_type_qualifier(supplement->this_qualifiers, true, false, block);
  pop_function_prototype(block);
}

void form_type(a_type *type, an_il_to_str_output_control_block *block)
{
  if (type == nullptr) {
    put("<null-type>", block);
    return;
  }
  a_part_end end = first_part(type, false, 0, 0, block);
  unsigned ignored_qualifiers = 0;
  bool ignored;
  type = printable_type(type, 0, &ignored_qualifiers, &ignored, block);
  if (end == pe_word && is_declarator_suffix(type)) put(" ", block);
  form_type_second_part(type, false, 0, block);
}

// --- Messages ------------------------------------------------------------------------------------

namespace {
// A control block that writes into the insert of a message.
struct a_message_control_block {
  an_il_to_str_output_control_block block; // first: callbacks get its address
  a_diag_text *text;
};
} // namespace

static void put_to_message(const char *text, an_il_to_str_output_control_block *block)
{
  put_str_to_insert(reinterpret_cast<a_message_control_block *>(block)->text, text);
}

static void form_type_for_message(a_type *type, a_diag_text *text)
{
  a_message_control_block control;
  clear_il_to_str_output_control_block(&control.block);
  control.block.output_text = put_to_message;
  control.text = text;
  form_type(type, &control.block);
}

void il_to_str_init()
{
  error_hooks.form_type = form_type_for_message;
}
