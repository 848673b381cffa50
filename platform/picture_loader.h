#pragma once

#include "platform/file_reader.h"

#include <string_view>

namespace kiv {

/// A picture's natural size in pixels.
struct PictureSize {
    int width = 0;
    int height = 0;
    bool operator==(const PictureSize&) const = default;
};

class PictureLoader {
  public:
    PictureLoader() = default;
    PictureLoader(const PictureLoader&) = delete;
    PictureLoader& operator=(const PictureLoader&) = delete;
    virtual ~PictureLoader() = default;

    /// The size of a JPEG, GIF, PNG or BMP, told apart by content. Throws RunError of kind
    /// `picture` naming the path and what the file looks like when it is none of them, cannot be
    /// read, or has a side of 0 pixels.
    virtual PictureSize Size(std::string_view path) = 0;
};

/// Reads the header and no more.
class HeaderPictureLoader : public PictureLoader {
  public:
    explicit HeaderPictureLoader(FileReader& files) : files_(files) {}
    PictureSize Size(std::string_view path) override;

  private:
    FileReader& files_;
};

} // namespace kiv
