#pragma once

#include "store/Recordset.h"

namespace store {

/// Reads the current row of scheduleStatement(): one slot of one active task. Every reading raises
/// InvalidUseOfNull for an empty field, and numbers raise what Value::toInteger() raises.
class ScheduleRow
{
public:
    /// The recordset must be open, and stay so while rows are read.
    explicit ScheduleRow(const Recordset &rows)
        : m_rows(rows)
    {}

    QString name() const { return m_rows.value(m_name).toText(); }
    QString address() const { return m_rows.value(m_address).toText(); }
    QString fileName() const { return m_rows.value(m_fileName).toText(); }
    /// Whether none of the three texts is empty; cheaper than reading them.
    bool holdsTexts() const
    {
        return m_rows.holdsValue(m_name) && m_rows.holdsValue(m_address) &&
               m_rows.holdsValue(m_fileName);
    }

    int day() const { return m_rows.value(m_day).toInteger(); }
    int hour() const { return m_rows.value(m_hour).toInteger(); }
    int minute() const { return m_rows.value(m_minute).toInteger(); }
    /// Whether the task has slots. One without has a single row, of an empty day and hour.
    bool hasSlot() const { return m_rows.holdsValue(m_day) || m_rows.holdsValue(m_hour); }

private:
    const Recordset &m_rows;
    int m_name = m_rows.fieldIndex(u"Opdrachtgegevens.Opdrachtnaam");
    int m_address = m_rows.fieldIndex(u"Download_adres");
    int m_fileName = m_rows.fieldIndex(u"Filenaam");
    int m_day = m_rows.fieldIndex(u"Dagen");
    int m_hour = m_rows.fieldIndex(u"Uren");
    int m_minute = m_rows.fieldIndex(u"minuten");
};

} // namespace store
