#pragma once

#include "platform/reporter.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv {

/// The builder's warnings: only the first of a build is shown, the others are noted and kept back.
/// A warning can hold a whole line, and a line thousands of them: past `kMostKept` characters each
/// is cut to its beginning, so that a slip in a long line cannot eat the memory.
class BuildMessages {
  public:
    explicit BuildMessages(Reporter& reporter) : reporter_(reporter) {}

    void ShowBuildMessage(std::string_view text)
    {
        if (MessageLatch)
            Withhold(text);
        else
            reporter_.reportmsg(text);
        MessageLatch = true;
    }

    bool MessageLatch = false;

    static constexpr std::size_t kMostKept = 10'000'000;
    static constexpr std::size_t kBeginning = 200;

  private:
    void Withhold(std::string_view text)
    {
        if (kept_ > kMostKept && text.size() > kBeginning)
            return reporter_.Withhold(std::string(text.substr(0, kBeginning)) + "...");
        kept_ += text.size();
        reporter_.Withhold(text);
    }

    Reporter& reporter_;
    std::size_t kept_ = 0; // characters
};

} // namespace kiv
