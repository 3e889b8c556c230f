#include "QXDesign.h"

#include "QXTools.h"

#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QPixmap>
#include <QVariant>

TPropertyEditor::TPropertyEditor(QList<QObject*> selection, QByteArray propertyName)
    : m_selection(std::move(selection)), m_property(std::move(propertyName)) {}

TPropertyEditor::~TPropertyEditor() = default;

TPropertyAttributes TPropertyEditor::GetAttributes() const {
    return {paRevertable};
}

QString TPropertyEditor::GetValue() const {
    return QStringLiteral("(Unknown)");
}

void TPropertyEditor::SetValue(const QString&) {}

void TPropertyEditor::Edit() {}

QObject* TPropertyEditor::GetComponent(int index) const {
    return index >= 0 && index < m_selection.size() ? m_selection[index] : nullptr;
}

QString TPropertyEditor::GetStrValue() const {
    const QObject* c = GetComponent(0);
    return c ? c->property(m_property.constData()).toString() : QString();
}

void TPropertyEditor::SetStrValue(const QString& value) {
    for (QObject* c : m_selection)
        c->setProperty(m_property.constData(), value);
}

TPropertyAttributes TStringProperty::GetAttributes() const {
    return {paMultiSelect, paRevertable};
}

QString TStringProperty::GetValue() const {
    return GetStrValue();
}

void TStringProperty::SetValue(const QString& value) {
    SetStrValue(value);
}

// ---------------------------------------------------------------------------------------------

namespace {

// Whether the component is of the class or derives from it; the framework's TControl stands
// for every widget, since every control of the library is one.
bool isA(const QObject* component, const QString& className) {
    if (className == QLatin1String("TControl") && component->isWidgetType())
        return true;
    for (const QMetaObject* mo = component->metaObject(); mo; mo = mo->superClass())
        if (className == QLatin1String(mo->className()))
            return true;
    return false;
}

} // namespace

TPaletteRegistry& TPaletteRegistry::Instance() {
    static TPaletteRegistry registry;
    return registry;
}

QList<TComponentClass> TPaletteRegistry::ClassesOnPage(const QString& page) const {
    QList<TComponentClass> out;
    QStringList seen;
    for (const auto& call : m_components) {
        if (call.Page != page)
            continue;
        for (const auto& c : call.Classes)
            if (!seen.contains(c.Name)) {
                seen << c.Name;
                out << c;
            }
    }
    return out;
}

QStringList TPaletteRegistry::Pages() const {
    QStringList pages;
    for (const auto& call : m_components)
        if (!pages.contains(call.Page))
            pages << call.Page;
    return pages;
}

const TEditorRegistration* TPaletteRegistry::EditorFor(const QObject* component,
                                                       const QString& propertyName) const {
    if (!component)
        return nullptr;
    for (auto it = m_editors.crbegin(); it != m_editors.crend(); ++it) {
        if (it->PropertyName.compare(propertyName, Qt::CaseInsensitive) != 0)
            continue;
        if (it->ComponentClass.isEmpty() || isA(component, it->ComponentClass))
            return &*it;
    }
    return nullptr;
}

QList<const TEditorRegistration*> TPaletteRegistry::EditorsFor(const QObject* component) const {
    QList<const TEditorRegistration*> out;
    if (!component)
        return out;
    QStringList seen;
    for (const auto& reg : m_editors) {
        if (seen.contains(reg.PropertyName, Qt::CaseInsensitive))
            continue;
        seen << reg.PropertyName;
        const TEditorRegistration* editor = EditorFor(component, reg.PropertyName);
        if (!editor)
            continue;
        if (editor->ComponentClass.isEmpty() &&
            component->metaObject()->indexOfProperty(qPrintable(editor->PropertyName)) < 0)
            continue;
        out << editor;
    }
    return out;
}

QString TPaletteRegistry::PageOf(const QString& className) const {
    QString page;
    for (const auto& call : m_components)
        for (const auto& c : call.Classes)
            if (c.Name == className && (page.isEmpty() || page == QLatin1String(QXPalettePage)))
                page = call.Page;
    return page;
}

void TPaletteRegistry::Clear() {
    m_components.clear();
    m_editors.clear();
}

void RegisterComponents(const QString& Page, const QList<TComponentClass>& Classes) {
    TPaletteRegistry::Instance().m_components.append({Page, Classes});
}

void RegisterPropertyEditor(const QString& PropertyType, const QString& ComponentClass,
                            const QString& PropertyName, const TPropertyEditorClass& EditorClass) {
    TPaletteRegistry::Instance().m_editors.append(
        {PropertyType, ComponentClass, PropertyName, EditorClass});
}

// ---------------------------------------------------------------------------------------------

namespace {

QMap<QString, TComponentClass>& componentCatalogue() {
    static QMap<QString, TComponentClass> catalogue;
    return catalogue;
}

QMap<QString, TPropertyEditorClass>& editorCatalogue() {
    static QMap<QString, TPropertyEditorClass> catalogue;
    return catalogue;
}

} // namespace

bool RegisterClass(const TComponentClass& componentClass) {
    componentCatalogue().insert(componentClass.Name, componentClass);
    return true;
}

bool RegisterEditorClass(const TPropertyEditorClass& editorClass) {
    editorCatalogue().insert(editorClass.Name, editorClass);
    return true;
}

const TComponentClass* FindComponentClass(const QString& name) {
    const auto& c = componentCatalogue();
    const auto it = c.constFind(name);
    return it == c.cend() ? nullptr : &*it;
}

const TPropertyEditorClass* FindEditorClass(const QString& name) {
    const auto& c = editorCatalogue();
    const auto it = c.constFind(name);
    return it == c.cend() ? nullptr : &*it;
}

QString QXModuleOfSource(const char* fileName) {
    return QFileInfo(QString::fromLocal8Bit(fileName)).completeBaseName();
}

QString QXPaletteBitmap(const QString& className, int size) {
    return QStringLiteral(":/qxtools/palette/%1/%2").arg(size).arg(className.toUpper());
}

QIcon QXPaletteIcon(const QString& className) {
    QIcon icon;
    for (const int size : {22, 44}) {
        const QString name = QXPaletteBitmap(className, size);
        if (QFile::exists(name))
            icon.addPixmap(QPixmap(name));
    }
    return icon;
}
