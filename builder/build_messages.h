// What a build tells its user.
#pragma once

#include "platform/files.h"
#include "platform/reporter.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv {

/// The words of a build, each with the place of the line in work. Of its warnings only the first is
/// shown, the others are kept back. A warning can hold a whole line, and a line thousands of them:
/// past `kMostKept` characters each is cut to its beginning, so that a slip in a long line cannot
/// eat the memory. What is told comes behind the pages that were made before: where one of them
/// cannot be written, the build ends with that.
class BuildMessages {
  public:
    /// `place` is the place in work whenever a message comes.
    BuildMessages(Reporter& reporter, Files& files, const Place& place)
        : reporter_(reporter), files_(files), place_(place)
    {
    }

    /// Shows a message, whether or not there was one before. `hint` says what can be done.
    void reportmsg(std::string_view text, std::string_view hint = {})
    {
        files_.Settle();
        reporter_.reportmsg(text, place_, hint);
    }

    /// Shows the first warning of a build and keeps the others back.
    void ShowBuildMessage(std::string_view text)
    {
        if (MessageLatch)
            KeepBack(text);
        else
            reportmsg(text);
        MessageLatch = true;
    }

    /// A warning without a box, which leaves the first one to others.
    void NoteBuildMessage(std::string_view text)
    {
        files_.Settle();
        reporter_.Withhold(text, place_);
    }

    bool MessageLatch = false;

    static constexpr std::size_t kMostKept = 10'000'000;
    static constexpr std::size_t kBeginning = 200;

  private:
    void KeepBack(std::string_view text)
    {
        files_.Settle();
        if (kept_ > kMostKept && text.size() > kBeginning)
            return reporter_.Withhold(std::string(text.substr(0, kBeginning)) + "...", place_);
        kept_ += text.size();
        reporter_.Withhold(text, place_);
    }

    Reporter& reporter_;
    Files& files_;
    const Place& place_;
    std::size_t kept_ = 0; // characters
};

} // namespace kiv
