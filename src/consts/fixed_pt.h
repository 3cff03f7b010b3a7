// fixed_pt.h - fixed-point values.  The target has none: the dialect's keywords are scanned and its
// types diagnosed elsewhere, and no constant of such a type is ever made.
#pragma once

// True when values of fixed-point types can be computed at translation time.
inline bool fixed_pt_values_supported()
{
  return false;
}
