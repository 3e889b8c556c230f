#include "QXAbout.h"
#include "QXTools.h"
#include "TComponent.h"

#include <QSet>
#include <gtest/gtest.h>

TEST(Register, CentralOrderTable) {
    // The order the design environment shows; a change here changes users' palettes.
    const QStringList expected = {
        "TQXAnimate",   "TQXPicClip", "TQXScrollText", "TQXStars",    "TQXBounce",  "TQX3D",
        "TQXWAV",       "TQXGauge",   "TQXLCDPanel",   "TQXDOTPanel", "TQX3dLabel", "TQXPanel",
        "TQXPicBox",    "TQXIcoBox",  "TQXFontCombo",  "TQXDriveTab", "TQXBiBtn",   "TQXAutoButton",
        "TQXBlinker",   "TQXGrabBar", "TQXApp",        "TQXCopy",     "TQXFind",    "TQXForm",
        "TQXFillImage", "TQXFxImage", "TQXHint",       "TQXINI",      "TQXPrinter", "TQXDirList",
        "TQXImage"};
    QStringList actual;
    for (const char* n : QXCentralPaletteOrder)
        actual << QLatin1String(n);
    EXPECT_EQ(actual, expected);
    EXPECT_STREQ(QXPropertyEditorOrder[0].EditorClass, "TQXAboutProperty");
    EXPECT_STREQ(QXPropertyEditorOrder[6].ComponentClass, "TControl");
    EXPECT_STREQ(QXPropertyEditorOrder[6].PropertyName, "Hint");
}

TEST(Register, LeavesOutWhatIsNotBuiltAndKeepsTheOrder) {
    // Two classes that are never part of the build stand in for built ones at the ends.
    TComponentClass first = ComponentClassOf<TComponent>();
    first.Name = QStringLiteral("TQXAnimate");
    TComponentClass last = ComponentClassOf<TComponent>();
    last.Name = QStringLiteral("TQXPrinter");
    RegisterClass(last);
    RegisterClass(first);
    TPaletteRegistry::Instance().Clear();
    QXTools::Register();
    const auto& calls = TPaletteRegistry::Instance().ComponentCalls();
    ASSERT_EQ(calls.size(), 1);
    EXPECT_EQ(calls[0].Page, QStringLiteral("QX Tools"));
    QStringList names;
    for (const auto& c : calls[0].Classes)
        names << c.Name;
    ASSERT_GE(names.size(), 2);
    EXPECT_EQ(names.first(), QStringLiteral("TQXAnimate"));
    // Built classes that come after it in the table (TQXDirList, TQXImage) follow it.
    EXPECT_TRUE(names.contains(QStringLiteral("TQXPrinter")));
    int previous = -1;
    for (const QString& n : names) {
        const auto it = std::find_if(QXCentralPaletteOrder.begin(), QXCentralPaletteOrder.end(),
                                     [&](const char* o) { return n == QLatin1String(o); });
        ASSERT_NE(it, QXCentralPaletteOrder.end()) << n.toStdString();
        const int index = int(it - QXCentralPaletteOrder.begin());
        EXPECT_GT(index, previous);
        previous = index;
    }
    // The about editor is first and applies to every component; the animation editor comes
    // only now that a TQXAnimate exists, and only if its editor class is built.
    const auto& editors = TPaletteRegistry::Instance().EditorCalls();
    ASSERT_GE(editors.size(), 1);
    EXPECT_EQ(editors[0].PropertyType, QStringLiteral("TQXAboutString"));
    EXPECT_EQ(editors[0].PropertyName, QStringLiteral("About_QXTools"));
    EXPECT_TRUE(editors[0].ComponentClass.isEmpty());
    EXPECT_EQ(editors[0].Editor.Name, QStringLiteral("TQXAboutProperty"));
    for (const auto& e : editors)
        EXPECT_NE(FindEditorClass(e.Editor.Name), nullptr);

    // Registering twice is harmless: the page still lists each class once.
    QXTools::Register();
    EXPECT_EQ(TPaletteRegistry::Instance().ClassesOnPage(QStringLiteral("QX Tools")).size(),
              names.size());
    TComponent any;
    const TEditorRegistration* editor =
        TPaletteRegistry::Instance().EditorFor(&any, QStringLiteral("About_QXTools"));
    ASSERT_NE(editor, nullptr);
    std::unique_ptr<TPropertyEditor> ed(editor->Editor.Create({&any}, "About_QXTools"));
    EXPECT_EQ(ed->GetValue(), QStringLiteral("Klick me.."));
}
