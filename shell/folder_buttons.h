// Which of the main window's folder buttons are shown.
#pragma once

#include "platform/progress.h"

namespace kiv {

/// Hands everything on to the face, and notes when a page list declares output roots: then "Dir 1"
/// and "Dir 2" stand for "Dir window".
class FolderButtons : public Progress {
  public:
    FolderButtons(Progress& face, bool& roots_shown) : face_(face), roots_shown_(roots_shown) {}

    void Status(std::string_view text) override { face_.Status(text); }
    void PassStatus(std::string_view text) override { face_.PassStatus(text); }
    void Step(int done, int all) override { face_.Step(done, all); }
    void dirbuttons() override
    {
        roots_shown_ = true;
        face_.dirbuttons();
    }
    void dirreset() override
    {
        roots_shown_ = false;
        face_.dirreset();
    }

  private:
    Progress& face_;
    bool& roots_shown_;
};

} // namespace kiv
