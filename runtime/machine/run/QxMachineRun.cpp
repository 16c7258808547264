// Runs the instructions of a program.
//
// Outside parallel brackets an instruction runs once, for the whole grid, or for the points of a
// flag. Inside, the code runs strip by strip, so that the values of a strip stay in the cache from
// one instruction to the next. A loop inside the brackets runs as long as a point of the strip is
// active in it, so points that have left the loop cost nothing once the whole strip has left it.
// The order of points inside the brackets has no effect, unless they may affect each other, as by
// writes to a uniform variable: then strips of one point run in order. Texts that points pass to
// the scene are sorted by point. Inside the brackets a condition narrows the mask: code without
// active points is skipped, and the mask is ignored if all points are active.

#include "machine/run/QxMachineRun.h"

#include <algorithm>

#include "QxHostError.h"

namespace {

// The least work between two reads of the clock: mostly the number of instructions, counted for
// each point. They take some microseconds if they are cheap, and some milliseconds if they are
// expensive.
constexpr std::size_t k_workBetweenLooks = std::size_t{1} << 15;
constexpr std::chrono::milliseconds k_timeBetweenTests{2};
// The number of flags that are combined without a branch, so that the loop is vectorized.
constexpr unsigned int k_flagsAtOnce = 64;

enum class Share { None, Some, All };

/// Returns whether no, some or all flags are set; `any` and `all` combine the flags by `|` and `&`.
Share ShareOf(unsigned int any, unsigned int all)
{
    if (any == 0)
        return Share::None;
    return all != 0 ? Share::All : Share::Some;
}

Share ShareOf(const QxStopAndBool* flags, unsigned int first, unsigned int count, bool wanted)
{
    unsigned int any = 0;
    unsigned int all = 1;
    // Once a set and a cleared flag have been seen, the other flags do not matter.
    for (unsigned int i = first; i < first + count && any <= all; i += k_flagsAtOnce) {
        const unsigned int end = std::min(i + k_flagsAtOnce, first + count);
        for (unsigned int j = i; j < end; ++j) {
            any |= flags[j].value;
            all &= flags[j].value;
        }
    }
    return wanted ? ShareOf(any, all) : ShareOf(all ^ 1, any ^ 1);
}

/// Sets mask = outer and (flags == wanted). Returns whether no, some or all flags of the mask are
/// set.
Share MakeMask(QxStopAndBool* mask, const QxStopAndBool* outer, const QxStopAndBool* flags,
               const QxPoints& points, bool wanted)
{
    const unsigned int turn = wanted ? 0 : 1;
    unsigned int any = 0;
    unsigned int all = 1;
    for (unsigned int i = points.first; i < points.End(); ++i) {
        const unsigned int value = (flags[i].value ^ turn) & (outer ? outer[i].value : 1);
        mask[i].value = value;
        any |= value;
        all &= value;
    }
    return ShareOf(any, all);
}

}  // namespace

QxMachineRun::QxMachineRun(const QxMachineProgram& program)
    : m_program(program),
      m_code(program.Code()),
      m_store(program.Code()),
      m_masks(program.Code().depth),
      m_outer(program.Code().depth)
{
    if (m_code.shadeops)
        m_state.shadeops = m_code.shadeops->Loaded();
}

void QxMachineRun::Start(const QxGrid& grid, const QxShadingContext& context,
                         std::vector<QxVar>& variables, unsigned int firstDraw)
{
    if (variables.size() != m_program.Info().parameters.size())
        throw QxHostError("Shader '" + m_program.Name() + "' has another number of parameters");
    m_store.Start(grid.Size(), variables, m_memoryLimit);
    m_state.values = m_store.Values();
    m_state.grid = grid;
    m_state.context = &context;
    m_state.support = context.ShaderSupport();
    m_state.lights = nullptr;
    m_state.lightCount = 0;
    m_state.light = nullptr;
    m_state.lightNumber = ~0U;
    m_state.lightsAreForP = false;
    m_state.notesWait = false;
    m_state.notes.clear();
    m_state.draws.Start(firstDraw);
    m_loops.clear();
    m_state.work = this;
    m_steps = 0;
    m_innerWork = 0;
}

