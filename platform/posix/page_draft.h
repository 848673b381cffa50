// A page on its way to its place on a POSIX file system.
#pragma once

#include "platform/page_draft.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/drafts.h"

#include <string>
#include <string_view>
#include <sys/stat.h>

namespace kiv {

/// The file in whose place a page is put.
struct OldPage {
    Descriptor held{-1}; // not open where it may not be read
    struct stat state {};
    bool holds_bytes = false;

    std::size_t Size() const { return static_cast<std::size_t>(state.st_size); }
    /// What it held.
    FormerFile Former() const;
};

/// Looks at the file that is to hold `bytes`. 0 or an error number: EEXIST when the name is that of
/// something else by now.
int LookAtOldPage(const std::string& native, std::string_view bytes, OldPage& old);

/// Whether the file `native` may be written into: 0 or an error number.
int MayWrite(const std::string& native);

class PosixPageDraft : public PageDraft {
  public:
    /// `tells_at_closing`: see TellsAtClosing.
    PosixPageDraft(const OutputFile& file, std::string_view bytes, bool is_former_known,
                   bool tells_at_closing)
        : PageDraft(file, bytes, is_former_known), tells_at_closing_(tells_at_closing)
    {
    }
    PosixPageDraft(OutputFile&&, std::string_view, bool, bool) = delete;

  protected:
    PreparedPage Make() override;
    bool Put() override;

  private:
    PreparedPage MakeOver();

    bool tells_at_closing_;
    FilledDraft filled_;
};

} // namespace kiv
