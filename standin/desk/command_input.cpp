#include "standin/desk/command_input.h"

#include <cwctype>

namespace desk {

void InputQueue::post(std::wstring_view text)
{
    if (text == L"CANCELCMD") {
        characters_.push_back(cancel);
    } else {
        characters_.insert(characters_.end(), text.begin(), text.end());
    }
}

wchar_t InputQueue::take()
{
    const wchar_t character = characters_.front();
    characters_.pop_front();
    return character;
}

LineEvent typeCharacter(std::wstring& line, wchar_t character, bool blanksAreText)
{
    switch (character) {
    case L'\r':
    case L'\n':
        return LineEvent::entered;
    case L' ':
        if (!blanksAreText)
            return LineEvent::entered;
        break;
    case InputQueue::cancel:
    case 0x03: // Ctrl+C, the older way to cancel in posted texts
        line.clear();
        return LineEvent::cancelled;
    case L'\t':
        return LineEvent::refresh;
    case L'\b':
        if (!line.empty())
            line.pop_back();
        return LineEvent::changed;
    default:
        break;
    }
    if (!std::iswcntrl(character))
        line += character;
    return LineEvent::changed;
}

void CommandHistory::add(const std::wstring& line)
{
    if (!line.empty() && (lines_.empty() || lines_.back() != line))
        lines_.push_back(line);
    position_ = lines_.size();
    draft_.clear();
}

std::wstring CommandHistory::older(const std::wstring& draft)
{
    if (position_ == lines_.size())
        draft_ = draft;
    if (position_ > 0)
        --position_;
    return position_ < lines_.size() ? lines_[position_] : draft_;
}

std::wstring CommandHistory::newer(const std::wstring& draft)
{
    if (position_ == lines_.size())
        return draft;
    ++position_;
    return position_ < lines_.size() ? lines_[position_] : draft_;
}

std::wstring upperCase(std::wstring text)
{
    for (wchar_t& character : text)
        character = static_cast<wchar_t>(std::towupper(character));
    return text;
}

} // namespace desk
