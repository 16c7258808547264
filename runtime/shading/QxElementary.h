#pragma once

#include <cstring>

// Elementary functions of floats, for byte-code, generated C++ and constant folding.
//
// They are computed in double precision from sums, products, quotients and square roots, which
// every processor rounds in the same way, and from comparisons and bit operations. So the values
// are the same on all processors and in vectors of any length, provided that products are not fused
// with sums. Except for `PowAtPoint`, the functions have no branches, tables or calls of library
// functions, so that loops over points can be vectorized, also for the baseline x86-64 processor,
// which has no vector instructions to round doubles, to convert long integers or to shift them
// arithmetically.
//
// The stated errors are the largest distances from the exact values in units of the last place of a
// float; the smallest possible maximum is 0.5. They were measured over every 67th float, 32 to 64
// million arguments, or over as many pairs as stated. tests/runtime/ElementaryFunctionsTest.cpp
// checks slightly larger bounds, and measures all floats on request. The polynomials are minimax
// approximations, whose coefficients were computed with 160 bits by Evgeny Remez's exchange
// algorithm (1934); the relative errors of the polynomials are in parentheses.

namespace qxmath {

using Word = unsigned long long;

constexpr Word k_signBit = 0x8000000000000000u;
constexpr Word k_fraction = 0x000fffffffffffffu;
constexpr double k_pi = 0x1.921fb54442d18p+1;

inline Word WordOf(double x)
{
    Word word;
    std::memcpy(&word, &x, sizeof word);
    return word;
}

inline double DoubleOf(Word word)
{
    double x;
    std::memcpy(&x, &word, sizeof x);
    return x;
}

/// A double of this size has no fraction bits: adding it rounds a number to a whole number, which
/// is then in the last bits of the sum.
constexpr double k_wholeNumbers = 0x1.8p+52;

/// Returns all bits set if the lowest bit of `word` is set, else 0.
inline Word MaskOfLowestBit(Word word)
{
    return 0 - (word & 1);
}

inline double Select(Word mask, double yes, double no)
{
    return DoubleOf((WordOf(yes) & mask) | (WordOf(no) & ~mask));
}

/// Returns `magnitude`, which must not be negative, with the sign of `sign`.
inline double WithSignOf(double magnitude, double sign)
{
    return DoubleOf(WordOf(magnitude) | (WordOf(sign) & k_signBit));
}

inline double Magnitude(double x)
{
    return DoubleOf(WordOf(x) & ~k_signBit);
}

/// Returns an exponent that is whole and odd or even as `y`, and small enough for `IsWhole` and
/// `SignForOdd`: floats above 2^24 are even.
inline double LimitedExponent(double y)
{
    return Magnitude(y) > 0x1p+24 ? 0x1p+24 : y;
}

/// True if x, whose magnitude is at most 2^50, has no fraction.
inline bool IsWhole(double x)
{
    return (x + k_wholeNumbers) - k_wholeNumbers == x;
}

/// Returns -1 for an odd whole number, 1 for an even one. Its magnitude is at most 2^50.
inline double SignForOdd(double whole)
{
    return DoubleOf(WordOf(1.0) | (WordOf(whole + k_wholeNumbers) << 63));
}

/// Returns 2 to the power of r, with |r| <= 1/2 (2^-28). Uses Estrin's scheme (Gerald Estrin,
/// "Organization of computer systems", 1960), since in Horner's scheme each step waits for the
/// previous one, which is slow for a single point.
inline double PartialPower(double r)
{
    const double z = r * r;
    const double low = 1 + r * 0x1.62e4302fcc249p-1;
    const double middle = 0x1.ebfbe07d97ba5p-3 + r * 0x1.c6af6ccfc1c86p-5;
    const double high = 0x1.3b29e3ce994e2p-7 + r * 0x1.5f08961456a82p-10;
    return (low + z * middle) + (z * z) * (high + z * 0x1.446c81e4d7b3dp-13);
}

/// Returns 2 to the power of t. First clamps t to the range from -160 to 160, since as floats the
/// powers at both ends are 0 and infinity. Then t = n + r with |r| <= 1/2, and n is added to the
/// exponent of 2^r.
inline double ExpOfBase2(double t)
{
    const double above = t < -160 ? -160 : t;
    const double within = above > 160 ? 160 : above;
    const double shifted = within + k_wholeNumbers;
    const double r = within - (shifted - k_wholeNumbers);
    return DoubleOf(WordOf(PartialPower(r)) + (WordOf(shifted) << 52));
}

/// A positive number as m * 2^n, with m from sqrt(1/2) to sqrt(2).
struct Parts {
    explicit Parts(double x)
    {
        constexpr Word root = 0x3fe6a09e667f3bcdu;  // sqrt(1/2)
        constexpr Word one = 0x3ff0000000000000u;
        const Word scaled = WordOf(x) + (one - root);
        // The double with these bits is 2^52 + n + 1023. So no long integer has to be converted.
        n = DoubleOf((scaled >> 52) | 0x4330000000000000u) - (0x1p+52 + 1023);
        m = DoubleOf((scaled & k_fraction) + root);
    }
    double n;
    double m;
};

/// Returns x if it is positive infinity or NaN, otherwise `logarithm`.
inline double UnlessInfinite(double x, double logarithm)
{
    return x < 0x1p+128 ? logarithm : x;
}

/// Returns e to the power of x. Error: 0.562.
inline float Exp(float x)
{
    return static_cast<float>(ExpOfBase2(static_cast<double>(x) * 0x1.71547652b82fep+0));
}

/// Returns the natural logarithm of a positive x = m 2^n, which is log m + n log 2. With
/// s = (m - 1) / (m + 1), log m = 2 artanh s is computed by an odd polynomial in s (2^-30).
/// Error: 0.512.
inline float Log(float x)
{
    const Parts parts(x);
    const double s = (parts.m - 1) / (parts.m + 1);
    const double z = s * s;
    const double rest =
        s * (0x1.fffffffa1422ep+0 +
             z * (0x1.5555876cbf618p-1 + z * (0x1.995786c2a3a8cp-2 + z * 0x1.32704c3b5335cp-2)));
    const double logarithm = parts.n * 0x1.62e42fefa39efp-1 + rest;
    return static_cast<float>(UnlessInfinite(x, logarithm));
}

/// Returns the logarithm to the base 2, computed like `Log` but more exactly (2^-38).
inline double LogOfBase2(const Parts& parts)
{
    const double s = (parts.m - 1) / (parts.m + 1);
    const double z = s * s;
    const double low = 0x1.71547652bede5p+1 + z * 0x1.ec709d12e1549p-1;
    const double high = 0x1.27777fda670b2p-1 + z * 0x1.a58d8fc099114p-2;
    return parts.n + s * (low + (z * z) * (high + (z * z) * 0x1.5ce7cd91e91a7p-2));
}

/// Returns x, which must not be negative, to the power of y. Both must be values of floats, and the
/// caller must round the result to a float. Error: 0.562, over 6 million pairs.
inline double Pow(double x, double y)
{
    // The last term is negligible, but makes the sum infinite for an infinite x, and NaN for NaN.
    return ExpOfBase2(y * (LogOfBase2(Parts(x)) + x * 1e-300));
}

/// Returns the same value as `Pow`, for code that is not vectorized: there a branch for the rare
/// cases is cheaper, and a multiplication is faster than adding to the exponent.
inline double PowAtPoint(double x, double y)
{
    double t = y * (LogOfBase2(Parts(x)) + x * 1e-300);
    if (Magnitude(t) > 160)
        t = t < 0 ? -160 : 160;
    const double shifted = t + k_wholeNumbers;
    const double r = t - (shifted - k_wholeNumbers);
    return PartialPower(r) * DoubleOf((WordOf(shifted) + 1023) << 52);
}

/// An angle, split into quarters of a turn and a remainder of at most an eighth of a turn.
///
/// Cody and Waite, "Software Manual for the Elementary Functions", 1980: pi / 2 is the sum of three
/// parts, of which the first two have 25 bits, so that their products with up to 2^28 quarters are
/// exact. Larger angles, whose neighbouring floats are more than two turns apart, are replaced by
/// 2^28 or -2^28.
struct Angle {
    explicit Angle(float x)
    {
        const double given = x;
        const double above = given < -0x1p+28 ? -0x1p+28 : given;
        const double within = above > 0x1p+28 ? 0x1p+28 : above;
        const double shifted = within * 0x1.45f306dc9c883p-1 + k_wholeNumbers;
        const double n = shifted - k_wholeNumbers;
        quarters = WordOf(shifted);
        rest = ((within - n * 0x1.921fb5p+0) - n * 0x1.110b46p-26) - n * 0x1.1a62633145c07p-54;
    }

