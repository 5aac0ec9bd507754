// The module's own file, loaded by the host as it would be at a draughtsman's desk.

#include <windows.h>
#include <gmock/gmock.h>
#include <tlhelp32.h>

#include "tests/module/support/desk_fixture.h"
#include "tests/module/support/dialog_driver.h"

namespace {

std::filesystem::path moduleFile()
{
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(GetModuleHandleW(L"hvstandin.dll"), path, MAX_PATH);
    return std::filesystem::path(path).parent_path() / "HVA6_13_64.arx";
}

class LoadedModule : public test::DeskFixture
{
protected:
    void TearDown() override
    {
        standin::unloadAllModules();
        DeskFixture::TearDown();
    }
    void load(const std::filesystem::path& path = moduleFile())
    {
        const standin::Failure failure = standin::loadModule(path);
        ASSERT_FALSE(failure) << std::filesystem::path(*failure).string();
    }
    void run(const wchar_t* command) { ASSERT_EQ(standin::runModuleCommand(command), standin::CommandOutcome::ended); }
    AcadAppInfo entry() const
    {
        AcadAppInfo info;
        info.setAppName(L"HVA6");
        info.readFromRegistry();
        return info;
    }
};

TEST_F(LoadedModule, ItsCommandsComeAndGoWithIt)
{
    constexpr Adesk::Int32 flags = 4 | 8 | 64; // redraw, no perspective, no paper space
    constexpr const wchar_t* commands[] = {L"ORVO_SAVEAS", L"ORVO_SELRAS", L"ORVO_INVERT",
                                           L"ORVO_FLIPH",  L"ORVO_FLIPV",  L"ORVO_CROP"};
    load();
    for (const wchar_t* name : commands) {
        const AcEdCommand* command = acedRegCmds->lookupCmd(name);
        ASSERT_TRUE(command) << std::filesystem::path(name).string();
        EXPECT_EQ(std::wstring(command->globalName()), name);
        EXPECT_EQ(std::wstring(command->localName()), name);
        EXPECT_EQ(command->commandFlags(), flags);
    }
    ASSERT_FALSE(standin::unloadModule(L"HVA6"));
    for (const wchar_t* name : commands)
        EXPECT_EQ(acedRegCmds->lookupCmd(name), nullptr);
    EXPECT_TRUE(standin::hasModuleCommand(L"ORVO_FLIPH")) << "the host loads it again for its command";
}

TEST_F(LoadedModule, TheApplicationListKeepsTheReasonThatTheUserChose)
{
    load();
    EXPECT_EQ(std::filesystem::path(entry().moduleName()), moduleFile());
    EXPECT_EQ(std::wstring(entry().appDesc()), L"HVA6");
    EXPECT_EQ(entry().loadReason(), 6) << "at the host's start and on a command";
    standin::unloadAllModules();

    AcadAppInfo chosen = entry();
    chosen.setLoadReason(AcadApp::kOnCommandInvocation);
    chosen.writeToRegistry(false, false);
    load();
    EXPECT_EQ(entry().loadReason(), 4);
}

TEST_F(LoadedModule, UnderTheNameOfTheOtherEditionItIsListedUnderThisOnes)
{
    const std::filesystem::path other = file("HVA6_13_64.LTX");
    std::filesystem::copy_file(moduleFile(), other);
    load(other);
    EXPECT_EQ(std::filesystem::path(entry().moduleName()), file("HVA6_13_64.ARX"));
    standin::unloadAllModules();
    load(); // lists the real file again
}

TEST_F(LoadedModule, LoadingTwiceOverLeavesNothingBehind)
{
    openDrawing({{"#...", "##..", "...."}});
    for (int round = 0; round < 3; ++round) {
        load();
        run(L"ORVO_SELRAS");
        for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP}) {
            PostMessageW(view().m_hWnd, message, 0, MAKELPARAM(505, 495));
            test::pumpAll();
        }
        run(L"ORVO_SELRAS"); // drops it
        run(L"ORVO_SELRAS"); // and starts the tool, which is active when the module goes
        ASSERT_FALSE(standin::unloadModule(L"HVA6"));
        EXPECT_TRUE(standin::loadedModules().empty());
        EXPECT_EQ(standin::selectionSets(), 0);
        PostMessageW(view().m_hWnd, WM_MOUSEMOVE, 0, 0);
        test::pumpAll(); // a hook that was left would call into code that has gone
    }
}

