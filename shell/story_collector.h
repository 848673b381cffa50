// Takes what was asked for out of a traced build.
#pragma once

#include "builder/trace.h"
#include "shell/line_stories.h"

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv {

/// The same lines, told.
ToldPlace Told(const SourceSpan& span);

/// How much is told at once. Nobody reads as much, and a hostile site must not take the memory.
struct StoryBounds {
    std::size_t characters = 64'000'000; // of steps; past them a line's steps come without texts
    std::size_t lines = 500'000;         // past them lines are counted alone
};

/// What fits the name best is meant; of two pages that fit it equally well, the first.
class StoryCollector : public Trace {
  public:
    enum class Takes { pages, sources };

    /// `directory`: the site's, where names begin. `takes` says what the question's place is taken
    /// for.
    StoryCollector(const StoryQuestion& question, std::string_view directory, Takes takes,
                   const StoryBounds& bounds = {});

    /// What was found; the places have no names yet but their drive paths.
    Stories& Found() { return found_; }
    /// Every page, and for sources every source, that the build told of.
    std::vector<std::string> Names() const { return {names_.begin(), names_.end()}; }

    bool BeginPage(const TracedPage& page) override;
    void TakeLine(const LineStory& story) override;
    void TakeUnused(const LineStory& story) override;
    void TakeSource(std::string_view file) override;

  private:
    /// How well a file fits what was asked for.
    enum class Fit { none, stem, name, path };
    Fit FitOf(std::string_view name, std::string_view path) const;
    void Choose(Fit fit, Stories::Kind kind, std::string_view name, std::string_view path);
    void LookAtSources(const LineStory& story);
    void LookAt(std::string_view source);
    bool IsOfSource(const LineStory& story);
    void TakeOfSource(const LineStory& story, bool is_on_page);
    bool IsAsked(int line, std::string_view text, std::string_view before) const;
    /// Adds the lines that a story makes, those that are asked for.
    void Add(const LineStory& story, bool is_on_page);
    void AddSteps(ToldLine& line, const LineStory& story, int number);
    void CoverOlderPage();

    const StoryQuestion& question_;
    const StoryBounds bounds_;
    const Takes takes_;
    std::string name_;               // that was asked for, with "\"
    std::vector<std::string> paths_; // that it may mean
    Stories found_;
    Fit fit_ = Fit::none;
    std::string page_; // the one in work
    std::string page_path_;
    std::string last_source_; // that was looked at
    std::set<std::string> names_;
    std::set<std::pair<int, std::string>> unused_; // first line and reason
    std::map<std::string, std::size_t> pages_;     // of a source's stories, the first of each page
    std::size_t kept_ = 0;                         // characters in the steps of what was found
};

} // namespace kiv
