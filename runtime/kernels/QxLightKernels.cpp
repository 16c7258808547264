// How surfaces answer to light, light by light over blocks of points:
//
//     for each point: for each light: sum of the point += color * answer
// becomes
//     for each block: for each light: for each point of it: sum of the point += color * answer
//
// so that the innermost loop is one of vectors. Each point adds the same numbers in the same order
// as in QxLights.h, and the sums are equal to the bit. Powers are computed where they count.
//
// Tested with whole shaders by tests/host/AgreementTest.cpp.

#include "kernels/QxBlocks.h"

namespace QX_KERNEL_SET {
namespace {

using Vector = QxVector3;
using Color = QxRGBColor;

// An answer gives the share of each point in the light that comes from a direction.

class Diffuse {
public:
    Diffuse(const QxMachineState& state, const QxCode& code, const Block& block)
    {
        Load(m_normals, Operand<Vector>(state, code, 1), block);
    }
    void operator()(Numbers& shares, const Triples& toLight, const Block& block) const
    {
        for (unsigned int j = 0; j < block.count; ++j)
            shares.at[j] = QxMax(0, QxDot(toLight.At(j), m_normals.At(j)));
    }

private:
    Triples m_normals;
};

/// shares = base to the exponent where the light is before the surface, else 0.
inline void Powers(Numbers& shares, const Numbers& facing, const Numbers& bases,
                   const Numbers& exponents, const Block& block)
{
    for (unsigned int j = 0; j < block.count; ++j)
        shares.at[j] =
            facing.at[j] <= 0 || !block.Has(j) ? 0 : QxPow(QxMax(0, bases.at[j]), exponents.at[j]);
}

class Specular {
public:
    Specular(const QxMachineState& state, const QxCode& code, const Block& block)
    {
        Load(m_normals, Operand<Vector>(state, code, 1), block);
        Load(m_toEye, Operand<Vector>(state, code, 2), block);
        Load(m_exponents, Operand<float>(state, code, 3), block);
        for (unsigned int j = 0; j < block.count; ++j)
            m_exponents.at[j] = m_exponents.at[j] > 0 ? 1 / m_exponents.at[j] : 1.0e6f;
    }
    void operator()(Numbers& shares, const Triples& toLight, const Block& block) const
    {
        Numbers facing;
        Numbers bases;
        for (unsigned int j = 0; j < block.count; ++j) {
            const Vector normal = m_normals.At(j);
            facing.at[j] = QxDot(toLight.At(j), normal);
            bases.at[j] = QxDot(QxNormalize(toLight.At(j) + m_toEye.At(j)), normal);
        }
        Powers(shares, facing, bases, m_exponents, block);
    }

private:
    Triples m_normals;
    Triples m_toEye;
    Numbers m_exponents;
};

class Phong {
public:
    Phong(const QxMachineState& state, const QxCode& code, const Block& block)
    {
        Load(m_normals, Operand<Vector>(state, code, 1), block);
        Load(m_mirrored, Operand<Vector>(state, code, 2), block);
        Load(m_exponents, Operand<float>(state, code, 3), block);
        for (unsigned int j = 0; j < block.count; ++j)
            m_mirrored.Set(j,
                           QxReflect(-QxNormalize(m_mirrored.At(j)), QxNormalize(m_normals.At(j))));
    }
    void operator()(Numbers& shares, const Triples& toLight, const Block& block) const
    {
        Numbers facing;
        Numbers bases;
        for (unsigned int j = 0; j < block.count; ++j) {
            facing.at[j] = QxDot(toLight.At(j), m_normals.At(j));
            bases.at[j] = QxDot(m_mirrored.At(j), toLight.At(j));
        }
        Powers(shares, facing, bases, m_exponents, block);
    }

private:
    Triples m_normals;
    Triples m_mirrored;
    Numbers m_exponents;
};

/// sums += colors * shares
inline void Add(Triples& sums, const Color* colors, const Numbers& shares, const Block& block)
{
    for (unsigned int j = 0; j < block.count; ++j) {
        const Color& color = colors[block.first + j];
        sums.x.at[j] = sums.x.at[j] + color.r * shares.at[j];
        sums.y.at[j] = sums.y.at[j] + color.g * shares.at[j];
        sums.z.at[j] = sums.z.at[j] + color.b * shares.at[j];
    }
}

template <class Answer>
QX_KERNEL_CODE void Lit(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    ForBlocks(points, [&](const Block& block) {
        const Answer answer(state, code, block);
        Triples sums;
        for (Numbers* const numbers : {&sums.x, &sums.y, &sums.z})
            std::fill_n(numbers->at, block.count, 0.0f);
        for (unsigned int light = 0; light < state.lightCount; ++light) {
            Triples toLight;
            Load(toLight, state.lights[light].L, block);
            for (unsigned int j = 0; j < block.count; ++j)
                toLight.Set(j, QxNormalize(toLight.At(j)));
            Numbers shares;
            answer(shares, toLight, block);
            Add(sums, state.lights[light].Cl, shares, block);
        }
        Store(Operand<Color>(state, code, 0), sums, block);
    });
}

// A scene that knows how to gives all ambient light of a grid at once.

void AmbientOverGrid(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    const auto result = Operand<Color>(state, code, 0);
    if (result.step == 1 && points.first == 0 && points.count == state.grid.Size())
        QxAmbientOverGrid(points.count, state.Lights(), result.values);
    else
        for (unsigned int i = points.first; i < points.End(); ++i)
            QxAt(result, i) = QxAmbientCall(state.Lights())(i);
}

constexpr QxKernelRow AmbientRow()
{
    QxKernelRow row = Each<Color&>("CALL_PRIM_AMBIENT",
                                   AtPoint([](QxMachineState& state, unsigned int point, Color& r) {
                                       r = QxAmbientCall(state.Lights())(point);
                                   }));
    row.all = AmbientOverGrid;
    row.point = nullptr;  // one point is a whole grid, too
    return row;
}

/// One point takes the run time's own call: blocks do not pay for it.
template <class Answer, class Call, class... Types>
constexpr QxKernelRow LitRow(std::string_view primitive)
{
    QxKernelRow row = Each<Color&, Types...>(
        primitive,
        AtPoint([](QxMachineState& state, unsigned int point, Color& r, const Types&... arguments) {
            r = Call(state.Lights())(point, arguments...);
        }));
    row.all = row.masked = Lit<Answer>;
    row.perPoint = true;
    return row;
}

constexpr QxKernelRow k_rows[] = {
    AmbientRow(),
    LitRow<Diffuse, QxDiffuseCall, Vector>("CALL_PRIM_DIFFUSE"),
    LitRow<Specular, QxSpecularCall, Vector, Vector, float>("CALL_PRIM_SPECULAR"),
    LitRow<Specular, QxSpecularCall, Vector, Vector, float>("CALL_PRIM_SPECULARSTD"),
    LitRow<Phong, QxPhongCall, Vector, Vector, float>("CALL_PRIM_PHONG"),
};

}  // namespace

QxKernelRows LightKernels()
{
    return k_rows;
}

}  // namespace QX_KERNEL_SET
