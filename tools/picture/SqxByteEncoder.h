#pragma once

#include <array>
#include <vector>

/// How the values of a picture are stored in its file: encoded for a screen, or linear.
enum class SqxEncoding { Srgb, Linear };

/// Converts linear values to bytes, by a table in place of the powers of the sRGB encoding.
class SqxByteEncoder {
public:
    explicit SqxByteEncoder(SqxEncoding encoding);

    /// Returns the nearest byte. Values below 0 or above 1 are clamped; NaN becomes 0.
    [[nodiscard]] unsigned char operator()(float value) const
    {
        if (!(value > 0))
            return 0;
        if (value >= 1)
            return 255;
        unsigned int byte = m_first[static_cast<unsigned int>(value * k_parts)];
        while (value >= m_least[byte + 1])
            ++byte;
        return static_cast<unsigned char>(byte);
    }

private:
    static constexpr unsigned int k_parts = 4096;

    std::array<float, 257> m_least;  // least value of each byte; the last one is infinite
    std::array<unsigned char, k_parts> m_first;  // by part of the range: byte of its least value
};
