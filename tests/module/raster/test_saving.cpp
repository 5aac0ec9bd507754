// Saving: onto the raster's own file above all, where nothing may get lost, whatever fails.

#include <algorithm>
#include <cstring>
#include <functional>
#include <gmock/gmock.h>

#include "module/raster/CCurentRaster.h"
#include "module/raster/CDocumentLock.h"
#include "module/raster/PendingFileSwap.h"
#include "module/start/CModuleApp.h"
#include "tests/module/support/desk_fixture.h"
#include "workerlink/LinkLimits.h"
#include "workerlink/SendToWorker.h"

namespace {

using test::blank;
using test::Picture;
using test::pictureInDrawing;
using test::readPicture;

constexpr DWORD group4 = 29;

const Picture steps = {
    "........", //
    ".##.....", //
    "...##...", //
    ".....#..",
};

const Picture flippedSteps(steps.rbegin(), steps.rend());

class HeldFile
{
public:
    explicit HeldFile(const std::filesystem::path& path)
        : m_handle(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr))
    {
        EXPECT_NE(m_handle, INVALID_HANDLE_VALUE);
    }
    ~HeldFile() { CloseHandle(m_handle); }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;

private:
    HANDLE m_handle;
};

// A name in the environment that the temporary folder goes by, changed for a while.
class OtherTemporaryFolder
{
public:
    explicit OtherTemporaryFolder(const std::filesystem::path& folder)
    {
        GetEnvironmentVariableW(L"TMP", m_usual, MAX_PATH);
        SetEnvironmentVariableW(L"TMP", folder.c_str());
    }
    ~OtherTemporaryFolder() { SetEnvironmentVariableW(L"TMP", m_usual); }
    OtherTemporaryFolder(const OtherTemporaryFolder&) = delete;
    OtherTemporaryFolder& operator=(const OtherTemporaryFolder&) = delete;

private:
    wchar_t m_usual[MAX_PATH] = {};
};

class Saving : public test::DeskFixture
{
protected:
    void SetUp() override
    {
        DeskFixture::SetUp();
        CurrentLinkLimits().workerLeave = 200;
    }
    void TearDown() override
    {
        CurrentLinkLimits() = LinkLimits();
        DeskFixture::TearDown();
    }

    // A drawing whose picture comes from the file "image0.tif" beside it, named by its whole path or by its name alone;
    // the picture is the current raster, locked, and was mirrored after the file was written.
    CAcraster& openEdited(bool relativePath)
    {
        DropCurrentRaster();
        test::writeTiff(ownFile(), steps, 300);
        openDrawing({steps}, {{.file = relativePath ? "image0.tif" : ownFile()}});
        CAcraster& raster = makeCurrent(0);
        raster.Lock(1);
        raster.FlipVertical();
        raster.Reload(true);
        m_said.clear();
        return raster;
    }

    // Only a worker that says nothing is waited for briefly: a busy machine may start the others late.
    void saveInVain(CAcraster& raster, const std::vector<std::string>& worker)
    {
        LinkLimits& limits = CurrentLinkLimits();
        const LinkLimits usual = limits;
        if (worker[0] == "silent")
            limits.workerStart = 500;
        if (worker[0] == "hangs")
            limits.workerRun = 500;
        test::planWorker(worker);
        EXPECT_FALSE(raster.SaveAs(ownFile().c_str(), group4, nullptr));
        limits = usual;
        test::planWorker({});
    }

    std::filesystem::path ownFile() const { return file("image0.tif"); }

    std::vector<std::string> filesOfTheFolder() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(file("").parent_path()))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }
};

TEST_F(Saving, ReplacesTheRastersOwnFileAndTheDrawingLoadsItAgain)
{
    for (const bool relative : {false, true}) {
        CAcraster& raster = openEdited(relative);
        ASSERT_TRUE(raster.SaveAs(ownFile().c_str(), group4, nullptr));
        EXPECT_FALSE(g_pPendingFileSwap);
        EXPECT_EQ(readPicture(ownFile()), flippedSteps);
        EXPECT_EQ(filesOfTheFolder(), (std::vector<std::string>{"drawing.dxf", "image0.tif"}));
        // The raster goes on with an image of its own.
        raster.FlipVertical();
        raster.Reload(true);
        EXPECT_EQ(pictureInDrawing(0), steps);
        raster.Unlock();
    }
}

