// symbol_messages.cpp - how symbols and scopes show in messages.
// Owns:    the error engine's hooks for symbols, for the contexts of a diagnostic and for the
//          identity of the current scope.
// Uses:    the printer of types and names (il_to_str), the scope stack.
#include "parse/symbol_messages.h"
#include <cstring>
#include "driver/flags.h"
#include "driver/trans_unit.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_to_str.h"
#include "il/source_entities.h"
#include "parse/scope_stk.h"
#include "parse/symbol_tbl.h"

// ---- A control block that writes into an insert ----

struct a_symbol_control_block {
  an_il_to_str_output_control_block block; // first: callbacks get its address
  a_diag_text *text;
  char last_char; // of what was written
};

static void put_to_symbol_text(const char *text, an_il_to_str_output_control_block *block)
{
  auto *control = reinterpret_cast<a_symbol_control_block *>(block);
  put_str_to_insert(control->text, text);
  if (*text != '\0') control->last_char = text[strlen(text) - 1];
}

static void open_control_block(a_symbol_control_block *control, a_diag_text *text)
{
  clear_il_to_str_output_control_block(&control->block);
  control->block.output_text = put_to_symbol_text;
  control->text = text;
  control->last_char = ' ';
}

// ---- What a symbol stands for ----

static a_symbol *resolve(a_symbol *symbol)
{
  while (symbol->kind == sk_projection || symbol->kind == sk_namespace_projection) {
    symbol = symbol->kind == sk_projection ? projected_symbol_of(symbol)
                                           : symbol->variant.projected_namespace;
  }
  return symbol;
}

template <class an_entity> static a_type *type_if_entered(an_entity *entity)
{
  return entity == nullptr ? nullptr : entity->type;
}

// The type of the declared entity, or null where a name alone has to do.  A symbol that is just being entered
// has no entity yet.
static a_type *type_of_entity(a_symbol *symbol)
{
  switch (symbol->kind) {
  case sk_constant: return type_if_entered(constant_of_symbol(symbol));
  case sk_variable:
  case sk_static_data_member: return type_if_entered(variable_of_symbol(symbol));
  case sk_field: return type_if_entered(field_of_symbol(symbol));
  case sk_routine:
  case sk_member_function: return type_if_entered(routine_of_symbol(symbol));
  case sk_extern_variable:
  case sk_extern_routine: return symbol->variant.extern_entity.type;
  case sk_parameter: return type_if_entered(symbol->variant.param_type);
  case sk_keyword:
  case sk_macro:
  case sk_type:
  case sk_class_or_struct_tag:
  case sk_union_tag:
  case sk_enum_tag:
  case sk_label:
  case sk_undefined:
  case sk_projection:
  case sk_overloaded_function:
  case sk_class_template:
  case sk_function_template:
  case sk_namespace:
  case sk_namespace_projection:
  case sk_last: return nullptr;
  }
  return nullptr;
}

static bool is_function_symbol(const a_symbol *symbol)
{
  return is_routine_symbol(symbol) || symbol->kind == sk_extern_routine;
}

// ---- The kind word ----

static an_error_code word_of_variable(const a_symbol *symbol)
{
  if (symbol->is_handler_param) return ec_w_handler_parameter;
  return symbol->is_parameter ? ec_w_parameter : ec_w_variable;
}

static an_error_code kind_word_of(const a_symbol *symbol)
{
  bool in_cplusplus = C_dialect == 2;
  switch (symbol->kind) {
  case sk_keyword: return ec_w_keyword;
  case sk_macro: return ec_w_macro;
  case sk_constant: return symbol->is_template_param_name ? ec_w_nontype : ec_w_constant;
  case sk_type: return symbol->is_template_param_name ? ec_w_template_parameter : ec_w_type;
  case sk_class_or_struct_tag: return in_cplusplus ? ec_w_class : ec_w_struct;
  case sk_union_tag: return ec_w_union;
  case sk_enum_tag: return ec_w_enum;
  case sk_variable:
  case sk_extern_variable: return word_of_variable(symbol);
  case sk_field: return in_cplusplus ? ec_w_member : ec_w_field;
  case sk_static_data_member: return ec_w_member;
  case sk_member_function:
  case sk_routine:
  case sk_extern_routine: return ec_w_function;
  case sk_label: return ec_w_label;
  case sk_overloaded_function: return ec_w_overloaded_function;
  case sk_parameter: return ec_w_parameter;
  case sk_class_template:
    return symbol->is_template_param_name ? ec_w_template_template_parameter : ec_w_class_template;
  case sk_function_template: return ec_w_function_template;
  case sk_namespace: return ec_w_namespace;
  case sk_undefined:
  case sk_projection:
  case sk_namespace_projection:
  case sk_last: return ec_no_error;
  }
  return ec_no_error;
}

static an_error_code symbol_kind_word(a_symbol *symbol, bool full)
{
  symbol = resolve(symbol);
  // A full declaration says by itself what it declares.
  return full && type_of_entity(symbol) != nullptr ? ec_no_error : kind_word_of(symbol);
}

// ---- The name ----

