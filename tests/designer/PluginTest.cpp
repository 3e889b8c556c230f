#include "QXDesign.h"
#include "QXTools.h"

#include <QAction>
#include <QPluginLoader>
#include <QtDesigner/QDesignerComponents>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerPropertySheetExtension>
#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QExtensionManager>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <gtest/gtest.h>
#include <memory>

namespace {

// The plugin as Designer loads it: a widget collection; a failure is reported with Qt's reason.
QDesignerCustomWidgetCollectionInterface* loadPlugin() {
    QPluginLoader loader(QStringLiteral(QX_DESIGNER_PLUGIN));
    auto* collection = qobject_cast<QDesignerCustomWidgetCollectionInterface*>(loader.instance());
    if (!collection)
        ADD_FAILURE() << loader.errorString().toStdString();
    return collection;
}

} // namespace

// Designer loads the plugin as a collection and shows every widget class of the palette.
TEST(DesignerPlugin, LoadsAndOffersThePaletteWidgets) {
    QDesignerCustomWidgetCollectionInterface* collection = loadPlugin();
    ASSERT_NE(collection, nullptr);
    int widgetClasses = 0;
    for (const TComponentClass& c :
         TPaletteRegistry::Instance().ClassesOnPage(QLatin1String(QXPalettePage)))
        widgetClasses += c.IsWidget ? 1 : 0;
    ASSERT_EQ(collection->customWidgets().size(), widgetClasses);
    for (QDesignerCustomWidgetInterface* w : collection->customWidgets()) {
        EXPECT_EQ(w->group(), QStringLiteral("QX Tools"));
        EXPECT_TRUE(w->includeFile().startsWith(QStringLiteral("qxtools/")));
    }
    // The plugin registered the package: the non-visual components are on the page too.
    EXPECT_FALSE(TPaletteRegistry::Instance().ClassesOnPage(QStringLiteral("QX Tools")).isEmpty());
}

// Designer's own property sheet does not offer the about row, whose edits would be dropped; the
// component's task menu keeps "About QXTools..." as the way to the about dialog.
TEST(DesignerPlugin, AboutRowIsNotEditableAndTheTaskMenuKeepsTheDialog) {
    QDesignerCustomWidgetCollectionInterface* collection = loadPlugin();
    ASSERT_NE(collection, nullptr);
    const std::unique_ptr<QDesignerFormEditorInterface> core(
        QDesignerComponents::createFormEditor(nullptr));
    QWidget form;
    int withAbout = 0;
    for (QDesignerCustomWidgetInterface* entry : collection->customWidgets()) {
        SCOPED_TRACE(entry->name().toStdString());
        entry->initialize(core.get());
        QWidget* widget = entry->createWidget(&form);
        ASSERT_NE(widget, nullptr);
        auto* sheet =
            qt_extension<QDesignerPropertySheetExtension*>(core->extensionManager(), widget);
        ASSERT_NE(sheet, nullptr);
        auto* menu = qt_extension<QDesignerTaskMenuExtension*>(core->extensionManager(), widget);
        const int about = sheet->indexOf(QStringLiteral("About_QXTools"));
        if (about < 0) {
            EXPECT_EQ(menu, nullptr);
            continue;
        }
        ++withAbout;
        EXPECT_FALSE(sheet->isVisible(about));
        EXPECT_TRUE(sheet->isVisible(sheet->indexOf(QStringLiteral("objectName"))));
        ASSERT_NE(menu, nullptr);
        ASSERT_NE(menu->preferredEditAction(), nullptr);
        EXPECT_EQ(menu->preferredEditAction()->text(), QStringLiteral("About QXTools..."));
    }
    EXPECT_GT(withAbout, 0);
}
