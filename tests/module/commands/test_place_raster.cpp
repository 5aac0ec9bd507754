// New and inserted rasters, from the dialogs through the worker into the drawing.

#include <gmock/gmock.h>

#include "module/base/CArxApp.h"
#include "module/commands/InsertRasterCommand.h"
#include "module/commands/NewRasterCommand.h"
#include "module/raster/CCurentRaster.h"
#include "module/raster/CDocumentLock.h"
#include "module/resources/resource.h"
#include "tests/module/dialogs/dialog_fields.h"
#include "tests/module/support/desk_fixture.h"
#include "tests/module/support/dialog_driver.h"

namespace {

using namespace test;

class PlaceRaster : public DeskFixture
{
protected:
    bool runDeskCommand(const std::vector<standin::CommandArgument>& arguments) override
    {
        m_deskCommands.push_back(arguments);
        return true;
    }
    // The images of the drawing: path, pixels, lower left corner, width and height in drawing units.
    struct PlacedOne
    {
        std::wstring source;
        std::wstring active;
        CSize pixels;
        double x, y, width, height;
    };
    static std::vector<PlacedOne> imagesOfTheDrawing()
    {
        std::vector<PlacedOne> images;
        ads_name set = {};
        if (acedSSGet(L"X", nullptr, nullptr, nullptr, set) != RTNORM)
            return images;
        Adesk::Int32 count = 0;
        acedSSLength(set, &count);
        for (Adesk::Int32 i = 0; i < count; ++i) {
            ads_name name = {};
            acedSSName(set, i, name);
            AcDbObjectId id;
            acdbGetObjectId(id, name);
            AcDbRasterImage* entity = nullptr;
            if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk)
                continue;
            AcGePoint3d origin;
            AcGeVector3d u;
            AcGeVector3d v;
            entity->getOrientation(origin, u, v);
            id = entity->imageDefId();
            entity->close();
            AcDbRasterImageDef* definition = nullptr;
            if (acdbOpenObject(definition, id, AcDb::kForRead) != Acad::eOk)
                continue;
            const AcGeVector2d size = definition->size();
            images.push_back({definition->sourceFileName(), definition->activeFileName(),
                              CSize(static_cast<int>(size.x), static_cast<int>(size.y)), origin.x, origin.y, u.x, v.y});
            definition->close();
        }
        acedSSFree(set);
        return images;
    }
    void expectFile(DialogDriver& driver, const std::filesystem::path& path, int type = -1)
    {
        driver.expectDialog([=](HWND dialog) {
            if (type >= 0)
                chooseType(dialog, type);
            setName(dialog, path.wstring());
            press(dialog, IDOK);
        });
    }
    static void expectError(DialogDriver& driver, const wchar_t* words)
    {
        driver.expectDialog([words](HWND box) {
            EXPECT_EQ(text(box, 0xFFFF), words);
            press(box, IDOK);
        });
    }

    std::vector<std::vector<standin::CommandArgument>> m_deskCommands;
};

TEST_F(PlaceRaster, ThePageAndTheLimitsOfANewRaster)
{
    openDrawing({blank(4, 4)});
    DialogDriver driver;
    driver.expectDialog([](HWND dialog) {
        EXPECT_EQ(chosen(dialog, IDC_NEW_PAGE), 3);
        EXPECT_EQ(text(dialog, IDC_PLACE_SIZE), L"420.0 , 297.0");
        EXPECT_EQ(text(dialog, IDC_NEW_WIDTH), L"420.00 mm");
        EXPECT_EQ(text(dialog, IDC_PLACE_SCALE), L"1.00");
        EXPECT_EQ(text(dialog, IDC_PLACE_X), L"0.0000");
        EXPECT_FALSE(enabled(dialog, IDOK));

        enter(dialog, IDC_NEW_DPI, L"1000");
        choose(dialog, IDC_NEW_PAGE, 13);
        EXPECT_EQ(text(dialog, IDC_NEW_DPI), L"989");
        choose(dialog, IDC_NEW_PAGE, 18);
        EXPECT_EQ(text(dialog, IDC_NEW_WIDTH), L"279.40 mm") << "the long side is the width, whatever the list says";
        EXPECT_EQ(text(dialog, IDC_NEW_DPI), L"989") << "what was lowered stays so";
        enter(dialog, IDC_NEW_DPI, L"600");
        enter(dialog, IDC_NEW_WIDTH, L"3000");
        EXPECT_EQ(text(dialog, IDC_NEW_DPI), L"554");
        enter(dialog, IDC_NEW_WIDTH, L"100");
        enter(dialog, IDC_NEW_HEIGHT, L"50");
        enter(dialog, IDC_PLACE_SCALE, L"2");
        EXPECT_EQ(text(dialog, IDC_PLACE_SIZE), L"200.0 , 100.0");
        enter(dialog, IDC_PLACE_Y, L"1.5");
        EXPECT_EQ(text(dialog, IDC_PLACE_Y), L"1.5000");
        for (const int field : {IDC_NEW_WIDTH, IDC_NEW_HEIGHT, IDC_PLACE_SCALE, IDC_PLACE_X}) {
            const std::wstring endless(4000, L'9');
            for (const wchar_t* hostile : {L"", L"letters", L"-7", L"1e308", endless.c_str()})
                enter(dialog, field, hostile);
        }
        press(dialog, IDCANCEL);
    });
    NewRasterCommand();
    EXPECT_EQ(imagesOfTheDrawing().size(), 1u);
    EXPECT_EQ(g_pArxApp->m_dLastScale, 1) << "only OK remembers";
}

