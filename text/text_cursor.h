#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace kiv {

/// A place in a text that is changed there again and again. In a long text, what stands before the
/// place and what stands behind it are kept apart with room between them, so that a change costs
/// what it changes and not what follows it.
class TextCursor {
  public:
    /// Stands at the beginning. Until Close `text` is not to be looked at; `store` takes what
    /// stands before the cursor, and its old content goes.
    TextCursor(std::string& text, std::string& store)
        : text_(text), before_(store), is_apart_(text.size() > kShort)
    {
        before_.clear();
    }
    TextCursor(const TextCursor&) = delete;
    TextCursor& operator=(const TextCursor&) = delete;

    /// Where it stands, 0-based.
    std::size_t At() const { return is_apart_ ? before_.size() : from_; }
    std::string_view Before() const
    {
        return is_apart_ ? std::string_view(before_) : std::string_view(text_).substr(0, from_);
    }
    std::string_view Rest() const { return std::string_view(text_).substr(from_); }
    std::size_t Size() const { return At() + text_.size() - from_; }

    /// Goes to a place in the text, 0-based.
    void MoveTo(std::size_t at)
    {
        if (!is_apart_)
            from_ = at;
        else if (at >= At())
            Advance(at - At());
        else
            GoBack(At() - at);
    }

    /// Puts `value` in the place of the first `size` characters of the rest, and stays before it.
    void Put(std::size_t size, std::string_view value)
    {
        if (is_apart_)
            return PutIntoRoom(size, value);
        text_.replace(from_, size, value);
        if (text_.size() > kShort) {
            before_.assign(text_, 0, from_);
            is_apart_ = true;
        }
    }

    /// Puts `value` in the place of the whole text, and stands at its beginning.
    void PutAll(std::string_view value)
    {
        before_.clear();
        text_ = value;
        from_ = 0;
    }

    /// The text is whole again, and the cursor is no longer of use.
    void Close()
    {
        if (is_apart_)
            text_.replace(0, from_, before_);
    }

    /// How many characters of a long text were moved since the last call.
    std::size_t TakeMoved() { return std::exchange(moved_, 0); }

  private:
    static constexpr std::size_t kShort = 1000; // moving these costs next to nothing

    void PutIntoRoom(std::size_t size, std::string_view value)
    {
        if (value.size() > from_ + size)
            MakeRoom(value.size() - size);
        from_ = from_ + size - value.size();
        value.copy(text_.data() + from_, value.size());
        moved_ += size + value.size();
    }

    void Advance(std::size_t size)
    {
        before_.append(text_, from_, size);
        from_ += size;
        moved_ += size;
    }

    void GoBack(std::size_t size)
    {
        if (size > from_)
            MakeRoom(size);
        from_ -= size;
        before_.copy(text_.data() + from_, size, before_.size() - size);
        before_.resize(before_.size() - size);
        moved_ += size;
    }

    /// Room for `size` characters and as much again as there is text, so that it is made seldom.
    void MakeRoom(std::size_t size)
    {
        const std::size_t room = size + text_.size() - from_;
        moved_ += room;
        text_.insert(0, room, '\0');
        from_ += room;
    }

    std::string& text_;    // when apart, its first `from_` characters are room
    std::string& before_;  // when apart, what stands before the cursor
    std::size_t from_ = 0; // where the rest begins in `text_`
    std::size_t moved_ = 0;
    bool is_apart_;
};

} // namespace kiv
