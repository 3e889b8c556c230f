#pragma once

// The plugin loaded the way Designer loads it, and a form of Designer's own form editor to put
// its widgets on.

#include <QApplication>
#include <QPluginLoader>
#include <QtDesigner/QDesignerComponents>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerFormWindowManagerInterface>
#include <QtDesigner/QDesignerIntegration>
#include <QtDesigner/QDesignerPropertyEditorInterface>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <gtest/gtest.h>
#include <memory>

namespace qxtest {

// The plugin's widget collection; a failure is reported with Qt's reason.
inline QDesignerCustomWidgetCollectionInterface* loadPlugin() {
    QPluginLoader loader(QStringLiteral(QX_DESIGNER_PLUGIN));
    auto* collection = qobject_cast<QDesignerCustomWidgetCollectionInterface*>(loader.instance());
    if (!collection)
        ADD_FAILURE() << loader.errorString().toStdString();
    return collection;
}

// The plugin's entry of a class, or nullptr.
inline QDesignerCustomWidgetInterface* entryOf(const QString& className) {
    if (QDesignerCustomWidgetCollectionInterface* collection = loadPlugin())
        for (QDesignerCustomWidgetInterface* entry : collection->customWidgets())
            if (entry->name() == className)
                return entry;
    return nullptr;
}

// Designer's form editor, one for the test program as Designer has one, with its property
// editor and integration; it goes with the application.
inline QDesignerFormEditorInterface* formEditor() {
    static QDesignerFormEditorInterface* const core = [] {
        QDesignerFormEditorInterface* c = QDesignerComponents::createFormEditor(qApp);
        c->setPropertyEditor(QDesignerComponents::createPropertyEditor(c, nullptr));
        new QDesignerIntegration(c, c);
        return c;
    }();
    return core;
}

// One empty form of the form editor, as a user has it after "New Form".
class DesignerForm {
public:
    DesignerForm() : m_core(formEditor()) {
        m_form = m_core->formWindowManager()->createFormWindow(nullptr);
        m_form->setContents(QStringLiteral(
            "<ui version=\"4.0\"><class>Form</class><widget class=\"QWidget\" name=\"Form\">"
            "<property name=\"geometry\"><rect><x>0</x><y>0</y><width>600</width>"
            "<height>400</height></rect></property></widget><resources/></ui>"));
    }
    ~DesignerForm() { delete m_form; }
    QDesignerFormEditorInterface* core() const { return m_core; }
    QDesignerFormWindowInterface* form() const { return m_form; }
    // Drops a widget of the plugin's entry on the form.
    QWidget* drop(QDesignerCustomWidgetInterface* entry) {
        entry->initialize(m_core);
        QWidget* widget = entry->createWidget(m_form->mainContainer());
        if (!widget)
            return nullptr;
        widget->setObjectName(entry->name().mid(1) + QLatin1Char('1'));
        m_form->manageWidget(widget);
        return widget;
    }
    // Puts any widget on the form.
    template <typename W> W* drop() {
        auto* widget = new W(m_form->mainContainer());
        widget->setObjectName(QString::fromLatin1(W::staticMetaObject.className()));
        m_form->manageWidget(widget);
        return widget;
    }

private:
    QDesignerFormEditorInterface* m_core;
    QDesignerFormWindowInterface* m_form = nullptr;
};

} // namespace qxtest
