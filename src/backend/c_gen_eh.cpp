// c_gen_eh.cpp - exception tables and exception specifications in the generated C.
// Rule:  both stand in disabled text: the next stage of the tool chain reads them by itself.
#include "backend/c_gen_private.h"

void write_exception_table(a_routine *)
{
  // No routine has a table while none is lowered from C++.
  end_line();
}

static void write_listed_types(const an_exception_specification *specification)
{
  for (const an_exception_specification_type *entry = specification->first_type; entry != nullptr;
       entry = entry->next) {
    if (entry->type->typeinfo_var != nullptr) write_name(entry->type->typeinfo_var);
    put_no_wrap("<");
    write_type(entry->type);
    put_no_wrap(">, ");
  }
}

void write_function_espec(a_routine *routine)
{
  a_type *type = skip_typerefs(routine->type);
  if (!exceptions_enabled || il_header.source_language == 1 ||
      !routine_supplement_of(type)->is_prototyped)
    return;
  bool c_linkage = routine->source_corresp.name_linkage == nlk_c;
  write_directive_line("#if 0");
  no_wrap_depth++;
  put_no_wrap("#pragma FUNC_ESPEC(");
  write_name(routine);
  put_no_wrap("): ");
  const char *language = c_linkage ? " extern \"C\" function */" : " C++ function */";
  if (const an_exception_specification *listed =
          routine_supplement_of(type)->exception_specification) {
    if (listed->first_type != nullptr) {
      put_no_wrap("[0]Restricted [1]Checked /* throw from a list */ ");
      write_listed_types(listed);
    } else {
      put_no_wrap("[0]Restricted [1]Checked /* no throw */");
    }
    put_no_wrap(" /*");
    put_no_wrap(language);
  } else {
    put_no_wrap(!c_linkage           ? "[0]Non-restricted [1]Non-checked /* C++ function */"
                : extern_c_can_throw ? "[0]Non-restricted [1]Non-checked /* C++ function */"
                                     : "[0]Restricted [1]Non-checked /* extern \"C\" function */");
  }
  no_wrap_depth--;
  write_directive_line("#endif");
  forget_position();
}
