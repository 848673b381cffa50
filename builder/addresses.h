#pragma once

#include <string>

namespace kiv {

/// Addresses that generated pages point at; the user sets them in a list file.
struct Addresses {
    std::string kel = "http://kel.example.com/"; // media base, ends in "/"
    std::string mor = "http://mor.example.com/"; // media base, ends in "/"
    std::string plugin_page = "http://plugin.example.com/get";
    std::string plugin_cabinet = "http://plugin.example.com/player.cab#version=7,0,0,0";
    std::string sender = "webmaster@example.com";
    std::string recipient = "webmaster@example.com";
};

} // namespace kiv
