// Lines of sources, read back to be shown below a message.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

class Files;

/// Reads each file once, when a line of it is asked for first. All of them together take bounded
/// room: a file for which there is none is passed over, and so is one that cannot be read.
class QuotedSources {
  public:
    explicit QuotedSources(Files& files) : files_(files) {}

    /// A line, 1-based, without its end; empty when there is none. The view lasts as long as this.
    std::string_view Line(const std::string& path, int number);

  private:
    struct Source {
        std::string content;
        std::vector<std::uint32_t> starts; // where each line begins; past the bound none
    };
    const Source& SourceAt(const std::string& path);
    Source Read(const std::string& path);

    Files& files_;
    std::map<std::string, Source> sources_; // by absolute drive path
    std::size_t held_ = 0;                  // bytes of content
};

} // namespace kiv
