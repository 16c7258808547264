// Most files need no change and are used as they are. Otherwise "\r\n" is replaced by "\n", a byte
// order mark is removed, a missing last line break is added, and line continuations are removed:
//
//     #define TWO a\          becomes     #define TWO a b
//      b
//
// The offset between "a" and " b" is recorded as a joint, so that the lexer can determine the line
// and column of each character in the file.
//
// Tested by tests/preprocessor.

#include "preprocessor/SlcSourceText.h"

#include <string_view>
#include <utility>

namespace {

constexpr std::string_view k_byteOrderMark = "\xEF\xBB\xBF";

/// Returns the length of the line continuation at this backslash, including the line break; 0 if
/// the backslash continues no line. Accepts blanks after it, since they are invisible.
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
