#pragma once

#include <deque>
#include <string>
#include <vector>

#include "symbols/SlcFuncSymbolEntry.h"
#include "symbols/SlcSymbolEntry.h"

class SlcFormalsNode;
class SlcFuncDSOSymbolEntry;
class SlcProcArgsNode;
class SlcSymbolScope;
struct SlcShadeopDeclaration;
struct SlcShadeopRules;

/// A name that must be known is unknown: a fault of the compiler. Thrown by value. During the check
/// of a light statement, `SlcCheckSemantics` catches it to report the place of the statement.
struct SlcSymbolNotFound {
    SlcIdentNode* ident;
};

/// The call of a function by name, for which overloads are looked up.
struct SlcLookup {
    enum class Functions { All, WithValue };

    SlcIdentNode* ident = nullptr;
    const SlcProcArgsNode* arguments = nullptr;  // annotated with sets of types
    Functions functions = Functions::All;        // `WithValue` ignores void functions
};

/// The return types of the overloads that match a call, or the reason why none does.
struct SlcOverloads {
    enum class Outcome { Found, UnknownName, WrongCount, WrongTypes };

    Outcome outcome = Outcome::UnknownName;
    std::vector<SlcTypeNode*> types;     // return types of the matching overloads
    SlcPtr<SlcFuncSymbolEntry> closest;  // after `WrongTypes`: report the mismatches of this one
};

/// The names of one scope that are visible at one point of the source.
///
/// A scope grows with each declaration statement: `CreateCurrentScopeTable` makes the next table of
/// the same scope. Each statement is checked with the table that is current there, and so sees
/// exactly the names declared before it. The tables of a scope share one index of names, so the
/// cost of a look-up does not depend on the number of tables.
///
///     float a = 1;              table 1 of the scope: a
///     float b = a;              table 2: a, b
///     { float a = b; }          a scope inside table 2, with another a
///     float c = a;              table 3: a, b, c
///
/// Tables, entries and function infos form reference cycles, which `SlcDeleteTree` breaks.
class SlcSymbolTable : public SlcCollectable {
public:
    /// Make the first table of a scope: of the outermost scope, and of a scope inside `parent`.
    SlcSymbolTable();
    explicit SlcSymbolTable(SlcPtr<SlcSymbolTable> parent);
    /// Makes the next table of the scope.
    explicit SlcSymbolTable(SlcPtr<SlcSymbolScope> scope);
    ~SlcSymbolTable() override;

    /// Makes a new scope inside this one, and returns its first table.
    [[nodiscard]] SlcPtr<SlcSymbolTable> CreateNewScopeTable();
    /// Returns a new table that follows this one in its scope. If the scope already has a later
    /// table, the new table and the later one do not see each other's names.
    [[nodiscard]] SlcPtr<SlcSymbolTable> CreateCurrentScopeTable();

    // The Add operations do not check whether the name exists: a caller that must reject
    // redefinitions checks first.

    /// Adds an existing entry.
    void AddVarEntry(const SlcPtr<SlcVarSymbolEntry>& entry);
    /// Makes and adds an entry, with an operand of the name `cName` unless that is null. Returns
    /// the entry. `outer` may be null.
    SlcPtr<SlcVarSymbolEntry> AddVarEntry(SlcIdentNode* ident, SlcTypeNode* type,
                                          SlcDetailNode* detail, SlcStorageSpecNode* storage,
                                          bool hidden, const char* cName,
                                          SlcPtr<SlcVarSymbolEntry> outer);
    /// Makes and adds the entry of a user function with the types, details and storages of the
    /// formals. Returns the entry.
    SlcPtr<SlcFuncSymbolEntry> AddFuncEntry(SlcIdentNode* ident, SlcTypeNode* returnType,
                                            SlcFormalsNode* formals, SlcPtr<SlcAnnotation> info,
                                            SlcCheckDetailProc checkDetail,
                                            SlcCheckInlineDetailProc checkInlineDetail);
    /// Makes and adds the entry of a shadeop as declared by the library at `libraryPath`. Returns
    /// the entry.
    SlcPtr<SlcFuncDSOSymbolEntry> AddFuncEntryDSO(SlcIdentNode* ident,
                                                  const std::string& libraryPath,
                                                  SlcShadeopDeclaration declaration,
                                                  const SlcShadeopRules& rules);
    /// Adds any existing entry.
    void AddEntry(SlcPtr<SlcSymbolEntry> entry);

