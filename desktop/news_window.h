// "News Item": an article's fields, the sites that it can go to, and the buttons that fill the
// fields and write the item.
#pragma once

#include "desktop/side_window.h"
#include "utilities/news_composer.h"

#include <array>

class QCheckBox;
class QGroupBox;
class QLabel;
class QLayout;
class QLineEdit;
class QPlainTextEdit;
class QRadioButton;

namespace kiv {

class NewsWindow : public SideWindow {
    Q_OBJECT

  public:
    NewsWindow(CommandDesk& desk, QWidget* parent);

  protected:
    /// Reads the sites anew. The fields hold what they held.
    void Fill() override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QLayout* MakeHeader();
    QGroupBox* MakeSites();
    QLayout* MakeArticle();
    QLayout* MakeButtons();

    void ShowSites();
    void ShowReminder();
    /// The number of the chosen site, from 1; 0: none.
    std::size_t ChosenSite() const;
    NewsItem Item() const;
    void ShowItem(const NewsItem& item);

    void NameTyped();
    void PressToday();
    void PressGrabSource();
    void PressDoIt();

    NewsSettings settings_;
    std::array<QLineEdit*, 7> lines_{}; // `Text1` to `Text6`, `Text8`
    QPlainTextEdit* text_ = nullptr;    // `Text7`
    QCheckBox* single_spaced_ = nullptr;
    QCheckBox* as_is_ = nullptr;
    std::array<QRadioButton*, kMaxPresets> sites_{};
    QLabel* reminder_ = nullptr;
};

} // namespace kiv