TEST_F(PlaceRaster, ANewRasterIsMadeAndPlacedInBothFormats)
{
    struct Row
    {
        const char* file;
        int type;
        bool savePath;
    };
    for (const Row& row : {Row{"new.tif", 0, true}, Row{"elsewhere\\new.cal", 1, false}}) {
        openDrawing({blank(4, 4)});
        std::filesystem::create_directories(file("elsewhere"));
        writeTiff(file("new.cal"), blank(2, 2), 300); // of the same name beside the drawing
        makeCurrent(0);
        m_deskCommands.clear();
        {
            DialogDriver driver;
            driver.expectDialog([&](HWND dialog) {
                enter(dialog, IDC_NEW_WIDTH, L"25.4");
                enter(dialog, IDC_NEW_HEIGHT, L"50.8");
                enter(dialog, IDC_NEW_DPI, L"100");
                enter(dialog, IDC_PLACE_SCALE, L"2");
                enter(dialog, IDC_PLACE_X, L"10");
                choose(dialog, IDC_PLACE_UNIT, 4);
                CheckDlgButton(dialog, IDC_PLACE_SAVE_PATH, row.savePath ? BST_CHECKED : BST_UNCHECKED);
                CheckDlgButton(dialog, IDC_PLACE_ZOOM, row.savePath ? BST_CHECKED : BST_UNCHECKED);
                press(dialog, IDC_NEW_BROWSE);
            });
            expectFile(driver, file(row.file), row.type);
            driver.expectDialog([&](HWND dialog) {
                EXPECT_EQ(text(dialog, IDC_NEW_FILE), file(row.file).wstring());
                press(dialog, IDOK);
            });
            const CDocumentLock lock;
            NewRasterCommand();
        }
        EXPECT_EQ(readPicture(file(row.file)), blank(100, 200));
        EXPECT_EQ(g_pArxApp->m_pRaster, nullptr);
        const auto images = imagesOfTheDrawing();
        ASSERT_EQ(images.size(), 2u);
        const auto& placed = images.front().pixels == CSize(100, 200) ? images.front() : images.back();
        EXPECT_EQ(placed.pixels, CSize(100, 200));
        EXPECT_EQ(placed.source, row.savePath ? file(row.file).wstring() : file(row.file).filename().wstring());
        EXPECT_EQ(placed.active, file(row.file).wstring());
        EXPECT_NEAR(placed.x, 10, 1e-9);
        EXPECT_NEAR(placed.width, 50.8, 1e-9);
        EXPECT_NEAR(placed.height, 101.6, 1e-9);
        EXPECT_EQ(g_pArxApp->m_dLastScale, 2);
        EXPECT_EQ(g_pArxApp->m_nLastUnit, 4);
        ASSERT_EQ(m_deskCommands.size(), row.savePath ? 1u : 0u);
        if (row.savePath) {
            const auto corner = std::get<standin::DrawingPoint>(m_deskCommands[0].at(3));
            EXPECT_NEAR(corner.x, 60.8, 1e-9);
            EXPECT_NEAR(corner.y, 101.6, 1e-9);
        }
    }
}

TEST_F(PlaceRaster, AWorkerThatFailsPlacesNothingAndLeavesNoFile)
{
    openDrawing({blank(4, 4)});
    makeCurrent(0);
    planWorker({"refuses", "refuses"});
    DialogDriver driver;
    driver.expectDialog([](HWND dialog) { press(dialog, IDC_NEW_BROWSE); });
    expectFile(driver, file("new.tif"));
    driver.expectDialog([](HWND dialog) { press(dialog, IDOK); });
    expectError(driver, L"ERROR: Problem creating the new raster");
    NewRasterCommand();
    EXPECT_EQ(imagesOfTheDrawing().size(), 1u);
    EXPECT_FALSE(std::filesystem::exists(file("new.tif")));
    EXPECT_EQ(g_pArxApp->m_pRaster, nullptr);
}

