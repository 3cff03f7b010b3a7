// target.cpp - the values that describe the target, and the classes of its silicon versions.
// Owns:    every variable of target_values.def, targ_character_size, the table of silicon classes.
// Rule:    early_init sets the defaults, options change them, init settles what depends on the
//          dialect.
// Entry:   target_early_init, target_one_time_init, target_init, TRG_parse_versions,
//          silicon_offers.
#include "driver/target.h"
#include <cstdlib>
#include <cstring>
#include "consts/const_ints.h"
#include "driver/flags.h"
#include "il/il_enums.h"

#define TARGET_VALUE(type, name, initial, meaning) type name = initial;
#include "driver/target_values.def"

unsigned targ_character_size[4];
static_assert(chk_last == 4);

//-------------------------------------------------------------------------------------------------
// Set-up.

void target_early_init()
{
#define TARGET_VALUE(type, name, initial, meaning) name = initial;
#include "driver/target_values.def"
}

static unsigned size_of_integer_kind(an_integer_kind kind)
{
  uint64_t size, precision;
  unsigned alignment;
  get_integer_size_and_alignment(kind, &size, &precision, &alignment);
  return unsigned(size);
}

void target_one_time_init()
{
  targ_sizeof_wchar_t = size_of_integer_kind(targ_wchar_t_int_kind);
  targ_sizeof_char16_t = size_of_integer_kind(targ_char16_t_int_kind);
  targ_sizeof_char32_t = size_of_integer_kind(targ_char32_t_int_kind);
  targ_character_size[chk_char] = 1;
  targ_character_size[chk_wchar_t] = targ_sizeof_wchar_t;
  targ_character_size[chk_char16_t] = targ_sizeof_char16_t;
  targ_character_size[chk_char32_t] = targ_sizeof_char32_t;
}

void set_plain_char_int_kind(bool is_signed)
{
  plain_char_int_kind = is_signed ? ik_signed_char : ik_unsigned_char;
}

void target_init()
{
  bool in_old_c = C_dialect == 1;
  plain_char_int_kind = ik_char;
  if (in_old_c) set_plain_char_int_kind(targ_has_signed_chars);
  int_kind_is_signed[ik_char] = targ_has_signed_chars;
  string_literals_shared = !in_old_c;
  targ_intmax_kind = ik_long_long;
  targ_uintmax_kind = ik_unsigned_long_long;
  if (targ_max_class_object_size == 0) targ_max_class_object_size = targ_size_t_max;
  a_targ_size_t largest_ptrdiff_t = (a_targ_size_t(1) << (targ_precisionof_int - 1)) - 1;
  a_targ_size_t limit = largest_ptrdiff_t < targ_size_t_max ? largest_ptrdiff_t : targ_size_t_max;
  if (targ_max_base_class_offset == 0) {
    targ_max_base_class_offset = targ_size_t_max;
  } else if (targ_max_base_class_offset > limit) {
    targ_max_base_class_offset = limit;
  }
  always_fold_calls_to_builtin_constant_p = false;
}

void reset_internal_type_sizes()
{
}

void TRG_check_cmd_options()
{
}

//-------------------------------------------------------------------------------------------------
// Pointers and alignments.

a_targ_size_t size_of_pointer_to(a_type *, unsigned *alignment)
{
  *alignment = targ_alignof_pointer;
  return targ_sizeof_pointer;
}

bool targ_dest_of_ptr_cast_big_enough(a_type *, a_type *)
{
  return true;
}

bool is_acceptable_pack_alignment(unsigned alignment)
{
  return alignment >= targ_minimum_pack_alignment && alignment <= targ_maximum_pack_alignment &&
         (alignment & (alignment - 1)) == 0;
}

//-------------------------------------------------------------------------------------------------
// Visibility.

static const char *const visibility_names[] = {"hidden", "protected", "default"};

a_symbol_visibility string_to_symbol_visibility(const char *text)
{
  for (unsigned i = 0; i < sv_unknown; i++) {
    if (strcmp(text, visibility_names[i]) == 0) return a_symbol_visibility(i);
  }
  return sv_unknown;
}

const char *symbol_visibility_to_string(a_symbol_visibility visibility)
{
  return visibility < sv_unknown ? visibility_names[visibility] : "unknown";
}

a_symbol_visibility modifier_to_symbol_visibility(bool exported)
{
  return exported ? targ_sym_export_visibility : targ_sym_default_visibility;
}

a_symbol_visibility canonical_symbol_visibility(a_symbol_visibility a, a_symbol_visibility b)
{
  return a < b ? a : b;
}

//-------------------------------------------------------------------------------------------------
// Silicon versions.  A class is a set of ranges of version numbers.

struct a_version_range {
  a_silicon_class silicon_class;
  int first, last;
};

static constexpr int special_version = 1900;
static constexpr int no_upper_limit = 0x7FFFFFFF;

