// During the run, places are pointers into the run's texts; `Finish` converts them to lines and
// columns.
//
//     #define GAIN (2 * Kd)       Kd: located here, in a body
//     f = GAIN * Ks;              (2 * Kd): used at GAIN; Ks: not from a macro
//
// A token from an argument lies between the parentheses of the use; one from a body lies elsewhere.
//
// Tested by tests/compiler/QxSourceIndexTest.cpp.

#include "preprocessor/SlcPreprocessorTrace.h"

#include <algorithm>
#include <cctype>
#include <functional>
#include <utility>

namespace {

/// Returns the offsets of the file's lines in the text, where some lines may be joined.
std::vector<std::size_t> LineBegins(const SlcSourceText& text)
{
    std::vector<std::size_t> begins = {0};
    for (const char* at = text.Begin(); at != text.End(); ++at)
        if (*at == '\n')
            begins.push_back(static_cast<std::size_t>(at + 1 - text.Begin()));
    const std::size_t unjoined = begins.size();
    begins.insert(begins.end(), text.Joints().begin(), text.Joints().end());
    std::inplace_merge(begins.begin(), begins.begin() + static_cast<std::ptrdiff_t>(unjoined),
                       begins.end());
    return begins;
}

/// Returns the length of the name that begins at `at`.
std::size_t NameLength(const char* at)
{
    const char* end = at;
    while (std::isalnum(static_cast<unsigned char>(*end)) != 0 || *end == '_' || *end == '$')
        ++end;
    return static_cast<std::size_t>(end - at);
}

std::string TextBetween(const std::vector<SlcSourceToken>& line, std::size_t begin)
{
    std::string text;
    for (std::size_t i = begin; i < line.size(); ++i) {
        if (line[i].spaceBefore && i > begin)
            text += ' ';
        text += line[i].text;
    }
    return text;
}

}  // namespace

SlcPreprocessorTrace::Raw SlcPreprocessorTrace::RawOf(const SlcSourceToken& token)
{
    return {token.text.data(), token.text.size()};
}

int SlcPreprocessorTrace::EnterFile(const SlcSourceText& text)
{
    File& file = m_texts[text.Begin()];
    if (!file.text) {
        file = {&text, static_cast<int>(m_files.size()), {}};
        m_files.push_back(text.Name());
    }
    return file.number;
}

void SlcPreprocessorTrace::AddToken(std::size_t offset, const SlcSourceToken& token)
{
    m_tokens.push_back({offset, std::string(token.text), token.kind, {}, {}, false});
    m_rawTokens.push_back({RawOf(token), token.fromMacro ? token.at : nullptr});
}

void SlcPreprocessorTrace::Define(const std::vector<SlcSourceToken>& line, bool isFunction,
                                  const std::vector<std::string_view>& parameters,
                                  std::size_t bodyBegin)
{
    const std::string name(line.front().text);
    m_defined[name] = static_cast<int>(m_macros.size());
    m_macros.push_back({name,
                        {},
                        {},
                        isFunction,
                        {parameters.begin(), parameters.end()},
                        TextBetween(line, bodyBegin)});
    m_rawMacros.emplace_back(RawOf(line.front()), RawOf(line.back()));
}

void SlcPreprocessorTrace::Use(const SlcSourceToken& name, const SlcSourceToken& end, UseKind kind)
{
    MacroUse use;
    use.name = std::string(name.text);
    const auto defined = m_defined.find(use.name);
    if (defined != m_defined.end())
        use.macro = defined->second;
    use.kind = kind;
    m_uses.push_back(std::move(use));
    m_rawUses.push_back({RawOf(name), RawOf(end), name.fromMacro ? name.at : nullptr});
    if (!name.fromMacro)
        m_useEnds[name.at] = end.text.data() + end.text.size();
    if (kind == UseKind::Undefined)
        m_defined.erase(std::string(name.text));
}

void SlcPreprocessorTrace::IncludeFile(const SlcSourceToken& place, const SlcSourceText& text)
{
    m_includes.push_back({{}, EnterFile(text)});
    m_rawIncludes.push_back(RawOf(place));
}

const SlcPreprocessorTrace::File* SlcPreprocessorTrace::FileOf(const char* at) const
{
    const auto found = m_texts.lower_bound(at);
    const bool isInside = found != m_texts.end() && std::less<>()(at, found->second.text->End());
    return isInside ? &found->second : nullptr;
}

SlcPreprocessorTrace::Place SlcPreprocessorTrace::PlaceOf(const Raw& raw) const
{
    const File* const file = FileOf(raw.begin);
    if (!file)
        return {};
    const auto offset = static_cast<std::size_t>(raw.begin - file->text->Begin());
    const auto next = std::upper_bound(file->lineBegins.begin(), file->lineBegins.end(), offset);
    // The place of a token that a line continuation splits is its first part.
    const bool isCut = next != file->lineBegins.end() && *next < offset + raw.length;
    return {file->number, static_cast<int>(next - file->lineBegins.begin()),
            static_cast<int>(offset - *(next - 1)) + 1,
            static_cast<int>(isCut ? *next - offset : raw.length)};
}

bool SlcPreprocessorTrace::IsBody(const Raw& spelled, const char* use) const
{
    if (!use)
        return false;
    const auto end = m_useEnds.find(use);
    return end == m_useEnds.end() || std::less<>()(spelled.begin, use) ||
           !std::less<>()(spelled.begin, end->second);
}

void SlcPreprocessorTrace::Finish(std::string_view text)
{
    for (auto& [begin, file] : m_texts)
        file.lineBegins = LineBegins(*file.text);
    for (std::size_t i = 0; i < m_tokens.size(); ++i) {
        const RawToken& raw = m_rawTokens[i];
        Token& token = m_tokens[i];
        token.place = PlaceOf(raw.spelled);
        token.isBody = IsBody(raw.spelled, raw.use);
        if (raw.use)
            token.use = PlaceOf({raw.use, NameLength(raw.use)});
    }
    for (std::size_t i = 0; i < m_macros.size(); ++i) {
        m_macros[i].place = PlaceOf(m_rawMacros[i].first);
        m_macros[i].end = PlaceOf(m_rawMacros[i].second);
    }
    for (std::size_t i = 0; i < m_includes.size(); ++i)
        m_includes[i].place = PlaceOf(m_rawIncludes[i]);
    FinishUses(text);
}

/// The expansion of a use consists of the first run of consecutive tokens that came from it.
void SlcPreprocessorTrace::FinishUses(std::string_view text)
{
    std::unordered_map<const char*, std::pair<std::size_t, std::size_t>> expansions;
    for (std::size_t i = 0; i < m_tokens.size();) {
        const char* const use = m_rawTokens[i].use;
        std::size_t last = i;
        while (use && last + 1 < m_tokens.size() && m_rawTokens[last + 1].use == use)
            ++last;
        if (use)
            expansions.try_emplace(use, m_tokens[i].offset,
                                   m_tokens[last].offset + m_tokens[last].text.size());
        i = last + 1;
    }
    for (std::size_t i = 0; i < m_uses.size(); ++i) {
        const RawUse& raw = m_rawUses[i];
        MacroUse& use = m_uses[i];
        use.place = PlaceOf(raw.name);
        use.end = PlaceOf(raw.end);
        use.isBody = IsBody(raw.name, raw.outermost);
        if (use.isBody)
            use.outermost = PlaceOf({raw.outermost, NameLength(raw.outermost)});
        const auto found = expansions.find(raw.name.begin);
        if (!raw.outermost && found != expansions.end())
            use.expansion =
                text.substr(found->second.first, found->second.second - found->second.first);
    }
}
