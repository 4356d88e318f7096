#include "tests/support/System.h"

#include "tests/support/Files.h"

#include <sys/socket.h>
#include <sys/stat.h>

namespace testing_support {

using namespace Qt::StringLiterals;

void resetAtEnd(qintptr socket)
{
    const linger atOnce{.l_onoff = 1, .l_linger = 0};
    setsockopt(static_cast<int>(socket), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
}

// A pipe that nobody fills keeps the process that reads it.
void makeSlowBatch(const QString &folder)
{
    makeFile(folder + u"/header"_s, "header");
    if (mkfifo(QFile::encodeName(folder + u"/audio"_s).constData(), 0600) != 0)
        qFatal("The pipe could not be made");
}

void endSlowBatch(const QString &folder)
{
    makeFile(folder + u"/audio"_s, "audio");
}

QString accentForBatches()
{
    return u"é"_s;
}

} // namespace testing_support
