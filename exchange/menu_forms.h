// How the menus of a site show the page that one is on.
#pragma once

#include "exchange/page_codes.h"

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// The forms of menu entries, learned from lines that stand at one place of two pages. Each is a
/// page reference of the list, of which there can be nine.
class MenuForms {
  public:
    /// `names`: what menus call the pages, "" where they cannot know one.
    explicit MenuForms(const std::vector<std::string>& names);

    /// Learns from a line of `page` and the one that another page has there.
    void Learn(std::string_view own, const std::string& page, std::string_view other);
    /// A line of `page` with its menu entries; nothing when there is none in it.
    std::optional<CodedLine> Told(std::string_view line, const std::string& page) const;
    /// Gives up the forms that no line has that is there.
    void ForgetUnused();

  private:
    using Form = std::shared_ptr<const MenuForm>;
    struct Found {
        MenuEntry entry;
        std::size_t length = 0; // of its text in the line
    };

    void Add(MenuForm form);
    std::optional<Found> FindAt(std::string_view rest, const std::string& page) const;
    std::optional<Found> FindOther(const Form& form, std::string_view rest) const;

    std::vector<Form> forms_;
    std::set<std::string, std::less<>> names_;
    std::map<std::string, std::set<std::string>> said_; // of each page, by its name
};

} // namespace kiv
