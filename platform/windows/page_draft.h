// A page on its way to its place on Windows.
#pragma once

#include "platform/page_draft.h"
#include "platform/windows/drafts.h"
#include "platform/windows/folders.h"

#include <string>
#include <string_view>

namespace kiv {

/// The file in whose place a page is put.
struct OldPage {
    WindowsState state;
    bool holds_bytes = false;
};

/// Looks at the file that is to hold `bytes`. 0 or an error number: ERROR_ALREADY_EXISTS when the
/// name is that of a folder by now.
unsigned long LookAtOldPage(const std::wstring& native, std::string_view bytes, OldPage& old);

/// What a file held, if it may be read.
FormerFile FormerOf(const std::wstring& native, const OldPage& old);

class WindowsPageDraft : public PageDraft {
  public:
    using PageDraft::PageDraft;

  protected:
    PreparedPage Make() override;
    bool Put() override;

  private:
    PreparedPage MakeOver(const std::wstring& native);

    FilledDraft filled_;
};

} // namespace kiv
