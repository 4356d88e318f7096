#pragma once

#include <QString>

// Texts of statements that the program runs.
namespace store {

/// A text as it may stand between single quotes in a statement or criterion: its own single quotes
/// doubled, so that a task named "Kid's hour" works everywhere.
QString withDoubledQuotes(QString text);

/// Every slot of every active task in the order of day, hour and minute. An active task without
/// slots gives one row whose Dagen and Uren are empty.
QString scheduleStatement();

/// All tasks, in the order of the table.
QString tasksSource();

/// What finds the task of that name among all of them.
QString taskCriterion(const QString &name);

/// The tasks of that name, case not counting.
QString taskStatement(const QString &name);

/// The tasks of that name with one row per slot. One without slots gives one row whose Dagen and
/// Uren are empty.
QString taskWithSlotsStatement(const QString &name);

/// All tasks, the one with the highest minute first.
QString tasksByMinuteStatement();

/// All slots of all tasks.
QString slotsSource();

QString deleteSlotsStatement(const QString &taskName);

} // namespace store
