// A uniform variable in a parallel run is a single storage location that every point accesses.
//
//     {; u = x; }; {; y = u; }      every y is the u of the last point
//     {; u = x; y = u; }            every y is the u of its own point: not the same
//
// Accesses of elements count as accesses of their array, since two references may name one element.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcRegroupParallelBlocks, ...).

#include "optimizer/SlcUniformAccess.h"

#include <algorithm>
#include <typeinfo>

#include "icode/SlcICodes.h"
#include "icode/SlcOperandWalker.h"

namespace {

/// Records the uniform variables that instructions read and write.
class NoteUniforms : public SlcOperandWalker {
public:
    NoteUniforms(std::unordered_map<const SlcLexType*, bool>& isWritten,
                 const SlcUniformAccess::Arrays& arrays)
        : m_isWritten(isWritten),
          m_arrays(arrays)
    {
    }

private:
    void Read(SlcOperand& operand) override { Note(operand, false); }
    void Write(SlcOperand& operand) override { Note(operand, true); }

    using SlcOperandWalker::Case;
    /// Binding a reference does not change the array.
    void Case(SlcPtr<SlcArrayRefICode> code) override
    {
        Read(code->m_index);
        NoteItself(*code->m_result, true);
    }

    void Note(const SlcOperand& operand, bool isWritten)
    {
        const auto array = m_arrays.empty() ? m_arrays.end() : m_arrays.find(&*operand);
        if (array == m_arrays.end()) {
            NoteItself(*operand, isWritten);
            return;
        }
        NoteItself(*operand, false);
        NoteItself(*array->second, isWritten);
    }
    void NoteItself(const SlcLexType& operand, bool isWritten)
    {
        if (operand.IsIdent() && operand.IsUniform())
            m_isWritten[&operand] |= isWritten;
    }

    std::unordered_map<const SlcLexType*, bool>& m_isWritten;
    const SlcUniformAccess::Arrays& m_arrays;
};

}  // namespace

SlcUniformAccess::Arrays SlcUniformAccess::ArraysOf(const std::deque<SlcPtr<SlcICode>>& codes)
{
    Arrays arrays;
    for (const auto& code : codes) {
        // No class derives from SlcArrayRefICode, so comparing types is enough, and fast.
        const SlcICode& object = *code;
        if (&typeid(object) != &typeid(SlcArrayRefICode))
            continue;
        const auto& reference = static_cast<const SlcArrayRefICode&>(object);
        arrays[&*reference.m_result] = &*reference.m_array;
    }
    return arrays;
}

void SlcUniformAccess::Add(const SlcPtr<SlcICode>& code, const Arrays& arrays)
{
    NoteUniforms(m_isWritten, arrays).Visit(code);
}

bool SlcUniformAccess::MayJoin(const SlcUniformAccess& next) const
{
    return std::none_of(next.m_isWritten.begin(), next.m_isWritten.end(), [&](const auto& access) {
        const auto here = m_isWritten.find(access.first);
        return here != m_isWritten.end() && (here->second || access.second);
    });
}

void SlcUniformAccess::Join(const SlcUniformAccess& next)
{
    for (const auto& [operand, isWritten] : next.m_isWritten)
        m_isWritten[operand] |= isWritten;
}

SlcUniformAccessOfRuns::SlcUniformAccessOfRuns(const std::deque<SlcPtr<SlcICode>>& codes)
{
    const SlcUniformAccess::Arrays arrays = SlcUniformAccess::ArraysOf(codes);
    bool isInRun = false;
    for (const auto& code : codes) {
        if (code->Is(SlcICodeTraits::OpensRun)) {
            m_runs.emplace_back();
            isInRun = true;
        } else if (code->Is(SlcICodeTraits::ClosesRun)) {
            isInRun = false;
        } else if (isInRun) {
            m_runs.back().Add(code, arrays);
        }
    }
}

bool SlcUniformAccessOfRuns::Join(std::size_t first, std::size_t next)
{
    if (!m_runs[first].MayJoin(m_runs[next]))
        return false;
    m_runs[first].Join(m_runs[next]);
    return true;
}
