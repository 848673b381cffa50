// Block tags that are none, and end tags that end nothing.
#include "blocks/dispatcher.h"
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "inspect/word_slips.h"
#include "text/joined_text.h"
#include "text/nearest.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <limits>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace kiv {

namespace {

constexpr std::string_view kOrange = "zuorange"; // a colour in the tables of includes

/// A tag "<zu..." or "</zu..." of a line.
struct Tag {
    std::string_view text; // up to its ">", else to the end of its name
    std::string_view name; // "zutable"
    bool is_end = false;
};

/// Whether a name is a block tag's but for one letter.
bool IsNearTag(std::string_view name, std::span<const BlockTagForm> forms)
{
    constexpr std::size_t kLeast = 6; // letters of such a name
    if (name.size() < kLeast)
        return false;
    const std::string lower = LowerCase(name);
    return std::ranges::any_of(forms, [&](const BlockTagForm& form) {
        const std::string_view known = form.tag.substr(1, form.tag.size() - 2);
        return EditDistance(lower, known) == 1;
    });
}

/// The tags of a line that begin with "<zu" or "</zu", in any case, or would with one letter more,
/// less or swapped.
std::vector<Tag> TagsIn(std::string_view line, std::span<const BlockTagForm> forms)
{
    std::vector<Tag> tags;
    for (std::size_t at = line.find('<'); at != npos; at = line.find('<', at + 1)) {
        const bool is_end = line.substr(at + 1).starts_with('/');
        const std::string_view rest = line.substr(at + (is_end ? 2 : 1));
        const std::string_view name = HeadWord(rest);
        if (!StartsWithNoCase(name, "zu") && !IsNearTag(name, forms))
            continue;
        const std::size_t end = rest.find('>');
        const std::size_t size = end == npos ? name.size() : end + 1;
        tags.push_back({line.substr(at, size + (is_end ? 2 : 1)), name, is_end});
    }
    return tags;
}

/// "</zutable>" for "<zutable>".
std::string EndOf(const BlockTagForm& form)
{
    return Joined({"</", form.tag.substr(1)});
}

/// Of a line that goes on behind its block, as many characters as the end tag has are taken out.
bool EndsBlock(const BlockTagForm& form, std::string_view text)
{
    return std::ranges::any_of(form.ends,
                               [&](std::string_view end) { return text.starts_with(end); }) &&
           (!form.is_one_line || text.size() == EndOf(form).size());
}

constexpr int kUnknown = std::numeric_limits<int>::max(); // a last line

class TagReader {
  public:
    TagReader(const SiteView& site, const SourceText& source, FindingSink& sink)
        : site_(site), source_(source), sink_(sink)
    {
        for (const BlockTagForm& form : forms_)
            starts_.push_back(form.tag);
        for (const BlockLines& block : site.blocks)
            if (&site.sources[block.lines.source] == &source)
                ends_.emplace(block.lines.first, block.lines.last);
    }

    /// Where nothing is known of the lines, their reading ended in an error.
    void Run()
    {
        for (std::size_t index = 0; index < source_.lines.size(); ++index) {
            const LineParts parts = source_.PartsOf(index);
            if (!source_.parts.empty() && !parts.IsRead())
                continue;
            line_ = static_cast<int>(index) + 1;
            if (parts.Has(LinePart::frame))
                LookAtFrame(source_.lines[index]);
            else
                LookAt(source_.lines[index]);
        }
    }

  private:
    void Add(std::string text, std::string suggestion)
    {
        sink_.Add(site_.PlaceOf(source_, line_), std::move(text), std::move(suggestion));
    }

    void LookAtFrame(std::string_view line)
    {
        for (const Tag& tag : TagsIn(line, forms_))
            if (std::ranges::find(starts_, LowerCase(tag.text)) != starts_.end())
                Add(Joined({tag.text, " stays as it is: a template has no block tags"}), {});
    }

