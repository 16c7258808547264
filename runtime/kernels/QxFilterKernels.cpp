// The function `filterstep`. The name of the filter is nearly always uniform: then it is looked up
// once per call of the kernel, and each filter has a separate loop. If the name is varying, each
// point is computed separately. An unknown name selects the default filter.
//
// Tested with whole shaders by tests/host/AgreementTest.cpp.

#include <iterator>
#include <utility>

#include "QxFilters.h"
#include "kernels/QxBlocks.h"

namespace QX_KERNEL_SET {
namespace {

using Text = const char*;

template <unsigned int filter>
QX_KERNEL_CODE void Steps(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    ForBlocks(points, [&](const Block& block) {
        Numbers edges;
        Numbers begins;
        Numbers ends;
        Numbers widths;
        Load(edges, Operand<float>(state, code, 1), block);
        Load(begins, Operand<float>(state, code, 2), block);
        Load(ends, Operand<float>(state, code, 3), block);
        Load(widths, Operand<float>(state, code, 4), block);
        for (unsigned int j = 0; j < block.count; ++j)
            edges.at[j] = QxFilterStepOf(qxfilter::k_filters[filter].share, edges.at[j],
                                         begins.at[j], ends.at[j], widths.at[j]);
        Store(Operand<float>(state, code, 0), edges, block);
    });
}

template <unsigned int... filters>
QxKernel KernelOf(unsigned int filter, std::integer_sequence<unsigned int, filters...>)
{
    static constexpr QxKernel k_kernels[] = {Steps<filters>...};
    return k_kernels[filter];
}

void FilterStep(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    const auto names = Operand<Text>(state, code, 5);
    const auto kernelAt = [&](unsigned int point) {
        constexpr unsigned int filters = std::size(qxfilter::k_filters);
        return KernelOf(qxfilter::Find(QxAt(names, point)),
                        std::make_integer_sequence<unsigned int, filters>());
    };
    if (names.step == 0)
        return kernelAt(0)(state, code, points);
    for (unsigned int i = points.first; i < points.End(); ++i)
        if (points(i))
            kernelAt(i)(state, code, {i, 1, nullptr});
}

constexpr QxKernelRow k_rows[] = {
    RowPerPoint<float, float, float, float, float, Text>(SqxPrimitive::CALL_PRIM_FILTERSTEP,
                                                         FilterStep),
};

}  // namespace

QxKernelRows FilterKernels()
{
    return k_rows;
}

}  // namespace QX_KERNEL_SET
