#pragma once

#include <memory>
#include <random>
#include <string>
#include <vector>

/// One statement of a random shader, with the statements inside it.
struct RandomStatement {
    std::string head;  // the whole statement if it contains no others
    std::vector<RandomStatement> body = {};
    bool hasBody = false;
    std::vector<RandomStatement> otherwise = {};  // after `else`; empty for none

    void Write(std::string& text, int depth) const;
};

/// A shader as lists of statements, so that parts of it can be removed.
struct RandomProgram {
    struct Function {
        std::string head;
        std::vector<RandomStatement> body;
        std::string tail;  // the `return` at its end; empty for none
    };
    std::vector<Function> functions;
    std::vector<std::string> parameters;  // varying: the type, name and default value of each
    std::vector<RandomStatement> body;

    [[nodiscard]] std::string Text() const;
};

/// Makes valid surface shaders with uniform and varying control flow nested in each other, `break`
/// and `continue` with levels, arrays, light loops, functions with output formals and early
/// returns, and default values with varying conditions. Every loop ends. Most numbers stay small
/// and have few binary digits, so that constant folding hardly changes a result by rounding.
class RandomShader {
public:
    explicit RandomShader(unsigned int seed) : m_random(seed) {}
    [[nodiscard]] RandomProgram Make();

private:
    /// What is allowed at a place.
    struct Scope {
        int depth = 0;  // of statements
        int loops = 0;  // that `break` and `continue` may name
        bool inFunction = false;
        bool mayReturn = false;  // the function may still get an early `return`
        bool inLightLoop = false;
    };

    [[nodiscard]] int Below(int count);
    [[nodiscard]] bool Chance(int percent) { return Below(100) < percent; }
    [[nodiscard]] std::string OneOf(const std::vector<std::string>& texts);

    [[nodiscard]] RandomProgram::Function MakeFunction(int number);
    [[nodiscard]] std::vector<std::string> MakeParameters();
    [[nodiscard]] std::vector<RandomStatement> Statements(Scope& scope, int count);
    [[nodiscard]] RandomStatement Statement(Scope& scope);
    [[nodiscard]] RandomStatement Assignment(const Scope& scope);
    [[nodiscard]] RandomStatement If(Scope& scope);
    [[nodiscard]] RandomStatement Loop(Scope& scope);
    [[nodiscard]] RandomStatement LightLoop(Scope& scope);
    [[nodiscard]] RandomStatement Leave(const Scope& scope);

    [[nodiscard]] std::string Float(const Scope& scope, int depth);
    [[nodiscard]] std::string UniformFloat(int depth);
    [[nodiscard]] std::string Color(const Scope& scope, int depth);
    [[nodiscard]] std::string Point(const Scope& scope, int depth);
    [[nodiscard]] std::string Relation(const Scope& scope, int depth);
    [[nodiscard]] std::string Constant();
    [[nodiscard]] std::string FloatVariable();
    [[nodiscard]] std::string Target(const Scope& scope);
    [[nodiscard]] std::string Call(const Scope& scope);

    std::mt19937 m_random;
    int m_functions = 0;  // that can be called so far
    int m_counters = 0;   // loop counters declared so far
};
