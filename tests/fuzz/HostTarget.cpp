// Makes random sequences of calls of the host library, also in the callbacks of its scene.
//
// Each byte of an input selects a call or a value. After the end of the input, a generator that is
// seeded with its bytes selects the rest, so that every input is a whole sequence.

#include <deque>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "fuzz/FuzzTarget.h"
#include "host/QxHost.h"

namespace {

constexpr unsigned int k_calls = 40;
constexpr unsigned int k_callsInAnswers = 60;

class Choices {
public:
    Choices(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size)
    {
        for (std::size_t i = 0; i < size; ++i)
            m_state = m_state * 31 + data[i];
    }
    unsigned int Below(unsigned int count)
    {
        if (m_place < m_size)
            return m_data[m_place++] % count;
        m_state = m_state * 1664525 + 1013904223;
        return (m_state >> 16) % count;
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
    std::size_t m_place = 0;
    std::uint32_t m_state = 1;
};

/// A scene whose callbacks make random calls.
class Sequence : public QxHostScene {
public:
    Sequence(const std::uint8_t* data, std::size_t size) : m_choose(data, size)
    {
        for (const char* name : {"mirror", "mirror", "lamp", "sky"})
            m_slots.push_back({Shader(name), nullptr, {}, nullptr});
        for (Slot& slot : m_slots)
            slot.set = std::make_unique<QxParameterSet>(slot.shader);
        SetRayLevelLimit(3);
    }
    void Run()
    {
        for (unsigned int call = 0; call < k_calls; ++call)
            Try([this] { Call(); });
    }

    QxRGBColor Trace(const QxRayQuery&, float& distance) override
    {
        distance = 1;
        Answer();
        return {1, 1, 1};
    }
    QxRGBColor Transmission(const QxRayQuery&) override
    {
        Answer();
        return {1, 1, 1};
    }
    QxRGBColor Texture(const QxTextureQuery&) override
    {
        Answer();
        return {1, 1, 1};
    }
    const void* FindFile(QxFileKind kind, const char*) override
    {
        m_files.push_back(std::make_unique<QxFileKind>(kind));
        return m_files.back().get();
    }
    void TextureOverGrid(const QxGridQueries<QxTextureQuery>& asked, QxRGBColor* results) override
    {
        CheckFile(asked.file, QxFileKind::Texture);
        QxHostScene::TextureOverGrid(asked, results);
    }
    void ShadowOverGrid(const QxGridQueries<QxPointsQuery>& asked, QxRGBColor* results) override
    {
        CheckFile(asked.file, QxFileKind::Shadow);
        QxHostScene::ShadowOverGrid(asked, results);
    }
    void Print(const char*) override {}
    void Report(const char*) override {}

private:
    struct Slot {
        std::shared_ptr<const QxShader> shader;
        std::unique_ptr<QxShaderInstance> instance;
        std::vector<QxLightHandle> lights;
        std::unique_ptr<QxParameterSet> set;
    };

