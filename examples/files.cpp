// examples/files.cpp: finds the text files below a directory, groups them by directory and
// copies those of the top directory into a backup directory, without the progress window.
#include <qxtools/QXDirList.h>
#include <qxtools/QXFind.h>
#include <qxtools/Qxcopy.h>

#include <QApplication>
#include <QDir>
#include <cstdio>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const QString root = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QDir::currentPath();

    TQXFind find;
    find.SetStartPath(root);
    find.SetFilePattern(QStringLiteral("*.txt"));
    find.SetSubdirs(true);
    TStringList found;
    find.OnFindFile = [&found](QObject*, const TSearchRec& file, const QString& dir,
                               const QString&) { found.Add(dir + file.Name); };
    find.Execute();
    std::printf("%d Dateien\n", find.FileCount());

    // One line per directory, its files in the TDirInfo on the line. As the list has always
    // been built, the last file of the sorted list is left out.
    TQXDirList dirs;
    dirs.SetFileList(&found);
    dirs.Update();
    for (int i = 0; i < dirs.DirList()->Count(); ++i)
        std::printf("%s: %d\n", qPrintable(dirs.DirList()->Strings(i)), dirs.GetFiles(i)->Count());

    // Questions and failures are German dialogs; creating the directory first avoids one.
    QDir(root).mkpath(QStringLiteral("Sicherung"));
    TQXCopy copy;
    copy.SetShowCopyDialog(false);
    copy.SetOverWrite(true);
    copy.SetSource(root + QStringLiteral("/*.txt"));
    copy.SetDest(root + QStringLiteral("/Sicherung/"));
    const bool copied = copy.Copy();
    std::printf("%d kopiert\n", copy.CopiedFiles());
    return copied ? 0 : 1;
}
