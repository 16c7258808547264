#pragma once

#include <cstdio>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "frontend/SlcParseCode.h"
#include "support/SlcDiagnostics.h"

/// A text put through the parser alone. Its file name in reports is "test.sl", and its first line
/// is line 1.
class ParsedSource {
public:
    explicit ParsedSource(std::string_view source, int warningLevel = 1)
    {
        const File file(std::tmpfile());
        const std::string marked = "# 1 \"test.sl\"\n" + std::string(source);
        EXPECT_EQ(std::fwrite(marked.data(), 1, marked.size(), file.get()), marked.size());
        std::rewind(file.get());

        SetWarningLevel(warningLevel);
        testing::internal::CaptureStderr();
        try {
            m_root = ParseCode(file.get(), false);
        } catch (const SlcCompilationError&) {
            EXPECT_NE(NbErrors(), 0);
        }
        SetWarningLevel(1);
        m_output = testing::internal::GetCapturedStderr();
    }

    /// Null if anything was reported as an error.
    [[nodiscard]] SlcDefinitionsNode* Root() const { return m_root.get(); }
    /// All that went to standard error, as the user sees it.
    [[nodiscard]] const std::string& Output() const { return m_output; }

    /// The reports alone, one a line: "3: ERROR: parse error".
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
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    using File = std::unique_ptr<std::FILE, Close>;

    std::unique_ptr<SlcDefinitionsNode> m_root;
    std::string m_output;
};