void QxMachineRun::Initialize(const QxShadingContext& context, std::vector<QxVar>& variables)
{
    const auto isWanted = [&](const auto& initializer) {
        return variables[initializer.parameter].UseDefaultValue();
    };
    if (variables.size() == m_program.Info().parameters.size() &&
        std::none_of(m_code.once.begin(), m_code.once.end(), isWanted))
        return;
    // The memory for grids is kept: these blocks are uniform, and work with any number of points.
    Start({m_store.Points(), 1}, context, variables, QxDraws::k_ofDefaults);
    m_store.BindWithoutGrid(*context.Eye());
    for (const QxMachineCode::Initializer& initializer : m_code.once) {
        QxVar& variable = variables[initializer.parameter];
        if (!isWanted(initializer))
            continue;
        RunBlock(initializer.code);
        variable.Store(m_state.values[initializer.result]);
    }
}

void QxMachineRun::InitializeAtPoints(std::vector<QxVar>& variables)
{
    for (const QxMachineCode::Initializer& initializer : m_code.perPoint) {
        QxVar& variable = variables[initializer.parameter];
        if (!variable.UseDefaultValue())
            continue;
        RunBlock(initializer.code);
        void* const result = m_state.values[initializer.result];
        if (m_code.variables[initializer.result].varying && variable.IsVarying())
            variable.StoreForEachPoint(result);
        else
            variable.Store(result);
    }
}

void QxMachineRun::Evaluate(const QxGrid& grid, const QxShadingContext& context,
                            const QxHiddenVariables& hidden, std::vector<QxVar>& variables,
                            std::vector<QxLightInput>& lights)
{
    Start(grid, context, variables, 0);
    for (const QxVar& variable : variables)
        if (variable.IsVarying() && variable.Points() != m_state.grid.Size())
            throw QxHostError(std::string("Parameter '") + variable.Name() + "' has values for " +
                              std::to_string(variable.Points()) + " points, but the grid has " +
                              std::to_string(m_state.grid.Size()));
    if (m_state.grid.Size() > 1)
        for (std::vector<QxStopAndBool>& mask : m_masks)
            mask.resize(k_qxMachineStrip);
    m_store.Bind(hidden, *context.Eye());
    m_state.P = static_cast<QxVector3*>(hidden.P ? hidden.P : m_store.Zeros());
    m_state.lights = lights.data();
    m_state.lightCount = static_cast<unsigned int>(lights.size());
    InitializeAtPoints(variables);
    m_state.lightsAreForP = false;
    const QxShaderInterface::QxType type = m_program.Info().type;
    if (type == QxShaderInterface::e_typeSurface || type == QxShaderInterface::e_typeVolume)
        m_state.lightNumber = 0;
    RunBlock(m_code.main);
}

void QxMachineRun::RunBlock(const QxProgramBlock& block)
{
    m_store.Clear(block.clears);
    if (m_state.grid.Size() == 1)
        return RunBlockAtPoint(block);
    const QxCode* const codes = block.codes.data();
    const QxPoints one = {0, 1, nullptr};
    const QxPoints all = {0, m_state.grid.Size(), nullptr};
    for (const QxCode* code = codes;;) {
        switch (code->step) {
        case QxCodeStep::Once:
            code->all(m_state, *code, one);
            ++code;
            break;
        case QxCodeStep::Kernel:
        case QxCodeStep::Grid:
            code->all(m_state, *code, all);
            CountWork(all.count);
            ++code;
            break;
        case QxCodeStep::GridIf:
            RunWhere(*code++);
            CountWork(all.count);
            break;
        case QxCodeStep::BeginParallel:
            RunParallel(codes, code);
            code = codes + code->target;
            break;
        case QxCodeStep::Goto:
        case QxCodeStep::GotoIfTrue:
        case QxCodeStep::GotoIfFalse:
            code = Jump(codes, code, one);
            break;
        case QxCodeStep::BeginLights:
            code = BeginLights(block, code);
            break;
        case QxCodeStep::EndLights:
            code = EndLights(block, code);
            break;
        case QxCodeStep::EndParallel:
        case QxCodeStep::IfTrue:
        case QxCodeStep::IfFalse:
        case QxCodeStep::EndIf:
        case QxCodeStep::Where:
            ++code;
            break;
        case QxCodeStep::Stop:
            return;
        }
    }
}

