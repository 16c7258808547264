#pragma once

#include <string>

/// A compiled shader whose bytes were read, from a file or from standard input. What they hold is
/// not looked at beyond their first few.
class SqxCompiledFile {
public:
    /// `file`: a path, or "-" for standard input, which is read to its end. Throws `QxHostError`
    /// with the system's reason if it cannot be read. Of a file that is too large for a shader only
    /// so much is read that `SqxReader` refuses it.
    explicit SqxCompiledFile(const std::string& file);
    ~SqxCompiledFile();
    SqxCompiledFile(const SqxCompiledFile&) = delete;
    SqxCompiledFile& operator=(const SqxCompiledFile&) = delete;

    [[nodiscard]] const std::string& Bytes() const { return m_bytes; }
    [[nodiscard]] bool IsSharedObject() const;
    /// What a shader is called by its file; empty for standard input.
    [[nodiscard]] std::string ShaderName() const;
    /// By which a shared object can be loaded as long as this lives. Throws `QxHostError` if there
    /// is no memory for a copy of standard input.
    [[nodiscard]] std::string PathToLoad();

private:
    [[nodiscard]] bool IsStandardInput() const { return m_file == "-"; }

    std::string m_file;
    std::string m_bytes;
    int m_copy = -1;  // of standard input, open and without a name
};