    /// Returns the sine of the remainder, by an odd polynomial (2^-26).
    [[nodiscard]] double Sine() const
    {
        const double z = rest * rest;
        return rest * (1 + z * (-0x1.555552a691e36p-3 +
                                z * (0x1.110c2a36f6d05p-7 + z * -0x1.9aca520efa17bp-13)));
    }
    /// Returns the cosine of the remainder, by an even polynomial (2^-32).
    [[nodiscard]] double Cosine() const
    {
        const double z = rest * rest;
        return 1 + z * (-0x1.fffffffab504fp-2 +
                        z * (0x1.55554cbe26bd1p-5 +
                             z * (-0x1.6c0e0a0e43b22p-10 + z * 0x1.9a6f9768aa0adp-16)));
    }

    /// Returns the sine of the angle plus `more` quarters of a turn.
    [[nodiscard]] float SineTurnedBy(Word more) const
    {
        const Word turned = quarters + more;
        const double value = Select(MaskOfLowestBit(turned), Cosine(), Sine());
        return static_cast<float>(DoubleOf(WordOf(value) ^ ((turned & 2) << 62)));
    }

    Word quarters;  // their number modulo 4 is in the last two bits
    double rest;    // the remainder, in radians
};

/// Returns the sine. Error: 0.661, for angles up to 2^28.
inline float Sin(float x)
{
    return Angle(x).SineTurnedBy(0);
}

/// Returns the cosine. Error: 0.658, for angles up to 2^28.
inline float Cos(float x)
{
    return Angle(x).SineTurnedBy(1);
}

/// Returns the tangent. Error: 0.734, for angles up to 2^28.
inline float Tan(float x)
{
    const Angle angle(x);
    const Word isOdd = MaskOfLowestBit(angle.quarters);
    const double sine = angle.Sine();
    const double cosine = angle.Cosine();
    return static_cast<float>(Select(isOdd, -cosine, sine) / Select(isOdd, sine, cosine));
}

/// The arc sine of s by an odd polynomial (2^-30), where s is |x| if |x| <= 1/2. Otherwise s is
/// sqrt((1 - |x|) / 2), since asin x = pi / 2 - 2 asin sqrt((1 - x) / 2) for a positive x.
struct ArcSine {
    explicit ArcSine(double x)
    {
        const double magnitude = Magnitude(x);
        const double half = (1 - magnitude) * 0.5;
        isFolded = magnitude > 0.5;
        const double z = isFolded ? half : magnitude * magnitude;
        const double s = isFolded ? __builtin_sqrt(half) : magnitude;
        ofS =
            s * (1 + z * (0x1.555554d58f2f5p-3 +
                          z * (0x1.3334481d0c14fp-4 +
                               z * (0x1.6d55e6da6964bp-5 +
                                    z * (0x1.fe10bae722d9bp-6 +
                                         z * (0x1.169f76735a9e6p-6 + z * 0x1.15e1a4450c1bbp-5))))));
    }
    bool isFolded;
    double ofS;
};

/// Returns the arc sine of x from -1 to 1. Error: 0.514.
inline float Asin(float x)
{
    const ArcSine arc(x);
    return static_cast<float>(WithSignOf(arc.isFolded ? k_pi / 2 - 2 * arc.ofS : arc.ofS, x));
}

/// Returns the arc cosine of x from -1 to 1. Error: 0.511.
inline float Acos(float x)
{
    const ArcSine arc(x);
    const double folded = x < 0 ? k_pi - 2 * arc.ofS : 2 * arc.ofS;
    return static_cast<float>(arc.isFolded ? folded : k_pi / 2 - WithSignOf(arc.ofS, x));
}

/// Returns the angle of the direction (x, y), from -pi to pi, with the sign of y; for the zero
/// vector 0, or pi if x is -0. The smaller of |x| and |y| is divided by the larger. If the quotient
/// is above tan(pi / 8), the direction is first rotated back by pi / 4. The angle is then computed
/// from the quotient by an odd polynomial (2^-28). Error: 0.532, over 6 million pairs.
inline float Atan2(float y, float x)
{
    constexpr double most = 1e300;  // so that infinities have a quotient
    const double acrossGiven = Magnitude(x);
    const double upGiven = Magnitude(y);
    const double across = acrossGiven > most ? most : acrossGiven;
    const double up = upGiven > most ? most : upGiven;
    const bool isSteep = across < up;
    const double lesser = isSteep ? across : up;
    const double greater = isSteep ? up : across;
    const bool isTurned = lesser > greater * 0x1.a827999fcef32p-2;
    const double divided = isTurned ? lesser - greater : lesser;
    const double divisor = isTurned ? lesser + greater : greater;
    const double t = divided / (divisor == 0 ? 1 : divisor);
    const double z = t * t;
    const double polynomial =
        t * (1 + z * (-0x1.55555458e4405p-2 +
                      z * (0x1.99974a5cba406p-3 +
                           z * (-0x1.24231922ded5bp-3 +
                                z * (0x1.b845ef23bb9f3p-4 + z * -0x1.08e1a4965db3dp-4)))));
    const double eighth = isTurned ? k_pi / 4 + polynomial : polynomial;
    const double quarter = isSteep ? k_pi / 2 - eighth : eighth;
    const double isLeft = WithSignOf(1, x);
    return static_cast<float>(WithSignOf(isLeft < 0 ? k_pi - quarter : quarter, y));
}

/// Returns the arc tangent. Error: 0.532.
inline float Atan(float x)
{
    return Atan2(x, 1);
}

}  // namespace qxmath
