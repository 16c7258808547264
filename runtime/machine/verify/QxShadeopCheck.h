#pragma once

#include <array>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "sqx/SqxShadeopText.h"
#include "sqx/SqxShader.h"

/// Checks that the shadeop calls in a verified shader match the declarations of the libraries: a
/// shadeop reads and writes as many numbers as its declaration says, whatever it is passed.
class QxShadeopCheck {
public:
    /// Arguments that are declared as arrays of numbers. Each element is the number of a function,
    /// the number of arguments of an overload, and the number of an argument, from 1.
    using Arrays = std::set<std::array<std::size_t, 3>>;

    /// `shader` must outlive this object.
    explicit QxShadeopCheck(const SqxShader& shader)
        : m_shader(shader),
          m_overloads(shader.functions.size())
    {
    }

    /// Adds an overload of a function, identified by its number in the file, from the library's
    /// declaration: "float f(float, color[3])". A malformed declaration, or one of another
    /// function, is ignored. Add all declarations before `Run`.
    void Declare(std::size_t function, std::string_view declaration);
    /// Throws `QxHostError` for the first call that matches no overload, with its line and section.
    /// Points, vectors, normals and colors match each other, since they are stored the same way.
    void Run() const;
    /// Returns the arrays of all declared overloads. A file does not distinguish an array of length
    /// 1 from a single value, and a method does not distinguish overloads with as many arguments.
    [[nodiscard]] const Arrays& DeclaredArrays() const { return m_arrays; }

private:
    using Types = std::vector<SqxShadeopType>;  // types of the result and the arguments

    void CheckBlock(const SqxBlock& block, const std::string& section) const;
    void CheckCall(const SqxBlock& block, const SqxInstruction& call,
                   const std::string& section) const;
    [[nodiscard]] bool Fits(const SqxBlock& block, const SqxInstruction& call,
                            const Types& types) const;
    [[nodiscard]] const SqxVariable& Variable(const SqxBlock& block, const SqxInstruction& call,
                                              std::size_t i) const;

    const SqxShader& m_shader;
    std::vector<std::vector<Types>> m_overloads;  // by function
    Arrays m_arrays;
};
