#pragma once

#include <random>
#include <string>
#include <string_view>

/// Makes new inputs of given ones: mostly by moving words, statements and bracketed groups about,
/// since bytes that change at random seldom come past a parser, and now and then by bytes. Of
/// byte-code it moves lines about.
///
/// The same seed gives the same inputs on every machine.
class Mutator {
public:
    /// A part of a text.
    struct Span {
        std::size_t begin = 0;
        std::size_t end = 0;
        [[nodiscard]] std::size_t Size() const { return end - begin; }
    };

    explicit Mutator(std::uint32_t seed) : m_random(seed) {}

    /// `text` after a few changes, some of them with parts of `donor`. At most `limit` characters.
    [[nodiscard]] std::string Mutate(std::string text, std::string_view donor, std::size_t limit);

    /// A number below `end`, which is not 0.
    [[nodiscard]] std::size_t Below(std::size_t end) { return m_random() % end; }

private:
    void Change(std::string& text, std::string_view donor);
    void ChangeBytes(std::string& text);
    void ChangeLines(std::string& text, std::string_view donor);
    void MoveNumber(std::string& text, const Span& line);
    void MoveWords(std::string& text, std::string_view donor);
    void ReplaceWord(std::string& text, std::string_view donor);
    void ReplaceGroup(std::string& text, std::string_view donor);
    void InsertStatement(std::string& text, std::string_view donor);

    std::mt19937 m_random;
};