void QxMachineRun::CountSteps(std::size_t steps)
{
    m_steps += steps;
    if (m_steps > m_stepLimit)
        throw QxHostError("Shader '" + m_program.Name() + "' does not end within " +
                          std::to_string(m_stepLimit) + " steps");
    CountWork(steps);
}

void QxMachineRun::CountInner(std::size_t work)
{
    m_innerWork += work;
    if (m_innerWork / std::max(1U, m_state.grid.Size()) > m_stepLimit)
        throw QxHostError("Shader '" + m_program.Name() + "' does not end within " +
                          std::to_string(m_stepLimit) + " steps on texts and lists");
    CountWork(work);
}

void QxMachineRun::CountWork(std::size_t work)
{
    m_work += work;
    if (m_work < k_workBetweenLooks)
        return;
    m_work = 0;
    if (!m_stopTest)
        return;
    const auto now = std::chrono::steady_clock::now();
    if (now - m_asked < k_timeBetweenTests)
        return;
    m_asked = now;
    if (m_stopTest())
        throw QxHostStopped("Shader '" + m_program.Name() + "' was stopped");
}

/// Runs `code` only for points whose flag is set. The flag is varying, see QxOperandCheck.cpp.
void QxMachineRun::RunWhere(const QxCode& code)
{
    const auto* flags = static_cast<QxStopAndBool*>(m_state.values[code.flag.variable]);
    QxPoints points = {0, m_state.grid.Size(), nullptr};
    const Share share = ShareOf(flags, 0, points.count, true);
    if (share == Share::None && !code.whole)
        return;
    if (share == Share::All)
        return code.all(m_state, code, points);
    points.mask = flags;
    code.masked(m_state, code, points);
}

// Parallel brackets

void QxMachineRun::RunParallel(const QxCode* codes, const QxCode* begin)
{
    unsigned int strip = begin->pointwise ? 1 : k_qxMachineStrip;
    if (begin->number != 0)
        strip = static_cast<unsigned int>(begin->number);
    const std::size_t length = codes + begin->target - begin;
    m_state.notesWait = true;
    const unsigned int size = m_state.grid.Size();
    const std::size_t stepsBefore = m_steps;
    std::size_t mostSteps = 0;
    for (unsigned int first = 0; first < size; first += strip) {
        const unsigned int count = std::min(strip, size - first);
        m_steps = stepsBefore;
        // Locals with room for one strip occur only with strips of at least the usual length. A
        // grid of at most this length has one strip, and these locals are bound to its start.
        if (size > k_qxMachineStrip)
            m_store.BindStrip(*begin, first);
        RunStrip(codes, begin + 1, first, count);
        mostSteps = std::max(mostSteps, m_steps);
        CountWork(count * length);
        if (!m_state.notes.empty())
            SendNotes();
    }
    // Steps count as if all strips ran together.
    m_steps = std::max(stepsBefore, mostSteps);
    m_state.notesWait = false;
}

void QxMachineRun::SendNotes()
{
    std::stable_sort(m_state.notes.begin(), m_state.notes.end(),
                     [](const QxNote& a, const QxNote& b) { return a.point < b.point; });
    const std::vector<QxNote> notes = std::move(m_state.notes);
    m_state.notes.clear();
    m_state.notesWait = false;
    for (const QxNote& note : notes)
        m_state.Emit(note.point, note.print, note.text);
    m_state.notesWait = true;
}

