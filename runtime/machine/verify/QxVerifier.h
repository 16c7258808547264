#pragma once

#include <cstddef>
#include <string>

#include "sqx/SqxShader.h"

/// Tells whether the machine can run a shader that was read from a file safely, whatever the file
/// holds. What the machine relies on, and does not look at again:
///
/// Operands. Each has the type that its instruction wants (`SqxLayout::types`), points, vectors,
/// normals and colors counting as one. An array stands only where an array may. What is written is
/// no constant, but for arguments that a literal integer leaves out.
///
/// Detail. Outside the parallel brackets an instruction that runs once has uniform operands, in an
/// initializer of a varying value excepted: there it runs for each point if its result is varying.
/// A uniform variable is written from varying ones only within the brackets, where the last point
/// counts, and by the reducing and answering instructions (`SqxRun`). An initializer that runs once
/// for the shader has uniform operands only and asks nothing of the grid or its lights.
/// Initializers do not name the locals of main.
///
/// Flow. Brackets nest, to a limited depth; the parallel ones hold no others of their kind. A
/// jump stays within the brackets that it stands in, or leaves loops over lights. A loop over
/// lights ends where its beginning tells, and goes back to the instruction behind that.
///
/// References. `ARRAY_REF` binds a reference to an element of an array of its type, always the
/// same array, a varying one only if the reference is varying. On every way that jumps and loops
/// over lights lead to a use stands such a binding; a conditional bracket counts as entered, so
/// that the machine starts with references at the first element.
///
/// Sizes. The variables of a shader fit into memory: see the limits below. How many points there
/// may be is the machine's to check.
///
/// What depends on values is the machine's too: indices of arrays, steps of an endless loop,
/// lights that were not run, formats that do not fit their arguments, functions of libraries.
class QxVerifier {
public:
    static constexpr std::size_t k_longestArray = std::size_t{1} << 20;  // elements
    static constexpr std::size_t k_mostBytes = std::size_t{1} << 26;     // of all uniform variables
    static constexpr std::size_t k_mostPointBytes = std::size_t{1} << 24;  // of the varying ones
    static constexpr std::size_t k_deepestNesting = 4096;                  // of brackets

    /// False if the shader is refused; `Message` then tells the line, the section and the reason.
    /// O(n log n) for a file of n values, and as files are written; references that are bound far
    /// from their use cost a bit for each of them and each target of a jump.
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
