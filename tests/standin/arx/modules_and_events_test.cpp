#include "tests/standin/arx/drawing_fixture.h"

namespace {

class ModulesTest : public DrawingTest
{
protected:
    ModulesTest()
    {
        standin::setApplicationListKey(testKey);
        RegDeleteTreeW(HKEY_CURRENT_USER, testKey);
    }
    ~ModulesTest() override
    {
        standin::unloadAllModules();
        RegDeleteTreeW(HKEY_CURRENT_USER, testKey);
    }
    void load()
    {
        ASSERT_EQ(standin::loadModule(SAMPLE_MODULE), std::nullopt);
        library = GetModuleHandleW(L"sample_module.arx");
        ASSERT_NE(library, nullptr);
    }
    std::wstring journal() { return function<const wchar_t* (*)()>("sampleJournal")(); }
    void refuse(AcRx::AppMsgCode message) { function<void (*)(int)>("sampleRefuse")(message); }
    void leave(const char* what) { function<void (*)(const char*)>("sampleLeave")(what); }
    void startThread(const char* how, HANDLE end, bool holding)
    {
        function<void (*)(const char*, HANDLE, int)>("sampleStartThread")(how, end, holding);
    }
    static bool inMemory() { return GetModuleHandleW(L"sample_module.arx") != nullptr; }
    template <class Function> Function function(const char* name)
    {
        return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
    }
    void listModule(int reasons)
    {
        AcadAppInfo info;
        info.setAppName(L"SAMPLEAPP");
        info.setModuleName(std::filesystem::path(SAMPLE_MODULE).c_str());
        info.setAppDesc(L"A sample");
        info.setLoadReason(AcadApp::LoadReasons(reasons));
        ASSERT_EQ(info.writeToRegistry(false, false), AcadApp::eOk);
        ASSERT_EQ(info.writeCommandNameToRegistry(L"SAMPLE", L"MUSTER"), AcadApp::eOk);
    }

    static constexpr const wchar_t* testKey = L"Software\\Halvoran\\Desk\\TestApplications";
    HMODULE library = nullptr;
};

TEST_F(ModulesTest, AModuleHearsOfDrawingsInTheHostsOrder)
{
    load();
    EXPECT_EQ(journal(), L"init loadDwg ");
    EXPECT_NE(standin::saveDrawing(folder / "no such folder" / "a.dxf"), std::nullopt);
    EXPECT_TRUE(standin::drawingPath().empty());
    standin::saveDrawing(folder / "a.dxf");
    standin::closeDrawing();
    standin::openDrawing(folder / "a.dxf");
    EXPECT_EQ(journal(), L"init loadDwg beginSave abortSave beginSave saveComplete unloadDwg destroyed constructed "
                         L"loadDwg ");
}

TEST_F(ModulesTest, ABrokenDrawingOrModuleLeavesNoneOpen)
{
    EXPECT_NE(standin::openDrawing(folder / "missing.dxf"), std::nullopt);
    EXPECT_FALSE(standin::drawingOpen());
    EXPECT_EQ(acDocManagerPtr()->curDocument(), nullptr);
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), nullptr);
    for (const std::filesystem::path& none : {folder / "missing.arx", std::filesystem::path(L"kernel32.dll")})
        EXPECT_NE(standin::loadModule(none), std::nullopt) << none;
    EXPECT_TRUE(standin::loadedModules().empty());
    load();
    EXPECT_EQ(journal(), L"init ") << "no drawing, no message of one";
}

TEST_F(ModulesTest, CommandsRunBetweenTheirEvents)
{
    load();
    EXPECT_EQ(standin::runModuleCommand(L"muster"), standin::CommandOutcome::ended);
    EXPECT_EQ(standin::runModuleCommand(L"_sample"), standin::CommandOutcome::ended);
    EXPECT_EQ(standin::runModuleCommand(L"sample"), std::nullopt) << "the local name is MUSTER";
    standin::beginDeskCommand(L"line");
    standin::endDeskCommand(L"line", standin::CommandOutcome::failed);
    EXPECT_EQ(journal(), L"init loadDwg >SAMPLE run <SAMPLE >SAMPLE run <SAMPLE >LINE !LINE ");
}

TEST_F(ModulesTest, ACommandForModelSpaceIsRefusedInPaperSpace)
{
    load();
    ASSERT_TRUE(standin::setSystemVariable(L"TILEMODE", std::int16_t(0)));
    EXPECT_EQ(standin::runModuleCommand(L"MUSTER"), standin::CommandOutcome::failed);
    EXPECT_EQ(journal(), L"init loadDwg ");
    EXPECT_EQ(desk.alerts.size(), 1u);
}

TEST_F(ModulesTest, UnloadingLetsTheModuleCleanUp)
{
    load();
    EXPECT_EQ(standin::unloadModule(L"sample_module"), std::nullopt);
    EXPECT_TRUE(standin::loadedModules().empty());
    EXPECT_EQ(GetModuleHandleW(L"sample_module.arx"), nullptr);
    EXPECT_FALSE(standin::hasModuleCommand(L"MUSTER"));
    EXPECT_TRUE(standin::breaches().empty());
    EXPECT_NE(standin::unloadModule(L"sample_module"), std::nullopt) << "unloaded twice";
    load();
    EXPECT_EQ(standin::runModuleCommand(L"muster"), standin::CommandOutcome::ended) << "loaded anew";
    EXPECT_EQ(journal(), L"init loadDwg >SAMPLE run <SAMPLE ");
}

