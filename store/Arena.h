#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace store {

/// Memory for many small pieces that go at once. It is kept for the next ones, because fresh memory
/// costs the system more time than filling it.
class Arena
{
public:
    /// Memory for a piece, aligned for any number, until clear().
    std::byte *allocate(std::size_t size)
    {
        size = (size + alignment - 1) / alignment * alignment;
        while (m_current < m_blocks.size() && m_blocks[m_current].size() - m_used < size) {
            ++m_current;
            m_used = 0;
        }
        if (m_current == m_blocks.size())
            m_blocks.emplace_back(std::max(size, usualBlockSize));
        std::byte *piece = m_blocks[m_current].data() + m_used;
        m_used += size;
        return piece;
    }

    void clear()
    {
        m_current = 0;
        m_used = 0;
    }

private:
    static constexpr std::size_t alignment = 8;
    static constexpr std::size_t usualBlockSize = 65536;

    std::vector<std::vector<std::byte>> m_blocks;
    std::size_t m_current = 0; ///< index of the block in use
    std::size_t m_used = 0;    ///< bytes of it
};

} // namespace store
