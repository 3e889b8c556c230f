// Loads a Designer plugin from its file, as Designer does, and lists its widgets, one a line:
// group|class|include file|icon sizes|size of a new instance
#include <QApplication>
#include <QIcon>
#include <QPluginLoader>
#include <QWidget>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

#include <cstdio>
#include <memory>

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
    for (QDesignerCustomWidgetInterface* w : collection->customWidgets()) {
        QStringList sizes;
        for (const QSize& s : w->icon().availableSizes())
            sizes << QStringLiteral("%1x%2").arg(s.width()).arg(s.height());
        const std::unique_ptr<QWidget> sample(w->createWidget(nullptr));
        const QSize hint = sample ? sample->sizeHint() : QSize();
        std::printf("%s|%s|%s|%s|%dx%d\n", qPrintable(w->group()), qPrintable(w->name()),
                    qPrintable(w->includeFile()), qPrintable(sizes.join(QLatin1Char(','))),
                    hint.width(), hint.height());
    }
    return 0;
}
