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
/// A formal of a function of the library.
[[nodiscard]] QxIndexedFormal SlcPublicFormal(const SlcTypeNode* type, const SlcDetailNode* detail,
                                              const SlcStorageSpecNode* storage);
/// Sets what is known of a predefined variable but its name.
void SlcSetPredefined(QxIndexedName& name, const SlcVarSymbolEntry& entry);
/// Sets name, result, formals and declaration.
void SlcSetShape(QxIndexedName& name, const SlcFuncShape& shape);
/// An overload of a built-in, or a function of a library.
[[nodiscard]] QxIndexedName SlcPublicFunction(const SlcFuncSymbolEntry& entry);

/// The numbers of the names of an index. One that no source defines gets its number when it is
/// first used.
class SlcIndexNames {
public:
    explicit SlcIndexNames(QxSourceIndex& index) : m_index(index) {}

    [[nodiscard]] int Add(QxIndexedName name);
    void SetVariable(const SlcVarSymbolEntry* entry, int name) { m_variables[entry] = name; }
    void SetFunction(const SlcFuncDefNode* definition, int name) { m_functions[definition] = name; }

    /// The number of a variable; an `extern` declaration has that of the variable it refers to. -1
    /// for null.
    [[nodiscard]] int OfVariable(const SlcPtr<SlcVarSymbolEntry>& entry);
    [[nodiscard]] int OfFunction(const SlcPtr<SlcFuncSymbolEntry>& entry);
    [[nodiscard]] int OfTexture(const std::string& kind, const std::string& type);
    [[nodiscard]] int OfWord(QxNameKind kind, const std::string& word);

private:
    QxSourceIndex& m_index;
    std::map<const void*, int> m_variables;  // only looked up, as all of them are
    std::map<const void*, int> m_functions;
    std::map<std::pair<QxNameKind, std::string>, int> m_words;
};
