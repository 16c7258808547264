// The operations on texts, and the messages that a shader sends.

#include "QxSceneCalls.h"
#include "machine/SqxCall.h"
#include "machine/SqxMachine.h"

namespace {

using enum SqxPrimitive;

/// Formats the arguments after the pattern at `place`.
std::string Formatted(const SqxCall& call, std::size_t place)
{
    std::vector<std::string> texts(call.Count());
    std::vector<const char*> pointers(call.Count());
    std::vector<QxTextArgument> values;
    for (std::size_t i = place + 1; i < call.Count(); ++i) {
        const SqxType type = call.Variable(i).type;
        if (type == SqxType::String) {
            texts[i] = call.Get<std::string>(i);
            pointers[i] = texts[i].c_str();
            values.push_back({QxTextArgument::String, &pointers[i]});
            continue;
        }
        call.Note(i);
        const std::size_t count = SqxComponents(type);
        const auto kind = count == 1   ? QxTextArgument::Float
                          : count == 3 ? QxTextArgument::Triple
                                       : QxTextArgument::Matrix;
        values.push_back({kind, call.Numbers(i).data()});
    }
    return QxFormat(call.Get<std::string>(place).c_str(), values.data(),
                    static_cast<int>(values.size()))
        .Characters();
}

void Print(const SqxCall& call)
{
    const std::string text = Formatted(call, 0);
    call.RefusePoison();
    call.Machine().Support().Print(text.c_str());
}

void Format(const SqxCall& call)
{
    call.Set(0, Formatted(call, 1));
}

void Concat(const SqxCall& call)
{
    std::string text;
    for (std::size_t i = 1; i < call.Count(); ++i)
        text += call.Get<std::string>(i);
    call.Set(0, text);
}

void Match(const SqxCall& call)
{
    const bool matches =
        QxPattern().Match(call.Get<std::string>(1).c_str(), call.Get<std::string>(2).c_str());
    call.Set(0, matches ? 1.0F : 0.0F);
}

/// Asks the renderer for the value that is named by the operand before `place`, and stores the
/// answer in the operand at `place`. Returns whether the renderer knows the value.
bool Ask(const SqxCall& call, QxMessage message, const std::string& texture, std::size_t place)
{
    const SqxVariable& variable = call.Variable(place);
    const std::string name = call.Get<std::string>(place - 1);
    const char handled[] = {1};
    QxMessageValue value = {};
    value.type = static_cast<QxValueType>(static_cast<int>(variable.type));
    value.varying = !variable.uniform;
    value.points = 1;
    value.handled = handled;
    QxShaderSupport& support = call.Machine().Support();
    if (variable.type != SqxType::String) {
        const auto numbers = call.Numbers(place);
        value.length = numbers.size() / SqxComponents(variable.type);
        value.value = numbers.data();
        return support.Message(message, texture.c_str(), name.c_str(), value);
    }
    // `QxMessageValue` allocates each text that it stores.
    const auto texts = call.Texts(place);
    std::vector<const char*> received(texts.size(), nullptr);
    value.length = texts.size();
    value.value = received.data();
    const bool known = support.Message(message, texture.c_str(), name.c_str(), value);
    for (std::size_t i = 0; i < texts.size(); ++i)
        if (received[i]) {
            texts[i] = received[i];
            std::free(const_cast<char*>(received[i]));
        }
    return known;
}

template <QxMessage message>
void Send(const SqxCall& call)
{
    call.Set(0, Ask(call, message, "", 2) ? 1.0F : 0.0F);
}

void SendToTexture(const SqxCall& call)
{
    const bool known = Ask(call, QxMessage::TextureInfo, call.Get<std::string>(1), 3);
    call.Set(0, known ? 1.0F : 0.0F);
}

// clang-format off
constexpr SqxOperationRow k_texts[] = {
    {CALL_PRIM_PRINTF,       Print},
    {CALL_PRIM_FORMAT,       Format},
    {CALL_PRIM_CONCAT,       Concat},
    {CALL_PRIM_MATCH,        Match},
    {CALL_PRIM_ATTRIBUTE,    Send<QxMessage::Attribute>},
    {CALL_PRIM_OPTION,       Send<QxMessage::Option>},
    {CALL_PRIM_RENDERERINFO, Send<QxMessage::RendererInfo>},
    {CALL_PRIM_SURFACE,      Send<QxMessage::Surface>},
    {CALL_PRIM_DISPLACEMENT, Send<QxMessage::Displacement>},
    {CALL_PRIM_LIGHTSOURCE,  Send<QxMessage::LightSource>},
    {CALL_PRIM_ATMOSPHERE,   Send<QxMessage::Atmosphere>},
    {CALL_PRIM_INCIDENT,     Send<QxMessage::Incident>},
    {CALL_PRIM_OPPOSITE,     Send<QxMessage::Opposite>},
    {CALL_PRIM_TEXTUREINFO,  SendToTexture},
};
// clang-format on

}  // namespace

std::span<const SqxOperationRow> SqxTextTable()
{
    return k_texts;
}
