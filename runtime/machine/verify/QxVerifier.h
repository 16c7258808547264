#pragma once

#include <cstddef>
#include <string>

#include "sqx/SqxShader.h"

/// Checks that the machine can safely run a shader that was read from an untrusted file. The
/// machine relies on the following rules without checking them again:
///
/// Operands. Each has the type that its instruction requires (`SqxLayout::types`), where points,
/// vectors, normals and colors count as one type. Arrays occur only where they are allowed; an
/// instruction that copies one to another requires the same type and length. Constants are not
/// written, except for integers, which stand for omitted results.
///
/// Detail. Outside parallel brackets an instruction that runs once has uniform operands, except
/// `ARRAY_REF` with a uniform index, which binds a reference for all points, and except in an
/// initializer that runs at each point: there an instruction with a varying result may have varying
/// operands. Only two kinds of instructions write a uniform variable from varying ones: the
/// reducing and answering ones (`SqxRun`), and those that run at each point, where the last point
/// counts. The flag that selects the points of a whole-grid instruction is varying. An initializer
/// that runs once per instance has only uniform operands and does not access the grid or its
/// lights. Initializers do not use the locals of main.
///
/// Flow. Brackets nest, to a limited depth; parallel brackets do not contain other parallel
/// brackets, jumps or loops over lights. A jump stays within its brackets, or leaves loops over
/// lights. A loop over lights ends where its start says, and jumps back to the instruction after
/// its start. Whole-grid instructions are not in parallel brackets.
///
/// References. `ARRAY_REF` binds a reference to an element of an array of its type, always the same
/// array; the reference is varying if the array or the index is. On every path of jumps and loops
/// over lights to a use there is such a binding; a conditional bracket counts as entered, so the
/// machine initially binds references to dummy elements.
///
/// Variables. Only constants are integers. Flags and references are not arrays, a flag is not a
/// reference, and a parameter is not a flag. The variables of a shader fit into memory: see the
/// limits below. The machine checks the number of points.
///
/// Names. No two predefined variables and no two parameters have the same name. A parameter has at
/// most one initializer, whose result has the type and the length of the parameter, and is uniform
/// if the parameter is.
///
/// At run time the machine handles what depends on values: it limits array indices and the number
/// of steps, and accepts formats that do not match their arguments. `QxShadeopCheck` checks the
/// calls of shadeops.
class QxVerifier {
public:
    static constexpr std::size_t k_longestArray = std::size_t{1} << 20;  // elements
    static constexpr std::size_t k_mostBytes = std::size_t{1} << 26;     // of all uniform variables
                                                                         // and constants
    static constexpr std::size_t k_mostPointBytes = std::size_t{1} << 24;  // of all varying
                                                                           // variables, per point
    static constexpr std::size_t k_deepestNesting = 4096;                  // depth of nested
                                                                           // brackets

    /// Returns false if the shader is rejected; then `Message` returns the line, the section and
    /// the reason. The shader must have been read completely. O(n log n) for a file of n values,
    /// plus the costs of jumps that `QxBrackets` and `QxReferenceCheck` state.
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
