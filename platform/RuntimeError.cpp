#include "platform/RuntimeError.h"

#include <utility>

namespace platform {

using namespace Qt::StringLiterals;

static QString standardDescription(ErrorNumber number)
{
    switch (number) {
    case ErrorNumber::InvalidProcedureCall:
        return u"Invalid procedure call or argument"_s;
    case ErrorNumber::Overflow:
        return u"Overflow"_s;
    case ErrorNumber::DivisionByZero:
        return u"Division by zero"_s;
    case ErrorNumber::TypeMismatch:
        return u"Type mismatch"_s;
    case ErrorNumber::InternalError:
        return u"Internal error"_s;
    case ErrorNumber::FileNotFound:
        return u"File not found"_s;
    case ErrorNumber::FileAlreadyExists:
        return u"File already exists"_s;
    case ErrorNumber::DiskFull:
        return u"Disk full"_s;
    case ErrorNumber::PermissionDenied:
        return u"Permission denied"_s;
    case ErrorNumber::PathFileAccess:
        return u"Path/File access error"_s;
    case ErrorNumber::PathNotFound:
        return u"Path not found"_s;
    case ErrorNumber::InvalidUseOfNull:
        return u"Invalid use of Null"_s;
    case ErrorNumber::InvalidPropertyValue:
        return u"Invalid property value"_s;
    case ErrorNumber::DuplicateKey:
        return u"This key is already associated with an element of this collection"_s;
    case ErrorNumber::NoCurrentRow:
        return u"No current row"_s;
    case ErrorNumber::DatabaseFileNotFound:
        return u"The database file was not found"_s;
    case ErrorNumber::WrongDatabasePassword:
        return u"The database was made with another password, or is damaged"_s;
    case ErrorNumber::RowDeleted:
        return u"The row has been deleted"_s;
    case ErrorNumber::RowChanged:
        return u"The row was changed by another user since it was read"_s;
    case ErrorNumber::NotUpdatable:
        return u"These rows can be read only"_s;
    case ErrorNumber::UnknownField:
        return u"There is no field of that name"_s;
    case ErrorNumber::NotADatabase:
        return u"The file is not a database"_s;
    case ErrorNumber::ObjectClosed:
        return u"Operation is not allowed when the object is closed"_s;
    case ErrorNumber::ObjectOpen:
        return u"Operation is not allowed when the object is open"_s;
    case ErrorNumber::DatabaseEngine:
        return u"The database refused the operation"_s;
    }
    return u"Application-defined error"_s;
}

RuntimeError::RuntimeError(ErrorNumber number)
    : RuntimeError(number, standardDescription(number))
{}

RuntimeError::RuntimeError(ErrorNumber number, QString description)
    : m_number(number)
    , m_description(std::move(description))
    , m_what(m_description.toUtf8())
{}

} // namespace platform
