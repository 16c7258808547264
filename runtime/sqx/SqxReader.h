#pragma once

#include <istream>
#include <string>
#include <string_view>

#include "sqx/SqxCursor.h"
#include "sqx/SqxShader.h"

/// Reads the text of a byte-code file into a structure. It trusts nothing in it: of a file that is
/// taken every number refers to something that is there, and a block's instructions are whole. That
/// operands have the right types is not looked at: see `QxVerifier`.
///
/// One reader may read one file after the other, in one thread at a time.
class SqxReader {
public:
    /// False if the text is not a byte-code file; `Message` then tells the line, the section and
    /// the fault, and `Shader` holds what stands in front of it. The text is not kept.
    /// O(n log n) for n bytes.
    [[nodiscard]] bool Read(std::string_view text);
    /// Reads a file. False also if it cannot be read; the message is then the system's.
    [[nodiscard]] bool ReadFile(const std::string& path);
    /// The bytes of a file, but for those that go beyond the largest one that can be read.
    [[nodiscard]] static std::string Bytes(std::istream& file);

    /// What the last reading found.
    [[nodiscard]] const SqxShader& Shader() const { return m_shader; }
    /// The same, for good: the reader is left without it.
    [[nodiscard]] SqxShader TakeShader() { return std::move(m_shader); }
    [[nodiscard]] const std::string& Message() const { return m_message; }
    /// Line of the fault that the message tells of, from 1; 0 if there is none in the text.
    [[nodiscard]] int FaultLine() const { return m_faultLine; }

private:
    void ReadSections(SqxCursor& cursor);
    void ReadHeader(SqxCursor& cursor);
    void ReadVariables(SqxCursor& cursor);
    void ReadPredefined(SqxCursor& cursor);
    void ReadParameter(SqxCursor& cursor);
    void ReadLocals(SqxCursor& cursor);
    void ReadConstants(SqxCursor& cursor);
    void Add(SqxCursor& cursor, SqxVariable variable);
    void ReadSpaces(SqxCursor& cursor);
    void ReadInitializers(SqxCursor& cursor, bool perPoint);
    void ReadInitializer(SqxCursor& cursor, bool perPoint);
    void ReadParameterFlags(SqxCursor& cursor, bool SqxVariable::*flag);
    void ReadLibraries(SqxCursor& cursor);
    void ReadFunction(SqxCursor& cursor);

    SqxShader m_shader;
    std::string m_message;
    int m_faultLine = 0;
};
