#include "machine/SqxMachine.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "machine/SqxDefaults.h"
#include "machine/SqxScene.h"

SqxMachine::SqxMachine() = default;
SqxMachine::~SqxMachine() = default;

// Loading and settings

bool SqxMachine::Load(const std::string& path)
{
    if (m_reader.ReadFile(path)) {
        Prepare();
        return m_message.empty();
    }
    m_message = m_reader.Message();
    return false;
}

bool SqxMachine::LoadText(std::string_view text)
{
    if (m_reader.Read(text)) {
        Prepare();
        return m_message.empty();
    }
    m_message = m_reader.Message();
    return false;
}

void SqxMachine::Prepare()
{
    m_message.clear();
    m_store.reset();
    m_initializers.clear();
    try {
        m_main = std::make_unique<SqxProgram>(Shader().main);
        for (const SqxInitializer& initializer : Shader().initializers)
            m_initializers.emplace_back(initializer.code);
    } catch (const SqxFault& fault) {
        m_message = fault.message;
    }
}

void SqxMachine::Set(const std::string& name, std::vector<float> numbers)
{
    m_settings[name] = {std::move(numbers), {}};
}

void SqxMachine::SetText(const std::string& name, std::string text)
{
    m_settings[name] = {{}, std::move(text)};
}

void SqxMachine::SetSpace(const std::string& name, const QxMatrix44& toCurrent)
{
    m_spaces[name] = QxFrame3D(toCurrent);
}

void SqxMachine::SetShadeop(const std::string& method, std::function<void(const SqxCall&)> function)
{
    m_shadeops[method] = std::move(function);
}

// Values by name

std::optional<std::size_t> SqxMachine::FindNamed(const std::string& name) const
{
    const std::size_t named = Shader().predefinedCount + Shader().parameterCount;
    for (std::size_t i = 0; i < named; ++i)
        if (Shader().variables[i].name == name)
            return i;
    return std::nullopt;
}

std::vector<float> SqxMachine::ValueOf(const std::string& name, std::size_t point)
{
    const auto number = FindNamed(name);
    if (!number || !m_store)
        return {};
    const auto numbers = m_store->Numbers(*number, point);
    return {numbers.begin(), numbers.end()};
}

std::string SqxMachine::TextOf(const std::string& name, std::size_t point)
{
    const auto number = FindNamed(name);
    return number && m_store ? m_store->Texts(*number, point)[0] : "";
}

// Spaces

const QxFrame3D& SqxMachine::Space(const std::string& name) const
{
    const auto found = m_spaces.find(name);
    return found == m_spaces.end() ? m_current : found->second;
}

const QxFrame3D& SqxMachine::SpaceByNumber(int number) const
{
    return Space(Shader().spaces[static_cast<std::size_t>(number)]);
}

bool SqxMachine::IsLight() const
{
    constexpr int light = 3;
    return Shader().shaderType == light;
}

// Running

bool SqxMachine::Run()
{
    m_message.clear();
    m_running = nullptr;
    try {
        Start();
        RunInitializers();
        RunProgram(*m_main, false);
        CheckResults();
    } catch (const SqxFault& fault) {
        m_message = m_running ? Place(*m_running) + fault.message : fault.message;
    }
    return m_message.empty();
}

void SqxMachine::Start()
{
    m_store = std::make_unique<SqxStore>(Shader(), m_grid.Size());
    m_ownSupport = std::make_unique<SqxScene>();
    m_support = m_givenSupport ? m_givenSupport : m_ownSupport.get();
    m_steps = 0;
    m_draws.Start(0);
    m_lightsAreForP = false;
    m_litPositions.clear();
    m_lightLoops.clear();
    m_doubt = nullptr;
    ApplySettings();
}

/// Throws `SqxFault` if a predefined variable or an output parameter, which a renderer can read,
/// has an element at some point that nothing has written.
void SqxMachine::CheckResults()
{
    m_running = nullptr;
    const std::size_t named = Shader().predefinedCount + Shader().parameterCount;
    for (std::size_t i = 0; i < named; ++i) {
        const SqxVariable& variable = Shader().variables[i];
        const bool isResult = i < Shader().predefinedCount || variable.output;
        for (std::size_t point = 0; isResult && point < m_grid.Size(); ++point)
            if (m_store->HasPoison(i, point))
                throw SqxFault{"Nothing has written '" + variable.name + "' at point " +
                               std::to_string(point)};
    }
}

