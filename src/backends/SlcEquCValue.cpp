// The C++ text of an operand depends on where it is stored:
//
//                     uniform                    varying, at a point
//     local           u.x                        v.x[polyCnt]
//     parameter       *((float*)i_visibles...)   ((float*)i_visibles...)[polyCnt]
//     predefined      *(i_hiddens.GetDu())       i_hiddens.GetCs()[polyCnt]
//
// For the whole grid, `[polyCnt]` is omitted. A varying array stores its first element for all
// points, then its second, so an element is at `array + i * numMp`. References into uniform arrays
// are recorded (m_flatRefs), since they have one value for all points. In string literals, escapes
// that C++ does not define lose their backslash, octal escapes lose a ninth bit, and trigraphs are
// broken up.
//
// Tested by tests/backends/CStatementsTest.cpp.

#include "backends/SlcEquCValue.h"

#include <cstring>

#include "backends/SlcGeneratedText.h"
#include "backends/SlcLocalFacts.h"
#include "support/SlcFloatText.h"

namespace {

/// True for an octal escape that needs a ninth bit.
bool IsWideOctal(const std::string& text, std::size_t i)
{
    const auto isOctal = [&](std::size_t k) { return text[k] >= '0' && text[k] <= '7'; };
    return i + 2 < text.size() && text[i] >= '4' && isOctal(i) && isOctal(i + 1) && isOctal(i + 2);
}

/// Returns the text of a character in a literal: line ends, which would end the literal, and null
/// characters as escapes, others unchanged.
std::string InLiteral(char c)
{
    switch (c) {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\0':
        return "\\000";  // all three digits, since a digit may follow
    default:
        return {c};
    }
}

}  // namespace

std::string SlcEquCValue::GetString(const SlcOperand& operand)
{
    if (const auto kept = m_kept.find(operand); kept != m_kept.end())
        return kept->second;
    m_form = Form::Point;
    m_elementWanted = false;
    Convert(operand);
    return m_text;
}

std::string SlcEquCValue::GetStringSIMD(const SlcOperand& operand)
{
    m_form = Form::Grid;
    m_elementWanted = false;
    Convert(operand);
    return m_text;
}

std::string SlcEquCValue::GetStringArray(const SlcOperand& array, const SlcOperand& index)
{
    m_index = GetString(index);
    m_elementWanted = true;
    Convert(array);
    return m_text;
}

std::string SlcEquCValue::GetStringRef(const SlcOperand& ref) const
{
    return "u." + ref->GetName();
}

void SlcEquCValue::BindRef(const SlcOperand& ref, const SlcOperand& array)
{
    if (array->IsUniform())
        m_flatRefs.insert(ref);
    else
        m_flatRefs.erase(ref);
}

std::string SlcEquCValue::Quote(const std::string& text)
{
    constexpr const char* knownEscapes = "abfnrtv\\'\"?01234567";
    std::string quoted;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool unknown =
            text[i] == '\\' && i + 1 < text.size() && !std::strchr(knownEscapes, text[i + 1]);
        // Copy the next character too, so that it does not begin another escape.
        if (text[i] == '\\' && !unknown) {
            quoted += text[i++];
            if (IsWideOctal(text, i)) {
                quoted += static_cast<char>(text[i] - 4);
                continue;
            }
        } else if (text[i] == '?' && !quoted.empty() && quoted.back() == '?') {
            quoted += '\\';
        }
        if (!unknown)
            quoted += InLiteral(text[i]);
    }
    return quoted;
}

std::string SlcEquCValue::Literal(const std::string& text)
{
    std::string literal = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            literal += '\\';
        literal += InLiteral(c);
    }
    return literal + '"';
}

void SlcEquCValue::Convert(const SlcOperand& operand)
{
    m_operand = &*operand;
    m_type = ElementType(operand);
    m_isFlatRef = m_type->IsArrayRefType() && m_flatRefs.count(operand) != 0;
    operand->GetLexical()->ApplyWalker(this);
}

void SlcEquCValue::Case(SlcFloatConstNode* constant)
{
    m_text = SlcFloatText(constant->GetValue());
}

void SlcEquCValue::Case(SlcIntConstNode* constant)
{
    m_text = std::to_string(constant->GetValue());
}

void SlcEquCValue::Case(SlcStringLiteralNode* constant)
{
    m_text = Quote(constant->GetText());
}

void SlcEquCValue::Case(SlcBoolConstNode* constant)
{
    m_text = constant->GetValue() ? "true" : "false";
}

void SlcEquCValue::Default(SlcSyntaxNode*)
{
    m_text = "***Bogus value***";
}

void SlcEquCValue::Case(SlcIdentNode* ident)
{
    const std::string& name = ident->GetName();
    const SlcStorageSpecNode* storage = m_operand->GetStorage();
    if (storage->IsLocal())
        ConvertLocal(name);
    else if (!m_operand->IsPIVariable() && (storage->IsInput() || storage->IsOutput()))
        ConvertParameter(name);
    else if (storage->IsReadOnly() || storage->IsReadWrite())
        ConvertPredefined(name);
    else
        m_text = name;
}

void SlcEquCValue::ConvertLocal(const std::string& name)
{
    const bool isRef = m_type->IsArrayRefType();
    const bool uniform = m_operand->IsUniform() || m_isFlatRef;
    m_text = (uniform || isRef ? "u." : "v.") + name;
    if (!uniform)
        AddVaryingTail();
    else if (isRef)
        m_text = "*(" + m_text + ")";
    if (uniform && m_elementWanted)
        m_text += "+ int(" + m_index + ")";
}

void SlcEquCValue::ConvertParameter(const std::string& name)
{
    m_text = "((" + m_types.GetString(m_type) + "*)i_visibles[" +
             SlcGeneratedText::sm_visibleIndexPrefix + name + "].Value())";
    if (!m_operand->IsUniform())
        AddVaryingTail();
    else if (m_elementWanted)
        m_text = "(" + m_text + ")+ int(" + m_index + ")";
    else
        m_text = "*" + m_text;
}

void SlcEquCValue::ConvertPredefined(const std::string& name)
{
    m_text = name;
    // The whole grid has one step, although shaders see `du` and `dv` as varying.
    const bool isStep = name == SlcGeneratedNames::k_du || name == SlcGeneratedNames::k_dv;
    if (m_operand->IsUniform() || isStep)
        m_text = "*(" + m_text + ")";
    else
        AddVaryingTail();
}

void SlcEquCValue::AddVaryingTail()
{
    if (m_elementWanted)
        m_text = "(" + m_text + " + int(" + m_index + ") * numMp)";
    else if (m_form == Form::Point)
        m_text += std::string("[") + SlcGeneratedText::sm_polygonCounter + "]";
}
