#pragma once

#include <cstddef>
#include <string>

#include "sqx/SqxShader.h"

/// Checks that the machine can safely run a shader that was read from an untrusted file. The
/// machine relies on the following rules without checking them again:
///
/// Operands. Each has the type that its instruction requires (`SqxLayout::types`), where points,
/// vectors, normals and colors count as one type. Arrays occur only where they are allowed.
/// Constants are not written, except for literal integers, which stand for omitted results.
///
/// Detail. Outside parallel brackets an instruction that runs once has uniform operands, except
/// `ARRAY_REF` with a uniform index, which binds a reference for all points, and except in an
/// initializer that runs at each point: there an instruction with a varying result may have varying
/// operands. A uniform variable is written from varying ones only inside the brackets, where the
/// last point counts, and by the reducing and answering instructions (`SqxRun`). An initializer
/// that runs once per shader has only uniform operands and does not access the grid or its lights.
/// Initializers do not use the locals of main.
///
/// Flow. Brackets nest, to a limited depth; parallel brackets do not contain other parallel
/// brackets, jumps or loops over lights. A jump stays within its brackets, or leaves loops over
/// lights. A loop over lights ends where its start says, and jumps back to the instruction after
/// its start.
///
/// References. `ARRAY_REF` binds a reference to an element of an array of its type, always the same
/// array; the reference is varying if the array or the index is. On every path of jumps and loops
/// over lights to a use there is such a binding; a conditional bracket counts as entered, so the
/// machine initially binds references to dummy elements.
///
/// Sizes. The variables of a shader fit into memory: see the limits below. The machine checks the
/// number of points.
///
/// Names. No two predefined variables and no two parameters have the same name. A parameter has at
/// most one initializer, whose result has the type and the length of the parameter.
///
/// The machine also checks everything that depends on values: array indices, steps of an endless
/// loop, lights that were not run, formats that do not match their arguments, functions of
/// libraries.
class QxVerifier {
public:
    static constexpr std::size_t k_longestArray = std::size_t{1} << 20;  // elements
    static constexpr std::size_t k_mostBytes = std::size_t{1} << 26;     // of all uniform variables
                                                                         // together
    static constexpr std::size_t k_mostPointBytes = std::size_t{1} << 24;  // of all varying
                                                                           // variables, per point
    static constexpr std::size_t k_deepestNesting = 4096;                  // depth of nested
                                                                           // brackets

    /// Returns false if the shader is rejected; then `Message` returns the line, the section and
    /// the reason. O(n log n) for a file of n values, plus one bit for each pair of a jump target
    /// and a reference that is bound far from its use.
    [[nodiscard]] bool Verify(const SqxShader& shader);
    [[nodiscard]] const std::string& Message() const { return m_message; }

private:
    void VerifyVariables(const SqxShader& shader);
    void VerifyVariable(const SqxShader& shader, const SqxVariable& variable);
    void VerifyNames(const SqxShader& shader);
    void VerifyInitializers(const SqxShader& shader);
    void VerifyResult(const SqxShader& shader, const SqxInitializer& initializer);
    [[noreturn]] void Refuse(int line, const std::string& section, const std::string& fault);

    std::string m_message;
};
