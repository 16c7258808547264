#pragma once

#include <string>

#include "symbols/SlcFuncSymbolEntry.h"

/// What a shadeop's record and its library say beyond the signature.
struct SlcShadeopInfo {
    SlcIdentNode* methodName = nullptr;  // plain name, shared by the overloads
    SlcIdentNode* init = nullptr;        // function that prepares the shadeop; may be empty
    SlcIdentNode* cleanup = nullptr;     // function that ends it; may be empty
    std::string libraryBaseName;         // file name of the library up to its last "."
    std::string libraryExtension;        // behind the last "."
    std::string key;                     // identifies the library in generated code
};

/// A function that a shared library supplies; its C name is unique among overloads.
class SlcFuncDSOSymbolEntry : public SlcFuncSymbolEntry {
public:
    SlcFuncDSOSymbolEntry(SlcFuncSignature signature, SlcShadeopInfo info)
        : SlcFuncSymbolEntry(std::move(signature)),
          m_info(std::move(info))
    {
    }

    [[nodiscard]] SlcIdentNode* GetMethodName() const { return m_info.methodName; }
    [[nodiscard]] SlcIdentNode* GetInit() const { return m_info.init; }
    [[nodiscard]] SlcIdentNode* GetCleanup() const { return m_info.cleanup; }
    /// File name of the library.
    [[nodiscard]] std::string GetLibraryFileName() const
    {
        return m_info.libraryBaseName + '.' + m_info.libraryExtension;
    }
    [[nodiscard]] const std::string& GetKey() const { return m_info.key; }

private:
    SlcShadeopInfo m_info;
};
