#include "PluginSupport.h"
#include "QXDesign.h"
#include "QXTools.h"

#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QFont>
#include <QImage>
#include <QPainter>
#include <QSet>
#include <QtDesigner/QDesignerPropertySheetExtension>
#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QExtensionManager>

namespace {

// Every widget class the package registered, on whatever page.
QList<TComponentClass> registeredWidgetClasses() {
    QList<TComponentClass> widgets;
    QSet<QString> seen;
    for (const QString& page : TPaletteRegistry::Instance().Pages())
        for (const TComponentClass& c : TPaletteRegistry::Instance().ClassesOnPage(page))
            if (c.IsWidget && !seen.contains(c.Name)) {
                seen << c.Name;
                widgets << c;
            }
    return widgets;
}

// How many different colours a picture uses (a blank or one-colour picture is no drawing).
int colourCount(const QImage& image) {
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            colours << image.pixel(x, y);
    return int(colours.size());
}

// Every palette picture the library holds, registered class or not, at 22 pixels (also
// magnified for judging its pixels) and at 44, with the class name and its tool tip; kept beside
// the test program for looking at.
void writeContactSheet(const QMap<QString, QDesignerCustomWidgetInterface*>& entries) {
    QStringList drawn = QDir(QStringLiteral(":/qxtools/palette/22")).entryList();
    const int row = 70, columns = 2, width = 430;
    QImage sheet(width * columns, row * int((drawn.size() + 1) / columns) + 8,
                 QImage::Format_RGB32);
    sheet.fill(QColor(0xF6, 0xF6, 0xF6));
    QPainter p(&sheet);
    QFont font;
    font.setPixelSize(13);
    p.setFont(font);
    for (int i = 0; i < drawn.size(); ++i) {
        const int left = (i % columns) * width, top = 4 + (i / columns) * row;
        const QImage small(QStringLiteral(":/qxtools/palette/22/") + drawn[i]);
        const QImage large(QStringLiteral(":/qxtools/palette/44/") + drawn[i]);
        p.drawImage(left + 8, top + 24, small);
        p.drawImage(QRect(left + 40, top + 2, 66, 66), small);
        p.drawImage(left + 116, top + 13, large);
        QString name = drawn[i], tip = QStringLiteral("(noch nicht registriert)");
        for (auto it = entries.cbegin(); it != entries.cend(); ++it)
            if (it.key().toUpper() == drawn[i]) {
                name = it.key();
                tip = it.value()->toolTip();
            }
        p.setPen(Qt::black);
        p.drawText(left + 172, top + 30, name);
        p.setPen(Qt::darkGray);
        p.drawText(left + 172, top + 48, tip);
    }
    p.end();
    sheet.save(QStringLiteral(QX_ARTEFACT_DIR "/palette-icons.png"));
}

} // namespace

// Designer finds every registered widget class in the collection, each on the page the
// registry gives it, in palette order, with German texts and its module's header.
TEST(DesignerPlugin, OffersEveryRegisteredWidgetClass) {
    QDesignerCustomWidgetCollectionInterface* collection = qxtest::loadPlugin();
    ASSERT_NE(collection, nullptr);
    const QList<TComponentClass> widgets = registeredWidgetClasses();
    ASSERT_FALSE(widgets.isEmpty());
    QStringList offered, expected;
    for (const TComponentClass& c : widgets)
        expected << c.Name;
    for (QDesignerCustomWidgetInterface* w : collection->customWidgets())
        offered << w->name();
    EXPECT_EQ(offered, expected);
    // The package's non-visual components are registered too, but Designer shows widgets only.
    EXPECT_GT(TPaletteRegistry::Instance().ClassesOnPage(QStringLiteral("QX Tools")).size(),
              widgets.size());

    for (QDesignerCustomWidgetInterface* w : collection->customWidgets()) {
        SCOPED_TRACE(w->name().toStdString());
        EXPECT_EQ(w->group(), TPaletteRegistry::Instance().PageOf(w->name()));
        EXPECT_FALSE(w->toolTip().isEmpty());
        EXPECT_GT(w->whatsThis().size(), w->toolTip().size());
        EXPECT_FALSE(w->isContainer());
        // The header is one the library installs: a public header of its source tree.
        const QString header = w->includeFile();
        ASSERT_TRUE(header.startsWith(QStringLiteral("qxtools/"))) << header.toStdString();
        const QString file = header.mid(8);
        EXPECT_FALSE(file.endsWith(QStringLiteral("_p.h")));
        bool found = false;
        for (const char* family :
             {"frame", "settings", "files", "images", "sound", "controls", "app"})
            found =
                found ||
                QFile::exists(
                    QStringLiteral(QX_SOURCE_DIR "/src/%1/%2").arg(QLatin1String(family), file));
        EXPECT_TRUE(found) << file.toStdString();
    }
}

