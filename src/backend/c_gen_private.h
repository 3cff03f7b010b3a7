// c_gen_private.h - what the files of the C writer share: state, output primitives, the writers of
// each kind.
#pragma once
#include <cstdio>
#include <cstring>
#include "driver/flags.h"
#include "il/il.h"
#include "il/il_to_str.h"
#include "il/il_walk.h"

struct a_pragma;

// --- Output (c_gen_out.cpp) ----------------------------------------------------------------------

// The generated file on its way.
struct an_output_stream {
  FILE *file;
  char *text;
  size_t used;
  size_t allocated;
  unsigned column;
  bool line_known; // what the reader of the text takes the position to be
  const a_source_file *source_file;
  unsigned long line;
};

// The writer's state; c_gen_out.cpp writes the first four.
extern an_output_stream *out; // current stream
extern unsigned comment_depth;
extern unsigned no_wrap_depth;            // above 0: lines are not broken
extern unsigned indent;                   // blanks behind a position change
extern const a_source_file *primary_file; // where a break goes if the position is not known
extern unsigned long primary_line;
extern a_scope *current_scope; // whose entities are being written
extern an_il_to_str_output_control_block control;
extern bool memory_routines_are_redefined; // the unit has its own static memcpy or memset

// A stream that was used before keeps its buffer.
void open_output_stream(an_output_stream *stream, FILE *file);
void flush_output_stream(an_output_stream *stream);

void put_text(const char *text, size_t length); // breaks the line in front if it gets too long
void put_str(const char *text);
void put_char(char c);
void put_no_wrap(const char *text);
void put_unsigned(unsigned long long number);
void put_signed(long long number);
// A blank if what stands in front ends in a character of a word.
void put_blank_after_word();
void open_comment();
void close_comment();
void end_line(); // of an open line
void write_position(a_source_position position);
void write_line_directive(const a_source_file *file, unsigned long line);
void forget_position(); // the line is not known from here on
// A line of its own at indent 0, such as "#if 0".
void write_directive_line(const char *text);
// "#if 0" and "#endif" around an entity that is not needed; open tells whether it was written.
bool open_protection(const a_source_correspondence *corresp);
void close_protection(bool was_opened);
bool is_needed(const a_source_correspondence *corresp);

// --- Names and types (c_gen_names.cpp, c_gen_types.cpp) ------------------------------------------

void set_up_control_block();
void write_entity_name(a_source_correspondence *corresp, an_il_entry_kind kind);
inline void write_name(a_variable *variable)
{
  write_entity_name(&variable->source_corresp, iek_variable);
}
inline void write_name(a_routine *routine)
{
  write_entity_name(&routine->source_corresp, iek_routine);
}
inline void write_name(a_field *field)
{
  write_entity_name(&field->source_corresp, iek_field);
}
inline void write_name(a_label *label)
{
  write_entity_name(&label->source_corresp, iek_label);
}
// A type or enumerator of a function gets a name that is unique at file level; once.
void rename_local_entity(a_source_correspondence *corresp, const a_routine *routine);
void write_type(a_type *type);
void write_cast(a_type *type);         // "(", the type, ")"
void write_pointer_cast(a_type *type); // a cast to a pointer to the type
// The type as it is without the qualifiers that would forbid an assignment.
a_type *assignable_type(a_type *type);
// The C compiler's own type for argument lists: by name, and anywhere below a type.
bool is_va_list_name(const char *name);
bool is_va_list_type(a_type *type);

void write_type_pass(a_type *type, int pass);
bool class_is_written(const a_type *type);
bool typedef_is_written(const a_type *type);
// Definitions that an object of the type needs.
void write_needed_classes(a_type *type);
// All types that the file declares at its level, in their order: the file scope's, those of
// prototypes and those of functions.
void write_all_types(int pass);
void reset_type_marks();
// A declarator: first part, name, second part.  A null field, variable or routine writes none.
void write_declarator(a_type *type, a_source_correspondence *corresp, an_il_entry_kind kind,
                      bool drop_qualifiers);

// --- Declarations (c_gen_decls.cpp) --------------------------------------------------------------

void write_variable(a_variable *variable, bool declare, bool initialize);
void write_routine(a_routine *routine, bool definition);
void write_prototype(a_type *routine_type, a_variable *named_parameters);
void write_storage_class(a_storage_class storage_class);
void write_associated_pragmas(const void *entity, const a_source_correspondence *corresp);
void write_pragma(const a_pragma *pragma);
// The settings of the STDC pragmas are those of the language again.
void reset_stdc_states();
void write_unbound_pragmas(const a_scope *scope);

// --- Initializers (c_gen_init.cpp) ---------------------------------------------------------------

void write_initializer(a_variable *variable, const a_constant *constant);
// The initialization of an automatic variable at the place of a stmk_init.
void write_local_initialization(a_variable *variable, a_dynamic_init *init);
bool constant_is_static(const a_constant *constant);
// Named arrays for the strings of wide characters in a constant or a statement.
void write_string_arrays(a_constant *constant);
void write_string_arrays_of_statement(a_statement *statement);
bool write_string_name(const a_constant *string, an_il_to_str_output_control_block *block);

// --- Statements and expressions (c_gen_stmts.cpp, c_gen_exprs.cpp) -------------------------------

void write_statement(a_statement *statement);
void write_block_body(a_statement *block);
void write_asm(const an_asm_entry *entry);
void write_exception_table(a_routine *routine);
void write_function_espec(a_routine *routine);
// `parenthesize`: an operator form gets parentheses.
void write_expression(an_expr_node *expr, bool parenthesize);
inline void write_operand(an_expr_node *expr)
{
  write_expression(expr, true);
}
void write_parenthesized(an_expr_node *expr);
// For places where a comma would end the expression.
void write_assignment_expression(an_expr_node *expr);
void write_constant(const a_constant *constant, bool in_context);
