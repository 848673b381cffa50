// The system calls that can fail, and with what.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::faults {

/// What a call is for; it decides what can go wrong with it.
enum class Role : std::uint8_t {
    look,        // stat, access, readlink …
    open,        // whether it makes a file, its flags tell
    read,        // also a folder's list
    write,       // bytes into a file
    copy,        // bytes from file to file
    close,       //
    flush,       // fsync and its like
    rename,      //
    link,        //
    unlink,      // also rmdir
    make_folder, //
    resize,      // ftruncate, fallocate
    attributes,  // mode, owner, times, extended attributes
    lock,        //
    where,       // getcwd, chdir
    start,       // processes and pipes
    map          // a file into memory
};

struct CallKind {
    long number;
    std::string_view name;
    Role role;
    int path = -1; // which argument is a path, 0-based; -1: none
};

std::span<const CallKind> CallKinds();
/// Null for a call that is none of these.
const CallKind* KindOf(long number);

/// One call as it was made.
struct Call {
    const CallKind* kind = nullptr;
    std::uint64_t arguments[6] = {};
};

/// Whether it changes something on the disk (for an open: whether it makes or empties a file).
bool Writes(const Call& call);
/// The errors that fit.
std::vector<int> ErrorsOf(const Call& call);
/// The errors that it may end with although all was done, as over a network.
std::vector<int> LateErrorsOf(const Call& call);
/// Whether it may move fewer bytes than were asked for.
bool MayFallShort(const Call& call);

/// "EIO"; a number for one without a name.
std::string ErrorName(int error);
/// The reverse; 0 for none.
int ErrorOfName(std::string_view name);

} // namespace kiv::faults
