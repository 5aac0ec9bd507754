// How a running command asks the user for something, and how he answers.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>

#include "standin/desk/editor_windows.h"
#include "standin/desk/vec2.h"

namespace desk {

/// What a running command asks the user for.
struct Prompt
{
    enum class Rubber
    {
        none,
        line,
        rectangle,
        circle
    };

    std::wstring text;
    bool points = true;         // a click in the view or a typed coordinate answers
    bool blanksAreText = false; // a blank belongs to the answer and does not end it
    bool entities = false;      // clicks in the view select entities
    Rubber rubber = Rubber::none;
    Vec2 base; // where the rubber shape begins, and what "@" coordinates count from
};

struct Reply
{
    enum class Kind
    {
        point,
        text,
        enter, // Enter alone
        cancel
    };

    Kind kind = Kind::cancel;
    Vec2 point;
    std::wstring text;
};

/// Puts a command's questions and takes the answers: typed, pointed, or given beforehand.
class Prompter
{
public:
    /// `processInput` types what is queued at the command line. `selectByText` takes what is typed while entities are
    /// asked for; false if it is no way to select any.
    Prompter(EditorWindows& windows, std::function<void()> processInput,
             std::function<bool(const std::wstring&)> selectByText)
        : m_windows(windows), m_processInput(std::move(processInput)), m_selectByText(std::move(selectByText))
    {}

    /// Returns when there is an answer; messages are handled meanwhile.
    Reply ask(const Prompt& prompt);

    /// What is asked for now; null if nothing is.
    const Prompt* present() const { return m_waiting != nullptr ? &m_waiting->prompt : nullptr; }
    /// A question is open that has no answer yet.
    bool wantsAnswer() const { return m_waiting != nullptr && !m_waiting->reply; }

    /// A line typed in answer to the present question, which need not take it.
    void type(const std::wstring& line);
    /// A point shown in answer to the present question.
    void point(Vec2 drawing);
    /// Nothing if no question is open.
    void cancel();

    /// The point given last, which "@" coordinates count from.
    Vec2 lastPoint() const { return m_lastPoint; }
    void setLastPoint(Vec2 point) { m_lastPoint = point; }

    /// While it lives, questions are answered from a list; with the list at its end they are cancelled.
    class AnswersBeforehand
    {
    public:
        AnswersBeforehand(Prompter& prompter, std::deque<Reply> answers)
            : m_prompter(prompter), m_answers(std::move(answers)), m_outer(prompter.m_answers)
        {
            m_prompter.m_answers = &m_answers;
        }
        ~AnswersBeforehand() { m_prompter.m_answers = m_outer; }
        AnswersBeforehand(const AnswersBeforehand&) = delete;
        AnswersBeforehand& operator=(const AnswersBeforehand&) = delete;

    private:
        Prompter& m_prompter;
        std::deque<Reply> m_answers;
        std::deque<Reply>* m_outer;
    };

private:
    struct Waiting
    {
        const Prompt& prompt;
        std::optional<Reply> reply;
    };

    void answer(Reply reply);

    EditorWindows& m_windows;
    std::function<void()> m_processInput;
    std::function<bool(const std::wstring&)> m_selectByText;
    Waiting* m_waiting = nullptr;
    std::deque<Reply>* m_answers = nullptr;
    Vec2 m_lastPoint;
};

} // namespace desk
