#pragma once

#include <deque>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "icode/SlcGridForm.h"
#include "icode/SlcJumpICode.h"
#include "icode/SlcListICode.h"
#include "symbols/SlcFuncSymbolEntry.h"

/// Looks up the variables and functions that a text names.
class SlcICodeScope {
public:
    virtual ~SlcICodeScope() = default;
    /// Returns the variable of this name, always the same object for the same name. Throws
    /// `SlcICodeSyntaxError` if there is none.
    [[nodiscard]] virtual SlcOperand FindVariable(const std::string& name) = 0;
    /// Returns the declaration of the function that a call of `primitive` refers to; null if there
    /// is none.
    [[nodiscard]] virtual SlcPtr<SlcFuncSymbolEntry>
    FindFunction(SqxPrimitive primitive, const std::deque<SlcOperand>& arguments) = 0;
};

/// Thrown for text that is not valid intermediate code; what() describes where parsing failed.
class SlcICodeSyntaxError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads the text form that `SlcICodeText` prints, except `note`, the text of a comment;
/// docs/icode.md shows the text of each instruction. A recursive-descent parser without
/// backtracking.
///
/// Labels of parallel runs and guards have no text: the parser makes a new label for each pair of
/// brackets.
class SlcICodeParser {
public:
    /// `scope` must outlive the parser.
    explicit SlcICodeParser(SlcICodeScope& scope) : m_scope(scope) {}

    /// Returns the instructions of `text`, in order. Throws `SlcICodeSyntaxError` if a statement is
    /// not valid or a bracket is not closed. A number that cannot be converted throws what
    /// `std::stoi` or `std::stod` throws.
    [[nodiscard]] std::deque<SlcPtr<SlcICode>> Parse(std::string_view text);

private:
    using Operands = std::deque<SlcOperand>;

    [[nodiscard]] SlcPtr<SlcICode> Statement();
    [[nodiscard]] SlcPtr<SlcICode> Guarded(const std::string& flag, bool wanted);
    [[nodiscard]] SlcPtr<SlcICode> Words(const std::string& word);
    [[nodiscard]] SlcPtr<SlcICode> Assignment(Operands results);
    [[nodiscard]] SlcPtr<SlcICode> Value(const SlcOperand& result, const std::string& word);
    [[nodiscard]] SlcPtr<SlcICode> Call(const Operands& results, const std::string& word);
    [[nodiscard]] SlcPtr<SlcICode> Primitive(const Operands& results, const std::string& word,
                                             const Operands& arguments);
    template <class Code>
    [[nodiscard]] SlcPtr<SlcICode> Leave();

    [[nodiscard]] SlcOperand Operand(const std::string& token);
    [[nodiscard]] Operands Arguments();
    [[nodiscard]] SlcGridForm Form();
    [[nodiscard]] SlcLabel Label(const std::string& name);
    [[nodiscard]] SlcLabel NewBracket();
    [[nodiscard]] SlcLabel CloseBracket();

    [[nodiscard]] bool AtEnd() const { return m_next == m_tokens.size(); }
    [[nodiscard]] const std::string& Peek() const;
    [[nodiscard]] std::string Next();
    bool Accept(std::string_view token);
    void Expect(std::string_view token);
    [[noreturn]] void Fail(const std::string& expected) const;

    SlcICodeScope& m_scope;
    std::vector<std::string> m_tokens;
    std::size_t m_next = 0;
    std::map<std::string, SlcLabel> m_labels;
    std::vector<SlcLabel> m_brackets;  // of the open brackets, the innermost last
    std::size_t m_bracketCount = 0;
};
