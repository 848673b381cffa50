#include "tests/server_scripts/script_tokens.h"

#include <algorithm>
#include <cctype>
#include <cstddef>

namespace kiv::test {

namespace {

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsLetter(char c)
{
    return std::isalpha(static_cast<unsigned char>(c)) != 0 && static_cast<unsigned char>(c) < 0x80;
}

class Tokenizer {
  public:
    Tokenizer(std::string_view line, std::vector<std::string>& faults)
        : line_(line), faults_(faults)
    {
    }

    std::vector<Token> Run()
    {
        while (at_ < line_.size() && line_[at_] != '\'') {
            const char c = line_[at_];
            if (c == ' ' || c == '\t')
                ++at_;
            else if (c == '"')
                TakeText();
            else if (IsLetter(c))
                TakeWord();
            else if (IsDigit(c))
                TakeWhile(TokenKind::number, [](char d) { return IsDigit(d) || d == '.'; });
            else
                TakeSign();
        }
        return tokens_;
    }

  private:
    template <typename Belongs>
    void TakeWhile(TokenKind kind, Belongs belongs)
    {
        const std::size_t start = at_;
        while (at_ < line_.size() && belongs(line_[at_]))
            ++at_;
        tokens_.push_back({kind, std::string(line_.substr(start, at_ - start))});
    }

    void TakeWord()
    {
        TakeWhile(TokenKind::word, [](char c) { return IsLetter(c) || IsDigit(c) || c == '_'; });
        std::string& word = tokens_.back().value;
        std::transform(word.begin(), word.end(), word.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    }

    void TakeText()
    {
        std::string text;
        for (++at_; at_ < line_.size(); ++at_) {
            if (line_[at_] == '"') {
                ++at_;
                if (at_ >= line_.size() || line_[at_] != '"') {
                    tokens_.push_back({TokenKind::text, text});
                    return;
                }
            }
            text += line_[at_];
        }
        faults_.push_back("a text does not end on its line");
        tokens_.push_back({TokenKind::text, text});
    }

    void TakeSign()
    {
        for (const std::string_view sign : {"<>", "<=", ">=", "&", "+", "-", "*", "/", "\\", "^",
                                            "=", "<", ">", "(", ")", ",", ".", ":", "_"})
            if (line_.substr(at_).starts_with(sign)) {
                tokens_.push_back({TokenKind::sign, std::string(sign)});
                at_ += sign.size();
                return;
            }
        faults_.push_back(std::string("no sign of the language: ") + line_[at_]);
        ++at_;
    }

    std::string_view line_;
    std::vector<std::string>& faults_;
    std::size_t at_ = 0;
    std::vector<Token> tokens_;
};

} // namespace

std::vector<Token> TokensOf(std::string_view line, std::vector<std::string>& faults)
{
    return Tokenizer(line, faults).Run();
}

} // namespace kiv::test
