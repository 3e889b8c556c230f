#pragma once

#include "QXAboutString.h"
#include "QXExport.h"
#include "TCustomComboBox.h"
#include "TStrings.h"

#include <QObject>
#include <QStringList>
#include <QWidget>
#include <memory>

// Known to Qt's meta-object system so Designer offers the values.
namespace QxfntcboEnums {
Q_NAMESPACE_EXPORT(QXT_EXPORT)

// Which writing system a font of the filtered list must cover: ANSI = Latin, SYMBOL = symbol
// fonts, OEM = none of the fonts a Qt program sees.
enum TCharSet { ALL, ANSI, SYMBOL, OEM };
Q_ENUM_NS(TCharSet)

// Fixed or proportional fonts only, or both.
enum TPitch { piALL, piVARIABLE, piFIXED };
Q_ENUM_NS(TPitch)

} // namespace QxfntcboEnums

using TCharSet = QxfntcboEnums::TCharSet;
using enum QxfntcboEnums::TCharSet;
using TPitch = QxfntcboEnums::TPitch;
using enum QxfntcboEnums::TPitch;

// A combo box of the installed font families, optionally tied to a control whose font family
// follows the user's choice.
//
// - The drop-down always lists every family; only Fonts is filtered by CharSet, Pitch and
//   TrueTypeOnly. The filter is shared by every font combo of the program: each setter (and
//   each new combo, which sets the defaults) replaces it for all of them.
// - The list is filled when loading ends (first polish, or EndLoading), sorted once; later
//   additions are not kept in order.
// - Escape goes back to SelFont; the choice is not undone on Control.
//
// Example:
//
//     auto* fonts = new TQXFontCombo(window);
//     fonts->SetControl(editor);
//     fonts->SetSelFont(QStringLiteral("DejaVu Sans"));
class QXT_EXPORT TQXFontCombo : public TCustomComboBox, public TQXAboutCarrier {
    Q_OBJECT
    Q_PROPERTY(QString About_QXTools READ About_QXTools WRITE SetAbout_QXTools DESIGNABLE false)
    Q_PROPERTY(QxfntcboEnums::TCharSet CharSet READ CharSet WRITE SetCharSet)
    Q_PROPERTY(QWidget* Control READ Control WRITE SetControl)
    Q_PROPERTY(QxfntcboEnums::TPitch Pitch READ Pitch WRITE SetPitch)
    Q_PROPERTY(QString SelFont READ SelFont WRITE SetSelFont)
    Q_PROPERTY(bool TrueTypeOnly READ TrueTypeOnly WRITE SetTrueTypeOnly)
    Q_PROPERTY(bool ShowFontFaces READ ShowFontFaces WRITE SetShowFontFaces)
    Q_PROPERTY(QStringList Fonts READ fontsProperty STORED false DESIGNABLE false)
    Q_PROPERTY(int Tag READ Tag WRITE SetTag)

public:
    // An empty combo; it sets the shared filter to its defaults, and fills the list when first
    // shown.
    explicit TQXFontCombo(QWidget* parent = nullptr);
    ~TQXFontCombo() override;

    // The writing system the filtered list asks for (ALL); setting it empties Fonts.
    TCharSet CharSet() const { return m_charSet; }
    void SetCharSet(TCharSet Value);
    // The control whose font family follows the choice; setting one takes its family as
    // SelFont. Cleared when that control is destroyed.
    QWidget* Control() const { return m_control; }
    void SetControl(QWidget* Value);
    // Fixed or proportional fonts for the filtered list (piALL); Fonts is rebuilt at its next
    // read anyway, so it is not emptied here.
    TPitch Pitch() const { return m_pitch; }
    void SetPitch(TPitch Value);
    // The family to show; selects the first item equal to it regardless of case.
    QString SelFont() const { return m_selFont; }
    void SetSelFont(const QString& Value);
    // Scalable outline fonts only in the filtered list (false); setting it empties Fonts.
    bool TrueTypeOnly() const { return m_trueTypeOnly; }
    void SetTrueTypeOnly(bool Value);
    // Each drop-down item drawn in its own face (false: all in the combo's font).
    bool ShowFontFaces() const { return m_showFontFaces; }
    void SetShowFontFaces(bool Value);
    // The families that pass the current filter, enumerated afresh at every read.
    TStrings* Fonts();

    // Selects entry index (-1: none).
    using TCustomComboBox::SetItemIndex;
    // Selects the first item equal to name regardless of case; no match leaves the selection.
    void SetItemIndex(const QString& name);

protected:
    // Fills the list with every family, sorted once, and selects SelFont.
    void Loaded() override;
    // Gives Control the chosen family before the inherited handling.
    void Change() override;
    // Escape goes back to SelFont after the inherited handling.
    void KeyDown(int& Key, Qt::KeyboardModifiers Shift) override;
    // Forgets Control when it is destroyed.
    void Notification(QObject* component, TOperation operation) override;

private:
    // Appends every family passing the shared filter to the Fonts list.
    void UpdateFontList();
    void applyFaces();
    QStringList fontsProperty() { return Fonts()->ToStringList(); }

    TCharSet m_charSet = ALL;
    QWidget* m_control = nullptr;
    TPitch m_pitch = piALL;
    QString m_selFont;
    bool m_trueTypeOnly = false;
    bool m_showFontFaces = false;
    std::unique_ptr<TStringList> m_fonts;
};

// The face names of at most this many characters are kept in Fonts.
constexpr int QXFontFaceLength = 32;

namespace Qxfntcbo {
// Puts TQXFontCombo on the "QX Tools" palette page.
QXT_EXPORT void Register();
} // namespace Qxfntcbo
