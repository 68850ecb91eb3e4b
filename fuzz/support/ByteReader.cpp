#include <fuzz/support/ByteReader.h>

#include <cmath>
#include <iterator>
#include <limits>

namespace Vell::Fuzz {

namespace {

using Limits = std::numeric_limits<float>;

constexpr float absurdMeasures[] = {0.0F,
                                    -0.0F,
                                    -1.0F,
                                    -12.0F,
                                    1e9F,
                                    -1e9F,
                                    3.4e7F,
                                    65535.0F,
                                    65536.0F,
                                    32767.0F,
                                    1e5F,
                                    1e-5F,
                                    Limits::max(),
                                    Limits::lowest(),
                                    Limits::min(),
                                    Limits::denorm_min(),
                                    9.3e18F,
                                    1.5e17F,
                                    5.9e7F,
                                    1.0F / 128,
                                    Limits::infinity(),
                                    -Limits::infinity(),
                                    Limits::quiet_NaN()};

constexpr unsigned int firstAbsurd = 0xC0;
constexpr unsigned int firstMagnitude = 0xE0;

} // namespace

float ByteReader::takeNumber(float usualStep) {
    const unsigned int kind = takeU8();
    const unsigned int detail = takeU8();
    if (kind < firstAbsurd) {
        return static_cast<float>(kind << 8 | detail) * usualStep;
    }
    if (kind < firstMagnitude) {
        return absurdMeasures[detail % std::size(absurdMeasures)];
    }
    const int exponent = static_cast<int>(kind - firstMagnitude) * 8 - 128;
    const float magnitude = std::ldexp(1.0F + static_cast<float>(detail) / 256.0F, exponent);
    return detail % 2 == 0 ? magnitude : -magnitude;
}

} // namespace Vell::Fuzz
