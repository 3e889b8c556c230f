#include "QXAbout.h"
#include "QXTools.h"
#include "TComponent.h"

#include <QMetaProperty>
#include <gtest/gtest.h>
#include <tuple>

namespace {

// The palette as users see it; a change here changes their palettes.
const QStringList paletteOrder = {
    "TQXAnimate",   "TQXPicClip", "TQXScrollText", "TQXStars",    "TQXBounce",  "TQX3D",
    "TQXWAV",       "TQXGauge",   "TQXLCDPanel",   "TQXDOTPanel", "TQX3dLabel", "TQXPanel",
    "TQXPicBox",    "TQXIcoBox",  "TQXFontCombo",  "TQXDriveTab", "TQXBiBtn",   "TQXAutoButton",
    "TQXBlinker",   "TQXGrabBar", "TQXApp",        "TQXCopy",     "TQXFind",    "TQXForm",
    "TQXFillImage", "TQXFxImage", "TQXHint",       "TQXINI",      "TQXPrinter", "TQXDirList",
    "TQXImage"};

// Property type, component class, property name and editor class of each editor registration.
using EditorRow = std::tuple<QString, QString, QString, QString>;
const QList<EditorRow> editorOrder = {
    {"TQXAboutString", "", "About_QXTools", "TQXAboutProperty"},
    {"TBitmap", "TQXAnimate", "Picture", "TQXAnimProperty"},
    {"TQXFillStyle", "TQXForm", "FillStyle", "TQXFillStyleProperty"},
    {"string", "TQXWAV", "Filename", "TWaveFileProperty"},
    {"string", "TQXIcoBox", "IconFilename", "TIcoFileProperty"},
    {"string", "TQXPicBox", "PicPattern", "TPicPatternProperty"},
    {"string", "TControl", "Hint", "THintProperty"},
};

// What the central registration recorded, read back from the registry.
QStringList recordedClasses() {
    const auto& calls = TPaletteRegistry::Instance().ComponentCalls();
    if (calls.size() != 1 || calls[0].Page != QStringLiteral("QX Tools"))
        return {};
    QStringList names;
    for (const auto& c : calls[0].Classes)
        names << c.Name;
    return names;
}

QList<EditorRow> recordedEditors() {
    QList<EditorRow> rows;
    for (const auto& e : TPaletteRegistry::Instance().EditorCalls())
        rows << EditorRow{e.PropertyType, e.ComponentClass, e.PropertyName, e.Editor.Name};
    return rows;
}

} // namespace

TEST(Register, RecordsThePaletteAndTheEditorsInOrder) {
    // As built: the classes that exist, in palette order, the others left out.
    QStringList built;
    for (const QString& name : paletteOrder)
        if (FindComponentClass(name))
            built << name;
    ASSERT_FALSE(built.isEmpty());
    TPaletteRegistry::Instance().Clear();
    QXTools::Register();
    EXPECT_EQ(recordedClasses(), built);
    const QList<EditorRow> editors = recordedEditors();
    ASSERT_FALSE(editors.isEmpty());
    EXPECT_EQ(editors[0], editorOrder[0]);

    // With every class and editor present (stand-ins for those not built yet) the whole palette
    // and all seven editors are registered, in their order.
    for (const QString& name : paletteOrder)
        if (!FindComponentClass(name)) {
            TComponentClass standIn = ComponentClassOf<TComponent>();
            standIn.Name = name;
            RegisterClass(standIn);
        }
    for (const EditorRow& row : editorOrder)
        if (!FindEditorClass(std::get<3>(row)))
            RegisterEditorClass(EditorClassOf<TStringProperty>(qPrintable(std::get<3>(row))));
    TPaletteRegistry::Instance().Clear();
    QXTools::Register();
    EXPECT_EQ(recordedClasses(), paletteOrder);
    EXPECT_EQ(recordedEditors(), editorOrder);

    // Registering twice is harmless: the page still lists each class once.
    QXTools::Register();
    EXPECT_EQ(TPaletteRegistry::Instance().ClassesOnPage(QStringLiteral("QX Tools")).size(),
              paletteOrder.size());
    TComponent any;
    const TEditorRegistration* editor =
        TPaletteRegistry::Instance().EditorFor(&any, QStringLiteral("About_QXTools"));
    ASSERT_NE(editor, nullptr);
    std::unique_ptr<TPropertyEditor> ed(editor->Editor.Create({&any}, "About_QXTools"));
    EXPECT_EQ(ed->GetValue(), QStringLiteral("Klick me.."));
}

// Every registered component with an about row accepts writes (and drops them), but does not
// offer the row to Qt Designer's property sheet, where edits would vanish.
TEST(Register, AboutRowIsWritableButNotDesignable) {
    TPaletteRegistry::Instance().Clear();
    QXTools::Register();
    int withAbout = 0;
    for (const TComponentClass& c :
         TPaletteRegistry::Instance().ClassesOnPage(QStringLiteral("QX Tools"))) {
        const QMetaObject* mo = c.MetaObject;
        const int index = mo->indexOfProperty("About_QXTools");
        if (index < 0)
            continue;
        ++withAbout;
        const QMetaProperty about = mo->property(index);
        EXPECT_TRUE(about.isWritable()) << c.Name.toStdString();
        EXPECT_FALSE(about.isDesignable()) << c.Name.toStdString();
    }
    EXPECT_GT(withAbout, 0);
}
