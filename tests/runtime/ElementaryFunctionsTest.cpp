// Compares the elementary functions with references in double precision. QxElementary.h states the
// greatest errors. If the environment variable SLC_ALL_FLOATS is set, the errors are measured for
// all arguments that have a reference, or for 2^28 pairs of arguments, and printed.

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <limits>

#include "QxBuiltInNames.h"

namespace {

float FloatOf(std::uint32_t bits)
{
    float x = 0;
    std::memcpy(&x, &bits, sizeof x);
    return x;
}

/// Returns the distance from the exact value in units of the last place of a float; infinity if
/// only one of the two is NaN, and 0 if both are.
double ErrorOf(float value, double exact)
{
    if (std::isnan(value) || std::isnan(exact))
        return std::isnan(value) && std::isnan(exact) ? 0 : INFINITY;
    // Infinity counts as the next number after the greatest float.
    const double next = std::ldexp(1.0, 128);
    const double got = std::isinf(value) ? std::copysign(next, value) : value;
    const double wanted = std::fmin(std::fmax(exact, -next), next);
    const int exponent = wanted == 0 ? -200 : std::ilogb(wanted);
    return std::fabs(got - wanted) / std::ldexp(1.0, std::max(exponent, -126) - 23);
}

struct Function {
    const char* name;
    double bound;           // of the error
    std::uint32_t largest;  // bits of the largest magnitude with a reference
    bool isOfNegative;
    float (*value)(float);
    double (*reference)(double);
};

constexpr std::uint32_t k_infinity = 0x7f800000;
constexpr std::uint32_t k_one = 0x3f800000;
constexpr std::uint32_t k_turns = 0x4d800000;  // 2^28

#define VALUE(NAME)                                                                                \
    [](float x) {                                                                                  \
        float r = 0;                                                                               \
        NAME(r, x);                                                                                \
        return r;                                                                                  \
    }

// clang-format off
const Function k_functions[] = {
    {"exp", 0.60, k_infinity, true, VALUE(CALL_PRIM_EXP), [](double x) { return std::exp(x); }},
    {"log", 0.60, k_infinity, false, VALUE(CALL_PRIM_LOG), [](double x) { return x == 0 ? 0 : std::log(x); }},
    {"sin", 0.70, k_turns, true, VALUE(CALL_PRIM_SIN), [](double x) { return std::sin(x); }},
    {"cos", 0.70, k_turns, true, VALUE(CALL_PRIM_COS), [](double x) { return std::cos(x); }},
    {"tan", 0.80, k_turns, true, VALUE(CALL_PRIM_TAN), [](double x) { return std::tan(x); }},
    {"asin", 0.60, k_one, true, VALUE(CALL_PRIM_ASIN), [](double x) { return std::asin(x); }},
    {"acos", 0.60, k_one, true, VALUE(CALL_PRIM_ACOS), [](double x) { return std::acos(x); }},
    {"atan", 0.60, k_infinity, true, VALUE(CALL_PRIM_ATAN), [](double x) { return std::atan(x); }},
};
// clang-format on

bool AreAllWanted()
{
    return std::getenv("SLC_ALL_FLOATS") != nullptr;
}

struct Worst {
    double error = 0;
    float x = 0;
    float y = 0;

    void Take(double next, float atX, float atY)
    {
        if (next > error)
            *this = {next, atX, atY};
    }
    void Expect(const char* name, double bound) const
    {
        if (AreAllWanted())
            std::printf("%-6s %.4f at %a, %a\n", name, error, x, y);
        EXPECT_LE(error, bound) << name << " of " << x << ", " << y;
    }
};

/// A random generator, since pairs of arguments must not form a grid.
class Numbers {
public:
    std::uint32_t Next()
    {
        m_state = m_state * 6364136223846793005U + 1442695040888963407U;
        return static_cast<std::uint32_t>(m_state >> 32);
    }
    /// Returns a number of either sign, with a magnitude from 2^-bits to 2^bits.
    float Within(int bits)
    {
        const float fraction = 1 + static_cast<float>(Next() >> 9) * 0x1p-23F;
        const int exponent = static_cast<int>(Next() % static_cast<unsigned int>(2 * bits)) - bits;
        return std::ldexp(Next() & 1 ? -fraction : fraction, exponent);
    }

private:
    std::uint64_t m_state = 1;
};

float PowOf(float x, float y)
{
    float r = 0;
    CALL_PRIM_POW(r, x, y);
    return r;
}

float AtanOf(float y, float x)
{
    float r = 0;
    CALL_PRIM_ATAN2(r, y, x);
    return r;
}

}  // namespace

TEST(ElementaryFunctions, StayWithinTheirStatedErrors)
{
    const std::uint32_t step = AreAllWanted() ? 1 : 4099;
    for (const Function& f : k_functions) {
        Worst worst;
        for (const std::uint32_t sign : {0U, 0x80000000U}) {
            for (std::uint32_t bits = 0; bits <= f.largest; bits += step) {
                const float x = FloatOf(bits | sign);
                worst.Take(ErrorOf(f.value(x), f.reference(x)), x, 0);
            }
            if (!f.isOfNegative)
                break;
        }
        worst.Expect(f.name, f.bound);
    }
}

