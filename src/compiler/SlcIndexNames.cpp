// Tested by tests/compiler/QxSourceIndexTest.cpp.

#include "compiler/SlcIndexNames.h"

#include <utility>

#include "semantics/SlcFuncInfo.h"
#include "symbols/SlcHiddenVariables.h"

QxDetail SlcPublicDetail(const SlcDetailNode* detail)
{
    if (!detail)
        return QxDetail::None;
    if (detail->IsUniform())
        return QxDetail::Uniform;
    return detail->IsVarying() ? QxDetail::Varying : QxDetail::Open;
}

QxStorage SlcPublicStorage(const SlcStorageSpecNode* storage)
{
    if (!storage)
        return QxStorage::None;
    if (storage->IsInput())
        return QxStorage::Input;
    if (storage->IsOutput())
        return QxStorage::Output;
    if (storage->IsExtern())
        return QxStorage::Extern;
    if (storage->IsReadOnly())
        return QxStorage::ReadOnly;
    return storage->IsReadWrite() ? QxStorage::ReadWrite : QxStorage::Local;
}

QxIndexedFormal SlcPublicFormal(const SlcTypeNode* type, const SlcDetailNode* detail,
                                const SlcStorageSpecNode* storage)
{
    QxIndexedFormal formal;
    formal.type = type->ToString();
    formal.detail = SlcPublicDetail(detail);
    formal.storage = SlcPublicStorage(storage);
    formal.text = SlcFormalText(type, detail, storage);
    return formal;
}

void SlcSetPredefined(QxIndexedName& name, const SlcVarSymbolEntry& entry)
{
    name.type = entry.GetType()->ToString();
    name.detail = name.inferred = SlcPublicDetail(entry.GetDetail());
    name.storage = SlcPublicStorage(entry.GetStorage());
    name.declaration = entry.GetDetail()->ToString() + " " + name.type + " " + name.name;
}

void SlcSetShape(QxIndexedName& name, const SlcFuncShape& shape)
{
    name.name = shape.name;
    name.type = shape.returnType->ToString();
    name.declaration = SlcDeclarationText(shape);
    name.takesMore = shape.tail != nullptr;
    for (std::size_t i = 0; i < shape.argTypes.size(); ++i)
        name.formals.push_back(
            SlcPublicFormal(shape.argTypes[i], shape.argDetails[i], shape.argStorages[i]));
}

QxIndexedName SlcPublicFunction(const SlcFuncSymbolEntry& entry)
{
    QxIndexedName name;
    name.kind =
        entry.GetOrigin() == SlcFuncOrigin::BuiltIn ? QxNameKind::BuiltIn : QxNameKind::Shadeop;
    const SlcFuncShape shape = {entry.GetName(),       entry.GetReturnType(),  entry.GetArgTypes(),
                                entry.GetArgDetails(), entry.GetArgStorages(), entry.GetTail()};
    SlcSetShape(name, shape);
    return name;
}

int SlcIndexNames::Add(QxIndexedName name)
{
    m_index.names.push_back(std::move(name));
    return static_cast<int>(m_index.names.size()) - 1;
}

int SlcIndexNames::OfVariable(const SlcPtr<SlcVarSymbolEntry>& entry)
{
    const SlcPtr<SlcVarSymbolEntry> variable = SlcOutermost(entry);
    if (!variable)
        return -1;
    const auto found = m_variables.find(&*variable);
    if (found != m_variables.end())
        return found->second;
    // Only names of the language are added here: the variables of a kind of shader, and `PI`.
    if (!variable->IsHidden() && variable->GetName() != SlcHiddenVariables::Pi().name)
        return -1;
    const int number = OfWord(QxNameKind::Predefined, variable->GetName());
    QxIndexedName& name = m_index.names[static_cast<std::size_t>(number)];
    SlcSetPredefined(name, *variable);
    m_variables[&*variable] = number;
    return number;
}

int SlcIndexNames::OfFunction(const SlcPtr<SlcFuncSymbolEntry>& entry)
{
    if (!entry)
        return -1;
    const void* key = &*entry;
    if (entry->GetOrigin() == SlcFuncOrigin::User) {
        if (!entry->GetFuncInfo())
            return -1;
        key = CheckCast<SlcFuncInfo>(entry->GetFuncInfo())->GetDefinition();
    }
    const auto found = m_functions.find(key);
    if (found != m_functions.end())
        return found->second;
    if (entry->GetOrigin() == SlcFuncOrigin::User)
        return -1;
    return m_functions[key] = Add(SlcPublicFunction(*entry));
}

int SlcIndexNames::OfTexture(const std::string& kind, const std::string& type)
{
    const auto found = m_words.find({QxNameKind::BuiltIn, type + kind});
    if (found != m_words.end())
        return found->second;
    const int number = OfWord(QxNameKind::BuiltIn, type + kind);
    QxIndexedName& name = m_index.names[static_cast<std::size_t>(number)];
    name.name = kind;
    name.type = type;
    name.takesMore = true;
    name.declaration = type + (type.empty() ? "" : " ") + kind + "(string, ...)";
    return number;
}

int SlcIndexNames::OfWord(QxNameKind kind, const std::string& word)
{
    const auto [found, isNew] = m_words.try_emplace({kind, word}, 0);
    if (isNew) {
        QxIndexedName name;
        name.kind = kind;
        name.name = word;
        found->second = Add(std::move(name));
    }
    return found->second;
}
