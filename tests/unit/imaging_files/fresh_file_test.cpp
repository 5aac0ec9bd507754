#include <csignal>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "imaging/fresh_file.h"
#include "tests/support/test_files.h"

// What stands beside a target while it is written, and what a writer that was killed leaves there.

using namespace imaging;
using testing::ElementsAre;
using testing::SizeIs;

namespace {

class FreshFiles : public FilesTest
{
protected:
    // Runs the work in a process of its own, which the system kills when a file grows beyond the limit.
    static int killedByLimit(rlim_t limit, const std::function<void()>& work)
    {
        const pid_t child = fork();
        if (child == 0) {
            std::signal(SIGXFSZ, SIG_DFL);
            const rlimit limited{limit, limit};
            setrlimit(RLIMIT_FSIZE, &limited);
            work();
            _exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }
};

} // namespace

TEST_F(FreshFiles, AKilledWriterLeavesTheTargetWholeAndItsFileGoesAtTheNextWriting)
{
    const Bitmap picture = sampleBitmap(300, 200);
    writeRaster(file("plan"), picture, {}, Format::TiffGroup4);
    const Bytes whole = contentOf<Bytes>(file("plan"));
    const rlim_t half = whole.size() / 2;
    EXPECT_EQ(killedByLimit(half, [&] { writeRaster(file("plan"), picture, {}, Format::TiffGroup4); }), SIGXFSZ);
    EXPECT_EQ(contentOf<Bytes>(file("plan")), whole);
    ASSERT_THAT(m_folder.names(), SizeIs(2)) << "the killed writer was to leave a part of its file";
    EXPECT_EQ(std::filesystem::file_size(m_folder / m_folder.names()[1]), half);

    writeRaster(file("other"), picture, {}, Format::Png);
    EXPECT_THAT(m_folder.names(), ElementsAre("other", "plan"));
}

TEST_F(FreshFiles, TheFileOfAWriterThatStillWritesIsLeftAlone)
{
    FreshFile own(file("own"));
    own.append("whole", 5);
    int ready[2];
    int goOn[2];
    ASSERT_EQ(pipe(ready), 0);
    ASSERT_EQ(pipe(goOn), 0);
    const pid_t child = fork();
    if (child == 0) {
        FreshFile theirs(file("theirs"));
        theirs.append("complete", 8);
        char byte = 0;
        if (write(ready[1], &byte, 1) == 1 && read(goOn[0], &byte, 1) == 1)
            theirs.commit();
        _exit(0);
    }
    char byte = 0;
    ASSERT_EQ(read(ready[0], &byte, 1), 1);
    writeRaster(file("third"), sampleBitmap(9, 9), {}, Format::Bmp);
    EXPECT_THAT(m_folder.names(), SizeIs(3));
    EXPECT_EQ(write(goOn[1], &byte, 1), 1);
    waitpid(child, nullptr, 0);
    own.commit();
    EXPECT_EQ(contentOf(file("theirs")), "complete");
    EXPECT_EQ(contentOf(file("own")), "whole");
    EXPECT_THAT(m_folder.names(), ElementsAre("own", "theirs", "third"));
    for (const int end : {ready[0], ready[1], goOn[0], goOn[1]})
        close(end);
}

TEST_F(FreshFiles, WhatIsNotOursStays)
{
    std::filesystem::create_directory(file("~halvoran-0123456789abcdef.new"));
    const std::vector<std::string> names = {"~halvoran-.new",
                                            "~halvoran-0123456789abcde.new",
                                            "~halvoran-0123456789abcdef.tif",
                                            "~halvoran-0123456789abcdeg.new",
                                            "~halvoran-0123456789abcdef0.new",
                                            "plan.tif123456.new"};
    for (const std::string& name : names)
        saveBytes(file(name), {'o', 'l', 'd'});
    writeRaster(file("plan"), sampleBitmap(9, 9), {}, Format::Bmp);
    EXPECT_THAT(m_folder.names(), SizeIs(names.size() + 2));
}

TEST_F(FreshFiles, ATargetsNameMayBeAsLongAsNamesCanBe)
{
    const std::string name = std::string(251, 'n') + ".tif";
    for (const int width : {20, 30}) {
        writeRaster(file(name), sampleBitmap(width, 20), {}, Format::TiffGroup4);
        EXPECT_EQ(readRaster(file(name)).bitmap.width(), width);
    }
    EXPECT_THAT(m_folder.names(), ElementsAre(name));
}
