// A run, from settings to values:
//
//     Set("Kd", 0.8)     remembered; the number of points is not known yet
//     Run(grid)          spaces, then room for each parameter, then settings, then default values
//                        of what has no setting, then the shader
//
// Room and default values stay from one run to the next, since most grids of a picture have one
// size: they are made anew only for another number of points, another setting, or a space that was
// defined since. Outputs alone start from their default values each time, for the last run has
// written over them.
//
// All this stands in a room. A run within a run takes another room than those that are in use, and
// grids of two sizes that take turns have a room each, so that neither needs memory of the system
// after its first run.
//
// Tested by tests/host/HostTest.cpp; tests/host/life watches the memory.

#include "host/QxShaderInstance.h"

#include <algorithm>
#include <new>

#include "QxHostError.h"

namespace {

using Parameter = QxShader::Parameter;

/// Calls `use` with the value's elements as a variable takes them.
template <class Use>
void WithElements(const QxHostValue& value, const Use& use)
{
    if (value.type != QxValueType::String) {
        use(static_cast<const void*>(value.numbers.data()));
        return;
    }
    std::vector<const char*> texts;
    for (const std::string& text : value.texts)
        texts.push_back(text.c_str());
    use(static_cast<const void*>(texts.data()));
}

}  // namespace

QxShaderInstance::Room::Room(const QxShader& shader)
    : run(shader.NewRun()),
      variables(shader.Parameters().size())
{
    shader.Declare(variables);
}

/// A room is in use as long as this lives.
class QxShaderInstance::RoomScope {
public:
    RoomScope(QxShaderInstance& instance, Room& room) : m_instance(instance), m_room(room)
    {
        room.busy = true;
        room.lastUse = ++instance.m_runs;
        instance.m_last.resize(instance.m_depth + 1);
        instance.m_last[instance.m_depth++] = nullptr;
        instance.m_running.push_back(&room);
    }
    ~RoomScope()
    {
        m_room.busy = false;
        m_instance.m_running.pop_back();
        m_instance.m_last[--m_instance.m_depth] = &m_room;
        m_instance.ReturnBuffers(m_room);
    }
    RoomScope(const RoomScope&) = delete;
    RoomScope& operator=(const RoomScope&) = delete;

private:
    QxShaderInstance& m_instance;
    Room& m_room;
};

QxShaderInstance::QxShaderInstance(std::shared_ptr<const QxShader> shader, QxHostSpaces& spaces)
    : m_shader(std::move(shader)),
      m_spaces(spaces),
      m_own(m_shader)
{
    // A surface gets what belongs to a light from its lights.
    const bool isLight = m_shader->Type() == QxShaderInterface::e_typeLight;
    for (const std::string& name : m_shader->Predefined())
        if (isLight || (name != "L" && name != "Cl" && name != "Ol"))
            m_wanted |= QxHostPoints::Named(name);
}

const Parameter& QxShaderInstance::At(QxParameterHandle parameter) const
{
    const auto number = static_cast<std::size_t>(parameter);
    if (number >= m_shader->Parameters().size())
        throw QxHostError("Shader '" + m_shader->Name() + "' has no parameter of that handle");
    return m_shader->Parameters()[number];
}

void QxShaderInstance::Set(QxParameterHandle parameter, const QxHostValue& value)
{
    m_own.Set(parameter, value);
    Forget(parameter);
}

void QxShaderInstance::SetForEachPoint(QxParameterHandle parameter, const QxHostValue& values)
{
    m_own.SetForEachPoint(parameter, values);
    Forget(parameter);
}

void QxShaderInstance::SetBuffer(QxParameterHandle handle, std::span<float> values)
{
    const Parameter& parameter = At(handle);
    if (parameter.type == QxValueType::String)
        throw QxHostError("Parameter '" + parameter.name +
                          "' is a string, which no buffer of numbers holds");
    const std::size_t ofPoint = parameter.length * QxFloatCount(parameter.type);
    const bool fits = parameter.varying ? !values.empty() && values.size() % ofPoint == 0
                                        : values.size() == ofPoint;
    if (!fits)
        throw QxHostError("The buffer of parameter '" + parameter.name + "' holds " +
                          std::to_string(values.size()) + " numbers, but " +
                          std::to_string(ofPoint) + " are needed" +
                          (parameter.varying ? " for each point" : ""));
    ClearBuffer(handle);
    if (!parameter.output)
        m_own.Reset(handle);
    m_buffers.insert_or_assign(static_cast<std::size_t>(handle), values);
    ++m_changes;
}

