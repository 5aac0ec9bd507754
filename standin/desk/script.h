#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "imaging/geometry.h"
#include "standin/desk/vec2.h"

namespace desk::script {

/// A place on the drawing view: a drawing point, or view pixels when written "view:X,Y".
struct Place
{
    Vec2 at;
    bool inViewPixels = false;

    friend bool operator==(const Place&, const Place&) = default;
};

struct Type
{
    std::wstring text;
};
struct Click
{
    Place place;
    bool right = false, shift = false, control = false, twice = false;
};
struct Drag
{
    std::vector<Place> places; // two or more
    bool shift = false, control = false;
};
struct Move
{
    Place place;
    bool shift = false, control = false;
};
/// The left button goes down and stays down for the steps that follow.
struct Press
{
    Place place;
    bool shift = false, control = false;
};
struct Release
{
    Place place;
    bool shift = false, control = false;
};
/// The window is resized until the drawing view has this size.
struct ResizeView
{
    imaging::Size size;
};
struct Key
{
    unsigned virtualKey = 0; // 0 when a character is meant
    wchar_t character = 0;
};
struct Button
{
    int id = 0;
};
struct DropArrow
{
    int id = 0;
};
struct MenuEntry
{
    int id = 0;
};
struct WaitForDialog
{
    std::wstring title;
};
struct SetText
{
    int id = 0;
    std::wstring text;
};
struct Check
{
    int id = 0;
    bool on = false;
};
struct Choose
{
    int id = 0;
    int index = 0;
};
struct Slide
{
    int id = 0;
    int position = 0;
};
struct Push
{
    int id = 0;
};
struct PickFile
{
    std::filesystem::path path;
};
struct Answer
{
    int button = 0; // IDOK, IDCANCEL, IDYES or IDNO
};
struct Wait
{
    int milliseconds = 0;
};
struct Idle
{};
struct Shot
{
    std::filesystem::path path;
};

struct ExpectRaster
{
    bool current = false;
};
struct ExpectTool
{
    int id = 0;
};
struct ExpectNoTool
{};
struct ExpectBox
{
    std::wstring text;
};
struct ExpectNoBox
{};
struct ExpectText
{
    int id = 0;
    std::wstring text;
};
struct ExpectFile
{
    std::filesystem::path path;
    bool present = true;
};
struct ExpectEntities
{
    int count = 0;
};
struct ExpectPicked
{
    int count = 0;
};
struct ExpectPixel
{
    Vec2 at; // drawing point
    bool ink = false;
};
struct ExpectSelection
{
    imaging::Rect pixels; // in image pixels
};
struct ExpectNoSelection
{};
struct ExpectSaid
{
    std::wstring text; // a part of the command line's transcript
};

using Action = std::variant<Type, Click, Drag, Move, Press, Release, ResizeView, Key, Button, DropArrow, MenuEntry,
                            WaitForDialog, SetText, Check, Choose, Slide, Push, PickFile, Answer, Wait, Idle, Shot,
                            ExpectRaster, ExpectTool, ExpectNoTool, ExpectBox, ExpectNoBox, ExpectText, ExpectFile,
                            ExpectEntities, ExpectPicked, ExpectPixel, ExpectSelection, ExpectNoSelection, ExpectSaid>;

struct Step
{
    int line = 0;        // counted from 1
    std::wstring source; // as written, without the blanks around it
    Action action;
};

/// A line that can't be understood; the message names the line and says what was expected there.
class ScriptError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// text is UTF-8, with or without a byte order mark. Relative paths are taken from `folder`.
/// Lines that are empty or begin with ';' are passed over. Throws ScriptError.
std::vector<Step> parse(std::string_view text, const std::filesystem::path& folder);

/// Throws ScriptError also if the file can't be read.
std::vector<Step> load(const std::filesystem::path& file);

} // namespace desk::script
