// source_position.h - positions as every floor carries them; the tables behind them are in source_input.h.
#pragma once
#include <cstdint>

typedef uint32_t a_seq_number;     // number of a logical source line over all files; 0 means none
typedef uint16_t a_column_number;  // counted from 1; 0 means unknown

struct a_source_position {
  a_seq_number seq;
  a_column_number column;
};

struct a_source_range {
  a_source_position start;
  a_source_position end;
};

inline constexpr a_source_position null_source_position = {0, 0};

inline bool is_null_position(a_source_position pos)
{
  return pos.seq == 0;
}

inline bool same_position(a_source_position a, a_source_position b)
{
  return a.seq == b.seq && a.column == b.column;
}
