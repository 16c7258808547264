// Most words are in SlcICodeClasses.def. A table here lists the words for which a row there does
// not suffice. Transforms, with two words for each of four types, and calls of shadeops, with any
// number of arguments, have separate functions.

#include "icode/SlcICodeWords.h"

#include <array>
#include <string>

#include "icode/SlcICodeFields.h"

namespace {

using Operands = std::deque<SlcOperand>;

std::string Unquoted(const SlcOperand& text)
{
    return text->GetString().substr(1, text->GetString().size() - 2);
}

SlcPtr<SlcICode> MakeIndexCheck(const Operands& arguments)
{
    const std::string file = Unquoted(arguments[4]);
    return MakeShared<SlcCheckValidArrayIndexICode>(Unquoted(arguments[0]), arguments[1],
                                                    arguments[2]->GetInt(), arguments[3]->GetInt(),
                                                    &file);
}

/// Makes a transform from a word such as `from_space_point` or `to_space_color`; returns null for
/// any other word.
SlcPtr<SlcICode> MakeTransform(std::string_view word, const Operands& results,
                               const Operands& arguments, const SlcGridForm& form)
{
    for (SlcTypeNode* type : {SlcTypeNode::APoint(), SlcTypeNode::AVector(), SlcTypeNode::ANormal(),
                              SlcTypeNode::AColor()}) {
        if (word == "from_space_" + type->ToString())
            return MakeShared<SlcTransformFromSpaceICode>(results.at(0), arguments.at(0), type,
                                                          arguments.at(1), form);
        if (word == "to_space_" + type->ToString())
            return MakeShared<SlcTransformToSpaceICode>(results.at(0), arguments.at(0), type,
                                                        arguments.at(1), form);
    }
    return nullptr;
}

/// Sets the operands of a new instruction from those of a call, in order.
class Setter {
public:
    Setter(const Operands& results, const Operands& arguments, const SlcGridForm& form)
        : m_results(results),
          m_arguments(arguments),
          m_form(form)
    {
    }

    template <class... Field>
    void Reads(Field&&... fields)
    {
        (Set(fields, m_arguments, m_read), ...);
    }
    template <class... Field>
    void Writes(Field&&... fields)
    {
        (Set(fields, m_results, m_written), ...);
    }

    /// True if the instruction has as many operands as the call.
    [[nodiscard]] bool Fits() const
    {
        return m_read == m_arguments.size() && m_written == m_results.size();
    }

private:
    static void Set(SlcOperand& field, const Operands& operands, std::size_t& used)
    {
        if (used < operands.size())
            field = operands[used];
        ++used;
    }
    template <std::size_t N>
    static void Set(std::array<SlcOperand, N>& fields, const Operands& operands, std::size_t& used)
    {
        for (SlcOperand& field : fields)
            Set(field, operands, used);
    }
    void Set(SlcGridForm& form, const Operands&, std::size_t&) const { form = m_form; }
    void Set(SlcLimitedBy& limit, const Operands&, std::size_t&) const
    {
        limit.flag = m_form.condition;
    }

    const Operands& m_results;
    const Operands& m_arguments;
    const SlcGridForm& m_form;
    std::size_t m_read = 0;
    std::size_t m_written = 0;
};

/// Makes a `Code` with the operands of the call; null if their number does not match.
template <class Code>
SlcPtr<SlcICode> MakeFrom(Setter setter)
{
    SlcPtr<Code> code = MakeShared<Code>();
    SlcVisitFields(&*code, setter);
    return setter.Fits() ? SlcPtr<SlcICode>(code) : nullptr;
}

/// Makes an instruction of a class that has its word in SlcICodeClasses.def; null if no class fits.
SlcPtr<SlcICode> MakeByRow(std::string_view called, const Setter& setter)
{
#define SLC_ICODE_WORD(name, base, traits, reads, writes, word)                                    \
    if (called == (word))                                                                          \
        if (SlcPtr<SlcICode> code = MakeFrom<name>(setter))                                        \
            return code;
#include "icode/SlcICodeClasses.def"
    return nullptr;
}

/// A word whose instruction needs data other than operands, has a list of operands, or lacks an
/// optional operand.
struct CallWord {
    std::string_view word;
    std::size_t results;
    std::size_t arguments;
    SlcPtr<SlcICode> (*make)(const Operands& results, const Operands& arguments,
                             const SlcGridForm& form);
};

using Code = SlcPtr<SlcICode>;
using Ops = const Operands&;
using Grid = const SlcGridForm&;

const CallWord k_callWords[] = {
    {"matrix", 1, 16,
     [](Ops r, Ops a, Grid) -> Code { return MakeShared<SlcMatrixICode>(r[0], a); }},
    {"concat_space", 1, 2,
     [](Ops r, Ops a, Grid) -> Code {
         return MakeShared<SlcConcatSpaceMatrixICode>(
             r[0], a[0], static_cast<SlcStringLiteralNode*>(a[1]->GetLexical()));
     }},
    {"check_index", 0, 5, [](Ops, Ops a, Grid) -> Code { return MakeIndexCheck(a); }},
    {"to_shadeop", 1, 1,
     [](Ops r, Ops a, Grid) -> Code {
         return MakeShared<SlcConvertArrayDSOICode>(r[0], a[0], true);
     }},
    {"from_shadeop", 1, 1,
     [](Ops r, Ops a, Grid) -> Code {
         return MakeShared<SlcConvertArrayDSOICode>(r[0], a[0], false);
     }},
    {"illuminate", 2, 2,
     [](Ops r, Ops a, Grid form) -> Code {
         return MakeShared<SlcIlluminateICode>(r[0], a[0], nullptr, nullptr, a[1], r[1], form);
     }},
};

/// Makes the call that is written `result = shadeop("library key", "method", arguments)`.
SlcPtr<SlcICode> MakeShadeopCall(const Operands& results, const Operands& arguments)
{
    return MakeShared<SlcCallDSOICode>(results.empty() ? SlcOperand() : results[0],
                                       Operands(arguments.begin() + 2, arguments.end()),
                                       Unquoted(arguments[0]), Unquoted(arguments[1]));
}

}  // namespace

SlcPtr<SlcICode> SlcMakeICodeOfWord(std::string_view word, const Operands& results,
                                    const Operands& arguments, const SlcGridForm& form)
{
    for (const CallWord& row : k_callWords)
        if (row.word == word && row.results == results.size() && row.arguments == arguments.size())
            return row.make(results, arguments, form);
    if (SlcPtr<SlcICode> code = MakeByRow(word, Setter(results, arguments, form)))
        return code;
    if (word == "shadeop" && results.size() <= 1 && arguments.size() >= 2)
        return MakeShadeopCall(results, arguments);
    if (results.size() == 1 && arguments.size() == 2)
        return MakeTransform(word, results, arguments, form);
    return nullptr;
}
