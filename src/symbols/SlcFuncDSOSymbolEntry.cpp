// All formals of a shadeop are varying inputs, since its declaration states neither detail nor
// storage. The library's file name becomes part of identifiers in generated C++, so
// `FileNameAsCId` encodes it: "a-b.so" becomes "a_2d_b_so".
//
// Tested by tests/symbols/SlcShadeopLoaderTest.cpp.

#include "symbols/SlcFuncDSOSymbolEntry.h"

namespace {

bool IsLetterOrDigit(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

/// Keeps letters, digits and the characters in `kept`; replaces any other by its code: "_2d_" for
/// "-".
std::string EncodedForC(std::string_view text, std::string_view kept)
{
    constexpr const char* digits = "0123456789abcdef";
    std::string encoded;
    for (const char c : text) {
        if (IsLetterOrDigit(c) || kept.find(c) != std::string_view::npos) {
            encoded += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        encoded += {'_', digits[byte / 16], digits[byte % 16], '_'};
    }
    return encoded;
}

SlcFuncSignature ShadeopSignature(SlcIdentNode* ident, const SlcShadeopDeclaration& declaration,
                                  const SlcShadeopRules& rules)
{
    SlcFuncSignature signature;
    signature.ident = ident;
    signature.returnType = declaration.returnType;
    signature.argTypes = declaration.argTypes;
    signature.argDetails.assign(signature.argTypes.size(), SlcDetailNode::AVarying());
    signature.argStorages.assign(signature.argTypes.size(), SlcStorageSpecNode::AInput());
    signature.checkDetail = rules.checkDetail;
    signature.checkInlineDetail = rules.checkInlineDetail;
    signature.origin = SlcFuncOrigin::Shadeop;
    return signature;
}

SlcShadeopInfo InfoOf(std::string_view libraryPath, const SlcShadeopDeclaration& declaration)
{
    const std::string_view file = libraryPath.substr(libraryPath.rfind('/') + 1);
    const std::size_t dot = file.rfind('.');
    SlcShadeopInfo info;
    info.methodName = declaration.methodName;
    info.init = declaration.init;
    info.cleanup = declaration.cleanup;
    info.libraryPath = libraryPath;
    info.libraryBaseName = file.substr(0, dot);
    info.libraryExtension = dot == std::string_view::npos ? "" : file.substr(dot + 1);
    info.key = SlcFuncDSOSymbolEntry::FileNameAsCId(file);
    return info;
}

}  // namespace

SlcFuncDSOSymbolEntry::SlcFuncDSOSymbolEntry(SlcIdentNode* ident, const std::string& libraryPath,
                                             SlcShadeopDeclaration declaration,
                                             const SlcShadeopRules& rules)
    : SlcFuncDSOSymbolEntry(ShadeopSignature(ident, declaration, rules),
                            InfoOf(libraryPath, declaration))
{
}

std::string SlcFuncDSOSymbolEntry::FileNameAsCId(std::string_view name)
{
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos)
        return EncodedForC(name, "");
    // Encode the extension too: most need no change, but a backup copy may end in ".so~".
    return EncodedForC(name.substr(0, dot), "") + '_' + EncodedForC(name.substr(dot + 1), "_");
}
