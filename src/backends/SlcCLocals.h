#pragma once

#include <string>
#include <vector>

#include "backends/SlcCText.h"
#include "backends/SlcEquCType.h"
#include "icode/SlcListICode.h"

/// The locals of a function of the C++ file: the structures that hold them, and the code that makes
/// and frees them.
///
/// Every such function reaches its uniform locals as members of `u` and the varying ones as members
/// of `v`. A uniform local is its value; so is a reference to an element, which is one pointer even
/// where what it points to varies. A varying local is a pointer to the values of all points, and
/// all varying locals share one block of memory.
///
/// The three functions with locals make them in different ways, which existing generated files
/// depend on: the body by functions beside it, the two for default values by statements of theirs.
class SlcCLocals : private SlcCText {
public:
    /// Starts without locals. `out` must outlive the object.
    explicit SlcCLocals(std::ostream& out) : SlcCText(out) {}

    /// Adds the locals that `list` uses. Lists of one function bear locals of different names.
    void Add(const SlcListICode& list);

    /// The structures of the body's locals, outside of functions.
    void GenVarsStructure();
    /// The functions that make and free the body's locals; call this after their structures are
    /// written. Strings begin empty, all else with zeros.
    void GenCreateLocalVars();
    void GenDestroyLocalVars();

    /// The locals of the function that gives an instance its default values: the statements at its
    /// start and its end. No grid is there, so each has one value.
    void GenInstanceLocals();
    void FreeInstanceLocals();
    /// The same for the function that computes default values for a grid; `numMp` must be declared.
    void GenShadeTimeLocals();
    void FreeShadeTimeLocals();

    /// Floats that one value of the type of `local` is made of; none for strings.
    [[nodiscard]] static int FloatsOf(const SlcOperand& local);

private:
    /// The size of one point's part of the block of varying locals.
    struct PointSize {
        int floats = 0;
        int strings = 0;
    };

    [[nodiscard]] static bool IsUniformLocal(const SlcOperand& local);
    [[nodiscard]] std::string ElementTypeText(const SlcOperand& local) const;
    [[nodiscard]] PointSize SizeOfPoint() const;
    /// The order in which varying locals take their part of the block.
    [[nodiscard]] std::vector<SlcOperand> InBlockOrder() const;
    /// Assigns the local its part of the block, at `ptr`, and advances `ptr` past it.
    void GenVaryingLocal(const SlcOperand& local);
    /// The local as a member of a structure of values.
    void GenMember(const SlcOperand& local);
    /// Declares `u` with the given locals, filled with zeros.
    void GenUniformStructure(const std::vector<SlcOperand>& members);
    /// Releases the strings that the local owns, if any. The texts say how to reach it up to its
    /// name: the first is a whole line, the second is part of a loop over the points.
    void FreeStrings(const SlcOperand& local, const char* uniformAccess, const char* varyingAccess);

    SlcEquCType m_types;
    std::vector<SlcOperand> m_all;  // as the lists use them
    std::vector<SlcOperand> m_uniform;
    std::vector<SlcOperand> m_varying;
};
