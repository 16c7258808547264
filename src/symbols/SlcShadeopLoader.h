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
/// of `f`. This table is read from the file: no code of the library runs in the compiler.
class SlcShadeopLoader {
public:
    /// The options must outlive the loader.
    SlcShadeopLoader(SlcPtr<SlcSemanticError> errors, const SlcOptionsControl* options,
                     SlcShadeopRules rules);

    /// Adds to `table` all overloads of the function that the libraries of one directory declare:
    /// the first search directory with a valid declaration. False if there is none.
    ///
    /// The first call for a name reads every library of each directory up to that one, and reports
    /// at `node`: a warning for an invalid or repeated record, for a table that is invalid or has
    /// no end, and for another symbol with the table's name; an error if a library lacks a function
    /// that a valid record names. Later calls for the name only add the overloads that were found.
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

/// Callback for `QxSystem::ScanDir`: appends the path to the vector of strings at `list` if its
/// file name contains ".so" or ".dll", so that versions such as "a.so.1" are found.
void CheckDSO(const char* fileName, void* list);
