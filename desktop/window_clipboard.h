// The clipboard that all programs share.
#pragma once

#include "platform/clipboard.h"

namespace kiv {

/// Commands work on text with CR LF. Where other programs end lines with LF alone (and where Qt
/// makes them so), a text is taken over with CR LF and given back as it came.
class WindowClipboard : public Clipboard {
  public:
    std::string Text() override;
    void SetText(std::string_view text) override;

  private:
    bool line_feeds_alone_ = false; // in the text last taken over
};

} // namespace kiv
