#include "app/Module1.h"
#include "app/Version.h"

namespace app {

using namespace Qt::StringLiterals;

QString WindowTitle()
{
    return u"Ostravelin %1.%2.%3"_s.arg(programVersion.major)
        .arg(programVersion.minor)
        .arg(programVersion.revision);
}

} // namespace app
