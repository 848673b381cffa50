#include "tests/server_scripts/script_checker.h"

#include "tests/server_scripts/script_expression.h"
#include "tests/server_scripts/script_tokens.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace kiv::test {

namespace {

constexpr std::size_t npos = std::string_view::npos;

/// The text that a concatenation gives when every value that is no literal is the letter x.
std::string Concatenated(const std::vector<Token>& tokens, std::size_t from)
{
    std::string text;
    bool after_value = false; // a designator of several tokens is one x
    for (std::size_t i = from; i < tokens.size(); ++i) {
        if (tokens[i].kind == TokenKind::text)
            text += tokens[i].value;
        else if (tokens[i].value == "&")
            after_value = false;
        else if (!std::exchange(after_value, true))
            text += "x";
    }
    return text;
}

/// Throws when quotes, parentheses or brackets of a database statement do not match.
void CheckSql(const std::string& sql)
{
    std::string open;
    bool quoted = false;
    for (const char c : sql) {
        if (c == '\'')
            quoted = !quoted;
        if (quoted)
            continue;
        if (c == '(' || c == '[')
            open += c;
        if (c == ')' || c == ']') {
            if (open.empty() || open.back() != (c == ')' ? '(' : '['))
                throw ScriptFault("brackets of the database statement do not match: " + sql);
            open.pop_back();
        }
    }
    if (quoted || !open.empty())
        throw ScriptFault("the database statement does not end: " + sql);
}

class PageChecker {
  public:
    explicit PageChecker(std::string_view page) : page_(page) {}

    std::vector<std::string> Run()
    {
        while (TakePlainText())
            TakeScript();
        for (const auto& [word, line] : open_)
            faults_.push_back("line " + std::to_string(line) + ": \"" + word + "\" is not closed");
        return faults_;
    }

  private:
    /// Goes behind the next "<%"; false at the end of the page.
    bool TakePlainText()
    {
        const std::size_t start = page_.find("<%", at_);
        const std::string_view plain = page_.substr(at_, start == npos ? npos : start - at_);
        const std::size_t stray = plain.find("%>");
        if (stray != npos) {
            CountLines(plain.substr(0, stray));
            Add("\"%>\" without \"<%\"");
            CountLines(plain.substr(stray));
        } else {
            CountLines(plain);
        }
        at_ = start == npos ? page_.size() : start + 2;
        return start != npos;
    }

    void TakeScript()
    {
        const std::size_t end = page_.find("%>", at_);
        const std::string_view script = page_.substr(at_, end == npos ? npos : end - at_);
        if (end == npos)
            Add("\"<%\" without \"%>\"");
        if (script.find("<%") != npos)
            Add("\"<%\" inside script");
        if (script.starts_with('='))
            CheckLine(script.substr(1), true);
        else
            CheckLines(script);
        at_ = end == npos ? page_.size() : end + 2;
    }

    void CheckLines(std::string_view script)
    {
        for (std::size_t start = 0; start != npos;) {
            const std::size_t end = script.find('\n', start);
            std::string_view line = script.substr(start, end == npos ? npos : end - start);
            if (end != npos && line.ends_with('\r'))
                line.remove_suffix(1);
            CheckLine(line, false);
            line_ += end == npos ? 0 : 1;
            start = end == npos ? npos : end + 1;
        }
    }

    /// A line that is a statement or, between "<%=" and "%>", a value.
    void CheckLine(std::string_view line, bool is_value)
    {
        std::vector<std::string> faults;
        const std::vector<Token> tokens = TokensOf(line, faults);
        for (const std::string& fault : faults)
            Add(fault);
        if (!faults.empty() || (tokens.empty() && !is_value))
            return;
        try {
            TokenReader reader(tokens);
            if (is_value)
                reader.TakeExpression();
            else
                CheckStatement(reader, tokens);
            reader.TakeEnd();
        } catch (const ScriptFault& fault) {
            Add(fault.what());
        }
    }

    void CheckStatement(TokenReader& reader, const std::vector<Token>& tokens)
    {
        if (reader.TakeIf("if"))
            CheckIf(reader, tokens);
        else if (reader.TakeIf("for"))
            CheckFor(reader);
        else if (reader.TakeIf("do"))
            CheckCondition(reader, "do");
        else if (reader.TakeIf("select"))
            CheckSelect(reader);
        else if (reader.IsNext("function") || reader.IsNext("sub"))
            CheckProcedure(reader);
        else if (!CheckInside(reader) && !CheckClosing(reader))
            CheckSimple(reader, tokens);
    }