TEST_F(PlaceRaster, AFileThatTheDrawingShowsIsLoadedAnewAndIsLeftAloneWhenItsImageWasEdited)
{
    const Picture flag = {"#..", "##."};
    const Picture flipped = {"##.", "#.."};
    for (const bool edited : {false, true}) {
        openDrawing({flag});
        makeCurrent(0);
        if (edited) {
            CCurentRaster current;
            current.m_pRaster->FlipVertical();
            current.m_pRaster->Reload(true);
        }
        m_said.clear();
        {
            DialogDriver driver;
            driver.expectDialog([](HWND dialog) {
                enter(dialog, IDC_NEW_WIDTH, L"25.4");
                enter(dialog, IDC_NEW_HEIGHT, L"25.4");
                enter(dialog, IDC_NEW_DPI, L"10");
                press(dialog, IDC_NEW_BROWSE);
            });
            expectFile(driver, file("image0.tif"));
            driver.expectDialog([](HWND question) { press(question, IDYES); });
            driver.expectDialog([](HWND dialog) { press(dialog, IDOK); });
            if (edited)
                expectError(driver, L"ERROR: Problem creating the new raster");
            const CDocumentLock lock;
            NewRasterCommand();
        }
        EXPECT_EQ(readPicture(file("image0.tif")), edited ? flag : blank(10, 10));
        EXPECT_EQ(pictureInDrawing(0), edited ? flipped : blank(10, 10));
        EXPECT_EQ(m_said.size(), edited ? 1u : 0u);
        forgetEdits();
    }
}

TEST_F(PlaceRaster, ACancelledDialogGivesTheFormerRasterBack)
{
    openDrawing({blank(4, 4)});
    for (void (*const command)() : {NewRasterCommand, InsertRasterCommand}) {
        makeCurrent(0);
        DialogDriver driver;
        driver.expectDialog([](HWND dialog) { press(dialog, IDCANCEL); });
        command();
        ASSERT_NE(g_pArxApp->m_pRaster, nullptr);
        EXPECT_EQ(g_pArxApp->m_pRaster->GetLockCount(), 0);
        const CCurentRaster current;
        EXPECT_EQ(current.m_pRaster->GetSize(), CSize(4, 4));
    }
}

TEST_F(PlaceRaster, AnExistingRasterLiesAsItsOwnResolutionSays)
{
    const Picture flag = {"#.#", "##."};
    openDrawing({blank(4, 4)});
    makeCurrent(0);
    writeTiff(file("flag.tif"), flag, 127); // 0.2 mm a pixel
    {
        DialogDriver driver;
        expectFile(driver, file("flag.tif"));
        driver.expectDialog([](HWND dialog) {
            EXPECT_EQ(text(dialog, IDC_PLACE_SIZE), L"0.6 , 0.4");
            enter(dialog, IDC_PLACE_SCALE, L"10");
            EXPECT_EQ(text(dialog, IDC_PLACE_SIZE), L"6.0 , 4.0");
            enter(dialog, IDC_PLACE_Y, L"-2");
            press(dialog, IDOK);
        });
        const CDocumentLock lock;
        InsertRasterCommand();
    }
    EXPECT_EQ(g_pArxApp->m_pRaster, nullptr);
    const auto images = imagesOfTheDrawing();
    ASSERT_EQ(images.size(), 2u);
    const auto& placed = images.front().pixels == CSize(3, 2) ? images.front() : images.back();
    EXPECT_EQ(placed.source, file("flag.tif").wstring());
    EXPECT_NEAR(placed.y, -2, 1e-9);
    EXPECT_NEAR(placed.width, 6, 1e-9);
    EXPECT_NEAR(placed.height, 4, 1e-9);
    EXPECT_THAT(temporaryFiles(), testing::IsEmpty());

    // A dialog that is cancelled after the file was chosen leaves no raster current.
    makeCurrent(0);
    DialogDriver driver;
    expectFile(driver, file("flag.tif"));
    driver.expectDialog([](HWND dialog) { press(dialog, IDCANCEL); });
    InsertRasterCommand();
    EXPECT_EQ(g_pArxApp->m_pRaster, nullptr);
}

TEST_F(PlaceRaster, FilesThatNobodyCanEditAreRefusedInWords)
{
    openDrawing({blank(4, 4)});
    writeGrayBitmap(file("gray.bmp"), 5, 5);
    std::ofstream(file("text.tif")) << "no raster";
    struct Row
    {
        const char* file;
        const wchar_t* words;
    };
    for (const Row& row : {Row{"gray.bmp", L"ERROR: Halvoran in AutoCAD only works with 1-bit(black/white) images"},
                           Row{"text.tif", L"ERROR: AutoCAD Can't read the file"}}) {
        makeCurrent(0);
        DialogDriver driver;
        expectFile(driver, file(row.file));
        expectError(driver, row.words);
        InsertRasterCommand();
        EXPECT_EQ(g_pArxApp->m_pRaster, nullptr);
        EXPECT_TRUE(std::filesystem::remove(file(row.file))) << "the file was left open";
    }
}

} // namespace
