// examples/utilities.cpp: a few of the qxt functions: splitting and replacing text, padding,
// paths and wildcard matching.
#include <qxtools/Qxutil.h>

#include <QCoreApplication>
#include <cstdio>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    // The third field of a ";"-separated line (fields count from 1).
    const QString line = QStringLiteral("Meier;Hans;Köln;50667");
    std::printf("Ort: %s\n", qPrintable(qxtSplitPar(line, QLatin1Char(';'), 3)));

    QString text = QStringLiteral("Zeile eins^MZeile zwei");
    qxtReplaceString(text, QStringLiteral("^M"), QStringLiteral(" / "));
    std::printf("%s\n", qPrintable(text));

    // Padded with blanks (or cut) to a fixed width, for columns of plain text.
    std::printf("[%s]\n", qPrintable(qxtJustString(QStringLiteral("Summe"), 8)));

    // Several masks at once, separated by ";".
    std::printf("%s\n", qxtIsMatch(QStringLiteral("urlaub.gif"), QStringLiteral("*.png;*.gif"))
                            ? "passt"
                            : "passt nicht");
    return 0;
}
