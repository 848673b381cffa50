#include "desktop/directory_window.h"

#include "desktop/controls.h"
#include "desktop/folder_drop.h"
#include "desktop/message_box.h"
#include "desktop/path_field.h"
#include "desktop/qt_text.h"
#include "shell/folder_view.h"
#include "shell/rename_looks.h"
#include "shell/typed_folder.h"
#include "shell/workspace.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <functional>
#include <vector>

namespace kiv {

namespace {

constexpr int kDirectoryColumns = 80;
constexpr int kDirectoryRows = 26;
constexpr int kPathRole = Qt::UserRole;

constexpr ControlWords kPath = {"path", "Path",
                                "The folder that is selected; type another one, Enter goes there"};
constexpr ControlWords kDrives = {"Drive1", "Drive", "The drive to look at"};
constexpr ControlWords kFolders = {
    "Dir1", "Folders",
    "The one that is selected is the one to choose; a double click or Enter goes into it"};
constexpr ControlWords kFiles = {"File2", "Files", "The files of the folder that is selected"};
constexpr ControlWords kChoose = {"choose", "Choose",
                                  "Make the folder that is selected the working directory"};
constexpr ControlWords kLowerCase = {
    "lower_case", "l/c dir", "Lower-case the names of all files of the folder that is selected"};
constexpr ControlWords kAddJump = {"add_jump", "Add to Jump to",
                                   "Put the folder that is selected into the menu \"Jump to\""};
constexpr ControlWords kCancel = {"cancel", "Cancel", "Close this window and change nothing"};

/// A tree whose branches are always open: nothing is drawn to open them with.
class FolderTree : public QTreeWidget {
  public:
    using QTreeWidget::QTreeWidget;
    /// Called when a folder is to be gone into, whatever a single click does on the desktop.
    std::function<void(const QTreeWidgetItem& item)> on_enter;
    std::function<void()> on_copy; // else it would be the name alone

