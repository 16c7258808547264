#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "frontend/SlcDefinitionNodes.h"
#include "support/SlcOptionsControl.h"

/// Parses a source text, whose name in reports is "test.sl" and whose first line is line 1.
/// Throws `SlcCompilationError` if the parser reports an error.
[[nodiscard]] std::unique_ptr<SlcDefinitionsNode> ParseText(const std::string& source,
                                                            bool strict = false);

/// A source text that is parsed and checked by the semantic passes.
class CheckedShader {
public:
    explicit CheckedShader(const std::string& source, SlcOptionsControl options = {},
                           int warningLevel = 1);
    ~CheckedShader();
    CheckedShader(const CheckedShader&) = delete;
    CheckedShader& operator=(const CheckedShader&) = delete;

    /// Returns false if an error was reported.
    [[nodiscard]] bool IsAccepted() const { return m_accepted; }
    /// Returns all that the parser and the passes have written to standard error.
    [[nodiscard]] const std::string& Output() const { return m_output; }
    /// Returns the lines of the output without the file name, such as "3: ERROR: ...". Leaves out
    /// empty lines and "In function ...".
    [[nodiscard]] std::string Reports() const;

    /// Returns the tree with the results of the passes, or null if the text could not be parsed.
    [[nodiscard]] SlcDefinitionsNode* Root() const { return m_root.get(); }
    /// Returns the shader or function of that name; null if there is none, which also fails the
    /// current test.
    [[nodiscard]] SlcDefinitionNode* Definition(std::string_view name) const;
    [[nodiscard]] SlcOptionsControl& Options() { return m_options; }

private:
    void Check(const std::string& source);

    SlcOptionsControl m_options;
    std::unique_ptr<SlcDefinitionsNode> m_root;
    bool m_accepted = false;
    std::string m_output;
};
