#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sqx/SqxShadeopText.h"
#include "sqx/SqxShader.h"

/// Whether the calls of shadeops in a verified shader fit what the libraries declare: a shadeop
/// reads and writes so many numbers as its declaration tells, whatever it is handed.
class QxShadeopCheck {
public:
    /// `shader` must live as long.
    explicit QxShadeopCheck(const SqxShader& shader)
        : m_shader(shader),
          m_overloads(shader.functions.size())
    {
    }

    /// A text by which the library declares an overload of a function, by its number in the file:
    /// "float f(float, color[3])". One that is not written as it must be, or is of another function
    /// of the library, declares nothing. All come before `Run`.
    void Declare(std::size_t function, std::string_view declaration);
    /// Throws `QxHostError` for the first call that fits no overload, with its line and section.
    /// Points, vectors, normals and colors fit each other, since they are stored alike.
    void Run() const;

private:
    using Types = std::vector<SqxShadeopType>;  // of the result and the arguments

    void CheckBlock(const SqxBlock& block, const std::string& section) const;
    void CheckCall(const SqxBlock& block, const SqxInstruction& call,
                   const std::string& section) const;
    [[nodiscard]] bool Fits(const SqxBlock& block, const SqxInstruction& call,
                            const Types& types) const;
    [[nodiscard]] const SqxVariable& Variable(const SqxBlock& block, const SqxInstruction& call,
                                              std::size_t i) const;

    const SqxShader& m_shader;
    std::vector<std::vector<Types>> m_overloads;  // by function
};
