// symbol_ref.h - declarations and references: the marks on symbols and entities, the cross-reference
// listing, and the uses that are reported where they happen (used before set, deprecated, deleted).
// The bits of a reference are a_ref_kind of exprutil.h, those of a declaration rdf_ of decls.h.
#pragma once
#include <cstdint>

#include "il/il_fwd.h"
#include "lex/source_position.h"
#include "parse/symbol_tbl.h"

// The first declaration sets the position, in the entity too, and attaches the supplement.
void record_symbol_declaration(uint32_t flags, a_symbol *symbol, const a_source_position *position,
                               a_decl_position_supplement *supplement);

// Records a use: marks symbol and entity as referenced, tells a variable's reads and writes apart,
// warns about a value used before it is set (used_before_set), writes the cross reference.  Does
// nothing where the scope stack's suppress_references is set.  `is_evaluated` is false in an operand
// that is never evaluated (sizeof): the entity is then referenced but not needed.
void record_symbol_reference_full(unsigned ref_kind, a_symbol *symbol,
                                  const a_source_position *position, bool is_evaluated,
                                  bool update_needed);
// The same with the entity needed.
void record_symbol_reference(unsigned ref_kind, a_symbol *symbol, const a_source_position *position,
                             bool is_evaluated = true);

void mark_variable_value_set(a_symbol *symbol);
void mark_routine_referenced_full(a_routine *routine, bool is_evaluated);
void mark_routine_referenced(a_routine *routine);
void mark_variable_referenced(a_variable *variable);

// A name that lookup could not resolve was used: one message per name and function
// (undefined_identifier), recorded as error in the cross reference.
void reference_to_invalid_name(a_symbol_locator *locator, a_source_position *position);
// Issues deleted_function_used; returns true when the routine is deleted.
bool check_use_of_deleted_function(a_routine *routine, a_source_position *position);
// Warns (deprecated_entity) when the entity carries the attribute.
void check_use_of_deprecated_entity(a_source_correspondence *corresp, an_il_entry_kind kind,
                                    a_source_position *position);

// Where control may come round again: a value read inside may have been set later in the text.
// Written by the statement scanner; a variable remembers the number in force at its declaration.
extern uint32_t curr_flow_context;

// Cross-reference listing, when f_xref_info is open.  `mark` is one letter: D definition,
// d declaration, M modification, A address taken, U read, C changed (read and written), R reference
// not further known, E error.
void write_xref_entry(char mark, a_symbol *symbol, const a_source_position *position);
