#include "standin/desk/script_directives.h"

#include "standin/desk/script_player.h"
#include "standin/desk/script_steps.h"
#include "standin/text.h"

namespace desk::script {
namespace {

template <class Read, class Value> Directive row(std::wstring_view name, Read read, void (Player::*act)(Value))
{
    return {name, [=](Words& words) -> Action {
                return [act, value = read(words)](Player& player) { (player.*act)(value); };
            }};
}

Directive row(std::wstring_view name, void (Player::*act)())
{
    return {name, [=](Words&) -> Action { return [act](Player& player) { (player.*act)(); }; }};
}

auto number(const char* what)
{
    return [what](Words& words) { return words.number(what); };
}

auto word(const char* what)
{
    return [what](Words& words) { return words.next(what); };
}

// A control's number, and another.
auto forControl(const char* what)
{
    return [what](Words& words) {
        const int id = words.number("the control's id");
        return ControlNumber{id, words.number(what)};
    };
}

std::filesystem::path path(Words& words)
{
    return words.path();
}

std::wstring text(Words& words)
{
    return words.remainder();
}

const Directive table[] = {
    row(L"click", readClick, &Player::click),
    row(L"drag", readDrag, &Player::drag),
    row(L"press", readHeldPlace, &Player::press),
    row(L"move", readHeldPlace, &Player::move),
    row(L"release", readHeldPlace, &Player::release),
    row(L"wheel", readWheel, &Player::turnWheel),
    row(L"size", readSize, &Player::resizeView),
    row(L"key", readKey, &Player::pressKey),
    row(L"button", number("the button's id"), &Player::pressToolbarButton),
    row(L"drop", number("the button's id"), &Player::pressToolbarArrow),
    row(L"dock", readSide, &Player::dockToolbar),
    row(L"float", readPlace, &Player::floatToolbar),
    row(L"close toolbar", &Player::closeToolbar),
    row(L"menu", number("the entry's id"), &Player::chooseMenuEntry),
    row(L"dialog", word("the dialog's title"), &Player::waitForDialog),
    row(L"set", readControlText, &Player::setText),
    row(L"check", readCheckMark, &Player::setCheckMark),
    row(L"choose", forControl("the index"), &Player::chooseEntry),
    row(L"slide", forControl("the position"), &Player::moveSlider),
    row(L"push", readPushButton, &Player::pushButton),
    row(L"file", path, &Player::acceptFile),
    row(L"dropfile", path, &Player::dropFile),
    row(L"answer", readAnswer, &Player::answerBox),
    row(L"poke", readPoke, &Player::poke),
    row(L"tolerant", &Player::beTolerant),
    row(L"wait", number("the milliseconds"), &Player::wait),
    row(L"idle", &Player::waitForRest),
    row(L"kill", &Player::kill),
    row(L"shot", readShot, &Player::takeShot),

    row(L"expect raster", &Player::expectRaster),
    row(L"expect no raster", &Player::expectNoRaster),
    row(L"expect tool", number("the tool's number"), &Player::expectTool),
    row(L"expect no tool", &Player::expectNoTool),
    row(L"expect toolbar", &Player::expectToolbar),
    row(L"expect no toolbar", &Player::expectNoToolbar),
    row(L"expect button", readButtonState, &Player::expectButton),
    row(L"expect entry", readButtonState, &Player::expectEntry),
    row(L"expect selection", readPixelBox, &Player::expectSelection),
    row(L"expect no selection", &Player::expectNoSelection),
    row(L"expect pixel", readPixelInk, &Player::expectPixel),
    row(L"expect box", text, &Player::expectBox),
    row(L"expect no box", &Player::expectNoBox),
    row(L"expect text", readControlText, &Player::expectText),
    row(L"expect row", readControlText, &Player::expectRow),
    row(L"expect control", readControlState, &Player::expectControl),
    row(L"expect said", text, &Player::expectSaid),
    row(L"expect breach", text, &Player::expectBreach),
    row(L"expect file", path, &Player::expectFile),
    row(L"expect no file", path, &Player::expectNoFile),
    row(L"expect entities", number("the number of entities"), &Player::expectEntities),
    row(L"expect picked", number("the number of entities"), &Player::expectPicked),
};

} // namespace

std::span<const Directive> directives()
{
    return table;
}

Action readDirective(Words& words)
{
    for (const Directive& directive : table) {
        if (!words.take(directive.name))
            continue;
        Action action = directive.read(words);
        if (!words.atEnd())
            throw ScriptError("\"" + standin::toUtf8(words.remainder()) + "\" is too much");
        return action;
    }
    throw ScriptError("there is no directive \"@" + standin::toUtf8(words.remainder()) + "\"");
}

} // namespace desk::script
