#pragma once

#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

// Times of repeated actions, and how they are printed.

struct Spread
{
    double low, median, high; ///< the middle half
};

inline Spread spreadOf(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return {values[values.size() / 4], values[values.size() / 2], values[values.size() * 3 / 4]};
}

inline void print(const char *name, const char *unit, const Spread &spread)
{
    std::printf("%-18s %7.3f %-2s  (middle half %.3f to %.3f)\n", name, spread.median, unit,
                spread.low, spread.high);
}

/// How long the action takes.
template <typename Action>
double milliseconds(Action &&action)
{
    QElapsedTimer clock;
    clock.start();
    action();
    return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}
