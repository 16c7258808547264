// Filtered steps. The name of the filter is the same for all points, nearly always: it is looked up
// once for an instruction, and each filter has a loop of its own. Where names differ, each point is
// run by itself. An unknown name means the filter that is the default.
//
// Tested with whole shaders by tests/host/AgreementTest.cpp.

#include <cstring>

#include "QxFilters.h"
#include "kernels/QxBlocks.h"

namespace QX_KERNEL_SET {
namespace {

using Text = const char*;

struct Box {
    float operator()(float x) const { return qxfilter::Box(x); }
};
struct Triangle {
    float operator()(float x) const { return qxfilter::Triangle(x); }
};
struct Gaussian {
    float operator()(float x) const { return qxfilter::Gaussian(x); }
};
struct CatmullRom {
    float operator()(float x) const { return qxfilter::CatmullRom(x); }
};

template <class Filter>
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
            edges.at[j] =
                QxFilterStepOf(Filter(), edges.at[j], begins.at[j], ends.at[j], widths.at[j]);
        Store(Operand<float>(state, code, 0), edges, block);
    });
}

constexpr struct {
    const char* name;
    QxKernel kernel;
} k_filters[] = {{"box", Steps<Box>}, {"triangle", Steps<Triangle>}, {"gaussian", Steps<Gaussian>}};

void FilterStep(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    const auto names = Operand<Text>(state, code, 5);
    const auto kernelAt = [&](unsigned int point) {
        const Text name = QxAt(names, point);
        for (const auto& filter : k_filters)
            if (name && std::strcmp(filter.name, name) == 0)
                return filter.kernel;
        return QxKernel{Steps<CatmullRom>};
    };
    if (names.step == 0)
        return kernelAt(0)(state, code, points);
    for (unsigned int i = points.first; i < points.End(); ++i)
        if (points(i))
            kernelAt(i)(state, code, {i, 1, nullptr});
}

constexpr QxKernelRow k_rows[] = {
    RowPerPoint<float, float, float, float, float, Text>("CALL_PRIM_FILTERSTEP", FilterStep),
};

}  // namespace

QxKernelRows FilterKernels()
{
    return k_rows;
}

}  // namespace QX_KERNEL_SET
