#include "app/Module1.h"
#include "tests/fuzz/Fuzz.h"

using namespace Qt::StringLiterals;

// The port stands before a slash, and all the rest is as it was.
int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    fuzz::allowingErrors([&] {
        const QString address = fuzz::text(data, size);
        QString changed = app::AddPortToUrl(address);
        const qsizetype port = changed.indexOf(u":80/"_s, 7);
        fuzz::require(port >= 7);
        fuzz::require(!QStringView(changed).mid(7, port - 7).contains(u'/'));
        fuzz::require(changed.remove(port, 3) == address);
    });
    return 0;
}
