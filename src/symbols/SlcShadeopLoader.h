#pragma once

#include <map>
#include <string>
#include <vector>

#include "sqx/SqxShadeopTable.h"
#include "support/SlcOptionsControl.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcFuncDSOSymbolEntry.h"
#include "symbols/SlcSymbolTable.h"

/// Finds shadeops: functions for shaders in shared libraries.
///
/// For a function `f` a library exports the array `f_shadeops`, whose records declare the overloads
/// of `f`. Only this table is read, from the file: no code of the library runs in the compiler.
class SlcShadeopLoader {
public:
    /// The options must outlive the loader.
    SlcShadeopLoader(SlcPtr<SlcSemanticError> errors, const SlcOptionsControl* options,
                     SlcShadeopRules rules);

    /// Adds to `table` all overloads of the function that the libraries of one directory declare:
    /// the first search directory with a valid declaration. False if there is none. An invalid or
    /// repeated record is a warning at `node`; a declared function that is missing is an error.
    ///
    /// The first call for a name reads every library of each directory that it searches.
    [[nodiscard]] bool Load(const SlcSyntaxNode* node, SlcIdentNode* name, SlcSymbolTable& table);

private:
    using Entries = std::vector<SlcPtr<SlcFuncDSOSymbolEntry>>;

    [[nodiscard]] Entries Search(const SlcSyntaxNode* node, SlcIdentNode* name,
                                 SlcSymbolTable& table);
    void ReadLibrary(const SlcSyntaxNode* node, SlcIdentNode* name, const std::string& path,
                     SlcSymbolTable& table, Entries& entries);
    void WarnOfRepeated(const SlcSyntaxNode* node, const SqxShadeopRecord& record,
                        const Entries& entries);
    /// Reads a record into `declaration`. Returns the start of the warning about an invalid record;
    /// empty if it is valid.
    [[nodiscard]] static const char* ReadRecord(const SqxShadeopRecord& record,
                                                const SlcIdentNode* name,
                                                SlcShadeopDeclaration& declaration);

    SlcPtr<SlcSemanticError> m_errors;
    const SlcOptionsControl* m_options;
    SlcShadeopRules m_rules;
    std::map<std::string, Entries> m_known;  // by name; no entries if no library has the function
};

/// Callback for `QxSystem::ScanDir`: appends the path to the vector of strings at `list` if the
/// file name can be that of a library.
void CheckDSO(const char* fileName, void* list);
