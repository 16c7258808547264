// Functions of lists of arguments, texts, messages, references to elements, and shadeops.

#include "QxBuiltInNames.h"
#include "QxSceneNames.h"

#define QX_KERNEL_SET qxcommon
#define QX_KERNEL_CODE
#include "kernels/QxKernelForms.h"

namespace qxcommon {
namespace {

using Vector = QxVector3;
using Text = const char*;

std::size_t BytesOf(QxStored stored)
{
    switch (stored) {
    case QxStored::Any:
    case QxStored::Number:
    case QxStored::Flag:
        break;
    case QxStored::Triple:
        return sizeof(Vector);
    case QxStored::Matrix:
        return sizeof(QxMatrix44);
    case QxStored::Text:
        return sizeof(Text);
    }
    return sizeof(float);
}

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

char* Address(const QxMachineState& state, const QxOperand& operand, std::size_t place)
{
    return static_cast<char*>(state.values[operand.variable]) + place * BytesOf(operand.stored);
}

/// The addresses of an instruction's operands from one on, at one point after the other. A text
/// that was never set is empty.
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
            Find(k, point * BytesOf(m_operands[k].stored));
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
        if (points(i))
            Function()(QxAt(result, i), arguments.At(i), arguments.Count(), arguments.Types());
}

constexpr QxStored k_any = QxStored::Any;

template <class Rest, class... Types>
constexpr QxKernelRow ListRow(std::string_view primitive, QxKernel kernel)
{
    QxKernelRow row;
    row.primitive = primitive;
    row.all = row.masked = kernel;
    row.operands = k_stored<Types...>;
    row.operandCount = sizeof...(Types);
    row.rest = std::is_void_v<Rest> ? &k_any : k_stored<Rest>;
    return row;
}

template <class Rest, class Result, class... Types, class Function>
constexpr QxKernelRow List(std::string_view primitive, Function)
{
    QxKernelRow row = ListRow<Rest, Result, Types...>(primitive, OfList<Function, Result>);
    row.perPoint = !std::is_same_v<Result, Text>;
    return row;
}

#define LIST(NAME, REST, RESULT, ...)                                                              \
    List<REST, RESULT __VA_OPT__(, ) __VA_ARGS__>(                                                 \
        #NAME, [](RESULT& result, QxArguments arguments, int count,                                \
                  [[maybe_unused]] const char* theTypes) { NAME(result, arguments, count); })

/// The name of the basis, if there is one, and the position stand before the control values.
template <class Value, bool named>
void Spline(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    Arguments arguments(state, code, 1);
    constexpr int first = named ? 2 : 1;
    const auto basisAt = [&](unsigned int point) {
        return &QxFindSplineBasis(named ? QxArgument<Text>(arguments.At(point), 0) : "");
    };
    const bool oneBasis = !named || code.operands[1].step == 0;
    const QxSplineBasis* basis = basisAt(points.first);
    const auto result = Operand<Value>(state, code, 0);
    for (unsigned int i = points.first; i < points.End(); ++i) {
        if (!points(i))
            continue;
        if (!oneBasis)
            basis = basisAt(i);
        const QxArguments values = arguments.At(i);
        QxAt(result, i) = QxSpline<Value>(
            *basis, QxArgument<float>(values, first - 1), arguments.Count() - first,
            [&](int k) -> const Value& { return QxArgument<Value>(values, first + k); });
    }
}

template <class Rest, class... Types>
constexpr QxKernelRow SplineRow(std::string_view primitive, QxKernel kernel)
{
    QxKernelRow row = ListRow<Rest, Types...>(primitive, kernel);
    row.perPoint = true;
    return row;
}

void Print(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    Arguments arguments(state, code, 0);
    for (unsigned int i = points.first; i < points.End(); ++i)
        if (points(i))
            state.Tell(i, true,
                       QxFormatArguments(arguments.At(i), arguments.Types(), arguments.Count())
                           .Characters());
}

// Messages. The value stands behind the name, the name behind the texture.

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
    const float answer = QxSendMessage(state.support, message, name == 2 ? textAt(1) : "",
                                       textAt(name), state.values[value.variable],
                                       value.step == 0 ? 0 : 1, static_cast<float>(code.number),
                                       static_cast<float>(value.size), count, asked);
    const auto result = Operand<float>(state, code, 0);
    for (unsigned int i = points.first; i < points.End(); ++i)
        if (points(i))
            QxAt(result, i) = answer;
}

template <QxMessage message, std::size_t name = 1>
constexpr QxKernelRow MessageRow(std::string_view primitive)
{
    if constexpr (name == 2)
        return ListRow<void, float, Text, Text>(primitive, Send<message, name>);
    else
        return ListRow<void, float, Text>(primitive, Send<message, name>);
}

// References to elements of arrays.

/// The element that an index means: of those outside the nearest one.
std::size_t ElementAt(float index, std::uint32_t size)
{
    if (!(index >= 1))
        return 0;
    return index < static_cast<float>(size) ? static_cast<std::size_t>(index) : size - 1;
}

