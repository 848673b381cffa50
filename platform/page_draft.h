// A page on its way to its place: what a thread prepares of it, and what is left to do then.
#pragma once

#include "platform/files.h"
#include "platform/former_files.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace kiv {

/// What was prepared of a page.
struct PreparedPage {
    enum class Outcome : std::uint8_t {
        failed,  // or never begun
        held,    // the file holds the bytes already
        drafted, // they are written, and wait for their place
    };
    Outcome outcome = Outcome::failed;
    std::optional<FormerFile> former = {};   // what the file held, where that was asked for
    std::vector<std::string_view> lost = {}; // of it, what the system did not let the page keep
};

/// What was drafted and never put in place is taken away with the draft.
class PageDraft {
  public:
    /// The file and the bytes outlive every call but the destructor's, which may come later.
    /// `is_former_known`: nobody asks what the file held.
    PageDraft(const OutputFile& file, std::string_view bytes, bool is_former_known)
        : file_(file), bytes_(bytes), is_former_known_(is_former_known)
    {
    }
    PageDraft(OutputFile&&, std::string_view, bool) = delete;
    PageDraft(const PageDraft&) = delete;
    PageDraft& operator=(const PageDraft&) = delete;
    virtual ~PageDraft() = default;

    const OutputFile& File() const { return file_; }
    std::string_view Bytes() const { return bytes_; }

    /// For any thread: looks whether the file holds the bytes, and if not, writes them where nobody
    /// sees them.
    void Prepare() noexcept;
    const PreparedPage& Prepared() const { return prepared_; }

    /// For any thread, when the pages before it have their places: gives what was drafted its own.
    /// False when the page has to go the ordinary way; nothing has changed then.
    bool Place() noexcept;

  protected:
    // What they throw counts as failed.
    virtual PreparedPage Make() = 0;
    /// Puts what was drafted in its place, by one call. False when that is not possible: nothing
    /// has changed then.
    virtual bool Put() = 0;
    bool IsFormerKnown() const { return is_former_known_; }

  private:
    const OutputFile& file_;
    std::string_view bytes_;
    bool is_former_known_;
    PreparedPage prepared_;
};

} // namespace kiv