std::string SqxMachine::Place(const SqxCode& code) const
{
    return (m_inInitializer ? "initializer, " : "main, ") + std::string(code.source->layout->name) +
           " at " + std::to_string(code.source->position) + ": ";
}

void SqxMachine::Count()
{
    if (++m_steps > m_stepLimit)
        throw SqxFault{"The shader does not end"};
}

void SqxMachine::RunInitializers()
{
    for (std::size_t i = 0; i < m_initializers.size(); ++i) {
        const SqxInitializer& initializer = Shader().initializers[i];
        if (m_settings.contains(Shader().Parameter(initializer.parameter).name))
            continue;
        RunProgram(m_initializers[i], true);
        CopyResult(Shader().predefinedCount + initializer.parameter,
                   static_cast<std::size_t>(initializer.result));
    }
}

void SqxMachine::CopyResult(std::size_t parameter, std::size_t result)
{
    m_running = nullptr;
    const std::size_t points = Shader().variables[parameter].uniform ? 1 : m_grid.Size();
    for (std::size_t i = 0; i < points; ++i) {
        if (Shader().variables[parameter].type == SqxType::String) {
            const auto from = m_store->Texts(result, i);
            std::copy(from.begin(), from.end(), m_store->Texts(parameter, i).begin());
            continue;
        }
        const auto from = m_store->Numbers(result, i);
        const auto to = m_store->Numbers(parameter, i);
        if (from.size() != to.size())
            throw SqxFault{"Parameter '" + Shader().variables[parameter].name +
                           "' has a default value of another type"};
        std::copy(from.begin(), from.end(), to.begin());
    }
}

void SqxMachine::RunProgram(const SqxProgram& program, bool initializer)
{
    m_inInitializer = initializer;
    for (std::size_t index = 0; index < program.Codes().size();) {
        m_running = &program.Codes()[index];
        Count();
        index = RunStep(program, index);
    }
}

/// Runs one instruction, or a parallel bracket to its end, and returns the index of the next
/// instruction.
std::size_t SqxMachine::RunStep(const SqxProgram& program, std::size_t index)
{
    const SqxCode& code = program.Codes()[index];
    switch (code.step) {
    case SqxStep::Simd:
        RunSimd(code);
        break;
    case SqxStep::Grid:
        code.gridOperation(SqxGridCall(*this, *m_store, code.operands, code.condition, m_grid,
                                       m_doubt != nullptr));
        break;
    case SqxStep::BeginParallel:
        RunParallel(program, index + 1, code.other);
        return code.other + 1;
    case SqxStep::If:
        return Enters(code, k_uniformPoint) ? index + 1 : code.other;
    case SqxStep::Goto:
        return code.other;
    case SqxStep::GotoIf:
        return Flag(code, k_uniformPoint) ? code.other : index + 1;
    case SqxStep::BeginLights:
        return BeginLights(code, index);
    case SqxStep::EndLights:
        return EndLights(code, index);
    case SqxStep::EvalLights: {
        const SqxGridCall call(*this, *m_store, code.operands, -1, m_grid);
        EvaluateLights(call.Gather<QxVector3>(0));
        m_lightsAreForP = false;
        break;
    }
    case SqxStep::EvalLightsForP:
        if (!m_lightsAreForP) {
            std::vector<QxVector3> positions;
            for (std::size_t i = 0; i < m_grid.Size(); ++i)
                positions.push_back(PredefinedTriple("P", i));
            EvaluateLights(positions);
            m_lightsAreForP = true;
        }
        break;
    case SqxStep::ResetLights:
        m_lightsAreForP = false;
        break;
    case SqxStep::EndIf:
        Leaves(program.Codes()[code.other]);
        break;
    case SqxStep::EndParallel:
        break;
    case SqxStep::Plain:
    case SqxStep::SetBool:
    case SqxStep::ArrayRef:
    case SqxStep::CheckIndex:
    case SqxStep::CallShadeop:
        RunPlain(code);
        break;
    }
    return index + 1;
}

bool SqxMachine::Flag(const SqxCode& code, std::size_t point)
{
    return SqxCall(*this, *m_store, code.operands, point).Get<bool>(0) == code.wanted;
}

