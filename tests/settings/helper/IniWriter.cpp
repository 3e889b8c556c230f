// Writes into an INI file from a separate process, for the tests of concurrent writers.
//   qx_ini_writer keys FILE PREFIX COUNT [PARTNER]
//                                          writes PREFIX0..PREFIX<COUNT-1> in section [Data];
//                                          with PARTNER, goes on after PREFIX0 only once
//                                          PARTNER0 is there, so that two writers overlap
//   qx_ini_writer versions FILE            rewrites key "payload" of [Data] until killed; each
//                                          version is "N:" followed by 100000 copies of one
//                                          letter, printing "started" after the first
//   qx_ini_writer erase FILE KEY           erases the absent section [None] (which writes
//                                          nothing) until KEY of [Data] is present
#include "TIniFile.h"

#include <QString>
#include <QThread>
#include <cstdio>
#include <cstring>

int main(int argc, char** argv) {
    if ((argc == 5 || argc == 6) && std::strcmp(argv[1], "keys") == 0) {
        TIniFile ini(QString::fromLocal8Bit(argv[2]));
        const QString prefix = QString::fromLocal8Bit(argv[3]);
        const int count = std::atoi(argv[4]);
        for (int i = 0; i < count; ++i) {
            ini.WriteString(QStringLiteral("Data"), prefix + QString::number(i),
                            QStringLiteral("value %1 of %2").arg(i).arg(prefix));
            if (i == 0 && argc == 6) {
                const QString partner = QString::fromLocal8Bit(argv[5]) + QLatin1Char('0');
                while (!ini.ValueExists(QStringLiteral("Data"), partner))
                    QThread::msleep(1);
            }
        }
        return 0;
    }
    if (argc == 3 && std::strcmp(argv[1], "versions") == 0) {
        TIniFile ini(QString::fromLocal8Bit(argv[2]));
        for (int n = 1;; ++n) {
            const QChar letter(u'a' + n % 26);
            ini.WriteString(QStringLiteral("Data"), QStringLiteral("payload"),
                            QString::number(n) + QLatin1Char(':') + QString(100000, letter));
            if (n == 1) {
                std::puts("started");
                std::fflush(stdout);
            }
        }
    }
    if (argc == 4 && std::strcmp(argv[1], "erase") == 0) {
        TIniFile ini(QString::fromLocal8Bit(argv[2]));
        const QString key = QString::fromLocal8Bit(argv[3]);
        for (int n = 0; n < 1000000; ++n) {
            ini.EraseSection(QStringLiteral("None"));
            if (ini.ValueExists(QStringLiteral("Data"), key))
                return 0;
        }
        return 1;
    }
    std::fputs(
        "usage: qx_ini_writer keys FILE PREFIX COUNT [PARTNER] | versions FILE | erase FILE KEY\n",
        stderr);
    return 2;
}
