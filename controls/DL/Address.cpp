#include "controls/DL/Address.h"

namespace controls {

using namespace Qt::StringLiterals;

static bool isSecure(const QUrl &url)
{
    return url.scheme() == "https"_L1;
}

bool isFetchable(const QUrl &url)
{
    return (url.scheme() == "http"_L1 || isSecure(url)) && !url.host().isEmpty();
}

bool mayLeadTo(const QUrl &from, const QUrl &to)
{
    return isFetchable(to) && (isSecure(to) || !isSecure(from));
}

} // namespace controls
