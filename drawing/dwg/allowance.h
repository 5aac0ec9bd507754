#pragma once

#include <cstddef>
#include <string>

namespace drawing::dwg {

/// Bounds the memory that the objects of one file may take together. A few bits can claim much of it: a real takes two
/// bits, a name that is repeated a handle, and a group takes fifty bytes. What ordinary files hold is far below.
class Allowance
{
public:
    explicit Allowance(std::size_t fileSize) : m_left(least + fileSize * ofByte) {}

    /// Throws DrawingError where so many bytes are not left.
    void take(std::size_t bytes);

    // Roughly what things take; texts count on top where they are longer than a string holds in place.
    static constexpr std::size_t ofObject = 600;
    static constexpr std::size_t ofGroup = 44;
    static std::size_t ofText(const std::string& text) { return text.size() < inPlace ? 0 : text.size() + inPlace; }

private:
    static constexpr std::size_t least = 32'000'000;
    static constexpr std::size_t ofByte = 26; // of the file
    static constexpr std::size_t inPlace = 16;

    std::size_t m_left;
};

} // namespace drawing::dwg
