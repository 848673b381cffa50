#include "cli/quoted_sources.h"

#include "platform/files.h"
#include "platform/run_error.h"
#include "text/text.h"

#include <new>

namespace kiv {

namespace {

constexpr std::uint64_t kMostHeld = std::uint64_t{32} << 20U;
constexpr std::size_t kMostLines = 1'000'000;

std::vector<std::uint32_t> LineStarts(std::string_view content)
{
    std::vector<std::uint32_t> starts;
    std::string_view rest = content;
    while (!rest.empty() && starts.size() < kMostLines) {
        starts.push_back(static_cast<std::uint32_t>(content.size() - rest.size()));
        TakeLine(rest);
    }
    return starts;
}

} // namespace

std::string_view QuotedSources::Line(const std::string& path, int number)
{
    const Source& source = SourceAt(path);
    const auto index = static_cast<std::size_t>(number) - 1;
    if (number < 1 || index >= source.starts.size())
        return {};
    std::string_view rest = std::string_view(source.content).substr(source.starts[index]);
    return TakeLine(rest);
}

const QuotedSources::Source& QuotedSources::SourceAt(const std::string& path)
{
    const auto found = sources_.find(path);
    return found != sources_.end() ? found->second
                                   : sources_.emplace(path, Read(path)).first->second;
}

QuotedSources::Source QuotedSources::Read(const std::string& path)
{
    Source source;
    try {
        const FileStamp stamp = files_.Stamp(path);
        if (!stamp.exists || stamp.size > kMostHeld - held_)
            return {};
        source.content = files_.ReadFile(path);
        source.starts = LineStarts(source.content);
        held_ += source.content.size();
    } catch (const RunError&) {
        return {}; // what is wrong with the file is not what the message is about
    } catch (const std::bad_alloc&) {
        return {};
    }
    return source;
}

} // namespace kiv
