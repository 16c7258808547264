#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "machine/translate/QxDraftWriter.h"

/// A block of drafts as text, so that a test of a pass shows the block before and after:
///
///     A: once g = ASSIGN_BOOL_BOOL g1; { if f ( x = ADD_FLOAT_FLOAT y 2; ) } if not g goto A;
///
/// An instruction is written as its results, '=', its primitive and its other operands; '&x' is
/// both read and written. A primitive in lower case belongs to the machine: `product_plus`. A first
/// word says how the instruction runs: `once`; `grid` for the whole grid; `at f` for the points of
/// a flag; `whole f` if it also runs when the flag is set at no point. Between parallel brackets it
/// has no such word, or `all` if it ignores the mask. The brackets are '{ }', 'each { }', in which
/// points run one after the other, and 'if f ( )'. In the last, `not` before the flag inverts it,
/// and `copy` means that the brackets write the flag; a pass may turn the last into 'where f ( )'.
/// In parallel brackets a jump may test a varying flag. `lights E;` begins a loop over lights, and
/// `again S;` ends it; E and S are labels. The stop at the end is not written. A variable that has
/// room for one strip is printed as '~' and its number; '{~0~1/256' opens a run with two such
/// variables and strips of 256 points.
///
/// The name of a variable determines its type: f... varying flag, g... uniform flag, u... uniform
/// number, c... varying color, C... predefined color, S... predefined number, a number is a
/// constant, and any other name a varying number.
class DraftText {
public:
    /// Reads a block. Throws `std::runtime_error` if it cannot.
    explicit DraftText(std::string_view text);
    DraftText(const DraftText&) = delete;
    DraftText& operator=(const DraftText&) = delete;

    /// Returns the text of the current block. Writes '?' after a closing bracket that has no
    /// opening bracket, or one with a wrong target.
    [[nodiscard]] std::string Print() const;
    /// Returns the text of one draft, without a label before it.
    [[nodiscard]] std::string PrintDraft(std::size_t index) const;

    [[nodiscard]] QxDraftWriter& Writer() { return m_writer; }
    [[nodiscard]] QxDraftBlock& Block() { return m_block; }
    [[nodiscard]] QxMachineVariables& Variables() { return m_variables; }
    [[nodiscard]] const std::vector<QxStorage>& Storages() const { return m_code.variables; }
    /// Returns the number of a variable, which is declared at its first use.
    [[nodiscard]] std::uint32_t Variable(const std::string& name);
    [[nodiscard]] std::string NameOf(std::uint32_t variable) const;

private:
    void ReadItem();
    void ReadJump(QxCodeStep step);
    void ReadInstruction(const std::string& first);
    void Close(QxCodeStep step);
    [[nodiscard]] std::string Next();
    void Expect(std::string_view word);
    [[nodiscard]] QxOperand Operand(const std::string& name);
    [[nodiscard]] std::string Condition(const QxCode& code) const;
    [[nodiscard]] std::string Label(std::uint32_t target) const;

    const SqxShader m_empty;
    QxMachineCode m_code;
    QxMachineVariables m_variables;
    QxDraftWriter m_writer;
    QxDraftBlock& m_block;  // the writer's
    std::map<std::string, std::uint32_t> m_names;
    // These fields are used while a block is read.
    std::vector<std::string> m_words;  // in reverse order
    std::vector<std::size_t> m_open;   // brackets
    std::map<std::string, std::uint32_t> m_labels;
    std::vector<std::pair<std::size_t, std::string>> m_jumps;  // to labels, by draft
};
