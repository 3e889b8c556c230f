// examples/forms.cpp: a form saved by Qt Designer, loaded at run time with the package's
// widgets in it. Non-visual components are not on forms: make them in code (see the guides).
#include <QApplication>
#include <QFile>
#include <QUiLoader>
#include <QWidget>
#include <cstdio>
#include <memory>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    if (argc < 3) {
        std::fprintf(stderr, "forms UI-DATEI PLUGIN-VERZEICHNIS\n");
        return 2;
    }
    QUiLoader loader;
    // The directory holding libqxtools_designer.so (lib/qt6/plugins/designer when installed).
    loader.addPluginPath(QString::fromLocal8Bit(argv[2]));
    QFile file(QString::fromLocal8Bit(argv[1]));
    if (!file.open(QIODevice::ReadOnly))
        return 1;
    const std::unique_ptr<QWidget> form(loader.load(&file));
    if (!form) {
        std::fprintf(stderr, "%s\n", qPrintable(loader.errorString()));
        return 1;
    }
    // The widgets are the package's own classes, with the values set in Designer.
    for (const QWidget* w : form->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        std::printf("%s %s\n", w->metaObject()->className(), qPrintable(w->objectName()));
    return 0;
}
