#include "desktop/news_window.h"

#include "desktop/controls.h"
#include "desktop/message_box.h"
#include "desktop/qt_text.h"
#include "shell/utilities.h"
#include "shell/workspace.h"
#include "utilities/news_names.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace kiv {

namespace {

constexpr int kNewsColumns = 124;
constexpr int kNameColumns = 16; // of a code, a date and a letter
constexpr int kNewsRows = 38;
constexpr int kSiteColumns = 3;

struct NewsEntryLine {
    ControlWords words;
    std::string NewsItem::*value;
};

constexpr std::array<NewsEntryLine, 7> kEntryLines = {{
    {{"Text1", "Name of .txt file:",
      "The article's file name without extension: a publication's code and the date as mmddyy, "
      "then perhaps a letter"},
     &NewsItem::file_name},
    {{"Text2", "Date", "The article's date; the file name fills it in"}, &NewsItem::date},
    {{"Text3", "Title", "The article's title, also that of its page"}, &NewsItem::title},
    {{"Text4", "Newspaper", "Where it appeared; the file name's code fills it in"},
     &NewsItem::newspaper},
    {{"Text5", "Byline", "Who wrote it"}, &NewsItem::byline},
    {{"Text6", "subhead", "The line below the title"}, &NewsItem::subhead},
    {{"Text8", "Lead sentence", "A sentence to stand in bold before the article; it may be empty"},
     &NewsItem::lead},
}};
constexpr std::size_t kFileNameLine = 0;
constexpr std::size_t kHeaderLines = 6; // the lead stands with the article

constexpr ControlWords kArticle = {"Text7", "Article text", "The article"};
constexpr ControlWords kSingleSpaced = {"Check1", "Text is single spaced",
                                        "Every line of the article is a paragraph"};
constexpr ControlWords kAsIs = {"Check2", "Text as is",
                                "Leave the article as it is instead of making it HTML"};
constexpr ControlWords kMakeNews = {"Command1", "Do It!",
                                    "Write the article and put it into the site's page list"};
constexpr ControlWords kAbort = {"Command2", "Abort", "Close this window and write nothing"};
constexpr ControlWords kClearNews = {"Command3", "Clear",
                                     "Empty all fields and boxes; the website stays chosen"};
constexpr ControlWords kGrab = {
    "Command4", "Grab source",
    "Fill the fields from a source string or news line in the clipboard"};
constexpr ControlWords kShowSource = {"Command6", "Show Source String",
                                      "Show the fields as one source string, to be copied"};
constexpr ControlWords kToday = {"Command7", "Today", "Put today's date into the file name"};

QCheckBox* MakeBox(const ControlWords& words, QWidget* parent)
{
    auto* const box = new QCheckBox(AsShown(words.caption), parent);
    Describe(*box, words);
    return box;
}

/// What is taller than a small screen has room: the buttons below stay in reach.
QScrollArea* MakeScrolling(QWidget* content, QWidget* parent)
{
    auto* const area = new QScrollArea(parent);
    area->setWidget(content);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    return area;
}

/// A button that Enter in a field does not press: a news item is never written by accident.
QPushButton* MakeShyButton(const ControlWords& words, QWidget* parent)
{
    auto* const button = MakeButton(words, parent);
    button->setAutoDefault(false);
    return button;
}

} // namespace

NewsWindow::NewsWindow(CommandDesk& desk, QWidget* parent)
    : SideWindow(desk, parent, "NewsWindow", "News Item")
{
    auto* const column = new QVBoxLayout(this);
    auto* const fields = new QWidget(this);
    auto* const inner = new QVBoxLayout(fields);
    inner->setContentsMargins(0, 0, 0, 0);
    auto* const top = new QHBoxLayout;
    inner->addLayout(top);
    top->addLayout(MakeHeader(), 1);
    top->addWidget(MakeSites(), 1);
    inner->addLayout(MakeArticle(), 1);
    column->addWidget(MakeScrolling(fields, this), 1);
    column->addLayout(MakeButtons());
    GiveMnemonics(*this);
    lines_[kFileNameLine]->setFocus();
    resize(fontMetrics().averageCharWidth() * kNewsColumns,
           fontMetrics().lineSpacing() * kNewsRows);
}

