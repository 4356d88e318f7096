#include "tests/controls/DL/Downloads.h"
#include "tests/support/posix/FileSizeLimit.h"

#include <cerrno>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

static bool diskRefuses = false;

// Takes the place of the system's own in this program.
extern "C" int fsync(int file)
{
    errno = EIO;
    return diskRefuses ? -1 : static_cast<int>(syscall(SYS_fsync, file));
}

using DownloadedFiles = Downloads;

TEST_F(DownloadedFiles, HaveOrdinaryPermissions)
{
    station.answerOthers({.body = "audio"});
    const mode_t mask = umask(0027);
    EXPECT_EQ(download(u"/raw.mp2"_s), Counts(5, 5));
    umask(mask);
    struct stat status = {};
    ASSERT_EQ(stat(QFile::encodeName(destination()).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
}

TEST_F(DownloadedFiles, CountOnlyWhatAFullDiskTakes)
{
    station.answerOthers({.body = QByteArray(3'000'000, 'a'), .cutAfter = 2'000'000}); // and stalls
    const FileSizeLimit room(1'000'000);
    EXPECT_EQ(download(u"/raw.mp2"_s), Counts(1'000'000, 3'000'000));
    EXPECT_FALSE(QFile::exists(destination()));
}

TEST_F(DownloadedFiles, CountAsBrokenOffWhenTheyCannotBeClosed)
{
    station.answerOthers({.body = "audio"});
    QObject::connect(dl.get(), &controls::DL::Storing, dl.get(), [this] {
        const QString file = temporaryFolder() + u'/' + temporaryFiles().value(0);
        for (int descriptor = 3; descriptor < 1000; ++descriptor) {
            if (QFile::symLinkTarget(u"/proc/self/fd/%1"_s.arg(descriptor)) == file)
                close(descriptor);
        }
    });
    EXPECT_EQ(download(u"/raw.mp2"_s), Counts(5, 0));
    EXPECT_FALSE(QFile::exists(destination()));
}

TEST_F(DownloadedFiles, CountAsBrokenOffWhenTheDiskRefusesThem)
{
    station.answerOthers({.body = "audio"});
    diskRefuses = true;
    EXPECT_EQ(download(u"/raw.mp2"_s), Counts(5, 0));
    diskRefuses = false;
    EXPECT_FALSE(QFile::exists(destination()));
}
