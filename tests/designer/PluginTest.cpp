#include "QXDesign.h"
#include "QXTools.h"

#include <QPluginLoader>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <gtest/gtest.h>

// Designer loads the plugin as a collection and shows every widget class of the palette.
TEST(DesignerPlugin, LoadsAndOffersThePaletteWidgets) {
    QPluginLoader loader(QStringLiteral(QX_DESIGNER_PLUGIN));
    QObject* instance = loader.instance();
    ASSERT_NE(instance, nullptr) << loader.errorString().toStdString();
    auto* collection = qobject_cast<QDesignerCustomWidgetCollectionInterface*>(instance);
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
