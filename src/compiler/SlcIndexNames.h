#pragma once

#include <map>
#include <string>
#include <string_view>

#include "compiler/QxSourceIndex.h"
#include "symbols/SlcFuncDeclaration.h"

class SlcDefExprNode;
class SlcFuncDefNode;
class SlcTypeSpecNode;

[[nodiscard]] QxDetail SlcPublicDetail(const SlcDetailNode* detail);
[[nodiscard]] QxStorage SlcPublicStorage(const SlcStorageSpecNode* storage);
/// Converts a formal of a built-in or library function.
[[nodiscard]] QxIndexedFormal SlcPublicFormal(const SlcTypeNode* type, const SlcDetailNode* detail,
                                              const SlcStorageSpecNode* storage);
/// Sets the properties of a predefined variable, except its name.
void SlcSetPredefined(QxIndexedName& name, const SlcVarSymbolEntry& entry);
/// Sets name, result, formals and declaration.
void SlcSetShape(QxIndexedName& name, const SlcFuncShape& shape);
/// Converts an overload of a built-in, or a function of a library.
[[nodiscard]] QxIndexedName SlcPublicFunction(const SlcFuncSymbolEntry& entry);

/// Assigns the indices of names. A name that the source does not define gets its index when it is
/// first used.
class SlcIndexNames {
public:
    explicit SlcIndexNames(QxSourceIndex& index) : m_index(index) {}

    [[nodiscard]] int Add(QxIndexedName name);
    void SetVariable(const SlcVarSymbolEntry* entry, int name) { m_variables[entry] = name; }
    void SetFunction(const SlcFuncDefNode* definition, int name) { m_functions[definition] = name; }

    /// Returns the index of a variable; for an `extern` declaration, that of the variable it refers
    /// to. -1 for null, and for a variable of the source without an index.
    [[nodiscard]] int OfVariable(const SlcPtr<SlcVarSymbolEntry>& entry);
    [[nodiscard]] int OfFunction(const SlcPtr<SlcFuncSymbolEntry>& entry);
    [[nodiscard]] int OfTexture(const std::string& kind, const std::string& type);
    [[nodiscard]] int OfWord(QxNameKind kind, const std::string& word);

private:
    QxSourceIndex& m_index;
    std::map<const void*, int> m_variables;  // only for look-up, like the others
    std::map<const void*, int> m_functions;
    std::map<std::pair<QxNameKind, std::string>, int> m_words;
};
