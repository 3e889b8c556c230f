#include "QXDesign.h"
#include "QXTools.h"
#include "TComponent.h"
#include "TestSupport.h"

#include <QBuffer>
#include <QColor>
#include <QComboBox>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QMetaEnum>
#include <QMetaProperty>
#include <QUiLoader>
#include <QtDesigner/QDesignerComponents>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerFormWindowManagerInterface>
#include <QtDesigner/QDesignerIntegration>
#include <QtDesigner/QDesignerPropertySheetExtension>
#include <QtDesigner/QDesignerWidgetFactoryInterface>
#include <QtDesigner/QExtensionManager>
#include <gtest/gtest.h>
#include <memory>

// A form holding one widget of every class the plugin offers, each with non-default values of
// its designable properties, is written by Designer's own form-editor core and read back by
// QUiLoader as an application reads it; every value must arrive. The widget classes and their
// properties come from the palette registry and the meta-objects, so a class or property added
// later is in the form without editing this file, and one whose values cannot be written or do
// not come back fails the test.

namespace {

// A designable property and the value it is given in the form.
struct FormValue {
    QByteArray property;
    QVariant value;    // what the form stores
    QVariant expected; // what the property reads after a fresh widget was given value
};

// One widget of the form.
struct FormEntry {
    QString className;
    QString objectName;
    QList<FormValue> values;
};

// Properties no value is chosen for, each with the reason; anything else without a candidate
// fails the test.
struct Exemption {
    const char* className; // "" for every class
    const char* property;
    const char* reason;
};
constexpr Exemption exemptions[] = {
    {"TQXFillImage", "FillBitmap",
     "Designer keeps pictures as file or resource references, which the property sheet only "
     "takes in Designer's private value type"},
    {"TQXFxImage", "Picture", "a picture, as FillBitmap"},
    {"TQXFxImage", "Font",
     "the caption's font: no font value is tried, and Designer's own font property sets the "
     "widget's font on its own"},
    {"TQXPicBox", "BackPic", "a picture, as FillBitmap"},
};

bool exempt(const QString& className, const QByteArray& property) {
    for (const Exemption& e : exemptions)
        if ((!*e.className || className == QLatin1String(e.className)) && property == e.property)
            return true;
    return false;
}

// Values to try, in order, for a property of the type; the first that reads back different
// from the default is used.
QVariantList candidates(const QMetaProperty& p, const QVariant& current) {
    if (p.isEnumType()) {
        QVariantList out;
        const QMetaEnum e = p.enumerator();
        for (int i = e.keyCount() - 1; i >= 0; --i)
            out << e.value(i);
        return out;
    }
    switch (p.metaType().id()) {
    case QMetaType::Bool:
        return {!current.toBool()};
    case QMetaType::Int: {
        const int v = current.toInt();
        return {v + 3, v + 1, v - 1, v * 2, 7, 1};
    }
    case QMetaType::UInt: {
        const uint v = current.toUInt();
        return {v + 3, v + 1, 7u};
    }
    case QMetaType::Double:
        return {current.toDouble() + 0.5, current.toDouble() - 0.5};
    case QMetaType::QString:
        return {QStringLiteral("Grüße aus dem Formular"), QStringLiteral("ÄÖÜ 12")};
    case QMetaType::QStringList:
        return {QStringList{QStringLiteral("Erste Zeile"), QStringLiteral("Zweite Zeile")}};
    case QMetaType::QColor:
        return {QColor(0x12, 0x9a, 0x56), QColor(0xc0, 0x30, 0x70)};
    default:
        return {};
    }
}

// Candidates that depend on the machine, taken from a fresh widget: a font combo selects only
// a family it lists.
QVariantList machineCandidates(const QByteArray& property, QObject* probe) {
    if (auto* combo = qobject_cast<QComboBox*>(probe); combo && property == "SelFont") {
        QVariantList out;
        for (int i = combo->count() - 1; i >= 0 && out.size() < 3; --i)
            if (i != combo->currentIndex())
                out << combo->itemText(i);
        return out;
    }
    return {};
}

// Compares enum values by number whatever wrapper type they come in.
bool sameValue(const QMetaProperty& p, const QVariant& a, const QVariant& b) {
    if (p.isEnumType())
        return a.toInt() == b.toInt();
    return a == b;
}

// The properties the package declares (its classes and the platform layer's, all named T...)
// that Designer shows and a form stores; Qt's own are Designer's business.
QList<QMetaProperty> formProperties(const QMetaObject* mo) {
    QList<QMetaProperty> out;
    for (const QMetaObject* m = mo; m; m = m->superClass()) {
        if (m->className()[0] != 'T')
            continue;
        for (int i = m->propertyOffset(); i < m->propertyCount(); ++i) {
            const QMetaProperty p = m->property(i);
            if (p.isWritable() && p.isDesignable() && p.isStored() &&
                !(p.metaType().flags() & QMetaType::PointerToQObject))
                out << p;
        }
    }
    return out;
}

// The widget classes on the palette, in palette order.
QList<TComponentClass> paletteWidgets() {
    QXTools::Register();
    QList<TComponentClass> out;
    QStringList seen;
    for (const QString& page : TPaletteRegistry::Instance().Pages())
        for (const TComponentClass& c : TPaletteRegistry::Instance().ClassesOnPage(page))
            if (c.IsWidget && !seen.contains(c.Name)) {
                seen << c.Name;
                out << c;
            }
    return out;
}

// Chooses the form's values for one class; properties without a usable value are reported.
FormEntry planEntry(const TComponentClass& cls, QStringList& problems) {
    FormEntry entry{cls.Name, QStringLiteral("the%1").arg(cls.Name.mid(1)), {}};
    QWidget parent;
    for (const QMetaProperty& p : formProperties(cls.MetaObject)) {
        const QByteArray name(p.name());
        if (exempt(cls.Name, name))
            continue;
        std::unique_ptr<QObject> probe(cls.Create(&parent));
        // Loaded as on screen: a font combo fills its list only then.
        if (auto* component = dynamic_cast<TComponentBase*>(probe.get()))
            component->EndLoading();
        const QVariant fresh = probe->property(name);
        bool found = false;
        const QVariantList tries = machineCandidates(name, probe.get()) + candidates(p, fresh);
        for (const QVariant& candidate : tries) {
            std::unique_ptr<QObject> widget(cls.Create(&parent));
            widget->setProperty(name, candidate);
            const QVariant read = widget->property(name);
            if (!sameValue(p, read, fresh)) {
                entry.values << FormValue{name, candidate, read};
                found = true;
                break;
            }
        }
        if (!found)
            problems << QStringLiteral("%1.%2 (%3): no value that differs from the default")
                            .arg(cls.Name, QLatin1String(name), QLatin1String(p.typeName()));
    }
    return entry;
}

// The directory holding the plugin is the "designer" folder of a plugin path.
QString pluginRoot() {
    return QFileInfo(QFileInfo(QStringLiteral(QX_DESIGNER_PLUGIN)).absolutePath()).absolutePath();
}

// Designer writes the form: one widget of each entry, placed one below the other, with the
// entry's values set through the form window's property sheets as the property editor does.
QString writeForm(const QList<FormEntry>& entries, QStringList& problems) {
    QCoreApplication::addLibraryPath(pluginRoot());
    const std::unique_ptr<QDesignerFormEditorInterface> core(
        QDesignerComponents::createFormEditor(nullptr));
    // Form windows ask the integration what the host supports.
    QDesignerIntegration integration(core.get());
    // Loads the custom widget plugins into the widget database and factory.
    QDesignerComponents::initializePlugins(core.get());
    QDesignerFormWindowInterface* form =
        core->formWindowManager()->createFormWindow(nullptr, Qt::Window);
    form->setContents(QStringLiteral("<ui version=\"4.0\"><class>AllWidgets</class>"
                                     "<widget class=\"QWidget\" name=\"AllWidgets\"/></ui>"));
    QWidget* main = form->mainContainer();
    if (!main) {
        problems << QStringLiteral("Designer made no main container");
        return {};
    }
    int top = 0;
    for (const FormEntry& entry : entries) {
        QWidget* w = core->widgetFactory()->createWidget(entry.className, main);
        if (!w || QLatin1String(w->metaObject()->className()) != entry.className) {
            problems << QStringLiteral("Designer cannot create %1").arg(entry.className);
            continue;
        }
        w->setObjectName(entry.objectName);
        form->manageWidget(w);
        auto* sheet = qt_extension<QDesignerPropertySheetExtension*>(core->extensionManager(), w);
        const auto set = [&](const QString& name, const QVariant& value) {
            const int index = sheet->indexOf(name);
            if (index < 0) {
                problems << QStringLiteral("%1 has no property %2 in Designer")
                                .arg(entry.className, name);
                return;
            }
            sheet->setProperty(index, value);
            sheet->setChanged(index, true);
        };
        set(QStringLiteral("objectName"), entry.objectName);
        const QSize size = w->sizeHint().expandedTo(QSize(40, 20));
        set(QStringLiteral("geometry"), QRect(QPoint(8, 8 + top), size));
        top += size.height() + 8;
        for (const FormValue& v : entry.values)
            set(QString::fromLatin1(v.property), v.value);
    }
    const QString contents = form->contents();
    delete form;
    return contents;
}

} // namespace

