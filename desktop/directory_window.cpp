#include "desktop/directory_window.h"

#include "desktop/controls.h"
#include "desktop/message_box.h"
#include "desktop/qt_text.h"
#include "shell/folder_view.h"
#include "shell/outside_programs.h"
#include "shell/workspace.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace kiv {

namespace {

constexpr int kColumns = 80;
constexpr int kRows = 26;
constexpr int kPathRole = Qt::UserRole;

constexpr ControlWords kDrives = {"Drive1", "Drive", "The drive to look at"};
constexpr ControlWords kFolders = {"Dir1", "Folders",
                                   "A double click or Enter opens a folder, above or below"};
constexpr ControlWords kFiles = {"File2", "Files", "The files of the folder that is shown"};
constexpr ControlWords kChoose = {"choose", "Choose",
                                  "Make the folder shown the working directory"};
constexpr ControlWords kLowerCase = {"lower_case", "l/c dir",
                                     "Lower-case the names of all files of the folder shown"};
constexpr ControlWords kCancel = {"cancel", "Cancel", "Close this window and change nothing"};

/// A tree whose branches are always open: nothing is drawn to open them with.
class FolderTree : public QTreeWidget {
  public:
    using QTreeWidget::QTreeWidget;

  protected:
    void drawBranches(QPainter*, const QRect&, const QModelIndex&) const override {}
};

QTreeWidgetItem* MakeItem(const FolderEntry& entry, const QIcon& icon)
{
    auto* const item = new QTreeWidgetItem({ToQt(entry.name)});
    item->setIcon(0, icon);
    item->setData(0, kPathRole, ToQt(entry.path));
    return item;
}

void ShowDrives(QComboBox& list, const FolderView& view)
{
    const QSignalBlocker blocker(list);
    list.clear();
    for (const char letter : view.drives)
        list.addItem(ToQt(std::string{letter, ':'}));
    list.setCurrentText(ToQt(view.folder.substr(0, 2)));
}

/// The folders above, each in the one before, the folder itself selected, then those in it.
void ShowFolders(QTreeWidget& tree, const FolderView& view)
{
    const QIcon open = tree.style()->standardIcon(QStyle::SP_DirOpenIcon);
    const QIcon closed = tree.style()->standardIcon(QStyle::SP_DirClosedIcon);
    tree.clear();
    QTreeWidgetItem* folder = tree.invisibleRootItem();
    for (const FolderEntry& entry : view.above) {
        QTreeWidgetItem* const item = MakeItem(entry, open);
        folder->addChild(item);
        folder = item;
    }
    for (const FolderEntry& entry : view.inside)
        folder->addChild(MakeItem(entry, closed));
    tree.expandAll();
    tree.setCurrentItem(folder);
    tree.scrollToItem(folder, QAbstractItemView::PositionAtCenter);
}

void ShowFiles(QListWidget& list, const FolderView& view)
{
    list.clear();
    for (const std::string& name : view.files)
        list.addItem(ToQt(name));
}

} // namespace

DirectoryWindow::DirectoryWindow(CommandDesk& desk, QWidget* parent)
    : SideWindow(desk, parent, "DirectoryWindow", "Choose directory")
{
    auto* const column = new QVBoxLayout(this);
    auto* const lists = new QGridLayout;
    column->addLayout(lists);
    drives_ = new QComboBox(this);
    folders_ = new FolderTree(this);
    files_ = new QListWidget(this);
    Describe(*drives_, kDrives);
    Describe(*folders_, kFolders);
    Describe(*files_, kFiles);
    folders_->setHeaderHidden(true);
    folders_->setItemsExpandable(false);
    folders_->setRootIsDecorated(false);
    folders_->setUniformRowHeights(true);
    files_->setUniformItemSizes(true);
    shown_ = MakeReadout("folder", "The folder shown", this);

    lists->addWidget(MakeLabel(kDrives.caption, *drives_), 0, 0);
    lists->addWidget(drives_, 1, 0);
    lists->addWidget(MakeLabel(kFolders.caption, *folders_), 2, 0);
    lists->addWidget(folders_, 3, 0);
    lists->addWidget(MakeLabel(kFiles.caption, *files_), 0, 1);
    lists->addWidget(files_, 1, 1, 3, 1);
    column->addWidget(shown_);

    auto* const buttons = new QHBoxLayout;
    column->addLayout(buttons);
    auto* const choose = MakeButton(kChoose, this);
    auto* const lower_case = MakeButton(kLowerCase, this);
    auto* const cancel = MakeButton(kCancel, this);
    choose->setDefault(true);
    buttons->addWidget(lower_case);
    buttons->addStretch();
    buttons->addWidget(choose);
    buttons->addWidget(cancel);
    setTabOrder(files_, choose);
    setTabOrder(choose, lower_case);
    setTabOrder(lower_case, cancel);
    GiveMnemonics(*this);
    folders_->setFocus();
    resize(fontMetrics().averageCharWidth() * kColumns, fontMetrics().lineSpacing() * kRows);

    connect(drives_, &QComboBox::currentTextChanged, this,
            [this](const QString& drive) { ShowFolder(FromQt(drive) + '\\'); });
    connect(folders_, &QTreeWidget::itemActivated, this, [this](const QTreeWidgetItem* item) {
        ShowFolder(FromQt(item->data(0, kPathRole).toString()));
    });
    connect(choose, &QPushButton::clicked, this, &DirectoryWindow::PressChoose);
    connect(lower_case, &QPushButton::clicked, this,
            [this] { this->desk().Run([this] { LowerCaseNamesOf(workspace(), folder_); }); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void DirectoryWindow::Fill()
{
    folder_ = "\\"; // where to look when the working directory is gone
    ShowFolder(workspace().WorkDir);
}

void DirectoryWindow::ShowFolder(const std::string& folder)
{
    if (const std::optional<RunError> error = TryToShow(folder)) {
        desk().ShowMessage(ErrorText(*error));
        TryToShow(folder_); // else the lists stay as they are
    }
}

std::optional<RunError> DirectoryWindow::TryToShow(const std::string& folder)
{
    try {
        const FolderView view = ViewFolder(workspace().machine(), folder);
        folder_ = view.folder;
        ShowDrives(*drives_, view);
        ShowFolders(*folders_, view);
        ShowFiles(*files_, view);
        SetReadout(*shown_, folder_);
    } catch (const RunError& error) {
        return error;
    }
    return std::nullopt;
}

void DirectoryWindow::PressChoose()
{
    if (desk().Run([this] { workspace().changethedirectory(folder_); }))
        accept();
}

void DirectoryWindow::keyPressEvent(QKeyEvent* event)
{
    // Enter in the list of folders has opened one. It is not the button's too.
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter || focusWidget() != folders_)
        SideWindow::keyPressEvent(event);
}

} // namespace kiv
