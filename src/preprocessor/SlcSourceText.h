#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// The contents of a file as the lexer reads it: lines end with a single "\n", the last one too,
/// and lines that a backslash continues are joined.
class SlcSourceText {
public:
    /// `name` is the one for reports and line markers.
    SlcSourceText(std::string name, std::string contents);
    SlcSourceText(const SlcSourceText&) = delete;
    SlcSourceText& operator=(const SlcSourceText&) = delete;

    [[nodiscard]] const std::string& Name() const { return m_name; }
    [[nodiscard]] const char* Begin() const { return m_text.data(); }
    /// The place after the last line. It holds a zero byte.
    [[nodiscard]] const char* End() const { return m_text.data() + m_text.size(); }
    /// The places, in their order, where a further line of the file has been joined.
    [[nodiscard]] const std::vector<std::size_t>& Joints() const { return m_joints; }

private:
    void JoinLines(const std::string& contents);

    std::string m_name;
    std::string m_text;
    std::vector<std::size_t> m_joints;
};
