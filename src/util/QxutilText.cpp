#include "QxutilText.h"

#include "SysUtils.h"
#include "TGraphic.h"

#include <QCursor>
#include <cstdint>

void qxtReplaceChar(QString& S, QChar OldChar, QChar NewChar) {
    if (OldChar == NewChar)
        return;
    // A changed character can never become OldChar again, so one pass equals the rescans.
    S.replace(OldChar, NewChar);
}

void qxtReplaceString(QString& S, const QString& OldText, const QString& NewText) {
    if (OldText.isEmpty() || NewText.contains(OldText))
        return;
    for (qsizetype p = S.indexOf(OldText); p >= 0; p = S.indexOf(OldText))
        S = S.left(p) + NewText + S.mid(p + OldText.size());
}

QString qxtSplitPar(const QString& S, QChar Sep, int N) {
    return qxtSplitPar(S, QString(Sep), N);
}

QString qxtSplitPar(const QString& S, const QString& Sep, int N) {
    if (Sep.isEmpty())
        return QString();
    // The appended separator closes the last field.
    QString work = S + Sep;
    for (int k = 1;; ++k) {
        const qsizetype p = work.indexOf(Sep);
        if (p < 0)
            return QString();
        if (k == N)
            return work.left(p);
        work.remove(0, p + Sep.size());
    }
}

QString qxtSplitParLast(const QString& S, QChar Sep, int N, int LastSep) {
    QString work = S;
    for (int k = 1;; ++k) {
        qsizetype p = work.indexOf(Sep);
        if (p < 0)
            return QString();
        if (LastSep != 0)
            p = work.lastIndexOf(Sep);
        const QString field = work.left(p);
        work.remove(0, p + 1);
        if (k == N)
            return field;
    }
}

QString qxtDelComment(const QString& S) {
    const qsizetype index = S.indexOf(QLatin1Char(';'));
    // The 1-based position lives in a byte.
    const std::uint8_t p = static_cast<std::uint8_t>(index + 1);
    if (p != 0)
        return TrimRight(S.left(p - 1));
    return S;
}

QString qxtJustString(const QString& S, int Len) {
    const QString t = Trim(S);
    if (Len >= t.size())
        return t + QString(Len - t.size(), QLatin1Char(' '));
    return Len <= 0 ? QString() : t.left(Len);
}

quint8 qxtInCount(const QString& S, QChar C) {
    quint8 count = 0;
    for (QChar c : S)
        if (c == C)
            ++count;
    return count;
}

void qxtMinMaxInteger(int& V, int Min, int Max) {
    if (Max < V)
        V = Max;
    if (Min > V)
        V = Min;
}

void qxtMinMaxExtended(long double& V, long double Min, long double Max) {
    if (Max < V)
        V = Max;
    if (Min > V)
        V = Min;
}

namespace {

// The largest size with the picture's proportions that fits into w x h.
bool fitInto(int picW, int picH, int w, int h, int& fitW, int& fitH) {
    if (std::int64_t{picW} * picH == 0)
        return false;
    std::int64_t fh = std::int64_t{picH} * w / picW;
    std::int64_t fw = w;
    if (h < fh) {
        fh = h;
        fw = std::int64_t{picW} * h / picH;
    }
    fitW = static_cast<int>(fw);
    fitH = static_cast<int>(fh);
    return true;
}

} // namespace

void qxtStretchPropDraw(TGraphic* Graphic, const TRect& Rect, TCanvas* Canvas) {
    if (!Graphic || !Canvas)
        return;
    const int w = Rect.Right - Rect.Left, h = Rect.Bottom - Rect.Top;
    int fitW = 0, fitH = 0;
    if (!fitInto(Graphic->Width(), Graphic->Height(), w, h, fitW, fitH))
        return;
    const int left = Rect.Left + (w - fitW) / 2;
    const int top = Rect.Top + (h - fitH) / 2;
    Canvas->StretchDraw(Bounds(left, top, fitW, fitH), Graphic);
}

void qxtZoomInRect(TBitmap* Source, const TRect& Rect, TBitmap* Dest) {
    if (!Source || !Dest)
        return;
    int fitW = 0, fitH = 0;
    if (!fitInto(Source->Width(), Source->Height(), Rect.Right - Rect.Left, Rect.Bottom - Rect.Top,
                 fitW, fitH))
        return;
    Dest->SetSize(fitW, fitH);
    Dest->Canvas()->StretchDraw(::Rect(0, 0, fitW, fitH), Source);
}

void qxtSetScreenCursor(TCursor Cursor) {
    const QPoint pos = QCursor::pos();
    Screen()->SetCursor(Cursor);
    // Putting the mouse back makes the window system show the new cursor now.
    QCursor::setPos(pos);
}