/// All points refer to one element, whose values then are the reference's.
void BindAll(QxMachineState& state, const QxCode& code, const QxPoints&)
{
    const QxOperand& array = code.operands[1];
    const std::size_t element =
        ElementAt(*static_cast<float*>(state.values[code.operands[2].variable]), array.size);
    const std::size_t points = array.step == 0 ? 1 : state.grid.Size();
    state.values[code.operands[0].variable] = Address(state, array, element * points);
}

/// Each point refers to an element of its own.
void BindEach(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    const auto reference = Operand<void*>(state, code, 0);
    const QxOperand& array = code.operands[1];
    const auto index = Operand<float>(state, code, 2);
    const std::size_t count = array.step == 0 ? 1 : state.grid.Size();
    for (unsigned int i = points.first; i < points.End(); ++i)
        if (points(i))
            QxAt(reference, i) = Address(state, array,
                                         ElementAt(QxAt(index, i), array.size) * count +
                                             std::size_t{i} * array.step);
}

/// Between a variable and what a reference of each point stands for.
template <bool load>
void Move(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    const auto reference = Operand<void*>(state, code, load ? 1 : 0);
    const QxOperand& variable = code.operands[load ? 0 : 1];
    const std::size_t bytes = BytesOf(variable.stored);
    for (unsigned int i = points.first; i < points.End(); ++i) {
        if (!points(i))
            continue;
        void* const value = Address(state, variable, std::size_t{i} * variable.step);
        void* const element = QxAt(reference, i);
        std::memcpy(load ? value : element, load ? element : value, bytes);
        // A text that is about to be replaced has one owner at a time.
        if (load && code.number != 0 && variable.stored == QxStored::Text)
            *static_cast<Text*>(element) = nullptr;
    }
}

void CheckIndex(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    const auto index = Operand<float>(state, code, 1);
    const float size = static_cast<float>(code.operands[0].size);
    for (unsigned int i = points.first; i < points.End(); ++i) {
        const float at = QxAt(index, i);
        if ((at > -1 && at < size) || !points(i))
            continue;
        const Text array = *static_cast<const Text*>(state.values[code.operands[0].variable]);
        const Text file = *static_cast<const Text*>(state.values[code.operands[2].variable]);
        state.Tell(i, false, QxBadArrayIndexText(file, code.number, array, at).Characters());
    }
}

/// Arrays of the same length, whole.
void CopyArray(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    const QxOperand& to = code.operands[0];
    const QxOperand& from = code.operands[1];
    const std::size_t toCount = to.step == 0 ? 1 : state.grid.Size();
    const std::size_t fromCount = from.step == 0 ? 1 : state.grid.Size();
    for (std::size_t element = 0; element < to.size; ++element)
        for (unsigned int i = points.first; i < points.End(); ++i) {
            if (!points(i))
                continue;
            void* const target = Address(state, to, element * toCount + std::size_t{i} * to.step);
            void* const source =
                Address(state, from, element * fromCount + std::size_t{i} * from.step);
            if (to.stored == QxStored::Text)
                QxAssignString(*static_cast<Text*>(target), *static_cast<Text*>(source));
            else
                std::memmove(target, source, BytesOf(to.stored));
        }
}

// Shadeops

/// Calls a shadeop point by point. It is handed copies, elements of an array one behind the other,
/// since constants and uniform values belong to all points and runs.
class ShadeopCall {
public:
    ShadeopCall(QxMachineState& state, const QxCode& code)
        : m_state(state),
          m_code(code),
          m_shadeop(state.shadeops[static_cast<std::size_t>(code.number)])
    {
        std::size_t places = 0;
        for (std::size_t k = 0; k < code.count; ++k)
            places += PlacesOf(code.operands[k]);
        m_memory.resize(places);
        Place* place = m_memory.data();
        for (std::size_t k = 0; k < code.count; ++k) {
            m_argv.push_back(place);
            place += PlacesOf(code.operands[k]);
        }
    }

    void Run(unsigned int point)
    {
        const QxOperand& result = m_code.operands[0];
        std::fill_n(static_cast<Place*>(m_argv[0]), PlacesOf(result), Place{});
        for (std::size_t k = 1; k < m_code.count; ++k)
            Load(m_code.operands[k], point, static_cast<char*>(m_argv[k]));
        m_handed = m_argv;  // a list that it may change
        m_shadeop.method(m_shadeop.data, static_cast<int>(m_handed.size()), m_handed.data());
        for (std::size_t k = 1; k < m_code.count; ++k)
            if (m_code.operands[k].size > 1)
                Store(m_code.operands[k], point, static_cast<const char*>(m_argv[k]));
        StoreResult(result, ElementOf(result, point, 0));
    }

private:
    using Place = std::uint64_t;  // numbers and addresses may stand in it

