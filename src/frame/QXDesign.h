#pragma once

// The design-time side of the package: property editors and the palette registry that the
// Qt Designer plugin reads.

#include "QXExport.h"
#include "TSet.h"

#include <QByteArray>
#include <QIcon>
#include <QList>
#include <QMetaObject>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <type_traits>

enum TPropertyAttribute {
    paValueList,
    paSubProperties,
    paDialog,
    paMultiSelect,
    paAutoUpdate,
    paSortList,
    paReadOnly,
    paRevertable
};
using TPropertyAttributes = TSet<TPropertyAttribute>;

// Edits one property of the selected components (the selection's component 0 leads).
class QXT_EXPORT TPropertyEditor {
public:
    // An editor of propertyName on the selected components.
    TPropertyEditor(QList<QObject*> selection, QByteArray propertyName);
    virtual ~TPropertyEditor();
    // How the inspector offers the property; none by default.
    virtual TPropertyAttributes GetAttributes() const;
    // The text the inspector shows.
    virtual QString GetValue() const;
    // Gives every selected component the value typed in the inspector.
    virtual void SetValue(const QString& value);
    // Runs the editor's dialog (for paDialog editors).
    virtual void Edit();
    // Selected component index (0 leads).
    QObject* GetComponent(int index) const;
    // The number of selected components.
    int PropCount() const { return int(m_selection.size()); }
    // The name of the property edited.
    QString GetName() const { return QString::fromLatin1(m_property); }

protected:
    // The property of component 0 as text.
    QString GetStrValue() const;
    // Sets the property of every selected component from text.
    void SetStrValue(const QString& value);

private:
    QList<QObject*> m_selection;
    QByteArray m_property;
};

// The editor of plain string properties.
class QXT_EXPORT TStringProperty : public TPropertyEditor {
public:
    // The base class's constructor.
    using TPropertyEditor::TPropertyEditor;
    // { paMultiSelect, paRevertable }: many components at once, and undoable.
    TPropertyAttributes GetAttributes() const override;
    // The string as it is.
    QString GetValue() const override;
    // Sets the string on every selected component.
    void SetValue(const QString& value) override;
};

// A component class as the palette knows it: its name and how to make one.
struct TComponentClass {
    // The class name ("TQXGauge").
    QString Name;
    // The class's meta-object, for its properties.
    const QMetaObject* MetaObject = nullptr;
    // Creates an instance; controls get parent as their parent widget.
    std::function<QObject*(QWidget* parent)> Create;
    // Whether instances are widgets (controls) or plain components.
    bool IsWidget = false;
    // The module that registered the class ("QXGauge"); its public header is Module + ".h".
    QString Module;
};

// A property editor class: its name and how to make one for a selection and property.
struct TPropertyEditorClass {
    // The editor class's name ("TQXAboutProperty").
    QString Name;
    // Makes an editor for the selection and property.
    std::function<TPropertyEditor*(QList<QObject*> selection, QByteArray propertyName)> Create;
};

// One call of RegisterComponents.
struct TComponentRegistration {
    // The palette page.
    QString Page;
    // The classes, in the order given.
    QList<TComponentClass> Classes;
};

// One call of RegisterPropertyEditor. ComponentClass is empty for "any class".
struct TEditorRegistration {
    // The type name the editor is for.
    QString PropertyType;
    // The class (with its subclasses) the editor is for, or "".
    QString ComponentClass;
    // The property the editor is for.
    QString PropertyName;
    // The editor class.
    TPropertyEditorClass Editor;
};

// Every registration the package made, in call order. Registering twice is harmless: both
// calls are recorded, and the lookups return one entry per class.
class QXT_EXPORT TPaletteRegistry {
public:
    // The one registry of the program.
    static TPaletteRegistry& Instance();
    // Every RegisterComponents call, in order.
    const QList<TComponentRegistration>& ComponentCalls() const { return m_components; }
    // Every RegisterPropertyEditor call, in order.
    const QList<TEditorRegistration>& EditorCalls() const { return m_editors; }
    // The classes on a page, first registration order, each once.
    QList<TComponentClass> ClassesOnPage(const QString& page) const;
    // The pages in order of first use.
    QStringList Pages() const;
    // The editor registered last for the property of this component (by class or a base
    // class; "TControl" stands for every widget), or nullptr.
    const TEditorRegistration* EditorFor(const QObject* component,
                                         const QString& propertyName) const;
    // Every property of this component that has an editor, in the order of first registration,
    // each with the editor EditorFor gives. A registration for any class counts only where
    // the component has the property.
    QList<const TEditorRegistration*> EditorsFor(const QObject* component) const;
    // The page a class shows on: a page besides the package's "QX Tools" when one was given to
    // it (the picture clip's "QX-Werk"), else "QX Tools"; empty when it is not registered.
    QString PageOf(const QString& className) const;
    // Forgets every registration.
    void Clear();

private:
    friend QXT_EXPORT void RegisterComponents(const QString&, const QList<TComponentClass>&);
    friend QXT_EXPORT void RegisterPropertyEditor(const QString&, const QString&, const QString&,
                                                  const TPropertyEditorClass&);
    QList<TComponentRegistration> m_components;
    QList<TEditorRegistration> m_editors;
};

QXT_EXPORT void RegisterComponents(const QString& Page, const QList<TComponentClass>& Classes);
QXT_EXPORT void RegisterPropertyEditor(const QString& PropertyType, const QString& ComponentClass,
                                       const QString& PropertyName,
                                       const TPropertyEditorClass& EditorClass);

// The catalogue of classes the library holds, filled as its modules load. Registration looks
// classes up here by name, so a class that is not part of the build is simply absent.
QXT_EXPORT bool RegisterClass(const TComponentClass& componentClass);
QXT_EXPORT bool RegisterEditorClass(const TPropertyEditorClass& editorClass);
QXT_EXPORT const TComponentClass* FindComponentClass(const QString& name);
QXT_EXPORT const TPropertyEditorClass* FindEditorClass(const QString& name);
// The module a source file belongs to: its name without directory and extension.
QXT_EXPORT QString QXModuleOfSource(const char* fileName);

// A widget class's palette picture at 22 and 44 pixels (the resources
// ":/qxtools/palette/<size>/<CLASS NAME IN UPPER CASE>"); a null icon when it has none.
QXT_EXPORT QIcon QXPaletteIcon(const QString& className);
// The resource name of one size of a class's palette picture.
QXT_EXPORT QString QXPaletteBitmap(const QString& className, int size);

// The class as the catalogue keeps it; called where the module registers its class, whose file
// name gives the module. __builtin_FILE() rather than std::source_location: clang 14, Debian 12's,
// has no std::source_location with libstdc++ 12.
template <typename T> TComponentClass ComponentClassOf(const char* whereFile = __builtin_FILE()) {
    TComponentClass c;
    c.Module = QXModuleOfSource(whereFile);
    c.Name = QString::fromLatin1(T::staticMetaObject.className());
    c.MetaObject = &T::staticMetaObject;
    c.IsWidget = std::is_base_of_v<QWidget, T>;
    c.Create = [](QWidget* parent) -> QObject* {
        if constexpr (std::is_base_of_v<QWidget, T>)
            return new T(parent);
        else
            return new T(static_cast<QObject*>(parent));
    };
    return c;
}

template <typename T> TPropertyEditorClass EditorClassOf(const char* name) {
    return {QString::fromLatin1(name),
            [](QList<QObject*> selection, QByteArray property) -> TPropertyEditor* {
                return new T(std::move(selection), std::move(property));
            }};
}
