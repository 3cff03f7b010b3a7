// c_gen_decls.cpp - variables, routines, parameter lists and pragmas of the generated C.
// Entry: write_variable, write_routine, write_prototype, write_associated_pragmas.
#include "backend/c_gen_private.h"
#include "lower/lower_class.h"
#include "lex/pragma.h"
#include "parse/scope_stk.h"

a_scope *current_scope;

// --- Pragmas -------------------------------------------------------------------------------------

static void write_entity_of_pragma(const a_pragma *pragma)
{
  if (!pragma->names_entity) return;
  a_source_correspondence *corresp =
      source_corresp_for_il_entry(pragma->entity, pragma->entity_kind);
  write_entity_name(corresp, pragma->entity_kind);
}

// What the source said, with the entity's name as it is in this file.
static void write_scanned_operands(const a_pragma *pragma)
{
  const char *text = pragma->text;
  if (*text != '(' && *text != '\0') put_char(' ');
  if (!pragma->names_entity) {
    put_no_wrap(text);
    return;
  }
  for (uint32_t i = 0; i < pragma->operand_at; i++)
    put_char(text[i]);
  write_entity_of_pragma(pragma);
  put_no_wrap(text + pragma->operand_at + pragma->operand_length);
}

// One that comes from elsewhere, or whose operands had to be computed.
static void write_arguments(const a_pragma *pragma)
{
  // The argument of these is the name itself.
  bool only_name = pragma->kind == pragk_noinit || pragma->kind == pragk_persistent;
  int count = pragma->arguments == nullptr || only_name ? 0 : pragma->arguments->count;
  put_char('(');
  write_entity_of_pragma(pragma);
  for (int i = 0; i < count; i++) {
    if (i > 0 || pragma->names_entity) put_no_wrap(", ");
    put_no_wrap(pragma->arguments->args[i]);
  }
  put_char(')');
}

static void write_pragma_line(const a_pragma *pragma)
{
  unsigned saved_indent = indent;
  indent = 0;
  no_wrap_depth++;
  put_no_wrap("#pragma ");
  put_no_wrap(pragma_ids[pragma->kind]);
  if (pragma->text != nullptr)
    write_scanned_operands(pragma);
  else
    write_arguments(pragma);
  no_wrap_depth--;
  indent = saved_indent;
  end_line();
}

void write_pragma(const a_pragma *pragma)
{
  // The STDC pragmas go with routines; one that keeps no operands was handled in full.
  bool is_handled = pragma->text == nullptr && pragma->arguments == nullptr;
  if (pragma->kind == pragk_stdc || is_handled) return;
  end_line();
  unsigned saved_indent = indent;
  indent = 0;
  write_position(pragma->position);
  indent = saved_indent;
  if (out->column != 0) end_line();
  if (pragma->comment_form) {
    open_comment();
    put_no_wrap(pragma->text);
    close_comment();
    end_line();
  } else {
    write_pragma_line(pragma);
  }
}

static void write_pragmas_for(const a_pragma *list, const void *entity)
{
  for (const a_pragma *pragma = list; pragma != nullptr; pragma = pragma->next)
    if (pragma->entity == entity) write_pragma(pragma);
}

void write_associated_pragmas(const void *entity, const a_source_correspondence *corresp)
{
  if (!corresp->assoc_pragmas_present) return;
  if (current_scope != nullptr && current_scope != il_header.primary_scope)
    write_pragmas_for(current_scope->pragmas, entity);
  write_pragmas_for(il_header.primary_scope->pragmas, entity);
}

void write_unbound_pragmas(const a_scope *scope)
{
  for (const a_pragma *pragma = scope->pragmas; pragma != nullptr; pragma = pragma->next)
    if (pragma->entity == nullptr && !pragma->is_bound) write_pragma(pragma);
}

// --- Storage classes -----------------------------------------------------------------------------

void write_storage_class(a_storage_class storage_class)
{
  switch (storage_class) {
  case sc_extern: put_str("extern "); return;
  case sc_static: put_str("static "); return;
  case sc_auto: put_str("auto "); return;
  case sc_unspecified: return;
  case sc_typedef: put_str("typedef "); return;
  case sc_register: put_str("register "); return;
  }
}

// A register variable that can't be in a register keeps the word as a comment.
static void write_register_word(const a_variable *variable)
{
  a_type *type = skip_typerefs(variable->type);
  bool is_aggregate = kind_has_class_part(type->kind) || type->kind == tk_array;
  if (is_aggregate || variable->address_taken)
    put_str("/* register */ ");
  else
    put_str("register ");
}

