#pragma once

#include <memory>
#include <span>
#include <string>

#include "frontend/SlcNodes.h"
#include "icode/SlcInterForm.h"
#include "support/SlcOptionsControl.h"

/// Returns options that lower code as at level 0, without checks of array indices.
[[nodiscard]] SlcOptionsControl PlainOptions();
/// Returns `PlainOptions` with one option set.
[[nodiscard]] SlcOptionsControl PlainOptionsWith(bool SlcOptionsControl::*option);

/// A source that has been parsed, checked and, unless it is refused, lowered.
class LoweredShader {
public:
    enum class Expected { Accepted, Refused };

    /// `source` must be accepted: an error fails the current test.
    explicit LoweredShader(const std::string& source, SlcOptionsControl options = PlainOptions());
    /// If `source` is not accepted or refused as `expected`, the current test fails.
    LoweredShader(const std::string& source, SlcOptionsControl options, Expected expected);
    ~LoweredShader();

    [[nodiscard]] bool IsAccepted() const { return m_accepted; }
    [[nodiscard]] SlcInterForm& Form() { return *m_form; }
    [[nodiscard]] SlcSyntaxNode* Root() { return m_root.get(); }
    /// Returns all reports, as printed.
    [[nodiscard]] const std::string& Messages() const { return m_messages; }

private:
    SlcOptionsControl m_options;
    std::unique_ptr<SlcDefinitionsNode> m_root;
    std::unique_ptr<SlcInterForm> m_form;
    std::string m_messages;
    bool m_accepted = false;
};

/// Returns the text form of a list, without the marks of the shader's begin and end.
[[nodiscard]] std::string ToText(const SlcListICode& list);

/// Lowers the body of a displacement shader with the parameters `uniform float k`,
/// `varying float w` and `output varying float o`. Returns the text of the main list.
[[nodiscard]] std::string LowerBody(const std::string& body,
                                    SlcOptionsControl options = PlainOptions());

/// The body of a shader as `LowerBody` takes it, and the expected text of its list.
struct LowerCase {
    const char* body;
    const char* code;
};

/// Checks the text that `LowerBody` returns for each case.
void ExpectCode(std::span<const LowerCase> cases,
                const SlcOptionsControl& options = PlainOptions());

/// Lowers a whole shader. Returns the text of the main list; "refused", and the current test fails,
/// if there is an error.
[[nodiscard]] std::string LowerShader(const std::string& source,
                                      SlcOptionsControl options = PlainOptions());
/// Returns the warnings about a correct shader.
[[nodiscard]] std::string MessagesOf(const std::string& source,
                                     SlcOptionsControl options = PlainOptions());
/// Returns the reports about a faulty shader.
[[nodiscard]] std::string RefusalOf(const std::string& source,
                                    SlcOptionsControl options = PlainOptions());