    /// Returns the variable in the nearest scope; null if there is none. If no enclosing scope has
    /// the name, the scopes in which the enclosing functions were defined are searched, that of the
    /// outermost function first; `noDefinitionScope` excludes the definition scope of this table.
    [[nodiscard]] SlcPtr<SlcVarSymbolEntry> FindVarEntry(SlcIdentNode* ident,
                                                         bool noDefinitionScope) const;
    /// Does the same for a name that must be known. Throws `SlcSymbolNotFound` if there is none.
    [[nodiscard]] SlcPtr<SlcVarSymbolEntry> GetVarEntry(SlcIdentNode* ident,
                                                        bool noDefinitionScope) const;
    /// True if the current scope has a variable or function of this name; `thisTableOnly` ignores
    /// earlier tables of the scope.
    [[nodiscard]] bool IsInCurrent(SlcIdentNode* ident, bool thisTableOnly) const;
    /// True if this scope or an enclosing one has a variable of this name. Does not search the
    /// definition scopes of functions.
    [[nodiscard]] bool IsVarInTable(SlcIdentNode* ident) const;

    /// Looks up the overloads that match the arguments' sets of types, and returns those of the
    /// nearest table that has any: exact matches or, if no table has one, matches with promotion.
    /// Promotion is not tried if in the outermost table with the name no overload has the number of
    /// arguments. That table also determines the outcome if nothing matches. `sink`, for faults
    /// inside arguments, may be null.
    [[nodiscard]] SlcOverloads FindOverloads(const SlcLookup& call,
                                             const SlcPtr<SlcSemanticError>& sink) const;
    /// Returns all overloads whose return type matches, nearest scope first. Empty for an unknown
    /// name.
    [[nodiscard]] std::deque<SlcPtr<SlcFuncSymbolEntry>>
    GetFuncEntrys(SlcIdentNode* ident, SlcTypeNode* returnType) const;
    /// Returns the overload with this return type whose fixed arguments match those of a call,
    /// which must have their unique types. An exact match in any table precedes a match by
    /// promotion; then the nearest table counts, and in one table the most recently added overload.
    /// Null if there is none.
    [[nodiscard]] SlcPtr<SlcFuncSymbolEntry> FindUniqueFuncEntry(SlcIdentNode* ident,
                                                                 SlcTypeNode* returnType,
                                                                 const SlcCallArgs& args) const;
    /// Returns the overload with this return type and these formals: the first in the nearest table
    /// that has one. Null if there is none.
    [[nodiscard]] SlcPtr<SlcFuncSymbolEntry> FindUniqueFuncEntry(SlcIdentNode* ident,
                                                                 SlcTypeNode* returnType,
                                                                 SlcFormalsNode* formals) const;

    /// Returns the user function that a definition with this return type and these formals would
    /// replace: the last in the same scope with the same types and array lengths, where all types
    /// of the point family count as equal. Null if there is none.
    [[nodiscard]] SlcPtr<SlcFuncSymbolEntry> FindUserFunction(SlcIdentNode* ident,
                                                              const SlcTypeNode* returnType,
                                                              const SlcFormalsNode* formals) const;

    /// In a function's table of formals, and in later tables of the same scope: the scope in which
    /// the function was defined or, for a function before the shader, that of the predefined
    /// variables. Null in strict mode, and in all other tables.
    SlcPtr<SlcSymbolTable> m_definitionScope;

private:
    struct Group;  // the entries of one name in one table

    /// Returns the entries of a name, one group per table that has any: this table first, then
    /// earlier tables of the scope, then outward.
    [[nodiscard]] std::vector<Group> GroupsOf(SlcIdentNode* ident) const;
    [[nodiscard]] SlcPtr<SlcVarSymbolEntry> FindVariable(SlcIdentNode* ident) const;
    /// Returns the table outside this scope in which a look-up continues; null if there is none.
    [[nodiscard]] const SlcSymbolTable* NextScope() const;

    SlcPtr<SlcSymbolScope> m_scope;  // the names of all tables of this scope, and the parent
    int m_position;                  // this table's position among the tables of its scope
};

/// Returns the arguments of a call as a plain list.
[[nodiscard]] SlcCallArgs SlcArgsOf(const SlcProcArgsNode* arguments);