QLayout* NewsWindow::MakeHeader()
{
    auto* const form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    for (std::size_t i = 0; i < kHeaderLines; ++i) {
        lines_[i] = new QLineEdit(this);
        Describe(*lines_[i], kEntryLines[i].words);
        QLabel* const label = MakeLabel(kEntryLines[i].words.caption, *lines_[i]);
        if (i != kFileNameLine) {
            form->addRow(label, lines_[i]);
            continue;
        }
        auto* const row = new QHBoxLayout;
        auto* const today = MakeShyButton(kToday, this);
        lines_[i]->setMinimumWidth(fontMetrics().averageCharWidth() * kNameColumns);
        row->addWidget(lines_[i], 1);
        row->addWidget(today);
        form->addRow(label, row);
        connect(today, &QPushButton::clicked, this, &NewsWindow::PressToday);
    }
    connect(lines_[kFileNameLine], &QLineEdit::textChanged, this, &NewsWindow::NameTyped);
    return form;
}

QGroupBox* NewsWindow::MakeSites()
{
    auto* const frame = new QGroupBox(ToQt("Website"), this);
    frame->setObjectName(ToQt("Website"));
    auto* const column = new QVBoxLayout(frame);
    auto* const grid = new QGridLayout;
    column->addLayout(grid);
    for (std::size_t i = 0; i < sites_.size(); ++i) {
        sites_[i] = new QRadioButton(frame);
        sites_[i]->setObjectName(ArrayName("Option1", i));
        sites_[i]->hide();
        const int place = static_cast<int>(i);
        grid->addWidget(sites_[i], place / kSiteColumns, place % kSiteColumns);
        connect(sites_[i], &QRadioButton::toggled, this, &NewsWindow::ShowReminder);
    }
    column->addStretch();
    reminder_ = MakeReadout("reminder", "The reminder of the chosen website", frame);
    reminder_->setWordWrap(true);
    column->addWidget(reminder_);
    return frame;
}

QLayout* NewsWindow::MakeArticle()
{
    auto* const column = new QVBoxLayout;
    auto* const form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    column->addLayout(form);
    lines_.back() = new QLineEdit(this);
    Describe(*lines_.back(), kEntryLines.back().words);
    form->addRow(MakeLabel(kEntryLines.back().words.caption, *lines_.back()), lines_.back());

    text_ = new QPlainTextEdit(this);
    Describe(*text_, kArticle);
    text_->setTabChangesFocus(true);
    column->addWidget(MakeLabel(kArticle.caption, *text_));
    column->addWidget(text_, 1);

    auto* const boxes = new QHBoxLayout;
    column->addLayout(boxes);
    single_spaced_ = MakeBox(kSingleSpaced, this);
    as_is_ = MakeBox(kAsIs, this);
    boxes->addWidget(single_spaced_);
    boxes->addWidget(as_is_);
    boxes->addStretch();
    return column;
}

QLayout* NewsWindow::MakeButtons()
{
    auto* const row = new QHBoxLayout;
    auto* const grab = MakeShyButton(kGrab, this);
    auto* const show_source = MakeShyButton(kShowSource, this);
    auto* const clear = MakeShyButton(kClearNews, this);
    auto* const do_it = MakeShyButton(kMakeNews, this);
    auto* const abort = MakeShyButton(kAbort, this);
    row->addWidget(grab);
    row->addWidget(show_source);
    row->addWidget(clear);
    row->addStretch();
    row->addWidget(do_it);
    row->addWidget(abort);
    connect(grab, &QPushButton::clicked, this, &NewsWindow::PressGrabSource);
    connect(show_source, &QPushButton::clicked, this,
            [this] { this->desk().ShowMessage(SourceString(Item())); });
    connect(clear, &QPushButton::clicked, this, [this] { ShowItem({}); });
    connect(do_it, &QPushButton::clicked, this, &NewsWindow::PressDoIt);
    connect(abort, &QPushButton::clicked, this, &QDialog::close);
    return row;
}

