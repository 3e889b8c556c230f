#include "QXDesignerPlugin.h"

#include "QXAbout.h"
#include "QXTools.h"
#include "TComponent.h"

#include <QAction>
#include <QDesignerFormEditorInterface>
#include <QExtensionManager>
#include <QPixmap>

QXWidgetEntry::QXWidgetEntry(TComponentClass cls, QObject* parent)
    : QObject(parent), m_class(std::move(cls)) {}

QString QXWidgetEntry::group() const {
    return QLatin1String(QXPalettePage);
}

QString QXWidgetEntry::includeFile() const {
    // Headers are named after the module, which is the class name without its "T".
    return QStringLiteral("qxtools/%1.h").arg(m_class.Name.mid(1));
}

QIcon QXWidgetEntry::icon() const {
    return QIcon(QPixmap::fromImage(QXProgramPicture(22)));
}

QWidget* QXWidgetEntry::createWidget(QWidget* parent) {
    QObject* obj = m_class.Create(parent);
    if (auto* c = dynamic_cast<TComponentBase*>(obj))
        c->SetDesigning(true);
    return qobject_cast<QWidget*>(obj);
}

void QXWidgetEntry::initialize(QDesignerFormEditorInterface* core) {
    if (m_initialized)
        return;
    m_initialized = true;
    if (QExtensionManager* manager = core->extensionManager())
        manager->registerExtensions(new QXAboutTaskMenuFactory(manager),
                                    Q_TYPEID(QDesignerTaskMenuExtension));
}

QXAboutTaskMenu::QXAboutTaskMenu(QObject* component, QObject* parent)
    : QObject(parent), m_component(component),
      m_about(new QAction(QStringLiteral("About QXTools..."), this)) {
    connect(m_about, &QAction::triggered, this, [this]() {
        if (const TEditorRegistration* reg = TPaletteRegistry::Instance().EditorFor(
                m_component, QStringLiteral("About_QXTools"))) {
            std::unique_ptr<TPropertyEditor> editor(
                reg->Editor.Create({m_component}, "About_QXTools"));
            editor->Edit();
        }
    });
}

QAction* QXAboutTaskMenu::preferredEditAction() const {
    return m_about;
}

QList<QAction*> QXAboutTaskMenu::taskActions() const {
    return {m_about};
}

QObject* QXAboutTaskMenuFactory::createExtension(QObject* object, const QString& iid,
                                                 QObject* parent) const {
    if (iid != QLatin1String(Q_TYPEID(QDesignerTaskMenuExtension)))
        return nullptr;
    if (object->metaObject()->indexOfProperty("About_QXTools") < 0)
        return nullptr;
    return new QXAboutTaskMenu(object, parent);
}

QXDesignerPlugin::QXDesignerPlugin(QObject* parent) : QObject(parent) {
    QXTools::Register();
    for (const QString& page : TPaletteRegistry::Instance().Pages())
        for (const TComponentClass& c : TPaletteRegistry::Instance().ClassesOnPage(page))
            if (c.IsWidget)
                m_widgets << new QXWidgetEntry(c, this);
}