void QxShaderInstance::ClearBuffer(QxParameterHandle parameter)
{
    static_cast<void>(At(parameter));
    if (m_buffers.erase(static_cast<std::size_t>(parameter)) == 0)
        return;
    ++m_changes;
    for (const auto& room : m_rooms)
        if (!room->busy)
            ReturnBuffers(*room);
}

void QxShaderInstance::Reset(QxParameterHandle parameter)
{
    ClearBuffer(parameter);
    m_own.Reset(parameter);
}

/// An input has a new value, which no buffer holds.
void QxShaderInstance::Forget(QxParameterHandle parameter)
{
    if (!At(parameter).output)
        ClearBuffer(parameter);
}

void QxShaderInstance::Use(const QxParameterSet* set)
{
    if (set && &set->Shader() != m_shader.get())
        throw QxHostError("The set is one of shader '" + set->Shader().Name() + "', not of '" +
                          m_shader->Name() + "'");
    m_used = set;
}

/// What was a buffer and is none any more is referred to no longer: the host may free it.
void QxShaderInstance::ReturnBuffers(Room& room) const
{
    std::erase_if(room.borrowed, [&](std::size_t parameter) {
        QxVar& variable = room.variables[parameter];
        const auto found = m_buffers.find(parameter);
        if (found != m_buffers.end() && found->second.data() == variable.Value())
            return false;
        variable.Resize(1);
        room.points = 0;
        return true;
    });
}

void QxShaderInstance::SetStepLimit(std::size_t limit)
{
    m_stepLimit = limit;
    for (const auto& room : m_rooms)
        room->run->SetStepLimit(limit);
}

void QxShaderInstance::SetMemoryLimit(std::size_t bytes)
{
    m_memoryLimit = bytes;
    for (const auto& room : m_rooms)
        room->run->SetMemoryLimit(bytes);
}

/// In floating point, where no sum or product of hostile numbers goes round.
void QxShaderInstance::CheckMemory(std::size_t points) const
{
    double bytes = 0;
    for (const Parameter& parameter : m_shader->Parameters()) {
        const std::size_t element = parameter.type == QxValueType::String
                                        ? sizeof(char*)
                                        : QxFloatCount(parameter.type) * sizeof(float);
        bytes += static_cast<double>(parameter.varying ? points : 1) *
                 static_cast<double>(parameter.length) * static_cast<double>(element);
    }
    if (bytes > static_cast<double>(m_memoryLimit))
        throw QxHostError("The parameters of shader '" + m_shader->Name() +
                          "' need more memory for " + std::to_string(points) +
                          " points than the limit of " + std::to_string(m_memoryLimit) + " bytes");
}

void QxShaderInstance::SetStopTest(QxStopTest test)
{
    m_stopTest = std::move(test);
    for (const auto& room : m_rooms)
        room->run->SetStopTest(m_stopTest);
}

QxShaderInstance::Room& QxShaderInstance::NewRoom()
{
    auto room = std::make_unique<Room>(*m_shader);
    if (m_stepLimit)
        room->run->SetStepLimit(*m_stepLimit);
    room->run->SetMemoryLimit(m_memoryLimit);
    room->run->SetStopTest(m_stopTest);
    m_rooms.push_back(std::move(room));
    return *m_rooms.back();
}

/// What it holds is what the next run begins with.
bool QxShaderInstance::IsFresh(const Room& room) const
{
    return room.points != 0 && room.changes == m_changes && room.values == Values().Version();
}

/// One that holds the values for that many points, or else the one that was used least recently.
QxShaderInstance::Room& QxShaderInstance::FindRoom(std::size_t points)
{
    constexpr unsigned int k_spare = 4;
    Room* oldest = nullptr;
    unsigned int free = 0;
    for (const auto& room : m_rooms) {
        if (room->busy)
            continue;
        if (room->points == points && IsFresh(*room))
            return *room;
        ++free;
        // What holds nothing that is current goes first.
        const auto isBetter = [&](const Room& other) {
            return IsFresh(*room) == IsFresh(other) ? room->lastUse < other.lastUse
                                                    : IsFresh(other);
        };
        if (!oldest || isBetter(*oldest))
            oldest = room.get();
    }
    CheckMemory(points);
    const bool another = free == 0 || (free < k_spare && IsFresh(*oldest));
    return another ? NewRoom() : *oldest;
}

