// The places of files that a build and the program go by, where no page should be written.
#pragma once

#include "builder/sources.h"
#include "platform/files.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kiv {

class OwnPlaces {
  public:
    /// Both must outlive it.
    OwnPlaces(Files& files, const Sources& sources) : files_(files), sources_(sources) {}

    /// What lies, or would lie, where a page is to be written, by whatever drive, link or spelling.
    enum class Kind { nothing, source, settings };
    Kind KindOf(const OutputFile& page);

  private:
    /// Looks up the places of what was not known at the last page.
    void Learn();
    void Add(std::string_view path, Kind kind);

    Files& files_;
    const Sources& sources_;
    std::unordered_map<std::string, Kind> kinds_;   // by place
    std::unordered_map<std::string, bool> folders_; // whether it is there, by path
    std::vector<std::string> names_;                // of the native paths
    std::size_t learned_ = 0;                       // of the sources
};

} // namespace kiv