// Every widget class has its own picture at 22 and 44 pixels, kept under its upper-case
// name, and its palette entry shows exactly those. A class registered without a picture fails
// here.
TEST(DesignerPlugin, EveryWidgetClassHasItsOwnPaletteIcon) {
    QDesignerCustomWidgetCollectionInterface* collection = qxtest::loadPlugin();
    ASSERT_NE(collection, nullptr);
    QMap<QString, QDesignerCustomWidgetInterface*> entries;
    for (QDesignerCustomWidgetInterface* w : collection->customWidgets())
        entries.insert(w->name(), w);
    QList<QImage> small;
    for (const TComponentClass& c : registeredWidgetClasses()) {
        SCOPED_TRACE(c.Name.toStdString());
        for (const int size : {22, 44}) {
            const QString name = QXPaletteBitmap(c.Name, size);
            EXPECT_TRUE(name.endsWith(QLatin1Char('/') + c.Name.toUpper()));
            const QImage picture(name);
            ASSERT_FALSE(picture.isNull()) << name.toStdString() << " is missing";
            EXPECT_EQ(picture.size(), QSize(size, size));
            EXPECT_GE(colourCount(picture), 6);
            if (size == 22)
                small << picture.convertToFormat(QImage::Format_ARGB32);
        }
        QDesignerCustomWidgetInterface* entry = entries.value(c.Name);
        ASSERT_NE(entry, nullptr);
        const QIcon icon = entry->icon();
        EXPECT_EQ(icon.availableSizes(), (QList<QSize>{{22, 22}, {44, 44}}));
        EXPECT_EQ(icon.pixmap(22, 22).toImage().convertToFormat(QImage::Format_ARGB32),
                  small.last());
    }
    // No two classes share a picture.
    for (int i = 0; i < small.size(); ++i)
        for (int j = i + 1; j < small.size(); ++j)
            EXPECT_NE(small[i], small[j]) << "pictures " << i << " and " << j << " are equal";
    writeContactSheet(entries);
    // Classes that are not registered have no picture to show.
    EXPECT_TRUE(QXPaletteIcon(QStringLiteral("TQXNoSuchClass")).isNull());
}

// A widget dropped from the palette takes the size the control gives itself, and a name of the
// framework's kind.
TEST(DesignerPlugin, NewWidgetsTakeTheControlsOwnSize) {
    QDesignerCustomWidgetCollectionInterface* collection = qxtest::loadPlugin();
    ASSERT_NE(collection, nullptr);
    QWidget form;
    for (QDesignerCustomWidgetInterface* entry : collection->customWidgets()) {
        SCOPED_TRACE(entry->name().toStdString());
        QDomDocument dom;
        ASSERT_TRUE(dom.setContent(entry->domXml()));
        const QDomElement widget =
            dom.documentElement().firstChildElement(QStringLiteral("widget"));
        EXPECT_EQ(widget.attribute(QStringLiteral("class")), entry->name());
        EXPECT_EQ(widget.attribute(QStringLiteral("name")), entry->name().mid(1) + "1");
        const QDomElement rect = widget.firstChildElement(QStringLiteral("property"))
                                     .firstChildElement(QStringLiteral("rect"));
        const QSize geometry(rect.firstChildElement(QStringLiteral("width")).text().toInt(),
                             rect.firstChildElement(QStringLiteral("height")).text().toInt());
        QWidget* control = entry->createWidget(&form);
        ASSERT_NE(control, nullptr);
        EXPECT_TRUE(control->sizeHint().isValid());
        EXPECT_EQ(geometry, control->sizeHint());
    }
}

// Designer's own property sheet does not offer the about row, whose edits would be dropped; the
// component's task menu keeps "About QXTools..." as the way to the about dialog.
TEST(DesignerPlugin, AboutRowIsNotEditableAndTheTaskMenuKeepsTheDialog) {
    QDesignerCustomWidgetCollectionInterface* collection = qxtest::loadPlugin();
    ASSERT_NE(collection, nullptr);
    qxtest::DesignerForm designer;
    int withAbout = 0;
    for (QDesignerCustomWidgetInterface* entry : collection->customWidgets()) {
        SCOPED_TRACE(entry->name().toStdString());
        QWidget* widget = designer.drop(entry);
        ASSERT_NE(widget, nullptr);
        QExtensionManager* extensions = designer.core()->extensionManager();
        auto* sheet = qt_extension<QDesignerPropertySheetExtension*>(extensions, widget);
        ASSERT_NE(sheet, nullptr);
        auto* menu = qt_extension<QDesignerTaskMenuExtension*>(extensions, widget);
        ASSERT_NE(menu, nullptr);
        ASSERT_NE(menu->preferredEditAction(), nullptr);
        const int about = sheet->indexOf(QStringLiteral("About_QXTools"));
        if (about < 0) {
            EXPECT_NE(menu->preferredEditAction()->text(), QStringLiteral("About QXTools..."));
            continue;
        }
        ++withAbout;
        EXPECT_FALSE(sheet->isVisible(about));
        EXPECT_TRUE(sheet->isVisible(sheet->indexOf(QStringLiteral("objectName"))));
        EXPECT_EQ(menu->preferredEditAction()->text(), QStringLiteral("About QXTools..."));
    }
    EXPECT_GT(withAbout, 0);
}
