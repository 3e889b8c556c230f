#include "QXDesign.h"
#include "QXTools.h"
#include "TComponent.h"

#include <QComboBox>
#include <gtest/gtest.h>

namespace {

class TStandInProperty : public TStringProperty {
public:
    using TStringProperty::TStringProperty;
};

TPropertyEditorClass editorNamed(const char* name) {
    return EditorClassOf<TStandInProperty>(name);
}

QStringList editorNames(const QList<const TEditorRegistration*>& regs) {
    QStringList names;
    for (const TEditorRegistration* r : regs)
        names << r->PropertyName + QLatin1Char('=') + r->Editor.Name;
    return names;
}

// A control of the library with a file name, as the WAV component has.
class TFileControl : public TControl {
    Q_OBJECT
    Q_PROPERTY(QString Filename READ Filename WRITE SetFilename)
    Q_PROPERTY(QString About_QXTools READ Filename WRITE SetFilename)
public:
    using TControl::TControl;
    QString Filename() const { return {}; }
    void SetFilename(const QString&) {}
};

} // namespace

// A class's module is the file that registered it; its public header carries the same name.
TEST(PaletteRegistry, ModuleOfARegisteredClass) {
    const TComponentClass* gauge = FindComponentClass(QStringLiteral("TQXGauge"));
    ASSERT_NE(gauge, nullptr);
    EXPECT_EQ(gauge->Module, QStringLiteral("QXGauge"));
    const TComponentClass* lcd = FindComponentClass(QStringLiteral("TQXLCDPanel"));
    ASSERT_NE(lcd, nullptr);
    EXPECT_EQ(lcd->Module, QStringLiteral("Qxlcdpan"));
    EXPECT_EQ(ComponentClassOf<TComponent>().Module, QStringLiteral("PaletteRegistryTest"));
    EXPECT_EQ(QXModuleOfSource("/a/b.c/src/controls/Qxdotpan.cpp"), QStringLiteral("Qxdotpan"));
    EXPECT_EQ(QXModuleOfSource("QX3D.cpp"), QStringLiteral("QX3D"));
}

// A class shows on "QX Tools" unless a module gave it a page of its own, whichever came first.
TEST(PaletteRegistry, PageOfAClass) {
    TPaletteRegistry& registry = TPaletteRegistry::Instance();
    registry.Clear();
    TComponentClass a = ComponentClassOf<TControl>(), clip = a;
    a.Name = QStringLiteral("TQXA");
    clip.Name = QStringLiteral("TQXPicClip");
    RegisterComponents(QStringLiteral("QX Tools"), {a, clip});
    EXPECT_EQ(registry.PageOf(clip.Name), QStringLiteral("QX Tools"));
    RegisterComponents(QStringLiteral("QX-Werk"), {clip});
    RegisterComponents(QStringLiteral("QX Tools"), {clip});
    EXPECT_EQ(registry.PageOf(clip.Name), QStringLiteral("QX-Werk"));
    EXPECT_EQ(registry.PageOf(a.Name), QStringLiteral("QX Tools"));
    EXPECT_TRUE(registry.PageOf(QStringLiteral("TQXNone")).isEmpty());
    registry.Clear();
    RegisterComponents(QStringLiteral("QX-Werk"), {clip});
    RegisterComponents(QStringLiteral("QX Tools"), {clip});
    EXPECT_EQ(registry.PageOf(clip.Name), QStringLiteral("QX-Werk"));
    registry.Clear();
}

// The editors of a component: one a property (the last registered), in the order of first
// registration; an editor for any class only where the property exists, one for TControl on
// every widget, whichever base class it has.
TEST(PaletteRegistry, EditorsOfAComponent) {
    TPaletteRegistry& registry = TPaletteRegistry::Instance();
    registry.Clear();
    const QString string = QStringLiteral("string");
    RegisterPropertyEditor(QStringLiteral("TQXAboutString"), QString(),
                           QStringLiteral("About_QXTools"), editorNamed("TAbout"));
    RegisterPropertyEditor(string, QStringLiteral("TFileControl"), QStringLiteral("Filename"),
                           editorNamed("TFirstFile"));
    RegisterPropertyEditor(string, QStringLiteral("TOther"), QStringLiteral("Pattern"),
                           editorNamed("TPattern"));
    RegisterPropertyEditor(string, QStringLiteral("TControl"), QStringLiteral("Hint"),
                           editorNamed("THint"));
    RegisterPropertyEditor(string, QStringLiteral("TFileControl"), QStringLiteral("filename"),
                           editorNamed("TLastFile"));

    TFileControl file;
    EXPECT_EQ(editorNames(registry.EditorsFor(&file)),
              (QStringList{"About_QXTools=TAbout", "filename=TLastFile", "Hint=THint"}));
    QComboBox combo; // a widget outside TControl
    EXPECT_EQ(editorNames(registry.EditorsFor(&combo)), QStringList{"Hint=THint"});
    ASSERT_NE(registry.EditorFor(&combo, QStringLiteral("Hint")), nullptr);
    TComponent nonVisual;
    EXPECT_TRUE(registry.EditorsFor(&nonVisual).isEmpty());
    EXPECT_EQ(registry.EditorFor(&nonVisual, QStringLiteral("Hint")), nullptr);
    EXPECT_TRUE(registry.EditorsFor(nullptr).isEmpty());
    registry.Clear();
}

// The palette pictures are found under the class name in upper case, at both sizes.
TEST(PaletteRegistry, PalettePictures) {
    EXPECT_EQ(QXPaletteBitmap(QStringLiteral("TQXGauge"), 44),
              QStringLiteral(":/qxtools/palette/44/TQXGAUGE"));
    const QIcon gauge = QXPaletteIcon(QStringLiteral("TQXGauge"));
    EXPECT_EQ(gauge.availableSizes(), (QList<QSize>{{22, 22}, {44, 44}}));
    EXPECT_TRUE(QXPaletteIcon(QStringLiteral("TQXINI")).isNull());
}

#include "PaletteRegistryTest.moc"
