// A drawing with a raster image, in a folder of its own, for the tests of the host's objects.
#pragma once

#include "drawing/document.h"
#include "imaging/raster_file.h"
#include "standin/arx/arx.h"
#include "standin/atil/atil.h"
#include "standin/host.h"
#include "tests/support/files.h"
#include "tests/support/pictures.h"

// A desk without windows: it notes what it is asked and answers from its fields.
class NotingDesk : public standin::DeskServices
{
public:
    CMDIFrameWnd* frame() override { return nullptr; }
    CView* drawingView() override { return nullptr; }
    void postCommandText(const std::wstring& text) override { posted.push_back(text); }
    void alert(const std::wstring& text) override { alerts.push_back(text); }
    void print(const std::wstring& line) override { said.push_back(line); }
    standin::ViewState viewState() override { return view; }
    void redraw() override { ++redraws; }
    std::optional<std::vector<standin::Handle>> selectEntities() override { return selection; }
    std::vector<standin::Handle> currentSelection() override
    {
        return selection.value_or(std::vector<standin::Handle>());
    }
    bool runDeskCommand(const std::vector<standin::CommandArgument>& arguments) override
    {
        commands.push_back(arguments);
        return std::get_if<std::wstring>(&arguments[0]) && std::get<std::wstring>(arguments[0]) == L"_zoom";
    }

    std::vector<std::wstring> posted;
    std::vector<std::wstring> alerts;
    std::vector<std::wstring> said;
    standin::ViewState view;
    int redraws = 0;
    std::optional<std::vector<standin::Handle>> selection;
    std::vector<std::vector<standin::CommandArgument>> commands;
};

class DrawingTest : public ::testing::Test
{
protected:
    DrawingTest();
    ~DrawingTest() override;

    std::filesystem::path writeRaster(const std::filesystem::path& name, const imaging::Bitmap& bitmap,
                                      double dotsPerInch = 254);
    // An image entity over a definition of that stored path.
    standin::Handle addImage(const std::string& path, drawing::Vector3 origin = {}, drawing::Vector3 u = {1, 0, 0},
                             drawing::Vector3 v = {0, 1, 0});
    standin::Handle addLine();
    AcDbObjectId idOf(standin::Handle handle);
    // Opens without ceremony; the test fails if that does not work.
    template <class Type> Type* open(AcDbObjectId id, AcDb::OpenMode mode)
    {
        Type* object = nullptr;
        EXPECT_EQ(acdbOpenObject(object, id, mode), Acad::eOk);
        return object;
    }
    AcDbRasterImageDef* openDefinition(standin::Handle image, AcDb::OpenMode mode = AcDb::kForWrite);

    TemporaryFolder folder;
    NotingDesk desk;
};

// The document's lock for the length of a scope.
class DocumentLock
{
public:
    DocumentLock() { EXPECT_EQ(acDocManagerPtr()->lockDocument(acDocManagerPtr()->curDocument()), Acad::eOk); }
    ~DocumentLock() { EXPECT_EQ(acDocManagerPtr()->unlockDocument(acDocManagerPtr()->curDocument()), Acad::eOk); }
    DocumentLock(const DocumentLock&) = delete;
    DocumentLock& operator=(const DocumentLock&) = delete;
};

inline void expectPoint(const AcGePoint3d& actual, double x, double y, double z = 0)
{
    EXPECT_NEAR(actual.x, x, 1e-9);
    EXPECT_NEAR(actual.y, y, 1e-9);
    EXPECT_NEAR(actual.z, z, 1e-9);
}
