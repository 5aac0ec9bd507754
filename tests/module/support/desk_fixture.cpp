#include "tests/module/support/desk_fixture.h"

#include "module/raster/CCurentRaster.h"
#include "module/raster/CSaveRaster.h"
#include "module/start/CModuleApp.h"
#include "workerlink/SendToWorker.h"

namespace test {

namespace {

CWinApp testProgram(L"Halvoran test");

// Away from the list of a desk in use.
constexpr const wchar_t* applicationListKey = L"Software\\Halvoran\\Tests\\Applications";

class PlainView : public CView
{
public:
    PlainView() = default;

protected:
    void OnDraw(CDC*) override {}
};

CView* createView()
{
    static const bool ready = AfxWinInit(GetModuleHandleW(nullptr), nullptr, GetCommandLineW(), SW_SHOWNORMAL);
    EXPECT_TRUE(ready);
    auto* view = new PlainView;
    const auto whiteBrush = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    const LPCWSTR windowClass = AfxRegisterWndClass(CS_DBLCLKS, LoadCursorW(nullptr, IDC_ARROW), whiteBrush);
    const CRect place(40, 30, 440, 330);
    // Shown without being activated, or Wine would wait for a window manager at each showing and hiding.
    view->CreateEx(WS_EX_TOPMOST, windowClass, L"view", WS_POPUP, place, nullptr, 0);
    view->ShowWindow(SW_SHOWNA);
    view->UpdateWindow();
    return view;
}

// The worker lies in the program folder, with the libraries that the tests run on.
} // namespace

CString workerProgram()
{
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(GetModuleHandleW(L"hvstandin.dll"), path, MAX_PATH);
    return (std::filesystem::path(path).parent_path() / "HVV6.exe").c_str();
}

bool pumpUntil(const std::function<bool()>& reached)
{
    const ULONGLONG end = GetTickCount64() + 10000;
    while (!reached()) {
        if (GetTickCount64() > end)
            return false;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
        pumpAll();
    }
    return true;
}

void pumpAll()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

void waitForNextTimeStamp()
{
    const DWORD now = GetTickCount();
    while (GetTickCount() == now)
        Sleep(1);
}

void DeskFixture::SetUp()
{
    m_folder = freshFolder(::testing::UnitTest::GetInstance()->current_test_info()->name());
    m_temporaryFilesBefore = temporaryFiles();
    // The real pointer stays out of the view, where it would mix moves of its own with those that the tests post.
    SetCursorPos(GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1);
    m_view = createView();
    standin::setDeskServices(this);
    standin::setApplicationListKey(applicationListKey);
    RegDeleteTreeW(HKEY_CURRENT_USER, applicationListKey);
    standin::clearBreaches();
    g_pArxApp = new CModuleApp;
    SetWorkerPath(workerProgram());
}

void DeskFixture::forgetEdits()
{
    if (!g_pArxApp)
        return;
    DropCurrentRaster();
    CSaveRaster::ForgetAll();
}

void DeskFixture::TearDown()
{
    forgetEdits();
    delete g_pArxApp;
    g_pArxApp = nullptr;
    EXPECT_EQ(standin::openObjects(), 0) << "objects of the drawing were left open";
    EXPECT_EQ(standin::documentLocks(), m_locksLeft) << "the drawing was left locked";
    EXPECT_EQ(standin::selectionSets(), 0) << "selection sets were not freed";
    for (int i = 0; i < m_locksLeft; ++i)
        acDocManagerPtr()->unlockDocument(acDocManagerPtr()->curDocument());
    EXPECT_EQ(temporaryFiles(), m_temporaryFilesBefore) << "temporary files were left behind";
    standin::closeDrawing();
    for (const std::string& breach : standin::breaches())
        ADD_FAILURE() << "the host's rules were broken: " << breach;
    m_view->DestroyWindow();
    pumpAll();
    standin::setDeskServices(nullptr);
    // A file dialog may have gone to the folder.
    std::filesystem::current_path(std::filesystem::temp_directory_path());
    // A worker that is about to end may still be in it.
    EXPECT_TRUE(pumpUntil([this] {
        std::error_code error;
        std::filesystem::remove_all(m_folder, error);
        return !error;
    }));
}

void DeskFixture::renewView()
{
    m_view->DestroyWindow(); // and its object with it
    m_view = createView();
}

void DeskFixture::openDrawing(const std::vector<Picture>& pictures, std::vector<PlacedImage> places, double dotsPerInch)
{
    forgetEdits();
    places.resize(pictures.size());
    for (size_t i = 0; i < pictures.size(); ++i) {
        PlacedImage& place = places[i];
        place.width = static_cast<int>(pictures[i].at(0).size());
        place.height = static_cast<int>(pictures[i].size());
        if (place.file.empty()) {
            place.file = file("image" + std::to_string(i) + ".tif");
            writeTiff(place.file, pictures[i], dotsPerInch);
        }
    }
    writeDrawing(file("drawing.dxf"), places);
    const standin::Failure failure = standin::openDrawing(file("drawing.dxf"));
    ASSERT_FALSE(failure) << std::filesystem::path(*failure).string();
}

void DeskFixture::entityName(int index, ads_name& name) const
{
    ads_name set = {};
    ASSERT_EQ(acedSSGet(L"X", nullptr, nullptr, nullptr, set), RTNORM);
    Adesk::Int32 count = 0;
    acedSSLength(set, &count);
    bool found = false;
    for (Adesk::Int32 i = 0; i < count && !found; ++i) {
        acedSSName(set, i, name);
        AcDbObjectId id;
        acdbGetObjectId(id, name);
        found = id.handle() == imageHandle(index);
    }
    acedSSFree(set);
    ASSERT_TRUE(found) << "the drawing has no image " << index;
}

CAcraster& DeskFixture::makeCurrent(int index)
{
    ads_name name = {};
    entityName(index, name);
    DropCurrentRaster();
    g_pArxApp->m_pRaster = new CAcraster(name);
    g_pArxApp->m_pRaster->Unlock();
    return *g_pArxApp->m_pRaster;
}

CAcraster& DeskFixture::openCurrent(const Picture& picture, const PlacedImage& place, double dotsPerInch)
{
    openDrawing({picture}, {place}, dotsPerInch);
    m_posted.clear();
    return makeCurrent(0);
}

} // namespace test
