#include "QxutilTextHelpers_p.h"

#include "SysUtils.h"

#include <QStringList>

namespace qxt_detail {

QString delComment(const QString& S) {
    // The position is kept in a byte: a ";" at position 256 is not seen, one at 300 counts
    // as position 44.
    const quint8 p = static_cast<quint8>(S.indexOf(QLatin1Char(';')) + 1);
    if (p == 0)
        return S;
    return TrimRight(S.left(p - 1));
}

QString splitPar(const QString& S, QChar Sep, int N) {
    if (N < 1)
        return QString();
    const QStringList fields = S.split(Sep);
    return N <= fields.size() ? fields[N - 1] : QString();
}

} // namespace qxt_detail
