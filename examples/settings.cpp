// examples/settings.cpp: values, lists and a font kept in an INI file, read back by a second
// component as the next start of the program would.
#include <qxtools/Qxini.h>

#include <QApplication>
#include <cstdio>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    // A bare file name lies beside the program; a path is used as given.
    const QString file = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("Demo.INI");

    TQXINI ini;
    ini.SetINIFileName(file);
    ini.INIWriteInteger(QStringLiteral("Editor"), QStringLiteral("Tabweite"), 4);
    ini.INIWriteBool(QStringLiteral("Editor"), QStringLiteral("Zeilennummern"), true);
    TFont font;
    font.SetName(QStringLiteral("DejaVu Sans Mono"));
    font.SetSize(11);
    ini.INISaveFont(QStringLiteral("Editor"), QStringLiteral("Schrift"), &font);

    TQXINI later;
    later.SetINIFileName(file);
    TFont restored;
    later.INILoadFont(QStringLiteral("Editor"), QStringLiteral("Schrift"), &restored);
    std::printf("Tabweite %d, Zeilennummern %s, Schrift %s %d\n",
                later.INIReadInteger(QStringLiteral("Editor"), QStringLiteral("Tabweite"), 8),
                later.INIReadBool(QStringLiteral("Editor"), QStringLiteral("Zeilennummern"), false)
                    ? "an"
                    : "aus",
                qPrintable(restored.Name()), restored.Size());
    return 0;
}
