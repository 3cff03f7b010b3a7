// option_fixture.h - for tests of options: every message on one line.
#pragma once
#include "capture.h"

class OPTIONS : public MESSAGES {
protected:
  void SetUp() override
  {
    MESSAGES::SetUp();
    DIAGNOSTIC::wrap_enabled_m = false;
  }
};
