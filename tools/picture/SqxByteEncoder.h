#pragma once

#include <array>
#include <vector>

/// Whether the values of a picture are encoded for a screen.
enum class SqxEncoding { Srgb, Linear };

/// Makes bytes of linear values as a screen takes them, with a table in place of the powers.
class SqxByteEncoder {
public:
    explicit SqxByteEncoder(SqxEncoding encoding);

    /// The nearest byte; values are clamped to 0 and 1, and what is no number is 0.
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

    std::array<float, 257> m_least;  // value that becomes the byte; there is none of 256
    std::array<unsigned char, k_parts> m_first;  // byte in that part of the values from 0 to 1
};
