// Kernels are listed by primitives, but the code of a file uses numbers. The mapping is built once
// for each set of kernels. Forms of one primitive, such as those with a condition, have different
// numbers and share a row.
//
// Tested by tests/host/AgreementTest.cpp: a shader with an instruction that has no row is refused.

#include "machine/translate/QxKernelTable.h"

#include <stdexcept>
#include <string>

#include "sqx/SqxLayout.h"
#include "sqx/SqxNumbers.h"

QxKernelTable::QxKernelTable([[maybe_unused]] bool avx2)
{
    using Rows = QxKernelRows (*)();
    std::vector<Rows> tables = {qxbaseline::CardKernels,     qxbaseline::ColorKernels,
                                qxbaseline::OperatorKernels, qxbaseline::FunctionKernels,
                                qxbaseline::FilterKernels,   qxbaseline::NeighbourKernels,
                                qxbaseline::LightKernels,    qxbaseline::StatementKernels,
                                qxbaseline::SplineKernels,   qxbaseline::NoiseKernels};
#ifdef QX_HAS_AVX2
    if (avx2)
        tables = {qxavx2::CardKernels,     qxavx2::ColorKernels,     qxavx2::OperatorKernels,
                  qxavx2::FunctionKernels, qxavx2::FilterKernels,    qxavx2::NeighbourKernels,
                  qxavx2::LightKernels,    qxavx2::StatementKernels, qxavx2::SplineKernels,
                  qxavx2::NoiseKernels};
#endif
    tables.insert(tables.end(),
                  {qxcommon::SceneKernels, qxcommon::QuestionKernels, qxcommon::ListKernels,
                   qxcommon::ReferenceKernels, qxcommon::ShadeopKernels});
    for (const Rows table : tables)
        for (const QxKernelRow& row : table())
            Enter(row);
    for (int number = 0; number <= SqxHighestNumber(); ++number) {
        const SqxLayout* layout = SqxLayout::Find(number);
        m_byNumber.push_back(layout ? Find(layout->primitive) : nullptr);
    }
}

void QxKernelTable::Enter(const QxKernelRow& row)
{
    const QxKernelRow*& entry = m_byPrimitive[static_cast<std::size_t>(row.primitive)];
    if (entry)
        throw std::logic_error("QxKernelTable: two rows for " +
                               std::string(SqxPrimitiveName(row.primitive)));
    entry = &row;
}

const QxKernelTable& QxKernelTable::For(bool avx2)
{
    static const QxKernelTable baseline(false);
    if (!avx2)
        return baseline;
    static const QxKernelTable fast(true);
    return fast;
}
