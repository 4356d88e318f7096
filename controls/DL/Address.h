#pragma once

#include <QUrl>

namespace controls {

/// Whether the downloader fetches such an address at all: a host by http or https. The network
/// stack would open local files, too, and ask a proxy for an address without a host.
bool isFetchable(const QUrl &url);

/// Whether a server may send the downloader on from one address to the other: to what it fetches,
/// and never from https down to http.
bool mayLeadTo(const QUrl &from, const QUrl &to);

} // namespace controls
