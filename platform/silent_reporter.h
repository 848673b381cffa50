// A reporter for those who only look: nobody is told, the warnings are kept.
#pragma once

#include "platform/reporter.h"

namespace kiv {

class SilentReporter : public Reporter {
  protected:
    void Show(std::string_view) override {}
};

} // namespace kiv
