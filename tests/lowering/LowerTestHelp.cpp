#include "lowering/LowerTestHelp.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <map>
#include <sstream>

#include "frontend/SlcParseCode.h"
#include "icode/SlcICodeName.h"
#include "icode/SlcICodes.h"
#include "icode/SlcOperandWalker.h"
#include "semantics/SlcDeleteTree.h"
#include "semantics/SlcSemantics.h"
#include "support/SlcDiagnostics.h"
#include "symbols/SlcHiddenVariables.h"

namespace {

class ListPrinter : public SlcOperandWalker {
public:
    void Print(const SlcPtr<SlcICode>& code)
    {
        m_reads.clear();
        m_writes.clear();
        m_suffix.clear();
        m_word.clear();
        Visit(code);
        if (m_word.empty()) {
            const std::string name(SlcICodeName(*code));
            m_word = m_writes + name.substr(3, name.size() - 8) + m_reads + m_suffix + ';';
        }
        if (m_word != k_nothing)
            m_text += (m_text.empty() ? "" : " ") + m_word;
    }
    [[nodiscard]] const std::string& Text() const { return m_text; }

private:
    static constexpr const char* k_nothing = "-";

    using SlcOperandWalker::Case;
    void Read(SlcOperand& operand) override { m_reads += ' ' + Name(operand); }
    void Write(SlcOperand& operand) override { m_writes += Name(operand) + " = "; }
    void Case(SlcPtr<SlcInvisibleICode>) override { m_word = k_nothing; }
    void Case(SlcPtr<SlcBeginParallelICode>) override { m_word = "{"; }
    void Case(SlcPtr<SlcEndParallelICode>) override { m_word = "}"; }
    void Case(SlcPtr<SlcIfTrueICode> code) override { m_word = Name(code->m_flag) + "("; }
    void Case(SlcPtr<SlcIfFalseICode> code) override { m_word = "!" + Name(code->m_flag) + "("; }
    void Case(SlcPtr<SlcEndIfICode>) override { m_word = ")"; }
    void Case(SlcPtr<SlcLabelICode> code) override { m_word = Name(code) + ":"; }
    void Case(SlcPtr<SlcGotoICode> code) override { m_word = "goto " + Name(code->m_label) + ";"; }
    void Case(SlcPtr<SlcIfTrueGotoICode> code) override
    {
        m_word = Name(code->m_flag) + "? goto " + Name(code->m_label) + ";";
    }
    void Case(SlcPtr<SlcIfFalseGotoICode> code) override
    {
        m_word = "!" + Name(code->m_flag) + "? goto " + Name(code->m_label) + ";";
    }
    void Case(SlcPtr<SlcSetUniformBoolFlagICode> code) override
    {
        m_word = Name(code->m_source);
        m_word = Name(code->m_dest) + " = any " + m_word + ";";
    }
    void Case(SlcPtr<SlcInvertBoolFlagICode> code) override
    {
        m_word = code->m_outer ? Name(code->m_outer) + " but " : "";
        m_word += "not " + Name(code->m_source) + ";";
        m_word = Name(code->m_dest) + " = " + m_word;
    }
    void Case(SlcPtr<SlcOrBoolFlagICode> code) override
    {
        m_word = Name(code->m_left) + " or " + Name(code->m_right) + ";";
        m_word = Name(code->m_dest) + " = " + m_word;
    }
    void Case(SlcPtr<SlcBreakICode> code) override { m_word = "break" + Names(code->m_flags); }
    void Case(SlcPtr<SlcContinueICode> code) override
    {
        m_word = "continue" + Names(code->m_flags);
    }
    void Case(SlcPtr<SlcTransformSpaceICode> code) override
    {
        ShowForm(code, code->m_form.simd, code->m_form.condition);
    }
    void Case(SlcPtr<SlcConcatSpaceMatrixICode> code) override
    {
        SlcOperandWalker::Case(code);
        m_suffix = ' ' + code->m_space->GetText();
    }
    void Case(SlcPtr<SlcCallICode> code) override
    {
        m_word = code->m_result ? Name(code->m_result) + " = " : "";
        m_word += WithoutPrefix(code->m_name->GetName());
        for (const SlcOperand& argument : code->m_args)
            m_word += ' ' + Name(argument);
        m_word += code->m_list == SlcCallICode::ArgumentList::Counted ? " counted" : "";
        m_word += Form(code->m_form.simd, code->m_form.condition) + ';';
    }
    void Case(SlcPtr<SlcCallDSOICode> code) override
    {
        SlcOperandWalker::Case(code);
        m_suffix = ' ' + code->m_funcKey + '.' + code->m_methodName;
    }
    void Case(SlcPtr<SlcConvertArrayDSOICode> code) override
    {
        SlcOperandWalker::Case(code);
        m_suffix = code->m_toDSO ? " to" : " from";
    }
    void Case(SlcPtr<SlcBeginIlluminanceICode> code) override
    {
        m_word = "lights " + Name(code->m_startLabel) + ' ' + Name(code->m_endLabel) + ';';
    }
    void Case(SlcPtr<SlcEndIlluminanceICode> code) override
    {
        m_word = "next " + Name(code->m_startLabel) + ';';
    }
    void Case(SlcPtr<SlcIlluminateICode> code) override
    {
        ShowForm(code, code->m_form.simd, code->m_form.condition);
    }
    void Case(SlcPtr<SlcSolarICode> code) override
    {
        ShowForm(code, code->m_form.simd, code->m_form.condition);
    }
    void Case(SlcPtr<SlcCheckIlluminanceICode> code) override
    {
        ShowForm(code, code->m_form.simd, code->m_form.condition);
    }
    void Case(SlcPtr<SlcTexturePointsICode> code) override
    {
        ShowForm(code, true, code->m_condition);
    }
    void Case(SlcPtr<SlcTextureSTPointsICode> code) override
    {
        ShowForm(code, true, code->m_condition);
    }
    void Case(SlcPtr<SlcFilterstepPointsICode> code) override
    {
        ShowForm(code, true, code->m_condition);
    }

