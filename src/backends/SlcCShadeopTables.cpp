// The shadeop libraries that the shader calls: a table of open libraries, a table of functions,
// opening and closing. Overloads of a function share a row, since a library exports one method for
// all of them.
//
//     static QxDSO s_theDSOHandles[1];            #define DSOHANDLE_lib_so 0
//     static SlcDSOInfo s_theDSOInfo[2];          #define DSOINFO_lib_so_blend 0 ...
//
//     QxShadeopNeeds  data: the library and the names of the three functions of each row
//     QxInitDSO       once: opens each library, looks up the functions that a row names, and
//                     calls `init`, which creates the data for its method
//     QxCleanupDSO    once: calls `cleanup` on that data, closes the libraries
//
// If a library lacks a function, the function's pointer is null and a call does nothing; the host
// library rejects such a shader before it runs.
//
// Tested by tests/backends/CFileTest.cpp and, with real libraries, by tests/shadeops.

#include "backends/SlcCShadeopTables.h"

#include <set>
#include <string>
#include <vector>

#include "backends/SlcEquCValue.h"
#include "backends/SlcGeneratedText.h"
#include "symbols/SlcFuncDSOSymbolEntry.h"

using Generated = SlcGeneratedText;

namespace {

std::string HandleName(const SlcFuncDSOSymbolEntry& function)
{
    return "DSOHANDLE_" + function.GetKey();
}

/// Returns the name of the row that the overloads of a method share.
std::string InfoName(const SlcFuncDSOSymbolEntry& function)
{
    return "DSOINFO_" + function.GetKey() + "_" + function.GetMethodName()->GetName();
}

std::string Handle(const SlcFuncDSOSymbolEntry& function)
{
    return std::string(Generated::sm_slcDSOHandlesVarName) + "[" + HandleName(function) + "]";
}

std::string Info(const SlcFuncDSOSymbolEntry& function)
{
    return std::string(Generated::sm_slcDSOInfoVarName) + "[" + InfoName(function) + "]";
}

bool HasName(const SlcIdentNode* ident)
{
    return ident && !ident->GetName().empty();
}

/// Returns the first function for each name that `nameOf` returns.
std::vector<SlcPtr<SlcFuncDSOSymbolEntry>>
Unique(const std::deque<SlcPtr<SlcFuncDSOSymbolEntry>>& functions,
       std::string (*nameOf)(const SlcFuncDSOSymbolEntry&))
{
    std::vector<SlcPtr<SlcFuncDSOSymbolEntry>> unique;
    std::set<std::string> names;
    for (const auto& function : functions)
        if (names.insert(nameOf(*function)).second)
            unique.push_back(function);
    return unique;
}

}  // namespace

void SlcCShadeopTables::GenShadeopTables()
{
    const auto libraries = Unique(m_functions, HandleName);
    if (libraries.empty())
        Line("static QxDSO *", Generated::sm_slcDSOHandlesVarName, " = 0;");
    else
        Line("static QxDSO ", Generated::sm_slcDSOHandlesVarName, "[", libraries.size(), "];");
    for (std::size_t i = 0; i < libraries.size(); ++i)
        Line("#define ", HandleName(*libraries[i]), " ", i);
    Line();

    const auto functions = Unique(m_functions, InfoName);
    if (functions.empty())
        Line("static SlcDSOInfo *", Generated::sm_slcDSOInfoVarName, " = 0;");
    else
        Line("static SlcDSOInfo ", Generated::sm_slcDSOInfoVarName, "[", functions.size(), "];");
    for (std::size_t j = 0; j < functions.size(); ++j)
        Line("#define ", InfoName(*functions[j]), " ", j);
    Line();
}

/// Writes data for programs that read the shared object without loading it: four texts per shadeop,
/// each terminated by a null character.
void SlcCShadeopTables::GenNeeds()
{
    const auto functions = Unique(m_functions, InfoName);
    if (functions.empty())
        return;
    Line("extern \"C\" const char QX_SHADER_FUNC ", Generated::sm_shadeopNeedsName, "[];");
    Line("const char ", Generated::sm_shadeopNeedsName, "[] =");
    const auto text = [](const SlcIdentNode* ident) {
        return SlcEquCValue::Literal(ident ? ident->GetName() : std::string()) + " \"\\0\"";
    };
    for (const auto& function : functions)
        Line("\t", SlcEquCValue::Literal(function->GetLibraryFileName()), " \"\\0\" ",
             text(function->GetMethodName()), " ", text(function->GetInit()), " ",
             text(function->GetCleanup()));
    Line("\t;");
    Line();
}

