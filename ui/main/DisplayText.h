#pragma once

#include <QLocale>
#include <QString>

#include <chrono>

// Numbers and moments as texts for people, in the form of their locale.
namespace ui {

/// Decimal kilobytes (1000 bytes) in the shortest form without grouping or exponent: "1234.567".
QString kilobytesText(qint32 bytes, const QLocale &locale = QLocale::system());

/// A speed with exactly two decimals, grouped as the locale does: "10,000.00".
QString speedText(double kilobytesPerSecond, const QLocale &locale = QLocale::system());

/// The locale's short date and its time with seconds.
QString momentText(std::chrono::local_seconds moment, const QLocale &locale = QLocale::system());

/// A number from 0 to 99 with two digits.
QString twoDigits(qint64 number);

} // namespace ui
