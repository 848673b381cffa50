// The fatal error of a run: thrown where it is seen, caught once, where a command is run.
#pragma once

#include "platform/place.h"

#include <exception>
#include <string>
#include <string_view>
#include <utility>

namespace kiv {

enum class ErrorKind {
    subscript,
    file,
    end_of_file,
    invalid_argument,
    overflow,
    division,
    picture,
    memory,
};

/// The kind's name in reports, such as "end-of-file".
std::string_view KindName(ErrorKind kind);

struct RunError : std::exception {
    ErrorKind kind;
    std::string text; // what is wrong, begins in lower case
    KeptPlace where;  // filled in by the run when the spot does not know it
    std::string file; // absolute drive path of what cannot be used, the place when nobody knows one
    std::string hint; // what can be done, as a sentence; "": nothing
    bool may_pass = false; // another program may be in the way for the moment

    RunError(ErrorKind error_kind, std::string error_text, const Place& place = {},
             std::string what_to_do = {})
        : kind(error_kind), text(std::move(error_text)), where(place), hint(std::move(what_to_do))
    {
    }
    const char* what() const noexcept override { return text.c_str(); }
};

} // namespace kiv
