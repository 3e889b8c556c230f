// Loads a Designer plugin from its file, as Designer does, and lists its widget groups.
#include <QApplication>
#include <QPluginLoader>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

#include <cstdio>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    if (argc != 2)
        return 2;
    QPluginLoader loader(QString::fromLocal8Bit(argv[1]));
    auto* collection = qobject_cast<QDesignerCustomWidgetCollectionInterface*>(loader.instance());
    if (!collection) {
        std::fprintf(stderr, "%s\n", qPrintable(loader.errorString()));
        return 1;
    }
    for (QDesignerCustomWidgetInterface* w : collection->customWidgets())
        std::printf("%s %s\n", qPrintable(w->group()), qPrintable(w->name()));
    return 0;
}
