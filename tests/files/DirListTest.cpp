#include "QXDirList.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

namespace {

TStringList files(std::initializer_list<const char*> names) {
    TStringList l;
    for (const char* n : names)
        l.Add(QLatin1String(n));
    return l;
}

TDirInfo* info(TQXDirList& list, int index) {
    return static_cast<TDirInfo*>(list.DirList()->Objects(index));
}

} // namespace

TEST(DirList, GroupsFilesAndLeavesTheLoneLastFileOut) {
    TQXDirList list;
    TStringList input = files({"/B/z.txt", "/A/y.txt", "/A/x.txt"});
    list.SetFileList(&input);
    list.Update();
    ASSERT_EQ(list.DirList()->Count(), 1);
    EXPECT_EQ((*list.DirList())[0], QStringLiteral("A"));
    EXPECT_EQ(info(list, 0)->Path, QStringLiteral("/A/"));
    EXPECT_EQ(list.GetFiles(0)->ToStringList(), QStringList({"x.txt", "y.txt"}));
    // FileList was sorted in place.
    EXPECT_EQ(list.FileList()->ToStringList(), QStringList({"/A/x.txt", "/A/y.txt", "/B/z.txt"}));

    // One file gives no directory at all.
    TStringList one = files({"/A/x.txt"});
    list.SetFileList(&one);
    list.Update();
    EXPECT_EQ(list.DirList()->Count(), 0);

    // A last directory of two files is listed.
    TStringList two = files({"/A/x.txt", "/B/y.txt", "/B/z.txt"});
    list.SetFileList(&two);
    list.Update();
    EXPECT_EQ(list.DirListStrings(), QStringList({"A", "B"}));
    EXPECT_EQ(list.GetFiles(0)->ToStringList(), QStringList({"x.txt"}));
    EXPECT_EQ(list.GetFiles(1)->ToStringList(), QStringList({"y.txt", "z.txt"}));
}

TEST(DirList, SameLastNamesKeepTheirOwnPaths) {
    TQXDirList list;
    list.SetFileListStrings(
        {"/srv/DATA/b.dat", "/home/A/DATA/a.dat", "/home/A/DATA/c.dat", "/srv/DATA/d.dat"});
    list.Update();
    ASSERT_EQ(list.DirListStrings(), QStringList({"DATA", "DATA"}));
    QStringList paths = {info(list, 0)->Path, info(list, 1)->Path};
    paths.sort();
    EXPECT_EQ(paths, QStringList({"/home/A/DATA/", "/srv/DATA/"}));
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(list.GetFiles(i)->Count(), 2);

    // A second update gives the same lines with fresh objects.
    list.Update();
    EXPECT_EQ(list.DirListStrings(), QStringList({"DATA", "DATA"}));
    paths = QStringList{info(list, 0)->Path, info(list, 1)->Path};
    paths.sort();
    EXPECT_EQ(paths, QStringList({"/home/A/DATA/", "/srv/DATA/"}));

    list.ClearDirList();
    EXPECT_EQ(list.DirList()->Count(), 0);
}

TEST(DirList, FailuresShowTheGermanMessage) {
    TQXDirList list;
    // A list that refuses duplicates fails on the second DATA line.
    list.DirList()->SetDuplicates(dupError);
    list.SetFileListStrings({"/a/DATA/1", "/a/DATA/2", "/b/DATA/3", "/b/DATA/4"});
    qxtest::DialogRecorder dialogs;
    list.Update();
    EXPECT_EQ(dialogs.texts(), QStringList({"Fehler beim Updaten"}));
    ASSERT_EQ(list.DirList()->Count(), 1);
    EXPECT_EQ(info(list, 0)->Path, QStringLiteral("/a/DATA/"));
}
