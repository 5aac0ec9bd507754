// What the steps of a script hold, and how they are read from a line's words. A reader throws ScriptError.
#pragma once

#include <filesystem>
#include <vector>

#include "imaging/geometry.h"
#include "standin/desk/script_words.h"

namespace desk::script {

enum class MouseButton
{
    left,
    right,
    middle
};

struct Click
{
    Place place;
    MouseButton button = MouseButton::left;
    bool shift = false, control = false, twice = false;
};
Click readClick(Words& words);

struct Drag
{
    std::vector<Place> places; // two or more
    MouseButton button = MouseButton::left;
    bool shift = false, control = false;
};
Drag readDrag(Words& words);

/// A place, and the keys that are held there.
struct HeldPlace
{
    Place place;
    bool shift = false, control = false;
};
HeldPlace readHeldPlace(Words& words);

struct Wheel
{
    Place place;
    int notches = 0; // away from the user
};
Wheel readWheel(Words& words);

struct Key
{
    unsigned virtualKey = 0; // 0 when a character is meant
    wchar_t character = 0;
    bool control = false; // held
};
Key readKey(Words& words);

imaging::Size readSize(Words& words);

/// Of the main window.
enum class Side
{
    top,
    bottom,
    left,
    right
};
Side readSide(Words& words);

Place readPlace(Words& words);

/// A control of the open dialog and a number for it.
struct ControlNumber
{
    int id = 0;
    int value = 0;
};
ControlNumber readCheckMark(Words& words);

struct ControlText
{
    int id = 0;
    std::wstring text;
};
ControlText readControlText(Words& words);

enum class ControlState
{
    usable,
    greyed,
    ticked,
    clear,
    focused
};
struct ControlInState
{
    int id = 0;
    ControlState state = ControlState::usable;
};
ControlInState readControlState(Words& words);
/// Of a toolbar's button or a menu's entry, which has no focus.
ControlInState readButtonState(Words& words);

/// A number that settles by chance what is done, and the file that is named if one is asked for.
struct PokeChoice
{
    int number = 0;
    std::filesystem::path file;
};
PokeChoice readPoke(Words& words);
/// A part of the screen that a picture is to hold.
struct PicturePart
{
    enum class What
    {
        window,
        view,
        toolbar,
        dialog,
        menu,
        splash
    };
    What what = What::window;
    imaging::Rect box; // in view pixels; if empty, all of it
};

struct Shot
{
    std::filesystem::path path;
    std::vector<PicturePart> parts; // the box around them; if none, the inside of the desk's window
};
Shot readShot(Words& words);

/// The number of a dialog's button, which may be "ok" or "cancel".
int readPushButton(Words& words);
/// IDYES, IDNO, IDOK or IDCANCEL.
int readAnswer(Words& words);

struct PixelInk
{
    Vec2 at; // drawing point
    bool ink = false;
};
PixelInk readPixelInk(Words& words);

/// Of image pixels, right and bottom exclusive.
imaging::Rect readPixelBox(Words& words);

} // namespace desk::script
