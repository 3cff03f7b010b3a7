// lower_il.cpp - lowering of one region: who does it, and the state of the pass.
// Owns:    il_lowering_underway and the pass's switches.
// Entry:   lower_il_memory_region, il_lower_trans_unit_init.
#include "lower/lower_il.h"

#include "driver/flags.h"
#include "driver/target.h"
#include "driver/trans_unit.h"
#include "errors/error.h"
#include "il/il_to_str.h"
#include "lower/lower_c99.h"
#include "lower/lower_class.h"
#include "lower/lower_cplusplus.h"
#include "lower/lower_init.h"

bool il_lowering_underway;
bool lowering_file_scope;
bool typeinfo_uncoupled_when_vtable_is_optional = true;

bool il_lowering_needed()
{
  return C_dialect == 2 && !suppress_il_lowering && total_errors == 0;
}

// OpenMP follows either path for the same region.
static void (*lower_omp_region_hook)(int region);

static void lower_openmp_in_region(int region)
{
  if (lower_omp_region_hook != nullptr && total_errors == 0) lower_omp_region_hook(region);
}

void lower_il_memory_region(int region)
{
  if (il_lowering_needed()) {
    lower_cplusplus_il_memory_region(region);
  } else if (c99_il_lowering_needed()) {
    lower_c99_il_memory_region(region);
  }
  lower_openmp_in_region(region);
  if (region == file_scope_region_number) il_header.il_is_lowered = true;
}

// --- Statements and expressions that C and C++ enter by the same names ---------------------------

void lower_full_expr(an_expr_node *expr, a_statement *)
{
  lower_c99_full_expr(expr);
}

void lower_expr_full(an_expr_node *expr, bool)
{
  lower_c99_expr(expr);
}

void lower_statement(a_statement *statement)
{
  lower_c99_statement(statement);
}

void lower_constant(a_constant *constant)
{
  lower_c99_constant(constant);
}

void lower_asm_statement(a_statement *statement)
{
  for (an_asm_operand *operand = asm_entry_of(statement)->operands; operand != nullptr;
       operand = operand->next) {
    lower_full_expr(operand->expr, statement);
  }
}

// --- Names ---------------------------------------------------------------------------------------

static const char *name_without_backslashes(const char *name)
{
  if (name == nullptr || strchr(name, '\\') == nullptr) return name;
  size_t length = strlen(name);
  char *copy = alloc_lowered_name_string(length + 1);
  for (size_t i = 0; i <= length; i++)
    copy[i] = name[i] == '\\' ? '_' : name[i];
  return copy;
}

void rewrite_ucns_in_name(a_source_correspondence *corresp)
{
  if (!il_header.canonical_ids_used) return;
  bool is_same = corresp->name == corresp->internal_name;
  corresp->name = name_without_backslashes(corresp->name);
  corresp->internal_name =
      is_same ? corresp->name : name_without_backslashes(corresp->internal_name);
}

char *alloc_lowered_name_string(size_t length)
{
  return (char *)alloc_il(length);
}

// --- Made entities -------------------------------------------------------------------------------

a_type *make_lowered_class_type(a_type_kind kind)
{
  a_type *type = alloc_type(kind);
  type->source_corresp.is_compiler_generated_name = true;
  as_class(type).has_body = true;
  return type;
}

a_field *make_lowered_field(const char *name, a_type *type, a_type *class_type, a_field *last_field)
{
  a_field *field = alloc_field();
  field->type = type;
  field->is_compiler_generated = true;
  field->source_corresp.name = name;
  if (last_field == nullptr) {
    as_class(class_type).first_field = field;
  } else {
    last_field->next = field;
  }
  return field;
}

a_variable *make_lowered_variable(const char *name, bool name_is_allocated, a_type *type,
                                  a_storage_class storage_class)
{
  a_variable *variable = make_variable(type, storage_class, true);
  if (!name_is_allocated) name = copy_string_to_region(true, name);
  assign_internal_name(&variable->source_corresp, name);
  variable->source_corresp.is_nameless = false;
  return variable;
}

unsigned vtbl_entry_size()
{
  return (unsigned)size_of_type(integer_type(ik_int));
}

// --- Initialization ------------------------------------------------------------------------------

void il_lower_init()
{
  typeinfo_uncoupled_when_vtable_is_optional = true;
  perform_type_list_ordering = true;
  lowering_normalizes_boolean_controlling_expressions = true;
}

void il_lower_one_time_init()
{
  ptr_to_member_text_hook = lowered_ptr_to_member_type;
  il_lowering_underway = false;
}

void il_lower_trans_unit_init()
{
  lowering_file_scope = false;
  curr_context = nullptr;
  return_value_pointer_variable = nullptr;
  clear_lowered_runtime_routines();
  clear_runtime_routines();
  clear_static_init_entities();
  clear_mptr_type();
}
