// Answers to messages: first from the instance that the message is for, then from the values that
// the host has set. The instance is one of the object, that of a light, or the one that shades the
// grid.
//
// After a grid has asked for light, a nested grid may run the same light shader again and so
// replace the values of its parameters. In this case the light shader runs once more for the outer
// grid before it answers a message of that grid.
//
// Tested by tests/host/HostSceneTest.cpp.

#include <algorithm>
#include <tuple>

#include "host/QxHostScene.h"
#include "host/QxShaderInstance.h"

namespace {

/// Joins both names by a null character, which no name contains.
std::string TextureKey(const std::string& texture, const std::string& name)
{
    return texture + '\0' + name;
}

}  // namespace

std::size_t QxHostScene::PlaceOfAnswer(QxMessage message, const std::string& name) const
{
    const auto found =
        std::partition_point(m_answers.begin(), m_answers.end(), [&](const Answer& answer) {
            return std::tie(answer.message, answer.name) < std::tie(message, name);
        });
    return static_cast<std::size_t>(found - m_answers.begin());
}

bool QxHostScene::HasAnswer(std::size_t place, QxMessage message, const std::string& name) const
{
    return place < m_answers.size() && m_answers[place].message == message &&
           m_answers[place].name == name;
}

void QxHostScene::SetAnswer(QxMessage message, const std::string& name, const QxHostValue& value)
{
    const std::size_t place = PlaceOfAnswer(message, name);
    if (HasAnswer(place, message, name))
        m_answers[place].value = value;
    else
        m_answers.insert(m_answers.begin() + static_cast<std::ptrdiff_t>(place),
                         {message, name, value});
}

void QxHostScene::ClearAnswer(QxMessage message, const std::string& name)
{
    const std::size_t place = PlaceOfAnswer(message, name);
    if (HasAnswer(place, message, name))
        m_answers.erase(m_answers.begin() + static_cast<std::ptrdiff_t>(place));
}

void QxHostScene::SetTextureAnswer(const std::string& texture, const std::string& name,
                                   const QxHostValue& value)
{
    SetAnswer(QxMessage::TextureInfo, TextureKey(texture, name), value);
}

void QxHostScene::ClearTextureAnswer(const std::string& texture, const std::string& name)
{
    ClearAnswer(QxMessage::TextureInfo, TextureKey(texture, name));
}

QxShaderInstance* QxHostScene::ReceiverOf(QxMessage message)
{
    const SceneLevel& level = CurrentLevel();
    const auto choose = [&](QxShaderInstance* QxHostObject::*member,
                            QxShaderInterface::QxType type) -> QxShaderInstance* {
        if (level.object && level.object->*member)
            return level.object->*member;
        const bool isThis = level.shader && level.shader->Shader().Type() == type;
        return isThis ? level.shader : nullptr;
    };
    switch (message) {
    case QxMessage::Surface:
        return choose(&QxHostObject::surface, QxShaderInterface::e_typeSurface);
    case QxMessage::Displacement:
        return choose(&QxHostObject::displacement, QxShaderInterface::e_typeDisplacement);
    case QxMessage::Atmosphere:
        return choose(&QxHostObject::atmosphere, QxShaderInterface::e_typeVolume);
    case QxMessage::Incident:
        return level.object ? level.object->incident : nullptr;
    case QxMessage::Opposite:
        return level.object ? level.object->opposite : nullptr;
    case QxMessage::Attribute:
    case QxMessage::Option:
    case QxMessage::RendererInfo:
    case QxMessage::LightSource:
    case QxMessage::TextureInfo:
        break;
    }
    return nullptr;
}

bool QxHostScene::Message(QxMessage message, const char* texture, const char* name,
                          const QxMessageValue& value)
{
    QxShaderInstance* const receiver = ReceiverOf(message);
    if (receiver && receiver->Answer(name, value, *this, CurrentLevel().eye))
        return true;
    const bool ofTexture = message == QxMessage::TextureInfo &&
                           AnswerOfHost(TextureKey(texture, name), message, value);
    return ofTexture || AnswerOfHost(name, message, value);
}

bool QxHostScene::AnswerOfHost(const std::string& name, QxMessage message,
                               const QxMessageValue& value) const
{
    const std::size_t place = PlaceOfAnswer(message, name);
    if (!HasAnswer(place, message, name))
        return false;
    const QxHostValue& known = m_answers[place].value;
    if (!known.Fits(value.type) || known.Count() != value.length)
        return false;
    if (value.type != QxValueType::String) {
        value.Store(known.numbers.data());
        return true;
    }
    std::vector<const char*> texts;
    for (const std::string& text : known.texts)
        texts.push_back(text.c_str());
    value.Store(texts.data());
    return true;
}

bool QxHostScene::LightMessage(unsigned int number, const char* name, const QxMessageValue& value)
{
    SceneLevel& level = CurrentLevel();
    QxShaderInstance* const light =
        m_depth > 0 && number < level.lights.size() ? level.lights[number]->shader : nullptr;
    if (light && level.lightGrid && level.runs[number] != 0) {
        if (light->m_runs != level.runs[number])
            RunLightAgain(level, number);
        if (light->Answer(name, value, *this, level.eye))
            return true;
    }
    return Message(QxMessage::LightSource, "", name, value);
}