TEST_F(LoadedModule, UnloadedInAnyStateItLeavesNothingBehind)
{
    // A picture of 100 by 100 drawing units, with the middle of the view in it.
    const auto post = [this](UINT message, int x, int y) {
        PostMessageW(view().m_hWnd, message, 0, MAKELPARAM(x, y));
        test::pumpAll();
    };
    enum class Until
    {
        Started,
        Pressed,
        Released
    };
    for (const wchar_t* command : {L"ORVO_SELAREA", L"ORVO_RASPEN", L"ORVO_RASLINE", L"ORVO_RASERAS", L"ORVO_FLIPH"}) {
        for (const Until until : {Until::Started, Until::Pressed, Until::Released}) {
            SCOPED_TRACE(std::filesystem::path(command).string() + ", " + std::to_string(static_cast<int>(until)));
            openDrawing({test::blank(100, 100)}, {{.x = -50, .y = -50}});
            load();
            run(L"ORVO_SELRAS");
            post(WM_LBUTTONDOWN, 505, 495);
            post(WM_LBUTTONUP, 505, 495);
            run(command);
            if (until != Until::Started) {
                post(WM_LBUTTONDOWN, 400, 400);
                post(WM_MOUSEMOVE, 600, 500);
            }
            if (until == Until::Released)
                post(WM_LBUTTONUP, 600, 500);
            const bool paints = command != std::wstring(L"ORVO_SELAREA");
            const bool edited = command == std::wstring(L"ORVO_FLIPH") || (paints && until == Until::Released);
            {
                test::DialogDriver driver;
                if (edited)
                    driver.expectDialog([](HWND question) { test::press(question, IDNO); });
                ASSERT_FALSE(standin::unloadModule(L"HVA6"));
            }
            EXPECT_EQ(GetModuleHandleW(L"HVA6_13_64.arx"), nullptr);
            EXPECT_EQ(standin::openObjects(), 0);
            EXPECT_EQ(GetCapture(), nullptr);
            EXPECT_THAT(standin::breaches(), testing::IsEmpty());
            post(WM_MOUSEMOVE, 300, 300);
            standin::closeDrawing();
        }
    }
}

int threadsOfThisProcess()
{
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    int count = 0;
    THREADENTRY32 thread = {};
    thread.dwSize = sizeof(thread);
    for (BOOL more = Thread32First(snapshot, &thread); more; more = Thread32Next(snapshot, &thread))
        count += thread.th32OwnerProcessID == GetCurrentProcessId();
    CloseHandle(snapshot);
    return count;
}

TEST_F(LoadedModule, UnloadingRightAfterARequestThatNobodyTookEndsItsThreads)
{
    // A copy with no worker beside it: what it publishes waits for a reader, on threads of its own.
    const std::filesystem::path copy = file("HVA6_13_64.arx");
    std::filesystem::copy_file(moduleFile(), copy);
    openDrawing({{"#...", "##..", "...."}});
    load(copy);
    run(L"ORVO_SELRAS");
    for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP}) {
        PostMessageW(view().m_hWnd, message, 0, MAKELPARAM(505, 495));
        test::pumpAll();
    }
    const int before = threadsOfThisProcess();
    run(L"ORVO_INVERT");
    EXPECT_GT(threadsOfThisProcess(), before);
    ASSERT_FALSE(standin::unloadModule(L"HVA6"));
    EXPECT_TRUE(test::pumpUntil([=] { return threadsOfThisProcess() == before; }));
    EXPECT_TRUE(test::pumpUntil([] { return !GetModuleHandleW(L"HVA6_13_64.arx"); }));
    load(); // lists the real file again
}

} // namespace
