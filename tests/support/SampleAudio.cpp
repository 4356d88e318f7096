#include "tests/support/SampleAudio.h"

#include <array>

namespace testing_support {

// Appends numbers of a few bits each, highest bit first.
class BitWriter
{
public:
    void put(unsigned value, int bits)
    {
        for (int bit = bits - 1; bit >= 0; --bit) {
            if (m_used % 8 == 0)
                m_bytes.append('\0');
            if ((value >> bit & 1U) != 0)
                m_bytes.back() = static_cast<char>(m_bytes.back() | 0x80 >> m_used % 8);
            ++m_used;
        }
    }

    void skip(int bits)
    {
        for (int bit = 0; bit < bits; ++bit)
            put(0, 1);
    }

    QByteArray padded(int size) const { return m_bytes.leftJustified(size, '\0'); }

private:
    QByteArray m_bytes;
    int m_used = 0;
};

// The lowest of the 32 bands alone is used. Its samples, 1500 a second, run 0 + 0 - with a period
// of four: a tone of 375 Hz. 36 samples make a frame, so all frames are alike.
static QByteArray frame()
{
    BitWriter bits;
    bits.put(0xFFF, 12); // sync
    bits.put(0b1101, 4); // MPEG-1, Layer II, without checksum
    bits.put(0b1000, 4); // 128 kbit/s
    bits.put(0b0100, 4); // 48 kHz, no padding
    bits.put(0, 8);      // stereo
    // Allocation, left and right in turn: three steps for the lowest band, nothing for the others.
    bits.put(1, 4);
    bits.put(1, 4);
    bits.skip(2 * (10 * 4 + 12 * 3 + 4 * 2));
    for (int channel = 0; channel < 2; ++channel)
        bits.put(0b10, 2); // one scale factor for the whole frame
    for (int channel = 0; channel < 2; ++channel)
        bits.put(14, 6); // 2 dB a step: about 26 dB below full scale
    constexpr std::array<unsigned, 4> Steps = {1, 2, 1, 0};
    for (unsigned sample = 0; sample < 36; sample += 3) {
        const unsigned three =
            Steps[sample % 4] + 3 * Steps[(sample + 1) % 4] + 9 * Steps[(sample + 2) % 4];
        for (int channel = 0; channel < 2; ++channel)
            bits.put(three, 5);
    }
    return bits.padded(SampleFrameBytes);
}

QByteArray sampleAudio(int frames)
{
    return frame().repeated(frames);
}

} // namespace testing_support
