#include "desktop/story_window.h"

#include "desktop/controls.h"
#include "desktop/story_pane.h"

#include <QVBoxLayout>

namespace kiv {

namespace {

constexpr int kColumns = 110;
constexpr int kRows = 38;

} // namespace

StoryWindow::StoryWindow(CommandDesk& desk, QWidget* parent)
    : SideWindow(desk, parent, "StoryWindow", "Why a line looks so"),
      pane_(new StoryPane(desk, this))
{
    auto* const column = new QVBoxLayout(this);
    column->addWidget(pane_);
    GiveMnemonics(*this);
    resize(fontMetrics().averageCharWidth() * kColumns, fontMetrics().lineSpacing() * kRows);
}

void StoryWindow::Refresh()
{
    if (isVisible())
        pane_->ReadAgain();
}

void StoryWindow::Fill()
{
    pane_->ReadAgain();
}

} // namespace kiv
