// Runs a shader in a shared object, and collects its interface from two sources: its entry points,
// and the section of facts that the compiler has written into the file. Without valid facts, as in
// objects of older compilers, the shader itself is run to find a part of the interface.
//
// Tested by tests/host/HostFilesTest.cpp, also with shared objects that must be refused
// (tests/host/fakes).

#include "host/QxShaderObject.h"

#include <algorithm>
#include <bit>

#include "QxHostError.h"
#include "host/QxErrorHolder.h"
#include "host/QxHostGrid.h"
#include "host/QxHostSpaces.h"
#include "host/QxLoadedObject.h"

namespace {

/// Discards what a shader prints and reports.
class SilentSupport : public QxShaderSupport {
public:
    void Print(const char*) override {}
    void Report(const char*) override {}
};

}  // namespace

// Initializing and evaluating change no data of the shared object, so runs in several threads need
// no lock.
class QxShaderObject::Run : public QxShaderRun {
public:
    explicit Run(const QxLoadedObject& object) : m_object(object) {}

    void Initialize(const QxShadingContext& context, const QxFrame3D** spaces,
                    std::vector<QxVar>& variables) override
    {
        QxErrorHolder holder(*context.ShaderSupport(), m_files, QxDraws::k_ofDefaults);
        m_object.initialize(context.With(holder), variables.data(), spaces);
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
        std::bit_cast<Function>(m_object.evaluate)(layout.columns, layout.rows, context,
                                                   Hidden(hidden), variables.data(), rest...);
    }

    const QxLoadedObject& m_object;
    QxFileHandles m_files;
};

void QxShaderObject::Run::Evaluate(const QxGrid& layout, const QxShadingContext& given,
                                   const QxHiddenVariables& hidden, std::vector<QxVar>& variables,
                                   std::vector<QxLightInput>& lights)
{
    QxErrorHolder holder(*given.ShaderSupport(), m_files);
    const QxShadingContext context = given.With(holder);
    switch (m_object.type) {
    case QxShaderInterface::e_typeLight:
        Call<QxLoadedObject::EvaluateLight, QxLightHidden>(layout, context, hidden, variables,
                                                           true);
        break;
    case QxShaderInterface::e_typeSurface:
    case QxShaderInterface::e_typeVolume:
        Call<QxLoadedObject::EvaluateSurface, QxSurfaceHidden>(
            layout, context, hidden, variables, static_cast<unsigned int>(lights.size()),
            lights.data());
        break;
    case QxShaderInterface::e_typeDisplacement:
        Call<QxLoadedObject::EvaluateDisplacement, QxSurfaceHidden>(layout, context, hidden,
                                                                    variables);
        break;
    case QxShaderInterface::e_typeImager:
        Call<QxLoadedObject::EvaluateImager, QxImagerHidden>(layout, context, hidden, variables);
        break;
    }
    holder.Release();
}

QxShaderObject::QxShaderObject(const std::string& path,
                               const std::vector<std::string>& shadeopFolders)
    : QxShader(path),
      m_object(QxLoadedObject::Acquire(path, shadeopFolders))
{
    ReadInterface();
}

QxShaderObject::~QxShaderObject() = default;

void QxShaderObject::ReadInterface()
{
    m_info.type = m_object->type;
    m_info.spaces = m_object->spaceNames;
    m_info.shadeopLibraries = m_object->shadeopLibraries;
    for (std::size_t i = 0; i < m_object->sizes->parameters; ++i) {
        const QxVar& variable = m_object->variables[i];
        m_info.parameters.push_back({.name = variable.Name(),
                                     .type = variable.Type(),
                                     .varying = variable.IsVarying(),
                                     .length = variable.Length(),
                                     .output = m_object->isOutput[i] != 0,
                                     .space = {},
                                     .needsObjectSpace = m_object->needsObjectSpace[i] != 0});
    }
    for (std::size_t i = 0; i < m_object->sizes->predefinedVariables; ++i)
        m_info.predefined.emplace_back(m_object->predefined[i]->name);
    m_info.tracesRays = m_object->useRayTracing() != 0;
    m_info.modifiesP = m_object->modifyPoint() != 0;
    const bool isKnown = m_object->facts.Found() == SqxObjectFacts::State::Whole;
    if (isKnown)
        ReadFacts();
    else
        ReadDefaultSpaces();
    m_info.isAmbient = m_info.type == QxShaderInterface::e_typeLight &&
                       !m_object->hasLightStatement && (isKnown || ClearsDirection());
}

/// Adds what only the facts contain: exact types, the spaces of default values, and which default
/// values depend on the point. Throws `QxHostError` if the facts describe other parameters than the
/// entry points: in an edited file they may belong to another shader, and values would be stored in
/// the wrong places.
void QxShaderObject::ReadFacts()
{
    const SqxShader& shader = m_object->facts.Shader();
    bool matches = shader.parameterCount == m_info.parameters.size();
    for (std::size_t i = 0; matches && i < m_info.parameters.size(); ++i) {
        const SqxVariable& known = shader.Parameter(i);
        const auto type = static_cast<QxValueType>(static_cast<int>(known.type));
        Parameter& parameter = m_info.parameters[i];
        // Entry points declare vectors and normals as points.
        matches = known.name == parameter.name && known.uniform != parameter.varying &&
                  static_cast<std::size_t>(known.size) == parameter.length &&
                  QxFitsType(type, parameter.type);
        parameter.type = type;
        parameter.space = known.space;
    }
    if (!matches)
        throw QxHostError("Shader '" + m_name + "' has parameters other than those it lists");
    for (const SqxInitializer& initializer : shader.initializers)
        if (initializer.perPoint)
            m_perPoint.insert(initializer.parameter);
}

/// True if a run at one point sets `L` to zero. A light without `illuminate` and `solar` does so;
/// with them it sets `L` to a direction, unless the run skips these statements.
bool QxShaderObject::ClearsDirection() const
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
    Run run(*m_object);
    run.Initialize(context, list.data(), variables);
    run.Evaluate(probe.Layout(), context, probe.Hidden(), variables, none);
    return probe.Values<QxVector3>("L")[0] == QxVector3{0, 0, 0};
}

/// Sets the spaces of the default values: `QxInitialize` stores in each variable the space in which
/// the source specifies its default value.
void QxShaderObject::ReadDefaultSpaces()
{
    std::vector<QxVar> variables(m_info.parameters.size());
    ComputeDefaults(variables);
    for (std::size_t i = 0; i < variables.size(); ++i)
        m_info.parameters[i].space = variables[i].DefaultSpace();
}

std::unique_ptr<QxShaderRun> QxShaderObject::NewRun() const
{
    return std::make_unique<Run>(*m_object);
}