void QxShaderInstance::Run(const QxHostPoints& points, QxHostScene& scene)
{
    const QxHostScene::GridScope scope(scene, points, this);
    Shade(points, scene, scene.LightCount(), scene.FilesVersion());
}

void QxShaderInstance::Run(const QxHostPoints& points, QxShaderSupport& support,
                           unsigned int lightCount)
{
    if (m_depth > k_depthLimit)
        throw QxHostError("Shader '" + m_shader->Name() + "' is run within " +
                          std::to_string(m_depth) + " runs of itself, which is too deep");
    // A scene that is handed over as its base knows of the grid all the same.
    std::optional<QxHostScene::GridScope> scope;
    auto* const scene = dynamic_cast<QxHostScene*>(&support);
    if (scene)
        scope.emplace(*scene, points, this);
    Shade(points, support, lightCount, scene ? scene->FilesVersion() : 0);
}

/// `files`: the version of the handles that `support` gives, 0 if they are good for this run alone.
void QxShaderInstance::Shade(const QxHostPoints& points, QxShaderSupport& support,
                             unsigned int lightCount, unsigned long files)
{
    QxHostPoints::Check(points.layout);
    CheckPoints(points);
    FindSpaces();
    const std::size_t count = points.layout.Size();
    try {
        Room& room = FindRoom(count);
        const RoomScope scope(*this, room);
        const QxShadingContext context(&support, &m_spaces, m_spaceList.data(), points.E);
        UseFiles(room, files);
        PrepareVariables(room, count, context);
        MakeLights(room, count, lightCount);
        room.run->Evaluate(points.layout, context, points.variables, room.variables,
                           room.lightInputs);
    } catch (const std::bad_alloc&) {
        throw QxHostError("There is no memory to run shader '" + m_shader->Name() + "' on " +
                          std::to_string(count) + " points");
    }
}

void QxShaderInstance::CheckPoints(const QxHostPoints& points) const
{
    const QxHostPoints::Names missing = m_wanted & ~points.Present();
    if (missing == 0)
        return;
    for (const std::string& name : m_shader->Predefined())
        if ((QxHostPoints::Named(name) & missing) != 0)
            throw QxHostError("Shader '" + m_shader->Name() + "' uses '" + name +
                              "', but the points have none");
}

/// Default values depend on the spaces.
void QxShaderInstance::FindSpaces()
{
    const unsigned long changes = m_spaces.Changes();
    if (changes == m_spaceChanges)
        return;
    m_spaceChanges = changes;
    ++m_changes;
    // Runs around this one go on with the list where it stands.
    m_spaceList.resize(m_shader->SpaceNames().size());
    for (std::size_t i = 0; i < m_spaceList.size(); ++i)
        m_spaceList[i] = m_spaces.Find(m_shader->SpaceNames()[i]);
}

void QxShaderInstance::UseFiles(Room& room, unsigned long files)
{
    if (files == 0 || files != room.files)
        room.run->ForgetFiles();
    room.files = files;
}

void QxShaderInstance::MakeLights(Room& room, std::size_t points, unsigned int count)
{
    room.lights.resize(count);
    room.lightInputs.clear();
    for (LightValues& light : room.lights) {
        light.L.assign(points, {0, 0, 0});
        light.Cl.assign(points, {0, 0, 0});
        light.Ol.assign(points, {0, 0, 0});
        room.lightInputs.push_back({light.L.data(), light.Cl.data(), light.Ol.data()});
    }
}

/// What no run has changed, and no other size of the grid, stays as it is.
void QxShaderInstance::PrepareVariables(Room& room, std::size_t points,
                                        const QxShadingContext& context)
{
    const bool anew = points != room.points || !IsFresh(room);
    if (anew)
        room.points = 0;  // also where this ends with an error
    room.changes = m_changes;
    room.values = Values().Version();
    bool initialize = false;
    for (std::size_t i = 0; i < room.variables.size(); ++i) {
        if (!anew && !m_shader->Parameters()[i].output)
            continue;
        MakeVariable(room, i, points);
        ApplySetting(room.variables[i], i, points);
        initialize = initialize || room.variables[i].UseDefaultValue();
    }
    if (initialize)
        room.run->Initialize(context, m_spaceList.data(), room.variables);
    room.points = points;
}

