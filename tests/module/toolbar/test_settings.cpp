// The settings in the registry, and the dialog.

#include <optional>
#include <variant>

#include "module/base/CArxApp.h"
#include "module/base/CDefault.h"
#include "module/base/CTempMFC.h"
#include "module/commands/ShellCommands.h"
#include "module/dialogs/CSettings.h"
#include "tests/module/dialogs/dialog_fields.h"
#include "tests/module/support/dialog_driver.h"
#include "tests/module/support/held_objects.h"
#include "tests/module/toolbar/toolbar_fixture.h"

namespace {

using Texts = std::vector<std::wstring>;
using Value = std::variant<DWORD, std::wstring>;

std::optional<Value> stored(const std::wstring& name)
{
    DWORD type = 0;
    std::vector<wchar_t> data(600);
    DWORD size = static_cast<DWORD>(data.size() * sizeof(wchar_t));
    if (RegGetValueW(HKEY_CURRENT_USER, test::settingsKey, name.c_str(), RRF_RT_ANY, &type, data.data(), &size) !=
        ERROR_SUCCESS)
        return std::nullopt;
    if (type == REG_DWORD)
        return *reinterpret_cast<DWORD*>(data.data());
    return type == REG_SZ ? std::optional<Value>(data.data()) : std::nullopt;
}

void store(const std::wstring& name, DWORD type, const void* data, std::size_t size)
{
    ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, test::settingsKey, name.c_str(), type, data, static_cast<DWORD>(size)),
              ERROR_SUCCESS);
}

void store(const std::wstring& name, const Value& value)
{
    if (const auto* number = std::get_if<DWORD>(&value)) {
        store(name, REG_DWORD, number, sizeof(*number));
    } else {
        const auto& text = std::get<std::wstring>(value);
        store(name, REG_SZ, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
    }
}

std::vector<std::pair<std::wstring, Value>> defaults()
{
    wchar_t program[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    return {
        {L"Setting", L"<Halvoran>"},
        {L"EraseToolPixel", 5u},
        {L"LineToolPixel", 2u},
        {L"PenToolPixel", 2u},
        {L"Font", L"Arial"},
        {L"FontSize", 10u},
        {L"FontItalic", 0u},
        {L"FontWeight", 400u},
        {L"Scanner", 0u},
        {L"ScannerType", 0u},
        {L"CISWPath", L""},
        {L"OCRDefNet", (std::filesystem::path(program).parent_path() / L"DefNet.ndb").wstring()},
        {L"OCRScanMin", 15u},
        {L"OCRScanMax", 100u},
        {L"OCRScanSingel", 0u},
        {L"OCRScanAlg", 0u},
        {L"OCRNetAlg", 5u},
        {L"OCRTollerans", 60u},
        {L"FlatToolbar", 1u},
        {L"LTLoadOnStart", 1u},
        {L"m_ShowPreview", 1u},
        {L"m_ShowToolbar", 1u},
    };
}

class Settings : public test::ToolbarFixture
{
protected:
    void SetUp() override
    {
        ToolbarFixture::SetUp();
        CTempMFC::SetModule(GetModuleHandleW(nullptr), L"Orvolabs", L"HVA6");
    }
    void TearDown() override
    {
        CSettings::CancelTimers();
        ToolbarFixture::TearDown();
    }
    // What the module does between its start and its stop with settings that nobody changes.
    void readAndWrite()
    {
        const CTempMFC resources;
        delete new CDefault;
    }
};

TEST_F(Settings, ANewInstallationStoresAllDefaultsAtTheFirstStop)
{
    readAndWrite();
    for (const auto& [name, value] : defaults())
        EXPECT_EQ(stored(name), std::optional(value)) << std::filesystem::path(name).string();
    DWORD count = 0;
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, test::settingsKey, 0, KEY_READ, &key), ERROR_SUCCESS);
    RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr,
                     nullptr);
    RegCloseKey(key);
    EXPECT_EQ(count, 22u);
}

