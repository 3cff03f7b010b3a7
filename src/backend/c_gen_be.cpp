// c_gen_be.cpp - the generated C file: its name, its order, the files of instantiations.
// Rule:  everything is declared before its use: types in two passes, then routines, variables,
//        initializers, bodies.
// Entry: back_end.
#include <cctype>
#include <cstring>
#include <sys/stat.h>
#include "backend/c_gen_be.h"
#include "backend/c_gen_private.h"
#include "driver/host_envir.h"
#include "driver/target.h"
#include "errors/error.h"
#include "lex/source_input.h"
#include "mem/mem_manage.h"
#include "parse/scope_stk.h"

bool memory_routines_are_redefined;

static an_output_stream main_stream;

// --- Head of the file ----------------------------------------------------------------------------

// The name may hold what would end the comment: a blank parts it.
static void put_file_name_in_comment(const char *name)
{
  for (; *name != '\0'; name++) {
    char text[3] = {*name, *name == '*' && name[1] == '/' ? ' ' : '\0', '\0'};
    put_no_wrap(text);
  }
}

static void write_source_file_tree(const a_source_file *file, unsigned depth)
{
  for (; file != nullptr; file = file->next_sibling) {
    char text[160];
    for (unsigned i = 0; i < depth; i++)
      put_no_wrap("  ");
    put_file_name_in_comment(format_file_name(file->file_name));
    snprintf(text, sizeof text, " (from line number %lu, sequence numbers %lu-%lu%s)\n",
             file->first_line_number, (unsigned long)file->first_seq_number,
             (unsigned long)file->last_seq_number, "");
    put_no_wrap(text);
    write_source_file_tree(file->first_child, depth + 1);
  }
}

// The variable that marks which front end wrote the file.
static void write_version_variable()
{
  put_no_wrap("int __ZOKCPFE__");
  for (const char *at = il_header.version_string; at != nullptr && *at != '\0'; at++) {
    char text[2] = {isalnum(static_cast<unsigned char>(*at)) ? *at : '_', '\0'};
    put_no_wrap(text);
  }
  put_no_wrap(";\n");
}

static void write_banner()
{
  char text[256];
  const char *version = il_header.version_string != nullptr ? il_header.version_string : "";
  const char *date = il_header.compilation_date != nullptr ? il_header.compilation_date : "";
  snprintf(text, sizeof text, "/* Translated by the Zokara C++/C front end (version %s) */\n",
           version);
  put_no_wrap(text);
  snprintf(text, sizeof text, "/* %.24s */\n", date);
  put_no_wrap(text);
  put_no_wrap("/* Source file information:\n");
  write_source_file_tree(il_header.source_files, 0);
  put_no_wrap("*/\n");
  if (needed_flag_bit_number != 0) {
    snprintf(text, sizeof text, "/* Instantiation number = %lu */\n",
             (unsigned long)needed_flag_bit_number);
    put_no_wrap(text);
  }
  write_version_variable();
  if (!openmp_mode_host && !memory_routines_are_redefined)
    put_no_wrap("void *memcpy(); void *memset();\n");
  out->column = 0;
}

// --- Parts of the file scope ---------------------------------------------------------------------

static void write_named_constants()
{
  for (a_constant *constant = il_header.primary_scope->constants; constant != nullptr;
       constant = constant->next) {
    a_source_correspondence *corresp = &constant->source_corresp;
    if (corresp->name == nullptr || constant->kind != ck_integer) continue;
    write_associated_pragmas(constant, corresp);
    write_position(corresp->decl_position);
    put_str("enum {");
    write_entity_name(corresp, iek_constant);
    put_str(" = ");
    form_integer_constant(constant, true, false, &control);
    put_str("};");
  }
}

static bool is_before(a_source_position a, a_source_position b)
{
  return a.seq != b.seq ? a.seq < b.seq : a.column < b.column;
}

static void write_file_scope_asm(const an_asm_entry *entry)
{
  write_associated_pragmas(entry, &entry->source_corresp);
  write_position(entry->source_corresp.decl_position);
  write_asm(entry);
}

static void declare_variables(a_variable *list, const an_asm_entry **asm_entry)
{
  for (a_variable *variable = list; variable != nullptr; variable = variable->next) {
    while (*asm_entry != nullptr && is_before((*asm_entry)->source_corresp.decl_position,
                                              variable->source_corresp.decl_position)) {
      write_file_scope_asm(*asm_entry);
      *asm_entry = (*asm_entry)->next;
    }
    write_variable(variable, true, false);
  }
}

static void initialize_variables(a_variable *list)
{
  for (a_variable *variable = list; variable != nullptr; variable = variable->next)
    write_variable(variable, false, true);
}

