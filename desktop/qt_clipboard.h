// The desktop's clipboard.
#pragma once

#include "platform/clipboard.h"

namespace kiv {

class QtClipboard : public Clipboard {
  public:
    std::string Text() override;
    void SetText(std::string_view text) override;
};

} // namespace kiv
