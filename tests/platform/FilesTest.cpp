#include "platform/Files.h"

#include "platform/FolderLock.h"
#include "tests/support/Test.h"

#include <atomic>
#include <filesystem>
#include <thread>

using namespace platform;

namespace {

class Files : public testing::Test
{
protected:
    Files()
    {
        makeFile(at(u"new"_s), "new");
        makeFile(at(u"old"_s), "old");
        QDir(root.path()).mkdir(u"folder"_s);
    }

    QString at(const QString &name) const { return root.path() + u'/' + name; }

    QTemporaryDir root;
};

} // namespace

TEST_F(Files, OnlyRegularFilesExist)
{
    EXPECT_TRUE(fileExists(at(u"old"_s)));
    for (const QString &path : {at(u"none"_s), at(u"folder"_s), at(u""_s), at(u"old/x"_s), u""_s})
        EXPECT_FALSE(fileExists(path)) << path.toStdString();
}

TEST_F(Files, RefusedOperationsNameTheirReasonAndChangeNothing)
{
    const QString oldFile = at(u"old"_s);
    const QString newFile = at(u"new"_s);
    const std::tuple<const char *, std::function<void()>, ErrorNumber> cases[] = {
        {"delete missing", [&] { deleteFile(at(u"none"_s)); }, FileNotFound},
        {"delete in missing folder", [&] { deleteFile(at(u"none/x"_s)); }, PathNotFound},
        {"delete folder", [&] { deleteFile(at(u"folder"_s)); }, FileNotFound},
        {"delete nameless", [&] { deleteFile(at(u""_s)); }, FileNotFound},
        {"move onto a file", [&] { moveFile(newFile, oldFile); }, FileAlreadyExists},
        {"move onto a folder", [&] { moveFile(newFile, at(u"folder"_s)); }, FileAlreadyExists},
        {"move to no name", [&] { moveFile(newFile, at(u"folder/"_s)); }, PathFileAccess},
        {"move to missing folder", [&] { moveFile(newFile, at(u"none/x"_s)); }, PathNotFound},
        {"replace without source", [&] { replaceFile(at(u"none"_s), oldFile); }, FileNotFound},
        {"replace by a folder", [&] { replaceFile(at(u"folder"_s), oldFile); }, FileNotFound},
        {"replace a folder", [&] { replaceFile(newFile, at(u"folder"_s)); }, PathFileAccess},
        {"copy onto a folder", [&] { copyFile(newFile, at(u"folder"_s)); }, PathFileAccess},
        {"copy without source", [&] { copyFile(at(u"none"_s), oldFile); }, FileNotFound},
        {"copy to missing folder", [&] { copyFile(newFile, at(u"none/x"_s)); }, PathNotFound},
        {"append in missing folder", [&] { appendToFile(at(u"none/x"_s), "x"); }, PathNotFound},
        {"append to folder", [&] { appendToFile(at(u"folder"_s), "x"); }, PathFileAccess},
        {"go to a missing folder", [&] { changeDirectory(at(u"none"_s)); }, PathNotFound},
        {"go to a relative folder", [] { changeDirectory(u"."_s); }, PathNotFound},
    };
    for (const auto &[what, action, error] : cases)
        EXPECT_EQ(errorOf(action), error) << what;
    EXPECT_EQ(fileBytes(oldFile) + fileBytes(newFile), "oldnew");
    EXPECT_EQ(filesIn(root.path()), (QStringList{u"folder"_s, u"new"_s, u"old"_s}));
}

TEST_F(Files, AppendsCopiesMovesReplacesAndDeletes)
{
    appendToFile(at(u"old"_s), "er");
    EXPECT_EQ(fileBytes(at(u"old"_s)), "older");
    copyFile(at(u"new"_s), at(u"old"_s));
    copyFile(at(u"new"_s), at(u"folder/../new"_s)); // onto itself
    EXPECT_EQ(fileBytes(at(u"old"_s)) + fileBytes(at(u"new"_s)), "newnew");
    EXPECT_EQ(filesIn(root.path()), (QStringList{u"folder"_s, u"new"_s, u"old"_s}));

    makeFile(at(u"old"_s), "old");
    moveFile(at(u"new"_s), at(u"folder/moved"_s));
    replaceFile(at(u"folder/moved"_s), at(u"old"_s));
    EXPECT_EQ(fileBytes(at(u"old"_s)), "new");
    EXPECT_FALSE(fileExists(at(u"folder/moved"_s)));
    deleteFile(at(u"old"_s));
    EXPECT_FALSE(fileExists(at(u"old"_s)));
}

TEST_F(Files, AreOneWhereTheFileSystemSaysSo)
{
    const bool mindsCase = !QFile::exists(at(u"NEW"_s));
    std::filesystem::create_hard_link(at(u"new"_s).toStdString(), at(u"linked"_s).toStdString());
    const std::tuple<QString, QString, bool> cases[] = {
        {u"new"_s, u"new"_s, true},           {u"new"_s, u"old"_s, false},
        {u"new"_s, u"folder/../new"_s, true}, {u"new"_s, u"linked"_s, true},
        {u"new"_s, u"NEW"_s, !mindsCase},     {u"new"_s, u"none"_s, false},
        {u"none"_s, u"NONE"_s, !mindsCase},   {u"none"_s, u"folder/../none"_s, true},
        {u"none"_s, u"other"_s, false},       {u"none"_s, u"folder/none"_s, false},
    };
    for (const auto &[a, b, isSame] : cases) {
        EXPECT_EQ(isSameFile(at(a), at(b)), isSame) << (a + u' ' + b).toStdString();
        EXPECT_EQ(isSameFile(at(b), at(a)), isSame) << (b + u' ' + a).toStdString();
    }
    EXPECT_TRUE(filesIn(root.path()).filter(u".part"_s).isEmpty());
}

TEST_F(Files, AFolderIsLockedForOneAndWhoAsksKeepsNobodyOut)
{
    EXPECT_FALSE(isFolderLocked(at(u"none"_s)));
    EXPECT_FALSE(FolderLock(at(u"none"_s)).isHeldElsewhere());
    std::atomic<bool> isOver = false;
    std::thread asking([&] {
        while (!isOver)
            isFolderLocked(root.path());
    });
    for (int i = 0; i < 100; ++i) {
        const FolderLock lock(root.path());
        EXPECT_FALSE(lock.isHeldElsewhere()) << i;
        EXPECT_TRUE(FolderLock(root.path()).isHeldElsewhere()) << i;
        EXPECT_TRUE(isFolderLocked(root.path())) << i;
        EXPECT_FALSE(FolderLock(at(u"folder"_s)).isHeldElsewhere()) << i;
    }
    isOver = true;
    asking.join();
    EXPECT_FALSE(isFolderLocked(root.path()));
}
