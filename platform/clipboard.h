#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// The clipboard's text, Windows-1252.
class Clipboard {
  public:
    Clipboard() = default;
    Clipboard(const Clipboard&) = delete;
    Clipboard& operator=(const Clipboard&) = delete;
    virtual ~Clipboard() = default;

    virtual std::string Text() = 0;
    virtual void SetText(std::string_view text) = 0;
};

/// A clipboard of the program's own, for runs without a window.
class HeldClipboard : public Clipboard {
  public:
    std::string Text() override { return text_; }
    void SetText(std::string_view text) override { text_ = text; }

  private:
    std::string text_;
};

} // namespace kiv
