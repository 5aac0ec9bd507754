#include "standin/desk/command_input.h"

#include <cwctype>

namespace desk {

void InputQueue::post(std::wstring_view text)
{
    if (text == L"CANCELCMD") {
        m_characters.push_back(cancel);
    } else {
        m_characters.insert(m_characters.end(), text.begin(), text.end());
    }
}

wchar_t InputQueue::take()
{
    const wchar_t character = m_characters.front();
    m_characters.pop_front();
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
    if (!line.empty() && (m_lines.empty() || m_lines.back() != line))
        m_lines.push_back(line);
    m_position = m_lines.size();
    m_draft.clear();
}

std::wstring CommandHistory::older(const std::wstring& draft)
{
    if (m_position == m_lines.size())
        m_draft = draft;
    if (m_position > 0)
        --m_position;
    return m_position < m_lines.size() ? m_lines[m_position] : m_draft;
}

std::wstring CommandHistory::newer(const std::wstring& draft)
{
    if (m_position == m_lines.size())
        return draft;
    ++m_position;
    return m_position < m_lines.size() ? m_lines[m_position] : m_draft;
}

} // namespace desk