TEST_F(Saving, NothingIsLostWhateverFails)
{
    struct Fault
    {
        const char* what;
        std::vector<std::string> worker; // what its runs do; each request has two tries
        bool vanished = false;           // the file had gone before
        bool held = false;               // somebody else has it open
        const char* said = "The raster was not saved: the file could not be written.";
    };
    const auto temporaryBefore = test::temporaryFiles();
    const Fault faults[] = {
        {"ends before WORKING", {"silent", "silent"}},
        {"ends after WORKING", {"dies", "dies"}},
        {"leaves half a file", {"half-writes", "half-writes"}},
        {"ends before it tells of its success", {"writes", "writes"}},
        {"refuses", {"refuses", "refuses"}},
        {"hangs", {"hangs", "hangs"}},
        {"ends, and the file had vanished", {"dies", "dies"}, true},
        {"leaves half a file where there was none", {"half-writes", "half-writes"}, true},
        {"ends, and the file is held", {"dies", "dies"}, false, true},
        {"ends after it wrote, and the file is held", {"writes", "writes"}, false, true},
        {"says that all went well, but did not do it",
         {"spoils"},
         false,
         false,
         "The raster was not saved: what was written can't be read."},
    };
    for (const Fault& fault : faults) {
        for (const bool relative : {false, true}) {
            SCOPED_TRACE(std::string(fault.what) + (relative ? ", relative path" : ", absolute path"));
            CAcraster& raster = openEdited(relative);
            if (fault.vanished)
                std::filesystem::remove(ownFile());
            std::optional<HeldFile> held;
            if (fault.held)
                held.emplace(ownFile());
            saveInVain(raster, fault.worker);
            EXPECT_FALSE(g_pPendingFileSwap);
            held.reset();
            if (fault.vanished) {
                EXPECT_FALSE(std::filesystem::exists(ownFile())) << "a file that was not whole was left";
            } else {
                EXPECT_EQ(readPicture(ownFile()), steps);
            }
            EXPECT_EQ(test::temporaryFiles(), temporaryBefore);
            EXPECT_EQ(pictureInDrawing(0), flippedSteps);
            EXPECT_THAT(m_said, testing::ElementsAre(std::wstring(fault.said, fault.said + strlen(fault.said))));
            // The edits live on: the next try has them.
            EXPECT_TRUE(raster.SaveAs(ownFile().c_str(), group4, nullptr));
            EXPECT_EQ(readPicture(ownFile()), flippedSteps);
            EXPECT_EQ(pictureInDrawing(0), flippedSteps);
            EXPECT_EQ(filesOfTheFolder(), (std::vector<std::string>{"drawing.dxf", "image0.tif"}));
            raster.Unlock();
        }
    }
}

TEST_F(Saving, NothingIsTouchedWhenItCannotBegin)
{
    struct Case
    {
        const char* said;
        std::function<bool(CAcraster&)> save;
    };
    const auto saveAll = [this](CAcraster& raster) { return raster.SaveAs(ownFile().c_str(), group4, nullptr); };
    const Case cases[] = {
        {"The raster was not saved: its temporary file could not be written.",
         [&](CAcraster& raster) {
             const OtherTemporaryFolder none(file("no such folder"));
             return saveAll(raster);
         }},
        {"The raster was not saved: its file is write-protected.",
         [&](CAcraster& raster) {
             SetFileAttributesW(ownFile().c_str(), FILE_ATTRIBUTE_READONLY);
             const bool saved = saveAll(raster);
             SetFileAttributesW(ownFile().c_str(), FILE_ATTRIBUTE_NORMAL);
             return saved;
         }},
        {"The raster was not saved: the selected area lies beside it.",
         [&](CAcraster& raster) {
             CRgn beside;
             beside.CreateRectRgn(8, 0, 20, 4);
             return raster.SaveAs(ownFile().c_str(), group4, &beside);
         }},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.said);
        CAcraster& raster = openEdited(false);
        const auto written = std::filesystem::last_write_time(ownFile());
        const auto pixels = standin::imagePixels(test::imageHandle(0));
        EXPECT_FALSE(row.save(raster));
        EXPECT_EQ(std::filesystem::last_write_time(ownFile()), written);
        EXPECT_EQ(standin::imagePixels(test::imageHandle(0)), pixels) << "the image was let go of";
        EXPECT_THAT(m_said, testing::ElementsAre(std::wstring(row.said, row.said + strlen(row.said))));
        raster.Unlock();
    }
}

