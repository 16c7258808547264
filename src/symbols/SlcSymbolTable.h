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

/// No such name, or no overload that fits in the sought form. Thrown by value.
struct SlcSymbolNotFound {
    SlcIdentNode* ident;
};

/// The name is known, but no overload takes that many arguments. Thrown by value.
struct SlcInvalidNumberOfArgs {
    SlcPtr<SlcFuncSymbolEntry> entry;
};

/// An overload takes that many arguments, but none fits their types. Thrown by value.
struct SlcFuncArgsTypeError {
    SlcPtr<SlcFuncSymbolEntry> entry;  // the last one tried with the right count
};

/// The names of one scope as they stand at one point of the source.
///
/// A scope grows with each declaration statement: `CreateCurrentScopeTable` gives the next table of
/// the same scope, and a statement annotated with the table then current sees the names declared
/// before it and no others. The tables of one scope share one index of names, so that a look-up
/// costs O(log n) in the names of a scope, however many tables it has.
///
///     float a = 1;              table 1 of the scope: a
///     float b = a;              table 2: a, b
///     { float a = b; }          a scope inside table 2, with an a of its own
///     float c = a;              table 3: a, b, c
///
/// Tables, entries and function infos form cycles, which `SlcDeleteTree` cuts.
class SlcSymbolTable : public SlcCollectable {
public:
    /// The outermost scope, and a scope inside `parent`.
    SlcSymbolTable();
    explicit SlcSymbolTable(SlcPtr<SlcSymbolTable> parent);
    /// The next table of the scope.
    explicit SlcSymbolTable(SlcPtr<SlcSymbolScope> scope);
    ~SlcSymbolTable() override;

    /// A new scope inside this one.
    [[nodiscard]] SlcPtr<SlcSymbolTable> CreateNewScopeTable();
    /// The next table of this scope.
    [[nodiscard]] SlcPtr<SlcSymbolTable> CreateCurrentScopeTable();

    // None of the Add operations looks for a name that exists already: who must refuse a
    // redefinition asks first.

    /// Shares an entry that exists.
    void AddVarEntry(const SlcPtr<SlcVarSymbolEntry>& entry);
    /// With a C name the entry gets its operand at once; `cName` and `outer` may be null.
    SlcPtr<SlcVarSymbolEntry> AddVarEntry(SlcIdentNode* ident, SlcTypeNode* type,
                                          SlcDetailNode* detail, SlcStorageSpecNode* storage,
                                          bool hidden, const char* cName,
                                          SlcPtr<SlcVarSymbolEntry> outer);
    /// A user function: its argument lists come from the formals.
    SlcPtr<SlcFuncSymbolEntry> AddFuncEntry(SlcIdentNode* ident, SlcTypeNode* returnType,
                                            SlcFormalsNode* formals, SlcPtr<SlcAnnotation> info,
                                            SlcCheckDetailProc checkDetail,
                                            SlcCheckInlineDetailProc checkInlineDetail);
    /// A shadeop, as the library at that path declares it.
    SlcPtr<SlcFuncDSOSymbolEntry> AddFuncEntryDSO(SlcIdentNode* ident,
                                                  const std::string& libraryPath,
                                                  SlcShadeopDeclaration declaration,
                                                  const SlcShadeopRules& rules);
    /// Any entry that is already made.
    void AddEntry(SlcPtr<SlcSymbolEntry> entry);

    /// The variable in the nearest scope; unless `noDefinitionScope`, names that no scope around
    /// holds are then sought where the enclosing function was defined. Throws
    /// `SlcSymbolNotFound`.
    [[nodiscard]] SlcPtr<SlcVarSymbolEntry> GetVarEntry(SlcIdentNode* ident,
                                                        bool noDefinitionScope);
    /// Variable or function, in the current scope; `thisTableOnly` leaves out the tables before.
    [[nodiscard]] bool IsInCurrent(SlcIdentNode* ident, bool thisTableOnly) const;
    /// Variable, here or further out.
    [[nodiscard]] bool IsVarInTable(SlcIdentNode* ident) const;

    /// Return types of the overloads that fit the arguments' sets of types: exact fits in any
    /// scope, then promoted ones. `noVoid` leaves out void functions. `sink` may be null. Throws
    /// one of the three exceptions above.
    [[nodiscard]] std::vector<SlcTypeNode*> GetFuncType(SlcIdentNode* ident,
                                                        SlcProcArgsNode* arguments,
                                                        const SlcPtr<SlcSemanticError>& sink,
                                                        bool noVoid, bool promote, bool top);
    /// Every overload whose return type suits, nearest scope first. Empty for an unknown name.
    [[nodiscard]] std::deque<SlcPtr<SlcFuncSymbolEntry>> GetFuncEntrys(SlcIdentNode* ident,
                                                                       SlcTypeNode* returnType);
    /// The overload of a call whose arguments have their unique types; of equals in one table the
    /// most recently added. Throws `SlcSymbolNotFound`.
    [[nodiscard]] SlcPtr<SlcFuncSymbolEntry> GetUniqueFuncEntry(SlcIdentNode* ident,
                                                                SlcTypeNode* returnType,
                                                                const SlcCallArgs& args,
                                                                bool promote, bool top);
    /// The overload with these formals; of equals the first. Throws `SlcSymbolNotFound`.
    [[nodiscard]] SlcPtr<SlcFuncSymbolEntry>
    GetUniqueFuncEntry(SlcIdentNode* ident, SlcTypeNode* returnType, SlcFormalsNode* formals);

    /// The function of the source that one of this shape would replace: of the same scope, return
    /// type and formals, in which the point family counts as one. Null if there is none.
    [[nodiscard]] SlcPtr<SlcFuncSymbolEntry> FindUserFunction(SlcIdentNode* ident,
                                                              const SlcTypeNode* returnType,
                                                              const SlcFormalsNode* formals) const;

    /// For a function's formals table: the scope in which the function was defined; null in
    /// strict mode and elsewhere. Tables that follow in the same scope take it over.
    SlcPtr<SlcSymbolTable> m_definitionScope;

private:
    struct Group;  // the entries of one name in one table

    /// The entries of a name, one group a table that holds any: this table first, then those
    /// before it in the scope, then outward.
    [[nodiscard]] std::vector<Group> GroupsOf(SlcIdentNode* ident) const;
    [[nodiscard]] SlcPtr<SlcVarSymbolEntry> FindVariable(SlcIdentNode* ident) const;
    /// The table outside this scope, in which a look-up goes on; null for none.
    [[nodiscard]] const SlcSymbolTable* NextScope() const;

    SlcPtr<SlcSymbolScope> m_scope;  // the names of all tables of this scope, and the parent
    int m_position;                  // this table's place among the tables of its scope
};

/// The arguments of a call as a plain list.
[[nodiscard]] SlcCallArgs SlcArgsOf(const SlcProcArgsNode* arguments);
