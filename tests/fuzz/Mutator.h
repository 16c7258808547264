#pragma once

#include <random>
#include <string>
#include <string_view>

/// Makes new inputs from given ones. Most changes replace or insert words, bracketed groups or
/// statements, or remove a short piece of text. Few change bytes at random, since a text with
/// random bytes seldom gets past a parser. In byte-code most changes replace lines.
///
/// The same seed and calls give the same inputs on every machine.
class Mutator {
public:
    /// A part of a text.
    struct Span {
        std::size_t begin = 0;
        std::size_t end = 0;
        [[nodiscard]] std::size_t Size() const { return end - begin; }
    };

    explicit Mutator(std::uint32_t seed) : m_random(seed) {}

    /// Returns `text` after a few changes, some of them with parts of `donor`, cut to `limit`
    /// characters.
    [[nodiscard]] std::string Mutate(std::string text, std::string_view donor, std::size_t limit);

    /// Returns a random number below `end`, which must not be 0.
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
