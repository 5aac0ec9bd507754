#include <gtest/gtest.h>
#include <string>

#include "module/shell/CPathSplit.h"

namespace {

TEST(PathSplit, PartsOfPaths)
{
    struct Case
    {
        const wchar_t* path;
        std::wstring drive, directory, name, extension, nameExt, folder;
    };
    const Case cases[] = {
        {L"C:\\plans\\old\\site.tif", L"C:", L"\\plans\\old\\", L"site", L".tif", L"site.tif", L"C:\\plans\\old\\"},
        {L"C:\\plans\\", L"C:", L"\\plans\\", L"", L"", L"", L"C:\\plans\\"},
        {L"C:\\site.v2.tif", L"C:", L"\\", L"site.v2", L".tif", L"site.v2.tif", L"C:\\"},
        {L"site", L"", L"", L"site", L"", L"site", L""},
        {L"C:site.tif", L"C:", L"", L"site", L".tif", L"site.tif", L"C:"},
        {L"", L"", L"", L"", L"", L"", L""},
        {L"\\\\server\\share\\plans\\site.tif", L"\\\\server\\share\\", L"plans\\", L"site", L".tif", L"site.tif",
         L"\\\\server\\share\\plans\\"},
        {L"\\\\server\\share\\site.tif", L"\\\\server\\share\\", L"", L"site", L".tif", L"site.tif",
         L"\\\\server\\share\\"},
        {L"\\\\server\\site.tif", L"", L"\\\\server\\", L"site", L".tif", L"site.tif", L"\\\\server\\"},
        {L"plans/site.tif", L"", L"plans/", L"site", L".tif", L"site.tif", L"plans/"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(row.path)));
        const CPathSplit split(row.path);
        EXPECT_EQ(split.m_drive, row.drive);
        EXPECT_EQ(split.m_directory, row.directory);
        EXPECT_EQ(split.m_name, row.name);
        EXPECT_EQ(split.m_extension, row.extension);
        EXPECT_EQ(split.NameExt(), row.nameExt);
        EXPECT_EQ(split.Folder(), row.folder);
        EXPECT_EQ(split.m_path, std::wstring(row.path));
    }
}

TEST(PathSplit, APathThatIsTooLongIsCutOff)
{
    const std::wstring path = L"C:\\" + std::wstring(400, L'n');
    const CPathSplit split(path.c_str());
    EXPECT_EQ(split.m_path, path.substr(0, 259));
    EXPECT_EQ(split.m_name, std::wstring(256, L'n'));
}

} // namespace
