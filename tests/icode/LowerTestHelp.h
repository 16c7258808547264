#pragma once

#include <memory>
#include <span>
#include <string>

#include "frontend/SlcNodes.h"
#include "icode/SlcInterForm.h"
#include "support/SlcOptionsControl.h"

/// Options of level 0, without the checks of array bounds.
[[nodiscard]] SlcOptionsControl PlainOptions();
/// The same with one option set.
[[nodiscard]] SlcOptionsControl PlainOptionsWith(bool SlcOptionsControl::*option);

/// A shader that has been parsed, checked and lowered.
class LoweredShader {
public:
    /// `source` must be correct: a report fails the test that is running.
    explicit LoweredShader(const std::string& source, SlcOptionsControl options = PlainOptions());
    ~LoweredShader();

    [[nodiscard]] SlcInterForm& Form() { return *m_form; }
    [[nodiscard]] SlcSyntaxNode* Root() { return m_root.get(); }

private:
    SlcOptionsControl m_options;
    std::unique_ptr<SlcDefinitionsNode> m_root;
    std::unique_ptr<SlcInterForm> m_form;
};

/// The instructions of a list as one line, each ended by a semicolon: `result = Class operands`.
/// Parallel runs stand in braces, guarded code in `flag( )` or `!flag( )`; jumps are `goto L;`,
/// `flag? goto L;` or `!flag? goto L;`, and a label is `L:`. Flags are made by `u = any f;`,
/// `f = not f;`, `f = outer but not f;` and `f = f or f;`, and cleared by `break f f;` and
/// `continue f f;`. Temporaries are numbered by their
/// appearance, uniform flags as u, varying ones as f and the rest as t; constants bear a `#`,
/// predefined variables their source name. Marks are left out.
[[nodiscard]] std::string ToText(const SlcListICode& list);

/// Lowers the body of a displacement shader with the parameters `uniform float k`,
/// `varying float w` and `output varying float o`.
[[nodiscard]] std::string LowerBody(const std::string& body,
                                    SlcOptionsControl options = PlainOptions());

/// The body of a shader as for `LowerBody`, and the text of its list.
struct LowerCase {
    const char* body;
    const char* code;
};

void ExpectCode(std::span<const LowerCase> cases,
                const SlcOptionsControl& options = PlainOptions());