TEST_F(Saving, ACroppedRasterThatCouldNotBeSavedStaysInItsPlace)
{
    CAcraster& raster = openEdited(false);
    raster.GetRegion().SetRectRgn(3, 0, 6, 2);
    raster.Crop();
    raster.Reload(true);
    const Picture cropped = {"..#", "##."};
    ASSERT_EQ(pictureInDrawing(0), cropped);
    test::planWorker({"dies", "dies"});
    EXPECT_FALSE(raster.SaveAs(ownFile().c_str(), group4, nullptr));
    EXPECT_EQ(pictureInDrawing(0), cropped);
    AcGePoint3d origin;
    double width = 0;
    double height = 0;
    raster.GetPlacement(origin, width, height);
    EXPECT_NEAR(origin.x, 3, 1e-9);
    EXPECT_NEAR(origin.y, 2, 1e-9);
    EXPECT_NEAR(width, 3, 1e-9);
    EXPECT_NEAR(height, 2, 1e-9);
    EXPECT_EQ(raster.GetFileName(), ownFile().c_str());
    raster.Unlock();
}

TEST_F(Saving, APartSavedOntoTheOwnFileIsTheWholeRasterFromThenOn)
{
    for (const bool relative : {false, true}) {
        CAcraster& raster = openEdited(relative);
        raster.GetRegion().SetRectRgn(3, -2, 6, 2); // the two upper rows of it lie in the image
        ASSERT_TRUE(raster.SaveAs(ownFile().c_str(), group4, &raster.GetRegion()));
        EXPECT_EQ(readPicture(ownFile()), (Picture{"..#", "##."}));
        EXPECT_EQ(pictureInDrawing(0), (Picture{"..#", "##."}));
        EXPECT_FALSE(raster.HasSelection());
        raster.Unlock();
    }
}

TEST_F(Saving, TheFileOfAnotherRasterIsShownAnewAndIsLeftAloneWhenThatOneWasEdited)
{
    for (const bool edited : {false, true}) {
        DropCurrentRaster();
        openDrawing({steps, blank(8, 4)});
        if (edited) {
            CAcraster& other = makeCurrent(1);
            other.Lock(1);
            other.Invert();
            other.Reload(true);
            other.Unlock();
            DropCurrentRaster();
        }
        CAcraster& raster = makeCurrent(0);
        raster.Lock(1);
        EXPECT_EQ(raster.SaveAs(file("image1.tif").c_str(), group4, nullptr), !edited);
        raster.Unlock();
        EXPECT_EQ(readPicture(file("image1.tif")), edited ? blank(8, 4) : steps);
        EXPECT_EQ(pictureInDrawing(1), edited ? Picture(4, "########") : steps);
    }
    forgetEdits();
}

TEST_F(Saving, TheHostDoesNotAskAboutARasterThatIsBeingSaved)
{
    class Watcher : public AcDbRasterImageDefTransReactor
    {
    public:
        Adesk::Boolean onDeleteImage(const AcDbRasterImageDef* definition, const Atil::Image*) override
        {
            m_unsaved.push_back(definition->imageModified());
            return Adesk::kFalse;
        }
        std::vector<bool> m_unsaved;
    };
    CAcraster& raster = openEdited(false);
    raster.Unlock();
    const CDocumentLock lock;
    Watcher watcher;
    ads_name name = {};
    entityName(0, name);
    AcDbObjectId entityId;
    acdbGetObjectId(entityId, name);
    AcDbRasterImage* entity = nullptr;
    ASSERT_EQ(acdbOpenObject(entity, entityId, AcDb::kForRead), Acad::eOk);
    const AcDbObjectId definitionId = entity->imageDefId();
    entity->close();
    AcDbRasterImageDef* definition = nullptr;
    ASSERT_EQ(acdbOpenObject(definition, definitionId, AcDb::kForWrite), Acad::eOk);
    ASSERT_TRUE(definition->imageModified());
    definition->addReactor(&watcher);
    definition->close();
    raster.Lock(1);
    EXPECT_TRUE(raster.SaveAs(ownFile().c_str(), group4, nullptr));
    raster.Unlock();
    EXPECT_EQ(watcher.m_unsaved, std::vector<bool>{false});
    ASSERT_EQ(acdbOpenObject(definition, definitionId, AcDb::kForWrite), Acad::eOk);
    definition->removeReactor(&watcher);
    definition->close();
}

TEST_F(Saving, AHeldFileIsReplacedLater)
{
    CAcraster& raster = openEdited(false);
    {
        const HeldFile held(ownFile());
        ASSERT_TRUE(raster.SaveAs(ownFile().c_str(), group4, nullptr));
        ASSERT_TRUE(g_pPendingFileSwap);
        EXPECT_EQ(readPicture(ownFile()), steps);
        EXPECT_EQ(readPicture(g_pPendingFileSwap->sourcePath.GetString()), flippedSteps);
    }
    raster.Unlock();
    const PendingFileSwap swap = *g_pPendingFileSwap;
    RunPendingFileSwap();
    EXPECT_FALSE(g_pPendingFileSwap);
    EXPECT_FALSE(std::filesystem::exists(swap.sourcePath.GetString()));
    EXPECT_EQ(readPicture(ownFile()), flippedSteps);
    EXPECT_EQ(pictureInDrawing(0), flippedSteps);
    RunFileSwap(swap);
    EXPECT_EQ(readPicture(ownFile()), flippedSteps) << "a swap whose source has gone does nothing";
}