  protected:
    void drawBranches(QPainter*, const QRect&, const QModelIndex&) const override {}
    void keyPressEvent(QKeyEvent* event) override
    {
        const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (event->matches(QKeySequence::Copy))
            on_copy();
        else if (!enter)
            QTreeWidget::keyPressEvent(event);
        else if (currentItem() != nullptr)
            on_enter(*currentItem());
    }
    void mouseDoubleClickEvent(QMouseEvent* event) override
    {
        if (const QTreeWidgetItem* const item = itemAt(event->pos()))
            on_enter(*item);
    }
};

std::string PathOf(const QTreeWidgetItem& item)
{
    return FromQt(item.data(0, kPathRole).toString());
}

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

void ShowFiles(QListWidget& list, const std::vector<std::string>& names)
{
    list.clear();
    for (const std::string& name : names)
        list.addItem(ToQt(name));
}

/// The list of folders as the window wants it.
FolderTree* MakeFolderTree(QWidget* parent)
{
    auto* const tree = new FolderTree(parent);
    Describe(*tree, kFolders);
    tree->setHeaderHidden(true);
    tree->setItemsExpandable(false);
    tree->setRootIsDecorated(false);
    tree->setUniformRowHeights(true);
    return tree;
}

} // namespace

DirectoryWindow::DirectoryWindow(CommandDesk& desk, QWidget* parent)
    : SideWindow(desk, parent, "DirectoryWindow", "Choose directory")
{
    auto* const column = new QVBoxLayout(this);
    auto* const head = new QFormLayout;
    path_ = new PathField(kPath, this);
    path_->complete = [this](const std::string& typed) {
        return CompletionsOf(workspace().machine(), typed);
    };
    path_->on_go = [this](const std::string& typed) { GoToPath(typed); };
    head->addRow(MakeLabel(kPath.caption, *path_), path_);
    native_ = MakeReadout("native", "The same path as other programs have it", this);
    head->addRow(new QLabel(QStringLiteral("System path"), this), native_);
    head_ = head;
    column->addLayout(head);
    column->addLayout(MakeLists());
    column->addLayout(MakeButtons());
    GiveMnemonics(*this);
    folders_->setFocus();
    resize(fontMetrics().averageCharWidth() * kDirectoryColumns,
           fontMetrics().lineSpacing() * kDirectoryRows);
    new FolderDrop(this, [this](const std::string& native) { GoToPath(native); });
}

QLayout* DirectoryWindow::MakeLists()
{
    auto* const lists = new QGridLayout;
    drives_ = new QComboBox(this);
    auto* const tree = MakeFolderTree(this);
    folders_ = tree;
    files_ = new QListWidget(this);
    Describe(*drives_, kDrives);
    Describe(*files_, kFiles);
    files_->setUniformItemSizes(true);
    lists->addWidget(MakeLabel(kDrives.caption, *drives_), 0, 0);
    lists->addWidget(drives_, 1, 0);
    lists->addWidget(MakeLabel(kFolders.caption, *folders_), 2, 0);
    lists->addWidget(folders_, 3, 0);
    lists->addWidget(MakeLabel(kFiles.caption, *files_), 0, 1);
    lists->addWidget(files_, 1, 1, 3, 1);

    connect(drives_, &QComboBox::currentTextChanged, this,
            [this](const QString& drive) { ShowFolder(FromQt(drive) + '\\'); });
    connect(folders_, &QTreeWidget::currentItemChanged, this, [this](const QTreeWidgetItem* item) {
        if (item != nullptr)
            Select(PathOf(*item));
    });
    tree->on_enter = [this](const QTreeWidgetItem& item) { ShowFolder(PathOf(item)); };
    tree->on_copy = [this] { path_->CopyNative(); };
    return lists;
}

QLayout* DirectoryWindow::MakeButtons()
{
    auto* const buttons = new QHBoxLayout;
    auto* const choose = MakeButton(kChoose, this);
    auto* const lower_case = MakeButton(kLowerCase, this);
    auto* const add_jump = MakeButton(kAddJump, this);
    auto* const cancel = MakeButton(kCancel, this);
    choose->setDefault(true);
    buttons->addWidget(lower_case);
    buttons->addWidget(add_jump);
    buttons->addStretch();
    buttons->addWidget(choose);
    buttons->addWidget(cancel);

    connect(choose, &QPushButton::clicked, this, &DirectoryWindow::PressChoose);
    connect(lower_case, &QPushButton::clicked, this, &DirectoryWindow::PressLowerCase);
    connect(add_jump, &QPushButton::clicked, this,
            [this] { desk().Run([this] { TellAddedJump(workspace(), selected_); }); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    return buttons;
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
    } catch (const RunError& error) {
        return error;
    }
    return std::nullopt;
}

void DirectoryWindow::Select(const std::string& folder)
{
    selected_ = folder;
    const Machine& machine = workspace().machine();
    path_->ShowPath(folder, folder, NativeToCopy(machine, folder));
    const std::string native = NativeBeside(machine, folder);
    head_->setRowVisible(native_, !native.empty());
    native_->setText(ToQtNative(native));
    native_->setToolTip(ToQtNative(native));
    ShowFiles(*files_, FilesOf(machine, folder));
}

void DirectoryWindow::GoToPath(const std::string& typed)
{
    try {
        ShowFolder(FolderOfTyped(workspace().machine(), typed));
    } catch (const RunError& error) {
        desk().ShowMessage(ErrorText(error));
    }
}

void DirectoryWindow::PressLowerCase()
{
    const std::string folder = selected_;
    const auto run = [this, folder] { LowerCaseAndTell(workspace(), folder); };
    if (IsRoot(folder))
        desk().LookFirst(kLowerCase.caption, {.renamer = Renamer::lower_case, .folder = folder},
                         run);
    else
        desk().Run(run);
}

void DirectoryWindow::PressChoose()
{
    if (desk().Run([this] { GoToPicked(workspace(), selected_); }))
        accept();
}

} // namespace kiv
