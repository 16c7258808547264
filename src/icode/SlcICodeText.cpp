// One walker that writes each instruction in the form that docs/icode.md shows. The general form is
// a call, `results = word(operands)`; the most frequent instructions have an operator.
//
// Tested by tests/icode/SlcICodeTextTest.cpp, which compares parsed texts with the texts printed
// again, and by the tests of the lowering and the optimizer, which compare texts.

#include "icode/SlcICodeText.h"

#include <algorithm>
#include <array>

#include "icode/SlcICodeFields.h"
#include "icode/SlcICodeName.h"
#include "icode/SlcICodeSigns.h"

namespace {

using Operands = std::deque<SlcOperand>;

/// The operands of an instruction that is written as a call.
struct Fields {
    Operands results;
    Operands arguments;
    SlcGridForm form;

    template <class... Field>
    void Reads(const Field&... fields)
    {
        (Add(arguments, fields), ...);
    }
    template <class... Field>
    void Writes(const Field&... fields)
    {
        (Add(results, fields), ...);
    }

private:
    static void Add(Operands& operands, const SlcOperand& operand)
    {
        if (operand)
            operands.push_back(operand);
    }
    void Add(Operands&, const SlcGridForm& limit) { form = limit; }
    void Add(Operands&, const SlcLimitedBy& limit) { form.condition = limit.flag; }
    template <std::size_t N>
    static void Add(Operands& operands, const std::array<SlcOperand, N>& corners)
    {
        operands.insert(operands.end(), corners.begin(), corners.end());
    }
};

class Printer : public SlcAllICodeWalker {
public:
    explicit Printer(SlcICodeNames& names) : m_names(names) {}

    [[nodiscard]] std::string Print(SlcICode& code)
    {
        code.ApplyWalker(this);
        return std::move(m_text);
    }

private:
    using SlcAllICodeWalker::Case;

    // Values

    void Case(SlcPtr<SlcAssignICode> code) override
    {
        Write(code->m_dest, " = ", code->m_source, ";");
    }
    void Case(SlcPtr<SlcAssignSIMDICode> code) override
    {
        Write(code->m_dest, " <- ", code->m_source, ";");
    }
    void Case(SlcPtr<SlcArithExprICode> code) override { Binary(*code); }
    void Case(SlcPtr<SlcBinOpBoolExprICode> code) override { Binary(*code); }
    void Case(SlcPtr<SlcUnaryMinusICode> code) override
    {
        const bool isConst = code->m_source->IsConst();  // -1 is a constant, -(1) is not
        Write(code->m_dest, isConst ? " = -(" : " = -", code->m_source, isConst ? ");" : ";");
    }
    void Case(SlcPtr<SlcMatrixICode> code) override
    {
        Call({code->m_dest}, "matrix", code->m_values);
    }
    void Case(SlcPtr<SlcArrayRefICode> code) override
    {
        Write(code->m_result, " = &", code->m_array, "[", code->m_index, "];");
    }
    void Case(SlcPtr<SlcCheckValidArrayIndexICode> code) override
    {
        Write("check_index(", code->m_arrayName, ", ", code->m_index, ", ", code->m_size, ", ",
              code->m_line, ", ", code->m_fileName, ");");
    }
    void Case(SlcPtr<SlcTransformFromSpaceICode> code) override { Transform(*code, "from_space"); }
    void Case(SlcPtr<SlcTransformToSpaceICode> code) override { Transform(*code, "to_space"); }
    void Case(SlcPtr<SlcConcatSpaceMatrixICode> code) override
    {
        Write(code->m_dest, " = concat_space(", code->m_source, ", ", code->m_space->GetText(),
              ");");
    }

    // Flags

    void Case(SlcPtr<SlcSetUniformBoolFlagICode> code) override
    {
        Write(code->m_dest, " = any ", code->m_source, ";");
    }
    void Case(SlcPtr<SlcInvertBoolFlagICode> code) override
    {
        Write(code->m_dest, " = ");
        if (code->m_outer)
            Write(code->m_outer, " but ");
        Write("not ", code->m_source, ";");
    }
    void Case(SlcPtr<SlcOrBoolFlagICode> code) override
    {
        Write(code->m_dest, " = ", code->m_left, " or ", code->m_right, ";");
    }

    // Brackets, labels and jumps

    void Case(SlcPtr<SlcBeginParallelICode>) override { Write("{"); }
    void Case(SlcPtr<SlcEndParallelICode>) override { Write("}"); }
    void Case(SlcPtr<SlcIfTrueICode> code) override { Write(code->m_flag, "?("); }
    void Case(SlcPtr<SlcIfFalseICode> code) override { Write("!", code->m_flag, "?("); }
    void Case(SlcPtr<SlcEndIfICode>) override { Write(")"); }
    void Case(SlcPtr<SlcLabelICode> code) override { Write(code, ":"); }
    void Case(SlcPtr<SlcGotoICode> code) override { Write("goto ", code->m_label, ";"); }
    void Case(SlcPtr<SlcIfTrueGotoICode> code) override
    {
        Write(code->m_flag, "? goto ", code->m_label, ";");
    }
    void Case(SlcPtr<SlcIfFalseGotoICode> code) override
    {
        Write("!", code->m_flag, "? goto ", code->m_label, ";");
    }
    void Case(SlcPtr<SlcBreakICode> code) override { Leave(*code, "break"); }
    void Case(SlcPtr<SlcContinueICode> code) override { Leave(*code, "continue"); }
    void Case(SlcPtr<SlcBeginShaderICode>) override { Write("begin;"); }
    void Case(SlcPtr<SlcEndShaderICode>) override { Write("end;"); }