void NewsWindow::Fill()
{
    try {
        settings_ = ReadNewsSettings(workspace().machine().files);
    } catch (const RunError& error) {
        desk().ShowMessage(ErrorText(error));
    }
    ShowSites();
}

void NewsWindow::ShowSites()
{
    const std::size_t chosen = ChosenSite();
    for (std::size_t i = 0; i < sites_.size(); ++i) {
        const bool used = i < settings_.presets.size();
        sites_[i]->setVisible(used);
        sites_[i]->setText(used ? AsShown(CaptionOf(settings_.presets[i])) : QString());
        sites_[i]->setToolTip(used ? ToTip(settings_.presets[i].folder) : QString());
        sites_[i]->setAccessibleDescription(used ? ToQt(settings_.presets[i].folder) : QString());
    }
    if (chosen > settings_.presets.size()) {
        // Only outside an exclusive group can the last one be switched off.
        sites_[chosen - 1]->setAutoExclusive(false);
        sites_[chosen - 1]->setChecked(false);
        sites_[chosen - 1]->setAutoExclusive(true);
    }
    GiveMnemonics(*this);
    ShowReminder();
}

void NewsWindow::ShowReminder()
{
    const std::size_t site = ChosenSite();
    const bool known = site >= 1 && site <= settings_.presets.size();
    SetReadout(*reminder_, known ? settings_.presets[site - 1].reminder : std::string());
}

std::size_t NewsWindow::ChosenSite() const
{
    for (std::size_t i = 0; i < sites_.size(); ++i)
        if (sites_[i]->isChecked())
            return i + 1;
    return 0;
}

NewsItem NewsWindow::Item() const
{
    NewsItem item;
    for (std::size_t i = 0; i < kEntryLines.size(); ++i)
        item.*kEntryLines[i].value = LineText(*lines_[i]);
    item.site = ChosenSite();
    item.text = FieldText(*text_);
    item.single_spaced = single_spaced_->isChecked();
    item.as_is = as_is_->isChecked();
    return item;
}

void NewsWindow::ShowItem(const NewsItem& item)
{
    const QSignalBlocker blocker(lines_[kFileNameLine]); // nobody is typing
    for (std::size_t i = 0; i < kEntryLines.size(); ++i)
        if (item.*kEntryLines[i].value != LineText(*lines_[i]))
            SetLineText(*lines_[i], item.*kEntryLines[i].value);
    if (item.text != FieldText(*text_))
        SetFieldText(*text_, item.text);
    single_spaced_->setChecked(item.single_spaced);
    as_is_->setChecked(item.as_is);
}

void NewsWindow::NameTyped()
{
    NewsItem item = Item();
    FillFromName(item, settings_);
    ShowItem(item);
}

void NewsWindow::PressToday()
{
    NewsItem item = Item();
    item.file_name = DateCodeOf(workspace().machine().clock.Now());
    FillFromName(item, settings_);
    ShowItem(item);
}

void NewsWindow::PressGrabSource()
{
    NewsItem item = Item();
    GrabSource(item, workspace().machine().clipboard.Text());
    ShowItem(item);
}

void NewsWindow::PressDoIt()
{
    desk().Run([this] {
        settings_ = ReadNewsSettings(workspace().machine().files);
        WriteNews(workspace(), Item(), settings_);
    });
    ShowSites();
}

void NewsWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        SideWindow::keyPressEvent(event);
        return;
    }
    // Enter presses the button it is on; anywhere else it goes on to the next field.
    if (auto* const button = qobject_cast<QPushButton*>(focusWidget()))
        button->click();
    else
        focusNextChild();
}

} // namespace kiv
