#include "tests/controls/DL/Downloads.h"
#include "tests/support/posix/FileSizeLimit.h"

#include <sys/stat.h>

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
    constexpr qint32 room = 1'000'000;
    const QByteArray audio(3 * room, 'a');
    station.answerOthers({.body = audio, .cutAfter = 2 * room}); // then it stalls
    const FileSizeLimit limit(room);
    EXPECT_EQ(download(u"/raw.mp2"_s), Counts(room, 3 * room));
    EXPECT_FALSE(QFile::exists(destination()));
}
