// JSON for tests. The library that reads it is slow to compile, so only one unit knows it.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::test {

/// A JSON value, perhaps a part of a larger one. Every function that does not fit the value's kind
/// throws a std::exception.
class Json {
  public:
    static Json Parse(std::string_view text);

    /// The member of an object, the item of an array (from 0); throw when there is none.
    Json operator[](const std::string& key) const;
    Json operator[](std::size_t index) const;
    std::vector<Json> Items() const;
    /// The keys of an object in their order.
    std::vector<std::string> Keys() const;
    /// How many items or members there are.
    std::size_t Size() const;

    bool IsNull() const;
    /// The text of a string, in UTF-8.
    std::string Text() const;
    /// The value as JSON, on many lines.
    std::string Dump() const;

    /// This value, and what its objects leave out as it is in `whole`.
    Json CompletedFrom(const Json& whole) const;

    /// The same content, with members of objects in the same order.
    bool operator==(const Json& other) const;
    /// A string of this text.
    bool operator==(std::string_view text) const;

  private:
    explicit Json(std::shared_ptr<const void> value) : value_(std::move(value)) {}

    std::shared_ptr<const void> value_; // keeps all that it is a part of
};

/// Shows a value in GoogleTest's messages.
void PrintTo(const Json& json, std::ostream* out);

} // namespace kiv::test
