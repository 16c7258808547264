#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// The contents of a file as the lexer reads them: each line, including the last, ends with a
/// single "\n", lines that a backslash continues are joined, and there is no byte order mark.
class SlcSourceText {
public:
    /// `name` is used in reports and line markers.
    SlcSourceText(std::string name, std::string contents);
    SlcSourceText(const SlcSourceText&) = delete;
    SlcSourceText& operator=(const SlcSourceText&) = delete;

    [[nodiscard]] const std::string& Name() const { return m_name; }
    [[nodiscard]] const char* Begin() const { return m_text.data(); }
    /// Returns the position after the last line, which holds a zero byte.
    [[nodiscard]] const char* End() const { return m_text.data() + m_text.size(); }
    /// Returns the offsets, in order, at which a line of the file was joined to the previous one.
    [[nodiscard]] const std::vector<std::size_t>& Joints() const { return m_joints; }

private:
    void JoinLines(const std::string& contents);

    std::string m_name;
    std::string m_text;
    std::vector<std::size_t> m_joints;
};
