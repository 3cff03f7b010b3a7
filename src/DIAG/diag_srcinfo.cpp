// diag_srcinfo.cpp - source positions of the tool layer's messages.
#include "DIAG/diag_srcinfo.h"

bool DIAG_SRCINFO::is_equal(DIAG_SRCINFO *other)
{
  return other && line() == other->line() && column() == other->column() && file() == other->file();
}

DIAG_SRCINFO_DATA::DIAG_SRCINFO_DATA(char const *file, int line, int column, bool approx)
    : file_m(file ? file : ""), line_m(line), column_m(column), approx_m(approx)
{
}

DIAG_SRCINFO_DATA::DIAG_SRCINFO_DATA(std::string const &file, int line, int column, bool approx)
    : file_m(file), line_m(line), column_m(column), approx_m(approx)
{
}

DIAG_SRCINFO_DATA::DIAG_SRCINFO_DATA(DIAG_SRCINFO *other)
    : file_m(other->file()), line_m(other->line()), column_m(other->column()),
      approx_m(other->approx())
{
}

std::string DIAG_SRCINFO_DATA::file()
{
  return file_m;
}

int DIAG_SRCINFO_DATA::line()
{
  return line_m;
}

int DIAG_SRCINFO_DATA::column()
{
  return column_m;
}

bool DIAG_SRCINFO_DATA::approx()
{
  return approx_m;
}