    /// Lines that stand inside a block and neither open nor close one.
    bool CheckInside(TokenReader& reader)
    {
        if (reader.TakeIf("elseif")) {
            Expect("if");
            reader.TakeExpression();
            reader.Take("then");
        } else if (reader.TakeIf("case")) {
            Expect("select");
            if (!reader.TakeIf("else"))
                reader.TakeExpressions();
        } else if (reader.TakeIf("else")) {
            Expect("if");
        } else {
            return false;
        }
        return true;
    }

    bool CheckClosing(TokenReader& reader)
    {
        if (reader.TakeIf("next"))
            Close("for");
        else if (reader.TakeIf("loop")) {
            Close("do");
            TakeCondition(reader);
        } else if (reader.TakeIf("end")) {
            for (const char* const word : {"if", "select", "function", "sub"})
                if (reader.TakeIf(word)) {
                    Close(word);
                    return true;
                }
            reader.Take("if, select, function or sub");
        } else {
            return false;
        }
        return true;
    }

    void CheckIf(TokenReader& reader, const std::vector<Token>& tokens)
    {
        reader.TakeExpression();
        reader.Take("then");
        if (reader.AtEnd())
            Open("if");
        else
            CheckSimple(reader, tokens); // all on one line: nothing to close
    }

    void CheckFor(TokenReader& reader)
    {
        if (reader.TakeIf("each")) {
            reader.TakeName();
            reader.Take("in");
            reader.TakeExpression();
        } else {
            reader.TakeName();
            reader.Take("=");
            reader.TakeExpression();
            reader.Take("to");
            reader.TakeExpression();
            if (reader.TakeIf("step"))
                reader.TakeExpression();
        }
        Open("for");
    }

    void CheckCondition(TokenReader& reader, const char* word)
    {
        TakeCondition(reader);
        Open(word);
    }

    static void TakeCondition(TokenReader& reader)
    {
        if (reader.TakeIf("until") || reader.TakeIf("while"))
            reader.TakeExpression();
    }

    void CheckSelect(TokenReader& reader)
    {
        reader.Take("case");
        reader.TakeExpression();
        Open("select");
    }

    void CheckProcedure(TokenReader& reader)
    {
        const char* const word = reader.TakeIf("function") ? "function" : "sub";
        if (word == std::string_view("sub"))
            reader.Take("sub");
        if (!open_.empty())
            throw ScriptFault("a procedure inside another block");
        reader.TakeName();
        if (reader.TakeIf("(") && !reader.TakeIf(")")) {
            do
                reader.TakeName();
            while (reader.TakeIf(","));
            reader.Take(")");
        }
        Open(word);
    }

    /// Declarations, assignments and calls.
    static void CheckSimple(TokenReader& reader, const std::vector<Token>& tokens)
    {
        if (reader.TakeIf("dim")) {
            do
                reader.TakeName();
            while (reader.TakeIf(","));
            return;
        }
        const bool is_set = reader.TakeIf("set");
        const std::string target = reader.TakeDesignator();
        if (is_set || reader.IsNext("=")) {
            reader.Take("=");
            const std::size_t value = reader.Position();
            reader.TakeExpression();
            if (target == "sql")
                CheckSql(Concatenated(tokens, value));
        } else if (!reader.AtEnd()) {
            reader.TakeExpressions();
        }
    }

    void Open(const char* word) { open_.emplace_back(word, line_); }

    void Close(const char* word)
    {
        Expect(word);
        open_.pop_back();
    }

    void Expect(const char* word) const
    {
        if (open_.empty() || open_.back().first != word)
            throw ScriptFault("no \"" + std::string(word) + "\" is open here");
    }

    void CountLines(std::string_view text)
    {
        line_ += static_cast<int>(std::count(text.begin(), text.end(), '\n'));
    }

    void Add(const std::string& fault)
    {
        faults_.push_back("line " + std::to_string(line_) + ": " + fault);
    }

    std::string_view page_;
    std::size_t at_ = 0;
    int line_ = 1;
    std::vector<std::pair<std::string, int>> open_; // with the line of its start
    std::vector<std::string> faults_;
};

} // namespace

std::vector<std::string> FaultsOf(std::string_view page)
{
    return PageChecker(page).Run();
}

} // namespace kiv::test
