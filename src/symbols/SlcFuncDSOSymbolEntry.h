#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "symbols/SlcFuncSymbolEntry.h"

/// The library of a shadeop, and the names in the record that declares it.
struct SlcShadeopInfo {
    SlcIdentNode* methodName = nullptr;  // plain name, shared by the overloads
    SlcIdentNode* init = nullptr;        // function that prepares the shadeop; name may be empty
    SlcIdentNode* cleanup = nullptr;     // function that releases its data; name may be empty
    std::string libraryPath;
    std::string libraryBaseName;   // file name of the library up to its last "."
    std::string libraryExtension;  // after the last "."
    std::string key;               // file name, encoded by `FileNameAsCId`
};

/// One record of the table in which a library declares a shadeop: the types and names of one
/// overload, and of the functions that prepare and release it.
struct SlcShadeopDeclaration {
    SlcTypeNode* returnType = nullptr;
    std::vector<SlcTypeNode*> argTypes;
    SlcIdentNode* methodName = nullptr;
    SlcIdentNode* init = nullptr;
    SlcIdentNode* cleanup = nullptr;
};

/// The detail rules of all shadeops. They are in `semantics`, which passes them in.
struct SlcShadeopRules {
    SlcCheckDetailProc checkDetail;
    SlcCheckInlineDetailProc checkInlineDetail;
};

/// A function from a shared library.
class SlcFuncDSOSymbolEntry : public SlcFuncSymbolEntry {
public:
    /// Makes the entry for a declaration in the library at `libraryPath`. Every argument accepts
    /// uniform and varying values, and none is an output.
    SlcFuncDSOSymbolEntry(SlcIdentNode* ident, const std::string& libraryPath,
                          SlcShadeopDeclaration declaration, const SlcShadeopRules& rules);
    /// Makes an entry from existing parts.
    SlcFuncDSOSymbolEntry(SlcFuncSignature signature, SlcShadeopInfo info)
        : SlcFuncSymbolEntry(std::move(signature)),
          m_info(std::move(info))
    {
    }

    /// Return the name of the method, which is the same in the source and in the library, and the
    /// names, possibly empty, of its init and cleanup functions.
    [[nodiscard]] SlcIdentNode* GetMethodName() const { return m_info.methodName; }
    [[nodiscard]] SlcIdentNode* GetInit() const { return m_info.init; }
    [[nodiscard]] SlcIdentNode* GetCleanup() const { return m_info.cleanup; }
    /// Set the init and cleanup functions, which all overloads of a method must share.
    void SetInit(SlcIdentNode* init) { m_info.init = init; }
    void SetCleanup(SlcIdentNode* cleanup) { m_info.cleanup = cleanup; }
    /// Returns the path at which the search found the library.
    [[nodiscard]] const std::string& GetLibraryPath() const { return m_info.libraryPath; }
    /// Returns the file name of the library, which must contain a ".".
    [[nodiscard]] std::string GetLibraryFileName() const
    {
        return m_info.libraryBaseName + '.' + m_info.libraryExtension;
    }
    /// Returns the text that identifies the library in generated code.
    [[nodiscard]] const std::string& GetKey() const { return m_info.key; }

    /// Encodes a file name as part of a C identifier. The last "." becomes "_". Letters and digits
    /// are kept, and so is a "_" after the last "."; any other character becomes "_", the two
    /// hexadecimal digits of its code, and "_".
    [[nodiscard]] static std::string FileNameAsCId(std::string_view name);

private:
    SlcShadeopInfo m_info;
};
