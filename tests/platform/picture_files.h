// Pictures for a loader, held in memory.
#pragma once

#include "platform/file_reader.h"
#include "platform/run_error.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace kiv {

/// Holds pictures in memory and counts the bytes that are read.
class PictureFiles : public FileReader {
  public:
    std::map<std::string, std::string, std::less<>> pictures;
    std::size_t read = 0;

    std::string ReadPart(std::string_view path, std::uint64_t offset, std::size_t count) override
    {
        const auto picture = pictures.find(path);
        if (picture == pictures.end())
            throw RunError(ErrorKind::file, "no such file");
        const std::string& bytes = picture->second;
        const std::size_t from = std::min<std::size_t>(offset, bytes.size());
        std::string part = bytes.substr(from, count);
        read += part.size();
        return part;
    }

    bool FileExists(std::string_view path) override { return pictures.contains(path); }
    std::string ReadFile(std::string_view path) override { return ReadPart(path, 0, SIZE_MAX); }
};

} // namespace kiv
