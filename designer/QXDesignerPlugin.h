#pragma once

#include "QXDesign.h"

#include <QtPlugin>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

// One widget class of the palette as Designer sees it.
class QXWidgetEntry : public QObject, public QDesignerCustomWidgetInterface {
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)
public:
    QXWidgetEntry(TComponentClass cls, QString page, QObject* parent);
    QString name() const override { return m_class.Name; }
    // The palette page the class was registered on.
    QString group() const override { return m_page; }
    QString toolTip() const override;
    QString whatsThis() const override;
    // The installed header of the module that holds the class.
    QString includeFile() const override;
    QIcon icon() const override;
    // A new instance takes the control's own default size.
    QString domXml() const override;
    bool isContainer() const override { return false; }
    QWidget* createWidget(QWidget* parent) override;
    bool isInitialized() const override { return m_initialized; }
    void initialize(QDesignerFormEditorInterface* core) override;

private:
    TComponentClass m_class;
    QString m_page;
    bool m_initialized = false;
};

// The collection Designer loads: every widget class the package registers.
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
