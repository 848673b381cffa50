// One generator for each server-script directive. Each takes the directive's argument, trimmed, and
// returns the block with its lines joined by CR LF. A missing field throws RunError `subscript`.
#pragma once

#include "builder/addresses.h"

#include <string>
#include <string_view>

namespace kiv {

/// A database path, "|" and a table; throws `invalid-argument` without the "|".
std::string ScriptShowDb(std::string_view argument, const Addresses&);
/// A database path.
std::string ScriptOpenDb(std::string_view argument, const Addresses&);
/// A table and a variable.
std::string ScriptKillRecord(std::string_view argument, const Addresses&);

/// Subject, from, to, message. The second form is for the newer mail object.
std::string ScriptSendEmail(std::string_view argument, const Addresses& addresses);
std::string ScriptSendEmailNewer(std::string_view argument, const Addresses& addresses);

/// A table and the fields to store.
std::string ScriptDbInsert(std::string_view argument, const Addresses&);
/// A table, the key and the fields to store.
std::string ScriptDbUpdate(std::string_view argument, const Addresses&);

/// Variables.
std::string ScriptFormRead(std::string_view argument, const Addresses&);
std::string ScriptFixQuotes(std::string_view argument, const Addresses&);

} // namespace kiv
