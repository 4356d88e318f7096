#pragma once

#include <QDate>
#include <QTime>

#include <chrono>

// Local wall-clock moments, which have no zone, between the clock's form and the calendar's.
namespace platform {

constexpr std::chrono::local_seconds localMoment(int year, int month, int day, int hour, int minute,
                                                 int second)
{
    const std::chrono::year_month_day date{std::chrono::year{year},
                                           std::chrono::month{static_cast<unsigned>(month)},
                                           std::chrono::day{static_cast<unsigned>(day)}};
    return std::chrono::local_days{date} + std::chrono::hours{hour} + std::chrono::minutes{minute} +
           std::chrono::seconds{second};
}

inline QDate dateOf(std::chrono::local_seconds moment)
{
    const auto day = std::chrono::floor<std::chrono::days>(moment);
    return QDate(1970, 1, 1).addDays(day.time_since_epoch().count());
}

inline QTime timeOf(std::chrono::local_seconds moment)
{
    const auto day = std::chrono::floor<std::chrono::days>(moment);
    return QTime(0, 0).addSecs(static_cast<int>((moment - day).count()));
}

} // namespace platform
