// The functions that the rules of scanner.l call: keywords, positions, and the line shown in
// reports.
//
//     # 3 "a.sl"          a line marker of the preprocessor: the next line is line 3 of a.sl
//     float x = $;        a report repeats the line as read; below it follows a filler of blanks
//               ^         and tabs, and then a caret at the token
//
// Lines and fillers are truncated at the maximum length of a token: reports do not need more, and a
// file that consists of one endless line must not take quadratic time.
//
// Tested by tests/frontend/SlcScannerTest.cpp and tests/golden/overlong_token.cmd.

#include "frontend/SlcScanner.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <set>

#include "frontend/SlcTokenValue.h"
#include "grammar.h"
#include "support/SlcDiagnostics.h"
#include "support/SlcSourcePosition.h"

namespace {

using enum SlcWordKind;

// clang-format off
//   word            token          kind
constexpr SlcKeyword k_keywords[] = {
    {"light",         LIGHT,         Shader},
    {"surface",       SURFACE,       Shader},
    {"volume",        VOLUME,        Shader},
    {"displacement",  DISPLACEMENT,  Shader},
    {"imager",        IMAGER,        Shader},
    {"varying",       VARYING,       Detail},
    {"uniform",       UNIFORM,       Detail},
    {"extern",        EXTERN,        Detail},
    {"output",        OUTPUT,        Detail},
    {"void",          VOID,          Type},
    {"float",         FLOAT,         Type},
    {"string",        STRING,        Type},
    {"normal",        NORMAL,        Type},
    {"vector",        VECTOR,        Type},
    {"point",         POINT,         Type},
    {"color",         COLOR,         Type},
    {"matrix",        MATRIX,        Type},
    {"return",        RETURN,        Statement},
    {"if",            IF,            Statement},
    {"else",          ELSE,          Statement},
    {"while",         WHILE,         Statement},
    {"for",           FOR,           Statement},
    {"solar",         SOLAR,         Statement},
    {"illuminate",    ILLUMINATE,    Statement},
    {"illuminance",   ILLUMINANCE,   Statement},
    {"break",         BREAK,         Statement},
    {"continue",      CONTINUE,      Statement},
    {"texture",       TEXTURE,       Texture},
    {"environment",   ENVIRONMENT,   Texture},
    {"shadow",        SHADOW,        Texture},
};
// clang-format on

constexpr std::size_t k_letters = 26;

/// For each lower-case letter, a bit for each keyword that begins with it.
constexpr auto k_keywordsByLetter = [] {
    std::array<std::uint32_t, k_letters> byLetter{};
    static_assert(std::size(k_keywords) <= std::numeric_limits<std::uint32_t>::digits);
    for (std::size_t i = 0; i < std::size(k_keywords); ++i)
        byLetter[k_keywords[i].word[0] - 'a'] |= std::uint32_t{1} << i;
    return byLetter;
}();

void RejectIfTooLong(std::string_view text)
{
    if (text.size() <= SlcScanner::k_maxTokenLength)
        return;
    const SlcSourcePosition& position = SlcCurrentPosition();
    const std::string file = position.file ? *position.file : std::string();
    const std::string fault = "A token, or a line with its line break, has more than " +
                              std::to_string(SlcScanner::k_maxTokenLength) + " characters";
    RecordReport({true, 0, file, position.line, 0, 0, fault, ""});
    PrintReport("token too large, exceeds YYLMAX\n" + file + ":" + std::to_string(position.line) +
                ": ERROR: " + fault + "\n");
    EndCompilation(2);
}

}  // namespace

std::span<const SlcKeyword> SlcKeywords()
{
    return k_keywords;
}

int SlcKeywordToken(std::string_view word)
{
    if (word.empty())
        return IDENTIFIER;
    const std::size_t letter = static_cast<unsigned char>(word[0]) - std::size_t{'a'};
    if (letter >= k_letters)
        return IDENTIFIER;
    for (std::uint32_t left = k_keywordsByLetter[letter]; left != 0; left &= left - 1)
        if (const SlcKeyword& keyword = k_keywords[std::countr_zero(left)]; keyword.word == word)
            return keyword.token;
    return IDENTIFIER;
}

void SlcScanner::Begin(std::FILE* file, std::string_view text)
{
    Current().BeginSource(file, text);
}

void SlcScanner::BeginSource(std::FILE* file, std::string_view text)
{
    m_file = file;
    m_text = text;
    m_position = {};
    m_noStringBefore = 0;
    ResetLineNumber();
    Restart();
}

