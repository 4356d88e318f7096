#include "tests/support/System.h"

#include "tests/support/Files.h"

#include <winsock2.h>

namespace testing_support {

using namespace Qt::StringLiterals;

void resetAtEnd(qintptr socket)
{
    const linger atOnce{.l_onoff = 1, .l_linger = 0};
    setsockopt(static_cast<SOCKET>(socket), SOL_SOCKET, SO_LINGER,
               reinterpret_cast<const char *>(&atOnce), sizeof atOnce);
}

void makeSlowBatch(const QString &folder)
{
    makeFile(folder + u"/header"_s, "header");
    makeFile(folder + u"/audio"_s, "audio");
    makeFile(folder + u"/slow.bat"_s,
             ":wait\r\nping -n 2 127.0.0.1 > nul\r\nif not exist go goto wait\r\n"
             "copy /b header + audio out");
}

void endSlowBatch(const QString &folder)
{
    makeFile(folder + u"/go"_s, {});
}

// Wine's interpreter reads batches in the OEM code page, whichever the console has.
QString accentForBatches()
{
    const bool isWine = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version");
    return isWine ? u"e"_s : u"é"_s;
}

} // namespace testing_support