static void write_comdat_group(const char *name)
{
  put_str(" __attribute__((__weak__))");
  open_comment();
  put_str(" COMDAT group: ");
  put_str(name);
  put_char(' ');
  close_comment();
  put_char(' ');
}

// --- Variables -----------------------------------------------------------------------------------

static bool is_automatic(const a_variable *variable)
{
  return variable->storage_class == sc_auto || variable->storage_class == sc_register;
}

static bool is_bound_to_register(const a_variable *variable)
{
  return !variable->asm_name_is_text;
}

// The constant with which the variable is written, or null.
static a_constant *initial_constant(a_variable *variable, an_init_kind *kind)
{
  a_constant *constant;
  a_dynamic_init *dynamic_init;
  get_variable_initializer(variable, current_scope, kind, &constant, &dynamic_init);
  if (*kind == initk_static) return constant;
  if (*kind == initk_dynamic && dynamic_init->kind == dik_expression &&
      expr_of(dynamic_init)->kind == enk_constant && !is_automatic(variable))
    return constant_of(expr_of(dynamic_init));
  return nullptr;
}

static void write_variable_class(const a_variable *variable, bool only_declares)
{
  if (is_bound_to_register(variable)) {
    put_str("register ");
  } else if (variable->storage_class == sc_register) {
    write_register_word(variable);
  } else if (variable->storage_class == sc_unspecified && only_declares) {
    write_storage_class(sc_extern);
  } else {
    write_storage_class(variable->storage_class);
  }
}

static bool open_variable_protection(const a_variable *variable)
{
  const a_source_correspondence *corresp = &variable->source_corresp;
  // Automatic variables cost nothing, and a name that links modules is always shown.
  if (is_automatic(variable)) return false;
  if (variable->storage_class == sc_extern && corresp->name != nullptr &&
      strcmp(corresp->name, "__link") == 0)
    return false;
  return open_protection(corresp);
}

static void write_zero_initializer(a_type *type)
{
  type = skip_typerefs(type);
  bool is_aggregate = kind_has_class_part(type->kind) || type->kind == tk_array;
  put_str(is_aggregate ? (size_of_type(type) == 0 ? " = {}" : " = {0}") : " = 0");
}

static void write_variable_text(a_variable *variable, bool only_declares, bool has_initializer)
{
  write_variable_class(variable, only_declares);
  if (variable->in_comdat_group && variable->comdat_group_name != nullptr)
    write_comdat_group(variable->comdat_group_name);
  if (variable->is_thread_local) put_str("__thread ");
  a_type *type = variable->type;
  // What is assigned to by the statement of its initialization can't be const.
  if (is_automatic(variable) && !has_initializer) type = assignable_type(type);
  write_declarator(type, &variable->source_corresp, iek_variable, false);
  if (is_bound_to_register(variable))
    form_var_reg_name(variable->register_number, &control);
  else if (variable->asm_name != nullptr)
    form_asm_name(variable->asm_name, &control);
  form_variable_attributes(variable, &control);
}

void write_variable(a_variable *variable, bool declare, bool initialize)
{
  an_init_kind kind;
  a_constant *constant = initial_constant(variable, &kind);
  bool has_initializer = constant != nullptr || kind == initk_zero;
  bool initializes = initialize && has_initializer;
  if ((!declare && !initializes) || variable->is_left_out) return;
  if (openmp_mode_device && current_scope == il_header.primary_scope &&
      !variable->is_device_variable)
    return;
  // A thread-local or register variable has one text: it can't be declared before.
  if (declare && !initialize && has_initializer && variable->is_thread_local &&
      variable->storage_class == sc_static)
    return;
  bool is_protected = open_variable_protection(variable);
  if (!is_protected) write_needed_classes(variable->type);
  if (initializes && constant != nullptr && current_scope == il_header.primary_scope)
    write_string_arrays(constant);
  if (declare) write_associated_pragmas(variable, &variable->source_corresp);
  write_position(variable->source_corresp.decl_position);
  write_variable_text(variable, has_initializer && !initialize, has_initializer);
  if (initializes) {
    if (constant != nullptr) {
      put_str(" = ");
      write_initializer(variable, constant);
    } else {
      write_zero_initializer(variable->type);
    }
  }
  put_char(';');
  close_protection(is_protected);
}

// --- Parameters ----------------------------------------------------------------------------------