static const a_version_range version_ranges[] = {
    {rv_any_class, 0, no_upper_limit},
    {rv_float_class, special_version, special_version},
    {rv_float_class, 2000, 2999},
    {rv_float_class, 4000, no_upper_limit},
    {rv_media_class, 3000, 4999},
    {rv_media_class, 6000, no_upper_limit},
    {rv_media2_class, 4000, 4999},
    {rv_media2_class, 6000, no_upper_limit},
    {rv_efi_class, 4000, 4499},
    {rv_efi_class, 4600, 4999},
    {rv_efi_class, 6000, no_upper_limit},
    {rv_float2_class, 5000, no_upper_limit},
    {rv_wide_class, 6000, no_upper_limit},
    {rv_special_version, special_version, special_version},
    {rv_not_special_version, 0, special_version - 1},
    {rv_not_special_version, special_version + 1, no_upper_limit},
};

// The one version that goes by a name, in lower or upper case.
static const char code_name[] = "heron";
static constexpr int code_name_version = 6000;

static bool is_code_name(const char *text)
{
  const char *name = code_name;
  for (; *name != '\0' && (*text | 0x20) == *name; name++, text++) {
  }
  return *name == '\0' && *text == '\0';
}

int TRG_parse_versions(const char *text)
{
  return is_code_name(text) ? code_name_version : int(strtol(text, nullptr, 10));
}

bool silicon_offers(a_silicon_class silicon_class)
{
  for (const a_version_range &range : version_ranges) {
    if (range.silicon_class == silicon_class && targ_cpu_version >= range.first &&
        targ_cpu_version <= range.last) {
      return true;
    }
  }
  return false;
}

//-------------------------------------------------------------------------------------------------
// Register names.

bool TRG_is_greg_name(const char *name)
{
  return strcmp(name, "__SP") == 0 || strcmp(name, "__DP") == 0;
}

struct a_control_register {
  const char *name;
  a_silicon_class silicon_class;
};

static const a_control_register control_registers[] = {
    {"AMR", rv_any_class},
    {"CSR", rv_any_class},
    {"IFR", rv_any_class},
    {"ISR", rv_any_class},
    {"ICR", rv_any_class},
    {"IER", rv_any_class},
    {"ISTP", rv_any_class},
    {"IRP", rv_any_class},
    {"NRP", rv_any_class},
    {"IN", rv_any_class},
    {"OUT", rv_any_class},
    {"ACR", rv_any_class},
    {"ADR", rv_any_class},
    {"PCE1", rv_any_class},
    {"GFPGFR", rv_media_class},
    {"DIER", rv_media_class},
    {"REP", rv_media2_class},
    {"TSCL", rv_media2_class},
    {"TSCH", rv_media2_class},
    {"ARP", rv_media2_class},
    {"ILC", rv_media2_class},
    {"RILC", rv_media2_class},
    {"DNUM", rv_media2_class},
    {"SSR", rv_media2_class},
    {"GPLYA", rv_media2_class},
    {"GPLYB", rv_media2_class},
    {"TSR", rv_media2_class},
    {"ITSR", rv_media2_class},
    {"NTSR", rv_media2_class},
    {"EFR", rv_media2_class},
    {"ECR", rv_media2_class},
    {"IERR", rv_media2_class},
    {"DMSG", rv_media2_class},
    {"CMSG", rv_media2_class},
    {"FADCR", rv_float_class},
    {"FAUCR", rv_float_class},
    {"FMCR", rv_float_class},
    {"DESR", rv_float2_class},
    {"DETR", rv_float2_class},
    // The on-chip debug and trace interface.
    {"DBGSTAT", rv_media2_class},
    {"DBGCTL", rv_media2_class},
    {"DBGADDR", rv_media2_class},
    {"DBGDATA", rv_media2_class},
    {"DBGMSK", rv_media2_class},
    {"DBGCNT0", rv_media2_class},
    {"DBGCNT1", rv_media2_class},
    {"DBGEVT0", rv_media2_class},
    {"DBGEVT1", rv_media2_class},
    {"DBGEVT2", rv_media2_class},
    {"DBGEVT3", rv_media2_class},
    {"TRCCTL", rv_media2_class},
    {"TRCSTAT", rv_media2_class},
    {"TRCPC", rv_media2_class},
    {"TRCADDR", rv_media2_class},
    {"TRCDATA", rv_media2_class},
    {"TRCMSK", rv_media2_class},
    {"TRCCNT", rv_media2_class},
    {"TRCEVT0", rv_media2_class},
    {"TRCEVT1", rv_media2_class},
    {"TRCBUF0", rv_media2_class},
    {"TRCBUF1", rv_media2_class},
};

bool TRG_is_creg_name(const char *name)
{
  for (const a_control_register &reg : control_registers) {
    if (strcmp(reg.name, name) == 0) return silicon_offers(reg.silicon_class);
  }
  return false;
}
