#pragma once

#include <map>
#include <string>
#include <vector>

#include "sqx/SqxShadeopTable.h"
#include "support/SlcOptionsControl.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcFuncDSOSymbolEntry.h"
#include "symbols/SlcSymbolTable.h"

/// Finds the functions that shared libraries supply to shaders.
///
/// For a function `f` a library exports the array `f_shadeops`, whose records declare the
/// overloads of `f`. Only the table is read, from the file: nothing of the library runs before the
/// shader does.
class SlcShadeopLoader {
public:
    /// The options must outlive the loader.
    SlcShadeopLoader(SlcPtr<SlcSemanticError> errors, const SlcOptionsControl* options,
                     SlcShadeopRules rules);

    /// Adds to the table each overload of the function that the libraries of the first search
    /// directory with any declare. False if there is none. A bad record is a warning at `node`, and
    /// a function that a library declares and lacks an error.
    ///
    /// Reads every library of a directory, and does that once for each name.
    [[nodiscard]] bool Load(const SlcSyntaxNode* node, SlcIdentNode* name, SlcSymbolTable& table);

private:
    using Entries = std::vector<SlcPtr<SlcFuncDSOSymbolEntry>>;

    [[nodiscard]] Entries Search(const SlcSyntaxNode* node, SlcIdentNode* name,
                                 SlcSymbolTable& table);
    void ReadLibrary(const SlcSyntaxNode* node, SlcIdentNode* name, const std::string& path,
                     SlcSymbolTable& table, Entries& entries);
    void WarnOfRepeated(const SlcSyntaxNode* node, const SqxShadeopRecord& record,
                        const Entries& entries);
    /// The text that heads the warning about a record; empty if it is good, and then the
    /// declaration is filled.
    [[nodiscard]] static const char* ReadRecord(const SqxShadeopRecord& record,
                                                const SlcIdentNode* name,
                                                SlcShadeopDeclaration& declaration);

    SlcPtr<SlcSemanticError> m_errors;
    const SlcOptionsControl* m_options;
    SlcShadeopRules m_rules;
    std::map<std::string, Entries> m_known;  // by name; empty for one that no library has
};

/// For `QxSystem::ScanDir`: appends the path to the vector of strings at `list` if its file name
/// may be that of a library.
void CheckDSO(const char* fileName, void* list);