TEST(ElementaryFunctions, OfTwoArgumentsStayWithinTheirStatedErrors)
{
    const std::uint32_t count = AreAllWanted() ? 1U << 28 : 1U << 19;
    Numbers numbers;
    Worst pow;
    Worst atan;
    for (std::uint32_t i = 0; i < count; ++i) {
        // Most powers are in the range of floats, some are outside of it.
        const float base = std::fabs(numbers.Within(i % 4 == 0 ? 126 : 8));
        const double range = 150 / std::fmax(std::fabs(std::log2(base)), 1e-6);
        const auto y =
            static_cast<float>((static_cast<double>(numbers.Next()) * 0x1p-31 - 1) * range);
        pow.Take(ErrorOf(PowOf(base, y), std::pow(static_cast<double>(base), y)), base, y);
        const float up = numbers.Within(i % 4 == 0 ? 126 : 8);
        const float across = numbers.Within(i % 4 == 0 ? 126 : 8);
        atan.Take(ErrorOf(AtanOf(up, across), std::atan2(static_cast<double>(up), across)), up,
                  across);
    }
    pow.Expect("pow", 0.65);
    atan.Expect("atan2", 0.60);
}

// Kernels and shared objects use different forms of the power.
TEST(ElementaryFunctions, PowersHaveTheSameBitsInAllForms)
{
    const auto areSame = [](float a, float b) {
        return std::bit_cast<unsigned>(a) == std::bit_cast<unsigned>(b) ||
               (std::isnan(a) && std::isnan(b));
    };
    const float odd[] = {0,         -0.0F,         1,        2,      -1,
                         3,         0.5F,          1e30F,    1e-40F, INFINITY,
                         -INFINITY, std::nanf(""), 16777215, -2};
    Numbers numbers;
    const auto next = [&](int i, int period) {
        if (i % period == 0)
            return odd[numbers.Next() % std::size(odd)];
        return i % 2 == 0 ? FloatOf(numbers.Next()) : numbers.Within(5);
    };
    for (int i = 0; i < 400'000; ++i) {
        const float x = next(i, 5);
        const float y = next(i, 7);
        const float power = QxPowInVectors(x, y);
        EXPECT_PRED2(areSame, QxPow(x, y), power) << x << " to the power of " << y;
        EXPECT_PRED2(areSame, QxPowAtPoint(x, y), power) << x << " to the power of " << y;
        if (!(x < 0)) {
            EXPECT_PRED2(areSame, QxPowOfNonNegative(x, y), power) << x << " to the power of " << y;
        }
    }
}

TEST(ElementaryFunctions, AreExactForSimpleArguments)
{
    // The machine relies on the first power where an exponent is 1 for all points.
    EXPECT_FALSE(std::signbit(PowOf(-0.0F, 1)));
    Numbers numbers;
    for (int i = 0; i < 200'000; ++i) {
        const float x = FloatOf(numbers.Next());
        if (std::isfinite(x) && x != 0) {
            EXPECT_EQ(PowOf(x, 1), x);
            EXPECT_EQ(PowOf(x, 0), 1) << x;
        }
    }
    for (int n = -149; n < 128; ++n)
        EXPECT_EQ(PowOf(2, static_cast<float>(n)), std::ldexp(1.0F, n)) << n;

    struct {
        const char* text;
        float value;
        float wanted;
    } const cases[] = {
        {"exp(0)", qxmath::Exp(0.0F), 1},
        {"exp(-0)", qxmath::Exp(-0.0F), 1},
        {"exp(inf)", qxmath::Exp(INFINITY), INFINITY},
        {"exp(-inf)", qxmath::Exp(-INFINITY), 0},
        {"log(1)", QxLog(1), 0},
        {"log(0)", QxLog(0), 0},
        {"log(-1)", QxLog(-1), 0},
        {"log(inf)", QxLog(INFINITY), INFINITY},
        {"sin(0)", qxmath::Sin(0.0F), 0},
        {"cos(0)", qxmath::Cos(0.0F), 1},
        {"tan(0)", qxmath::Tan(0.0F), 0},
        {"sin(1e30)", qxmath::Sin(1e30F), qxmath::Sin(0x1p28F)},
        {"cos(-inf)", qxmath::Cos(-INFINITY), qxmath::Cos(0x1p28F)},
        {"asin(3)", QxAsin(3), QX_PI_FLOAT / 2},
        {"acos(1)", QxAcos(1), 0},
        {"acos(-2)", QxAcos(-2), QX_PI_FLOAT},
        {"atan(0, 0)", AtanOf(0, 0), 0},
        {"atan(0, -1)", AtanOf(0, -1), QX_PI_FLOAT},
        {"atan(-1, 0)", AtanOf(-1, 0), -QX_PI_FLOAT / 2},
        {"atan(inf, -inf)", AtanOf(INFINITY, -INFINITY), 2.3561945F},
        {"pow(0, 0)", PowOf(0, 0), 0},
        {"pow(0, -1)", PowOf(0, -1), 0},
        {"pow(-2, 3)", PowOf(-2, 3), -8},
        {"pow(-2, -2)", PowOf(-2, -2), 0.25F},
        {"pow(-2, 0.5)", PowOf(-2, 0.5F), 0},
        {"pow(-1, 16777215)", PowOf(-1, 16777215), -1},
        {"pow(-1, 2^103)", PowOf(-1, 0x1p103F), 1},
        {"pow(-2, 2^106)", PowOf(-2, 0x1p106F), INFINITY},
        {"pow(10, 40)", PowOf(10, 40), INFINITY},
        {"pow(10, -50)", PowOf(10, -50), 0},
        {"pow(inf, 1)", PowOf(INFINITY, 1), INFINITY},
        {"pow(inf, 0.5)", PowOf(INFINITY, 0.5F), INFINITY},
        {"pow(inf, -1)", PowOf(INFINITY, -1), 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.value, c.wanted) << c.text;

    const float none = std::numeric_limits<float>::quiet_NaN();
    for (const float value : {qxmath::Exp(none), QxLog(none), qxmath::Sin(none), qxmath::Tan(none),
                              qxmath::Atan(none), AtanOf(1, none), PowOf(none, 2), PowOf(2, none)})
        EXPECT_TRUE(std::isnan(value)) << value;
}
