#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sqx/SqxElfFile.h"
#include "sqx/SqxShader.h"

/// What a shared object says about its shader in its section `QxShaderFacts`, read from the file:
/// the object is not loaded. The data is not trusted: every number of it is checked, as those of
/// byte-code are.
class SqxObjectFacts {
public:
    enum class State {
        Absent,   // it has no such data, as older compilers built them
        Damaged,  // `Message` has the fault, and `Shader` what precedes it
        Whole
    };
    struct Use {
        bool read = false;
        bool written = false;
    };

    static constexpr std::string_view k_section = "QxShaderFacts";

    /// Keeps nothing of the file.
    explicit SqxObjectFacts(const SqxElfFile& file);

    [[nodiscard]] State Found() const { return m_state; }
    /// With an empty main block. A parameter without an initializer has a default value that
    /// byte-code cannot compute.
    [[nodiscard]] const SqxShader& Shader() const { return m_shader; }
    /// What the code does with the predefined variables, by their positions; as many as there are.
    [[nodiscard]] const std::vector<Use>& Uses() const { return m_uses; }
    [[nodiscard]] bool UsesLights() const { return m_usesLights; }
    /// `illuminate` or `solar`.
    [[nodiscard]] bool HasLightStatement() const { return m_hasLightStatement; }

    [[nodiscard]] const std::string& Message() const { return m_message; }
    /// Line of the fault, from 1: of the byte-code in the data, unless it is at fault before that.
    [[nodiscard]] int FaultLine() const { return m_faultLine; }

private:
    /// False after a fault.
    [[nodiscard]] bool Read(std::string_view text);

    State m_state = State::Absent;
    SqxShader m_shader;
    std::vector<Use> m_uses;
    bool m_usesLights = false;
    bool m_hasLightStatement = false;
    std::string m_message;
    int m_faultLine = 0;
};
