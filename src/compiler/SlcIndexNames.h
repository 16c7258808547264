#pragma once

#include <map>
#include <string>
#include <string_view>

#include "compiler/QxSourceIndex.h"
#include "symbols/SlcFuncDeclaration.h"

class SlcDefExprNode;
class SlcFuncDefNode;
class SlcTypeSpecNode;

/// Convert a detail and a storage class; null means `None`.
[[nodiscard]] QxDetail SlcPublicDetail(const SlcDetailNode* detail);
[[nodiscard]] QxStorage SlcPublicStorage(const SlcStorageSpecNode* storage);
/// Converts a formal of a built-in or library function, which has no name.
[[nodiscard]] QxIndexedFormal SlcPublicFormal(const SlcTypeNode* type, const SlcDetailNode* detail,
                                              const SlcStorageSpecNode* storage);
/// Sets type, details, storage and declaration of a predefined variable. `name.name` must be set.
void SlcSetPredefined(QxIndexedName& name, const SlcVarSymbolEntry& entry);
/// Sets name, result, declaration and `takesMore`, and adds the formals.
void SlcSetShape(QxIndexedName& name, const SlcFuncShape& shape);
/// Converts an overload of a built-in, or a function of a library.
[[nodiscard]] QxIndexedName SlcPublicFunction(const SlcFuncSymbolEntry& entry);

/// Adds names to an index, and finds the indices of those that it contains. A name that the source
/// does not define is added when it is first used.
class SlcIndexNames {
public:
    explicit SlcIndexNames(QxSourceIndex& index) : m_index(index) {}

    /// Adds a name and returns its index.
    [[nodiscard]] int Add(QxIndexedName name);
    /// Record the index of a variable or function of the source.
    void SetVariable(const SlcVarSymbolEntry* entry, int name) { m_variables[entry] = name; }
    void SetFunction(const SlcFuncDefNode* definition, int name) { m_functions[definition] = name; }

    /// Returns the index of a variable; for an `extern` declaration, that of the variable it refers
    /// to. -1 for null, and for a variable of the source without an index.
    [[nodiscard]] int OfVariable(const SlcPtr<SlcVarSymbolEntry>& entry);
    /// Returns the index of a function; -1 for null, and for a function of the source without an
    /// index.
    [[nodiscard]] int OfFunction(const SlcPtr<SlcFuncSymbolEntry>& entry);
    /// Returns the index of a kind of texture access with this type of result.
    [[nodiscard]] int OfTexture(const std::string& kind, const std::string& type);
    /// Returns the index of the only name of this kind that is spelled `word`.
    [[nodiscard]] int OfWord(QxNameKind kind, const std::string& word);

private:
    QxSourceIndex& m_index;
    // By symbol entry, or by definition for a function of the source; only for look-up, since the
    // order of addresses differs from run to run.
    std::map<const void*, int> m_variables;
    std::map<const void*, int> m_functions;
    std::map<std::pair<QxNameKind, std::string>, int> m_words;
};
