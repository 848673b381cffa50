#include "exchange/page_order.h"

#include "text/text.h"
#include "text/windows1252.h"

#include <array>
#include <string>
#include <unordered_map>
#include <utility>

namespace kiv {

namespace {

constexpr std::array<std::string_view, 6> kIndexPages = {"index.html",  "index.htm",   "index.asp",
                                                         "default.htm", "default.asp", "index.php"};

class Ordering {
  public:
    Ordering(const std::vector<FoundPage>& pages, const std::vector<PageHints>& hints)
        : pages_(pages), hints_(hints), is_placed_(pages.size())
    {
        for (std::size_t i = 0; i < pages.size(); ++i)
            numbers_.emplace(UpperCase(pages[i].name), i);
    }

    PageOrder Order()
    {
        FindNext();
        const std::size_t index = IndexPage();
        if (linked_ * 2 >= pages_.size() && linked_ > 0) {
            order_.by = OrderedBy::links_between;
            PlaceChains(index);
        } else if (index != npos) {
            Place(index);
            for (const std::string& link : hints_[index].links)
                if (Place(NumberOf(LinkTarget(link, pages_[index].name))))
                    order_.by = OrderedBy::index_page;
        }
        for (std::size_t i = 0; i < pages_.size(); ++i)
            Place(i);
        return std::move(order_);
    }

  private:
    std::size_t NumberOf(const std::string& name) const
    {
        const auto found = numbers_.find(UpperCase(name));
        return found == numbers_.end() ? npos : found->second;
    }

    bool Place(std::size_t page)
    {
        if (page == npos || is_placed_[page])
            return false;
        is_placed_[page] = true;
        order_.pages.push_back(page);
        return true;
    }

    std::size_t IndexPage() const
    {
        for (const std::string_view name : kIndexPages)
            if (const std::size_t page = NumberOf(std::string(name)); page != npos)
                return page;
        return npos;
    }

    /// Which page follows each, as it says itself or as the other one does.
    void FindNext()
    {
        next_.assign(pages_.size(), npos);
        has_previous_.assign(pages_.size(), false);
        for (std::size_t i = 0; i < pages_.size(); ++i)
            Join(i, TargetOf(i, hints_[i].next));
        for (std::size_t i = 0; i < pages_.size(); ++i)
            Join(TargetOf(i, hints_[i].previous), i);
        JoinCalled();
        for (std::size_t i = 0; i < pages_.size(); ++i)
            linked_ += next_[i] != npos || has_previous_[i] ? 1U : 0U;
    }

    std::size_t TargetOf(std::size_t page, const std::string& address) const
    {
        return NumberOf(LinkTarget(address, pages_[page].name));
    }

    /// By what links are called, where no tag says it. "Back" often leads to the page above: what
    /// one page says counts where the other one says the same, or nothing, and no third page has a
    /// link of that name to it.
    void JoinCalled()
    {
        std::vector<std::size_t> next(pages_.size(), npos);
        std::vector<std::size_t> previous(pages_.size(), npos);
        std::vector<int> called_next(pages_.size());
        std::vector<int> called_previous(pages_.size());
        for (std::size_t i = 0; i < pages_.size(); ++i) {
            const PageHints& hints = hints_[i];
            next[i] = TargetOf(i, hints.next.empty() ? hints.called_next : hints.next);
            previous[i] =
                TargetOf(i, hints.previous.empty() ? hints.called_previous : hints.previous);
            if (next[i] != npos)
                ++called_next[next[i]];
            if (previous[i] != npos)
                ++called_previous[previous[i]];
        }
        for (std::size_t i = 0; i < pages_.size(); ++i) {
            const std::size_t on = next[i];
            if (on != npos && (previous[on] == i || (previous[on] == npos && called_next[on] == 1)))
                Join(i, on);
            const std::size_t back = previous[i];
            if (back != npos &&
                (next[back] == i || (next[back] == npos && called_previous[back] == 1)))
                Join(back, i);
        }
    }

    void Join(std::size_t page, std::size_t next)
    {
        if (page == npos || next == npos || page == next || next_[page] != npos ||
            has_previous_[next])
            return;
        next_[page] = next;
        has_previous_[next] = true;
    }

    void PlaceChain(std::size_t page)
    {
        while (Place(page))
            page = next_[page];
    }

    /// The index page's chain is the first, then those that have a beginning.
    void PlaceChains(std::size_t index)
    {
        if (index != npos && !has_previous_[index])
            PlaceChain(index);
        for (std::size_t i = 0; i < pages_.size(); ++i)
            if (!has_previous_[i] && next_[i] != npos)
                PlaceChain(i);
    }

    const std::vector<FoundPage>& pages_;
    const std::vector<PageHints>& hints_;
    std::unordered_map<std::string, std::size_t> numbers_; // by upper-cased name
    std::vector<std::size_t> next_;
    std::vector<bool> has_previous_;
    std::vector<bool> is_placed_;
    std::size_t linked_ = 0;
    PageOrder order_;
};

} // namespace

std::string_view OrderWords(OrderedBy by)
{
    switch (by) {
    case OrderedBy::links_between:
        return "their links to the previous and next page";
    case OrderedBy::index_page:
        return "the links of the index page";
    case OrderedBy::names:
        break;
    }
    return "name";
}

PageOrder OrderPages(const std::vector<FoundPage>& pages, const std::vector<PageHints>& hints)
{
    return Ordering(pages, hints).Order();
}

} // namespace kiv
