// The question before an edited image goes, and the chain of those that ask it.

#include <functional>
#include <gmock/gmock.h>

#include "module/raster/CCheckDef.h"
#include "module/raster/CCurentRaster.h"
#include "module/raster/CDocumentLock.h"
#include "module/raster/CSaveRaster.h"
#include "module/raster/PendingFileSwap.h"
#include "module/start/CModuleApp.h"
#include "tests/module/support/desk_fixture.h"
#include "tests/module/support/dialog_driver.h"

namespace {

using test::Picture;
using test::pictureInDrawing;
using test::readPicture;

const Picture steps = {
    "........", //
    ".##.....", //
    "...##...", //
    ".....#..",
};
const Picture flippedSteps(steps.rbegin(), steps.rend());

std::wstring textOfBox(HWND box)
{
    wchar_t text[600] = {};
    GetDlgItemTextW(box, 0xFFFF, text, 600);
    return text;
}

class SaveReactor : public test::DeskFixture
{
protected:
    // Images with the steps, each mirrored and committed, the first one first; the last of them is current.
    void openEdited(int count = 1)
    {
        openDrawing(std::vector<Picture>(static_cast<std::size_t>(count), steps));
        followEditor();
        for (int image = 0; image < count; ++image)
            edit(image);
        m_said.clear();
    }
    void edit(int image)
    {
        CAcraster& raster = makeCurrent(image);
        raster.Lock(1);
        raster.FlipVertical();
        raster.Reload(true);
        raster.Unlock();
    }
    static void followEditor()
    {
        if (!g_pArxApp->m_pReactor)
            g_pArxApp->m_pReactor = new CCheckDef;
    }
    static void stopModule()
    {
        delete g_pArxApp;
        g_pArxApp = new CModuleApp;
    }
    // The host lets go of an image that the user unloads.
    void unload(int image)
    {
        const CDocumentLock lock;
        AcDbRasterImageDef* definition = openDefinition(image);
        definition->unload(true);
        definition->close();
    }
    AcDbRasterImageDef* openDefinition(int image) const
    {
        ads_name name = {};
        entityName(image, name);
        AcDbObjectId id;
        acdbGetObjectId(id, name);
        AcDbRasterImage* entity = nullptr;
        EXPECT_EQ(acdbOpenObject(entity, id, AcDb::kForRead), Acad::eOk);
        id = entity->imageDefId();
        entity->close();
        AcDbRasterImageDef* definition = nullptr;
        EXPECT_EQ(acdbOpenObject(definition, id, AcDb::kForWrite), Acad::eOk);
        return definition;
    }
    std::size_t reactorsOf(int image) const
    {
        const CDocumentLock lock;
        AcDbRasterImageDef* definition = openDefinition(image);
        const std::size_t count = definition->reactors().size();
        definition->close();
        return count;
    }
    std::filesystem::path imageFile(int image) const { return file("image" + std::to_string(image) + ".tif"); }
};

void expectQuestion(test::DialogDriver& driver, const std::filesystem::path& image, int answer)
{
    driver.expectDialog([=](HWND box) {
        EXPECT_EQ(textOfBox(box), L"Save changes to " + image.wstring() + L"?");
        test::press(box, answer);
    });
}

void expectFileDialog(test::DialogDriver& driver, const std::filesystem::path& file, int button)
{
    driver.expectDialog([=](HWND dialog) {
        if (button == IDOK)
            test::setName(dialog, file.wstring());
        test::press(dialog, button);
    });
    if (button == IDOK && std::filesystem::exists(file))
        driver.expectDialog([](HWND overwrite) { test::press(overwrite, IDYES); });
}

TEST_F(SaveReactor, AsksWheneverAnEditedImageIsAboutToGoAndSavesItWhereTheUserSays)
{
    struct Way
    {
        const char* what;
        std::function<void()> happen;
    };
    const Way ways[] = {
        {"the drawing is saved", [this] { standin::saveDrawing(file("saved.dxf")); }},
        {"the drawing is closed", [] { standin::closeDrawing(); }},
        {"another database ends", [] { const AcDbDatabase other(true, true); }},
        {"the module stops", stopModule},
        {"the image is unloaded", [this] { unload(0); }},
    };
    enum Answer
    {
        No,
        OwnFile,
        OtherFile,
        Cancelled
    };
    for (const Way& way : ways) {
        for (const Answer answer : {No, OwnFile, OtherFile, Cancelled}) {
            SCOPED_TRACE(std::string(way.what) + ", answer " + std::to_string(answer));
            openEdited();
            const std::filesystem::path other = file("other.tif");
            std::filesystem::remove(other);
            {
                test::DialogDriver driver;
                expectQuestion(driver, imageFile(0), answer == No ? IDNO : IDYES);
                if (answer != No)
                    expectFileDialog(driver, answer == OwnFile ? imageFile(0) : other,
                                     answer == Cancelled ? IDCANCEL : IDOK);
                way.happen();
            }
            EXPECT_EQ(g_pArxApp->m_pSaveList, nullptr);
            EXPECT_EQ(g_pArxApp->m_pRaster, nullptr) << "the current raster goes before the question";
            EXPECT_EQ(readPicture(imageFile(0)), answer == OwnFile ? flippedSteps : steps);
            EXPECT_EQ(std::filesystem::exists(other), answer == OtherFile);
            if (answer == OtherFile) {
                EXPECT_EQ(readPicture(other), flippedSteps);
            }
            if (answer == Cancelled) {
                EXPECT_THAT(m_said,
                            testing::ElementsAre(testing::HasSubstr(L"The changes to " + imageFile(0).wstring())));
            }
            if (standin::drawingOpen()) {
                EXPECT_EQ(reactorsOf(0), 0u);
            }
        }
    }
}

TEST_F(SaveReactor, AsksNothingWhereThereIsNothingToLose)
{
    openDrawing({steps});
    followEditor();
    CAcraster& raster = makeCurrent(0);
    raster.Lock(1);
    raster.Reload(true);
    EXPECT_NE(g_pArxApp->m_pSaveList, nullptr);
    raster.Unlock();
    standin::saveDrawing(file("saved.dxf"));
    EXPECT_EQ(g_pArxApp->m_pSaveList, nullptr);
    EXPECT_EQ(reactorsOf(0), 0u);
    EXPECT_EQ(g_pArxApp->m_pRaster, &raster) << "nothing was asked, and the raster stays";

    edit(0);
    g_pArxApp->m_pReactor->SetSuspended(1);
    standin::saveDrawing(file("saved.dxf"));
    EXPECT_EQ(reactorsOf(0), 1u) << "a suspended editor reactor leaves them alone";
    g_pArxApp->m_pReactor->SetSuspended(0);
}

TEST_F(SaveReactor, ADefinitionHasOneReactorHoweverOftenItIsEditedAndShowingItGivesItNone)
{
    openDrawing({steps});
    CAcraster& raster = makeCurrent(0);
    raster.Lock(1);
    raster.Reload(false);
    EXPECT_EQ(g_pArxApp->m_pSaveList, nullptr);
    raster.Reload(true);
    raster.Reload(true);
    raster.Unlock();
    EXPECT_EQ(reactorsOf(0), 1u);
}

TEST_F(SaveReactor, TheFirstThatGoesEmptiesTheChainAndTheOthersAskWhenTheirImageGoes)
{
    openEdited(3);
    {
        test::DialogDriver driver;
        // The newest heads the chain. A flush meets no other one after it.
        expectQuestion(driver, imageFile(2), IDNO);
        standin::saveDrawing(file("saved.dxf"));
    }
    EXPECT_EQ(g_pArxApp->m_pSaveList, nullptr);
    EXPECT_EQ(reactorsOf(0), 1u);
    edit(1);
    EXPECT_EQ(reactorsOf(1), 2u) << "one that the chain has lost is not found";
    unload(2);
    {
        test::DialogDriver driver;
        expectQuestion(driver, imageFile(0), IDNO);
        unload(0);
    }
    EXPECT_EQ(g_pArxApp->m_pSaveList, nullptr);
    // Those of image 1 are lost as well now; the module's stop asks nobody, and takes them off.
    stopModule();
    EXPECT_EQ(reactorsOf(1), 0u);
    unload(1);
}

TEST_F(SaveReactor, FindsAndDeletesInTheRestOfTheChain)
{
    openEdited(3);
    CSaveRaster* head = g_pArxApp->m_pSaveList;
    DropCurrentRaster();
    const CDocumentLock lock;
    AcDbRasterImageDef* definition = openDefinition(0);
    const AcDbObjectId oldest = definition->objectId();
    definition->close();
    EXPECT_TRUE(FindReactor(head, &oldest, false));
    const AcDbObjectId none;
    EXPECT_FALSE(FindReactor(head, &none, true));
    EXPECT_TRUE(FindReactor(head, &oldest, true));
    EXPECT_EQ(reactorsOf(0), 0u);
    EXPECT_EQ(g_pArxApp->m_pSaveList, nullptr) << "whichever goes empties the chain";
    EXPECT_TRUE(FindReactor(head, nullptr, true));
    EXPECT_EQ(reactorsOf(1) + reactorsOf(2), 0u);
}

TEST_F(SaveReactor, AHeldFileOfARasterThatTheChainHasLostIsReplacedAfterItsDrawingHasGone)
{
    openEdited(2);
    {
        const HANDLE held =
            CreateFileW(imageFile(0).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
        test::DialogDriver driver;
        expectQuestion(driver, imageFile(1), IDNO);
        expectQuestion(driver, imageFile(0), IDYES);
        expectFileDialog(driver, imageFile(0), IDOK);
        standin::closeDrawing();
        CloseHandle(held);
    }
    ASSERT_TRUE(g_pPendingFileSwap);
    EXPECT_TRUE(g_pPendingFileSwap->definitionId.isNull());
    RunPendingFileSwap();
    EXPECT_EQ(readPicture(imageFile(0)), flippedSteps);
    EXPECT_EQ(readPicture(imageFile(1)), steps);
}

TEST_F(SaveReactor, TheReactorGoesWithTheModuleAlsoWhileSomebodyElseHasTheDefinitionOpen)
{
    openEdited(2);
    test::DialogDriver driver;
    expectQuestion(driver, imageFile(1), IDNO);
    const CDocumentLock lock;
    AcDbRasterImageDef* definition = openDefinition(0);
    stopModule();
    EXPECT_TRUE(definition->reactors().empty());
    definition->close();
}

TEST_F(SaveReactor, AnotherResolutionIsSavedWithTheEditThatGaveIt)
{
    openEdited();
    CAcraster& edited = *g_pArxApp->m_pRaster;
    edited.Lock(1);
    edited.Resample(CSize(4, 2), 150);
    edited.Reload(true);
    edited.Unlock();
    DropCurrentRaster();
    CAcraster& again = makeCurrent(0);
    EXPECT_EQ(again.GetDpi(), 150) << "a raster that is picked again still has it";
    {
        test::DialogDriver driver;
        expectQuestion(driver, imageFile(0), IDYES);
        expectFileDialog(driver, imageFile(0), IDOK);
        standin::saveDrawing(file("saved.dxf"));
    }
    EXPECT_EQ(makeCurrent(0).GetDpi(), 150);
    EXPECT_EQ(g_pArxApp->m_pSaveList, nullptr) << "and now it is the file's";
}

TEST_F(SaveReactor, AStrokeThatWasBrokenOffDoesNotKeepTheQuestionAway)
{
    openEdited();
    // The lock is counted for good, and the definition stays open.
    g_pArxApp->m_pRaster->Lock(1);
    test::DialogDriver driver;
    expectQuestion(driver, imageFile(0), IDYES);
    expectFileDialog(driver, imageFile(0), IDOK);
    standin::saveDrawing(file("saved.dxf"));
    EXPECT_EQ(readPicture(imageFile(0)), flippedSteps);
}

TEST_F(SaveReactor, OfADefinitionThatSomebodyElseHasOpenTheQuestionComesWhenTheImageGoes)
{
    openEdited();
    DropCurrentRaster();
    {
        const CDocumentLock lock;
        AcDbRasterImageDef* definition = openDefinition(0);
        standin::saveDrawing(file("saved.dxf"));
        EXPECT_EQ(g_pArxApp->m_pSaveList, nullptr) << "the flush has to come to an end";
        standin::clearBreaches(); // that it was tried
        definition->close();
    }
    EXPECT_EQ(reactorsOf(0), 1u);
    test::DialogDriver driver;
    expectQuestion(driver, imageFile(0), IDNO);
    unload(0);
}

TEST_F(SaveReactor, WhatCouldNotBeSavedOverItsOwnFileIsAskedForAgain)
{
    openEdited();
    CAcraster& raster = *g_pArxApp->m_pRaster;
    raster.Lock(1);
    test::planWorker({"dies", "dies"});
    constexpr DWORD group4 = 29;
    EXPECT_FALSE(raster.SaveAs(imageFile(0).c_str(), group4, nullptr));
    raster.Unlock();
    test::DialogDriver driver;
    expectQuestion(driver, imageFile(0), IDYES);
    expectFileDialog(driver, imageFile(0), IDOK);
    standin::saveDrawing(file("saved.dxf"));
    EXPECT_EQ(readPicture(imageFile(0)), flippedSteps);
}

TEST_F(SaveReactor, AQuestionWhoseSavingFailsLeavesTheEditInAFileAndSaysWhere)
{
    const struct
    {
        const char* why;
        std::vector<std::string> plan;
        bool writeProtected;
        const char* target;
    } cases[] = {
        {"the worker ends while it saves over the own file", {"well", "well", "dies", "dies"}, false, "image0.tif"},
        {"the worker ends while it saves elsewhere", {"well", "well", "dies", "dies"}, false, "other.tif"},
        {"the worker tells no format", {"dies", "dies", "dies", "dies"}, false, "other.tif"},
        {"the own file is write-protected", {}, true, "image0.tif"},
    };
    const std::wstring lies = L"The edited raster lies in ";
    for (const auto& row : cases) {
        SCOPED_TRACE(row.why);
        openEdited();
        test::planWorker(row.plan);
        if (row.writeProtected)
            SetFileAttributesW(imageFile(0).c_str(), FILE_ATTRIBUTE_READONLY);
        {
            test::DialogDriver driver;
            expectQuestion(driver, imageFile(0), IDYES);
            expectFileDialog(driver, file(row.target), IDOK);
            standin::closeDrawing();
        }
        SetFileAttributesW(imageFile(0).c_str(), FILE_ATTRIBUTE_NORMAL);
        EXPECT_EQ(readPicture(imageFile(0)), steps);
        EXPECT_FALSE(std::filesystem::exists(file("other.tif")));
        const auto said = std::find_if(m_said.begin(), m_said.end(),
                                       [&](const std::wstring& line) { return line.starts_with(lies); });
        ASSERT_NE(said, m_said.end());
        const std::filesystem::path kept = said->substr(lies.size());
        EXPECT_EQ(readPicture(kept), flippedSteps);
        std::filesystem::remove(kept);
    }
}

} // namespace
