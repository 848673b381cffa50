// The pages of all sections that are looked at together, and where their addresses lead.
#pragma once

#include "inspect/addresses.h"
#include "inspect/folder_names.h"
#include "inspect/html_facts.h"
#include "inspect/site_view.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kiv {

/// Where an address leads.
struct Target {
    enum class State {
        unjudged, // to no file of the site, or nobody can know
        drive,    // to the disk of who wrote it
        missing,
        no_index, // to a folder without an index page
        found,
    };
    State state = State::unjudged;
    bool has_backslash = false;
    bool is_misspelled = false; // in the case of its letters alone
    std::string spelling = {};  // the path as it should be; of a missing one the nearest, if any
    std::string path = {};      // absolute drive path of what was found
    std::string fragment = {};
    std::size_t page = kNone; // that was found, 0-based, of LinkedSite::Pages

    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
};

/// A page with what it says and where that leads.
struct LinkedPage {
    const SiteView* view = nullptr; // null: no page list that is looked at writes it
    const PageText* text = nullptr; // the same
    std::string path = {};          // absolute drive path
    PageFacts facts = {};
    std::vector<const Target*> targets = {};         // of facts.links, one for each
    std::set<std::string, std::less<>> anchors = {}; // that a link may lead to
    bool is_linked = false;                          // by another page
};

class LinkedSite {
  public:
    /// Reads all pages. The sections must outlive it; their files are looked at now and not later.
    /// `between` is called between two pages, and may end it by what it throws.
    LinkedSite(std::span<const SiteView* const> sections, const std::function<void()>& between);
    LinkedSite(const LinkedSite&) = delete;
    LinkedSite& operator=(const LinkedSite&) = delete;

    /// Those of the sections first, then others that they lead to in their folders.
    const std::deque<LinkedPage>& Pages() const { return pages_; }
    /// A page by its absolute path; null when it is none of them.
    const LinkedPage* Find(std::string_view path) const;
    /// Whether a page shows the file or leads to it, or a style sheet names it. By absolute path.
    bool IsUsed(std::string_view path) const;
    /// All of those, as absolute drive paths in the order of their upper-cased names.
    std::vector<std::string> UsedFiles() const;
    /// Whether script of any page names a file so.
    bool IsMentioned(std::string_view name) const;
    /// Whether there are addresses that nobody knows: a server makes them, a page could not be
    /// read, or an error ended a build. Then anything may be used.
    bool HasUnknownAddresses() const { return has_unknown_; }
    /// Whether a build with the New Year switch writes the page. By absolute path.
    bool IsWaiting(std::string_view path) const;
    FolderIndex& Folders() const { return folders_; }
    /// Whether a file lies with the sections: in their folders, or in that of a group they are of.
    /// What others hold is nobody's business here. By absolute path.
    bool IsInside(std::string_view path) const;
    /// A file of them that is no page of the sections; none when it cannot be read, or is too large
    /// or one too many for that. Nothing may be claimed then of what it would have named.
    std::optional<std::string> Read(const std::string& path) const;
    /// The section whose pages are written into the folder; null where there is none or it is not
    /// looked at. `is_known` is false then when there is one.
    const SiteView* SectionOf(std::string_view folder, bool& is_known) const;

  private:
    void AddPages(const SiteView& section, const std::function<void()>& between);
    void AddPage(LinkedPage page, std::string_view bytes);
    void Follow(const Target& target, LinkKind kind);
    void ResolveLinks(std::size_t number);
    const Target& TargetOf(const LinkedPage& page, const std::string& folder, const PageLink& link);
    std::string BaseFolder(const LinkedPage& page);
    Target Resolve(std::string_view folder, const Address& address, LinkKind kind) const;
    Target FindFrom(std::string_view folder, const std::string& path, LinkKind kind) const;
    bool IsSource(std::string_view folder, std::string path) const;
    bool Use(const std::string& path);
    void TakeFoundPage(const std::string& path);
    void TakeScript(const std::string& path);
    void TakeStyleSheets(const std::string& first);
    void Mention(const std::vector<std::string>& names);

    Files& files_;
    mutable FolderIndex folders_;
    std::span<const SiteView* const> sections_;
    std::vector<std::string> inside_; // folders, each ends in "\"
    ReadingTime time_;
    mutable std::uint64_t left_to_read_ = std::uint64_t{256} << 20U; // in bytes
    std::deque<LinkedPage> pages_;
    std::map<std::string, std::size_t, std::less<>> by_path_; // upper-cased path to page
    std::unordered_map<std::string, Target> targets_;         // by folder, kind and address
    std::map<std::string, std::string, std::less<>> used_;    // by upper-cased path
    std::set<std::string, std::less<>> mentioned_;            // upper-cased names
    std::set<std::string> waiting_;                           // upper-cased paths
    bool has_unknown_ = false;
};

} // namespace kiv