TEST_F(Saving, ASwapOntoAFileThatIsStillHeldLeavesBothFilesAndSaysWhereTheSavedOneLies)
{
    openDrawing({steps});
    test::writeTiff(file("new.tif"), blank(2, 2), 300);
    const PendingFileSwap swap{file("new.tif").c_str(), ownFile().c_str(), AcDbObjectId()};
    {
        const HeldFile held(ownFile());
        RunFileSwap(swap);
    }
    EXPECT_EQ(readPicture(ownFile()), steps);
    EXPECT_EQ(readPicture(file("new.tif")), blank(2, 2));
    EXPECT_THAT(m_said, testing::ElementsAre(testing::EndsWith(file("new.tif").wstring())));
}

TEST_F(Saving, ASwapThatWaitsGivesWayToALaterSaving)
{
    CAcraster& raster = openEdited(false);
    for (const bool heldAgain : {false, true}) {
        {
            const HeldFile held(ownFile());
            ASSERT_TRUE(raster.SaveAs(ownFile().c_str(), group4, nullptr));
        }
        ASSERT_TRUE(g_pPendingFileSwap);
        raster.FlipHorizontal();
        raster.Reload(true);
        const Picture later = pictureInDrawing(0);
        {
            std::optional<HeldFile> held;
            if (heldAgain)
                held.emplace(ownFile());
            ASSERT_TRUE(raster.SaveAs(ownFile().c_str(), group4, nullptr));
        }
        raster.Unlock();
        RunPendingFileSwap();
        raster.Lock(1);
        EXPECT_EQ(readPicture(ownFile()), later);
        EXPECT_EQ(pictureInDrawing(0), later);
    }
    raster.Unlock();
}

TEST_F(Saving, WhatWaitsForItsSwapIsShownMeanwhile)
{
    CAcraster& raster = openEdited(false);
    const HeldFile held(ownFile());
    ASSERT_TRUE(raster.SaveAs(ownFile().c_str(), group4, nullptr));
    EXPECT_EQ(pictureInDrawing(0), flippedSteps);
    EXPECT_EQ(raster.GetFileName(), ownFile().c_str());
    raster.Unlock();
    DropPendingFileSwap(ownFile().c_str());
    EXPECT_FALSE(g_pPendingFileSwap);
}

TEST_F(Saving, AnImageEditedSinceIsNotThrownAwayByALateSwap)
{
    CAcraster& raster = openEdited(false);
    {
        const HeldFile held(ownFile());
        ASSERT_TRUE(raster.SaveAs(ownFile().c_str(), group4, nullptr));
    }
    raster.SetColor(0);
    raster.Stamp(CPoint(7, 0));
    raster.Reload(true);
    Picture stamped = flippedSteps;
    stamped[0][7] = '#';
    EXPECT_EQ(pictureInDrawing(0), stamped);
    raster.Unlock();
    RunPendingFileSwap();
    EXPECT_EQ(readPicture(ownFile()), flippedSteps);
    EXPECT_EQ(pictureInDrawing(0), stamped);
}

TEST_F(Saving, AWaitingSwapIsCarriedOutWhenTheNextOneComesAndWhenTheModuleStops)
{
    openDrawing({steps, steps});
    test::writeTiff(file("new.tif"), blank(2, 2), 300);
    test::writeTiff(file("newer.tif"), blank(3, 3), 300);
    PostponeFileSwap({file("new.tif").c_str(), ownFile().c_str(), AcDbObjectId()});
    EXPECT_EQ(readPicture(ownFile()), steps);
    PostponeFileSwap({file("newer.tif").c_str(), file("image1.tif").c_str(), AcDbObjectId()});
    EXPECT_EQ(readPicture(ownFile()), blank(2, 2));
    EXPECT_EQ(readPicture(file("image1.tif")), steps);
    delete g_pArxApp;
    g_pArxApp = nullptr;
    EXPECT_FALSE(g_pPendingFileSwap);
    EXPECT_EQ(readPicture(file("image1.tif")), blank(3, 3));
    g_pArxApp = new CModuleApp;
}

} // namespace
