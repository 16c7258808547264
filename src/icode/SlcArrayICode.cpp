// The bounds check names the array and the file in its message. It is a separate instruction before
// the access, so omitting it changes nothing else.

#include "icode/SlcArrayICode.h"

namespace {

/// Returns a string literal with this text. A file name from a line marker may already contain
/// escapes, which are kept. A quote, which would end the literal, and a final backslash, which
/// would escape its closing quote, are escaped.
SlcOperand Quoted(const std::string& text)
{
    std::string literal = "\"";
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escapes = text[i] == '\\' && i + 1 < text.size();
        if (text[i] == '"' || (text[i] == '\\' && !escapes))
            literal += '\\';
        literal += text[i];
        if (escapes)
            literal += text[++i];
    }
    return SlcLexType::String(literal + '"');
}

}  // namespace

SlcCheckValidArrayIndexICode::SlcCheckValidArrayIndexICode(const std::string& arrayName,
                                                           SlcOperand index, int size, int line,
                                                           const std::string* fileName)
    : m_arrayName(Quoted(arrayName)),
      m_index(std::move(index)),
      m_size(size),
      m_line(line),
      m_fileName(Quoted(*fileName))
{
}
