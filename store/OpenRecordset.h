#pragma once

#include "store/Recordset.h"

namespace store {

/// Keeps a recordset open for the object's own life, however that ends.
class OpenRecordset
{
public:
    /// Opens the rows of a source. Raises what setSource() and open() raise.
    OpenRecordset(Recordset &rows, const QString &source)
        : m_rows(rows)
    {
        rows.setSource(source);
        rows.open();
    }
    OpenRecordset(const OpenRecordset &) = delete;
    OpenRecordset &operator=(const OpenRecordset &) = delete;
    ~OpenRecordset()
    {
        if (m_rows.isOpen()) // a failed requery() has closed it
            m_rows.close();
    }

    Recordset *operator->() const { return &m_rows; }
    Recordset &operator*() const { return m_rows; }

private:
    Recordset &m_rows;
};

} // namespace store
