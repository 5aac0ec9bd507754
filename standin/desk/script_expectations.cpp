// The steps of a script that look at what has come out.

#include <cmath>
#include <optional>

#include "imaging/bitmap.h"
#include "standin/desk/script_player.h"
#include "standin/host.h"

namespace desk::script {
namespace {

// What is expected has this long to come true.
constexpr int patience = 5'000;

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
        const Vec2 right = image->u * image->pixels.width, up = image->v * image->pixels.height;
        const double determinant = right.x * up.y - right.y * up.x;
        if (determinant == 0)
            continue;
        const Vec2 from = at - image->position;
        const int x = static_cast<int>(std::floor((from.x * up.y - from.y * up.x) / determinant * pixels->width()));
        const int y =
            static_cast<int>(std::floor((1 - (right.x * from.y - right.y * from.x) / determinant) * pixels->height()));
        if (imaging::Rect::of(pixels->size()).contains({x, y}))
            return pixels->ink(x, y);
    }
    return std::nullopt;
}

} // namespace

void Player::act(const ExpectRaster& expected)
{
    const auto end = GetTickCount64() + patience;
    while (m_eye.rasterIsCurrent() != expected.current) {
        if (GetTickCount64() >= end)
            throw Miss{expected.current ? L"no raster is current" : L"a raster is current"};
    }
}

void Player::act(const ExpectTool& expected)
{
    const auto end = GetTickCount64() + patience;
    std::wstring seen;
    while (!m_eye.sees(expected.id, seen)) {
        if (GetTickCount64() >= end)
            throw Miss{seen};
    }
}

void Player::act(const ExpectNoTool&)
{
    const auto end = GetTickCount64() + patience;
    while (m_eye.toolHoldsMouse()) {
        if (GetTickCount64() >= end)
            throw Miss{L"a tool holds the mouse"};
    }
}

void Player::act(const ExpectBox& expected)
{
    HWND dialog = nullptr;
    std::wstring text;
    if (!comesTrue(
            [&] {
                dialog = openDialog(m_foothold.threadId());
                text = dialog != nullptr && isMessageBox(dialog) ? messageBoxText(dialog) : L"";
                return text.find(expected.text) != std::wstring::npos && isMessageBox(dialog);
            },
            patience)) {
        throw Miss{!text.empty()       ? L"the box says " + inQuotes(text)
                   : dialog != nullptr ? L"the open dialog is " + inQuotes(windowText(dialog))
                                       : L"no message box is up"};
    }
}

void Player::act(const ExpectNoBox&)
{
    HWND dialog = nullptr;
    if (!comesTrue([&] { return (dialog = openDialog(m_foothold.threadId())) == nullptr; }, patience)) {
        throw Miss{isMessageBox(dialog) ? L"a box says " + inQuotes(messageBoxText(dialog))
                                        : L"the dialog " + inQuotes(windowText(dialog)) + L" is open"};
    }
}

void Player::act(const ExpectText& expected)
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

void Player::act(const ExpectFile& expected)
{
    std::error_code ignored;
    if (!comesTrue([&] { return std::filesystem::is_regular_file(expected.path, ignored) == expected.present; },
                   patience))
        throw Miss{expected.path.wstring() + (expected.present ? L" is not there" : L" is there")};
}

void Player::act(const ExpectEntities& expected)
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
                return count == static_cast<std::size_t>(expected.count);
            },
            patience))
        throw Miss{L"there are " + std::to_wstring(count) + L" entities"};
}

void Player::act(const ExpectPicked& expected)
{
    std::size_t count = 0;
    if (!comesTrue(
            [&] { return (count = m_frame.editor().selection().entities().size()) == std::size_t(expected.count); },
            patience))
        throw Miss{std::to_wstring(count) + L" entities are selected"};
}

void Player::act(const ExpectPixel& expected)
{
    std::optional<bool> ink;
    if (!comesTrue([&] { return (ink = inkAt(m_frame.editor(), expected.at)) == expected.ink; }, patience))
        throw Miss{!ink ? L"there is no raster at that point" : *ink ? L"the pixel is ink" : L"the pixel is paper"};
}

void Player::act(const ExpectSelection& expected)
{
    const auto end = GetTickCount64() + patience;
    std::wstring seen;
    while (!m_eye.seesSelection(expected.pixels, seen)) {
        if (GetTickCount64() >= end)
            throw Miss{seen};
    }
}

void Player::act(const ExpectNoSelection&)
{
    const auto end = GetTickCount64() + patience;
    while (m_eye.seesAnySelection()) {
        if (GetTickCount64() >= end)
            throw Miss{L"a selection's frame is on the view"};
    }
}

void Player::act(const ExpectSaid& expected)
{
    std::wstring transcript;
    if (!comesTrue(
            [&] {
                transcript = m_frame.commandPanel().transcript();
                return transcript.find(expected.text) != std::wstring::npos;
            },
            patience))
        throw Miss{L"the command line last said " + inQuotes(transcript.substr(transcript.rfind(L'\n') + 1))};
}

} // namespace desk::script
