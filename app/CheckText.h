#pragma once

#include <QString>

#include <chrono>

// Moments, ages and sizes as the check tells them to a person.
namespace app {

/// "today 06:55", "yesterday 06:55", "Monday 23-11-26 06:55", as seen from `now`.
QString minuteText(std::chrono::local_seconds moment, std::chrono::local_seconds now);

/// The same with seconds: "today 06:55:05".
QString secondText(std::chrono::local_seconds moment, std::chrono::local_seconds now);

/// "34 min ago", "28 h 59 min ago", "3 days ago".
QString ageText(qint64 seconds);

/// "999 bytes", "1920 kB" (of 1000 bytes).
QString sizeText(qint64 bytes);

} // namespace app
