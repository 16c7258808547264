// The description of a shader in its shared object is a byte-code file: declarations and default
// values in the usual form, with an empty main block. Facts that a reader of byte-code finds in the
// instructions, the uses of predefined variables and lights, precede the byte-code as lines of
// numbers:
//
//     1        version of these lines
//     1        queries lights
//     0        has `illuminate` or `solar`
//     2        predefined variables, and for each, in the order of the byte-code,
//     1 0      read, written
//     0 1
//     ...      byte-code
//
// A shader may be valid as a shared object but not as byte-code. A default value that byte-code
// cannot compute is left out; all are left out if the fault is elsewhere, such as too many
// variables.
//
// Tested by tests/backends/CFileTest.cpp and tests/listing.

#include "backends/SlcCShaderFacts.h"

#include <set>
#include <vector>

#include "backends/SlcEquCValue.h"
#include "backends/SlcGenByteCode.h"
#include "backends/SlcGeneratedText.h"
#include "icode/SlcICodes.h"
#include "icode/SlcOperandWalker.h"

using Generated = SlcGeneratedText;

namespace {

constexpr int k_version = 1;

std::string Description(SlcInterForm& form)
{
    std::set<std::size_t> leftOut;
    for (;;) {
        SlcText text;
        SlcGenByteCode writer(form.m_errors, text);
        // Without default values, nothing remains that could fail.
        if (writer.GenDescription(form, leftOut) || leftOut.size() == form.m_parameters.size())
            return text.Str();
        if (writer.Unwritten().empty())
            for (std::size_t i = 0; i < form.m_parameters.size(); ++i)
                leftOut.insert(i);
        leftOut.insert(writer.Unwritten().begin(), writer.Unwritten().end());
    }
}

/// Collects how the main list and the default values of a shader use lights and the predefined
/// variables, which have the first numbers.
class Uses : private SlcOperandWalker {
public:
    explicit Uses(const SlcInterForm& form)
        : m_read(form.m_hiddenVars.size()),
          m_written(form.m_hiddenVars.size())
    {
        Look(*form.m_mainList);
        for (const SlcParameterInfo& parameter : form.m_parameters) {
            Look(*parameter.initList);
            for (const SlcOperand& value : parameter.initValues)
                Mark(m_read, value);
        }
    }

    [[nodiscard]] std::string Text(const SlcInterForm& form) const
    {
        SlcText text;
        text << k_version << '\n' << m_usesLights << '\n' << m_hasLightStatement << '\n';
        text << m_read.size() << '\n';
        for (std::size_t i = 0; i < m_read.size(); ++i) {
            const bool readByLights = m_usesLightsAtP && form.m_hiddenVars[i]->GetName() == "P";
            text << (m_read[i] || readByLights) << ' ' << m_written[i] << '\n';
        }
        return text.Str();
    }

private:
    void Look(const SlcListICode& list)
    {
        for (const auto& code : list.m_icodes)
            Visit(code);
    }

    static void Mark(std::vector<bool>& marks, const SlcOperand& operand)
    {
        if (operand->IsIdent() && operand->m_index >= 0 &&
            static_cast<std::size_t>(operand->m_index) < marks.size())
            marks[static_cast<std::size_t>(operand->m_index)] = true;
    }

    using SlcOperandWalker::Case;
    void Read(SlcOperand& operand) override { Mark(m_read, operand); }
    void Write(SlcOperand& operand) override { Mark(m_written, operand); }
    void Case(SlcPtr<SlcEvalLightICode> code) override
    {
        m_usesLights = true;
        SlcOperandWalker::Case(std::move(code));
    }
    void Case(SlcPtr<SlcEvalLightForPICode>) override { m_usesLights = m_usesLightsAtP = true; }
    void Case(SlcPtr<SlcIlluminateICode> code) override
    {
        m_hasLightStatement = true;
        SlcOperandWalker::Case(std::move(code));
    }
    void Case(SlcPtr<SlcSolarICode> code) override
    {
        m_hasLightStatement = true;
        SlcOperandWalker::Case(std::move(code));
    }

    std::vector<bool> m_read;  // by number of the variable
    std::vector<bool> m_written;
    bool m_usesLights = false;
    bool m_usesLightsAtP = false;
    bool m_hasLightStatement = false;
};

}  // namespace

void SlcCShaderFacts::Gen(SlcInterForm& form)
{
    const std::string description = Description(form);
    const std::string text = Uses(form).Text(form) + description;
    // Files of several shaders may be compiled as one, so the name has internal linkage.
    Line("static const char ", Generated::sm_shaderFactsName, "[] __attribute__((used, section(\"",
         Generated::sm_shaderFactsName, "\"))) =");
    for (std::size_t begin = 0, end = 0; begin < text.size(); begin = end) {
        end = text.find('\n', begin) + 1;
        // The first character of byte-code is not printable.
        const bool isHead = text[begin] == '\x7F';
        begin += isHead ? 1 : 0;
        Line("\t", isHead ? "\"\\177\" " : "",
             SlcEquCValue::Literal(text.substr(begin, end - begin)));
    }
    Line("\t;");
}
