// Functions of texts and of lists of arguments, messages, and the instructions that run lights.

#include "QxBuiltInNames.h"
#include "QxSceneNames.h"

#include "kernels/QxListForms.h"

namespace qxcommon {
namespace {

char LetterOf(QxStored stored)
{
    switch (stored) {
    case QxStored::Any:
    case QxStored::Number:
    case QxStored::Flag:
        break;
    case QxStored::Triple:
        return 'p';
    case QxStored::Matrix:
        return 'm';
    case QxStored::Text:
        return 's';
    }
    return 'f';
}

/// The addresses of the operands of an instruction, starting with operand `first`, for one point at
/// a time. A text that was never set is empty.
class Arguments {
public:
    Arguments(const QxMachineState& state, const QxCode& code, std::size_t first)
        : m_operands(code.operands + first, code.count - first),
          m_addresses(m_operands.size()),
          m_texts(m_operands.size())
    {
        for (std::size_t k = 0; k < m_operands.size(); ++k) {
            const QxOperand& operand = m_operands[k];
            m_bases.push_back(Address(state, operand, 0));
            m_types += LetterOf(operand.stored);
            if (operand.step != 0)
                m_varying.push_back(k);
            Find(k, 0);
        }
    }
    QxArguments At(unsigned int point)
    {
        for (const std::size_t k : m_varying)
            Find(k, point * QxBytesOf(m_operands[k].stored));
        return m_addresses.data();
    }
    [[nodiscard]] int Count() const { return static_cast<int>(m_addresses.size()); }
    [[nodiscard]] const char* Types() const { return m_types.c_str(); }

private:
    void Find(std::size_t k, std::size_t distance)
    {
        m_addresses[k] = m_bases[k] + distance;
        if (m_operands[k].stored != QxStored::Text)
            return;
        const Text text = *static_cast<const Text*>(m_addresses[k]);
        m_texts[k] = text ? text : "";
        m_addresses[k] = &m_texts[k];
    }

