#include "QXTaskMenu.h"

#include <QAction>
#include <QDesignerFormWindowCursorInterface>
#include <QDesignerFormWindowInterface>
#include <QMetaProperty>
#include <QVariant>
#include <QXmlStreamReader>
#include <memory>

namespace {

// The widget's own property of the registered name: property names are compared without
// regard to case, as the framework's inspector does ("Filename" is TQXWAV's "FileName").
QByteArray ownProperty(const QWidget* widget, const QString& registered) {
    const QMetaObject* mo = widget->metaObject();
    for (int i = 0; i < mo->propertyCount(); ++i)
        if (registered.compare(QLatin1String(mo->property(i).name()), Qt::CaseInsensitive) == 0)
            return mo->property(i).name();
    return {};
}

// The widget property an editor of the registered property writes: the property itself, or for
// the hint, which the library keeps in a widget's tool tip, "toolTip".
QByteArray targetProperty(const QWidget* widget, const QString& registered) {
    const QByteArray own = ownProperty(widget, registered);
    if (own.isEmpty() && registered == QLatin1String("Hint"))
        return "toolTip";
    return own;
}

// The text a property of the widget has in the form, as the form would save it, or a null
// string. Designer keeps some texts (the tool tip) away from the widget on the form, so the
// widget alone cannot tell.
QString savedText(QDesignerFormWindowInterface* form, const QWidget* widget,
                  const QByteArray& property) {
    QXmlStreamReader xml(form->contents());
    int depth = 0; // element depth below the widget's element, 0 outside it
    bool inProperty = false;
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::StartElement) {
            if (depth > 0)
                ++depth;
            else if (xml.name() == QLatin1String("widget") &&
                     xml.attributes().value(QLatin1String("name")) == widget->objectName())
                depth = 1;
            if (depth == 2 && xml.name() == QLatin1String("property"))
                inProperty =
                    xml.attributes().value(QLatin1String("name")) == QLatin1String(property);
            if (depth == 3 && inProperty && xml.name() == QLatin1String("string"))
                return xml.readElementText();
        } else if (token == QXmlStreamReader::EndElement && depth > 0) {
            --depth;
        }
    }
    return {};
}

// An editor made for one property of one widget, under the name the widget gives the property.
std::unique_ptr<TPropertyEditor> editorFor(const TEditorRegistration& reg, QWidget* widget) {
    QByteArray property = ownProperty(widget, reg.PropertyName);
    if (property.isEmpty())
        property = reg.PropertyName.toLatin1();
    return std::unique_ptr<TPropertyEditor>(reg.Editor.Create({widget}, property));
}

} // namespace

QXTaskMenu::QXTaskMenu(QWidget* widget, const QList<const TEditorRegistration*>& editors,
                       QObject* parent)
    : QObject(parent), m_widget(widget) {
    for (const TEditorRegistration* reg : editors) {
        auto* action = new QAction(ActionText(reg->PropertyName), this);
        const TEditorRegistration editor = *reg;
        connect(action, &QAction::triggered, this, [this, editor]() { runEditor(editor); });
        m_actions << action;
    }
}

QString QXTaskMenu::ActionText(const QString& propertyName) {
    if (propertyName == QLatin1String("About_QXTools"))
        return QStringLiteral("About QXTools...");
    return QStringLiteral("%1 bearbeiten...").arg(propertyName);
}

QAction* QXTaskMenu::preferredEditAction() const {
    const bool ours = FindComponentClass(QString::fromLatin1(m_widget->metaObject()->className()));
    return ours && !m_actions.isEmpty() ? m_actions.first() : nullptr;
}

void QXTaskMenu::runEditor(const TEditorRegistration& reg) {
    QDesignerFormWindowInterface* form = QDesignerFormWindowInterface::findFormWindow(m_widget);
    const QByteArray target = targetProperty(m_widget, reg.PropertyName);
    if (!form || target.isEmpty()) {
        editorFor(reg, m_widget)->Edit();
        return;
    }
    // The editor works on the widget, starting from the value the form holds. Afterwards the
    // widget gets its own value back and the form takes the new one, as a step of its undo
    // history that is saved with the form. Other properties the widget changes meanwhile (a
    // live caption) are none of the editor's doing and stay out of the form.
    const QVariant own = m_widget->property(target.constData());
    const QString saved = savedText(form, m_widget, target);
    if (!saved.isNull())
        m_widget->setProperty(target.constData(), saved);
    const QVariant before = m_widget->property(target.constData());
    editorFor(reg, m_widget)->Edit();
    const QVariant after = m_widget->property(target.constData());
    m_widget->setProperty(target.constData(), own);
    if (after != before)
        form->cursor()->setWidgetProperty(m_widget, QString::fromLatin1(target), after);
}

QObject* QXTaskMenuFactory::createExtension(QObject* object, const QString& iid,
                                            QObject* parent) const {
    auto* widget = qobject_cast<QWidget*>(object);
    if (!widget || iid != QLatin1String(Q_TYPEID(QDesignerTaskMenuExtension)))
        return nullptr;
    QList<const TEditorRegistration*> dialogs;
    for (const TEditorRegistration* reg : TPaletteRegistry::Instance().EditorsFor(widget))
        if (editorFor(*reg, widget)->GetAttributes().Contains(paDialog))
            dialogs << reg;
    return dialogs.isEmpty() ? nullptr : new QXTaskMenu(widget, dialogs, parent);
}