    static std::shared_ptr<const QxShader> Shader(const std::string& name)
    {
        // Each shader is opened once for all sequences.
        static std::vector<std::shared_ptr<const QxShader>> shaders;
        for (const auto& shader : shaders)
            if (shader->Name() == SLC_FUZZ_SHADERS "/" + name + ".sqx")
                return shader;
        shaders.push_back(QxShader::Open(SLC_FUZZ_SHADERS "/" + name + ".sqx"));
        return shaders.back();
    }
    template <class Action>
    static void Try(const Action& action)
    {
        try {
            action();
        } catch (const std::runtime_error& error) {
            if (*error.what() == '\0')
                FuzzFault("an error without a message");
        }
    }
    void Answer()
    {
        if (m_callsInAnswers == k_callsInAnswers || m_choose.Below(4) != 0)
            return;
        ++m_callsInAnswers;
        if (m_choose.Below(8) == 0)
            throw std::runtime_error("an answer fails");
        if (m_choose.Below(2) == 0)
            Try([this] { Call(); });
        else
            Call();
    }
    QxShaderInstance& Instance(Slot& slot)
    {
        if (!slot.instance) {
            slot.instance = std::make_unique<QxShaderInstance>(slot.shader, Spaces());
            slot.instance->SetStepLimit(100);
        }
        return *slot.instance;
    }
    void Call()
    {
        Slot& slot = m_slots[m_choose.Below(4)];
        QxShaderInstance& instance = Instance(slot);
        switch (m_choose.Below(15)) {
        case 0:
            return Destroy(slot);
        case 1:
        case 2:
        case 3:
            return Shade(instance);
        case 4:
            return SetValue(slot);
        case 5:
            return SetBuffer(instance);
        case 6:
            static_cast<void>(instance.Get(Parameter(instance)));
            return;
        case 7:
            return AddLight(slot);
        case 8:
            return ChangeLight(slot);
        case 9:
            return SetObject();
        case 10:
            return SetLimits(instance);
        case 11:
            return m_choose.Below(2) == 0 ? instance.Reset(Parameter(instance))
                                          : ClearBuffer(instance);
        case 12:
            return instance.Use(m_choose.Below(2) == 0 ? nullptr
                                                       : m_slots[m_choose.Below(4)].set.get());
        case 13:
            (m_choose.Below(2) == 0 ? Spaces() : instance.Spaces())
                .Define(m_choose.Below(2) == 0 ? "shader" : "current",
                        QxFrame3D(QxMatrix44::Scaling(1 + static_cast<float>(m_choose.Below(3)))));
            return;
        case 14:
            return ForgetAllFiles();
        }
    }
    /// Destroys the instance of a slot, unless a run may use it. First removes its lights.
    void Destroy(Slot& slot)
    {
        if (m_depth > 0)
            return;
        for (const QxLightHandle light : slot.lights)
            Try([&] { RemoveLight(light); });
        slot.lights.clear();
        m_object = {};
        slot.instance.reset();
    }
    void Shade(QxShaderInstance& instance)
    {
        QxHostGrid grid(1 + m_choose.Below(3), 1 + m_choose.Below(3));
        if (m_choose.Below(4) == 0)
            grid.Resize(1 + m_choose.Below(4), 1);
        ++m_depth;
        try {
            if (m_choose.Below(4) == 0)
                instance.Run(grid, static_cast<QxShaderSupport&>(*this), m_choose.Below(3));
            else
                instance.Run(grid, *this);
        } catch (...) {
            --m_depth;
            throw;
        }
        --m_depth;
    }
    static void CheckFile(const void* file, QxFileKind kind)
    {
        if (*static_cast<const QxFileKind*>(file) != kind)
            FuzzFault("the handle of another file");
    }
    /// A run keeps its handles, so files are forgotten only between runs.
    void ForgetAllFiles()
    {
        if (m_depth > 0)
            return;
        ForgetFiles();
        m_files.clear();
    }
    QxParameterHandle Parameter(const QxShaderInstance& instance)
    {
        const auto count = static_cast<unsigned int>(instance.Shader().Parameters().size());
        return static_cast<QxParameterHandle>(m_choose.Below(count + 1));  // one too many
    }
    QxHostValue Value(unsigned int count)
    {
        const std::vector<float> numbers(std::size_t{3} * count, 0.5F);
        switch (m_choose.Below(4)) {
        case 0:
            return {QxValueType::Color, numbers};
        case 1:
            return std::vector<std::string>(count, "text");
        case 2:
            return {QxValueType::Point, numbers};
        default:
            return std::vector<float>(count, 2);
        }
    }
    void SetValue(Slot& slot)
    {
        const QxParameterHandle parameter = Parameter(*slot.instance);
        const QxHostValue value = Value(1 + m_choose.Below(9));
        switch (m_choose.Below(4)) {
        case 0:
            return slot.instance->Set(parameter, value);
        case 1:
            return slot.instance->SetForEachPoint(parameter, value);
        case 2:
            return ChangeSet(slot, parameter, value);
        default:
            return SetAnswer(QxMessage::Attribute, "tag", value);
        }
    }
    /// Sets must not change while they are used.
    void ChangeSet(Slot& slot, QxParameterHandle parameter, const QxHostValue& value)
    {
        if (m_depth == 0)
            slot.set->Set(parameter, value);
    }
    void SetBuffer(QxShaderInstance& instance)
    {
        auto buffer = std::make_unique<std::vector<float>>(m_choose.Below(20), 1.0F);
        std::span<float> values(*buffer);
        m_buffers.push_back(std::move(buffer));
        instance.SetBuffer(Parameter(instance), values);
    }
    /// Clears the buffers of all parameters of the instance. Between runs, half of the time, does
    /// so for all instances and frees the buffers, so that a sanitizer finds a later access.
    void ClearBuffer(QxShaderInstance& instance)
    {
        const std::size_t count = instance.Shader().Parameters().size();
        for (std::size_t i = 0; i < count; ++i)
            instance.ClearBuffer(static_cast<QxParameterHandle>(i));
        if (m_depth > 0 || m_choose.Below(2) == 0)
            return;
        for (Slot& slot : m_slots)
            for (std::size_t i = 0; slot.instance && i < slot.shader->Parameters().size(); ++i)
                slot.instance->ClearBuffer(static_cast<QxParameterHandle>(i));
        m_buffers.clear();
    }
    void AddLight(Slot& slot)
    {
        if (slot.lights.size() < 3)
            slot.lights.push_back(m_choose.Below(3) == 0 ? AddPointLight({0, 0, 0}, {1, 1, 1})
                                                         : QxHostScene::AddLight(*slot.instance));
    }
    void ChangeLight(Slot& slot)
    {
        if (slot.lights.empty())
            return;
        const QxLightHandle light =
            slot.lights[m_choose.Below(static_cast<unsigned int>(slot.lights.size()))];
        switch (m_choose.Below(3)) {
        case 0:
            return RemoveLight(light);
        case 1:
            return SwitchLight(light, m_choose.Below(2) == 0);
        default:
            return LimitLight(light, {"a"});
        }
    }
    void SetObject()
    {
        if (m_depth > 0 && m_choose.Below(2) == 0)
            return QxHostScene::SetObject(nullptr);
        if (m_depth == 0) {
            m_object.surface = m_slots[m_choose.Below(4)].instance.get();
            m_object.displacement = m_slots[m_choose.Below(4)].instance.get();
            m_object.categories.assign(m_choose.Below(2), "a");
        }
        QxHostScene::SetObject(&m_object);
    }
    void SetLimits(QxShaderInstance& instance)
    {
        switch (m_choose.Below(4)) {
        case 0:
            return instance.SetStepLimit(m_choose.Below(100));
        case 1:
            return instance.SetMemoryLimit(std::size_t{1} << m_choose.Below(30));
        case 2:
            return SetRayLevelLimit(m_choose.Below(4));
        default:
            return instance.SetStopTest([this] { return m_choose.Below(2) == 0; });
        }
    }

    Choices m_choose;
    unsigned int m_callsInAnswers = 0;
    unsigned int m_depth = 0;  // of nested runs
    QxHostObject m_object;
    std::deque<std::unique_ptr<std::vector<float>>> m_buffers;  // must outlive the instances
    std::vector<std::unique_ptr<QxFileKind>> m_files;           // handles point to these
    std::vector<Slot> m_slots;
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Sequence(data, size).Run();
    return 0;
}
