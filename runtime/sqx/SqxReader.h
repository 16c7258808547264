#pragma once

#include <istream>
#include <string>
#include <string_view>

#include "sqx/SqxCursor.h"
#include "sqx/SqxShader.h"

/// Reads the text of a byte-code file into a structure, without trusting the file: in an accepted
/// file every reference leads to an existing item, and the instructions of each block are complete.
/// The types of operands are not checked here, but by `QxVerifier`.
///
/// A reader may read several files, one after another, in one thread at a time.
class SqxReader {
public:
    /// Reads a text, which is not kept. False if it is not a complete byte-code file of this
    /// version, or larger than 64 MiB. Then `Message` returns the line, the section, if one was
    /// reached, and the fault; `Shader` returns the part before the fault. O(n log n) for n bytes.
    [[nodiscard]] bool Read(std::string_view text);
    /// Reads a file. False also if it cannot be read; the message is then the system's, and
    /// `Shader` is empty.
    [[nodiscard]] bool ReadFile(const std::string& path);
    /// Returns the bytes of a file from the current position on, up to just over the maximum size
    /// that `Read` accepts.
    [[nodiscard]] static std::string Bytes(std::istream& file);

    // The result of the last `Read` or `ReadFile`; empty before the first.

    [[nodiscard]] const SqxShader& Shader() const { return m_shader; }
    /// Moves the shader out of the reader.
    [[nodiscard]] SqxShader TakeShader() { return std::move(m_shader); }
    [[nodiscard]] const std::string& Message() const { return m_message; }
    /// The line of the fault in the message, from 1; 0 if there is no fault or it has no line.
    [[nodiscard]] int FaultLine() const { return m_faultLine; }

private:
    void Forget();
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
