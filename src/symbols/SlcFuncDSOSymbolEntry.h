#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "symbols/SlcFuncSymbolEntry.h"

/// What a shadeop's record and its library say beyond the signature.
struct SlcShadeopInfo {
    SlcIdentNode* methodName = nullptr;  // plain name, shared by the overloads
    SlcIdentNode* init = nullptr;        // function that prepares the shadeop; may be empty
    SlcIdentNode* cleanup = nullptr;     // function that ends it; may be empty
    std::string libraryPath;
    std::string libraryBaseName;   // file name of the library up to its last "."
    std::string libraryExtension;  // behind the last "."
    std::string key;               // identifies the library in generated code
};

/// One record of a library's table: what it declares, and the functions that it names.
struct SlcShadeopDeclaration {
    SlcTypeNode* returnType = nullptr;
    std::vector<SlcTypeNode*> argTypes;
    SlcIdentNode* uniqueName = nullptr;  // tells the overloads apart within a compile
    SlcIdentNode* methodName = nullptr;
    SlcIdentNode* init = nullptr;
    SlcIdentNode* cleanup = nullptr;
};

/// The rules of detail that hold for every shadeop; they live in `semantics`, which hands them in.
struct SlcShadeopRules {
    SlcCheckDetailProc checkDetail;
    SlcCheckInlineDetailProc checkInlineDetail;
};

/// A function that a shared library supplies; its C name is unique among overloads.
class SlcFuncDSOSymbolEntry : public SlcFuncSymbolEntry {
public:
    /// The entry of a declaration that the library at that path gives. Every argument takes
    /// uniform and varying values, and none is output.
    SlcFuncDSOSymbolEntry(SlcIdentNode* ident, const std::string& libraryPath,
                          SlcShadeopDeclaration declaration, const SlcShadeopRules& rules);
    /// Of parts that are made already.
    SlcFuncDSOSymbolEntry(SlcFuncSignature signature, SlcShadeopInfo info)
        : SlcFuncSymbolEntry(std::move(signature)),
          m_info(std::move(info))
    {
    }

    /// The name of the source, by which the library exports the method, and of the two that go with
    /// it.
    [[nodiscard]] SlcIdentNode* GetMethodName() const { return m_info.methodName; }
    [[nodiscard]] SlcIdentNode* GetInit() const { return m_info.init; }
    [[nodiscard]] SlcIdentNode* GetCleanup() const { return m_info.cleanup; }
    /// Overloads of one method are started and ended by the same functions.
    void SetInit(SlcIdentNode* init) { m_info.init = init; }
    void SetCleanup(SlcIdentNode* cleanup) { m_info.cleanup = cleanup; }
    /// As it was found, in a directory that is searched.
    [[nodiscard]] const std::string& GetLibraryPath() const { return m_info.libraryPath; }
    /// File name of the library.
    [[nodiscard]] std::string GetLibraryFileName() const
    {
        return m_info.libraryBaseName + '.' + m_info.libraryExtension;
    }
    [[nodiscard]] const std::string& GetKey() const { return m_info.key; }

    /// A part of a C identifier that stands for the name of a file: letters and digits stay, any
    /// other character becomes "_", its two hexadecimal digits and "_"; the last "." becomes "_",
    /// and a "_" behind it stays.
    [[nodiscard]] static std::string FileNameAsCId(std::string_view name);

private:
    SlcShadeopInfo m_info;
};
