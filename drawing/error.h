#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace drawing {

/// What went wrong with a drawing, in words that a draughtsman can read.
class DrawingError : public std::runtime_error
{
public:
    explicit DrawingError(const std::string& reason) : std::runtime_error(reason) {}
    /// `line` counts from 1; the message names it.
    DrawingError(std::size_t line, const std::string& reason)
        : std::runtime_error("line " + std::to_string(line) + ": " + reason), m_line(line)
    {}

    /// The same error, with the file's name before the reason.
    DrawingError inFile(const std::string& name) const
    {
        DrawingError error(name + ": " + what());
        error.m_line = m_line;
        return error;
    }

    /// The line of the file where reading gave up; 0 where no line is to blame.
    std::size_t line() const { return m_line; }

private:
    std::size_t m_line = 0;
};

} // namespace drawing
