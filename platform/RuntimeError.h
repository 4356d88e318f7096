#pragma once

#include <QString>

#include <exception>

namespace platform {

/// The numbers under which the system's run-time errors are known to users and logs.
enum class ErrorNumber : int {
    InvalidProcedureCall = 5,
    Overflow = 6,
    DivisionByZero = 11,
    TypeMismatch = 13,
    InternalError = 51, ///< a failure that the program does not know by a number of its own
    FileNotFound = 53,
    FileAlreadyExists = 58,
    DiskFull = 61,
    PermissionDenied = 70,
    PathFileAccess = 75,
    PathNotFound = 76,
    InvalidUseOfNull = 94,
    InvalidPropertyValue = 380,
    DuplicateKey = 457,
    NoCurrentRow = 3021,
    DatabaseFileNotFound = 3024,
    WrongDatabasePassword = 3031,
    RowDeleted = 3167,
    RowChanged = 3197,
    NotUpdatable = 3251,
    UnknownField = 3265,
    NotADatabase = 3343,
    ObjectClosed = 3704,
    ObjectOpen = 3705,
    DatabaseEngine = 3709, ///< the description is the engine's own message
};

/// The one exception of the system: a number and a description in plain words.
class RuntimeError : public std::exception
{
public:
    /// An error with the standard description of its number.
    explicit RuntimeError(ErrorNumber number);
    RuntimeError(ErrorNumber number, QString description);

    ErrorNumber number() const { return m_number; }
    const QString &description() const { return m_description; }
    /// The description in UTF-8.
    const char *what() const noexcept override { return m_what.constData(); }

private:
    ErrorNumber m_number;
    QString m_description;
    QByteArray m_what;
};

} // namespace platform
