// Conversions between color spaces. The name of a space is usually uniform. Then it is looked up
// once per call of a kernel, and a separate loop for each conversion can be vectorized. If a name
// is varying, or the color or the result is uniform, each point is converted separately.
//
// Tested with whole shaders by tests/host/AgreementTest.cpp.

#include <array>

#include "QxColorSpaces.h"
#include "kernels/QxKernelForms.h"

namespace QX_KERNEL_SET {
namespace {

using Color = QxRGBColor;
using Text = const char*;

/// A loop over varying colors. `results` may be `sources`.
using ColorLoop = void (*)(Color* results, const Color* sources, const QxPoints& points);

template <auto convert>
struct Conversion {
    void operator()(Color& r, const Color& c) const { r = convert(c); }
};

template <auto convert, bool masked>
QX_KERNEL_CODE void Convert(Color* results, const Color* sources, const QxPoints& points)
{
    Loop<Conversion<convert>, masked>(results, points, VaryingValues<Color>{sources});
}

/// The loops of one space: at index 0 for all points, at 1 for a mask.
struct SpaceLoops {
    ColorLoop toRgb[2];
    ColorLoop fromRgb[2];
};

template <std::size_t... i>
constexpr auto LoopsOfSpaces(std::index_sequence<i...>)
{
    using qxcolor::k_spaces;
    return std::array{
        SpaceLoops{{Convert<k_spaces[i].toRgb, false>, Convert<k_spaces[i].toRgb, true>},
                   {Convert<k_spaces[i].fromRgb, false>, Convert<k_spaces[i].fromRgb, true>}}...};
}

constexpr auto k_loops = LoopsOfSpaces(std::make_index_sequence<std::size(qxcolor::k_spaces)>());

/// Returns the loops of a space; for an unknown name those of RGB, which is the first row.
const SpaceLoops& LoopsOf(Text space)
{
    const qxcolor::Space* found = qxcolor::Find(space);
    return k_loops[found ? static_cast<std::size_t>(found - qxcolor::k_spaces) : 0];
}

/// Indexes of the operands of a conversion: the color, and the names of the spaces; 0 means RGB.
struct Places {
    std::size_t color;
    std::size_t from;
    std::size_t to;
};

/// Converts to RGB and from there to the other space, as `QxColorTransform` does for each point.
template <Places places, class OneColor, class... Types>
void ConvertAll(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    const auto isVaryingName = [&](std::size_t place) {
        return place != 0 && code.operands[place].step != 0;
    };
    const auto result = Operand<Color>(state, code, 0);
    const auto source = Operand<Color>(state, code, places.color);
    const bool masked = points.mask != nullptr;
    if (result.step == 0 || source.step == 0 || isVaryingName(places.from) ||
        isVaryingName(places.to))
        return (masked ? Any<OneColor, Where::Masked, Color&, Types...>
                       : Any<OneColor, Where::All, Color&, Types...>)(state, code, points);
    const Color* sources = source.values;
    if (places.from != 0) {
        LoopsOf(*Operand<Text>(state, code, places.from).values)
            .toRgb[masked](result.values, sources, points);
        sources = result.values;
    }
    if (places.to != 0)
        LoopsOf(*Operand<Text>(state, code, places.to).values)
            .fromRgb[masked](result.values, sources, points);
}

template <Places places, class... Types, class OneColor>
constexpr QxKernelRow SpaceRow(SqxPrimitive primitive, OneColor convert)
{
    QxKernelRow row = Each<Color&, Types...>(primitive, convert);
    row.all = row.masked = ConvertAll<places, OneColor, Types...>;
    return row;
}

constexpr QxKernelRow k_rows[] = {
    SpaceRow<Places{1, 2, 0}, Color, Text>(
        SqxPrimitive::CALL_PRIM_CTRANSFORM_TO_RGB,
        [](Color& r, const Color& c, const Text& from) { r = QxColorToRgb(c, from); }),
    SpaceRow<Places{1, 0, 2}, Color, Text>(
        SqxPrimitive::CALL_PRIM_CTRANSFORM_FROM_RGB,
        [](Color& r, const Color& c, const Text& to) { r = QxColorFromRgb(c, to); }),
    SpaceRow<Places{3, 1, 2}, Text, Text, Color>(
        SqxPrimitive::CALL_PRIM_CTRANSFORM,
        [](Color& r, const Text& from, const Text& to, const Color& c) {
            r = QxColorTransform(c, from, to);
        }),
    SpaceRow<Places{2, 0, 1}, Text, Color>(
        SqxPrimitive::CALL_PRIM_CTRANSFORM2,
        [](Color& r, const Text& to, const Color& c) { r = QxColorFromRgb(c, to); }),
};

}  // namespace

QxKernelRows ColorKernels()
{
    return k_rows;
}

}  // namespace QX_KERNEL_SET
