// target.h - the values that describe the target, as run-time data that every floor reads.  One
// row each in target_values.def.
// Writers: target.cpp (set-up), cmd_line (options), host_envir (host_little_endian).
#pragma once
#include <cstdint>
#include "il/il_enums.h"

struct a_type;

typedef uint64_t a_targ_size_t; // a size or offset in bytes on the target

// How far a symbol is seen outside its module.
enum a_symbol_visibility : unsigned char { sv_hidden, sv_protected, sv_default, sv_unknown };

// Silicon classes that a version falls in.
enum a_silicon_class : unsigned char {
  rv_any_class,          // every version
  rv_float_class,        // floating-point instructions
  rv_media_class,        // SIMD media instructions
  rv_media2_class,       // second media generation
  rv_efi_class,          // external function interface
  rv_float2_class,       // second floating-point generation
  rv_wide_class,         // widest generation
  rv_special_version,    // the one special version
  rv_not_special_version // every other version
};

#define TARGET_VALUE(type, name, initial, meaning) extern type name;
#include "driver/target_values.def"

extern unsigned targ_character_size[chk_last]; // bytes of a character by a_char_kind

// Gives every target value its default.  Runs before the options are read.
void target_early_init();
// Takes the sizes of the wide character types from their integer kinds.
void target_one_time_init();
// Settles what depends on the dialect: plain char, sharing of strings, the widest kinds, limits of
// classes.
void target_init();
// Sets which kind stands for plain char in old C.
void set_plain_char_int_kind(bool is_signed);
// Called after a memory model option; this target has nothing that depends on it.
void reset_internal_type_sizes();

// Size of a pointer to `type`, and its alignment in *alignment: always those of a data pointer.
a_targ_size_t size_of_pointer_to(a_type *type, unsigned *alignment);
// True if a pointer of type `to` can hold a pointer of type `from`: always.
bool targ_dest_of_ptr_cast_big_enough(a_type *from, a_type *to);

// The visibility named by an option's argument (sv_unknown if there's none), and the name of one.
a_symbol_visibility string_to_symbol_visibility(const char *text);
const char *symbol_visibility_to_string(a_symbol_visibility visibility);
// The visibility that an export (or no export) modifier asks for.
a_symbol_visibility modifier_to_symbol_visibility(bool exported);
// The stricter of two visibilities where sv_unknown gives way to anything.
a_symbol_visibility canonical_symbol_visibility(a_symbol_visibility a, a_symbol_visibility b);

// Number of the silicon version that `text` names: a decimal number or the code name of a version.
int TRG_parse_versions(const char *text);
// True if targ_cpu_version belongs to the class.
bool silicon_offers(a_silicon_class silicon_class);
// True if a variable of this name is one of the global registers.
bool TRG_is_greg_name(const char *name);
// True if `name` is a control register of the silicon compiled for.
bool TRG_is_creg_name(const char *name);
// Checks options against each other; this target has no such rule.
void TRG_check_cmd_options();
// True for a power of two between the least and the greatest pack alignment.
bool is_acceptable_pack_alignment(unsigned alignment);
