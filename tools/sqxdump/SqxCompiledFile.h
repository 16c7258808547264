#pragma once

#include <string>

/// The bytes of a compiled shader, read from a file or from standard input. Only the first four
/// bytes are checked here.
class SqxCompiledFile {
public:
    /// `file` is a path, or "-" for standard input. Reads all bytes, but at most just over 64 MiB:
    /// `SqxReader` refuses larger files. Throws `QxHostError` with the system's reason if the file
    /// cannot be read.
    explicit SqxCompiledFile(const std::string& file);
    ~SqxCompiledFile();
    SqxCompiledFile(const SqxCompiledFile&) = delete;
    SqxCompiledFile& operator=(const SqxCompiledFile&) = delete;

    [[nodiscard]] const std::string& Bytes() const { return m_bytes; }
    [[nodiscard]] bool IsSharedObject() const;
    /// Returns the shader's name, which is that of its file; empty for standard input.
    [[nodiscard]] std::string ShaderName() const;
    /// Returns the path of the file, or of a copy of standard input that exists as long as this
    /// object. Throws `QxHostError` with the system's reason if the copy cannot be made.
    [[nodiscard]] std::string PathToLoad();

private:
    [[nodiscard]] bool IsStandardInput() const { return m_file == "-"; }

    std::string m_file;
    std::string m_bytes;
    int m_copy = -1;  // file descriptor of an unnamed copy of standard input
};
