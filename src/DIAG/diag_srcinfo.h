// diag_srcinfo.h - source positions of the tool layer's messages.
#pragma once
#include <string>

class DIAG_SRCINFO {
public:
  virtual std::string file() = 0;  // empty: no position
  virtual int line() = 0;          // 0: none
  virtual int column() = 0;        // from 1; 0: none
  virtual bool approx() = 0;       // the line may be another one nearby
  virtual ~DIAG_SRCINFO() = default;
  // Same file, line and column.
  virtual bool is_equal(DIAG_SRCINFO *other);
};

class DIAG_SRCINFO_DATA : public DIAG_SRCINFO {
public:
  std::string file_m;
  int         line_m;
  int         column_m;
  bool        approx_m;

  // A null name counts as empty.
  explicit DIAG_SRCINFO_DATA(char const *file, int line = 0, int column = 0, bool approx = false);
  explicit DIAG_SRCINFO_DATA(std::string const &file, int line = 0, int column = 0,
                             bool approx = false);
  explicit DIAG_SRCINFO_DATA(DIAG_SRCINFO *other);

  std::string file() override;
  int line() override;
  int column() override;
  bool approx() override;
};