static void write_named_parameter(a_variable *parameter)
{
  if (parameter->storage_class == sc_register) write_register_word(parameter);
  a_type *type =
      parameter->is_by_reference ? make_pointer_type(parameter->type) : parameter->type;
  write_declarator(type, &parameter->source_corresp, iek_variable, false);
  if (!parameter->asm_name_is_text) form_var_reg_name(parameter->register_number, &control);
}

static void write_parameter_type(a_param_type *param)
{
  bool by_address = class_is_passed_by_address(param->type);
  a_type *type = by_address ? make_pointer_type(param->type) : param->type;
  form_type_first_part(type, false, false, param->qualifiers, 0, &control);
  form_type_second_part(type, false, 0, &control);
}

void write_prototype(a_type *routine_type, a_variable *named_parameters)
{
  a_routine_type_supplement *supplement = routine_supplement_of(routine_type);
  a_func_prototype_stack_entry entry;
  push_function_prototype(routine_type, &entry, &control);
  bool saved = control.in_prototype;
  control.in_prototype = true;
  put_char('(');
  if (supplement->is_prototyped) {
    a_variable *variable = named_parameters;
    for (a_param_type *param = supplement->param_types; param != nullptr; param = param->next) {
      if (variable != nullptr) {
        write_named_parameter(variable);
        variable = variable->next;
      } else {
        write_parameter_type(param);
      }
      if (param->next != nullptr) put_str(", ");
    }
    if (supplement->has_ellipsis)
      put_str(supplement->param_types != nullptr ? ", ..." : "...");
    else if (supplement->param_types == nullptr)
      put_str("void");
  }
  put_char(')');
  control.in_prototype = saved;
  pop_function_prototype(&control);
}

static void write_identifier_list(a_variable *parameters)
{
  put_char('(');
  for (a_variable *parameter = parameters; parameter != nullptr; parameter = parameter->next) {
    write_name(parameter);
    if (parameter->next != nullptr) put_str(", ");
  }
  put_char(')');
}

// The plain ones come first: bounds of the others may name them, whatever their order in the list.
static void write_old_style_parameters_of_kind(a_variable *parameters, bool variably_modified)
{
  for (a_variable *parameter = parameters; parameter != nullptr; parameter = parameter->next) {
    if (is_variably_modified_type(parameter->type) != variably_modified) continue;
    write_position(parameter->source_corresp.decl_position);
    write_named_parameter(parameter);
    form_variable_attributes(parameter, &control);
    put_char(';');
  }
}

static void write_old_style_parameters(a_variable *parameters)
{
  bool saved = control.in_prototype;
  write_old_style_parameters_of_kind(parameters, false);
  control.in_prototype =
      true; // bounds as they were declared: what they are stored in isn't known yet
  if (il_header.vla_used) write_old_style_parameters_of_kind(parameters, true);
  control.in_prototype = saved;
}

// --- Routines ------------------------------------------------------------------------------------

static a_scope *body_scope_of(const a_routine *routine)
{
  // What is another's alias has no body but the other's.
  if (!routine->is_defined || routine->alias_target != nullptr) return nullptr;
  a_scope *scope = scope_for_routine(routine);
  return scope != nullptr && scope->assoc_block != nullptr ? scope : nullptr;
}

// What the C compiler knows by itself can't be declared.
static bool is_known_to_compiler(const a_routine *routine)
{
  const char *name = routine->source_corresp.name;
  if (name == nullptr) return false;
  if (strncmp(name, "__builtin_", 10) == 0 || strncmp(name, "__sync_", 7) == 0) return true;
  // A call without declaration means the same there, and may name a function that is built in.
  return routine->is_implicitly_declared && !routine->is_defined &&
         !routine_supplement_of(skip_typerefs(routine->type))->is_prototyped;
}

static void write_routine_class(const a_routine *routine)
{
  // The text is compiled by the GNU C89 rule: only `extern inline` makes no external definition.
  bool only_inline = routine->is_inline && routine->inline_definition_only;
  write_storage_class(only_inline ? sc_extern : routine->storage_class);
  bool in_comdat = routine->in_comdat_group && routine->comdat_group_name != nullptr;
  if (in_comdat) write_comdat_group(routine->comdat_group_name);
  if (routine->is_inline && !in_comdat && !il_header.is_old_c_dialect) put_str("__inline__ ");
}

static bool is_static_initialization_routine(const a_routine *routine)
{
  const char *name = routine->source_corresp.name;
  return name != nullptr && strncmp(name, "__sti__", 7) == 0;
}