static void put_qualified_name(a_symbol *symbol, a_symbol_control_block *control)
{
  if (symbol->is_class_member && C_dialect == 2) {
    form_class_or_namespace_qualifier(false, symbol->parent.class_type, &control->block);
  } else if (!symbol->is_class_member && symbol->parent.name_space != nullptr) {
    form_class_or_namespace_qualifier(true, symbol->parent.name_space, &control->block);
  }
  const char *name = symbol->header->identifier;
  if (symbol->header->is_unnamed || name == nullptr || *name == '\0') name = "<unnamed>";
  put_str_to_insert(control->text, name);
  if (!symbol->header->is_conversion_name) return;
  put_str_to_insert(control->text, " ");
  form_type(symbol->header->conversion_type, &control->block);
}

// Constructors, destructors and conversion functions are declared without a type in front.
static bool is_declared_without_type(const a_symbol *symbol)
{
  if (symbol->kind != sk_member_function) return false;
  const a_routine *routine = symbol->variant.routine.routine;
  return routine->special_kind == sfk_constructor || routine->special_kind == sfk_destructor ||
         routine->special_kind == sfk_conversion;
}

static bool is_overloaded(const a_symbol *symbol)
{
  if (!is_function_symbol(symbol)) return false;
  const a_symbol *chains[] = {symbol->header->active_symbols, symbol->header->inactive_symbols};
  for (const a_symbol *other : chains) {
    for (; other != nullptr; other = other->next_same_name) {
      if (other->kind == sk_overloaded_function && other->scope_number == symbol->scope_number) {
        return true;
      }
    }
  }
  return false;
}

static void form_symbol(a_symbol *symbol, a_symbol_insert_flags flags, a_diag_text *text)
{
  symbol = resolve(symbol);
  a_symbol_control_block control;
  open_control_block(&control, text);
  a_type *type = type_of_entity(symbol);
  if (flags.full && type != nullptr && is_declared_without_type(symbol)) {
    put_qualified_name(symbol, &control);
    form_function_declarator(skip_typerefs(type), &control.block);
    return;
  }
  if (flags.full && type != nullptr) {
    form_type_first_part(type, false, false, 0, 0, &control.block);
    // "int *" and "int (*" carry the name at once, "int" needs a blank.
    if (strchr("*(& ", control.last_char) == nullptr) put_str_to_insert(text, " ");
    put_qualified_name(symbol, &control);
    form_type_second_part(type, false, 0, &control.block);
    return;
  }
  put_qualified_name(symbol, &control);
  bool with_params = flags.with_params || is_overloaded(symbol);
  if (with_params && type != nullptr && is_function_symbol(symbol)) {
    form_function_declarator(skip_typerefs(type), &control.block);
  }
}

static a_source_position symbol_position(a_symbol *symbol)
{
  return resolve(symbol)->position;
}

static const char *symbol_translation_unit(a_symbol *symbol)
{
  if (translation_units == nullptr || translation_units->next == nullptr) return nullptr;
  a_translation_unit *unit = get_trans_unit_for_scope(resolve(symbol)->scope_number);
  if (unit == nullptr || unit == curr_translation_unit) return nullptr;
  a_source_file *file = unit->primary_source_file;
  return file != nullptr ? file->file_name : nullptr;
}

// ---- Contexts ----

static bool is_diag_context(const a_scope_stack_entry &entry)
{
  switch (entry.kind) {
  case sck_template_instantiation: return entry.template_instance_symbol != nullptr;
  case sck_function:
    return entry.assoc_routine != nullptr && entry.assoc_routine->is_compiler_generated;
  default: return false;
  }
}

static bool is_in_other_trans_unit()
{
  return translation_units != nullptr && curr_translation_unit != translation_units;
}

static int count_contexts(a_source_position)
{
  int count = is_in_other_trans_unit() ? 1 : 0;
  if (C_dialect != 2) return count;
  for (int depth = depth_scope_stack; depth >= 0; depth--) {
    if (is_diag_context(scope_stack[depth])) count++;
  }
  return count;
}

static void fill_context(const a_scope_stack_entry &entry, a_diag_context *context)
{
  bool is_instance = entry.kind == sck_template_instantiation;
  context->alone = is_instance ? ec_detected_in_instantiation : ec_detected_in_implicit_generation;
  context->among = is_instance ? ec_instantiation_context : ec_implicit_generation_context;
  context->symbol = is_instance ? entry.template_instance_symbol
                                : entry.assoc_routine->source_corresp.assoc_symbol;
  context->instantiation = entry.template_info;
  context->point = entry.push_position;
}

static void get_context(int index, a_diag_context *context)
{
  if (C_dialect == 2) {
    for (int depth = depth_scope_stack; depth >= 0; depth--) {
      if (!is_diag_context(scope_stack[depth]) || --index != 0) continue;
      fill_context(scope_stack[depth], context);
      return;
    }
  }
  context->alone = ec_detected_in_secondary_unit;
  context->among = ec_compilation_of_secondary_unit;
  context->file_name = trans_unit_file_name;
}

static unsigned long curr_scope_identity(bool *in_template)
{
  *in_template = in_template_context();
  if (depth_scope_stack < 0) return 0;
  const a_scope *scope = scope_stack[depth_scope_stack].il_scope;
  return scope != nullptr ? (unsigned long)scope : (unsigned long)depth_scope_stack + 1;
}

void install_symbol_message_hooks()
{
  error_hooks.symbol_kind_word = symbol_kind_word;
  error_hooks.form_symbol = form_symbol;
  error_hooks.symbol_position = symbol_position;
  error_hooks.symbol_translation_unit = symbol_translation_unit;
  error_hooks.count_contexts = count_contexts;
  error_hooks.get_context = get_context;
  error_hooks.curr_scope_identity = curr_scope_identity;
}