void SlcScanner::ResetLineNumber()
{
    m_lineHeld = false;
    m_mayBeLong = false;
    m_position.column = 0;
    m_position.line = 1;
}

void SlcScanner::CountChars(std::string_view text, char filler)
{
    RejectIfTooLong(text);
    AppendToLine(text);
    AddFillers(text.size(), filler);
}

void SlcScanner::RejectCharacter()
{
    m_position.isUncounted = true;
    yyerror("Invalid charcacter");
    m_position.isUncounted = false;
}

// Truncates the line's filler at the maximum length of a token, since reports do not need more.
void SlcScanner::AddFillers(std::size_t count, char filler)
{
    std::string& fillers = m_position.filler;
    fillers.resize(std::min(fillers.size() + count, k_maxTokenLength), filler);
}

void SlcScanner::SkipText(std::string_view text)
{
    AppendToLine(text);
    std::string& filler = m_position.filler;
    const std::size_t room = k_maxTokenLength - std::min(filler.size(), k_maxTokenLength);
    for (const char c : text.substr(0, room))
        filler += c == '\t' ? '\t' : ' ';
}

void SlcScanner::SkipBlanks(std::string_view text)
{
    // The text is most often a single blank.
    if (text == " " || text.find('\t') == std::string_view::npos) {
        AppendToLine(text);
        AddFillers(text.size(), ' ');
    } else {
        SkipText(text);
    }
    m_position.tokenLength = 1;
}

void SlcScanner::AppendToLine(std::string_view text)
{
    // Only the first line of a source is stored piece by piece; the newline rule stores the others.
    if (!m_lineHeld && m_position.currentLine.size() < k_maxTokenLength)
        m_position.currentLine += text.substr(0, k_maxTokenLength);
    if (m_position.column == 0)
        m_position.filler.clear();
    m_position.column += static_cast<int>(text.size());
}

void SlcScanner::NewLine()
{
    m_lineHeld = true;
    m_mayBeLong = false;
    m_position.column = 0;
    // A line marker can set the line to the maximum.
    if (m_position.line < std::numeric_limits<int>::max())
        ++m_position.line;
}

void SlcScanner::BeginLine(std::string_view text)
{
    const bool mayBeLong = m_mayBeLong;
    BeginSkippedLine(text);
    if (!mayBeLong)
        RejectIfTooLong(text);
}

void SlcScanner::BeginSkippedLine(std::string_view text)
{
    m_position.currentLine = text.substr(1, k_maxTokenLength);
    NewLine();
}

const std::string* SlcScanner::FileName(std::string_view name)
{
    // Nodes keep pointers to the names, so none is ever removed.
    auto& names = m_fileNames;
    auto found = names.find(name);
    if (found == names.end())
        found = names.emplace(name).first;
    return &*found;
}

void SlcScanner::Directive(std::string_view text)
{
    text.remove_prefix(text.find('#') + 1);
    // A line marker now begins with its number; in other lines, such as pragmas, none follows.
    if (text.starts_with("line"))
        text.remove_prefix(std::string_view("line").size());
    const std::size_t digit = text.find_first_not_of(" \t");
    const std::size_t open = text.find('"');
    const std::size_t close = text.rfind('"');
    int line = 0;
    const bool hasNumber =
        digit != std::string_view::npos &&
        std::from_chars(text.data() + digit, text.data() + text.size(), line).ec == std::errc();
    if (!hasNumber || open == std::string_view::npos || close == open)
        return;
    // The number is that of the next line, and the newline that begins it is still to be read.
    m_position.line = line > std::numeric_limits<int>::min() ? line - 1 : line;
    m_position.file = FileName(text.substr(open + 1, close - open - 1));
}

std::size_t SlcScanner::Read(char* buffer, std::size_t size)
{
    return Current().ReadSource(buffer, size);
}

std::size_t SlcScanner::ReadSource(char* buffer, std::size_t size)
{
    std::size_t count = 0;
    if (m_file) {
        count = std::fread(buffer, 1, size, m_file);
        if (count == 0 && std::ferror(m_file) != 0)
            yyerror("Cannot read the preprocessed source");
    } else {
        count = m_text.copy(buffer, size);
        m_text.remove_prefix(count);
    }
    // The generated scanner ends at a zero byte, so replace each by another character that begins
    // no token.
    std::replace(buffer, buffer + count, '\0', '\1');
    return count;
}