    /// The usual form, with the condition behind it.
    template <class Code>
    void ShowForm(const SlcPtr<Code>& code, bool simd, SlcOperand& limit)
    {
        SlcOperand condition;
        condition.Swap(limit);
        SlcOperandWalker::Case(code);
        m_suffix = Form(simd, condition);
        condition.Swap(limit);
    }
    std::string Form(bool simd, const SlcOperand& condition)
    {
        return std::string(simd ? " simd" : "") + (condition ? " at " + Name(condition) : "");
    }
    static std::string WithoutPrefix(const std::string& name)
    {
        const std::string prefix = name.rfind("CALL_PRIM_", 0) == 0 ? "CALL_PRIM_" : "CALL_";
        return name.substr(prefix.size());
    }

    std::string Names(const std::deque<SlcOperand>& operands)
    {
        std::string names;
        for (const SlcOperand& operand : operands)
            names += ' ' + Name(operand);
        return names + ';';
    }
    std::string Name(const SlcLabel& label) { return 'L' + Number(m_labels, label->m_name); }
    std::string Name(const SlcOperand& operand)
    {
        if (operand->IsString())
            return operand->GetString();
        if (operand->IsFloat()) {
            std::ostringstream text;
            text << '#' << operand->GetFloat();
            return text.str();
        }
        if (operand->IsBool())
            return operand->GetBool() ? "#true" : "#false";
        if (operand->IsInt())
            return "##" + std::to_string(operand->GetInt());
        std::string name = operand->GetName();
        if (name.front() == 'T' && name.back() == '_') {
            const char kind = !operand->GetType()->IsBoolType() ? 't'
                              : operand->IsUniform()            ? 'u'
                                                                : 'f';
            return kind + Number(m_temporaries[kind], name);
        }
        return SourceName(name);
    }
    /// Predefined variables have accessors for names.
    static std::string SourceName(const std::string& name)
    {
        const std::string prefix = "i_hiddens.Get";
        if (name.compare(0, prefix.size(), prefix) != 0)
            return name;
        std::string source = name.substr(prefix.size(), name.size() - prefix.size() - 2);
        if (!SlcHiddenVariables::FindVarInfoHidden(source))
            source.front() = static_cast<char>(std::tolower(source.front()));
        return source;
    }
    static std::string Number(std::map<std::string, std::size_t>& numbers, const std::string& name)
    {
        return std::to_string(numbers.emplace(name, numbers.size()).first->second);
    }

