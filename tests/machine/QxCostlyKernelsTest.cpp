// Checks that the kernels of noise and of elementary functions return the bits of the scalar
// functions, and that these never change, since users' pictures depend on them. Also checks that no
// vector instruction accesses memory after the end of an array.

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

#include "QxBuiltInNames.h"
#include "kernels/QxCode.h"
#include "machine/run/QxMachineProgram.h"
#include "machine/translate/QxKernelTable.h"

namespace {

constexpr unsigned int k_points = 203;  // more than three batches, and not a multiple of a vector
constexpr unsigned int k_untouched = 0x7fc12345;

using Values = std::vector<float>;
using Bits = std::vector<unsigned int>;

/// The scalar function of one point. `numbers` holds the operands of the kernel one after the
/// other.
using Scalar = void (*)(const float* numbers, float* result);

struct Case {
    SqxPrimitive primitive;
    std::vector<unsigned int> sizes;  // numbers in the result and in each operand
    Scalar scalar;
    unsigned int sum;  // checksum of the results at all points, which must never change
};

QxVector3 Triple(const float* x)
{
    return {x[0], x[1], x[2]};
}

/// Calls a noise with the first 1, 2, 3 or 4 numbers.
template <class Noise, class Result>
struct Of {
    static void Store(const float& value, float* result) { *result = value; }
    static void Store(const QxVector3& value, float* result)
    {
        std::memcpy(result, &value, sizeof value);
    }
    template <class... Arguments>
    static void At(float* result, const Arguments&... arguments)
    {
        Result value;
        Noise::At(value, arguments...);
        Store(value, result);
    }
    static void One(const float* x, float* r) { At(r, x[0]); }
    static void Two(const float* x, float* r) { At(r, x[0], x[1]); }
    static void Three(const float* x, float* r) { At(r, Triple(x)); }
    static void Four(const float* x, float* r) { At(r, Triple(x), x[3]); }
};

template <class Result>
struct Periodic : Of<QxPeriodicNoise, Result> {
    using Base = Of<QxPeriodicNoise, Result>;
    static void One(const float* x, float* r) { Base::At(r, x[0], x[1]); }
    static void Two(const float* x, float* r) { Base::At(r, x[0], x[1], x[2], x[3]); }
    static void Three(const float* x, float* r) { Base::At(r, Triple(x), Triple(x + 3)); }
    static void Four(const float* x, float* r)
    {
        Base::At(r, Triple(x), x[3], Triple(x + 4), x[7]);
    }
};

using Plain1 = Of<QxNoise, float>;
using Plain3 = Of<QxNoise, QxVector3>;
using Cell1 = Of<QxCellNoise, float>;
using Cell3 = Of<QxCellNoise, QxVector3>;
using Periodic1 = Periodic<float>;
using Periodic3 = Periodic<QxVector3>;

#define FUNCTION1(NAME, SUM)                                                                       \
    {                                                                                              \
        SqxPrimitive::NAME, {1, 1}, [](const float* x, float* r) { NAME(*r, x[0]); }, SUM          \
    }
#define FUNCTION2(NAME, SUM)                                                                       \
    {                                                                                              \
        SqxPrimitive::NAME, {1, 1, 1}, [](const float* x, float* r) { NAME(*r, x[0], x[1]); }, SUM \
    }

const std::vector<Case>& Cases()
{
    // clang-format off
    static const std::vector<Case> cases = {
        FUNCTION1(CALL_PRIM_ACOS, 1769377359U),
        FUNCTION1(CALL_PRIM_ASIN, 3660252342U),
        FUNCTION1(CALL_PRIM_ATAN, 4103821234U),
        FUNCTION1(CALL_PRIM_COS, 98942868U),
        FUNCTION1(CALL_PRIM_EXP, 3746074738U),
        FUNCTION1(CALL_PRIM_LOG, 171836404U),
        FUNCTION1(CALL_PRIM_SIN, 1650684217U),
        FUNCTION1(CALL_PRIM_TAN, 587721168U),
        FUNCTION2(CALL_PRIM_ATAN2, 2238033553U),
        FUNCTION2(CALL_PRIM_LOG2, 2061100139U),
        FUNCTION2(CALL_PRIM_POW, 4033136969U),
        {SqxPrimitive::CALL_PRIM_NOISE_FLOAT_1D, {1, 1}, Plain1::One, 320270899U},
        {SqxPrimitive::CALL_PRIM_NOISE_FLOAT_2D, {1, 1, 1}, Plain1::Two, 2052433090U},
        {SqxPrimitive::CALL_PRIM_NOISE_FLOAT_3D, {1, 3}, Plain1::Three, 4237788331U},
        {SqxPrimitive::CALL_PRIM_NOISE_FLOAT_4D, {1, 3, 1}, Plain1::Four, 3833646629U},
        {SqxPrimitive::CALL_PRIM_NOISE_POINT_1D, {3, 1}, Plain3::One, 4127995259U},
        {SqxPrimitive::CALL_PRIM_NOISE_POINT_2D, {3, 1, 1}, Plain3::Two, 2856583672U},
        {SqxPrimitive::CALL_PRIM_NOISE_POINT_3D, {3, 3}, Plain3::Three, 1684661804U},
        {SqxPrimitive::CALL_PRIM_NOISE_POINT_4D, {3, 3, 1}, Plain3::Four, 3628779393U},
        {SqxPrimitive::CALL_PRIM_CELLNOISE_FLOAT_1D, {1, 1}, Cell1::One, 815861355U},
        {SqxPrimitive::CALL_PRIM_CELLNOISE_FLOAT_2D, {1, 1, 1}, Cell1::Two, 1636549033U},
        {SqxPrimitive::CALL_PRIM_CELLNOISE_FLOAT_3D, {1, 3}, Cell1::Three, 2207231312U},
        {SqxPrimitive::CALL_PRIM_CELLNOISE_FLOAT_4D, {1, 3, 1}, Cell1::Four, 4270560155U},
        {SqxPrimitive::CALL_PRIM_CELLNOISE_POINT_1D, {3, 1}, Cell3::One, 3004171183U},
        {SqxPrimitive::CALL_PRIM_CELLNOISE_POINT_2D, {3, 1, 1}, Cell3::Two, 2285004274U},
        {SqxPrimitive::CALL_PRIM_CELLNOISE_POINT_3D, {3, 3}, Cell3::Three, 2729697664U},
        {SqxPrimitive::CALL_PRIM_CELLNOISE_POINT_4D, {3, 3, 1}, Cell3::Four, 553456009U},
        {SqxPrimitive::CALL_PRIM_PNOISE_FLOAT_1D, {1, 1, 1}, Periodic1::One, 1075432575U},
        {SqxPrimitive::CALL_PRIM_PNOISE_FLOAT_2D, {1, 1, 1, 1, 1}, Periodic1::Two, 1077135994U},
        {SqxPrimitive::CALL_PRIM_PNOISE_FLOAT_3D, {1, 3, 3}, Periodic1::Three, 2896779674U},
        {SqxPrimitive::CALL_PRIM_PNOISE_FLOAT_4D, {1, 3, 1, 3, 1}, Periodic1::Four, 3899231395U},
        {SqxPrimitive::CALL_PRIM_PNOISE_POINT_1D, {3, 1, 1}, Periodic3::One, 3942710334U},
        {SqxPrimitive::CALL_PRIM_PNOISE_POINT_2D, {3, 1, 1, 1, 1}, Periodic3::Two, 3371783377U},
        {SqxPrimitive::CALL_PRIM_PNOISE_POINT_3D, {3, 3, 3}, Periodic3::Three, 3251478475U},
        {SqxPrimitive::CALL_PRIM_PNOISE_POINT_4D, {3, 3, 1, 3, 1}, Periodic3::Four, 470183262U},
    };
    // clang-format on
    return cases;
}

/// Returns a number for each place. The numbers have both signs, and some are whole, infinite, NaN,
/// or too large to have their own cell.
float NumberAt(unsigned int place)
{
    static const float odd[] = {0,     -0.0F,    1,      -1,     0.49999997F, 1e9F,
                                -1e9F, 3e9F,     -3e38F, 1e-40F, INFINITY,    -INFINITY,
                                NAN,   16777216, -7.5F,  2.5F};
    const unsigned int hash = place * 2654435761U;
    if (hash >> 29 == 0)
        return odd[hash >> 8 & 15];
    return (static_cast<float>(hash >> 8 & 0xffff) - 32768) / 2048;
}

/// Gives every NaN except `k_untouched` the same bits, since they only show which operand it came
/// from.
unsigned int OneNan(unsigned int bits)
{
    float value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return bits != k_untouched && std::isnan(value) ? 0x7fc00000U : bits;
}

unsigned int BitsOf(float value)
{
    unsigned int bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return OneNan(bits);
}

/// A copy of an array that ends right before a page without access.
class GuardedCopy {
public:
    GuardedCopy(const void* data, std::size_t bytes)
    {
        const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        const std::size_t pages = (bytes + page - 1) / page * page;
        m_size = pages + page;
        m_memory =
            mmap(nullptr, m_size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (m_memory == MAP_FAILED)
            throw std::bad_alloc();
        char* const end = static_cast<char*>(m_memory) + pages;
        mprotect(end, page, PROT_NONE);
        m_data = end - bytes;
        std::memcpy(m_data, data, bytes);
    }
    ~GuardedCopy() { munmap(m_memory, m_size); }
    GuardedCopy(const GuardedCopy&) = delete;
    GuardedCopy& operator=(const GuardedCopy&) = delete;

    [[nodiscard]] void* Data() const { return m_data; }

private:
    void* m_memory = nullptr;
    std::size_t m_size = 0;
    char* m_data = nullptr;
};

/// The operands of a case, point by point; an operand whose bit in `uniform` is set has one value.
struct Arguments {
    std::vector<Values> values;
    std::vector<unsigned int> steps;

