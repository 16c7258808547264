#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sqx/SqxElfFile.h"
#include "sqx/SqxShader.h"

/// The facts that a shared object contains about its shader, in its section `QxShaderFacts`. They
/// are read from the file without loading the object. The data are not trusted: every number is
/// checked, as in byte-code.
class SqxObjectFacts {
public:
    enum class State {
        Absent,   // no such data, as from older compilers, or the data of several shaders
        Damaged,  // `Message` returns the error, and `Shader` the part that could be read
        Whole
    };
    struct Use {
        bool read = false;
        bool written = false;
    };

    static constexpr std::string_view k_section = "QxShaderFacts";

    /// Does not keep a reference to the file.
    explicit SqxObjectFacts(const SqxElfFile& file);

    [[nodiscard]] State Found() const { return m_state; }
    /// The shader; the compiler writes an empty main block. A parameter without an initializer has
    /// a default value that byte-code cannot compute.
    [[nodiscard]] const SqxShader& Shader() const { return m_shader; }
    /// How the code uses each predefined variable of `Shader`, by index.
    [[nodiscard]] const std::vector<Use>& Uses() const { return m_uses; }
    [[nodiscard]] bool UsesLights() const { return m_usesLights; }
    /// True if the code contains `illuminate` or `solar`.
    [[nodiscard]] bool HasLightStatement() const { return m_hasLightStatement; }

    [[nodiscard]] const std::string& Message() const { return m_message; }
    /// The line of the error, from 1: in the byte-code, or in the data if the error is before the
    /// byte-code. 1 if there are too many or too few uses; 0 if there is no error.
    [[nodiscard]] int FaultLine() const { return m_faultLine; }

private:
    /// Returns false after an error.
    [[nodiscard]] bool Read(std::string_view text);

    State m_state = State::Absent;
    SqxShader m_shader;
    std::vector<Use> m_uses;
    bool m_usesLights = false;
    bool m_hasLightStatement = false;
    std::string m_message;
    int m_faultLine = 0;
};
