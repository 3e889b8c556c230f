// An outside program using the installed library; it also prints the version macros.
#include <qxtools/QXToolsVersion.h>
#include <qxtools/Qxutil.h>

#include <cstdio>

int main() {
    QString s = QStringLiteral("a;b;c");
    qxtReplaceChar(s, QLatin1Char(';'), QLatin1Char(','));
    const QString field = qxtSplitPar(s, QLatin1Char(','), 2);
    std::printf("%s %s %s %06x\n", qPrintable(s), qPrintable(field), QXTOOLS_VERSION_STR,
                unsigned(QXTOOLS_VERSION));
    return field == QLatin1String("b") ? 0 : 1;
}