static void write_routine_declaration(a_routine *routine)
{
  write_routine_class(routine);
  write_declarator(routine->type, &routine->source_corresp, iek_routine, false);
  if (routine->asm_name != nullptr) form_asm_name(routine->asm_name, &control);
  form_routine_attributes(routine, &control);
  if (is_static_initialization_routine(routine)) put_str(" __attribute__((__constructor__))");
  put_char(';');
}

static void write_routine_definition(a_routine *routine, a_scope *scope)
{
  a_type *type = skip_typerefs(routine->type);
  a_type *return_type = as_routine(type).return_type;
  bool is_prototyped =
      routine_supplement_of(type)->is_prototyped && !routine->has_old_style_definition;
  // GNU: the attribute stands on all declarations or on none.
  if (routine->gnu_inline) put_str("__attribute__((__gnu_inline__)) ");
  write_routine_class(routine);
  // Attributes can't stand behind the declarator of a definition.
  if (form_routine_attributes(routine, &control)) put_char(' ');
  form_type_first_part(return_type, false, false, 0, 0, &control);
  put_blank_after_word();
  write_name(routine);
  if (is_prototyped)
    write_prototype(type, scope->parameters);
  else
    write_identifier_list(scope->parameters);
  form_type_second_part(return_type, false, 0, &control);
  if (!is_prototyped) write_old_style_parameters(scope->parameters);
  write_statement(scope->assoc_block);
}

// Settings of the STDC pragmas that were written last at file level.
static unsigned char written_stdc_states[3];

void reset_stdc_states()
{
  for (unsigned char &state : written_stdc_states)
    state = sps_default;
}

static void write_stdc_pragmas(const a_routine *routine)
{
  static const char *const settings[] = {nullptr, "OFF", "ON", "DEFAULT"};
  const struct {
    const char *name;
    unsigned char state;
  } rows[3] = {{"STDC FP_CONTRACT ", routine->fp_contract_state},
               {"STDC FENV_ACCESS ", routine->fenv_access_state},
               {"STDC CX_LIMITED_RANGE ", routine->cx_limited_range_state}};
  for (int i = 0; i < 3; i++) {
    if (rows[i].state == sps_none || rows[i].state == written_stdc_states[i]) continue;
    written_stdc_states[i] = rows[i].state;
    end_line();
    put_no_wrap("#pragma ");
    put_no_wrap(rows[i].name);
    put_no_wrap(settings[rows[i].state]);
    end_line();
  }
}

static void write_string_arrays_of_scope(a_scope *scope)
{
  for (a_variable *variable = scope->variables; variable != nullptr; variable = variable->next) {
    an_init_kind kind;
    if (a_constant *constant = initial_constant(variable, &kind)) write_string_arrays(constant);
  }
  for (a_variable *variable = scope->local_variables; variable != nullptr;
       variable = variable->next) {
    an_init_kind kind;
    if (a_constant *constant = initial_constant(variable, &kind)) write_string_arrays(constant);
  }
  for (a_scope *inner = scope->subscopes; inner != nullptr; inner = inner->next)
    write_string_arrays_of_scope(inner);
}

void write_routine(a_routine *routine, bool definition)
{
  a_scope *scope = body_scope_of(routine);
  if (openmp_mode_device && !routine->is_device_routine) return;
  if (routine->is_left_out || is_known_to_compiler(routine)) return;
  if (definition && scope == nullptr) return;
  bool is_protected = open_protection(&routine->source_corresp);
  a_scope *saved_scope = current_scope, *saved_function = innermost_function_scope;
  if (definition) {
    current_scope = scope;
    innermost_function_scope = scope;
    write_stdc_pragmas(routine);
    write_string_arrays_of_scope(scope);
    write_string_arrays_of_statement(scope->assoc_block);
    for (a_variable *parameter = scope->parameters; parameter != nullptr;
         parameter = parameter->next)
      write_needed_classes(parameter->type);
    write_needed_classes(as_routine(skip_typerefs(routine->type)).return_type);
  } else {
    write_associated_pragmas(routine, &routine->source_corresp);
  }
  write_position(routine->source_corresp.decl_position);
  if (definition) {
    write_routine_definition(routine, scope);
    end_line();
  } else {
    write_routine_declaration(routine);
  }
  current_scope = saved_scope;
  innermost_function_scope = saved_function;
  close_protection(is_protected);
}
