#pragma once

// String, number and drawing helpers.
//
// The edge behaviour is part of the contract: the replacement functions search the whole
// string again from its start after every change, qxtInCount and qxtDelComment count in
// 8 bits and wrap around, and the clamps apply the upper bound first.

#include "Application.h"
#include "QXExport.h"
#include "TTypes.h"

#include <QChar>
#include <QString>

class TBitmap;
class TCanvas;
class TGraphic;

// Replaces every OldChar in S by NewChar. Returns at once when both are the same (the
// search from the start would otherwise never end).
QXT_EXPORT void qxtReplaceChar(QString& S, QChar OldChar, QChar NewChar);
// Replaces the first OldText in S by NewText and searches again from the start until no
// OldText is left, so replaced text can itself be matched again. Returns at once, leaving S
// unchanged, when NewText contains OldText (that search would never end) or OldText is empty.
QXT_EXPORT void qxtReplaceString(QString& S, const QString& OldText, const QString& NewText);
// The N-th field (from 1) of S split at Sep; empty fields count; "" for N out of range.
QXT_EXPORT QString qxtSplitPar(const QString& S, QChar Sep, int N);
QXT_EXPORT QString qxtSplitPar(const QString& S, const QString& Sep, int N);
// Like qxtSplitPar without a closing separator: the text after the last Sep is never a field.
// With LastSep non-zero the first field is everything before the last Sep, and N > 1 gives "".
QXT_EXPORT QString qxtSplitParLast(const QString& S, QChar Sep, int N, int LastSep);
// S without a ";" comment and the blanks before it. The position of the first ";" is kept in
// 8 bits: at position 256 it counts as absent (S comes back unchanged, untrimmed), at 300 as 44.
QXT_EXPORT QString qxtDelComment(const QString& S);
// S trimmed on both sides, then padded with spaces or cut to exactly Len characters.
QXT_EXPORT QString qxtJustString(const QString& S, int Len);
// How often C occurs in S, counted modulo 256.
QXT_EXPORT quint8 qxtInCount(const QString& S, QChar C);
// V := min(V, Max), then V := max(V, Min): when Min > Max, V ends at Min.
QXT_EXPORT void qxtMinMaxInteger(int& V, int Min, int Max);
QXT_EXPORT void qxtMinMaxExtended(long double& V, long double Min, long double Max);
// Draws Graphic into Rect as large as fits with its proportions kept, centred.
QXT_EXPORT void qxtStretchPropDraw(TGraphic* Graphic, const TRect& Rect, TCanvas* Canvas);
// Resizes Dest to Source's size fitted into Rect's size and draws Source into it. An empty
// Source leaves Dest unchanged; Rect's position is not used.
QXT_EXPORT void qxtZoomInRect(TBitmap* Source, const TRect& Rect, TBitmap* Dest);
// Shows Cursor over the whole application at once, without waiting for a mouse move.
QXT_EXPORT void qxtSetScreenCursor(TCursor Cursor);