/// Returns whether the bracket of an IF runs. If its flag is uniform and nothing has written it,
/// the bracket runs and its results are poison: the compiler leaves such a flag unwritten only
/// where no point is active, and there nothing may read the results.
bool SqxMachine::Enters(const SqxCode& code, std::size_t point)
{
    const auto flag = static_cast<std::size_t>(code.operands[0]);
    if (!m_store->Variable(flag).uniform || !m_store->HasPoison(flag, point))
        return Flag(code, point);
    if (!m_doubt)
        m_doubt = &code;
    return true;
}

void SqxMachine::Leaves(const SqxCode& code)
{
    if (m_doubt == &code)
        m_doubt = nullptr;
}

/// Runs an instruction outside the parallel brackets: once, except that an instruction with a
/// varying result in an initializer runs for each point.
void SqxMachine::RunPlain(const SqxCode& code)
{
    const bool hasResult = code.step == SqxStep::Plain && !code.operands.empty();
    if (m_inInitializer && hasResult &&
        !m_store->Variable(static_cast<std::size_t>(code.operands[0])).uniform) {
        for (std::size_t i = 0; i < m_grid.Size(); ++i)
            RunAt(code, i);
        return;
    }
    RunAt(code, k_uniformPoint);
}

void SqxMachine::RunSimd(const SqxCode& code)
{
    const SqxGridCall grid(*this, *m_store, code.operands, code.condition, m_grid,
                           m_doubt != nullptr);
    for (std::size_t i = 0; i < m_grid.Size(); ++i) {
        if (grid.IsOn(i))
            code.operation(grid.At(i));
        else if (code.isStatement)
            grid.At(i).Set(0, false);
    }
}

void SqxMachine::RunParallel(const SqxProgram& program, std::size_t begin, std::size_t end)
{
    for (std::size_t i = 0; i < m_grid.Size(); ++i)
        RunPoint(program, begin, end, i);
}

void SqxMachine::RunPoint(const SqxProgram& program, std::size_t begin, std::size_t end,
                          std::size_t point)
{
    for (std::size_t index = begin; index < end;) {
        const SqxCode& code = program.Codes()[index];
        m_running = &code;
        Count();
        if (code.step == SqxStep::If) {
            index = Enters(code, point) ? index + 1 : code.other;
            continue;
        }
        if (code.step == SqxStep::EndIf)
            Leaves(program.Codes()[code.other]);
        else
            RunAt(code, point);
        ++index;
    }
}

void SqxMachine::RunAt(const SqxCode& code, std::size_t point)
{
    const SqxCall call(*this, *m_store, code.operands, point, m_doubt != nullptr);
    switch (code.step) {
    case SqxStep::Plain:
        code.operation(call);
        break;
    case SqxStep::SetBool:
        call.Set(0, false);
        break;
    case SqxStep::ArrayRef:
        m_store->Bind(static_cast<std::size_t>(call.Operand(0)), point,
                      static_cast<std::size_t>(call.Operand(1)), call.Get<float>(2));
        break;
    case SqxStep::CheckIndex:
        if (!m_doubt)
            CheckIndex(call);
        break;
    case SqxStep::CallShadeop:
        CallShadeop(code, call);
        break;
    default:
        throw SqxFault{"This cannot stand within parallel brackets"};
    }
}

void SqxMachine::CheckIndex(const SqxCall& call)
{
    const float index = call.Get<float>(1);
    call.RefusePoison();
    // The index is truncated, and NaN is outside the array.
    if (std::trunc(index) >= 0 && std::trunc(index) < static_cast<float>(call.Operand(2)))
        return;
    char place[64];
    std::snprintf(place, sizeof place, ":%d: index %g", call.Operand(4),
                  static_cast<double>(index));
    const std::string text = call.Get<std::string>(3) + place + " is outside of array '" +
                             call.Get<std::string>(0) + "'";
    Support().Report(text.c_str());
}

void SqxMachine::CallShadeop(const SqxCode& code, const SqxCall& call)
{
    const auto& function = Shader().functions[static_cast<std::size_t>(code.number)];
    const auto found = m_shadeops.find(function.method);
    if (found == m_shadeops.end())
        throw SqxFault{"There is no shadeop " + function.method};
    found->second(call);
}
