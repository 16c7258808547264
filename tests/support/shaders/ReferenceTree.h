#pragma once

#include <array>
#include <map>
#include <memory>
#include <string>
#include <vector>

// The tree of a random shader whose values are known without the compiler. It can be written as
// source and evaluated point by point, and shares no code with the compiler.

enum class ReferenceType { Float, Point, String };

/// The declared detail. `Open`: a variable of a function is declared without a detail, and has the
/// detail of its value.
enum class ReferenceDetail { Uniform, Varying, Open };

struct ReferenceVariable {
    std::string name;
    ReferenceType type = ReferenceType::Float;
    ReferenceDetail detail = ReferenceDetail::Varying;
    std::size_t length = 0;  // elements of an array; 0 for none
    std::size_t place = 0;   // index of its first value among the numbers or texts of a point
    int guard = 0;           // the innermost varying control flow around the declaration
};

struct ReferenceFunction;

struct ReferenceExpr {
    enum class Kind {
        Number,
        Text,
        Variable,
        Element,   // of `variable`; the first operand is the index
        List,      // the initializer of an array
        Operator,  // `word` is between two operands or before one
        BuiltIn,   // `word` is its name
        Choice,    // condition ? a : b
        Call
    };

    Kind kind = Kind::Number;
    std::string word = {};
    float number = 0;
    const ReferenceVariable* variable = nullptr;
    std::shared_ptr<ReferenceFunction> function = nullptr;
    std::vector<ReferenceExpr> operands = {};

    void Write(std::string& text) const;
};

struct ReferenceStatement {
    enum class Kind {
        Declare,   // `variable`, with `value`
        Assign,    // `target` `word` `value`
        Evaluate,  // `value`
        If,        // `value` is the condition
        While,
        For,  // counts `variable` from 0, by 1
        Block,
        Break,  // `levels` loops
        Continue,
        Return,
        Function,  // defines `function`
    };

    Kind kind = Kind::Block;
    std::string word = {};
    const ReferenceVariable* variable = nullptr;
    ReferenceExpr target = {};
    ReferenceExpr value = {};
    int levels = 1;
    std::shared_ptr<ReferenceFunction> function = nullptr;
    std::vector<ReferenceStatement> body = {};
    std::vector<ReferenceStatement> otherwise = {};  // after `else`; empty for none

    void Write(std::string& text, int depth) const;
};

struct ReferenceFunction {
    struct Formal {
        const ReferenceVariable* variable;
        bool output;
    };

    std::string name;
    std::string type;  // "void" for none
    std::vector<Formal> formals;
    std::vector<const ReferenceVariable*> externs;  // outer variables that it declares
    std::vector<ReferenceStatement> body;

    void Write(std::string& text, int depth) const;
};

struct ReferenceProgram {
    std::vector<std::unique_ptr<ReferenceVariable>> variables;
    std::vector<std::shared_ptr<ReferenceFunction>> functions;
    std::vector<ReferenceStatement> parameters;  // declarations, whose values are the defaults
    std::vector<ReferenceStatement> body;
    std::size_t numbers = 0;  // of one point
    std::size_t texts = 0;
    std::map<std::string, const ReferenceVariable*> predefined;
    std::vector<const ReferenceVariable*> outputs;

    [[nodiscard]] std::string Text() const;
};

/// Whether the rules of uniform and varying values accept a program; open where they do not say.
enum class ReferenceVerdict { Accepted, Open, Refused };

/// Judges one statement alone, with the statements inside it, as if no other came before it.
[[nodiscard]] ReferenceVerdict JudgeStatement(const ReferenceStatement& statement);
[[nodiscard]] ReferenceVerdict JudgeProgram(const ReferenceProgram& program);

/// Returns the final numbers of `outputs` at a point, one output after the other; an output of type
/// point has three. Throws `std::runtime_error` if the program does not end or uses an element
/// outside of an array.
[[nodiscard]] std::vector<float> EvaluateAtPoint(const ReferenceProgram& program, float u, float v);
