#pragma once

#include <memory>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "helpers/CheckedShader.h"
#include "support/SlcDiagnostics.h"

/// A source text that is parsed, but not checked. Reports name it "test.sl", and its first line is
/// line 1.
class ParsedSource {
public:
    explicit ParsedSource(const std::string& source, int warningLevel = 1)
    {
        SetWarningLevel(warningLevel);
        testing::internal::CaptureStderr();
        try {
            m_root = ParseText(source);
        } catch (const SlcCompilationError&) {
            EXPECT_NE(NbErrors(), 0);
        }
        SetWarningLevel(1);
        m_output = testing::internal::GetCapturedStderr();
    }

    /// Returns the tree, or null if an error was reported.
    [[nodiscard]] SlcDefinitionsNode* Root() const { return m_root.get(); }
    /// Returns all that the parser has written to standard error.
    [[nodiscard]] const std::string& Output() const { return m_output; }

    /// Returns the reports that name a line, one per line: "3: ERROR: parse error".
    [[nodiscard]] std::string Reports() const
    {
        std::istringstream lines(m_output);
        std::string reports;
        for (std::string line; std::getline(lines, line);)
            if (line.starts_with("test.sl:"))
                reports += line.substr(8, line.find_last_not_of(':') - 7) + "\n";
        return reports;
    }

private:
    std::unique_ptr<SlcDefinitionsNode> m_root;
    std::string m_output;
};
