#include "SysUtils.h"

#include <QDateTime>

Exception::Exception(QString message) : m_message(std::move(message)), m_utf8(m_message.toUtf8()) {}

Exception::~Exception() = default;

EAbstractError::EAbstractError() : Exception(QStringLiteral("Abstract Error")) {}

EDivByZero::EDivByZero() : EIntError(QStringLiteral("Division durch Null")) {}

int IntDiv(int a, int b) {
    if (b == 0)
        throw EDivByZero();
    return a / b;
}

int IntMod(int a, int b) {
    if (b == 0)
        throw EDivByZero();
    return a % b;
}

bool TryStrToInt(const QString& s, int& value) {
    const QString t = s.trimmed();
    bool ok = false;
    qlonglong v = 0;
    bool negative = false;
    QString digits = t;
    if (digits.startsWith(QLatin1Char('-')) || digits.startsWith(QLatin1Char('+'))) {
        negative = digits.startsWith(QLatin1Char('-'));
        digits = digits.mid(1);
    }
    if (digits.startsWith(QLatin1Char('$')))
        v = digits.mid(1).toLongLong(&ok, 16);
    else if (digits.startsWith(QLatin1String("0x"), Qt::CaseInsensitive))
        v = digits.mid(2).toLongLong(&ok, 16);
    else if (!digits.isEmpty() && digits[0].isDigit())
        v = digits.toLongLong(&ok, 10);
    if (!ok)
        return false;
    if (negative)
        v = -v;
    // Hexadecimal text may name the full 32-bit pattern ($FFFFFFFF = -1), as the framework allows.
    if (v > 0xFFFFFFFFLL || v < -0x80000000LL)
        return false;
    value = static_cast<int>(static_cast<quint32>(v));
    return true;
}

int StrToInt(const QString& s) {
    int v = 0;
    if (!TryStrToInt(s, v))
        throw EConvertError(QStringLiteral("'%1' is not a valid integer value").arg(s));
    return v;
}

int StrToIntDef(const QString& s, int def) {
    int v = 0;
    return TryStrToInt(s, v) ? v : def;
}

namespace {
bool isTrimmed(QChar c) {
    return c.unicode() <= 0x20;
}
} // namespace

QString TrimLeft(const QString& s) {
    qsizetype i = 0;
    while (i < s.size() && isTrimmed(s[i]))
        ++i;
    return s.mid(i);
}

QString TrimRight(const QString& s) {
    qsizetype n = s.size();
    while (n > 0 && isTrimmed(s[n - 1]))
        --n;
    return s.left(n);
}

QString Trim(const QString& s) {
    return TrimLeft(TrimRight(s));
}

QString DateToStr(const QDate& value) {
    return value.toString(QStringLiteral("dd.MM.yyyy"));
}

QString TimeToStr(const QTime& value) {
    return value.toString(QStringLiteral("hh:mm:ss"));
}

QString DateTimeToStr(const QDateTime& value) {
    const QString date = DateToStr(value.date());
    if (value.time() == QTime(0, 0))
        return date;
    return date + u' ' + TimeToStr(value.time());
}