TEST_F(Settings, WhateverIsStoredIsCarriedOrDefaulted)
{
    const auto written = defaults();
    // Of the right type, however odd: carried over as it is.
    const DWORD numbers[] = {0, 0xFFFFFFFF, 0x80000000, 12345};
    const std::wstring texts[] = {L"", L"\x20AC \x4E2D %s\\\n", std::wstring(250, L'x')};
    for (std::size_t round = 0; round < std::size(numbers); ++round) {
        for (const auto& [name, value] : written) {
            const bool number = std::holds_alternative<DWORD>(value);
            store(name, number ? Value(numbers[round]) : Value(texts[round % std::size(texts)]));
        }
        readAndWrite();
        for (const auto& [name, value] : written) {
            const bool number = std::holds_alternative<DWORD>(value);
            EXPECT_EQ(stored(name),
                      std::optional(number ? Value(numbers[round]) : Value(texts[round % std::size(texts)])))
                << std::filesystem::path(name).string();
        }
    }
    // Of another type, or cut off: the default.
    const char rubbish[] = {1, 2, 3};
    for (const DWORD type : {REG_BINARY, REG_MULTI_SZ, REG_QWORD}) {
        for (const auto& row : written)
            store(row.first, type, rubbish, sizeof(rubbish));
        readAndWrite();
        for (const auto& [name, value] : written)
            EXPECT_EQ(stored(name), std::optional(value)) << std::filesystem::path(name).string() << " " << type;
    }
    for (const auto& [name, value] : written)
        store(name, std::holds_alternative<DWORD>(value) ? Value(L"nine") : Value(9u));
    readAndWrite();
    for (const auto& [name, value] : written)
        EXPECT_EQ(stored(name), std::optional(value)) << std::filesystem::path(name).string();
}

TEST_F(Settings, WithoutAnApplicationObjectNothingIsWrittenAndTheGuardsStand)
{
    auto* values = new CDefault;
    // A program's object that comes and goes leaves none behind.
    delete new CWinApp(L"passing");
    ASSERT_EQ(AfxGetApp(), nullptr);
    {
        const CTempMFC resources;
        delete values;
        const CTempHost host;
    }
    CTempMFC::Reset();
    // For the tests that follow.
    static CWinApp again(L"Halvoran test");
    EXPECT_TRUE(AfxWinInit(GetModuleHandleW(nullptr), nullptr, GetCommandLineW(), SW_SHOWNORMAL));
    EXPECT_EQ(stored(L"Setting"), std::nullopt);
}

// --- The dialog ---

AcadAppInfo entry()
{
    AcadAppInfo info;
    info.setAppName(L"HVA6");
    info.readFromRegistry();
    return info;
}

void setReason(int reason)
{
    AcadAppInfo info;
    info.setAppName(L"HVA6");
    info.setModuleName(L"C:\\nowhere\\HVA6_13_64.arx");
    info.setLoadReason(static_cast<AcadApp::LoadReasons>(reason));
    info.writeToRegistry(false, false);
}

class SettingsDialog : public Settings
{
protected:
    void run(const std::function<void(HWND dialog)>& work, int button)
    {
        test::DialogDriver driver;
        driver.expectDialog([&](HWND dialog) {
            work(dialog);
            test::press(dialog, button);
        });
        SettingsCommand();
    }
    static bool ticked(HWND dialog, int id) { return IsDlgButtonChecked(dialog, id) == BST_CHECKED; }
    static void tick(HWND dialog, int id) { SendDlgItemMessageW(dialog, id, BM_CLICK, 0, 0); }
};

TEST_F(SettingsDialog, TellsWhenTheModuleIsLoadedAndStoresTheChoiceAtOnce)
{
    toolbar();
    struct Case
    {
        int reason;
        int chosen; // the radio button that is to be active
        int press;  // 0 for none
        int wanted;
    };
    const Case cases[] = {{6, 1000, 0, 6},    {2, 1000, 0, 6},    {4, 1001, 0, 4},    {0, 1001, 0, 4},
                          {6, 1000, 1001, 4}, {4, 1001, 1000, 6}, {16, 1001, 1000, 6}};
    for (const Case& row : cases) {
        setReason(row.reason);
        const test::HookAndTimerWatch watch;
        CAcraster& raster = openCurrent(test::blank(4, 2));
        run(
            [&](HWND dialog) {
                EXPECT_TRUE(ticked(dialog, row.chosen)) << row.reason;
                EXPECT_FALSE(ticked(dialog, 1000 + 1001 - row.chosen));
                EXPECT_FALSE(ticked(dialog, 1002));
                EXPECT_FALSE(ticked(dialog, 1057));
                EXPECT_TRUE(test::enabled(dialog, 1002));
                if (row.press)
                    tick(dialog, row.press);
            },
            IDOK);
        EXPECT_EQ(entry().loadReason(), row.wanted);
        EXPECT_EQ(g_pArxApp->m_pRaster, &raster) << "nothing else was changed";
        EXPECT_EQ(test::HookAndTimerWatch::threadTimers(), 0);
        EXPECT_TRUE(g_pArxApp->m_pToolbar->IsVisible());
    }
    setReason(6);
    run([](HWND dialog) { tick(dialog, 1001); }, IDCANCEL);
    EXPECT_EQ(entry().loadReason(), 6);
}

