#include "tests/support/json.h"

#include <nlohmann/json.hpp>

#include <ostream>

namespace kiv::test {

namespace {

using Value = nlohmann::ordered_json;
using Pointer = std::shared_ptr<const void>;

const Value& ValueAt(const Pointer& pointer)
{
    return *static_cast<const Value*>(pointer.get());
}

Pointer PartOf(const Pointer& whole, const Value& part)
{
    return {whole, &part};
}

Value Completed(const Value& part, const Value& whole)
{
    if (part.is_object() && whole.is_object()) {
        Value complete = whole;
        for (const auto& [key, value] : part.items())
            complete[key] = whole.contains(key) ? Completed(value, whole.at(key)) : value;
        return complete;
    }
    Value complete = part;
    if (part.is_array() && whole.is_array() && part.size() == whole.size())
        for (std::size_t i = 0; i < part.size(); ++i)
            complete[i] = Completed(part[i], whole[i]);
    return complete;
}

} // namespace

Json Json::Parse(std::string_view text)
{
    return Json(std::make_shared<Value>(Value::parse(text)));
}

Json Json::operator[](const std::string& key) const
{
    return Json(PartOf(value_, ValueAt(value_).at(key)));
}

Json Json::operator[](std::size_t index) const
{
    return Json(PartOf(value_, ValueAt(value_).at(index)));
}

std::vector<Json> Json::Items() const
{
    std::vector<Json> items;
    for (const Value& item : ValueAt(value_).get_ref<const Value::array_t&>())
        items.push_back(Json(PartOf(value_, item)));
    return items;
}

std::vector<std::string> Json::Keys() const
{
    std::vector<std::string> keys;
    for (const auto& [key, value] : ValueAt(value_).get_ref<const Value::object_t&>())
        keys.push_back(key);
    return keys;
}

std::size_t Json::Size() const
{
    return ValueAt(value_).size();
}

bool Json::IsNull() const
{
    return ValueAt(value_).is_null();
}

std::string Json::Text() const
{
    return ValueAt(value_).get_ref<const std::string&>();
}

std::string Json::Dump() const
{
    return ValueAt(value_).dump(1);
}

Json Json::CompletedFrom(const Json& whole) const
{
    return Json(std::make_shared<Value>(Completed(ValueAt(value_), ValueAt(whole.value_))));
}

bool Json::operator==(const Json& other) const
{
    return ValueAt(value_) == ValueAt(other.value_);
}

bool Json::operator==(std::string_view text) const
{
    const auto* const own = ValueAt(value_).get_ptr<const std::string*>();
    return own != nullptr && *own == text;
}

void PrintTo(const Json& json, std::ostream* out)
{
    *out << json.Dump();
}

} // namespace kiv::test
