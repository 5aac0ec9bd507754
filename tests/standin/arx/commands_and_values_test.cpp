#include <cstring>

#include "standin/afx/afx_exception.h"
#include "tests/standin/arx/drawing_fixture.h"

namespace {

using CommandStackTest = DrawingTest;
using ValuesTest = DrawingTest;
using SelectionTest = DrawingTest;

void nothing() {}

AcEdCommandStack* stack()
{
    return AcEdCommandStack_cast(acrxSysRegistry()->at(L"ACAD_REGISTERED_COMMANDS"));
}

TEST_F(CommandStackTest, ServicesAreWhatTheirNamesSay)
{
    EXPECT_TRUE(acrxSysRegistry()->at(L"DynamicLinker")->isA()->isDerivedFrom(AcRxDynamicLinker::desc()));
    EXPECT_TRUE(acrxSysRegistry()->at(L"ACAD_REGISTERED_COMMANDS")->isA()->isDerivedFrom(AcEdCommandStack::desc()));
    EXPECT_TRUE(acrxSysRegistry()->at(L"AcEditor")->isA()->isDerivedFrom(AcEditor::desc()));
    EXPECT_FALSE(acrxSysRegistry()->at(L"AcEditor")->isA()->isDerivedFrom(AcEdCommandStack::desc()));
    EXPECT_EQ(acrxSysRegistry()->at(L"Editor"), nullptr);
    EXPECT_TRUE(AcDbRasterImage::desc()->isDerivedFrom(AcDbEntity::desc()));
    EXPECT_FALSE(AcDbEntity::desc()->isDerivedFrom(AcDbRasterImage::desc()));
}

TEST_F(CommandStackTest, GroupsHoldTheirCommands)
{
    EXPECT_EQ(stack()->addCommand(L"A", L"ONE", L"EINS", 76, nothing, nullptr, -1, nullptr), Acad::eOk);
    EXPECT_EQ(stack()->addCommand(L"A", L"TWO", L"ZWEI", 0, nothing), Acad::eOk);
    EXPECT_EQ(stack()->addCommand(L"a", L"one", L"UNO", 0, nothing), Acad::eDuplicateKey) << "its global name is taken";
    EXPECT_EQ(stack()->addCommand(L"A", L"THREE", L"zwei", 0, nothing), Acad::eDuplicateKey) << "its local name is";
    EXPECT_EQ(stack()->addCommand(L"B", L"ONE", L"EINS", 0, nothing), Acad::eOk) << "another group";
    EXPECT_EQ(stack()->addCommand(L"B", L"", L"X", 0, nothing), Acad::eInvalidInput);
    EXPECT_EQ(stack()->addCommand(L"B", L"X", L"X", 0, nullptr), Acad::eInvalidInput);

    ASSERT_NE(stack()->lookupCmd(L"eins"), nullptr);
    EXPECT_EQ(stack()->lookupCmd(L"eins")->commandFlags(), 76) << "the first group goes first";
    EXPECT_EQ(stack()->lookupCmd(L"one"), nullptr);
    EXPECT_NE(stack()->lookupCmd(L"_one"), nullptr);

    EXPECT_EQ(stack()->removeCmd(L"A", L"TWO"), Acad::eOk);
    EXPECT_EQ(stack()->removeCmd(L"A", L"TWO"), Acad::eKeyNotFound);
    EXPECT_EQ(stack()->removeGroup(L"A"), Acad::eOk);
    EXPECT_EQ(stack()->removeGroup(L"A"), Acad::eKeyNotFound);
    EXPECT_EQ(stack()->lookupCmd(L"eins")->commandFlags(), 0) << "group B is still there";
    EXPECT_EQ(stack()->removeGroup(L"B"), Acad::eOk);
}

TEST_F(CommandStackTest, AnExceptionEndsTheCommandAsFailed)
{
    stack()->addCommand(L"A", L"BOOM", L"BOOM", 0, [] { throw std::runtime_error("out of paper"); });
    stack()->addCommand(L"A", L"PENS", L"PENS", 0,
                        [] { throw new CFileException(CFileException::fileNotFound, -1, L"pens.pen"); });
    EXPECT_EQ(standin::runModuleCommand(L"PENS"), standin::CommandOutcome::failed);
    EXPECT_TRUE(standin::breaches().empty());
    ASSERT_EQ(desk.alerts.size(), 1u) << "the class library's own are told to the user";
    EXPECT_NE(desk.alerts[0].find(L"pens.pen"), std::wstring::npos);
    EXPECT_EQ(standin::runModuleCommand(L"BOOM"), standin::CommandOutcome::failed);
    ASSERT_EQ(standin::breaches().size(), 1u);
    EXPECT_NE(standin::breaches()[0].find("out of paper"), std::string::npos);
    EXPECT_EQ(acDocManagerPtr()->curDocument()->lockMode(), AcAp::kNotLocked) << "the command's own lock is back";
    stack()->removeGroup(L"A");
}

TEST_F(CommandStackTest, ReactorsMayGoWhileTheyAreTold)
{
    struct Once final : AcEditorReactor2
    {
        void commandWillStart(const ACHAR*) override
        {
            ++calls;
            acedEditor->removeReactor(this);
        }
        int calls = 0;
    } first, second;
    acedEditor->addReactor(&first);
    acedEditor->addReactor(&second);
    standin::beginDeskCommand(L"a");
    standin::endDeskCommand(L"a", standin::CommandOutcome::ended);
    standin::beginDeskCommand(L"b");
    standin::endDeskCommand(L"b", standin::CommandOutcome::ended);
    EXPECT_EQ(first.calls, 1);
    EXPECT_EQ(second.calls, 1);
    EXPECT_TRUE(standin::breaches().empty());
    acedEditor->removeReactor(&first);
    EXPECT_EQ(standin::breaches().size(), 1u) << "it had gone already";
}

TEST_F(ValuesTest, ListsHoldTypedValues)
{
    const double point[3] = {1, 2, 3};
    resbuf* list = acutBuildList(RTDXF0, L"IMAGE", 10, point, 40, 2.5, 70, 7, 90, 70000, RTNONE);
    ASSERT_NE(list, nullptr);
    const resbuf* item = list;
    EXPECT_EQ(item->restype, 0) << "RTDXF0 stands for group 0";
    EXPECT_STREQ(item->resval.rstring, L"IMAGE");
    EXPECT_EQ((item = item->rbnext)->resval.rpoint[2], 3);
    EXPECT_EQ((item = item->rbnext)->resval.rreal, 2.5);
    EXPECT_EQ((item = item->rbnext)->resval.rint, 7);
    EXPECT_EQ((item = item->rbnext)->resval.rlong, 70000);
    EXPECT_EQ(item->rbnext, nullptr);
    EXPECT_EQ(acutRelRb(list), RTNORM);
    EXPECT_EQ(acutBuildList(1234, L"x", RTNONE), nullptr);
}

TEST_F(ValuesTest, SystemVariablesSpeakOfTheViewAndTheDrawing)
{
    desk.view = {800, 600, {10, 20, 0}, 30};
    resbuf value;
    ASSERT_EQ(acedGetVar(L"screensize", &value), RTNORM);
    EXPECT_EQ(value.restype, RTPOINT);
    EXPECT_EQ(value.resval.rpoint[0], 800);
    EXPECT_EQ(value.resval.rpoint[1], 600);
    ASSERT_EQ(acedGetVar(L"VIEWCTR", &value), RTNORM);
    EXPECT_EQ(value.restype, RT3DPOINT);
    EXPECT_EQ(value.resval.rpoint[1], 20);
    ASSERT_EQ(acedGetVar(L"viewsize", &value), RTNORM);
    EXPECT_EQ(value.resval.rreal, 30);
    ASSERT_EQ(acedGetVar(L"clayer", &value), RTNORM);
    EXPECT_EQ(value.restype, RTSTR);
    EXPECT_STREQ(value.resval.rstring, L"0");
    acutDelString(value.resval.rstring);
    EXPECT_EQ(value.resval.rstring, nullptr);
    EXPECT_EQ(acedGetVar(L"nosuchvar", &value), RTERROR);

    ASSERT_EQ(acedGetVar(L"tilemode", &value), RTNORM);
    EXPECT_EQ(value.resval.rint, 1);
    value.resval.rint = 0;
    EXPECT_EQ(acedSetVar(L"TILEMODE", &value), RTNORM);
    EXPECT_FALSE(acdbHostApplicationServices()->workingDatabase()->tilemode());
    EXPECT_EQ(acedSetVar(L"viewsize", &value), RTREJ) << "can only be read";
    value.restype = RTREAL;
    EXPECT_EQ(acedSetVar(L"tilemode", &value), RTREJ) << "of the wrong type";

    standin::document().header.setInteger("$INSUNITS", 4);
    ASSERT_EQ(acedGetVar(L"insunits", &value), RTNORM);
    EXPECT_EQ(value.resval.rint, 4);
    standin::saveDrawing(folder / "plan.dxf");
    ASSERT_EQ(acedGetVar(L"dwgname", &value), RTNORM);
    EXPECT_STREQ(value.resval.rstring, L"plan.dxf");
    acutDelString(value.resval.rstring);
}

TEST_F(ValuesTest, HostCommandsGetTheirArguments)
{
    const ads_point corner = {1, 2, 3};
    EXPECT_EQ(acedCommand(RTSTR, L"_zoom", RTSTR, L"w", RT3DPOINT, corner, RTSHORT, 5, RTNONE), RTNORM);
    ASSERT_EQ(desk.commands.size(), 1u);
    ASSERT_EQ(desk.commands[0].size(), 4u);
    EXPECT_EQ(std::get<std::wstring>(desk.commands[0][1]), L"w");
    EXPECT_EQ(std::get<standin::DrawingPoint>(desk.commands[0][2]).z, 3);
    EXPECT_EQ(std::get<int>(desk.commands[0][3]), 5);
    // A word in 8-bit characters reads as some other word.
    EXPECT_EQ(acedCommand(RTSTR, "_zoom", RTNONE), RTERROR);
    EXPECT_EQ(acedCommand(4711, 0, RTNONE), RTERROR);
    acedPostCommand(L"\t");
    EXPECT_EQ(desk.posted, std::vector<std::wstring>{L"\t"});
}

TEST_F(SelectionTest, TheWholeDrawingByFilter)
{
    drawing::Document& document = standin::document();
    auto layer = std::make_unique<drawing::Layer>();
    layer->recordName = "Walls";
    document.addRecord(std::move(layer));
    const standin::Handle first = addImage("a.tif");
    const standin::Handle wall = addLine();
    document.find<drawing::Line>(wall)->layer = "Walls";
    const standin::Handle second = addImage("b.tif");
    const standin::Handle title = document.addEntity(document.paperSpace(), std::make_unique<drawing::Line>()).handle;
    const standin::Handle unread =
        document.addEntity(document.modelSpace(), std::make_unique<drawing::RawEntity>("MULTILEADER")).handle;
    standin::eraseEntity(addImage("erased.tif"));
    struct
    {
        const char* what;
        resbuf* filter;
        std::vector<standin::Handle> expected; // drawn last, selected last
    } const table[] = {
        {"everything", nullptr, {first, wall, second, unread, title}},
        {"a type", acutBuildList(RTDXF0, L"image", RTNONE), {first, second}},
        {"a type that is not drawn", acutBuildList(RTDXF0, L"MULTILEADER", RTNONE), {unread}},
        {"a layer", acutBuildList(8, L"WALLS", RTNONE), {wall}},
        {"model space", acutBuildList(67, 0, RTNONE), {first, wall, second, unread}},
        {"a type in model space", acutBuildList(RTDXF0, L"LINE", 67, 0, RTNONE), {wall}},
        {"paper space", acutBuildList(67, 1, RTNONE), {title}},
        {"a layout", acutBuildList(410, L"layout1", RTNONE), {title}},
        {"the model's layout", acutBuildList(RTDXF0, L"LINE", 410, L"Model", RTNONE), {wall}},
        {"a layout that is none", acutBuildList(410, L"Layout9", RTNONE), {}},
        {"a type in 8-bit characters", acutBuildList(RTDXF0, "IMAGE", RTNONE), {}},
        {"a group that is no filter", acutBuildList(62, 1, RTNONE), {}},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.what);
        ads_name set;
        const int result = acedSSGet(L"X", nullptr, nullptr, row.filter, set);
        EXPECT_EQ(result, row.expected.empty() ? RTERROR : RTNORM);
        Adesk::Int32 length = 0;
        EXPECT_EQ(acedSSLength(set, &length), result);
        std::vector<standin::Handle> selected;
        for (Adesk::Int32 i = 0; i < length; ++i) {
            ads_name name;
            AcDbObjectId id;
            ASSERT_EQ(acedSSName(set, i, name), RTNORM);
            ASSERT_EQ(acdbGetObjectId(id, name), Acad::eOk);
            selected.push_back(id.handle());
        }
        EXPECT_EQ(selected, row.expected);
        if (result == RTNORM) {
            EXPECT_EQ(acedSSFree(set), RTNORM);
        }
        acutRelRb(row.filter);
    }
    EXPECT_EQ(standin::breaches().size(), 1u) << "the group that is no filter";
    EXPECT_EQ(standin::selectionSets(), 0);
}