    std::string m_text;
    std::string m_reads;
    std::string m_writes;
    std::string m_suffix;
    std::string m_word;  // the whole of an instruction with a text of its own
    std::map<char, std::map<std::string, std::size_t>> m_temporaries;  // by kind
    std::map<std::string, std::size_t> m_labels;
};

/// The source as the parser wants it, with a line marker in front.
std::unique_ptr<FILE, int (*)(FILE*)> OpenText(const std::string& source)
{
    std::unique_ptr<FILE, int (*)(FILE*)> file(std::tmpfile(), &std::fclose);
    const std::string text = "# 1 \"test.sl\"\n" + source + "\n";
    std::fwrite(text.data(), 1, text.size(), file.get());
    std::rewind(file.get());
    return file;
}

}  // namespace

SlcOptionsControl PlainOptions()
{
    SlcOptionsControl options;
    options.m_checkArrayBounds = false;
    options.m_simdInstructions = false;
    options.m_regroupParallelBlocks = false;
    options.m_assignInPlace = false;
    options.m_reuseTempVars = false;
    options.m_reuseBoolFlags = false;
    options.m_optimizeBasicBlocks = false;
    return options;
}

SlcOptionsControl PlainOptionsWith(bool SlcOptionsControl::*option)
{
    SlcOptionsControl options = PlainOptions();
    options.*option = true;
    return options;
}

LoweredShader::LoweredShader(const std::string& source, SlcOptionsControl options)
    : LoweredShader(source, std::move(options), Expected::Accepted)
{
}

LoweredShader::LoweredShader(const std::string& source, SlcOptionsControl options,
                             Expected expected)
    : m_options(std::move(options))
{
    ResetNbErrorsAndWarnings();
    testing::internal::CaptureStderr();
    const auto file = OpenText(source);
    try {
        m_root = ParseCode(file.get(), m_options.m_strict);
        SlcSemantics(m_root.get(), m_options);
        m_form = std::make_unique<SlcInterForm>(m_options);
        m_form->GenInterForm(m_root.get());
        m_accepted = true;
    } catch (const SlcCompilationError&) {
        // The messages say why.
    }
    m_messages = testing::internal::GetCapturedStderr();
    if (m_accepted != (expected == Expected::Accepted))
        ADD_FAILURE() << (m_accepted ? "accepted: " : "refused: ") << source << '\n' << m_messages;
}

LoweredShader::~LoweredShader()
{
    m_form.reset();
    SlcDeleteTree cut;
    cut(m_root.get());
}

std::string ToText(const SlcListICode& list)
{
    ListPrinter printer;
    for (const auto& code : list.m_icodes)
        printer.Print(code);
    return printer.Text();
}

std::string LowerShader(const std::string& source, SlcOptionsControl options)
{
    LoweredShader shader(source, std::move(options));
    return shader.IsAccepted() ? ToText(*shader.Form().m_mainList) : "refused";
}

std::string MessagesOf(const std::string& source, SlcOptionsControl options)
{
    return LoweredShader(source, std::move(options)).Messages();
}

std::string RefusalOf(const std::string& source, SlcOptionsControl options)
{
    return LoweredShader(source, std::move(options), LoweredShader::Expected::Refused).Messages();
}

std::string LowerBody(const std::string& body, SlcOptionsControl options)
{
    return LowerShader("displacement test(uniform float k = 1; varying float w = 2; output "
                       "varying float o = 0) {" +
                           body + "}",
                       std::move(options));
}

void ExpectCode(std::span<const LowerCase> cases, const SlcOptionsControl& options)
{
    for (const LowerCase& c : cases)
        EXPECT_EQ(LowerBody(c.body, options), c.code) << c.body;
}
