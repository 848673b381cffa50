// The addresses of a page, as a browser on Windows-1252 text takes them apart.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

enum class AddressKind {
    unknown,  // what it leads to depends on a server
    other,    // no file at all: "mailto:", "javascript:", "data:"
    external, // on a host that it names
    drive,    // on the disk of who wrote it: "C:\site\a.gif", "file:///C:/site/a.gif"
    site,     // relative to the page, or to the site's root
};

struct Address {
    AddressKind kind = AddressKind::other;
    std::string path;       // "/" parts it, percent codes resolved; "": the page itself
    std::string fragment;   // behind "#", percent codes resolved
    bool from_root = false; // the path begins with "/"
    bool has_backslash = false;
};

/// `text` is Windows-1252, with a mark where server code was.
Address ReadAddress(std::string_view text);

/// With the bytes that "%41" and its like stand for, as UTF-8 where they are.
std::string WithoutPercents(std::string_view text);

} // namespace kiv
