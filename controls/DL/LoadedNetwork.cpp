#include "controls/DL/HttpNetwork.h"
#include "controls/DL/Network.h"
#include "platform/Host.h"
#include "platform/RuntimeError.h"

#include <QFile>
#include <QLibrary>

// The network as a module beside the executable. Its libraries are many, and loading them takes a
// twentieth of a start, so that they come only when they are needed. The module's name holds the
// version, so that one of another version is never taken.
namespace controls {

using namespace Qt::StringLiterals;

template <typename Function>
static Function *inModule(const char *name)
{
    const QString path = platform::host().programFolder() + QStringLiteral("/" NETWORK_MODULE);
    QLibrary module(path);
    module.setLoadHints(QLibrary::PreventUnloadHint); // the toolkit keeps pointers into it
    const auto function = reinterpret_cast<Function *>(module.resolve(name));
    if (!function)
        throw platform::RuntimeError(
            platform::ErrorNumber::FileNotFound,
            u"The part of the program that fetches cannot be loaded: "_s +
                (QFile::exists(path) ? module.errorString() : path + u" is missing"_s));
    return function;
}

std::unique_ptr<Network> makeNetwork()
{
    return std::unique_ptr<Network>(inModule<decltype(newHttpNetwork)>("newHttpNetwork")());
}

void prepareNetwork()
{
    inModule<decltype(useSystemProxies)>("useSystemProxies")();
}

} // namespace controls
