#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace desk {

/// Text on its way to the command line, put there by acedPostCommand or a menu, taken one character at a time by
/// whoever waits for input: the command prompt itself, or the prompt of a running command.
class InputQueue
{
public:
    static constexpr wchar_t cancel = 0x1B;

    /// The word CANCELCMD alone stands for the Escape key.
    void post(std::wstring_view text);
    bool empty() const { return m_characters.empty(); }
    wchar_t take();
    void clear() { m_characters.clear(); }

private:
    std::deque<wchar_t> m_characters;
};

enum class LineEvent
{
    changed,   // a character was added or removed
    entered,   // the line is complete
    cancelled, // Escape: the line has been emptied
    refresh    // a tab: nothing is typed, the view is to be brought up to date
};

/// Types one character at the end of `line`. A blank ends the line, as Enter does, unless blanksAreText is set.
LineEvent typeCharacter(std::wstring& line, wchar_t character, bool blanksAreText);

/// The lines entered before, for Up and Down. A line equal to the one before it is kept once.
class CommandHistory
{
public:
    void add(const std::wstring& line);
    /// The next older or newer line; `draft` is what stands in the input line now and comes back below the newest.
    std::wstring older(const std::wstring& draft);
    std::wstring newer(const std::wstring& draft);

private:
    std::vector<std::wstring> m_lines;
    std::size_t m_position = 0; // m_lines.size(): at the draft
    std::wstring m_draft;
};

} // namespace desk
