#include "QXTools.h"

#include "QXAbout.h"
#include "QXDesign.h"

namespace {

const bool aboutEditorKnown =
    RegisterEditorClass(EditorClassOf<TQXAboutProperty>("TQXAboutProperty"));

// Classes of the framework itself that editors may name.
bool isFrameworkClass(const QString& name) {
    return name == QLatin1String("TControl") || name == QLatin1String("TComponent");
}

} // namespace

void QXTools::Register() {
    Q_UNUSED(aboutEditorKnown);
    QList<TComponentClass> classes;
    for (const char* name : QXCentralPaletteOrder)
        if (const TComponentClass* c = FindComponentClass(QLatin1String(name)))
            classes << *c;
    RegisterComponents(QLatin1String(QXPalettePage), classes);

    for (const TQXEditorRow& row : QXPropertyEditorOrder) {
        const QString component = QLatin1String(row.ComponentClass);
        const TPropertyEditorClass* editor = FindEditorClass(QLatin1String(row.EditorClass));
        if (!editor)
            continue;
        if (!component.isEmpty() && !isFrameworkClass(component) && !FindComponentClass(component))
            continue;
        RegisterPropertyEditor(QLatin1String(row.PropertyType), component,
                               QLatin1String(row.PropertyName), *editor);
    }
}

void QXRegisterOne(const QString& page, const char* className) {
    if (const TComponentClass* c = FindComponentClass(QLatin1String(className)))
        RegisterComponents(page, {*c});
}
