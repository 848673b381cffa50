// Words for the user. The window shows boxes, the command line prints, a test collects.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// The source line in work, as a person would look for it.
struct Place {
    const std::string* file = nullptr; // absolute drive path; null: none
    int line = 0;                      // 1-based; 0: none
    const std::string* page = nullptr; // the page being written; null: none

    /// "C:\site\_html.txt, line 12, page about.htm", or what of it there is.
    std::string Text() const;
};

/// One warning of a run, with its place; "" and 0 where there is none.
struct Warning {
    Warning(std::string_view warning_text, const Place& where);
    /// "C:\site\_html.txt, line 12, page about.htm", or what of it there is.
    std::string PlaceText() const;

    std::string text;
    std::string file;
    int line = 0;
    std::string page;
    bool was_shown = false;
};

class Reporter {
  public:
    Reporter() = default;
    Reporter(const Reporter&) = delete;
    Reporter& operator=(const Reporter&) = delete;
    virtual ~Reporter() = default;

    /// Shows one message to the user and notes it as a warning. While messages are collected, the
    /// text and "<P>" are appended to the message log instead of being shown.
    void reportmsg(std::string_view text);

    /// Notes a warning that is not shown.
    void Withhold(std::string_view text) { Note(text, place); }

    Place place;
    bool collect_messages = false;
    std::string message_log;

  protected:
    virtual void Show(std::string_view text) = 0;
    virtual void Note(std::string_view text, const Place& where) = 0;
};

} // namespace kiv
