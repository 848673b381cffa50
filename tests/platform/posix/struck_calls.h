// System calls that a test strikes at: they fail, or say that they did, or something else happens
// first.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace kiv {

/// What happens to the calls of one name: "fchmod", …; see struck_calls.cpp.
struct Strike {
    std::string call;
    int error = 0; // 0: they do not fail
    bool is_done_all_the_same = false;
    int spared = 0;                    // how many pass first; writes among them fall short
    std::function<void()> before = {}; // none of what it does is struck
    std::function<void()> after = {};
};

/// Holds while it lives; one at a time.
class StruckCalls {
  public:
    explicit StruckCalls(std::vector<Strike> strikes);
    StruckCalls(const StruckCalls&) = delete;
    StruckCalls& operator=(const StruckCalls&) = delete;
    ~StruckCalls();
};

/// What was flushed since the program started, by "file" and "folder".
std::vector<std::string>& Flushed();

} // namespace kiv
