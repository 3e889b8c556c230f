#pragma once

#include "QXDesign.h"

#include <QDesignerTaskMenuExtension>
#include <QExtensionFactory>

class QAction;

// The task menu of a widget on a form: one entry for every property of it that has a dialog
// editor in the palette registry ("About QXTools...", the WAV file, the picture directory, the
// hint). An editor's change reaches the form through Designer's property sheet, so it is
// saved with the form and can be undone.
class QXTaskMenu : public QObject, public QDesignerTaskMenuExtension {
    Q_OBJECT
    Q_INTERFACES(QDesignerTaskMenuExtension)
public:
    QXTaskMenu(QWidget* widget, const QList<const TEditorRegistration*>& editors, QObject* parent);
    // The first entry on the package's own components; other widgets keep Designer's own.
    QAction* preferredEditAction() const override;
    QList<QAction*> taskActions() const override { return m_actions; }

    // The entry text for an editor of the property.
    static QString ActionText(const QString& propertyName);

private:
    void runEditor(const TEditorRegistration& editor);
    QWidget* m_widget;
    QList<QAction*> m_actions;
};

// Makes the task menu for every widget that has a dialog editor in the registry.
class QXTaskMenuFactory : public QExtensionFactory {
    Q_OBJECT
public:
    using QExtensionFactory::QExtensionFactory;

protected:
    QObject* createExtension(QObject* object, const QString& iid, QObject* parent) const override;
};
