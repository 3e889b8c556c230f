#include "TCustomComboBox.h"

#include <QCollator>
#include <QEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <algorithm>

namespace {

void sortCaseBlind(QStringList& items) {
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(items.begin(), items.end(), [&](const QString& a, const QString& b) {
        return collator.compare(a, b) < 0;
    });
}

} // namespace

TCustomComboBox::TCustomComboBox(QWidget* parent) : QComboBox(parent) {
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    connect(this, &QComboBox::activated, this, [this]() { Change(); });
    connectEditor();
}

TCustomComboBox::~TCustomComboBox() = default;

void TCustomComboBox::connectEditor() {
    // setEditable makes a new line edit each time the style changes.
    QLineEdit* edit = lineEdit();
    if (!edit || edit == m_editor)
        return;
    m_editor = edit;
    connect(edit, &QLineEdit::textEdited, this, [this]() { Change(); });
}

QStringList TCustomComboBox::Items() const {
    QStringList items;
    items.reserve(count());
    for (int i = 0; i < count(); ++i)
        items << itemText(i);
    return items;
}

void TCustomComboBox::SetItems(const QStringList& items) {
    const QString text = currentText();
    QStringList list = items;
    if (m_sorted)
        sortCaseBlind(list);
    const QSignalBlocker block(this);
    QComboBox::clear();
    addItems(list);
    setCurrentIndex(-1);
    if (isEditable())
        setEditText(text);
}

int TCustomComboBox::AddItem(const QString& item) {
    int index = count();
    if (m_sorted) {
        QCollator collator;
        collator.setCaseSensitivity(Qt::CaseInsensitive);
        index = 0;
        while (index < count() && collator.compare(itemText(index), item) <= 0)
            ++index;
    }
    insertItem(index, item);
    return index;
}

void TCustomComboBox::Clear() {
    QComboBox::clear();
    if (isEditable())
        clearEditText();
}

void TCustomComboBox::SetText(const QString& text) {
    if (isEditable())
        setEditText(text);
    else
        setCurrentIndex(findText(text));
}

void TCustomComboBox::SetStyle(TComboBoxStyle value) {
    setEditable(value == csDropDown);
    connectEditor();
}

void TCustomComboBox::SetSorted(bool value) {
    if (value == m_sorted)
        return;
    m_sorted = value;
    if (!value)
        return;
    const int index = currentIndex();
    const QString selected = index >= 0 ? itemText(index) : QString();
    const QString text = currentText();
    SetItems(Items());
    if (index >= 0)
        setCurrentIndex(findText(selected, Qt::MatchExactly));
    else if (isEditable())
        setEditText(text);
}

QSize TCustomComboBox::sizeHint() const {
    return m_defaultSize.isValid() ? m_defaultSize : QComboBox::sizeHint();
}

void TCustomComboBox::SetDefaultSize(int width, int height) {
    m_defaultSize = QSize(width, height);
    resize(width, height);
}

void TCustomComboBox::Change() {
    if (OnChange)
        OnChange(this);
}

void TCustomComboBox::KeyDown(int& Key, Qt::KeyboardModifiers Shift) {
    if (OnKeyDown)
        OnKeyDown(this, Key, Shift);
}

bool TCustomComboBox::event(QEvent* e) {
    // Not at the first polish as with TControl: a combo box is polished while it is being
    // built, before a derived class's Loaded could run.
    if (e->type() == QEvent::Show)
        EndLoading();
    const bool result = QComboBox::event(e);
    // A child is announced while it is still being built; by its polish it is in place.
    if (e->type() == QEvent::ChildPolished)
        connectEditor();
    return result;
}

void TCustomComboBox::keyPressEvent(QKeyEvent* e) {
    int key = e->key();
    KeyDown(key, e->modifiers());
    if (key == 0) {
        e->accept();
        return;
    }
    if (key == e->key()) {
        QComboBox::keyPressEvent(e);
        return;
    }
    // The box acts on the key the handler put in place of the pressed one.
    QKeyEvent changed(e->type(), key, e->modifiers(), QString(), e->isAutoRepeat());
    QComboBox::keyPressEvent(&changed);
    e->setAccepted(changed.isAccepted());
}
