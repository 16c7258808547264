// Libraries are read as files, one after another, and none of their code runs: the table of the
// requested function is read record by record, and each function that it names must be among the
// symbols of the library. An invalid record causes a warning. The search ends at the first
// directory with a valid record, so that libraries in later directories cannot add overloads.
// Results are cached by name, since each scope that calls the function asks again.
//
// Tested by tests/symbols/SlcShadeopLoaderTest.cpp with real libraries, good and bad.

#include "symbols/SlcShadeopLoader.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

#include "sqx/SqxElfFile.h"
#include "support/QxSystem.h"
#include "symbols/SlcShadeopReader.h"

namespace {

/// Returns the paths of a directory's libraries, sorted by name.
std::vector<std::string> LibrariesIn(const std::string& directory)
{
    std::vector<std::string> paths;
    QxSystem::ScanDir(directory.c_str(), CheckDSO, &paths, false);
    // The order in which a file system lists files differs between machines.
    std::sort(paths.begin(), paths.end());
    return paths;
}

}  // namespace

SlcShadeopLoader::SlcShadeopLoader(SlcPtr<SlcSemanticError> errors,
                                   const SlcOptionsControl* options, SlcShadeopRules rules)
    : m_errors(std::move(errors)),
      m_options(options),
      m_rules(rules)
{
}

bool SlcShadeopLoader::Load(const SlcSyntaxNode* node, SlcIdentNode* name, SlcSymbolTable& table)
{
    const auto [known, isNew] = m_known.try_emplace(name->GetName());
    if (isNew) {
        known->second = Search(node, name, table);
    } else {
        for (const auto& entry : known->second)
            table.AddEntry(entry);
    }
    return !known->second.empty();
}

SlcShadeopLoader::Entries SlcShadeopLoader::Search(const SlcSyntaxNode* node, SlcIdentNode* name,
                                                   SlcSymbolTable& table)
{
    Entries entries;
    for (const std::string& directory : m_options->m_searchDirs) {
        for (const std::string& path : LibrariesIn(directory))
            ReadLibrary(node, name, path, table, entries);
        // As with included files, the first directory that has the function hides the later ones.
        if (!entries.empty())
            break;
    }
    return entries;
}

void SlcShadeopLoader::ReadLibrary(const SlcSyntaxNode* node, SlcIdentNode* name,
                                   const std::string& path, SlcSymbolTable& table, Entries& entries)
{
    const SqxElfFile library = SqxElfFile::Open(path);
    const SqxShadeopTable records(library, name->GetName());
    const auto warn = [&](const char* what) {
        m_errors->Warning(node, "'" + SqxShadeopTable::NameFor(name->GetName()) + what + path + ")",
                          1);
    };
    // An unrelated symbol of that name is not a fault of the shader, but deserves a warning.
    if (records.Found() == SqxShadeopTable::Place::Other)
        warn("' is no table of shadeops (");
    if (records.Found() != SqxShadeopTable::Place::Table)
        return;
    std::set<std::string_view> functions;
    for (const SqxShadeopRecord& record : records.Records()) {
        SlcShadeopDeclaration declaration;
        if (const char* fault = ReadRecord(record, name, declaration); *fault)
            m_errors->Warning(node,
                              std::string(fault) + " (" + path +
                                  "). Declaration: " + std::string(record.declaration) + " .",
                              1);
        else {
            entries.push_back(table.AddFuncEntryDSO(name, path, std::move(declaration), m_rules));
            WarnOfRepeated(node, record, entries);
            functions.insert({name->GetName(), record.init, record.cleanup});
        }
    }
    if (records.IsFaulty())
        warn("' holds what is no text (");
    else if (!records.HasEnd())
        warn("' has no record that ends it (");
    // If one of these functions were missing, the shader would fail only at run time.
    functions.erase("");
    for (const std::string_view function : functions)
        if (library.Find(function).kind != SqxElfFile::Kind::Function)
            m_errors->Error(node, "Library '" + path + "' does not define '" +
                                      std::string(function) + "', which shadeop '" +
                                      name->GetName() + "' needs");
}

/// Warns if the last entry has the same types as one of an earlier library of the directory.
void SlcShadeopLoader::WarnOfRepeated(const SlcSyntaxNode* node, const SqxShadeopRecord& record,
                                      const Entries& entries)
{
    const SlcFuncDSOSymbolEntry& last = *entries.back();
    const auto isRepeated = [&](const auto& entry) {
        const auto& types = last.GetArgTypes();
        const auto& others = entry->GetArgTypes();
        return entry->GetLibraryPath() != last.GetLibraryPath() &&
               entry->GetReturnType()->IsSameExactType(last.GetReturnType()) &&
               std::equal(types.begin(), types.end(), others.begin(), others.end(),
                          [](const SlcTypeNode* a, const SlcTypeNode* b) {
                              return a->IsSameExactType(b);
                          });
    };
    const auto first = std::find_if(entries.begin(), entries.end(), isRepeated);
    if (first != entries.end())
        m_errors->Warning(node,
                          "Libraries '" + (*first)->GetLibraryPath() + "' and '" +
                              last.GetLibraryPath() + "' both declare '" +
                              std::string(record.declaration) + "': the last is called",
                          1);
}

const char* SlcShadeopLoader::ReadRecord(const SqxShadeopRecord& record, const SlcIdentNode* name,
                                         SlcShadeopDeclaration& declaration)
{
    SlcShadeopReader reader(record.declaration);
    declaration.returnType = reader.ReadReturnType();
    if (!declaration.returnType)
        return "Wrong return type in table";
    declaration.methodName = reader.ReadMethodName();
    if (!declaration.methodName || declaration.methodName->GetName() != name->GetName())
        return "Invalid method ID";
    bool isGood = false;
    declaration.argTypes = reader.ReadArguments(isGood);
    if (!isGood)
        return "Invalid method signature";
    declaration.init = SlcLexicalNode::CreateIdent(record.init);
    declaration.cleanup = SlcLexicalNode::CreateIdent(record.cleanup);
    return "";
}

void CheckDSO(const char* fileName, void* list)
{
    std::string_view name = fileName;
    name.remove_prefix(name.rfind('/') + 1);
    if (name.find(".dll") != std::string_view::npos || name.find(".so") != std::string_view::npos)
        static_cast<std::vector<std::string>*>(list)->emplace_back(fileName);
}
