// Runs grids of one point, which ray tracers shade.
//
// The single point is either active or not. So a condition is a jump over its brackets, which need
// no mask, parallel brackets are ignored, and instructions with a kernel for one point avoid the
// loop over points. Instructions run in the order of the code, so the point's texts reach the scene
// in that order.
//
// Tested by tests/host/AgreementTest.cpp, where grids of one point are shaded too.

#include "machine/run/QxMachineRun.h"

void QxMachineRun::RunBlockAtPoint(const QxProgramBlock& block)
{
    const QxCode* const codes = block.codes.data();
    CountWork(block.codes.size());
    for (const QxCode* code = codes;;) {
        if (code->point) {
            code->point(m_state, code->operands);
            ++code;
            continue;
        }
        switch (code->step) {
        case QxCodeStep::Once:
        case QxCodeStep::Kernel:
        case QxCodeStep::Grid:
            code->all(m_state, *code, {0, 1, nullptr});
            ++code;
            break;
        case QxCodeStep::Where:
            code += IsTrue(*code) ? 1 : code->number;
            break;
        case QxCodeStep::IfTrue:
        case QxCodeStep::IfFalse:
            code += IsTrue(*code) == (code->step == QxCodeStep::IfTrue) ? 1 : code->number;
            break;
        case QxCodeStep::EndIf:
        case QxCodeStep::BeginParallel:
        case QxCodeStep::EndParallel:
            ++code;
            break;
        case QxCodeStep::GridIf:
            RunWhere(*code++);
            break;
        case QxCodeStep::Goto:
        case QxCodeStep::GotoIfTrue:
        case QxCodeStep::GotoIfFalse:
            code = Jump(codes, code, {0, 1, nullptr});
            break;
        case QxCodeStep::BeginLights:
            code = BeginLights(block, code);
            break;
        case QxCodeStep::EndLights:
            code = EndLights(block, code);
            break;
        case QxCodeStep::Stop:
            return;
        }
    }
}
