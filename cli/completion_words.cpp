#include "cli/completion_words.h"

namespace kiv {

void AddWord(std::string& words, std::string_view word, std::string_view between)
{
    words.append(words.empty() ? "" : between).append(word);
}

namespace {

std::string Words(Choices (*choices)(), std::string_view between)
{
    std::string words;
    if (choices != nullptr)
        for (const std::string_view choice : choices())
            AddWord(words, choice, between);
    return words;
}

} // namespace

std::string ChoiceWords(const OptionRow& row)
{
    return Words(row.choices, " ");
}

std::string ListedWords(const OptionRow& row, std::string_view between)
{
    return Words(row.listed, between);
}

std::string GlobalOptionsWithValue(std::string_view between)
{
    std::string names;
    for (const OptionRow& row : GlobalOptions())
        if (row.takes != Takes::nothing)
            AddWord(names, row.name, between);
    return names;
}

std::string WithMarks(std::string_view text, std::string_view special, char mark)
{
    std::string marked;
    for (const char c : text) {
        if (special.find(c) != std::string_view::npos)
            marked += mark;
        marked += c;
    }
    return marked;
}

} // namespace kiv
