#include "standin/desk/script_steps.h"

#include <windows.h>
#include <algorithm>
#include <map>

#include "standin/desk/coordinate_input.h"
#include "standin/text.h"

namespace desk::script {
namespace {

// Words at the end of a line that each set something, in any order.
void readOptions(Words& words, const std::map<std::wstring_view, bool*>& options, const char* mistake)
{
    while (!words.atEnd()) {
        const auto taken =
            std::find_if(options.begin(), options.end(), [&](const auto& option) { return words.take(option.first); });
        if (taken == options.end())
            throw ScriptError(mistake);
        *taken->second = true;
    }
}

imaging::Rect boxFrom(const std::vector<double>& edges)
{
    return {static_cast<int>(edges[0]), static_cast<int>(edges[1]), static_cast<int>(edges[2]),
            static_cast<int>(edges[3])};
}

PicturePart readPicturePart(Words& words)
{
    using What = PicturePart::What;
    static const std::map<std::wstring, What> named = {{L"window", What::window},   {L"view", What::view},
                                                       {L"toolbar", What::toolbar}, {L"dialog", What::dialog},
                                                       {L"menu", What::menu},       {L"splash", What::splash}};
    static constexpr std::wstring_view viewPrefix = L"view:";
    const std::wstring word = words.next("the part of the picture");
    if (const auto found = named.find(word); found != named.end())
        return {found->second, {}};
    if (!word.starts_with(viewPrefix))
        throw ScriptError("a picture shows window, view, toolbar, dialog, menu or splash");
    const auto box = boxFrom(words.numbers(std::wstring_view(word).substr(viewPrefix.size()), 4, "a box of the view"));
    if (box.empty())
        throw ScriptError("the box of the view is empty");
    return {What::view, box};
}

} // namespace

Click readClick(Words& words)
{
    Click click{words.place()};
    bool right = false, middle = false;
    readOptions(words,
                {{L"right", &right},
                 {L"middle", &middle},
                 {L"shift", &click.shift},
                 {L"ctrl", &click.control},
                 {L"double", &click.twice}},
                "after the place only right, middle, shift, ctrl and double may stand");
    click.button = right ? MouseButton::right : middle ? MouseButton::middle : MouseButton::left;
    return click;
}

Drag readDrag(Words& words)
{
    Drag drag;
    while (words.placeFollows())
        drag.places.push_back(words.place());
    if (drag.places.size() < 2)
        throw ScriptError("a drag needs two places or more");
    bool middle = false;
    readOptions(words, {{L"middle", &middle}, {L"shift", &drag.shift}, {L"ctrl", &drag.control}},
                "after the places only middle, shift and ctrl may stand");
    drag.button = middle ? MouseButton::middle : MouseButton::left;
    return drag;
}

HeldPlace readHeldPlace(Words& words)
{
    HeldPlace step{words.place()};
    readOptions(words, {{L"shift", &step.shift}, {L"ctrl", &step.control}},
                "after the place only shift and ctrl may stand");
    return step;
}

Wheel readWheel(Words& words)
{
    const Place place = words.place();
    return {place, words.number("the number of notches")};
}

Key readKey(Words& words)
{
    static const std::map<std::wstring, unsigned> named = {
        {L"ESC", VK_ESCAPE},  {L"ENTER", VK_RETURN}, {L"DEL", VK_DELETE},  {L"BACK", VK_BACK}, {L"TAB", VK_TAB},
        {L"SPACE", VK_SPACE}, {L"LEFT", VK_LEFT},    {L"RIGHT", VK_RIGHT}, {L"UP", VK_UP},     {L"DOWN", VK_DOWN},
        {L"HOME", VK_HOME},   {L"END", VK_END},      {L"PGUP", VK_PRIOR},  {L"PGDN", VK_NEXT}, {L"F1", VK_F1},
        {L"F2", VK_F2},       {L"F3", VK_F3},        {L"F4", VK_F4},       {L"F5", VK_F5},     {L"F6", VK_F6},
        {L"F7", VK_F7},       {L"F8", VK_F8},        {L"F9", VK_F9},       {L"F10", VK_F10},   {L"F11", VK_F11},
        {L"F12", VK_F12},
    };
    static constexpr std::wstring_view controlPrefix = L"ctrl+";
    std::wstring name = words.next("the key");
    const bool control = name.size() > controlPrefix.size() && name.starts_with(controlPrefix);
    if (control)
        name.erase(0, controlPrefix.size());
    if (const auto found = named.find(name); found != named.end())
        return {found->second, 0, control};
    // With Ctrl a letter or a digit is a key, whose number is that of the capital letter; without, a character.
    const bool isKey =
        name.size() == 1 && ((name[0] >= L'A' && name[0] <= L'Z') || (name[0] >= L'0' && name[0] <= L'9'));
    if (name.size() != 1 || (control && !isKey))
        throw ScriptError("there is no key \"" + standin::toUtf8(name) + "\"");
    return control ? Key{name[0], 0, true} : Key{0, name[0], false};
}

imaging::Size readSize(Words& words)
{
    constexpr double largest = 10'000;
    const std::wstring word = words.next("the size");
    const auto cross = std::min(word.find(L'x'), word.size());
    const auto width = parseNumber(word.substr(0, cross));
    const auto height = parseNumber(word.substr(std::min(cross + 1, word.size())));
    if (!width || !height || *width < 1 || *height < 1 || *width > largest || *height > largest)
        throw ScriptError("a size should be WIDTHxHEIGHT, not \"" + standin::toUtf8(word) + "\"");
    return {static_cast<int>(*width), static_cast<int>(*height)};
}

ControlNumber readCheckMark(Words& words)
{
    const int id = words.number("the control's id");
    const int state = words.number("the check mark");
    if (state != 0 && state != 1)
        throw ScriptError("a check mark is 0 or 1");
    return {id, state};
}

ControlText readControlText(Words& words)
{
    const int id = words.number("the control's id");
    return {id, words.remainder()};
}

ControlInState readControlState(Words& words)
{
    static const std::map<std::wstring, ControlState> states = {{L"usable", ControlState::usable},
                                                                {L"greyed", ControlState::greyed},
                                                                {L"ticked", ControlState::ticked},
                                                                {L"clear", ControlState::clear},
                                                                {L"focused", ControlState::focused}};
    const int id = words.number("the control's id");
    const auto found = states.find(words.next("the control's state"));
    if (found == states.end())
        throw ScriptError("a control is usable, greyed, ticked, clear or focused");
    return {id, found->second};
}

PokeChoice readPoke(Words& words)
{
    const int number = words.number("the number");
    return {number, words.path()};
}

ControlInState readButtonState(Words& words)
{
    const ControlInState state = readControlState(words);
    if (state.state == ControlState::focused)
        throw ScriptError("a button or an entry is usable, greyed, ticked or clear");
    return state;
}

Place readPlace(Words& words)
{
    return words.place();
}

Side readSide(Words& words)
{
    static const std::map<std::wstring, Side> sides = {
        {L"top", Side::top}, {L"bottom", Side::bottom}, {L"left", Side::left}, {L"right", Side::right}};
    const auto found = sides.find(words.next("the side"));
    if (found == sides.end())
        throw ScriptError("a side is top, bottom, left or right");
    return found->second;
}

int readPushButton(Words& words)
{
    if (words.take(L"ok"))
        return IDOK;
    if (words.take(L"cancel"))
        return IDCANCEL;
    return words.number("the button's id");
}

int readAnswer(Words& words)
{
    static const std::map<std::wstring, int> buttons = {
        {L"yes", IDYES}, {L"no", IDNO}, {L"ok", IDOK}, {L"cancel", IDCANCEL}};
    const auto found = buttons.find(words.next("the answer"));
    if (found == buttons.end())
        throw ScriptError("an answer is yes, no, ok or cancel");
    return found->second;
}

PixelInk readPixelInk(Words& words)
{
    const Vec2 at = words.point();
    if (words.take(L"ink"))
        return {at, true};
    if (words.take(L"paper"))
        return {at, false};
    throw ScriptError("a pixel is ink or paper");
}

imaging::Rect readPixelBox(Words& words)
{
    return boxFrom(words.numbers(words.next("the selection's box"), 4, "the selection's box"));
}

Shot readShot(Words& words)
{
    Shot shot{words.wordAsPath(), {}};
    while (!words.atEnd())
        shot.parts.push_back(readPicturePart(words));
    return shot;
}

} // namespace desk::script
