#pragma once

#include <QByteArray>

namespace testing_support {

constexpr int SampleFrameBytes = 384;
constexpr int SampleFrameMilliseconds = 24;

/// That many frames of a soft steady tone of 375 Hz: MPEG-1 Layer II, 48 kHz, stereo, 128 kbit/s.
QByteArray sampleAudio(int frames);

} // namespace testing_support
