#pragma once

#include <optional>
#include <string>
#include <string_view>

/// An open file, which is closed with the object.
class SlcFile {
public:
    enum class For { Reading, Writing };

    /// Opens the file. A file for writing is created, or loses its contents.
    SlcFile(const std::string& path, For use);
    ~SlcFile() { static_cast<void>(Close()); }
    SlcFile(const SlcFile&) = delete;
    SlcFile& operator=(const SlcFile&) = delete;

    /// False, with the reason in `errno`, if the file could not be opened.
    [[nodiscard]] bool IsOpen() const { return m_descriptor >= 0; }
    /// Returns the rest of the file; nothing, with the reason in `errno`, if reading fails.
    [[nodiscard]] std::optional<std::string> ReadAll();
    /// Writes a text. False, with the reason in `errno`, if that fails.
    [[nodiscard]] bool Write(std::string_view text);
    /// Closes the file. False, with the reason in `errno`, if writing fails only now.
    [[nodiscard]] bool Close();

private:
    int m_descriptor;
};

/// Returns the contents of a file, up to a read error; nothing if it cannot be opened.
[[nodiscard]] std::optional<std::string> SlcReadFile(const std::string& path);
/// Writes a whole file. False if that fails.
[[nodiscard]] bool SlcWriteFile(const std::string& path, std::string_view text);
