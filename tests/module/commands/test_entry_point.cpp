// The entry point's messages, called in this program.

#include "module/base/CArxApp.h"
#include "module/base/CTempMFC.h"
#include "module/base/ExtensionModule.h"
#include "module/commands/CommandTable.h"
#include "module/raster/CCheckDef.h"
#include "tests/module/support/desk_fixture.h"
#include "tests/module/support/held_objects.h"

namespace {

class EntryPoint : public test::DeskFixture
{
protected:
    void SetUp() override
    {
        DeskFixture::SetUp();
        delete g_pArxApp; // the entry point makes its own
        g_pArxApp = nullptr;
    }
    void TearDown() override
    {
        send(AcRx::kUnloadAppMsg);
        // The host knows no module of this program's id.
        standin::clearBreaches();
        DeskFixture::TearDown();
    }
    int send(int message) { return acrxEntryPoint(static_cast<AcRx::AppMsgCode>(message), this); }
};

TEST_F(EntryPoint, OnlyFourMessagesDoAnything)
{
    for (const int message : {0, 5, 6, 7, 8, 9, 16, 99})
        EXPECT_EQ(send(message), 0) << message;
    EXPECT_EQ(g_pArxApp, nullptr);
    EXPECT_EQ(send(AcRx::kUnloadAppMsg), 0) << "nothing is loaded yet";
    EXPECT_EQ(send(AcRx::kUnloadDwgMsg), 0);

    EXPECT_EQ(send(AcRx::kInitAppMsg), 0);
    ASSERT_TRUE(g_pArxApp);
    EXPECT_EQ(g_pArxApp->m_pAppId, this);
    EXPECT_EQ(g_pArxApp->m_pReactor, nullptr) << "the reactor comes with the first drawing";
    EXPECT_EQ(send(AcRx::kUnloadDwgMsg), 0) << "no raster is current";

    EXPECT_EQ(send(AcRx::kLoadDwgMsg), 0);
    const CCheckDef* reactor = g_pArxApp->m_pReactor;
    EXPECT_TRUE(reactor);
    EXPECT_EQ(send(AcRx::kLoadDwgMsg), 0);
    EXPECT_EQ(g_pArxApp->m_pReactor, reactor) << "the second drawing keeps the reactor";

    EXPECT_EQ(send(AcRx::kUnloadAppMsg), 0);
    EXPECT_EQ(g_pArxApp, nullptr);
    EXPECT_EQ(acedRegCmds->lookupCmd(L"ORVO_INVERT"), nullptr);
}

TEST_F(EntryPoint, AllCommandsAreRegisteredInTheirOrder)
{
    const std::vector<std::wstring> names = {
        L"HALVORAN",    L"HV6",          L"ORVO_PROP",    L"ORVO_ABOUT",    L"ORVO_NEW",     L"ORVO_OPEN",
        L"ORVO_SAVEAS", L"ORVO_SELRAS",  L"ORVO_SELAREA", L"ORVO_RASPEN",   L"ORVO_RASLINE", L"ORVO_RASERAS",
        L"ORVO_INVERT", L"ORVO_FLIPH",   L"ORVO_FLIPV",   L"ORVO_DESPEC",   L"ORVO_FILL",    L"ORVO_CROP",
        L"ORVO_CHANGE", L"ORVO_RASPROP", L"ORVO_ROTATE",  L"ORVO_RASTERIZE"};
    std::vector<std::wstring> seen;
    for (const CommandRow& row : CommandTable())
        seen.emplace_back(row.name);
    EXPECT_EQ(seen, names);
    EXPECT_EQ(CommandTable()[0].handler, CommandTable()[1].handler);
    send(AcRx::kInitAppMsg);
    for (const std::wstring& name : names)
        EXPECT_TRUE(acedRegCmds->lookupCmd(name.c_str())) << std::filesystem::path(name).string();
}

TEST_F(EntryPoint, WithoutAToolbarTheModuleStaysButWatchesOverNothing)
{
    const test::HookAndTimerWatch watch;
    ASSERT_EQ(frame(), nullptr) << "there is nowhere to dock it";
    EXPECT_EQ(send(AcRx::kInitAppMsg), 0);
    EXPECT_EQ(m_alerts, std::vector<std::wstring>{L"Impossible to create toolbar."});
    EXPECT_TRUE(g_pArxApp->m_pToolbar);
    EXPECT_EQ(test::HookAndTimerWatch::threadTimers(), 0) << "no monitor timer runs";
    EXPECT_TRUE(acedRegCmds->lookupCmd(L"ORVO_INVERT"));
    EXPECT_EQ(g_pArxApp->m_pAppId, this) << "the host was told as after any start";
}

TEST_F(EntryPoint, ADrawingThatClosesDropsTheRaster)
{
    send(AcRx::kInitAppMsg);
    openDrawing({test::blank(4, 2)});
    send(AcRx::kLoadDwgMsg);
    makeCurrent(0);
    EXPECT_EQ(send(AcRx::kUnloadDwgMsg), 0);
    EXPECT_EQ(g_pArxApp->m_pRaster, nullptr);
}

TEST_F(EntryPoint, UnloadingLeavesTheWorkingImageToTheHost)
{
    send(AcRx::kInitAppMsg);
    CAcraster& raster = openCurrent(test::blank(4, 2));
    raster.KeepLoaded(); // so that the drawing keeps its own image too
    raster.Lock(1);
    const auto pixels = standin::imagePixels(test::imageHandle(0));
    const long sharers = pixels.use_count();
    send(AcRx::kUnloadAppMsg);
    EXPECT_EQ(pixels.use_count(), sharers) << "the working image was freed, or the drawing's own with it";
}

TEST_F(EntryPoint, TheReactorKnowsWhenACommandRuns)
{
    send(AcRx::kInitAppMsg);
    openDrawing({test::blank(4, 2)});
    standin::beginDeskCommand(L"line");
    EXPECT_FALSE(g_bInCommand) << "nobody listens before the first drawing";
    standin::endDeskCommand(L"line", standin::CommandOutcome::ended);
    send(AcRx::kLoadDwgMsg);
    for (const auto outcome :
         {standin::CommandOutcome::ended, standin::CommandOutcome::cancelled, standin::CommandOutcome::failed}) {
        standin::beginDeskCommand(L"line");
        EXPECT_TRUE(g_bInCommand);
        standin::endDeskCommand(L"line", outcome);
        EXPECT_FALSE(g_bInCommand);
    }
}

TEST_F(EntryPoint, TheGuardLendsTheModulesNamesAndGivesBackTheHosts)
{
    CWinApp& application = *AfxGetApp();
    application.m_pszRegistryKey = L"Host company";
    application.m_pszProfileName = L"Host";
    const CString title = application.m_pszAppName;
    send(AcRx::kInitAppMsg);
    const auto isHosts = [&] {
        return CString(application.m_pszRegistryKey) == L"Host company" &&
               CString(application.m_pszProfileName) == L"Host" && CString(application.m_pszAppName) == title;
    };
    const auto isModules = [&] {
        return CString(application.m_pszRegistryKey) == L"Orvolabs" &&
               CString(application.m_pszProfileName) == L"HVA6" && CString(application.m_pszAppName) == L"HVA6";
    };
    EXPECT_TRUE(isHosts()) << "start-up put the host's names back";
    {
        const CTempMFC outer;
        EXPECT_TRUE(isModules());
        {
            const CTempMFC inner;
            EXPECT_TRUE(isModules());
        }
        EXPECT_TRUE(isModules()) << "the outer guard still stands";
    }
    EXPECT_TRUE(isHosts());
    {
        const CTempMFC standing;
        CTempMFC::Reset();
        EXPECT_TRUE(isHosts());
    }
    EXPECT_TRUE(isHosts());
    application.m_pszRegistryKey = nullptr;
    application.m_pszProfileName = nullptr;
}

TEST_F(EntryPoint, TheReservedTemporaryNameIsClearedAtTheStop)
{
    send(AcRx::kInitAppMsg);
    const std::filesystem::path reserved(g_pArxApp->m_strTempFile.GetString());
    EXPECT_FALSE(std::filesystem::exists(reserved)) << "only the name is reserved";
    test::writeTiff(reserved, test::blank(1, 1), 300);
    const std::filesystem::path old = std::filesystem::temp_directory_path() / "HVtemp.dwg";
    test::writeTiff(old, test::blank(1, 1), 300);
    send(AcRx::kUnloadAppMsg);
    EXPECT_FALSE(std::filesystem::exists(reserved));
    EXPECT_FALSE(std::filesystem::exists(old));
}

TEST_F(EntryPoint, FilesBesideTheModuleAreFound)
{
    wchar_t program[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    const std::filesystem::path wanted = std::filesystem::path(program).parent_path() / "HVV6.exe";
    EXPECT_EQ(std::filesystem::path(ProgramFilePath(L"HVV6.exe").GetString()), wanted);
}

} // namespace