TEST(FormRoundTrip, EveryWidgetClassKeepsItsDesignedValues) {
    const QList<TComponentClass> classes = paletteWidgets();
    ASSERT_FALSE(classes.isEmpty());

    QStringList problems;
    QList<FormEntry> entries;
    for (const TComponentClass& cls : classes)
        entries << planEntry(cls, problems);
    const QString ui = writeForm(entries, problems);
    ASSERT_TRUE(problems.isEmpty()) << problems.join(QLatin1Char('\n')).toStdString();
    ASSERT_FALSE(ui.isEmpty());
    // Kept beside the test program to be looked at (and opened in Designer).
    QFile artefact(QStringLiteral(QX_FORM_ARTEFACT));
    if (artefact.open(QIODevice::WriteOnly))
        artefact.write(ui.toUtf8());

    qxtest::DialogRecorder dialogs;
    QUiLoader loader;
    loader.addPluginPath(QFileInfo(QStringLiteral(QX_DESIGNER_PLUGIN)).absolutePath());
    QByteArray bytes = ui.toUtf8();
    QBuffer buffer(&bytes);
    QWidget parent;
    std::unique_ptr<QWidget> loaded(loader.load(&buffer, &parent));
    ASSERT_NE(loaded, nullptr) << loader.errorString().toStdString();
    EXPECT_TRUE(dialogs.requests.isEmpty())
        << dialogs.texts().join(QLatin1Char('\n')).toStdString();

    for (const FormEntry& entry : entries) {
        SCOPED_TRACE(entry.className.toStdString());
        EXPECT_TRUE(loader.availableWidgets().contains(entry.className));
        auto* w = loaded->findChild<QWidget*>(entry.objectName);
        ASSERT_NE(w, nullptr);
        EXPECT_EQ(std::string(w->metaObject()->className()), entry.className.toStdString());
        EXPECT_FALSE(entry.values.isEmpty()) << "a widget class without designable values";
        for (const FormValue& v : entry.values) {
            const QMetaProperty p =
                w->metaObject()->property(w->metaObject()->indexOfProperty(v.property));
            const QVariant read = w->property(v.property);
            EXPECT_TRUE(sameValue(p, read, v.expected))
                << v.property.constData() << ": form " << v.value.toString().toStdString()
                << ", read " << read.toString().toStdString() << ", expected "
                << v.expected.toString().toStdString();
        }
    }
}

// An exemption names a property of a class on the palette; one left behind by a rename would
// silently let a new property of that name through.
TEST(FormRoundTrip, ExemptionsNameRealProperties) {
    const QList<TComponentClass> classes = paletteWidgets();
    for (const Exemption& e : exemptions) {
        SCOPED_TRACE(std::string(e.className) + "." + e.property);
        bool found = false;
        for (const TComponentClass& cls : classes)
            if (!*e.className || cls.Name == QLatin1String(e.className))
                found = found || cls.MetaObject->indexOfProperty(e.property) >= 0;
        EXPECT_TRUE(found) << e.reason;
    }
}
