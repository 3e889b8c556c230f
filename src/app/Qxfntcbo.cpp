#include "Qxfntcbo.h"

#include "Application.h"
#include "QXDesign.h"
#include "QXTools.h"
#include "TComponent.h"

#include <QAbstractItemView>
#include <QFontDatabase>
#include <QScrollBar>

namespace {

const bool classKnown = RegisterClass(ComponentClassOf<TQXFontCombo>());

// The filter of every font combo: the enumeration only ever sees the list it fills, so the
// most recent setting of any combo applies to all of them.
TCharSet fontCharSet = ALL;
bool fontTrueTypeOnly = false;
TPitch fontPitch = piALL;

bool charSetAccepts(const QString& family) {
    switch (fontCharSet) {
    case ALL:
        return true;
    case ANSI:
        return QFontDatabase::writingSystems(family).contains(QFontDatabase::Latin);
    case SYMBOL:
        return QFontDatabase::writingSystems(family).contains(QFontDatabase::Symbol);
    case OEM:
        // No font a Qt program sees is in a DOS code page.
        return false;
    }
    return false;
}

bool pitchAccepts(const QString& family) {
    switch (fontPitch) {
    case piALL:
        return true;
    case piVARIABLE:
        return !QFontDatabase::isFixedPitch(family);
    case piFIXED:
        return QFontDatabase::isFixedPitch(family);
    }
    return false;
}

bool fontAccepted(const QString& family) {
    if (!charSetAccepts(family) || !pitchAccepts(family))
        return false;
    return !fontTrueTypeOnly || QFontDatabase::isSmoothlyScalable(family);
}

// The font family of a control, through its framework font where it has one so that the
// two stay alike.
QString familyOf(QWidget* control) {
    if (auto* c = dynamic_cast<TControl*>(control))
        return c->Font()->Name();
    return control->font().family();
}

void setFamilyOf(QWidget* control, const QString& family) {
    if (auto* c = dynamic_cast<TControl*>(control)) {
        c->Font()->SetName(family);
        return;
    }
    QFont font = control->font();
    font.setFamily(family);
    control->setFont(font);
}

} // namespace

TQXFontCombo::TQXFontCombo(QWidget* parent)
    : TCustomComboBox(parent), TQXAboutCarrier(QXFontComboVersion),
      m_fonts(std::make_unique<TStringList>()) {
    SetDefaultSize(145, TCustomComboBox::sizeHint().height());
    setAccessibleName(QStringLiteral("Schriftauswahl"));
    setAccessibleDescription(QStringLiteral("Liste der installierten Schriftarten"));
    SetCharSet(ALL);
    SetPitch(piALL);
    SetTrueTypeOnly(false);
}

TQXFontCombo::~TQXFontCombo() = default;

void TQXFontCombo::SetCharSet(TCharSet Value) {
    m_charSet = Value;
    fontCharSet = Value;
    m_fonts->Clear();
}

void TQXFontCombo::SetControl(QWidget* Value) {
    m_control = Value;
    if (!Value)
        return;
    FreeNotification(Value);
    SetSelFont(familyOf(Value));
}

void TQXFontCombo::SetPitch(TPitch Value) {
    m_pitch = Value;
    fontPitch = Value;
}

void TQXFontCombo::SetSelFont(const QString& Value) {
    m_selFont = Value;
    SetItemIndex(Value);
}

void TQXFontCombo::SetTrueTypeOnly(bool Value) {
    m_trueTypeOnly = Value;
    fontTrueTypeOnly = Value;
    m_fonts->Clear();
}

void TQXFontCombo::SetShowFontFaces(bool Value) {
    if (Value == m_showFontFaces)
        return;
    m_showFontFaces = Value;
    applyFaces();
}

TStrings* TQXFontCombo::Fonts() {
    m_fonts->Clear();
    UpdateFontList();
    return m_fonts.get();
}

void TQXFontCombo::UpdateFontList() {
    for (const QString& family : QFontDatabase::families())
        if (fontAccepted(family))
            m_fonts->Add(family.left(QXFontFaceLength));
    TApplication::ProcessMessages();
}

void TQXFontCombo::SetItemIndex(const QString& name) {
    const QString wanted = name.toUpper();
    for (int i = 0; i < count(); ++i) {
        if (itemText(i).toUpper() == wanted) {
            SetItemIndex(i);
            return;
        }
    }
}

void TQXFontCombo::applyFaces() {
    for (int i = 0; i < count(); ++i) {
        if (!m_showFontFaces) {
            setItemData(i, QVariant(), Qt::FontRole);
            continue;
        }
        QFont face = font();
        face.setFamily(itemText(i));
        setItemData(i, face, Qt::FontRole);
    }
    // The drop-down may be wider than the box so that long family names are not cut.
    QAbstractItemView* list = view();
    list->setMinimumWidth(list->sizeHintForColumn(0) +
                          list->verticalScrollBar()->sizeHint().width() + 2 * list->frameWidth());
}

void TQXFontCombo::Loaded() {
    TCustomComboBox::Loaded();
    Clear();
    for (const QString& family : Screen()->Fonts())
        AddItem(family);
    SetSorted(true);
    SetSorted(false);
    applyFaces();
    SetItemIndex(m_selFont);
}

void TQXFontCombo::Change() {
    if (m_control)
        setFamilyOf(m_control, Text());
    TCustomComboBox::Change();
}

void TQXFontCombo::KeyDown(int& Key, Qt::KeyboardModifiers Shift) {
    TCustomComboBox::KeyDown(Key, Shift);
    if (Key == Qt::Key_Escape)
        SetItemIndex(m_selFont);
}

void TQXFontCombo::Notification(QObject* component, TOperation operation) {
    TCustomComboBox::Notification(component, operation);
    if (operation == opRemove && component == m_control)
        m_control = nullptr;
}

void Qxfntcbo::Register() {
    Q_UNUSED(classKnown);
    QXRegisterOne(QLatin1String(QXPalettePage), "TQXFontCombo");
}
