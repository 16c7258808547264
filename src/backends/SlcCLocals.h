#pragma once

#include <string>
#include <vector>

#include "backends/SlcCText.h"
#include "backends/SlcEquCType.h"
#include "icode/SlcListICode.h"

/// The locals of a function of the C++ file: writes the structures that hold them, and the code
/// that makes and frees them.
///
/// Each such function accesses its uniform locals as members of `u` and its varying ones as members
/// of `v`. A uniform local is stored as its value. A reference to an element is also in `u`, as one
/// pointer, even if the element varies. A varying local is a pointer to the values of all points,
/// and all varying locals of a function share one block of memory.
///
/// The three functions with locals create them in different ways, for compatibility with existing
/// files: the body calls separate functions, the two for default values contain the statements.
class SlcCLocals : private SlcCText {
public:
    /// Starts with no locals. `out` must outlive the object.
    explicit SlcCLocals(SlcText& out) : SlcCText(out) {}

    /// Adds the locals that `list` uses. Lists of one function must not share names of locals.
    void Add(const SlcListICode& list);

    /// Writes the structures of the body's locals, outside of functions.
    void GenVarsStructure();
    /// Write the functions that create and free the body's locals; the structures must have been
    /// written before. Strings are initialized as empty, everything else with zeros.
    void GenCreateLocalVars();
    void GenDestroyLocalVars();

    /// Write the statements at the start and at the end of the function that computes an instance's
    /// default values: they declare its locals and free their strings. The function runs without a
    /// grid, so each local has one value.
    void GenInstanceLocals();
    void FreeInstanceLocals();
    /// Do the same for the function that computes default values for a grid, which must declare
    /// `numMp` and `polyCnt`. The last statement also frees the block of varying locals.
    void GenShadeTimeLocals();
    void FreeShadeTimeLocals();

    /// Returns a number of floats that has room for one value of `local`, for an array all its
    /// elements; 0 for strings.
    [[nodiscard]] static int FloatsOf(const SlcOperand& local);

private:
    /// The size of one point's share of the block of varying locals.
    struct PointSize {
        int floats = 0;
        int strings = 0;
    };

    [[nodiscard]] static bool IsUniformLocal(const SlcOperand& local);
    [[nodiscard]] std::string ElementTypeText(const SlcOperand& local) const;
    [[nodiscard]] PointSize SizeOfPoint() const;
    /// Returns the varying locals in the order of their shares in the block.
    [[nodiscard]] std::vector<SlcOperand> InBlockOrder() const;
    /// Writes code that assigns the local its share of the block, at `ptr`, initializes strings as
    /// empty, and advances `ptr`.
    void GenVaryingLocal(const SlcOperand& local);
    /// Writes the declaration of the local as a member of a structure of values.
    void GenMember(const SlcOperand& local);
    /// Writes the declaration of `u` with the given locals, initialized with zeros.
    void GenUniformStructure(const std::vector<SlcOperand>& members);
    /// Writes code that frees the strings that the local owns, if any. The name of a uniform local
    /// is written after `uniformAccess`, that of a varying one after `varyingAccess`, in a loop
    /// over the points.
    void FreeStrings(const SlcOperand& local, const char* uniformAccess, const char* varyingAccess);

    SlcEquCType m_types;
    std::vector<SlcOperand> m_all;  // in the order in which they were added
    std::vector<SlcOperand> m_uniform;
    std::vector<SlcOperand> m_varying;
};