TEST_F(ModulesTest, LeftoversAreBreachesAndAreTakenAway)
{
    addLine();
    struct
    {
        const char* left;
        const char* breach;
    } const table[] = {
        {"command", "1 commands"},
        {"editor reactor", "1 editor reactors"},
        {"object reactor", "1 object reactors"},
        {"timer", "1 timers"},
        {"hook", "1 hooks"},
        {"window class", "1 window classes"},
        {"lock", "1 document locks"},
        {"open object", "1 open objects"},
        {"selection set", "1 selection sets"},
        {"reference", "1 references to its file without a thread to give them back"},
    };
    const DocumentLock ofTheTest;
    for (const auto& row : table) {
        SCOPED_TRACE(row.left);
        load();
        leave(row.left);
        EXPECT_EQ(standin::unloadModule(L"sample_module"), std::nullopt);
        EXPECT_EQ(standin::breaches(),
                  std::vector<std::string>{std::string("sample_module.arx was unloaded and left behind ") + row.breach +
                                           '.'});
        standin::clearBreaches();
        if (inMemory())
            FreeLibrary(library); // the one that it held itself
        EXPECT_FALSE(inMemory());
    }
    EXPECT_FALSE(standin::hasModuleCommand(L"MUSTER"));
    EXPECT_EQ(standin::documentLocks(), 1) << "the test's own";
    EXPECT_EQ(standin::selectionSets(), 0);
    // Reactors that were left would be called now.
    standin::beginDeskCommand(L"line");
    standin::endDeskCommand(L"line", standin::CommandOutcome::ended);
}

TEST_F(ModulesTest, WhatAModuleTakesBackIsNoBreach)
{
    addLine();
    load();
    for (const char* each : {"timer", "hook", "window class", "object reactor", "lock", "open object", "selection set"})
        leave(each);
    function<void (*)()>("sampleTakeBack")();
    EXPECT_EQ(standin::unloadModule(L"sample_module"), std::nullopt);
    EXPECT_EQ(standin::breaches(), std::vector<std::string>{});
    EXPECT_FALSE(inMemory());
}

TEST_F(ModulesTest, AThreadThatHoldsTheFileMayOutliveTheUnloading)
{
    const HANDLE end = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    for (const char* how : {"CreateThread", "_beginthreadex", "AfxBeginThread"}) {
        for (const bool holding : {true, false}) {
            SCOPED_TRACE(std::string(how) + (holding ? ", holding the file" : ""));
            load();
            ResetEvent(end);
            startThread(how, end, holding);
            EXPECT_EQ(standin::unloadModule(L"sample_module"), std::nullopt);
            EXPECT_TRUE(inMemory()) << "the thread would run into nothing";
            EXPECT_EQ(standin::breaches().size(), holding ? 0u : 1u);
            standin::clearBreaches();
            const HANDLE thread = function<HANDLE (*)()>("sampleThread")();
            SetEvent(end);
            EXPECT_EQ(WaitForSingleObject(thread, 10000), WAIT_OBJECT_0);
            CloseHandle(thread);
            if (!holding)
                FreeLibrary(library);
            EXPECT_FALSE(inMemory());
        }
    }
    CloseHandle(end);
}

TEST_F(ModulesTest, AModuleMayRefuseToBeUnloaded)
{
    load();
    auto* linker = AcRxDynamicLinker_cast(acrxSysRegistry()->at(L"DynamicLinker"));
    ASSERT_NE(linker, nullptr);
    EXPECT_FALSE(linker->isApplicationLocked(L"sample_module.arx"));
    refuse(AcRx::kUnloadAppMsg);
    EXPECT_NE(standin::unloadModule(L"sample_module"), std::nullopt);
    EXPECT_EQ(standin::loadedModules().size(), 1u);
    refuse(AcRx::kNullMsg);
    int otherId = 0;
    EXPECT_FALSE(linker->unlockApplication(&otherId)) << "an id that is no module's";
    EXPECT_EQ(standin::breaches().size(), 1u);
}

TEST_F(ModulesTest, AnUnknownCommandLoadsTheModuleThatNamesIt)
{
    listModule(AcadApp::kOnCommandInvocation);
    EXPECT_TRUE(standin::loadStartupModules().empty());
    EXPECT_TRUE(standin::loadedModules().empty()) << "it is for commands only";
    EXPECT_FALSE(standin::hasModuleCommand(L"OTHER"));
    EXPECT_EQ(standin::runModuleCommand(L"MUSTER"), standin::CommandOutcome::ended);
    EXPECT_EQ(standin::loadedModules().size(), 1u);
    EXPECT_EQ(standin::unloadModule(L"SAMPLEAPP"), std::nullopt) << "by its name in the list";
}

TEST_F(ModulesTest, StartUpLoadsTheModulesThatAskForIt)
{
    listModule(AcadApp::kOnAutoCADStartup | AcadApp::kLoadDisabled);
    standin::loadStartupModules();
    EXPECT_TRUE(standin::loadedModules().empty());
    listModule(AcadApp::kOnAutoCADStartup | AcadApp::kOnCommandInvocation);
    EXPECT_TRUE(standin::loadStartupModules().empty());
    EXPECT_EQ(standin::loadedModules().size(), 1u);
}

} // namespace
