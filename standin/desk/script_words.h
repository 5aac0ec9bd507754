#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "standin/desk/vec2.h"

namespace desk::script {

/// A script that can't be understood; the message says what was expected instead.
class ScriptError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// A place on the drawing view: a drawing point, or view pixels when written "view:X,Y".
struct Place
{
    Vec2 at;
    bool inViewPixels = false;

    friend bool operator==(const Place&, const Place&) = default;
};

/// The words of a line of a script, taken one after the other. What can't be taken as asked for is a ScriptError;
/// `what` names it there.
class Words
{
public:
    /// Relative paths are taken from `folder`. The text must outlive the words.
    Words(std::wstring_view text, std::filesystem::path folder) : m_rest(text), m_folder(std::move(folder)) {}

    bool atEnd();
    /// A word, or what stands between two double quotes.
    std::wstring next(const char* what);
    /// All that is left, without quotes around it. May be empty.
    std::wstring remainder();
    /// Takes the words if they are the next ones.
    bool take(std::wstring_view words);
    int number(const char* what);
    /// So many numbers with commas between them.
    std::vector<double> numbers(std::wstring_view word, std::size_t count, const char* what);
    Vec2 point();
    Place place();
    /// "X,Y" and "view:X,Y" begin a place; words such as "shift" do not.
    bool placeFollows();
    /// All that is left, as a path.
    std::filesystem::path path();
    /// The next word, as a path.
    std::filesystem::path wordAsPath();

private:
    std::wstring quoted();
    std::filesystem::path pathFrom(const std::wstring& text) const;

    std::wstring_view m_rest;
    std::filesystem::path m_folder;
};

} // namespace desk::script
