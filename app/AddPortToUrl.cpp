#include "app/Module1.h"
#include "platform/RuntimeError.h"

namespace app {

using namespace Qt::StringLiterals;

QString AddPortToUrl(const QString &address)
{
    constexpr qsizetype schemeLength = 7; // "http://"
    const qsizetype path = address.indexOf(u'/', schemeLength);
    if (path < 0)
        throw platform::RuntimeError(platform::ErrorNumber::InvalidProcedureCall);
    return address.left(path) + u":80"_s + address.mid(path);
}

} // namespace app
