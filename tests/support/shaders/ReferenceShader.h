#pragma once

#include <random>
#include <string>
#include <vector>

#include "shaders/ReferenceTree.h"

/// Makes surface shaders in which uniform and varying values meet: uniform variables that functions
/// compute, arrays of both details whose elements are output arguments, nested functions with
/// `extern`, conditions that guard reads of elements, strings, and loops around all of it.
///
/// All numbers are small multiples of 1/8, so that every way to compute them gives the same result.
/// Variables that a call writes have no aliases in it. Uniform variables are written only where all
/// points are active. Every loop ends.
class ReferenceShader {
public:
    explicit ReferenceShader(unsigned int seed) : m_random(seed) {}
    [[nodiscard]] ReferenceProgram Make();

private:
    using Variable = const ReferenceVariable*;
    using Function = std::shared_ptr<ReferenceFunction>;
    using Expr = ReferenceExpr;
    using Statement = ReferenceStatement;
    using Type = ReferenceType;

    /// Whether an expression must have one value for all points.
    enum class Need { Any, Uniform };

    struct Loop {
        bool leavesForSome;  // by a varying break or continue
        int guard;           // of its body
    };

    /// What a call reads and writes outside the locals of the function.
    struct Effects {
        std::vector<Variable> touched;         // outer variables that the body uses
        std::vector<Variable> uniformWritten;  // those of them that it writes, if uniform
        bool writes = false;                   // outputs or outer variables
    };

    struct Callable {
        Function function;
        Effects effects;
        bool nested;  // functions that are made later do not call it
    };

    /// What is allowed at a place.
    struct Scope {
        std::vector<Variable> variables;
        std::vector<Variable> fixed;    // those of them that are only read
        std::vector<Variable> indices;  // those of them that are 0 to 2
        std::vector<Callable> functions;
        std::vector<Loop> loops;
        int depth = 0;
        int guard = 0;               // number of the innermost varying control flow
        int bodyGuard = 0;           // guard of the body of the current function
        std::size_t outer = 0;       // variables before this belong to the enclosing scope
        Effects* effects = nullptr;  // of the current function; null in the shader
        bool plain = false;          // uses no variable that is declared varying
        bool mayReturn = false;
        bool left = false;  // some points may have left a loop or an iteration
    };

    [[nodiscard]] int Below(int count);
    [[nodiscard]] bool Chance(int percent) { return Below(100) < percent; }
    template <class Item>
    [[nodiscard]] const Item& OneOf(const std::vector<Item>& items)
    {
        return items[static_cast<std::size_t>(Below(static_cast<int>(items.size())))];
    }

    Variable Add(const std::string& name, Type type, ReferenceDetail detail, std::size_t length,
                 int guard);
    [[nodiscard]] std::string NewName(const char* stem) { return stem + std::to_string(m_names++); }

    // Statements.
    void Predefine(Scope& scope);
    void MakeParameters(Scope& scope);
    void Finish(std::vector<Statement>& body, const Scope& scope);
    [[nodiscard]] std::vector<Statement> Statements(Scope& scope, int count);
    void AddStatement(Scope& scope, std::vector<Statement>& statements);
    [[nodiscard]] Statement AnyStatement(Scope& scope);
    [[nodiscard]] Statement Declaration(Scope& scope);
    [[nodiscard]] Statement Assignment(Scope& scope);
    [[nodiscard]] Statement AssignNumber(Scope& scope, const Expr& target);
    [[nodiscard]] Statement AssignPoint(Scope& scope);
    [[nodiscard]] Statement AssignText(Scope& scope, Variable target);
    [[nodiscard]] Statement CallForEffect(Scope& scope);
    [[nodiscard]] Statement If(Scope& scope);
    [[nodiscard]] Statement LoopBlock(Scope& scope);
    [[nodiscard]] Statement Leave(Scope& scope);
    [[nodiscard]] Statement NestedFunction(Scope& scope);
    [[nodiscard]] Function MakeFunction(Scope& scope, Effects& effects);
    void AddRounds(Scope& scope, std::vector<Statement>& body);
    [[nodiscard]] Expr Result(Scope& scope, const Function& function);
    [[nodiscard]] bool IsUniformIfArgumentsAre(const Function& function);
    void DeclareExterns(ReferenceFunction& function, const Effects& effects);
    void MakeFormals(Scope& inside, ReferenceFunction& function, Effects& effects);

    // Expressions.
    [[nodiscard]] Expr Number(Scope& scope, int depth, Need need);
    [[nodiscard]] Expr OpenNumber(Scope& scope);
    [[nodiscard]] Expr NumberLeaf(Scope& scope, Need need);
    [[nodiscard]] Expr ElementOf(Scope& scope, Variable array, Need need);
    [[nodiscard]] Expr Condition(Scope& scope, int depth, Need need);
    [[nodiscard]] Expr GuardedElement(Scope& scope, Variable array, Need need);
    [[nodiscard]] Expr Text(Scope& scope, Need need);
    [[nodiscard]] Expr Point(Scope& scope, int depth);
    [[nodiscard]] Expr PureCall(Scope& scope, Need need, const std::string& type);
    [[nodiscard]] bool Arguments(Scope& scope, const Callable& callable, Need need, Expr& call);

    [[nodiscard]] std::vector<Variable> Variables(const Scope& scope, Type type, bool array,
                                                  Need need) const;
    [[nodiscard]] std::vector<Variable> Targets(const Scope& scope, Type type, bool array) const;
    [[nodiscard]] bool IsWritable(const Scope& scope, Variable variable) const;
    Variable Use(Scope& scope, Variable variable, bool write);

    std::mt19937 m_random;
    ReferenceProgram m_program;
    Variable m_P = nullptr;
    Variable m_Ps = nullptr;
    int m_names = 0;
    int m_guards = 0;
    bool m_planted = false;  // a refused statement is in the program
};
