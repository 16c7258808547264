// Runs of a shader in a shared object, and what it is known to hold: what its entry points say, and
// what the compiler wrote into the file beside them.
//
// Tested by tests/host/HostTest.cpp; tests/host/fakes are shared objects that are no shaders.

#include "host/QxShaderObject.h"

#include <algorithm>
#include <bit>

#include "QxHostError.h"
#include "host/QxErrorHolder.h"
#include "host/QxHostGrid.h"
#include "host/QxHostSpaces.h"
#include "host/QxObjectLife.h"

namespace {

/// Drops what a shader says.
class SilentSupport : public QxShaderSupport {
public:
    void Print(const char*) override {}
    void Report(const char*) override {}
};

}  // namespace

// A shared object keeps nothing of its own between two calls, so that threads need not wait for
// each other.
class QxShaderObject::Run : public QxShaderRun {
public:
    explicit Run(const QxObjectLife& life) : m_life(life) {}

    void Initialize(const QxShadingContext& context, const QxFrame3D** spaces,
                    std::vector<QxVar>& variables) override
    {
        QxErrorHolder holder(*context.ShaderSupport(), m_files, QxDraws::k_ofDefaults);
        m_life.initialize(context.With(holder), variables.data(), spaces);
        holder.Release();
    }
    void Evaluate(const QxGrid& layout, const QxShadingContext& context,
                  const QxHiddenVariables& hidden, std::vector<QxVar>& variables,
                  std::vector<QxLightInput>& lights) override;
    void ForgetFiles() override { m_files.Forget(); }

private:
    template <class Function, class Hidden, class... Rest>
    void Call(const QxGrid& layout, const QxShadingContext& context,
              const QxHiddenVariables& hidden, std::vector<QxVar>& variables, Rest... rest) const
    {
        std::bit_cast<Function>(m_life.evaluate)(layout.columns, layout.rows, context,
                                                 Hidden(hidden), variables.data(), rest...);
    }

    const QxObjectLife& m_life;
    QxFileHandles m_files;
};

void QxShaderObject::Run::Evaluate(const QxGrid& layout, const QxShadingContext& given,
                                   const QxHiddenVariables& hidden, std::vector<QxVar>& variables,
                                   std::vector<QxLightInput>& lights)
{
    QxErrorHolder holder(*given.ShaderSupport(), m_files);
    const QxShadingContext context = given.With(holder);
    switch (m_life.type) {
    case QxShaderInterface::e_typeLight:
        Call<QxObjectLife::EvaluateLight, QxLightHidden>(layout, context, hidden, variables, true);
        break;
    case QxShaderInterface::e_typeSurface:
    case QxShaderInterface::e_typeVolume:
        Call<QxObjectLife::EvaluateSurface, QxSurfaceHidden>(
            layout, context, hidden, variables, static_cast<unsigned int>(lights.size()),
            lights.data());
        break;
    case QxShaderInterface::e_typeDisplacement:
        Call<QxObjectLife::EvaluateDisplacement, QxSurfaceHidden>(layout, context, hidden,
                                                                  variables);
        break;
    case QxShaderInterface::e_typeImager:
        Call<QxObjectLife::EvaluateImager, QxImagerHidden>(layout, context, hidden, variables);
        break;
    }
    holder.Release();
}

QxShaderObject::QxShaderObject(const std::string& path,
                               const std::vector<std::string>& shadeopFolders)
    : QxShader(path),
      m_life(QxObjectLife::Enter(path, shadeopFolders))
{
    ReadInterface();
}

QxShaderObject::~QxShaderObject() = default;

void QxShaderObject::ReadInterface()
{
    m_info.type = m_life->type;
    m_info.spaces = m_life->spaceNames;
    m_info.shadeopLibraries = m_life->shadeopLibraries;
    for (std::size_t i = 0; i < m_life->sizes->parameters; ++i) {
        const QxVar& variable = m_life->variables[i];
        m_info.parameters.push_back({.name = variable.Name(),
                                     .type = variable.Type(),
                                     .varying = variable.IsVarying(),
                                     .length = variable.Length(),
                                     .output = m_life->isOutput[i] != 0,
                                     .space = {},
                                     .needsObjectSpace = m_life->needsObjectSpace[i] != 0});
    }
    for (std::size_t i = 0; i < m_life->sizes->predefinedVariables; ++i)
        m_info.predefined.emplace_back(m_life->predefined[i]->name);
    m_info.tracesRays = m_life->useRayTracing() != 0;
    m_info.modifiesP = m_life->modifyPoint() != 0;
    const bool isKnown = m_life->facts.Found() == SqxObjectFacts::State::Whole;
    if (isKnown)
        ReadFacts();
    else
        ReadDefaultSpaces();
    m_info.isAmbient = m_info.type == QxShaderInterface::e_typeLight &&
                       !m_life->hasLightStatement && (isKnown || LeavesNoDirection());
}

/// Facts of another shader, as an edited file has them, would have values stored in wrong places.
void QxShaderObject::ReadFacts()
{
    const SqxShader& shader = m_life->facts.Shader();
    bool fits = shader.parameterCount == m_info.parameters.size();
    for (std::size_t i = 0; fits && i < m_info.parameters.size(); ++i) {
        const SqxVariable& known = shader.Parameter(i);
        const auto type = static_cast<QxValueType>(static_cast<int>(known.type));
        Parameter& parameter = m_info.parameters[i];
        // Entry points call vectors and normals points.
        fits = known.name == parameter.name && known.uniform != parameter.varying &&
               static_cast<std::size_t>(known.size) == parameter.length &&
               QxFitsType(type, parameter.type);
        parameter.type = type;
        parameter.space = known.space;
    }
    if (!fits)
        throw QxHostError("Shader '" + m_name + "' has parameters other than those it lists");
    for (const SqxInitializer& initializer : shader.initializers)
        if (initializer.perPoint)
            m_perPoint.insert(initializer.parameter);
}

/// A light without `illuminate` and `solar` clears `L`, all others leave or set it.
bool QxShaderObject::LeavesNoDirection() const
{
    SilentSupport support;
    QxHostSpaces spaces;
    std::vector<const QxFrame3D*> list(m_info.spaces.size(), spaces.Find("current"));
    const QxShadingContext context(&support, &spaces, list.data(), {0, 0, 0});
    std::vector<QxVar> variables(m_info.parameters.size());
    std::vector<QxLightInput> none;
    QxHostGrid probe(1, 1);
    probe.Set("Ps", QxVector3{0.3F, -7.1F, 5.9F});
    probe.Set("L", QxVector3{1, 1, 1});
    Declare(variables);
    Run run(*m_life);
    run.Initialize(context, list.data(), variables);
    run.Evaluate(probe.Layout(), context, probe.Hidden(), variables, none);
    return probe.Values<QxVector3>("L")[0] == QxVector3{0, 0, 0};
}

/// The computation of the default values tells their spaces too.
void QxShaderObject::ReadDefaultSpaces()
{
    std::vector<QxVar> variables(m_info.parameters.size());
    ComputeDefaults(variables);
    for (std::size_t i = 0; i < variables.size(); ++i)
        m_info.parameters[i].space = variables[i].DefaultSpace();
}

std::unique_ptr<QxShaderRun> QxShaderObject::NewRun() const
{
    return std::make_unique<Run>(*m_life);
}
