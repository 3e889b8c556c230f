// An outside program using the installed library.
#include <qxtools/Qxutil.h>

#include <cstdio>

int main() {
    QString s = QStringLiteral("a;b;c");
    qxtReplaceChar(s, QLatin1Char(';'), QLatin1Char(','));
    const QString field = qxtSplitPar(s, QLatin1Char(','), 2);
    std::printf("%s %s\n", qPrintable(s), qPrintable(field));
    return field == QLatin1String("b") ? 0 : 1;
}
