#pragma once

#include "QXDesign.h"

#include <QDesignerTaskMenuExtension>
#include <QExtensionFactory>
#include <QtPlugin>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

class QAction;

// One widget class of the palette as Designer sees it.
class QXWidgetEntry : public QObject, public QDesignerCustomWidgetInterface {
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)
public:
    QXWidgetEntry(TComponentClass cls, QObject* parent);
    QString name() const override { return m_class.Name; }
    QString group() const override;
    QString toolTip() const override { return m_class.Name; }
    QString whatsThis() const override { return m_class.Name; }
    QString includeFile() const override;
    QIcon icon() const override;
    bool isContainer() const override { return false; }
    QWidget* createWidget(QWidget* parent) override;
    bool isInitialized() const override { return m_initialized; }
    void initialize(QDesignerFormEditorInterface* core) override;

private:
    TComponentClass m_class;
    bool m_initialized = false;
};

// The "About QXTools..." entry of a component's task menu.
class QXAboutTaskMenu : public QObject, public QDesignerTaskMenuExtension {
    Q_OBJECT
    Q_INTERFACES(QDesignerTaskMenuExtension)
public:
    QXAboutTaskMenu(QObject* component, QObject* parent);
    QAction* preferredEditAction() const override;
    QList<QAction*> taskActions() const override;

private:
    QObject* m_component;
    QAction* m_about;
};

class QXAboutTaskMenuFactory : public QExtensionFactory {
    Q_OBJECT
public:
    using QExtensionFactory::QExtensionFactory;

protected:
    QObject* createExtension(QObject* object, const QString& iid, QObject* parent) const override;
};

// The collection Designer loads.
class QXDesignerPlugin : public QObject, public QDesignerCustomWidgetCollectionInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)
public:
    explicit QXDesignerPlugin(QObject* parent = nullptr);
    QList<QDesignerCustomWidgetInterface*> customWidgets() const override { return m_widgets; }

private:
    QList<QDesignerCustomWidgetInterface*> m_widgets;
};
