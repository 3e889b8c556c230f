#pragma once

#include "QXExport.h"

#include <QByteArray>
#include <QString>
#include <exception>

// The root of every exception the library raises; Message() is the text shown to users.
//
// Example:
//
//     try {
//         value = StrToInt(text);
//     } catch (const Exception& e) {
//         ShowMessage(e.Message()); // "'x' is not a valid integer value"
//     }
class QXT_EXPORT Exception : public std::exception {
public:
    // An exception carrying message.
    explicit Exception(QString message);
    ~Exception() override;
    // The text shown to users.
    const QString& Message() const { return m_message; }
    // Message() in UTF-8.
    const char* what() const noexcept override { return m_utf8.constData(); }

private:
    QString m_message;
    QByteArray m_utf8;
};

// The framework's conversion error: bad numbers, impossible assignments.
class QXT_EXPORT EConvertError : public Exception {
public:
    // Carries message.
    using Exception::Exception;
};

// Raised by operations a class declares but does not implement.
class QXT_EXPORT EAbstractError : public Exception {
public:
    EAbstractError();
};

// Raised for unknown picture formats and unreadable pictures.
class QXT_EXPORT EInvalidGraphic : public Exception {
public:
    // Carries message.
    using Exception::Exception;
};

// Failures of file access (open, create, read, write).
class QXT_EXPORT EInOutError : public Exception {
public:
    // Carries message.
    using Exception::Exception;
};

// Errors of integer arithmetic.
class QXT_EXPORT EIntError : public Exception {
public:
    // Carries message.
    using Exception::Exception;
};

// The integer division error: a divisor of 0 ("Division durch Null").
class QXT_EXPORT EDivByZero : public EIntError {
public:
    EDivByZero();
};

// An operation the object cannot carry out in its present state.
class QXT_EXPORT EInvalidOperation : public Exception {
public:
    // Carries message.
    using Exception::Exception;
};

// Integer division truncating toward zero, as the framework's div: raises EDivByZero for a
// divisor of 0 instead of stopping the process.
QXT_EXPORT int IntDiv(int a, int b);
// The remainder of IntDiv (the framework's mod); raises EDivByZero for a divisor of 0.
QXT_EXPORT int IntMod(int a, int b);

// The framework's integer conversion: decimal, or hexadecimal with "$" or "0x";
// raises EConvertError ("'x' is not a valid integer value").
QXT_EXPORT int StrToInt(const QString& s);
QXT_EXPORT int StrToIntDef(const QString& s, int def);
// The same conversion without raising; false for text that is not an integer.
QXT_EXPORT bool TryStrToInt(const QString& s, int& value);
// Removes leading and trailing characters up to and including the space (blanks and controls).
QXT_EXPORT QString Trim(const QString& s);
QXT_EXPORT QString TrimLeft(const QString& s);
QXT_EXPORT QString TrimRight(const QString& s);

class QDate;
class QDateTime;
class QTime;
// A date as "dd.mm.yyyy", the package's German format.
QXT_EXPORT QString DateToStr(const QDate& value);
// A time of day as "hh:nn:ss".
QXT_EXPORT QString TimeToStr(const QTime& value);
// A date and time as "dd.mm.yyyy hh:nn:ss" in the package's German format; the time is left
// out when it is exactly midnight.
QXT_EXPORT QString DateTimeToStr(const QDateTime& value);
