#pragma once

#include "platform/reporter.h"

#include <string_view>

namespace kiv {

/// The builder's warnings: only the first of a build is shown, the others are noted and kept back.
class BuildMessages {
  public:
    explicit BuildMessages(Reporter& reporter) : reporter_(reporter) {}

    void ShowBuildMessage(std::string_view text)
    {
        if (MessageLatch)
            reporter_.Withhold(text);
        else
            reporter_.reportmsg(text);
        MessageLatch = true;
    }

    bool MessageLatch = false;

  private:
    Reporter& reporter_;
};

} // namespace kiv
