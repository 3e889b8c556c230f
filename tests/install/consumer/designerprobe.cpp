// A Designer plugin that looks at Designer from inside: once the widget box is filled it writes
// every entry of the package's pages (page, class, default size) to QX_PROBE_REPORT, filters
// the box to the package's classes, takes a screenshot of it from the X screen into
// QX_PROBE_SHOT and quits Designer. It offers no widgets of its own.
#include <QApplication>
#include <QDomDocument>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QScreen>
#include <QTextStream>
#include <QTimer>
#include <QtDesigner/QDesignerWidgetBoxInterface>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

namespace {

QDesignerWidgetBoxInterface* filledWidgetBox() {
    for (QWidget* w : QApplication::allWidgets())
        if (auto* box = qobject_cast<QDesignerWidgetBoxInterface*>(w))
            if (box->isVisible() && box->categoryCount() > 0)
                return box;
    return nullptr;
}

// "width x height" of the geometry in an entry's default form XML.
QString defaultSize(const QString& xml) {
    QDomDocument dom;
    dom.setContent(xml);
    const QDomElement rect = dom.documentElement()
                                 .firstChildElement(QStringLiteral("widget"))
                                 .firstChildElement(QStringLiteral("property"))
                                 .firstChildElement(QStringLiteral("rect"));
    return rect.firstChildElement(QStringLiteral("width")).text() + QLatin1Char('x') +
           rect.firstChildElement(QStringLiteral("height")).text();
}

void report(QDesignerWidgetBoxInterface* box) {
    QFile file(qEnvironmentVariable("QX_PROBE_REPORT"));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return;
    QTextStream out(&file);
    for (int c = 0; c < box->categoryCount(); ++c) {
        const QString page = box->category(c).name();
        if (!page.startsWith(QLatin1String("QX")))
            continue;
        for (int i = 0; i < box->widgetCount(c); ++i) {
            const QDesignerWidgetBoxInterface::Widget w = box->widget(c, i);
            out << page << '|' << w.name() << '|' << defaultSize(w.domXml()) << '\n';
        }
    }
}

void screenshot(QDesignerWidgetBoxInterface* box) {
    if (auto* filter = box->findChild<QLineEdit*>())
        filter->setText(QStringLiteral("TQX"));
    QTimer::singleShot(500, box, [box]() {
        const QRect area(box->mapToGlobal(QPoint(0, 0)), box->size());
        box->screen()
            ->grabWindow(0, area.x(), area.y(), area.width(), area.height())
            .save(qEnvironmentVariable("QX_PROBE_SHOT"));
        QCoreApplication::exit(0);
    });
}

} // namespace

class QXDesignerProbe : public QObject, public QDesignerCustomWidgetCollectionInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)
public:
    QXDesignerProbe() {
        m_clock.start();
        auto* poll = new QTimer(this);
        connect(poll, &QTimer::timeout, this, [this, poll]() {
            if (QDesignerWidgetBoxInterface* box = filledWidgetBox()) {
                poll->stop();
                report(box);
                screenshot(box);
            } else if (m_clock.elapsed() > 60000) {
                QCoreApplication::exit(3);
            }
        });
        poll->start(250);
    }
    QList<QDesignerCustomWidgetInterface*> customWidgets() const override { return {}; }

private:
    QElapsedTimer m_clock;
};

#include "designerprobe.moc"