TEST_F(SettingsDialog, HidesAndShowsTheToolbar)
{
    LaMfcToolbar& bar = toolbar();
    for (const bool shown : {false, true}) {
        const test::HookAndTimerWatch watch;
        openCurrent(test::blank(4, 2));
        run(
            [&](HWND dialog) {
                EXPECT_EQ(ticked(dialog, 1057), shown);
                tick(dialog, 1057);
            },
            IDOK);
        EXPECT_EQ(bar.IsVisible() != FALSE, shown);
        EXPECT_EQ(CDefault::GetInteger(ShowToolbarSetting), shown);
        EXPECT_EQ(g_pArxApp->m_pRaster, nullptr) << "the raster is dropped with it";
        EXPECT_EQ(test::HookAndTimerWatch::threadTimers(), 1);
        EXPECT_TRUE(test::pumpUntil([] { return test::HookAndTimerWatch::threadTimers() == 0; }));
    }
    EXPECT_EQ(m_posted, Texts{});
}

TEST_F(SettingsDialog, AValueThatIsNeitherShownNorHiddenStays)
{
    CDefault::SetInteger(ShowToolbarSetting, 7);
    LaMfcToolbar& bar = toolbar();
    for (const bool hide : {false, true}) {
        run(
            [&](HWND dialog) {
                EXPECT_FALSE(ticked(dialog, 1057)) << "it counts as shown";
                if (hide)
                    tick(dialog, 1057);
            },
            IDOK);
        EXPECT_TRUE(bar.IsVisible());
        EXPECT_EQ(CDefault::GetInteger(ShowToolbarSetting), 7);
    }
    CDefault::SetInteger(ShowToolbarSetting, 1);
}

TEST_F(SettingsDialog, WhatIsLockedCantBeUnloaded)
{
    toolbar();
    ASSERT_TRUE(acrxDynamicLinker->loadModule(LOCKED_MODULE, false));
    run([](HWND dialog) { EXPECT_FALSE(test::enabled(dialog, 1002)); }, IDCANCEL);
    standin::unloadAllModules();
    run([](HWND dialog) { EXPECT_TRUE(test::enabled(dialog, 1002)); }, IDCANCEL);
}

TEST_F(SettingsDialog, UnloadsAMomentAfterItHasGone)
{
    toolbar();
    const test::HookAndTimerWatch watch;
    openCurrent(test::blank(4, 2));
    run([](HWND dialog) { tick(dialog, 1002); }, IDOK);
    EXPECT_EQ(g_pArxApp->m_pRaster, nullptr);
    EXPECT_EQ(g_pArxApp->m_pToolbar, nullptr);
    EXPECT_EQ(m_posted, Texts{}) << "the command is still running";
    EXPECT_TRUE(test::pumpUntil([this] { return !m_posted.empty(); }));
    EXPECT_EQ(m_posted, Texts{L"arx u HVA6\r"});
    EXPECT_EQ(test::HookAndTimerWatch::threadTimers(), 0);
    // Before the host gets to it, the toolbar may be called for again, and unloaded again.
    ShowToolbarCommand();
    EXPECT_TRUE(g_pArxApp->m_pToolbar);
    run([](HWND dialog) { tick(dialog, 1002); }, IDOK);
    run([](HWND dialog) { tick(dialog, 1057); }, IDOK);
    EXPECT_EQ(g_pArxApp->m_pToolbar, nullptr) << "there is none to be hidden";
    CDefault::SetInteger(ShowToolbarSetting, 1);
    CSettings::CancelTimers();
    EXPECT_EQ(test::HookAndTimerWatch::threadTimers(), 0);
}

} // namespace