void SlcCShadeopTables::GenInitDSO()
{
    GenShadeopTables();
    GenNeeds();
    Line("static void QxInitDSO(", Generated::sm_slcSearchPathTypeName, " *i_searchPaths)");
    Line("{");
    Line("\tstatic int ", Generated::sm_slcInitDSOCounter, " = 0;");
    Line();
    Line("\tif (", Generated::sm_slcInitDSOCounter, " == 0)");
    Line("\t{");
    Line("\t\t++", Generated::sm_slcInitDSOCounter, ";");
    Line();
    Line("\t\tchar *fileStr;");
    Line("\t\tconst char *fullFileStr;");
    Line();
    for (const auto& library : Unique(m_functions, HandleName))
        GenOpenLibrary(*library);
    for (const auto& function : Unique(m_functions, InfoName))
        GenFindShadeop(*function);
    Line("\t}");
    Line("}");
    Line();
}

void SlcCShadeopTables::GenOpenLibrary(const SlcFuncDSOSymbolEntry& library)
{
    const std::string name = library.GetLibraryFileName();
    Line("\t\tfileStr = new char[", name.size() + 1, "];");
    Line("\t\tstrcpy(fileStr, ", SlcEquCValue::Literal(name), ");");
    Line("\t\tfullFileStr = FindDSO(i_searchPaths, fileStr);");
    Line("\t\t", Handle(library), " = QxOpenDSO(fullFileStr, RTLD_LAZY);");
    Line("\t\tdelete [] fileStr; ");
    Line();
}

void SlcCShadeopTables::GenFindShadeop(const SlcFuncDSOSymbolEntry& function)
{
    const std::string info = Info(function);
    const auto find = [&](const char* member, const char* type, const SlcIdentNode* symbol) {
        if (!HasName(symbol))
            Line("\t\t", info, ".", member, " = 0x0;");
        else
            Line("\t\t", info, ".", member, " = (SlcDSOInfo::", type, ")QxGetDSOSymbol(",
                 Handle(function), ", ", SlcEquCValue::Literal(symbol->GetName()), ");");
    };
    find("m_initFunc", "InitFunction", function.GetInit());
    find("m_methodFunc", "MethodFunction", function.GetMethodName());
    find("m_cleanupFunc", "CleanupFunction", function.GetCleanup());
    Line();
    if (!HasName(function.GetInit())) {
        Line("\t\t", info, ".m_initdata = 0x0;");
        return;
    }
    Line("\t\tif (", info, ".m_initFunc)");
    Line("\t\t{");
    Line("\t\t\t", info, ".m_initdata = ", info, ".m_initFunc();");
    Line("\t\t}");
    Line("\t\telse");
    Line("\t\t{");
    Line("\t\t\t", info, ".m_initdata = 0x0;");
    Line("\t\t}");
    Line();
}

void SlcCShadeopTables::GenCleanupDSO()
{
    Line("static void QxCleanupDSO(void)");
    Line("{");
    Line("\tstatic int ", Generated::sm_slcCleanupDSOCounter, " = 0;");
    Line("\tif (", Generated::sm_slcCleanupDSOCounter, " == 0)");
    Line("\t{");
    Line("\t++", Generated::sm_slcCleanupDSOCounter, ";");
    for (const auto& function : Unique(m_functions, InfoName)) {
        if (!HasName(function->GetCleanup()))
            continue;
        const std::string info = Info(*function);
        Line("\t\tif (", info, ".m_cleanupFunc)");
        Line("\t\t{");
        Line("\t\t\t", info, ".m_cleanupFunc(", info, ".m_initdata);");
        Line("\t\t}");
    }
    for (const auto& library : Unique(m_functions, HandleName))
        Line("\t\tQxCloseDSO(", Handle(*library), ");");
    Line("\t}");
    Line("}");
}
