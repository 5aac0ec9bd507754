// A step that does something or other in whatever dialog or menu is open, for runs that work the desk at random.

#include <windows.h>
#include <array>
#include <commctrl.h>
#include <random>

#include "standin/desk/script_player.h"

namespace desk::script {
namespace {

// What somebody might type into a field, by mistake or on purpose.
constexpr std::array oddTexts{L"",     L"0",   L"1",    L"-1",        L"7",      L"0.29",        L"12,5",
                              L"25.4", L"90",  L"300",  L"2000",      L"1e308",  L"nan",         L"three",
                              L"1/2",  L"5'6", L"4 mm", L"999999999", L"\x2205", L"0x10 \t \"%s"};

class Dice
{
public:
    explicit Dice(int seed) : m_engine(static_cast<unsigned>(seed)) {}
    /// 0 or more, below count, which is above 0.
    int below(int count) { return static_cast<int>(m_engine() % static_cast<unsigned>(count)); }
    template <class Values> const auto& oneOf(const Values& values)
    {
        return values[static_cast<std::size_t>(below(static_cast<int>(std::size(values))))];
    }

private:
    std::mt19937 m_engine;
};

// Those that a user can work, in the dialog's order.
std::vector<HWND> usableControls(HWND dialog)
{
    std::vector<HWND> controls;
    EnumChildWindows(
        dialog,
        [](HWND window, LPARAM found) -> BOOL {
            if (IsWindowVisible(window) && IsWindowEnabled(window) && classOf(window) != L"Static")
                reinterpret_cast<std::vector<HWND>*>(found)->push_back(window);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&controls));
    return controls;
}

} // namespace

void Player::pokeMenu(int choice) const
{
    Dice dice(choice);
    const HMENU menu = openMenu(m_foothold.threadId());
    const int entries = std::max(GetMenuItemCount(menu), 1);
    const MenuItem item = findMenuItem(menu, static_cast<int>(GetMenuItemID(menu, dice.below(entries))));
    const HWND owner = menuOwner(m_foothold.threadId());
    if (item.found && item.enabled && dice.below(4) > 0) {
        m_hand.clickMenu(owner, {(item.place.left + item.place.right) / 2, (item.place.top + item.place.bottom) / 2});
    } else {
        m_hand.key(owner, VK_ESCAPE);
    }
}

void Player::pokeControl(HWND control, int choice) const
{
    Dice dice(choice);
    const std::wstring kind = classOf(control);
    if (kind == L"Edit") {
        m_hand.typeInto(control, dice.oneOf(oddTexts));
        m_hand.key(control, VK_TAB);
    } else if (kind == L"Button") {
        m_hand.clickControl(control);
    } else {
        RECT inside{};
        GetClientRect(control, &inside);
        m_hand.click(control,
                     {dice.below(std::max<int>(inside.right, 1)), dice.below(std::max<int>(inside.bottom, 1))});
        m_hand.key(control, dice.oneOf(std::array{VK_DOWN, VK_UP, VK_RIGHT, VK_LEFT, VK_HOME, VK_END, VK_F2}));
    }
}

void Player::poke(const PokeChoice& choice)
{
    if (openMenu(m_foothold.threadId()) != nullptr) {
        pokeMenu(choice.number);
        settle();
        return;
    }
    const HWND dialog = openDialog(m_foothold.threadId());
    if (dialog == nullptr)
        throw Miss{L"neither a dialog nor a menu is open"};
    Dice dice(choice.number);
    if (fileNameBox(dialog) != nullptr) {
        m_hand.typeInto(fileNameBox(dialog), choice.file.wstring());
        pushControl(GetDlgItem(dialog, dice.below(3) > 0 ? IDOK : IDCANCEL));
        return;
    }
    const std::vector<HWND> controls = usableControls(dialog);
    if (controls.empty())
        throw Miss{L"the dialog has nothing to work"};
    pokeControl(dice.oneOf(controls), choice.number);
    settle();
}

} // namespace desk::script
