#include "tests/server_scripts/script_expression.h"

#include <algorithm>

namespace kiv::test {

namespace {

/// Words that cannot name a variable.
const std::vector<std::string_view> kReserved = {
    "and",     "byref",    "byval",   "call",   "case",   "class",  "const", "dim",
    "do",      "each",     "else",    "elseif", "end",    "eqv",    "exit",  "false",
    "for",     "function", "if",      "imp",    "in",     "is",     "loop",  "mod",
    "next",    "not",      "nothing", "null",   "on",     "option", "or",    "preserve",
    "private", "public",   "redim",   "resume", "select", "set",    "sub",   "then",
    "to",      "true",     "until",   "wend",   "while",  "with",   "xor"};

const std::vector<std::string_view> kOperators = {"&",  "+",   "-",   "*",   "/",   "\\", "^",
                                                  "=",  "<>",  "<",   ">",   "<=",  ">=", "and",
                                                  "or", "xor", "eqv", "imp", "mod", "is"};

const std::vector<std::string_view> kConstants = {"true", "false", "nothing", "null", "empty"};

bool IsOneOf(const std::vector<std::string_view>& values, std::string_view value)
{
    return std::find(values.begin(), values.end(), value) != values.end();
}

} // namespace

bool TokenReader::IsNext(std::string_view value) const
{
    return !AtEnd() && tokens_[at_].kind != TokenKind::text && tokens_[at_].value == value;
}

bool TokenReader::TakeIf(std::string_view value)
{
    const bool is_next = IsNext(value);
    if (is_next)
        ++at_;
    return is_next;
}

void TokenReader::Take(std::string_view value)
{
    if (!TakeIf(value))
        Complain("\"" + std::string(value) + "\"");
}

std::string TokenReader::TakeName()
{
    if (AtEnd() || tokens_[at_].kind != TokenKind::word || IsOneOf(kReserved, tokens_[at_].value))
        Complain("a name");
    return tokens_[at_++].value;
}

std::string TokenReader::TakeDesignator()
{
    std::string name = TakeName();
    while (IsNext(".") || IsNext("(")) {
        if (IsNext("(")) {
            TakeArguments();
            continue;
        }
        ++at_;
        if (AtEnd() || tokens_[at_].kind != TokenKind::word) // a member may be called as it likes
            Complain("a member's name");
        name += "." + tokens_[at_++].value;
    }
    return name;
}

void TokenReader::TakeArguments()
{
    Take("(");
    if (!IsNext(")"))
        TakeExpressions();
    Take(")");
}

void TokenReader::TakeExpressions()
{
    do
        TakeExpression();
    while (TakeIf(","));
}

void TokenReader::TakeExpression()
{
    TakeOperand();
    while (IsNextOneOf(kOperators)) {
        ++at_;
        TakeOperand();
    }
}

void TokenReader::TakeOperand()
{
    while (TakeIf("not") || TakeIf("-") || TakeIf("+")) {
    }
    if (TakeIf("(")) {
        TakeExpression();
        Take(")");
        return;
    }
    if (AtEnd())
        Complain("a value");
    if (tokens_[at_].kind == TokenKind::text || tokens_[at_].kind == TokenKind::number ||
        IsNextOneOf(kConstants))
        ++at_;
    else
        TakeDesignator();
}

void TokenReader::TakeEnd()
{
    if (!AtEnd())
        Complain("the line's end");
}

bool TokenReader::IsNextOneOf(const std::vector<std::string_view>& values) const
{
    return !AtEnd() && tokens_[at_].kind != TokenKind::text && IsOneOf(values, tokens_[at_].value);
}

void TokenReader::Complain(const std::string& wanted) const
{
    throw ScriptFault("wanted " + wanted + " but got " +
                      (AtEnd() ? "the line's end" : "\"" + tokens_[at_].value + "\""));
}

} // namespace kiv::test
