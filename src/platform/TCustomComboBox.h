#pragma once

#include "QXExport.h"
#include "TComponent.h"

#include <QComboBox>
#include <QPointer>
#include <QStringList>
#include <functional>

// csDropDown lets the user type into the edit field; csDropDownList only picks from the list.
enum TComboBoxStyle { csDropDown, csDropDownList };

// A key handler: Key may be changed, 0 swallows the key.
using TKeyEvent = std::function<void(QObject* Sender, int& Key, Qt::KeyboardModifiers Shift)>;

// A combo box in the framework's terms. Change runs when the user picks an item or edits the
// text, never when the program sets them; KeyDown runs before the box handles a key. The
// loading phase ends when the box is first shown (or at EndLoading).
class QXT_EXPORT TCustomComboBox : public QComboBox, public TComponentBase {
    Q_OBJECT
public:
    // An empty box with an edit field (csDropDown) on parent.
    explicit TCustomComboBox(QWidget* parent = nullptr);
    ~TCustomComboBox() override;
    // The box's name (its objectName).
    QString Name() const { return objectName(); }
    void SetName(const QString& name) { setObjectName(name); }
    // The class name as user code spells it.
    QString ClassName() const { return QString::fromLatin1(metaObject()->className()); }
    // The box itself.
    QObject* AsObject() override { return this; }

    // The list's entries.
    QStringList Items() const;
    // Replaces the entries (sorted when Sorted is on); the text is kept where it can be.
    void SetItems(const QStringList& items);
    // Appends an entry, or inserts it in order while Sorted is on; returns its index.
    int AddItem(const QString& item);
    // Removes every entry and the text.
    void Clear();
    // The selected entry; -1 for none.
    int ItemIndex() const { return currentIndex(); }
    void SetItemIndex(int index) { setCurrentIndex(index); }
    // The text in the edit field (the selected entry for csDropDownList).
    QString Text() const { return currentText(); }
    void SetText(const QString& text);
    // While on, the entries are kept in case-blind order; switching it on sorts them now.
    bool Sorted() const { return m_sorted; }
    void SetSorted(bool value);
    // csDropDown with an edit field, csDropDownList without.
    TComboBoxStyle Style() const { return isEditable() ? csDropDown : csDropDownList; }
    void SetStyle(TComboBoxStyle value);
    // Free-form value for the application.
    int Tag() const { return m_tag; }
    void SetTag(int value) { m_tag = value; }
    // The size the box was created with.
    QSize sizeHint() const override;

    // Fired by Change.
    TNotifyEvent OnChange;
    // Fired by KeyDown.
    TKeyEvent OnKeyDown;

protected:
    // The user changed the selection or the text.
    virtual void Change();
    // A key reached the box; the base fires OnKeyDown.
    virtual void KeyDown(int& Key, Qt::KeyboardModifiers Shift);
    // The size a new box takes.
    void SetDefaultSize(int width, int height);
    // Ends loading when the box is first shown.
    bool event(QEvent* e) override;
    // Runs KeyDown before the box handles the key; a key set to 0 is swallowed.
    void keyPressEvent(QKeyEvent* e) override;

private:
    void connectEditor();
    QPointer<QObject> m_editor; // the line edit Change is connected to
    bool m_sorted = false;
    int m_tag = 0;
    QSize m_defaultSize{-1, -1};
};
