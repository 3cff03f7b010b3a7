// qn_pragma.h - pragmas of the target: what they say of symbols and loops, checked and carried on to the
// generated file.
#pragma once
#include <cstdint>

#include "il/il_fwd.h"
#include "lex/source_position.h"

// The scope in which the pragma stands ends: looks up the symbol that it names and applies it, or reports
// at the pragma why it has no effect (818 to 860, 1111, 1112, 1507, 1508, 1515, 1516, 1523).
void process_c_pragma(a_pending_pragma *pragma);

// Shared with the attributes of the same names: they check the symbol and its value, set what the entity
// keeps, and make the IL record.  Each reports at pragma->position; false if the pragma has no effect.
bool pragma_interrupt_backend(a_pending_pragma *pragma, a_symbol *symbol);
bool pragma_noinit_persistent_backend(a_pending_pragma *pragma, a_symbol *symbol,
                                      bool from_attribute);
bool pragma_location_backend(a_pending_pragma *pragma, a_symbol *symbol, const a_constant *address,
                             bool from_attribute);

// A pragma that stood nowhere in the source, at file scope and bound to nothing, with one argument.
// `kind` is an a_pragma_kind_tag; the text is copied.
void issue_simple_pragma(unsigned char kind, const char *text);
// Makes the record of a pragma for what keywords said of the symbol; `modifiers` are a_decl_modifier bits,
// of which interrupt, near and far have a pragma.
void issue_modifier_pragmas(a_symbol *symbol, uint32_t modifiers);
// A pending pragma for an attribute, to be freed by the caller (free_pending_pragma).
a_pending_pragma *pragma_for_attribute(unsigned char kind, const a_source_position *position);
