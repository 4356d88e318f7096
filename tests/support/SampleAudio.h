#pragma once

#include <QByteArray>

namespace testing_support {

constexpr int SampleFrameMilliseconds = 24;

/// That many frames of a soft steady tone of 375 Hz: MPEG-1 Layer II, 48 kHz, stereo, 128 kbit/s.
inline QByteArray sampleAudio(int frames)
{
    // The lowest of the 32 bands alone is used. Its samples, 1500 a second, run 0 + 0 - with a
    // period of four. 36 samples make a frame, so all frames are alike.
    constexpr int frameBytes = 384;
    const QByteArray frame =
        QByteArray::fromHex("fffd8400") +                   // kind, bit and sample rate, stereo
        QByteArray::fromHex("11").leftJustified(22, '\0') + // three steps for the lowest band
        QByteArray::fromHex("a38e") +                       // about 26 dB below full scale
        QByteArray::fromHex("842b5528a5").repeated(3);      // the samples, three at a time
    return frame.leftJustified(frameBytes, '\0').repeated(frames);
}

} // namespace testing_support
