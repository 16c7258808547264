// The check of an index, which names the array and the file in its message. It stands in front of
// the access as an instruction of its own, so that leaving checks out changes nothing else.

#include "icode/SlcArrayICode.h"

namespace {

/// A string literal with this text. Line markers may have escaped it already, or hold a quote or
/// a last backslash that would run over the end of the literal.
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