static void write_variables(a_scope *scope)
{
  const an_asm_entry *asm_entry = scope->asm_entries;
  declare_variables(scope->variables, &asm_entry);
  declare_variables(scope->local_variables, &asm_entry);
  for (; asm_entry != nullptr; asm_entry = asm_entry->next)
    write_file_scope_asm(asm_entry);
  initialize_variables(scope->variables);
  initialize_variables(scope->local_variables);
}

static void write_routine_bodies(a_scope *scope)
{
  for (a_routine *routine = scope->routines; routine != nullptr; routine = routine->next) {
    write_exception_table(routine);
    write_function_espec(routine);
    write_routine(routine, true);
  }
}

// True if the unit declares the routine otherwise than the text at the head of the file does.
static bool contradicts_library(const a_routine *routine)
{
  a_type *type = skip_typerefs(routine->type);
  a_type *result = skip_typerefs(as_routine(type).return_type);
  if (routine->storage_class == sc_static || result->kind != tk_pointer ||
      !is_void_type(as_pointer(result).pointed_to_type))
    return true;
  if (!routine_supplement_of(type)->is_prototyped) return false;
  int number = 0;
  for (a_param_type *param = param_types_of(type); param != nullptr;
       param = param->next, number++) {
    a_type *param_type = skip_typerefs(param->type);
    if (number == 2 &&
        (param_type->kind != tk_integer || as_integer(param_type).int_kind != targ_size_t_int_kind))
      return true;
  }
  return number != 3;
}

static bool has_own_memory_routines(const a_scope *scope)
{
  for (const a_routine *routine = scope->routines; routine != nullptr; routine = routine->next) {
    const char *name = routine->source_corresp.name;
    if (name == nullptr || name[0] != 'm') continue;
    if ((strcmp(name, "memcpy") == 0 || strcmp(name, "memset") == 0) &&
        contradicts_library(routine))
      return true;
  }
  return false;
}

static void write_file_scope()
{
  a_scope *scope = il_header.primary_scope;
  current_scope = scope;
  primary_file = eff_primary_source_file();
  primary_line = 1;
  write_line_directive(primary_file, primary_line);
  write_unbound_pragmas(scope);
  write_named_constants();
  reset_type_marks();
  write_all_types(1);
  write_all_types(2);
  for (a_routine *routine = scope->routines; routine != nullptr; routine = routine->next)
    write_routine(routine, false);
  write_variables(scope);
  write_routine_bodies(scope);
  end_line();
}

// --- Files ---------------------------------------------------------------------------------------

static void reset_writer()
{
  comment_depth = 0;
  no_wrap_depth = 0;
  indent = 0;
  primary_file = nullptr;
  primary_line = 1;
  current_scope = nullptr;
  reset_stdc_states();
  error_position = null_source_position;
  innermost_function_scope = nullptr;
  memory_routines_are_redefined = has_own_memory_routines(il_header.primary_scope);
}

// Null: the standard output stream.
static void write_generated_file(const char *name)
{
  FILE *file = stdout;
  if (name != nullptr)
    file = open_output_file_with_error_handling(name, false, false, 0, ec_file_kind_generated_c);
  open_output_stream(&main_stream, file);
  out = &main_stream;
  write_banner();
  write_file_scope();
  flush_output_stream(&main_stream);
  out = nullptr;
  if (name != nullptr)
    close_output_file_with_error_handling(&file, ec_file_kind_generated_c);
  else
    fflush(stdout);
}

// The option's name, or the primary source's with another suffix; null for the standard streams.
static const char *generated_file_name()
{
  if (gen_c_file_name != nullptr) return gen_c_file_name;
  if (strcmp(primary_source_file_name, "-") == 0) return nullptr;
  a_text_buffer *buffer = alloc_text_buffer(strlen(primary_source_file_name) + 16);
  add_to_text_buffer(buffer, primary_source_file_name, strlen(primary_source_file_name) + 1);
  replace_file_name_suffix(openmp_mode_device ? ".omp.c" : ".int.c", buffer);
  return buffer->buffer;
}

void delete_stale_generated_file()
{
  const char *name = primary_source_file_name == nullptr ? nullptr : generated_file_name();
  struct stat status;
  if (name == nullptr || lstat(name, &status) != 0 || !S_ISREG(status.st_mode)) return;
  if (okay_as_output_file(name)) delete_file(name);
}

void back_end()
{
  int saved_region = curr_il_region_number;
  switch_il_region(file_scope_region_number);
  set_up_control_block();
  reset_writer();
  needed_flag_bit_number = il_header.instantiation_dir_name != nullptr ? 1 : 0;
  write_generated_file(generated_file_name());
  switch_il_region(saved_region);
}
