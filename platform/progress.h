#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// What a running command shows. The window paints it; the command line keeps the last status.
class Progress {
  public:
    Progress() = default;
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    virtual ~Progress() = default;

    /// The status line.
    virtual void Status(std::string_view text) = 0;
    /// The second status text, which names the pass: "ASP", "HTM" or empty.
    virtual void PassStatus(std::string_view text) = 0;
    /// Step `done` of `all` is behind us.
    virtual void Step(int done, int all) = 0;
    /// The page list has declared output roots: the folder buttons change.
    virtual void dirbuttons() = 0;
    /// A build begins: the folder buttons are as at the start.
    virtual void dirreset() = 0;
};

} // namespace kiv