    Arguments(const Case& c, unsigned int uniform)
    {
        unsigned int place = 0;
        for (std::size_t k = 1; k < c.sizes.size(); ++k) {
            steps.push_back((uniform >> (k - 1)) & 1 ? 0 : 1);
            values.emplace_back();
            for (unsigned int i = 0; i < (steps.back() ? k_points : 1) * c.sizes[k]; ++i)
                values.back().push_back(NumberAt(++place));
        }
    }
    [[nodiscard]] Values At(const Case& c, unsigned int point) const
    {
        Values numbers;
        for (std::size_t k = 0; k < values.size(); ++k) {
            const float* first = &values[k][point * steps[k] * c.sizes[k + 1]];
            numbers.insert(numbers.end(), first, first + c.sizes[k + 1]);
        }
        return numbers;
    }
};

using Mask = std::vector<QxStopAndBool>;

/// Returns the bits of the results of the scalar function at the points whose mask is set, or at
/// all points without a mask; `k_untouched` at the other points.
Bits Expected(const Case& c, const Arguments& arguments, const Mask& mask)
{
    Bits bits;
    for (unsigned int i = 0; i < k_points; ++i) {
        float result[3];
        c.scalar(arguments.At(c, i).data(), result);
        for (unsigned int k = 0; k < c.sizes[0]; ++k)
            bits.push_back(mask.empty() || mask[i] ? BitsOf(result[k]) : k_untouched);
    }
    return bits;
}

Bits Computed(const Case& c, const QxKernelRow& row, const Arguments& arguments, const Mask& mask)
{
    Bits result(k_points * c.sizes[0], k_untouched);
    const GuardedCopy guarded(result.data(), result.size() * sizeof(unsigned int));
    std::vector<std::unique_ptr<GuardedCopy>> copies;
    std::vector<void*> values = {guarded.Data()};
    std::vector<QxOperand> operands(c.sizes.size());
    operands[0].step = 1;
    for (std::size_t k = 1; k < c.sizes.size(); ++k) {
        const Values& given = arguments.values[k - 1];
        copies.push_back(std::make_unique<GuardedCopy>(given.data(), given.size() * sizeof(float)));
        values.push_back(copies.back()->Data());
        operands[k].variable = static_cast<std::uint32_t>(k);
        operands[k].step = arguments.steps[k - 1];
    }
    QxMachineState state;
    state.values = values.data();
    QxCode code;
    code.operands = operands.data();
    code.count = static_cast<std::uint32_t>(operands.size());
    const QxPoints points = {0, k_points, mask.empty() ? nullptr : mask.data()};
    (mask.empty() ? row.all : row.masked)(state, code, points);
    std::memcpy(result.data(), guarded.Data(), result.size() * sizeof(unsigned int));
    for (unsigned int& bits : result)
        bits = OneNan(bits);
    return result;
}

/// Returns a mask in which about `share` of 64 points are set.
Mask MaskOf(unsigned int share)
{
    Mask mask(k_points);
    for (unsigned int i = 0; i < k_points; ++i)
        mask[i] = (i * 2246822519U + 7) >> 26 < share;
    return mask;
}

}  // namespace

TEST(QxCostlyKernels, MatchTheScalarFunctionsBitByBit)
{
    for (const bool avx2 : {false, true}) {
        if (avx2 && !QxMachineProgram::HasAvx2())
            continue;
        for (const Case& c : Cases()) {
            const QxKernelRow* row = QxKernelTable::For(avx2).Find(c.primitive);
            ASSERT_TRUE(row) << SqxPrimitiveName(c.primitive);
            for (const unsigned int uniform : {0U, 1U, 2U, 6U}) {
                const Arguments arguments(c, uniform);
                EXPECT_EQ(Computed(c, *row, arguments, {}), Expected(c, arguments, {}))
                    << SqxPrimitiveName(c.primitive);
                for (const unsigned int share : {0U, 1U, 3U, 20U, 63U, 64U}) {
                    const Mask mask = MaskOf(share);
                    EXPECT_EQ(Computed(c, *row, arguments, mask), Expected(c, arguments, mask))
                        << SqxPrimitiveName(c.primitive) << ", " << share << " of 64 points";
                }
            }
        }
    }
}

TEST(QxCostlyFunctions, NeverChange)
{
    for (const Case& c : Cases()) {
        unsigned int sum = 0;
        for (const unsigned int bits : Expected(c, Arguments(c, 0), {}))
            sum = sum * 31 + bits;
        EXPECT_EQ(sum, c.sum) << SqxPrimitiveName(c.primitive);
    }
}
