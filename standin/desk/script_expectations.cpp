// The steps of a script that look at what has come out.

#include <algorithm>
#include <cmath>
#include <optional>

#include "imaging/bitmap.h"
#include "standin/desk/script_player.h"
#include "standin/host.h"

namespace desk::script {
namespace {

// What is expected has this long to come true.
constexpr int patience = 5'000;
constexpr std::size_t mostRowsTold = 20;

std::wstring inQuotes(const std::wstring& text)
{
    return L"\"" + text + L"\"";
}

// The ink of the uppermost image at a drawing point; nothing where there is no image.
std::optional<bool> inkAt(Editor& editor, Vec2 at)
{
    const auto& items = editor.scene().items();
    for (auto item = items.rbegin(); item != items.rend(); ++item) {
        const auto* image = std::get_if<SceneImage>(&item->shape);
        const auto pixels = image != nullptr ? standin::imagePixels(image->image) : nullptr;
        if (!pixels)
            continue;
        const auto pixel = image->placement.toImage(at, pixels->size());
        if (!pixel)
            continue;
        const int x = static_cast<int>(std::floor(pixel->x)), y = static_cast<int>(std::floor(pixel->y));
        if (imaging::Rect::of(pixels->size()).contains({x, y}))
            return pixels->ink(x, y);
    }
    return std::nullopt;
}

} // namespace

void Player::expectSeen(const std::function<bool(std::wstring& seen)>& holds) const
{
    const auto end = GetTickCount64() + patience;
    std::wstring seen;
    while (!holds(seen)) {
        if (GetTickCount64() >= end)
            throw Miss{seen};
    }
}

void Player::expectRasterToBe(bool current)
{
    expectSeen([&](std::wstring& seen) {
        seen = current ? L"no raster is current" : L"a raster is current";
        return m_eye.rasterIsCurrent() == current;
    });
}

void Player::expectTool(int number)
{
    expectSeen([&](std::wstring& seen) { return m_eye.seesTool(number, seen); });
}

void Player::expectNoTool()
{
    expectSeen([&](std::wstring& seen) {
        seen = L"a tool holds the mouse";
        return !m_eye.toolHoldsMouse();
    });
}

void Player::expectSelection(const imaging::Rect& pixels)
{
    expectSeen([&](std::wstring& seen) { return m_eye.seesSelection(pixels, seen); });
}

void Player::expectNoSelection()
{
    expectSeen([&](std::wstring& seen) {
        seen = L"a selection's frame is on the view";
        return !m_eye.seesAnySelection();
    });
}

void Player::expectBox(const std::wstring& expected)
{
    HWND dialog = nullptr;
    std::wstring text;
    if (!comesTrue(
            [&] {
                dialog = openDialog(m_foothold.threadId());
                text = dialog != nullptr && isMessageBox(dialog) ? messageBoxText(dialog) : L"";
                return text.find(expected) != std::wstring::npos && isMessageBox(dialog);
            },
            patience)) {
        throw Miss{!text.empty()       ? L"the box says " + inQuotes(text)
                   : dialog != nullptr ? L"the open dialog is " + inQuotes(windowText(dialog))
                                       : L"no message box is up"};
    }
}

void Player::expectNoBox()
{
    HWND dialog = nullptr;
    if (!comesTrue([&] { return (dialog = openDialog(m_foothold.threadId())) == nullptr; }, patience)) {
        throw Miss{isMessageBox(dialog) ? L"a box says " + inQuotes(messageBoxText(dialog))
                                        : L"the dialog " + inQuotes(windowText(dialog)) + L" is open"};
    }
}

void Player::expectText(const ControlText& expected)
{
    const HWND dialog = dialogInFront();
    HWND found = nullptr;
    std::wstring text;
    if (!comesTrue(
            [&] {
                found = findControl(dialog, expected.id);
                text = found != nullptr ? windowText(found) : L"";
                return found != nullptr && text == expected.text;
            },
            patience)) {
        throw Miss{found != nullptr ? L"control " + std::to_wstring(expected.id) + L" says " + inQuotes(text)
                                    : L"there is no control " + std::to_wstring(expected.id)};
    }
}

void Player::expectRow(const ControlText& expected)
{
    const HWND dialog = dialogInFront();
    std::vector<std::wstring> rows;
    if (!comesTrue(
            [&] {
                const HWND found = findControl(dialog, expected.id);
                rows = found != nullptr ? rowTexts(found) : std::vector<std::wstring>{};
                return std::ranges::find(rows, expected.text) != rows.end();
            },
            patience)) {
        std::wstring seen = L"control " + std::to_wstring(expected.id) + L" has " + std::to_wstring(rows.size()) +
                            (rows.empty() ? L" rows" : L" rows, the first of them:");
        for (std::size_t row = 0; row < std::min<std::size_t>(rows.size(), mostRowsTold); ++row)
            seen += L"\n    " + inQuotes(rows[row]);
        throw Miss{seen};
    }
}

void Player::expectControl(const ControlInState& expected)
{
    const HWND dialog = dialogInFront();
    std::wstring seen;
    const auto note = [&](bool holds, const wchar_t* otherwise) {
        seen = otherwise;
        return holds;
    };
    if (!comesTrue(
            [&] {
                const HWND found = findControl(dialog, expected.id);
                if (found == nullptr)
                    return note(false, L"it is not there");
                const bool ticked = SendMessageW(found, BM_GETCHECK, 0, 0) == BST_CHECKED;
                switch (expected.state) {
                case ControlState::usable:
                    return note(IsWindowEnabled(found), L"it is greyed");
                case ControlState::greyed:
                    return note(!IsWindowEnabled(found), L"it is usable");
                case ControlState::ticked:
                    return note(ticked, L"it is clear");
                case ControlState::clear:
                    return note(!ticked, L"it is ticked");
                default:
                    return note(inputState(m_foothold.threadId()).hwndFocus == editWithin(found),
                                L"it has not the focus");
                }
            },
            patience))
        throw Miss{L"control " + std::to_wstring(expected.id) + L": " + seen};
}

void Player::expectFileToBe(const std::filesystem::path& path, bool present)
{
    std::error_code ignored;
    if (!comesTrue([&] { return std::filesystem::is_regular_file(path, ignored) == present; }, patience))
        throw Miss{path.wstring() + (present ? L" is not there" : L" is there")};
}

void Player::expectEntities(int expected)
{
    std::size_t count = 0;
    if (!comesTrue(
            [&] {
                const Editor& editor = m_frame.editor();
                count = 0;
                if (standin::drawingOpen()) {
                    for (const auto entity : editor.session().currentSpace().entities)
                        count += standin::entityErased(entity) ? 0 : 1;
                }
                return count == static_cast<std::size_t>(expected);
            },
            patience))
        throw Miss{L"there are " + std::to_wstring(count) + L" entities"};
}

void Player::expectPicked(int expected)
{
    std::size_t count = 0;
    if (!comesTrue([&] { return (count = m_frame.editor().selection().entities().size()) == std::size_t(expected); },
                   patience))
        throw Miss{std::to_wstring(count) + L" entities are selected"};
}

void Player::expectPixel(const PixelInk& expected)
{
    std::optional<bool> ink;
    if (!comesTrue([&] { return (ink = inkAt(m_frame.editor(), expected.at)) == expected.ink; }, patience))
        throw Miss{!ink ? L"there is no raster at that point" : *ink ? L"the pixel is ink" : L"the pixel is paper"};
}

void Player::expectSaid(const std::wstring& text)
{
    std::wstring transcript;
    if (!comesTrue(
            [&] {
                transcript = m_frame.commandPanel().transcript();
                return transcript.find(text) != std::wstring::npos;
            },
            patience))
        throw Miss{L"the command line last said " + inQuotes(transcript.substr(transcript.rfind(L'\n') + 1))};
}

void Player::expectBreach(const std::wstring& text)
{
    m_expectedBreaches.push_back(text);
}

} // namespace desk::script
