// A look into other folders that leaves the current directory as it was.
#pragma once

#include "platform/files.h"
#include "platform/run_error.h"

#include <string>

namespace kiv {

/// Goes back to the folder in which it was made, however the look ends.
class WayBack {
  public:
    explicit WayBack(Files& files) : files_(files), folder_(files.CurrentDirectory()) {}
    WayBack(const WayBack&) = delete;
    WayBack& operator=(const WayBack&) = delete;
    ~WayBack()
    {
        try {
            if (files_.CurrentDirectory() != folder_)
                files_.ChangeDirectory(folder_);
        } catch (const RunError&) {
            // It is gone; whatever comes next will say so.
        }
    }
    const std::string& Folder() const { return folder_; }

  private:
    Files& files_;
    std::string folder_;
};

} // namespace kiv