void QxShaderInstance::MakeVariable(Room& room, std::size_t parameter, std::size_t points)
{
    QxVar& variable = room.variables[parameter];
    const auto found = m_buffers.find(parameter);
    const bool output = m_shader->Parameters()[parameter].output;
    if (found == m_buffers.end() || (output && m_depth > 1)) {
        variable.Resize(points);
        return;
    }
    const auto [unused, buffer] = *found;
    const std::size_t places = variable.IsVarying() ? points : 1;
    const std::size_t needed = places * variable.Length() * QxFloatCount(variable.Type());
    if (buffer.size() != needed) {
        variable.Resize(points);
        throw QxHostError(std::string("The buffer of parameter '") + variable.Name() + "' holds " +
                          std::to_string(buffer.size()) + " numbers, but the grid needs " +
                          std::to_string(needed));
    }
    variable.Borrow(points, buffer.data());
    if (std::find(room.borrowed.begin(), room.borrowed.end(), parameter) == room.borrowed.end())
        room.borrowed.push_back(parameter);
    if (!output)
        variable.KeepValue();
}

void QxShaderInstance::ApplySetting(QxVar& variable, std::size_t parameter,
                                    std::size_t points) const
{
    const QxParameterSet::Setting* const setting = Values().Find(parameter);
    if (!setting || !variable.UseDefaultValue())
        return;
    const auto& [value, forEachPoint] = *setting;
    if (!forEachPoint) {
        WithElements(value, [&](const void* elements) { variable.SetValue(elements); });
        return;
    }
    const std::size_t count = points * variable.Length();
    if (value.Count() != count)
        throw QxHostError(std::string("Parameter '") + variable.Name() + "' is set to " +
                          std::to_string(value.Count()) + " values, but the grid needs " +
                          std::to_string(count));
    WithElements(value, [&](const void* elements) { variable.SetValueForEachPoint(elements); });
}

QxHostValue QxShaderInstance::Get(QxParameterHandle handle)
{
    const Parameter& parameter = At(handle);
    Room* const room = m_depth < m_last.size() ? m_last[m_depth] : nullptr;
    if (room)
        return QxHostValue::Of(room->variables[static_cast<std::size_t>(handle)]);
    QxVar none;
    none.Declare(parameter.name.c_str(), parameter.type, parameter.varying, parameter.length);
    return QxHostValue::Of(none);
}

QxShaderInstance::Room& QxShaderInstance::RoomOfAnswers(QxShaderSupport& support,
                                                        const QxVector3& eye)
{
    if (!m_running.empty())
        return *m_running.back();
    FindSpaces();
    if (!m_last.empty() && m_last[0] && IsFresh(*m_last[0]))
        return *m_last[0];
    Room& room = FindRoom(1);
    std::vector<Room*> last = m_last;  // this is no run that `Get` knows of
    {
        const RoomScope scope(*this, room);
        const QxShadingContext context(&support, &m_spaces, m_spaceList.data(), eye);
        UseFiles(room, 0);
        PrepareVariables(room, 1, context);
    }
    m_last.swap(last);
    return room;
}

bool QxShaderInstance::Answer(const char* name, const QxMessageValue& value,
                              QxShaderSupport& support, const QxVector3& eye)
{
    const auto& parameters = m_shader->Parameters();
    const auto found =
        std::find_if(parameters.begin(), parameters.end(), [&](const auto& parameter) {
            return parameter.name == name && parameter.length == value.length &&
                   QxFitsType(parameter.type, value.type);
        });
    if (found == parameters.end())
        return false;
    Room& room = RoomOfAnswers(support, eye);
    QxVar& variable = room.variables[static_cast<std::size_t>(found - parameters.begin())];
    if (variable.Points() == 1)
        value.Store(variable.Value());
    else if (variable.Points() == value.points)
        value.StoreForEachPoint(variable.Value());
    else
        return false;
    return true;
}
