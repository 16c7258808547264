// Generates the tables of documents, editor files and the names of generated C++ from the
// compiler's tables, so that each fact is written only once.

#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>

#include "reference/SqxCardNames.h"
#include "reference/SqxEditorFiles.h"
#include "reference/SqxReferencePages.h"

namespace {

constexpr const char* k_usage =
    "Usage: sqxreference ROOT\n"
    "Makes the tables in ROOT/docs, the syntax files in ROOT/editors and\n"
    "ROOT/runtime/shading/QxCardNames.h again.\n";

std::string ReadFile(const std::string& path)
{
    std::ifstream file(path);
    if (!file)
        throw std::runtime_error("Cannot read '" + path + "'");
    return {std::istreambuf_iterator<char>(file), {}};
}

void WriteFile(const std::string& path, const std::string& text)
{
    std::ofstream file(path);
    file << text;
    file.close();
    if (!file)
        throw std::runtime_error("Cannot write '" + path + "'");
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << k_usage;
        return 2;
    }
    try {
        const std::string root = argv[1];
        for (const char* page :
             {"/README.md", "/docs/built-ins.md", "/docs/byte-code.md", "/docs/generated-code.md"})
            WriteFile(root + page, SqxRefreshPage(ReadFile(root + page)));
        WriteFile(root + "/runtime/shading/QxCardNames.h", SqxCardNames());
        WriteFile(root + "/editors/vim/syntax/sl.vim", SqxVimSyntax());
        WriteFile(root + "/editors/vscode/syntaxes/sl.tmLanguage.json", SqxTextMateGrammar());
        WriteFile(root + "/editors/kate/sl.xml", SqxKateSyntax());
    } catch (const std::runtime_error& error) {
        std::cerr << "sqxreference: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