TEST_F(SelectionTest, ASetIsNoEntityAndIsFreedOnce)
{
    addLine();
    ads_name set;
    ASSERT_EQ(acedSSGet(L"X", nullptr, nullptr, nullptr, set), RTNORM);
    ads_name name;
    EXPECT_EQ(acedSSName(set, 1, name), RTERROR);
    AcDbObjectId id;
    EXPECT_EQ(acdbGetObjectId(id, set), Acad::eInvalidAdsName);
    EXPECT_EQ(standin::selectionSets(), 1);
    EXPECT_EQ(acedSSFree(set), RTNORM);
    EXPECT_EQ(acedSSFree(set), RTERROR);
    EXPECT_EQ(standin::breaches().size(), 1u);
}

TEST_F(SelectionTest, TheUserSelectsOrGivesUp)
{
    const standin::Handle line = addLine();
    ads_name set;
    desk.selection = std::nullopt;
    EXPECT_EQ(acedSSGet(nullptr, nullptr, nullptr, nullptr, set), RTCAN);
    desk.selection = std::vector<standin::Handle>{};
    EXPECT_EQ(acedSSGet(nullptr, nullptr, nullptr, nullptr, set), RTERROR);
    desk.selection = std::vector<standin::Handle>{line};
    EXPECT_EQ(acedSSGet(nullptr, nullptr, nullptr, nullptr, set), RTNORM);
    EXPECT_EQ(acedSSFree(set), RTNORM);
    AcDbObjectIdArray ids(0, 8);
    EXPECT_EQ(acedGetCurrentSelectionSet(ids), Acad::eOk);
    ASSERT_EQ(ids.length(), 1);
    EXPECT_EQ(ids[0].handle(), line);
    EXPECT_TRUE(ids.remove(ids[0]));
    EXPECT_FALSE(ids.contains(idOf(line)));
}

} // namespace