    void LookAt(std::string_view line)
    {
        const bool may_break_off = last_ == kUnknown && line.starts_with('@');
        if (open_ != nullptr && (line_ > last_ || (may_break_off && !line.starts_with("@@"))))
            broken_ = std::exchange(open_, nullptr);
        if (line.starts_with(';') && open_ == nullptr)
            return;
        if (line.find('<') == npos)
            return;
        const BlockTagForm* inside = nullptr; // a block that begins and ends in the line
        for (const Tag& tag : TagsIn(line, forms_)) {
            if (EqualsNoCase(tag.name, kOrange))
                continue;
            if (tag.is_end)
                LookAtEnd(tag, inside);
            else if (open_ == nullptr)
                LookAtStart(tag, inside);
        }
    }

    /// A block goes on as long as the build says. One in which the reading ended in an error is not
    /// told of.
    void Open(const BlockTagForm& form)
    {
        const auto end = ends_.find(line_);
        open_ = &form;
        broken_ = nullptr;
        last_ = end == ends_.end() ? kUnknown : end->second;
    }

    void LookAtStart(const Tag& tag, const BlockTagForm*& inside)
    {
        // An include has tables alone, and takes every "<zutab" for one.
        if (!source_.is_page_list && tag.text.starts_with("<zutab")) {
            return Open(*std::ranges::find(forms_, "<zutable>", &BlockTagForm::tag));
        }
        const bool is_seen = tag.text.starts_with("<zu");
        const std::string lower = LowerCase(tag.text);
        for (const BlockTagForm& form : forms_) {
            if (!is_seen || form.tag != lower)
                continue;
            // The build has a message for one in an include, and goes on.
            if (form.is_one_line)
                inside = &form;
            else if (source_.is_page_list)
                Open(form);
            return;
        }
        const std::string bare = Joined({"<", LowerCase(tag.name), ">"});
        const std::string_view near = Nearest(bare, starts_);
        // What the build does not see may be a word of some other language of marks.
        const bool is_zu = StartsWithNoCase(tag.name, "zu");
        if (is_seen || (!near.empty() && (!is_zu || LowerCase(near) == bare)))
            Add(Joined({tag.text, " is not a block tag"}), DidYouMean(near));
    }

    void LookAtEnd(const Tag& tag, const BlockTagForm* inside)
    {
        const BlockTagForm* const form = open_ != nullptr ? open_ : inside;
        if (form != nullptr && EndsBlock(*form, tag.text)) {
            open_ = form == open_ ? nullptr : open_;
            return;
        }
        if (form != nullptr)
            return Add(Joined({tag.text, " does not end ", form->tag}),
                       Joined({"write ", EndOf(*form)}));
        if (const auto* const broken = std::exchange(broken_, nullptr);
            broken != nullptr && EndsBlock(*broken, tag.text))
            return; // the build has told why
        const std::string bare = Joined({"<", LowerCase(tag.name), ">"});
        const std::string_view near = Nearest(bare, starts_);
        if (!near.empty())
            Add(Joined({tag.text, " ends nothing"}),
                DidYouMean(near == bare ? "" : Joined({"</", near.substr(1)})));
    }

    const SiteView& site_;
    const SourceText& source_;
    FindingSink& sink_;
    const std::vector<BlockTagForm> forms_ = BlockTagForms();
    std::vector<std::string_view> starts_;
    std::map<int, int> ends_; // of the blocks that the build has read: first and last line
    const BlockTagForm* open_ = nullptr;   // a block of several lines
    const BlockTagForm* broken_ = nullptr; // the last one that the build has broken off
    int last_ = 0;                         // of its lines
    int line_ = 0;
};

} // namespace

void FindMisspelledTags(const SiteView& site, FindingSink& sink)
{
    const std::string failed = site.error ? site.error->where.file : std::string();
    for (const SourceText& source : site.sources)
        if (!source.parts.empty() || EqualsNoCase(source.path, failed))
            TagReader(site, source, sink).Run();
}

} // namespace kiv
