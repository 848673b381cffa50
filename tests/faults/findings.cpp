#include "faults/findings.h"

#include <algorithm>
#include <iomanip>
#include <sstream>
#include <tuple>

namespace kiv::faults {

namespace {

constexpr int kNameWidth = 18;
constexpr char kMark = '\t'; // between the fields of a written line

std::vector<std::string> Fields(const std::string& line)
{
    std::vector<std::string> fields;
    std::istringstream stream(line);
    for (std::string field; std::getline(stream, field, kMark);)
        fields.push_back(field);
    return fields;
}

std::string OneLine(std::string text)
{
    for (char& c : text)
        if (c == '\n' || c == '\r' || c == kMark)
            c = ' ';
    return text;
}

} // namespace

bool Tally::Cause::operator<(const Cause& other) const
{
    return std::tie(kind, scenario, place, text) <
           std::tie(other.kind, other.scenario, other.place, other.text);
}

Tally::Row& Tally::Row::operator+=(const Row& other)
{
    tries += other.tries;
    for (std::size_t i = 0; i < found.size(); ++i)
        found[i] += other.found[i];
    return *this;
}

void Tally::Count(const std::string& attack, const std::string& scenario, const std::string& id,
                  const Verdict& verdict)
{
    Row& row = rows_[{attack, scenario}];
    ++row.tries;
    std::array<bool, kKindNames.size()> seen{};
    for (const Complaint& complaint : verdict.complaints) {
        seen[static_cast<std::size_t>(complaint.kind)] = true;
        Found& found = causes_[{complaint.kind, scenario, verdict.place, OneLine(complaint.text)}];
        if (found.times++ == 0)
            found.id = id;
    }
    for (std::size_t i = 0; i < seen.size(); ++i)
        row.found[i] += seen[i] ? 1 : 0;
}

std::string Tally::Written() const
{
    std::ostringstream out;
    for (const auto& [name, row] : rows_) {
        out << "row" << kMark << name.first << kMark << name.second << kMark << row.tries;
        for (const long found : row.found)
            out << kMark << found;
        out << '\n';
    }
    for (const auto& [cause, found] : causes_)
        out << "cause" << kMark << static_cast<int>(cause.kind) << kMark << cause.scenario << kMark
            << cause.place << kMark << cause.text << kMark << found.times << kMark << found.id
            << '\n';
    return out.str();
}

void Tally::Add(const std::string& written)
{
    std::istringstream stream(written);
    for (std::string line; std::getline(stream, line);) {
        const std::vector<std::string> fields = Fields(line);
        if (fields[0] == "row") {
            Row row{std::stol(fields[3]), {}};
            for (std::size_t i = 0; i < row.found.size(); ++i)
                row.found[i] = std::stol(fields[4 + i]);
            rows_[{fields[1], fields[2]}] += row;
        } else {
            const auto kind = static_cast<Kind>(std::stoi(fields[1]));
            Found& found = causes_[{kind, fields[2], fields[3], fields[4]}];
            found.times += std::stol(fields[5]);
            if (found.id.empty() || fields[6] < found.id)
                found.id = fields[6];
        }
    }
}

long Tally::Tries() const
{
    long tries = 0;
    for (const auto& [name, row] : rows_)
        tries += row.tries;
    return tries;
}

std::string Tally::TableOf(const std::string& head, const Rows& rows)
{
    std::ostringstream out;
    const auto print = [&](const std::string& name, const Row& row) {
        out << std::left << std::setw(kNameWidth) << name << std::right << std::setw(9)
            << row.tries;
        for (std::size_t i = 0; i < row.found.size(); ++i)
            out << std::setw(static_cast<int>(kKindNames[i].size()) + 2) << row.found[i];
        out << '\n';
    };
    out << std::left << std::setw(kNameWidth) << head << std::right << std::setw(9) << "tries";
    for (const std::string_view kind : kKindNames)
        out << "  " << kind;
    out << '\n';
    Row sum;
    for (const auto& [name, row] : rows) {
        print(name, row);
        sum += row;
    }
    print("all", sum);
    return out.str();
}

std::string Tally::Causes() const
{
    std::ostringstream out;
    for (const auto& [cause, found] : causes_)
        out << kKindNames[static_cast<std::size_t>(cause.kind)] << ": " << cause.scenario << ", at "
            << (cause.place.empty() ? "no call" : cause.place) << ": " << cause.text << "\n    "
            << found.times << (found.times == 1 ? " time; " : " times; ") << "--try " << found.id
            << '\n';
    return out.str();
}

std::string Tally::Tables() const
{
    Rows scenarios;
    Rows attacks;
    for (const auto& [name, row] : rows_) {
        attacks[name.first] += row;
        scenarios[name.second] += row;
    }
    return Causes() + "\n" + TableOf("scenario", scenarios) + "\n" + TableOf("attack", attacks);
}

} // namespace kiv::faults
