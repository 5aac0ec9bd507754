#include "standin/desk/prompter.h"

#include <utility>

#include "standin/desk/coordinate_input.h"

namespace desk {

Reply Prompter::ask(const Prompt& prompt)
{
    if (m_answers != nullptr) {
        if (m_answers->empty())
            return {Reply::Kind::cancel, {}, {}};
        Reply reply = std::move(m_answers->front());
        m_answers->pop_front();
        return reply;
    }
    Waiting waiting{prompt, std::nullopt};
    Waiting* const outer = std::exchange(m_waiting, &waiting);
    m_windows.showPrompt(prompt.text);
    m_processInput();
    while (!waiting.reply) {
        if (!m_windows.pumpMessage()) {
            waiting.reply = Reply{};
        } else {
            m_processInput();
        }
    }
    m_waiting = outer;
    m_windows.showPrompt(L"");
    m_windows.overlayChanged();
    return *waiting.reply;
}

void Prompter::answer(Reply reply)
{
    if (!wantsAnswer())
        return;
    m_waiting->reply = std::move(reply);
    m_windows.wake(); // so that a pump that waits for a message comes back
}

void Prompter::type(const std::wstring& line)
{
    const Prompt& prompt = m_waiting->prompt;
    m_windows.print(prompt.text + L" " + line);
    if (line.empty()) {
        answer({Reply::Kind::enter, {}, {}});
    } else if (prompt.entities) {
        if (!m_selectByText(line))
            m_windows.print(L"Click objects, or type ALL; Enter when done.");
    } else if (const auto point = parsePoint(line, m_lastPoint); point && prompt.points) {
        m_lastPoint = *point;
        answer({Reply::Kind::point, *point, line});
    } else {
        answer({Reply::Kind::text, {}, line});
    }
}

void Prompter::point(Vec2 drawing)
{
    m_lastPoint = drawing;
    m_windows.setTypedText(L"");
    m_windows.print(m_waiting->prompt.text + L" " + formatPoint(drawing));
    answer({Reply::Kind::point, drawing, {}});
}

void Prompter::cancel()
{
    answer({Reply::Kind::cancel, {}, {}});
}

} // namespace desk
