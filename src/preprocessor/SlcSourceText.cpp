// Most files need no change, and become the text as they are. In the others
//
//     #define TWO a\          becomes     #define TWO a b
//      b
//
// with the place between "a" and " b" kept as a joint, so that the lexer knows the line and the
// column of each character in the file.
//
// Tested by tests/preprocessor.

#include "preprocessor/SlcSourceText.h"

#include <string_view>
#include <utility>

namespace {

constexpr std::string_view k_byteOrderMark = "\xEF\xBB\xBF";

/// The number of characters that continue the line at this backslash, with the line break; 0 if
/// none do. Blanks after the backslash are invisible and do no harm.
std::size_t ContinuationLength(std::string_view text, std::size_t backslash)
{
    const std::size_t end = text.find_first_not_of(" \t\v\f\r", backslash + 1);
    return end != std::string_view::npos && text[end] == '\n' ? end + 1 - backslash : 0;
}

bool NeedsChange(const std::string& text)
{
    for (std::size_t at = text.find_first_of("\\\r"); at != std::string::npos;
         at = text.find_first_of("\\\r", at + 1)) {
        const bool changes =
            text[at] == '\r' ? text.compare(at, 2, "\r\n") == 0 : ContinuationLength(text, at) > 0;
        if (changes)
            return true;
    }
    return false;
}

}  // namespace

SlcSourceText::SlcSourceText(std::string name, std::string contents) : m_name(std::move(name))
{
    if (contents.starts_with(k_byteOrderMark))
        contents.erase(0, k_byteOrderMark.size());
    if (!contents.ends_with('\n'))
        contents += '\n';
    if (NeedsChange(contents))
        JoinLines(contents);
    else
        m_text = std::move(contents);
    if (!m_text.ends_with('\n'))
        m_text += '\n';
}

void SlcSourceText::JoinLines(const std::string& contents)
{
    m_text.reserve(contents.size());
    for (std::size_t at = 0; at < contents.size(); ++at) {
        const char c = contents[at];
        if (c == '\r' && contents.compare(at, 2, "\r\n") == 0)
            continue;
        const std::size_t skipped = c == '\\' ? ContinuationLength(contents, at) : 0;
        if (skipped == 0) {
            m_text += c;
            continue;
        }
        m_joints.push_back(m_text.size());
        at += skipped - 1;
    }
}
