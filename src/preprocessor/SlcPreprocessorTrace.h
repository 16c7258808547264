#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "preprocessor/SlcSourceText.h"
#include "preprocessor/SlcSourceToken.h"

/// Records where each token of the preprocessed text comes from, except in lines such as those of
/// `#pragma`, and which macros and files the source uses. Without a trace, a run records nothing.
///
/// Places are those in the files themselves, regardless of `#line`.
class SlcPreprocessorTrace {
public:
    static constexpr int k_none = -1;

    struct Place {
        int file = k_none;  // index in `Files`; `k_none` if not in a file: a generated text
        int line = 0;       // from 1
        int column = 0;     // in bytes, from 1
        int length = 0;     // in bytes
    };
    /// A token of the preprocessed text.
    struct Token {
        std::size_t offset = 0;  // in the text
        std::string text;
        SlcSourceTokenKind kind = SlcSourceTokenKind::Other;
        Place place;          // where its characters are
        Place use;            // for a token from a macro: the macro's name, where it is used
        bool isBody = false;  // from the definition of a macro, not from its arguments
    };
    struct Macro {
        std::string name;
        Place place;  // of the name
        Place end;    // of the last token of the definition
        bool isFunction = false;
        std::vector<std::string> parameters;
        std::string body;
    };
    /// `Asked` means that `#ifdef`, `#ifndef` or `defined` tests whether the macro is defined, and
    /// it is; `Undefined`, that `#undef` removes its definition.
    enum class UseKind { Expanded, Asked, Undefined };
    struct MacroUse {
        std::string name;
        int macro = k_none;  // index in `Macros`, or `k_none` for a predefined macro
        UseKind kind = UseKind::Expanded;
        Place place;            // of the name
        Place end;              // of the last token: the name or a closing parenthesis
        bool isBody = false;    // the use is in the definition of a macro
        Place outermost;        // if so, of the name of the macro that a file uses
        std::string expansion;  // in the preprocessed text; empty inside a use or a definition
    };
    struct Include {
        Place place;        // of the name with its quotes, or of the macro that stands for it
        int file = k_none;  // index of the included file in `Files`
    };

    // The parts of the preprocessor call the next six operations.

    /// Records a file, unless it is known, and returns its index in `Files`.
    int EnterFile(const SlcSourceText& text);
    /// Records a token at `offset` in the preprocessed text.
    void AddToken(std::size_t offset, const SlcSourceToken& token);
    /// Records the definition in the rest of a `#define` line, whose replacement begins at index
    /// `bodyBegin`.
    void Define(const std::vector<SlcSourceToken>& line, bool isFunction,
                const std::vector<std::string_view>& parameters, std::size_t bodyBegin);
    /// Records a use of a macro; `end` is its last token.
    void Use(const SlcSourceToken& name, const SlcSourceToken& end, UseKind kind);
    /// Records that the `#include` at `place` names the file, even if `#pragma once` excludes it.
    void IncludeFile(const SlcSourceToken& place, const SlcSourceText& text);
    /// Computes the places; `text` is the preprocessed text. Call it while the texts of the run
    /// still exist.
    void Finish(std::string_view text);

    [[nodiscard]] const std::vector<std::string>& Files() const { return m_files; }
    [[nodiscard]] const std::vector<Token>& Tokens() const { return m_tokens; }
    [[nodiscard]] const std::vector<Macro>& Macros() const { return m_macros; }
    [[nodiscard]] const std::vector<MacroUse>& MacroUses() const { return m_uses; }
    [[nodiscard]] const std::vector<Include>& Includes() const { return m_includes; }

private:
    struct File {
        const SlcSourceText* text = nullptr;
        int number = k_none;
        std::vector<std::size_t> lineBegins;  // offsets of the file's lines, including joined ones
    };
    /// A part of a text that the run keeps.
    struct Raw {
        const char* begin = nullptr;
        std::size_t length = 0;
    };
    struct RawToken {
        Raw spelled;
        const char* use = nullptr;  // null if the token is not from a macro
    };
    struct RawUse {
        Raw name;
        Raw end;
        const char* outermost = nullptr;  // the use that the name comes from; null if from none
    };

    [[nodiscard]] static Raw RawOf(const SlcSourceToken& token);
    [[nodiscard]] const File* FileOf(const char* at) const;
    [[nodiscard]] Place PlaceOf(const Raw& raw) const;
    [[nodiscard]] bool IsBody(const Raw& spelled, const char* use) const;
    void FinishUses(std::string_view text);

    std::vector<std::string> m_files;
    std::map<const char*, File, std::greater<>> m_texts;  // by address of the first character
    std::vector<Token> m_tokens;
    std::vector<RawToken> m_rawTokens;
    std::vector<Macro> m_macros;
    std::vector<std::pair<Raw, Raw>> m_rawMacros;    // first and last token
    std::unordered_map<std::string, int> m_defined;  // indices of the macros defined at present
    std::vector<MacroUse> m_uses;
    std::vector<RawUse> m_rawUses;
    std::unordered_map<const char*, const char*> m_useEnds;  // of uses in files, by their begin
    std::vector<Include> m_includes;
    std::vector<Raw> m_rawIncludes;
};
