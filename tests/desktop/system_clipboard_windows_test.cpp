// The clipboard as other programs of Windows see it, wide characters with CR LF. Other systems have
// one only where there is a display.
#include "desktop/window_clipboard.h"
#include "tests/desktop/window_test.h"

#include <string>
#include <windows.h>

namespace kiv {

namespace {

/// Holds the clipboard open. Another program may have it for a moment.
class OpenedClipboard {
  public:
    OpenedClipboard()
    {
        for (int i = 0; i < 100 && !open_; ++i) {
            open_ = ::OpenClipboard(nullptr) != 0;
            if (!open_)
                ::Sleep(20);
        }
    }
    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;
    ~OpenedClipboard()
    {
        if (open_)
            ::CloseClipboard();
    }

  private:
    bool open_ = false;
};

std::wstring OthersSee()
{
    const OpenedClipboard opened;
    const HANDLE held = ::GetClipboardData(CF_UNICODETEXT);
    if (held == nullptr)
        return L"(no text)";
    const std::wstring text = static_cast<const wchar_t*>(::GlobalLock(held));
    ::GlobalUnlock(held);
    return text;
}

void OthersCopy(const std::wstring& text)
{
    const OpenedClipboard opened;
    ::EmptyClipboard();
    const HGLOBAL memory = ::GlobalAlloc(GHND, (text.size() + 1) * sizeof(wchar_t));
    text.copy(static_cast<wchar_t*>(::GlobalLock(memory)), text.size());
    ::GlobalUnlock(memory);
    ::SetClipboardData(CF_UNICODETEXT, memory); // which owns the zeroed memory now
}

} // namespace

class SystemClipboardTest : public QObject {
    Q_OBJECT

  private slots:
    void GivesWideCharacters()
    {
        WindowClipboard clipboard;
        clipboard.SetText("caf\xe9 \x80 \x93quoted\x94\r\n\r\nend\r\n");
        QVERIFY(OthersSee() == L"caf\u00e9 \u20ac \u201cquoted\u201d\r\n\r\nend\r\n");
    }

    void TakesWideCharacters()
    {
        WindowClipboard clipboard;
        OthersCopy(L"caf\u00e9 \u20ac\r\n\u4e2d\r\n\r\n");
        QCOMPARE(clipboard.Text(), std::string("caf\xe9 \x80\r\n&#20013;\r\n\r\n"));
    }

    void GivesBackWhatItTook()
    {
        WindowClipboard clipboard;
        for (const std::wstring text : {L"one line", L"one\r\ntwo", L"\r\n", L"a\r\n\r\nb\r\n"}) {
            OthersCopy(text);
            clipboard.SetText(clipboard.Text());
            QVERIFY(OthersSee() == text);
        }
    }

    void LinesThatComeWithoutCrLfGoWithIt()
    {
        WindowClipboard clipboard;
        OthersCopy(L"no line end");
        clipboard.Text();
        clipboard.SetText("a\r\nb");
        QVERIFY(OthersSee() == L"a\r\nb");
    }
};

const WindowTestOf<SystemClipboardTest> system_clipboard_window("system_clipboard");

} // namespace kiv

#include "system_clipboard_windows_test.moc"
