// il_templates.h - records of classes, templates, attributes, pragmas, macros and lambdas.
// Included through il_entities.h.
#pragma once
#include <cstdint>

#include "il/il_corresp.h"
#include "mem/check.h"

// --- Classes -------------------------------------------------------------------------------------

struct a_derivation_step {
  a_derivation_step *next;
  a_base_class *base;                  // a direct base of the class that the path has reached
};

struct a_base_class_derivation {
  a_base_class_derivation *next;
  a_derivation_step *path;             // from the derived class to the base
  bool is_public_path : 1;
  bool is_preferred : 1;
  an_access_specifier access;
};

struct an_overriding_virtual_function {
  an_overriding_virtual_function *next;
  a_routine *overridden;
  a_routine *overrider;
  a_base_class *base_class;            // where the overrider stands; null: the complete class
  bool is_ambiguous : 1;
};

struct a_vcall_offset_entry {
  a_vcall_offset_entry *next;
  a_routine *routine;
  a_base_class *base_class;
  int64_t negative_index;
  bool in_virtual_base;
};

struct a_base_class {
  a_base_class *next;
  a_base_class *next_virtual_base;
  a_base_class *primary_of;            // the base that has this one as its primary base
  a_type *type;
  a_type *derived_class;
  a_source_position position;
  bool is_direct : 1;
  bool is_virtual : 1;
  bool is_ambiguous : 1;
  bool is_primary : 1;
  bool is_dependent : 1;
  bool is_empty : 1;
  bool layout_done : 1;
  uint16_t order;                      // of declaration, from 1; direct bases only
  uint64_t offset;
  a_base_class_derivation *derivations;
  an_overriding_virtual_function *overriders;
  a_field *base_field;                 // lowering: the field of the subobject
};

// --- Templates -----------------------------------------------------------------------------------

struct a_template_arg {
  a_template_arg *next;
  a_template_arg_kind kind;            // says which value holds
  bool is_integer_value : 1;
  bool is_explicit : 1;
  bool template_arg_checked : 1;
  bool is_pack_element : 1;
  bool deduced_from_pack : 1;
  union {
    a_type *type;
    a_constant *constant;
    int64_t integer;                   // with is_integer_value
    a_symbol *template_symbol;         // no IL pointer
  } variant;
  void *operand;                       // open non-type argument of the parser; no IL pointer
};

struct a_template_param {
  a_template_param *next;
  a_symbol *symbol;
  a_type *type;                        // entity of a type parameter
  a_constant *constant;                // entity of a non-type parameter
  a_template *template_template;       // entity of a template template parameter
  bool has_default : 1;
  bool default_needs_rescan : 1;
  bool default_scan_delayed : 1;
  bool is_pack : 1;
  bool type_is_dependent : 1;
  a_template_arg *default_value;
  void *decl_cache;                    // a_template_cache of the parser; no IL pointers
  void *default_cache;
};

struct a_template_decl {
  a_template_decl *next;               // next inner clause
  a_template_param *params;
  int scope_number;
};

struct a_template {
  a_source_correspondence source_corresp;
  a_template *next;
  a_template_kind kind;                // says which prototype holds
  bool is_exported : 1;
  bool is_variadic : 1;
  a_source_range decl_range;
  a_template_decl *declarations;
  union {
    a_type *class_type;
    a_routine *routine;
    a_variable *variable;
  } prototype;
};

// --- Attributes ----------------------------------------------------------------------------------

struct an_attribute_arg {
  an_attribute_arg *next;
  an_attribute_arg_kind kind;          // says which value holds
  union {
    const char *text;                  // tokens as text, or a name
    a_constant *constant;
    an_expr_node *expr;
    a_type *type;
  } variant;
  a_source_position position;
};

struct an_attribute_group {
  a_source_position start_position;
  a_source_position end_position;
};

struct an_attribute {
  an_attribute *next;
  unsigned char kind;                  // an_attribute_kind; 0 dropped, 1 empty slot
  an_attribute_syntax syntax;
  unsigned char location;              // an_attribute_location_tag
  bool is_shared : 1;
  bool is_type_attribute : 1;
  const char *name;
  const char *namespace_name;
  an_attribute_arg *args;
  an_attribute_group *group;
  a_source_position position;
  a_source_position end_position;
};

// --- Pragmas -------------------------------------------------------------------------------------

// What the operands of a target's pragma came to, the symbol that it names left out.
struct a_pragma_arguments {
  unsigned char kind;                  // a_pragma_kind_tag of the record
  int count;
  const char **args;
};

struct a_pragma {
  a_source_correspondence source_corresp;
  a_pragma *next;
  unsigned char kind;                  // a_pragma_kind_tag
  unsigned char stdc_pragma;           // STDC: which one
  unsigned char stdc_setting;          // an_stdc_pragma_state
  bool il_flag : 1;
  bool comment_form : 1;               // rendered as a comment
  bool is_bound : 1;
  bool names_entity : 1;               // its text is to name the entity, at operand_at
  an_il_entry_kind entity_kind;        // what it is attached to
  void *entity;
  const char *text;                    // behind the pragma's name; null: made of the arguments
  uint32_t operand_at;                 // where in text the entity's name stands,
  uint32_t operand_length;             // and its length there
  a_pragma_arguments *arguments;       // or null
  a_source_position position;
  a_source_position directive_position;
};

// --- Macros --------------------------------------------------------------------------------------

struct a_macro {
  a_source_correspondence source_corresp;
  a_macro *next;
  const char *text;                    // text form of the definition
  a_source_position body_start;
  a_source_position body_end;
  bool from_command_line : 1;
  bool predefined : 1;
  bool object_like : 1;
  bool is_undef : 1;
};

// --- Lambdas -------------------------------------------------------------------------------------

struct a_lambda_capture {
  a_lambda_capture *next;
  a_variable *variable;                // null: this
  a_field *field;                      // of the closure
  a_dynamic_init *init;
  a_source_position position;
  bool by_reference : 1;
  bool is_implicit : 1;
  bool is_pack : 1;
};

struct a_lambda {
  a_type *closure_type;
  a_routine *call_operator;
  a_lambda_capture *captures;
  a_source_position position;
  bool has_default_capture : 1;
  bool default_is_by_reference : 1;
  bool has_param_list : 1;
  bool is_mutable : 1;
  bool has_trailing_return : 1;
};
