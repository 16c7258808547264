// Compares the encoder, which uses a table, with the formulas of both encodings, and checks values
// out of range.

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "picture/SqxByteEncoder.h"

namespace {

long NearestByte(float value, SqxEncoding encoding)
{
    float encoded = value;
    if (encoding == SqxEncoding::Srgb)
        encoded =
            value <= 0.0031308F ? value * 12.92F : 1.055F * std::pow(value, 1 / 2.4F) - 0.055F;
    return std::lround(encoded * 255);
}

}  // namespace

TEST(SqxByteEncoder, GivesTheNearestByte)
{
    for (const SqxEncoding encoding : {SqxEncoding::Srgb, SqxEncoding::Linear}) {
        const SqxByteEncoder toByte(encoding);
        long last = 0;
        for (int i = 0; i <= 300000; ++i) {
            const float value = static_cast<float>(i) / 300000;
            ASSERT_EQ(toByte(value), NearestByte(value, encoding)) << value;
            ASSERT_LE(toByte(value) - last, 1) << "a byte is left out at " << value;
            last = toByte(value);
        }
        EXPECT_EQ(last, 255);
    }
}

TEST(SqxByteEncoder, ClampsValuesOutOfRange)
{
    constexpr float k_infinity = std::numeric_limits<float>::infinity();
    const SqxByteEncoder toByte(SqxEncoding::Srgb);
    for (const float dark : {-0.0F, -1.0F, -k_infinity, std::nanf("")})
        EXPECT_EQ(toByte(dark), 0) << dark;
    for (const float bright : {1.0F, 1.5F, k_infinity})
        EXPECT_EQ(toByte(bright), 255) << bright;
    EXPECT_EQ(toByte(std::numeric_limits<float>::denorm_min()), 0);
    EXPECT_EQ(toByte(std::nextafter(1.0F, 0.0F)), 255);
}
