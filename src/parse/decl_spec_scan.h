// decl_spec_scan.h - the working record of one run of decl_specifiers.  Private to decl_spec*.cpp.
#pragma once
#include "parse/decl_spec.h"

enum a_specifier_kind : unsigned char {
  spk_none,
  spk_void,
  spk_char,
  spk_wchar_t,
  spk_char16_t,
  spk_char32_t,
  spk_bool,
  spk_int,
  spk_float,
  spk_double,
  spk_type_name,  // also __typeof__, decltype, __underlying_type
  spk_class,
  spk_cl_vector,
  spk_enum,
  spk_typename,
  spk_unknown = 16,  // constructor, destructor or conversion function
  spk_error = 17
};

enum a_size_word : unsigned char { size_none, size_short, size_long, size_int40, size_long_long };
enum a_sign_word : unsigned char { sign_none, sign_signed, sign_unsigned };
enum a_complex_word : unsigned char { complex_none, complex_complex, complex_imaginary };

struct a_specifier_scan {
  a_decl_parse_state *state;
  a_decl_pos_block *pos_block;
  uint32_t options;
  a_specifier_kind kind;
  a_size_word size_word;
  a_sign_word sign_word;
  a_complex_word complex_word;
  bool seen_any : 1;              // some specifier came
  bool only_void : 1;             // nothing but one `void`
  bool auto_seen : 1;
  bool auto_is_undecided : 1;     // storage class or type is settled behind the loop
  bool storage_seen : 1;
  bool enum_or_class_alone : 1;   // one class or enum specifier and no other type
  bool error_seen : 1;
  bool no_type_words_left : 1;    // an identifier can't be a type name any more
  a_type *type;                   // of the kinds that are scanned whole
  an_error_code deferred_error;   // 85 of an old GNU version, given when the end is seen
  a_source_position deferred_position;
  a_source_position words_position;  // first of the size and sign words
  a_source_position basic_type_position;  // first word of a basic type (MISRA 6.3)
  a_source_position complex_position;
};

inline bool any_type_word(const a_specifier_scan *scan)
{
  return scan->size_word != size_none || scan->sign_word != sign_none;
}
inline bool any_type_specifier(const a_specifier_scan *scan)
{
  return scan->kind != spk_none || any_type_word(scan) || scan->complex_word != complex_none;
}

// Reports 85 at `position`, or holds it back where an old GNU version would warn only.
void bad_type_combination(a_specifier_scan *scan, a_source_position position);
// The current token is a specifier of a type: false (with 88) where none may stand.
bool type_specifier_allowed(a_specifier_scan *scan);

// decl_spec_storage.cpp: storage classes, function specifiers, target modifiers.
void storage_class_specifier(a_specifier_scan *scan, a_storage_class storage, bool is_mutable);
void inline_specifier(a_specifier_scan *scan);
void friend_specifier(a_specifier_scan *scan);
void virtual_specifier(a_specifier_scan *scan);
void explicit_specifier(a_specifier_scan *scan);
void thread_specifier(a_specifier_scan *scan);
void target_modifier(a_specifier_scan *scan, uint32_t modifier);
void decide_auto(a_specifier_scan *scan);
void consume_paren_address();
void consume_memory_of_or_data16_20();

// decl_spec_type.cpp: names of types, and the type that the words name.
// At an identifier or `::`: takes it as a type and returns true, or false when the list ends here.
bool type_name_specifier(a_specifier_scan *scan);
// Behind the specifiers: a destructor or conversion function follows, which has no type specifier.
void special_member_specifier(a_specifier_scan *scan);
void build_specifier_type(a_specifier_scan *scan);
