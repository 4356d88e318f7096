#pragma once

#include <QtGlobal>

#include <chrono>

namespace controls {

/// When a transfer that goes nowhere is ended, with its counts as they are then.
struct Limits
{
    /// So long without any data, from the start on.
    std::chrono::milliseconds idle = std::chrono::seconds(30);
    /// Fewer than `leastBytes` stored in any one period: 1 kB/s on average over 60 s.
    std::chrono::milliseconds period = std::chrono::seconds(60);
    qint64 leastBytes = 60'000;
    /// So many bytes stored without an announced length: a live stream, which never ends. At most
    /// 2,147,483,646.
    qint64 mostUnannounced = qint64{20} * 1024 * 1024;
};

} // namespace controls