    std::span<const QxOperand> m_operands;
    std::vector<const char*> m_bases;
    std::vector<std::size_t> m_varying;
    std::vector<const void*> m_addresses;
    std::vector<Text> m_texts;
    std::string m_types;
};

template <class Function, class Result>
void OfList(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    Arguments arguments(state, code, 1);
    const auto result = Operand<Result>(state, code, 0);
    for (unsigned int i = points.first; i < points.End(); ++i)
        if (points(i)) {
            Function()(QxAt(result, i), arguments.At(i), arguments.Count(), arguments.Types());
            if constexpr (std::is_same_v<Result, Text>)
                state.work->CountInner(std::strlen(QxAt(result, i)));
        }
    state.work->CountInner(code.count);
}

template <class Rest, class Result, class... Types, class Function>
constexpr QxKernelRow List(SqxPrimitive primitive, Function)
{
    QxKernelRow row = ListRow<Rest, Result, Types...>(primitive, OfList<Function, Result>);
    row.perPoint = !std::is_same_v<Result, Text>;
    return row;
}

#define LIST(NAME, REST, RESULT, ...)                                                              \
    List<REST, RESULT __VA_OPT__(, ) __VA_ARGS__>(                                                 \
        SqxPrimitive::NAME,                                                                        \
        [](RESULT& result, QxArguments arguments, int count,                                       \
           [[maybe_unused]] const char* theTypes) { NAME(result, arguments, count); })

void Print(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    Arguments arguments(state, code, 0);
    for (unsigned int i = points.first; i < points.End(); ++i)
        if (points(i)) {
            const QxText text =
                QxFormatArguments(arguments.At(i), arguments.Types(), arguments.Count());
            state.Emit(i, true, text.Characters());
            state.work->CountInner(text.Length() + code.count);
        }
}

// Messages. The operands are the result, the texture (only for `textureinfo`), the name, and the
// variable that receives the value.

template <QxMessage message, std::size_t name>
void Send(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    const auto textAt = [&](std::size_t k) {
        const Text text = QxAt(Operand<Text>(state, code, k), points.first);
        return text ? text : "";
    };
    const QxOperand& value = code.operands[name + 1];
    const unsigned int count = value.step == 0 ? 1 : state.grid.Size();
    const auto asked = [&](unsigned int i) {
        return value.step == 0 || (i >= points.first && i < points.End() && points(i));
    };
    const float answer = QxSendMessage(
        state.support, message, name == 2 ? textAt(1) : "", textAt(name),
        state.values[value.variable], value.step == 0 ? 0 : 1, static_cast<float>(code.number),
        static_cast<float>(value.size), count, asked, state.lightNumber);
    const auto result = Operand<float>(state, code, 0);
    for (unsigned int i = points.first; i < points.End(); ++i)
        if (points(i))
            QxAt(result, i) = answer;
}

template <QxMessage message, std::size_t name = 1>
constexpr QxKernelRow MessageRow(SqxPrimitive primitive)
{
    if constexpr (name == 2)
        return ListRow<void, float, Text, Text>(primitive, Send<message, name>);
    else
        return ListRow<void, float, Text>(primitive, Send<message, name>);
}

// Running lights

void EvaluateLights(QxMachineState& state, const QxCode& code, const QxPoints&)
{
    const auto positions = Operand<Vector>(state, code, 0);
    std::vector<Vector> copies;
    if (positions.step == 0)
        copies.assign(state.grid.Size(), *positions.values);
    state.support->EvaluateLights(positions.step == 0 ? copies.data() : positions.values,
                                  state.grid.Size(), state.lights, state.lightCount);
}

void EvaluateLightsForP(QxMachineState& state, const QxCode&, const QxPoints&)
{
    if (state.lightsAreForP)
        return;
    state.support->EvaluateLights(state.P, state.grid.Size(), state.lights, state.lightCount);
    state.lightsAreForP = true;
}

void ForgetLightsForP(QxMachineState& state, const QxCode&, const QxPoints&)
{
    state.lightsAreForP = false;
}

// clang-format off
constexpr QxKernelRow k_rows[] = {
    LIST(CALL_PRIM_MIN_1D, float, float),
    LIST(CALL_PRIM_MAX_1D, float, float),
    LIST(CALL_PRIM_MIN_3D, Vector, Vector),
    LIST(CALL_PRIM_MAX_3D, Vector, Vector),
    LIST(CALL_PRIM_CONCAT, Text, Text),
    LIST(CALL_PRIM_FORMAT, void, Text, Text),
    ListRow<void, Text>(SqxPrimitive::CALL_PRIM_PRINTF, Print),
    Each<float&, Text, Text>(
        SqxPrimitive::CALL_PRIM_MATCH,
        InRun([](QxMachineState& state, float& r, Text expression, Text text) {
            const QxShadingContext& i_context = *state.context;
            const std::size_t before = i_context.MatchWork();
            CALL_PRIM_MATCH(r, expression, text);
            state.work->CountInner(i_context.MatchWork() - before);
        })),
    MessageRow<QxMessage::Attribute>(SqxPrimitive::CALL_PRIM_ATTRIBUTE),
    MessageRow<QxMessage::Option>(SqxPrimitive::CALL_PRIM_OPTION),
    MessageRow<QxMessage::RendererInfo>(SqxPrimitive::CALL_PRIM_RENDERERINFO),
    MessageRow<QxMessage::Surface>(SqxPrimitive::CALL_PRIM_SURFACE),
    MessageRow<QxMessage::Displacement>(SqxPrimitive::CALL_PRIM_DISPLACEMENT),
    MessageRow<QxMessage::LightSource>(SqxPrimitive::CALL_PRIM_LIGHTSOURCE),
    MessageRow<QxMessage::Atmosphere>(SqxPrimitive::CALL_PRIM_ATMOSPHERE),
    MessageRow<QxMessage::Incident>(SqxPrimitive::CALL_PRIM_INCIDENT),
    MessageRow<QxMessage::Opposite>(SqxPrimitive::CALL_PRIM_OPPOSITE),
    MessageRow<QxMessage::TextureInfo, 2>(SqxPrimitive::CALL_PRIM_TEXTUREINFO),
    Row<Vector>(SqxPrimitive::EVAL_LIGHTS, EvaluateLights),
    Anything(SqxPrimitive::EVAL_LIGHTS_FOR_P, EvaluateLightsForP),
    Anything(SqxPrimitive::RESET_EVAL_LIGHTS_FOR_P, ForgetLightsForP),
};
// clang-format on

}  // namespace

QxKernelRows ListKernels()
{
    return k_rows;
}

}  // namespace qxcommon
