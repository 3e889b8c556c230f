#include "QXDesignerPlugin.h"

#include "QXTaskMenu.h"
#include "QXTools.h"
#include "QXWidgetTexts.h"
#include "TComponent.h"

#include <QDesignerFormEditorInterface>
#include <QExtensionManager>
#include <memory>

namespace {

// A component made for the form editor: it knows it is being designed.
QWidget* createDesigning(const TComponentClass& cls, QWidget* parent) {
    QObject* obj = cls.Create(parent);
    if (auto* c = dynamic_cast<TComponentBase*>(obj))
        c->SetDesigning(true);
    return qobject_cast<QWidget*>(obj);
}

} // namespace

QXWidgetEntry::QXWidgetEntry(TComponentClass cls, QString page, QObject* parent)
    : QObject(parent), m_class(std::move(cls)), m_page(std::move(page)) {}

QString QXWidgetEntry::toolTip() const {
    return QXWidgetTextsOf(m_class.Name).ToolTip;
}

QString QXWidgetEntry::whatsThis() const {
    return QXWidgetTextsOf(m_class.Name).WhatsThis;
}

QString QXWidgetEntry::includeFile() const {
    return QStringLiteral("qxtools/%1.h").arg(m_class.Module);
}

QIcon QXWidgetEntry::icon() const {
    return QXPaletteIcon(m_class.Name);
}

QString QXWidgetEntry::domXml() const {
    const std::unique_ptr<QWidget> sample(createDesigning(m_class, nullptr));
    const QSize size = sample ? sample->sizeHint() : QSize();
    // Named as the framework names a first instance: the class without its "T", then 1.
    return QStringLiteral("<ui language=\"c++\"><widget class=\"%1\" name=\"%2\">"
                          "<property name=\"geometry\"><rect><x>0</x><y>0</y>"
                          "<width>%3</width><height>%4</height></rect></property>"
                          "</widget></ui>")
        .arg(m_class.Name, m_class.Name.mid(1) + QLatin1Char('1'))
        .arg(size.width())
        .arg(size.height());
}

QWidget* QXWidgetEntry::createWidget(QWidget* parent) {
    return createDesigning(m_class, parent);
}

void QXWidgetEntry::initialize(QDesignerFormEditorInterface* core) {
    if (m_initialized)
        return;
    m_initialized = true;
    // One factory serves all entries; the first entry Designer initialises installs it.
    QExtensionManager* manager = core->extensionManager();
    if (manager && !manager->findChild<QXTaskMenuFactory*>())
        manager->registerExtensions(new QXTaskMenuFactory(manager),
                                    Q_TYPEID(QDesignerTaskMenuExtension));
}

QXDesignerPlugin::QXDesignerPlugin(QObject* parent) : QObject(parent) {
    QXTools::Register();
    const TPaletteRegistry& registry = TPaletteRegistry::Instance();
    for (const QString& page : registry.Pages())
        for (const TComponentClass& c : registry.ClassesOnPage(page))
            if (c.IsWidget && registry.PageOf(c.Name) == page)
                m_widgets << new QXWidgetEntry(c, page, this);
}
