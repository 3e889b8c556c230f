#pragma once

#include "QXExport.h"

#include <QString>
#include <cstddef>

// A short single-byte string of at most 40 characters, the type of the about property.
// Longer text is cut to 40 characters, as a short string of that capacity keeps it.
class TQXAboutString {
public:
    // The most characters kept.
    static constexpr int Capacity = 40;
    constexpr TQXAboutString() = default;
    // The first 40 characters of text (nullptr: empty).
    constexpr TQXAboutString(const char* text) {
        while (text && text[m_length] != '\0' && m_length < Capacity) {
            m_data[m_length] = text[m_length];
            ++m_length;
        }
    }
    // The first 40 characters of text, in Latin-1.
    explicit TQXAboutString(const QString& text) : TQXAboutString() {
        const QByteArray latin = text.left(Capacity).toLatin1();
        for (char c : latin)
            m_data[m_length++] = c;
    }
    // The number of characters, 0 to 40.
    constexpr int Length() const { return m_length; }
    // The characters as a QString.
    QString ToQString() const { return QString::fromLatin1(m_data, m_length); }
    // Equal when length and characters are.
    constexpr bool operator==(const TQXAboutString& o) const {
        if (m_length != o.m_length)
            return false;
        for (int i = 0; i < m_length; ++i)
            if (m_data[i] != o.m_data[i])
                return false;
        return true;
    }

private:
    char m_data[Capacity] = {};
    int m_length = 0;
};

// The date of each component's last revision, shown by the about dialog. "^M" breaks the line.
constexpr TQXAboutString QXBlinkerVersion = "15.11.96";
constexpr TQXAboutString QXAnimateVersion = "01.05.98";
constexpr TQXAboutString QXPicBoxVersion = "28.03.97";
constexpr TQXAboutString QXWAVVersion = "15.11.96";
constexpr TQXAboutString QXPanelVersion = "14.12.96^M(Beta)";
constexpr TQXAboutString QX3dLabelVersion = "12.04.99";
constexpr TQXAboutString QXLCDPanelVersion = "15.11.96";
constexpr TQXAboutString QXBiBtnVersion = "15.11.96";
constexpr TQXAboutString QXGrabBarVersion = "02.01.97";
constexpr TQXAboutString QXGaugeVersion = "10.10.98";
constexpr TQXAboutString QXFormVersion = "18.08.98";
constexpr TQXAboutString QXScrollTextVersion = "01.05.98";
constexpr TQXAboutString QXDOTPanelVersion = "01.09.98";
constexpr TQXAboutString QXDriveTabVersion = "15.11.96";
constexpr TQXAboutString QXIniVersion = "17.05.97";
constexpr TQXAboutString QXFontComboVersion = "15.11.96";
constexpr TQXAboutString QXCopyVersion = "25.04.98";
constexpr TQXAboutString QXFindVersion = "15.11.96";
constexpr TQXAboutString QXHintVersion = "14.08.98";
constexpr TQXAboutString QXAppVersion = "13.10.98";
constexpr TQXAboutString QXIcoBoxVersion = "15.11.96";
constexpr TQXAboutString QXStarsVersion = "15.11.96";
constexpr TQXAboutString QXBounceVersion = "15.11.96";
constexpr TQXAboutString QX3dVersion = "15.11.96^M(Beta)";
constexpr TQXAboutString QXAutoButtonVersion = "20.06.98";
constexpr TQXAboutString QXFillImageVersion = "27.07.98";
constexpr TQXAboutString QXFxImageVersion = "25.11.96^M(Beta)";
constexpr TQXAboutString QXPrinterVersion = "03.03.99";
constexpr TQXAboutString QXPicClipVersion = "08.02.97";

// Gives a component the about property. A component derives from TQXAboutCarrier, passes its
// version constant, and declares
//     Q_PROPERTY(QString About_QXTools READ About_QXTools WRITE SetAbout_QXTools DESIGNABLE false)
// Writes are dropped: the property always reads the built-in version text. Not designable, as
// Qt Designer would offer an editable row whose edits vanish; the "About QXTools..." entry of
// the component's task menu shows the about dialog instead.
class TQXAboutCarrier {
public:
    // Carries the component's version text.
    constexpr explicit TQXAboutCarrier(const TQXAboutString& version) : m_version(version) {}
    // The version text ("15.11.96", some with "^M(Beta)").
    TQXAboutString GetAboutQXT() const { return m_version; }
    // Does nothing: the version text cannot be changed.
    void SetAboutQXT(const TQXAboutString&) {}
    // The version text, for the Qt property.
    QString About_QXTools() const { return m_version.ToQString(); }
    // Does nothing, as SetAboutQXT.
    void SetAbout_QXTools(const QString&) {}

private:
    TQXAboutString m_version;
};
