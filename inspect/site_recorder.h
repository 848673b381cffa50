// Takes what a traced build tells and makes of it what an inspection looks at.
#pragma once

#include "builder/trace.h"
#include "inspect/site_view.h"

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace kiv {

class SiteRecorder : public Trace {
  public:
    /// `view` is filled while the build runs; Finish adds what is known in the end.
    explicit SiteRecorder(SiteView& view)
        : view_(view), written_before_(view.files.Written().size())
    {
    }

    bool BeginPage(const TracedPage& page) override;
    void TakeLine(const LineStory& story) override;
    void TakeUnused(const LineStory& story) override;
    void TakeDefinition(std::string_view mark, const SourceSpan& from) override;
    void TakeUse(const LineStory& story, const TracedUse& use) override;
    void TakeBound(const TracedBound& bound) override;

    /// Reads sources and pages after the build. A source that cannot be read any more is left
    /// without lines. Page list and template are among them also where the build did not come to
    /// them.
    void Finish();

  private:
    SourceLines Lines(const SourceSpan& span);
    static bool IsOfFile(const LineStory& story);
    static const SourceSpan& OriginOf(const LineStory& story);
    std::size_t IndexOf(std::string_view path);
    void AddIfThere(const std::string& path);
    void ReadSource(SourceText& source) const;
    void TakeSteps(const LineStory& story);
    void TakePart(const LineStory& story);
    void TakeWrapper(const LineStory& story, const TracedUse& use);
    void EndPage();
    void Add(std::vector<ConstructUse>& uses, const LineStory& story, const TracedUse& use,
             std::string_view key);
    bool IsNew(const std::vector<ConstructUse>& uses, const SourceLines& lines,
               std::string_view key);
    ConstructUse Kept(const LineStory& story, const TracedUse& use);

    SiteView& view_;
    std::map<std::string, std::size_t, std::less<>> sources_; // upper-cased path to index
    std::map<std::string, std::size_t, std::less<>> pages_;   // upper-cased path to index
    std::string last_path_;                                   // that was looked up, and its index
    std::size_t last_index_ = 0;
    std::size_t page_ = 0;                     // in work, of view_.pages
    std::optional<ConstructUse> open_wrapper_; // on the page in work
    /// By list, source, line and what tells uses of one line apart. Their texts may differ from
    /// page to page.
    std::set<std::tuple<const void*, std::size_t, int, std::string>> known_uses_;
    std::size_t written_before_; // files, by other builds
};

} // namespace kiv
