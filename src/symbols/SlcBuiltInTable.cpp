#include "symbols/SlcBuiltInTable.h"

#include <string>
#include <utility>

#include "support/SlcDiagnostics.h"
#include "symbols/SlcFuncDescription.h"
#include "symbols/SlcGeneratedNames.h"

namespace {

template <class Rules>
auto RuleOf(const Rules& rules, int code, const char* where)
{
    if (code < 0 || code >= static_cast<int>(rules.size()))
        FatalError(std::string("Invalid code for ") + where + ": " + std::to_string(code));
    return rules[code];
}

SlcFuncSignature SignatureOf(SlcFuncDescription::FuncInfo& info, const SlcDetailRules& rules)
{
    const bool plain = info.tail == nullptr;
    SlcFuncSignature signature;
    signature.ident = SlcLexicalNode::CreateIdent(info.name);
    signature.returnType = info.returnType;
    signature.argTypes = std::move(info.argTypes);
    signature.argDetails = std::move(info.argDetails);
    signature.argStorages = std::move(info.argStorages);
    signature.orderSensitive = info.orderSensitive;
    signature.foldable = info.foldable;
    signature.simd = info.simd;
    signature.simdDetails = std::move(info.simdDetails);
    signature.checkDetail =
        RuleOf(rules.checkDetail, info.checkDetail,
               plain ? "(*funcInfo)->m_checkDetail" : "(*varArgsFuncInfo)->m_checkDetail");
    signature.checkInlineDetail = RuleOf(rules.checkInlineDetail, info.checkInlineDetail,
                                         plain ? "(*funcInfo)->m_checkInlineDetail"
                                               : "(*varArgsFuncInfo)->m_checkInlineDetail");
    signature.cName = info.cName.empty() ? nullptr : SlcLexicalNode::CreateIdent(info.cName);
    return signature;
}

}  // namespace

SlcPtr<SlcSymbolTable> SlcBuiltInTable(const SlcDetailRules& rules)
{
    auto table = MakeShared<SlcSymbolTable>();
    table->AddVarEntry(SlcLexicalNode::CreateIdent("PI"), SlcTypeNode::AFloat(),
                       SlcDetailNode::AUniform(), SlcStorageSpecNode::AInput(), false,
                       SlcGeneratedNames::k_pi, nullptr);
    for (const char* const* row = SlcFuncDescription::sm_funcInfoString; *row; ++row) {
        auto info = SlcFuncDescription::ReadPlainRow(*row);
        table->AddFuncEntry(SignatureOf(info, rules));
    }
    for (const char* const* row = SlcFuncDescription::sm_varArgsFuncInfoString; *row; ++row) {
        auto info = SlcFuncDescription::ReadVarArgsRow(*row);
        auto signature = SignatureOf(info, rules);
        table->AddFuncVarListEntry(std::move(signature), std::move(info.tail));
    }
    return table;
}