    // Calls

    void Case(SlcPtr<SlcCallICode> code) override
    {
        std::string_view primitive = SqxPrimitiveName(code->m_primitive);
        if (primitive.starts_with(k_slcPrimitivePrefix))
            primitive.remove_prefix(k_slcPrimitivePrefix.size());
        Call(OneOrNone(code->m_result), primitive, code->m_args);
        if (code->m_list == SlcCallICode::ArgumentList::Counted) {
            m_text.pop_back();
            Write(" counted;");
        }
        Limit(code->m_form);
    }
    void Case(SlcPtr<SlcCallDSOICode> code) override
    {
        Operands arguments = {SlcLexType::String('"' + code->m_funcKey + '"'),
                              SlcLexType::String('"' + code->m_methodName + '"')};
        arguments.insert(arguments.end(), code->m_args.begin(), code->m_args.end());
        Call(OneOrNone(code->m_result), "shadeop", arguments);
    }
    void Case(SlcPtr<SlcConvertArrayDSOICode> code) override
    {
        Call({code->m_dest}, code->m_toDSO ? "to_shadeop" : "from_shadeop", {code->m_source});
    }

    // Loops over lights

    void Case(SlcPtr<SlcBeginIlluminanceICode> code) override
    {
        Write("lights ", code->m_startLabel, " ", code->m_endLabel, ";");
    }
    void Case(SlcPtr<SlcEndIlluminanceICode> code) override
    {
        Write("next ", code->m_startLabel, ";");
    }
    // The rest

    void Case(SlcPtr<SlcCommentICode>) override { Write("note;"); }
#define SLC_ICODE_WORD(name, base, traits, reads, writes, word)                                    \
    void Case(SlcPtr<name> code) override                                                          \
    {                                                                                              \
        ByWord(*code, word);                                                                       \
    }
#include "icode/SlcICodeClasses.def"
    /// Writes the name of the class, which the parser refuses, so that a test shows that the text
    /// form is missing.
    void Default(SlcPtr<SlcICode> code) override
    {
        Write(SlcICodeName(*code), "();");
    }

    // Common parts of the forms

    template <class Code>
    void Binary(const Code& code)
    {
        const auto* row = std::find_if(std::begin(k_slcICodeSigns), std::end(k_slcICodeSigns),
                                       [&](const auto& sign) { return sign.code == typeid(code); });
        Write(code.m_resultId, " = ", code.m_leftExpr, " ", row->sign, " ", code.m_rightExpr, ";");
    }
    void Transform(const SlcTransformSpaceICode& code, const std::string& word)
    {
        Call({code.m_dest}, word + '_' + code.m_type->ToString(), {code.m_source, code.m_space});
        Limit(code.m_form);
    }
    template <class Code>
    void Leave(const Code& code, const char* word)
    {
        Write(word);
        for (const SlcOperand& flag : code.m_flags)
            Write(" ", flag);
        Write(" to ", code.m_label, ";");
    }
    template <class Code>
    void ByWord(Code& code, std::string_view word)
    {
        Fields fields;
        SlcVisitFields(&code, fields);
        Call(fields.results, word, fields.arguments);
        Limit(fields.form);
    }
    void Call(const Operands& results, std::string_view word, const Operands& arguments)
    {
        List(results);
        Write(results.empty() ? "" : " = ", word, "(");
        List(arguments);
        Write(");");
    }
    void List(const Operands& operands)
    {
        for (std::size_t i = 0; i < operands.size(); ++i)
            Write(i == 0 ? "" : ", ", operands[i]);
    }
    [[nodiscard]] static Operands OneOrNone(const SlcOperand& operand)
    {
        return operand ? Operands{operand} : Operands{};
    }
    /// Appends the grid form of the instruction that has just been written.
    void Limit(const SlcGridForm& form)
    {
        m_text.pop_back();  // the form is inserted before the semicolon
        if (form.simd)
            Write(" simd");
        if (form.condition)
            Write(" at ", form.condition);
        Write(";");
    }

    /// Appends texts and names, strictly from left to right, since names are numbered by first use.
    template <class... Parts>
    void Write(const Parts&... parts)
    {
        ((m_text += TextOf(parts)), ...);
    }
    [[nodiscard]] static std::string_view TextOf(std::string_view text)
    {
        return text;
    }
    [[nodiscard]] std::string TextOf(int number)
    {
        return '#' + std::to_string(number);
    }
    [[nodiscard]] std::string TextOf(const SlcOperand& operand)
    {
        return m_names.Of(operand);
    }
    [[nodiscard]] std::string TextOf(const SlcLabel& label)
    {
        return m_names.Of(label);
    }

    SlcICodeNames& m_names;
    std::string m_text;
};

}  // namespace

std::string SlcICodeText::Of(SlcICode& code, SlcICodeNames& names)
{
    return Printer(names).Print(code);
}

std::string SlcICodeText::Of(const SlcListICode& list)
{
    SlcICodeNames names;
    std::string text;
    for (const auto& code : list.m_icodes)
        text += (text.empty() ? "" : " ") + Of(*code, names);
    return text;
}
