// Bytes grow with the values, so the least value of each byte defines the encoding. A table over
// equal parts of the range yields a first byte, and a few comparisons lead from there to the right
// one.
//
// Tested by tests/picture/SqxByteEncoderTest.cpp.

#include "picture/SqxByteEncoder.h"

#include <cmath>
#include <limits>

namespace {

float Encoded(float value, SqxEncoding encoding)
{
    if (encoding == SqxEncoding::Linear)
        return value;
    if (value <= 0.0031308F)
        return value * 12.92F;
    return 1.055F * std::pow(value, 1 / 2.4F) - 0.055F;
}

float Decoded(float value, SqxEncoding encoding)
{
    if (encoding == SqxEncoding::Linear)
        return value;
    if (value <= 0.04045F)
        return value / 12.92F;
    return std::pow((value + 0.055F) / 1.055F, 2.4F);
}

/// Returns the least value that becomes this byte or a higher one. Because of rounding, the inverse
/// of the encoding is only a first guess.
float LeastOf(unsigned int byte, SqxEncoding encoding)
{
    const auto isLower = [&](float value) {
        return std::lround(Encoded(value, encoding) * 255) < static_cast<long>(byte);
    };
    float value = Decoded((static_cast<float>(byte) - 0.5F) / 255, encoding);
    while (isLower(value))
        value = std::nextafter(value, 2.0F);
    for (float below = std::nextafter(value, 0.0F); !isLower(below);
         below = std::nextafter(value, 0.0F))
        value = below;
    return value;
}

}  // namespace

SqxByteEncoder::SqxByteEncoder(SqxEncoding encoding)
{
    m_least[0] = 0;
    for (unsigned int byte = 1; byte < 256; ++byte)
        m_least[byte] = LeastOf(byte, encoding);
    m_least[256] = std::numeric_limits<float>::infinity();

    unsigned int byte = 0;
    for (unsigned int part = 0; part < k_parts; ++part) {
        while (static_cast<float>(part) / k_parts >= m_least[byte + 1])
            ++byte;
        m_first[part] = static_cast<unsigned char>(byte);
    }
}
