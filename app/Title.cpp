#include "app/Module1.h"
#include "app/Version.h"

namespace app {

using namespace Qt::StringLiterals;

QString programTitle()
{
    return u"Ostravelin"_s;
}

QString versionText()
{
    return u"%1.%2.%3"_s.arg(programVersion.major)
        .arg(programVersion.minor)
        .arg(programVersion.revision);
}

QString WindowTitle()
{
    return programTitle() + u' ' + versionText();
}

} // namespace app