    static std::size_t PlacesOf(const QxOperand& operand)
    {
        return (operand.size * BytesOf(operand.stored) + sizeof(Place) - 1) / sizeof(Place);
    }
    [[nodiscard]] void* ElementOf(const QxOperand& operand, unsigned int point,
                                  std::size_t element) const
    {
        const std::size_t points = operand.step == 0 ? 1 : m_state.grid.Size();
        return Address(m_state, operand, element * points + std::size_t{point} * operand.step);
    }
    void Load(const QxOperand& operand, unsigned int point, char* target) const
    {
        const std::size_t bytes = BytesOf(operand.stored);
        for (std::size_t j = 0; j < operand.size; ++j, target += bytes) {
            const void* source = ElementOf(operand, point, j);
            static constexpr Text none = "";
            if (operand.stored == QxStored::Text && !*static_cast<const Text*>(source))
                source = &none;
            std::memcpy(target, source, bytes);
        }
    }
    /// Numbers go back to where they came from; a text stays the shader's.
    void Store(const QxOperand& operand, unsigned int point, const char* source) const
    {
        const std::size_t bytes = BytesOf(operand.stored);
        if (operand.stored == QxStored::Text)
            return;
        for (std::size_t j = 0; j < operand.size; ++j, source += bytes)
            std::memcpy(ElementOf(operand, point, j), source, bytes);
    }
    void StoreResult(const QxOperand& result, void* target) const
    {
        if (result.stored == QxStored::Text) {
            Text text = nullptr;
            std::memcpy(&text, m_argv[0], sizeof text);
            QxAssignString(*static_cast<Text*>(target), text ? text : "");
        } else {
            std::memcpy(target, m_argv[0], BytesOf(result.stored));
        }
    }

    QxMachineState& m_state;
    const QxCode& m_code;
    const QxLoadedShadeop& m_shadeop;
    std::vector<Place> m_memory;  // of the result and the arguments
    std::vector<void*> m_argv;    // where each of them is
    std::vector<void*> m_handed;
};

void CallShadeop(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    ShadeopCall call(state, code);
    for (unsigned int i = points.first; i < points.End(); ++i)
        if (points(i))
            call.Run(i);
}

// Lights

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

constexpr QxKernelRow Anything(std::string_view primitive, QxKernel kernel)
{
    return ListRow<void>(primitive, kernel);
}

// clang-format off
constexpr QxKernelRow k_rows[] = {
    LIST(CALL_PRIM_MIN_1D, float, float),
    LIST(CALL_PRIM_MAX_1D, float, float),
    LIST(CALL_PRIM_MIN_3D, Vector, Vector),
    LIST(CALL_PRIM_MAX_3D, Vector, Vector),
    SplineRow<float, float, float>("CALL_PRIM_SPLINE_1D", Spline<float, false>),
    SplineRow<Vector, Vector, float>("CALL_PRIM_SPLINE_3D", Spline<Vector, false>),
    SplineRow<float, float, Text, float>("CALL_PRIM_SPLINE_BASIS_1D", Spline<float, true>),
    SplineRow<Vector, Vector, Text, float>("CALL_PRIM_SPLINE_BASIS_3D", Spline<Vector, true>),
    LIST(CALL_PRIM_CONCAT, Text, Text),
    LIST(CALL_PRIM_FORMAT, void, Text, Text),
    ListRow<void, Text>("CALL_PRIM_PRINTF", Print),
    Each<float&, Text, Text>(
        "CALL_PRIM_MATCH",
        InRun([](QxMachineState& state, float& r, Text expression, Text text) {
            const QxShadingContext& i_context = *state.context;
            CALL_PRIM_MATCH(r, expression, text);
        })),
    MessageRow<QxMessage::Attribute>("CALL_PRIM_ATTRIBUTE"),
    MessageRow<QxMessage::Option>("CALL_PRIM_OPTION"),
    MessageRow<QxMessage::RendererInfo>("CALL_PRIM_RENDERERINFO"),
    MessageRow<QxMessage::Surface>("CALL_PRIM_SURFACE"),
    MessageRow<QxMessage::Displacement>("CALL_PRIM_DISPLACEMENT"),
    MessageRow<QxMessage::LightSource>("CALL_PRIM_LIGHTSOURCE"),
    MessageRow<QxMessage::Atmosphere>("CALL_PRIM_ATMOSPHERE"),
    MessageRow<QxMessage::Incident>("CALL_PRIM_INCIDENT"),
    MessageRow<QxMessage::Opposite>("CALL_PRIM_OPPOSITE"),
    MessageRow<QxMessage::TextureInfo, 2>("CALL_PRIM_TEXTUREINFO"),
    Anything("machine:bind all", BindAll),
    Anything("machine:bind each", BindEach),
    Anything("machine:load", Move<true>),
    Anything("machine:store", Move<false>),
    ListRow<void, Text, float, Text>("CHECK_VALID_ARRAY_INDEX", CheckIndex),
    Anything("CONVERT_ARRAY_DSO_TO", CopyArray),
    Anything("CONVERT_ARRAY_DSO_FROM", CopyArray),
    Anything("CALL_DSO", CallShadeop),
    ListRow<void, Vector>("EVAL_LIGHTS", EvaluateLights),
    Anything("EVAL_LIGHTS_FOR_P", EvaluateLightsForP),
    Anything("RESET_EVAL_LIGHTS_FOR_P", ForgetLightsForP),
};
// clang-format on

}  // namespace

QxKernelRows ListKernels()
{
    return k_rows;
}

}  // namespace qxcommon