void QxMachineRun::RunStrip(const QxCode* codes, const QxCode* begin, unsigned int first,
                            unsigned int count)
{
    QxPoints points = {first, count, nullptr};
    unsigned int depth = 0;
    for (const QxCode* code = begin;;) {
        if (code->step == QxCodeStep::Kernel) {
            (points.mask ? code->masked : code->all)(m_state, *code, points);
            ++code;
        } else if (code->step == QxCodeStep::EndIf) {
            points.mask = m_outer[--depth];
            ++code;
        } else if (code->step == QxCodeStep::Where) {
            code = RunAtFlag(code, points);
        } else if (QxIsCondition(code->step)) {
            const QxCode* const inner = Enter(code, points, depth);
            depth += inner == code + 1 ? 1 : 0;
            code = inner;
        } else if (code->step == QxCodeStep::EndParallel) {
            return;
        } else {
            const QxCode* const next = Jump(codes, code, points);
            if (next <= code)
                CountWork(count * static_cast<std::size_t>(code - next));
            code = next;
        }
    }
}

/// Runs instructions for the points of a flag. Returns the next instruction.
const QxCode* QxMachineRun::RunAtFlag(const QxCode* code, QxPoints points)
{
    points.mask = static_cast<const QxStopAndBool*>(m_state.values[code->flag.variable]);
    for (const QxCode* const end = code + code->number; ++code != end;)
        code->masked(m_state, *code, points);
    return code;
}

bool QxMachineRun::IsTrueSomewhere(const QxCode& code, const QxPoints& points) const
{
    if (code.flag.step == 0)
        return IsTrue(code);
    const auto* flags = static_cast<const QxStopAndBool*>(m_state.values[code.flag.variable]);
    unsigned int any = 0;
    for (unsigned int i = points.first; i < points.End() && any == 0; i += k_flagsAtOnce)
        for (unsigned int j = i; j < std::min(i + k_flagsAtOnce, points.End()); ++j)
            any |= flags[j].value;
    return any != 0;
}

/// Returns the target of a jump, or the next instruction if the jump is not taken. If it is taken,
/// counts the steps of a backward jump, and ends the loops over lights that the jump leaves.
const QxCode* QxMachineRun::Jump(const QxCode* codes, const QxCode* code, const QxPoints& points)
{
    const bool jump = code->step == QxCodeStep::Goto ||
                      IsTrueSomewhere(*code, points) == (code->step == QxCodeStep::GotoIfTrue);
    if (!jump)
        return code + 1;
    const QxCode* const next = codes + code->target;
    if (next <= code)
        CountSteps(static_cast<std::size_t>(code - next) + 1);
    if (static_cast<std::size_t>(code->number) < m_loops.size())
        LeaveLights(static_cast<std::size_t>(code->number));
    return next;
}

/// Begins a condition: narrows the mask of `points`, and stores the outer mask for the end of its
/// brackets. Returns the first instruction in them, or after them if no point is active.
const QxCode* QxMachineRun::Enter(const QxCode* code, QxPoints& points, unsigned int depth)
{
    const bool wanted = code->step == QxCodeStep::IfTrue;
    auto* const flags = static_cast<QxStopAndBool*>(m_state.values[code->flag.variable]);
    const QxCode* const after = code + code->number;
    m_outer[depth] = points.mask;
    if (code->flag.step == 0)
        return static_cast<bool>(*flags) == wanted ? code + 1 : after;
    if (!points.mask && wanted && !code->copyFlag) {
        const Share share = ShareOf(flags, points.first, points.count, wanted);
        points.mask = share == Share::Some ? flags : nullptr;
        return share == Share::None ? after : code + 1;
    }
    QxStopAndBool* const mask = QxBaseOf(m_masks[depth].data(), points.first);
    switch (MakeMask(mask, points.mask, flags, points, wanted)) {
    case Share::None:
        return after;
    case Share::All:
        points.mask = nullptr;
        break;
    case Share::Some:
        points.mask = mask;
        break;
    }
    return code + 1;
}
